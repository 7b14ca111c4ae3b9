#pragma once

#include "platform/Conexion.h"

#include <QString>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

struct DefTabla;

// Schema versions of the stores and the ordered migrations between them.
//
//   1  every table and column of the system; the workstation lock keyed by its primary key
//   2  indexes on interno and on every key that a loop looks up
//   3  the link of goods lines and discharges to the external Operation (idext)
//   4  the header keyed by its number (primary key, and unique regardless of case); the
//      indexes of the register's filters and orders; the lock keeps the time it was taken
//   5  the order in which an assembly wrote its groups, links and regime flags (orden)
//   6  the workstation that wrote each line of the printing table (puesto)
//
// A store with no version (a new one, or one made by hand) is created at the present version,
// keeping the tables it has and adding what they lack. Each step runs in one transaction with
// the new version number, so a failed step leaves the store at the version before it.
class Migrador {
public:
    static constexpr int VersionActual = 6;

    explicit Migrador(StoreDirectory& stores) : stores_(stores) {}

    // The version a store holds: 0 when it has no version of ours.
    int Version(const QString& entidad);
    // Brings the store to the present version; answers the version it had before.
    int Actualizar(const QString& entidad);
    // Makes the tables of an older version in a store that has none of ours (the upgrade path
    // is tested from stores made so).
    void CrearEnVersion(const QString& entidad, int version);

private:
    void AplicarPaso(Conexion& c, const QString& entidad, int paso);
    void Adoptar(Conexion& c, const QString& entidad, int version);
    void EstablecerClave(Conexion& c, const DefTabla& t, int version);
    void AlinearTiposPg(Conexion& c, const DefTabla& t);
    void GuardarVersion(Conexion& c, const QString& entidad, int version);

    StoreDirectory& stores_;
};

} // namespace korven::schema
