#pragma once

#include <QDialog>
#include <QVariantMap>

class QLabel;
class QLineEdit;
class QRadioButton;

namespace korven {

class AppContext;

// Asks an amount and its currency. Enter with a number closes answering {"valor": the amount
// in "00.00", "moneda": "0" for pesos or "1" for dollars}; Esc closes with no answer.
class FrmDatos : public QDialog {
    Q_OBJECT
public:
    // args: "descripcion", what the amount is for.
    FrmDatos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);

protected:
    void keyPressEvent(QKeyEvent* evento) override;

private:
    void Aceptar();

    QLabel* descripcion_;
    QLineEdit* valor_;
    QRadioButton* dolares_;
    QRadioButton* pesos_;
};

} // namespace korven
