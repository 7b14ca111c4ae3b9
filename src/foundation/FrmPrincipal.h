#pragma once

#include <QMainWindow>
#include <functional>

class QMdiArea;
class QAction;

namespace korven {

class AppContext;

// The frame of the program: the parent window of the menu and the other screens, of one fixed
// size and never maximised. Closing it ends the process.
class FrmPrincipal : public QMainWindow {
    Q_OBJECT
public:
    // The fixed size: 11955 x 8445 twips at 15 twips a pixel.
    static constexpr int Ancho = 11955 / 15;
    static constexpr int Alto = 8445 / 15;

    FrmPrincipal(AppContext& ctx, std::function<void(int)> finDelProceso,
                 QWidget* parent = nullptr);

    QMdiArea* area() const { return area_; }
    // "Korven Windows - 01.00.00".
    static QString Titulo();

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    void mnuinternos_Click();

    AppContext& ctx_;
    std::function<void(int)> finDelProceso_;
    QMdiArea* area_;
};

} // namespace korven
