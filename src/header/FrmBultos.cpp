#include "header/FrmBultos.h"

#include "header/BultosDatos.h"
#include "header/BusquedaPersonas.h"
#include "header/ListasCodigos.h"
#include "header/PickLists.h"
#include "header/Transportes.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmBultos.h"

#include <QKeyEvent>

namespace korven {

FrmBultos::FrmBultos(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmBultos>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        ClCntrl::Vincular(ctx_, t);
        t->installEventFilter(this);
    }
    ui->chTransBultos->installEventFilter(this);
    for (QLineEdit* t : {ui->TxtCodigo, ui->TxtTipo, ui->TxtVia})
        connect(t, &QLineEdit::textEdited, this, [t](const QString& texto) {
            if (texto != texto.toUpper()) {
                const int pos = t->cursorPosition();
                t->setText(texto.toUpper());
                t->setCursorPosition(pos);
            }
        });
    connect(ui->TxtBultDesp, &QLineEdit::textChanged, ui->TxtCantDisp, &QLineEdit::setText);
    connect(ui->chTransBultos, &QCheckBox::toggled, ui->lbAdvert, &QWidget::setVisible);
    ui->lbAdvert->setVisible(false);
    MostrarDatos();
    ui->TxtNroBultos->setFocus();
}

FrmBultos::~FrmBultos() = default;

void FrmBultos::MostrarDatos() {
    const std::optional<BultosDatos::Datos> d = BultosDatos(ctx_).MostrarDatos(interno_);
    if (!d)
        return;
    ui->chTransBultos->setChecked(d->noTransferir);
    ui->lbAdvert->setVisible(d->noTransferir);
    ui->TxtNroBultos->setText(d->nroBultos);
    ui->TxtCodigo->setText(d->codigo);
    ui->TxtTipo->setText(d->tipo);
    ui->TxtPeso->setText(d->peso);
    ui->TxtBultDesp->setText(d->bultosDespachar);
    ui->TxtMarcaBul->setText(d->marca);
    ui->TxtVia->setText(d->via);
    ui->TxtNomTrans->setText(d->nombreTransporte);
    ui->TxtCuit->setText(d->cuit);
    ui->TxtNombreTrans->setText(d->nombreAgente);
    ui->TxtBandera->setText(d->bandera);
    ui->TxtVencimiento->setText(d->vencimiento);
    try {
        PickLists p(ctx_);
        ui->Lbcodigoemb->setText(p.getCodigoEmbarqueDescripcion(d->codigo));
        ui->LbTipoemb->setText(p.getTipoEmbarqueDescripcion(d->tipo));
        ui->LbVia->setText(p.getVIADescripcion(d->via));
        ui->LbBandera->setText(p.getPaisDescripcion(d->bandera));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" seccion [korven.frmbultos.mostrardatos]"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

bool FrmBultos::Grabar() {
    BultosDatos::Datos d;
    d.noTransferir = ui->chTransBultos->isChecked();
    d.nroBultos = ui->TxtNroBultos->text();
    d.codigo = ui->TxtCodigo->text();
    d.tipo = ui->TxtTipo->text();
    d.peso = ui->TxtPeso->text();
    d.bultosDespachar = ui->TxtBultDesp->text();
    d.marca = ui->TxtMarcaBul->text();
    d.via = ui->TxtVia->text();
    d.nombreTransporte = ui->TxtNomTrans->text();
    d.cuit = ui->TxtCuit->text();
    d.nombreAgente = ui->TxtNombreTrans->text();
    d.bandera = ui->TxtBandera->text();
    d.vencimiento = ui->TxtVencimiento->text();
    QString foco;
    if (!BultosDatos(ctx_).Grabar(interno_, d, QDate::currentDate(), &foco)) {
        if (QWidget* w = findChild<QWidget*>(foco))
            w->setFocus();
        return false;
    }
    ui->TxtNombreTrans->setText(d.nombreAgente);
    return true;
}

void FrmBultos::reject() {
    if (Grabar())
        QDialog::accept();
}

void FrmBultos::BuscarTrans(int modo) {
    if (modo == 1) {
        bool encontrado = false;
        const QString nombre = Transportes(ctx_).BuscarTrans(ui->TxtCuit->text(), &encontrado);
        if (encontrado)
            ui->TxtNombreTrans->setText(nombre);
        return;
    }
    try {
        if (const auto a =
                BusquedaPersonas::Devuelto(ctx_.AbrirModal(QStringLiteral("FrmLstTrans")))) {
            ui->TxtCuit->setText(a->codigo);
            ui->TxtNombreTrans->setText(a->nombre);
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [BUSCAR AG_TRANSPORTE] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmBultos::Buscar(QLineEdit* campo) {
    try {
        PickLists p(ctx_);
        if (campo == ui->TxtCodigo)
            ui->Lbcodigoemb->setText(p.getCodigoEmbarqueDescripcion(campo->text()));
        else if (campo == ui->TxtTipo)
            ui->LbTipoemb->setText(p.getTipoEmbarqueDescripcion(campo->text()));
        else if (campo == ui->TxtVia)
            ui->LbVia->setText(p.getVIADescripcion(campo->text()));
        else if (campo == ui->TxtBandera)
            ui->LbBandera->setText(p.getPaisDescripcion(campo->text()));
        else if (campo == ui->TxtCuit)
            BuscarTrans(1);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [BDESCRIPCION] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmBultos::Listar(QLineEdit* campo) {
    if (campo == ui->TxtCuit) {
        BuscarTrans(2);
        return;
    }
    const char* lista = campo == ui->TxtCodigo    ? "CODEMB"
                        : campo == ui->TxtTipo    ? "TIPOEMB"
                        : campo == ui->TxtVia     ? "VIA"
                        : campo == ui->TxtBandera ? "PAIS"
                                                  : nullptr;
    if (!lista)
        return;
    const QString n = QString::fromLatin1(lista);
    const QString codigo = ListasCodigos(ctx_).MostrarLista(n, QStringLiteral("Buscar ") + n);
    if (codigo.isEmpty())
        return;
    campo->setText(codigo);
    Buscar(campo);
}

bool FrmBultos::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    // Ctrl+C leaves as Esc does.
    if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
        reject();
        return true;
    }
    const bool enter = k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter;
    auto* campo = qobject_cast<QLineEdit*>(objeto);
    if (!campo) {
        if (enter) {
            focusNextChild();
            return true;
        }
        return QDialog::eventFilter(objeto, evento);
    }
    if (enter)
        Buscar(campo);
    else if (k->key() == Qt::Key_F6 && k->modifiers() == Qt::NoModifier) {
        Listar(campo);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
