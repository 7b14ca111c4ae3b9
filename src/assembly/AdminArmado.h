#pragma once

#include "platform/OrdenAdmin.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace korven {

// The assembly command of korven-admin, apart from its main() so that tests run it without a
// process:
//
//   armar <interno> [--config F] [--ini KORVEN.ini] [--ajustes carpeta] [--orden 1|2]
//         [--multas] [--coeficiente] [--respuesta "<comienzo de la pregunta>=<respuesta>"]...
//
// Runs the hub's assembly of the Operation followed by the first calculation of item 0, on the
// configured stores, as one transaction. Every message the run shows is printed in order; a
// question takes the answer whose text begins its own, else its "No" or default answer.
// Exit code 0 when the assembly ended with "SI", 1 otherwise, 2 for a command line not
// understood.
class AdminArmado : public OrdenAdmin {
public:
    AdminArmado(QTextStream& salida, QTextStream& errores, QString directorioPrograma,
                QString carpetaSettings)
        : OrdenAdmin(salida, errores, std::move(directorioPrograma), std::move(carpetaSettings)) {}

    static bool EsOrden(const QString& orden);
    int Ejecutar(const QStringList& argumentos);
    static QString TextoAyuda();

private:
};

} // namespace korven
