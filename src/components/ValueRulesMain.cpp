#include "components/ValueRulesMain.h"

#include "platform/ValueRules.h"

namespace korven {

QString ValueRulesMain::EsNull(const QVariant& valor) const {
    return korven::EsNull(valor);
}
double ValueRulesMain::EsNumero(const QVariant& valor) const {
    return korven::EsNumero(valor);
}

} // namespace korven
