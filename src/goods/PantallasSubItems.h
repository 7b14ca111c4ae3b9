#pragma once

namespace korven {

class Pantallas;

// Registers the goods screen "FrmSubItems" (args "interno", "flags").
void RegistrarPantallasSubItems(Pantallas& pantallas);

} // namespace korven
