#include "foundation/FrmListadoDespachante.h"

#include "foundation/ListasMaestras.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmListadoDespachante.h"

#include <QKeyEvent>

namespace korven {

FrmListadoDespachante::FrmListadoDespachante(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmListadoDespachante>()) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariantMap());
    try {
        for (const QStringList& f : ListasMaestras(ctx.stores()).Despachantes())
            new QTreeWidgetItem(ui->Lst, f);
        AjustarColumnas(ui->Lst);
        if (ui->Lst->topLevelItemCount() > 0)
            ui->Lst->setCurrentItem(ui->Lst->topLevelItem(0));
    } catch (const KorvenError& e) {
        ctx.dialogos().Mensaje(QString::number(e.numero()) +
                                   QStringLiteral(" - Sección Despachantes\n\n") + e.descripcion(),
                               QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    connect(ui->Lst, &QTreeWidget::itemDoubleClicked, this, [this] { LstC(); });
    ui->Lst->installEventFilter(this);
    ui->Lst->setFocus();
}

FrmListadoDespachante::~FrmListadoDespachante() = default;

void FrmListadoDespachante::LstC() {
    const QTreeWidgetItem* fila = ui->Lst->currentItem();
    if (!fila)
        return;
    QVariantMap par;
    par.insert(QStringLiteral("cuit"), fila->text(0));
    par.insert(QStringLiteral("nombre"), fila->text(1));
    setProperty("Respuesta", par);
    accept();
}

bool FrmListadoDespachante::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            LstC();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
