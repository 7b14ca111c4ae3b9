#include "foundation/FrmListadoeX.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmListadoeX.h"

#include <QKeyEvent>
#include <QStyle>
#include <QToolBar>

namespace korven {

FrmListadoeX::FrmListadoeX(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmListadoeX>()), ctx_(ctx) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariantMap());
    const QString titulo = args.value(QStringLiteral("titulo")).toString();
    if (!titulo.isEmpty())
        setWindowTitle(titulo);

    Tb = new QToolBar(this);
    Tb->setObjectName(QStringLiteral("Tb"));
    Tb->addAction(style()->standardIcon(QStyle::SP_FileDialogContentsView),
                  QStringLiteral("Buscar Codigo"), this, [this] { BuscarCod(); });
    Tb->addAction(style()->standardIcon(QStyle::SP_FileDialogDetailedView),
                  QStringLiteral("Buscar Descripción"), this, [this] { BuscarDesc(); });
    ui->layBarra->addWidget(Tb);

    for (const QVariant& f : args.value(QStringLiteral("filas")).toList())
        new QTreeWidgetItem(ui->Lst, f.toStringList());
    // The columns fit their texts, at least as wide as the caller asks (in twips, 15 to the
    // pixel).
    AjustarColumnas(ui->Lst);
    const QVariantList anchos = args.value(QStringLiteral("anchos")).toList();
    for (int i = 0; i < anchos.size() && i < 2; ++i)
        ui->Lst->setColumnWidth(i, qMax(ui->Lst->columnWidth(i), anchos.at(i).toInt() / 15));
    if (ui->Lst->topLevelItemCount() > 0)
        ui->Lst->setCurrentItem(ui->Lst->topLevelItem(0));
    connect(ui->Lst, &QTreeWidget::itemDoubleClicked, this, [this] { Elegir(); });
    ui->Lst->installEventFilter(this);
    ui->Lst->setFocus();
}

FrmListadoeX::~FrmListadoeX() = default;

void FrmListadoeX::Buscar(int columna, const QString& pregunta) {
    const std::optional<QString> texto = ctx_.dialogos().PedirTexto(pregunta, windowTitle());
    if (!texto || texto->isEmpty())
        return;
    for (int i = 0; i < ui->Lst->topLevelItemCount(); ++i) {
        QTreeWidgetItem* fila = ui->Lst->topLevelItem(i);
        if (fila->text(columna).contains(*texto, Qt::CaseInsensitive)) {
            ui->Lst->setCurrentItem(fila);
            return;
        }
    }
    ctx_.dialogos().Mensaje(QStringLiteral("Cadena no encontrada"), windowTitle(),
                            Dialogos::Icono::Informacion);
}

void FrmListadoeX::BuscarCod() {
    Buscar(0, QStringLiteral("Ingrese el texto a buscar en CODIGO"));
}

void FrmListadoeX::BuscarDesc() {
    Buscar(1, QStringLiteral("Ingrese el texto a buscar en DESCRIPCIÓN"));
}

void FrmListadoeX::Elegir() {
    const QTreeWidgetItem* fila = ui->Lst->currentItem();
    if (!fila)
        return;
    QVariantMap par;
    par.insert(QStringLiteral("codigo"), fila->text(0));
    par.insert(QStringLiteral("descripcion"), fila->text(1));
    setProperty("Respuesta", par);
    accept();
}

bool FrmListadoeX::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            Elegir();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
