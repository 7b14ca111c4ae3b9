#include "assembly/PantallasArmarItem.h"

#include "assembly/FrmArmarItem.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasArmarItem(Pantallas& pantallas) {
    RegistrarFormulario<FrmArmarItem>(pantallas, QStringLiteral("FrmArmarItem"));
}

} // namespace korven
