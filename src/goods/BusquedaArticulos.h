#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace korven {

class AppContext;

// The search of the articles of a catalogue by one field ("idarticulo", "descripcion", "ncm")
// and a text it contains, for the screens "Articulos". Two shapes of the result:
// - ConTotal (FrmbArticulos): article, description, position and quantity times price as total;
// - ConCantidad (FrmArticulos): article, position, description, quantity and price; with no
//   text every article of the catalogue.
// Amounts come formatted "00.00". Faults of the store reach the caller.
class BusquedaArticulos {
public:
    enum class Forma { ConTotal, ConCantidad };

    explicit BusquedaArticulos(AppContext& ctx) : ctx_(ctx) {}

    static QStringList Campos();
    static QString Sql(Forma forma, const QString& catalogo, const QString& campo,
                       const QString& texto);
    QList<QStringList> Buscar(Forma forma, const QString& catalogo, const QString& campo,
                              const QString& texto);

private:
    AppContext& ctx_;
};

} // namespace korven
