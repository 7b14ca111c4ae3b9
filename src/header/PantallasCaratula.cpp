#include "header/PantallasCaratula.h"

#include "header/FrmCaratula.h"
#include "header/PickLists.h"
#include "platform/ComponentRegistry.h"
#include "platform/Pantallas.h"
#include "platform/ui/PantallasEscritorio.h"

namespace korven {

void RegistrarPantallasCaratula(Pantallas& p) {
    RegistrarFormulario<FrmCaratula>(p, QStringLiteral("FrmCaratula"));
}

void RegistrarComponentesCaratula(ComponentRegistry& componentes) {
    componentes.Registrar(QStringLiteral("PickLists.Main"), [](AppContext& ctx) {
        return std::unique_ptr<QObject>(new PickLists(ctx));
    });
}

} // namespace korven
