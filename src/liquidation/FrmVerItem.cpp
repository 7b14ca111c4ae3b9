#include "liquidation/FrmVerItem.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace korven {

namespace {

QTableWidget* Grilla(QWidget* padre, const char* nombre, const QStringList& columnas) {
    auto* g = new QTableWidget(0, static_cast<int>(columnas.size()), padre);
    g->setObjectName(QString::fromLatin1(nombre));
    g->setHorizontalHeaderLabels(columnas);
    g->setEditTriggers(QAbstractItemView::NoEditTriggers);
    g->setSelectionBehavior(QAbstractItemView::SelectRows);
    g->setSelectionMode(QAbstractItemView::SingleSelection);
    g->verticalHeader()->hide();
    g->horizontalHeader()->setStretchLastSection(true);
    return g;
}

void Fila(QTableWidget* g, const QStringList& valores) {
    const int f = g->rowCount();
    g->insertRow(f);
    for (int i = 0; i < valores.size(); ++i)
        g->setItem(f, i, new QTableWidgetItem(valores.at(i)));
}

QString Importe(const QVariant& v) {
    return Formato(EsNumero(v), QStringLiteral("00.00"));
}

} // namespace

FrmVerItem::FrmVerItem(AppContext& ctx, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), ctx_(ctx), interno_(args.value(QStringLiteral("interno")).toString()) {
    setObjectName(QStringLiteral("FrmVerItem"));
    setWindowTitle(QStringLiteral("Item's - Interno: ") + interno_);
    items_ = Grilla(this, "GrdItems",
                    {QStringLiteral("Item"), QStringLiteral("NCM"), QStringLiteral("Cantidad"),
                     QStringLiteral("FOB"), QStringLiteral("Flete"), QStringLiteral("Seguro"),
                     QStringLiteral("Kg Neto")});
    liq_ = Grilla(this, "GrdLiq",
                  {QStringLiteral("Nro"), QStringLiteral("Concepto"), QStringLiteral("Porc. %"),
                   QStringLiteral("Base Imp."), QStringLiteral("Total"), QStringLiteral("PGC")});
    totales_ = new QLabel(this);
    totales_->setObjectName(QStringLiteral("LbTotales"));
    auto* l = new QVBoxLayout(this);
    l->addWidget(items_, 3);
    l->addWidget(liq_, 2);
    l->addWidget(totales_);
    resize(900, 600);
    connect(items_, &QTableWidget::currentCellChanged, this, [this](int fila) {
        if (fila >= 0 && items_->item(fila, 0))
            VerDetalleITEM(items_->item(fila, 0)->text());
    });
    LlenarItems();
    const QString item = args.value(QStringLiteral("item"), 0).toString();
    for (int f = 0; f < items_->rowCount(); ++f)
        if (items_->item(f, 0)->text() == item)
            items_->setCurrentCell(f, 0);
    VerDetalleITEM(item);
}

void FrmVerItem::LlenarItems() {
    Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    const Recordset rs = c.Abrir(QStringLiteral("select id, ncm, cantidad, fobtotal, itflete, "
                                                "itseguro, totalkneto from item where interno = ? "
                                                "order by id"),
                                 {interno_});
    items_->setRowCount(0);
    for (int i = 0; i < rs.RecordCount(); ++i) {
        const auto& f = rs.Fila(i);
        Fila(items_, {QString::number(static_cast<long long>(EsNumero(f.at(0)))), EsNull(f.at(1)),
                      Importe(f.at(2)), Importe(f.at(3)), Importe(f.at(4)), Importe(f.at(5)),
                      Importe(f.at(6))});
    }
    items_->resizeColumnsToContents();
}

void FrmVerItem::VerDetalleITEM(const QString& id) {
    Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    liq_->setRowCount(0);
    if (id == QLatin1String("0")) {
        // The totals of the Operation by concept, and the three totals by mark.
        const Recordset rs = c.Abrir(QStringLiteral("select idconcepto, concepto, valor, pgc from "
                                                    "liqcero where interno = ? and idconcepto "
                                                    "not like '###%' order by idconcepto"),
                                     {interno_});
        double pagar = 0, garantizar = 0, cobrar = 0;
        for (int i = 0; i < rs.RecordCount(); ++i) {
            const auto& f = rs.Fila(i);
            const QString pgc = EsNull(f.at(3)).trimmed();
            Fila(liq_,
                 {EsNull(f.at(0)), EsNull(f.at(1)), QString(), QString(), Importe(f.at(2)), pgc});
            const double v = EsNumero(f.at(2));
            if (pgc == QLatin1String("G"))
                garantizar += v;
            else if (pgc == QLatin1String("C"))
                cobrar += v;
            else if (pgc == QLatin1String("P"))
                pagar += v;
        }
        liq_->resizeColumnsToContents();
        totales_->setText(QStringLiteral("Total Pagar: %1    Total Garantizar: %2    Total a "
                                         "Cobrar %3")
                              .arg(Formato(pagar, QStringLiteral("00.00")),
                                   Formato(garantizar, QStringLiteral("00.00")),
                                   Formato(cobrar, QStringLiteral("00.00"))));
        return;
    }
    const Recordset rs = c.Abrir(QStringLiteral("select idconceptos, conceptos, porcentaje, "
                                                "baseimp, total, pgc from itemliq where total > 0 "
                                                "and interno = ? and iditem = ? order by "
                                                "idconceptos"),
                                 {interno_, id.toLongLong()});
    for (int i = 0; i < rs.RecordCount(); ++i) {
        const auto& f = rs.Fila(i);
        Fila(liq_, {EsNull(f.at(0)), EsNull(f.at(1)), Importe(f.at(2)), Importe(f.at(3)),
                    Importe(f.at(4)), EsNull(f.at(5))});
    }
    totales_->clear();
}

void FrmVerItem::keyPressEvent(QKeyEvent* e) {
    const bool ctrlC = e->key() == Qt::Key_C && (e->modifiers() & Qt::ControlModifier);
    if (e->key() == Qt::Key_Escape || ctrlC) {
        reject();
        return;
    }
    if (e->key() == Qt::Key_F12) {
        ctx_.AbrirModal(QStringLiteral("FrmPrintItem"), {{QStringLiteral("interno"), interno_}});
        return;
    }
    QDialog::keyPressEvent(e);
}

} // namespace korven
