#include "quote/PantallasPresupuesto.h"

#include "quote/FrmProcesando.h"

namespace korven {

void RegistrarPantallasPresupuesto(Pantallas& pantallas) {
    RegistrarEnvioCorreo(pantallas);
}

} // namespace korven
