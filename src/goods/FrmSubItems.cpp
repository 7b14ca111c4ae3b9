#include "goods/FrmSubItems.h"

#include "goods/CatalogoArticulos.h"
#include "goods/FrmImportarSubItems.h"
#include "goods/GrabacionSubItems.h"
#include "goods/ModeloSubItems.h"
#include "goods/SubItemsDatos.h"
#include "goods/Sufijos.h"
#include "header/ListasCodigos.h"
#include "header/PickLists.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"
#include "platform/ui/TextosFormulario.h"
#include "ui_FrmSubItems.h"

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <QToolTip>

namespace korven {

namespace {

using Icono = Dialogos::Icono;

bool EsEnter(const QKeyEvent* k) {
    return (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) &&
           (k->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) == Qt::NoModifier;
}
bool Sola(const QKeyEvent* k, Qt::Key tecla) {
    return k->key() == tecla &&
           (k->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) == Qt::NoModifier;
}
bool Num(const QString& t) {
    return EsNumeroTecleado(t.trimmed());
}
double Val(const QString& t) {
    return NumeroTecleado(t.trimmed());
}
// A product as plain double arithmetic shows it, in the system separator.
QString Plano(double v) {
    return ReemplazarSeparadorDecimal(QString::number(v, 'g', 15));
}
// Sets a text only when it differs, as a change of the same text is no change.
void Poner(QLineEdit* t, const QString& texto) {
    if (t->text() != texto)
        t->setText(texto);
}
QString Reformatear(const QString& t, const char* mascara) {
    return Num(t) ? Formato(Val(t), QString::fromLatin1(mascara)) : t;
}
QString Seccion(const char* rutina) {
    return QStringLiteral("seccion ") + QString::fromLatin1(rutina) +
           QStringLiteral(" en Formulario FrmSubItems :: ");
}

const char* const kUltimos[] = {"cboBiendeUso", "TxtCodProrrateo", "TxtFiller",
                                "TxtCodigoEAN", "txtCertOrig",     "TxtInsumCons",
                                "TxtKgBruto",   "TxtFobTotal",     "TxtValorsobreestadistica",
                                "TxtNroSubitem"};

} // namespace

FrmSubItems::FrmSubItems(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmSubItems>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()), lista_(ctx, interno_) {
    ui->setupUi(this);
    cargando_ = true;
    ctx_.FormularioDeDatos = false;
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        ClCntrl::Vincular(ctx_, t);
        t->installEventFilter(this);
    }
    for (QWidget* w :
         {static_cast<QWidget*>(ui->cboBiendeUso), static_cast<QWidget*>(ui->LstArticulos),
          static_cast<QWidget*>(ui->opFobTotal), static_cast<QWidget*>(ui->opFobUnitario)})
        w->installEventFilter(this);
    for (QPushButton* b : findChildren<QPushButton*>()) {
        b->setAutoDefault(false);
        b->setDefault(false);
    }
    ui->LbLapi->setVisible(false);
    ui->lbProhibicion->setVisible(false);
    ui->lbSegElect->setVisible(false);
    ui->LbREINT->setVisible(false);
    ui->lbFiltro->setVisible(false);

    // The options of the Operation hide the fields they switch off.
    const QVariantList flags = args.value(QStringLiteral("flags")).toList();
    auto flag = [&](int i) { return i >= flags.size() || flags.at(i).toBool(); };
    ui->FramCatalogo->setVisible(flag(0));
    for (QWidget* w : {static_cast<QWidget*>(ui->lbPais), static_cast<QWidget*>(ui->TxtIdpais),
                       static_cast<QWidget*>(ui->TxtdescPais)})
        w->setVisible(flag(2));
    for (QWidget* w :
         {static_cast<QWidget*>(ui->lbEstadoMerc), static_cast<QWidget*>(ui->TxtIdEstadoMercaderia),
          static_cast<QWidget*>(ui->TxtDescMercaderia)})
        w->setVisible(flag(3));
    ui->lbCodProrrateo->setVisible(flag(4));
    ui->TxtCodProrrateo->setVisible(flag(4));
    ui->lbBiendeUso->setVisible(flag(5));
    ui->cboBiendeUso->setVisible(flag(5));
    ui->FramInsumos->setVisible(flag(6));
    ui->FramCancelaciones->setVisible(flag(7));

    // Positions are typed upper-case.
    connect(ui->TxtPosicion, &QLineEdit::textEdited, this, [this](const QString& texto) {
        const QString m = texto.toUpper();
        if (m != texto) {
            const int pos = ui->TxtPosicion->cursorPosition();
            ui->TxtPosicion->setText(m);
            ui->TxtPosicion->setCursorPosition(pos);
        }
    });
    connect(ui->TxtPosicion, &QLineEdit::textChanged, this, [this](const QString& t) {
        if (t.isEmpty()) {
            ui->LbCodigoEstadistica->clear();
            ui->LbEstadisticaDescripcion->clear();
        }
    });
    connect(ui->TxtCantidad, &QLineEdit::textChanged, this, [this](const QString& t) {
        if (t.isEmpty())
            Poner(ui->TxtFobTotal, QStringLiteral("000"));
        else if (Num(t) && Num(ui->TxtUnitario->text()))
            Poner(ui->TxtFobTotal,
                  Formato(Val(t) * Val(ui->TxtUnitario->text()), QStringLiteral("00.00")));
    });
    connect(ui->TxtFobTotal, &QLineEdit::textChanged, this, [this](const QString& t) {
        if (t.isEmpty())
            ui->TxtUnitario->clear();
    });
    for (QLineEdit* t : {ui->TxtDerEsp, ui->TxtValorsobreestadistica, ui->TxtKgNeto})
        connect(t, &QLineEdit::textChanged, this, [this, t] { Espejar(t); });
    connect(ui->TxtIdCatalogo, &QLineEdit::textChanged, this, [this](const QString& t) {
        const bool hay = !t.trimmed().isEmpty();
        ui->txtIdArticulo->setEnabled(hay);
        ui->TxtDescArticulos->setEnabled(hay);
    });
    connect(ui->opFobTotal, &QRadioButton::clicked, this,
            [this] { ActualizarOpciones(false, true); });
    connect(ui->opFobUnitario, &QRadioButton::clicked, this,
            [this] { ActualizarOpciones(true, true); });
    connect(ui->cmdModificar, &QPushButton::clicked, this, [this] { cmdModificar(); });
    connect(ui->Command1, &QPushButton::clicked, this, [this] {
        if (!porF9_)
            Grabar(2);
    });
    connect(ui->Command2, &QPushButton::clicked, this, [this] { Grabar(1); });

