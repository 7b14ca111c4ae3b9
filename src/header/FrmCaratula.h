#pragma once

#include <QDialog>
#include <QHash>
#include <QVariantMap>
#include <memory>

class QLineEdit;

namespace Ui {
class FrmCaratula;
}

namespace korven {

class AppContext;

// The header of an Operation: parties, customs offices, values in currency, adjustments,
// invoices and the common data that new goods lines inherit. Enter looks a code up and moves
// on, F6 lists, Delete removes an invoice, Esc saves and leaves.
class FrmCaratula : public QDialog {
    Q_OBJECT
public:
    // args: "interno".
    FrmCaratula(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmCaratula() override;

    // Fills the screen from the header record; false when there is none.
    bool CargarCaratula(const QString& interno);
    // Adapts the screen to a sub-regime.
    void Mostrar(const QString& idsubreg);
    // Checks and writes; true when the screen closed (saved, or left without saving).
    bool Guardar();

    const QString& interno() const { return interno_; }
    const QString& cstaimpexp() const { return cstaimpexp_; }
    // A control of the screen by its name, compared without regard to case.
    QWidget* Control(const QString& nombre) const;

public Q_SLOTS:
    // Esc: leaving is saving.
    void reject() override;
    void done(int resultado) override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void showEvent(QShowEvent* evento) override;

private:
    // Enter in a field: its look-up. True when the key is spent (the focus stays).
    bool Buscar(QLineEdit* campo);
    // F6 in a field: its list.
    void Listar(QLineEdit* campo);
    void AlSalir(QLineEdit* campo);
    void DisposicionImpExp(const QString& cstaimpexp);
    void BuscarDivisa(QLineEdit* codigo, QLineEdit* cambio);
    void CalcularDolares(QLineEdit* valor, QLineEdit* cambio, QLineEdit* dolares);
    void CalcularSeguro();
    void ActualizarForzar();
    void CargarFacturas();
    void AgregarFactura();
    void EliminarFactura();
    void AbrirPantalla(const QString& nombre);
    bool EsCodigo(const QLineEdit* campo) const;

    std::unique_ptr<Ui::FrmCaratula> ui;
    AppContext& ctx_;
    QString interno_;
    QString cstaimpexp_;
    double regalias_ = 0;
    double ajxvinc4102_ = 0;
    bool cargando_ = false;
    bool verificando_ = false;
    QHash<QString, QWidget*> controles_; // lower-case name -> control
};

} // namespace korven
