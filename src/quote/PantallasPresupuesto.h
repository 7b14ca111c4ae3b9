#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the client's quote and of its mail: "FrmPresupuesto" (argument
// "interno"), "FrmDatos" and the SMTP sender "FrmProcesando".
void RegistrarPantallasPresupuesto(Pantallas& pantallas);

} // namespace korven
