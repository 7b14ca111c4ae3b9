#include "liquidation/FrmAdCon.h"

#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QComboBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>

namespace korven {

namespace {

// A value handed in by the item screen: a number shows as "00.00", a text as it came.
QString Valor(const QVariant& v) {
    const int t = v.metaType().id();
    if (t == QMetaType::Double || t == QMetaType::Int || t == QMetaType::LongLong)
        return Formato(v.toDouble(), QStringLiteral("00.00"));
    return v.toString();
}

template <class W> W* Control(QWidget* padre, const char* nombre) {
    auto* w = new W(padre);
    w->setObjectName(QString::fromLatin1(nombre));
    return w;
}

} // namespace

FrmAdCon::FrmAdCon(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ctx_(ctx), interno_(args.value(QStringLiteral("interno")).toString()),
      iditem_(args.value(QStringLiteral("iditem")).toLongLong()),
      modo_(args.value(QStringLiteral("modo")).toInt() == 2 ? 2 : 1),
      codigoOriginal_(args.value(QStringLiteral("idconceptos")).toString().trimmed()),
      cbCONC(Control<QComboBox>(this, "cbCONC")), cbID(Control<QComboBox>(this, "cbID")),
      txtPorc(Control<QLineEdit>(this, "txtPorc")), txtBimp(Control<QLineEdit>(this, "txtBimp")),
      TxtValor(Control<QLineEdit>(this, "TxtValor")), cbPGC(Control<QComboBox>(this, "cbPGC")),
      TxtMotivos(Control<QLineEdit>(this, "TxtMotivos")),
      Command1(Control<QPushButton>(this, "Command1")) {
    setObjectName(QStringLiteral("FrmAdCon"));
    setWindowTitle(modo_ == 1 ? QStringLiteral("Agregar Concepto")
                              : QStringLiteral("Modificar Concepto"));
    cbID->setVisible(false);
    cbPGC->addItems({QStringLiteral("P"), QStringLiteral("G"), QStringLiteral("C")});
    Command1->setText(modo_ == 1 ? QStringLiteral("Agregar") : QStringLiteral("Modificar"));
    Command1->setAutoDefault(false);
    auto* formulario = new QFormLayout;
    formulario->addRow(QStringLiteral("Concepto"), cbCONC);
    formulario->addRow(QStringLiteral("Porcentaje %"), txtPorc);
    formulario->addRow(QStringLiteral("Base Imponible"), txtBimp);
    formulario->addRow(QStringLiteral("Total"), TxtValor);
    formulario->addRow(QStringLiteral("Obligacion"), cbPGC);
    formulario->addRow(QStringLiteral("Motivo (F6)"), TxtMotivos);
    auto* caja = new QVBoxLayout(this);
    caja->addLayout(formulario);
    caja->addWidget(Command1, 0, Qt::AlignRight);
    caja->addWidget(cbID);
    cbCONC->setMinimumWidth(360);

    if (modo_ == 2) {
        txtPorc->setText(Valor(args.value(QStringLiteral("porcentaje"))));
        txtBimp->setText(Valor(args.value(QStringLiteral("baseimp"))));
        TxtValor->setText(Valor(args.value(QStringLiteral("total"))));
        const int pgc = cbPGC->findText(args.value(QStringLiteral("pgc")).toString().trimmed());
        cbPGC->setCurrentIndex(pgc < 0 ? 0 : pgc);
        TxtMotivos->setText(args.value(QStringLiteral("motivo")).toString());
    }
    CargarConceptos(codigoOriginal_);

    connect(cbCONC, &QComboBox::currentIndexChanged, cbID, &QComboBox::setCurrentIndex);
    connect(txtPorc, &QLineEdit::textEdited, this, &FrmAdCon::Calcular);
    connect(txtBimp, &QLineEdit::textEdited, this, &FrmAdCon::Calcular);
    connect(Command1, &QPushButton::clicked, this,
            [this] { modo_ == 1 ? PF_Guardar() : PF_Modificar(); });
    for (QWidget* w : std::initializer_list<QWidget*>{cbCONC, txtPorc, txtBimp, TxtValor, cbPGC,
                                                      TxtMotivos, Command1})
        w->installEventFilter(this);
    cbCONC->setFocus();
}

// The concepts of the tariff table; to add, those the item does not carry with an amount yet.
void FrmAdCon::CargarConceptos(const QString& elegido) {
    try {
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        const Recordset rs =
            modo_ == 1
                ? c.Abrir(QStringLiteral("select distinct CTAX,LTAXABR from tax where not "
                                         "exists(select idconceptos from itemliq where "
                                         "idconceptos = CTAX and iditem = ? and interno = ? and "
                                         "total > 0) order by LTAXABR, CTAX"),
                          {iditem_, interno_})
                : c.Abrir(QStringLiteral(
                      "select distinct CTAX,LTAXABR from tax order by LTAXABR, CTAX"));
        for (int i = 0; i < rs.RecordCount(); ++i) {
            cbID->addItem(EsNull(rs.Fila(i).at(0)));
            cbCONC->addItem(EsNull(rs.Fila(i).at(1)));
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[Form_Load.FrmAdCon.KORVEN]::")
                                    .arg(e.numero())
                                    .arg(e.descripcion()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    const int i = elegido.isEmpty() ? -1 : cbID->findText(elegido);
    cbCONC->setCurrentIndex(i);
    cbID->setCurrentIndex(i);
}

void FrmAdCon::Calcular() {
    double base = 0, tasa = 0;
    if (LeerNumeroTecleado(txtBimp->text().trimmed(), &base) &&
        LeerNumeroTecleado(txtPorc->text().trimmed(), &tasa))
        TxtValor->setText(Formato(base * tasa / 100, QStringLiteral("00.00")));
    else
        TxtValor->clear();
}

void FrmAdCon::Motivos() {
    if (cbPGC->currentText() != QLatin1String("G")) {
        Aviso(QStringLiteral("Para seleccionar un MOTIVO, obligación debe estar como G"));
        return;
    }
    try {
        const std::unique_ptr<QObject> listas =
            ctx_.componentes().Crear(QStringLiteral("PickLists.Main"), ctx_);
        QString motivo;
        QMetaObject::invokeMethod(listas.get(), "getListado", Qt::DirectConnection,
                                  Q_RETURN_ARG(QString, motivo),
                                  Q_ARG(QString, QStringLiteral("MOTIVOS")));
        if (!motivo.trimmed().isEmpty())
            TxtMotivos->setText(motivo.trimmed());
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QStringLiteral("%1 / %2 - seccion[TxtMotivos_KeyDown.FrmAdCon.KORVEN]::")
                .arg(e.numero())
                .arg(e.descripcion()),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmAdCon::Aviso(const QString& texto) {
    ctx_.dialogos().Mensaje(texto, QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
}

bool FrmAdCon::Validar() {
    if (cbCONC->currentIndex() < 0 || cbID->currentText().trimmed().isEmpty()) {
        Aviso(QStringLiteral("Debe seleccionar un concepto de la lista."));
        return false;
    }
    if (cbPGC->currentText() == QLatin1String("G") && TxtMotivos->text().trimmed().isEmpty()) {
        Aviso(QStringLiteral("Usted selecionó como Obligacion G, entonces debe seleccionar un "
                             "MOTIVO"));
        cbPGC->setFocus();
        return false;
    }
    if (!EsNumeroTecleado(txtPorc->text().trimmed())) {
        Aviso(QStringLiteral("Debe seleccionar un PORCENTAJE válido"));
        return false;
    }
    if (!EsNumeroTecleado(txtBimp->text().trimmed())) {
        Aviso(QStringLiteral("Debe seleccionar una BASE IMPONIBLE válida"));
        return false;
    }
    if (!(NumeroTecleado(TxtValor->text().trimmed()) > 0)) {
        Aviso(QStringLiteral("Total debe ser mayor a cero."));
        return false;
    }
    return true;
}

int FrmAdCon::Actualizar(const QString& donde) {
    const double tasa = NumeroTecleado(txtPorc->text().trimmed());
    return ctx_.stores()
        .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update itemliq set idconceptos = ?,conceptos = ?,pgc = ?,motivo "
                                 "= ?,porcentaje = ?,porcentajeB = ?,baseimp = ?,total = ?, valor "
                                 "= 1 where interno = ? and iditem = ? and idconceptos = ?"),
                  {cbID->currentText(), cbCONC->currentText(), cbPGC->currentText(),
                   TxtMotivos->text().trimmed(), tasa, tasa,
                   NumeroTecleado(txtBimp->text().trimmed()),
                   NumeroTecleado(TxtValor->text().trimmed()), interno_, iditem_, donde});
}

// Each save is one transaction: a refusal or a failure leaves the store as it was.
namespace {
bool Guardar(AppContext& ctx, const QString& rutina, const std::function<int(Conexion&)>& paso,
             const std::function<void(const QString&)>& aviso) {
    try {
        Transaccion t(ctx.stores(), {QStringLiteral("INTERNOS")});
        const int filas = paso(ctx.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS")));
        if (filas < 0)
            return false;
        if (filas == 0) {
            aviso(QStringLiteral("No se puede agregar el nuevo concepto."));
            return false;
        }
        t.Confirmar();
    } catch (const KorvenError& e) {
        ctx.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[%3.FrmAdCon.KORVEN]::")
                                   .arg(e.numero())
                                   .arg(e.descripcion(), rutina),
                               QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
    ctx.LiquidacionPendiente = true;
    return true;
}
} // namespace

bool FrmAdCon::PF_Guardar() {
    if (!Validar())
        return false;
    const QString codigo = cbID->currentText();
    const bool ok = Guardar(
        ctx_, QStringLiteral("PF_Guardar"),
        [&](Conexion& c) {
            auto cuenta = [&](const char* condicion) {
                return EsNumero(c.Abrir(QStringLiteral("select count(idconceptos) as cont from "
                                                       "itemliq where %1 and interno = ? and "
                                                       "idconceptos = ? and iditem = ?")
                                            .arg(QLatin1String(condicion)),
                                        {interno_, codigo, iditem_})
                                    .Fields(0));
            };
            if (cuenta("total >0") > 0) {
                Aviso(QStringLiteral("El concepto ya esta ingresado en la liquidación"));
                return -1;
            }
            if (cuenta("total=0") > 0)
                return Actualizar(codigo);
            const double tasa = NumeroTecleado(txtPorc->text().trimmed());
            return c.Ejecutar(
                QStringLiteral("insert into ITEMLIQ (iditem,idconceptos,conceptos,interno,PGC,"
                               "motivo,porcentaje,porcentajeb,baseimp,total,valor) values "
                               "(?,?,?,?,?,?,?,?,?,?,0)"),
                {iditem_, codigo, cbCONC->currentText(), interno_, cbPGC->currentText(),
                 TxtMotivos->text().trimmed(), tasa, tasa,
                 NumeroTecleado(txtBimp->text().trimmed()),
                 NumeroTecleado(TxtValor->text().trimmed())});
        },
        [this](const QString& t) { Aviso(t); });
    if (ok)
        accept();
    return ok;
}

bool FrmAdCon::PF_Modificar() {
    if (!Validar())
        return false;
    const bool ok = Guardar(
        ctx_, QStringLiteral("PF_Modificar"),
        [&](Conexion&) { return Actualizar(codigoOriginal_); },
        [this](const QString& t) { Aviso(t); });
    if (ok)
        accept();
    return ok;
}

bool FrmAdCon::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (objeto == TxtMotivos && tecla == Qt::Key_F6) {
        Motivos();
        return true;
    }
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
        if (objeto == Command1)
            Command1->click();
        else
            focusNextChild();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
