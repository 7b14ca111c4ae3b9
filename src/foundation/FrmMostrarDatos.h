#pragma once

#include <QDialog>
#include <QVariantMap>

class QPlainTextEdit;

namespace korven {

class AppContext;

// "Resultados": a long text in a box that fills the window, with a pop-up menu to copy it or
// close. Esc or Ctrl+C close. The text comes in the argument "texto".
class FrmMostrarDatos : public QDialog {
    Q_OBJECT
public:
    FrmMostrarDatos(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);

    QPlainTextEdit* texto() const { return texto_; }
    void mnucopiar_Click();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    QPlainTextEdit* texto_;
};

} // namespace korven
