#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Administracion.h"
#include "schema/Esquema.h"
#include "schema/Migrador.h"
#include "support/TestStores.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTest>
#include <optional>

using namespace korven;
using namespace korven::schema;
using korven::test::TestStores;

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kNcm = QStringLiteral("NCM");

void Escribir(const QString& ruta, const QByteArray& contenido) {
    QFile f(ruta);
    if (!f.open(QIODevice::WriteOnly))
        qFatal("No se puede escribir %s", qPrintable(ruta));
    f.write(contenido);
}

// The rows of a query, each as its values joined by "|" (NULL as "-").
QStringList Filas(Conexion& c, const QString& sql) {
    QStringList r;
    Recordset rs = c.Abrir(sql);
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList f;
        for (int i = 0; i < rs.Campos().size(); ++i)
            f << (rs.Fields(i).isNull() ? QStringLiteral("-") : rs.Fields(i).toString());
        r << f.join(QLatin1Char('|'));
    }
    return r;
}

int Contar(Conexion& c, const QString& tabla) {
    return static_cast<int>(EsNumero(c.Escalar(QStringLiteral("select count(*) from ") + tabla)));
}

QByteArray Huella(const QString& archivo) {
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// Runs korven-admin in process; its exit code, output and errors.
int Admin(const QString& directorio, const QStringList& args, QString* salida, QString* errores) {
    QTextStream so(salida), se(errores);
    Administracion a(so, se, directorio);
    const int r = a.Ejecutar(args);
    so.flush();
    se.flush();
    return r;
}

} // namespace

