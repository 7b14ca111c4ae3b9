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

#if defined(KORVEN_LIQUIDATION) && __has_include("liquidation/AdminImpresion.h")
#include "liquidation/AdminImpresion.h"
#include "platform/SettingsStore.h"
#define KORVEN_ADMIN_IMPRESION
#include <QGuiApplication>
#include <memory>
#endif

#include <QCoreApplication>
#include <QTextStream>

// korven-admin: creates and updates the stores of a configuration, loads the reference data
// and the demo Operations, imports master tables from CSV and lists tables; with the goods
// library, imports the goods lines of an Operation from CSV; with the assembly library,
// assembles an Operation; with the liquidation library, saves its printed liquidation as PDF.
int main(int argc, char* argv[]) {
#ifdef KORVEN_ADMIN_IMPRESION
    // Printing needs fonts and pages: a graphical application, on no screen when there is none.
    std::unique_ptr<QCoreApplication> aplicacion;
    if (argc > 1 && korven::AdminImpresion::EsOrden(QString::fromLocal8Bit(argv[1]))) {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") &&
            !qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        aplicacion = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        aplicacion = std::make_unique<QCoreApplication>(argc, argv);
    }
#else
    QCoreApplication app(argc, argv);
#endif
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
#ifdef KORVEN_ADMIN_IMPRESION
        if (!argumentos.isEmpty() && korven::AdminImpresion::EsOrden(argumentos.first())) {
        korven::AdminImpresion impresion(salida, errores, programa,
                                         korven::SettingsStore::CarpetaDelUsuario());
        r = impresion.Ejecutar(argumentos.mid(1));
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
#ifdef KORVEN_ADMIN_IMPRESION
        if (orden == QLatin1String("ayuda") || orden == QLatin1String("--help"))
            salida << korven::AdminImpresion::TextoAyuda();
#endif
    }
    salida.flush();
    errores.flush();
    return r;
}
