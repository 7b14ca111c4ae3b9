#pragma once

#include <QString>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

// The schema version this program's stores are brought to.
int VersionActual();
// The schema version a store holds (0 when it has no tables of ours yet).
int VersionDe(StoreDirectory& stores, const QString& entidad);
// Creates every table and index of every store, or brings an older store up to date through
// the ordered migrations; on SQLite and on PostgreSQL alike. Idempotent.
void CrearOActualizar(StoreDirectory& stores);
// Loads the reference data shipped in the data folder into the tables that are still empty.
void CargarDatosReferencia(StoreDirectory& stores, const QString& carpetaDatos);
// Loads the demo Operations (headers, invoices, goods lines) unless they are there already.
void CargarOperacionesDemo(StoreDirectory& stores, const QString& carpetaDatos);
// The data folder of an installed program: "data" beside the program, or the source tree's.
QString CarpetaDatos(const QString& directorioPrograma);

} // namespace korven::schema
