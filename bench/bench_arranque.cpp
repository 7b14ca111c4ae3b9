// Start-up to the main menu on the reference data: the start routine (stores, KORVEN.ini,
// nomenclator date, frame and menu) until the menu is on screen, offscreen. Prints the median
// of the runs in milliseconds.
//
//   build/bench/bench_arranque [runs]

#include "foundation/BasesIniciales.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "platform/ScriptedDialogs.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("KORVEN_SOURCE_DIR"))
        qputenv("KORVEN_SOURCE_DIR", KORVEN_SOURCE_DIR_BENCH);
    QApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 20;

    QTemporaryDir dir;
    korven::ScriptedDialogs dialogos;
    QElapsedTimer reloj;
    reloj.start();
    if (!korven::CrearBasesIniciales(dir.path(), dialogos)) {
        std::fprintf(stderr, "No se pudieron crear las bases: %s\n",
                     qPrintable(dialogos.mensajes().join(QStringLiteral(" | "))));
        return 1;
    }
    std::printf("bases con los datos de referencia creadas en %lld ms\n",
                static_cast<long long>(reloj.elapsed()));

    korven::ParametrosArranque p;
    p.directorioPrograma = dir.path();
    p.carpetaSettings = dir.filePath(QStringLiteral("settings"));
    p.dialogos = &dialogos;
    int fines = 0;
    p.finDelProceso = [&fines](int) { ++fines; };

    // The first start writes the locations back to KORVEN.ini; the runs measure the starts that
    // follow, as a workstation has them every day.
    korven::Main(p).reset();

    std::vector<double> ms;
    for (int i = 0; i < corridas; ++i) {
        reloj.start();
        std::unique_ptr<korven::Sesion> s = korven::Main(p);
        QCoreApplication::processEvents();
        const qint64 ns = reloj.nsecsElapsed();
        if (!s || !s->menu() || !s->menu()->isVisible() || fines != 0) {
            std::fprintf(stderr, "El arranque falló: %s\n",
                         qPrintable(dialogos.mensajes().join(QStringLiteral(" | "))));
            return 1;
        }
        ms.push_back(static_cast<double>(ns) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    const double mediana =
        ms.size() % 2 ? ms[ms.size() / 2] : (ms[ms.size() / 2 - 1] + ms[ms.size() / 2]) / 2;
    std::printf("arranque hasta MenuP: mediana %.2f ms (mínimo %.2f, máximo %.2f) en %d corridas\n",
                mediana, ms.front(), ms.back(), corridas);
    return 0;
}
