#include "foundation/Sesion.h"

#include "foundation/FrmPrincipal.h"
#include "foundation/MenuP.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ui/DesktopDialogs.h"

namespace korven {

Sesion::Sesion(const QString& directorioPrograma, const QString& carpetaSettings,
               Dialogos* dialogos)
    : stores_(std::make_unique<StoreDirectory>()),
      settings_(std::make_unique<SettingsStore>(carpetaSettings)) {
    if (!dialogos) {
        propios_ = std::make_unique<DesktopDialogs>();
        dialogos = propios_.get();
    }
    ctx_ = std::make_unique<AppContext>(*stores_, *dialogos, *settings_, directorioPrograma);
}

Sesion::~Sesion() {
    // The screens go first: they hold the context.
    principal_.reset();
    servicios_.clear();
    ctx_.reset();
    stores_->CloseAllDataConnection();
}

QObject* Sesion::Guardar(std::unique_ptr<QObject> servicio) {
    servicios_.push_back(std::move(servicio));
    return servicios_.back().get();
}

QObject* Sesion::Servicio(const QString& nombre) const {
    for (const auto& s : servicios_)
        if (s->objectName().compare(nombre, Qt::CaseInsensitive) == 0)
            return s.get();
    return nullptr;
}

MenuP* Sesion::menu() const {
    return qobject_cast<MenuP*>(menu_.data());
}

void Sesion::setPrincipal(std::unique_ptr<FrmPrincipal> principal, MenuP* menu) {
    principal_ = std::move(principal);
    menu_ = menu;
}

} // namespace korven
