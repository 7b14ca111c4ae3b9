#include "quote/PantallasPresupuesto.h"

#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasPresupuesto(Pantallas& pantallas) {
    (void)pantallas;
}

} // namespace korven
