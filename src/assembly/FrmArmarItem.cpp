#include "assembly/FrmArmarItem.h"

#include "assembly/ArmadoItems.h"
#include "platform/AppContext.h"
#include "ui_FrmArmarItem.h"

#include <QKeyEvent>
#include <QStyle>
#include <QTimer>

namespace korven {

namespace {

// The picture beside each stage, in the order of the stages.
const char* const kImagenes[] = {"Image8", "Image1", "Image2", "Image3", "Image4",
                                 "Image5", "Image6", "Image7", "Image9", "Image10"};

} // namespace

FrmArmarItem::FrmArmarItem(AppContext& ctx, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::FrmArmarItem>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()),
      multa_(args.value(QStringLiteral("multa")).toBool()) {
    ui_->setupUi(this);
    ui_->lbInsumos->hide();
    ui_->Image9->hide();
    ui_->lbEtapa9->hide();
}

FrmArmarItem::~FrmArmarItem() = default;

void FrmArmarItem::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    // The run goes once, when the window is first on screen.
    if (marca_ == QLatin1String("0"))
        QTimer::singleShot(0, this, [this] { Generar(); });
}

void FrmArmarItem::Generar() {
    if (marca_ != QLatin1String("0"))
        return;
    marca_ = QStringLiteral("1");
    setCursor(Qt::WaitCursor);
    ctx_.CalcMultas = multa_;
    const bool normal = ArmadoItems(ctx_, interno_, *this).Ejecutar();
    unsetCursor();
    // After an error the window stays for the clerk to close; otherwise it closes itself.
    if (normal || !isVisible())
        accept();
    else
        ui_->lbITM->setText(QStringLiteral("[Esc] - Salir"));
}

void FrmArmarItem::Etapa(int etapa, bool terminada) {
    if (etapa < 1 || etapa > 10)
        return;
    auto* imagen = findChild<QLabel*>(QString::fromLatin1(kImagenes[etapa - 1]));
    if (!imagen)
        return;
    const QIcon icono =
        style()->standardIcon(terminada ? QStyle::SP_DialogApplyButton : QStyle::SP_ArrowRight);
    imagen->setPixmap(icono.pixmap(16, 16));
    repaint();
}

void FrmArmarItem::BarraSufijos(int valor, int maximo) {
    ui_->pbSUF->setMaximum(std::max(1, maximo));
    ui_->pbSUF->setValue(std::min(valor, std::max(1, maximo)));
    if (valor == maximo || valor % 100 == 0)
        ui_->pbSUF->repaint();
}

void FrmArmarItem::Barra(int valor, int maximo) {
    ui_->Pb1->setMaximum(std::max(1, maximo));
    ui_->Pb1->setValue(std::min(valor, std::max(1, maximo)));
    if (valor == maximo || valor % 50 == 0)
        ui_->Pb1->repaint();
}

void FrmArmarItem::Item(const QString& texto) {
    ui_->lbITM->setText(texto);
}

void FrmArmarItem::MostrarInsumos() {
    ui_->Image9->show();
    ui_->lbEtapa9->show();
    ui_->lbInsumos->show();
    repaint();
}

bool FrmArmarItem::MostrarDatos(const QString& texto) {
    if (!ctx_.pantallas().Registrada(QStringLiteral("FrmMostrarDatos")))
        return false;
    ctx_.AbrirModal(QStringLiteral("FrmMostrarDatos"), {{QStringLiteral("texto"), texto}});
    return true;
}

void FrmArmarItem::keyPressEvent(QKeyEvent* e) {
    const bool ctrlC = e->key() == Qt::Key_C && (e->modifiers() & Qt::ControlModifier);
    if (e->key() == Qt::Key_Escape || ctrlC) {
        reject();
        return;
    }
    QDialog::keyPressEvent(e);
}

} // namespace korven
