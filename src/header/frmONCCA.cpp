#include "header/frmONCCA.h"

#include "header/OnccaDatos.h"
#include "header/PickLists.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/ClCntrl.h"
#include "ui_frmONCCA.h"

#include <QKeyEvent>

namespace korven {

frmONCCA::frmONCCA(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::frmONCCA>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    // The slaughterhouse takes its code from the list of the faneadores.
    campos_ = {
        {ui->txtAcuerdo, ui->cmdAcuerdo, QStringLiteral("ONCCAAcuerdo"), QStringLiteral("Acuerdo")},
        {ui->txtCategoria, ui->cmdCategoria, QStringLiteral("ONCCACategoria"),
         QStringLiteral("Categoria")},
        {ui->txtCorte, ui->cmdCorte, QStringLiteral("ONCCACortes"), QStringLiteral("Cortes")},
        {ui->txtElaborador, ui->cmdListaElaborador, QStringLiteral("ONCCAElaborador"),
         QStringLiteral("Elaborador")},
        {ui->txtEspecie, ui->cmdExpecie, QStringLiteral("ONCCAEspecie"), QStringLiteral("Especie")},
        {ui->txtFaneador, ui->cmdListaFaneador, QStringLiteral("ONCCAFaneador"),
         QStringLiteral("Faneador")},
        {ui->txtEOC, ui->cmdEOB, QStringLiteral("ONCCAMeccoorgbio"), QStringLiteral("Mecoorgbio")},
        {ui->txtRes3106, ui->cmdRes3106, QStringLiteral("ONCCAres3106"), QStringLiteral("Res3106")},
        {ui->txtSisProd, ui->cmdSisProd, QStringLiteral("ONCCAsispro"), QStringLiteral("SisPro")},
        {ui->txtMatadero, ui->cmdMatadero, QStringLiteral("ONCCAMatadero"),
         QStringLiteral("Faneador")},
    };
    for (const Campo& c : campos_) {
        ClCntrl::Vincular(ctx_, c.texto);
        c.texto->setReadOnly(true);
        c.texto->installEventFilter(this);
        c.boton->setAutoDefault(false);
        connect(c.boton, &QPushButton::clicked, this, [this, c] { Elegir(c); });
    }
    installEventFilter(this);
    ui->chONCCA->installEventFilter(this);
    connect(ui->chONCCA, &QCheckBox::clicked, this, [this](bool m) { CambiarEstadosCMD(m); });
    CargarDatos();
    ui->chONCCA->setFocus();
}

frmONCCA::~frmONCCA() = default;

QString frmONCCA::Codigo(const QString& campo) const {
    const QLineEdit* t = findChild<QLineEdit*>(campo);
    return t ? t->property("Tag").toString() : QString();
}

// The code in the Tag, and code and description in the text.
void frmONCCA::Poner(const Campo& c, const QString& codigo) {
    // The cuts take an empty category as their filter.
    const QString descripcion = PickLists(ctx_).DescripcionONCCA(c.lista, codigo, QString());
    c.texto->setProperty("Tag", codigo);
    c.texto->setText(codigo.isEmpty() ? QString() : codigo + QStringLiteral(" - ") + descripcion);
}

void frmONCCA::CargarDatos() {
    const std::optional<OnccaDatos::Datos> d = OnccaDatos(ctx_).CargarDatos(interno_);
    if (!d)
        return;
    ui->chONCCA->setChecked(d->habilitado);
    CambiarEstadosCMD(d->habilitado);
    try {
        for (const Campo& c : campos_)
            Poner(c, d->codigos.value(c.columna));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                QStringLiteral(" seccion CargarDatos en Formulario frmONCCA :: "),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void frmONCCA::Elegir(const Campo& c) {
    if (!c.boton->isEnabled())
        return;
    try {
        const QString codigo = PickLists(ctx_).ListadoONCCA(c.lista, QString());
        if (!codigo.isEmpty())
            Poner(c, codigo);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                QStringLiteral(" seccion CargarDatos en Formulario frmONCCA :: "),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

bool frmONCCA::GuardarDatos() {
    OnccaDatos::Datos d;
    d.habilitado = ui->chONCCA->isChecked();
    for (const Campo& c : campos_)
        d.codigos.insert(c.columna, c.texto->property("Tag").toString());
    return OnccaDatos(ctx_).GuardarDatos(interno_, d);
}

void frmONCCA::CambiarEstadosCMD(bool estado) {
    for (const Campo& c : campos_)
        c.boton->setEnabled(estado);
}

bool frmONCCA::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    if (k->key() == Qt::Key_F11) {
        if (GuardarDatos())
            accept();
        return true;
    }
    if (k->key() == Qt::Key_F6) {
        for (const Campo& c : campos_)
            if (c.texto == objeto) {
                Elegir(c);
                return true;
            }
    }
    if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
        focusNextChild();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
