#include "foundation/FrmInternoNew.h"

#include "foundation/BloqueoInterno.h"
#include "foundation/EliminarInterno.h"
#include "foundation/NuevoInterno.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "platform/ui/AnchoColumnas.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmInternoNew.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMap>
#include <QStyle>
#include <QToolBar>

namespace korven {

namespace {

constexpr int kColInterno = 1;
constexpr int kColDetalle = 7;
constexpr int kRolInterno = Qt::UserRole + 1;

// The mouse pointer as an hourglass for the life of the object.
class RelojDeArena {
public:
    RelojDeArena() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~RelojDeArena() { QApplication::restoreOverrideCursor(); }
};

QString TextoError(const KorvenError& e) {
    return QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion();
}

} // namespace

FrmInternoNew::FrmInternoNew(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmInternoNew>()), ctx_(ctx),
      maquina_(args.value(QStringLiteral("maquina"), MaquinaLocal()).toString()) {
    ui->setupUi(this);

    TbMenu = new QToolBar(this);
    TbMenu->setObjectName(QStringLiteral("TbMenu"));
    TbMenu->addAction(style()->standardIcon(QStyle::SP_FileIcon), QStringLiteral("Nuevo"), this,
                      [this] { NuevoInterno(); });
    TbMenu->addAction(style()->standardIcon(QStyle::SP_FileDialogNewFolder),
                      QStringLiteral("Copiar"), this, [this] {
                          if (!InternosListados().isEmpty())
                              CopiarInterno();
                      });
    TbMenu->addAction(style()->standardIcon(QStyle::SP_TrashIcon), QStringLiteral("Eliminar"), this,
                      [this] {
                          if (!InternosListados().isEmpty())
                              EliminarInterno();
                      });
    ui->layBarra->addWidget(TbMenu);

    // 1. The copier is kept by the form; when it cannot be made, F6 tells why.
    try {
        copiador_ = ctx_.componentes().Crear(QStringLiteral("OperationCopier.Main"), ctx_);
    } catch (const KorvenError&) {
        copiador_.reset();
    }
    // 2. The companions of the text boxes.
    ClCntrl::Vincular(ctx_, ui->txtCliente);
    ClCntrl::Vincular(ctx_, ui->txtDespachante);
    ClCntrl::Vincular(ctx_, ui->txtInterno);
    // 3. The groupings.
    ui->cboAgruparPor->addItems({QString(), QStringLiteral("Importacion / Exportacion"),
                                 QStringLiteral("Despachante"), QStringLiteral("Cliente"),
                                 QStringLiteral("Vendedor")});
    ui->cboAgruparPor->setCurrentIndex(-1);

    ui->DTP_Desde->setDate(QDate::currentDate());
    ui->DTP_Hasta->setDate(QDate::currentDate());
    ui->lstInterno->setColumnHidden(kColDetalle, true);
    ui->lstInterno->setStyleSheet(QStringLiteral(
        "QTreeView::item:selected { background-color: rgb(255, 209, 163); color: black; }"));
    ui->lstInterno->setColumnWidth(0, 28);

    connect(ui->lstInterno, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        const QTreeWidgetItem* fila = FilaDe(item);
        if (fila && !fila->text(kColInterno).isEmpty())
            AbrirInterno(fila->text(kColInterno));
    });
    connect(ui->cboAgruparPor, &QComboBox::currentIndexChanged, this, [this] { LlenarGrilla(); });

    for (QWidget* w : findChildren<QWidget*>())
        w->installEventFilter(this);
    ui->txtInterno->setFocus();
}

FrmInternoNew::~FrmInternoNew() = default;

QString FrmInternoNew::TituloMarco(const QString& maquina) {
    return QStringLiteral("Korven Windows %1.%2.%3 - PC [ %4 ]")
        .arg(KORVEN_VERSION_MAJOR)
        .arg(KORVEN_VERSION_MINOR)
        .arg(KORVEN_VERSION_PATCH)
        .arg(maquina);
}

