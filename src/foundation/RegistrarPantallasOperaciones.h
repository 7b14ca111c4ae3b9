#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the Operations: the register FrmInternoNew, the hub
// FrmDetalleInterno and the master lists FrmListado, FrmLstVendedores, FrmNewVendedor,
// FrmListadoDespachante, FrmListadoeX and FrmLstDiv. Each answers the "Respuesta" its class
// states.
void RegistrarPantallasOperaciones(Pantallas& pantallas);

} // namespace korven
