#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmListado;
}

namespace korven {

class AppContext;
class ClCntrl;

// The list of a code look-up: codes and descriptions side by side, with a search box that
// selects the first code beginning with what is typed. The answer ("Respuesta") is the chosen
// row's value, empty when the list is left with nothing chosen.
class FrmListado : public QDialog {
    Q_OBJECT
public:
    // args: "titulo"; "codigos" and "descripciones", one entry per row; "valores", what each
    // row answers (its code when absent).
    FrmListado(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmListado() override;

    QString Respuesta() const { return property("Respuesta").toString(); }
    // Hands the selected row over and closes; nothing happens with no row selected.
    void Elegir();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    std::unique_ptr<Ui::FrmListado> ui;
    ClCntrl* buscador_;
    QStringList valores_;
};

} // namespace korven
