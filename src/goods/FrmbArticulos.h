#pragma once

#include "goods/FrmArticulos.h"

namespace korven {

// "Articulos" by field with each article's description, position and total (quantity times
// price).
class FrmbArticulos : public FrmArticulos {
    Q_OBJECT
public:
    // args: "catalogo".
    FrmbArticulos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr)
        : FrmArticulos(ctx, args, padre, BusquedaArticulos::Forma::ConTotal) {}
};

} // namespace korven
