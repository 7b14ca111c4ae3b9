#pragma once

class QWidget;

namespace korven {

// Form-wide helpers over the text boxes of a form.

// Sets Enabled of every text box of the form.
void HabilitarTextos(QWidget* form, bool habilitar);
// The highest place in the tab order held by a visible text box of the form, counting the
// form's focusable controls from 0 in the order Tab visits them; -1 when none is visible.
int UltimoTab(QWidget* form);
// The place of a control in the tab order of its form, counted as UltimoTab counts; -1 when
// the control does not take the focus by Tab.
int PosicionTab(QWidget* form, const QWidget* control);

} // namespace korven
