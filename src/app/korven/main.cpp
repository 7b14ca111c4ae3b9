#include "foundation/Main.h"
#include "foundation/BasesIniciales.h"
#include "foundation/Sesion.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"
#include "platform/ui/DesktopDialogs.h"

#include <QApplication>

// The screens of the libraries above the foundation.
#if defined(KORVEN_LIQUIDATION) && __has_include("liquidation/PantallasLiquidacion.h")
#include "liquidation/PantallasLiquidacion.h"
#define KORVEN_PANTALLAS_LIQUIDACION
#endif

#if defined(KORVEN_QUOTE) && __has_include("quote/PantallasPresupuesto.h")
#include "quote/PantallasPresupuesto.h"
#define KORVEN_PANTALLAS_PRESUPUESTO
#endif

#if defined(KORVEN_GOODS) && __has_include("goods/PantallasSubItems.h")
#include "goods/PantallasSubItems.h"
#define KORVEN_PANTALLAS_SUBITEMS
#endif

#if defined(KORVEN_HEADER) && __has_include("header/PantallasCaratula.h")
#include "header/PantallasCaratula.h"
#define KORVEN_PANTALLAS_CARATULA
#endif

#if defined(KORVEN_GOODS) && __has_include("goods/PantallasNomenclador.h")
#include "goods/PantallasNomenclador.h"
#define KORVEN_PANTALLAS_NOMENCLADOR
#endif

#if defined(KORVEN_GOODS) && __has_include("goods/PantallasCatalogo.h")
#include "goods/PantallasCatalogo.h"
#define KORVEN_PANTALLAS_CATALOGO
#endif
#if defined(KORVEN_GOODS) && __has_include("goods/PantallasImportar.h")
#include "goods/PantallasImportar.h"
#define KORVEN_PANTALLAS_IMPORTAR
#endif

#if defined(KORVEN_ASSEMBLY) && __has_include("assembly/PantallasArmado.h")
#include "assembly/PantallasArmado.h"
#define KORVEN_PANTALLAS_ARMADO
#endif

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Korven"));
    QApplication::setApplicationName(QStringLiteral("Korven"));

    const QString programa = QCoreApplication::applicationDirPath();
    {
        // The first start of a workstation on its embedded stores creates them.
        korven::DesktopDialogs dialogos;
        korven::CrearBasesIniciales(programa, dialogos);
    }

    int codigo = 0;
    korven::ParametrosArranque p;
    p.directorioPrograma = programa;
    p.carpetaSettings = korven::SettingsStore::CarpetaDelUsuario();
    p.finDelProceso = [&codigo](int c) {
        codigo = c;
        QCoreApplication::exit(c);
    };
#ifdef KORVEN_PANTALLAS_LIQUIDACION
    p.registros.push_back(
        [](korven::AppContext& ctx) { korven::RegistrarPantallasLiquidacion(ctx.pantallas()); });
#endif
#ifdef KORVEN_PANTALLAS_PRESUPUESTO
    p.registros.push_back(
        [](korven::AppContext& ctx) { korven::RegistrarPantallasPresupuesto(ctx.pantallas()); });
#endif
#ifdef KORVEN_PANTALLAS_CARATULA
    p.registros.push_back([](korven::AppContext& ctx) {
        korven::RegistrarComponentesCaratula(ctx.componentes());
        korven::RegistrarPantallasCaratula(ctx.pantallas());
    });
#endif
#ifdef KORVEN_PANTALLAS_SUBITEMS
    p.registros.push_back(
        [](korven::AppContext& ctx) { korven::RegistrarPantallasSubItems(ctx.pantallas()); });
#endif
#ifdef KORVEN_PANTALLAS_NOMENCLADOR
    p.registros.push_back([](korven::AppContext& ctx) {
        korven::RegistrarComponentesNomenclador(ctx.componentes());
        korven::RegistrarPantallasNomenclador(ctx.pantallas());
    });
#endif
#ifdef KORVEN_PANTALLAS_CATALOGO
    p.registros.push_back(
        [](korven::AppContext& ctx) { korven::RegistrarPantallasCatalogo(ctx.pantallas()); });
#endif
#ifdef KORVEN_PANTALLAS_IMPORTAR
    p.registros.push_back(
        [](korven::AppContext& ctx) { korven::RegistrarPantallasImportar(ctx.pantallas()); });
#endif
#ifdef KORVEN_PANTALLAS_ARMADO
    p.registros.push_back(
        [](korven::AppContext& ctx) { korven::RegistrarPantallasArmado(ctx.pantallas()); });
#endif
    std::unique_ptr<korven::Sesion> sesion = korven::Main(p);
    if (!sesion)
        return codigo != 0 ? codigo : 1;
    return QApplication::exec();
}
