#include "platform/ui/TeclasEscritorio.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

namespace korven {

namespace {

// The combo box a key went to: the box itself or the text box inside an editable one.
QComboBox* ComboDe(QObject* objeto) {
    if (auto* c = qobject_cast<QComboBox*>(objeto))
        return c;
    if (auto* t = qobject_cast<QLineEdit*>(objeto))
        if (auto* c = qobject_cast<QComboBox*>(t->parentWidget()); c && c->lineEdit() == t)
            return c;
    return nullptr;
}

} // namespace

TeclasEscritorio::TeclasEscritorio(QObject* parent) : QObject(parent) {
    setObjectName(QStringLiteral("TeclasEscritorio"));
}

void TeclasEscritorio::Instalar(QCoreApplication* app) {
    if (!app ||
        app->findChild<QObject*>(QStringLiteral("TeclasEscritorio"), Qt::FindDirectChildrenOnly))
        return;
    app->installEventFilter(new TeclasEscritorio(app));
}

bool TeclasEscritorio::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QObject::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    const Qt::KeyboardModifiers mods = k->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (mods != Qt::NoModifier)
        return QObject::eventFilter(objeto, evento);

    if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
        auto* boton = qobject_cast<QPushButton*>(objeto);
        if (boton && boton->hasFocus() && boton->isEnabled() && boton->isVisible()) {
            boton->click();
            return true;
        }
    } else if (k->key() == Qt::Key_F6) {
        QComboBox* combo = ComboDe(objeto);
        if (combo && combo->isEnabled() && combo->isVisible() && !combo->view()->isVisible()) {
            combo->showPopup();
            return true;
        }
    }
    return QObject::eventFilter(objeto, evento);
}

} // namespace korven
