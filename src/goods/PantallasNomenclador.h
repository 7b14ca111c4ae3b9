#pragma once

namespace korven {

class ComponentRegistry;
class Pantallas;

// Registers the screens of the nomenclator and of the proration codes under their names:
// "FrmConsultas", "FrmPosicion" ("texto"), "FrmSufijos" ("posicion"), "FrmCargaSufijos"
// ("opciones", "seleccion"), "FrmABMProrrateos" and "FrmLstProrrateo" ("interno").
void RegistrarPantallasNomenclador(Pantallas& pantallas);

// Registers the component "ValidadorNCM".
void RegistrarComponentesNomenclador(ComponentRegistry& componentes);

} // namespace korven
