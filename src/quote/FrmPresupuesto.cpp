#include "quote/FrmPresupuesto.h"

#include "header/ListasCodigos.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "platform/ui/PantallasEscritorio.h"
#include "quote/CorreoPresupuesto.h"
#include "quote/FrmDatos.h"

#include <QComboBox>
#include <QDate>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace korven {

namespace {
const QString kApp = QStringLiteral("KORVEN");
const QString kTitulo = QStringLiteral("KORVEN");

QString F2(double v) {
    return Formato(v, QStringLiteral("00.00"));
}
QString F6(double v) {
    return Formato(v, QStringLiteral("00.000000"));
}

QLabel* Valor(QWidget* padre, const char* nombre) {
    auto* l = new QLabel(padre);
    l->setObjectName(QString::fromLatin1(nombre));
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    l->setMinimumWidth(90);
    return l;
}

QTableWidget* Grilla(QWidget* padre, const char* nombre, const QStringList& titulos) {
    auto* g = new QTableWidget(0, static_cast<int>(titulos.size()), padre);
    g->setObjectName(QString::fromLatin1(nombre));
    g->setHorizontalHeaderLabels(titulos);
    g->setEditTriggers(QAbstractItemView::NoEditTriggers);
    g->setSelectionBehavior(QAbstractItemView::SelectRows);
    g->setSelectionMode(QAbstractItemView::SingleSelection);
    g->verticalHeader()->setVisible(false);
    g->verticalHeader()->setDefaultSectionSize(20);
    g->setTabKeyNavigation(false);
    return g;
}

void Fila(QTableWidget* g, const QStringList& celdas) {
    const int r = g->rowCount();
    g->insertRow(r);
    for (int c = 0; c < celdas.size(); ++c) {
        auto* item = new QTableWidgetItem(celdas[c]);
        if (c > 0)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        g->setItem(r, c, item);
    }
}

// Widths in the proportion given, over the grid's width.
void Anchos(QTableWidget* g, const QList<int>& proporcion, int ancho) {
    int suma = 0;
    for (int p : proporcion)
        suma += p;
    for (int c = 0; c < proporcion.size(); ++c)
        g->setColumnWidth(c, ancho * proporcion[c] / suma);
}
} // namespace

void RegistrarPresupuesto(Pantallas& pantallas, AbridorArchivo abrir) {
    if (!abrir)
        abrir = [](const QString& ruta) { return Abrir(ruta, QString()); };
    RegistrarFormulario(
        pantallas, QStringLiteral("FrmPresupuesto"),
        [abrir](AppContext& ctx, const QVariantMap& args, QWidget* padre) -> QDialog* {
            return new FrmPresupuesto(ctx, args, abrir, padre);
        });
    RegistrarFormulario<FrmDatos>(pantallas, QStringLiteral("FrmDatos"));
}

FrmPresupuesto::FrmPresupuesto(AppContext& ctx, const QVariantMap& args, AbridorArchivo abrir,
                               QWidget* padre)
    : QDialog(padre), ctx_(ctx), interno_(args.value(QStringLiteral("interno")).toString()),
      abrir_(std::move(abrir)), work_(ctx, interno_) {
    Construir();
    SettingsStore& s = ctx_.settings();
    const bool outlook =
        s.GetSetting(kApp, QStringLiteral("FLAGS"), QStringLiteral("XOUTLOOK"), QStringLiteral("N"))
            .trimmed()
            .toUpper() == QLatin1String("S");
    opOutLook->setChecked(outlook);
    opSMTP->setChecked(!outlook);

    QString pase = s.GetSetting(kApp, QStringLiteral("PRESUPUESTO"), QStringLiteral("PASE"));
    if (pase.isEmpty()) {
        pase = QStringLiteral("1.40");
        s.SaveSetting(kApp, QStringLiteral("PRESUPUESTO"), QStringLiteral("PASE"), pase);
    }
    QString linea = s.GetSetting(kApp, QStringLiteral("PRESUPUESTO"), QStringLiteral("LINEA"));
    if (linea.isEmpty()) {
        linea = QStringLiteral("0");
        s.SaveSetting(kApp, QStringLiteral("PRESUPUESTO"), QStringLiteral("LINEA"), linea);
    }
    // The rate is kept with "." as its decimal point.
    TxtPase->setText(F6(EsNumero(QString(pase).replace(QLatin1Char(','), QLatin1Char('.')))));
    CbLineas->setCurrentText(linea);
    connect(CbLineas, &QComboBox::currentTextChanged, this, [this](const QString& t) {
        ctx_.settings().SaveSetting(kApp, QStringLiteral("PRESUPUESTO"), QStringLiteral("LINEA"),
                                    t);
    });

    CargarCaratula();
    Cargar();
    Cargar2();
    Grd->setFocus();
}

