#include "liquidation/FrmVentajas.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace korven {

FrmVentajas::FrmVentajas(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ctx_(ctx), Lst(new QListWidget(this)), cmdSeleccionar(new QPushButton(this)) {
    const bool informacion =
        args.value(QStringLiteral("lista")).toString() == QLatin1String("informacion");
    setObjectName(QStringLiteral("FrmVentajas"));
    setWindowTitle(informacion ? QStringLiteral("Información") : QStringLiteral("Ventajas"));
    setProperty("Respuesta", QString());
    ctx_.VentajaElegida.clear();
    Lst->setObjectName(QStringLiteral("Lst"));
    QFont fijo(QStringLiteral("Monospace"));
    fijo.setStyleHint(QFont::TypeWriter);
    Lst->setFont(fijo);
    cmdSeleccionar->setObjectName(QStringLiteral("Seleccionar"));
    cmdSeleccionar->setText(QStringLiteral("Seleccionar"));
    cmdSeleccionar->setAutoDefault(false);
    auto* caja = new QVBoxLayout(this);
    caja->addWidget(Lst);
    caja->addWidget(cmdSeleccionar, 0, Qt::AlignRight);
    resize(560, 420);

    try {
        const Recordset rs =
            ctx_.stores()
                .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
                .Abrir(informacion ? QStringLiteral("select * from informacion order by id")
                                   : QStringLiteral("select * from ventajas order by id"));
        for (int i = 0; i < rs.RecordCount(); ++i)
            Lst->addItem(EsNull(rs.Fila(i).at(0)).leftJustified(16, u' ', true) +
                         EsNull(rs.Fila(i).at(1)).toUpper());
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[Form_Load.FrmVentajas.KORVEN]::")
                                    .arg(e.numero())
                                    .arg(e.descripcion()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    if (Lst->count() > 0)
        Lst->setCurrentRow(0);
    Lst->installEventFilter(this);
    connect(Lst, &QListWidget::itemDoubleClicked, this, [this] { Seleccionar(); });
    connect(cmdSeleccionar, &QPushButton::clicked, this, [this] { Seleccionar(); });
    Lst->setFocus();
}

void FrmVentajas::Seleccionar() {
    const QListWidgetItem* linea = Lst->currentItem();
    if (!linea)
        return;
    ctx_.VentajaElegida = linea->text().left(16).trimmed();
    setProperty("Respuesta", ctx_.VentajaElegida);
    accept();
}

void FrmVentajas::reject() {
    ctx_.VentajaElegida.clear();
    setProperty("Respuesta", QString());
    QDialog::reject();
}

bool FrmVentajas::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == Lst && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            Seleccionar();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
