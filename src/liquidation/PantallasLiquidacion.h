#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the liquidation: "FrmABMClientes" (argument "interno"), the item
// screen and its pickers and editors, and the two lists of the quote.
void RegistrarPantallasLiquidacion(Pantallas& pantallas);

} // namespace korven