    // The list reads only the rows on screen.
    modelo_ = new ModeloSubItems(lista_, this);
    ui->LstArticulos->setModel(modelo_);
    ui->LstArticulos->verticalHeader()->setVisible(false);
    ui->LstArticulos->verticalHeader()->setDefaultSectionSize(
        ui->LstArticulos->fontMetrics().height() + 4);
    ui->LstArticulos->horizontalHeader()->setStretchLastSection(true);
    ui->LstArticulos->horizontalHeader()->setSectionsClickable(true);
    const int anchos[] = {50, 130, 55, 90, 90, 100, 70, 120};
    for (int i = 0; i < ListaSubItems::Columnas; ++i)
        ui->LstArticulos->setColumnWidth(i, anchos[i]);
    connect(ui->LstArticulos->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int columna) {
                ordenAsc_ = columna == orden_ ? !ordenAsc_ : true;
                orden_ = columna;
                modelo_->sort(columna, ordenAsc_ ? Qt::AscendingOrder : Qt::DescendingOrder);
            });
    CrearMenu();

    // Load.
    ui->FramDerEsp->setVisible(false);
    ui->LbDeresp->setVisible(false);
    ctx_.SufijosDeArticulo = false;
    if (ctx_.config().SbtFuncionCargaPor) {
        const QString por = ctx_.settings().GetSetting(
            QStringLiteral("KORVEN"), QStringLiteral("FLAGS"), QStringLiteral("CARGASBTPOR"));
        ActualizarOpciones(por == QStringLiteral("U"), false);
    } else {
        ui->opFobTotal->setVisible(false);
        ui->opFobUnitario->setVisible(false);
        ui->opFobTotal->setAutoExclusive(false);
        ui->opFobTotal->setChecked(false);
        ui->opFobUnitario->setChecked(false);
    }
    try {
        GetSubItemsOnListView();
        const QString catalogo = ctx_.settings().GetSetting(
            QStringLiteral("KORVEN"), QStringLiteral("DEFAULT"), QStringLiteral("CATALOGO"));
        if (!catalogo.isEmpty()) {
            ui->TxtIdCatalogo->setText(catalogo);
            BuscarCatalogo();
        } else {
            ui->TxtDescArticulos->setEnabled(false);
        }
        if (catalogo.trimmed().isEmpty())
            ui->txtIdArticulo->setEnabled(false);
        const CaratulaSubItems c = SubItemsDatos(ctx_).Caratula(interno_);
        fobCaratula_ = c.fobdivisas;
        ui->LbTotal->setText(Formato(c.fobdivisas, QStringLiteral("00.00")));
        for (QWidget* w :
             {static_cast<QWidget*>(ui->lbONCCA), static_cast<QWidget*>(ui->lbONCCACategoria),
              static_cast<QWidget*>(ui->lbONCCACorte), static_cast<QWidget*>(ui->txtONCCACategoria),
              static_cast<QWidget*>(ui->txtONCCACorte)})
            w->setVisible(c.oncca);
        admiteEAN_ = c.admiteEAN;
        MostrarTotales();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("Form_Load") + e.descripcion(), QStringLiteral("KORVEN"),
                                Icono::Critico);
    }
    cargando_ = false;
    (CatalogoVisible() && ui->txtIdArticulo->isEnabled() ? ui->txtIdArticulo : ui->TxtPosicion)
        ->setFocus();
}

FrmSubItems::~FrmSubItems() = default;

bool FrmSubItems::CatalogoVisible() const {
    return !ui->FramCatalogo->isHidden();
}

bool FrmSubItems::KilosHabilitados() const {
    return !ui->FramInsumos->isHidden() && ui->FramInsumos->isEnabled();
}

void FrmSubItems::CrearMenu() {
    TMenuSub = new QToolBar(this);
    TMenuSub->setObjectName(QStringLiteral("TMenuSub"));
    TMenuSub->setFocusPolicy(Qt::NoFocus);
    ui->layMenu->addWidget(TMenuSub);
    auto grupo = [this](const QString& titulo, const char* nombre) {
        auto* b = new QToolButton(TMenuSub);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setText(titulo);
        b->setFocusPolicy(Qt::NoFocus);
        b->setPopupMode(QToolButton::InstantPopup);
        auto* m = new QMenu(b);
        m->setObjectName(QString::fromLatin1(nombre) + QStringLiteral("Menu"));
        b->setMenu(m);
        TMenuSub->addWidget(b);
        return m;
    };
    auto accion = [this](QMenu* m, const QString& texto, const QString& nombre, auto fn) {
        QAction* a = m->addAction(texto);
        a->setObjectName(nombre);
        connect(a, &QAction::triggered, this, fn);
    };
    QMenu* filtros = grupo(QStringLiteral("Filtros"), "mnuFiltros");
    const char* const nombres[] = {"con Kilos",
                                   "Sin Kilos",
                                   "con Pais Origen",
                                   "Sin Pais Origen",
                                   "Con Estado de Mercaderia",
                                   "Sin Estado de Mercaderia",
                                   "por Posición",
                                   "Formato ncm Inválidas",
                                   "Sin sufijos",
                                   "Cantidad Estaditica 0",
                                   "Mostrar Todo"};
    for (int i = 0; i < 11; ++i) {
        const int filtro = i == 10 ? 0 : i + 1;
        accion(filtros, QString::fromUtf8(nombres[i]), QStringLiteral("mnuFiltro%1").arg(filtro),
               [this, filtro] { Filtrar(filtro); });
    }
    QMenu* reportes = grupo(QStringLiteral("Reportes"), "mnuReportes");
    accion(reportes, QStringLiteral("Archivo (Detallado)"), QStringLiteral("mnuReporteArchivo"),
           [this] { GenerarReportes(true); });
    accion(reportes, QStringLiteral("Impresora (Resumido)"), QStringLiteral("mnuReporteImpresora"),
           [this] { GenerarReportes(false); });
    grupo(QStringLiteral("Estadisticas"), "mnuEstadisticas");
    QMenu* util = grupo(QStringLiteral("Utilidades"), "mnuUtilidades");
    const char* const utilidades[] = {"Establecer Kilos en cero", "Vaciar Pais Origen",
                                      "Vaciar Filler", "Vaciar Id Prorrateo"};
    for (int i = 0; i < 4; ++i)
        accion(util, QString::fromLatin1(utilidades[i]), QStringLiteral("mnuUtilidad%1").arg(i),
               [this, i] { Utilidad(i); });
    QMenu* conv = grupo(QStringLiteral("Convertidor de Unidades"), "mnuConvertidor");
    accion(conv, QStringLiteral("Relaciones de unidades"), QStringLiteral("mnuUnidrel"), [this] {
        // The conversions the screen applies, from the declared unit to the others.
        QStringList filas;
        try {
            Recordset rs = ctx_.stores()
                               .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
                               .Abrir(QStringLiteral("select unid1,unid2,pase from unidrel order "
                                                     "by unid1,unid2"));
            for (; !rs.Eof(); rs.MoveNext())
                filas << EsNull(rs.Fields(0)) + QStringLiteral(" -> ") + EsNull(rs.Fields(1)) +
                             QStringLiteral(" x ") + Plano(EsNumero(rs.Fields(2)));
        } catch (const KorvenError& e) {
            filas << e.descripcion();
        }
        ctx_.dialogos().Mensaje(filas.join(QLatin1Char('\n')),
                                QStringLiteral("Convertidor de Unidades"), Icono::Informacion);
    });
}

void FrmSubItems::ActualizarOpciones(bool porUnitario, bool guardar) {
    ui->opFobUnitario->setChecked(porUnitario);
    ui->opFobTotal->setChecked(!porUnitario);
    ui->TxtFobTotal->setEnabled(!porUnitario);
    ui->TxtUnitario->setEnabled(porUnitario);
    if (guardar)
        ctx_.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("FLAGS"),
                                    QStringLiteral("CARGASBTPOR"),
                                    porUnitario ? QStringLiteral("U") : QStringLiteral("F"));
}

