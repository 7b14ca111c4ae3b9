#include "foundation/FrmLstVendedores.h"

#include "foundation/ListasMaestras.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmLstVendedores.h"

#include <QKeyEvent>

namespace korven {

namespace {
constexpr int kColDomicilio = 2;
}

FrmLstVendedores::FrmLstVendedores(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmLstVendedores>()), ctx_(ctx),
      porNombre_(ctx.config().VendedorOrderxNombre) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariantMap());
    // Ordered by name, the name comes first.
    if (porNombre_)
        ui->Lst->setHeaderLabels(
            {QStringLiteral("Nombre"), QStringLiteral("Codigo"), QStringLiteral("Domicilio")});
    connect(ui->Lst, &QTreeWidget::itemDoubleClicked, this, [this] { LstC(); });
    connect(ui->txtBuscar, &QLineEdit::textChanged, this, [this](const QString& texto) {
        for (int i = 0; i < ui->Lst->topLevelItemCount(); ++i) {
            QTreeWidgetItem* fila = ui->Lst->topLevelItem(i);
            if (fila->text(0).startsWith(texto, Qt::CaseInsensitive)) {
                ui->Lst->setCurrentItem(fila);
                return;
            }
        }
    });
    ui->Lst->installEventFilter(this);
    ui->txtBuscar->installEventFilter(this);
    CargarLst();
    ui->Lst->setFocus();
}

FrmLstVendedores::~FrmLstVendedores() = default;

void FrmLstVendedores::Error(const QString& seccion, int numero, const QString& descripcion) {
    ctx_.dialogos().Mensaje(QString::number(numero) + QStringLiteral(" - ") + seccion +
                                QStringLiteral("\n\n") + descripcion,
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

void FrmLstVendedores::CargarLst() {
    ui->Lst->clear();
    try {
        const QList<QStringList> filas = ListasMaestras(ctx_.stores()).Vendedores(porNombre_);
        if (filas.isEmpty()) {
            ctx_.dialogos().Mensaje(QStringLiteral("No hay vendedores en la Base"),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
            return;
        }
        for (const QStringList& f : filas) {
            auto* item = new QTreeWidgetItem(ui->Lst);
            item->setText(0, porNombre_ ? f.at(1) : f.at(0));
            item->setText(1, porNombre_ ? f.at(0) : f.at(1));
            item->setText(kColDomicilio, f.at(2));
        }
        AjustarColumnas(ui->Lst);
        ui->Lst->setCurrentItem(ui->Lst->topLevelItem(0));
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Sección Vendedores"), e.numero(), e.descripcion());
    }
}

QString FrmLstVendedores::CodigoSeleccionado() const {
    const QTreeWidgetItem* fila = ui->Lst->currentItem();
    if (!fila)
        return {};
    return fila->text(porNombre_ ? 1 : 0);
}

void FrmLstVendedores::LstC() {
    const QTreeWidgetItem* fila = ui->Lst->currentItem();
    if (!fila)
        return;
    QVariantMap par;
    par.insert(QStringLiteral("codigo"), CodigoSeleccionado());
    par.insert(QStringLiteral("nombre"), fila->text(porNombre_ ? 0 : 1));
    setProperty("Respuesta", par);
    accept();
}

void FrmLstVendedores::Eliminar(const QString& codigo) {
    try {
        ListasMaestras(ctx_.stores()).EliminarVendedor(codigo);
        delete ui->Lst->currentItem();
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Sección Eliminar Vendedor"), e.numero(), e.descripcion());
    }
}

void FrmLstVendedores::Editar(bool cambio) {
    QVariantMap args;
    if (cambio) {
        const QTreeWidgetItem* fila = ui->Lst->currentItem();
        if (!fila)
            return;
        args.insert(QStringLiteral("modo"), 1);
        args.insert(QStringLiteral("codigo"), CodigoSeleccionado());
        args.insert(QStringLiteral("nombre"), fila->text(porNombre_ ? 0 : 1));
        args.insert(QStringLiteral("domicilio"), fila->text(kColDomicilio));
    }
    try {
        ctx_.AbrirModal(QStringLiteral("FrmNewVendedor"), args);
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Sección Vendedores"), e.numero(), e.descripcion());
    }
    CargarLst();
}

bool FrmLstVendedores::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const auto* k = static_cast<QKeyEvent*>(evento);
    const int tecla = k->key();
    if (tecla == Qt::Key_Escape || (tecla == Qt::Key_C && (k->modifiers() & Qt::ControlModifier))) {
        setProperty("Respuesta", QVariantMap());
        reject();
        return true;
    }
    const bool enter = tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
    if (objeto == ui->txtBuscar) {
        if (enter) {
            ui->Lst->setFocus();
            return true;
        }
        return QDialog::eventFilter(objeto, evento);
    }
    if (enter) {
        LstC();
        return true;
    }
    if (tecla == Qt::Key_Insert) {
        Editar(false);
        return true;
    }
    if (tecla == Qt::Key_F6) {
        Editar(true);
        return true;
    }
    if (tecla == Qt::Key_Delete) {
        const QString codigo = CodigoSeleccionado();
        if (!codigo.isEmpty())
            Eliminar(codigo);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
