#include "platform/ui/SeguirFoco.h"

#include <QApplication>
#include <QScrollArea>

namespace korven {

void SeguirFoco(QScrollArea* area) {
    if (!area)
        return;
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* ahora) {
        if (ahora && area->widget() && area->widget()->isAncestorOf(ahora))
            area->ensureWidgetVisible(ahora, 8, 8);
    });
}

} // namespace korven
