#include "header/FrmCaratula.h"

#include "header/BusquedaPersonas.h"
#include "header/CambioDivisas.h"
#include "header/CaratulaDatos.h"
#include "header/DisposicionCaratula.h"
#include "header/Facturas.h"
#include "header/FechasTexto.h"
#include "header/ImportesCaratula.h"
#include "header/ListasCodigos.h"
#include "header/OpcionesCaratula.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"
#include "platform/ui/SeguirFoco.h"
#include "ui_FrmCaratula.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>

namespace korven {

namespace {

bool EsEnter(const QKeyEvent* k) {
    return (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) &&
           (k->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) == Qt::NoModifier;
}

void Vaciar(QWidget* w) {
    if (auto* t = qobject_cast<QLineEdit*>(w))
        t->clear();
    else if (auto* c = qobject_cast<QComboBox*>(w))
        c->setCurrentIndex(-1);
    else if (auto* k = qobject_cast<QCheckBox*>(w))
        k->setChecked(false);
    else if (auto* l = qobject_cast<QListWidget*>(w))
        l->clear();
}

} // namespace

FrmCaratula::FrmCaratula(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmCaratula>()), ctx_(ctx) {
    ui->setupUi(this);
    SeguirFoco(ui->scrDatos);
    for (QWidget* w : findChildren<QWidget*>())
        if (!w->objectName().isEmpty())
            controles_.insert(w->objectName().toLower(), w);

    // Every text box behind its companion; the form's own handling runs before it.
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        ClCntrl::Vincular(ctx_, t);
        t->installEventFilter(this);
    }
    (new ClCntrl(ctx_, ui->LstFact))->sLinkListBox(ui->LstFact);
    for (QComboBox* c : {ui->cboFacilidadPago, ui->cboOpcionIVA, ui->cboOpcionesGanancias})
        (new ClCntrl(ctx_, c))->sLinkCBoBox(c);
    // Enter moves on from the lists and check boxes too; no button takes it.
    for (QWidget* w : findChildren<QWidget*>())
        if (qobject_cast<QComboBox*>(w) || qobject_cast<QCheckBox*>(w) || w == ui->LstFact)
            w->installEventFilter(this);
    for (QPushButton* b : findChildren<QPushButton*>()) {
        b->setAutoDefault(false);
        b->setDefault(false);
    }
    ui->cboOpcionIVA->addItems(OpcionesCaratula::EntradasIVA());
    ui->cboOpcionesGanancias->addItems(OpcionesCaratula::EntradasGanancias());
    ui->cboOpcionIVA->setCurrentIndex(-1);
    ui->cboOpcionesGanancias->setCurrentIndex(-1);
    ui->cboFacilidadPago->setCurrentIndex(-1);

    // Codes are typed upper-case.
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        if (!EsCodigo(t))
            continue;
        connect(t, &QLineEdit::textEdited, this, [t](const QString& texto) {
            const QString m = texto.toUpper();
            if (m != texto) {
                const int pos = t->cursorPosition();
                t->setText(m);
                t->setCursorPosition(pos);
            }
        });
    }
    // The dollars of each currency group follow its value and rate.
    const struct {
        QLineEdit* valor;
        QLineEdit* cambio;
        QLineEdit* dolares;
    } grupos[] = {{ui->Txtfobdivisas, ui->TxtDivValorFob, ui->TxtDolFob},
                  {ui->Txtfletedivisas, ui->TxtDivValorFlete, ui->TxtDolFlete},
                  {ui->Txtsegurodivisas, ui->TxtDivValorSeguro, ui->TxtDolSeguro}};
    for (const auto& g : grupos) {
        for (QLineEdit* t : {g.valor, g.cambio})
            connect(t, &QLineEdit::textChanged, this,
                    [this, g] { CalcularDolares(g.valor, g.cambio, g.dolares); });
    }
    connect(ui->TxtProrratear, &QLineEdit::textChanged, this, [this](const QString& t) {
        if (NumeroTecleado(t) != 0)
            CalcularSeguro();
    });
    connect(ui->txtDCEstMerc, &QLineEdit::textChanged, this, [this] { ActualizarForzar(); });
    connect(ui->txtDCPaisOrigen, &QLineEdit::textChanged, this, [this] { ActualizarForzar(); });
    ActualizarForzar();
    connect(ui->cmdONCCA, &QPushButton::clicked, this,
            [this] { AbrirPantalla(QStringLiteral("frmONCCA")); });
    connect(ui->CmdProrrat, &QPushButton::clicked, this,
            [this] { AbrirPantalla(QStringLiteral("FrmABMProrrateos")); });

    interno_ = args.value(QStringLiteral("interno")).toString();
    if (!interno_.isEmpty())
        CargarCaratula(interno_);
    ui->TxtSubReg->setFocus();
}

