#pragma once

#include <QString>
#include <optional>

namespace korven {

// The arithmetic of the currency groups of the header: value in currency, rate, value in
// dollars; the insurance as a percentage; the currency code. Texts are as the clerk sees them,
// in the system's decimal separator.
class ImportesCaratula {
public:
    // Value x rate in "00.00", or the empty text when the product is 0. Nothing when either
    // text is not a number: the dollars field then stays as it is.
    static std::optional<QString> Multiplicar(const QString& valor, const QString& cambio);

    struct Seguro {
        QString dolares; // the insurance in dollars, "00.00"
        QString divisas; // the insurance in its currency, "00.00"; nothing without a rate
        bool conDivisas = false;
    };
    // The insurance by percentage: over the FOB and the freight in dollars and, when the value to
    // prorate is a number or the proration codes add up above 0, over those too. Nothing when
    // the percentage is not a number or is 0, or when the FOB or the freight in dollars is not a
    // number.
    static std::optional<Seguro> SeguroPorcentual(const QString& porcentaje, const QString& dolFob,
                                                  const QString& dolFlete,
                                                  const QString& prorratear,
                                                  double sumaCodigosProrrateo,
                                                  const QString& cambioSeguro);

    // A currency code padded to three digits ("1" gives "001"); a code that is no number stays.
    static QString CodigoDivisa(const QString& codigo);

    // A value as the amount fields show it: "00.00"; a text that is no number stays as typed.
    static QString FormatoImporte(const QString& texto);
    // A number of the store as a rate field shows it: "0.000000".
    static QString FormatoCambio(double cambio);
};

} // namespace korven
