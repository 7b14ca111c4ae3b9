#include "foundation/FrmPrincipal.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMenuBar>

namespace korven {

QString FrmPrincipal::Titulo() {
    auto dos = [](int n) { return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')); };
    return QStringLiteral("Korven Windows - ") + dos(KORVEN_VERSION_MAJOR) + QLatin1Char('.') +
           dos(KORVEN_VERSION_MINOR) + QLatin1Char('.') + dos(KORVEN_VERSION_PATCH);
}

FrmPrincipal::FrmPrincipal(AppContext& ctx, std::function<void(int)> finDelProceso, QWidget* parent)
    : QMainWindow(parent), ctx_(ctx), finDelProceso_(std::move(finDelProceso)),
      area_(new QMdiArea(this)) {
    setObjectName(QStringLiteral("FrmPrincipal"));
    setWindowTitle(Titulo());
    // No sizing and no maximise: the frame keeps its one size.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowCloseButtonHint);
    setFixedSize(Ancho, Alto);
    area_->setObjectName(QStringLiteral("MDIArea"));
    setCentralWidget(area_);

    QMenu* opciones = menuBar()->addMenu(QStringLiteral("&Opciones"));
    opciones->setObjectName(QStringLiteral("mnuopciones"));
    QAction* internos = opciones->addAction(QStringLiteral("&Internos"));
    internos->setObjectName(QStringLiteral("mnuinternos"));
    connect(internos, &QAction::triggered, this, [this] { mnuinternos_Click(); });
}

QSize FrmPrincipal::AreaDePantallas(const QSize& escritorio) const {
    return {escritorio.width() - BordesAncho,
            escritorio.height() - BarraDeTareas - BordesAlto - menuBar()->sizeHint().height()};
}

void FrmPrincipal::mnuinternos_Click() {
    try {
        ctx_.AbrirModal(QStringLiteral("FrmInternoNew"));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[mnuinternos_Click.FrmPrincipal."
                                               "KORVEN]::%3")
                                    .arg(e.numero())
                                    .arg(e.descripcion(), e.origen()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

void FrmPrincipal::closeEvent(QCloseEvent* e) {
    e->accept();
    if (finDelProceso_)
        finDelProceso_(0);
}

} // namespace korven
