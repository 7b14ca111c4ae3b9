// Several processes on the same stores, each playing a workstation.
//
// With "--competidor <DataAccessConfig.ini>" this program is one workstation that reads orders
// from its input: "NUEVO <number>" creates an Operation, "COPIA <origin> <number>" copies one.
// It says "LEIDO" and waits for "SIGUE", so that both workstations start together, then answers
// "<number> HECHO" or "<number> PERDIO <first line of the message shown>".
//
// With "--trabajo <DataAccessConfig.ini> copiar|eliminar <number> [<new number>]" it runs one
// copy or deletion, saying "EMPIEZA" just before and "HECHO" after: the test kills it at a
// random moment in between.

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
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

int Competidor(const QString& ini) {
    Puesto p(ini);
    QTextStream entrada(stdin);
    QTextStream salida(stdout);
    salida << "LISTO" << Qt::endl;
    QString linea;
    while (entrada.readLineInto(&linea) && !linea.isEmpty()) {
        const QStringList orden = linea.split(QLatin1Char(' '));
        const QString numero = orden.last();
        salida << "LEIDO" << Qt::endl;
        entrada.readLine();
        p.dialogos.Limpiar();
        p.dialogos.ResponderTexto(numero);
        const QString hecho = orden.first() == QStringLiteral("NUEVO")
                                  ? NuevoInterno(p.ctx).Ejecutar()
                                  : CopiaInterno(p.ctx).Mostrar(orden.at(1));
        salida << numero << ' '
               << (hecho == numero
                       ? QStringLiteral("HECHO")
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

QString Leer(QProcess& p) {
    while (!p.canReadLine())
        if (!p.waitForReadyRead(60000))
            return QString();
    return QString::fromUtf8(p.readLine()).trimmed();
}

void Escribir(QProcess& p, const QByteArray& linea) {
    p.write(linea);
    p.waitForBytesWritten(60000);
}

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    return ts;
}

QStringList TodasLasTablas() {
    return FilasDeOperacionGrande(0).keys();
}

} // namespace

class TestOperacionesConcurrencia : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mismoNumeroALaVez_data();
    void mismoNumeroALaVez();
    void matarEnMedio_data();
    void matarEnMedio();
};

void TestOperacionesConcurrencia::mismoNumeroALaVez_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("orden");
    for (const char* o : {"NUEVO", "COPIA"}) {
        QTest::addRow("sqlite %s", o) << static_cast<int>(Motor::SQLite) << QString::fromLatin1(o);
        QTest::addRow("postgresql %s", o)
            << static_cast<int>(Motor::PostgreSQL) << QString::fromLatin1(o);
    }
}

