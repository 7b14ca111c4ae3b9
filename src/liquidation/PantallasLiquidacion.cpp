#include "liquidation/PantallasLiquidacion.h"

#include "liquidation/FrmABMClientes.h"
#include "liquidation/FrmPrintItem.h"
#include "liquidation/FrmVerItem.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasLiquidacion(Pantallas& pantallas) {
    RegistrarFormulario<FrmABMClientes>(pantallas, QStringLiteral("FrmABMClientes"));
    RegistrarFormulario<FrmVerItem>(pantallas, QStringLiteral("FrmVerItem"));
    RegistrarFormulario<FrmPrintItem>(pantallas, QStringLiteral("FrmPrintItem"));
}

} // namespace korven
