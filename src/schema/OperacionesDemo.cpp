#include "schema/OperacionesDemo.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/ImportadorCsv.h"

#include <QDir>
#include <QSet>

namespace korven::schema {

namespace {

KorvenError ErrorDemo(const QString& texto) {
    return KorvenError(3751, texto, QStringLiteral("OperacionesDemo"));
}

QString Carpeta(const QString& datos) {
    return QDir(datos).filePath(QStringLiteral("demo"));
}

} // namespace

QStringList OperacionesDemo::Internos() const {
    const LectorCsv csv =
        LectorCsv::DeArchivo(QDir(Carpeta(carpeta_)).filePath(QStringLiteral("caratula.csv")));
    const int i = static_cast<int>(csv.encabezado().indexOf(QStringLiteral("interno")));
    if (i < 0)
        throw ErrorDemo(QStringLiteral("caratula.csv de la demo no tiene la columna interno."));
    QStringList r;
    for (const LectorCsv::Fila& f : csv.filas())
        if (i < f.valores.size() && !r.contains(f.valores.at(i)))
            r << f.valores.at(i);
    return r;
}

QStringList OperacionesDemo::Cargar() {
    const QDir dir(Carpeta(carpeta_));
    if (!dir.exists())
        throw ErrorDemo(
            QStringLiteral("No existe la carpeta de las operaciones de demostración: %1")
                .arg(QDir::toNativeSeparators(dir.path())));
    QSet<QString> nuevos;
    Conexion& internos = stores_.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    for (const QString& interno : Internos())
        if (EsNumero(internos.Escalar(QStringLiteral("select count(*) from caratula where "
                                                     "interno = ") +
                                      SqlTexto(interno))) == 0)
            nuevos.insert(interno);
    if (nuevos.isEmpty())
        return {};

    // Every file of the folder must be a table of an Operation.
    QStringList entidades;
    std::vector<std::pair<const DefTabla*, QString>> tablas;
    for (const QString& archivo :
         dir.entryList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name)) {
        const DefTabla* t = Catalogo::Tabla(QFileInfo(archivo).completeBaseName());
        if (!t || !t->Columna(QStringLiteral("interno")))
            throw ErrorDemo(QStringLiteral("El archivo %1 de la demo no es una tabla de una "
                                           "operación.")
                                .arg(archivo));
        tablas.emplace_back(t, dir.filePath(archivo));
        if (!entidades.contains(t->entidad))
            entidades << t->entidad;
    }
    Transaccion tx(stores_, entidades);
    for (const auto& [t, ruta] : tablas) {
        Conexion& c = stores_.getDataConnectionByEntity(t->entidad);
        const ImportadorCsv::Preparacion p = ImportadorCsv::Preparar(
            *t, LectorCsv::DeArchivo(ruta), c.motor(),
            [&nuevos](const QHash<QString, QString>& fila) {
                return nuevos.contains(fila.value(QStringLiteral("interno")));
            });
        if (!p.rechazos.empty())
            throw ErrorDemo(QStringLiteral("%1, línea %2: %3")
                                .arg(ruta)
                                .arg(p.rechazos.front().linea)
                                .arg(p.rechazos.front().motivo));
        ImportadorCsv::Insertar(c, p);
    }
    tx.Confirmar();
    QStringList r;
    for (const QString& i : Internos())
        if (nuevos.contains(i))
            r << i;
    return r;
}

} // namespace korven::schema
