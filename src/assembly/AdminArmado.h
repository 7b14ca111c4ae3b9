#pragma once

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
class AdminArmado {
public:
    static constexpr int Correcto = 0;
    static constexpr int Fallo = 1;
    static constexpr int Uso = 2;

    AdminArmado(QTextStream& salida, QTextStream& errores, QString directorioPrograma,
                QString carpetaSettings)
        : out_(salida), err_(errores), directorio_(std::move(directorioPrograma)),
          settings_(std::move(carpetaSettings)) {}

    static bool EsOrden(const QString& orden);
    int Ejecutar(const QStringList& argumentos);
    static QString TextoAyuda();

private:
    QTextStream& out_;
    QTextStream& err_;
    QString directorio_;
    QString settings_;
};

} // namespace korven
