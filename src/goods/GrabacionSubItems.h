#pragma once

#include "goods/LineaSubItem.h"

#include <QString>

namespace korven {

class AppContext;
class Dialogos;

// The save and the modification of a goods line of one Operation, with every check in its
// order. Each is one transaction: the line, the mark of the Operation and the catalogue upkeep
// are written together or not at all (inside an enclosing transaction they join it). Messages go
// to the dialogs service given.
class GrabacionSubItems {
public:
    GrabacionSubItems(AppContext& ctx, Dialogos& dialogos, const QString& interno);

    // modoSufijos: 1 asks every suffix again (F12), 2 keeps what the nomenclator agrees with.
    // deInsumos: the line comes from temporary inputs; admiteEAN: the sub-regime admits EAN.
    ResultadoSubItem GrabarSubItems(int modoSufijos, LineaSubItem& linea, bool deInsumos,
                                    bool admiteEAN);
    ResultadoSubItem ModificarSubItems(int modoSufijos, LineaSubItem& linea, long long id,
                                       bool admiteEAN);

private:
    AppContext& ctx_;
    Dialogos& dialogos_;
    QString interno_;
};

} // namespace korven
