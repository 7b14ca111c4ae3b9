#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the foundation under their names (FrmConfig, FrmBase, FrmConGen,
// FrmMostrarDatos, and the folder browser "ClassFile.Carpeta").
void RegistrarPantallasFoundation(Pantallas& pantallas);

} // namespace korven
