#pragma once

// What the benchmarks share: the engines to measure (PostgreSQL when KORVEN_TEST_PG names a
// server) and the median of a few runs.

#include "platform/Conexion.h"
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