void FrmPresupuesto::Construir() {
    setObjectName(QStringLiteral("FrmPresupuesto"));
    setWindowTitle(QStringLiteral("Presupuesto"));

    LbDespachante = new QLabel(this);
    LbDespachante->setObjectName(QStringLiteral("LbDespachante"));
    LbCliente = new QLabel(this);
    LbCliente->setObjectName(QStringLiteral("LbCliente"));

    auto* valores = new QGroupBox(QStringLiteral("Valores"), this);
    auto* gv = new QGridLayout(valores);
    LbFOB = Valor(valores, "LbFOB");
    LbFlete = Valor(valores, "LbFlete");
    LbSeguro = Valor(valores, "LbSeguro");
    LbAjInc = Valor(valores, "LbAjInc");
    LbAjDed = Valor(valores, "LbAjDed");
    LbPaseFob = Valor(valores, "LbPaseFob");
    LbPaseFlete = Valor(valores, "LbPaseFlete");
    LbPaseSeguro = Valor(valores, "LbPaseSeguro");
    LbBaseImp = Valor(valores, "LbBaseImp");
    LbBaseIVA = Valor(valores, "LbBaseIVA");
    TxtPase = new QLineEdit(valores);
    TxtPase->setObjectName(QStringLiteral("TxtPase"));
    TxtPase->setAlignment(Qt::AlignRight);
    TxtPase->setMaximumWidth(100);
    int r = 0;
    for (auto [t, v, p] : {std::tuple<const char*, QLabel*, QLabel*>{"FOB:", LbFOB, LbPaseFob},
                           {"Flete:", LbFlete, LbPaseFlete},
                           {"Seguro:", LbSeguro, LbPaseSeguro}}) {
        gv->addWidget(new QLabel(QString::fromLatin1(t), valores), r, 0);
        gv->addWidget(v, r, 1);
        gv->addWidget(p, r, 2);
        ++r;
    }
    gv->addWidget(new QLabel(QStringLiteral("Aj. Incluir:"), valores), 0, 3);
    gv->addWidget(LbAjInc, 0, 4);
    gv->addWidget(new QLabel(QStringLiteral("Aj. Deducir:"), valores), 1, 3);
    gv->addWidget(LbAjDed, 1, 4);
    gv->addWidget(new QLabel(QStringLiteral("Base Imp.:"), valores), 2, 3);
    gv->addWidget(LbBaseImp, 2, 4);
    gv->addWidget(new QLabel(QStringLiteral("Base IVA:"), valores), 0, 5);
    gv->addWidget(LbBaseIVA, 0, 6);
    gv->addWidget(new QLabel(QStringLiteral("Pase U$S:"), valores), 1, 5);
    gv->addWidget(TxtPase, 1, 6);

    GrdLiq = Grilla(this, "GrdLiq",
                    {QStringLiteral("Concepto"), QStringLiteral("PGC"), QStringLiteral("Peso"),
                     QStringLiteral("Dolar")});
    Anchos(GrdLiq, {2500, 400, 800, 800}, 500);
    auto* totales = new QGridLayout;
    LbGastosDespacho = Valor(this, "LbGastosDespacho");
    LbGastosDespachoPeso = Valor(this, "LbGastosDespachoPeso");
    lbTOTALCOBDol = Valor(this, "lbTOTALCOBDol");
    lbTOTALCOBPes = Valor(this, "lbTOTALCOBPes");
    lbTOTALGARDol = Valor(this, "lbTOTALGARDol");
    lbTotalGARPes = Valor(this, "lbTotalGARPes");
    totales->addWidget(new QLabel(QStringLiteral("Gastos de despacho:"), this), 0, 0);
    totales->addWidget(LbGastosDespachoPeso, 0, 1);
    totales->addWidget(LbGastosDespacho, 0, 2);
    totales->addWidget(new QLabel(QStringLiteral("a COBRAR:"), this), 1, 0);
    totales->addWidget(lbTOTALCOBPes, 1, 1);
    totales->addWidget(lbTOTALCOBDol, 1, 2);
    totales->addWidget(new QLabel(QStringLiteral("a GARANTIZAR:"), this), 2, 0);
    totales->addWidget(lbTotalGARPes, 2, 1);
    totales->addWidget(lbTOTALGARDol, 2, 2);

    Grd = Grilla(this, "Grd",
                 {QStringLiteral("Concepto"), QStringLiteral("Pesos"), QStringLiteral("Dolar")});
    Anchos(Grd, {2500, 800, 800}, 330);
    LbGastosOperativos = Valor(this, "LbGastosOperativos");
    LbGastosOperativosDol = Valor(this, "LbGastosOperativosDol");
    Grd2 = Grilla(this, "Grd2", {QStringLiteral("Referencia"), QStringLiteral("Valor")});
    Anchos(Grd2, {1500, 1500}, 330);

    TxtEmail = new QLineEdit(this);
    TxtEmail->setObjectName(QStringLiteral("TxtEmail"));
    txtAcuenta = new QLineEdit(this);
    txtAcuenta->setObjectName(QStringLiteral("txtAcuenta"));
    txtAcuenta->setAlignment(Qt::AlignRight);
    txtAcuenta->setMaximumWidth(100);
    CbLineas = new QComboBox(this);
    CbLineas->setObjectName(QStringLiteral("CbLineas"));
    for (int i = 0; i <= 10; ++i)
        CbLineas->addItem(QString::number(i));
    opSMTP = new QRadioButton(QStringLiteral("x SMTP"), this);
    opSMTP->setObjectName(QStringLiteral("opSMTP"));
    opOutLook = new QRadioButton(QStringLiteral("x Outlook"), this);
    opOutLook->setObjectName(QStringLiteral("opOutLook"));
    cmdComent = new QPushButton(QStringLiteral("Comentarios"), this);
    cmdComent->setObjectName(QStringLiteral("cmdComent"));
    cmdComent->setAutoDefault(false);
    connect(cmdComent, &QPushButton::clicked, this, &FrmPresupuesto::Comentarios);
    auto* ayuda = new QLabel(QStringLiteral("[F5] - Referencias - [F6] Conceptos - [F11] Enviar "
                                            "por Mail - [F12] Vista Previa"),
                             this);
    ayuda->setObjectName(QStringLiteral("LbAyuda"));

    auto* principal = new QVBoxLayout(this);
    auto* cabecera = new QHBoxLayout;
    cabecera->addWidget(LbDespachante, 1);
    cabecera->addWidget(LbCliente, 1);
    principal->addLayout(cabecera);
    principal->addWidget(valores);
    auto* medio = new QHBoxLayout;
    auto* izq = new QVBoxLayout;
    izq->addWidget(GrdLiq, 1);
    izq->addLayout(totales);
    auto* der = new QVBoxLayout;
    der->addWidget(Grd, 1);
    auto* op = new QHBoxLayout;
    op->addWidget(new QLabel(QStringLiteral("Gastos operativos:"), this));
    op->addWidget(LbGastosOperativos);
    op->addWidget(LbGastosOperativosDol);
    der->addLayout(op);
    der->addWidget(Grd2, 1);
    medio->addLayout(izq, 3);
    medio->addLayout(der, 2);
    principal->addLayout(medio, 1);
    auto* pie = new QHBoxLayout;
    pie->addWidget(new QLabel(QStringLiteral("e-mail:"), this));
    pie->addWidget(TxtEmail, 1);
    pie->addWidget(new QLabel(QStringLiteral("a cuenta:"), this));
    pie->addWidget(txtAcuenta);
    pie->addWidget(new QLabel(QStringLiteral("Bajar Lineas (cm):"), this));
    pie->addWidget(CbLineas);
    pie->addWidget(opSMTP);
    pie->addWidget(opOutLook);
    pie->addWidget(cmdComent);
    principal->addLayout(pie);
    principal->addWidget(ayuda);

    for (QWidget* w : {static_cast<QWidget*>(GrdLiq), static_cast<QWidget*>(Grd),
                       static_cast<QWidget*>(Grd2), static_cast<QWidget*>(TxtPase)})
        w->installEventFilter(this);
    resize(900, 620);
}

