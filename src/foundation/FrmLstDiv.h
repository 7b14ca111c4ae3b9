#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmLstDiv;
}

namespace korven {

class AppContext;

// The free comment of an Operation; Esc keeps it and closes.
class FrmLstDiv : public QDialog {
    Q_OBJECT
public:
    // args: "interno".
    FrmLstDiv(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmLstDiv() override;

    void Grabar();

public Q_SLOTS:
    void reject() override;

private:
    std::unique_ptr<Ui::FrmLstDiv> ui;
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
