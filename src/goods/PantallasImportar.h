#pragma once

namespace korven {

class Pantallas;

// Registers "FrmImportarSubItems": the preview and import of goods lines from a spreadsheet
// (args "interno" and "texto", the pasted rows, or "archivo", a CSV file).
void RegistrarPantallasImportar(Pantallas& pantallas);

} // namespace korven
