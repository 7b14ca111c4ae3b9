#pragma once

#include <QList>
#include <QString>

namespace korven {

class AppContext;
class KorvenError;

// The proration codes of an Operation (table prorrateo): each code carries a value greater than
// 0 that the proration of totals uses as its weight.
class Prorrateos {
public:
    struct Codigo {
        QString codigo;
        QString descripcion;
        double valor = 0;
    };

    explicit Prorrateos(AppContext& ctx) : ctx_(ctx) {}

    // The codes of the Operation, in the store's key order.
    QList<Codigo> CargarList(const QString& interno);
    // Adds a code, the value as the clerk typed it (system decimal separator); tells the clerk
    // why not and answers false when it is refused.
    bool Agregar(const QString& interno, const QString& codigo, const QString& descripcion,
                 const QString& valor);
    bool Eliminar(const QString& interno, const QString& codigo);
    // The sum of the values of the Operation (0 when it has none).
    double Total(const QString& interno);

private:
    void Reportar(const KorvenError& e, const QString& seccion);

    AppContext& ctx_;
};

} // namespace korven
