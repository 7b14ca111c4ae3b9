#pragma once

#include <QDialog>
#include <QTreeWidget>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmLstProrrateo;
}

namespace korven {

class AppContext;

// Picks a proration code of the Operation "interno": Enter or a double click answers the code,
// Esc answers the empty text.
class FrmLstProrrateo : public QDialog {
    Q_OBJECT
public:
    FrmLstProrrateo(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmLstProrrateo() override;

    void CargarList();
    // Fills a list of proration codes (columns code, description, value).
    static void LlenarLista(QTreeWidget* lista, AppContext& ctx, const QString& interno);

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Elegir();

    std::unique_ptr<Ui::FrmLstProrrateo> ui;
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
