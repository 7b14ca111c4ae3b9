// Goods lines pasted from a spreadsheet (or read from a file), against the reference data. The
// first byte of an input chooses the system's decimal separator, the rest is the text. Every
// row becomes one line; a figure read with the table's decimal mark keeps its value; what the
// import works out itself (FOB, unit price, quantities by unit) is a number the goods screen
// reads, the product or quotient of what was given.

#include "Arnes.h"
#include "goods/ImportadorSubItems.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "schema/LectorCsv.h"
#include "support/TestStores.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <cmath>

using namespace korven;
using korven::fuzz::Exigir;
using Campo = ImportadorSubItems::Campo;

namespace {

// What the import computes reads back as the number it should be (when the computation has
// one).
void Calculado(const QString& nombre, const QString& texto, double esperado, int decimales) {
    double v = 0;
    if (!std::isfinite(esperado)) {
        Exigir(!LeerNumeroTecleado(texto, &v) || v != 0,
               QStringLiteral("%1 fuera de escala queda en '%2'").arg(nombre, texto));
        return;
    }
    Exigir(LeerNumeroTecleado(texto, &v) && v == RedondearDecimal(esperado, decimales),
           QStringLiteral("%1 es '%2' y debía ser %3")
               .arg(nombre, texto, QString::number(esperado, 'g', 17)));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    korven::fuzz::Arnes arnes(argc, argv, "pegado",
                              {"\t", "8703.23.10.100", "870323101", "POSICION", "CANTIDAD",
                               "UNITARIO", "FOB", "KG NETO", "UNIDAD", "01", "07", "1.500", "1,500",
                               "1e200", "0,0001"});
    arnes.LimitarBytes(16 * 1024);
    test::TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
    const QString archivo = ts.directorio() + QStringLiteral("pegado.csv");

    return arnes.Correr([&](const QByteArray& entrada) {
        SeparadorDecimalScope sep(!entrada.isEmpty() && (entrada[0] & 1) ? QStringLiteral(".")
                                                                         : QStringLiteral(","));
        const QByteArray datos = entrada.mid(1);
        ImportadorSubItems::Tabla tabla;
        try {
            if (!entrada.isEmpty() && (entrada[0] & 2)) {
                QFile f(archivo);
                Exigir(f.open(QIODevice::WriteOnly) && f.write(datos) == datos.size(),
                       QStringLiteral("no se puede escribir ") + archivo);
                f.close();
                tabla = ImportadorSubItems::LeerArchivo(archivo);
            } else {
                tabla = ImportadorSubItems::LeerTexto(schema::LectorCsv::Decodificar(datos));
            }
        } catch (const KorvenError& e) {
            Exigir(!e.descripcion().isEmpty(), QStringLiteral("rechazo sin mensaje"));
            return;
        }
        const std::vector<Campo> mapeo = ImportadorSubItems::Mapeo(tabla);
        Exigir(static_cast<int>(mapeo.size()) == tabla.columnas,
               QStringLiteral("%1 columnas y %2 campos").arg(tabla.columnas).arg(mapeo.size()));
        const QChar marca = ImportadorSubItems::MarcaDecimal(tabla, mapeo);
        ImportadorSubItems importador(ts.ctx());
        const std::vector<ImportadorSubItems::Preparada> lineas = importador.Preparar(tabla, mapeo);
        Exigir(lineas.size() == tabla.filas.size(), QStringLiteral("filas perdidas"));

        for (size_t i = 0; i < lineas.size(); ++i) {
            const ImportadorSubItems::Fila& fila = tabla.filas[i];
            const LineaSubItem& l = lineas[i].datos;
            Exigir(lineas[i].linea == fila.linea && fila.linea >= 1 &&
                       (i == 0 || fila.linea > tabla.filas[i - 1].linea),
                   QStringLiteral("línea %1").arg(lineas[i].linea));
            // The figures given, as the system reads them.
            QHash<Campo, QString> dado;
            QHash<Campo, double> numero;
            for (int k = 0; k < fila.valores.size() && k < static_cast<int>(mapeo.size()); ++k) {
                const Campo c = mapeo[static_cast<size_t>(k)];
                if (dado.contains(c))
                    continue;
                dado.insert(c, fila.valores.at(k).trimmed());
                double v = 0;
                const QString t = ImportadorSubItems::NumeroDelSistema(fila.valores.at(k), marca);
                if (LeerNumeroTecleado(t, &v))
                    numero.insert(c, v);
                // A plain figure with the table's mark keeps its value.
                const QString simple = fila.valores.at(k).trimmed();
                const QRegularExpression cifra(QStringLiteral("^[0-9]+(\\%1[0-9]+)?$").arg(marca));
                bool ok = false;
                const double plano =
                    QLocale::c().toDouble(QString(simple).replace(marca, QLatin1Char('.')), &ok);
                if (cifra.match(simple).hasMatch() && ok && std::isfinite(plano))
                    Exigir(
                        numero.value(c, -1) == plano,
                        QStringLiteral("'%1' con la marca '%2' se lee '%3'").arg(simple, marca, t));
            }
            if (!numero.contains(Campo::Cantidad))
                continue;
            const double cantidad = numero.value(Campo::Cantidad);
            Calculado(QStringLiteral("cantidad"), l.cantidad, cantidad, 2);
            if (dado.value(Campo::Fob).isEmpty() && numero.contains(Campo::Unitario))
                Calculado(QStringLiteral("FOB"), l.fobTotal,
                          cantidad * numero.value(Campo::Unitario), 2);
            else if (dado.value(Campo::Unitario).isEmpty() && numero.contains(Campo::Fob) &&
                     cantidad != 0)
                Calculado(QStringLiteral("unitario"), l.unitario,
                          numero.value(Campo::Fob) / cantidad, 4);
            // Quantities by unit: worked out, never text the screen cannot read.
            for (const auto& [c, texto] : {std::pair{Campo::KgNeto, l.kgNeto},
                                           std::pair{Campo::ValorEstadistica, l.valorEstadistica},
                                           std::pair{Campo::DerEsp, l.derEsp}})
                if (dado.value(c).isEmpty() && !texto.isEmpty() &&
                    !std::any_of(dado.cbegin(), dado.cend(), [&](const QString& d) {
                        return ImportadorSubItems::NumeroDelSistema(d, marca) == texto;
                    }))
                    Exigir(EsNumeroTecleado(texto), QStringLiteral("línea %1: '%2' no es un número")
                                                        .arg(fila.linea)
                                                        .arg(texto));
        }
    });
}
