// An office under load on one PostgreSQL database: several processes of this program, each a
// workstation, at the same moment. Eight assemble and liquidate an Operation of their own, two
// race to open one same Operation and two copy Operations; then every result is compared with
// the same work done by one workstation alone.
//
// With "--puesto <DataAccessConfig.ini> <workstation> armar|abrir|copiar <number> [<new>]" this
// program is one workstation: it connects, says "LISTO", waits for a line on its input, does the
// work and says "MENSAJE <text>" for every message it showed, then "FIN <result>".

#include "assembly/FixtureArmado.h"
#include "components/CopiaInterno.h"
#include "foundation/BloqueoInterno.h"
#include "support/OperacionArmado.h"
#include "support/OperacionGrande.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const int kLineas = 2000;
const int kArmadores = 8;
const QString kAbierta = QStringLiteral("DEMO-IC04-001");
const QString kOtraPc = QStringLiteral("Este interno esta abierto por la PC: ");

// The work of one workstation on ctx; the result it reports.
QString Trabajar(AppContext& ctx, ScriptedDialogs& dialogos, const QStringList& a) {
    const QString& numero = a.at(2);
    if (a.at(1) == QLatin1String("armar")) {
        ctx.ArmadoResultado = QStringLiteral("SI");
        ProgresoArmado sinVentana;
        ArmadoItems(ctx, numero, sinVentana).Ejecutar();
        return ctx.ArmadoResultado;
    }
    if (a.at(1) == QLatin1String("abrir"))
        return BloqueoInterno(ctx.stores(), ctx.dialogos(), a.at(0)).Tomar(numero)
                   ? QStringLiteral("ABIERTA")
                   : QStringLiteral("NO");
    dialogos.ResponderTexto(a.at(3));
    return CopiaInterno(ctx).Mostrar(numero);
}

int Puesto(const QString& ini, const QStringList& trabajo) {
    QTemporaryDir tmp;
    StoreDirectory stores;
    stores.setParametersPath(ini);
    stores.LoadParameters();
    ScriptedDialogs dialogos;
    dialogos.ResponderSiempre(false);
    SettingsStore settings(tmp.path() + QStringLiteral("/settings"));
    AppContext ctx(stores, dialogos, settings, QFileInfo(ini).absolutePath());
    RegistrarComponentesNomenclador(ctx.componentes());
    stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    QTextStream salida(stdout);
    salida << "LISTO" << Qt::endl;
    QTextStream(stdin).readLine();
    const QString resultado = Trabajar(ctx, dialogos, trabajo);
    for (const QString& m : dialogos.mensajes())
        salida << "MENSAJE " << QString(m).replace(QLatin1Char('\n'), QLatin1Char(' ')) << Qt::endl;
    salida << "FIN " << resultado << Qt::endl;
    return 0;
}

// Each table of an Operation as a digest of its rows (every column but the number, in order).
QMap<QString, QByteArray> Huella(StoreDirectory& stores, const QString& interno) {
    QMap<QString, QByteArray> r;
    for (const QString& t : FilasDeOperacionGrande(0).keys()) {
        Conexion& cx = ConexionDe(stores, t);
        QStringList cols = cx.Columnas(t);
        cols.removeAll(QStringLiteral("interno"));
        if (cols.isEmpty()) // a table of the number alone: its rows are counted
            cols << QStringLiteral("1");
        const Recordset rs =
            cx.Abrir(QStringLiteral("select %1 from %2 where interno = ? order by %1")
                         .arg(cols.join(QLatin1Char(',')), t),
                     {interno});
        QCryptographicHash h(QCryptographicHash::Sha1);
        for (int i = 0; i < rs.RecordCount(); ++i)
            for (const QVariant& v : rs.Fila(i))
                h.addData((v.isNull() ? QStringLiteral("null|") : v.toString() + '|').toUtf8());
        r.insert(t, QByteArray::number(rs.RecordCount()) + ' ' + h.result().toHex());
    }
    return r;
}

} // namespace

class TestOficinaPg : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void oficinaBajoCarga();
};

