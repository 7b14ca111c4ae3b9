#include "quote/PantallasPresupuesto.h"

#include "quote/FrmPresupuesto.h"
#include "quote/FrmProcesando.h"

namespace korven {

void RegistrarPantallasPresupuesto(Pantallas& pantallas) {
    RegistrarPresupuesto(pantallas);
    RegistrarEnvioCorreo(pantallas);
}

} // namespace korven
