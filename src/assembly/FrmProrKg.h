#pragma once

#include "assembly/CorridaArmado.h"

#include <QDialog>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace Ui {
class FrmProrKg;
}

namespace korven {

class AppContext;
class ProrrateoKilos;

// A new total of net kilos for the Operation ("interno") or for one of its items ("item";
// none or 0 is the whole Operation), typed in the system decimal separator and spread by
// Procesar over the lines without kilos. Each press is one transaction. Escape closes it.
class FrmProrKg : public QDialog, public ProgresoArmado {
    Q_OBJECT
public:
    FrmProrKg(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);
    ~FrmProrKg() override;

    // ProgresoArmado: the bar of the prorations.
    void Barra(int valor, int maximo) override;

private:
    void CmdPror_Click();
    // One routine in its own transaction: an error of the store undoes what it wrote and is
    // reported with its section.
    void Procesar(const std::function<void(ProrrateoKilos&)>& rutina);

    std::unique_ptr<Ui::FrmProrKg> ui_;
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
