#pragma once

namespace korven {

class CorridaArmado;

// The kilos of an item all present or all absent, with the item's net kilos set from its
// groups; a failing item is listed and the run counts as not done (ArmadoResultado "NO").
class ControlesArmado {
public:
    explicit ControlesArmado(CorridaArmado& r) : r_(r) {}

    void VerificarIntegridad();
    // The groups of one item, in the report of lines that must all have kilos or none.
    void MostrarSubItems(long long idItem);

private:
    CorridaArmado& r_;
};

} // namespace korven
