#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QLineEdit;

namespace Ui {
class FrmBultos;
}

namespace korven {

class AppContext;

// The packages and the means of transport of an export. Enter looks a code up, F6 lists,
// Esc or Ctrl+C saves and leaves.
class FrmBultos : public QDialog {
    Q_OBJECT
public:
    // args: "interno".
    FrmBultos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmBultos() override;

    // Fills the screen from the header record.
    void MostrarDatos();
    // Saves; false when a check kept the screen open.
    bool Grabar();
    // 1 looks up the tax number of the transport agent, 2 shows the list of agents.
    void BuscarTrans(int modo);

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Buscar(QLineEdit* campo);
    void Listar(QLineEdit* campo);

    std::unique_ptr<Ui::FrmBultos> ui;
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
