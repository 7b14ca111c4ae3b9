#pragma once

#include "components/LibroClientes.h"

#include <QDialog>
#include <memory>
#include <optional>

class QLineEdit;

namespace Ui {
class FrmCliente;
}

namespace korven {

class AppContext;

// One client of the book, new or changed, with every column of the table.
class FrmCliente : public QDialog {
    Q_OBJECT
public:
    // With a client, changes it (its tax number stays); without, adds one.
    FrmCliente(AppContext& ctx, const std::optional<Cliente>& existente, QWidget* padre = nullptr);
    ~FrmCliente() override;

    // Checks and saves the client; true, and the form closes, when it was saved.
    bool Guardar();
    const Cliente& cliente() const { return cliente_; }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    bool LeerNumero(QLineEdit* txt, double& valor);
    void Habilitar();

    std::unique_ptr<Ui::FrmCliente> ui;
    AppContext& ctx_;
    bool nuevo_;
    Cliente cliente_;
};

} // namespace korven
