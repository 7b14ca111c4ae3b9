#include "ApoyoEsquema.h"
#include "schema/Catalogo.h"
#include "schema/DialectoEsquema.h"
#include "schema/Esquema.h"
#include "schema/LectorEsquema.h"
#include "schema/Migrador.h"

#include <optional>

using namespace korven;
using namespace korven::schema;
using namespace korven::test;

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kNcm = QStringLiteral("NCM");

// Everything the engine says about the tables of every store: columns with types, indexes, keys;
// or, from the catalogue, what it should say.
QStringList Descripcion(TestStores& t, bool delCatalogo = false) {
    static const char* const tipos[][2] = {{"TEXT", "text"},
                                           {"REAL", "double precision"},
                                           {"TEXT", "date"},
                                           {"INTEGER", "integer"},
                                           {"TEXT", "timestamp without time zone"}};
    QStringList r;
    for (const QString& e : StoreDirectory::Entidades())
        for (const DefTabla* d : Catalogo::TablasDe(e)) {
            Conexion& c = t.conexion(e);
            auto columnas = LectorEsquema::Columnas(c, d->nombre);
            auto indices = LectorEsquema::Indices(c, d->nombre);
            QStringList clave = LectorEsquema::ClavePrimaria(c, d->nombre), ix;
            if (delCatalogo) {
                columnas.clear();
                indices.clear();
                clave = d->clavePrimaria;
                for (const DefColumna& col : d->columnas)
                    columnas << qMakePair(
                        col.nombre,
                        QString::fromLatin1(tipos[int(col.tipo)][t.motor() == Motor::PostgreSQL]));
                for (const DefIndice& i : d->indices)
                    indices.insert(i.nombre, i.columnas);
            }
            r << d->nombre + QStringLiteral(" pk ") + clave.join(QLatin1Char(','));
            for (const auto& [nombre, tipo] : columnas)
                r << nombre + QLatin1Char(' ') + tipo;
            for (auto i = indices.cbegin(); i != indices.cend(); ++i)
                ix << i.key() + QLatin1Char(' ') + i.value().join(QLatin1Char(','));
            ix.sort();
            r << ix;
        }
    return r;
}

} // namespace

