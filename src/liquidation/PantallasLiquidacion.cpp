#include "liquidation/PantallasLiquidacion.h"

#include "liquidation/FrmABMClientes.h"
#include "liquidation/FrmAdCon.h"
#include "liquidation/FrmListaPresupuesto.h"
#include "liquidation/FrmPrintItem.h"
#include "liquidation/FrmVentajas.h"
#include "liquidation/FrmVerItem.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasLiquidacion(Pantallas& pantallas) {
    RegistrarFormulario<FrmABMClientes>(pantallas, QStringLiteral("FrmABMClientes"));
    RegistrarFormulario<FrmVerItem>(pantallas, QStringLiteral("FrmVerItem"));
    RegistrarFormulario<FrmPrintItem>(pantallas, QStringLiteral("FrmPrintItem"));
    RegistrarFormulario<FrmVentajas>(pantallas, QStringLiteral("FrmVentajas"));
    RegistrarFormulario<FrmAdCon>(pantallas, QStringLiteral("FrmAdCon"));
    RegistrarFormulario<FrmConceptos>(pantallas, QStringLiteral("FrmConceptos"));
    RegistrarFormulario<FrmReferencias>(pantallas, QStringLiteral("FrmReferencias"));
}

} // namespace korven
