#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmLstVendedores;
}

namespace korven {

class AppContext;

// The vendors: choose one, add, change or delete. The answer ("Respuesta") is the map
// {codigo, nombre} of the vendor chosen, empty when the list is left with Esc.
class FrmLstVendedores : public QDialog {
    Q_OBJECT
public:
    FrmLstVendedores(AppContext& ctx, const QVariantMap& args = {}, QWidget* padre = nullptr);
    ~FrmLstVendedores() override;

    void CargarLst();
    // Hands the selected vendor over and closes.
    void LstC();
    void Eliminar(const QString& codigo);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Editar(bool cambio);
    QString CodigoSeleccionado() const;
    void Error(const QString& seccion, int numero, const QString& descripcion);

    std::unique_ptr<Ui::FrmLstVendedores> ui;
    AppContext& ctx_;
    bool porNombre_;
};

} // namespace korven
