#include "header/PantallasCaratula.h"

#include "header/FrmABMAgTrans.h"
#include "header/FrmBultos.h"
#include "header/FrmCaratula.h"
#include "header/FrmLstTrans.h"
#include "header/PickLists.h"
#include "header/frmONCCA.h"
#include "platform/ComponentRegistry.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasCaratula(Pantallas& p) {
    RegistrarFormulario<FrmCaratula>(p, QStringLiteral("FrmCaratula"));
    RegistrarFormulario<FrmBultos>(p, QStringLiteral("FrmBultos"));
    RegistrarFormulario<frmONCCA>(p, QStringLiteral("frmONCCA"));
    RegistrarFormulario<FrmLstTrans>(p, QStringLiteral("FrmLstTrans"));
    RegistrarFormulario<FrmABMAgTrans>(p, QStringLiteral("FrmABMAgTrans"));
}

void RegistrarComponentesCaratula(ComponentRegistry& componentes) {
    componentes.Registrar(QStringLiteral("PickLists.Main"), [](AppContext& ctx) {
        return std::unique_ptr<QObject>(new PickLists(ctx));
    });
}

} // namespace korven
