#pragma once

#include "goods/ListaSubItems.h"

#include <QAbstractTableModel>
#include <QHash>

namespace korven {

// The goods list as a table the view asks for: only the rows on screen are read, a page at a
// time, so an Operation of ten thousand lines opens and refreshes as fast as one of ten.
class ModeloSubItems : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int Pagina = 200;

    explicit ModeloSubItems(ListaSubItems& lista, QObject* parent = nullptr);

    // Reads the totals again and forgets the rows read; the totals of the list in force.
    const ListaSubItems::Totales& Refrescar();
    const ListaSubItems::Totales& totales() const { return totales_; }
    // The line shown in a row (its "Registro"), 0 when out of range.
    long long Id(int fila) const;
    const ListaSubItems::Fila* FilaEn(int fila) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    ListaSubItems& lista_;
    ListaSubItems::Totales totales_;
    mutable QHash<int, std::vector<ListaSubItems::Fila>> paginas_;
};

} // namespace korven
