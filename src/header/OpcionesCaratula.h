#pragma once

#include <QString>
#include <QStringList>

namespace korven {

// The option lists of the header: the VAT option and the income-tax option. Each entry's
// position in its list maps to the code kept in the header.
class OpcionesCaratula {
public:
    static QStringList EntradasIVA();
    static QStringList EntradasGanancias();
    // The code of a position; empty when there is no selection (-1) or the position is unknown.
    static QString CodigoIVA(int posicion);
    static QString CodigoGanancias(int posicion);
    // The position of a code; -1 for an unknown one, and the list then has no selection.
    static int PosicionIVA(const QString& codigo);
    static int PosicionGanancias(const QString& codigo);
};

} // namespace korven
