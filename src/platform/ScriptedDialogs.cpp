#include "platform/ScriptedDialogs.h"

#include <QtGlobal>

namespace korven {

void ScriptedDialogs::Mensaje(const QString& texto, const QString& titulo, Icono icono) {
    registro_.append({Registro::Tipo::Mensaje, texto, titulo, icono});
}

bool ScriptedDialogs::Pregunta(const QString& texto, const QString& titulo, Icono icono) {
    registro_.append({Registro::Tipo::Pregunta, texto, titulo, icono});
    if (!respuestas_.empty()) {
        const bool r = respuestas_.front();
        respuestas_.pop_front();
        return r;
    }
    if (siempre_)
        return *siempre_;
    // A question the script did not plan for is a fault of the test or of the code under test.
    qFatal("Pregunta sin respuesta en el guion: %s", qPrintable(texto));
    return false;
}

std::optional<QString> ScriptedDialogs::PedirTexto(const QString& pregunta, const QString& titulo,
                                                   int largoMaximo, const QString&) {
    registro_.append({Registro::Tipo::Texto, pregunta, titulo, Icono::Ninguno});
    if (textos_.empty())
        qFatal("Pedido de texto sin respuesta en el guion: %s", qPrintable(pregunta));
    std::optional<QString> r = textos_.front();
    textos_.pop_front();
    if (r && largoMaximo > 0)
        r = r->left(largoMaximo);
    return r;
}

QStringList ScriptedDialogs::mensajes() const {
    QStringList r;
    for (const Registro& x : registro_)
        if (x.tipo == Registro::Tipo::Mensaje)
            r << x.texto;
    return r;
}

QStringList ScriptedDialogs::todo() const {
    QStringList r;
    for (const Registro& x : registro_)
        r << x.texto;
    return r;
}

} // namespace korven
