#include "goods/FrmLstProrrateo.h"

#include "goods/Prorrateos.h"
#include "platform/Formato.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmLstProrrateo.h"

#include <QKeyEvent>

namespace korven {

FrmLstProrrateo::FrmLstProrrateo(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmLstProrrateo>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    setProperty("Respuesta", QString());
    ui->LstProrrateo->installEventFilter(this);
    connect(ui->LstProrrateo, &QTreeWidget::itemDoubleClicked, this, [this] { Elegir(); });
    CargarList();
    ui->LstProrrateo->setFocus();
}

FrmLstProrrateo::~FrmLstProrrateo() = default;

// The codes of an Operation with their values, the first one selected; shared with the
// maintenance screen.
void FrmLstProrrateo::LlenarLista(QTreeWidget* lista, AppContext& ctx, const QString& interno) {
    lista->clear();
    QList<QTreeWidgetItem*> filas;
    for (const Prorrateos::Codigo& c : Prorrateos(ctx).CargarList(interno)) {
        auto* f = new QTreeWidgetItem(
            QStringList{c.codigo, c.descripcion, Formato(c.valor, QStringLiteral("00.00"))});
        f->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        filas << f;
    }
    lista->addTopLevelItems(filas);
    AjustarColumnas(lista);
    if (!filas.isEmpty())
        lista->setCurrentItem(filas.first());
}

void FrmLstProrrateo::CargarList() {
    LlenarLista(ui->LstProrrateo, ctx_, interno_);
}

void FrmLstProrrateo::Elegir() {
    if (const QTreeWidgetItem* f = ui->LstProrrateo->currentItem()) {
        setProperty("Respuesta", f->text(0));
        accept();
    }
}

void FrmLstProrrateo::reject() {
    setProperty("Respuesta", QString());
    QDialog::reject();
}

bool FrmLstProrrateo::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == ui->LstProrrateo && evento->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
            Elegir();
            return true;
        }
        if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
            reject();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
