#pragma once

namespace korven {

class ComponentRegistry;
class Pantallas;

// Registers the screens of the declaration header under their names: "FrmCaratula",
// "FrmBultos", "frmONCCA", "FrmLstTrans", "FrmABMAgTrans". Each opens modally with its
// arguments ("interno"; the transport agent screen "modo", "cuit", "nombre").
void RegistrarPantallasCaratula(Pantallas& pantallas);

// Registers the list dialogs "PickLists.Main".
void RegistrarComponentesCaratula(ComponentRegistry& componentes);

} // namespace korven
