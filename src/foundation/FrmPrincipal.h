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

    // Room taken on the desktop besides the screens: the title bar and borders of a window, and
    // the task bar at the foot of the desktop.
    static constexpr int BordesAncho = 8;
    static constexpr int BordesAlto = 38;
    static constexpr int BarraDeTareas = 40;

    QMdiArea* area() const { return area_; }
    // The room a screen has on a desktop of that size, below the frame's menu bar and above the
    // task bar, without its own title bar and borders: no screen is larger than this at
    // 1024 x 768.
    QSize AreaDePantallas(const QSize& escritorio) const;
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
