#pragma once

#include "platform/Dialogos.h"

#include <QList>
#include <QStringList>
#include <deque>

namespace korven {

// Answers questions and input boxes from a script and keeps every message shown. A question or
// input box with no scripted answer left is an error (the test asked for more than it planned).
class ScriptedDialogs : public Dialogos {
public:
    struct Registro {
        enum class Tipo { Mensaje, Pregunta, Texto } tipo;
        QString texto;
        QString titulo;
        Icono icono;
    };

    void Mensaje(const QString& texto, const QString& titulo, Icono icono) override;
    bool Pregunta(const QString& texto, const QString& titulo, Icono icono) override;
    std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo,
                                      int largoMaximo, const QString& porDefecto) override;

    // Next answers, in order.
    void ResponderSi() { respuestas_.push_back(true); }
    void ResponderNo() { respuestas_.push_back(false); }
    void ResponderTexto(const QString& t) { textos_.push_back(t); }
    void ResponderCancelar() { textos_.push_back(std::nullopt); }
    // Answer every question with this when the script is empty (otherwise it is an error).
    void ResponderSiempre(bool respuesta) { siempre_ = respuesta; }

    const QList<Registro>& registro() const { return registro_; }
    // Texts of the messages only (not the questions), in order.
    QStringList mensajes() const;
    // Texts of everything shown, messages, questions and prompts, in order.
    QStringList todo() const;
    void Limpiar() { registro_.clear(); }
    bool guionAgotado() const { return respuestas_.empty() && textos_.empty(); }

private:
    QList<Registro> registro_;
    std::deque<bool> respuestas_;
    std::deque<std::optional<QString>> textos_;
    std::optional<bool> siempre_;
};

} // namespace korven
