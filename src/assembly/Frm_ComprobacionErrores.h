#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class Frm_ComprobacionErrores;
}

namespace korven {

class AppContext;

// The differences found in the countries of an Operation (argument "texto"), one entry of the
// list for each line. Escape closes it.
class Frm_ComprobacionErrores : public QDialog {
    Q_OBJECT
public:
    Frm_ComprobacionErrores(AppContext& ctx, const QVariantMap& args = {},
                            QWidget* parent = nullptr);
    ~Frm_ComprobacionErrores() override;

private:
    std::unique_ptr<Ui::Frm_ComprobacionErrores> ui_;
};

} // namespace korven
