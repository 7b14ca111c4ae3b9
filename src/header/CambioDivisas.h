#pragma once

#include <QString>

namespace korven {

class AppContext;

// The exchange-rate check of the header: the table of currencies keeps the last rate a clerk
// confirmed as its default.
class CambioDivisas {
public:
    explicit CambioDivisas(AppContext& ctx) : ctx_(ctx) {}

    // Compares the rate typed for a currency with the stored one (both as "0.000000"); when they
    // differ, asks whether the new one is to be the default and, on Yes, stores it.
    void VerificarCambio(const QString& codigo, const QString& valor);

private:
    AppContext& ctx_;
};

} // namespace korven
