#pragma once

#include <QDialog>
#include <QVariantMap>

class QLineEdit;

namespace korven {

class AppContext;

// "Configuración Base de Datos": the folders of the stores in KORVEN.ini. F6 in a field asks
// for a folder; on closing every field is normalised and written to its key, and the store
// paths in memory follow (the settings store is refreshed at the next start).
class FrmBase : public QDialog {
    Q_OBJECT
public:
    FrmBase(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);

    // The name under which the folder browser is opened.
    static QString PantallaCarpeta() { return QStringLiteral("ClassFile.Carpeta"); }

    void done(int r) override;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    struct Campo {
        QLineEdit* txt;
        const char* seccion;
        const char* clave;
        const char* archivo;
        QString* ruta;
    };
    void Elegir(QLineEdit* txt);
    void Guardar();

    AppContext& ctx_;
    QList<Campo> campos_;
    bool guardado_ = false;
};

} // namespace korven
