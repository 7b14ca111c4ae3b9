#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QToolBar;

namespace Ui {
class FrmListadoeX;
}

namespace korven {

class AppContext;

// A list of two columns, code and description, with a search in either column. The answer
// ("Respuesta") is the map {codigo, descripcion} of the row chosen, empty when left with Esc.
class FrmListadoeX : public QDialog {
    Q_OBJECT
public:
    // args: "titulo"; "filas", a list of {codigo, descripcion}; "anchos", the two column widths
    // in twips.
    FrmListadoeX(AppContext& ctx, const QVariantMap& args = {}, QWidget* padre = nullptr);
    ~FrmListadoeX() override;

    void BuscarCod();
    void BuscarDesc();
    // Hands the selected row over and closes.
    void Elegir();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Buscar(int columna, const QString& pregunta);

    std::unique_ptr<Ui::FrmListadoeX> ui;
    AppContext& ctx_;
    QToolBar* Tb = nullptr;
};

} // namespace korven
