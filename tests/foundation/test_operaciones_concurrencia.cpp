// Several processes on the same stores, each playing a workstation, on SQLite and on
// PostgreSQL.
//
// With "--competidor <DataAccessConfig.ini> <workstation>" this program is one workstation that
// reads orders from its input: "TOMAR <number>" takes an Operation's lock, "NUEVO <number>"
// creates an Operation, "COPIA <origin> <number>" copies one. It says "LEIDO" (for the lock, once
// it has looked for a lock and found none) and waits for "SIGUE", so that both workstations go
// on together, then answers "<number> HECHO" or "<number> PERDIO <first line of the message>".
//
// With "--trabajo <DataAccessConfig.ini> copiar|eliminar <number> [<new number>]" it runs one
// copy or deletion, saying "EMPIEZA" just before and "HECHO" after: the test kills it at a
// random moment in between.
//
// With "--retener <DataAccessConfig.ini> <milliseconds>" it holds the write lock of the stores,
// says "TOMADA", and lets it go after that time (when negative, once its input closes).

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
#include "foundation/BloqueoInterno.h"
#include "foundation/EliminarInterno.h"
#include "foundation/NuevoInterno.h"
#include "platform/KorvenError.h"
#include "support/OperacionGrande.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
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

int Trabajo(const QStringList& a) {
    Puesto p(a.at(0));
    p.dialogos.ResponderSiempre(true);
    p.stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    QTextStream salida(stdout);
    salida << "EMPIEZA" << Qt::endl;
    if (a.at(1) == QStringLiteral("copiar"))
        CopiaInterno(p.ctx).Copiar(a.at(2), a.at(3));
    else if (!EliminarInterno(p.ctx, QStringLiteral("PC-TEST")).Ejecutar(a.at(2)))
        return 1;
    salida << "HECHO" << Qt::endl;
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
    void matarEnMedio_data();
    void matarEnMedio();
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

void TestOperacionesConcurrencia::matarEnMedio_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("trabajo");
    FILA_MOTORES("copiar", "copiar");
    FILA_MOTORES("eliminar", "eliminar");
}

// A copy or a deletion of a large Operation killed at a random moment: every time the
// Operation is whole or wholly gone, and the copy wholly there or absent.
void TestOperacionesConcurrencia::matarEnMedio() {
    MOTOR_O_SALTAR();
    QFETCH(QString, trabajo);
    auto ts = Stores(motor);
    const int lineas = 4000;
    const QStringList todas = FilasDeOperacionGrande(0).keys();
    const QMap<QString, int> entera = FilasDeOperacionGrande(lineas);
    OperacionGrande(ts->stores(), "ORIGEN", lineas);
    QCOMPARE(FilasDe(ts->stores(), "ORIGEN", todas), entera);
    const bool copiar = trabajo == QStringLiteral("copiar");
    // What the copy looks like when made, and what a deletion leaves (idrel, sysflag and coment
    // stay behind on purpose).
    QMap<QString, int> copiada, borrada;
    for (const QString& t : TablasDeLaCopia())
        copiada.insert(t, entera.value(t));
    for (auto i = entera.cbegin(); i != entera.cend(); ++i)
        borrada.insert(i.key(),
                       QStringList{"idrel", "sysflag", "coment"}.contains(i.key()) ? i.value() : 0);
    const QString ini = ts->stores().parametersPath();
    QRandomGenerator azar(20261123);

    // Runs the work on number r; kills it after espera microseconds (never when negative).
    // True when it said it was done.
    auto correr = [&](int r, qint64 espera, qint64* duracion) {
        const QString numero = copiar ? QStringLiteral("ORIGEN") : QStringLiteral("D-%1").arg(r);
        if (!copiar)
            OperacionGrande(ts->stores(), numero, lineas);
        ts->stores().CloseAllDataConnection();
        QProcess p;
        p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QStringList args{QStringLiteral("--trabajo"), ini, trabajo, numero};
        if (copiar)
            args << QStringLiteral("C-%1").arg(r);
        p.start(QCoreApplication::applicationFilePath(), args);
        if (!p.waitForStarted() || Leer(p) != QStringLiteral("EMPIEZA"))
            return false;
        QElapsedTimer reloj;
        reloj.start();
        if (espera >= 0) {
            QThread::usleep(static_cast<unsigned long>(espera));
            p.kill();
        }
        p.waitForFinished(60000);
        if (duracion)
            *duracion = reloj.nsecsElapsed() / 1000;
        return QString::fromUtf8(p.readAll()).contains(QStringLiteral("HECHO"));
    };
    qint64 duracion = 0;
    QVERIFY(correr(0, -1, &duracion));
    int enteras = 0, interrumpidas = 0;
    for (int r = 1; r <= 20; ++r) {
        const bool termino =
            correr(r, static_cast<qint64>(azar.bounded(static_cast<double>(duracion))), nullptr);
        const QString ronda = QStringLiteral("ronda %1").arg(r);
        if (copiar) {
            QCOMPARE(FilasDe(ts->stores(), "ORIGEN", todas), entera);
            const QMap<QString, int> copia =
                FilasDe(ts->stores(), QStringLiteral("C-%1").arg(r), TablasDeLaCopia());
            QMap<QString, int> vacia = copia;
            for (int& v : vacia)
                v = 0;
            QVERIFY2(copia == copiada || copia == vacia, qPrintable(ronda));
            enteras += copia == copiada;
        } else {
            const QMap<QString, int> quedan =
                FilasDe(ts->stores(), QStringLiteral("D-%1").arg(r), todas);
            QVERIFY2(quedan == entera || quedan == borrada, qPrintable(ronda));
            enteras += quedan == entera;
        }
        interrumpidas += !termino;
    }
    qInfo("%s: trabajo de %lld us; %d de 20 interrumpidos, %d sin efecto", qPrintable(trabajo),
          duracion, interrumpidas, copiar ? 20 - enteras : enteras);
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
    if (args.size() >= 5 && args.at(1) == QStringLiteral("--trabajo"))
        return Trabajo(args.mid(2));
    if (args.size() >= 4 && args.at(1) == QStringLiteral("--retener"))
        return Retener(args.at(2), args.at(3).toInt());
    TestOperacionesConcurrencia t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_operaciones_concurrencia.moc"
