#pragma once

#include <QString>
#include <functional>

namespace korven {

class AppContext;
class Conexion;

// The client of an Operation as its liquidation rows need it (clientes of PERSONAL).
struct ClienteLiquidacion {
    QString cuit;
    double Ganancias = 0;      // income tax exemption in percent (0 without EximGan "S")
    double Reduccion = 0;      // VAT reduction in percent (0 without ivaareduccion "S")
    double IngresosBrutos = 0; // INGBRU
    bool EsCVDI = false;
};

// Creates the liquidation rows (itemliq) of the items of an Operation with the rates that the
// regime and the client give them. The amounts are calculated later, by the liquidation of
// item 0. Every statement goes through the connection given (INTERNOS).
class GeneracionLiquidacion {
public:
    GeneracionLiquidacion(AppContext& ctx, Conexion& c);

    // The rows of one item: the concepts of the list (codes separated by ","), their rates
    // cleared and then set by the regime and the client. IdItem "0" is item 0.
    void GenerarLiq(const QString& Conceptos, const QString& IdItem, const QString& Interno,
                    double Ganancias, double Reduccion, bool EsCVDI, double TasaIVA, double Sbtrei,
                    double IngresosBrutos, const QString& SubRegimen, const QString& Muestra);

    // The rows of a whole Operation whose items are built and whose rows were deleted: the
    // lists of concepts by regime (asking "Desea calcular multas?" where it applies, which sets
    // ctx.CalcMultas), item 0, then every item in the order of the item table; after the last,
    // the manual mark of every row cleared and the "G" mark of the regime flags.
    // avance(n, total, id) is called before each item (n from 1).
    void GenerarOperacion(const QString& interno, const QString& subRegimen, bool importacion,
                          const ClienteLiquidacion& cliente,
                          const std::function<void(int, int, long long)>& avance = {});

private:
    AppContext& ctx_;
    Conexion& c_;
};

} // namespace korven
