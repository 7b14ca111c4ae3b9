#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace korven {

class AppContext;

// One article of a client's catalogue (table catarticulos of the store CATALOGOS).
struct ArticuloCatalogo {
    QString idCatalogo;
    QString idArticulo;
    QString descripcion;
    QString idPais;
    QString idPaisProc;
    QString idUnidad;
    QString estadoMerc;
    QString bienDeUso; // "S" or "N"
    QString codigoEAN;
    QString otros;
    QString onccaCategoria;
    QString onccaCortes;
    QString ncm;
    QString sufijos;
    double precioUnitario = 0;
    double kgUnitario = 0;
    // Who wrote the article and when: filled on reading, written by the component itself.
    QString usuario;
    QDate fecha;
};

// The catalogue component: keeps the articles of the clients' catalogues. Usuario and Fecha of
// an article are written here.
class CatalogoArticulos {
public:
    explicit CatalogoArticulos(AppContext& ctx) : ctx_(ctx) {}

    // The description of a catalogue; for an unknown code a text that begins
    // "Advertencia: CATALOGO".
    QString BuscarCatalogo(const QString& idCatalogo);
    // Lets the clerk pick a catalogue from a list: code and description, nothing on Esc.
    std::optional<std::pair<QString, QString>> ElegirCatalogo();
    std::optional<ArticuloCatalogo> LeerArticulo(const QString& idCatalogo,
                                                 const QString& idArticulo);
    // Adds or updates an article; with noModificarExistente an article that exists is left as
    // it is. An article without a code is kept under its description. True when it was written
    // (or left, by that rule); false without a catalogue or without code and description.
    bool GuardarArticulo(const ArticuloCatalogo& articulo, bool noModificarExistente);
    void EliminarArticulo(const QString& idCatalogo, const QString& idArticulo);
    QList<ArticuloCatalogo> Articulos(const QString& idCatalogo);

private:
    AppContext& ctx_;
};

} // namespace korven
