#pragma once

namespace korven {

class CorridaArmado;

// The first third of an assembly run: the goods lines of the Operation repaired in place,
// checked against the nomenclator, grouped into groupsubitems (one group per merchandise at one
// unit price), each group linked to its lines (idsub, idrel), and the regime flags recorded.
class AgrupacionSubItems {
public:
    explicit AgrupacionSubItems(CorridaArmado& r) : r_(r) {}

    // groupsubitems, idrel and sysflag of the Operation deleted.
    void Limpiar();
    // Empty columns of subitems repaired; a suffix text always ends in "-".
    void Normalizar();
    // Every line through ValidadorNCM. False when one is invalid: the report was shown,
    // ArmadoResultado is "No" and the run is ended (r.terminada).
    bool Validar();
    // The groups, their derived quantities and defaults, and their links to the lines.
    void Agrupar();
    // The five regime flags (context and sysflag) and the "N" of the common external tariff.
    void MarcarRegimen();
    // Groups whose unit prices differ by no more than 0.0003 merged into one (the option
    // VrySbtDup).
    void BuscarDuplicados();

private:
    CorridaArmado& r_;
};

} // namespace korven
