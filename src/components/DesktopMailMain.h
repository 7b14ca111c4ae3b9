#pragma once

#include <QObject>
#include <QString>

namespace korven {

class AppContext;

// DesktopMail.Main: the mail bridge of the desktop. Its input box asks through the dialogs
// service of the context, so that the same question reaches a clerk or a test's script.
class DesktopMailMain : public QObject {
    Q_OBJECT
public:
    explicit DesktopMailMain(AppContext& ctx, QObject* parent = nullptr);

    // The typed text, cut to the maximum length when one is given; empty on cancel.
    Q_INVOKABLE QString ExInputBox(const QString& pregunta, const QString& titulo, int largoMaximo,
                                   const QString& tipo, const QString& porDefecto, bool opcion);

private:
    AppContext& ctx_;
};

} // namespace korven
