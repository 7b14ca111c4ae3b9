#pragma once

#include <QString>
#include <QStringList>

namespace korven {

class AppContext;

// What a sub-regime makes of the header screen: which fields exist at all (table dest, one
// column per control, "x" where the sub-regime does without it) and how the screen behaves as
// an import or an export (the prefixes "EC" and "EG").
class DisposicionCaratula {
public:
    // The payment facility exists for one sub-regime only.
    bool facilidadPagoVisible = false;
    // False when dest has no row for the sub-regime: the fields stay as they are.
    bool hayDest = false;
    // Controls to hide and empty, in the order of the dest columns, with the companions of the
    // three currency groups (names as dest spells them, compared without regard to case).
    QStringList ocultos;
    // "EC" and "EG": banks and commissions abroad, ONCCA button, no shipment date.
    bool exportacion = false;
    // The VAT and income-tax options apply to imports ("I...") and to "LAPI...".
    bool opcionesHabilitadas = false;

    // Reads dest for the sub-regime; a store error raises KorvenError.
    static DisposicionCaratula Calcular(AppContext& ctx, const QString& idsubreg);
    // The controls that go with a currency group's value field (empty for any other control).
    static QStringList Companeros(const QString& control);
};

} // namespace korven
