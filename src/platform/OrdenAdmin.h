#pragma once

#include <QString>
#include <QTextStream>

namespace korven {

// What the commands of korven-admin that live beside their library share: where they write,
// the program directory and the per-user settings folder, and their exit codes (0 done, 1
// failed, 2 a command line not understood).
class OrdenAdmin {
public:
    static constexpr int Correcto = 0;
    static constexpr int Fallo = 1;
    static constexpr int Uso = 2;

protected:
    OrdenAdmin(QTextStream& salida, QTextStream& errores, QString directorioPrograma,
               QString carpetaSettings)
        : out_(salida), err_(errores), directorio_(std::move(directorioPrograma)),
          settings_(std::move(carpetaSettings)) {}

    // The command's name, whatever its case.
    static bool EsNombre(const QString& orden, const char* nombre) {
        return orden.compare(QLatin1String(nombre), Qt::CaseInsensitive) == 0;
    }

    QTextStream& out_;
    QTextStream& err_;
    QString directorio_;
    QString settings_;
};

} // namespace korven
