#pragma once

#include "quote/Presupuesto.h"

#include <QDialog>
#include <QVariantMap>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace korven {

class AppContext;
class Pantallas;

// Hands a file to the desktop (the browser for the preview, the mail program for the message);
// true when the desktop took it.
using AbridorArchivo = std::function<bool(const QString& ruta)>;

// Registers "FrmPresupuesto" (argument "interno") and "FrmDatos". Files the quote writes are
// opened through abrir; without one, through the desktop's "open" action.
void RegistrarPresupuesto(Pantallas& pantallas, AbridorArchivo abrir = {});

// The client's quote of an Operation: declared values, liquidation totals in pesos and dollars,
// the broker's concepts, references and comment; preview in the browser and sending by mail.
class FrmPresupuesto : public QDialog {
    Q_OBJECT
public:
    // args: "interno".
    FrmPresupuesto(AppContext& ctx, const QVariantMap& args, AbridorArchivo abrir,
                   QWidget* padre = nullptr);

    void CargarCaratula();
    void Cargar();
    void Cargar2();
    // Builds the quote's HTML; with modo 1 also writes it to archivo. resultado "NO" on failure.
    QString LP_ArmarRep(const QString& archivo, int modo, QString& resultado);
    void GrabarACuenta();
    void SENDEMAIL();
    void SENDPREVW();
    void EnviarMail(const QString& texto);
    void LP_DEL_CONCEPTO();

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;

private:
    void Construir();
    void NuevoConcepto();
    void BorrarConcepto();
    void NuevaReferencia();
    void BorrarReferencia();
    void CambiarPase();
    void Comentarios();
    void MostrarTotales();
    double Pase() const;
    QString Asunto() const;
    void Error(int numero, const QString& descripcion);
    void ErrorArmado(int numero, const QString& descripcion);

    AppContext& ctx_;
    QString interno_;
    AbridorArchivo abrir_;
    Presupuesto work_;
    Presupuesto::Caratula car_;
    QList<Presupuesto::Concepto> conceptos_;
    QList<Presupuesto::Referencia> referencias_;
    Presupuesto::Total operativos_;
    QString emailDesde_, servidor_;
    bool vistaPrevia_ = false;

    QLabel *LbFOB, *LbFlete, *LbSeguro, *LbAjInc, *LbAjDed, *LbPaseFob, *LbPaseFlete, *LbPaseSeguro,
        *LbBaseImp, *LbBaseIVA;
    QLabel *LbGastosDespacho, *LbGastosDespachoPeso, *lbTOTALCOBDol, *lbTOTALCOBPes, *lbTOTALGARDol,
        *lbTotalGARPes, *LbGastosOperativosDol, *LbGastosOperativos;
    QLabel *LbDespachante, *LbCliente;
    QLineEdit *TxtPase, *TxtEmail, *txtAcuenta;
    QComboBox* CbLineas;
    QRadioButton *opSMTP, *opOutLook;
    QPushButton* cmdComent;
    QTableWidget *GrdLiq, *Grd, *Grd2;
};

} // namespace korven
