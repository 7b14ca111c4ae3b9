#pragma once

#include "goods/LineaSubItem.h"

#include <QString>
#include <optional>

namespace korven {

class AppContext;

// The statistics and specific-duty units of a position, as the nomenclator gives them.
struct UnidadesNcm {
    QString estadistica; // [012]
    QString derEsp;      // [020]
};

// What the goods screen shows of a position when it is resolved.
struct PosicionNcm {
    QString posicion;    // [001] "." [002] [003], trimmed
    QString estadistica; // [012]
    QString derEsp;      // [020]
    bool lapi = false;   // [059] = "*"
    bool segElect = false;
    bool prohibicion = false;
    QString reintegro; // [019] when numeric and above 0, else "0"
    QString texto;     // the description of the heading: [004] and its further lines
    QString tip;       // the balloon "Información de la Posición"
};

// The header values the goods screen works with.
struct CaratulaSubItems {
    QString idsubreg;
    double fobdivisas = 0;
    bool oncca = false;
    bool admiteEAN = false;
};

// Reading and writing of goods lines: the nomenclator look-ups of the goods screen, the unit
// conversions, one line read for editing, and the insertion and update of a line.
class SubItemsDatos {
public:
    explicit SubItemsDatos(AppContext& ctx) : ctx_(ctx) {}

    // The units of a position by its first 10 characters and its opening (characters 12-14);
    // conLetra also by the control letter when the position has 15 characters.
    std::optional<UnidadesNcm> Unidades(const QString& posicion, bool conLetra = false);
    // The position resolved as Enter does it: by 15, 14 or 10 characters.
    std::optional<PosicionNcm> BuscarNCM(const QString& posicion);
    // The factor from one unit to another, nothing when the pair is unknown.
    std::optional<double> Pase(const QString& desde, const QString& hasta);
    CaratulaSubItems Caratula(const QString& interno);
    // One line for editing, with its id; nothing when it is not there.
    std::optional<LineaSubItem> LeerSubItem(const QString& interno, long long id);

    // Inserts the line under the next number of the Operation and answers it. The caller holds
    // the transaction and has already written the Operation's mark, whose row lock keeps a second
    // workstation from taking the same number.
    long long Insertar(const QString& interno, const LineaSubItem& l, bool deInsumos,
                       bool admiteEAN);
    // Marks the Operation changed: the assembly must run again and the AEC choice is asked
    // anew (an AEC value already empty is not written again).
    void MarcarCambio(const QString& interno);

    // Rewrites the line; the rows affected.
    int Actualizar(const QString& interno, long long id, const LineaSubItem& l, bool admiteEAN);

private:
    AppContext& ctx_;
};

} // namespace korven
