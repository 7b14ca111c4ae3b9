#pragma once

#include "platform/Conexion.h"
#include "schema/Catalogo.h"

#include <QString>

namespace korven::schema {

// The statements that make the schema of the catalogue on one engine. Identifiers go unquoted
// and in lower case, except the numbered columns of the nomenclator, which are quoted ("001").
class DialectoEsquema {
public:
    // The column as it is written in a statement.
    static QString Identificador(const QString& columna);
    // The engine's type of a column.
    static QString Tipo(TipoColumna tipo, Motor motor);
    // The type of a column in its table: a text key of PostgreSQL compares byte by byte.
    static QString TipoDe(const DefTabla& tabla, const DefColumna& columna, Motor motor,
                          int version);
    // CREATE TABLE IF NOT EXISTS with the columns (and the key) that exist at that schema
    // version; under another name when one is given (to rebuild a table).
    static QString CrearTabla(const DefTabla& tabla, Motor motor, int version,
                              const QString& nombre = {});
    static QString AgregarColumna(const DefTabla& tabla, const DefColumna& columna, Motor motor);
    static QString CrearIndice(const DefTabla& tabla, const DefIndice& indice);
    // The unique index on upper(column) of a table that has one.
    static QString CrearIndiceSinMayusculas(const DefTabla& tabla);
    // The table of schema versions, one row per store (several stores may share a database).
    static QString CrearTablaVersion();
};

} // namespace korven::schema
