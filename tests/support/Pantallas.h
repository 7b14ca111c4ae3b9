#pragma once

// Driving screens from the keyboard as a clerk does: keys go to the widget that has the focus,
// and a modal screen opened on the way is answered by an action run once it is up.

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace korven::test {

// A control of a screen by name; a missing one stops the test program.
template <class W> W* Control(QWidget* f, const char* nombre) {
    W* w = f->findChild<W*>(QString::fromLatin1(nombre));
    if (!w)
        qFatal("Falta el control %s", nombre);
    return w;
}
template <class W> W* Control(QWidget& f, const char* nombre) {
    return Control<W>(&f, nombre);
}

// The text of a line edit of a screen.
inline QString Texto(QWidget* f, const char* nombre) {
    return Control<QLineEdit>(f, nombre)->text();
}

// Shows a screen as the active window, where the keys go.
inline void Mostrar(QWidget& f) {
    f.show();
    f.activateWindow();
    if (!QTest::qWaitForWindowActive(&f))
        qWarning("La ventana no llego a ser la activa");
}

inline QWidget* Foco() {
    if (QWidget* w = QApplication::focusWidget()) {
        // A screen just made active may not have handed its focus to the application yet.
        QWidget* activa = QApplication::activeWindow();
        if (activa && w->window() != activa && activa->focusWidget())
            return activa->focusWidget();
        return w;
    }
    // Back from a modal screen the window under it may not be active again yet: activate it.
    QWidget* ventana = QApplication::activeModalWidget();
    if (!ventana) {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w->isWindow())
                ventana = w;
    }
    if (!ventana)
        return nullptr;
    ventana->activateWindow();
    (void)QTest::qWaitForWindowActive(ventana);
    return QApplication::focusWidget() ? QApplication::focusWidget() : ventana->focusWidget();
}

inline QString NombreFoco() {
    return Foco() ? Foco()->objectName() : QString();
}

inline void Escribir(const QString& texto) {
    QTest::keyClicks(Foco(), texto);
}

inline void Tecla(Qt::Key tecla, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QTest::keyClick(Foco(), tecla, mods);
}

// Runs the action on the modal screen of that name as soon as it is on screen (from within its
// own event loop). The action must close it.
inline void AlAbrirse(const QString& nombre, std::function<void(QWidget*)> accion) {
    auto* reloj = new QTimer;
    reloj->setInterval(5);
    QObject::connect(reloj, &QTimer::timeout, [reloj, nombre, accion] {
        QWidget* w = QApplication::activeModalWidget();
        if (!w || w->objectName() != nombre || !w->isVisible())
            return;
        reloj->stop();
        reloj->deleteLater();
        w->activateWindow();
        accion(w);
    });
    reloj->start();
}

// The same, for an action that should close the screen with its keys: when it leaves the screen
// open (a step failed on the way), the screen is closed all the same and *quedoAbierta is set,
// so that a failure ends the test instead of leaving a modal screen waiting.
inline void AlAbrirseYCerrar(const QString& nombre, std::function<void(QWidget*)> accion,
                             bool* quedoAbierta) {
    AlAbrirse(nombre, [accion, quedoAbierta](QWidget* w) {
        QPointer<QWidget> pantalla(w);
        // The keys go to the screen once it is the active window.
        if (!QTest::qWaitForWindowActive(w) ||
            !QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }))
            qWarning("La pantalla %s no se activa", qPrintable(w->objectName()));
        accion(w);
        if (pantalla && pantalla->isVisible()) {
            *quedoAbierta = true;
            pantalla->close();
        }
    });
}

// The same for whatever modal screen comes up first, once it is the active window.
inline void AlAbrirse(std::function<void(QWidget*)> accion) {
    QTimer::singleShot(0, [accion] {
        QWidget* w = QApplication::activeModalWidget();
        if (!w) {
            AlAbrirse(accion);
            return;
        }
        if (!QTest::qWaitForWindowActive(w))
            qFatal("La pantalla no se activa");
        accion(w);
    });
}

// A list screen (FrmListado) answered by typing in its search box and Enter.
inline void ElegirEnListado(const QString& busqueda) {
    AlAbrirse(QStringLiteral("FrmListado"), [busqueda](QWidget* w) {
        QWidget* caja = w->findChild<QWidget*>(QStringLiteral("TxtBs"));
        QTest::keyClicks(caja, busqueda);
        QTest::keyClick(caja, Qt::Key_Return);
    });
}

// Drives a modal dialog of a given class that the code under test opens and waits for: the
// action runs on it as soon as it is the active modal window, from within its own event loop.
template <class T> class AlAbrir {
public:
    explicit AlAbrir(std::function<void(T*)> accion) : accion_(std::move(accion)) {
        timer_.setInterval(0);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            T* d = qobject_cast<T*>(QApplication::activeModalWidget());
            if (!d)
                return;
            timer_.stop();
            ++veces_;
            accion_(d);
        });
        timer_.start();
    }
    // Times the dialog opened (and the action ran).
    int veces() const { return veces_; }

private:
    std::function<void(T*)> accion_;
    QTimer timer_;
    int veces_ = 0;
};

} // namespace korven::test
