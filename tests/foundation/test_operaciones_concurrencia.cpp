// Several processes on the same stores, each playing a workstation, on SQLite and on
// PostgreSQL.
//
// With "--competidor <DataAccessConfig.ini> <workstation>" this program is one workstation that
// reads orders from its input: "TOMAR <number>" takes an Operation's lock, "NUEVO <number>"
// creates an Operation, "COPIA <origin> <number>" copies one. It says "LEIDO" (for the lock, once
// it has looked for a lock and found none) and waits for "SIGUE", so that both workstations go
// on together, then answers "<number> HECHO" or "<number> PERDIO <first line of the message>".
//
// With "--retener <DataAccessConfig.ini> <milliseconds>" it holds the write lock of the stores,
// says "TOMADA", and lets it go after that time (when negative, once its input closes).

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
#include "foundation/BloqueoInterno.h"
#include "foundation/NuevoInterno.h"
#include "platform/KorvenError.h"
#include "support/OperacionGrande.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kOtraPc = QStringLiteral("Este interno esta abierto por la PC: ");

// The program's stores as a workstation of its own sees them: the ini, and a settings store of
// its own.
struct Puesto {
    explicit Puesto(const QString& ini)
        : settings(tmp.path() + QStringLiteral("/settings")),
          ctx(stores, dialogos, settings, tmp.path() + QLatin1Char('/')) {
        stores.setParametersPath(ini);
        stores.LoadParameters();
    }
    QTemporaryDir tmp;
    StoreDirectory stores;
    ScriptedDialogs dialogos;
    SettingsStore settings;
    AppContext ctx;
};

int Competidor(const QString& ini, const QString& maquina) {
    Puesto p(ini);
    QTextStream entrada(stdin);
    QTextStream salida(stdout);
    auto esperar = [&] {
        salida << "LEIDO" << Qt::endl;
        entrada.readLine();
    };
    BloqueoInterno bloqueo(p.stores, p.dialogos, maquina);
    bloqueo.setAntesDeInsertar(esperar);
    salida << "LISTO" << Qt::endl;
    QString linea;
    while (entrada.readLineInto(&linea) && !linea.isEmpty()) {
        const QStringList orden = linea.split(QLatin1Char(' '));
        const QString numero = orden.last();
        p.dialogos.Limpiar();
        p.dialogos.ResponderTexto(numero);
        bool hecho;
        if (orden.first() == QStringLiteral("TOMAR")) {
            hecho = bloqueo.Tomar(numero);
        } else {
            esperar();
            hecho = (orden.first() == QStringLiteral("NUEVO")
                         ? NuevoInterno(p.ctx).Ejecutar()
                         : CopiaInterno(p.ctx).Mostrar(orden.at(1))) == numero;
        }
        salida << numero << ' '
               << (hecho ? QStringLiteral("HECHO")
                         : QStringLiteral("PERDIO ") +
                               p.dialogos.mensajes().value(0).section(QLatin1Char('\n'), 0, 0))
               << Qt::endl;
    }
    return 0;
}

int Retener(const QString& ini, int ms) {
    Puesto p(ini);
    Transaccion t(p.stores, {QStringLiteral("INTERNOS")});
    QTextStream(stdout) << "TOMADA" << Qt::endl;
    if (ms >= 0)
        QThread::msleep(static_cast<unsigned long>(ms));
    else
        QTextStream(stdin).readLine();
    t.Deshacer();
    return 0;
}

QString Leer(QProcess& p) {
    while (!p.canReadLine())
        if (!p.waitForReadyRead(60000))
            return QString();
    return QString::fromUtf8(p.readLine()).trimmed();
}

// Writes reach a process only when it is waited on: each line is flushed at once.
void Escribir(QProcess& p, const QString& linea) {
    p.write((linea + QLatin1Char('\n')).toUtf8());
    p.waitForBytesWritten(60000);
}

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    return ts;
}

} // namespace

class TestOperacionesConcurrencia : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mismoNumeroALaVez_data();
    void mismoNumeroALaVez();
    void reintento_data();
    void reintento();
};

void TestOperacionesConcurrencia::mismoNumeroALaVez_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("orden");
    QTest::addColumn<int>("rondas");
    FILA_MOTORES("TOMAR", "TOMAR" << 200);
    FILA_MOTORES("NUEVO", "NUEVO" << 50);
    FILA_MOTORES("COPIA", "COPIA" << 50);
}

