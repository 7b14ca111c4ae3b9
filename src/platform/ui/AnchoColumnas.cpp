#include "platform/ui/AnchoColumnas.h"

#include <QHeaderView>
#include <QTableView>
#include <QTreeView>

namespace korven {

namespace {

template <class Vista, class Ajustar>
void Ajustar_(Vista* v, QHeaderView* cabecera, int maximo, int desde, Ajustar ajustar) {
    if (!v || !v->model())
        return;
    const int columnas = v->model()->columnCount(v->rootIndex());
    for (int c = desde; c < columnas; ++c) {
        if (cabecera->isSectionHidden(c))
            continue;
        // A stretched last column takes the room the others leave.
        if (c == columnas - 1 && cabecera->stretchLastSection())
            continue;
        ajustar(c);
        if (cabecera->sectionSize(c) > maximo)
            cabecera->resizeSection(c, maximo);
    }
}

} // namespace

void AjustarColumnas(QTreeView* lista, int maximo, int desde) {
    if (lista)
        Ajustar_(lista, lista->header(), maximo, desde,
                 [lista](int c) { lista->resizeColumnToContents(c); });
}

void AjustarColumnas(QTableView* grilla, int maximo, int desde) {
    if (grilla)
        Ajustar_(grilla, grilla->horizontalHeader(), maximo, desde,
                 [grilla](int c) { grilla->resizeColumnToContents(c); });
}

} // namespace korven
