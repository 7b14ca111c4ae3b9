#include "components/RegistrarComponentesPropios.h"

#include "components/ClientBookListing.h"
#include "components/DesktopMailMain.h"
#include "components/OperationCopierMain.h"
#include "components/ValueRulesMain.h"
#include "platform/ComponentRegistry.h"

namespace korven {

void RegistrarComponentesPropios(ComponentRegistry& registro) {
    registro.Registrar(QStringLiteral("ClientBook.Listing"),
                       [](AppContext& ctx) { return std::make_unique<ClientBookListing>(ctx); });
    registro.Registrar(QStringLiteral("OperationCopier.Main"),
                       [](AppContext& ctx) { return std::make_unique<OperationCopierMain>(ctx); });
    registro.Registrar(QStringLiteral("DesktopMail.Main"),
                       [](AppContext& ctx) { return std::make_unique<DesktopMailMain>(ctx); });
    registro.Registrar(QStringLiteral("ValueRules.Main"),
                       [](AppContext&) { return std::make_unique<ValueRulesMain>(); });
}

} // namespace korven
