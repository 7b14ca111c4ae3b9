#pragma once

#include <QDialog>
#include <QVariantMap>

class QListWidget;
class QPushButton;

namespace korven {

class AppContext;

// Picks an advantage (args "lista" = "ventajas") or an information entry ("informacion"): one
// line per master row, the code padded to 16 characters and the description in capitals.
// Seleccionar, Enter or a double click take the code of the line into VentajaElegida and the
// "Respuesta" property and close; Escape closes with nothing chosen.
class FrmVentajas : public QDialog {
    Q_OBJECT
public:
    FrmVentajas(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Seleccionar();

    AppContext& ctx_;
    QListWidget* Lst;
    QPushButton* cmdSeleccionar;
};

} // namespace korven
