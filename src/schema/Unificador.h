#pragma once

#include <QPair>
#include <QString>
#include <QStringList>

namespace korven::schema {

// Brings the stores of the former layout, one SQLite file per store (internos.db,
// systablas.db, ...), into the one file that holds them all. All or nothing: the tables are
// copied into a new file inside one transaction, and the new file takes its name only when
// every table is in; on any failure it is removed. The former files are only read.
class Unificador {
public:
    // carpeta: the folder of the former files; destino: the file to make (it must not exist).
    Unificador(QString carpeta, QString destino)
        : carpeta_(std::move(carpeta)), destino_(std::move(destino)) {}

    // Each former file with the number of tables it brought. Throws KorvenError.
    QList<QPair<QString, int>> Unificar();

private:
    QString carpeta_;
    QString destino_;
};

} // namespace korven::schema
