#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/QueryDesk.h"
#include "platform/ValueRules.h"
#include "support/TestStores.h"

#include <QTest>

using namespace korven;
using korven::test::TestStores;

// The one way of reading and writing, on both engines.
class TestStoresPlataforma : public QObject {
    Q_OBJECT

    static void crearTabla(Conexion& c) {
        c.Ejecutar(QStringLiteral("create table prueba (interno text, descripcion text, "
                                  "valor double precision, fecha date)"));
    }
    static int contar(Conexion& c, const QString& where = {}) {
        return static_cast<int>(
            EsNumero(c.Escalar(QStringLiteral("select count(*) from prueba ") + where)));
    }

private Q_SLOTS:
    void leerYEscribir_data() { test::FilasDeMotores(); }
    void leerYEscribir() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        crearTabla(c);
        const QString sep = t.stores().getDecimalSeparatorbyEntity(QStringLiteral("INTERNOS"));
        SeparadorDecimalScope coma(QStringLiteral(","));
        c.setSql(
            QStringLiteral("insert into prueba (interno, descripcion, valor, fecha) values (") +
            SqlTexto(QStringLiteral("100")) + QStringLiteral(", ") +
            SqlTexto(QStringLiteral("Tornillos D'Angelo; drop table prueba;--")) +
            QStringLiteral(", ") + SqlNumero(QStringLiteral("1234,56"), sep) +
            QStringLiteral(", ") +
            t.stores().getDateFormatbyEntity(QStringLiteral("INTERNOS"), QDate(2026, 11, 22)) +
            QStringLiteral(")"));
        QCOMPARE(c.Ejecutar(), 1);
        Recordset rs;
        c.setSql(QStringLiteral("select * from prueba where interno = '100' and fecha = ") +
                 t.stores().getDateFormatbyEntity(QStringLiteral("INTERNOS"), QDate(2026, 11, 22)));
        QVERIFY(c.CrearRs(rs));
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNull(rs.Fields(QStringLiteral("DESCRIPCION"))),
                 QStringLiteral("Tornillos D'Angelo; drop table prueba;--"));
        QCOMPARE(EsNumero(rs.Fields(QStringLiteral("valor"))), 1234.56);
        QCOMPARE(Formato(rs.Fields(QStringLiteral("fecha")), QStringLiteral("dd/mm/yyyy")),
                 QStringLiteral("22/11/2026"));
        // The same text bound as a parameter.
        QCOMPARE(c.Ejecutar(QStringLiteral("update prueba set descripcion = ? where interno = ?"),
                            {QStringLiteral("O'Higgins"), QStringLiteral("100")}),
                 1);
        QCOMPARE(c.Escalar(QStringLiteral("select descripcion from prueba")).toString(),
                 QStringLiteral("O'Higgins"));
        c.setSql(QStringLiteral("select * from prueba where interno = 'no'"));
        QVERIFY(!c.CrearRs(rs));
        QVERIFY(!IsRecord(rs));
    }

    void funcionesSql_data() { test::FilasDeMotores(); }
    void funcionesSql() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        crearTabla(c);
        for (const char* d : {"12", " 1.5 ", "1,5", "-3e2", "abc", "", "1.2.3", "  "})
            c.Ejecutar(QStringLiteral("insert into prueba (descripcion) values (%1)")
                           .arg(SqlTexto(QString::fromLatin1(d))));
        c.Ejecutar(QStringLiteral("insert into prueba (descripcion) values (NULL)"));
        QCOMPARE(contar(c, QStringLiteral("where isnumeric(descripcion) <> 0")), 4);
        c.Ejecutar(QStringLiteral("insert into prueba (valor) values (2.5)"));
        QCOMPARE(contar(c, QStringLiteral("where isnumeric(valor) <> 0")), 1);
        QCOMPARE(c.Escalar(QStringLiteral(
                               "select left('8703.23.10', 4) || '|' || right('8703.23.10', 2)"))
                     .toString(),
                 QStringLiteral("8703|10"));
        QCOMPARE(
            c.Escalar(QString::fromUtf8("select left('añoñ', 2) || right('añoñ', 2)")).toString(),
            QString::fromUtf8("añoñ"));
        QCOMPARE(c.Escalar(QStringLiteral("select length(right('abc', 5))")).toInt(), 3);
        // Text that only looks like a call stays as typed.
        QCOMPARE(c.Escalar(QStringLiteral("select 'a left(b) right (c)' || LEFT ( 'xyz' , 1)"))
                     .toString(),
                 QStringLiteral("a left(b) right (c)x"));
    }

    void redondeoSql_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<double>("valor");
        QTest::addColumn<QString>("mascara");
        QTest::addColumn<double>("esperado");
        for (int m : {static_cast<int>(Motor::SQLite), static_cast<int>(Motor::PostgreSQL)}) {
            const char* n = m == static_cast<int>(Motor::SQLite) ? "sqlite" : "postgresql";
            QTest::addRow("%s 2.675", n) << m << 2.675 << "00.00" << 2.68;
            QTest::addRow("%s -2.675", n) << m << -2.675 << "00.00" << -2.68;
            QTest::addRow("%s 1.23456789 seis", n) << m << 1.23456789 << "00.000000" << 1.234568;
            QTest::addRow("%s 0.5 sin decimales", n) << m << 0.5 << "00." << 1.0;
        }
    }
    void redondeoSql() {
        MOTOR_O_SALTAR();
        QFETCH(double, valor);
        QFETCH(QString, mascara);
        QFETCH(double, esperado);
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        crearTabla(c);
        c.Ejecutar(QStringLiteral("insert into prueba (valor) values (%1)")
                       .arg(SqlNumero(valor, QStringLiteral("."))));
        const QString expr =
            RedondeoSql(t.stores(), QStringLiteral("INTERNOS"), QStringLiteral("valor"), mascara);
        QCOMPARE(
            EsNumero(c.Escalar(QStringLiteral("select ") + expr + QStringLiteral(" from prueba"))),
            esperado);
    }

    void transaccion_data() { test::FilasDeMotores(); }
    void transaccion() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        crearTabla(c);
        c.Ejecutar(QStringLiteral("insert into prueba (interno) values ('1')"));
        // A failed statement in the middle of the action undoes the statements before it.
        try {
            Transaccion tx(t.stores(), {QStringLiteral("INTERNOS")});
            c.Ejecutar(QStringLiteral("delete from prueba"));
            c.Ejecutar(QStringLiteral("insert into prueba (interno) values ('2')"));
            c.Ejecutar(QStringLiteral("insert into tabla_que_no_existe values (1)"));
            QFAIL("la sentencia debía fallar");
        } catch (const KorvenError& e) {
            QVERIFY(!e.descripcion().isEmpty());
        }
        QCOMPARE(contar(c), 1);
        QCOMPARE(c.Escalar(QStringLiteral("select interno from prueba")).toString(),
                 QStringLiteral("1"));
        // A normal end commits; nested scopes share the outer transaction.
        {
            Transaccion tx(t.stores(), {QStringLiteral("INTERNOS"), QStringLiteral("INTERNOS")});
            c.Ejecutar(QStringLiteral("insert into prueba (interno) values ('2')"));
            {
                Transaccion interna(t.stores(), {QStringLiteral("INTERNOS")});
                c.Ejecutar(QStringLiteral("insert into prueba (interno) values ('3')"));
            }
        }
        QCOMPARE(contar(c), 3);
        // An explicit undo.
        {
            Transaccion tx(t.stores(), {QStringLiteral("INTERNOS")});
            c.Ejecutar(QStringLiteral("delete from prueba"));
            tx.Deshacer();
        }
        QCOMPARE(contar(c), 3);
    }

    void entidades_data() { test::FilasDeMotores(); }
    void entidades() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        StoreDirectory& s = t.stores();
        Conexion& internos = s.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        Conexion& ncm = s.getDataConnectionByEntity(QStringLiteral("ncm"));
        QCOMPARE(&internos, &ncm);
        QCOMPARE(&internos, &s.getDataConnectionByEntity(QStringLiteral("INTERNOS")));
        QCOMPARE(s.getDataConnectionTAG(), static_cast<Motor>(motor) == Motor::PostgreSQL
                                               ? QStringLiteral("POSTGRESQL")
                                               : QStringLiteral("SQLITE"));
        if (static_cast<Motor>(motor) == Motor::SQLite)
            QCOMPARE(s.ArchivoSQLite(QStringLiteral("ESTADO")),
                     t.directorio() + QStringLiteral("db/korven.db"));
        QVERIFY_THROWS_EXCEPTION(KorvenError,
                                 s.getDataConnectionByEntity(QStringLiteral("NOEXISTE")));
        // QueryDesk reaches the store a legacy connection string names.
        QueryDesk& q = t.ctx().queryDesk(1);
        QVERIFY(!q.EstadoConexion());
        q.setCadenaConexion(
            QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\k\\db\\insumos.mdb"));
        q.Conectar();
        QVERIFY(q.EstadoConexion());
        QCOMPARE(&q.conexion(), &s.getDataConnectionByEntity(QStringLiteral("INSUMOS")));
        // Closing every connection leaves the desk usable: it reopens its store.
        s.CloseAllDataConnection();
        QVERIFY(q.EstadoConexion());
        q.setSql(QStringLiteral("select 1 as uno"));
        Recordset uno;
        QVERIFY(q.CrearRs(uno));
        QCOMPARE(EsNumero(uno.Fields(QStringLiteral("uno"))), 1.0);
        QueryDesk& otro = t.ctx().queryDesk(2);
        otro.setCadenaConexion(QStringLiteral("Data Source=planillas.mdb"));
        QVERIFY_THROWS_EXCEPTION(KorvenError, otro.Conectar());
    }

    void errorDeSentencia_data() { test::FilasDeMotores(); }
    void errorDeSentencia() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        crearTabla(c);
        // A quote typed into a value that bypassed the quoting helper breaks the statement and
        // leaves the record as it was.
        c.Ejecutar(
            QStringLiteral("insert into prueba (interno, descripcion) values ('1', 'antes')"));
        try {
            c.Ejecutar(
                QStringLiteral("update prueba set descripcion = 'D'Angelo' where interno = '1'"));
            QFAIL("la sentencia debía fallar");
        } catch (const KorvenError& e) {
            QVERIFY(e.numero() != 0);
            QVERIFY(e.origen().contains(QStringLiteral("D'Angelo")));
        }
        QCOMPARE(c.Escalar(QStringLiteral("select descripcion from prueba")).toString(),
                 QStringLiteral("antes"));
    }
};

QTEST_GUILESS_MAIN(TestStoresPlataforma)
#include "test_stores.moc"
