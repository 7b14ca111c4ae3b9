#include "quote/FrmDatos.h"

#include "platform/Formato.h"
#include "platform/ValueRules.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace korven {

FrmDatos::FrmDatos(AppContext& ctx, const QVariantMap& args, QWidget* padre) : QDialog(padre) {
    (void)ctx;
    setObjectName(QStringLiteral("FrmDatos"));
    setWindowTitle(QStringLiteral("KORVEN"));
    auto* titulo = new QLabel(QStringLiteral(" Ingresar Valor de :"), this);
    titulo->setObjectName(QStringLiteral("Label1"));
    descripcion_ = new QLabel(args.value(QStringLiteral("descripcion")).toString(), this);
    descripcion_->setObjectName(QStringLiteral("LbDescripcion"));
    QFont negrita = descripcion_->font();
    negrita.setBold(true);
    descripcion_->setFont(negrita);
    valor_ = new QLineEdit(this);
    valor_->setObjectName(QStringLiteral("TxtValor"));
    valor_->setAlignment(Qt::AlignRight);
    dolares_ = new QRadioButton(QStringLiteral("Valor en Dolares"), this);
    dolares_->setObjectName(QStringLiteral("Option2"));
    pesos_ = new QRadioButton(QStringLiteral("Valor en Pesos"), this);
    pesos_->setObjectName(QStringLiteral("Op1"));
    pesos_->setChecked(true);

    auto* l = new QGridLayout(this);
    l->addWidget(titulo, 0, 0);
    l->addWidget(descripcion_, 0, 1);
    l->addWidget(valor_, 1, 0, 1, 2);
    l->addWidget(pesos_, 2, 0);
    l->addWidget(dolares_, 2, 1);
    setFixedSize(360, 120);
    valor_->setFocus();
}

void FrmDatos::Aceptar() {
    double valor = 0;
    if (!LeerNumeroTecleado(valor_->text().trimmed(), &valor))
        return;
    QVariantMap r;
    r.insert(QStringLiteral("valor"), Formato(valor, QStringLiteral("00.00")));
    r.insert(QStringLiteral("moneda"),
             dolares_->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    setProperty("Respuesta", r);
    accept();
}

void FrmDatos::keyPressEvent(QKeyEvent* evento) {
    if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
        Aceptar();
        return;
    }
    QDialog::keyPressEvent(evento);
}

} // namespace korven
