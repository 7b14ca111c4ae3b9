#pragma once

#include <QList>
#include <QString>
#include <functional>

namespace korven {

class AppContext;
class Conexion;

// The liquidation of a whole Operation, as the view of item 0 runs it: every item calculated
// with the calculator from its itemliq rows, the totals by concept written to liqcero with
// the internal sums, and, while ctx.LiquidacionPendiente is set, the amounts written back to
// itemliq (then the flag is cleared). Questions and warnings go through the dialogs service.
class LiquidacionOperacion {
public:
    LiquidacionOperacion(AppContext& ctx, Conexion& c);

    // One line of the grid of totals.
    struct Linea {
        QString idconcepto;
        QString descripcion;
        QString importe; // as shown ("00.00"; the convergence factor between parentheses)
    };
    struct Resultado {
        QList<Linea> grilla;
        double pagar = 0, garantizar = 0, cobrar = 0;
    };

    // estado receives the status line ("Liquidando ITEM <n> ...", "LISTO").
    Resultado Calcular(const QString& interno,
                       const std::function<void(const QString&)>& estado = {});

    // One item as its view shows it: the calculator fed with the header, the item and its
    // position as the run feeds them, without writing anything.
    struct ValoresItem {
        bool enNomenclador = false; // the position has a row in the nomenclator
        double baseImp = 0, baseIVA = 0;
        double fobUs = 0, fleteUs = 0, seguroUs = 0, ajusteIncUs = 0, ajusteDedUs = 0;
        bool lapi = false;
    };
    ValoresItem Item(const QString& interno, long long id);

private:
    AppContext& ctx_;
    Conexion& c_;
};

} // namespace korven
