#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmListadoDespachante;
}

namespace korven {

class AppContext;

// The customs brokers, by name. The answer ("Respuesta") is the map {cuit, nombre} of the one
// chosen, empty when the list is left with Esc.
class FrmListadoDespachante : public QDialog {
    Q_OBJECT
public:
    FrmListadoDespachante(AppContext& ctx, const QVariantMap& args = {}, QWidget* padre = nullptr);
    ~FrmListadoDespachante() override;

    // Hands the selected broker over and closes.
    void LstC();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    std::unique_ptr<Ui::FrmListadoDespachante> ui;
};

} // namespace korven
