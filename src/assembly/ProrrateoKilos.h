#pragma once

namespace korven {

class CorridaArmado;

// The net kilos the clerk spreads by hand over an assembled Operation: a new total for the
// whole Operation or for one item, shared in proportion to FOB among the lines that have no
// kilos yet. Works on item and groupsubitems through the run's connection; the caller holds
// the transaction. Messages end a routine normally, keeping what it wrote; an error of the
// store leaves with the routine's section.
class ProrrateoKilos {
public:
    explicit ProrrateoKilos(CorridaArmado& r) : r_(r) {}

    // The whole Operation: the lines without kilos share the new total.
    void Prorratear_ItemCeroEx(double& kilos);
    // One item: its lines without kilos (in the units measured in kilos) share what the new
    // total adds to the kilos already loaded; with every line loaded the new total replaces
    // them all.
    void Prorratear_ItemEx(long long item, double kilos);
    // Every item without kilos takes its FOB share of what the new total adds, then its lines.
    void Prorratear_ItemCero(double kilos);
    // The lines of each item still without kilos get 0.01, taken from the item's heaviest line.
    void Prorratear_ItemVacios();

private:
    CorridaArmado& r_;
};

} // namespace korven