// Where the stores live, and what one transaction may span.
class TestBases : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Every store in one database: an action over several stores is one transaction. A
    // configuration that splits them is refused before anything is written.
    void transaccionUnica_data() { test::FilasDeMotores(); }
    void transaccionUnica() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        const bool sqlite = static_cast<Motor>(motor) == Motor::SQLite;
        t.conexion(kInternos).Ejecutar(QStringLiteral("create table uno (x integer)"));
        t.conexion(kNcm).Ejecutar(QStringLiteral("create table dos (x integer)"));
        try {
            Transaccion tx(t.stores(), {kInternos, kNcm});
            t.conexion(kInternos).Ejecutar(QStringLiteral("insert into uno values (1)"));
            t.conexion(kNcm).Ejecutar(QStringLiteral("insert into dos values (1)"));
            t.conexion(kNcm).Ejecutar(QStringLiteral("insert into falta values (1)"));
            QFAIL("la sentencia debía fallar");
        } catch (const KorvenError&) {
        }
        QCOMPARE(Contar(t.conexion(kInternos), QStringLiteral("uno")), 0);
        QCOMPARE(Contar(t.conexion(kNcm), QStringLiteral("dos")), 0);
        if (sqlite)
            QCOMPARE(QDir(t.directorio() + QStringLiteral("db")).entryList({"*.db"}),
                     QStringList{QStringLiteral("korven.db")});

        t.AgregarConfiguracion(sqlite ? QStringLiteral("[NCM]\nFILE=db/aparte.db\n")
                                      : QStringLiteral("[NCM]\nSCHEMA=aparte\n"));
        try {
            Transaccion tx(t.stores(), {kInternos, QStringLiteral("systablas"), kNcm});
            QFAIL("la transacción sobre dos conexiones debía rechazarse");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), KorvenError::TransaccionDividida);
            QCOMPARE(e.descripcion(),
                     QStringLiteral("Esta acción escribe en INTERNOS y en NCM, que "
                                    "DataAccessConfig.ini ubica en bases de datos distintas; no "
                                    "puede hacerse en una sola transacción. Ubique todas las bases "
                                    "en un mismo archivo o en una misma base de datos."));
        }
        QVERIFY(!t.conexion(kInternos).enTransaccion());
        {
            Transaccion tx(t.stores(), {kInternos});
            t.conexion(kInternos).Ejecutar(QStringLiteral("insert into uno values (2)"));
        }
        QCOMPARE(Contar(t.conexion(kInternos), QStringLiteral("uno")), 1);
    }

    // Stores of the former layout, one file per store: the program refuses them naming the
    // command, and the command brings every table into korven.db, all or nothing.
    void unificar_data() {
        QTest::addColumn<bool>("conflicto");
        QTest::newRow("completo") << false;
        QTest::newRow("tabla repetida con la misma clave") << true;
    }
    void unificar() {
        QFETCH(bool, conflicto);
        TestStores t(Motor::SQLite);
        QString ini;
        for (const QString& e : StoreDirectory::Entidades())
            ini += QStringLiteral("[%1]\nFILE=db/%2.db\n").arg(e, StoreDirectory::NombreArchivo(e));
        t.AgregarConfiguracion(ini);
        CrearOActualizar(t.stores());
        t.conexion(kInternos).Ejecutar(QStringLiteral("create table propia (id integer primary "
                                                      "key, texto text)"));
        t.conexion(kInternos).Ejecutar(
            QStringLiteral("insert into propia values (7, 'D''Angelo')"));
        if (conflicto) {
            Conexion& estado = t.conexion(QStringLiteral("ESTADO"));
            estado.Ejecutar(QStringLiteral("create table propia (id integer primary key, texto "
                                           "text)"));
            estado.Ejecutar(QStringLiteral("insert into propia values (7, 'otro')"));
        }
        t.stores().CloseAllDataConnection();
        const QString db = t.directorio() + QStringLiteral("db/");
        QHash<QString, QByteArray> antes;
        for (const QString& a : StoreDirectory::ArchivosFormatoAnterior(db))
            antes.insert(a, Huella(db + a));
        QCOMPARE(antes.size(), 8);
        QFile::remove(t.directorio() + QStringLiteral("DataAccessConfig.ini"));
        t.AgregarConfiguracion({});

        try {
            t.conexion(kInternos);
            QFAIL("las bases del formato anterior debían rechazarse");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), KorvenError::FormatoAnterior);
            QCOMPARE(e.descripcion(),
                     QStringLiteral("La carpeta %1 tiene las bases en el formato anterior, un "
                                    "archivo por base (internos.db, systablas.db, personal.db, "
                                    "ncm.db, usuario.db, estados.db, catalogos.db, insumos.db), y "
                                    "no tiene korven.db. Únalas en un solo archivo con: "
                                    "korven-admin unificar")
                         .arg(QDir::toNativeSeparators(t.directorio() + QStringLiteral("db"))));
        }

        QString salida, errores;
        const int r = Admin(t.directorio(), {QStringLiteral("unificar")}, &salida, &errores);
        for (auto i = antes.cbegin(); i != antes.cend(); ++i)
            QCOMPARE(Huella(db + i.key()), i.value());
        if (conflicto) {
            QCOMPARE(r, Administracion::Fallo);
            QCOMPARE(errores, QStringLiteral("Error 3051: No se pudo copiar estados.db, tabla "
                                             "propia: UNIQUE constraint failed: propia.id\n"));
            QCOMPARE(QDir(db).entryList({"korven*"}), QStringList{});
            return;
        }
        QCOMPARE(r, Administracion::Correcto);
        QVERIFY2(salida.startsWith(
                     QStringLiteral(
                         "Bases unificadas en %1korven.db: internos.db, systablas.db, personal.db, "
                         "ncm.db, usuario.db, estados.db, catalogos.db, insumos.db (")
                         .arg(QDir::toNativeSeparators(db))),
                 qPrintable(salida));
        Migrador m(t.stores());
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(m.Version(e), Migrador::VersionActual);
        Recordset rs = t.conexion(kInternos).Abrir(QStringLiteral("select * from propia"));
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNumero(rs.Fields(QStringLiteral("id"))), 7.0);
        QCOMPARE(rs.Fields(QStringLiteral("texto")).toString(), QStringLiteral("D'Angelo"));
        // A second run finds korven.db there and leaves it.
        salida.clear();
        errores.clear();
        QCOMPARE(Admin(t.directorio(), {QStringLiteral("unificar")}, &salida, &errores),
                 Administracion::Fallo);
        QCOMPARE(errores, QStringLiteral("Error 3051: Ya existe %1korven.db: no se unificó nada.\n")
                              .arg(QDir::toNativeSeparators(db)));
    }

    // A second workstation writing while the first holds the store waits, then is told in
    // Spanish (SQLite: busy; PostgreSQL: the server undid a crossing action).
    void ocupada_data() { test::FilasDeMotores(); }
    void ocupada() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        const bool sqlite = static_cast<Motor>(motor) == Motor::SQLite;
        if (sqlite)
            t.AgregarConfiguracion(QStringLiteral("[DEFAULT]\nBUSYTIMEOUT=200\n"));
        Conexion& c = t.conexion(kInternos);
        c.Ejecutar(QStringLiteral("create table uno (x integer primary key, v integer)"));
        c.Ejecutar(QStringLiteral("insert into uno values (1, 0)"));
        StoreDirectory otra;
        otra.setParametersPath(t.directorio() + QStringLiteral("DataAccessConfig.ini"));
        otra.LoadParameters();
        Conexion& c2 = otra.getDataConnectionByEntity(kInternos);
        std::optional<Transaccion> primera;
        if (sqlite) {
            primera.emplace(t.stores(), QStringList{kInternos});
            c.Ejecutar(QStringLiteral("update uno set v = 1"));
        }
        try {
            Transaccion segunda(otra, {kInternos});
            if (!sqlite) {
                c2.Ejecutar(QStringLiteral("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ"));
                c2.Escalar(QStringLiteral("select v from uno"));
                c.Ejecutar(QStringLiteral("update uno set v = 1"));
                c2.Ejecutar(QStringLiteral("update uno set v = 2"));
            }
            QFAIL("la segunda estación debía recibir el error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), sqlite ? 5 : 40001);
            QCOMPARE(e.descripcion(),
                     sqlite ? QStringLiteral("La base de datos está ocupada por otra estación de "
                                             "trabajo y no se liberó a tiempo; la acción no se "
                                             "hizo. Inténtelo de nuevo en unos momentos.")
                            : QStringLiteral("Otra estación de trabajo modificó los mismos datos "
                                             "al mismo tiempo; la acción se deshizo. Inténtelo de "
                                             "nuevo."));
        }
        primera.reset();
        // The first workstation's write stands; the second, retried, goes through.
        QCOMPARE(Filas(c, QStringLiteral("select v from uno")), QStringList{"1"});
        {
            Transaccion segunda(otra, {kInternos});
            c2.Ejecutar(QStringLiteral("update uno set v = 2"));
        }
        QCOMPARE(Filas(c, QStringLiteral("select v from uno")), QStringList{"2"});
    }

    // isnumeric answers 1 or 0 on both engines, as the system's SQL compares it; a PostgreSQL
    // database made with the boolean form gets the new one when a connection opens.
    void isnumeric_data() { test::FilasDeMotores(); }
    void isnumeric() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        if (static_cast<Motor>(motor) == Motor::PostgreSQL) {
            Conexion& c = t.conexion(kInternos);
            c.Ejecutar(QStringLiteral("DROP FUNCTION isnumeric(text)"));
            c.Ejecutar(QStringLiteral("DROP FUNCTION isnumeric(double precision)"));
            c.Ejecutar(QStringLiteral("CREATE FUNCTION isnumeric(text) RETURNS boolean LANGUAGE "
                                      "sql AS $$ SELECT $1 ~ '^[0-9]+$' $$"));
            c.Ejecutar(QStringLiteral("CREATE FUNCTION isnumeric(double precision) RETURNS "
                                      "boolean LANGUAGE sql AS $$ SELECT $1 IS NOT NULL $$"));
            t.stores().CloseAllDataConnection();
        }
        Conexion& c = t.conexion(kInternos);
        c.Ejecutar(QStringLiteral("create table subitems (interno text, id integer, insumostemp "
                                  "double precision)"));
        c.Ejecutar(QStringLiteral("insert into subitems values ('A', 1, NULL), ('A', 2, 5.5), "
                                  "('B', 1, NULL)"));
        QCOMPARE(c.Ejecutar(QStringLiteral("update subitems set insumostemp = 0 where "
                                           "ISNUMERIC(insumostemp)=0 and interno = 'A'")),
                 1);
        QCOMPARE(Filas(c, QStringLiteral("select interno, id, insumostemp from subitems order by "
                                         "interno, id")),
                 (QStringList{"A|1|0", "A|2|5.5", "B|1|-"}));
        c.Ejecutar(QStringLiteral("create table item (id integer, interno text, ajusteded text)"));
        c.Ejecutar(QStringLiteral("insert into item values (0, 'A', '9'), (1, 'A', '12.5'), "
                                  "(2, 'A', 'abc'), (3, 'A', ''), (4, 'A', NULL), (5, 'A', ' -3 "
                                  "'), (1, 'B', '7')"));
        QCOMPARE(Filas(c, QStringLiteral("select ajusteded as total from item where "
                                         "isnumeric(ajusteded)<>0 and id<>0 and interno = 'A'")),
                 (QStringList{"12.5", " -3 "}));
    }

    // The importer reads UTF-8, takes a file that is not UTF-8 as Latin-1 and says so, and
    // rejects a number that is not written with the store's point.
    void importar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QByteArray>("archivo");
        QTest::addColumn<int>("codigo");
        QTest::addColumn<QStringList>("salida");
        QTest::addColumn<QStringList>("filas");
        const QByteArray cabeza("id,descripcion,dias,impexpo\n");
        for (int m : {static_cast<int>(Motor::SQLite), static_cast<int>(Motor::PostgreSQL)}) {
            const char* n = m == static_cast<int>(Motor::SQLite) ? "sqlite" : "postgresql";
            QTest::addRow("%s utf-8", n)
                << m << cabeza + QString::fromUtf8("A1,Depósito,30,I\nA2,Tránsito,2.5,E\n").toUtf8()
                << 0
                << QStringList{"Tabla mottmp: 2 filas leídas, 2 válidas, 0 rechazadas.",
                               "Filas importadas en mottmp: 2."}
                << QStringList{QString::fromUtf8("A1|Depósito|30|I"),
                               QString::fromUtf8("A2|Tránsito|2.5|E")};
            QTest::addRow("%s latin-1", n)
                << m << cabeza + QString::fromUtf8("A1,Depósito,30,I\n").toLatin1() << 0
                << QStringList{"El archivo %1 no está en UTF-8: se leyó como Latin-1.",
                               "Tabla mottmp: 1 filas leídas, 1 válidas, 0 rechazadas.",
                               "Filas importadas en mottmp: 1."}
                << QStringList{QString::fromUtf8("A1|Depósito|30|I")};
            QTest::addRow("%s números", n)
                << m << cabeza + "A1,uno,abc,I\nA2,dos,\"1,5\",I\nA3,tres,nan,I\nA4,cuatro,7,I\n"
                << 1
                << QStringList{"Tabla mottmp: 4 filas leídas, 1 válidas, 3 rechazadas.",
                               "  línea 2: Valor no numérico en la columna dias: 'abc'",
                               "  línea 3: Valor no numérico en la columna dias: '1,5'",
                               "  línea 4: Valor no numérico en la columna dias: 'nan'"}
                << QStringList{};
        }
    }
    void importar() {
        MOTOR_O_SALTAR();
        QFETCH(QByteArray, archivo);
        QFETCH(int, codigo);
        QFETCH(QStringList, salida);
        QFETCH(QStringList, filas);
        TestStores t(static_cast<Motor>(motor));
        Migrador(t.stores()).Actualizar(QStringLiteral("SYSTABLAS"));
        const QString csv = t.directorio() + QStringLiteral("mottmp.csv");
        Escribir(csv, archivo);
        t.AgregarConfiguracion({});
        QString out, err;
        QCOMPARE(Admin(t.directorio(), {QStringLiteral("importar"), QStringLiteral("mottmp"), csv},
                       &out, &err),
                 codigo);
        if (!salida.isEmpty() && salida.first().contains(QStringLiteral("%1")))
            salida.first() = salida.first().arg(QDir::toNativeSeparators(csv));
        QCOMPARE(out.split(QLatin1Char('\n'), Qt::SkipEmptyParts), salida);
        QCOMPARE(Filas(t.conexion(QStringLiteral("SYSTABLAS")),
                       QStringLiteral("select id, descripcion, dias, impexpo from mottmp order by "
                                      "id")),
                 filas);
    }
};

QTEST_GUILESS_MAIN(TestBases)
#include "test_bases.moc"
