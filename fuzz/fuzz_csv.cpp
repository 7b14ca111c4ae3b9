// The CSV importer before any file, into a throw-away SQLite store. The first line of an input
// names the table, the rest is the file; its bytes choose a partial import or a replacement.
// A file refused leaves the table as it was; an import adds exactly the rows it counts; a value
// typed for the store is the number its text says; a file reads the same with one more line
// end (no character is lost at its end).

#include "Arnes.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/Esquema.h"
#include "schema/ImportadorCsv.h"
#include "support/TestStores.h"

#include <QCoreApplication>
#include <QFile>

using namespace korven;
using namespace korven::schema;
using korven::fuzz::Exigir;

namespace {

// The rows of a table as sorted text.
QStringList Filas(Conexion& c, const QString& tabla) {
    QStringList r;
    for (Recordset rs = c.Abrir(QStringLiteral("select * from ") + tabla); !rs.Eof();
         rs.MoveNext()) {
        QStringList v;
        for (int i = 0; i < rs.Campos().size(); ++i)
            v << EsNull(rs.Fields(i));
        r << v.join(QChar(0x1F));
    }
    r.sort();
    return r;
}

bool MismasFilas(const LectorCsv& a, const LectorCsv& b) {
    if (a.encabezado() != b.encabezado() || a.filas().size() != b.filas().size())
        return false;
    for (size_t i = 0; i < a.filas().size(); ++i)
        if (a.filas()[i].linea != b.filas()[i].linea ||
            a.filas()[i].valores != b.filas()[i].valores)
            return false;
    return true;
}

// Every value typed for the store says what its text says.
void Tipados(const DefTabla& t, const LectorCsv& csv) {
    const ImportadorCsv::Preparacion p = ImportadorCsv::Preparar(t, csv, Motor::SQLite);
    QHash<int, const LectorCsv::Fila*> porLinea;
    for (const LectorCsv::Fila& f : csv.filas())
        porLinea.insert(f.linea, &f);
    for (size_t i = 0; i < p.valores.size(); ++i) {
        const LectorCsv::Fila& f = *porLinea.value(p.lineas[i]);
        for (int k = 0; k < p.columnas.size(); ++k) {
            const TipoColumna tipo = t.Columna(p.columnas.at(k))->tipo;
            const QString texto = f.valores.at(k).trimmed();
            if ((tipo != TipoColumna::Numero && tipo != TipoColumna::Contador) || texto.isEmpty())
                continue;
            const double leido = QLocale::c().toDouble(texto);
            Exigir(p.valores[i].at(k).toDouble() == leido,
                   QStringLiteral("línea %1: '%2' se guarda como %3")
                       .arg(f.linea)
                       .arg(texto, p.valores[i].at(k).toString()));
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    korven::fuzz::Arnes arnes(argc, argv, "csv",
                              {"sufidos\n", "tabla\n", "control_fecha\n", "impuestos_internos\n",
                               "sim,sufijo,detalle\n", "idlin,linea,puesto\n", "2026-02-30",
                               "31/12/1999", "0201.10.00.100", "AA", "CO01", "1.5", "4294967296"});
    arnes.LimitarBytes(16 * 1024);
    test::TestStores ts(Motor::SQLite);
    CrearOActualizar(ts.stores());
    // Each table starts with a few rows, so that keys already there are met.
    const QHash<QString, QByteArray> bases{
        {QStringLiteral("sufidos"), "sim,sufijo,detalle\n0201.10.00.100,AA,MARCA\n"
                                    "0201.10.00.100,CO01,ENFRIADO\n"},
        {QStringLiteral("tabla"), "idlin,linea,puesto\n1,primera,PC1\n2,segunda,PC2\n"},
        {QStringLiteral("control_fecha"), "fecha\n2026-01-15\n"},
        {QStringLiteral("impuestos_internos"), "ncm,decreto,tasa_nominal\n2203.00.00,D1,8.7\n"}};
    ImportadorCsv importador(ts.stores());
    for (auto b = bases.cbegin(); b != bases.cend(); ++b)
        importador.Importar(b.key(), LectorCsv::DeTexto(QString::fromUtf8(b.value())), {});
    const QString archivo = ts.directorio() + QStringLiteral("entrada.csv");

    return arnes.Correr([&](const QByteArray& entrada) {
        const qsizetype fin = entrada.indexOf('\n');
        const QString tabla = QString::fromUtf8(entrada.left(fin < 0 ? 0 : fin)).trimmed();
        const QByteArray datos = fin < 0 ? entrada : entrada.mid(fin + 1);
        const DefTabla* t = Catalogo::Tabla(tabla);
        Conexion& c = ts.conexion(t ? t->entidad : QStringLiteral("INTERNOS"));
        const QStringList antes = t ? Filas(c, tabla) : QStringList();

        // The file read with one more line end gives the same rows.
        std::optional<LectorCsv> csv;
        try {
            csv = LectorCsv::DeTexto(LectorCsv::Decodificar(datos));
        } catch (const KorvenError&) {
        }
        try {
            const LectorCsv otro = LectorCsv::DeTexto(LectorCsv::Decodificar(datos + "\n"));
            Exigir(csv && MismasFilas(*csv, otro), QStringLiteral("un salto de línea final cambia "
                                                                  "lo leído"));
        } catch (const KorvenError&) {
            Exigir(!csv, QStringLiteral("un salto de línea final cambia lo leído"));
        }
        if (t && csv) {
            try {
                Tipados(*t, *csv);
            } catch (const KorvenError&) {
            }
        }

        QFile f(archivo);
        Exigir(f.open(QIODevice::WriteOnly) && f.write(datos) == datos.size(),
               QStringLiteral("no se puede escribir ") + archivo);
        f.close();
        ImportadorCsv::Opciones op;
        op.parcial = datos.size() % 3 == 0;
        op.reemplazar = datos.size() % 5 == 0;
        ImportadorCsv::Resultado r;
        try {
            r = importador.Importar(tabla, archivo, op);
        } catch (const KorvenError& e) {
            Exigir(!e.descripcion().isEmpty(), QStringLiteral("rechazo sin mensaje"));
            Exigir(!t || Filas(c, tabla) == antes, QStringLiteral("el rechazo cambió la tabla"));
            return;
        }
        Exigir(t != nullptr, QStringLiteral("importó en una tabla que no existe"));
        for (const ImportadorCsv::Rechazo& x : r.rechazos)
            Exigir(x.linea >= 1 && !x.motivo.isEmpty(), QStringLiteral("rechazo sin línea"));
        Exigir((!op.parcial && !r.rechazos.empty()) ||
                   r.importadas + static_cast<int>(r.rechazos.size()) == r.leidas,
               QStringLiteral("%1 importadas y %2 rechazadas de %3")
                   .arg(r.importadas)
                   .arg(r.rechazos.size())
                   .arg(r.leidas));
        const QStringList despues = Filas(c, tabla);
        if (!r.rechazos.empty() && !op.parcial) {
            Exigir(r.importadas == 0 && despues == antes,
                   QStringLiteral("un archivo rechazado cambió la tabla"));
            return;
        }
        Exigir(despues.size() == (op.reemplazar ? 0 : antes.size()) + r.importadas,
               QStringLiteral("%1 filas antes, %2 importadas, %3 después")
                   .arg(antes.size())
                   .arg(r.importadas)
                   .arg(despues.size()));
        if (despues != antes) {
            c.Ejecutar(QStringLiteral("delete from ") + tabla);
            if (bases.contains(tabla))
                importador.Importar(tabla,
                                    LectorCsv::DeTexto(QString::fromUtf8(bases.value(tabla))), {});
        }
    });
}