// ---- the list

void FrmSubItems::GetSubItemsOnListView() {
    const ListaSubItems::Totales& t = modelo_->Refrescar();
    ui->LbTotCantidad->setText(Formato(t.cantidad, QStringLiteral("00.00")));
    ui->LbTotKilos->setText(Formato(t.kgneto, QStringLiteral("00.00")));
    ui->LbTotSubitems->setText(Formato(t.fob, QStringLiteral("00.00")));
    ui->lbFiltro->setVisible(lista_.filtro() != ListaSubItems::Todo);
    if (t.lineas > 0)
        ui->LstArticulos->setCurrentIndex(modelo_->index(0, 0));
}

void FrmSubItems::MostrarTotales() {
    const double sub = RedondearDecimal(modelo_->totales().fob, 2);
    const double total = RedondearDecimal(fobCaratula_, 2);
    ui->LbTotSubitems->setText(Formato(sub, QStringLiteral("00.00")));
    ui->LbTotal->setText(Formato(total, QStringLiteral("00.00")));
    ui->lbDIF->setText(Formato(total - sub, QStringLiteral("00.00")));
    QPalette p = ui->LbTotSubitems->palette();
    p.setColor(QPalette::WindowText, sub > total   ? QColor(255, 0, 0)
                                     : sub < total ? QColor(0, 0, 128)
                                                   : QColor(0, 0, 0));
    ui->LbTotSubitems->setPalette(p);
}

void FrmSubItems::Filtrar(int filtro) {
    QString texto;
    if (filtro == ListaSubItems::PorPosicion) {
        texto = ctx_.dialogos()
                    .PedirTexto(QStringLiteral("Ingrese los primeros digitos de la Posición"),
                                QStringLiteral("Filtro por Posición ..."), 15)
                    .value_or(QString());
        if (texto.isEmpty())
            filtro = ListaSubItems::Todo;
    }
    lista_.setFiltro(filtro, texto);
    try {
        GetSubItemsOnListView();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("GetSubItemsOnListView") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
    }
}

QList<long long> FrmSubItems::Seleccionados() const {
    QList<long long> ids;
    for (const QModelIndex& i : ui->LstArticulos->selectionModel()->selectedRows())
        ids << modelo_->Id(i.row());
    if (ids.isEmpty() && ui->LstArticulos->currentIndex().isValid())
        ids << modelo_->Id(ui->LstArticulos->currentIndex().row());
    return ids;
}

void FrmSubItems::lpEliminar() {
    if (modelo_->rowCount() == 0)
        return;
    if (!ctx_.dialogos().Pregunta(
            QStringLiteral("Confirma eliminar el o los subitems seleccionado")))
        return;
    lista_.Eliminar(Seleccionados(), ctx_.dialogos());
    try {
        GetSubItemsOnListView();
        MostrarTotales();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("lpEliminar") + e.descripcion(), QStringLiteral("KORVEN"),
                                Icono::Critico);
    }
    LimpiarCampos();
}

void FrmSubItems::Utilidad(int cual) {
    Dialogos& d = ctx_.dialogos();
    const bool hecho = cual == 0   ? lista_.SetearKilosCero(d)
                       : cual == 1 ? lista_.VariarPaisOrigen(d)
                       : cual == 2 ? lista_.VaciarFiller(d)
                                   : lista_.VaciarIdProrrateo(d);
    if (hecho)
        GetSubItemsOnListView();
}

void FrmSubItems::NoInstalado(const QString& componente, const char* rutina) {
    ctx_.dialogos().Mensaje(Seccion(rutina) + ComponentRegistry::MensajeNoInstalado(componente),
                            QStringLiteral("KORVEN"), Icono::Critico);
}

void FrmSubItems::GenerarReportes(bool) {
    NoInstalado(QStringLiteral("SubitemReports.Main"), "GenerarReportes");
}

void FrmSubItems::lpImprimir() {
    NoInstalado(QStringLiteral("SubitemPrinter.Main"), "lpImprimir");
}

void FrmSubItems::SelectINSUMOS() {
    if (!ctx_.componentes().Instalado(QStringLiteral("SupplyTemporary.Main"))) {
        ctx_.dialogos().Mensaje(QStringLiteral("INSUMOS TEMPORALES no habilitado"),
                                QStringLiteral("KORVEN"), Icono::Informacion);
        return;
    }
    NoInstalado(QStringLiteral("SupplyLink.Main"), "SelectINSUMOS");
}

void FrmSubItems::VerINSxSBT() {
    if (modelo_->rowCount() == 0)
        return;
    NoInstalado(QStringLiteral("SupplyTemporary.Main"), "VerINSxSBT");
}

// ---- position and units

void FrmSubItems::Posicion() {
    QString t = ui->TxtPosicion->text();
    if (!t.contains(QLatin1Char('.')) && (t.size() == 12 || t.size() == 11))
        t = t.left(4) + QLatin1Char('.') + t.mid(4, 2) + QLatin1Char('.') + t.mid(6, 2) +
            QLatin1Char('.') + t.mid(8);
    if (t.size() == 15 || t.size() == 14) {
        t.replace(QLatin1Char(','), QLatin1Char('.'));
        ui->TxtPosicion->setText(t);
        BuscarNCM(t);
        return;
    }
    ui->TxtPosicion->setText(t);
    ui->LbCodigoEstadistica->clear();
    ui->LbEstadisticaDescripcion->clear();
    ui->TxtDerEsp->clear();
    ui->LbIdDerEsp->clear();
    ui->LbDerEspDesc->clear();
    ui->FramDerEsp->setVisible(false);
    ui->LbDeresp->setVisible(false);
    QApplication::beep();
    ListarPosicion();
}

void FrmSubItems::ListarPosicion() {
    QString t = ui->TxtPosicion->text();
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    QVariant r;
    try {
        r = ctx_.AbrirModal(QStringLiteral("FrmPosicion"), {{QStringLiteral("texto"), t}});
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("TxtPosicion_KeyDown") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
        return;
    }
    if (!r.isValid())
        return;
    const QVariantMap m = r.toMap();
    ui->TxtPosicion->setText(m.value(QStringLiteral("posicion")).toString().trimmed());
    MostrarPosicion(false);
    ui->LbLapi->setVisible(m.value(QStringLiteral("lapi")).toBool());
    ui->LbREINT->setVisible(m.value(QStringLiteral("reintegro")).toBool());
    ui->lbSegElect->setVisible(m.value(QStringLiteral("segelect")).toBool());
    ui->lbProhibicion->setVisible(m.value(QStringLiteral("prohibicion")).toBool());
    ui->TxtValorsobreestadistica->clear();
    if (!ui->txtSufijos->text().trimmed().isEmpty() &&
        !ctx_.dialogos().Pregunta(QStringLiteral("Desea mantener los sufijos?")))
        ui->txtSufijos->clear();
}

bool FrmSubItems::BuscarNCM(const QString& posicion) {
    ui->TxtPosicion->setText(posicion);
    MostrarPosicion(true);
    return !ui->LbCodigoEstadistica->text().isEmpty();
}

