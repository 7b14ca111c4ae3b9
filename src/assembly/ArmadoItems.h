#pragma once

#include "assembly/CorridaArmado.h"

#include <QString>
#include <optional>

namespace korven {

class AppContext;

// The assembly of one Operation, as the hub's "ARMADO DE ITEMS" runs it: the ten stages that
// turn its goods lines into items with their liquidation rows (Generar), then the first
// calculation of item 0, which writes the totals. Everything is one transaction on the
// connection of INTERNOS: it commits at the normal end whatever ArmadoResultado says, and an
// error of the store or of a component rolls it back, leaving the Operation as it was.
class ArmadoItems {
public:
    ArmadoItems(AppContext& ctx, const QString& interno, ProgresoArmado& progreso);

    // The whole action; ctx.ArmadoResultado tells how the assembly ended. False after an
    // error, which was reported with the run's section text, rolled back, and ends the run
    // with "NO".
    bool Ejecutar();

    // The ten stages, without the transaction (Ejecutar holds it).
    void Generar();

private:
    void Etapa(int etapa, bool terminada);
    // The run's handler: the error reported with the stage reached, the run ended with "NO".
    void Fallo(int numero, const QString& texto, const QString& origen);
    void MarcasNcm();
    void ActualizarInsumos();

    AppContext& ctx_;
    std::optional<CorridaArmado> r_; // a new one for each attempt of the run
    int etapa_ = 0;
};

} // namespace korven
