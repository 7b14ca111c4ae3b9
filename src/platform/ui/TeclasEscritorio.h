#pragma once

#include <QObject>

class QCoreApplication;

namespace korven {

// The keys every screen shares, watched once for the whole program: Enter on a focused button
// presses it as Space does, and F6 on a combo box opens its list as it does for a code field.
// The forms' own key handling (Enter as Tab in the data fields, F6 on the code fields) is
// untouched: only buttons and combo boxes are looked at.
class TeclasEscritorio : public QObject {
public:
    explicit TeclasEscritorio(QObject* parent = nullptr);

    // Installs the one watcher on the application (once; a second call does nothing).
    static void Instalar(QCoreApplication* app);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
};

} // namespace korven
