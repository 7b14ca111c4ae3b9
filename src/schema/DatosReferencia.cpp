#include "schema/DatosReferencia.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/ImportadorCsv.h"

#include <QDir>

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
    Transaccion tx(stores_, StoreDirectory::Entidades());
    for (const QString& entidad : StoreDirectory::Entidades()) {
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
    }
    tx.Confirmar();
    return cargadas;
}

} // namespace korven::schema
