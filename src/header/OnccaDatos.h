#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace korven {

class AppContext;

// The ONCCA data of an export of meat, kept in the header record: ten codes and the switch.
class OnccaDatos {
public:
    struct Datos {
        bool habilitado = false;
        QHash<QString, QString> codigos; // column -> code
    };

    explicit OnccaDatos(AppContext& ctx) : ctx_(ctx) {}

    // The ten columns of the codes, in the order of the statement that saves them.
    static QStringList Columnas();

    // Reads the switch and the codes; a store error shows its message and answers nothing.
    std::optional<Datos> CargarDatos(const QString& interno);
    // Writes the codes and the switch in one statement; false (with the message) on an error.
    bool GuardarDatos(const QString& interno, const Datos& d);

private:
    AppContext& ctx_;
};

} // namespace korven
