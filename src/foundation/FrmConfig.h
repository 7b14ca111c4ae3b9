#pragma once

#include <QDialog>
#include <QVariantMap>

class QPushButton;

namespace korven {

class AppContext;

// "Parametros / Configuracion": the way to the general options and to the store locations.
class FrmConfig : public QDialog {
    Q_OBJECT
public:
    FrmConfig(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);

private:
    void Abrir(const QString& pantalla);

    AppContext& ctx_;
};

} // namespace korven
