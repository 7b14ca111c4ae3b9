#pragma once

#include <QString>

namespace korven {

// Country marker of the liquidation: "M" for the partners "225" and "221", "B" for "203", empty
// for an empty code and "E" for every other country. The code is trimmed first.
QString MarcaPais(const QString& idpais);

// Subregimes whose items carry temporary inputs and commissions abroad (trimmed first).
bool SubregimenConInsumos(const QString& subregimen);

// Temporary subregimes (exact text).
bool SubregimenTemporal(const QString& subregimen);

// Countries with a cap on the tariff. The text is read as a whole number, so "0101" is 101; a
// text that is no whole number is in no list.
bool PaisConTopeArancel(const QString& pais);

} // namespace korven
