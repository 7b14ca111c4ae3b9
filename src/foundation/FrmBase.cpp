#include "foundation/FrmBase.h"

#include "foundation/LeerConfig.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"

#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace korven {

FrmBase::FrmBase(AppContext& ctx, const QVariantMap&, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName(QStringLiteral("FrmBase"));
    setWindowTitle(QStringLiteral("Configuración Base de Datos"));
    Configuracion& c = ctx.config();
    struct Def {
        const char* nombre;
        const char* rotulo;
        const char* seccion;
        const char* clave;
        const char* archivo;
        QString* ruta;
    };
    const Def defs[] = {
        {"txtInterno", "Base - Interno.mdb", "BASESERVER", "INTERNO", "internos.mdb",
         &c.rutaInternos},
        {"TxtPersonal", "Base - Personal.mdb", "BASESERVER", "PERSONAL", "personal.mdb",
         &c.rutaPersonal},
        {"TxtNcm", "Base - Nomenclador - ncm.mdb", "BASESERVER", "NCM", "ncm.mdb", &c.rutaNcm},
        {"TxtEstado", "Base - Estado.mdb", "BASESERVER", "ESTADO", "estados.mdb", &c.rutaEstado},
        {"TxtUsuario", "Base - Usuario.mdb", "BASELOCAL", "USUARIO", "usuario.mdb", &c.rutaUsuario},
    };
    auto* form = new QFormLayout;
    const QString ini = ctx.rutaIni();
    for (const Def& d : defs) {
        auto* txt = new QLineEdit(this);
        txt->setObjectName(QLatin1String(d.nombre));
        // The colour of a field with an F6 list.
        txt->setProperty("Tag", QStringLiteral("#F6"));
        txt->setMinimumWidth(360);
        txt->setText(LeerIni(QLatin1String(d.clave), QLatin1String(d.seccion), ini));
        txt->installEventFilter(this);
        ClCntrl::Vincular(ctx, txt);
        form->addRow(QString::fromUtf8(d.rotulo), txt);
        campos_.append({txt, d.seccion, d.clave, d.archivo, d.ruta});
    }
    auto* l = new QVBoxLayout(this);
    l->addLayout(form);
    l->addWidget(new QLabel(QStringLiteral("F6 [Seleccionar Carpeta]   ESC [Salir]"), this));
}

bool FrmBase::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(evento)->key() == Qt::Key_F6) {
        if (auto* txt = qobject_cast<QLineEdit*>(objeto)) {
            Elegir(txt);
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

void FrmBase::Elegir(QLineEdit* txt) {
    try {
        const QString carpeta =
            ctx_.AbrirModal(PantallaCarpeta(),
                            {{QStringLiteral("titulo"), QStringLiteral("Seleccione Ubicación")},
                             {QStringLiteral("inicial"), txt->text()}})
                .toString();
        if (!carpeta.isEmpty())
            txt->setText(carpeta);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[Elegir.FrmBase.KORVEN]::%3")
                                    .arg(e.numero())
                                    .arg(e.descripcion(), e.origen()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmBase::Guardar() {
    const QString ini = ctx_.rutaIni();
    for (const Campo& c : campos_) {
        const QString valor = DirectorioNormal(c.txt->text().trimmed());
        c.txt->setText(valor);
        IniFile::Escribir(QLatin1String(c.seccion), QLatin1String(c.clave), valor, ini);
        // systablas keeps its old path until the next start.
        *c.ruta = valor + QLatin1String(c.archivo);
    }
}

void FrmBase::done(int r) {
    if (!guardado_) {
        guardado_ = true;
        Guardar();
    }
    QDialog::done(r);
}

} // namespace korven
