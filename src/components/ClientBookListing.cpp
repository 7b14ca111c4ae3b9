#include "components/ClientBookListing.h"

#include "components/FrmClientes.h"

#include <QApplication>
#include <QWidget>

namespace korven {

ClientBookListing::ClientBookListing(AppContext& ctx, QObject* parent)
    : QObject(parent), ctx_(ctx) {}

void ClientBookListing::SetDataConnection(QObject*) {}

void ClientBookListing::MostrarListado(QObject* formulario) {
    cuit_.clear();
    nombre_.clear();
    QWidget* padre = qobject_cast<QWidget*>(formulario);
    if (!padre)
        padre = QApplication::activeWindow();
    FrmClientes lista(ctx_, seleccionar_, padre);
    lista.exec();
    if (seleccionar_) {
        cuit_ = lista.cuit();
        nombre_ = lista.nombre();
    }
}

} // namespace korven
