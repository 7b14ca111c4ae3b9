#include "header/FrmLstTrans.h"

#include "header/Transportes.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmLstTrans.h"

#include <QKeyEvent>

namespace korven {

FrmLstTrans::FrmLstTrans(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmLstTrans>()), ctx_(ctx) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariantMap());
    ui->Lst->installEventFilter(this);
    connect(ui->Lst, &QTreeWidget::itemDoubleClicked, this, [this] { Elegir(); });
    Cargar();
    ui->Lst->setFocus();
}

FrmLstTrans::~FrmLstTrans() = default;

void FrmLstTrans::Cargar() {
    ui->Lst->clear();
    for (const Transportes::Agente& a : Transportes(ctx_).Cargar())
        ui->Lst->addTopLevelItem(new QTreeWidgetItem(QStringList{a.cuit, a.nombre}));
    AjustarColumnas(ui->Lst);
    if (ui->Lst->topLevelItemCount() > 0)
        ui->Lst->setCurrentItem(ui->Lst->topLevelItem(0));
}

void FrmLstTrans::Eliminar(const QString& cuit) {
    if (Transportes(ctx_).Eliminar(cuit))
        Cargar();
}

void FrmLstTrans::Elegir() {
    const QTreeWidgetItem* fila = ui->Lst->currentItem();
    if (!fila)
        return;
    QVariantMap par;
    par.insert(QStringLiteral("cuit"), fila->text(0));
    par.insert(QStringLiteral("nombre"), fila->text(1));
    setProperty("Respuesta", par);
    accept();
}

void FrmLstTrans::reject() {
    setProperty("Respuesta", QVariantMap());
    QDialog::reject();
}

void FrmLstTrans::Editar(int modo) {
    QVariantMap args;
    args.insert(QStringLiteral("modo"), modo);
    if (modo == 2) {
        const QTreeWidgetItem* fila = ui->Lst->currentItem();
        if (!fila)
            return;
        args.insert(QStringLiteral("cuit"), fila->text(0));
        args.insert(QStringLiteral("nombre"), fila->text(1));
    }
    try {
        ctx_.AbrirModal(QStringLiteral("FrmABMAgTrans"), args);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [BUSCAR AG_TRANSPORTE] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    Cargar();
}

bool FrmLstTrans::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto != ui->Lst || evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
        reject();
        return true;
    }
    switch (k->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Elegir();
        return true;
    case Qt::Key_Insert:
        Editar(1);
        return true;
    case Qt::Key_F6:
        Editar(2);
        return true;
    case Qt::Key_Delete:
        if (const QTreeWidgetItem* fila = ui->Lst->currentItem())
            Eliminar(fila->text(0));
        return true;
    default:
        return QDialog::eventFilter(objeto, evento);
    }
}

} // namespace korven
