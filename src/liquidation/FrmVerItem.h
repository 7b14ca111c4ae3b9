#pragma once

#include <QDialog>
#include <QVariantMap>

class QLabel;
class QTableWidget;

namespace korven {

class AppContext;

// The items of an assembled Operation as the assembly left them: every item with its sums and
// freight and insurance, the concepts of the item chosen with their amounts, and for item 0
// the totals of the liquidation by concept. Read only; Esc closes.
class FrmVerItem : public QDialog {
    Q_OBJECT
public:
    FrmVerItem(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);

    void VerDetalleITEM(const QString& id);

protected:
    void keyPressEvent(QKeyEvent* e) override;

private:
    void LlenarItems();

    AppContext& ctx_;
    QString interno_;
    QTableWidget* items_;
    QTableWidget* liq_;
    QLabel* totales_;
};

} // namespace korven
