#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmSufijos;
}

namespace korven {

class AppContext;

// The details of a position ("posicion", 15 characters): the suffixes that apply, those of the
// full position in green, and the nomenclator's data group by group. Esc or Ctrl+C closes.
class FrmSufijos : public QDialog {
    Q_OBJECT
public:
    // The back colour of the rows of the position itself and of the headings.
    static QColor ColorPropio();

    FrmSufijos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmSufijos() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void showEvent(QShowEvent* evento) override;

private:
    void Cargar(const QString& posicion);
    void AnchoGrid();

    std::unique_ptr<Ui::FrmSufijos> ui;
    AppContext& ctx_;
};

} // namespace korven
