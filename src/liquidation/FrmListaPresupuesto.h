#pragma once

#include <QDialog>
#include <QVariantMap>

class QLabel;
class QLineEdit;
class QListWidget;

namespace korven {

class AppContext;

// A one-column list of the quote kept by the clerk (FrmConceptos, FrmReferencias): Insert on
// the list shows the entry line, Enter there saves the text after its checks, Escape there
// cancels the entry, Delete on the list removes the selected row, Escape on the list closes.
class FrmListaPresupuesto : public QDialog {
    Q_OBJECT
public:
    struct Definicion {
        QString formulario; // object name of the screen
        QString titulo;
        QString lista; // object name of the list
        QString tabla;
        QString columna;
        QString consulta; // the rows, ordered
        QString repetido; // a text already in the list
    };

    FrmListaPresupuesto(AppContext& ctx, Definicion d, QWidget* padre);

    void Cargar();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Guardar();
    void Eliminar();
    void CerrarEntrada();
    void Error(const QString& rutina, int numero, const QString& descripcion);

    AppContext& ctx_;
    Definicion d_;
    QListWidget* lista_;
    QLineEdit* entrada_;
    QLabel* ayuda_;
};

// "Conceptos": the concepts of the quote (conpresu).
class FrmConceptos : public FrmListaPresupuesto {
    Q_OBJECT
public:
    FrmConceptos(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
};

// "Referencias": the references of the quote (referencias).
class FrmReferencias : public FrmListaPresupuesto {
    Q_OBJECT
public:
    FrmReferencias(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
};

} // namespace korven
