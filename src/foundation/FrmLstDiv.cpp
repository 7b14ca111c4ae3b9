#include "foundation/FrmLstDiv.h"

#include "foundation/ListasMaestras.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "ui_FrmLstDiv.h"

namespace korven {

namespace {
QString TextoError(const KorvenError& e, const QString& seccion) {
    return QString::number(e.numero()) + QStringLiteral(" - ") + seccion + QStringLiteral("\n\n") +
           e.descripcion();
}
} // namespace

FrmLstDiv::FrmLstDiv(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmLstDiv>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    try {
        ui->TxtCom->setPlainText(ListasMaestras(ctx_.stores()).LeerComentario(interno_));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(TextoError(e, QStringLiteral("Sección Comentarios")),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    ui->TxtCom->setFocus();
}

FrmLstDiv::~FrmLstDiv() = default;

void FrmLstDiv::Grabar() {
    try {
        ListasMaestras(ctx_.stores()).GrabarComentario(interno_, ui->TxtCom->toPlainText());
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(TextoError(e, QStringLiteral("Sección Grabar Comentario")),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmLstDiv::reject() {
    Grabar();
    QDialog::reject();
}

} // namespace korven
