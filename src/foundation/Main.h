#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace korven {

class AppContext;
class Dialogos;
class Sesion;

struct ParametrosArranque {
    // The program directory: KORVEN.ini, DataAccessConfig.ini and db/ are beside the program.
    QString directorioPrograma;
    // The folder of the per-user settings store.
    QString carpetaSettings;
    // The dialogs service; nullptr for the desktop's modal boxes.
    Dialogos* dialogos = nullptr;
    // Ends the process with the code (Esc on the menu, closing the frame, a failed start).
    std::function<void(int)> finDelProceso;
    // Registrations of the libraries above this one: their components and screens.
    std::vector<std::function<void(AppContext&)>> registros;
};

// The start routine: makes the process-wide objects and the context, registers the components
// and screens, reads KORVEN.ini, reads the date of the nomenclator and shows the menu inside
// the frame. A failure is reported with its section, ends the process and answers nullptr.
std::unique_ptr<Sesion> Main(const ParametrosArranque& p);

} // namespace korven
