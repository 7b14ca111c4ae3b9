#pragma once

#include <QString>

namespace korven {

// The check digit of a tax number (CUIT) of eleven digits.
class DigitoVerificador {
public:
    // The check value of the first ten digits: weights 2..7 from the tenth digit backwards,
    // wrapping from 7 to 2; the sum modulo 11; a remainder of 0 or 1 is the value itself,
    // any other gives 11 less the remainder. -1 when the text has not ten digits first.
    static int Calcular(const QString& cuit);
    // True for eleven digits whose last one is the check value of the first ten.
    static bool Valido(const QString& cuit);
};

} // namespace korven
