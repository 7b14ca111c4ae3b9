#pragma once

#include <QDialog>
#include <QStringList>
#include <QVariantMap>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace korven {

class AppContext;

// "Configuración General - Korven Windows": every option of section GENERAL of KORVEN.ini and
// the few options of the settings store. The options are written, to the file and to the
// settings in memory, when the screen closes with Esc (or Ctrl+C).
class FrmConGen : public QDialog {
    Q_OBJECT
public:
    // The printer list has room for this many names.
    static constexpr int MaxImpresoras = 10;

    FrmConGen(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);

    // Fills the printer list from these names (the system's printers at load).
    void LeeImpresoras(const QStringList& nombres);

    void done(int r) override;

protected:
    void keyPressEvent(QKeyEvent* e) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    QCheckBox* Check(const char* nombre, const QString& texto);
    void Cargar();
    // Checks the fields and writes every option; false (and the screen stays) on a bad value.
    bool Guardar();
    void Escribir(const char* clave, const QString& valor);

    AppContext& ctx_;
    QComboBox* cboListado_;
    QCheckBox *chkMostrarOperaciones_, *chVendedorxNombre_, *chSbtMantCodart_, *chSbtMantDatos_,
        *chSbtMostrarAsc_, *chSbtNroArtAI_, *chkSBTForzarARTenAI_, *chSbtFuncionCargaPor_, *check1_,
        *check2_, *check3_, *chFlgArtModSub_, *check4_, *check5_, *chByArt_, *chVfySbtDup_,
        *chkNoCalcularLiquidacion_, *chkEnviarComExt_, *chCANCSinStock_, *chINSTEMPPerMer_,
        *chINSTEMPVDE_;
    QRadioButton *opARMARITEM1_, *opARMARITEM2_;
    QLineEdit *txtRIN_, *txtRNI_, *txtIndMaxArancel_, *txtPrefPorc_;
    QListWidget* lstImpresoras_;
    QStringList impresoras_;
    bool cerrando_ = false;
};

} // namespace korven
