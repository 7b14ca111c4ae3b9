#include "goods/FrmCatArticulosBuscar.h"

#include "goods/CatalogoArticulos.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmCatArticulosBuscar.h"

#include <QKeyEvent>

namespace korven {

FrmCatArticulosBuscar::FrmCatArticulosBuscar(AppContext& ctx, const QVariantMap& args,
                                             QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmCatArticulosBuscar>()), ctx_(ctx) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariant());
    ClCntrl::SoloTexto(ui->txtBuscar);
    catalogo_ = args.value(QStringLiteral("catalogo")).toString().trimmed();
    ui->Lst->sortByColumn(0, Qt::AscendingOrder);
    connect(ui->txtBuscar, &QLineEdit::textChanged, this, &FrmCatArticulosBuscar::Filtrar);
    connect(ui->Lst, &QTreeWidget::itemDoubleClicked, this, [this] { Seleccionar(); });
    ui->txtBuscar->installEventFilter(this);
    ui->Lst->installEventFilter(this);
    Cargar();
    ui->txtBuscar->setText(args.value(QStringLiteral("texto")).toString().trimmed());
    Filtrar(ui->txtBuscar->text());
    ui->txtBuscar->setFocus();
}

FrmCatArticulosBuscar::~FrmCatArticulosBuscar() = default;

void FrmCatArticulosBuscar::Cargar() {
    ui->Lst->clear();
    try {
        for (const ArticuloCatalogo& a : CatalogoArticulos(ctx_).Articulos(catalogo_))
            ui->Lst->addTopLevelItem(new QTreeWidgetItem(QStringList{a.idArticulo, a.descripcion}));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" - [ARTICULOS.BUSCAR] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    AjustarColumnas(ui->Lst);
}

// A row stays when its code or its description contains the text.
void FrmCatArticulosBuscar::Filtrar(const QString& texto) {
    const QString t = texto.trimmed();
    QTreeWidgetItem* primera = nullptr;
    for (int i = 0; i < ui->Lst->topLevelItemCount(); ++i) {
        QTreeWidgetItem* f = ui->Lst->topLevelItem(i);
        const bool ve = t.isEmpty() || f->text(0).contains(t, Qt::CaseInsensitive) ||
                        f->text(1).contains(t, Qt::CaseInsensitive);
        f->setHidden(!ve);
        if (ve && !primera)
            primera = f;
    }
    QTreeWidgetItem* actual = ui->Lst->currentItem();
    if (!actual || actual->isHidden())
        ui->Lst->setCurrentItem(primera);
    if (!primera)
        ui->Lst->setCurrentItem(nullptr);
}

void FrmCatArticulosBuscar::Mover(int paso) {
    QTreeWidgetItem* actual = ui->Lst->currentItem();
    QTreeWidgetItem* f = actual
                             ? (paso > 0 ? ui->Lst->itemBelow(actual) : ui->Lst->itemAbove(actual))
                             : ui->Lst->topLevelItem(0);
    if (f && !f->isHidden())
        ui->Lst->setCurrentItem(f);
}

void FrmCatArticulosBuscar::lf_MoverAbajo() {
    Mover(1);
}

void FrmCatArticulosBuscar::lf_MoverArriba() {
    Mover(-1);
}

void FrmCatArticulosBuscar::Seleccionar() {
    const QTreeWidgetItem* f = ui->Lst->currentItem();
    if (!f || f->isHidden())
        return;
    QVariantMap r;
    r.insert(QStringLiteral("articulo"), f->text(0));
    r.insert(QStringLiteral("descripcion"), f->text(1));
    setProperty("Respuesta", r);
    accept();
}

void FrmCatArticulosBuscar::Articulo_Eliminar() {
    const QTreeWidgetItem* f = ui->Lst->currentItem();
    if (!f || f->isHidden())
        return;
    const QString codigo = f->text(0);
    if (!ctx_.dialogos().Pregunta(QStringLiteral("Confima eliminar el articulo ") + codigo))
        return;
    try {
        CatalogoArticulos(ctx_).EliminarArticulo(catalogo_, codigo);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" - [ARTICULOS.BUSCAR] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    Cargar();
    Filtrar(ui->txtBuscar->text());
}

void FrmCatArticulosBuscar::reject() {
    setProperty("Respuesta", QVariant());
    QDialog::reject();
}

bool FrmCatArticulosBuscar::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    switch (static_cast<QKeyEvent*>(evento)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Seleccionar();
        return true;
    case Qt::Key_Delete:
        Articulo_Eliminar();
        return true;
    case Qt::Key_Down:
        if (objeto != ui->txtBuscar)
            break;
        lf_MoverAbajo();
        return true;
    case Qt::Key_Up:
        if (objeto != ui->txtBuscar)
            break;
        lf_MoverArriba();
        return true;
    case Qt::Key_F6:
        if (objeto != ui->Lst)
            break;
        if (const auto t =
                ctx_.dialogos().PedirTexto(QStringLiteral("Ingrese el texto a buscar"),
                                           QStringLiteral("Buscar"), 50, ui->txtBuscar->text()))
            ui->txtBuscar->setText(*t);
        return true;
    default:
        break;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