void FrmInternoNew::BuscarInternos() {
    RelojDeArena reloj;
    try {
        FiltroInternos f;
        f.cliente = ui->txtCliente->text();
        f.despachante = ui->txtDespachante->text();
        f.filtroFecha = ui->chkFiltroFecha->isChecked();
        f.desde = ui->DTP_Desde->date();
        f.hasta = ui->DTP_Hasta->date();
        f.interno = ui->txtInterno->text();
        filas_ = korven::BuscarInternos(ctx_.stores(), ctx_.config()).Buscar(f);
        LlenarGrilla();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(e.descripcion() + QStringLiteral(" - source ") + e.origen(),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

// Fills the grid from the rows read, grouped by the column the combo box names: the empty
// entry groups by sub-regime, the others by import/export, broker, client and vendor.
void FrmInternoNew::LlenarGrilla() {
    QTreeWidget* g = ui->lstInterno;
    g->setUpdatesEnabled(false);
    g->clear();
    const int agrupar = ui->cboAgruparPor->currentIndex();
    const int columnaGrupo = agrupar < 0 ? -1 : agrupar + 2;
    const QColor colorDetalle(0, 102, 102);
    const QIcon bandera = style()->standardIcon(QStyle::SP_DirIcon);
    const int alto = g->fontMetrics().lineSpacing();

    QMap<QString, QTreeWidgetItem*> grupos;
    QTreeWidgetItem* primera = nullptr;
    for (const FilaInterno& f : filas_) {
        const QStringList celdas = {QString(),     f.interno, f.subRegimen, f.impExp,
                                    f.despachante, f.cliente, f.vendedor,   f.detalle};
        auto* fila = new QTreeWidgetItem(celdas);
        fila->setIcon(0, bandera);
        fila->setData(0, kRolInterno, f.interno);
        if (columnaGrupo >= 0) {
            const QString valor = celdas.at(columnaGrupo);
            QTreeWidgetItem*& grupo = grupos[valor];
            if (!grupo) {
                grupo = new QTreeWidgetItem();
                grupo->setFlags(Qt::ItemIsEnabled);
                grupo->setFirstColumnSpanned(true);
                QFont negrita = grupo->font(0);
                negrita.setBold(true);
                grupo->setFont(0, negrita);
            }
            grupo->addChild(fila);
            grupo->setText(0, g->headerItem()->text(columnaGrupo) + QStringLiteral(": ") + valor +
                                  QStringLiteral(" (") + QString::number(grupo->childCount()) +
                                  QLatin1Char(')'));
        } else {
            g->addTopLevelItem(fila);
        }
        // The detail: three lines beneath the row, a little taller than their text.
        auto* detalle = new QTreeWidgetItem(fila);
        detalle->setText(0, f.detalle);
        detalle->setData(0, kRolInterno, f.interno);
        detalle->setForeground(0, colorDetalle);
        detalle->setFirstColumnSpanned(true);
        detalle->setFlags(Qt::ItemIsEnabled);
        detalle->setSizeHint(0, QSize(0, alto * 3 + 2));
        if (!primera)
            primera = fila;
    }
    // Groups in the order of their values.
    if (columnaGrupo >= 0) {
        const QList<QTreeWidgetItem*> ordenados = grupos.values();
        for (QTreeWidgetItem* grupo : ordenados)
            g->addTopLevelItem(grupo);
        primera = nullptr;
        if (!ordenados.isEmpty() && ordenados.first()->childCount() > 0)
            primera = ordenados.first()->child(0);
    }
    g->expandAll();
    // The first column holds the flag, and the group and detail lines spread over it.
    AjustarColumnas(g, AnchoColumnaMaximo, 1);
    g->setUpdatesEnabled(true);
    if (primera) {
        g->setFocus();
        g->setCurrentItem(primera);
    }
}

QTreeWidgetItem* FrmInternoNew::FilaDe(QTreeWidgetItem* item) const {
    if (!item || item->data(0, kRolInterno).toString().isEmpty())
        return nullptr; // a group row
    if (item->text(kColInterno).isEmpty() && item->parent())
        return item->parent(); // the detail lines belong to the row above them
    return item;
}

QString FrmInternoNew::InternoSeleccionado() const {
    const QTreeWidgetItem* fila = FilaDe(ui->lstInterno->currentItem());
    return fila ? fila->text(kColInterno) : QString();
}

QStringList FrmInternoNew::InternosListados() const {
    QStringList r;
    for (QTreeWidgetItemIterator i(ui->lstInterno); *i; ++i)
        if (!(*i)->text(kColInterno).isEmpty())
            r << (*i)->text(kColInterno);
    return r;
}

void FrmInternoNew::NuevoInterno() {
    const QString nuevo = korven::NuevoInterno(ctx_).Ejecutar();
    if (nuevo.isEmpty())
        return;
    // The list shows the new record, as Enter in the number would.
    ui->txtInterno->setText(nuevo);
    BuscarInternos();
    ui->lstInterno->setFocus();
}

void FrmInternoNew::QuitarFila(const QString& interno) {
    QTreeWidget* g = ui->lstInterno;
    for (QTreeWidgetItemIterator i(g); *i; ++i) {
        QTreeWidgetItem* fila = *i;
        if (fila->text(kColInterno) != interno)
            continue;
        QTreeWidgetItem* grupo = fila->parent();
        delete fila;
        if (grupo && grupo->childCount() == 0)
            delete grupo;
        break;
    }
    filas_.removeIf([&interno](const FilaInterno& f) { return f.interno == interno; });
}

void FrmInternoNew::RefrescarFila(const QString& interno) {
    const std::optional<FilaInterno> fila =
        korven::BuscarInternos(ctx_.stores(), ctx_.config()).Fila(interno);
    if (!fila) {
        QuitarFila(interno);
        return;
    }
    for (FilaInterno& f : filas_)
        if (f.interno == interno)
            f = *fila;
    LlenarGrilla();
    for (QTreeWidgetItemIterator i(ui->lstInterno); *i; ++i)
        if ((*i)->text(kColInterno) == interno) {
            ui->lstInterno->setCurrentItem(*i);
            break;
        }
}

void FrmInternoNew::EliminarInterno() {
    const QString interno = InternoSeleccionado();
    if (interno.isEmpty())
        return;
    ui->PB->setRange(0, static_cast<int>(EliminarInterno::Pasos().size()));
    ui->PB->setValue(0);
    bool eliminado;
    {
        RelojDeArena reloj;
        ui->PB->setVisible(true);
        eliminado = korven::EliminarInterno(ctx_, maquina_).Ejecutar(interno, [this](int hechos) {
            ui->PB->setValue(hechos);
        });
        ui->PB->setVisible(false);
    }
    if (eliminado)
        QuitarFila(interno);
}

void FrmInternoNew::CopiarInterno() {
    const QString interno = InternoSeleccionado();
    if (interno.isEmpty())
        return;
    try {
        if (!copiador_)
            copiador_ = ctx_.componentes().Crear(QStringLiteral("OperationCopier.Main"), ctx_);
        copiador_->setProperty("Numero_Interno", interno);
        QMetaObject::invokeMethod(copiador_.get(), "GetDataAccessManager",
                                  Q_ARG(QObject*, nullptr));
        QMetaObject::invokeMethod(copiador_.get(), "Mostrar");
        const QString copia = copiador_->property("NuevoNumero").toString();
        if (!copia.isEmpty()) {
            ui->txtInterno->setText(copia);
            BuscarInternos();
            ui->lstInterno->setFocus();
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(TextoError(e) +
                                    QStringLiteral(" - seccion [KORVEN.FrmInternoNew.Copiar]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmInternoNew::AbrirInterno(const QString& interno) {
    RelojDeArena reloj;
    BloqueoInterno bloqueo(ctx_.stores(), ctx_.dialogos(), maquina_);
    bool tomado = false;
    try {
        tomado = bloqueo.Tomar(interno);
        if (!tomado)
            return;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->objectName() == QStringLiteral("FrmPrincipal"))
                w->setWindowTitle(TituloMarco(maquina_));
        QVariantMap args;
        args.insert(QStringLiteral("interno"), interno);
        QApplication::restoreOverrideCursor();
        // The hub loads itself, reads the options of the Operation and, on closing, keeps them
        // and gives the lock back.
        ctx_.AbrirModal(QStringLiteral("FrmDetalleInterno"), args);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        // The hub may have changed what the row shows.
        RefrescarFila(interno);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(TextoError(e) +
                                    QStringLiteral(" - seccion [KORVEN.Global.AbrirInterno]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        // A hub that could not be shown leaves no lock behind.
        if (tomado) {
            try {
                bloqueo.Liberar(interno);
            } catch (const KorvenError&) {
            }
        }
    }
}

void FrmInternoNew::lp_ImprimirList() {
    try {
        std::unique_ptr<QObject> listado =
            ctx_.componentes().Crear(QStringLiteral("OperationExchange.Main"), ctx_);
        const QString proveedor = QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=");
        QMetaObject::invokeMethod(listado.get(), "ConectarLST",
                                  Q_ARG(QString, proveedor + ctx_.config().rutaPersonal),
                                  Q_ARG(QString, proveedor + ctx_.config().rutaEstado));
        QMetaObject::invokeMethod(listado.get(), "mostrarLST");
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            TextoError(e) + QStringLiteral(" - seccion [KORVEN.FrmInternoNew.lp_ImprimirList]::"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmInternoNew::SeleccionarCliente() {
    try {
        std::unique_ptr<QObject> libro =
            ctx_.componentes().Crear(QStringLiteral("ClientBook.Listing"), ctx_);
        QMetaObject::invokeMethod(libro.get(), "SetDataConnection", Q_ARG(QObject*, nullptr));
        libro->setProperty("Seleccionar", true);
        libro->setProperty("OrigenKorven", true);
        QMetaObject::invokeMethod(libro.get(), "MostrarListado", Q_ARG(QObject*, this));
        const QString cuit = libro->property("Cliente_Cuit").toString();
        if (!cuit.isEmpty()) {
            ui->txtCliente->setText(cuit);
            ui->txtCliente->setToolTip(libro->property("Cliente_nombre").toString());
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            TextoError(e) +
                QStringLiteral(" - seccion [KORVEN.FrmInternoNew.SeleccionarCliente]::"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmInternoNew::BuscarDespachante() {
    try {
        const QVariant r = ctx_.AbrirModal(QStringLiteral("FrmListadoDespachante"));
        const QVariantMap par = r.toMap();
        const QString cuit = par.value(QStringLiteral("cuit")).toString();
        if (!cuit.isEmpty()) {
            ui->txtDespachante->setText(cuit);
            ui->txtDespachante->setToolTip(par.value(QStringLiteral("nombre")).toString());
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            TextoError(e) + QStringLiteral(" - seccion [KORVEN.FrmInternoNew.BuscarDespachante]::"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

// Keys of the whole form, whatever control has the focus.
bool FrmInternoNew::TeclaFormulario(int tecla) {
    switch (tecla) {
    case Qt::Key_Insert:
        NuevoInterno();
        return true;
    case Qt::Key_F12:
        lp_ImprimirList();
        return true;
    case Qt::Key_Escape:
        reject();
        return true;
    default:
        return false;
    }
}

bool FrmInternoNew::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    const bool enter = tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
    if (objeto == ui->lstInterno) {
        const bool hayFilas = !InternosListados().isEmpty();
        if (enter) {
            const QString interno = InternoSeleccionado();
            if (!interno.isEmpty())
                AbrirInterno(interno);
            return true;
        }
        if (tecla == Qt::Key_Delete) {
            if (hayFilas)
                EliminarInterno();
            return true;
        }
        if (tecla == Qt::Key_F6) {
            if (hayFilas)
                CopiarInterno();
            return true;
        }
    } else if (objeto == ui->txtInterno && enter) {
        BuscarInternos();
        ui->lstInterno->setFocus();
        return true;
    } else if (objeto == ui->cboAgruparPor && enter) {
        focusNextChild();
        return true;
    } else if (objeto == ui->txtCliente || objeto == ui->txtDespachante) {
        auto* txt = static_cast<QLineEdit*>(objeto);
        if (tecla == Qt::Key_F6) {
            if (objeto == ui->txtCliente)
                SeleccionarCliente();
            else
                BuscarDespachante();
            return true;
        }
        if (tecla == Qt::Key_Delete) {
            txt->clear();
            txt->setToolTip(QString());
            return true;
        }
    }
    if (TeclaFormulario(tecla))
        return true;
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
