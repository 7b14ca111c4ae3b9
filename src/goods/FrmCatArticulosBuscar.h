#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmCatArticulosBuscar;
}

namespace korven {

class AppContext;

// Picks an article of a catalogue by typing: the list keeps the articles whose code or
// description contains the text, without regard to case. Up and Down in the text move the
// selection, Enter hands the article back ("Respuesta": a map with "articulo" and
// "descripcion"; invalid on Esc), Delete removes it from the catalogue, F6 in the list asks
// for a new text.
class FrmCatArticulosBuscar : public QDialog {
    Q_OBJECT
public:
    // args: "catalogo", "texto" (the search to begin with).
    FrmCatArticulosBuscar(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmCatArticulosBuscar() override;

    void Cargar();
    void Filtrar(const QString& texto);
    void Articulo_Eliminar();

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Seleccionar();
    void lf_MoverAbajo();
    void lf_MoverArriba();
    void Mover(int paso);

    std::unique_ptr<Ui::FrmCatArticulosBuscar> ui;
    AppContext& ctx_;
    QString catalogo_;
};

} // namespace korven
