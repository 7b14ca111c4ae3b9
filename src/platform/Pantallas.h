#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

namespace korven {

class AppContext;

// The one place through which code opens another screen by name ("FrmABMClientes",
// "FrmListado", ...). Each screen library registers its forms; work code that must open a
// modal screen asks here and never includes a widget header. A test registers its own opener
// (a real form it drives with keys, or a scripted stand-in) under the same name.
class Pantallas {
public:
    // Opens the screen modally with its arguments and returns its answer (whatever the screen
    // defines; invalid when it has none).
    using Abridor = std::function<QVariant(AppContext&, const QVariantMap&)>;

    void Registrar(const QString& nombre, Abridor abridor);
    bool Registrada(const QString& nombre) const;
    // The names registered (upper-case), sorted.
    QStringList Nombres() const;
    // Throws KorvenError when no screen of that name is registered.
    QVariant AbrirModal(AppContext& ctx, const QString& nombre, const QVariantMap& args = {}) const;

private:
    QHash<QString, Abridor> abridores_; // upper-case name -> opener
};

} // namespace korven
