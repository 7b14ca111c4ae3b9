#pragma once

#include <QString>
#include <QStringList>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

// A consistent copy of the stores of a configuration, taken while the workstations keep working,
// and its restoration, whole, while no Operation is open. One file per distinct database: the
// file named when every entity lives in one file or one database, else "<archivo>.<store>"
// ("respaldo.db.internos") for each. SQLite is copied page by page with the engine's online
// copy; PostgreSQL with pg_dump (custom format) and pg_restore, with the connection settings of
// the configuration. Failures raise KorvenError with the text for the clerk.
class Respaldo {
public:
    explicit Respaldo(StoreDirectory& stores) : stores_(stores) {}

    // The files written.
    QStringList Respaldar(const QString& archivo);
    // The files read.
    QStringList Restaurar(const QString& archivo);

private:
    struct Destino {
        QString entidad; // the first entity of the database
        QString archivo; // its backup file
    };
    QList<Destino> Destinos(const QString& archivo);

    StoreDirectory& stores_;
};

} // namespace korven::schema
