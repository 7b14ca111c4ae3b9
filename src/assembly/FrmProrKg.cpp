#include "assembly/FrmProrKg.h"

#include "assembly/ProrrateoKilos.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "ui_FrmProrKg.h"

namespace korven {

FrmProrKg::FrmProrKg(AppContext& ctx, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::FrmProrKg>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui_->setupUi(this);
    const QString item = args.value(QStringLiteral("item")).toString().trimmed();
    ui_->LbItem->setText(item.isEmpty() ? QStringLiteral("0") : item);
    connect(ui_->CmdPror, &QPushButton::clicked, this, &FrmProrKg::CmdPror_Click);
    ui_->TxtValor->setFocus();
}

FrmProrKg::~FrmProrKg() = default;

void FrmProrKg::Barra(int valor, int maximo) {
    ui_->Pb1->setMaximum(std::max(1, maximo));
    ui_->Pb1->setValue(std::min(valor, std::max(1, maximo)));
    ui_->Pb1->repaint();
}

void FrmProrKg::CmdPror_Click() {
    Dialogos& dlg = ctx_.dialogos();
    const QString item = ui_->LbItem->text().trimmed();
    double valor = 0;
    const bool numero = LeerNumeroTecleado(ui_->TxtValor->text().trimmed(), &valor);
    if (item != QLatin1String("0")) {
        if (!numero) {
            dlg.Mensaje(QStringLiteral("El valor a prorratear debe ser numerico"));
            return;
        }
        // The value goes on as the field shows it, to two decimals.
        ui_->TxtValor->setText(Formato(valor, QStringLiteral("00.00")));
        valor = NumeroTecleado(ui_->TxtValor->text());
        Barra(50, 100);
        Procesar([&](ProrrateoKilos& p) { p.Prorratear_ItemEx(item.toLongLong(), valor); });
        Barra(100, 100);
        return;
    }
    if (!numero) {
        dlg.Mensaje(QStringLiteral("Debe ingresar un valor númerico"), QStringLiteral("KORVEN"),
                    Dialogos::Icono::Exclamacion);
        return;
    }
    if (valor == 0) {
        dlg.Mensaje(QStringLiteral("Los valores deben ser mayores a cero"));
        return;
    }
    ui_->CmdPror->setEnabled(false);
    ui_->TxtValor->setEnabled(false);
    Procesar([&](ProrrateoKilos& p) { p.Prorratear_ItemCeroEx(valor); });
    ui_->CmdPror->setEnabled(true);
    ui_->TxtValor->setEnabled(true);
}

void FrmProrKg::Procesar(const std::function<void(ProrrateoKilos&)>& rutina) {
    try {
        Transaccion t(ctx_.stores(), {QStringLiteral("INTERNOS")});
        CorridaArmado r(ctx_, interno_, *this);
        ProrrateoKilos p(r);
        rutina(p);
        t.Confirmar();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QStringLiteral("%1 - %2%3").arg(e.numero()).arg(e.descripcion(), e.origen()),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

} // namespace korven
