#pragma once

#include "assembly/CorridaArmado.h"

#include <QDialog>
#include <QVariantMap>
#include <memory>

namespace Ui {
class FrmArmarItem;
}

namespace korven {

class AppContext;

// The progress window of the assembly: no input, ten stages with their pictures, the bars of
// the suffixes and of the items. Shown, it runs the assembly of the Operation ("interno")
// once, with the fines option ("multa"), and closes itself at the end; after an error it stays
// open until Esc or Ctrl+C.
class FrmArmarItem : public QDialog, public ProgresoArmado {
    Q_OBJECT
public:
    FrmArmarItem(AppContext& ctx, const QVariantMap& args = {}, QWidget* parent = nullptr);
    ~FrmArmarItem() override;

    void Generar();

    // ProgresoArmado
    void Etapa(int etapa, bool terminada) override;
    void BarraSufijos(int valor, int maximo) override;
    void Barra(int valor, int maximo) override;
    void Item(const QString& texto) override;
    void MostrarInsumos() override;
    bool MostrarDatos(const QString& texto) override;

protected:
    void showEvent(QShowEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    std::unique_ptr<Ui::FrmArmarItem> ui_;
    AppContext& ctx_;
    QString interno_;
    bool multa_ = false;
    QString marca_ = QStringLiteral("0"); // "1" once the run has begun
};

} // namespace korven
