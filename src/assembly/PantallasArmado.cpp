#include "assembly/PantallasArmado.h"

#include "assembly/FrmArmarItem.h"
#include "assembly/FrmProrKg.h"

#include "assembly/ComprobacionInterno.h"
#include "assembly/Frm_ComprobacionErrores.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasComprobacion(Pantallas& pantallas) {
    RegistrarFormulario<Frm_ComprobacionErrores>(pantallas,
                                                 QStringLiteral("Frm_ComprobacionErrores"));
    pantallas.Registrar(QStringLiteral("ChequearInterno"),
                        [](AppContext& ctx, const QVariantMap& args) -> QVariant {
                            return ComprobacionInterno(ctx).Comprobar(
                                args.value(QStringLiteral("interno")).toString());
                        });
}

void RegistrarPantallasArmado(Pantallas& pantallas) {
    RegistrarFormulario<FrmArmarItem>(pantallas, QStringLiteral("FrmArmarItem"));
    RegistrarFormulario<FrmProrKg>(pantallas, QStringLiteral("FrmProrKg"));
    RegistrarPantallasComprobacion(pantallas);
}

} // namespace korven
