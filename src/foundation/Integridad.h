#pragma once

#include <QDate>
#include <QVariant>

namespace korven {

class AppContext;

// Reads the date of the nomenclator (the newest of control_fecha on NCM) into the settings, in
// "Long Date"; empty when there is none. An error is reported with its section and answers
// false: the start then ends.
bool Integridad(AppContext& ctx);

// A value of a date column as a date, whichever way the engine returns it (a date, a timestamp
// or ISO text); an invalid date when it holds none.
QDate FechaDeCampo(const QVariant& valor);

} // namespace korven
