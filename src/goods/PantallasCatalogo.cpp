#include "goods/PantallasCatalogo.h"

#include "goods/FrmArticulos.h"
#include "goods/FrmCatArticulos.h"
#include "goods/FrmCatArticulosBuscar.h"
#include "goods/FrmbArticulos.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasCatalogo(Pantallas& p) {
    RegistrarFormulario<FrmCatArticulos>(p, QStringLiteral("FrmCatArticulos"));
    RegistrarFormulario<FrmCatArticulosBuscar>(p, QStringLiteral("FrmCatArticulosBuscar"));
    RegistrarFormulario<FrmArticulos>(p, QStringLiteral("FrmArticulos"));
    RegistrarFormulario<FrmbArticulos>(p, QStringLiteral("FrmbArticulos"));
}

} // namespace korven
