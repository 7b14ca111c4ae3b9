#pragma once

#include "goods/LineaSubItem.h"
#include "goods/ListaSubItems.h"

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QLineEdit;
class QToolBar;

namespace Ui {
class FrmSubItems;
}

namespace korven {

class AppContext;
class ModeloSubItems;

// The goods lines of an Operation: each line ties a position of the nomenclator to a quantity,
// a price and the statistics, specific-duty and weight values the position asks for, which
// follow from one another as they are typed. Below, the list of the lines with its filters,
// reports and bulk utilities. Enter moves on and saves on the last field, F6 lists, F9 changes
// between adding and modifying, F11 and F12 save, Esc leaves.
class FrmSubItems : public QDialog {
    Q_OBJECT
public:
    // args: "interno", "flags" (the eight options of the assembly; a false one hides its fields).
    FrmSubItems(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmSubItems() override;

    // Reads the list in force again, with its totals and their colours.
    void GetSubItemsOnListView();
    // Resolves a position as Enter does; false when the nomenclator does not have it.
    bool BuscarNCM(const QString& posicion);
    void CalcularUnidades();
    void CalcularKgUnitario();
    // Loads a line into the fields for modifying it.
    void BuscarSubItem(long long id);
    // Saves the line in the fields: adds it in mode 1, modifies the one in hand in mode 2.
    void Grabar(int modoSufijos = 2);
    // F9: between adding and modifying.
    void cmdModificar();
    // A filter of the toolbar (0 shows everything).
    void Filtrar(int filtro);
    int modo() const { return modo_; }
    ModeloSubItems* modelo() const { return modelo_; }

public Q_SLOTS:
    void reject() override;
    void done(int resultado) override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void showEvent(QShowEvent* evento) override;

private:
    bool TeclaFormulario(QKeyEvent* k);
    bool Enter(QLineEdit* campo);
    void Listar(QLineEdit* campo);
    void AlSalir(QLineEdit* campo, bool porTeclado);
    void TeclaImporte(QLineEdit* campo, QKeyEvent* k);
    void Espejar(QLineEdit* campo);
    void Posicion();
    void ListarPosicion();
    void MostrarPosicion(bool conTip);
    void BuscarUnidad();
    void BuscarCatalogo();
    void ElegirCatalogo();
    void BuscarArticuloSobreCat(bool lista);
    void ActualizarOpciones(bool porUnitario, bool guardar);
    void MostrarTotales();
    void LimpiarCampos();
    void SalirModificar();
    void EntrarModificar();
    void CargarFila();
    void lpEliminar();
    void Utilidad(int cual);
    void GenerarReportes(bool archivo);
    void lpImprimir();
    void ImportarLineas(bool archivo);
    void SelectINSUMOS();
    void VerINSxSBT();
    void NoInstalado(const QString& componente, const char* rutina);
    void CrearMenu();
    LineaSubItem Linea() const;
    void PonerLinea(const LineaSubItem& l);
    QList<long long> Seleccionados() const;
    bool CatalogoVisible() const;
    bool KilosHabilitados() const;

    std::unique_ptr<Ui::FrmSubItems> ui;
    AppContext& ctx_;
    QString interno_;
    ListaSubItems lista_;
    ModeloSubItems* modelo_ = nullptr;
    QToolBar* TMenuSub = nullptr;
    int modo_ = 1;           // 1 adding, 2 modifying
    bool porF9_ = false;     // modify was entered by F9
    bool grabando_ = false;  // a save is running
    bool teclaSube_ = false; // the last key was Up or F9
    bool cargando_ = false;
    long long idEnMano_ = 0; // the line being modified
    int ultimoTab_ = -1;     // place of the last field in the tab order
    bool admiteEAN_ = false;
    bool deInsumos_ = false;
    double fobCaratula_ = 0;
    int orden_ = -1;
    bool ordenAsc_ = true;
};

} // namespace korven
