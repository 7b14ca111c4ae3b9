#pragma once

#include <QString>

namespace korven {

class AppContext;
struct Configuracion;

// Reads KORVEN.ini into the process-wide settings and publishes the store locations in the
// settings store for the in-house components. Keys of BASESERVER / BASELOCAL that are empty
// get the "db" folder beside the program, written back to the file. An error is raised again
// as error 11111 for the start routine to report.
void LeerConfig(AppContext& ctx);

// The keys of section GENERAL as the settings take them (the reading shared with the general
// options screen).
void LeerGeneral(const QString& archivoIni, Configuracion& config);

// The text of one key of KORVEN.ini, as every reader of the file takes it.
QString LeerIni(const QString& clave, const QString& seccion, const QString& archivoIni);

} // namespace korven
