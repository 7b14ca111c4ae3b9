#include "foundation/BasesIniciales.h"

#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDir>
#include <QFileInfo>

#ifdef KORVEN_CON_ESQUEMA
#include "schema/Esquema.h"
#endif

namespace korven {

bool CrearBasesIniciales(const QString& directorioPrograma, Dialogos& dialogos) {
    const QString dir = DirectorioNormal(directorioPrograma);
    const QString config = dir + QStringLiteral("DataAccessConfig.ini");
    if (QFileInfo::exists(config))
        return false;
    const QDir db(dir + QStringLiteral("db"));
    if (db.exists() && !db.isEmpty(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot))
        return false;
#ifdef KORVEN_CON_ESQUEMA
    try {
        StoreDirectory stores;
        stores.setParametersPath(config);
        stores.LoadParameters();
        const QString datos = schema::CarpetaDatos(dir);
        schema::CrearOActualizar(stores);
        schema::CargarDatosReferencia(stores, datos);
        schema::CargarOperacionesDemo(stores, datos);
        stores.CloseAllDataConnection();
        return true;
    } catch (const KorvenError& e) {
        dialogos.Mensaje(QStringLiteral("%1 / %2 - seccion[CrearBasesIniciales.Global.KORVEN]::%3")
                             .arg(e.numero())
                             .arg(e.descripcion(), e.origen()),
                         QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
#else
    Q_UNUSED(dialogos);
    return false;
#endif
}

} // namespace korven
