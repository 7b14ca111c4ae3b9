#include "platform/ComponentRegistry.h"

#include "platform/KorvenError.h"

namespace korven {

void ComponentRegistry::Registrar(const QString& nombre, Fabrica fabrica) {
    fabricas_.insert(nombre.toUpper(), std::move(fabrica));
}

bool ComponentRegistry::Instalado(const QString& nombre) const {
    return fabricas_.contains(nombre.toUpper());
}

std::unique_ptr<QObject> ComponentRegistry::Crear(const QString& nombre, AppContext& ctx) const {
    const auto f = fabricas_.constFind(nombre.toUpper());
    if (f == fabricas_.cend())
        throw KorvenError(KorvenError::ComponenteNoInstalado, MensajeNoInstalado(nombre), nombre);
    std::unique_ptr<QObject> c = (*f)(ctx);
    if (!c)
        throw KorvenError(KorvenError::ComponenteNoInstalado, MensajeNoInstalado(nombre), nombre);
    c->setObjectName(nombre);
    return c;
}

QStringList ComponentRegistry::Nombres() const {
    return fabricas_.keys();
}

QString ComponentRegistry::MensajeNoInstalado(const QString& nombre) {
    return QStringLiteral("El componente %1 no está instalado.").arg(nombre);
}

} // namespace korven
