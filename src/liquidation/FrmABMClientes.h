#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmABMClientes;
}

namespace korven {

class AppContext;

// The question of the automotive regime: whether to calculate the common external tariff and,
// if so, for a production or a replacement part. The answer is kept per operation (argument
// "interno") and is also the form's "Respuesta". Esc answers as "&No".
class FrmABMClientes : public QDialog {
    Q_OBJECT
public:
    FrmABMClientes(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);
    ~FrmABMClientes() override;

    void cmdAceptar_Click();
    void cmdCancelar_Click();

public Q_SLOTS:
    void reject() override;

private:
    void Guardar(const QString& respuesta);

    std::unique_ptr<Ui::FrmABMClientes> ui_;
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
