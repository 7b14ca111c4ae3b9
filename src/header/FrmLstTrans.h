#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmLstTrans;
}

namespace korven {

class AppContext;

// The list of transport agents. Enter hands the agent chosen back ("Respuesta": a map with
// "cuit" and "nombre") and closes; Esc or Ctrl+C closes with nothing; Insert adds, F6 changes,
// Delete removes.
class FrmLstTrans : public QDialog {
    Q_OBJECT
public:
    FrmLstTrans(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmLstTrans() override;

    void Cargar();
    void Eliminar(const QString& cuit);

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Elegir();
    void Editar(int modo);

    std::unique_ptr<Ui::FrmLstTrans> ui;
    AppContext& ctx_;
};

} // namespace korven
