#pragma once

class QCoreApplication;

namespace korven {

// Loads Qt's own Spanish texts (qtbase_es.qm from Qt's translations folder) into the
// application, so that the standard boxes and dialogs read "Aceptar", "Cancelar", "Sí", "No".
// Answers false when the translations are not installed: the standard texts stay in English.
// A second call keeps the translator already loaded.
bool InstalarIdiomaEscritorio(QCoreApplication* app);

} // namespace korven
