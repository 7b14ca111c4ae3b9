#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmABMProrrateos;
}

namespace korven {

class AppContext;

// The proration codes of the Operation "interno". Browsing: Insert adds, Delete removes the
// code chosen, Esc or Ctrl+C closes and keeps the total of the values in the context. Adding
// (the frame enabled): F11 adds the code typed, Esc or Ctrl+C goes back to browsing.
class FrmABMProrrateos : public QDialog {
    Q_OBJECT
public:
    FrmABMProrrateos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmABMProrrateos() override;

    void CargarList();
    void Agregar();
    void Eliminar(const QString& codigo);
    bool Agregando() const;

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;

private:
    void Estado(bool agregando);
    void Cerrar();

    std::unique_ptr<Ui::FrmABMProrrateos> ui;
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
