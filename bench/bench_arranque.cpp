// Start-up to the main menu on the reference data: the start routine (stores, KORVEN.ini,
// nomenclator date, frame and menu) until the menu is on screen, offscreen, on SQLite and, when
// KORVEN_TEST_PG names a server, on PostgreSQL. Prints the median of the runs in milliseconds.
//
//   build/bench/bench_arranque [runs]

#include "Medir.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "schema/Esquema.h"

#include <QApplication>
#include <cstdio>

using namespace korven;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("KORVEN_SOURCE_DIR"))
        qputenv("KORVEN_SOURCE_DIR", KORVEN_SOURCE_DIR_BENCH);
    QApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 20;
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        schema::CrearOActualizar(ts.stores());
        schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
        ts.stores().CloseAllDataConnection();

        ParametrosArranque p;
        p.directorioPrograma = ts.directorio();
        p.carpetaSettings = ts.settings().carpeta();
        p.dialogos = &ts.dialogos();
        int fines = 0;
        p.finDelProceso = [&fines](int) { ++fines; };
        // The first start writes the locations back to KORVEN.ini; the runs measure the starts
        // that follow, as a workstation has them every day.
        Main(p).reset();
        bool bien = true;
        const double ms = bench::Mediana(corridas, [&] {
            std::unique_ptr<Sesion> s = Main(p);
            QCoreApplication::processEvents();
            bien = bien && s && s->menu() && s->menu()->isVisible() && fines == 0;
        });
        if (!bien) {
            std::fprintf(stderr, "El arranque falló: %s\n",
                         qPrintable(ts.dialogos().mensajes().join(QStringLiteral(" | "))));
            return 1;
        }
        std::printf("%-10s arranque hasta MenuP: %8.2f ms\n", bench::NombreMotor(motor), ms);
        std::fflush(stdout);
    }
    return 0;
}
