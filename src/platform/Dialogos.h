#pragma once

#include <QString>
#include <optional>

namespace korven {

// The one way work code talks to the user. The desktop program answers with modal boxes;
// tests and korven-admin answer from a script and keep every message.
class Dialogos {
public:
    enum class Icono { Ninguno, Critico, Pregunta, Exclamacion, Informacion };

    virtual ~Dialogos() = default;
    // A message with an OK button.
    virtual void Mensaje(const QString& texto, const QString& titulo = QStringLiteral("KORVEN"),
                         Icono icono = Icono::Ninguno) = 0;
    // A yes/no question; true for yes.
    virtual bool Pregunta(const QString& texto, const QString& titulo = QStringLiteral("KORVEN"),
                          Icono icono = Icono::Pregunta) = 0;
    // Asks for a text (input box); nothing when the user cancels.
    virtual std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo,
                                              int largoMaximo = 0,
                                              const QString& porDefecto = {}) = 0;
};

} // namespace korven
