#pragma once

#include "platform/OrdenAdmin.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace korven {

// The goods command of korven-admin, apart from its main() so that the tests run it without a
// process:
//
//   importar-subitems <interno> <archivo.csv> [--config F]
//
// Imports the goods lines of a CSV file into an Operation through the save of the goods
// screen, all or nothing: when the save refuses any row nothing is written, every refused row
// is reported with the save's message, and the exit code is 1. 0 when every row was written,
// 2 when the command line was not understood.
class AdminSubItems : public OrdenAdmin {
public:
    // carpetaSettings: the per-user settings folder the save writes to.
    AdminSubItems(QTextStream& salida, QTextStream& errores, QString directorioPrograma,
                  QString carpetaSettings)
        : OrdenAdmin(salida, errores, std::move(directorioPrograma), std::move(carpetaSettings)) {}

    static bool EsOrden(const QString& orden);
    // The arguments after the name of the command.
    int Ejecutar(const QStringList& argumentos);
    static QString TextoAyuda();

private:
    int Importar(const QString& interno, const QString& archivo, const QString& config);
};

} // namespace korven
