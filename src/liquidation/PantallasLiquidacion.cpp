#include "liquidation/PantallasLiquidacion.h"

#include "liquidation/FrmABMClientes.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasLiquidacion(Pantallas& pantallas) {
    RegistrarFormulario<FrmABMClientes>(pantallas, QStringLiteral("FrmABMClientes"));
}

} // namespace korven
