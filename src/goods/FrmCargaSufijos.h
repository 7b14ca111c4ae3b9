#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmCargaSufijos;
}

namespace korven {

class AppContext;

// The options of a listed suffix ("opciones"), with the present one ("seleccion") chosen. Enter
// or a double click answers the row chosen; Esc answers "###CANCELADO###".
class FrmCargaSufijos : public QDialog {
    Q_OBJECT
public:
    FrmCargaSufijos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmCargaSufijos() override;

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Elegir();

    std::unique_ptr<Ui::FrmCargaSufijos> ui;
};

} // namespace korven
