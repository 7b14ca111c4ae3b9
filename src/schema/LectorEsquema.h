#pragma once

#include "platform/Conexion.h"

#include <QHash>
#include <QStringList>

namespace korven::schema {

// What a store holds, as the engine's own catalogue tells it (not as the catalogue of the
// program says it should be). Names come in lower case. On PostgreSQL only the schema in use
// (search_path) is looked at.
class LectorEsquema {
public:
    static QStringList Tablas(Conexion& c);
    static bool ExisteTabla(Conexion& c, const QString& tabla);
    // Columns in the order of the table, with the engine's type of each.
    static QList<QPair<QString, QString>> Columnas(Conexion& c, const QString& tabla);
    static QStringList NombresColumnas(Conexion& c, const QString& tabla);
    // Index name -> its columns in order, of one table; the primary key and indexes on
    // expressions are left out.
    static QHash<QString, QStringList> Indices(Conexion& c, const QString& tabla);
    // The columns of the primary key of a table, in order.
    static QStringList ClavePrimaria(Conexion& c, const QString& tabla);
};

} // namespace korven::schema
