#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QLineEdit;

namespace Ui {
class FrmCatArticulos;
}

namespace korven {

class AppContext;

// "Administracion de CATALOGO": the articles of the clients' catalogues. Two modes, told in
// the status line: the data of an article (F6 lists a field, Enter looks it up and moves on,
// the button saves) and the list of the articles of the catalogue (Enter takes an article into
// the fields, + and - open and close its details, F6 searches, Delete removes). F9 changes
// between them, F11 prints, Esc or Ctrl+C closes.
class FrmCatArticulos : public QDialog {
    Q_OBJECT
public:
    static const QString kEstadoCatalogos;
    static const QString kEstadoArticulos;

    FrmCatArticulos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmCatArticulos() override;

    // The catalogue of TxtIdCatalogo (or, with lista, the one chosen from the list): its
    // description, and its articles. False for an unknown catalogue, whose warning shows instead.
    bool SeleccionarCatalogo(bool lista);
    void CargarArticulosbyCatalogo();
    // Checks and saves the article of the fields; modo goes to the check of the suffixes.
    bool AgregarArticuloEx(int modo);
    void EliminarArticulo(const QString& catalogo, const QString& articulo);
    // Fills the fields from the article whose code is typed, or from the one picked on
    // FrmCatArticulosBuscar (always with lista). True when an article was taken.
    bool BuscarArticuloSobreCat(const QString& texto, bool lista);
    void ImprimirCatalogo();
    // F9: from the data to the list of articles and back.
    void Modificar();
    int modo() const { return modo_; }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    bool Buscar(QLineEdit* campo);
    void Listar(QLineEdit* campo);
    bool TeclaLista(int tecla);
    void Habilitar();
    void LimpiarCampos();
    void Informar(const class KorvenError& e, const QString& seccion);

    std::unique_ptr<Ui::FrmCatArticulos> ui;
    AppContext& ctx_;
    int modo_ = 1;
    QString catalogo_; // the catalogue in hand, once known
};

} // namespace korven
