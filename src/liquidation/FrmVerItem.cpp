#include "liquidation/FrmVerItem.h"

#include "foundation/ClListadoEx.h"
#include "header/ListasCodigos.h"
#include "header/OpcionesCaratula.h"
#include "header/PickLists.h"
#include "liquidation/LiquidacionOperacion.h"
#include "liquidation/ListasItem.h"
#include "liquidation/ReglasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace korven {

namespace {

const QString kDos = QStringLiteral("00.00");

QTableWidget* Grilla(QWidget* padre, const char* nombre, const QStringList& columnas) {
    auto* g = new QTableWidget(0, static_cast<int>(columnas.size()), padre);
    g->setObjectName(QString::fromLatin1(nombre));
    g->setHorizontalHeaderLabels(columnas);
    g->setEditTriggers(QAbstractItemView::NoEditTriggers);
    g->setSelectionBehavior(QAbstractItemView::SelectRows);
    g->setSelectionMode(QAbstractItemView::SingleSelection);
    g->verticalHeader()->hide();
    g->verticalHeader()->setDefaultSectionSize(20);
    g->horizontalHeader()->setStretchLastSection(true);
    return g;
}

void Llenar(QTableWidget* g, const QList<QStringList>& filas) {
    g->setRowCount(0);
    for (const QStringList& valores : filas) {
        const int f = g->rowCount();
        g->insertRow(f);
        for (int i = 0; i < valores.size() && i < g->columnCount(); ++i)
            g->setItem(f, i, new QTableWidgetItem(valores.at(i)));
    }
    if (g->rowCount() > 0)
        g->setCurrentCell(0, 0);
}

QString Texto(const QVariant& v) {
    return EsNull(v);
}

// The fields of the ONCCA tab, their columns and the lists they are chosen from.
struct CampoOncca {
    const char *campo, *boton, *columna, *lista;
};
const CampoOncca kOncca[] = {
    {"txtAcuerdo", "cmdAcuerdo", "onccaacuerdo", "Acuerdo"},
    {"txtCategoria", "cmdCategoria", "onccacategoria", "Categoria"},
    {"txtCorte", "cmdCorte", "onccacortes", "Cortes"},
    {"txtElaborador", "cmdListaElaborador", "onccaelaborador", "Elaborador"},
    {"txtEspecie", "cmdExpecie", "onccaespecie", "Especie"},
    {"txtFaneador", "cmdListaFaneador", "onccafaneador", "Faneador"},
    {"txtEOC", "cmdEOB", "onccameccoorgbio", "Mecoorgbio"},
    {"txtRes3106", "cmdRes3106", "onccares3106", "Res3106"},
    {"txtSisProd", "cmdSisProd", "onccasispro", "SisPro"},
    {"txtMatadero", "cmdMatadero", "onccamatadero", "Faneador"},
};

} // namespace

FrmVerItem::FrmVerItem(AppContext& ctx, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), ctx_(ctx), interno_(args.value(QStringLiteral("interno")).toString()),
      datos_(ctx, interno_) {
    setObjectName(QStringLiteral("FrmVerItem"));
    setWindowTitle(QStringLiteral("Item's - Interno: ") + interno_);
    ConstruirPantalla();
    try {
        datos_.RecargarFlags();
        cantidad_ = datos_.CantidadItems();
        const QString sub = Texto(datos_.LeerCaratula().value(QStringLiteral("idsubreg")));
        sTab_->setTabEnabled(4, SubregimenConInsumos(sub));
        sTab_->setTabEnabled(5, sub.left(2) == QLatin1String("EC"));
    } catch (const KorvenError& e) {
        Reportar(QStringLiteral("Form_Load"), 1, e.numero(), e.descripcion());
    }
    etiquetas_.value(QStringLiteral("lbTotItems"))->setText(QString::number(cantidad_));
    cargando_ = true;
    Scr_->setRange(0, cantidad_);
    Scr_->setValue(0);
    cargando_ = false;
    IrA(0);
    const long long item = args.value(QStringLiteral("item"), 0).toLongLong();
    if (item > 0 && item <= cantidad_)
        Scr_->setValue(static_cast<int>(item));
}

FrmVerItem::~FrmVerItem() = default;

QLineEdit* FrmVerItem::Campo(const char* nombre, const char* columna, bool editable) {
    auto* t = new QLineEdit(this);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setReadOnly(!editable);
    if (editable)
        ClCntrl::Vincular(ctx_, t);
    t->installEventFilter(this);
    if (columna)
        campos_.insert(QString::fromLatin1(columna), t);
    return t;
}

