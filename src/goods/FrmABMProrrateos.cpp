#include "goods/FrmABMProrrateos.h"

#include "goods/FrmLstProrrateo.h"

#include "goods/Prorrateos.h"
#include "platform/AppContext.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmABMProrrateos.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace korven {

namespace {
const char* const kTag = "Tag";
const QString kAgregar = QStringLiteral("AGREGAR");
} // namespace

FrmABMProrrateos::FrmABMProrrateos(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmABMProrrateos>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    for (QLineEdit* t : {ui->TxtCodigo, ui->TxtDescripcion, ui->TxtValor}) {
        ClCntrl::Vincular(ctx_, t);
        t->installEventFilter(this);
    }
    ui->LstProrrateo->installEventFilter(this);
    CargarList();
    Estado(ui->LstProrrateo->topLevelItemCount() == 0);
}

FrmABMProrrateos::~FrmABMProrrateos() = default;

bool FrmABMProrrateos::Agregando() const {
    return ui->LstProrrateo->property(kTag).toString() == kAgregar;
}

void FrmABMProrrateos::Estado(bool agregando) {
    ui->LstProrrateo->setProperty(kTag, agregando ? kAgregar : QString());
    ui->FramDatos->setEnabled(agregando);
    ui->lbEstado->setText(agregando ? QStringLiteral("[F11] Agregar - [ESC] Cancelar")
                                    : QStringLiteral("[INSERT] Agregar - [DELETE] Eliminar - "
                                                     "[ESC] Cerrar"));
    if (agregando)
        ui->TxtCodigo->setFocus();
    else
        ui->LstProrrateo->setFocus();
}

void FrmABMProrrateos::CargarList() {
    FrmLstProrrateo::LlenarLista(ui->LstProrrateo, ctx_, interno_);
}

void FrmABMProrrateos::Agregar() {
    if (!Prorrateos(ctx_).Agregar(interno_, ui->TxtCodigo->text(), ui->TxtDescripcion->text(),
                                  ui->TxtValor->text()))
        return;
    CargarList();
    ClCntrl::VaciarTxt(ui->FramDatos);
    ui->TxtCodigo->setFocus();
}

void FrmABMProrrateos::Eliminar(const QString& codigo) {
    if (Prorrateos(ctx_).Eliminar(interno_, codigo))
        CargarList();
}

void FrmABMProrrateos::Cerrar() {
    if (!Agregando())
        ctx_.TotalProrrateo = Prorrateos(ctx_).Total(interno_);
}

void FrmABMProrrateos::reject() {
    if (Agregando()) {
        Estado(false);
        return;
    }
    Cerrar();
    QDialog::reject();
}

void FrmABMProrrateos::closeEvent(QCloseEvent* evento) {
    // The window's own close button: leaves as it stands.
    Cerrar();
    QDialog::reject();
    evento->accept();
}

bool FrmABMProrrateos::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
        reject();
        return true;
    }
    switch (k->key()) {
    case Qt::Key_Insert:
        if (!Agregando()) {
            Estado(true);
            return true;
        }
        break;
    case Qt::Key_F11:
        if (Agregando()) {
            Agregar();
            return true;
        }
        break;
    case Qt::Key_Delete:
        if (objeto == ui->LstProrrateo && !Agregando()) {
            if (const QTreeWidgetItem* f = ui->LstProrrateo->currentItem())
                Eliminar(f->text(0));
            return true;
        }
        break;
    default:
        break;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
