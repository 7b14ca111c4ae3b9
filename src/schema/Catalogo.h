#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace korven::schema {

// How a column is kept. Texto: text on both engines. Numero: REAL on SQLite, double precision
// on PostgreSQL. Fecha: TEXT holding 'YYYY-MM-DD' on SQLite, date on PostgreSQL. Contador: a
// number the store gives to each new row. FechaHora: TEXT holding 'YYYY-MM-DD HH:MM:SS' on
// SQLite, timestamp on PostgreSQL.
enum class TipoColumna { Texto, Numero, Fecha, Contador, FechaHora };

struct DefColumna {
    QString nombre; // lower case, as the engines report it
    TipoColumna tipo = TipoColumna::Texto;
    int desde = 1; // schema version that brought the column
};

struct DefIndice {
    QString nombre; // unique in the whole database: one PostgreSQL schema may hold every store
    QStringList columnas;
    int desde = 2;
};

struct DefTabla {
    QString entidad; // store of the table (INTERNOS, SYSTABLAS, ...)
    QString nombre;  // lower case
    std::vector<DefColumna> columnas;
    // The columns that identify a row; the importer refuses two rows with the same key. Nothing
    // in the store enforces them, except the primary key below.
    QStringList clave;
    // Enforced by the store: the header of an Operation, the workstation lock and the counters.
    // A text key sorts and compares byte by byte on both engines.
    QStringList clavePrimaria;
    int clavePrimariaDesde = 1; // schema version that brought the primary key
    // A column no two rows may share regardless of case (a unique index on upper(column)).
    QString unicaSinMayusculas;
    int unicaDesde = 4;
    std::vector<DefIndice> indices;
    int desde = 1;

    const DefColumna* Columna(const QString& nombre) const;
    QStringList NombresColumnas(int version = 1000) const;
};

// Every table and column of every store, the one definition from which the schema of both
// engines is made, the importer checks its rows and the tests compare the engines.
class Catalogo {
public:
    static const std::vector<DefTabla>& Tablas();
    // The definition of a table by name (any case), or nullptr.
    static const DefTabla* Tabla(const QString& nombre);
    // Tables of one store, in the order of the catalogue.
    static std::vector<const DefTabla*> TablasDe(const QString& entidad);
    // The table that keeps the schema version of each store: korven_version (entidad, version).
    static QString TablaVersion();
};

} // namespace korven::schema
