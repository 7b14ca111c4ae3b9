#include "liquidation/FrmABMClientes.h"

#include "liquidation/RespuestaAEC.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"
#include "ui_FrmABMClientes.h"

namespace korven {

FrmABMClientes::FrmABMClientes(AppContext& ctx, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::FrmABMClientes>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui_->setupUi(this);
    connect(ui_->cmdAceptar, &QPushButton::clicked, this, [this] { cmdAceptar_Click(); });
    connect(ui_->cmdCancelar, &QPushButton::clicked, this, [this] { cmdCancelar_Click(); });
}

FrmABMClientes::~FrmABMClientes() = default;

void FrmABMClientes::cmdAceptar_Click() {
    Guardar(RespuestaAEC(true, ui_->opREP->isChecked()));
    QDialog::accept();
}

void FrmABMClientes::cmdCancelar_Click() {
    Guardar(RespuestaAEC(false, false));
    QDialog::reject();
}

void FrmABMClientes::reject() {
    cmdCancelar_Click();
}

void FrmABMClientes::Guardar(const QString& respuesta) {
    GuardarRespuestaAEC(ctx_.settings(), interno_, respuesta);
    setProperty("Respuesta", respuesta);
}

} // namespace korven