FrmCaratula::~FrmCaratula() = default;

QWidget* FrmCaratula::Control(const QString& nombre) const {
    return controles_.value(nombre.toLower());
}

bool FrmCaratula::EsCodigo(const QLineEdit* t) const {
    const char* const codigos[] = {
        "TxtSubReg",     "txtIdAduana1",   "TxtIdAduana2",    "Txtidvendedor",
        "TxtCoddivfob",  "TxtCodDivFlete", "TxtCodDivseguro", "Txtidcondventa",
        "Txtidpais",     "Txtmotdestsusp", "txtDCEstMerc",    "txtDCPaisOrigen",
        "txtDCPaisDest", "txtDCStandard",  "TxtDCRegalias",   "txtDCBancos"};
    for (const char* c : codigos)
        if (t->objectName() == QLatin1String(c))
            return true;
    return false;
}

bool FrmCaratula::CargarCaratula(const QString& interno) {
    interno_ = interno;
    cargando_ = true;
    // Filling the form does not count as changing the Operation.
    ctx_.FormularioDeDatos = false;
    CaratulaDatos datos(ctx_);
    bool ok = false;
    try {
        const std::optional<CaratulaDatos::Carga> carga = datos.Cargar(interno);
        if (carga) {
            for (const CaratulaDatos::Valor& v : carga->valores) {
                QWidget* w = Control(v.campo.control);
                if (auto* t = qobject_cast<QLineEdit*>(w)) {
                    t->setText(v.texto);
                    // A code is resolved as if Enter had been pressed in it.
                    if (v.campo.tipo == CaratulaDatos::Tipo::Codigo && !v.texto.isEmpty())
                        Buscar(t);
                } else if (auto* k = qobject_cast<QCheckBox*>(w)) {
                    k->setChecked(v.texto == QStringLiteral("S"));
                } else if (w == ui->cboFacilidadPago) {
                    ui->cboFacilidadPago->setCurrentIndex(ui->cboFacilidadPago->findText(v.texto));
                } else if (w == ui->cboOpcionIVA) {
                    ui->cboOpcionIVA->setCurrentIndex(OpcionesCaratula::PosicionIVA(v.texto));
                } else if (w == ui->cboOpcionesGanancias) {
                    ui->cboOpcionesGanancias->setCurrentIndex(
                        OpcionesCaratula::PosicionGanancias(v.texto));
                }
            }
            ui->LstFact->clear();
            ui->LstFact->addItems(carga->facturas);
            ok = true;
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(e.descripcion() + QStringLiteral(" - ") +
                                    QString::number(e.numero()) + QStringLiteral(" / "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    ActualizarForzar();
    cargando_ = false;
    if (isVisible())
        ctx_.FormularioDeDatos = true;
    return ok;
}

void FrmCaratula::Mostrar(const QString& idsubreg) {
    DisposicionCaratula d;
    try {
        d = DisposicionCaratula::Calcular(ctx_, idsubreg);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" Seccion: korven.caratula::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return;
    }
    ui->lbFacilidadPago->setVisible(d.facilidadPagoVisible);
    ui->cboFacilidadPago->setVisible(d.facilidadPagoVisible);
    if (d.hayDest) {
        for (QLineEdit* t : findChildren<QLineEdit*>())
            t->setVisible(true);
        ui->TxtFactCon->setEnabled(false);
        for (const QString& nombre : d.ocultos) {
            if (QWidget* w = Control(nombre)) {
                w->setVisible(false);
                Vaciar(w);
            }
        }
    }
    if (d.exportacion) {
        for (QWidget* w : {ui->txtDCBancos, ui->txtDCComiExt}) {
            w->setEnabled(true);
            w->setVisible(true);
        }
        ui->cmdONCCA->setEnabled(true);
        for (QWidget* w : {static_cast<QWidget*>(ui->lbFechaEmbarque1),
                           static_cast<QWidget*>(ui->lbFechaEmbarque2),
                           static_cast<QWidget*>(ui->txtFechaEmbarque)})
            w->setVisible(false);
    } else {
        for (QWidget* w : {static_cast<QWidget*>(ui->lbFechaEmbarque1),
                           static_cast<QWidget*>(ui->lbFechaEmbarque2),
                           static_cast<QWidget*>(ui->txtFechaEmbarque)})
            w->setVisible(true);
        ui->txtDCBancos->setVisible(false);
        ui->cmdONCCA->setEnabled(false);
    }
    ui->cboOpcionesGanancias->setEnabled(d.opcionesHabilitadas);
    ui->cboOpcionIVA->setEnabled(d.opcionesHabilitadas);
    // Labels follow their fields.
    ui->lbAduSal->setVisible(!ui->TxtIdAduana2->isHidden());
    ui->lbPaisDest->setVisible(!ui->Txtidpais->isHidden());
    ui->lbFechaCierreVenta->setVisible(!ui->TxtCierreVenta->isHidden());
    ui->lbDepAlm->setVisible(!ui->txtDepAlm->isHidden());
    ui->lbDCBancos->setVisible(!ui->txtDCBancos->isHidden());
}

// An export shows the customs office of exit and has no shipment date.
void FrmCaratula::DisposicionImpExp(const QString& cstaimpexp) {
    if (cstaimpexp != QStringLiteral("E"))
        return;
    for (QWidget* w : {static_cast<QWidget*>(ui->lbAduSal), static_cast<QWidget*>(ui->TxtIdAduana2),
                       static_cast<QWidget*>(ui->TxtAduana2)})
        w->setVisible(true);
    for (QWidget* w :
         {static_cast<QWidget*>(ui->lbFechaEmbarque1), static_cast<QWidget*>(ui->lbFechaEmbarque2),
          static_cast<QWidget*>(ui->txtFechaEmbarque)})
        w->setVisible(false);
}

void FrmCaratula::BuscarDivisa(QLineEdit* codigo, QLineEdit* cambio) {
    codigo->setText(ImportesCaratula::CodigoDivisa(codigo->text()));
    QString tasa;
    const QString descripcion =
        ListasCodigos(ctx_).BuscarDescripcion(QStringLiteral("DIVISAS"), codigo->text(), &tasa);
    codigo->setToolTip(descripcion);
    if (!tasa.isEmpty())
        cambio->setText(tasa);
}

bool FrmCaratula::Buscar(QLineEdit* campo) {
    ListasCodigos listas(ctx_);
    BusquedaPersonas personas(ctx_);
    const QString codigo = campo->text();
    if (campo == ui->TxtSubReg) {
        QString cst;
        ui->TxtSubRegDesc->setText(
            listas.BuscarDescripcion(QStringLiteral("SUBREG"), codigo, &cst));
        cstaimpexp_ = cst;
        Mostrar(codigo);
        DisposicionImpExp(cst);
    } else if (campo == ui->txtIdAduana1) {
        ui->TxtAduana1->setText(listas.BuscarDescripcion(QStringLiteral("ADUANA"), codigo));
    } else if (campo == ui->TxtIdAduana2) {
        ui->TxtAduana2->setText(listas.BuscarDescripcion(QStringLiteral("ADUANA"), codigo));
    } else if (campo == ui->Txtidcondventa) {
        ui->lbDescConven->setText(listas.BuscarDescripcion(QStringLiteral("CODVENTA"), codigo));
    } else if (campo == ui->Txtidpais) {
        ui->TxtdescPais->setText(listas.BuscarDescripcion(QStringLiteral("PAIS"), codigo));
    } else if (campo == ui->TxtCoddivfob) {
        BuscarDivisa(campo, ui->TxtDivValorFob);
    } else if (campo == ui->TxtCodDivFlete) {
        BuscarDivisa(campo, ui->TxtDivValorFlete);
    } else if (campo == ui->TxtCodDivseguro) {
        BuscarDivisa(campo, ui->TxtDivValorSeguro);
    } else if (campo == ui->TxtCuitAduana) {
        ui->TxtNombreadu->setText(personas.BuscarDespachante(codigo));
    } else if (campo == ui->TxtCUITCliente) {
        const BusquedaPersonas::Cliente c = personas.BuscarCliente(codigo);
        ui->TxtNombre->setText(c.nombre);
        regalias_ = c.regalias;
        ajxvinc4102_ = c.ajxvinc4102;
    } else if (campo == ui->Txtidvendedor) {
        const auto v = personas.BuscarVendedor(codigo);
        if (v && v->codigo != codigo)
            ui->Txtidvendedor->setText(v->codigo);
        ui->TxtNombreven->setText(v ? v->nombre : QString());
    } else if (campo == ui->Txtfobdivisas) {
        // The FOB keeps the adjustment to include and the value to prorate in step.
        if (EsNumeroTecleado(ui->TxtAjustIncluir->text()))
            ui->TxtAjustIncluir->setText(campo->text());
        if (EsNumeroTecleado(ui->TxtProrratear->text()) &&
            NumeroTecleado(ui->TxtProrratear->text()) > 0)
            ui->TxtProrratear->setText(campo->text());
    } else if (campo == ui->TxtFactura) {
        if (campo->text().trimmed().isEmpty())
            return false;
        AgregarFactura();
        return true;
    }
    return false;
}

void FrmCaratula::Listar(QLineEdit* campo) {
    ListasCodigos listas(ctx_);
    BusquedaPersonas personas(ctx_);
    auto lista = [&](const char* nombre) {
        const QString n = QString::fromLatin1(nombre);
        return listas.MostrarLista(n, QStringLiteral("Buscar ") + n);
    };
    auto elegir = [&](const QString& codigo, bool buscar) {
        if (codigo.isEmpty())
            return;
        campo->setText(codigo);
        if (buscar)
            Buscar(campo);
    };
    if (campo == ui->TxtSubReg)
        elegir(lista("SUBREG"), true);
    else if (campo == ui->txtIdAduana1 || campo == ui->TxtIdAduana2)
        elegir(lista("ADUANA"), true);
    else if (campo == ui->Txtidcondventa)
        elegir(lista("CODVENTA"), true);
    else if (campo == ui->Txtidpais)
        elegir(lista("PAIS"), true);
    else if (campo == ui->TxtCoddivfob || campo == ui->TxtCodDivFlete ||
             campo == ui->TxtCodDivseguro)
        elegir(lista("DIVISAS"), true);
    else if (campo == ui->txtDCBancos)
        elegir(lista("BANCOS"), false);
    else if (campo == ui->txtDCEstMerc)
        elegir(lista("ESTADOMERCADERIA"), false);
    else if (campo == ui->txtDCPaisOrigen || campo == ui->txtDCPaisDest)
        elegir(lista("PAIS"), false);
    else if (campo == ui->Txtmotdestsusp) {
        // The code, and behind "|" the days of the term.
        const QString n = QStringLiteral("MOTIVOSTEMP") + cstaimpexp_;
        const QString r = listas.MostrarLista(n, QStringLiteral("Buscar ") + n);
        if (!r.isEmpty()) {
            ui->Txtmotdestsusp->setText(r.section(QLatin1Char('|'), 0, 0));
            ui->TxtPlazoaut->setText(r.section(QLatin1Char('|'), 1));
        }
    } else if (campo == ui->TxtCuitAduana) {
        if (const auto d = personas.ListaDespachantes()) {
            ui->TxtCuitAduana->setText(d->codigo);
            ui->TxtNombreadu->setText(d->nombre);
        }
    } else if (campo == ui->TxtCUITCliente) {
        elegir(personas.SeleccionarCliente(this), true);
    } else if (campo == ui->Txtidvendedor) {
        if (const auto v = personas.ListaVendedores()) {
            ui->Txtidvendedor->setText(v->codigo);
            ui->TxtNombreven->setText(v->nombre);
        }
    }
}

void FrmCaratula::AlSalir(QLineEdit* campo) {
    if (campo == ui->Txtfobdivisas || campo == ui->Txtfletedivisas ||
        campo == ui->Txtsegurodivisas || campo == ui->TxtPorc || campo == ui->TxtProrratear) {
        const QString t = ImportesCaratula::FormatoImporte(campo->text());
        if (t != campo->text())
            campo->setText(t);
    } else if (campo == ui->TxtPlazoaut) {
        const QDate f = FechasTexto::Leer(campo->text());
        if (f.isValid())
            campo->setText(FormatoFecha(f, QStringLiteral("dd-mm-yyyy")));
    } else if (ctx_.FormularioDeDatos && !verificando_) {
        QLineEdit* codigo = campo == ui->TxtDivValorFob      ? ui->TxtCoddivfob
                            : campo == ui->TxtDivValorFlete  ? ui->TxtCodDivFlete
                            : campo == ui->TxtDivValorSeguro ? ui->TxtCodDivseguro
                                                             : nullptr;
        if (codigo) {
            verificando_ = true;
            CambioDivisas(ctx_).VerificarCambio(codigo->text(), campo->text());
            verificando_ = false;
        }
    }
}

void FrmCaratula::CalcularDolares(QLineEdit* valor, QLineEdit* cambio, QLineEdit* dolares) {
    if (const auto d = ImportesCaratula::Multiplicar(valor->text(), cambio->text()))
        dolares->setText(*d);
}

void FrmCaratula::CalcularSeguro() {
    // The proration codes are read when the insurance is worked out, not when the screen
    // opened: CmdProrrat may have changed them meanwhile.
    double sumaProrrateo = 0;
    try {
        sumaProrrateo = CaratulaDatos(ctx_).SumaProrrateo(interno_);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" Seccion: korven.caratula::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return;
    }
    const auto s = ImportesCaratula::SeguroPorcentual(
        ui->TxtPorc->text(), ui->TxtDolFob->text(), ui->TxtDolFlete->text(),
        ui->TxtProrratear->text(), sumaProrrateo, ui->TxtDivValorSeguro->text());
    if (!s)
        return;
    ui->TxtDolSeguro->setText(s->dolares);
    if (s->conDivisas)
        ui->Txtsegurodivisas->setText(s->divisas);
}

// The "Forzar" marks need a value in their code fields.
void FrmCaratula::ActualizarForzar() {
    const struct {
        QLineEdit* codigo;
        QCheckBox* forzar;
    } pares[] = {{ui->txtDCEstMerc, ui->chkDCForzarEstMerc},
                 {ui->txtDCPaisOrigen, ui->chkDCForzarPaisOrigen}};
    for (const auto& p : pares) {
        const bool hay = !p.codigo->text().trimmed().isEmpty();
        p.forzar->setEnabled(hay);
        if (!hay)
            p.forzar->setChecked(false);
    }
}

void FrmCaratula::CargarFacturas() {
    ui->LstFact->clear();
    ui->LstFact->addItems(Facturas(ctx_).Lista(interno_));
}

void FrmCaratula::AgregarFactura() {
    Facturas f(ctx_);
    f.Agregar_Facturas(interno_, ui->TxtFactura->text());
    try {
        CargarFacturas();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [Agregar_Facturas] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    ui->TxtFactura->clear();
}

void FrmCaratula::EliminarFactura() {
    QListWidgetItem* item = ui->LstFact->currentItem();
    if (!item)
        return;
    Facturas(ctx_).Eliminar_Factura(interno_, item->text());
    delete ui->LstFact->takeItem(ui->LstFact->row(item));
}

void FrmCaratula::AbrirPantalla(const QString& nombre) {
    try {
        QVariantMap args;
        args.insert(QStringLiteral("interno"), interno_);
        ctx_.AbrirModal(nombre, args);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" Seccion: korven.caratula::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

bool FrmCaratula::Guardar() {
    CaratulaDatos::Pantalla p;
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        p.Poner(t->objectName(), t->text());
        p.Visible(t->objectName(), !t->isHidden());
    }
    for (QCheckBox* k : findChildren<QCheckBox*>())
        p.Poner(k->objectName(), k->isChecked() ? QStringLiteral("S") : QStringLiteral("N"));
    p.Poner(ui->cboFacilidadPago->objectName(), ui->cboFacilidadPago->currentIndex() < 0
                                                    ? QString()
                                                    : ui->cboFacilidadPago->currentText());
    p.Visible(ui->cboFacilidadPago->objectName(), !ui->cboFacilidadPago->isHidden());
    p.Poner(ui->cboOpcionIVA->objectName(),
            OpcionesCaratula::CodigoIVA(ui->cboOpcionIVA->currentIndex()));
    p.Poner(ui->cboOpcionesGanancias->objectName(),
            OpcionesCaratula::CodigoGanancias(ui->cboOpcionesGanancias->currentIndex()));
    for (int i = 0; i < ui->LstFact->count(); ++i)
        p.facturas << ui->LstFact->item(i)->text();

    QString foco;
    const CaratulaDatos::Resultado r = CaratulaDatos(ctx_).Guardar(interno_, p, &foco);
    const QString fecha = p.Texto(ui->txtFechaEmbarque->objectName());
    if (fecha != ui->txtFechaEmbarque->text())
        ui->txtFechaEmbarque->setText(fecha);
    if (r == CaratulaDatos::Resultado::Quedarse) {
        if (QWidget* w = Control(foco))
            w->setFocus();
        return false;
    }
    done(r == CaratulaDatos::Resultado::Guardado ? QDialog::Accepted : QDialog::Rejected);
    return true;
}

void FrmCaratula::reject() {
    Guardar();
}

void FrmCaratula::done(int resultado) {
    ctx_.FormularioDeDatos = false;
    QDialog::done(resultado);
}

void FrmCaratula::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    ctx_.FormularioDeDatos = true;
    if (ui->LstFact->count() > 0 && ui->LstFact->currentRow() < 0)
        ui->LstFact->setCurrentRow(0);
}

bool FrmCaratula::eventFilter(QObject* objeto, QEvent* evento) {
    auto* campo = qobject_cast<QLineEdit*>(objeto);
    if (!campo) {
        if (evento->type() != QEvent::KeyPress)
            return QDialog::eventFilter(objeto, evento);
        auto* k = static_cast<QKeyEvent*>(evento);
        if (objeto == ui->LstFact && k->key() == Qt::Key_Delete) {
            EliminarFactura();
            return true;
        }
        auto* combo = qobject_cast<QComboBox*>(objeto);
        if (EsEnter(k) && !(combo && combo->view()->isVisible())) {
            focusNextChild();
            return true;
        }
        return QDialog::eventFilter(objeto, evento);
    }
    switch (evento->type()) {
    case QEvent::KeyPress: {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (EsEnter(k))
            return Buscar(campo);
        if (k->key() == Qt::Key_F6 && k->modifiers() == Qt::NoModifier) {
            Listar(campo);
            return true;
        }
        break;
    }
    case QEvent::KeyRelease:
        if (campo == ui->TxtPorc)
            CalcularSeguro();
        break;
    case QEvent::FocusOut: {
        // A message box taking the focus is no leaving of the field.
        const Qt::FocusReason razon = static_cast<QFocusEvent*>(evento)->reason();
        if (razon != Qt::ActiveWindowFocusReason && razon != Qt::PopupFocusReason && !cargando_)
            AlSalir(campo);
        break;
    }
    default:
        break;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
