#pragma once

#include <QDialog>
#include <QVariantMap>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace korven {

class AppContext;

// A concept of an item's liquidation by hand. args: "interno", "iditem", "modo" (1 adds, 2
// modifies) and, to modify, the row: "idconceptos", "conceptos", "porcentaje", "baseimp",
// "total", "pgc", "motivo". Numbers are typed in the system decimal separator; the total follows
// base x rate / 100 as they are typed. A good save marks the liquidation pending and closes
// with accept(); a refusal or a failure of the store leaves the screen open and the store as it
// was.
class FrmAdCon : public QDialog {
    Q_OBJECT
public:
    FrmAdCon(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);

    bool PF_Guardar();
    bool PF_Modificar();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void CargarConceptos(const QString& elegido);
    void Calcular();
    void Motivos();
    bool Validar();
    void Aviso(const QString& texto);
    // The update of the row of code "donde" with the screen's values and valor = 1; rows changed.
    int Actualizar(const QString& donde);

    AppContext& ctx_;
    QString interno_;
    long long iditem_;
    int modo_;
    QString codigoOriginal_;
    QComboBox* cbCONC;
    QComboBox* cbID;
    QLineEdit* txtPorc;
    QLineEdit* txtBimp;
    QLineEdit* TxtValor;
    QComboBox* cbPGC;
    QLineEdit* TxtMotivos;
    QPushButton* Command1;
};

} // namespace korven
