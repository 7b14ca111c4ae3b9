#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

namespace korven {

// The system decimal separator: the one of the user's locale (QLocale's default, which the
// program leaves at the system locale and a test may change with SeparadorDecimalScope).
QString SeparadorDecimal();

// Sets the decimal separator for the life of the object ("," or "."), restoring the previous
// default locale afterwards. For tests and for a workstation that overrides its locale.
class SeparadorDecimalScope {
public:
    explicit SeparadorDecimalScope(const QString& separador);
    ~SeparadorDecimalScope();
    SeparadorDecimalScope(const SeparadorDecimalScope&) = delete;
    SeparadorDecimalScope& operator=(const SeparadorDecimalScope&) = delete;

private:
    QLocale anterior_;
};

// Formats a number by one of the system's masks: "00.00", "00.0000", "00.000000", "0.000000",
// "000.000000", "00.000", "00.00000", "000", "0000", "00", "##.00" (and any mask made of '0',
// '#' and one '.'). The mask's '0' are mandatory digits, '#' optional ones; the decimal point
// shows as the system separator. Rounds half away from zero on the decimal value of the number
// (2.675 gives 2.68), never on its binary approximation.
QString Formato(double valor, const QString& mascara);
// Same, with an explicit decimal separator.
QString Formato(double valor, const QString& mascara, const QString& separador);

// Formats a date: "Long Date" (Spanish of Argentina: "domingo, 22 de noviembre de 2026"),
// "dd/mm/yyyy", "dd-mm-yyyy", "dd-mm-yy", "yyyyMMdd". An invalid date gives the empty text.
QString FormatoFecha(const QDate& fecha, const QString& mascara);

// Formats a value the way the legacy Format did: numbers (or text typed in the system
// separator) by a number mask, dates (or date text) by a date mask. Anything else comes back as
// its text.
QString Formato(const QVariant& valor, const QString& mascara);

// Rounds half away from zero to the given decimals on the decimal value of the number.
double RedondearDecimal(double valor, int decimales);

} // namespace korven
