#include "foundation/FrmNewVendedor.h"

#include "foundation/ListasMaestras.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "ui_FrmNewVendedor.h"

#include <QKeyEvent>

namespace korven {

FrmNewVendedor::FrmNewVendedor(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmNewVendedor>()), ctx_(ctx),
      modo_(args.value(QStringLiteral("modo")).toInt()) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariantMap());
    ui->TxtCodigo->setText(args.value(QStringLiteral("codigo")).toString());
    ui->TxtNombre->setText(args.value(QStringLiteral("nombre")).toString());
    ui->TxtDomicilio->setText(args.value(QStringLiteral("domicilio")).toString());
    // The code is the key of a vendor that exists.
    ui->TxtCodigo->setReadOnly(modo_ == 1);
    for (QLineEdit* t : {ui->TxtCodigo, ui->TxtNombre, ui->TxtDomicilio})
        t->installEventFilter(this);
    connect(ui->Command1, &QPushButton::clicked, this, [this] { Command1(); });
    connect(ui->Command2, &QPushButton::clicked, this, &QDialog::reject);
    if (modo_ == 1 || !ui->TxtCodigo->text().isEmpty())
        ui->TxtNombre->setFocus();
    else
        ui->TxtCodigo->setFocus();
}

FrmNewVendedor::~FrmNewVendedor() = default;

void FrmNewVendedor::Command1() {
    const QString codigo = ui->TxtCodigo->text();
    const QString nombre = ui->TxtNombre->text();
    const QString domicilio = ui->TxtDomicilio->text();
    try {
        ListasMaestras listas(ctx_.stores());
        if (modo_ == 1) {
            if (listas.ActualizarVendedor(codigo, nombre, domicilio) > 0)
                accept();
            return;
        }
        if (codigo.trimmed().isEmpty()) {
            ui->TxtCodigo->setFocus();
            return;
        }
        if (listas.ExisteVendedor(codigo)) {
            ctx_.dialogos().Mensaje(QStringLiteral("El codigo ya existe.!"),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return;
        }
        listas.InsertarVendedor(codigo, nombre, domicilio);
        ctx_.dialogos().Mensaje(QStringLiteral("Datos ingresados correctamente."),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
        QVariantMap par;
        par.insert(QStringLiteral("codigo"), codigo);
        par.insert(QStringLiteral("nombre"), nombre);
        setProperty("Respuesta", par);
        accept();
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) +
                                    QStringLiteral(" - Sección Grabar Vendedor\n\n") +
                                    e.descripcion(),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

// Enter moves on as Tab does. The fields are not companions of a data form: a vendor typed from
// the header does not mark the Operation changed.
bool FrmNewVendedor::eventFilter(QObject* objeto, QEvent* evento) {
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
