#pragma once

// Stores for the assembly tests: the reference data of the program, the nomenclator's
// component, and helpers to write an Operation's header and goods lines and to read back rows
// of any table as text.

#include "assembly/ArmadoItems.h"
#include "assembly/CorridaArmado.h"
#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "schema/OperacionesDemo.h"
#include "support/TestStores.h"

#include <QStringList>
#include <QTest>
#include <functional>
#include <memory>

namespace korven::test {

inline void PrepararArmado(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
    RegistrarComponentesNomenclador(ts.ctx().componentes());
}

// Stores with the demo Operations, one of them assembled by the run (its questions answered
// no); the messages of the run are forgotten.
inline std::unique_ptr<TestStores> DemoArmada(Motor motor, const QString& interno) {
    auto ts = std::make_unique<TestStores>(motor);
    PrepararArmado(*ts);
    schema::OperacionesDemo(ts->stores(), schema::CarpetaDatos(ts->directorio())).Cargar();
    ts->dialogos().ResponderSiempre(false);
    ts->ctx().ArmadoResultado = QStringLiteral("SI");
    ProgresoArmado sinVentana;
    ArmadoItems(ts->ctx(), interno, sinVentana).Ejecutar();
    if (ts->ctx().ArmadoResultado != QLatin1String("SI"))
        qFatal("El armado de la demostración falló");
    ts->dialogos().Limpiar();
    return ts;
}

// "columna=valor;columna=valor" as an insert into the table. Values are bound as text, which
// each store converts to the column's type.
inline void Insertar(TestStores& ts, const QString& tabla, const QString& pares,
                     const QString& entidad = QStringLiteral("INTERNOS")) {
    QStringList cols, marcas;
    QVariantList valores;
    for (const QString& p : pares.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int igual = p.indexOf(QLatin1Char('='));
        cols << p.left(igual).trimmed();
        marcas << QStringLiteral("?");
        valores << QVariant(p.mid(igual + 1));
    }
    ts.conexion(entidad).Ejecutar(
        QStringLiteral("insert into %1 (%2) values (%3)")
            .arg(tabla, cols.join(QLatin1Char(',')), marcas.join(QLatin1Char(','))),
        valores);
}

// A header ready to assemble (factura8 "S") with the given columns.
inline void Caratula(TestStores& ts, const QString& interno, const QString& pares) {
    Insertar(ts, QStringLiteral("caratula"),
             QStringLiteral("interno=%1;fechaalta=2026-11-20;factura8=S;").arg(interno) + pares);
}

// A goods line with the given columns.
inline void Linea(TestStores& ts, const QString& interno, int id, const QString& pares) {
    Insertar(ts, QStringLiteral("subitems"),
             QStringLiteral("interno=%1;id=%2;").arg(interno).arg(id) + pares);
}

// Every row of a query, its values joined by "|", numbers as "0.####" (NULL as "null").
inline QStringList Filas(TestStores& ts, const QString& sql, const QVariantList& parametros = {}) {
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS")).Abrir(sql, parametros);
    QStringList r;
    for (int i = 0; i < rs.RecordCount(); ++i) {
        QStringList f;
        for (const QVariant& v : rs.Fila(i)) {
            const int t = v.metaType().id();
            if (v.isNull())
                f << QStringLiteral("null");
            else if (t == QMetaType::Double || t == QMetaType::Int || t == QMetaType::LongLong)
                f << Formato(v.toDouble(), QStringLiteral("0.####"), QStringLiteral("."));
            else
                f << v.toString();
        }
        r << f.join(QLatin1Char('|'));
    }
    return r;
}

// Goods lines 1, 2, ... of an Operation from "col=val;... / col=val;...": each line's own
// columns, then those of base that it does not name.
inline void Lineas(TestStores& ts, const QString& interno, const QString& lineas,
                   const QString& base = {}) {
    const QStringList l = lineas.split(QStringLiteral(" / "), Qt::SkipEmptyParts);
    for (int i = 0; i < l.size(); ++i) {
        QString pares = l[i];
        for (const QString& p : base.split(QLatin1Char(';'), Qt::SkipEmptyParts))
            if (!(';' + l[i]).contains(';' + p.section('=', 0, 0) + '='))
                pares += ';' + p;
        Linea(ts, interno, i + 1, pares);
    }
}

// The error an action raised as "number|description|source"; empty when it raised none.
inline QString ErrorDe(const std::function<void()>& accion) {
    try {
        accion();
    } catch (const KorvenError& e) {
        return QStringLiteral("%1|%2|%3").arg(e.numero()).arg(e.descripcion(), e.origen());
    }
    return {};
}

// Rows written in a case table as one text separated by blanks.
inline QStringList Lista(const char* filas) {
    return QString::fromUtf8(filas).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// A data-driven test of one case struct (with its name in n), each case on both engines: the
// columns "motor" and "c".
template <typename T> void CasosPorMotor(std::initializer_list<T> casos) {
    QTest::addColumn<int>("motor");
    QTest::addColumn<T>("c");
    for (const T& c : casos)
        for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
            QTest::addRow("%s %s", m == Motor::SQLite ? "sqlite" : "postgresql", c.n)
                << static_cast<int>(m) << c;
}

// Rows of an Operation, one table a line: "tabla:col,col|val,val|val,val".
inline void TablasOperacion(TestStores& ts, const QString& interno, const QString& datos) {
    for (const QString& t : datos.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const auto dos = t.indexOf(QLatin1Char(':'));
        QStringList filas = t.mid(dos + 1).split(QLatin1Char('|'));
        const QStringList cols = filas.takeFirst().split(QLatin1Char(','));
        for (const QString& f : filas) {
            QString pares = QStringLiteral("interno=") + interno;
            for (int i = 0; i < cols.size(); ++i)
                pares += QLatin1Char(';') + cols[i] + QLatin1Char('=') +
                         f.section(QLatin1Char(','), i, i);
            Insertar(ts, t.left(dos), pares);
        }
    }
}

// The messages shown so far as "title|icon|text".
inline QStringList Dichos(TestStores& ts) {
    QStringList r;
    for (const auto& m : ts.dialogos().registro())
        r << m.titulo + QLatin1Char('|') + QString::number(static_cast<int>(m.icono)) +
                 QLatin1Char('|') + m.texto;
    return r;
}

} // namespace korven::test
