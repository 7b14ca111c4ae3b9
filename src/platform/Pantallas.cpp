#include "platform/Pantallas.h"

#include "platform/KorvenError.h"

namespace korven {

void Pantallas::Registrar(const QString& nombre, Abridor abridor) {
    abridores_.insert(nombre.toUpper(), std::move(abridor));
}

bool Pantallas::Registrada(const QString& nombre) const {
    return abridores_.contains(nombre.toUpper());
}

QStringList Pantallas::Nombres() const {
    QStringList n = abridores_.keys();
    n.sort();
    return n;
}

QVariant Pantallas::AbrirModal(AppContext& ctx, const QString& nombre,
                               const QVariantMap& args) const {
    const auto a = abridores_.constFind(nombre.toUpper());
    if (a == abridores_.cend())
        throw KorvenError(KorvenError::ComponenteNoInstalado,
                          QStringLiteral("La pantalla %1 no está instalada.").arg(nombre), nombre);
    return (*a)(ctx, args);
}

} // namespace korven
