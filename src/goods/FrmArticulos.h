#pragma once

#include "goods/BusquedaArticulos.h"

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmArticulos;
}

namespace korven {

class AppContext;

// "Articulos": the articles of a catalogue whose chosen field contains a text, each with
// its position, description, quantity and price; with no text every article. Enter in the text or
// the button searches; Esc closes. FrmbArticulos is the same search showing the total instead.
class FrmArticulos : public QDialog {
    Q_OBJECT
public:
    // args: "catalogo".
    FrmArticulos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr,
                 BusquedaArticulos::Forma forma = BusquedaArticulos::Forma::ConCantidad);
    ~FrmArticulos() override;

    void Buscar();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    std::unique_ptr<Ui::FrmArticulos> ui;
    AppContext& ctx_;
    BusquedaArticulos::Forma forma_;
    QString catalogo_;
};

} // namespace korven
