#include "support/TestStores.h"

#include "platform/ValueRules.h"

#include <QAtomicInt>
#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>
#include <QUuid>

namespace korven::test {

namespace {

QAtomicInt serie;

// "host=/tmp/x port=55432 user=korven dbname=postgres" -> key/value pairs.
QHash<QString, QString> ParametrosPg() {
    QHash<QString, QString> r;
    const QString cadena = qEnvironmentVariable("KORVEN_TEST_PG");
    for (const QString& par : cadena.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const int i = par.indexOf(QLatin1Char('='));
        if (i > 0)
            r.insert(par.left(i).toLower(), par.mid(i + 1));
    }
    return r;
}

// Runs one statement on the server's maintenance database.
void EjecutarEnServidor(const QString& sql) {
    const QHash<QString, QString> p = ParametrosPg();
    const QString nombre = QStringLiteral("korven_test_admin_%1").arg(serie.fetchAndAddOrdered(1));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), nombre);
        db.setHostName(p.value(QStringLiteral("host")));
        db.setPort(p.value(QStringLiteral("port"), QStringLiteral("5432")).toInt());
        db.setUserName(p.value(QStringLiteral("user")));
        db.setPassword(p.value(QStringLiteral("password")));
        db.setDatabaseName(p.value(QStringLiteral("dbname"), QStringLiteral("postgres")));
        if (!db.open())
            qFatal("No se puede conectar con el servidor PostgreSQL de las pruebas: %s",
                   qPrintable(db.lastError().text()));
        QSqlQuery q(db);
        if (!q.exec(sql))
            qWarning("%s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
        db.close();
    }
    QSqlDatabase::removeDatabase(nombre);
}

} // namespace

bool TestStores::Disponible(Motor motor, QString* motivo) {
    if (motor == Motor::SQLite)
        return true;
    if (!qEnvironmentVariableIsEmpty("KORVEN_TEST_PG"))
        return true;
    // The suite's runner always starts a server: there a missing one is a failure, not a skip.
    if (qEnvironmentVariableIntValue("KORVEN_REQUIRE_PG") == 1)
        qFatal("KORVEN_REQUIRE_PG=1 pero KORVEN_TEST_PG está vacío");
    if (motivo)
        *motivo = QStringLiteral("Sin servidor PostgreSQL para las pruebas (KORVEN_TEST_PG vacío)");
    return false;
}

TestStores::TestStores(Motor motor) : motor_(motor) {
    dir_ = DirectorioNormal(tmp_.path());
    if (motor == Motor::PostgreSQL) {
        if (!Disponible(motor))
            qFatal("KORVEN_TEST_PG no está definido");
        baseDatos_ = QStringLiteral("korven_t_%1_%2")
                         .arg(QCoreApplication::applicationPid())
                         .arg(QUuid::createUuid().toString(QUuid::Id128).left(12));
        EjecutarEnServidor(QStringLiteral("CREATE DATABASE %1").arg(baseDatos_));
        const QHash<QString, QString> p = ParametrosPg();
        QFile f(dir_ + QStringLiteral("DataAccessConfig.ini"));
        if (!f.open(QIODevice::WriteOnly))
            qFatal("No se puede escribir DataAccessConfig.ini");
        const QString ini =
            QStringLiteral("[DEFAULT]\nDRIVER=QPSQL\nHOST=%1\nPORT=%2\nDATABASE=%3\n"
                           "USER=%4\nPASSWORD=%5\n")
                .arg(p.value(QStringLiteral("host")),
                     p.value(QStringLiteral("port"), QStringLiteral("5432")), baseDatos_,
                     p.value(QStringLiteral("user")), p.value(QStringLiteral("password")));
        f.write(ini.toUtf8());
    }
    stores_ = std::make_unique<StoreDirectory>();
    stores_->setParametersPath(dir_ + QStringLiteral("DataAccessConfig.ini"));
    stores_->LoadParameters();
    settings_ = std::make_unique<SettingsStore>(dir_ + QStringLiteral("settings"));
    ctx_ = std::make_unique<AppContext>(*stores_, dialogos_, *settings_, dir_);
}

TestStores::~TestStores() {
    ctx_.reset();
    stores_->CloseAllDataConnection();
    stores_.reset();
    if (!baseDatos_.isEmpty())
        EjecutarEnServidor(
            QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(baseDatos_));
}

void TestStores::AgregarConfiguracion(const QString& lineas) {
    QFile f(dir_ + QStringLiteral("DataAccessConfig.ini"));
    if (!f.open(QIODevice::Append))
        qFatal("No se puede escribir DataAccessConfig.ini");
    f.write(lineas.toUtf8());
    f.close();
    stores_->LoadParameters();
}

void FilasDeMotores() {
    QTest::addColumn<int>("motor");
    QTest::newRow("sqlite") << static_cast<int>(Motor::SQLite);
    QTest::newRow("postgresql") << static_cast<int>(Motor::PostgreSQL);
}

void FilasDeMotoresYSeparadores(const char* columna) {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>(columna);
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
        for (const char* s : {",", "."})
            QTest::addRow("%s %s", m == Motor::SQLite ? "sqlite" : "postgresql", s)
                << static_cast<int>(m) << QString::fromLatin1(s);
}

} // namespace korven::test
