#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/DialectoEsquema.h"
#include "schema/Esquema.h"
#include "schema/LectorEsquema.h"
#include "schema/Migrador.h"
#include "support/TestStores.h"

#include <QSet>
#include <QTest>

using namespace korven;
using namespace korven::schema;
using korven::test::TestStores;

namespace {

// The type each engine reports for a kind of column.
QString TipoEsperado(TipoColumna tipo, Motor motor) {
    const bool pg = motor == Motor::PostgreSQL;
    switch (tipo) {
    case TipoColumna::Texto:
        return pg ? QStringLiteral("text") : QStringLiteral("TEXT");
    case TipoColumna::Numero:
        return pg ? QStringLiteral("double precision") : QStringLiteral("REAL");
    case TipoColumna::Fecha:
        return pg ? QStringLiteral("date") : QStringLiteral("TEXT");
    case TipoColumna::Contador:
        return pg ? QStringLiteral("integer") : QStringLiteral("INTEGER");
    case TipoColumna::FechaHora:
        return pg ? QStringLiteral("timestamp without time zone") : QStringLiteral("TEXT");
    }
    return {};
}

// Everything an engine says about the tables of a store: columns with types, indexes, keys.
QStringList Descripcion(Conexion& c, const QString& entidad) {
    QStringList r;
    for (const DefTabla* t : Catalogo::TablasDe(entidad)) {
        QStringList cols;
        for (const auto& p : LectorEsquema::Columnas(c, t->nombre))
            cols << p.first + QLatin1Char(' ') + p.second;
        r << t->nombre + QStringLiteral(": ") + cols.join(QStringLiteral(", "));
        const QHash<QString, QStringList> ix = LectorEsquema::Indices(c, t->nombre);
        QStringList nombres = ix.keys();
        nombres.sort();
        for (const QString& n : nombres)
            r << QStringLiteral("  index ") + n + QStringLiteral(" (") +
                     ix.value(n).join(QLatin1Char(',')) + QLatin1Char(')');
        r << QStringLiteral("  pk (") +
                 LectorEsquema::ClavePrimaria(c, t->nombre).join(QLatin1Char(',')) +
                 QLatin1Char(')');
    }
    return r;
}

} // namespace

