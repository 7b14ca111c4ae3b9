#pragma once

#include <QList>
#include <QPair>
#include <QString>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

// The reference data shipped with the program: one folder per store, named after the store's
// file (internos, systablas, personal, ncm, usuario, catalogos), one CSV file per table, named
// after the table. A table is loaded only while it is empty, so that a store keeps what its
// office changed; everything is loaded in one transaction.
class DatosReferencia {
public:
    DatosReferencia(StoreDirectory& stores, QString carpeta)
        : stores_(stores), carpeta_(std::move(carpeta)) {}

    // Loads the empty tables; answers table and rows of each table loaded. A file that fits
    // no table of its store, or a row that does not pass the checks of the importer, is an
    // error and nothing is loaded.
    QList<QPair<QString, int>> Cargar();

private:
    StoreDirectory& stores_;
    QString carpeta_;
};

} // namespace korven::schema
