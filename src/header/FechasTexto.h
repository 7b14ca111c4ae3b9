#pragma once

#include <QDate>
#include <QString>

namespace korven {

// Dates the header keeps as text, in the user's format. A date is read the way the clerk types
// it: day first ("22/11/2026", "22-11-26", "22.11.2026", "2026-11-22"); a year of two digits
// falls in 1930..2029.
class FechasTexto {
public:
    // The date the text holds, or an invalid date when it holds none.
    static QDate Leer(const QString& texto);
    static bool EsFecha(const QString& texto) { return Leer(texto).isValid(); }
};

} // namespace korven
