// korven-admin respaldo and restaurar, run as processes on both engines: a copy taken while
// another process assembles an Operation holds the whole assembly or none of it and comes back
// whole; an open Operation, a missing file and a damaged file are refused with the stores as
// they were.

#include "support/TestStores.h"

#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kOp = QStringLiteral("DEMO-IC04-001");

struct Corrida {
    int codigo = -1;
    QString salida, errores;
};

QString Config(TestStores& t) {
    const QString ruta = t.directorio() + QStringLiteral("DataAccessConfig.ini");
    if (!QFile::exists(ruta)) {
        QFile f(ruta);
        if (!f.open(QIODevice::WriteOnly) || f.write("[DEFAULT]\nDRIVER=QSQLITE\nFOLDER=db\n") < 0)
            qFatal("No se puede escribir DataAccessConfig.ini");
    }
    return ruta;
}

void Iniciar(QProcess& p, TestStores& t, QStringList args) {
    p.start(QStringLiteral(KORVEN_ADMIN), args << QStringLiteral("--config") << Config(t));
}

Corrida Esperar(QProcess& p) {
    if (!p.waitForFinished(300000))
        qFatal("korven-admin no terminó");
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

Corrida Admin(TestStores& t, const QStringList& args) {
    QProcess p;
    Iniciar(p, t, args);
    return Esperar(p);
}

// Every row of the demo Operations in the header, goods and liquidation tables, one text per
// row, sorted: equal texts mean equal stores.
QStringList Filas(TestStores& t, const QString& tabla, const QString& interno = QString()) {
    QSqlQuery q(QSqlDatabase::database(t.conexion(QStringLiteral("INTERNOS")).nombreQt()));
    q.prepare(QStringLiteral("select * from %1 where interno like ?").arg(tabla));
    q.addBindValue(interno.isEmpty() ? QStringLiteral("DEMO-%") : interno);
    if (!q.exec())
        qFatal("No se pueden leer las filas de %s", qPrintable(tabla));
    QStringList r;
    while (q.next()) {
        QStringList campos;
        for (int i = 0; i < q.record().count(); ++i)
            campos << q.value(i).toString();
        r << campos.join(QLatin1Char('|'));
    }
    r.sort();
    return r;
}

QStringList Huella(TestStores& t) {
    return Filas(t, QStringLiteral("caratula")) + Filas(t, QStringLiteral("item")) +
           Filas(t, QStringLiteral("itemliq"));
}

std::unique_ptr<TestStores> ConDemo(Motor motor) {
    auto t = std::make_unique<TestStores>(motor);
    const Corrida c = Admin(*t, {QStringLiteral("crear"), QStringLiteral("--demo")});
    if (c.codigo != 0)
        qFatal("crear --demo falló: %s", qPrintable(c.errores));
    return t;
}

void BorrarOperacion(TestStores& t, const QString& interno) {
    for (const char* tabla : {"itemliq", "item", "caratula"})
        t.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("delete from %1 where interno = ?").arg(QLatin1String(tabla)),
                      {interno});
}

} // namespace

