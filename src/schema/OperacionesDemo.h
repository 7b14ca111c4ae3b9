#pragma once

#include <QString>
#include <QStringList>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

// The demo Operations shipped in the "demo" folder of the data: their header (caratula.csv),
// invoices (facturas.csv), goods lines (subitems.csv) and whatever other table of an Operation
// has a file there, all keyed by interno. An Operation whose header is already in the store is
// left alone; the others are loaded in one transaction.
class OperacionesDemo {
public:
    OperacionesDemo(StoreDirectory& stores, QString carpetaDatos)
        : stores_(stores), carpeta_(std::move(carpetaDatos)) {}

    // The internos loaded now.
    QStringList Cargar();
    // The internos of the demo, in the order of their file.
    QStringList Internos() const;

private:
    StoreDirectory& stores_;
    QString carpeta_;
};

} // namespace korven::schema
