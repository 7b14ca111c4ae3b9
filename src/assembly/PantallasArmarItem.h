#pragma once

namespace korven {

class Pantallas;

// The progress window of the assembly, "FrmArmarItem".
void RegistrarPantallasArmarItem(Pantallas& pantallas);

} // namespace korven