double FrmPresupuesto::Pase() const {
    return NumeroTecleado(TxtPase->text().trimmed());
}

void FrmPresupuesto::Error(int numero, const QString& descripcion) {
    ctx_.dialogos().Mensaje(QString::number(numero) +
                                QStringLiteral(" - sección [KORVEN.frmPresupuesto.]\n\n") +
                                descripcion,
                            kTitulo, Dialogos::Icono::Critico);
}

void FrmPresupuesto::ErrorArmado(int numero, const QString& descripcion) {
    ctx_.dialogos().Mensaje(QString::number(numero) +
                                QStringLiteral(" - Seccion [KORVEN.Frmpresupuesto.LP_ArmarRep] "
                                               "\n\n") +
                                descripcion,
                            kTitulo, Dialogos::Icono::Critico);
}

void FrmPresupuesto::CargarCaratula() {
    try {
        Presupuesto::Caratula c;
        if (!work_.LeerCaratula(Pase(), c)) {
            ctx_.dialogos().Mensaje(QStringLiteral("No se encontro interno!"), kTitulo,
                                    Dialogos::Icono::Critico);
            return;
        }
        car_ = c;
        emailDesde_ = c.email;
        servidor_ = c.servidor;
        if (!c.acuenta.isEmpty())
            txtAcuenta->setText(c.acuenta);
        LbDespachante->setText(c.despachante);
        LbCliente->setText(c.cliente);
        TxtEmail->setText(c.clienteEmail);
        LbFOB->setText(F2(c.fob));
        LbFlete->setText(F2(c.flete));
        LbSeguro->setText(F2(c.seguro));
        LbPaseFob->setText(F6(c.paseFob));
        LbPaseFlete->setText(F6(c.paseFlete));
        LbPaseSeguro->setText(F6(c.paseSeguro));
        LbAjInc->setText(F2(c.ajInc));
        LbAjDed->setText(F2(c.ajDed));
        LbBaseImp->setText(F2(c.baseImp));
        LbBaseIVA->setText(F2(c.baseIva));
        GrdLiq->setRowCount(0);
        for (const Presupuesto::FilaLiq& f : c.liq)
            Fila(GrdLiq, {f.concepto, f.pgc, F2(f.peso), F2(f.dolar)});
        MostrarTotales();
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::MostrarTotales() {
    LbGastosDespacho->setText(F2(car_.despacho.dolar));
    LbGastosDespachoPeso->setText(F2(car_.despacho.peso));
    lbTOTALCOBDol->setText(F2(car_.cobrar.dolar));
    lbTOTALCOBPes->setText(F2(car_.cobrar.peso));
    lbTOTALGARDol->setText(F2(car_.garantizar.dolar));
    lbTotalGARPes->setText(F2(car_.garantizar.peso));
}

void FrmPresupuesto::Cargar() {
    try {
        conceptos_ = work_.Conceptos();
        operativos_ = {};
        Grd->setRowCount(0);
        for (const Presupuesto::Concepto& c : conceptos_) {
            Fila(Grd, {c.concepto, F2(c.peso), F2(c.dolar)});
            operativos_.peso = RedondearDecimal(operativos_.peso + c.peso, 2);
            operativos_.dolar = RedondearDecimal(operativos_.dolar + c.dolar, 2);
        }
        LbGastosOperativos->setText(F2(operativos_.peso));
        LbGastosOperativosDol->setText(F2(operativos_.dolar));
        if (Grd->rowCount() > 0)
            Grd->setCurrentCell(0, 0);
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::Cargar2() {
    try {
        referencias_ = work_.Referencias();
        Grd2->setRowCount(0);
        for (const Presupuesto::Referencia& r : referencias_)
            Fila(Grd2, {r.referencia, r.valor});
        if (Grd2->rowCount() > 0)
            Grd2->setCurrentCell(0, 0);
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::NuevoConcepto() {
    try {
        QList<ListasCodigos::Fila> filas;
        for (const QString& c : work_.ConceptosDelSistema())
            filas.append({c, QString(), c});
        const QString concepto =
            ListasCodigos::AbrirListado(ctx_, QStringLiteral("Conceptos"), filas);
        if (concepto.isEmpty())
            return;
        const QVariantMap r =
            ctx_.AbrirModal(QStringLiteral("FrmDatos"), {{QStringLiteral("descripcion"), concepto}})
                .toMap();
        if (r.isEmpty())
            return;
        if (!work_.AgregarConcepto(
                concepto, NumeroTecleado(r.value(QStringLiteral("valor")).toString()),
                r.value(QStringLiteral("moneda")).toString() == QLatin1String("1"))) {
            ctx_.dialogos().Mensaje(QStringLiteral("Este concepto ya existe en el presupuesto."),
                                    kTitulo, Dialogos::Icono::Exclamacion);
            return;
        }
        Cargar();
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::BorrarConcepto() {
    const int fila = Grd->currentRow();
    if (fila < 0 || fila >= conceptos_.size())
        return;
    try {
        work_.BorrarConcepto(conceptos_[fila].concepto);
        Cargar();
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::NuevaReferencia() {
    try {
        QList<ListasCodigos::Fila> filas;
        for (const QString& c : work_.ReferenciasDelSistema())
            filas.append({c, QString(), c});
        const QString ref = ListasCodigos::AbrirListado(ctx_, QStringLiteral("Referencias"), filas);
        if (ref.isEmpty())
            return;
        for (const Presupuesto::Referencia& r : referencias_)
            if (r.referencia == ref) {
                ctx_.dialogos().Mensaje(QStringLiteral("La Referencia ya Existe!"), kTitulo,
                                        Dialogos::Icono::Exclamacion);
                return;
            }
        QString valor;
        for (;;) {
            valor = ctx_.dialogos()
                        .PedirTexto(QStringLiteral("Ingrese el valor de ") + ref, kTitulo)
                        .value_or(QString());
            if (!valor.isEmpty())
                break;
            if (ctx_.dialogos().Pregunta(QStringLiteral("Desea cancelar la operación")))
                return;
        }
        if (!work_.AgregarReferencia(ref, valor))
            ctx_.dialogos().Mensaje(QStringLiteral("La Referencia ya Existe!"), kTitulo,
                                    Dialogos::Icono::Exclamacion);
        Cargar2();
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::BorrarReferencia() {
    const int fila = Grd2->currentRow();
    if (fila < 0 || fila >= referencias_.size())
        return;
    try {
        work_.BorrarReferencia(referencias_[fila].referencia);
        Cargar2();
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::LP_DEL_CONCEPTO() {
    const int fila = GrdLiq->currentRow();
    if (fila < 0 || fila >= car_.liq.size())
        return;
    const Presupuesto::FilaLiq f = car_.liq.takeAt(fila);
    Presupuesto::Total* t = f.pgc == QLatin1String("P")   ? &car_.despacho
                            : f.pgc == QLatin1String("C") ? &car_.cobrar
                            : f.pgc == QLatin1String("G") ? &car_.garantizar
                                                          : nullptr;
    if (t) {
        t->peso = RedondearDecimal(t->peso - f.peso, 2);
        t->dolar = RedondearDecimal(t->dolar - f.dolar, 2);
    }
    GrdLiq->removeRow(fila);
    MostrarTotales();
}

void FrmPresupuesto::CambiarPase() {
    double pase = 0;
    if (!LeerNumeroTecleado(TxtPase->text().trimmed(), &pase))
        return;
    TxtPase->setText(F6(pase));
    ctx_.settings().SaveSetting(kApp, QStringLiteral("PRESUPUESTO"), QStringLiteral("PASE"),
                                Formato(pase, QStringLiteral("00.000000"), QStringLiteral(".")));
    CargarCaratula();
}

void FrmPresupuesto::Comentarios() {
    try {
        ctx_.AbrirModal(QStringLiteral("FrmLstDiv"), {{QStringLiteral("interno"), interno_}});
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::GrabarACuenta() {
    try {
        ctx_.settings().SaveSetting(kApp, QStringLiteral("FLAGS"), QStringLiteral("XOUTLOOK"),
                                    opOutLook->isChecked() ? QStringLiteral("S")
                                                           : QStringLiteral("N"));
        work_.GrabarACuenta(txtAcuenta->text().trimmed());
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

QString FrmPresupuesto::LP_ArmarRep(const QString& archivo, int modo, QString& resultado) {
    resultado.clear();
    try {
        Presupuesto::Datos d;
        d.car = car_;
        d.interno = interno_;
        d.comentario = work_.Comentario();
        d.referencias = referencias_;
        d.conceptos = conceptos_;
        d.pase = Pase();
        d.operativos = operativos_;
        d.hayAcuenta = LeerNumeroTecleado(txtAcuenta->text().trimmed(), &d.acuenta);

        QString html, error;
        if (!Presupuesto::Armar(d, Presupuesto::CarpetaSecciones(ctx_.directorioPrograma()), html,
                                &error)) {
            ErrorArmado(0, error);
            resultado = QStringLiteral("NO");
            return {};
        }
        if (modo == 1) {
            if (archivo.isEmpty()) {
                ctx_.dialogos().Mensaje(
                    QStringLiteral("Error Nombre el archivo no llego como parametro"), kTitulo);
                resultado = QStringLiteral("NO");
                return html;
            }
            QFile f(archivo);
            if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(html.toUtf8()) < 0) {
                ErrorArmado(0, f.errorString());
                resultado = QStringLiteral("NO");
                return html;
            }
        }
        return html;
    } catch (const KorvenError& e) {
        ErrorArmado(e.numero(), e.descripcion());
        resultado = QStringLiteral("NO");
        return {};
    }
}

void FrmPresupuesto::SENDPREVW() {
    if (!EsNumeroTecleado(TxtPase->text().trimmed())) {
        ctx_.dialogos().Mensaje(QStringLiteral("Debe ingresar el tipo pase"), kTitulo,
                                Dialogos::Icono::Critico);
        return;
    }
    const QString archivo = ctx_.directorioPrograma() + QStringLiteral("vista.htm");
    QString resultado;
    LP_ArmarRep(archivo, 1, resultado);
    if (resultado == QLatin1String("NO"))
        return;
    abrir_(archivo);
    vistaPrevia_ = true;
}

QString FrmPresupuesto::Asunto() const {
    return QStringLiteral("Presupuesto ") +
           FormatoFecha(QDate::currentDate(), QStringLiteral("Long Date"));
}

void FrmPresupuesto::SENDEMAIL() {
    if (!vistaPrevia_ && !ctx_.dialogos().Pregunta(QStringLiteral(
                             "Desea enviar el mail, antes de la vista preliminar (F12)?")))
        return;
    if (!EsNumeroTecleado(TxtPase->text().trimmed())) {
        ctx_.dialogos().Mensaje(QStringLiteral("Debe ingresar el tipo pase"), kTitulo,
                                Dialogos::Icono::Critico);
        return;
    }
    if (!ValidaMail(TxtEmail->text().trimmed())) {
        ctx_.dialogos().Mensaje(QStringLiteral("Dirección de Correo no válido (Email)"), kTitulo,
                                Dialogos::Icono::Exclamacion);
        return;
    }
    GrabarACuenta();
    QString resultado;
    const QString texto = LP_ArmarRep(QString(), 0, resultado);
    if (resultado == QLatin1String("NO"))
        return;
    EnviarMail(texto);
}

void FrmPresupuesto::EnviarMail(const QString& texto) {
    try {
        if (opSMTP->isChecked()) {
            ctx_.AbrirModal(QStringLiteral("FrmProcesando"),
                            {{QStringLiteral("servidor"), servidor_},
                             {QStringLiteral("desdeDireccion"), emailDesde_},
                             {QStringLiteral("desdeNombre"), car_.despachante},
                             {QStringLiteral("paraDireccion"), TxtEmail->text().trimmed()},
                             {QStringLiteral("paraNombre"), car_.cliente},
                             {QStringLiteral("asunto"), Asunto()},
                             {QStringLiteral("cuerpo"), texto}});
            return;
        }
        const QString archivo = ctx_.directorioPrograma() + QStringLiteral("Presupuesto.eml");
        QFile f(archivo);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            f.write(MensajeEml(emailDesde_, TxtEmail->text().trimmed(), Asunto(), texto)) < 0) {
            Error(0, f.errorString());
            return;
        }
        f.close();
        abrir_(archivo);
    } catch (const KorvenError& e) {
        Error(e.numero(), e.descripcion());
    }
}

void FrmPresupuesto::reject() {
    GrabarACuenta();
    QDialog::reject();
}

bool FrmPresupuesto::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (objeto == TxtPase && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
        CambiarPase();
        return true;
    }
    if (objeto == Grd && tecla == Qt::Key_F6) {
        NuevoConcepto();
        return true;
    }
    if (objeto == Grd && tecla == Qt::Key_Delete) {
        BorrarConcepto();
        return true;
    }
    if (objeto == Grd2 && tecla == Qt::Key_F6) {
        NuevaReferencia();
        return true;
    }
    if (objeto == Grd2 && tecla == Qt::Key_Delete) {
        BorrarReferencia();
        return true;
    }
    if (objeto == GrdLiq && tecla == Qt::Key_Delete) {
        LP_DEL_CONCEPTO();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

void FrmPresupuesto::keyPressEvent(QKeyEvent* evento) {
    const int tecla = evento->key();
    if (tecla == Qt::Key_C && (evento->modifiers() & Qt::ControlModifier)) {
        reject();
        return;
    }
    switch (tecla) {
    case Qt::Key_F5:
        Grd2->setFocus();
        return;
    case Qt::Key_F6:
        Grd->setFocus();
        return;
    case Qt::Key_F11:
        SENDEMAIL();
        return;
    case Qt::Key_F12:
        SENDPREVW();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return; // no default button
    default:
        QDialog::keyPressEvent(evento);
    }
}

} // namespace korven
