#include "foundation/FrmConfig.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace korven {

FrmConfig::FrmConfig(AppContext& ctx, const QVariantMap&, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName(QStringLiteral("FrmConfig"));
    setWindowTitle(QStringLiteral("Parametros / Configuracion"));
    auto* command1 = new QPushButton(QStringLiteral("Opciones Generales"), this);
    command1->setObjectName(QStringLiteral("Command1"));
    auto* cmdBase = new QPushButton(QStringLiteral("Base de Datos"), this);
    cmdBase->setObjectName(QStringLiteral("CmdBase"));
    command1->setAutoDefault(false);
    cmdBase->setAutoDefault(false);
    auto* l = new QVBoxLayout(this);
    l->addWidget(command1);
    l->addWidget(cmdBase);
    setMinimumWidth(260);
    connect(command1, &QPushButton::clicked, this, [this] { Abrir(QStringLiteral("FrmConGen")); });
    connect(cmdBase, &QPushButton::clicked, this, [this] { Abrir(QStringLiteral("FrmBase")); });
}

void FrmConfig::Abrir(const QString& pantalla) {
    try {
        ctx_.AbrirModal(pantalla);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[%3.FrmConfig.KORVEN]::%4")
                                    .arg(e.numero())
                                    .arg(e.descripcion(), pantalla, e.origen()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

} // namespace korven
