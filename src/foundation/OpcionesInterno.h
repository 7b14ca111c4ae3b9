#pragma once

#include <QString>
#include <array>

namespace korven {

class SettingsStore;

// The options of one Operation, kept in the settings store under application KORVEN and the
// section named by the interno: FLAG0 to FLAG7 (options of the item assembly), COEFEXPO, DESC and
// PROCESOS. A key that is missing or empty reads as "1".
class OpcionesInterno {
public:
    static constexpr int CantidadFlags = 8;

    struct Valores {
        std::array<bool, CantidadFlags> flags{true, true, true, true, true, true, true, true};
        bool coefExpo = true;
        QString desc = QStringLiteral("1");
    };

    explicit OpcionesInterno(SettingsStore& settings) : settings_(settings) {}

    // The keys of a new Operation: FLAG0 to FLAG7 "1", COEFEXPO "0".
    void GuardarNuevo(const QString& interno);
    Valores Leer(const QString& interno);
    // FLAG0 to FLAG7 from the values; COEFEXPO only when guardarCoef is true.
    void Guardar(const QString& interno, const Valores& valores, bool guardarCoef);
    // PROCESOS, FLAG0 to FLAG7 and COEFEXPO of the Operation.
    void Borrar(const QString& interno);

    static QString ClaveFlag(int n) { return QStringLiteral("FLAG%1").arg(n); }

private:
    QString LeerClave(const QString& interno, const QString& clave);

    SettingsStore& settings_;
};

} // namespace korven
