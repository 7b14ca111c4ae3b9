#pragma once

#include "goods/LineaSubItem.h"

#include <QString>
#include <functional>
#include <vector>

namespace korven {

class AppContext;

// Imported goods lines through the save of the goods screen: the verdict of each line is what
// that save says of it, and the lines accepted are written by it, with its arithmetic and its
// checks. The save runs with a dialogs service of its own that keeps the messages instead of
// showing them; a question or a prompt for suffixes cannot be answered by an import and
// refuses the line.
class CargaSubItems {
public:
    struct Veredicto {
        bool aceptada = false;
        QString mensaje; // what the save said (the reason of a refusal), empty when nothing
    };
    struct Resultado {
        bool grabado = false; // every line written and committed
        int grabadas = 0;
        std::vector<Veredicto> veredictos; // of each line given, as far as the save got
    };
    // Called after each line with the lines done and the total (to repaint a status line).
    using Avance = std::function<void(int hechas, int total)>;

    CargaSubItems(AppContext& ctx, QString interno);

    // The verdict of each line: the save runs on it inside a transaction that is rolled back.
    // Nothing reaches the stores or the per-user settings.
    std::vector<Veredicto> Verificar(const std::vector<LineaSubItem>& lineas,
                                     const Avance& avance = {});

    // Writes the lines in one transaction: all of them, or none when the save refuses one (the
    // lines after it are not tried).
    Resultado Grabar(const std::vector<LineaSubItem>& lineas, const Avance& avance = {});

    // The import without a preview: every line is saved in one transaction, which commits only
    // when the save took every one; otherwise it is rolled back and the verdicts say why. Each
    // line is judged with the lines before it in the stores, as when they are typed in turn.
    Resultado Importar(const std::vector<LineaSubItem>& lineas, const Avance& avance = {});

    // The text of a refusal because the suffixes asked for something.
    static QString MensajeSufijos(const QString& pedido);

private:
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