void FrmSubItems::MostrarPosicion(bool conTip) {
    const QString posicion = ui->TxtPosicion->text();
    const int n = static_cast<int>(posicion.size());
    if (n != 15 && n != 14 && n != 10) {
        ctx_.dialogos().Mensaje(QStringLiteral("Longitud erronea del Posición"));
        return;
    }
    std::optional<PosicionNcm> p;
    try {
        p = SubItemsDatos(ctx_).BuscarNCM(posicion);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("BuscarNCM") + e.descripcion(), QStringLiteral("KORVEN"),
                                Icono::Critico);
        return;
    }
    if (!p) {
        ui->LbCodigoEstadistica->clear();
        ui->LbEstadisticaDescripcion->clear();
        ctx_.dialogos().Mensaje(QStringLiteral("POSICIÓN INEXISTENTE, en el Nomenclador"));
        ui->TxtPosicion->setFocus();
        return;
    }
    PickLists pl(ctx_);
    if (conTip) {
        ui->TxtPosicion->setToolTip(p->tip);
        if (isVisible())
            QToolTip::showText(ui->TxtPosicion->mapToGlobal(QPoint(0, ui->TxtPosicion->height())),
                               p->tip, ui->TxtPosicion, {}, 20000);
    }
    ui->TxtPosicion->setText(p->posicion);
    ui->LbCodigoEstadistica->setText(p->estadistica);
    ui->LbEstadisticaDescripcion->setText(pl.getUnidadesDescripcion(p->estadistica));
    ui->txtNCMDesc->setPlainText(p->texto);
    ui->LbLapi->setVisible(p->lapi);
    ui->lbSegElect->setVisible(p->segElect);
    ui->lbProhibicion->setVisible(p->prohibicion);
    ui->LbREINT->setVisible(p->reintegro != QStringLiteral("0"));
    ui->LbREINT->setText(p->reintegro);
    if (!p->derEsp.isEmpty()) {
        ui->FramDerEsp->setVisible(true);
        ui->LbDeresp->setVisible(true);
        ui->LbIdDerEsp->setText(p->derEsp);
        ui->LbDerEspDesc->setText(pl.getUnidadesDescripcion(p->derEsp));
    } else {
        ui->LbIdDerEsp->clear();
        ui->LbDerEspDesc->clear();
        ui->TxtDerEsp->setText(QStringLiteral("0"));
        ui->FramDerEsp->setVisible(false);
        ui->LbDeresp->setVisible(false);
    }
    // Without the kilos, a position counted in kilograms takes no statistics quantity.
    const bool kilos = p->estadistica == QStringLiteral("01") || p->derEsp == QStringLiteral("01");
    const QString v = ui->TxtValorsobreestadistica->text();
    if (!Num(v) || Val(v) == 0)
        ui->TxtValorsobreestadistica->setText(QStringLiteral("0"));
    const bool bloquear = !KilosHabilitados() && kilos;
    ui->TxtValorsobreestadistica->setReadOnly(bloquear);
    ui->TxtDerEsp->setReadOnly(bloquear);
}

void FrmSubItems::BuscarUnidad() {
    QString u = ui->TxtUnidad->text().trimmed();
    if (u.isEmpty())
        return;
    if (!Num(u)) {
        ui->TxtUnidad->clear();
        ui->LbDescUnidad->clear();
        return;
    }
    u = Formato(Val(u), QStringLiteral("00"));
    if (!KilosHabilitados() && u == QStringLiteral("01")) {
        ctx_.dialogos().Mensaje(QStringLiteral("No puede cargar Kilos.\n\nDebe habilitar el campo "
                                               "Kilos Neto"),
                                QStringLiteral("KORVEN"), Icono::Informacion);
        ui->TxtUnidad->clear();
        ui->LbDescUnidad->clear();
        return;
    }
    Poner(ui->TxtUnidad, u);
    ui->LbDescUnidad->setText(PickLists(ctx_).getUnidadesDescripcion(u));
}

void FrmSubItems::CalcularUnidades() {
    if (!Num(ui->TxtCantidad->text()))
        return;
    const double cantidad = Val(ui->TxtCantidad->text());
    SubItemsDatos datos(ctx_);
    auto convertir = [&](const QString& hasta, QLineEdit* campo) {
        if (const std::optional<double> pase = datos.Pase(ui->TxtUnidad->text(), hasta))
            Poner(campo, Plano(*pase * cantidad));
        else
            campo->setEnabled(true);
    };
    try {
        convertir(ui->LbCodigoEstadistica->text(), ui->TxtValorsobreestadistica);
        convertir(QStringLiteral("01"), ui->TxtKgNeto);
        if (!ui->FramDerEsp->isHidden())
            convertir(ui->LbIdDerEsp->text(), ui->TxtDerEsp);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("CalcularUnidades") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
    }
}

void FrmSubItems::CalcularKgUnitario() {
    Poner(ui->TxtCantidad, Reformatear(ui->TxtCantidad->text(), "00.00"));
    const QString ku = ui->txtKgUnitario->text();
    if (ui->TxtUnidad->text().trimmed() != QStringLiteral("07") || !Num(ku) || Val(ku) <= 0)
        return;
    const QString k = Formato(Val(ku) * Val(ui->TxtCantidad->text()), QStringLiteral("00.00"));
    if (ui->LbCodigoEstadistica->text() == QStringLiteral("01"))
        Poner(ui->TxtValorsobreestadistica, k);
    if (!ui->FramDerEsp->isHidden() && ui->LbIdDerEsp->text() == QStringLiteral("01"))
        Poner(ui->TxtDerEsp, k);
    Poner(ui->TxtKgNeto, k);
}

// The quantities in one unit follow one another: kilos, statistics and specific duty.
void FrmSubItems::Espejar(QLineEdit* campo) {
    const QString est = ui->LbCodigoEstadistica->text();
    const QString der = ui->LbIdDerEsp->text();
    const QString t = campo->text();
    if (campo == ui->TxtDerEsp) {
        if (der == est)
            Poner(ui->TxtValorsobreestadistica, t);
        if (der == QStringLiteral("01"))
            Poner(ui->TxtKgNeto, t);
    } else if (campo == ui->TxtValorsobreestadistica) {
        if (!ui->FramDerEsp->isHidden() && der == est)
            Poner(ui->TxtDerEsp, t);
        if (est == QStringLiteral("01"))
            Poner(ui->TxtKgNeto, t);
        if (ui->TxtUnidad->text().trimmed() == QStringLiteral("01"))
            Poner(ui->TxtCantidad, t);
    } else if (campo == ui->TxtKgNeto) {
        const bool num = Num(t);
        if (est == QStringLiteral("01"))
            Poner(ui->TxtValorsobreestadistica, num ? t : QString());
        if (der == QStringLiteral("01"))
            Poner(ui->TxtDerEsp, num ? t : QString());
    }
}

