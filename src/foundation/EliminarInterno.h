#pragma once

#include <QList>
#include <QString>
#include <functional>

namespace korven {

class AppContext;
class Recordset;

// Deletes an Operation after the operator confirms it: the links of its cancelled lines to the
// supplies, then its records table by table, in one transaction, then its options in the
// settings store. An Operation open on another workstation is not deleted: the operator is
// told which one has it, as when opening. idrel, sysflag, coment and the AEC value stay behind on
// purpose: they are old records under a number that may be used again.
class EliminarInterno {
public:
    struct Paso {
        QString tabla;
        QString entidad;
    };
    // The tables, in the order they are emptied.
    static const QList<Paso>& Pasos();

    // maquina is the name of this workstation (MaquinaLocal() when not given).
    explicit EliminarInterno(AppContext& ctx, QString maquina = {});

    // avance is called after each table with the number of tables done. True when the Operation
    // was deleted; a refusal of the store is told to the operator and leaves every record as it
    // was.
    bool Ejecutar(const QString& interno, const std::function<void(int)>& avance = {});

private:
    void DesvincularInsumos(const QString& interno, const Recordset& lineas);

    AppContext& ctx_;
    QString maquina_;
};

} // namespace korven
