// The workstation lock of an Operation, on SQLite and on PostgreSQL, and the race of two
// processes for the same Operations: for every Operation exactly one of them gets it. Run with
// "--competidor <DataAccessConfig.ini> <workstation>", this program is one of the two: it reads a
// number per line from its input and tries to take that Operation's lock; once it has looked for
// a lock and found none it says "LEIDO" and waits for "SIGUE", so that both workstations have
// passed the look before either inserts; then it answers "<number> GANO" or "<number> PERDIO".

#include "FixtureOperaciones.h"
#include "foundation/BloqueoInterno.h"
#include "platform/AppContext.h"
#include "platform/KorvenError.h"
#include "platform/ScriptedDialogs.h"

#include <QProcess>
#include <QTextStream>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kOtraPc = QStringLiteral("Este interno esta abierto por la PC: ");

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

class TestBloqueo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void tomar_data();
    void tomar();
    void dosPcs_data() { FilasDeMotores(); }
    void dosPcs();
    void unoSoloGana_data() { FilasDeMotores(); }
    void unoSoloGana();
};

void TestBloqueo::tomar_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("previa"); // workstation of the lock found ("" none)
    QTest::addColumn<bool>("toma");
    QTest::addColumn<QString>("mensaje");
    QTest::addColumn<int>("icono");
    const QString cambio =
        "El estado de INTERNO indica que el mismo esta abierto.\n\nSe procedera a "
        "cambiar el estado.\n\nUltimo Acceso: viernes, 15 de marzo de 2024";
    for (int motor : {0, 1}) {
        const char* m = motor ? "postgresql" : "sqlite";
        QTest::addRow("%s libre", m) << motor << "" << true << "" << 0;
        // A lock left by this workstation (a crash): told, replaced, and the Operation opens.
        QTest::addRow("%s misma pc", m)
            << motor << " PC-A " << true << cambio << static_cast<int>(Dialogos::Icono::Critico);
        QTest::addRow("%s otra pc", m)
            << motor << "PC-B" << false
            << kOtraPc + "PC-B\n\nAccedido el viernes, 15 de marzo de 2024"
            << static_cast<int>(Dialogos::Icono::Informacion);
    }
}

void TestBloqueo::tomar() {
    MOTOR_O_SALTAR();
    QFETCH(QString, previa);
    QFETCH(bool, toma);
    QFETCH(QString, mensaje);
    QFETCH(int, icono);
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    const QDate antes(2024, 3, 15);
    if (!previa.isEmpty())
        Insertar(ts, "INTERNOS", "interno",
                 {{"interno", "7'1"}, {"maquina", previa}, {"usuario", ""}, {"fecha", antes}});
    BloqueoInterno b(ts.stores(), ts.dialogos(), "PC-A");
    QCOMPARE(b.Tomar("7'1"), toma);
    const auto& r = ts.dialogos().registro();
    QCOMPARE(r.size(), mensaje.isEmpty() ? 0 : 1);
    if (!mensaje.isEmpty()) {
        QCOMPARE(r.at(0).texto, mensaje);
        QCOMPARE(static_cast<int>(r.at(0).icono), icono);
    }
    Recordset rs = ts.conexion("INTERNOS").Abrir("select interno,maquina,usuario from interno");
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(EsNull(rs.Fields("interno")), QStringLiteral("7'1"));
    QCOMPARE(EsNull(rs.Fields("maquina")), toma ? QStringLiteral("PC-A") : previa);
    QCOMPARE(EsNull(rs.Fields("usuario")), QString());
    QVERIFY(!rs.Fields("usuario").isNull());
    QCOMPARE(b.Leer("7'1")->fecha, toma ? QDate::currentDate() : antes);
    if (toma) {
        b.Liberar("7'1");
        QVERIFY(!b.Leer("7'1"));
    }
}

// Two workstations on one set of stores: the second is told who has the Operation until the
// first gives it back; the store's key itself refuses a second lock of the same Operation.
void TestBloqueo::dosPcs() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    BloqueoInterno a(ts.stores(), ts.dialogos(), "PC-A");
    BloqueoInterno b(ts.stores(), ts.dialogos(), "PC-B");
    QVERIFY(a.Tomar("100"));
    QVERIFY(!b.Tomar("100"));
    QVERIFY(ts.dialogos().mensajes().at(0).startsWith(kOtraPc + "PC-A\n\nAccedido el "));
    a.Liberar("100");
    QVERIFY(b.Tomar("100"));
    QCOMPARE(b.Leer("100")->maquina, QStringLiteral("PC-B"));
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY_THROWS_EXCEPTION(KorvenError, Insertar(ts, "INTERNOS", "interno",
                                                   {{"interno", "100"},
                                                    {"maquina", "PC-A"},
                                                    {"usuario", ""},
                                                    {"fecha", QDate::currentDate()}}));
    QCOMPARE(EsNumero(Valor(ts, "select count(*) from interno")), 1.0);
}

void TestBloqueo::unoSoloGana() {
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
    TestBloqueo t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_bloqueo.moc"
