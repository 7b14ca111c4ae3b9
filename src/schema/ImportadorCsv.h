#pragma once

#include "platform/Conexion.h"
#include "schema/Catalogo.h"
#include "schema/LectorCsv.h"

#include <QVariantList>
#include <functional>
#include <vector>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

// Imports the rows of a CSV file into a table of the catalogue. The header names the columns
// (any order, any case; the key columns of the table must be there). Every row is checked
// before anything is written: number of fields, numbers, dates, the form of positions and
// suffix levels, an empty or repeated key, a key the table already holds. A rejected row is
// reported with its line and reason. Unless the import is partial, one rejected row means that
// nothing is written; the rows are written in one transaction, so a failure of the store leaves
// the table as it was.
class ImportadorCsv {
public:
    struct Opciones {
        bool parcial = false;    // write the good rows even when some are rejected
        bool reemplazar = false; // empty the table first (in the same transaction)
    };
    struct Rechazo {
        int linea = 0;
        QString motivo;
    };
    struct Resultado {
        QString tabla;
        int leidas = 0;
        int importadas = 0;
        std::vector<Rechazo> rechazos;
        bool latin1 = false; // the file was not valid UTF-8 and was read as Latin-1
    };
    // Rows checked and typed for binding, ready to insert.
    struct Preparacion {
        const DefTabla* tabla = nullptr;
        QStringList columnas;
        std::vector<int> lineas;
        std::vector<QVariantList> valores;
        std::vector<Rechazo> rechazos;
        int leidas = 0;
    };

    explicit ImportadorCsv(StoreDirectory& stores) : stores_(stores) {}

    Resultado Importar(const QString& tabla, const QString& archivo, const Opciones& opciones);
    Resultado Importar(const QString& tabla, const LectorCsv& csv, const Opciones& opciones);

    // Checks and types the rows of a CSV for a table; a filter may leave rows out (they are
    // neither read nor rejected). Throws KorvenError when the header does not fit the table.
    static Preparacion
    Preparar(const DefTabla& tabla, const LectorCsv& csv, Motor motor,
             const std::function<bool(const QHash<QString, QString>&)>& filtro = {});
    // Inserts prepared rows, several per statement, with bound values (inside the caller's
    // transaction).
    static void Insertar(Conexion& c, const Preparacion& p);
    // Text of a key of a row, to compare keys.
    static QString TextoClave(const QVariantList& valores, const QList<int>& indices);

private:
    StoreDirectory& stores_;
};

} // namespace korven::schema
