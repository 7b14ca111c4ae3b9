#include "goods/FrmCargaSufijos.h"

#include "ui_FrmCargaSufijos.h"

#include <QKeyEvent>

namespace korven {

FrmCargaSufijos::FrmCargaSufijos(AppContext&, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmCargaSufijos>()) {
    ui->setupUi(this);
    setProperty("Respuesta", QString());
    ui->LstOpcion->addItems(args.value(QStringLiteral("opciones")).toStringList());
    const QString actual = args.value(QStringLiteral("seleccion")).toString();
    for (int i = 0; i < ui->LstOpcion->count(); ++i) {
        if (ui->LstOpcion->item(i)->text().startsWith(actual)) {
            ui->LstOpcion->setCurrentRow(i);
            break;
        }
    }
    ui->LstOpcion->installEventFilter(this);
    connect(ui->LstOpcion, &QListWidget::itemDoubleClicked, this, [this] { Elegir(); });
    ui->LstOpcion->setFocus();
}

FrmCargaSufijos::~FrmCargaSufijos() = default;

void FrmCargaSufijos::Elegir() {
    if (const QListWidgetItem* fila = ui->LstOpcion->currentItem()) {
        setProperty("Respuesta", fila->text());
        accept();
    }
}

void FrmCargaSufijos::reject() {
    setProperty("Respuesta", QStringLiteral("###CANCELADO###"));
    QDialog::reject();
}

bool FrmCargaSufijos::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == ui->LstOpcion && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            Elegir();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
