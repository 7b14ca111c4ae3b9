#include "platform/AppContext.h"

#include "platform/QueryDesk.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

AppContext::AppContext(StoreDirectory& stores, Dialogos& dialogos, SettingsStore& settings,
                       QString directorioPrograma)
    : stores_(stores), dialogos_(dialogos), settings_(settings),
      directorioPrograma_(DirectorioNormal(directorioPrograma)) {}

AppContext::~AppContext() = default;

QString AppContext::rutaIni() const {
    return directorioPrograma_ + QStringLiteral("KORVEN.ini");
}

QueryDesk& AppContext::queryDesk(int n) {
    auto& q = queryDesks_[n < 0 || n > 2 ? 0 : n];
    if (!q)
        q = std::make_unique<QueryDesk>(stores_);
    return *q;
}

} // namespace korven
