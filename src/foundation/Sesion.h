#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>
#include <vector>

namespace korven {

class AppContext;
class Dialogos;
class FrmPrincipal;
class MenuP;
class SettingsStore;
class StoreDirectory;

// The process-wide objects of one running Korven, made by the start routine and alive until
// the process ends: stores, settings store, dialogs, the context, the service components and
// the frame with its menu.
class Sesion {
public:
    // dialogos: the service to use; nullptr makes the desktop's modal boxes.
    Sesion(const QString& directorioPrograma, const QString& carpetaSettings, Dialogos* dialogos);
    ~Sesion();
    Sesion(const Sesion&) = delete;
    Sesion& operator=(const Sesion&) = delete;

    AppContext& ctx() { return *ctx_; }
    StoreDirectory& stores() { return *stores_; }
    FrmPrincipal* principal() const { return principal_.get(); }
    MenuP* menu() const;

    // Keeps a service component for the life of the process.
    QObject* Guardar(std::unique_ptr<QObject> servicio);
    QObject* Servicio(const QString& nombre) const;

    void setPrincipal(std::unique_ptr<FrmPrincipal> principal, MenuP* menu);

private:
    std::unique_ptr<StoreDirectory> stores_;
    std::unique_ptr<SettingsStore> settings_;
    std::unique_ptr<Dialogos> propios_;
    std::unique_ptr<AppContext> ctx_;
    std::vector<std::unique_ptr<QObject>> servicios_;
    std::unique_ptr<FrmPrincipal> principal_;
    QPointer<QObject> menu_;
};

} // namespace korven
