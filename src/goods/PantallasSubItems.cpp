#include "goods/PantallasSubItems.h"

#include "goods/FrmSubItems.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasSubItems(Pantallas& p) {
    RegistrarFormulario<FrmSubItems>(p, QStringLiteral("FrmSubItems"));
}

} // namespace korven
