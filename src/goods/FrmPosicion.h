#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmPosicion;
}

namespace korven {

class AppContext;

// Picks a position of the nomenclator from the text typed so far ("texto"). Enter in the list
// answers {"posicion", "estadistica", "deresp", "lapi", "reintegro", "segelect",
// "prohibicion"}; Esc or Ctrl+C answers nothing.
class FrmPosicion : public QDialog {
    Q_OBJECT
public:
    FrmPosicion(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmPosicion() override;

    // Fills the list with the positions that begin with the text; false when there is none.
    bool BuscarNCM(const QString& texto);
    void MostrarDatos(const QString& posicion);
    void Seleccionar();

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Reportar(const class KorvenError& e, const char* rutina);

    std::unique_ptr<Ui::FrmPosicion> ui;
    AppContext& ctx_;
    QVariantMap datos_;
};

} // namespace korven
