#include "goods/FrmPosicion.h"

#include "goods/Nomenclador.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "ui_FrmPosicion.h"

#include <QKeyEvent>

namespace korven {

FrmPosicion::FrmPosicion(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmPosicion>()), ctx_(ctx) {
    ui->setupUi(this);
    setProperty("Respuesta", QVariant());
    ui->TxtNCM->installEventFilter(this);
    ui->LstNCM->installEventFilter(this);
    connect(ui->LstNCM, &QListWidget::currentTextChanged, this, [this](const QString& t) {
        if (!t.isEmpty())
            MostrarDatos(t);
    });
    connect(ui->LstNCM, &QListWidget::itemDoubleClicked, this, [this] { Seleccionar(); });
    const QString texto = args.value(QStringLiteral("texto")).toString();
    ui->TxtNCM->setText(texto);
    ui->TxtNCM->setFocus();
    if (!BuscarNCM(texto))
        ctx_.dialogos().Mensaje(QStringLiteral("Posición no Encontrada."));
}

FrmPosicion::~FrmPosicion() = default;

void FrmPosicion::Reportar(const KorvenError& e, const char* rutina) {
    ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                                QStringLiteral(" - seccion [KORVEN.FrmPosicion.") +
                                QLatin1String(rutina) + QStringLiteral("]::"),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

bool FrmPosicion::BuscarNCM(const QString& texto) {
    ui->LstNCM->clear();
    ui->LbDescripcion->clear();
    ui->LstSufijos->clear();
    datos_.clear();
    try {
        const QStringList posiciones = Nomenclador(ctx_).BuscarNCM(texto);
        if (posiciones.isEmpty())
            return false;
        ui->LstNCM->addItems(posiciones);
        ui->LstNCM->setCurrentRow(0);
        ui->LstNCM->setFocus();
        return true;
    } catch (const KorvenError& e) {
        Reportar(e, "BuscarNCM");
    }
    return false;
}

void FrmPosicion::MostrarDatos(const QString& posicion) {
    ui->LstSufijos->clear();
    try {
        const auto d = Nomenclador(ctx_).MostrarDatos(posicion);
        if (!d) {
            ui->LbDescripcion->clear();
            datos_.clear();
            return;
        }
        ui->LbDescripcion->setText(d->descripcion);
        datos_ = d->marcas;
        ui->LstSufijos->addItems(d->sufijos);
    } catch (const KorvenError& e) {
        Reportar(e, "MostrarDatos");
    }
}

void FrmPosicion::Seleccionar() {
    const QListWidgetItem* fila = ui->LstNCM->currentItem();
    if (!fila)
        return;
    QVariantMap r = datos_;
    r.insert(QStringLiteral("posicion"), fila->text());
    setProperty("Respuesta", r);
    accept();
}

void FrmPosicion::reject() {
    setProperty("Respuesta", QVariant());
    QDialog::reject();
}

bool FrmPosicion::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    if (k->key() == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
        reject();
        return true;
    }
    const bool enter = k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter;
    if (enter && objeto == ui->TxtNCM) {
        if (!ui->TxtNCM->text().isEmpty() && !BuscarNCM(ui->TxtNCM->text()))
            ctx_.dialogos().Mensaje(QStringLiteral("Posición no encontrada."));
        return true;
    }
    if (enter && objeto == ui->LstNCM) {
        Seleccionar();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
