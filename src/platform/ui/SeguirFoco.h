#pragma once

class QScrollArea;

namespace korven {

// Keeps the field that takes the focus in sight inside a scroll area, however the focus got
// there (Enter, Tab, a jump by the form's own code).
void SeguirFoco(QScrollArea* area);

} // namespace korven
