#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the liquidation: "FrmABMClientes" (argument "interno").
void RegistrarPantallasLiquidacion(Pantallas& pantallas);

} // namespace korven