// A key in the unit price or the FOB: the other follows, with the character being typed.
void FrmSubItems::TeclaImporte(QLineEdit* campo, QKeyEvent* k) {
    const QString tecla = k->text();
    const bool digito = tecla.size() == 1 && tecla.at(0).isDigit();
    const QString texto = campo->text();
    if (!digito && !Num(texto))
        return;
    const QString valor = digito ? texto + tecla : texto;
    const QString cantidad = ui->TxtCantidad->text();
    if (campo == ui->TxtUnitario) {
        if (Num(cantidad))
            Poner(ui->TxtFobTotal, Formato(Val(cantidad) * Val(valor), QStringLiteral("00.00")));
    } else if (Num(cantidad) && Val(cantidad) != 0) {
        Poner(ui->TxtUnitario, Formato(Val(valor) / Val(cantidad), QStringLiteral("00.0000")));
    }
}

// ---- catalogue

void FrmSubItems::BuscarCatalogo() {
    const QString c = ui->TxtIdCatalogo->text().trimmed();
    try {
        ui->LbDescCatalogo->setText(c.isEmpty() ? QString()
                                                : CatalogoArticulos(ctx_).BuscarCatalogo(c));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("BuscarCatalogo") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
    }
}

void FrmSubItems::ElegirCatalogo() {
    const auto c = CatalogoArticulos(ctx_).ElegirCatalogo();
    if (!c)
        return;
    ui->TxtIdCatalogo->setText(c->first);
    ui->LbDescCatalogo->setText(c->second);
    LimpiarCampos();
}

void FrmSubItems::BuscarArticuloSobreCat(bool lista) {
    const QString catalogo = ui->TxtIdCatalogo->text().trimmed();
    QString articulo = ui->txtIdArticulo->text().trimmed();
    try {
        CatalogoArticulos cat(ctx_);
        std::optional<ArticuloCatalogo> a;
        if (!lista && !articulo.isEmpty())
            a = cat.LeerArticulo(catalogo, articulo);
        if (!a && (lista || !articulo.isEmpty())) {
            const QVariant r = ctx_.AbrirModal(
                QStringLiteral("FrmCatArticulosBuscar"),
                {{QStringLiteral("catalogo"), catalogo}, {QStringLiteral("texto"), articulo}});
            if (!r.isValid())
                return;
            articulo = r.toMap().value(QStringLiteral("articulo")).toString();
            a = cat.LeerArticulo(catalogo, articulo);
        }
        if (!a)
            return;
        PickLists pl(ctx_);
        const bool mantener = ctx_.config().SbtMantDatos;
        if (!mantener)
            for (QLineEdit* t :
                 {ui->TxtPosicion, ui->TxtUnidad, ui->TxtCantidad, ui->TxtUnitario,
                  ui->TxtValorsobreestadistica, ui->txtSufijos, ui->TxtIdpais, ui->txtIdPaisProc,
                  ui->TxtIdEstadoMercaderia, ui->TxtInsumosTemp, ui->TxtInsumCons,
                  ui->TxtCanelaciones, ui->TxtCancCantidad, ui->txtNroItem, ui->TxtNroSubitem})
                t->clear();
        ui->txtIdArticulo->setText(a->idArticulo);
        ui->TxtDescArticulos->setText(a->descripcion);
        ui->txtOtros->setText(a->otros);
        ui->TxtUnidad->setText(a->idUnidad);
        ui->LbDescUnidad->setText(pl.getUnidadesDescripcion(a->idUnidad));
        ui->TxtIdpais->setText(a->idPais);
        ui->TxtdescPais->setText(pl.getPaisDescripcion(a->idPais));
        ui->txtIdPaisProc->setText(a->idPaisProc);
        ui->TxtdescPaisProc->setText(pl.getPaisDescripcion(a->idPaisProc));
        ui->TxtIdEstadoMercaderia->setText(a->estadoMerc);
        ui->TxtDescMercaderia->setText(pl.getEstadoMercaderiaDescripcion(a->estadoMerc));
        ui->txtONCCACategoria->setText(a->onccaCategoria);
        ui->txtONCCACorte->setText(a->onccaCortes);
        ui->TxtCodigoEAN->setText(a->codigoEAN);
        ui->cboBiendeUso->setCurrentIndex(a->bienDeUso == QStringLiteral("N") ? 1 : 0);
        if (a->kgUnitario != 0)
            ui->txtKgUnitario->setText(Plano(a->kgUnitario));
        ui->TxtPosicion->setText(a->ncm);
        ui->txtSufijos->setText(Sufijos(ctx_).ActuSufijos(a->ncm, a->sufijos));
        ui->TxtCantidad->setText(Formato(0.0, QStringLiteral("00.00")));
        ui->TxtUnitario->setText(ctx_.config().VALORCAT == 2
                                     ? Formato(a->precioUnitario, QStringLiteral("00.0000"))
                                     : Formato(0.0, QStringLiteral("00.0000")));
        ui->TxtFobTotal->setText(Formato(0.0, QStringLiteral("00.00")));
        ui->TxtValorsobreestadistica->setText(Formato(0.0, QStringLiteral("00.00")));
        if (!a->ncm.trimmed().isEmpty())
            Posicion();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("BuscarArticuloSobreCat") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
    }
}

// ---- field keys

bool FrmSubItems::Enter(QLineEdit* campo) {
    if (campo == ui->TxtPosicion) {
        const int n = static_cast<int>(campo->text().size());
        const bool directa = (n == 15 || n == 14) ||
                             (!campo->text().contains(QLatin1Char('.')) && (n == 12 || n == 11));
        Posicion();
        if (!directa)
            return true;
        return ui->LbCodigoEstadistica->text().isEmpty();
    }
    if (campo == ui->TxtIdCatalogo)
        BuscarCatalogo();
    else if (campo == ui->txtIdArticulo)
        BuscarArticuloSobreCat(false);
    else if (campo == ui->TxtUnidad)
        BuscarUnidad();
    else if (campo == ui->TxtCantidad)
        Poner(campo, Reformatear(campo->text(), "00.00"));
    else if (campo == ui->TxtUnitario)
        Poner(campo, Reformatear(campo->text(), "00.0000"));
    else if (campo == ui->TxtFobTotal)
        Poner(campo, Reformatear(campo->text(), "00.00"));
    else if (campo == ui->TxtIdpais || campo == ui->txtIdPaisProc)
        (campo == ui->TxtIdpais ? ui->TxtdescPais : ui->TxtdescPaisProc)
            ->setText(PickLists(ctx_).getPaisDescripcion(campo->text().trimmed()));
    else if (campo == ui->TxtIdEstadoMercaderia)
        ui->TxtDescMercaderia->setText(
            PickLists(ctx_).getEstadoMercaderiaDescripcion(campo->text().trimmed()));
    return false;
}

