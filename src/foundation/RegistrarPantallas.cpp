#include "foundation/RegistrarPantallas.h"

#include "foundation/FrmBase.h"
#include "foundation/FrmConGen.h"
#include "foundation/FrmConfig.h"
#include "foundation/FrmMostrarDatos.h"
#include "platform/Pantallas.h"
#include "platform/ui/ClassFile.h"
#include "platform/ui/PantallasEscritorio.h"

#include <QApplication>

namespace korven {

void RegistrarPantallasFoundation(Pantallas& p) {
    RegistrarFormulario<FrmConfig>(p, QStringLiteral("FrmConfig"));
    RegistrarFormulario<FrmBase>(p, QStringLiteral("FrmBase"));
    RegistrarFormulario<FrmConGen>(p, QStringLiteral("FrmConGen"));
    RegistrarFormulario<FrmMostrarDatos>(p, QStringLiteral("FrmMostrarDatos"));
    // The folder browser answers the folder chosen, empty when cancelled.
    p.Registrar(FrmBase::PantallaCarpeta(), [](AppContext&, const QVariantMap& args) {
        return QVariant(ClassFile::Carpeta(args.value(QStringLiteral("titulo")).toString(),
                                           args.value(QStringLiteral("inicial")).toString(),
                                           QApplication::activeWindow()));
    });
}

} // namespace korven