// Two workstations create, or copy to, the same new number at the same moment (every other
// round one of them types it in lower case): one Operation is made, with its lines once, and the
// other workstation is told the number exists.
void TestOperacionesConcurrencia::mismoNumeroALaVez() {
    MOTOR_O_SALTAR();
    QFETCH(QString, orden);
    auto ts = Stores(motor);
    const int lineas = 300;
    OperacionGrande(ts->stores(), "ORIGEN", lineas);
    ts->stores().CloseAllDataConnection();
    const QString ini = ts->stores().parametersPath();

    QProcess procesos[2];
    for (QProcess& p : procesos) {
        p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--competidor"), ini});
        QVERIFY(p.waitForStarted());
    }
    for (QProcess& p : procesos)
        QCOMPARE(Leer(p), QStringLiteral("LISTO"));
    int ganadas[2] = {0, 0};
    const int rondas = 50;
    for (int r = 1; r <= rondas; ++r) {
        const QString numeros[2] = {
            QStringLiteral("ABC-%1").arg(r),
            (r % 2 ? QStringLiteral("abc-%1") : QStringLiteral("ABC-%1")).arg(r)};
        for (int i = 0; i < 2; ++i)
            Escribir(procesos[i],
                     (orden + QLatin1Char(' ') +
                      (orden == QStringLiteral("COPIA") ? QStringLiteral("ORIGEN ") : QString()) +
                      numeros[i] + QLatin1Char('\n'))
                         .toUtf8());
        for (QProcess& p : procesos)
            QCOMPARE(Leer(p), QStringLiteral("LEIDO"));
        Escribir(procesos[r % 2], "SIGUE\n");
        Escribir(procesos[(r + 1) % 2], "SIGUE\n");
        int hechos = 0;
        for (int i = 0; i < 2; ++i) {
            const QString linea = Leer(procesos[i]);
            const bool gano = linea == numeros[i] + QStringLiteral(" HECHO");
            QVERIFY2(gano || linea == numeros[i] +
                                          QStringLiteral(" PERDIO El Código de interno ya existe."),
                     qPrintable(linea));
            hechos += gano;
            ganadas[i] += gano;
        }
        QCOMPARE(hechos, 1);
        const QVariant n = QStringLiteral("ABC-%1").arg(r);
        Conexion& cx = ts->conexion("INTERNOS");
        QCOMPARE(
            EsNumero(
                cx.Abrir("select count(*) from caratula where upper(interno) = ?", {n}).Fields(0)),
            1.0);
        const double esperadas = orden == QStringLiteral("COPIA") ? lineas : 0;
        QCOMPARE(
            EsNumero(
                cx.Abrir("select count(*) from subitems where upper(interno) = ?", {n}).Fields(0)),
            esperadas);
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
    for (const char* t : {"copiar", "eliminar"}) {
        QTest::addRow("sqlite %s", t) << static_cast<int>(Motor::SQLite) << QString::fromLatin1(t);
        QTest::addRow("postgresql %s", t)
            << static_cast<int>(Motor::PostgreSQL) << QString::fromLatin1(t);
    }
}

// A copy or a deletion of a large Operation killed at a random moment: every time the
// Operation is whole or wholly gone, and the copy wholly there or absent.
void TestOperacionesConcurrencia::matarEnMedio() {
    MOTOR_O_SALTAR();
    QFETCH(QString, trabajo);
    auto ts = Stores(motor);
    const int lineas = 4000;
    const QMap<QString, int> entera = FilasDeOperacionGrande(lineas);
    OperacionGrande(ts->stores(), "ORIGEN", lineas);
    QCOMPARE(FilasDe(ts->stores(), "ORIGEN", TodasLasTablas()), entera);
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
        if (copiar) {
            QCOMPARE(FilasDe(ts->stores(), "ORIGEN", TodasLasTablas()), entera);
            const QMap<QString, int> copia =
                FilasDe(ts->stores(), QStringLiteral("C-%1").arg(r), TablasDeLaCopia());
            QMap<QString, int> vacia = copia;
            for (int& v : vacia)
                v = 0;
            QVERIFY2(copia == copiada || copia == vacia,
                     qPrintable(QStringLiteral("ronda %1").arg(r)));
            enteras += copia == copiada;
        } else {
            const QMap<QString, int> quedan =
                FilasDe(ts->stores(), QStringLiteral("D-%1").arg(r), TodasLasTablas());
            QVERIFY2(quedan == entera || quedan == borrada,
                     qPrintable(QStringLiteral("ronda %1").arg(r)));
            enteras += quedan == entera;
        }
        interrumpidas += !termino;
    }
    qInfo("%s: trabajo de %lld us; %d de 20 interrumpidos, %d sin efecto", qPrintable(trabajo),
          duracion, interrumpidas, copiar ? 20 - enteras : enteras);
}

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args.at(1) == QStringLiteral("--competidor"))
        return Competidor(args.at(2));
    if (args.size() >= 5 && args.at(1) == QStringLiteral("--trabajo"))
        return Trabajo(args.mid(2));
    TestOperacionesConcurrencia t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_operaciones_concurrencia.moc"
