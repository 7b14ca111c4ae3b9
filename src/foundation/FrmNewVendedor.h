#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmNewVendedor;
}

namespace korven {

class AppContext;

// A vendor, new or changed. A new one answers ("Respuesta") the map {codigo, nombre}, so that
// the header can fill its fields at once.
class FrmNewVendedor : public QDialog {
    Q_OBJECT
public:
    // args: "modo" 1 to change the vendor "codigo" (with "nombre" and "domicilio"); otherwise a
    // new vendor, with "codigo" already typed when the header did not know it.
    FrmNewVendedor(AppContext& ctx, const QVariantMap& args = {}, QWidget* padre = nullptr);
    ~FrmNewVendedor() override;

    // Saves the vendor.
    void Command1();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    std::unique_ptr<Ui::FrmNewVendedor> ui;
    AppContext& ctx_;
    int modo_;
};

} // namespace korven
