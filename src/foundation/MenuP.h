#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QTableWidget;

namespace korven {

class AppContext;
class KorvenError;

// The main menu: the entries of the program on the left, the forms of the form components on
// the right. Enter or a double click chooses an entry; Esc ends the process.
class MenuP : public QWidget {
    Q_OBJECT
public:
    MenuP(AppContext& ctx, std::function<void(int)> finDelProceso, QWidget* parent = nullptr);

    QTableWidget* GrdMenuMain() const { return grdMenuMain_; }
    QTableWidget* GridFormularios() const { return gridFormularios_; }

    // The entries of each grid, in their order.
    static QStringList TextosMenu();
    static QStringList TextosFormularios();

    // The action of a row of GrdMenuMain, and of a text of GridFormularios.
    void EjecutarMenu(int fila);
    void LlamarFormulario(const QString& texto);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void Form_Load();
    void LlenarMenu();
    void LlenarFormularios();
    void Clientes();
    void Transferencia(bool exportar);
    // One message for a failed action: the error with the action's section text.
    void Informar(const QString& seccion, const KorvenError& e);
    // The program directory without its final separator, and normalised.
    QString DirectorioPrograma() const;
    QString RutaPrograma() const;

    AppContext& ctx_;
    std::function<void(int)> finDelProceso_;
    QLabel* lbVersion_;
    QLabel* lbFechaKorven_;
    QLabel* lbNomenclador_;
    QTableWidget* grdMenuMain_;
    QTableWidget* gridFormularios_;
};

} // namespace korven
