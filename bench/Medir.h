#pragma once

// What the benchmarks share: the engines to measure (PostgreSQL when KORVEN_TEST_PG names a
// server) and the median of a few runs.

#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "schema/Esquema.h"
#include "schema/OperacionesDemo.h"
#include "support/TestStores.h"

#include <QElapsedTimer>
#include <algorithm>
#include <functional>
#include <vector>

namespace korven::bench {

inline std::vector<Motor> Motores() {
    std::vector<Motor> m{Motor::SQLite};
    if (test::TestStores::Disponible(Motor::PostgreSQL))
        m.push_back(Motor::PostgreSQL);
    return m;
}

// The stores of a test with the reference data and the demonstration Operations, the
// nomenclator's components registered and every question answered no: what an assembly needs.
inline void StoresParaArmar(test::TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    const QString datos = QStringLiteral(KORVEN_SOURCE_DIR_BENCH "/data");
    schema::CargarDatosReferencia(ts.stores(), datos);
    schema::OperacionesDemo(ts.stores(), datos).Cargar();
    RegistrarComponentesNomenclador(ts.ctx().componentes());
    ts.dialogos().ResponderSiempre(false);
}

inline const char* NombreMotor(Motor m) {
    return m == Motor::SQLite ? "SQLite" : "PostgreSQL";
}

// Median of the runs of f, in milliseconds; antes runs before each one, unmeasured.
inline double Mediana(int corridas, const std::function<void()>& f,
                      const std::function<void()>& antes = {}) {
    std::vector<double> ms;
    QElapsedTimer reloj;
    for (int i = 0; i < corridas; ++i) {
        if (antes)
            antes();
        reloj.start();
        f();
        ms.push_back(static_cast<double>(reloj.nsecsElapsed()) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms.size() % 2 ? ms[ms.size() / 2] : (ms[ms.size() / 2 - 1] + ms[ms.size() / 2]) / 2;
}

} // namespace korven::bench
