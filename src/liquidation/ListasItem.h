#pragma once

#include <QString>

namespace korven {

class AppContext;

// The open lists of an item that the clerk edits from the tabs of the item screen: its
// advantages (itemventaja, master ventajas), its information (iteminfo, master informacion) and
// its concepts (itemliq). Item 0 stands for the whole Operation: what is added there goes to
// every item, and what stands there can be removed only there. Each action is one transaction
// on INTERNOS; a failure of the store is undone and reported with the routine's section, and
// the action then answers false.
class ListasItem {
public:
    enum class Lista { Ventajas, Informacion };

    explicit ListasItem(AppContext& ctx) : ctx_(ctx) {}

    // Picks an entry in FrmVentajas (VentajaElegida) and adds it to the item, asking the value
    // of an information entry; on item 0 to every item lacking it. The two self-assessment
    // advantages mark each item they reach as set by hand (lman "M"). True when something was
    // added.
    bool Agregar(Lista lista, const QString& interno, long long iditem);
    // Removes the entry from the item, or from every item when on item 0; refused on a normal
    // item while item 0 holds it. True when a row went.
    bool Eliminar(Lista lista, const QString& interno, long long iditem, const QString& codigo);
    // Removes the concept from the item; when a row went, the liquidation is marked pending
    // (LiquidacionPendiente) and the answer is true.
    bool EliminarConcepto(const QString& interno, long long iditem, const QString& codigo);

private:
    void Error(const QString& rutina, int numero, const QString& descripcion);

    AppContext& ctx_;
};

} // namespace korven