void FrmVerItem::ConstruirPantalla() {
    auto etiqueta = [this](const char* nombre, const QString& texto = QString()) {
        auto* l = new QLabel(texto, this);
        l->setObjectName(QString::fromLatin1(nombre));
        etiquetas_.insert(l->objectName(), l);
        return l;
    };
    auto* raiz = new QVBoxLayout(this);

    // The walk over the items.
    auto* barra = new QHBoxLayout;
    barra->addWidget(new QLabel(QStringLiteral("Item:"), this));
    barra->addWidget(etiqueta("LbPos", QStringLiteral("00 / 00")));
    barra->addWidget(etiqueta("lbNCM"));
    Scr_ = new QScrollBar(Qt::Horizontal, this);
    Scr_->setObjectName(QStringLiteral("Scr"));
    Scr_->setPageStep(1);
    barra->addWidget(Scr_, 1);
    barra->addWidget(new QLabel(QStringLiteral("Total Items:"), this));
    barra->addWidget(etiqueta("lbTotItems"));
    barra->addWidget(new QLabel(QStringLiteral("Ir a:"), this));
    TxtItem_ = new QLineEdit(this);
    TxtItem_->setObjectName(QStringLiteral("TxtItem"));
    TxtItem_->setMaximumWidth(60);
    TxtItem_->installEventFilter(this);
    barra->addWidget(TxtItem_);
    barra->addWidget(etiqueta("LbLapi", QStringLiteral("LAPI")));
    barra->addWidget(etiqueta("lbAutoliq", QStringLiteral("AUTOLIQUIDACION")));
    barra->addWidget(etiqueta("lbEstampilla"));
    raiz->addLayout(barra);
    connect(Scr_, &QScrollBar::valueChanged, this, [this](int v) {
        if (!cargando_)
            IrA(v);
    });

    // The values of the item.
    auto* valores = new QGridLayout;
    valores->setVerticalSpacing(2);
    int fila = 0, columna = 0;
    auto poner = [&](const QString& texto, QWidget* w, QWidget* extra = nullptr) {
        valores->addWidget(new QLabel(texto, this), fila, columna * 3);
        if (extra) {
            auto* h = new QHBoxLayout;
            h->addWidget(w);
            h->addWidget(extra, 1);
            valores->addLayout(h, fila, columna * 3 + 1);
        } else {
            valores->addWidget(w, fila, columna * 3 + 1);
        }
        if (++columna == 3) {
            columna = 0;
            ++fila;
        }
    };
    TxtNaladisa_ = Campo("TxtNaladisa", "naladisa", true);
    poner(QStringLiteral("Naladisa:"), TxtNaladisa_);
    TxtLista_ = Campo("TxtLista", "lista", false);
    TxtLista_->setProperty("Tag", QStringLiteral("#F6"));
    poner(QStringLiteral("Lista:"), TxtLista_);
    TxtEstadoMerc_ = Campo("TxtEstadoMerc", "estadomerc", true);
    TxtEstadoMerc_->setMaximumWidth(40);
    poner(QStringLiteral("Estado Merc.:"), TxtEstadoMerc_, etiqueta("LbEstMerc"));
    TxtIdpais_ = Campo("TxtIdpais", "idpais", true);
    TxtIdpais_->setMaximumWidth(50);
    poner(QStringLiteral("País Origen:"), TxtIdpais_, etiqueta("LbDescPais"));
    TxtIdproc_ = Campo("TxtIdproc", "idproc", true);
    TxtIdproc_->setMaximumWidth(50);
    poner(QStringLiteral("Destino / Proc.:"), TxtIdproc_, etiqueta("LbDescProc"));
    TxtTotKgNeto_ = Campo("TxtTotKgNeto", "totalkneto", true);
    poner(QStringLiteral("Kg Neto (F6):"), TxtTotKgNeto_);
    poner(QStringLiteral("Kg Bruto:"), Campo("TxtKgBruto", "totalkbruto", false));
    TxtAjusteInc_ = Campo("TxtAjusteInc", "ajusteinc", true);
    poner(QStringLiteral("Ajuste Incluir:"), TxtAjusteInc_);
    txtAjusteDed_ = Campo("txtAjusteDed", "ajusteded", true);
    poner(QStringLiteral("Ajuste Deducir:"), txtAjusteDed_);
    poner(QStringLiteral("Regalías:"), Campo("TxtReg", "regalias", true));
    poner(QStringLiteral("Standard:"), Campo("TxtStan", "standard", true));
    poner(QStringLiteral("Tipo Item:"), Campo("txtTipoItem", "tipoitem", true));
    poner(QStringLiteral("Coef. Export.:"), Campo("TxtCOEF", "cofexp", true));
    poner(QStringLiteral("Comis. Ext.:"), Campo("txtItComExt", "itcomext", true));
    poner(QStringLiteral("Insumos Temp.:"), Campo("txtConsumo", "insumostemp", true));
    poner(QStringLiteral("Insumos a Cons.:"), Campo("OLDTxtInsCons", "insumosacons", true));
    poner(QStringLiteral("Cantidad:"), Campo("TxtCantidad", "cantidad", false));
    poner(QStringLiteral("Cod. Prorrateo:"), Campo("TxtCodPror", "codprorrateo", false));
    poner(QStringLiteral("Der. Específico:"), Campo("TxtDerEsp", "deresp", false));
    poner(QStringLiteral("Valor Der. Esp.:"), Campo("TxtValorDerEsp", "valorderesp", false));
    poner(QStringLiteral("Unid. Estad.:"), Campo("TxtUnidEst", "estadistica", false));
    poner(QStringLiteral("Item Asociado:"), Campo("txtItemAsociado", "itemasociado", true));
    chkMineria_ = new QCheckBox(QStringLiteral("Minería"), this);
    chkMineria_->setObjectName(QStringLiteral("chkMineria"));
    chkMineria_->installEventFilter(this);
    poner(QString(), chkMineria_);
    cboOpcionIVA_ = new QComboBox(this);
    cboOpcionIVA_->setObjectName(QStringLiteral("cboOpcionIVA"));
    cboOpcionIVA_->addItems(OpcionesCaratula::EntradasIVA());
    poner(QStringLiteral("Opción IVA:"), cboOpcionIVA_);
    cboOpcionesGanancias_ = new QComboBox(this);
    cboOpcionesGanancias_->setObjectName(QStringLiteral("cboOpcionesGanancias"));
    cboOpcionesGanancias_->addItems(OpcionesCaratula::EntradasGanancias());
    poner(QStringLiteral("Opción Ganancias:"), cboOpcionesGanancias_);
    raiz->addLayout(valores);

    // The amounts of the item, in its currency and in dollars.
    auto* importes = new QGroupBox(QStringLiteral("Valores"), this);
    auto* gi = new QGridLayout(importes);
    gi->setVerticalSpacing(1);
    const char* nombres[][3] = {{"FOB", "LbFOB", "LbFobUs"},
                                {"Flete", "LbFlete", "LbFleteUs"},
                                {"Seguro", "LbSeguro", "LbSeguroUS"},
                                {"Ajuste Inc.", nullptr, "LbAjusteIncUs"},
                                {"Ajuste Ded.", nullptr, "LbAjusteDedUs"}};
    for (int i = 0; i < 5; ++i) {
        gi->addWidget(new QLabel(QString::fromLatin1(nombres[i][0]), this), 0, i * 2);
        if (nombres[i][1])
            gi->addWidget(etiqueta(nombres[i][1], kDos), 1, i * 2);
        gi->addWidget(etiqueta(nombres[i][2], kDos), 2, i * 2);
    }
    gi->addWidget(etiqueta("lbIdDivisasFOB"), 1, 1);
    gi->addWidget(etiqueta("lbIdDivisasFlete"), 1, 3);
    gi->addWidget(etiqueta("lbIdDivisasSeguro"), 1, 5);
    gi->addWidget(new QLabel(QStringLiteral("U$S"), this), 2, 1);
    gi->addWidget(new QLabel(QStringLiteral("Base Imp.:"), this), 0, 10);
    gi->addWidget(etiqueta("LbBaseImp", kDos), 0, 11);
    gi->addWidget(new QLabel(QStringLiteral("Base IVA:"), this), 1, 10);
    gi->addWidget(etiqueta("LbBaseIVA", kDos), 1, 11);
    auto* totales = new QHBoxLayout;
    totales->addWidget(new QLabel(QStringLiteral("Total Pagar:"), this));
    totales->addWidget(etiqueta("LbTotPagar", kDos));
    totales->addSpacing(24);
    totales->addWidget(new QLabel(QStringLiteral("Total Garantizar:"), this));
    totales->addWidget(etiqueta("LbTotGarantizar", kDos));
    totales->addSpacing(24);
    totales->addWidget(new QLabel(QStringLiteral("Total a Cobrar"), this));
    totales->addSpacing(6);
    totales->addWidget(etiqueta("LbTotCobrar", kDos));
    totales->addStretch(1);
    totales->addWidget(etiqueta("lbEstado"));
    gi->addLayout(totales, 3, 0, 1, 12);
    raiz->addWidget(importes);

    // The tabs.
    sTab_ = new QTabWidget(this);
    sTab_->setObjectName(QStringLiteral("sTab"));
    auto pestana = [this](const QString& titulo, QWidget* contenido,
                          const QList<QWidget*>& botones = {}) {
        auto* w = new QWidget(this);
        auto* l = new QVBoxLayout(w);
        l->setContentsMargins(2, 2, 2, 2);
        l->addWidget(contenido);
        if (!botones.isEmpty()) {
            auto* h = new QHBoxLayout;
            for (QWidget* b : botones)
                h->addWidget(b);
            h->addStretch(1);
            l->addLayout(h);
        }
        sTab_->addTab(w, titulo);
    };
    auto boton = [this](const char* nombre, const QString& texto) {
        auto* b = new QPushButton(texto, this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setAutoDefault(false);
        return b;
    };
    GridInf_ = Grilla(this, "GridInf", {QStringLiteral("Código"), QStringLiteral("Valor")});
    GridInf_->installEventFilter(this);
    auto* agregarInf = boton("CmdAgregarInf", QStringLiteral("(F6) - Agregar"));
    auto* eliminarInf = boton("CmdEliminarInf", QStringLiteral("(DELETE) - Eliminar"));
    pestana(QStringLiteral("(F1) Información"), GridInf_, {agregarInf, eliminarInf});
    LstVentajas_ = new QListWidget(this);
    LstVentajas_->setObjectName(QStringLiteral("LstVentajas"));
    LstVentajas_->installEventFilter(this);
    auto* agregarVen = boton("CmdAgregarVen", QStringLiteral("(F6) - Agregar"));
    auto* eliminarVen = boton("CmdEliminarVen", QStringLiteral("(DELETE) - Eliminar"));
    pestana(QStringLiteral("(F2) Ventajas"), LstVentajas_, {agregarVen, eliminarVen});
    auto* lineas = new QWidget(this);
    auto* hl = new QHBoxLayout(lineas);
    hl->setContentsMargins(0, 0, 0, 0);
    LstV_ =
        Grilla(this, "LstV",
               {QStringLiteral("Cantidad"), QStringLiteral("Unitario"), QStringLiteral("FOB Total"),
                QStringLiteral("Cant Est"), QStringLiteral("Articulo"), QStringLiteral("Sufijos")});
    hl->addWidget(LstV_, 4);
    lstCertOrig_ = new QListWidget(this);
    lstCertOrig_->setObjectName(QStringLiteral("lstCertOrig"));
    hl->addWidget(lstCertOrig_, 1);
    pestana(QStringLiteral("(F3) Mercaderías"), lineas);
    GrdLiq_ = Grilla(this, "GrdLiq",
                     {QStringLiteral("Nro"), QStringLiteral("Concepto"), QStringLiteral("Porc. %"),
                      QStringLiteral("Base Imp."), QStringLiteral("Total"), QStringLiteral("PGC"),
                      QStringLiteral("Motivo")});
    GrdLiq_->installEventFilter(this);
    GrdLiq_->setColumnWidth(1, 300);
    GrdLiq_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(GrdLiq_, &QWidget::customContextMenuRequested, this, [this](const QPoint& p) {
        QMenu menu(this);
        QAction* eliminar = menu.addAction(QStringLiteral("Eliminar"));
        eliminar->setObjectName(QStringLiteral("MnuEliminar"));
        if (menu.exec(GrdLiq_->viewport()->mapToGlobal(p)) == eliminar)
            Eliminar();
    });
    pestana(QStringLiteral("(F4) Liquidación"), GrdLiq_);
    auto* cancelaciones = new QWidget(this);
    auto* vc = new QVBoxLayout(cancelaciones);
    vc->setContentsMargins(0, 0, 0, 0);
    lstVCancel_ =
        Grilla(this, "lstVCancel",
               {QStringLiteral("Declaración"), QStringLiteral("NCM"), QStringLiteral("Item"),
                QStringLiteral("Sub"), QStringLiteral("Cantidad"), QStringLiteral("Expediente")});
    lstVCancel_->installEventFilter(this);
    vc->addWidget(lstVCancel_);
    vc->addWidget(new QLabel(QStringLiteral("INS [Agregar desde Stock] - ENT [Modificar] - DEL "
                                            "[Borrar] - ALT+P  [Imprimir]"),
                             this));
    pestana(QStringLiteral("(F5) Cancelaciones"), cancelaciones);
    auto* oncca = new QWidget(this);
    auto* go = new QGridLayout(oncca);
    int n = 0;
    for (const CampoOncca& c : kOncca) {
        auto* t = Campo(c.campo, c.columna, false);
        auto* b = boton(c.boton, QStringLiteral("..."));
        b->setMaximumWidth(30);
        const int i = n;
        connect(b, &QPushButton::clicked, this, [this, i] { ElegirOncca(i); });
        oncca_ << t;
        botonesOncca_ << b;
        go->addWidget(new QLabel(QString::fromLatin1(c.lista) + QLatin1Char(':'), this), n / 2,
                      (n % 2) * 3);
        go->addWidget(t, n / 2, (n % 2) * 3 + 1);
        go->addWidget(b, n / 2, (n % 2) * 3 + 2);
        ++n;
    }
    pestana(QStringLiteral("(F7) Seccion ONCCA - CARNES"), oncca);
    raiz->addWidget(sTab_, 1);

    auto* pie = new QHBoxLayout;
    auto* imprimir = boton("CmdPrint", QStringLiteral("(F12) Imprimir"));
    connect(imprimir, &QPushButton::clicked, this, [this] { CmdPrint_Click(); });
    pie->addStretch(1);
    pie->addWidget(imprimir);
    raiz->addLayout(pie);

    connect(agregarInf, &QPushButton::clicked, this, [this] { Listas(true, false); });
    connect(eliminarInf, &QPushButton::clicked, this, [this] { Listas(false, false); });
    connect(agregarVen, &QPushButton::clicked, this, [this] { Listas(true, true); });
    connect(eliminarVen, &QPushButton::clicked, this, [this] { Listas(false, true); });
    sTab_->setCurrentIndex(3);
    resize(1000, 650);
}

void FrmVerItem::Reportar(const QString& rutina, int linea, int numero,
                          const QString& descripcion) {
    ctx_.dialogos().Mensaje(QStringLiteral("%1 - %2 seccion[%3.FrmVerItem.KORVEN Linea %4 ]::")
                                .arg(numero)
                                .arg(descripcion, rutina)
                                .arg(linea),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

void FrmVerItem::IrA(long long id) {
    if (actual_ > 0 && id != actual_ && !GrabarItem(actual_)) {
        // The item could not be saved: the screen stays on it.
        cargando_ = true;
        Scr_->setValue(static_cast<int>(actual_));
        cargando_ = false;
        return;
    }
    etiquetas_.value(QStringLiteral("LbPos"))
        ->setText(Formato(static_cast<double>(id), QStringLiteral("00")) + QStringLiteral(" / ") +
                  Formato(static_cast<double>(cantidad_), QStringLiteral("00")));
    VerDetalleITEM(QString::number(id));
}

void FrmVerItem::Poner(const QVariantMap& item) {
    for (auto it = campos_.constBegin(); it != campos_.constEnd(); ++it) {
        const QVariant v = item.value(it.key());
        const bool numero =
            QStringList{"totalkneto", "totalkbruto", "ajusteinc",    "ajusteded", "cofexp",
                        "itcomext",   "insumostemp", "insumosacons", "cantidad",  "valorderesp"}
                .contains(it.key());
        it.value()->setText(numero ? Formato(EsNumero(v), kDos) : Texto(v));
    }
    chkMineria_->setChecked(Texto(item.value(QStringLiteral("mineria"))) == QLatin1String("S"));
    cboOpcionIVA_->setCurrentIndex(
        OpcionesCaratula::PosicionIVA(Texto(item.value(QStringLiteral("opcionesiva")))));
    cboOpcionesGanancias_->setCurrentIndex(OpcionesCaratula::PosicionGanancias(
        Texto(item.value(QStringLiteral("opcionesganancias")))));
    PickLists listas(ctx_);
    for (int i = 0; i < oncca_.size(); ++i) {
        const QString codigo = Texto(item.value(QString::fromLatin1(kOncca[i].columna)));
        oncca_[i]->setProperty("Tag", codigo);
        oncca_[i]->setText(codigo.isEmpty()
                               ? QString()
                               : codigo + QStringLiteral(" - ") +
                                     listas.DescripcionONCCA(QString::fromLatin1(kOncca[i].lista),
                                                             codigo, QString()));
    }
    etiquetas_.value(QStringLiteral("LbEstMerc"))
        ->setText(listas.getEstadoMercaderiaDescripcion(TxtEstadoMerc_->text()));
    etiquetas_.value(QStringLiteral("LbDescPais"))
        ->setText(listas.getPaisDescripcion(TxtIdpais_->text()));
    etiquetas_.value(QStringLiteral("LbDescProc"))
        ->setText(listas.getPaisDescripcion(TxtIdproc_->text()));
}

void FrmVerItem::VerDetalleITEM(const QString& id) {
    const long long n = id.toLongLong();
    int paso = 1;
    cargando_ = true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        const QVariantMap car = datos_.LeerCaratula();
        const auto divisa = [&](const char* col, const char* etiqueta) {
            const QString codigo = Texto(car.value(QString::fromLatin1(col))).trimmed();
            etiquetas_.value(QString::fromLatin1(etiqueta))
                ->setText(codigo.isEmpty() ? QString() : QStringLiteral("(%1)").arg(codigo));
        };
        divisa("fobcoddivisas", "lbIdDivisasFOB");
        divisa("fletecoddivisas", "lbIdDivisasFlete");
        divisa("segurocoddivisas", "lbIdDivisasSeguro");
        paso = 2;
        Llenar(LstV_, datos_.Lineas(n));
        lstCertOrig_->clear();
        if (n != 0)
            lstCertOrig_->addItems(datos_.CertificadosOrigen(n));
        paso = 4;
        const auto etiqueta = [this](const char* nombre, double v) {
            etiquetas_.value(QString::fromLatin1(nombre))->setText(Formato(v, kDos));
        };
        const QVariantMap item = datos_.LeerItem(n);
        if (n == 0) {
            double fob = EsNumero(car.value(QStringLiteral("fobdivisas")));
            double flete = EsNumero(car.value(QStringLiteral("fletedivisas")));
            double seguro = EsNumero(car.value(QStringLiteral("segurodivisas")));
            if (!(fob > 0)) {
                const QList<double> sumas = datos_.SumasItems();
                fob = sumas.at(0);
                flete = sumas.at(1);
                seguro = sumas.at(2);
            }
            etiqueta("LbFOB", fob);
            etiqueta("LbFlete", flete);
            etiqueta("LbSeguro", seguro);
        } else {
            etiqueta("LbFOB", EsNumero(item.value(QStringLiteral("fobtotal"))));
            etiqueta("LbFlete", EsNumero(item.value(QStringLiteral("itflete"))));
            etiqueta("LbSeguro", EsNumero(item.value(QStringLiteral("itseguro"))));
        }
        paso = 5;
        Llenar(GridInf_, datos_.Informacion(n));
        const QStringList ventajas = datos_.Ventajas(n);
        LstVentajas_->clear();
        LstVentajas_->addItems(ventajas);
        if (LstVentajas_->count() > 0)
            LstVentajas_->setCurrentRow(0);
        etiquetas_.value(QStringLiteral("lbAutoliq"))
            ->setVisible(ventajas.contains(QStringLiteral("AUTOLIQLIBREEXP")) ||
                         ventajas.contains(QStringLiteral("AUTOLIQLIBREIMP")));
        paso = 6;
        Poner(item);
        const QString posicion = Texto(item.value(QStringLiteral("ncm")));
        etiquetas_.value(QStringLiteral("lbNCM"))->setText(posicion);
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        LiquidacionOperacion liquidacion(ctx_, c);
        bool lapi = false;
        if (n != 0) {
            if (!QRegularExpression(QStringLiteral("^\\d{4}\\.\\d{2}\\.\\d{2}\\.\\d{3}[A-Z]$"))
                     .match(posicion)
                     .hasMatch())
                ctx_.dialogos().Mensaje(QStringLiteral("Estructura de NCM incorrecta"));
            const LiquidacionOperacion::ValoresItem v = liquidacion.Item(interno_, n);
            if (!v.enNomenclador)
                ctx_.dialogos().Mensaje(
                    QStringLiteral("La Posición %1 no esta en el nomenclador").arg(posicion));
            lapi = v.lapi;
            etiqueta("LbBaseImp", v.baseImp);
            etiqueta("LbBaseIVA", v.baseIVA);
            etiqueta("LbFobUs", v.fobUs);
            etiqueta("LbFleteUs", v.fleteUs);
            etiqueta("LbSeguroUS", v.seguroUs);
            etiqueta("LbAjusteIncUs", v.ajusteIncUs);
            etiqueta("LbAjusteDedUs", v.ajusteDedUs);
            Llenar(lstVCancel_, datos_.Cancelaciones(n));
            PonerConceptos(n);
        } else {
            paso = 7;
            LiquidacionOperacion::Resultado r;
            {
                // The run of item 0 writes the totals, and the amounts of every item while
                // the liquidation is pending: all of it or nothing.
                Transaccion t(ctx_.stores(), {QStringLiteral("INTERNOS")});
                QLabel* estado = etiquetas_.value(QStringLiteral("lbEstado"));
                r = liquidacion.Calcular(interno_, [estado](const QString& texto) {
                    estado->setText(texto);
                    estado->repaint();
                });
                t.Confirmar();
            }
            QList<QStringList> filas;
            for (const LiquidacionOperacion::Linea& l : r.grilla)
                filas.push_back({l.idconcepto, l.descripcion, QString(), QString(), l.importe});
            Llenar(GrdLiq_, filas);
            etiqueta("LbTotPagar", r.pagar);
            etiqueta("LbTotGarantizar", r.garantizar);
            etiqueta("LbTotCobrar", r.cobrar);
            // The bases of the Operation, as the run summed them.
            double baseImp = 0, baseIVA = 0;
            for (Recordset rs = c.Abrir(QStringLiteral("select idconcepto, valor from liqcero "
                                                       "where interno = ? and idconcepto in "
                                                       "('###baseimp','###baseiva')"),
                                        {interno_});
                 !rs.Eof(); rs.MoveNext())
                (Texto(rs.Fields(0)) == QLatin1String("###baseimp") ? baseImp : baseIVA) =
                    EsNumero(rs.Fields(1));
            etiqueta("LbBaseImp", baseImp);
            etiqueta("LbBaseIVA", baseIVA);
            const double pase = EsNumero(car.value(QStringLiteral("fobdivcambio")));
            etiqueta("LbFobUs", EsNumero(car.value(QStringLiteral("fobdivisas"))) * pase);
            etiqueta("LbFleteUs", EsNumero(car.value(QStringLiteral("fletedivisas"))) *
                                      EsNumero(car.value(QStringLiteral("fletedivcambio"))));
            etiqueta("LbSeguroUS", EsNumero(car.value(QStringLiteral("segurodivisas"))) *
                                       EsNumero(car.value(QStringLiteral("segurodivcambio"))));
            etiqueta("LbAjusteIncUs", NumeroTecleado(TxtAjusteInc_->text()) * pase);
            etiqueta("LbAjusteDedUs", NumeroTecleado(txtAjusteDed_->text()) * pase);
            lstVCancel_->setRowCount(0);
        }
        etiquetas_.value(QStringLiteral("LbLapi"))->setVisible(lapi);
        actual_ = n;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(e.descripcion() +
                                    QStringLiteral(" Sección [KORVEN.frmverItem.VerDetalleITEM] ") +
                                    QStringLiteral(" linea ") + QString::number(paso),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        actual_ = n;
    }
    QApplication::restoreOverrideCursor();
    cargando_ = false;
}

void FrmVerItem::PonerConceptos(long long id) {
    const QList<DetalleItem::Concepto> conceptos = datos_.Conceptos(id);
    QList<QStringList> filas;
    double pagar = 0, garantizar = 0, cobrar = 0;
    for (const DetalleItem::Concepto& k : conceptos) {
        filas.push_back({k.codigo, k.concepto, Formato(EsNumero(k.porcentaje), kDos),
                         Formato(EsNumero(k.baseimp), kDos), Formato(EsNumero(k.total), kDos),
                         k.pgc, k.motivo});
        const double v = EsNumero(k.total);
        if (k.pgc == QLatin1String("G"))
            garantizar += v;
        else if (k.pgc == QLatin1String("C"))
            cobrar += v;
        else
            pagar += v;
    }
    Llenar(GrdLiq_, filas);
    const auto etiqueta = [this](const char* nombre, double v) {
        etiquetas_.value(QString::fromLatin1(nombre))->setText(Formato(v, kDos));
    };
    etiqueta("LbTotPagar", pagar);
    etiqueta("LbTotGarantizar", garantizar);
    etiqueta("LbTotCobrar", cobrar);
    // The rows of the grid, banded in the colours of the system.
    for (int f = 0; f < GrdLiq_->rowCount(); ++f)
        for (int col = 0; col < GrdLiq_->columnCount(); ++col)
            if (QTableWidgetItem* celda = GrdLiq_->item(f, col))
                celda->setBackground(ClCntrl::ColorVB(f % 2 == 0 ? 14085590u : 15855074u));
}

DetalleItem::Campos FrmVerItem::LeerCampos() const {
    DetalleItem::Campos c;
    const auto T = [this](const char* col) {
        return campos_.value(QString::fromLatin1(col))->text();
    };
    const auto N = [&](const char* col) { return NumeroTecleado(T(col)); };
    c.naladisa = T("naladisa");
    c.lista = T("lista");
    c.estadomerc = T("estadomerc");
    c.idpais = T("idpais");
    c.idproc = T("idproc");
    c.regalias = T("regalias");
    c.standard = T("standard");
    c.tipoitem = T("tipoitem");
    c.itemasociado = T("itemasociado");
    c.ajusteinc = T("ajusteinc");
    c.ajusteded = T("ajusteded");
    c.totalkneto = N("totalkneto");
    c.insumostemp = N("insumostemp");
    c.insumosacons = N("insumosacons");
    c.itcomext = N("itcomext");
    c.cofexp = N("cofexp");
    c.mineria = chkMineria_->isChecked();
    c.opcionesiva = OpcionesCaratula::CodigoIVA(cboOpcionIVA_->currentIndex());
    c.opcionesganancias = OpcionesCaratula::CodigoGanancias(cboOpcionesGanancias_->currentIndex());
    for (int i = 0; i < oncca_.size(); ++i)
        c.oncca.insert(QString::fromLatin1(kOncca[i].columna),
                       oncca_[i]->property("Tag").toString());
    return c;
}

bool FrmVerItem::GrabarItem(long long id) {
    try {
        if (!datos_.GrabarItem(id, LeerCampos()))
            ctx_.dialogos().Mensaje(QStringLiteral("0 (cero) registros actualizados."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return true;
    } catch (const KorvenError& e) {
        Reportar(QStringLiteral("GrabarItem"), 1, e.numero(), e.descripcion());
        return false;
    }
}

bool FrmVerItem::Componente(const QString& nombre, const QString& rutina) {
    if (ctx_.componentes().Instalado(nombre))
        return true;
    Reportar(rutina, 1, KorvenError::ComponenteNoInstalado,
             ComponentRegistry::MensajeNoInstalado(nombre));
    return false;
}

// The cancellations from stock are kept by the supplies component, which a plain installation
// does not have: each action says so.
void FrmVerItem::InsertarCancelacion() {
    Componente(QStringLiteral("SupplyLink.Main"), QStringLiteral("InsertarCancelacion"));
}
void FrmVerItem::PP_CNL_Eliminar() {
    Componente(QStringLiteral("SupplyLink.Main"), QStringLiteral("PP_CNL_Eliminar"));
}
void FrmVerItem::PP_CNL_Modificar() {
    Componente(QStringLiteral("SupplyLink.Main"), QStringLiteral("PP_CNL_Modificar"));
}
void FrmVerItem::PP_CNL_Imprimir() {
    Componente(QStringLiteral("SupplyLink.Main"), QStringLiteral("PP_CNL_Imprimir"));
}

void FrmVerItem::CmdPrint_Click() {
    try {
        ctx_.AbrirModal(QStringLiteral("FrmPrintItem"), {{QStringLiteral("interno"), interno_}});
    } catch (const KorvenError& e) {
        Reportar(QStringLiteral("CmdPrint_Click"), 1, e.numero(), e.descripcion());
    }
}

void FrmVerItem::Eliminar() {
    const int f = GrdLiq_->currentRow();
    if (actual_ == 0 || f < 0 || !GrdLiq_->item(f, 0))
        return;
    if (ListasItem(ctx_).EliminarConcepto(interno_, actual_, GrdLiq_->item(f, 0)->text().trimmed()))
        GrdLiq_->removeRow(f);
}

void FrmVerItem::Listas(bool agregar, bool ventajas) {
    const auto lista = ventajas ? ListasItem::Lista::Ventajas : ListasItem::Lista::Informacion;
    ListasItem listas(ctx_);
    if (agregar) {
        if (!listas.Agregar(lista, interno_, actual_))
            return;
    } else {
        const QString codigo =
            ventajas
                ? (LstVentajas_->currentItem() ? LstVentajas_->currentItem()->text() : QString())
                : (GridInf_->currentRow() >= 0 && GridInf_->item(GridInf_->currentRow(), 0)
                       ? GridInf_->item(GridInf_->currentRow(), 0)->text()
                       : QString());
        if (codigo.isEmpty() || !listas.Eliminar(lista, interno_, actual_, codigo))
            return;
    }
    try {
        Llenar(GridInf_, datos_.Informacion(actual_));
        const QStringList v = datos_.Ventajas(actual_);
        LstVentajas_->clear();
        LstVentajas_->addItems(v);
        etiquetas_.value(QStringLiteral("lbAutoliq"))
            ->setVisible(v.contains(QStringLiteral("AUTOLIQLIBREEXP")) ||
                         v.contains(QStringLiteral("AUTOLIQLIBREIMP")));
    } catch (const KorvenError& e) {
        Reportar(ventajas ? QStringLiteral("CmdAgregarVen") : QStringLiteral("CmdAgregarInf"), 1,
                 e.numero(), e.descripcion());
    }
}

void FrmVerItem::AbrirAdCon(int modo) {
    QVariantMap args{{QStringLiteral("interno"), interno_},
                     {QStringLiteral("iditem"), actual_},
                     {QStringLiteral("modo"), modo}};
    if (modo == 2) {
        const int f = GrdLiq_->currentRow();
        if (f < 0 || !GrdLiq_->item(f, 0))
            return;
        const char* claves[] = {"idconceptos", "conceptos", "porcentaje", "baseimp",
                                "total",       "pgc",       "motivo"};
        for (int i = 0; i < 7; ++i)
            args.insert(QString::fromLatin1(claves[i]),
                        GrdLiq_->item(f, i) ? GrdLiq_->item(f, i)->text() : QString());
    }
    try {
        if (ctx_.AbrirModal(QStringLiteral("FrmAdCon"), args).toBool())
            ctx_.LiquidacionPendiente = true;
    } catch (const KorvenError& e) {
        Reportar(modo == 1 ? QStringLiteral("FrmAdCon") : QStringLiteral("PP_LIQ_Modificar"), 1,
                 e.numero(), e.descripcion());
    }
    VerDetalleITEM(QString::number(actual_));
}

void FrmVerItem::PP_LIQ_Modificar() {
    if (GrdLiq_->rowCount() >= 1)
        AbrirAdCon(2);
}

void FrmVerItem::ListaF6(QLineEdit* campo, QLabel* etiqueta, const QString& lista) {
    if (actual_ == 0) {
        ctx_.dialogos().Mensaje(
            campo == TxtIdproc_
                ? QStringLiteral("Si desea establecer un PAIS DESTINO / PROC para todos los "
                                 "item's, debe ingresarlo en Caratula")
                : QStringLiteral("Si desea establecer un PAIS ORIGEN para todos los item's , "
                                 "debe ingresarlo en Caratula"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
        return;
    }
    try {
        const QString codigo = ListasCodigos(ctx_).MostrarLista(
            lista, lista == QLatin1String("PAIS") ? QStringLiteral("Paises")
                                                  : QStringLiteral("Estado Mercaderia"));
        if (codigo.isEmpty())
            return;
        campo->setText(codigo);
        if (etiqueta)
            etiqueta->setText(ListasCodigos(ctx_).BuscarDescripcion(lista, codigo));
    } catch (const KorvenError& e) {
        Reportar(campo->objectName(), 1, e.numero(), e.descripcion());
    }
}

void FrmVerItem::ListaDeLista() {
    try {
        ClListadoEx listado(ctx_);
        listado.setTipo(ClListadoEx::ListasDePaises);
        const QStringList elegida = listado.Mostrar(TxtIdpais_->text(), TxtIdproc_->text());
        if (elegida.isEmpty())
            return;
        // The rows are the country and the list it belongs to.
        const QString lista = elegida.value(1);
        TxtLista_->setText(lista);
        if (lista == QLatin1String("314/R.AUTOMOTRIZ") || lista == QLatin1String("MERCOSUR"))
            ctx_.LiquidacionPendiente = true;
    } catch (const KorvenError& e) {
        Reportar(QStringLiteral("TxtLista"), 1, e.numero(), e.descripcion());
    }
}

void FrmVerItem::ProrratearKilos() {
    if (actual_ == 0 && !(EsNumero(datos_.LeerCaratula().value(QStringLiteral("dckgneto"))) > 0)) {
        ctx_.dialogos().Mensaje(QStringLiteral("Si desea prorratear Kilos Neto, debe ingresar el "
                                               "valor total en Caratula"));
        return;
    }
    try {
        if (actual_ > 0)
            GrabarItem(actual_);
        ctx_.AbrirModal(QStringLiteral("FrmProrKg"),
                        {{QStringLiteral("interno"), interno_}, {QStringLiteral("item"), actual_}});
    } catch (const KorvenError& e) {
        Reportar(QStringLiteral("TxtTotKgNeto"), 1, e.numero(), e.descripcion());
    }
    VerDetalleITEM(QString::number(actual_));
}

void FrmVerItem::ElegirOncca(int i) {
    try {
        const QString codigo =
            PickLists(ctx_).ListadoONCCA(QString::fromLatin1(kOncca[i].lista), QString());
        if (codigo.isEmpty())
            return;
        oncca_[i]->setProperty("Tag", codigo);
        oncca_[i]->setText(codigo + QStringLiteral(" - ") +
                           PickLists(ctx_).DescripcionONCCA(QString::fromLatin1(kOncca[i].lista),
                                                            codigo, QString()));
    } catch (const KorvenError& e) {
        Reportar(QString::fromLatin1(kOncca[i].boton), 1, e.numero(), e.descripcion());
    }
}

// The keys of single fields and of the lists; true when the key was taken.
bool FrmVerItem::Teclas(QObject* objeto, int tecla, Qt::KeyboardModifiers mod) {
    const bool enter = tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
    if (objeto == TxtItem_ && enter) {
        bool ok = false;
        const int n = TxtItem_->text().trimmed().toInt(&ok);
        if (ok && n >= 0 && n <= cantidad_)
            Scr_->setValue(n);
        return true;
    }
    if (objeto == TxtNaladisa_ && (tecla == Qt::Key_F6 || enter)) {
        if (tecla == Qt::Key_F6 || !TxtNaladisa_->text().trimmed().isEmpty())
            Componente(QStringLiteral("AladiBrowser.Main"), QStringLiteral("TxtNaladisa"));
        return tecla == Qt::Key_F6 || !TxtNaladisa_->text().trimmed().isEmpty();
    }
    if (tecla == Qt::Key_F6) {
        if (objeto == TxtEstadoMerc_) {
            ListaF6(TxtEstadoMerc_, etiquetas_.value(QStringLiteral("LbEstMerc")),
                    QStringLiteral("ESTADOMERCADERIA"));
            return true;
        }
        if (objeto == TxtIdpais_ || objeto == TxtIdproc_) {
            ListaF6(static_cast<QLineEdit*>(objeto),
                    etiquetas_.value(objeto == TxtIdpais_ ? QStringLiteral("LbDescPais")
                                                          : QStringLiteral("LbDescProc")),
                    QStringLiteral("PAIS"));
            return true;
        }
        if (objeto == TxtLista_) {
            ListaDeLista();
            return true;
        }
        if (objeto == TxtTotKgNeto_) {
            ProrratearKilos();
            return true;
        }
    }
    if (objeto == TxtLista_ && tecla == Qt::Key_Delete) {
        TxtLista_->clear();
        try {
            datos_.MarcarModificado(actual_);
        } catch (const KorvenError& e) {
            Reportar(QStringLiteral("TxtLista"), 1, e.numero(), e.descripcion());
        }
        ctx_.LiquidacionPendiente = true;
        return true;
    }
    if ((objeto == TxtAjusteInc_ || objeto == txtAjusteDed_) && tecla != Qt::Key_Escape &&
        tecla != Qt::Key_Tab && tecla != Qt::Key_Backtab && !(mod & Qt::ControlModifier)) {
        if (!enter) {
            ctx_.LiquidacionPendiente = true;
            return false;
        }
        if (actual_ == 0) {
            // Item 0 sends its adjustments to the items and the liquidation is calculated again.
            if (GrabarItem(0))
                VerDetalleITEM(QStringLiteral("0"));
            return true;
        }
        return false;
    }
    if ((objeto == GridInf_ || objeto == LstVentajas_) &&
        (tecla == Qt::Key_F6 || tecla == Qt::Key_Delete)) {
        Listas(tecla == Qt::Key_F6, objeto == LstVentajas_);
        return true;
    }
    if (objeto == GrdLiq_ && actual_ != 0) {
        if (tecla == Qt::Key_Insert) {
            AbrirAdCon(1);
            return true;
        }
        if (tecla == Qt::Key_Delete) {
            PP_LIQ_ELiminar();
            return true;
        }
        if (enter) {
            PP_LIQ_Modificar();
            return true;
        }
    }
    if (objeto == lstVCancel_ && sTab_->isTabEnabled(4)) {
        if (enter) {
            PP_CNL_Modificar();
            return true;
        }
        if (tecla == Qt::Key_Delete) {
            PP_CNL_Eliminar();
            return true;
        }
    }
    return false;
}

bool FrmVerItem::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::FocusOut && objeto == chkMineria_)
        ctx_.LiquidacionPendiente = true;
    if (evento->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (Teclas(objeto, k->key(), k->modifiers()))
            return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

void FrmVerItem::keyPressEvent(QKeyEvent* e) {
    const int tecla = e->key();
    const bool alt = e->modifiers() & Qt::AltModifier;
    const bool ctrlC = tecla == Qt::Key_C && (e->modifiers() & Qt::ControlModifier);
    if (tecla == Qt::Key_Escape || ctrlC) {
        reject();
        return;
    }
    const QHash<int, int> pestanas{{Qt::Key_F1, 0}, {Qt::Key_F2, 1}, {Qt::Key_F3, 2},
                                   {Qt::Key_F4, 3}, {Qt::Key_F5, 4}, {Qt::Key_F7, 5}};
    if (pestanas.contains(tecla)) {
        const int p = pestanas.value(tecla);
        if (sTab_->isTabEnabled(p))
            sTab_->setCurrentIndex(p);
        if (tecla == Qt::Key_F3)
            VerDetalleITEM(QString::number(actual_));
        return;
    }
    if (tecla == Qt::Key_F12) {
        CmdPrint_Click();
        return;
    }
    if (tecla == Qt::Key_PageDown || tecla == Qt::Key_PageUp) {
        Scr_->setValue(Scr_->value() + (tecla == Qt::Key_PageDown ? 1 : -1));
        return;
    }
    if (sTab_->currentIndex() == 4 && sTab_->isTabEnabled(4)) {
        if (tecla == Qt::Key_Insert) {
            InsertarCancelacion();
            return;
        }
        if (alt && tecla == Qt::Key_P) {
            PP_CNL_Imprimir();
            return;
        }
    }
    QDialog::keyPressEvent(e);
}

void FrmVerItem::reject() {
    if (ctx_.LiquidacionPendiente) {
        ctx_.dialogos().Mensaje(QStringLiteral("Se modifico algun concepto de liquidación, \n\n"
                                               "debe ir al item 0 (cero) para calcular y "
                                               "actualizar los totales."),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        return;
    }
    if (!GrabarItem(actual_))
        return;
    ctx_.CalcularCoeficiente = false;
    QDialog::reject();
}

} // namespace korven
