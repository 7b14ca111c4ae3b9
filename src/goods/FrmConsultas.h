#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmConsultas;
}

namespace korven {

class AppContext;

// Queries of the nomenclator by position and by description. Enter in the list, or a double
// click, shows the details of the position; Esc or Ctrl+C closes.
class FrmConsultas : public QDialog {
    Q_OBJECT
public:
    FrmConsultas(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmConsultas() override;

    void CmdBuscar();
    void Command1();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Detalles();

    std::unique_ptr<Ui::FrmConsultas> ui;
    AppContext& ctx_;
};

} // namespace korven