class TestEsquema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // One database may hold every store: no two tables, and no two indexes, share a name.
    void nombresUnicos() {
        QSet<QString> tablas{Catalogo::TablaVersion()};
        QSet<QString> indices;
        for (const DefTabla& t : Catalogo::Tablas()) {
            QVERIFY2(!tablas.contains(t.nombre), qPrintable(t.nombre));
            tablas.insert(t.nombre);
            QVERIFY2(StoreDirectory::Entidades().contains(t.entidad), qPrintable(t.entidad));
            QSet<QString> columnas;
            for (const DefColumna& c : t.columnas) {
                QVERIFY2(!columnas.contains(c.nombre), qPrintable(t.nombre + "." + c.nombre));
                columnas.insert(c.nombre);
                QCOMPARE(c.nombre, c.nombre.toLower());
            }
            for (const QString& k : t.clave)
                QVERIFY2(t.Columna(k), qPrintable(t.nombre + " clave " + k));
            for (const DefIndice& ix : t.indices) {
                QVERIFY2(!indices.contains(ix.nombre), qPrintable(ix.nombre));
                indices.insert(ix.nombre);
                for (const QString& c : ix.columnas) {
                    QVERIFY2(t.Columna(c), qPrintable(ix.nombre + " " + c));
                    QVERIFY(t.Columna(c)->desde <= ix.desde);
                }
            }
        }
    }

    // Columns the routines of the system read and write, spot-checked in the catalogue with
    // their kind.
    void columnasDelSistema_data() {
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<QString>("columna");
        QTest::addColumn<int>("tipo");
        const int T = static_cast<int>(TipoColumna::Texto);
        const int N = static_cast<int>(TipoColumna::Numero);
        const int F = static_cast<int>(TipoColumna::Fecha);
        // "table.column kind"
        // clang-format off
        const char* columnas[] = {
            "caratula.fechaalta F", "caratula.fobdivcambio N", "caratula.factura8 T",
            "caratula.ONCCAres3106 T", "caratula.BULPES N", "subitems.SBTREI T",
            "subitems.canccantidad N", "groupsubitems.flgkg T", "item.ajusteinc T", "item.COFEXP N",
            "item.itComExt N", "item.lman T", "itemliq.porcentajeb N", "liqcero.idconcepto T",
            "interno.fecha H", "divisas.imp N", "tax.CTAXPOG T", "unidrel.pase N", "mottmp.dias N",
            "clientes.ExcepLAPIAEC T", "clientes.ingbru N", "ventajasrel.NCM T", "ncm.001 T",
            "ncm.062 T", "sufidos.detalle T", "control_fecha.fecha F", "dest.Txtidvendedor T",
            "dest.txtDCComiExt T", "impuestos_internos.tasa_nominal N", "catarticulos.kgunitario N",
            "diemchina.diem N", "oncca_cortes.categoria T",
        };
        // clang-format on
        for (const char* x : columnas) {
            const QString d = QString::fromLatin1(x);
            const QString tc = d.section(QLatin1Char(' '), 0, 0);
            const QChar k = d.at(d.size() - 1);
            QTest::newRow(x) << tc.section(QLatin1Char('.'), 0, 0)
                             << tc.section(QLatin1Char('.'), 1)
                             << (k == QLatin1Char('H')   ? static_cast<int>(TipoColumna::FechaHora)
                                 : k == QLatin1Char('F') ? F
                                 : k == QLatin1Char('N') ? N
                                                         : T);
        }
    }
    void columnasDelSistema() {
        QFETCH(QString, tabla);
        QFETCH(QString, columna);
        QFETCH(int, tipo);
        const DefTabla* t = Catalogo::Tabla(tabla);
        QVERIFY(t);
        const DefColumna* c = t->Columna(columna);
        QVERIFY(c);
        QCOMPARE(static_cast<int>(c->tipo), tipo);
    }

    void ddl() {
        const DefTabla* lock = Catalogo::Tabla(QStringLiteral("interno"));
        QCOMPARE(DialectoEsquema::CrearTabla(*lock, Motor::PostgreSQL, 3),
                 QStringLiteral("CREATE TABLE IF NOT EXISTS interno (interno text COLLATE \"C\", "
                                "maquina text, usuario text, fecha timestamp, PRIMARY KEY "
                                "(interno))"));
        QCOMPARE(DialectoEsquema::CrearTabla(*lock, Motor::SQLite, 3),
                 QStringLiteral("CREATE TABLE IF NOT EXISTS interno (interno TEXT, maquina TEXT, "
                                "usuario TEXT, fecha TEXT, PRIMARY KEY (interno))"));
        const DefTabla* ncm = Catalogo::Tabla(QStringLiteral("ncm"));
        QCOMPARE(DialectoEsquema::CrearIndice(*ncm, ncm->indices.front()),
                 QStringLiteral("CREATE INDEX IF NOT EXISTS ix_ncm_001_002 ON ncm (\"001\", "
                                "\"002\")"));
        // Version 1 of subitems has no idext.
        QVERIFY(!DialectoEsquema::CrearTabla(*Catalogo::Tabla(QStringLiteral("subitems")),
                                             Motor::SQLite, 1)
                     .contains(QStringLiteral("idext")));
    }

    // Every table and column of the catalogue, with its type, its indexes and keys, as the
    // engine itself reports them after the creation.
    void tablasYColumnas_data() { test::FilasDeMotores(); }
    void tablasYColumnas() {
        MOTOR_O_SALTAR();
        const Motor m = static_cast<Motor>(motor);
        TestStores t(m);
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(VersionDe(t.stores(), e), 0);
        CrearOActualizar(t.stores());
        for (const QString& e : StoreDirectory::Entidades()) {
            QCOMPARE(VersionDe(t.stores(), e), VersionActual());
            Conexion& c = t.conexion(e);
            const QStringList hay = LectorEsquema::Tablas(c);
            QVERIFY(hay.contains(Catalogo::TablaVersion()));
            for (const DefTabla* d : Catalogo::TablasDe(e)) {
                QVERIFY2(hay.contains(d->nombre), qPrintable(e + "." + d->nombre));
                QList<QPair<QString, QString>> esperadas;
                for (const DefColumna& col : d->columnas)
                    esperadas << qMakePair(col.nombre, TipoEsperado(col.tipo, m));
                QCOMPARE(LectorEsquema::Columnas(c, d->nombre), esperadas);
                const QHash<QString, QStringList> ix = LectorEsquema::Indices(c, d->nombre);
                QCOMPARE(ix.size(), static_cast<qsizetype>(d->indices.size()));
                for (const DefIndice& i : d->indices)
                    QCOMPARE(ix.value(i.nombre), i.columnas);
                QCOMPARE(LectorEsquema::ClavePrimaria(c, d->nombre), d->clavePrimaria);
            }
        }
        QCOMPARE(LectorEsquema::ClavePrimaria(t.conexion(QStringLiteral("INTERNOS")),
                                              QStringLiteral("interno")),
                 QStringList{QStringLiteral("interno")});
        QCOMPARE(LectorEsquema::ClavePrimaria(t.conexion(QStringLiteral("PERSONAL")),
                                              QStringLiteral("tabla")),
                 QStringList{QStringLiteral("idlin")});
    }

    // The lock table refuses a second lock of the same Operation; the counter numbers lines.
    void claves_data() { test::FilasDeMotores(); }
    void claves() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        const QString fecha =
            t.stores().getDateFormatbyEntity(QStringLiteral("INTERNOS"), QDate(2026, 3, 2));
        c.Ejecutar(QStringLiteral("insert into interno (interno,maquina,usuario,fecha) values "
                                  "('100','PC-1','',%1)")
                       .arg(fecha));
        QVERIFY_THROWS_EXCEPTION(
            KorvenError, c.Ejecutar(QStringLiteral("insert into interno (interno,maquina,usuario,"
                                                   "fecha) values ('100','PC-2','',%1)")
                                        .arg(fecha)));
        QCOMPARE(EsNull(c.Escalar(QStringLiteral("select maquina from interno"))),
                 QStringLiteral("PC-1"));
        Conexion& p = t.conexion(QStringLiteral("PERSONAL"));
        p.Ejecutar(QStringLiteral("insert into tabla (linea) values ('uno')"));
        p.Ejecutar(QStringLiteral("insert into tabla (linea) values ('dos')"));
        Recordset rs = p.Abrir(QStringLiteral("select * from tabla order by idlin"));
        QCOMPARE(rs.RecordCount(), 2);
        const double primero = EsNumero(rs.Fields(QStringLiteral("idlin")));
        rs.MoveNext();
        QVERIFY(EsNumero(rs.Fields(QStringLiteral("idlin"))) > primero);
        QCOMPARE(EsNull(rs.Fields(QStringLiteral("linea"))), QStringLiteral("dos"));
    }

    // A second run changes nothing and keeps the rows.
    void idempotente_data() { test::FilasDeMotores(); }
    void idempotente() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        c.Ejecutar(QStringLiteral("insert into caratula (interno, factura7) values ('7', "
                                  "'O''Brien S.A.')"));
        const QStringList antes = Descripcion(c, QStringLiteral("INTERNOS"));
        CrearOActualizar(t.stores());
        QCOMPARE(Descripcion(c, QStringLiteral("INTERNOS")), antes);
        QCOMPARE(EsNull(c.Escalar(QStringLiteral("select factura7 from caratula"))),
                 QStringLiteral("O'Brien S.A."));
        QCOMPARE(VersionDe(t.stores(), QStringLiteral("INTERNOS")), VersionActual());
    }

    // Stores made at an older version come up to the present one through the ordered steps:
    // the same tables, columns and indexes as a new store, and their rows kept.
    void migracion_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<int>("desde");
        for (int v = 1; v < Migrador::VersionActual; ++v) {
            QTest::addRow("sqlite desde %d", v) << static_cast<int>(Motor::SQLite) << v;
            QTest::addRow("postgresql desde %d", v) << static_cast<int>(Motor::PostgreSQL) << v;
        }
    }
    void migracion() {
        MOTOR_O_SALTAR();
        QFETCH(int, desde);
        const Motor m = static_cast<Motor>(motor);
        QStringList nuevo;
        {
            TestStores t(m);
            CrearOActualizar(t.stores());
            for (const QString& e : StoreDirectory::Entidades())
                nuevo << Descripcion(t.conexion(e), e);
        }
        TestStores t(m);
        Migrador mg(t.stores());
        for (const QString& e : StoreDirectory::Entidades())
            mg.CrearEnVersion(e, desde);
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        QCOMPARE(VersionDe(t.stores(), QStringLiteral("SYSTABLAS")), desde);
        if (desde < 2)
            QVERIFY(LectorEsquema::Indices(c, QStringLiteral("subitems")).isEmpty());
        if (desde < 3)
            QVERIFY(!LectorEsquema::NombresColumnas(c, QStringLiteral("subitems"))
                         .contains(QStringLiteral("idext")));
        c.Ejecutar(QStringLiteral("insert into subitems (id, interno, ncm, fob) values (1, "
                                  "'A-1', '8471.30.12.100B', 1500.25)"));

        CrearOActualizar(t.stores());
        QStringList migrado;
        for (const QString& e : StoreDirectory::Entidades()) {
            QCOMPARE(VersionDe(t.stores(), e), VersionActual());
            migrado << Descripcion(t.conexion(e), e);
        }
        QCOMPARE(migrado, nuevo);
        Recordset rs =
            c.Abrir(QStringLiteral("select ncm, fob, idext from subitems where interno = 'A-1'"));
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNull(rs.Fields(QStringLiteral("ncm"))), QStringLiteral("8471.30.12.100B"));
        QCOMPARE(EsNumero(rs.Fields(QStringLiteral("fob"))), 1500.25);
        QVERIFY(rs.Fields(QStringLiteral("idext")).isNull());
    }

    // A store made by hand, with some of the tables and fewer columns, is adopted: what it
    // lacks is added and its rows stay.
    void adopcion_data() { test::FilasDeMotores(); }
    void adopcion() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion(QStringLiteral("PERSONAL"));
        c.Ejecutar(QStringLiteral("create table clientes (cuit text, nombre text)"));
        c.Ejecutar(QStringLiteral("insert into clientes (cuit, nombre) values ('30712345679', "
                                  "'Casa D''Onofrio')"));
        CrearOActualizar(t.stores());
        const DefTabla* d = Catalogo::Tabla(QStringLiteral("clientes"));
        QStringList esperadas = d->NombresColumnas();
        QCOMPARE(LectorEsquema::NombresColumnas(c, QStringLiteral("clientes")).size(),
                 esperadas.size());
        for (const QString& col : esperadas)
            QVERIFY2(LectorEsquema::NombresColumnas(c, QStringLiteral("clientes")).contains(col),
                     qPrintable(col));
        QCOMPARE(EsNull(c.Escalar(QStringLiteral("select nombre from clientes where cuit = "
                                                 "'30712345679'"))),
                 QStringLiteral("Casa D'Onofrio"));
        QVERIFY(LectorEsquema::ExisteTabla(c, QStringLiteral("vendedor")));
    }

    // A store newer than the program is refused with its message and left alone.
    void versionMasNueva_data() { test::FilasDeMotores(); }
    void versionMasNueva() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        Conexion& c = t.conexion(QStringLiteral("NCM"));
        c.Ejecutar(QStringLiteral("update korven_version set version = 99 where entidad = 'NCM'"));
        try {
            CrearOActualizar(t.stores());
            QFAIL("se esperaba un error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.descripcion(),
                     QStringLiteral("La base de NCM tiene la versión 99 del esquema, más nueva "
                                    "que la de este programa (4)."));
        }
        QCOMPARE(VersionDe(t.stores(), QStringLiteral("NCM")), 99);
    }
};

QTEST_GUILESS_MAIN(TestEsquema)
#include "test_esquema.moc"
