#pragma once

#include "platform/OrdenAdmin.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace korven {

// The printing command of korven-admin, apart from its main() so that tests run it without a
// process:
//
//   imprimir <interno> --pdf <archivo.pdf> [--desde N] [--hasta M] [--subitems] [--config F]
//
// Writes the printed liquidation of the items N..M (all of them by default) as the print screen
// does and saves its pages as PDF. Every message is printed. Exit code 0 when the file was
// written, 1 otherwise, 2 for a command line not understood. Needs a QGuiApplication.
class AdminImpresion : public OrdenAdmin {
public:
    AdminImpresion(QTextStream& salida, QTextStream& errores, QString directorioPrograma,
                   QString carpetaSettings)
        : OrdenAdmin(salida, errores, std::move(directorioPrograma), std::move(carpetaSettings)) {}

    static bool EsOrden(const QString& orden);
    int Ejecutar(const QStringList& argumentos);
    static QString TextoAyuda();

private:
};

} // namespace korven
