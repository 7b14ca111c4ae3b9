#include "foundation/FrmListado.h"

#include "platform/ui/ClCntrl.h"
#include "ui_FrmListado.h"

#include <QKeyEvent>

namespace korven {

FrmListado::FrmListado(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmListado>()) {
    ui->setupUi(this);
    setProperty("Respuesta", QString());
    const QString titulo = args.value(QStringLiteral("titulo")).toString();
    if (!titulo.isEmpty())
        setWindowTitle(titulo);
    const QStringList codigos = args.value(QStringLiteral("codigos")).toStringList();
    const QStringList descripciones = args.value(QStringLiteral("descripciones")).toStringList();
    valores_ = args.value(QStringLiteral("valores")).toStringList();
    if (valores_.size() != codigos.size())
        valores_ = codigos;
    ui->LstCod->addItems(codigos);
    ui->LstDescripcion->addItems(descripciones);

    buscador_ = new ClCntrl(ctx, this);
    buscador_->sLinkListBox(ui->LstCod);
    connect(ui->TxtBs, &QLineEdit::textChanged, this,
            [this](const QString& t) { buscador_->LstBuscarStr(t); });
    // The two lists move together.
    connect(ui->LstCod, &QListWidget::currentRowChanged, this, [this](int fila) {
        if (ui->LstDescripcion->currentRow() != fila && fila < ui->LstDescripcion->count())
            ui->LstDescripcion->setCurrentRow(fila);
    });
    connect(ui->LstDescripcion, &QListWidget::currentRowChanged, this, [this](int fila) {
        if (ui->LstCod->currentRow() != fila && fila < ui->LstCod->count())
            ui->LstCod->setCurrentRow(fila);
    });
    connect(ui->LstCod, &QListWidget::itemDoubleClicked, this, [this] { Elegir(); });
    connect(ui->LstDescripcion, &QListWidget::itemDoubleClicked, this, [this] { Elegir(); });
    for (QWidget* w : {static_cast<QWidget*>(ui->TxtBs), static_cast<QWidget*>(ui->LstCod),
                       static_cast<QWidget*>(ui->LstDescripcion)})
        w->installEventFilter(this);
    ui->TxtBs->setFocus();
}

FrmListado::~FrmListado() = default;

void FrmListado::Elegir() {
    const int fila = ui->LstCod->currentRow();
    if (fila < 0 || !ui->LstCod->item(fila)->isSelected())
        return;
    setProperty("Respuesta", valores_.value(fila));
    accept();
}

bool FrmListado::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
        Elegir();
        return true;
    }
    if (objeto == ui->TxtBs && (tecla == Qt::Key_Up || tecla == Qt::Key_Down)) {
        const int actual = ui->LstCod->currentRow();
        const int fila = tecla == Qt::Key_Up ? actual - 1 : actual + 1;
        if (fila >= 0 && fila < ui->LstCod->count())
            ui->LstCod->setCurrentRow(fila);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
