#include "platform/ui/TextosFormulario.h"

#include <QLineEdit>
#include <QWidget>

namespace korven {

namespace {

bool TomaTab(const QWidget* w) {
    return (w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

// The form's controls in the order Tab visits them.
QList<QWidget*> OrdenTab(QWidget* form) {
    QList<QWidget*> r;
    QWidget* w = form->nextInFocusChain();
    while (w && w != form) {
        if (form->isAncestorOf(w) && TomaTab(w))
            r << w;
        w = w->nextInFocusChain();
    }
    return r;
}

} // namespace

void HabilitarTextos(QWidget* form, bool habilitar) {
    if (!form)
        return;
    for (QLineEdit* t : form->findChildren<QLineEdit*>())
        t->setEnabled(habilitar);
}

int UltimoTab(QWidget* form) {
    if (!form)
        return -1;
    const QList<QWidget*> orden = OrdenTab(form);
    int ultimo = -1;
    for (int i = 0; i < orden.size(); ++i) {
        if (qobject_cast<QLineEdit*>(orden[i]) && orden[i]->isVisibleTo(form))
            ultimo = i;
    }
    return ultimo;
}

int PosicionTab(QWidget* form, const QWidget* control) {
    if (!form)
        return -1;
    return static_cast<int>(OrdenTab(form).indexOf(const_cast<QWidget*>(control)));
}

} // namespace korven
