#include "goods/FrmConsultas.h"

#include "goods/Nomenclador.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmConsultas.h"

#include <QKeyEvent>

namespace korven {

namespace {

void Llenar(QTreeWidget* lista, const QList<Nomenclador::Fila>& filas) {
    lista->clear();
    QList<QTreeWidgetItem*> items;
    for (const Nomenclador::Fila& f : filas)
        items << new QTreeWidgetItem(QStringList{f.posicion, f.descripcion});
    lista->addTopLevelItems(items);
    AjustarColumnas(lista);
    if (!items.isEmpty()) {
        lista->setCurrentItem(items.first());
        lista->setFocus();
    }
}

} // namespace

FrmConsultas::FrmConsultas(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmConsultas>()), ctx_(ctx) {
    ui->setupUi(this);
    for (QWidget* w : {static_cast<QWidget*>(ui->TxtSIM), static_cast<QWidget*>(ui->TxtDescripcion),
                       static_cast<QWidget*>(ui->LstResult)})
        w->installEventFilter(this);
    connect(ui->CmdBuscar, &QPushButton::clicked, this, [this] { CmdBuscar(); });
    connect(ui->Command1, &QPushButton::clicked, this, [this] { Command1(); });
    connect(ui->LstResult, &QTreeWidget::itemDoubleClicked, this, [this] { Detalles(); });
    ui->TxtSIM->setFocus();
}

FrmConsultas::~FrmConsultas() = default;

void FrmConsultas::CmdBuscar() {
    if (ui->TxtSIM->text().isEmpty()) {
        ctx_.dialogos().Mensaje(QStringLiteral("Debe ingresar una posición"));
        return;
    }
    try {
        Llenar(ui->LstResult, Nomenclador(ctx_).BuscarPorPosicion(ui->TxtSIM->text()));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" - seccion [KORVEN.FrmConsultas.CmdBuscar]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmConsultas::Command1() {
    try {
        Llenar(ui->LstResult, Nomenclador(ctx_).BuscarPorDescripcion(ui->TxtDescripcion->text()));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" - seccion [KORVEN.FrmConsultas.Command1]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmConsultas::Detalles() {
    const QTreeWidgetItem* fila = ui->LstResult->currentItem();
    if (!fila)
        return;
    try {
        ctx_.AbrirModal(QStringLiteral("FrmSufijos"),
                        {{QStringLiteral("posicion"), fila->text(0)}});
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" - seccion [KORVEN.FrmConsultas.LstResult]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

bool FrmConsultas::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
        reject();
        return true;
    }
    if (k->key() != Qt::Key_Return && k->key() != Qt::Key_Enter)
        return QDialog::eventFilter(objeto, evento);
    if (objeto == ui->TxtSIM)
        CmdBuscar();
    else if (objeto == ui->TxtDescripcion)
        Command1();
    else
        Detalles();
    return true;
}

} // namespace korven
