// Two processes, each playing its own workstation, race to open the same Operations: for every
// Operation exactly one of them gets it. Run with "--competidor <DataAccessConfig.ini>
// <workstation>", this program is one of the two: it reads a number per line from its input and
// tries to take that Operation's lock; once it has looked for a lock and found none it says
// "LEIDO" and waits for "SIGUE", so that both workstations have passed the look before either
// inserts; then it answers "<number> GANO" or "<number> PERDIO".

#include "FixtureOperaciones.h"
#include "foundation/BloqueoInterno.h"
#include "platform/KorvenError.h"
#include "platform/ScriptedDialogs.h"

#include <QProcess>
#include <QTextStream>
#include <QtTest>
#include <cstdio>

using namespace korven;
using namespace korven::test;

namespace {

int Competidor(const QString& ini, const QString& maquina) {
    StoreDirectory stores;
    stores.setParametersPath(ini);
    stores.LoadParameters();
    ScriptedDialogs dialogos;
    BloqueoInterno bloqueo(stores, dialogos, maquina);
    QTextStream entrada(stdin);
    QTextStream salida(stdout);
    bloqueo.setAntesDeInsertar([&] {
        salida << "LEIDO" << Qt::endl;
        entrada.readLine();
    });
    salida << "LISTO" << Qt::endl;
    QString interno;
    while (entrada.readLineInto(&interno)) {
        if (interno.isEmpty())
            break;
        QString resultado;
        try {
            // The loser tells the first line of what it was told.
            resultado = bloqueo.Tomar(interno)
                            ? QStringLiteral("GANO")
                            : QStringLiteral("PERDIO ") + dialogos.mensajes()
                                                              .value(dialogos.mensajes().size() - 1)
                                                              .section(QLatin1Char('\n'), 0, 0);
        } catch (const KorvenError& e) {
            resultado = QStringLiteral("ERROR ") + e.descripcion();
        }
        salida << interno << ' ' << resultado << Qt::endl;
    }
    return 0;
}

} // namespace

class TestBloqueoCarrera : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void unoSoloGana_data() { FilasDeMotores(); }
    void unoSoloGana();
};

void TestBloqueoCarrera::unoSoloGana() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    ts.stores().CloseAllDataConnection();
    const QString ini = ts.stores().parametersPath();

    QProcess procesos[2];
    const char* maquinas[2] = {"PC-A", "PC-B"};
    for (int i = 0; i < 2; ++i) {
        procesos[i].setProcessChannelMode(QProcess::ForwardedErrorChannel);
        procesos[i].start(QCoreApplication::applicationFilePath(),
                          {QStringLiteral("--competidor"), ini, QString::fromLatin1(maquinas[i])});
        QVERIFY(procesos[i].waitForStarted());
    }
    auto leer = [](QProcess& p) {
        while (!p.canReadLine())
            if (!p.waitForReadyRead(60000))
                return QString();
        return QString::fromUtf8(p.readLine()).trimmed();
    };
    for (QProcess& p : procesos)
        QCOMPARE(leer(p), QStringLiteral("LISTO"));

    const int rondas = 200;
    int ganadas[2] = {0, 0};
    for (int r = 1; r <= rondas; ++r) {
        const QByteArray interno = QByteArray::number(r) + '\n';
        // Writes reach a process only when it is waited on: each is flushed at once.
        auto escribir = [](QProcess& p, const QByteArray& linea) {
            p.write(linea);
            p.waitForBytesWritten(60000);
        };
        for (QProcess& p : procesos)
            escribir(p, interno);
        // Both have found the Operation free; now both insert, in turns of who hears first.
        for (QProcess& p : procesos)
            QCOMPARE(leer(p), QStringLiteral("LEIDO"));
        escribir(procesos[r % 2], "SIGUE\n");
        escribir(procesos[(r + 1) % 2], "SIGUE\n");
        int ganadores = 0;
        for (int i = 0; i < 2; ++i) {
            const QString linea = leer(procesos[i]);
            const QString perdio =
                QStringLiteral("%1 PERDIO Este interno esta abierto por la PC: %2")
                    .arg(r)
                    .arg(QString::fromLatin1(maquinas[1 - i]));
            QVERIFY2(linea == QStringLiteral("%1 GANO").arg(r) || linea == perdio,
                     qPrintable(linea));
            if (linea.endsWith(QStringLiteral("GANO"))) {
                ++ganadores;
                ++ganadas[i];
            }
        }
        QCOMPARE(ganadores, 1);
    }
    for (QProcess& p : procesos) {
        p.closeWriteChannel();
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
    }
    QCOMPARE(ganadas[0] + ganadas[1], rondas);
    // Every Operation holds exactly one lock, of the workstation that won it.
    QCOMPARE(EsNumero(Valor(ts, "select count(*) from interno")), static_cast<double>(rondas));
    QCOMPARE(EsNumero(Valor(ts, "select count(*) from interno where maquina = 'PC-A'")),
             static_cast<double>(ganadas[0]));
    qInfo("PC-A gano %d, PC-B gano %d", ganadas[0], ganadas[1]);
}

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 4 && args.at(1) == QStringLiteral("--competidor"))
        return Competidor(args.at(2), args.at(3));
    TestBloqueoCarrera t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_bloqueo_carrera.moc"
