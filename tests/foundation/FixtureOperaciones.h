#pragma once

// Operations made by hand for the tests of the register, the hub and the lock.

#include "platform/Conexion.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/OperacionGrande.h"
#include "support/TestStores.h"

#include <QDate>
#include <QStringList>
#include <QVariantMap>
#include <memory>

namespace korven::test {

// One row of a data-driven test per engine, named "sqlite <name>" and "postgresql <name>", the
// engine in the first column "motor" and the given values after it.
#define FILA_MOTORES(nombre, ...)                                                                  \
    for (int m_ : {0, 1})                                                                          \
    QTest::addRow("%s %s", m_ ? "postgresql" : "sqlite", qPrintable(QString(nombre)))              \
        << m_ << __VA_ARGS__

// Inserts one row with bound values.
inline void Insertar(TestStores& ts, const QString& entidad, const QString& tabla,
                     const QVariantMap& valores) {
    QStringList marcas;
    for (int i = 0; i < valores.size(); ++i)
        marcas << QStringLiteral("?");
    ts.conexion(entidad).Ejecutar(
        QStringLiteral("insert into %1 (%2) values (%3)")
            .arg(tabla, valores.keys().join(QLatin1Char(',')), marcas.join(QLatin1Char(','))),
        valores.values());
}

inline int Contar(TestStores& ts, const QString& entidad, const QString& tabla,
                  const QString& interno) {
    return static_cast<int>(EsNumero(
        ts.conexion(entidad).Escalar(QStringLiteral("select count(*) from %1 where interno = %2")
                                         .arg(tabla, SqlTexto(interno)))));
}

inline QVariant Valor(TestStores& ts, const QString& sql, const QString& entidad = "INTERNOS") {
    return ts.conexion(entidad).Escalar(sql);
}

// A header with the values of a complete import: sub-regime IC04 (import), customs office 001,
// client, broker and vendor, FOB 1000 in dollars with freight and insurance.
inline QVariantMap CaratulaCompleta(const QString& interno) {
    QVariantMap c{{"interno", interno},     {"fechaalta", QDate(2024, 3, 15)},
                  {"idsubreg", "IC04"},     {"idaduana", "001"},
                  {"idvendedor", "V1"},     {"factura8", "N"},
                  {"onccahabilitado", "N"}, {"idcondiciondeventa", "FOB"}};
    const QVariantMap nombres{{"cuitcliente", "30500010912"},
                              {"cuitdespaduana", "20111111112"},
                              {"factura2", "Vendedor Uno"},
                              {"factura3", "Despachante Uno"},
                              {"factura7", "Cliente Uno"}};
    const QVariantMap valores{
        {"fobdivisas", 1000.0},  {"fobcoddivisas", "DOL"},    {"fobdivcambio", 1.0},
        {"fletedivisas", 50.0},  {"fletecoddivisas", "DOL"},  {"fletedivcambio", 1.0},
        {"segurodivisas", 10.0}, {"segurocoddivisas", "DOL"}, {"segurodivcambio", 1.0}};
    c.insert(nombres);
    c.insert(valores);
    return c;
}

// Inserts a complete header with some of its columns changed.
inline void InsertarCaratula(TestStores& ts, const QString& interno,
                             const QVariantMap& cambios = {}) {
    QVariantMap c = CaratulaCompleta(interno);
    c.insert(cambios);
    Insertar(ts, "INTERNOS", "caratula", c);
}

// Every sub-regime has its fields defined, none hidden.
inline void CargarDest(TestStores& ts) {
    for (const char* s : {"IC04", "EC01", "IT01", "ET01", "EC02", "IDA4", "IC06", "TG01", "LAPI"})
        Insertar(ts, "USUARIO", "dest", {{"subreg", s}});
}

// The master rows the headers above name.
inline void CargarMaestros(TestStores& ts) {
    // Sub-regime and its kind: I import, E export.
    for (const QString& s : QStringLiteral("IC04I EC01E IT01I ET01E EC02E IDA4I IC06I TG01I ZZ99X")
                                .split(QLatin1Char(' ')))
        Insertar(
            ts, "INTERNOS", "sta",
            {{"id", s.left(4)}, {"descripcion", "Sub " + s.left(4)}, {"cstaimpexp", s.mid(4)}});
    Insertar(ts, "INTERNOS", "aduana", {{"id", "001"}, {"descripcion", "BUENOS AIRES"}});
    Insertar(ts, "PERSONAL", "clientes", {{"cuit", "30500010912"}, {"nombre", "Cliente Uno"}});
    Insertar(ts, "PERSONAL", "despadu", {{"cuit", "20111111112"}, {"nombre", "Despachante Uno"}});
    CargarDest(ts);
}

// Stores with every table and the master rows above.
inline std::unique_ptr<TestStores> StoresConMaestros(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    CargarMaestros(*ts);
    return ts;
}

// Every table an Operation owns, and the ones that stay behind when it is deleted (idrel,
// sysflag, coment); the rows of each under one number.
inline QStringList TablasDeOperacion() {
    return FilasDeOperacionGrande(0).keys() << QStringLiteral("interno");
}

inline QMap<QString, int> Todo(TestStores& ts, const QString& interno) {
    return FilasDe(ts.stores(), interno, TablasDeOperacion());
}

// An Operation with rows in every table it owns, and in the ones that stay behind when it is
// deleted, open on PC-OTRA since 16/03/2024.
inline void OperacionConTodo(TestStores& ts, const QString& interno) {
    auto fila = [&](const char* tabla, QVariantMap v, const char* entidad = "INTERNOS") {
        v.insert("interno", interno);
        Insertar(ts, entidad, tabla, v);
    };
    Insertar(ts, "INTERNOS", "caratula", CaratulaCompleta(interno));
    fila("subitems", {{"id", 1},
                      {"ncm", "8471.30.12"},
                      {"fob", 600.0},
                      {"cantidad", 2.0},
                      {"descripcion", "Notebook d'acero"}});
    fila("subitems", {{"id", 2}, {"ncm", "8471.60.52"}, {"fob", 400.0}, {"cantidad", 4.0}});
    fila("groupsubitems", {{"id", 1}, {"idsub", 1}});
    fila("item", {{"id", 0}});
    fila("item", {{"id", 1}});
    fila("liqcero", {{"idconcepto", "010"}, {"valor", 5.0}});
    fila("itemventaja", {{"iditem", 0}, {"idventaja", "V"}});
    fila("itemref", {{"referencia", "R"}, {"valor", "1"}});
    fila("itempresu", {{"concepto", "C"}, {"valordolar", 1.0}});
    fila("itemliq", {{"iditem", 1}, {"idconceptos", "010"}});
    fila("iteminfo", {{"iditem", 1}, {"idinfo", "I"}});
    fila("interno", {{"maquina", "PC-OTRA"}, {"usuario", ""}, {"fecha", QDate(2024, 3, 16)}});
    fila("facturas", {{"orden", 1}, {"factura", "A-0001"}});
    fila("facturas", {{"orden", 2}, {"factura", "A-0002"}});
    fila("prorrateo", {{"codigo", "P1"}, {"descripcion", "Flete"}, {"valor", 12.5}});
    fila("descargas", {{"dit", "D"}, {"item", 1}});
    fila("hval", {}, "SYSTABLAS");
    fila("hvalexp", {}, "SYSTABLAS");
    fila("idrel", {{"idroot", 1}, {"idsub", 1}});
    fila("sysflag", {{"flag", "F"}, {"valor", "S"}});
    fila("coment", {{"coment", "Llega el lunes"}}, "SYSTABLAS");
}

} // namespace korven::test
