#include "goods/FrmArticulos.h"

#include "goods/BusquedaArticulos.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmArticulos.h"

#include <QKeyEvent>

namespace korven {

FrmArticulos::FrmArticulos(AppContext& ctx, const QVariantMap& args, QWidget* padre,
                           BusquedaArticulos::Forma forma)
    : QDialog(padre), ui(std::make_unique<Ui::FrmArticulos>()), ctx_(ctx), forma_(forma) {
    ui->setupUi(this);
    if (forma_ == BusquedaArticulos::Forma::ConTotal) {
        setObjectName(QStringLiteral("FrmbArticulos"));
        ui->Lst->setColumnCount(4);
        ui->Lst->setHeaderLabels({QStringLiteral("IdArticulo"), QStringLiteral("Descripcion"),
                                  QStringLiteral("NCM"), QStringLiteral("Total")});
    }
    catalogo_ = args.value(QStringLiteral("catalogo")).toString().trimmed();
    ui->CboCampo->setCurrentIndex(0);
    ui->CmdBuscar->setAutoDefault(false);
    connect(ui->CmdBuscar, &QPushButton::clicked, this, [this] { Buscar(); });
    ui->TxtValor->installEventFilter(this);
    ui->TxtValor->setFocus();
}

FrmArticulos::~FrmArticulos() = default;

void FrmArticulos::Buscar() {
    ui->Lst->clear();
    try {
        const auto filas = BusquedaArticulos(ctx_).Buscar(
            forma_, catalogo_, ui->CboCampo->currentText(), ui->TxtValor->text());
        for (const QStringList& f : filas) {
            auto* item = new QTreeWidgetItem(f);
            for (int c = 3; c < f.size(); ++c)
                item->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
            ui->Lst->addTopLevelItem(item);
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" - [ARTICULOS.BUSCAR] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    AjustarColumnas(ui->Lst);
    if (ui->Lst->topLevelItemCount() > 0)
        ui->Lst->setCurrentItem(ui->Lst->topLevelItem(0));
}

bool FrmArticulos::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == ui->TxtValor && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            Buscar();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
