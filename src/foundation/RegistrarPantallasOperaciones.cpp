#include "foundation/RegistrarPantallasOperaciones.h"

#include "foundation/FrmDetalleInterno.h"
#include "foundation/FrmInternoNew.h"
#include "foundation/FrmListado.h"
#include "foundation/FrmListadoDespachante.h"
#include "foundation/FrmListadoeX.h"
#include "foundation/FrmLstDiv.h"
#include "foundation/FrmLstVendedores.h"
#include "foundation/FrmNewVendedor.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasOperaciones(Pantallas& pantallas) {
    RegistrarFormulario<FrmInternoNew>(pantallas, QStringLiteral("FrmInternoNew"));
    RegistrarFormulario<FrmDetalleInterno>(pantallas, QStringLiteral("FrmDetalleInterno"));
    RegistrarFormulario<FrmListado>(pantallas, QStringLiteral("FrmListado"));
    RegistrarFormulario<FrmLstVendedores>(pantallas, QStringLiteral("FrmLstVendedores"));
    RegistrarFormulario<FrmNewVendedor>(pantallas, QStringLiteral("FrmNewVendedor"));
    RegistrarFormulario<FrmListadoDespachante>(pantallas, QStringLiteral("FrmListadoDespachante"));
    RegistrarFormulario<FrmListadoeX>(pantallas, QStringLiteral("FrmListadoeX"));
    RegistrarFormulario<FrmLstDiv>(pantallas, QStringLiteral("FrmLstDiv"));
}

} // namespace korven
