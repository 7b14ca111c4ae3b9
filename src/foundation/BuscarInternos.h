#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>

namespace korven {

class StoreDirectory;
struct Configuracion;

// The filters of the list of Operations.
struct FiltroInternos {
    QString cliente;     // tax number of the client
    QString despachante; // tax number of the customs broker
    QString interno;     // beginning of the number
    bool filtroFecha = false;
    QDate desde, hasta;
};

// One row of the list of Operations.
struct FilaInterno {
    QString interno, subRegimen, impExp, despachante, cliente, vendedor;
    QString detalle; // three lines shown beneath the row
};

// Reads the headers of the Operations that pass the filters, in the order the settings ask for
// (LISTADO) and, unless OperacionesMostrarTODO is on, only the first 50.
class BuscarInternos {
public:
    BuscarInternos(StoreDirectory& stores, const Configuracion& config)
        : stores_(stores), config_(config) {}

    QString Sql(const FiltroInternos& filtro);
    // Throws KorvenError when the store refuses.
    QList<FilaInterno> Buscar(const FiltroInternos& filtro);

    // cstaimpexp of the sub-regime: "I", "E" or whatever the table holds ("" when no row).
    QString getTypeOPfromSubReg(const QString& idsubreg);
    QString getAduanaDescripcion(const QString& idaduana);
    // The import/export column: "Importacion", "Exportacion" or "Otros".
    static QString TextoImpExp(const QString& cstaimpexp);

private:
    StoreDirectory& stores_;
    const Configuracion& config_;
    // Answers already read during one search.
    QHash<QString, QString> tipos_, aduanas_;
};

} // namespace korven
