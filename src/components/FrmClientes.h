#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class FrmClientes;
}

namespace korven {

class AppContext;

// The list of the client book: search by tax number and by name, add (Insert), change (F6),
// delete (Delete). In the selection mode Enter chooses the client and closes.
class FrmClientes : public QDialog {
    Q_OBJECT
public:
    FrmClientes(AppContext& ctx, bool seleccionar, QWidget* padre = nullptr);
    ~FrmClientes() override;

    void Cargar();
    void Agregar();
    void Modificar();
    void Eliminar();
    // Takes the selected client and closes.
    void Elegir();

    // The client chosen; empty when none.
    const QString& cuit() const { return cuit_; }
    const QString& nombre() const { return nombre_; }
    QString CuitSeleccionado() const;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Error(const QString& seccion, int numero, const QString& descripcion);
    void Seleccionar(const QString& cuit);

    std::unique_ptr<Ui::FrmClientes> ui;
    AppContext& ctx_;
    bool seleccionar_;
    QString cuit_, nombre_;
};

} // namespace korven
