#include "components/DesktopMailMain.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"

namespace korven {

DesktopMailMain::DesktopMailMain(AppContext& ctx, QObject* parent) : QObject(parent), ctx_(ctx) {}

QString DesktopMailMain::ExInputBox(const QString& pregunta, const QString& titulo, int largoMaximo,
                                    const QString&, const QString& porDefecto, bool) {
    const std::optional<QString> r =
        ctx_.dialogos().PedirTexto(pregunta, titulo, largoMaximo, porDefecto);
    if (!r)
        return {};
    return largoMaximo > 0 ? r->left(largoMaximo) : *r;
}

} // namespace korven
