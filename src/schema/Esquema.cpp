#include "schema/Esquema.h"

#include "platform/StoreDirectory.h"
#include "schema/DatosReferencia.h"
#include "schema/Migrador.h"
#include "schema/OperacionesDemo.h"

#include <QDir>
#include <QFileInfo>

namespace korven::schema {

int VersionActual() {
    return Migrador::VersionActual;
}

int VersionDe(StoreDirectory& stores, const QString& entidad) {
    return Migrador(stores).Version(entidad);
}

void CrearOActualizar(StoreDirectory& stores) {
    Migrador m(stores);
    for (const QString& e : StoreDirectory::Entidades())
        m.Actualizar(e);
}

void CargarDatosReferencia(StoreDirectory& stores, const QString& carpetaDatos) {
    DatosReferencia(stores, carpetaDatos).Cargar();
}

void CargarOperacionesDemo(StoreDirectory& stores, const QString& carpetaDatos) {
    OperacionesDemo(stores, carpetaDatos).Cargar();
}

QString CarpetaDatos(const QString& directorioPrograma) {
    const QString junto = QDir(directorioPrograma).filePath(QStringLiteral("data"));
    if (QFileInfo(junto).isDir())
        return QDir::cleanPath(junto);
    const QString fuente = qEnvironmentVariable("KORVEN_SOURCE_DIR");
    if (!fuente.isEmpty() && QFileInfo(QDir(fuente).filePath(QStringLiteral("data"))).isDir())
        return QDir::cleanPath(QDir(fuente).filePath(QStringLiteral("data")));
    return QStringLiteral(KORVEN_DATOS_FUENTE);
}

} // namespace korven::schema
