#pragma once

// Driving screens from the keyboard as a clerk does: keys go to the widget that has the focus,
// and a modal screen opened on the way is answered by an action run once it is up.

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace korven::test {

inline QWidget* Foco() {
    if (QWidget* w = QApplication::focusWidget())
        return w;
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

// A list screen (FrmListado) answered by typing in its search box and Enter.
inline void ElegirEnListado(const QString& busqueda) {
    AlAbrirse(QStringLiteral("FrmListado"), [busqueda](QWidget* w) {
        QWidget* caja = w->findChild<QWidget*>(QStringLiteral("TxtBs"));
        QTest::keyClicks(caja, busqueda);
        QTest::keyClick(caja, Qt::Key_Return);
    });
}

} // namespace korven::test
