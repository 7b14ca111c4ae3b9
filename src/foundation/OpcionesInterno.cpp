#include "foundation/OpcionesInterno.h"

#include "platform/SettingsStore.h"

namespace korven {

namespace {
const QString kApp = QStringLiteral("KORVEN");
}

void OpcionesInterno::GuardarNuevo(const QString& interno) {
    for (int i = 0; i < CantidadFlags; ++i)
        settings_.SaveSetting(kApp, interno, ClaveFlag(i), QStringLiteral("1"));
    settings_.SaveSetting(kApp, interno, QStringLiteral("COEFEXPO"), QStringLiteral("0"));
}

QString OpcionesInterno::LeerClave(const QString& interno, const QString& clave) {
    const QString v = settings_.GetSetting(kApp, interno, clave);
    return v.isEmpty() ? QStringLiteral("1") : v;
}

OpcionesInterno::Valores OpcionesInterno::Leer(const QString& interno) {
    Valores v;
    for (int i = 0; i < CantidadFlags; ++i)
        v.flags[static_cast<size_t>(i)] = LeerClave(interno, ClaveFlag(i)) == QStringLiteral("1");
    v.desc = LeerClave(interno, QStringLiteral("DESC"));
    v.coefExpo = LeerClave(interno, QStringLiteral("COEFEXPO")) == QStringLiteral("1");
    return v;
}

void OpcionesInterno::Guardar(const QString& interno, const Valores& valores, bool guardarCoef) {
    for (int i = 0; i < CantidadFlags; ++i)
        settings_.SaveSetting(kApp, interno, ClaveFlag(i),
                              valores.flags[static_cast<size_t>(i)] ? QStringLiteral("1")
                                                                    : QStringLiteral("0"));
    if (guardarCoef)
        settings_.SaveSetting(kApp, interno, QStringLiteral("COEFEXPO"),
                              valores.coefExpo ? QStringLiteral("1") : QStringLiteral("0"));
}

void OpcionesInterno::Borrar(const QString& interno) {
    settings_.DeleteSetting(kApp, interno, QStringLiteral("PROCESOS"));
    for (int i = 0; i < CantidadFlags; ++i)
        settings_.DeleteSetting(kApp, interno, ClaveFlag(i));
    settings_.DeleteSetting(kApp, interno, QStringLiteral("COEFEXPO"));
}

} // namespace korven
