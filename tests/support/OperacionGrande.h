#pragma once

// A large Operation made by the store itself (one statement per table), for the tests that kill
// actions half-way and for the benchmarks.

#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QMap>
#include <QStringList>

namespace korven::test {

// The tables an Operation owns, with the rows OperacionGrande puts in each for n lines.
inline QMap<QString, int> FilasDeOperacionGrande(int n) {
    return {
        {"caratula", 1},         {"subitems", n},  {"groupsubitems", n / 2}, {"item", n / 10 + 1},
        {"itemliq", n / 10 * 3}, {"liqcero", 20},  {"itemventaja", n / 10},  {"iteminfo", n / 10},
        {"facturas", 10},        {"prorrateo", 5}, {"itempresu", 5},         {"itemref", 5},
        {"descargas", 50},       {"hval", 1},      {"hvalexp", 1},           {"idrel", n},
        {"sysflag", 5},          {"coment", 1}};
}

// The store of a table of an Operation.
inline Conexion& ConexionDe(StoreDirectory& stores, const QString& tabla) {
    const bool sys = tabla == QStringLiteral("hval") || tabla == QStringLiteral("hvalexp") ||
                     tabla == QStringLiteral("coment");
    return stores.getDataConnectionByEntity(sys ? QStringLiteral("SYSTABLAS")
                                                : QStringLiteral("INTERNOS"));
}

inline void OperacionGrande(StoreDirectory& stores, const QString& interno, int n,
                            const QString& cliente = QStringLiteral("30500010912"),
                            const QString& alta = QStringLiteral("2026-01-15")) {
    const QVariantList x{interno};
    Conexion& cx = ConexionDe(stores, QStringLiteral("caratula"));
    auto serie = [](int hasta) {
        return QStringLiteral(" WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                              "WHERE i < %1) ")
            .arg(hasta);
    };
    cx.Ejecutar(QStringLiteral("insert into caratula (interno, fechaalta, idsubreg, idaduana, "
                               "cuitcliente, cuitdespaduana, factura7, fobdivisas, "
                               "fobcoddivisas, factura8) values (?, '%1', 'IC04', '001', ?, "
                               "'20111111112', 'Cliente Uno', 1000, 'DOL', 'N')")
                    .arg(alta),
                {interno, cliente});
    auto llenar = [&](const char* tabla, const char* columnas, const char* valores, int filas) {
        if (filas <= 0)
            return;
        cx.Ejecutar(QStringLiteral("insert into %1 (interno, %2)").arg(tabla, columnas) +
                        serie(filas) +
                        QStringLiteral("select CAST(? AS text), %1 from n").arg(valores),
                    x);
    };
    llenar("subitems", "id, ncm, fob, cantidad, descripcion, sufijos",
           "i, '8471.30.12', i * 1.5, 2, 'Linea ' || i, 'AA(1)-'", n);
    llenar("groupsubitems", "id, idsub, ncm, fob", "i, i, '8471.30.12', i * 3", n / 2);
    llenar("item", "id, ncm, fobtotal", "i - 1, '8471.30.12', i * 10", n / 10 + 1);
    llenar("itemliq", "iditem, idconceptos, total", "(i + 2) / 3, '01' || (i % 3), i", n / 10 * 3);
    llenar("liqcero", "idconcepto, valor", "'0' || i, i", 20);
    llenar("itemventaja", "iditem, idventaja", "i, 'V'", n / 10);
    llenar("iteminfo", "iditem, idinfo, valor", "i, 'I', 'x'", n / 10);
    llenar("facturas", "orden, factura", "i, 'A-' || i", 10);
    llenar("prorrateo", "codigo, descripcion, valor", "'P' || i, 'Codigo', i", 5);
    llenar("itempresu", "concepto, valordolar", "'C' || i, i", 5);
    llenar("itemref", "referencia, valor", "'R' || i, 'v'", 5);
    llenar("descargas", "dit, item, subitem", "'D', i, i", 50);
    ConexionDe(stores, QStringLiteral("hval"))
        .Ejecutar(QStringLiteral("insert into hval (interno) values (?)"), x);
    ConexionDe(stores, QStringLiteral("hvalexp"))
        .Ejecutar(QStringLiteral("insert into hvalexp (interno) values (?)"), x);
    llenar("idrel", "idroot, idsub", "i, i", n);
    llenar("sysflag", "flag, valor, item", "'F' || i, 'S', 0", 5);
    ConexionDe(stores, QStringLiteral("coment"))
        .Ejecutar(
            QStringLiteral("insert into coment (interno, coment) values (?, 'Llega el lunes')"), x);
}

// Rows of each table under one number.
inline QMap<QString, int> FilasDe(StoreDirectory& stores, const QString& interno,
                                  const QStringList& tablas) {
    QMap<QString, int> r;
    for (const QString& t : tablas) {
        const QVariant n = ConexionDe(stores, t)
                               .Abrir(QStringLiteral("select count(*) from ") + t +
                                          QStringLiteral(" where interno = ?"),
                                      {interno})
                               .Fields(0);
        r.insert(t, static_cast<int>(EsNumero(n)));
    }
    return r;
}

} // namespace korven::test
