#pragma once

#include <QString>
#include <QVariant>
#include <functional>

class QDialog;
class QWidget;

namespace korven {

class AppContext;
class Pantallas;

// The desktop side of opening screens: a form is registered under its name with a function that
// builds it, and opening it shows it modally over the active window and answers its
// "Respuesta" property once it closes.
using FabricaFormulario =
    std::function<QDialog*(AppContext& ctx, const QVariantMap& args, QWidget* padre)>;

void RegistrarFormulario(Pantallas& pantallas, const QString& nombre, FabricaFormulario fabrica);

// Shows the form modally and waits until it closes; its "Respuesta" property.
QVariant MostrarModal(QDialog* formulario);

// Registers a form class F, built as F(ctx, args, padre).
template <class F> void RegistrarFormulario(Pantallas& pantallas, const QString& nombre) {
    RegistrarFormulario(pantallas, nombre,
                        [](AppContext& ctx, const QVariantMap& args, QWidget* padre) -> QDialog* {
                            return new F(ctx, args, padre);
                        });
}

} // namespace korven
