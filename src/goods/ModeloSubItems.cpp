#include "goods/ModeloSubItems.h"

#include "platform/Formato.h"

#include <QColor>

namespace korven {

ModeloSubItems::ModeloSubItems(ListaSubItems& lista, QObject* parent)
    : QAbstractTableModel(parent), lista_(lista) {}

const ListaSubItems::Totales& ModeloSubItems::Refrescar() {
    beginResetModel();
    paginas_.clear();
    totales_ = lista_.LeerTotales();
    endResetModel();
    return totales_;
}

const ListaSubItems::Fila* ModeloSubItems::FilaEn(int fila) const {
    if (fila < 0 || fila >= totales_.lineas)
        return nullptr;
    const int p = fila / Pagina;
    auto it = paginas_.find(p);
    if (it == paginas_.end())
        it = paginas_.insert(p, lista_.LeerFilas(p * Pagina, Pagina, totales_.lineas));
    const size_t i = static_cast<size_t>(fila % Pagina);
    return i < it->size() ? &(*it)[i] : nullptr;
}

long long ModeloSubItems::Id(int fila) const {
    const ListaSubItems::Fila* f = FilaEn(fila);
    return f ? f->id : 0;
}

int ModeloSubItems::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : totales_.lineas;
}

int ModeloSubItems::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ListaSubItems::Columnas;
}

QVariant ModeloSubItems::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const ListaSubItems::Fila* f = FilaEn(index.row());
    if (!f)
        return {};
    if (role == Qt::ForegroundRole)
        return f->cancelada ? QVariant(QColor(128, 64, 0)) : QVariant();
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case ListaSubItems::Nro:
        return Formato(static_cast<double>(f->nro), QStringLiteral("0000"));
    case ListaSubItems::Posicion:
        return f->ncm;
    case ListaSubItems::Unidad:
        return f->idunidad;
    case ListaSubItems::Cantidad:
        return Formato(f->cantidad, QStringLiteral("00.00"));
    case ListaSubItems::Unitario:
        return Formato(f->preciounitario, QStringLiteral("00.0000"));
    case ListaSubItems::Total:
        return Formato(f->fob, QStringLiteral("00.00"));
    case ListaSubItems::Registro:
        return QString::number(f->id);
    case ListaSubItems::CodArt:
        return f->idarticulo;
    default:
        return {};
    }
}

QVariant ModeloSubItems::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const char* const titulos[] = {"Nro.",     "Posicion", "Unidad",   "Cantidad",
                                          "Unitario", "Total",    "Registro", "Cod Art."};
    return section >= 0 && section < ListaSubItems::Columnas
               ? QVariant(QString::fromLatin1(titulos[section]))
               : QVariant();
}

void ModeloSubItems::sort(int column, Qt::SortOrder order) {
    lista_.setOrden(column, order == Qt::AscendingOrder);
    beginResetModel();
    paginas_.clear();
    endResetModel();
}

} // namespace korven
