#pragma once

#include "liquidation/DetalleItem.h"

#include <QDialog>
#include <QHash>
#include <QVariantMap>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QScrollBar;
class QTabWidget;
class QTableWidget;

namespace korven {

class AppContext;

// The items of an assembled Operation ("interno"), one at a time: item 0, the whole Operation,
// whose opening calculates the liquidation, and every declaration item with its values, its
// goods lines, information, advantages, concepts and cancellations. The scroll bar walks them
// and saves the item it leaves; Esc saves the item on screen and closes, unless a concept was
// changed and item 0 has not been calculated since.
class FrmVerItem : public QDialog {
    Q_OBJECT
public:
    FrmVerItem(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);
    ~FrmVerItem() override;

    // Loads the screen with an item (its number as text; "0" runs the liquidation).
    void VerDetalleITEM(const QString& id);
    // Saves the fields on screen as the item; 0 or less is item 0. False when nothing was saved.
    bool GrabarItem(long long id);
    long long ItemActual() const { return actual_; }

    void Eliminar();
    void PP_LIQ_ELiminar() { Eliminar(); }
    void PP_LIQ_Modificar();
    void InsertarCancelacion();
    void PP_CNL_Eliminar();
    void PP_CNL_Modificar();
    void PP_CNL_Imprimir();
    void CmdPrint_Click();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void keyPressEvent(QKeyEvent* e) override;
    void reject() override;

private:
    QLineEdit* Campo(const char* nombre, const char* columna, bool editable);
    void ConstruirPantalla();
    void IrA(long long id);
    void Poner(const QVariantMap& item);
    void PonerConceptos(long long id);
    DetalleItem::Campos LeerCampos() const;
    bool Teclas(QObject* objeto, int tecla, Qt::KeyboardModifiers mod);
    void ListaF6(QLineEdit* campo, QLabel* etiqueta, const QString& lista);
    void ListaDeLista();
    void ProrratearKilos();
    void AbrirAdCon(int modo);
    // Adds (F6) or removes (Delete) an advantage or an information row of the item.
    void Listas(bool agregar, bool ventajas);
    void ElegirOncca(int i);
    // A component the screen cannot work without here; its absence is reported with the section.
    bool Componente(const QString& nombre, const QString& rutina);
    void Reportar(const QString& rutina, int linea, int numero, const QString& descripcion);

    AppContext& ctx_;
    QString interno_;
    DetalleItem datos_;
    long long actual_ = -1;
    int cantidad_ = 0;
    bool cargando_ = false;

    QHash<QString, QLineEdit*> campos_; // by column of item
    QLineEdit *TxtNaladisa_ = nullptr, *TxtLista_ = nullptr, *TxtEstadoMerc_ = nullptr,
              *TxtIdpais_ = nullptr, *TxtIdproc_ = nullptr, *TxtTotKgNeto_ = nullptr,
              *TxtAjusteInc_ = nullptr, *txtAjusteDed_ = nullptr, *TxtItem_ = nullptr;
    QCheckBox* chkMineria_ = nullptr;
    QComboBox *cboOpcionIVA_ = nullptr, *cboOpcionesGanancias_ = nullptr;
    QScrollBar* Scr_ = nullptr;
    QTabWidget* sTab_ = nullptr;
    QTableWidget *GrdLiq_ = nullptr, *GridInf_ = nullptr, *LstV_ = nullptr, *lstVCancel_ = nullptr;
    QListWidget *LstVentajas_ = nullptr, *lstCertOrig_ = nullptr;
    QHash<QString, QLabel*> etiquetas_; // by object name
    QList<QLineEdit*> oncca_;
    QList<QPushButton*> botonesOncca_;
};

} // namespace korven
