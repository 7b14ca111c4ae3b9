#pragma once

namespace korven {

class CorridaArmado;

// The declaration items built from the groups: at most 300 groups per item, numbered by
// position or in order of loading, with their sums, freight and insurance spread over them,
// item 0, the common data of the header, the advantages of the client, the question of the
// common external tariff, the closing of the stage and the rule on items G and D.
class ConstruccionItems {
public:
    explicit ConstruccionItems(CorridaArmado& r) : r_(r) {}

    // From the deletion of the items to the common data (item 0 included).
    void GenerarItems();
    // The advantages of the client's rules (VentajasRel) on the items.
    void Ventajas();
    // The question of the common external tariff, or its "N" outside "IC" subregimes.
    void TarifaExternaComun();
    // iteminfo deleted, the header's mark of pending assembly off, the "N" again outside "IC".
    void Cerrar();
    // The item related to items D when the first item is the one G (option CORDANORAF).
    void ItemsGyD();

private:
    CorridaArmado& r_;
};

} // namespace korven