// Two workstations take the lock of, create, or copy to the same number at the same moment
// (every other round one of them types it in lower case): exactly one of them gets it, the
// Operation is made once with its lines, and the other workstation is told why.
void TestOperacionesConcurrencia::mismoNumeroALaVez() {
    MOTOR_O_SALTAR();
    QFETCH(QString, orden);
    QFETCH(int, rondas);
    auto ts = Stores(motor);
    const int lineas = 300;
    if (orden == "COPIA")
        OperacionGrande(ts->stores(), "ORIGEN", lineas);
    ts->stores().CloseAllDataConnection();
    const QString maquinas[2] = {"PC-A", "PC-B"};
    QProcess procesos[2];
    for (int i = 0; i < 2; ++i) {
        procesos[i].setProcessChannelMode(QProcess::ForwardedErrorChannel);
        procesos[i].start(QCoreApplication::applicationFilePath(),
                          {"--competidor", ts->stores().parametersPath(), maquinas[i]});
        QVERIFY(procesos[i].waitForStarted());
    }
    for (QProcess& p : procesos)
        QCOMPARE(Leer(p), QStringLiteral("LISTO"));
    int ganadas[2] = {0, 0};
    for (int r = 1; r <= rondas; ++r) {
        const QString n = orden == "TOMAR" ? QString::number(r) : QStringLiteral("ABC-%1").arg(r);
        const QString numeros[2] = {n, r % 2 ? n.toLower() : n};
        for (int i = 0; i < 2; ++i)
            Escribir(procesos[i], orden + (orden == "COPIA" ? " ORIGEN " : " ") + numeros[i]);
        for (QProcess& p : procesos)
            QCOMPARE(Leer(p), QStringLiteral("LEIDO"));
        // Both have looked; now both go on, in turns of who hears first.
        Escribir(procesos[r % 2], "SIGUE");
        Escribir(procesos[(r + 1) % 2], "SIGUE");
        int hechos = 0, ganador = 0;
        for (int i = 0; i < 2; ++i) {
            const QString linea = Leer(procesos[i]);
            const QString perdio =
                orden == "TOMAR" ? kOtraPc + maquinas[1 - i] : "El Código de interno ya existe.";
            const bool gano = linea == numeros[i] + " HECHO";
            QVERIFY2(gano || linea == numeros[i] + " PERDIO " + perdio, qPrintable(linea));
            hechos += gano;
            ganadas[i] += gano;
            ganador = gano ? i : ganador;
        }
        QCOMPARE(hechos, 1);
        Conexion& cx = ts->conexion("INTERNOS");
        if (orden == "TOMAR") {
            QCOMPARE(
                EsNull(cx.Abrir("select maquina from interno where interno = ?", {n}).Fields(0)),
                maquinas[ganador]);
        } else {
            for (const char* t : {"caratula", "subitems"})
                QCOMPARE(EsNumero(cx.Abrir(QStringLiteral("select count(*) from %1 where "
                                                          "upper(interno) = ?")
                                               .arg(t),
                                           {n})
                                      .Fields(0)),
                         QString(t) == "caratula" ? 1.0
                         : orden == "COPIA"       ? lineas
                                                  : 0.0);
        }
        ts->stores().CloseAllDataConnection();
    }
    for (QProcess& p : procesos) {
        p.closeWriteChannel();
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
    }
    qInfo("%s: el primero gano %d, el segundo %d", qPrintable(orden), ganadas[0], ganadas[1]);
}

void TestOperacionesConcurrencia::reintento_data() {
    QTest::addColumn<int>("retencion");
    QTest::addColumn<QStringList>("mensajes");
    QTest::addColumn<int>("copiadas");
    QTest::newRow("liberada a tiempo") << 400 << QStringList() << 30;
    QTest::newRow("nunca liberada")
        << -1
        << QStringList{"5 - La base de datos está ocupada por otra estación de trabajo y no se "
                       "liberó a tiempo; la acción no se hizo. Inténtelo de nuevo en unos "
                       "momentos. - seccion [OperationCopier.Main.Mostrar]::"}
        << 0;
}

// Another workstation holds the store longer than the busy time-out: the copy, retried, goes
// through once it lets go; when it never does, every attempt was made, the clerk gets the
// system's message and nothing is written.
void TestOperacionesConcurrencia::reintento() {
    QFETCH(int, retencion);
    QFETCH(QStringList, mensajes);
    QFETCH(int, copiadas);
    auto ts = Stores(static_cast<int>(Motor::SQLite));
    const int espera = 100;
    ts->AgregarConfiguracion(QStringLiteral("[DEFAULT]\nBUSYTIMEOUT=%1\n").arg(espera));
    OperacionGrande(ts->stores(), "ORIGEN", copiadas ? copiadas : 30);
    ts->stores().CloseAllDataConnection();
    QProcess otra;
    otra.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    otra.start(QCoreApplication::applicationFilePath(),
               {"--retener", ts->stores().parametersPath(), QString::number(retencion)});
    QCOMPARE(Leer(otra), QStringLiteral("TOMADA"));
    ts->dialogos().ResponderTexto("COPIA-1");
    QElapsedTimer reloj;
    reloj.start();
    const QString hecho = CopiaInterno(ts->ctx()).Mostrar("ORIGEN");
    const qint64 ms = reloj.elapsed();
    otra.closeWriteChannel();
    QVERIFY(otra.waitForFinished(60000));
    QCOMPARE(ts->dialogos().mensajes(), mensajes);
    QCOMPARE(hecho, copiadas ? QStringLiteral("COPIA-1") : QString());
    QCOMPARE(FilasDe(ts->stores(), "COPIA-1", {"caratula", "subitems"}),
             (QMap<QString, int>{{"caratula", copiadas ? 1 : 0}, {"subitems", copiadas}}));
    QVERIFY2(ms >= (retencion < 0 ? IntentosPorConflicto * espera : retencion - espera),
             qPrintable(QString::number(ms)));
}

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 4 && args.at(1) == QStringLiteral("--competidor"))
        return Competidor(args.at(2), args.at(3));
    if (args.size() >= 4 && args.at(1) == QStringLiteral("--retener"))
        return Retener(args.at(2), args.at(3).toInt());
    TestOperacionesConcurrencia t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_operaciones_concurrencia.moc"
