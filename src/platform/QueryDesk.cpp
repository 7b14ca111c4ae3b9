#include "platform/QueryDesk.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace korven {

QueryDesk::QueryDesk(StoreDirectory& stores, QObject* parent) : QObject(parent), stores_(stores) {}

QString QueryDesk::EntidadDeCadena(const QString& cadena) {
    const QString t = cadena.trimmed();
    for (const QString& e : StoreDirectory::Entidades())
        if (t.compare(e, Qt::CaseInsensitive) == 0)
            return e;
    static const QRegularExpression fuente(QStringLiteral("data source\\s*=\\s*([^;]+)"),
                                           QRegularExpression::CaseInsensitiveOption);
    const auto m = fuente.match(t);
    if (!m.hasMatch())
        return {};
    QString ruta = m.captured(1).trimmed();
    ruta.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString base = QFileInfo(ruta).completeBaseName().toLower();
    for (const QString& e : StoreDirectory::Entidades())
        if (StoreDirectory::NombreArchivo(e) == base)
            return e;
    return {};
}

void QueryDesk::Conectar() {
    const QString e = EntidadDeCadena(cadena_);
    if (e.isEmpty())
        throw KorvenError(
            3706, QStringLiteral("No se encuentra el proveedor de la conexión: %1").arg(cadena_),
            QStringLiteral("QueryDesk.Main"));
    stores_.getDataConnectionByEntity(e); // opens it now, so that a failure shows here
    entidad_ = e;
}

Conexion& QueryDesk::conexion() {
    if (entidad_.isEmpty())
        throw KorvenError(3709, QStringLiteral("La conexión no está abierta."),
                          QStringLiteral("QueryDesk.Main"));
    return stores_.getDataConnectionByEntity(entidad_);
}

void QueryDesk::setSql(const QString& sql) {
    conexion().setSql(sql);
}
bool QueryDesk::CrearRs(Recordset& rs) {
    return conexion().CrearRs(rs);
}
int QueryDesk::Ejecutar() {
    return conexion().Ejecutar();
}

} // namespace korven
