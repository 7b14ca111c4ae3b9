#pragma once

// Rows of a data-driven test written as a text table: one row a line, fields separated by "|",
// the first field naming the row; blank lines and lines starting with "#" are left out. Each row
// goes in once under "," and once under "." as the system separator (columns "sep" and "f"), or
// once when the separator does not matter. Numbers in the fields are written with ".".

#include "platform/Formato.h"
#include "platform/KorvenError.h"

#include <QStringList>
#include <QTest>
#include <functional>

namespace korven::test {

inline void FilasDeTexto(const char* texto, bool ambosSeparadores = true) {
    QTest::addColumn<QString>("sep");
    QTest::addColumn<QStringList>("f");
    const QStringList seps = ambosSeparadores ? QStringList{",", "."} : QStringList{"."};
    for (const QString& sep : seps)
        for (const QString& linea : QString::fromUtf8(texto).split(QLatin1Char('\n'))) {
            if (linea.trimmed().isEmpty() || linea.trimmed().startsWith(QLatin1Char('#')))
                continue;
            QStringList f;
            for (const QString& campo : linea.split(QLatin1Char('|')))
                f << campo.trimmed();
            const QString nombre = ambosSeparadores ? f.first() + " [" + sep + "]" : f.first();
            QTest::newRow(qPrintable(nombre)) << sep << f;
        }
}

// A field read as a number written with ".".
inline double N(const QString& campo) {
    bool ok = false;
    const double n = campo.toDouble(&ok);
    if (!ok)
        qFatal("campo que no es numero: %s", qPrintable(campo));
    return n;
}

// The figures a test got, compared with the fields of its row from the field desde on; says the
// first that differs.
inline bool Cifras(const QStringList& f, int desde, std::initializer_list<double> cifras) {
    int i = desde;
    for (double x : cifras) {
        const double e = N(f.value(i));
        if (!(x == e || qFuzzyCompare(x, e))) {
            qWarning("campo %d: %.15g, se esperaba %s", i, x, qPrintable(f.value(i)));
            return false;
        }
        ++i;
    }
    return true;
}

// The number of the failure an action throws, or -1 when it throws none.
inline int NumeroDeError(const std::function<void()>& accion, QString* descripcion = nullptr) {
    try {
        accion();
    } catch (const KorvenError& e) {
        if (descripcion)
            *descripcion = e.descripcion();
        return e.numero();
    }
    return -1;
}

} // namespace korven::test

#define FILA()                                                                                     \
    QFETCH(QString, sep);                                                                          \
    QFETCH(QStringList, f);                                                                        \
    ::korven::SeparadorDecimalScope scope_(sep)
