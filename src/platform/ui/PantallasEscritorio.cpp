#include "platform/ui/PantallasEscritorio.h"

#include "platform/AppContext.h"
#include "platform/Pantallas.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <memory>

namespace korven {

void RegistrarFormulario(Pantallas& pantallas, const QString& nombre, FabricaFormulario fabrica) {
    pantallas.Registrar(
        nombre, [fabrica = std::move(fabrica)](AppContext& ctx, const QVariantMap& args) {
            std::unique_ptr<QDialog> f(fabrica(ctx, args, QApplication::activeWindow()));
            if (!f)
                return QVariant();
            return MostrarModal(f.get());
        });
}

QVariant MostrarModal(QDialog* formulario) {
    formulario->setAttribute(Qt::WA_DeleteOnClose, false);
    formulario->exec();
    return formulario->property("Respuesta");
}

} // namespace korven
