#pragma once

#include <QDialog>
#include <QVariantMap>
#include <memory>

class QLineEdit;
class QPushButton;

namespace Ui {
class frmONCCA;
}

namespace korven {

class AppContext;

// The ONCCA data of an export of meat: ten codes, each chosen from its list (its button, or F6
// in the field), and the switch. F11 saves and closes; Esc closes without saving.
class frmONCCA : public QDialog {
    Q_OBJECT
public:
    // args: "interno".
    frmONCCA(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~frmONCCA() override;

    void CargarDatos();
    bool GuardarDatos();
    void CambiarEstadosCMD(bool estado);
    // The code a field holds (kept in its Tag).
    QString Codigo(const QString& campo) const;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    struct Campo {
        QLineEdit* texto;
        QPushButton* boton;
        QString columna;
        QString lista; // the list of PickLists: "Acuerdo", "Categoria", ...
    };
    void Poner(const Campo& c, const QString& codigo);
    void Elegir(const Campo& c);

    std::unique_ptr<Ui::frmONCCA> ui;
    AppContext& ctx_;
    QString interno_;
    std::vector<Campo> campos_;
};

} // namespace korven
