#pragma once

#include <QString>

namespace korven {

// The sub-regimes of temporary operations, whose stock can be exported to the supplies
// (cmdExportINS of the hub).
bool EsSubRegimenTemporal(const QString& idsubreg);
// The sub-regimes whose forms the printing component fills (cmdPrint of the hub).
bool EsSubRegimenImpresion(const QString& idsubreg);

} // namespace korven
