#pragma once

#include <QString>

namespace korven {

// The answer to the question of the automotive regime, as kept per operation: "R" to calculate
// the common external tariff on a replacement part, "P" on a production part, "N" not to.
QString RespuestaAEC(bool calcular, bool reposicion);

// Keeps the answer under application "KORVEN", section "AEC", key the operation: the key is
// written empty first, as every save of goods does, then with the answer. Store is the
// settings store (anything with its SaveSetting).
template <class Store>
void GuardarRespuestaAEC(Store& settings, const QString& interno, const QString& respuesta) {
    const QString app = QStringLiteral("KORVEN");
    const QString seccion = QStringLiteral("AEC");
    settings.SaveSetting(app, seccion, interno, QString());
    settings.SaveSetting(app, seccion, interno, respuesta);
}

} // namespace korven
