#include "goods/PantallasNomenclador.h"

#include "goods/FrmABMProrrateos.h"
#include "goods/FrmCargaSufijos.h"
#include "goods/FrmConsultas.h"
#include "goods/FrmLstProrrateo.h"
#include "goods/FrmPosicion.h"
#include "goods/FrmSufijos.h"
#include "goods/ValidadorNCM.h"
#include "platform/ComponentRegistry.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasNomenclador(Pantallas& p) {
    RegistrarFormulario<FrmConsultas>(p, QStringLiteral("FrmConsultas"));
    RegistrarFormulario<FrmPosicion>(p, QStringLiteral("FrmPosicion"));
    RegistrarFormulario<FrmSufijos>(p, QStringLiteral("FrmSufijos"));
    RegistrarFormulario<FrmCargaSufijos>(p, QStringLiteral("FrmCargaSufijos"));
    RegistrarFormulario<FrmABMProrrateos>(p, QStringLiteral("FrmABMProrrateos"));
    RegistrarFormulario<FrmLstProrrateo>(p, QStringLiteral("FrmLstProrrateo"));
}

void RegistrarComponentesNomenclador(ComponentRegistry& componentes) {
    componentes.Registrar(QStringLiteral("ValidadorNCM"), [](AppContext& ctx) {
        return std::unique_ptr<QObject>(new ValidadorNCM(ctx));
    });
}

} // namespace korven
