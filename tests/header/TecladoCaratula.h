#pragma once

// Typing a run of fields as Enter leads from one to the next.

#include "support/Pantallas.h"

#include <initializer_list>
#include <utility>

namespace korven::test {

// Each field must have the focus when its turn comes: the text is typed and Enter pressed.
// Answers false (and says where the focus was) at the first field out of its turn.
inline bool Campos(std::initializer_list<std::pair<const char*, const char*>> campos) {
    for (const auto& [nombre, texto] : campos) {
        if (NombreFoco() != QLatin1String(nombre)) {
            qWarning("El foco esta en %s y no en %s", qPrintable(NombreFoco()), nombre);
            return false;
        }
        Escribir(QString::fromUtf8(texto));
        Tecla(Qt::Key_Return);
    }
    return true;
}

// Replaces what the focused field holds and presses Enter.
inline void Reemplazar(const QString& texto) {
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(texto);
    Tecla(Qt::Key_Return);
}

} // namespace korven::test
