#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the check of an assembled Operation: "Frm_ComprobacionErrores"
// (argument "texto", the report) and "ChequearInterno" (argument "interno"; answers whether
// something differs, after showing the report).
void RegistrarPantallasComprobacion(Pantallas& pantallas);
// Every screen of the assembly: the progress window "FrmArmarItem" and those of the check.
void RegistrarPantallasArmado(Pantallas& pantallas);

} // namespace korven
