#pragma once

#include "foundation/BuscarInternos.h"

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QToolBar;
class QTreeWidgetItem;

namespace Ui {
class FrmInternoNew;
}

namespace korven {

class AppContext;

// The list of Operations, the door to every one of them: filters, creation, opening under the
// workstation lock, copy and deletion.
class FrmInternoNew : public QDialog {
    Q_OBJECT
public:
    // args: "maquina", the name of this workstation (MaquinaLocal() when absent).
    FrmInternoNew(AppContext& ctx, const QVariantMap& args = {}, QWidget* padre = nullptr);
    ~FrmInternoNew() override;

    const QString& maquina() const { return maquina_; }

    void BuscarInternos();
    void NuevoInterno();
    // Deletes the Operation of the selected row; the row goes when it was deleted.
    void EliminarInterno();
    // Copies the Operation of the selected row under a number the operator gives.
    void CopiarInterno();
    // Opens the Operation under the workstation lock and shows its hub.
    void AbrirInterno(const QString& interno);
    void lp_ImprimirList();
    void SeleccionarCliente();
    void BuscarDespachante();

    // The interno of the selected row; empty on a group row or with no selection.
    QString InternoSeleccionado() const;
    // Operations listed (group rows and detail lines aside), in the order shown.
    QStringList InternosListados() const;

    // The title the frame takes while an Operation is open on this workstation.
    static QString TituloMarco(const QString& maquina);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void LlenarGrilla();
    void QuitarFila(const QString& interno);
    // Reads the row of the Operation again (after its hub closed); drops it when it is gone.
    void RefrescarFila(const QString& interno);
    QTreeWidgetItem* FilaDe(QTreeWidgetItem* item) const;
    bool TeclaFormulario(int tecla);
    void Error(const QString& seccion, const std::exception& e);

    std::unique_ptr<Ui::FrmInternoNew> ui;
    AppContext& ctx_;
    QString maquina_;
    QToolBar* TbMenu = nullptr;
    std::unique_ptr<QObject> copiador_; // OperationCopier.Main
    QList<FilaInterno> filas_;
};

} // namespace korven
