#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace korven {

class AppContext;

// The packages and the means of transport of an export, kept in the header record.
class BultosDatos {
public:
    struct Datos {
        bool noTransferir = false; // factura9 = "1"
        QString nroBultos, codigo, tipo, peso, bultosDespachar, marca, via, nombreTransporte, cuit,
            nombreAgente, bandera, vencimiento;
    };

    explicit BultosDatos(AppContext& ctx) : ctx_(ctx) {}

    // Reads the record as the screen shows it: weight in "00.00", expiry as "dd/mm/yyyy".
    std::optional<Datos> MostrarDatos(const QString& interno);
    // Writes the screen. With "NO Transferir bultos" only the mark is written. False when a
    // check failed (the screen stays, on the field named by foco).
    bool Grabar(const QString& interno, Datos& d, const QDate& hoy = QDate::currentDate(),
                QString* foco = nullptr);

private:
    AppContext& ctx_;
};

} // namespace korven
