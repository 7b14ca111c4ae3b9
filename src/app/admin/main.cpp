#include "schema/Administracion.h"

#if defined(KORVEN_GOODS) && __has_include("goods/AdminSubItems.h")
#include "goods/AdminSubItems.h"
#include "platform/SettingsStore.h"
#define KORVEN_ADMIN_SUBITEMS
#endif

#if defined(KORVEN_ASSEMBLY) && __has_include("assembly/AdminArmado.h")
#include "assembly/AdminArmado.h"
#include "platform/SettingsStore.h"
#define KORVEN_ADMIN_ARMADO
#endif

#include <QCoreApplication>
#include <QTextStream>

// korven-admin: creates and updates the stores of a configuration, loads the reference data
// and the demo Operations, imports master tables from CSV and lists tables; with the goods
// library, imports the goods lines of an Operation from CSV.
int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("korven-admin"));
    QTextStream salida(stdout);
    QTextStream errores(stderr);
    const QStringList argumentos = QCoreApplication::arguments().mid(1);
    const QString programa = QCoreApplication::applicationDirPath();
    int r = 0;
#ifdef KORVEN_ADMIN_SUBITEMS
    if (!argumentos.isEmpty() && korven::AdminSubItems::EsOrden(argumentos.first())) {
        korven::AdminSubItems goods(salida, errores, programa,
                                    korven::SettingsStore::CarpetaDelUsuario());
        r = goods.Ejecutar(argumentos.mid(1));
    } else
#endif
#ifdef KORVEN_ADMIN_ARMADO
        if (!argumentos.isEmpty() && korven::AdminArmado::EsOrden(argumentos.first())) {
        korven::AdminArmado armado(salida, errores, programa,
                                   korven::SettingsStore::CarpetaDelUsuario());
        r = armado.Ejecutar(argumentos.mid(1));
    } else
#endif
    {
        korven::schema::Administracion admin(salida, errores, programa);
        r = admin.Ejecutar(argumentos);
        const QString orden = argumentos.value(0).toLower();
        Q_UNUSED(orden);
#ifdef KORVEN_ADMIN_SUBITEMS
        if (orden == QLatin1String("ayuda") || orden == QLatin1String("--help"))
            salida << korven::AdminSubItems::TextoAyuda();
#endif
#ifdef KORVEN_ADMIN_ARMADO
        if (orden == QLatin1String("ayuda") || orden == QLatin1String("--help"))
            salida << korven::AdminArmado::TextoAyuda();
#endif
    }
    salida.flush();
    errores.flush();
    return r;
}
