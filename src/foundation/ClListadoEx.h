#pragma once

#include <QString>
#include <QStringList>

namespace korven {

class AppContext;

// Feeds FrmListadoeX with the rows of one kind of list and answers the row chosen. Kind 6: the
// lists (agreements) that two countries belong to.
class ClListadoEx {
public:
    static constexpr int ListasDePaises = 6;

    explicit ClListadoEx(AppContext& ctx) : ctx_(ctx) {}

    // The kind of list; kind 6 also sets both column widths to 2000.
    void setTipo(int tipo);
    int tipo() const { return tipo_; }
    int ancho1() const { return ancho1_; }
    int ancho2() const { return ancho2_; }

    // Fills and shows the list of the kind set (kind 6 takes the two country codes). The answer
    // is {codigo, descripcion} of the row chosen, empty when none was chosen or there was
    // nothing to show.
    QStringList Mostrar(const QString& pais1, const QString& pais2);

private:
    AppContext& ctx_;
    int tipo_ = 0;
    int ancho1_ = 0;
    int ancho2_ = 0;
};

} // namespace korven
