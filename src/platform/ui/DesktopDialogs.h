#pragma once

#include "platform/Dialogos.h"

#include <QMessageBox>

namespace korven {

// The dialogs service of the desktop program: real modal boxes over the active window.
class DesktopDialogs : public Dialogos {
public:
    void Mensaje(const QString& texto, const QString& titulo, Icono icono) override;
    bool Pregunta(const QString& texto, const QString& titulo, Icono icono) override;
    std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo,
                                      int largoMaximo, const QString& porDefecto) override;

    // The box's icon for each icon of the service.
    static QMessageBox::Icon IconoQt(Icono icono);
};

} // namespace korven
