#pragma once

#include "foundation/EstadoInterno.h"

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QCheckBox;

namespace Ui {
class FrmDetalleInterno;
}

namespace korven {

class AppContext;
class KorvenError;
class QueryDesk;

// The hub of one open Operation: who and what it is, how far it has come (VerDatos), its
// options for the item assembly, and the way into every piece of its work. It is opened under
// the workstation lock; closing it keeps the options and gives the lock back.
class FrmDetalleInterno : public QDialog {
    Q_OBJECT
public:
    // args: "interno".
    FrmDetalleInterno(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmDetalleInterno() override;

    const QString& interno() const { return interno_; }
    const EstadoDetalle& estado() const { return estado_; }
    QCheckBox* CkFlag(int n) const;

    // Recomputes everything on the screen.
    void VerDatos();

    void cmdCaratula();
    void CmdSubItems();
    void cmdITEM();
    void CmdBultos();
    void CmdTransMaria();
    void CmdPresupuesto();
    void cmdPrint();
    void CmdHojaVal();
    void cmdCertOrig();
    void cmdExportar();
    void cmdExportINS();
    void Command1();
    void Command4();

public Q_SLOTS:
    // Esc, Ctrl+C or closing the window: keeps the options, gives the lock back, drops the
    // connections of the stores.
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Aplicar();
    void Cerrar();
    void Reportar(const KorvenError& e, const QString& seccion);
    // Opens a screen of the Operation and, once it closes, shows the status again.
    void AbrirPantalla(const QString& nombre, const QVariantMap& args, const QString& seccion);
    std::unique_ptr<QObject> Componente(const QString& nombre);
    QString CadenaConexion(const QString& ruta) const;
    QueryDesk& ConectarDesks(QueryDesk& operaciones);

    std::unique_ptr<Ui::FrmDetalleInterno> ui;
    AppContext& ctx_;
    QString interno_;
    EstadoDetalle estado_;
    std::unique_ptr<QObject> insumosTemporales_; // SupplyTemporary.Main, kept once made
    bool cerrado_ = false;
};

} // namespace korven