// The catalogue made into tables on either engine, where the stores live, and what one transaction
// may span.
class TestEsquema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Every table and column of the catalogue, with its type, its indexes and keys, as the engine
    // itself reports them after the creation; a second run changes nothing.
    void tablasYColumnas_data() { FilasDeMotores(); }
    void tablasYColumnas() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(VersionDe(t.stores(), e), VersionActual());
        const QStringList hay = Descripcion(t);
        QCOMPARE(hay, Descripcion(t, true));
        QVERIFY(hay.contains(QStringLiteral("tabla pk idlin")));
        CrearOActualizar(t.stores());
        QCOMPARE(Descripcion(t), hay);
        // A store newer than the program is refused and left alone.
        t.conexion(kNcm).Ejecutar("update korven_version set version = 99 where entidad = 'NCM'");
        ERROR_CON_TEXTO(CrearOActualizar(t.stores()),
                        QStringLiteral("La base de NCM tiene la versión 99 del esquema, más nueva "
                                       "que la de este programa (4)."));
        QCOMPARE(VersionDe(t.stores(), kNcm), 99);
        // Text keys sort byte by byte on PostgreSQL too.
        QCOMPARE(DialectoEsquema::CrearTabla(*Catalogo::Tabla(QStringLiteral("interno")),
                                             Motor::PostgreSQL, 3),
                 QStringLiteral("CREATE TABLE IF NOT EXISTS interno (interno text COLLATE \"C\", "
                                "maquina text, usuario text, fecha timestamp, PRIMARY KEY "
                                "(interno))"));
    }

    // Stores made at an older version come up to the present one through the ordered steps: the
    // same tables, columns and indexes as a new store, and their rows kept.
    void migracion_data() { FilasDeMotores(); }
    void migracion() {
        MOTOR_O_SALTAR();
        QStringList nuevo;
        {
            TestStores t(static_cast<Motor>(motor));
            CrearOActualizar(t.stores());
            nuevo = Descripcion(t);
        }
        for (int desde = 1; desde < Migrador::VersionActual; ++desde) {
            TestStores t(static_cast<Motor>(motor));
            for (const QString& e : StoreDirectory::Entidades())
                Migrador(t.stores()).CrearEnVersion(e, desde);
            Conexion& c = t.conexion(kInternos);
            QCOMPARE(LectorEsquema::Indices(c, QStringLiteral("subitems")).isEmpty(), desde < 2);
            QCOMPARE(LectorEsquema::NombresColumnas(c, QStringLiteral("subitems"))
                         .contains(QStringLiteral("idext")),
                     desde >= 3);
            c.Ejecutar("insert into subitems (id, interno, ncm, fob) values (1, 'A-1', "
                       "'8471.30.12.100B', 1500.25)");
            CrearOActualizar(t.stores());
            for (const QString& e : StoreDirectory::Entidades())
                QCOMPARE(VersionDe(t.stores(), e), VersionActual());
            QCOMPARE(Descripcion(t), nuevo);
            QCOMPARE(Filas(c, "select ncm, fob, idext from subitems"),
                     QStringList{"8471.30.12.100B|1500.25|-"});
        }
    }

    // A store made by hand, with some of the tables and fewer columns, is adopted: what it lacks is
    // added and its rows stay. A counter column numbers the rows it is not given.
    void adopcion_data() { FilasDeMotores(); }
    void adopcion() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion("PERSONAL");
        c.Ejecutar("create table clientes (cuit text, nombre text)");
        c.Ejecutar("insert into clientes values ('30712345679', 'D''Onofrio')");
        CrearOActualizar(t.stores());
        QStringList hay = LectorEsquema::NombresColumnas(c, QStringLiteral("clientes"));
        QStringList esperadas = Catalogo::Tabla(QStringLiteral("clientes"))->NombresColumnas();
        hay.sort();
        esperadas.sort();
        QCOMPARE(hay, esperadas);
        QCOMPARE(Filas(c, "select cuit, nombre from clientes"),
                 QStringList{"30712345679|D'Onofrio"});
        c.Ejecutar("insert into tabla (linea) values ('uno'), ('dos')");
        QCOMPARE(Contar(c, "tabla a, tabla b where a.linea = 'uno' and b.idlin > a.idlin"), 1);
    }

    // Every store in one database: an action over several stores is one transaction. A
    // configuration that splits them is refused before anything is written.
    void transaccionUnica_data() { FilasDeMotores(); }
    void transaccionUnica() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& i = t.conexion(kInternos);
        i.Ejecutar("create table uno (x integer)");
        t.conexion(kNcm).Ejecutar("create table dos (x integer)");
        try {
            Transaccion tx(t.stores(), {kInternos, kNcm});
            i.Ejecutar("insert into uno values (1)");
            t.conexion(kNcm).Ejecutar("insert into dos values (1)");
            t.conexion(kNcm).Ejecutar("insert into falta values (1)");
            QFAIL("la sentencia debía fallar");
        } catch (const KorvenError&) {
        }
        QCOMPARE(
            Filas(t.conexion(kNcm), "select count(*) from uno union all select count(*) from dos"),
            (QStringList{"0", "0"}));
        t.AgregarConfiguracion(t.motor() == Motor::SQLite
                                   ? QStringLiteral("[NCM]\nFILE=db/aparte.db\n")
                                   : QStringLiteral("[NCM]\nSCHEMA=aparte\n"));
        ERROR_CON_TEXTO(
            Transaccion(t.stores(), {kInternos, QStringLiteral("systablas"), kNcm}),
            QStringLiteral("Esta acción escribe en INTERNOS y en NCM, que DataAccessConfig.ini "
                           "ubica en bases de datos distintas; no puede hacerse en una sola "
                           "transacción. Ubique todas las bases en un mismo archivo o en una "
                           "misma base de datos."));
        QVERIFY(!t.conexion(kInternos).enTransaccion());
    }

    // A second workstation writing while the first holds the store waits, then is told in Spanish
    // (SQLite: busy; PostgreSQL: the server undid a crossing action).
    void ocupada_data() { FilasDeMotores(); }
    void ocupada() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        const bool sqlite = t.motor() == Motor::SQLite;
        if (sqlite)
            t.AgregarConfiguracion(QStringLiteral("[DEFAULT]\nBUSYTIMEOUT=200\n"));
        Conexion& c = t.conexion(kInternos);
        c.Ejecutar("create table uno (x integer primary key, v integer)");
        c.Ejecutar("insert into uno values (1, 0)");
        StoreDirectory otra;
        otra.setParametersPath(t.directorio() + QStringLiteral("DataAccessConfig.ini"));
        otra.LoadParameters();
        Conexion& c2 = otra.getDataConnectionByEntity(kInternos);
        std::optional<Transaccion> primera;
        if (sqlite) {
            primera.emplace(t.stores(), QStringList{kInternos});
            c.Ejecutar("update uno set v = 1");
        }
        try {
            Transaccion segunda(otra, {kInternos});
            if (!sqlite) {
                c2.Ejecutar("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ");
                c2.Escalar("select v from uno");
                c.Ejecutar("update uno set v = 1");
                c2.Ejecutar("update uno set v = 2");
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
        QCOMPARE(Filas(c, "select v from uno"), QStringList{"1"});
        {
            Transaccion segunda(otra, {kInternos});
            c2.Ejecutar("update uno set v = 2");
        }
        QCOMPARE(Filas(c, "select v from uno"), QStringList{"2"});
    }

    // A PostgreSQL database made with the boolean isnumeric gets, when a connection opens, the one
    // that answers 1 or 0, as the system's SQL compares and adds it.
    void isnumericAnterior() {
        if (!TestStores::Disponible(Motor::PostgreSQL))
            QSKIP("Sin servidor PostgreSQL para las pruebas");
        TestStores t(Motor::PostgreSQL);
        // clang-format off
        for (const char* sql : {"DROP FUNCTION isnumeric(text)", "DROP FUNCTION isnumeric(double precision)",
                                "CREATE FUNCTION isnumeric(text) RETURNS boolean LANGUAGE sql AS $$ SELECT $1 ~ '^[0-9]+$' $$",
                                "CREATE FUNCTION isnumeric(double precision) RETURNS boolean LANGUAGE sql AS $$ SELECT $1 IS NOT NULL $$"})
            t.conexion(kInternos).Ejecutar(sql);
        // clang-format on
        t.stores().CloseAllDataConnection();
        QCOMPARE(Contar(t.conexion(kInternos),
                        "select isnumeric(cast(' -3 ' as text)) * 100 + isnumeric(cast('abc' as "
                        "text)) * 10 + isnumeric(cast(null as double precision))"),
                 100);
    }
};

QTEST_GUILESS_MAIN(TestEsquema)
#include "test_esquema.moc"