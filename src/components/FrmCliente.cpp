#include "components/FrmCliente.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmCliente.h"

#include <QKeyEvent>

namespace korven {

namespace {

QString Marca(bool marcado) {
    return marcado ? QStringLiteral("S") : QStringLiteral("N");
}
bool Marcado(const QString& marca) {
    return marca.trimmed().toUpper() == QStringLiteral("S");
}
QString Numero(double v) {
    return Formato(v, QStringLiteral("00.00"));
}

} // namespace

FrmCliente::FrmCliente(AppContext& ctx, const std::optional<Cliente>& existente, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmCliente>()), ctx_(ctx),
      nuevo_(!existente.has_value()) {
    ui->setupUi(this);
    if (existente) {
        const Cliente& c = *existente;
        ui->TxtCuit->setText(c.cuit);
        ui->TxtCuit->setReadOnly(true);
        ui->TxtNombre->setText(c.nombre);
        ui->TxtDomicilio->setText(c.domicilio);
        ui->TxtEmail->setText(c.email);
        ui->TxtRegalias->setText(Numero(c.regalias));
        ui->TxtAjVinc->setText(Numero(c.ajxvinc_4102));
        ui->ChEximGan->setChecked(Marcado(c.eximgan));
        ui->TxtEximGanValor->setText(Numero(c.eximganvalor));
        ui->TxtEximGanValorTemp->setText(Numero(c.eximganvalortemp));
        ui->ChIvaReduccion->setChecked(Marcado(c.ivaareduccion));
        ui->TxtIvaReduccionValor->setText(Numero(c.ivaareduccionvalor));
        ui->TxtIvaReduccionValorTemp->setText(Numero(c.ivaareduccionvalortemp));
        ui->ChCVDI->setChecked(Marcado(c.cvdi));
        ui->TxtIngBru->setText(Numero(c.ingbru));
        ui->ChExcepLAPIAEC->setChecked(Marcado(c.ExcepLAPIAEC));
        setWindowTitle(QStringLiteral("Cliente ") + c.cuit);
    } else {
        setWindowTitle(QStringLiteral("Nuevo cliente"));
    }
    connect(ui->ChEximGan, &QCheckBox::toggled, this, [this] { Habilitar(); });
    connect(ui->ChIvaReduccion, &QCheckBox::toggled, this, [this] { Habilitar(); });
    ui->CmdGuardar->setDefault(true);
    connect(ui->CmdGuardar, &QPushButton::clicked, this, [this] { Guardar(); });
    connect(ui->CmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
    Habilitar();
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        ClCntrl::SoloTexto(t);
        t->installEventFilter(this);
    }
    if (nuevo_)
        ui->TxtCuit->setFocus();
    else
        ui->TxtNombre->setFocus();
}

FrmCliente::~FrmCliente() = default;

// The percentages of an exemption or a reduction count only when the client has it.
void FrmCliente::Habilitar() {
    ui->TxtEximGanValor->setEnabled(ui->ChEximGan->isChecked());
    ui->TxtEximGanValorTemp->setEnabled(ui->ChEximGan->isChecked());
    ui->TxtIvaReduccionValor->setEnabled(ui->ChIvaReduccion->isChecked());
    ui->TxtIvaReduccionValorTemp->setEnabled(ui->ChIvaReduccion->isChecked());
}

bool FrmCliente::LeerNumero(QLineEdit* txt, double& valor) {
    const QString t = txt->text().trimmed();
    if (t.isEmpty()) {
        valor = 0;
        return true;
    }
    if (!EsNumeroTecleado(t)) {
        ctx_.dialogos().Mensaje(QStringLiteral("Debe Ingresar un Valor Númerico"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        txt->setFocus();
        return false;
    }
    valor = NumeroTecleado(t);
    return true;
}

bool FrmCliente::Guardar() {
    Cliente c;
    c.cuit = ui->TxtCuit->text().trimmed();
    c.nombre = ui->TxtNombre->text();
    c.domicilio = ui->TxtDomicilio->text();
    c.email = ui->TxtEmail->text().trimmed();
    if (!LeerNumero(ui->TxtRegalias, c.regalias) || !LeerNumero(ui->TxtAjVinc, c.ajxvinc_4102) ||
        !LeerNumero(ui->TxtEximGanValor, c.eximganvalor) ||
        !LeerNumero(ui->TxtEximGanValorTemp, c.eximganvalortemp) ||
        !LeerNumero(ui->TxtIvaReduccionValor, c.ivaareduccionvalor) ||
        !LeerNumero(ui->TxtIvaReduccionValorTemp, c.ivaareduccionvalortemp) ||
        !LeerNumero(ui->TxtIngBru, c.ingbru))
        return false;
    c.eximgan = Marca(ui->ChEximGan->isChecked());
    c.ivaareduccion = Marca(ui->ChIvaReduccion->isChecked());
    c.cvdi = Marca(ui->ChCVDI->isChecked());
    c.ExcepLAPIAEC = Marca(ui->ChExcepLAPIAEC->isChecked());
    if (!ui->ChEximGan->isChecked())
        c.eximganvalor = c.eximganvalortemp = 0;
    if (!ui->ChIvaReduccion->isChecked())
        c.ivaareduccionvalor = c.ivaareduccionvalortemp = 0;

    const QString falta = LibroClientes::Validar(c);
    if (!falta.isEmpty()) {
        ctx_.dialogos().Mensaje(falta, QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        return false;
    }
    try {
        LibroClientes libro(ctx_.stores());
        if (nuevo_) {
            if (libro.Existe(c.cuit)) {
                ctx_.dialogos().Mensaje(QStringLiteral("El CUIT ingresado ya existe en el sistema"),
                                        QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
                ui->TxtCuit->setFocus();
                return false;
            }
            libro.Insertar(c);
        } else {
            libro.Actualizar(c);
        }
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" - Sección Guardar Cliente"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
    cliente_ = c;
    accept();
    return true;
}

// Enter moves on as Tab does.
bool FrmCliente::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            focusNextChild();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
