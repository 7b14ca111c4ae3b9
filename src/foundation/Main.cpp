#include "foundation/Main.h"

#include "foundation/FrmPrincipal.h"
#include "foundation/Integridad.h"
#include "foundation/LeerConfig.h"
#include "foundation/LlamadaComponente.h"
#include "foundation/MenuP.h"
#include "foundation/RegistrarPantallas.h"
#include "foundation/Sesion.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ui/IdiomaEscritorio.h"
#include "platform/ui/TeclasEscritorio.h"

#ifdef KORVEN_CON_COMPONENTES
#include "components/RegistrarComponentesPropios.h"
#endif
#if __has_include("foundation/RegistrarPantallasOperaciones.h")
#include "foundation/RegistrarPantallasOperaciones.h"
#define KORVEN_PANTALLAS_OPERACIONES
#endif

#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMetaMethod>
#include <QTableWidget>

namespace korven {

namespace {

// The service components the start makes, when the installation has them; one that is missing
// surfaces where it is first used.
void CrearServicio(Sesion& s, const QString& nombre) {
    AppContext& ctx = s.ctx();
    if (ctx.componentes().Instalado(nombre))
        s.Guardar(ctx.componentes().Crear(nombre, ctx));
}

bool TieneMetodo(const QObject& o, const char* nombre) {
    const QMetaObject* mo = o.metaObject();
    for (int i = 0; i < mo->methodCount(); ++i)
        if (mo->method(i).name() == nombre)
            return true;
    return false;
}

// Hands the store directory to a service that takes it (the services work on the stores of the
// context that made them, which is this one).
void EntregarStores(Sesion& s, const QString& servicio, const char* metodo) {
    if (QObject* o = s.Servicio(servicio); o && TieneMetodo(*o, metodo))
        LlamarMiembro(*o, metodo, {QVariant::fromValue<QObject*>(nullptr)});
}

} // namespace

std::unique_ptr<Sesion> Main(const ParametrosArranque& p) {
    auto sesion = std::make_unique<Sesion>(p.directorioPrograma, p.carpetaSettings, p.dialogos);
    AppContext& ctx = sesion->ctx();
    auto fin = [&p](int codigo) {
        if (p.finDelProceso)
            p.finDelProceso(codigo);
    };
    int linea = 0;
    bool cursor = false;
    // Qt's standard boxes in the clerk's language, and the keys every screen shares.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        InstalarIdiomaEscritorio(QCoreApplication::instance());
        TeclasEscritorio::Instalar(QCoreApplication::instance());
    }
    try {
        linea = 10;
        StoreDirectory& stores = sesion->stores();
        stores.setParametersPath(ctx.directorioPrograma() + QStringLiteral("DataAccessConfig.ini"));
        stores.LoadParameters();

        linea = 20;
#ifdef KORVEN_CON_COMPONENTES
        RegistrarComponentesPropios(ctx.componentes());
#endif
        RegistrarPantallasFoundation(ctx.pantallas());
#ifdef KORVEN_PANTALLAS_OPERACIONES
        RegistrarPantallasOperaciones(ctx.pantallas());
#endif
        for (const auto& r : p.registros)
            r(ctx);

        linea = 30;
        CrearServicio(*sesion, QStringLiteral("ValueRules.Main"));
        CrearServicio(*sesion, QStringLiteral("PickLists.Main"));
        linea = 40;
        for (int i = 0; i < 3; ++i)
            ctx.queryDesk(i);
        linea = 50;
        CrearServicio(*sesion, QStringLiteral("DesktopMail.Main"));
        linea = 60;
        CrearServicio(*sesion, QStringLiteral("ValidadorNCM"));
        EntregarStores(*sesion, QStringLiteral("ValidadorNCM"), "SetDataAccess");
        linea = 70;
        ctx.MascaraFecha = QStringLiteral("yyyyMMdd");

        linea = 80;
        if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            cursor = true;
        }
        linea = 90;
        LeerConfig(ctx);
        EntregarStores(*sesion, QStringLiteral("PickLists.Main"), "SetDataAccess");
        linea = 100;
        if (!Integridad(ctx)) {
            if (cursor)
                QGuiApplication::restoreOverrideCursor();
            fin(1);
            return nullptr;
        }
        linea = 110;
        if (cursor) {
            QGuiApplication::restoreOverrideCursor();
            cursor = false;
        }

        linea = 120;
        auto principal = std::make_unique<FrmPrincipal>(ctx, p.finDelProceso);
        auto* menu = new MenuP(ctx, p.finDelProceso);
        QMdiSubWindow* sub = principal->area()->addSubWindow(
            menu, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        sub->setObjectName(QStringLiteral("MenuPVentana"));
        sub->resize(600, 520);
        sub->move(0, 0);
        menu->show();
        principal->show();
        principal->area()->setActiveSubWindow(sub);
        menu->GrdMenuMain()->setFocus();
        sesion->setPrincipal(std::move(principal), menu);
        return sesion;
    } catch (const KorvenError& e) {
        if (cursor)
            QGuiApplication::restoreOverrideCursor();
        ctx.dialogos().Mensaje(QStringLiteral("%1 / %2\n\nseccion [KORVEN.Global.Main::%3] %4")
                                   .arg(e.numero())
                                   .arg(e.descripcion(), e.origen())
                                   .arg(linea),
                               QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        fin(1);
        return nullptr;
    }
}

} // namespace korven
