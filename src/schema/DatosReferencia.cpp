#include "schema/DatosReferencia.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/ImportadorCsv.h"

#include <QDir>
#include <optional>

namespace korven::schema {

namespace {

KorvenError ErrorDatos(const QString& texto) {
    return KorvenError(3751, texto, QStringLiteral("DatosReferencia"));
}

} // namespace

QList<QPair<QString, int>> DatosReferencia::Cargar() {
    if (!QDir(carpeta_).exists())
        throw ErrorDatos(QStringLiteral("No existe la carpeta de datos de referencia: %1")
                             .arg(QDir::toNativeSeparators(carpeta_)));
    QList<QPair<QString, int>> cargadas;
    // One transaction when every store is on one connection; a configuration that splits them
    // loads each store in its own.
    const bool juntas = stores_.UnaConexion(StoreDirectory::Entidades());
    std::optional<Transaccion> todas;
    if (juntas)
        todas.emplace(stores_, StoreDirectory::Entidades());
    for (const QString& entidad : StoreDirectory::Entidades()) {
        std::optional<Transaccion> una;
        if (!juntas)
            una.emplace(stores_, QStringList{entidad});
        const QDir dir(QDir(carpeta_).filePath(StoreDirectory::NombreArchivo(entidad)));
        if (!dir.exists())
            continue;
        Conexion& c = stores_.getDataConnectionByEntity(entidad);
        const QStringList archivos =
            dir.entryList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name);
        for (const QString& archivo : archivos) {
            const QString nombre = QFileInfo(archivo).completeBaseName().toLower();
            const DefTabla* t = Catalogo::Tabla(nombre);
            if (!t || t->entidad != entidad)
                throw ErrorDatos(QStringLiteral("El archivo %1 no corresponde a ninguna tabla "
                                                "de %2.")
                                     .arg(dir.filePath(archivo), entidad));
            if (EsNumero(c.Escalar(QStringLiteral("select count(*) from ") + t->nombre)) > 0)
                continue;
            const ImportadorCsv::Preparacion p =
                ImportadorCsv::Preparar(*t, LectorCsv::DeArchivo(dir.filePath(archivo)), c.motor());
            if (!p.rechazos.empty())
                throw ErrorDatos(QStringLiteral("%1, línea %2: %3")
                                     .arg(dir.filePath(archivo))
                                     .arg(p.rechazos.front().linea)
                                     .arg(p.rechazos.front().motivo));
            ImportadorCsv::Insertar(c, p);
            cargadas << qMakePair(t->nombre, static_cast<int>(p.valores.size()));
        }
        if (una)
            una->Confirmar();
    }
    if (todas)
        todas->Confirmar();
    return cargadas;
}

} // namespace korven::schema
