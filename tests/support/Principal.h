#pragma once

// The main of a test program that holds several test classes: each runs in
// turn, on one application object, and the program fails when any of them
// fails.

#include <QCoreApplication>
#include <QTest>
#include <type_traits>

namespace korven::test {

template <class Clase> int EjecutarClase(int argc, char** argv) {
    Clase c;
    return QTest::qExec(&c, argc, argv);
}

template <class App, class... Clases> int EjecutarClases(int argc, char** argv) {
    App app(argc, argv);
    if constexpr (!std::is_same_v<App, QCoreApplication>)
        app.setAttribute(Qt::AA_Use96Dpi, true);
    int fallas = 0;
    ((fallas += EjecutarClase<Clases>(argc, argv)), ...);
    return fallas > 0 ? 1 : 0;
}

} // namespace korven::test
