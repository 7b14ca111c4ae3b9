#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmABMAgTrans;
}

namespace korven {

class AppContext;

// One transport agent: a new one (mode 1) or a change (mode 2, of the agent "cuit" and
// "nombre" handed over).
class FrmABMAgTrans : public QDialog {
    Q_OBJECT
public:
    FrmABMAgTrans(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmABMAgTrans() override;

    void CmdGuardar();

private:
    std::unique_ptr<Ui::FrmABMAgTrans> ui;
    AppContext& ctx_;
    int modo_;
    QString anterior_;
};

} // namespace korven
