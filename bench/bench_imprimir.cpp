// The printed liquidation of an Operation of about 2,000 items (10,000 goods lines, assembled
// first) saved as PDF: the writing of the printing table and the pages to the file, on SQLite
// and, when KORVEN_TEST_PG names a server, on PostgreSQL. Prints the median of the runs in
// milliseconds.
//
//   build/bench/bench_imprimir [runs]

#include "Medir.h"
#include "assembly/ArmadoItems.h"
#include "liquidation/HojasListado.h"
#include "liquidation/ImpresionLiquidacion.h"
#include "support/OperacionArmado.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <cstdio>

using namespace korven;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 3;
    const QString interno = QStringLiteral("BENCH-PDF");
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        bench::StoresParaArmar(ts);
        test::OperacionParaArmar(ts.stores(), interno, 10000);
        ts.ctx().ArmadoResultado = QStringLiteral("SI");
        ProgresoArmado sinAvance;
        ArmadoItems(ts.ctx(), interno, sinAvance).Ejecutar();
        ts.ctx().InternoActual = interno;
        const int items = static_cast<int>(EsNumero(
            ts.conexion(QStringLiteral("INTERNOS"))
                .Abrir(QStringLiteral("select max(id) from item where interno = ?"), {interno})
                .Fields(0)));
        const QString pdf = ts.directorio() + QStringLiteral("liquidacion.pdf");
        QString error;
        int hojas = 0;
        const double ms = bench::Mediana(corridas, [&] {
            ImpresionLiquidacion impresion(ts.ctx());
            if (!impresion.pr_ImprimirLiq(0, items, interno, false)) {
                error = ts.dialogos().mensajes().join(QStringLiteral(" | "));
                return;
            }
            HojasListado hojasListado(impresion.Listados(), interno);
            error = hojasListado.GuardarPdf(pdf);
            hojas = static_cast<int>(impresion.Listados().size());
        });
        if (!error.isEmpty()) {
            std::fprintf(stderr, "La impresión falló: %s\n", qPrintable(error));
            return 1;
        }
        std::printf("%-10s liquidacion impresa de %d items a PDF: %9.1f ms (%d listados, %lld "
                    "KB)\n",
                    bench::NombreMotor(motor), items, ms, hojas,
                    static_cast<long long>(QFileInfo(pdf).size() / 1024));
        std::fflush(stdout);
    }
    return 0;
}
