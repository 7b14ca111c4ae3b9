#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QVariantList>
#include <optional>

#include "platform/Recordset.h"

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
// (LISTADO) and, unless OperacionesMostrarTODO is on, only the first 50; the kind of each
// sub-regime and the name of each customs office come in the same statement.
class BuscarInternos {
public:
    BuscarInternos(StoreDirectory& stores, const Configuracion& config)
        : stores_(stores), config_(config) {}

    // The statement of the list; its bound values go to parametros.
    QString Sql(const FiltroInternos& filtro, QVariantList* parametros = nullptr);
    // Throws KorvenError when the store refuses.
    QList<FilaInterno> Buscar(const FiltroInternos& filtro);
    // The row of one Operation as the list shows it, read again (nothing when it is gone).
    std::optional<FilaInterno> Fila(const QString& interno);

    // cstaimpexp of the sub-regime: "I", "E" or whatever the table holds ("" when no row).
    QString getTypeOPfromSubReg(const QString& idsubreg);
    QString getAduanaDescripcion(const QString& idaduana);
    // The import/export column: "Importacion", "Exportacion" or "Otros".
    static QString TextoImpExp(const QString& cstaimpexp);
    // What the number filter compares with: upper case of a-z only, and the end of its range.
    static QString MayusculasSql(const QString& texto);
    static QString FinDePrefijo(const QString& prefijo);

private:
    QList<FilaInterno> Filas(Recordset rs);

    StoreDirectory& stores_;
    const Configuracion& config_;
};

} // namespace korven
