#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <optional>

namespace korven {

class AppContext;

// Reading the nomenclator for the screens that show it: searches by position and by text, the
// data of one position, its suffixes and the details by group.
class Nomenclador {
public:
    struct Fila {
        QString posicion;    // [001] "." [002] [003]
        QString descripcion; // the second column of the query screen
    };
    struct DatosPosicion {
        QString descripcion; // [010], a line end, [004]
        QVariantMap marcas;  // "estadistica","deresp","lapi","reintegro","segelect","prohibicion"
        QStringList sufijos; // each applicable suffix: code in 5 characters, its detail
    };
    struct Sufijo {
        QString sim, sufijo, detalle;
    };
    // One row of the details grid: a heading (the text in titulo) or a column of the position.
    struct Detalle {
        bool encabezado = false;
        QString columna, titulo, valor;
    };

    explicit Nomenclador(AppContext& ctx) : ctx_(ctx) {}

    // The positions that begin with the text, every "." taken as any text ("%").
    QStringList BuscarNCM(const QString& texto);
    // The query screen: by the beginning of the position ("," as ".", then "." as "%"), with
    // the separator " - - "; by text in [010] or [004], with " -- ".
    QList<Fila> BuscarPorPosicion(const QString& texto);
    QList<Fila> BuscarPorDescripcion(const QString& texto);
    // The data of a 15-character position; nothing when the nomenclator lacks it.
    std::optional<DatosPosicion> MostrarDatos(const QString& posicion);
    // Every suffix row that applies to the position, chapter level first.
    QList<Sufijo> SufijosAplicables(const QString& posicion);
    // The details of a position, group by group, under the heading "Detalles del Nomenclador",
    // and its description ([010], a line end, [004]); empty when the nomenclator lacks it.
    QList<Detalle> Detalles(const QString& posicion, QString* descripcion);

private:
    QList<Fila> Buscar(const QString& filtro, const QVariantList& parametros,
                       const QString& separador);

    AppContext& ctx_;
};

} // namespace korven
