#include "goods/FrmSufijos.h"

#include "goods/Nomenclador.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmSufijos.h"

#include <QKeyEvent>

namespace korven {

namespace {

QTableWidgetItem* Celda(const QString& texto, bool propio) {
    auto* c = new QTableWidgetItem(texto);
    if (propio)
        c->setBackground(FrmSufijos::ColorPropio());
    return c;
}

} // namespace

QColor FrmSufijos::ColorPropio() {
    return QColor(214, 237, 214);
}

FrmSufijos::FrmSufijos(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmSufijos>()), ctx_(ctx) {
    ui->setupUi(this);
    for (QWidget* w : {static_cast<QWidget*>(ui->Tabs), static_cast<QWidget*>(ui->Grid),
                       static_cast<QWidget*>(ui->Grid2)})
        w->installEventFilter(this);
    Cargar(args.value(QStringLiteral("posicion")).toString());
    ui->Grid2->setFocus();
}

FrmSufijos::~FrmSufijos() = default;

void FrmSufijos::Cargar(const QString& posicion) {
    ui->LbPosicion->setText(posicion);
    try {
        Nomenclador n(ctx_);
        const QList<Nomenclador::Sufijo> sufijos = n.SufijosAplicables(posicion);
        ui->Grid2->setRowCount(static_cast<int>(sufijos.size()));
        for (int i = 0; i < sufijos.size(); ++i) {
            const bool propio = sufijos[i].sim == posicion.left(14);
            ui->Grid2->setItem(i, 0, Celda(sufijos[i].sufijo, propio));
            ui->Grid2->setItem(i, 1, Celda(sufijos[i].detalle, propio));
        }
        AjustarColumnas(ui->Grid2);

        QString descripcion;
        const QList<Nomenclador::Detalle> detalles = n.Detalles(posicion, &descripcion);
        ui->Grid->setRowCount(static_cast<int>(detalles.size()));
        for (int i = 0; i < detalles.size(); ++i) {
            const Nomenclador::Detalle& d = detalles[i];
            if (d.encabezado) {
                ui->Grid->setItem(i, 0, Celda(d.titulo, true));
                ui->Grid->setSpan(i, 0, 1, 3);
                continue;
            }
            ui->Grid->setItem(i, 0, Celda(d.columna, false));
            ui->Grid->setItem(i, 1, Celda(d.titulo, false));
            ui->Grid->setItem(i, 2, Celda(d.valor, false));
        }
        ui->Text1->setPlainText(descripcion);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" - seccion [KORVEN.FrmSufijos.Form_Load]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmSufijos::AnchoGrid() {
    // The three columns keep the proportion 1300 : 3900 : 1000.
    const int ancho = ui->Grid->viewport()->width();
    ui->Grid->setColumnWidth(0, ancho * 1300 / 6200);
    ui->Grid->setColumnWidth(1, ancho * 3900 / 6200);
    ui->Grid->setColumnWidth(2, ancho - ancho * 1300 / 6200 - ancho * 3900 / 6200);
}

void FrmSufijos::resizeEvent(QResizeEvent* evento) {
    QDialog::resizeEvent(evento);
    AnchoGrid();
}

void FrmSufijos::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    AnchoGrid();
}

bool FrmSufijos::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
            reject();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
