#pragma once

// An Operation ready to assemble, for the tests of the assembly that need volume and for its
// benchmark: the header of the demo Operation DEMO-IC04-001 under a new number, and n goods
// lines taken in turn from the lines of every demo Operation (their suffixes are complete),
// five consecutive lines to an item: the item changes position, then country of origin, then
// state of the merchandise; the five lines of an item differ in unit price, so each is a group.
// The demo Operations must be loaded.

#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QStringList>
#include <cmath>

namespace korven::test {

inline void OperacionParaArmar(StoreDirectory& stores, const QString& interno, int n) {
    Conexion& c = stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    SentenciasPreparadas preparadas;
    Transaccion t(stores, {QStringLiteral("INTERNOS")});
    QStringList cols = c.Columnas(QStringLiteral("caratula"));
    cols.removeAll(QStringLiteral("interno"));
    cols.removeAll(QStringLiteral("factura8"));
    c.Ejecutar(QStringLiteral("insert into caratula (interno, factura8, %1) select ?, 'S', %1 "
                              "from caratula where interno = 'DEMO-IC04-001'")
                   .arg(cols.join(QStringLiteral(", "))),
               {interno});

    QStringList campos = c.Columnas(QStringLiteral("subitems"));
    for (const char* fuera :
         {"id", "interno", "idpais", "idpaisproc", "estadomerc", "preciounitario", "fob", "idext"})
        campos.removeAll(QString::fromLatin1(fuera));
    const Recordset demo = c.Abrir(QStringLiteral("select cantidad, preciounitario, %1 from "
                                                  "subitems where interno like 'DEMO-%' order by "
                                                  "interno, id")
                                       .arg(campos.join(QStringLiteral(", "))));
    const Recordset paises = stores.getDataConnectionByEntity(QStringLiteral("SYSTABLAS"))
                                 .Abrir(QStringLiteral("select id from pais order by id"));
    const int lineas = demo.RecordCount();
    const int p = paises.RecordCount();
    QStringList marcas;
    for (int i = 0; i < campos.size() + 7; ++i)
        marcas << QStringLiteral("?");
    const QString sql = QStringLiteral("insert into subitems (id, interno, idpais, idpaisproc, "
                                       "estadomerc, preciounitario, fob, %1) values (%2)")
                            .arg(campos.join(QStringLiteral(", ")), marcas.join(QLatin1Char(',')));
    for (int i = 0; i < n; ++i) {
        const int k = i / 5;
        const auto& base = demo.Fila(k % lineas);
        const QString pais = EsNull(paises.Fila((k / lineas) % p).at(0));
        const double precio = EsNumero(base.at(1)) + (i % 5) * 0.01;
        const double fob = std::round(EsNumero(base.at(0)) * precio * 100) / 100;
        QVariantList v{i + 1,  interno, pais, pais, QString::number(k / (lineas * p) % 4 + 1),
                       precio, fob};
        for (size_t j = 2; j < base.size(); ++j)
            v << base.at(j);
        c.Ejecutar(sql, v);
    }
    t.Confirmar();
}

} // namespace korven::test
