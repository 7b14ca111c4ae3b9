#include "foundation/FrmMostrarDatos.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace korven {

FrmMostrarDatos::FrmMostrarDatos(AppContext&, const QVariantMap& args, QWidget* parent)
    : QDialog(parent), texto_(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("FrmMostrarDatos"));
    setWindowTitle(QStringLiteral("Resultados"));
    texto_->setObjectName(QStringLiteral("Text1"));
    texto_->setPlainText(args.value(QStringLiteral("texto")).toString());
    texto_->setContextMenuPolicy(Qt::CustomContextMenu);
    texto_->installEventFilter(this);
    auto* l = new QVBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->addWidget(texto_);
    resize(560, 380);

    auto* mnumenu = new QMenu(this);
    mnumenu->setObjectName(QStringLiteral("mnumenu"));
    QAction* copiar = mnumenu->addAction(QStringLiteral("Copiar"));
    copiar->setObjectName(QStringLiteral("mnucopiar"));
    QAction* cerrar = mnumenu->addAction(QStringLiteral("Cerrar"));
    cerrar->setObjectName(QStringLiteral("mnucerrar"));
    connect(copiar, &QAction::triggered, this, [this] { mnucopiar_Click(); });
    connect(cerrar, &QAction::triggered, this, &QDialog::reject);
    connect(texto_, &QWidget::customContextMenuRequested, this,
            [this, mnumenu](const QPoint& p) { mnumenu->popup(texto_->mapToGlobal(p)); });
}

void FrmMostrarDatos::mnucopiar_Click() {
    QApplication::clipboard()->setText(texto_->toPlainText());
}

bool FrmMostrarDatos::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == texto_ &&
        (evento->type() == QEvent::KeyPress || evento->type() == QEvent::ShortcutOverride)) {
        auto* k = static_cast<QKeyEvent*>(evento);
        const bool ctrlC = k->key() == Qt::Key_C && (k->modifiers() & Qt::ControlModifier);
        if (ctrlC || k->key() == Qt::Key_Escape) {
            if (evento->type() == QEvent::KeyPress)
                reject();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
