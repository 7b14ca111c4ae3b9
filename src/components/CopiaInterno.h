#pragma once

#include <QString>

namespace korven {

class AppContext;

// Copies an Operation under a new number: its header (created today and marked to be
// assembled), invoices, goods lines, proration codes, comment and options. What the assembly
// and the liquidation derive is not copied: the copy is assembled again.
class CopiaInterno {
public:
    explicit CopiaInterno(AppContext& ctx) : ctx_(ctx) {}

    // Asks for the new number as the creation of an Operation does and copies. The number of
    // the copy; empty when none was made (each reason told to the operator).
    QString Mostrar(const QString& origen);

    // The copy itself, in one transaction, each table in one statement: a refusal of the store
    // (a number already in use among them) leaves no record of the copy. Throws KorvenError.
    void Copiar(const QString& origen, const QString& destino);

    // True when a header has that number, compared without regard to case.
    bool Existe(const QString& interno);

private:
    AppContext& ctx_;
};

} // namespace korven
