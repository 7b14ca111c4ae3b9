#pragma once

#include <QString>
#include <QStringList>

namespace korven {

class AppContext;

// The invoice numbers of an Operation (table facturas), in the order they were added.
class Facturas {
public:
    explicit Facturas(AppContext& ctx) : ctx_(ctx) {}

    // Adds a number after the last one; "Ya existe esta factura." when the Operation has it
    // already. True when it was added.
    bool Agregar_Facturas(const QString& interno, const QString& factura);
    // Removes a number.
    void Eliminar_Factura(const QString& interno, const QString& factura);
    // The numbers in their order.
    QStringList Lista(const QString& interno);

private:
    AppContext& ctx_;
};

} // namespace korven
