#pragma once

#include <QList>
#include <QString>
#include <QVariantList>
#include <vector>

namespace korven {

class AppContext;
class Dialogos;

// The lines of an Operation as the goods list shows them: filters, totals, pages of rows, the
// deletion of lines and the bulk utilities. Each write is one transaction.
class ListaSubItems {
public:
    // Filters 1 to 10 of the toolbar; 0 shows every line.
    enum Filtro {
        Todo = 0,
        ConKilos,
        SinKilos,
        ConPaisOrigen,
        SinPaisOrigen,
        ConEstado,
        SinEstado,
        PorPosicion,
        NcmInvalida,
        SinSufijos,
        EstadisticaCero
    };
    // Columns of the list: "Nro.", "Posicion", "Unidad", "Cantidad", "Unitario", "Total",
    // "Registro", "Cod Art.".
    enum Columna { Nro, Posicion, Unidad, Cantidad, Unitario, Total, Registro, CodArt, Columnas };

    struct Fila {
        long long nro = 0;
        long long id = 0;
        QString ncm, idunidad, idarticulo;
        double cantidad = 0, preciounitario = 0, fob = 0;
        bool cancelada = false; // cancelaciones = "OK"
    };
    struct Totales {
        int lineas = 0;
        double cantidad = 0, kgneto = 0, fob = 0;
    };

    ListaSubItems(AppContext& ctx, QString interno) : ctx_(ctx), interno_(std::move(interno)) {}

    const QString& interno() const { return interno_; }
    // The filter in force; the text is the beginning of the position for filter 7.
    void setFiltro(int filtro, const QString& texto = {});
    int filtro() const { return filtro_; }
    // The order of the rows: by a column, ascending or not. By default by the number of the
    // line, as SbtMostrarAsc says.
    void setOrden(int columna, bool ascendente);

    // The statement of the list in force, as the reports take it, with its values.
    QString Consulta(QVariantList* valores) const;
    Totales LeerTotales() const;
    // Rows desde .. desde + cuantas - 1 of the list in its order; lineas, when known, is the
    // number of lines of the list.
    std::vector<Fila> LeerFilas(int desde, int cuantas, int lineas = -1) const;

    // Deletes the lines; a line linked to inputs goes only when the inputs component lets its
    // link go. Marks the Operation changed. The lines deleted.
    int Eliminar(const QList<long long>& ids, Dialogos& dialogos);

    // The bulk utilities; each asks its question and answers whether it ran.
    bool SetearKilosCero(Dialogos& dialogos);
    bool VariarPaisOrigen(Dialogos& dialogos);
    bool VaciarFiller(Dialogos& dialogos);
    bool VaciarIdProrrateo(Dialogos& dialogos);

private:
    QString Donde(QVariantList* valores) const;
    bool Masivo(Dialogos& dialogos, const QString& pregunta, const QString& seccion,
                const QStringList& sentencias);

    AppContext& ctx_;
    QString interno_;
    int filtro_ = Todo;
    QString texto_;
    int columna_ = -1;
    bool ascendente_ = true;
};

} // namespace korven