void FrmSubItems::Listar(QLineEdit* campo) {
    try {
        if (campo == ui->TxtPosicion) {
            ListarPosicion();
        } else if (campo == ui->TxtIdCatalogo) {
            ElegirCatalogo();
        } else if (campo == ui->txtIdArticulo) {
            BuscarArticuloSobreCat(true);
        } else if (campo == ui->TxtUnidad) {
            const QString u = PickLists(ctx_).getListado(QStringLiteral("UNIDADES"));
            if (!u.isEmpty()) {
                campo->setText(u);
                BuscarUnidad();
            }
        } else if (campo == ui->TxtIdpais || campo == ui->txtIdPaisProc ||
                   campo == ui->TxtIdEstadoMercaderia) {
            const QString lista =
                campo == ui->TxtIdEstadoMercaderia
                    ? QStringLiteral("ESTADOMERCADERIA")
                    : campo->property("Tag").toString().mid(3).section(QLatin1Char('#'), 0, 0);
            const QString c = PickLists(ctx_).getListado(lista);
            if (!c.isEmpty()) {
                campo->setText(c);
                Enter(campo);
            }
        } else if (campo == ui->txtONCCACategoria || campo == ui->txtONCCACorte) {
            PickLists pl(ctx_);
            const bool categoria = campo == ui->txtONCCACategoria;
            const QString c = categoria ? pl.getONCCACategoriaListado()
                                        : pl.getONCCACortesListado(ui->TxtPosicion->text());
            if (!c.isEmpty()) {
                campo->setText(c);
                campo->setProperty("Tag", c);
                (categoria ? ui->lbONCCACategoria : ui->lbONCCACorte)
                    ->setText(categoria ? pl.getONCCACategoria(c)
                                        : pl.getONCCACortes(c, ui->TxtPosicion->text()));
            }
        } else if (campo == ui->TxtCodProrrateo) {
            const QString c = ctx_.AbrirModal(QStringLiteral("FrmLstProrrateo"),
                                              {{QStringLiteral("interno"), interno_}})
                                  .toString();
            if (!c.isEmpty())
                campo->setText(c);
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("KeyDown") + e.descripcion(), QStringLiteral("KORVEN"),
                                Icono::Critico);
    }
}

void FrmSubItems::AlSalir(QLineEdit* campo, bool porTeclado) {
    if (campo == ui->TxtCantidad) {
        CalcularUnidades();
        CalcularKgUnitario();
    } else if (campo == ui->TxtUnitario) {
        Poner(campo, Reformatear(campo->text(), "00.0000"));
    } else if (campo == ui->TxtFobTotal) {
        Poner(campo, Reformatear(campo->text(), "00.00"));
    } else if (campo == ui->TxtUnidad) {
        BuscarUnidad();
    }
    // The last field of the form saves the line.
    if (!porTeclado || teclaSube_ || ultimoTab_ < 0 || grabando_)
        return;
    for (const char* n : kUltimos)
        if (campo->objectName() == QLatin1String(n) && PosicionTab(this, campo) == ultimoTab_) {
            Grabar(2);
            return;
        }
}

// ---- saving

LineaSubItem FrmSubItems::Linea() const {
    LineaSubItem l;
    l.idCatalogo = ui->TxtIdCatalogo->text();
    l.idArticulo = ui->txtIdArticulo->text();
    l.descripcion = ui->TxtDescArticulos->text();
    l.kgUnitario = ui->txtKgUnitario->text();
    l.otros = ui->txtOtros->text();
    l.posicion = ui->TxtPosicion->text();
    l.codigoEstadistica = ui->LbCodigoEstadistica->text();
    l.unidad = ui->TxtUnidad->text();
    l.cantidad = ui->TxtCantidad->text();
    l.unitario = ui->TxtUnitario->text();
    l.fobTotal = ui->TxtFobTotal->text();
    l.valorEstadistica = ui->TxtValorsobreestadistica->text();
    l.idDerEsp = ui->LbIdDerEsp->text();
    l.derEsp = ui->TxtDerEsp->text();
    l.derEspVisible = !ui->FramDerEsp->isHidden();
    l.kgNeto = ui->TxtKgNeto->text();
    l.kgBruto = ui->TxtKgBruto->text();
    l.idPais = ui->TxtIdpais->text();
    l.idPaisProc = ui->txtIdPaisProc->text();
    l.estadoMerc = ui->TxtIdEstadoMercaderia->text();
    l.sufijos = ui->txtSufijos->text();
    l.bienDeUso = ui->cboBiendeUso->currentIndex() == 0;
    l.codProrrateo = ui->TxtCodProrrateo->text();
    l.filler = ui->TxtFiller->text();
    l.codigoEAN = ui->TxtCodigoEAN->text();
    l.certOrig = ui->txtCertOrig->text();
    l.insumosTemp = ui->TxtInsumosTemp->text();
    l.insumosCons = ui->TxtInsumCons->text();
    l.cancelaciones = ui->TxtCanelaciones->text();
    l.cancCantidad = ui->TxtCancCantidad->text();
    l.nroItem = ui->txtNroItem->text();
    l.nroSubitem = ui->TxtNroSubitem->text();
    l.onccaCategoria = ui->txtONCCACategoria->text();
    l.onccaCorte = ui->txtONCCACorte->text();
    l.lapi = !ui->LbLapi->isHidden();
    l.reintegro = ui->LbREINT->isHidden() ? QStringLiteral("0") : ui->LbREINT->text();
    l.descCatalogo = ui->LbDescCatalogo->text();
    l.catalogoVisible = CatalogoVisible();
    return l;
}

// What the save rewrote goes back to the screen.
void FrmSubItems::PonerLinea(const LineaSubItem& l) {
    Poner(ui->TxtValorsobreestadistica, l.valorEstadistica);
    Poner(ui->txtSufijos, l.sufijos);
    Poner(ui->TxtDescArticulos, l.descripcion);
}

void FrmSubItems::Grabar(int modoSufijos) {
    if (grabando_)
        return;
    grabando_ = true;
    const int modo = modo_;
    LineaSubItem l = Linea();
    GrabacionSubItems g(ctx_, ctx_.dialogos(), interno_);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ResultadoSubItem r;
    try {
        r = modo == 1 ? g.GrabarSubItems(modoSufijos, l, deInsumos_, admiteEAN_)
                      : g.ModificarSubItems(modoSufijos, l, idEnMano_, admiteEAN_);
    } catch (...) {
        QApplication::restoreOverrideCursor();
        grabando_ = false;
        throw;
    }
    QApplication::restoreOverrideCursor();
    // What the save rewrote is no change of the clerk's.
    const bool antes = cargando_, datos = ctx_.FormularioDeDatos;
    cargando_ = true;
    ctx_.FormularioDeDatos = false;
    PonerLinea(l);
    ctx_.FormularioDeDatos = datos;
    cargando_ = antes;
    if (r.grabado) {
        deInsumos_ = false;
        try {
            GetSubItemsOnListView();
            MostrarTotales();
        } catch (const KorvenError& e) {
            ctx_.dialogos().Mensaje(Seccion("Grabar") + e.descripcion(), QStringLiteral("KORVEN"),
                                    Icono::Critico);
        }
        if (modo == 1) {
            if (!ctx_.config().SbtMantDatos)
                LimpiarCampos();
            (CatalogoVisible() && ui->txtIdArticulo->isEnabled() ? ui->txtIdArticulo
                                                                 : ui->TxtPosicion)
                ->setFocus();
        } else {
            LimpiarCampos();
            HabilitarTextos(this, false);
            ui->LstArticulos->setFocus();
        }
    } else if (QWidget* w = findChild<QWidget*>(r.foco); w && !r.foco.isEmpty()) {
        w->setFocus();
    }
    grabando_ = false;
}

