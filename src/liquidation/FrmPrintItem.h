#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmPrintItem;
}

namespace korven {

class AppContext;
class HojasListado;

// "Imprimir Listados": prints the items of the Operation (argument "interno") from cbDesde to
// CbHasta, with their goods lines when ChSubitems is set, on a preview when ChVistaPrel is
// set and otherwise on the configured printer without a dialog; CmdPdf saves the same pages as
// PDF in the file of the argument "archivoPdf", or the one chosen in a file dialog.
class FrmPrintItem : public QDialog {
    Q_OBJECT
public:
    FrmPrintItem(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);
    ~FrmPrintItem() override;

    void CmdPrint_Click();
    void CmdPdf_Click();

private:
    // Writes the listing; the pages, or nothing when refused or failed.
    std::unique_ptr<HojasListado> Preparar();

    std::unique_ptr<Ui::FrmPrintItem> ui_;
    AppContext& ctx_;
    QString interno_;
    QString archivoPdf_;
};

} // namespace korven
