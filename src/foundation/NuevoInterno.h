#pragma once

#include <QString>

namespace korven {

class AppContext;

// Creates an Operation: asks for its number (the operator's own, up to 15 characters), refuses a
// number already in use, writes the one header record and the options of a new Operation.
class NuevoInterno {
public:
    explicit NuevoInterno(AppContext& ctx) : ctx_(ctx) {}

    // The number created; empty when the operator gave none, the number exists, or the store
    // refused (each told to the operator).
    QString Ejecutar();

    // True when a header with that number exists, compared without regard to case. Throws
    // KorvenError when the store refuses.
    bool Existe(const QString& interno);

    static constexpr int LargoMaximo = 15;

private:
    AppContext& ctx_;
};

} // namespace korven
