#include "platform/ui/DesktopDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>

namespace korven {

QMessageBox::Icon DesktopDialogs::IconoQt(Icono icono) {
    switch (icono) {
    case Icono::Critico:
        return QMessageBox::Critical;
    case Icono::Pregunta:
        return QMessageBox::Question;
    case Icono::Exclamacion:
        return QMessageBox::Warning;
    case Icono::Informacion:
        return QMessageBox::Information;
    case Icono::Ninguno:
        break;
    }
    return QMessageBox::NoIcon;
}

void DesktopDialogs::Mensaje(const QString& texto, const QString& titulo, Icono icono) {
    QMessageBox box(IconoQt(icono), titulo, texto, QMessageBox::Ok, QApplication::activeWindow());
    box.exec();
}

bool DesktopDialogs::Pregunta(const QString& texto, const QString& titulo, Icono icono) {
    QMessageBox box(IconoQt(icono), titulo, texto, QMessageBox::Yes | QMessageBox::No,
                    QApplication::activeWindow());
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

std::optional<QString> DesktopDialogs::PedirTexto(const QString& pregunta, const QString& titulo,
                                                  int largoMaximo, const QString& porDefecto) {
    QInputDialog dlg(QApplication::activeWindow());
    dlg.setInputMode(QInputDialog::TextInput);
    dlg.setWindowTitle(titulo);
    dlg.setLabelText(pregunta);
    dlg.setTextValue(porDefecto);
    if (largoMaximo > 0) {
        // The box's own line edit exists once the input mode is set.
        if (auto* txt = dlg.findChild<QLineEdit*>())
            txt->setMaxLength(largoMaximo);
    }
    if (dlg.exec() != QDialog::Accepted)
        return std::nullopt;
    QString r = dlg.textValue();
    if (largoMaximo > 0)
        r = r.left(largoMaximo);
    return r;
}

} // namespace korven
