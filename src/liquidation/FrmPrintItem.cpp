#include "liquidation/FrmPrintItem.h"

#include "liquidation/HojasListado.h"
#include "liquidation/ImpresionLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "ui_FrmPrintItem.h"

#include <QApplication>
#include <QFileDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace korven {

FrmPrintItem::FrmPrintItem(AppContext& ctx, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::FrmPrintItem>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno"), ctx.InternoActual).toString()),
      archivoPdf_(args.value(QStringLiteral("archivoPdf")).toString()) {
    ui_->setupUi(this);
    try {
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        for (Recordset rs = c.Abrir(
                 QStringLiteral("select id from item where interno = ? order by id"), {interno_});
             !rs.Eof(); rs.MoveNext()) {
            const QString id = QString::number(static_cast<long long>(EsNumero(rs.Fields(0))));
            ui_->cbDesde->addItem(id);
            ui_->CbHasta->addItem(id);
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(e.descripcion(), QStringLiteral("KORVEN"),
                                Dialogos::Icono::Critico);
    }
    ui_->CbHasta->setCurrentIndex(ui_->CbHasta->count() - 1);
    connect(ui_->CmdPrint, &QPushButton::clicked, this, [this] { CmdPrint_Click(); });
    connect(ui_->CmdPdf, &QPushButton::clicked, this, [this] { CmdPdf_Click(); });
}

FrmPrintItem::~FrmPrintItem() = default;

std::unique_ptr<HojasListado> FrmPrintItem::Preparar() {
    const int desde = ui_->cbDesde->currentText().toInt();
    const int hasta = ui_->CbHasta->currentText().toInt();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ImpresionLiquidacion impresion(ctx_);
    const bool bien = impresion.pr_ImprimirLiq(
        desde, hasta, interno_, ui_->ChSubitems->isChecked(), [this](int n, int ultimo) {
            if (ultimo >= 1) {
                ui_->Pb->setRange(1, ultimo);
                ui_->Pb->setValue(std::max(n, 1));
            }
            ui_->LbDesc->setText(QStringLiteral("Item: ") + Formato(n, QStringLiteral("00")) +
                                 QStringLiteral(" de ") + Formato(ultimo, QStringLiteral("00")));
        });
    QApplication::restoreOverrideCursor();
    if (!bien)
        return nullptr;
    return std::make_unique<HojasListado>(impresion.Listados(), interno_);
}

void FrmPrintItem::CmdPrint_Click() {
    const auto hojas = Preparar();
    if (!hojas)
        return;
    if (ui_->ChVistaPrel->isChecked()) {
        QPrinter printer(QPrinter::HighResolution);
        QPrintPreviewDialog vista(&printer, this);
        vista.setWindowTitle(QStringLiteral("Vista Preliminar"));
        connect(&vista, &QPrintPreviewDialog::paintRequested, this,
                [&hojas](QPrinter* p) { hojas->Dibujar(*p); });
        vista.exec();
        return;
    }
    const QString error = hojas->Imprimir(ctx_.config().DEVICENAME);
    if (!error.isEmpty())
        ctx_.dialogos().Mensaje(error, QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
}

void FrmPrintItem::CmdPdf_Click() {
    QString archivo = archivoPdf_;
    if (archivo.isEmpty())
        archivo = QFileDialog::getSaveFileName(this, QStringLiteral("Guardar PDF"),
                                               QStringLiteral("liquidacion-%1.pdf").arg(interno_),
                                               QStringLiteral("PDF (*.pdf)"));
    if (archivo.isEmpty())
        return;
    const auto hojas = Preparar();
    if (!hojas)
        return;
    const QString error = hojas->GuardarPdf(archivo);
    if (!error.isEmpty())
        ctx_.dialogos().Mensaje(error, QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
}

} // namespace korven
