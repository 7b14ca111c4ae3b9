#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmbArticulos;
}

namespace korven {

class AppContext;

// "Articulos": the articles of a catalogue whose chosen field contains a text, each with
// its description, position and total (quantity times price). Enter in the text or the button
// searches; Esc closes.
class FrmbArticulos : public QDialog {
    Q_OBJECT
public:
    // args: "catalogo".
    FrmbArticulos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmbArticulos() override;

    void Buscar();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    std::unique_ptr<Ui::FrmbArticulos> ui;
    AppContext& ctx_;
    QString catalogo_;
};

} // namespace korven
