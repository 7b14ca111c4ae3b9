#pragma once

namespace korven {

class CorridaArmado;

// The amounts of the header spread over the goods: the FOB over the groups (one value, or one
// per proration code), the common data of the header onto the groups, the gross kilos back to
// the header, and at the end of the run the external-trade amount and the net kilos over the
// finished items.
class ProrrateoTotales {
public:
    explicit ProrrateoTotales(CorridaArmado& r) : r_(r) {}

    // The FOB with the value to prorate, or by proration codes; sets r.TotalFobOperacion.
    // False when a code of the Operation is used by no line: the list was shown,
    // ArmadoResultado is "NO" and the run is ended.
    bool ProrratearFob();
    // Merchandise state, country of origin and ONCCA data of the header onto the groups; the
    // proration codes cleared.
    void DatosComunes();
    // The header's gross kilos from the groups, or the warning of lines without them.
    void KilosBrutos();
    // The external-trade amount over the items, remainder included; item 0 holds the total.
    void ProrratearComExt(double& comExt, double& fobTotal);
    // Who spreads the net kilos: the assembly run with the header's total, or the clerk on the
    // screen of manual proration, where the text for an Operation without empty lines is its
    // own and the rounding rest goes to the heaviest line, silently kept when none can take it.
    enum class Kilos { Armado, Pantalla };
    // The net kilos over the groups without kilos, and onto the items.
    void Prorratear_ItemCeroEx(double& kilos, Kilos quien = Kilos::Armado);

private:
    CorridaArmado& r_;
};

} // namespace korven
