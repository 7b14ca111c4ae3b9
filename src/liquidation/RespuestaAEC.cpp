#include "liquidation/RespuestaAEC.h"

namespace korven {

QString RespuestaAEC(bool calcular, bool reposicion) {
    if (!calcular)
        return QStringLiteral("N");
    return reposicion ? QStringLiteral("R") : QStringLiteral("P");
}

} // namespace korven