class TestRespaldo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void durante_armado_data() { FilasDeMotores(); }
    // The copy is taken while a second process assembles the demo Operation and this one holds
    // a change unconfirmed; after the Operation is deleted, restaurar brings back exactly the
    // stores before the assembly or after it (without the unconfirmed change), never a
    // half-assembled Operation.
    void durante_armado() {
        MOTOR_O_SALTAR();
        auto t = ConDemo(static_cast<Motor>(motor));
        const QString archivo = t->directorio() + QStringLiteral("copia.respaldo");
        // Confirmed, but on SQLite still in the journal of this open connection.
        BorrarOperacion(*t, QStringLiteral("DEMO-EC01-001"));
        const QStringList antes = Huella(*t);
        QCOMPARE(Filas(*t, QStringLiteral("item"), kOp).size(), 0);

        // A change not yet confirmed by this workstation while both run: the copy leaves it out
        // (on SQLite it also holds the assembly back until it is confirmed).
        Conexion& cx = t->conexion(QStringLiteral("INTERNOS"));
        const QString otra = QStringLiteral("DEMO-IT01-001");
        const QVariant factura = cx.Escalar(
            QStringLiteral("select factura1 from caratula where interno = '%1'").arg(otra));
        cx.Comenzar();
        cx.Ejecutar(
            QStringLiteral("update caratula set factura1 = 'SIN CONFIRMAR' where interno = ?"),
            {otra});
        QProcess armado, respaldo;
        Iniciar(armado, *t, {QStringLiteral("armar"), kOp});
        Iniciar(respaldo, *t, {QStringLiteral("respaldo"), archivo});
        const Corrida r = Esperar(respaldo);
        cx.Confirmar();
        const Corrida a = Esperar(armado);
        cx.Ejecutar(QStringLiteral("update caratula set factura1 = ? where interno = ?"),
                    {factura, otra});
        QCOMPARE(r.errores, QString());
        QCOMPARE(r.salida, QStringLiteral("Respaldo escrito: %1.\n").arg(archivo));
        QCOMPARE(a.codigo, 0);
        const QStringList despues = Huella(*t);
        const int items = Filas(*t, QStringLiteral("item"), kOp).size();
        QVERIFY(items > 0);
        QVERIFY(Filas(*t, QStringLiteral("itemliq"), kOp).size() > 0);

        BorrarOperacion(*t, kOp);
        QVERIFY(Huella(*t) != despues);
        const Corrida c = Admin(*t, {QStringLiteral("restaurar"), archivo});
        QCOMPARE(c.errores, QString());
        QCOMPARE(c.codigo, 0);
        QCOMPARE(c.salida, QStringLiteral("Bases restauradas desde: %1.\n").arg(archivo));
        const QStringList restauradas = Huella(*t);
        const int itemsCopia = Filas(*t, QStringLiteral("item"), kOp).size();
        QVERIFY2(itemsCopia == 0 || itemsCopia == items, qPrintable(QString::number(itemsCopia)));
        QCOMPARE(restauradas, itemsCopia == 0 ? antes : despues);
        QCOMPARE(Filas(*t, QStringLiteral("caratula")).size(), 3);
    }

    void refusals_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("caso");
        for (const auto& [nombre, m] :
             {std::pair{"sqlite", Motor::SQLite}, std::pair{"postgresql", Motor::PostgreSQL}})
            for (const char* caso : {"abierta", "falta", "dañado"})
                QTest::addRow("%s %s", nombre, caso)
                    << static_cast<int>(m) << QString::fromUtf8(caso);
    }
    // With an Operation open, a missing file or a file that is no copy, restaurar refuses with
    // its message and the stores keep the changes made after the copy.
    void refusals() {
        MOTOR_O_SALTAR();
        QFETCH(QString, caso);
        auto t = ConDemo(static_cast<Motor>(motor));
        const QString archivo = t->directorio() + QStringLiteral("copia.respaldo");
        QCOMPARE(Admin(*t, {QStringLiteral("respaldo"), archivo}).codigo, 0);
        BorrarOperacion(*t, QStringLiteral("DEMO-EC01-001"));
        QString esperado;
        if (caso == QLatin1String("abierta")) {
            t->conexion(QStringLiteral("INTERNOS"))
                .Ejecutar(QStringLiteral("insert into interno (interno, maquina, usuario) values "
                                         "('DEMO-IC05-001', 'PC-2', '')"));
            esperado = QStringLiteral("No se puede restaurar mientras haya operaciones abiertas: "
                                      "1 operación abierta en alguna estación de trabajo. "
                                      "Ciérrelas y vuelva a intentarlo.\n");
        } else if (caso == QLatin1String("falta")) {
            QVERIFY(QFile::remove(archivo));
            esperado = QStringLiteral("No existe el archivo de respaldo: %1\n").arg(archivo);
        } else {
            QFile f(archivo);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(QByteArray(8192, 'x'));
            f.close();
            esperado = motor == static_cast<int>(Motor::SQLite)
                           ? QStringLiteral("El archivo %1 no es un respaldo válido: file is not a "
                                            "database\n")
                                 .arg(archivo)
                           : QStringLiteral("La lectura del respaldo %1 falló: pg_restore: error: "
                                            "input file does not appear to be a valid archive\n")
                                 .arg(archivo);
        }
        const QStringList antes = Huella(*t);
        const Corrida c = Admin(*t, {QStringLiteral("restaurar"), archivo});
        QCOMPARE(c.codigo, 1);
        QCOMPARE(c.errores, esperado);
        QCOMPARE(c.salida, QString());
        QCOMPARE(Huella(*t), antes);
        QCOMPARE(Filas(*t, QStringLiteral("caratula")).size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestRespaldo)
#include "test_respaldo.moc"
