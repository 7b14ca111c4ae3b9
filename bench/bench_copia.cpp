// The copy and the deletion of an Operation of 10,000 goods lines (with rows in every other
// table it owns), on SQLite and, when KORVEN_TEST_PG names a server, on PostgreSQL. Prints the
// median of the runs in milliseconds.
//
//   build/bench/bench_copia [runs]

#include "Medir.h"
#include "components/CopiaInterno.h"
#include "foundation/EliminarInterno.h"
#include "platform/AppContext.h"
#include "platform/ScriptedDialogs.h"
#include "schema/Esquema.h"
#include "support/OperacionGrande.h"

#include <QCoreApplication>
#include <cstdio>

using namespace korven;

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 5;
    const int lineas = 10000;
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        schema::CrearOActualizar(ts.stores());
        test::OperacionGrande(ts.stores(), QStringLiteral("ORIGEN"), lineas);
        ts.dialogos().ResponderSiempre(true);
        int serie = 0;
        const double copia = bench::Mediana(corridas, [&] {
            CopiaInterno(ts.ctx()).Copiar(QStringLiteral("ORIGEN"),
                                          QStringLiteral("COPIA-%1").arg(++serie));
        });
        const int copiadas =
            test::FilasDe(ts.stores(), QStringLiteral("COPIA-1"), {QStringLiteral("subitems")})
                .value(QStringLiteral("subitems"));
        // Each deletion takes a whole Operation, made before it is timed.
        const double borrado = bench::Mediana(
            corridas,
            [&] {
                if (!EliminarInterno(ts.ctx(), QStringLiteral("PC-BENCH"))
                         .Ejecutar(QStringLiteral("BORRAR-%1").arg(serie)))
                    std::fprintf(stderr, "La eliminación falló: %s\n",
                                 qPrintable(ts.dialogos().mensajes().join(QStringLiteral(" | "))));
            },
            [&] {
                test::OperacionGrande(ts.stores(), QStringLiteral("BORRAR-%1").arg(++serie),
                                      lineas);
            });
        std::printf("%-10s copia de %d lineas: %8.2f ms (%d lineas copiadas)\n",
                    bench::NombreMotor(motor), lineas, copia, copiadas);
        std::printf("%-10s eliminacion de %d lineas: %8.2f ms\n", bench::NombreMotor(motor), lineas,
                    borrado);
    }
    return 0;
}
