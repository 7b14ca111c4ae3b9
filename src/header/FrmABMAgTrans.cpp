#include "header/FrmABMAgTrans.h"

#include "header/Transportes.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmABMAgTrans.h"

namespace korven {

FrmABMAgTrans::FrmABMAgTrans(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmABMAgTrans>()), ctx_(ctx),
      modo_(args.value(QStringLiteral("modo"), 1).toInt()),
      anterior_(args.value(QStringLiteral("cuit")).toString()) {
    ui->setupUi(this);
    if (modo_ == 2) {
        ui->TxtCuit->setText(anterior_);
        ui->TxtNombre->setText(args.value(QStringLiteral("nombre")).toString());
    }
    for (QLineEdit* t : {ui->TxtCuit, ui->TxtNombre})
        ClCntrl::Vincular(ctx_, t);
    ui->CmdGuardar->setAutoDefault(false);
    ui->Command2->setAutoDefault(false);
    connect(ui->CmdGuardar, &QPushButton::clicked, this, [this] { CmdGuardar(); });
    connect(ui->Command2, &QPushButton::clicked, this, &QDialog::reject);
    ui->TxtCuit->setFocus();
}

FrmABMAgTrans::~FrmABMAgTrans() = default;

void FrmABMAgTrans::CmdGuardar() {
    if (Transportes(ctx_).Guardar(modo_, anterior_, ui->TxtCuit->text(), ui->TxtNombre->text()))
        accept();
}

} // namespace korven
