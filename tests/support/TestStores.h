#pragma once

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/ScriptedDialogs.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"

#include <QTemporaryDir>
#include <memory>

namespace korven::test {

// A private set of stores for one test: a temporary program directory with its
// DataAccessConfig.ini, pointing either at SQLite files in its db/ folder or at a fresh
// database on the PostgreSQL server of the test run (KORVEN_TEST_PG, a libpq connection string
// such as "host=/tmp/x port=55432 user=korven"). The database is dropped at the end.
class TestStores {
public:
    explicit TestStores(Motor motor);
    ~TestStores();

    // False (with the reason) when the engine is not available to this run: PostgreSQL without
    // KORVEN_TEST_PG. Tests then QSKIP with the reason, and the suite's runner makes sure the
    // variable is set, so that a skip never hides in CI.
    static bool Disponible(Motor motor, QString* motivo = nullptr);

    Motor motor() const { return motor_; }
    const QString& directorio() const { return dir_; } // normalised program directory
    StoreDirectory& stores() { return *stores_; }
    ScriptedDialogs& dialogos() { return dialogos_; }
    SettingsStore& settings() { return *settings_; }
    AppContext& ctx() { return *ctx_; }
    // Appends lines to the test's DataAccessConfig.ini and reloads it (connections reopen).
    void AgregarConfiguracion(const QString& lineas);
    Conexion& conexion(const QString& entidad) {
        return stores_->getDataConnectionByEntity(entidad);
    }

private:
    Motor motor_;
    QTemporaryDir tmp_;
    QString dir_;
    QString baseDatos_;
    std::unique_ptr<StoreDirectory> stores_;
    ScriptedDialogs dialogos_;
    std::unique_ptr<SettingsStore> settings_;
    std::unique_ptr<AppContext> ctx_;
};

// Adds the two rows "sqlite" and "postgresql" with a column "motor" (int of Motor) to a
// data-driven test; use MOTOR_O_SALTAR() at the start of the test function.
void FilasDeMotores();
// The same rows, each under both decimal separators: a second column of that name with "," or ".".
void FilasDeMotoresYSeparadores(const char* columna = "sep");
#define MOTOR_O_SALTAR()                                                                           \
    QFETCH(int, motor);                                                                            \
    do {                                                                                           \
        QString motivo_;                                                                           \
        if (!::korven::test::TestStores::Disponible(static_cast<::korven::Motor>(motor),           \
                                                    &motivo_))                                     \
            QSKIP(qPrintable(motivo_));                                                            \
    } while (0)

} // namespace korven::test
