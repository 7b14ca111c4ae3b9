#pragma once

#include "goods/CargaSubItems.h"
#include "goods/ImportadorSubItems.h"

#include <QDialog>
#include <QTimer>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmImportarSubItems;
}

namespace korven {

class AppContext;

// The preview of goods lines brought from a spreadsheet: which field each column feeds (Left
// and Right change it), every row as the goods line it makes with the verdict of the save on
// it, F12 to write the correct rows in one transaction, Esc to leave writing nothing. Opened by
// name ("FrmImportarSubItems", args "interno" and "texto" or "archivo"); its answer is the
// number of lines written.
class FrmImportarSubItems : public QDialog {
    Q_OBJECT
public:
    FrmImportarSubItems(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmImportarSubItems() override;

    // What the goods screen calls: rows pasted from a spreadsheet, or a CSV file (an empty path
    // asks for one). The number of lines written, 0 when none or cancelled.
    static int Importar(AppContext& ctx, const QString& interno, const QString& texto);
    static int ImportarArchivo(AppContext& ctx, const QString& interno, const QString& ruta = {});

    // Reads the rows again with the present mapping and judges them.
    void Verificar();
    void Aceptar();

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void MostrarColumnas();
    void CambiarCampo(int paso);
    void MostrarFilas();

    std::unique_ptr<Ui::FrmImportarSubItems> ui;
    AppContext& ctx_;
    QString interno_;
    ImportadorSubItems::Tabla tabla_;
    std::vector<ImportadorSubItems::Campo> mapeo_;
    std::vector<ImportadorSubItems::Preparada> lineas_;
    std::vector<CargaSubItems::Veredicto> veredictos_;
    QTimer recalcular_;
};

} // namespace korven
