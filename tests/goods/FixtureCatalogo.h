#pragma once

// Stores for the catalogue tests: every table with the reference data of the program
// (catalogues CAT-1239, CAT-3451, CAT-5433, CAT-5671 and their articles, countries, units,
// the nomenclator and its suffixes).

#include "foundation/RegistrarPantallasOperaciones.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QStringList>

namespace korven::test {

inline void PrepararCatalogo(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
    RegistrarPantallasOperaciones(ts.ctx().pantallas());
}

// The articles of a catalogue as stored, one line each: code|description|country|provenance|
// unit|state|capital good|EAN|other|ONCCA category|ONCCA cut|position|suffixes|price|kg|
// quantity|user|date.
inline QStringList FilasCatalogo(TestStores& ts, const QString& catalogo) {
    Recordset rs = ts.conexion(QStringLiteral("CATALOGOS"))
                       .Abrir(QStringLiteral("select * from catarticulos where idcatalogo = ? "
                                             "order by idarticulo"),
                              {catalogo});
    const char* const campos[] = {
        "idarticulo", "descripcion",    "idpais",     "idpaisproc",     "idunidad",    "estadomerc",
        "biendeuso",  "codigoean",      "otros",      "onccacategoria", "onccacortes", "ncm",
        "sufijos",    "preciounitario", "kgunitario", "cantidad",       "usuario",     "fecha"};
    QStringList r;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList f;
        for (const char* c : campos) {
            const QVariant v = rs.Fields(QString::fromLatin1(c));
            // The date as ISO text whichever way the engine gives it.
            f << (v.metaType().id() == QMetaType::Double ? QString::number(v.toDouble())
                  : qstrcmp(c, "fecha") == 0             ? EsNull(v).left(10)
                                                         : EsNull(v));
        }
        r << f.join(QLatin1Char('|'));
    }
    return r;
}

} // namespace korven::test
