#pragma once

namespace korven {

class Pantallas;

// Registers the screens of the article catalogue under their names: "FrmCatArticulos",
// "FrmCatArticulosBuscar" (args "catalogo", "texto"; answers a map with "articulo" and
// "descripcion"), "FrmArticulos" and "FrmbArticulos" (args "catalogo").
void RegistrarPantallasCatalogo(Pantallas& pantallas);

} // namespace korven
