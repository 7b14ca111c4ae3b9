#pragma once

// Typing goods lines on the goods screen as a clerk does.

#include "support/Pantallas.h"

#include <QString>
#include <QTest>
#include <functional>

namespace korven::test {

// Steps "Campo:texto" (Enter moves on until the field has the focus; the text is typed and
// Enter pressed) and "Up"; "{s}" in a text is the decimal separator. Then, when lineas (the
// count of stored lines) is given, Enter until the line is saved.
inline void Teclear(const QString& pasos, const QString& sep,
                    const std::function<int()>& lineas = {}) {
    const int antes = lineas ? lineas() : 0;
    for (QString paso : pasos.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        paso.replace(QStringLiteral("{s}"), sep);
        if (paso == QStringLiteral("Up")) {
            Tecla(Qt::Key_Up);
            continue;
        }
        const QString campo = paso.section(QLatin1Char(':'), 0, 0);
        for (int i = 0; i < 40 && NombreFoco() != campo; ++i)
            Tecla(Qt::Key_Return);
        QCOMPARE(NombreFoco(), campo);
        Escribir(paso.section(QLatin1Char(':'), 1));
        Tecla(Qt::Key_Return);
    }
    for (int i = 0; lineas && i < 40 && lineas() == antes; ++i)
        Tecla(Qt::Key_Return);
}

} // namespace korven::test