void TestOficinaPg::oficinaBajoCarga() {
    QString motivo;
    if (!TestStores::Disponible(Motor::PostgreSQL, &motivo))
        QSKIP(qPrintable(motivo));
    QElapsedTimer reloj;
    reloj.start();
    auto ts = DemoArmada(Motor::PostgreSQL, kAbierta);
    StoreDirectory& stores = ts->stores();
    for (int i = 0; i <= kArmadores; ++i)
        OperacionParaArmar(stores, QStringLiteral("CARGA-%1").arg(i), kLineas);
    const qint64 preparada = reloj.restart();

    // One workstation alone: CARGA-0 assembled, then copied; what the others must match.
    QCOMPARE(Trabajar(ts->ctx(), ts->dialogos(), {"PC-0", "armar", "CARGA-0"}),
             QStringLiteral("SI"));
    const QStringList dichos = ts->dialogos().mensajes();
    QCOMPARE(Trabajar(ts->ctx(), ts->dialogos(), {"PC-0", "copiar", "CARGA-0", "COPIA-0"}),
             QStringLiteral("COPIA-0"));
    QCOMPARE(ts->dialogos().mensajes(), dichos);
    const QMap<QString, QByteArray> armada = Huella(stores, "CARGA-0");
    const QMap<QString, QByteArray> copiada = Huella(stores, "COPIA-0");
    const qint64 sola = reloj.restart();
    stores.CloseAllDataConnection();

    struct Trabajo {
        QStringList args;
        QStringList esperado; // the lines it says
    };
    std::vector<Trabajo> trabajos;
    QStringList armadaSola;
    for (const QString& m : dichos)
        armadaSola << QStringLiteral("MENSAJE ") + QString(m).replace('\n', ' ');
    for (int i = 1; i <= kArmadores; ++i)
        trabajos.push_back(
            {{QStringLiteral("PC-%1").arg(i), "armar", QStringLiteral("CARGA-%1").arg(i)},
             armadaSola + QStringList{"FIN SI"}});
    for (const char* pc : {"PC-A", "PC-B"})
        trabajos.push_back({{pc, "abrir", kAbierta}, {}});
    for (const char* copia : {"COPIA-1", "COPIA-2"})
        trabajos.push_back(
            {{"PC-C", "copiar", "CARGA-0", copia}, {QStringLiteral("FIN ") + copia}});
    std::vector<std::unique_ptr<QProcess>> procesos;
    for (const Trabajo& t : trabajos) {
        auto p = std::make_unique<QProcess>();
        p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p->start(QCoreApplication::applicationFilePath(),
                 QStringList{"--puesto", stores.parametersPath()} + t.args);
        QVERIFY(p->waitForStarted());
        procesos.push_back(std::move(p));
    }
    for (auto& p : procesos) {
        while (!p->canReadLine())
            QVERIFY(p->waitForReadyRead(60000));
        QCOMPARE(p->readLine().trimmed(), QByteArray("LISTO"));
    }
    for (auto& p : procesos) {
        p->write("SIGUE\n");
        p->waitForBytesWritten(10000);
    }
    // Every workstation ends, in a bounded time: nobody waits for ever on another.
    QStringList abridores;
    for (size_t i = 0; i < procesos.size(); ++i) {
        QProcess& p = *procesos[i];
        QVERIFY2(p.waitForFinished(150000), qPrintable(trabajos[i].args.join(' ')));
        QCOMPARE(p.exitCode(), 0);
        const QStringList dijo =
            QString::fromUtf8(p.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        if (trabajos[i].args.at(1) == QLatin1String("abrir"))
            abridores << dijo.join(QLatin1Char('/'));
        else
            QCOMPARE(dijo, trabajos[i].esperado);
    }
    // Exactly one opener has the Operation; the other is told which workstation.
    const QString aviso = "MENSAJE " + kOtraPc + "%1  Accedido el " +
                          FormatoFecha(QDate::currentDate(), QStringLiteral("Long Date")) +
                          "/FIN NO";
    QVERIFY2(abridores == (QStringList{"FIN ABIERTA", aviso.arg("PC-A")}) ||
                 abridores == (QStringList{aviso.arg("PC-B"), "FIN ABIERTA"}),
             qPrintable(abridores.join(" | ")));
    for (int i = 1; i <= kArmadores; ++i)
        QCOMPARE(Huella(stores, QStringLiteral("CARGA-%1").arg(i)), armada);
    for (const char* copia : {"COPIA-1", "COPIA-2"})
        QCOMPARE(Huella(stores, copia), copiada);
    qInfo("preparacion %lld ms, una estacion sola %lld ms, %d estaciones a la vez %lld ms",
          preparada, sola, static_cast<int>(procesos.size()), reloj.elapsed());
}

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 6 && args.at(1) == QStringLiteral("--puesto"))
        return Puesto(args.at(2), args.mid(3));
    TestOficinaPg t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_oficina_pg.moc"
