#pragma once

#include <QString>

namespace korven {

class Dialogos;

// A workstation on its embedded stores: when there is no DataAccessConfig.ini beside the program
// and its db/ folder is missing or empty, creates every store there with the reference data and
// the demo Operations. True when the stores were created; a failure is reported and answers
// false (the start then finds what is missing where it first uses it).
bool CrearBasesIniciales(const QString& directorioPrograma, Dialogos& dialogos);

} // namespace korven
