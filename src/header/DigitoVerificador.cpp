#include "header/DigitoVerificador.h"

namespace korven {

int DigitoVerificador::Calcular(const QString& cuit) {
    if (cuit.size() < 10)
        return -1;
    int suma = 0;
    int peso = 2;
    for (int i = 9; i >= 0; --i) {
        const QChar c = cuit.at(i);
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return -1;
        suma += (c.unicode() - u'0') * peso;
        peso = peso == 7 ? 2 : peso + 1;
    }
    const int resto = suma % 11;
    return resto <= 1 ? resto : 11 - resto;
}

bool DigitoVerificador::Valido(const QString& cuit) {
    if (cuit.size() != 11)
        return false;
    const QChar ultimo = cuit.at(10);
    if (ultimo < QLatin1Char('0') || ultimo > QLatin1Char('9'))
        return false;
    const int digito = Calcular(cuit);
    return digito >= 0 && digito == ultimo.unicode() - u'0';
}

} // namespace korven
