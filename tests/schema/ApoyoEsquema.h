#pragma once

// What the schema tests share: the data folder, counts and rows of a query, files written for a
// test, korven-admin run in process, and the check of an error's text.

#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Administracion.h"
#include "support/TestStores.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace korven::test {

inline QString Datos() {
    return QDir(qEnvironmentVariable("KORVEN_SOURCE_DIR")).filePath(QStringLiteral("data"));
}

// A count: a whole select, or "select count(*) from " followed by the text given.
inline int Contar(Conexion& c, const QString& sql) {
    const bool entera = sql.startsWith(QLatin1String("select "));
    return static_cast<int>(
        EsNumero(c.Escalar(entera ? sql : QStringLiteral("select count(*) from ") + sql)));
}

// The rows of a query, each as its values joined by "|" (NULL as "-").
inline QStringList Filas(Conexion& c, const QString& sql) {
    QStringList r;
    for (Recordset rs = c.Abrir(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList f;
        for (int i = 0; i < rs.Campos().size(); ++i)
            f << (rs.Fields(i).isNull() ? QStringLiteral("-") : rs.Fields(i).toString());
        r << f.join(QLatin1Char('|'));
    }
    return r;
}

inline void Escribir(const QString& ruta, const QByteArray& contenido) {
    QFile f(ruta);
    if (!f.open(QIODevice::WriteOnly))
        qFatal("No se puede escribir %s", qPrintable(ruta));
    f.write(contenido);
}

// korven-admin run in process on a program directory: exit code, output and error lines.
struct Corrida {
    int codigo = -1;
    QStringList salida, errores;
};
inline Corrida Admin(const QString& directorio, const QStringList& args) {
    QString out, err;
    Corrida c;
    {
        QTextStream so(&out), se(&err); // written out when they close
        c.codigo = schema::Administracion(so, se, directorio).Ejecutar(args);
    }
    c.salida = out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    c.errores = err.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return c;
}

} // namespace korven::test

// The expression must throw a KorvenError with exactly this text.
#define ERROR_CON_TEXTO(expresion, texto)                                                          \
    do {                                                                                           \
        try {                                                                                      \
            expresion;                                                                             \
            QFAIL("se esperaba un error");                                                         \
        } catch (const ::korven::KorvenError& e_) {                                                \
            QCOMPARE(e_.descripcion(), texto);                                                     \
        }                                                                                          \
    } while (0)