// Rows pasted from a spreadsheet or read from a CSV file, through the import preview; the list
// and its totals are refreshed as after a save when some were written.
void FrmSubItems::ImportarLineas(bool archivo) {
    const int escritas =
        archivo
            ? FrmImportarSubItems::ImportarArchivo(ctx_, interno_)
            : FrmImportarSubItems::Importar(ctx_, interno_, QGuiApplication::clipboard()->text());
    if (escritas <= 0)
        return;
    try {
        GetSubItemsOnListView();
        MostrarTotales();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("ImportarLineas") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
    }
}

void FrmSubItems::LimpiarCampos() {
    const bool antes = ctx_.FormularioDeDatos;
    ctx_.FormularioDeDatos = false;
    const bool codart = ctx_.config().SbtMantCodart;
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        const QString n = t->objectName().toUpper();
        if (n == QStringLiteral("TXTIDCATALOGO"))
            continue;
        if (codart &&
            (n == QStringLiteral("TXTCATALOGO") || n == QStringLiteral("TXTDESCCATALOGO") ||
             n == QStringLiteral("TXTIDARTICULO")))
            continue;
        t->clear();
    }
    ui->LbEstadisticaDescripcion->clear();
    ui->txtSufijos->clear();
    ui->LbIdDerEsp->clear();
    ui->TxtDerEsp->clear();
    ui->FramDerEsp->setVisible(false);
    ui->LbDeresp->setVisible(false);
    ctx_.FormularioDeDatos = antes;
}

// ---- modes

void FrmSubItems::cmdModificar() {
    if (modo_ == 1 || !porF9_)
        EntrarModificar();
    else
        SalirModificar();
}

void FrmSubItems::EntrarModificar() {
    modo_ = 2;
    porF9_ = true;
    ui->cmdModificar->setText(QStringLiteral("Continuar Agregando"));
    QPalette p = ui->LstArticulos->palette();
    p.setColor(QPalette::Base, QColor(255, 224, 192));
    ui->LstArticulos->setPalette(p);
    ui->Command1->setVisible(false);
    LimpiarCampos();
    HabilitarTextos(this, false);
    ui->LstArticulos->setFocus();
}

void FrmSubItems::SalirModificar() {
    modo_ = 1;
    porF9_ = false;
    idEnMano_ = 0;
    LimpiarCampos();
    for (QWidget* w :
         {static_cast<QWidget*>(ui->LbLapi), static_cast<QWidget*>(ui->LbREINT),
          static_cast<QWidget*>(ui->lbSegElect), static_cast<QWidget*>(ui->lbProhibicion)})
        w->setVisible(false);
    ui->LbDerEspDesc->clear();
    ui->cmdModificar->setText(QStringLiteral("[F9] - Modificar SubItems"));
    QPalette p = ui->LstArticulos->palette();
    p.setColor(QPalette::Base, QColor(255, 255, 255));
    ui->LstArticulos->setPalette(p);
    ui->Command1->setVisible(true);
    HabilitarTextos(this, true);
    for (QLineEdit* t : findChildren<QLineEdit*>())
        t->setReadOnly(t->focusPolicy() == Qt::NoFocus);
    const bool catalogo = !ui->TxtIdCatalogo->text().trimmed().isEmpty();
    ui->txtIdArticulo->setEnabled(catalogo);
    ui->TxtDescArticulos->setEnabled(catalogo);
    if (ctx_.config().SbtFuncionCargaPor)
        ActualizarOpciones(ui->opFobUnitario->isChecked(), false);
    (ui->txtIdArticulo->isEnabled() && CatalogoVisible() ? ui->txtIdArticulo : ui->TxtPosicion)
        ->setFocus();
}

void FrmSubItems::CargarFila() {
    const long long id = modelo_->Id(ui->LstArticulos->currentIndex().row());
    if (id == 0)
        return;
    if (!porF9_ && !ui->TxtPosicion->text().trimmed().isEmpty() && modo_ == 1)
        return;
    BuscarSubItem(id);
}

void FrmSubItems::BuscarSubItem(long long id) {
    std::optional<LineaSubItem> l;
    try {
        l = SubItemsDatos(ctx_).LeerSubItem(interno_, id);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(Seccion("BuscarSubItem") + e.descripcion(),
                                QStringLiteral("KORVEN"), Icono::Critico);
        return;
    }
    if (!l)
        return;
    const bool antes = ctx_.FormularioDeDatos;
    ctx_.FormularioDeDatos = false;
    cargando_ = true;
    modo_ = 2;
    idEnMano_ = id;
    HabilitarTextos(this, true);
    if (ctx_.config().SbtFuncionCargaPor)
        ActualizarOpciones(ui->opFobUnitario->isChecked(), false);
    PickLists pl(ctx_);
    ui->TxtIdCatalogo->setText(l->idCatalogo);
    ui->txtIdArticulo->setText(l->idArticulo);
    ui->TxtDescArticulos->setText(l->descripcion);
    ui->txtOtros->setText(l->otros);
    ui->TxtPosicion->setText(l->posicion);
    ui->LbCodigoEstadistica->setText(l->codigoEstadistica);
    ui->LbEstadisticaDescripcion->setText(pl.getUnidadesDescripcion(l->codigoEstadistica));
    ui->LbIdDerEsp->setText(l->idDerEsp);
    ui->LbDerEspDesc->setText(pl.getUnidadesDescripcion(l->idDerEsp));
    ui->FramDerEsp->setVisible(!l->idDerEsp.trimmed().isEmpty());
    ui->LbDeresp->setVisible(!l->idDerEsp.trimmed().isEmpty());
    ui->TxtUnidad->setText(l->unidad);
    ui->LbDescUnidad->setText(pl.getUnidadesDescripcion(l->unidad));
    ui->TxtCantidad->setText(Reformatear(l->cantidad, "00.00"));
    ui->TxtUnitario->setText(Reformatear(l->unitario, "00.0000"));
    ui->TxtFobTotal->setText(Reformatear(l->fobTotal, "00.00"));
    ui->TxtValorsobreestadistica->setText(Reformatear(l->valorEstadistica, "00.00"));
    ui->TxtDerEsp->setText(Reformatear(l->derEsp, "00.00"));
    ui->TxtKgNeto->setText(Reformatear(l->kgNeto, "00.00"));
    ui->TxtKgBruto->setText(Reformatear(l->kgBruto, "00.00"));
    ui->TxtIdpais->setText(l->idPais);
    ui->TxtdescPais->setText(pl.getPaisDescripcion(l->idPais));
    ui->txtIdPaisProc->setText(l->idPaisProc);
    ui->TxtdescPaisProc->setText(pl.getPaisDescripcion(l->idPaisProc));
    ui->TxtIdEstadoMercaderia->setText(l->estadoMerc);
    ui->TxtDescMercaderia->setText(pl.getEstadoMercaderiaDescripcion(l->estadoMerc));
    ui->txtSufijos->setText(l->sufijos);
    ui->cboBiendeUso->setCurrentIndex(l->bienDeUso ? 0 : 1);
    ui->TxtCodProrrateo->setText(l->codProrrateo);
    ui->TxtFiller->setText(l->filler);
    ui->TxtCodigoEAN->setText(l->codigoEAN);
    ui->txtCertOrig->setText(l->certOrig);
    ui->TxtInsumosTemp->setText(l->insumosTemp);
    ui->TxtInsumCons->setText(l->insumosCons);
    ui->TxtCanelaciones->setText(l->cancelaciones);
    ui->TxtCancCantidad->setText(l->cancCantidad);
    ui->txtNroItem->setText(l->nroItem);
    ui->TxtNroSubitem->setText(l->nroSubitem);
    ui->txtONCCACategoria->setText(l->onccaCategoria);
    ui->txtONCCACorte->setText(l->onccaCorte);
    ui->LbLapi->setVisible(l->lapi);
    const bool reint = !l->reintegro.trimmed().isEmpty() && l->reintegro.trimmed() != "0";
    ui->LbREINT->setVisible(reint);
    ui->LbREINT->setText(reint ? l->reintegro.trimmed() : QStringLiteral("0"));
    try {
        if (const auto p = SubItemsDatos(ctx_).BuscarNCM(l->posicion))
            ui->txtNCMDesc->setPlainText(p->texto);
    } catch (const KorvenError&) {
        ui->txtNCMDesc->clear();
    }
    const bool cancelada = l->cancelaciones.trimmed() == QStringLiteral("OK");
    for (QLineEdit* t :
         {ui->TxtCanelaciones, ui->TxtCancCantidad, ui->txtNroItem, ui->TxtNroSubitem})
        t->setReadOnly(cancelada);
    const bool ins = l->idCatalogo.trimmed() == QStringLiteral("INS") ||
                     l->idArticulo.trimmed() == QStringLiteral("INS");
    ui->TxtIdCatalogo->setReadOnly(ins);
    ui->txtIdArticulo->setReadOnly(ins);
    if (l->idCatalogo.trimmed().isEmpty() && l->idArticulo.trimmed().isEmpty())
        for (QLineEdit* t : {ui->TxtUnidad, ui->TxtCantidad, ui->TxtIdCatalogo, ui->txtIdArticulo,
                             ui->TxtDescArticulos})
            t->setEnabled(false);
    if (ui->TxtUnidad->text() == ui->LbCodigoEstadistica->text())
        ui->TxtValorsobreestadistica->setEnabled(false);
    if (ui->TxtUnidad->text() == ui->LbIdDerEsp->text())
        ui->TxtDerEsp->setEnabled(false);
    if (ui->TxtUnidad->text() == QStringLiteral("01"))
        ui->TxtKgNeto->setEnabled(false);
    ui->Command1->setVisible(true);
    cargando_ = false;
    ctx_.FormularioDeDatos = antes;
    if (!ctx_.config().SbtFuncionCargaPor)
        ui->TxtPosicion->setFocus();
    else
        (ui->opFobUnitario->isChecked() ? ui->TxtUnitario : ui->TxtFobTotal)->setFocus();
}

