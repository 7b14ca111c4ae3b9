#pragma once

#include <QString>

class QWidget;

namespace korven {

// Files and folders for the screens: the folder browser.
class ClassFile {
public:
    // Asks for a folder under the title, starting at the given one; empty when the user cancels.
    static QString Carpeta(const QString& titulo, const QString& inicial = {},
                           QWidget* padre = nullptr);
};

} // namespace korven
