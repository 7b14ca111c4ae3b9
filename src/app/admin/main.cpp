#include "schema/Administracion.h"

#include <QCoreApplication>
#include <QTextStream>

// korven-admin: creates and updates the stores of a configuration, loads the reference data
// and the demo Operations, imports master tables from CSV and lists tables.
int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("korven-admin"));
    QTextStream salida(stdout);
    QTextStream errores(stderr);
    korven::schema::Administracion admin(salida, errores, QCoreApplication::applicationDirPath());
    const int r = admin.Ejecutar(QCoreApplication::arguments().mid(1));
    salida.flush();
    errores.flush();
    return r;
}
