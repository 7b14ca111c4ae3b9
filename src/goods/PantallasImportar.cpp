#include "goods/PantallasImportar.h"

#include "goods/FrmImportarSubItems.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasImportar(Pantallas& pantallas) {
    RegistrarFormulario<FrmImportarSubItems>(pantallas, QStringLiteral("FrmImportarSubItems"));
}

} // namespace korven