// ---- keys and lifecycle

bool FrmSubItems::TeclaFormulario(QKeyEvent* k) {
    const Qt::KeyboardModifiers mods = k->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (k->key() == Qt::Key_F9 && mods == Qt::NoModifier) {
        teclaSube_ = true;
        cmdModificar();
        return true;
    }
    if (k->key() == Qt::Key_F11 && mods == Qt::NoModifier) {
        if (!porF9_)
            Grabar(2);
        return true;
    }
    if (k->key() == Qt::Key_F12 && mods == Qt::NoModifier) {
        Grabar(1);
        return true;
    }
    if (mods == (Qt::ControlModifier | Qt::ShiftModifier) &&
        (k->key() == Qt::Key_V || k->key() == Qt::Key_O)) {
        if (modo_ == 1)
            ImportarLineas(k->key() == Qt::Key_O);
        return true;
    }
    if (k->key() == Qt::Key_I && mods == Qt::ControlModifier) {
        if (modo_ == 1)
            SelectINSUMOS();
        return true;
    }
    if (k->key() == Qt::Key_P && mods == Qt::AltModifier) {
        lpImprimir();
        return true;
    }
    if (k->key() == Qt::Key_Up && mods == Qt::NoModifier)
        teclaSube_ = true;
    else if (k->key() == Qt::Key_Tab || k->key() == Qt::Key_Down || EsEnter(k))
        teclaSube_ = false;
    return false;
}

bool FrmSubItems::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (TeclaFormulario(k))
            return true;
        if (objeto == ui->LstArticulos) {
            if (modelo_->rowCount() == 0 &&
                (EsEnter(k) || Sola(k, Qt::Key_Delete) || Sola(k, Qt::Key_F8)))
                return true;
            if (EsEnter(k)) {
                CargarFila();
                return true;
            }
            if (Sola(k, Qt::Key_Delete)) {
                lpEliminar();
                return true;
            }
            if (Sola(k, Qt::Key_F8)) {
                VerINSxSBT();
                return true;
            }
            if (Sola(k, Qt::Key_F2)) {
                if (idEnMano_ != 0) {
                    const int modo = modo_;
                    modo_ = 2;
                    Grabar(2);
                    modo_ = modo;
                }
                return true;
            }
            return false;
        }
        if (objeto == ui->cboBiendeUso && Sola(k, Qt::Key_Up)) {
            focusNextChild();
            return true;
        }
        if (objeto == ui->cboBiendeUso && EsEnter(k) && !ui->cboBiendeUso->view()->isVisible()) {
            if (PosicionTab(this, ui->cboBiendeUso) == ultimoTab_ && !teclaSube_) {
                Grabar(2);
                return true;
            }
            focusNextChild();
            return true;
        }
        auto* campo = qobject_cast<QLineEdit*>(objeto);
        if (!campo)
            return QDialog::eventFilter(objeto, evento);
        if (Sola(k, Qt::Key_F6)) {
            Listar(campo);
            return true;
        }
        if (campo == ui->TxtCodProrrateo && Sola(k, Qt::Key_Delete)) {
            campo->clear();
            return true;
        }
        if ((campo == ui->TxtUnitario || campo == ui->TxtFobTotal) && !campo->isReadOnly())
            TeclaImporte(campo, k);
        if (EsEnter(k))
            return Enter(campo);
        return false;
    }
    if (evento->type() == QEvent::FocusOut && !cargando_) {
        if (auto* campo = qobject_cast<QLineEdit*>(objeto)) {
            const Qt::FocusReason razon = static_cast<QFocusEvent*>(evento)->reason();
            if (razon != Qt::ActiveWindowFocusReason && razon != Qt::PopupFocusReason)
                AlSalir(campo, razon == Qt::TabFocusReason || razon == Qt::BacktabFocusReason ||
                                   razon == Qt::MouseFocusReason);
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

void FrmSubItems::reject() {
    if (modo_ == 2 && porF9_) {
        SalirModificar();
        return;
    }
    if (modo_ == 2 && !ctx_.dialogos().Pregunta(QStringLiteral("Esta en modo edición desea salir")))
        return;
    ctx_.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("DEFAULT"),
                                QStringLiteral("CATALOGO"), ui->TxtIdCatalogo->text().trimmed());
    QDialog::reject();
}

void FrmSubItems::done(int resultado) {
    ctx_.FormularioDeDatos = false;
    QDialog::done(resultado);
}

void FrmSubItems::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    if (ultimoTab_ < 0)
        ultimoTab_ = UltimoTab(this);
    ctx_.FormularioDeDatos = true;
}

} // namespace korven
