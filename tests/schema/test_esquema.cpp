// The schema of the stores made and brought up to date on either engine, the CSV files read and
// imported, the reference data and the demo Operations loaded, and the administration tool.

#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Administracion.h"
#include "schema/Catalogo.h"
#include "schema/DatosReferencia.h"
#include "schema/DialectoEsquema.h"
#include "schema/Esquema.h"
#include "schema/ImportadorCsv.h"
#include "schema/LectorEsquema.h"
#include "schema/Migrador.h"
#include "schema/OperacionesDemo.h"
#include "support/TestStores.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

using namespace korven;
using namespace korven::schema;
using namespace korven::test;

namespace {

QString Datos() {
    return QDir(qEnvironmentVariable("KORVEN_SOURCE_DIR")).filePath(QStringLiteral("data"));
}

// A count: a whole select, or "select count(*) from " followed by the text given.
int Contar(Conexion& c, const QString& sql) {
    const bool entera = sql.startsWith(QLatin1String("select "));
    return static_cast<int>(
        EsNumero(c.Escalar(entera ? sql : QStringLiteral("select count(*) from ") + sql)));
}

// The rows of a query, each as its values joined by "|" (NULL as "-").
QStringList Filas(Conexion& c, const QString& sql) {
    QStringList r;
    for (Recordset rs = c.Abrir(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList f;
        for (int i = 0; i < rs.Campos().size(); ++i)
            f << (rs.Fields(i).isNull() ? QStringLiteral("-") : rs.Fields(i).toString());
        r << f.join(QLatin1Char('|'));
    }
    return r;
}

void Escribir(const QString& ruta, const QByteArray& contenido) {
    QFile f(ruta);
    if (!f.open(QIODevice::WriteOnly))
        qFatal("No se puede escribir %s", qPrintable(ruta));
    f.write(contenido);
}

// korven-admin run in process on a program directory: exit code, output and error lines.
struct Corrida {
    int codigo = -1;
    QStringList salida, errores;
};
Corrida Admin(const QString& directorio, const QStringList& args) {
    QString out, err;
    Corrida c;
    {
        QTextStream so(&out), se(&err); // written out when they close
        c.codigo = schema::Administracion(so, se, directorio).Ejecutar(args);
    }
    c.salida = out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    c.errores = err.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return c;
}

// The expression must throw a KorvenError with exactly this text.
#define ERROR_CON_TEXTO(expresion, texto)                                                          \
    do {                                                                                           \
        try {                                                                                      \
            expresion;                                                                             \
            QFAIL("se esperaba un error");                                                         \
        } catch (const ::korven::KorvenError& e_) {                                                \
            QCOMPARE(e_.descripcion(), texto);                                                     \
        }                                                                                          \
    } while (0)

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

ImportadorCsv::Resultado Importar(TestStores& t, const QString& tabla, const QString& csv,
                                  bool parcial = false, bool reemplazar = false) {
    return ImportadorCsv(t.stores())
        .Importar(tabla, LectorCsv::DeTexto(csv), {parcial, reemplazar});
}

QStringList Informe(const ImportadorCsv::Resultado& r) {
    QStringList l;
    for (const auto& x : r.rechazos)
        l << QStringLiteral("%1: %2").arg(x.linea).arg(x.motivo);
    return l;
}

// The stores with the schema and a few rows that the imports must not lose: five suffixes (detail
// PREVIO) among them.
void Sembrar(TestStores& t) {
    CrearOActualizar(t.stores());
    for (const char* sql : {"insert into divisas (id, descripcion, imp) values ('DOL', 'DOLAR', 1)",
                            "insert into caratula (interno, factura7) values ('X1', 'PREVIO')",
                            "insert into ncm (\"001\", \"002\", \"003\", \"010\") values "
                            "('0101.21.00', '100', 'A', 'CABALLOS')",
                            "insert into sufidos (sim, sufijo, detalle) select '84  .  .  .   ', "
                            "id, 'PREVIO' from (select 'AA' as id union select 'AB' union select "
                            "'ZA' union select 'EM01' union select 'EM02') as x"})
        t.conexion("INTERNOS").Ejecutar(QString::fromLatin1(sql));
}

// The configuration of the test's stores as a file korven-admin can read: the one TestStores wrote
// for PostgreSQL, or one for SQLite files in its db folder.
QString Config(TestStores& t) {
    const QString ruta = t.directorio() + QStringLiteral("DataAccessConfig.ini");
    if (!QFile::exists(ruta))
        Escribir(ruta, "[DEFAULT]\nDRIVER=QSQLITE\nFOLDER=db\n");
    return ruta;
}

// One command run in process on the test's stores, with the data folder of the sources.
Corrida Correr(TestStores& t, QStringList args) {
    Config(t);
    if (args.value(0) == QLatin1String("crear"))
        args << QStringLiteral("--datos") << Datos();
    return Admin(t.directorio(), args);
}

QStringList LineasEsquema(const QString& como) {
    QStringList r;
    for (const QString& e : StoreDirectory::Entidades())
        r << QStringLiteral("%1: esquema versión 6, %2.").arg(e, como);
    return r;
}

} // namespace

// The catalogue made into tables on either engine, where the stores live, and what one transaction
// may span.
class TestEsquema : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStores> compartidas_[2]; // one per engine, for the rows of contenido

private Q_SLOTS:
    // Every table and column of the catalogue, with its type, its indexes and keys, as the engine
    // itself reports them after the creation; a second run changes nothing, and a migration
    // arrives at the same.
    void tablasYColumnas_data() { FilasDeMotores(); }
    void tablasYColumnas() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(VersionDe(t.stores(), e), VersionActual());
        const QStringList hay = Descripcion(t);
        QCOMPARE(hay, Descripcion(t, true));
        CrearOActualizar(t.stores());
        QCOMPARE(Descripcion(t), hay);
        // Stores made at an older version come up to the present one through the ordered steps:
        // the same tables, columns and indexes as a new store, and their rows kept.
        for (int desde = 1; desde < Migrador::VersionActual; ++desde) {
            TestStores v(static_cast<Motor>(motor));
            for (const QString& e : StoreDirectory::Entidades())
                Migrador(v.stores()).CrearEnVersion(e, desde);
            Conexion& c = v.conexion(kInternos);
            QCOMPARE(LectorEsquema::Indices(c, QStringLiteral("subitems")).isEmpty(), desde < 2);
            QCOMPARE(LectorEsquema::NombresColumnas(c, QStringLiteral("subitems"))
                         .contains(QStringLiteral("idext")),
                     desde >= 3);
            c.Ejecutar("insert into subitems (id, interno, ncm, fob) values (1, 'A-1', "
                       "'8471.30.12.100B', 1500.25)");
            CrearOActualizar(v.stores());
            for (const QString& e : StoreDirectory::Entidades())
                QCOMPARE(VersionDe(v.stores(), e), VersionActual());
            QCOMPARE(Descripcion(v), hay);
            QCOMPARE(Filas(c, "select ncm, fob, idext from subitems"),
                     QStringList{"8471.30.12.100B|1500.25|-"});
        }
        // A store newer than the program is refused and left alone.
        t.conexion(kNcm).Ejecutar("update korven_version set version = 99 where entidad = 'NCM'");
        ERROR_CON_TEXTO(CrearOActualizar(t.stores()),
                        QStringLiteral("La base de NCM tiene la versión 99 del esquema, más nueva "
                                       "que la de este programa (6)."));
        QCOMPARE(VersionDe(t.stores(), kNcm), 99);
        // Text keys sort byte by byte on PostgreSQL too.
        QCOMPARE(DialectoEsquema::CrearTabla(*Catalogo::Tabla(QStringLiteral("interno")),
                                             Motor::PostgreSQL, 3),
                 QStringLiteral("CREATE TABLE IF NOT EXISTS interno (interno text COLLATE \"C\", "
                                "maquina text, usuario text, fecha timestamp, PRIMARY KEY "
                                "(interno))"));
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

    // The store work of an action that crosses another workstation is done again, and the other
    // workstation's write stands: on SQLite the first attempt finds the store busy, on
    // PostgreSQL the first finds the row changed since it read it. When the other workstation
    // keeps at it, the last attempt's error is the action's, and nothing of it is written.
    void reintentada_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<bool>("libera");
        QTest::addColumn<int>("conflictos");
        QTest::addColumn<QString>("v");
        QTest::addColumn<QString>("error");
        const QString ocupada = "5 La base de datos está ocupada por otra estación de trabajo y no "
                                "se liberó a tiempo; la acción no se hizo. Inténtelo de nuevo en "
                                "unos momentos.";
        const QString cruzada = "40001 Otra estación de trabajo modificó los mismos datos al mismo "
                                "tiempo; la acción se deshizo. Inténtelo de nuevo.";
        QTest::newRow("sqlite libera") << 0 << true << 1 << "11" << QString();
        QTest::newRow("sqlite sigue") << 0 << false << 3 << "1" << ocupada;
        QTest::newRow("postgresql libera") << 1 << true << 1 << "11" << QString();
        QTest::newRow("postgresql sigue") << 1 << false << 3 << "4" << cruzada;
    }
    void reintentada() {
        MOTOR_O_SALTAR();
        QFETCH(bool, libera);
        TestStores t(static_cast<Motor>(motor));
        const bool sqlite = t.motor() == Motor::SQLite;
        t.AgregarConfiguracion(QStringLiteral("[DEFAULT]\nBUSYTIMEOUT=100\n"));
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
        int intentos = 0, conflictos = 0;
        QString error;
        try {
            EnTransaccion(
                otra, {kInternos},
                [&](Transaccion&) {
                    if (!sqlite) {
                        c2.Ejecutar("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ");
                        c2.Escalar("select v from uno");
                        if (++intentos == 1 || !libera)
                            c.Ejecutar("update uno set v = v + 1");
                    }
                    c2.Ejecutar("update uno set v = v + 10");
                },
                [&] {
                    ++conflictos;
                    if (libera)
                        primera.reset(); // the other workstation ends its action
                    return true;
                });
        } catch (const KorvenError& e) {
            error = QString::number(e.numero()) + QLatin1Char(' ') + e.descripcion();
        }
        primera.reset();
        QTEST(conflictos, "conflictos");
        QTEST(error, "error");
        QTEST(Filas(c, "select v from uno").join(' '), "v");
        QVERIFY(!c2.enTransaccion());
    }

    // A PostgreSQL database made with the boolean isnumeric gets, when a connection opens, the one
    // that answers 1 or 0, as the system's SQL compares and adds it.
    void isnumericAnterior() {
        if (!TestStores::Disponible(Motor::PostgreSQL))
            QSKIP("Sin servidor PostgreSQL para las pruebas");
        TestStores t(Motor::PostgreSQL);
        for (const char* sql :
             {"DROP FUNCTION isnumeric(text)", "DROP FUNCTION isnumeric(double precision)",
              "CREATE FUNCTION isnumeric(text) RETURNS boolean LANGUAGE sql AS $$ SELECT $1 ~ "
              "'^[0-9]+$' $$",
              "CREATE FUNCTION isnumeric(double precision) RETURNS boolean LANGUAGE sql AS $$ "
              "SELECT $1 IS NOT NULL $$"})
            t.conexion(kInternos).Ejecutar(sql);
        t.stores().CloseAllDataConnection();
        QCOMPARE(Contar(t.conexion(kInternos),
                        "select isnumeric(cast(' -3 ' as text)) * 100 + isnumeric(cast('abc' as "
                        "text)) * 10 + isnumeric(cast(null as double precision))"),
                 100);
    }

    // CSV files read and imported, the reference data and the demo Operations loaded.
    void lector_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QStringList>("filas"); // "line:v1|v2"; the header is a,b
        QTest::newRow("simple") << "a,b\n1,2\n3,4\n" << QStringList{"2:1|2", "3:3|4"};
        QTest::newRow("coma entre comillas") << "a,b\n\"x,y\",2\n" << QStringList{"2:x,y|2"};
        QTest::newRow("comillas dobladas") << "a,b\n\"dijo \"\"hola\"\"\",2\n"
                                           << QStringList{"2:dijo \"hola\"|2"};
        QTest::newRow("salto entre comillas") << "a,b\n\"uno\ndos\",2\n3,4\n"
                                              << QStringList{"2:uno\ndos|2", "4:3|4"};
        QTest::newRow("CRLF") << "a,b\r\n1,2\r\n" << QStringList{"2:1|2"};
        QTest::newRow("punto y coma") << "a;b\n1,5;2\n" << QStringList{"2:1,5|2"};
        QTest::newRow("lineas en blanco") << "a,b\n\n1,2\n   \n" << QStringList{"3:1|2"};
        QTest::newRow("blancos") << "a,b\n\"84  .  \", AA \n" << QStringList{"2:84  .  | AA "};
        QTest::newRow("encabezado con blancos") << " a , b \n1,2\n" << QStringList{"2:1|2"};
    }
    void lector() {
        QFETCH(QString, texto);
        QFETCH(QStringList, filas);
        const LectorCsv csv = LectorCsv::DeTexto(texto);
        QCOMPARE(csv.encabezado(), (QStringList{"a", "b"}));
        QStringList leidas;
        for (const auto& f : csv.filas())
            leidas << QStringLiteral("%1:%2").arg(f.linea).arg(f.valores.join(QLatin1Char('|')));
        QCOMPARE(leidas, filas);
    }

    void lectorArchivo() {
        QTemporaryDir dir;
        const QString ruta = dir.filePath(QStringLiteral("x.csv"));
        Escribir(ruta, "\xEF\xBB\xBFid,descripcion\n410,ESPA\xC3\x91"
                       "A\n");
        const LectorCsv csv = LectorCsv::DeArchivo(ruta);
        QCOMPARE(csv.encabezado(), (QStringList{"id", "descripcion"}));
        QCOMPARE(csv.filas().at(0).valores.at(1), QStringLiteral("ESPAÑA"));
        ERROR_CON_TEXTO(LectorCsv::DeTexto("a,b\n1,\"abierta\n2,3\n", QStringLiteral("p.csv")),
                        QStringLiteral("p.csv: comillas sin cerrar desde la línea 2"));
    }

    // Every rejected row with its line and reason; with one reject nothing is written, unless the
    // import is partial: then the good rows go in, stored as the system reads them (a number with
    // its point, dates in both forms, NULL for an empty number or date, '' for an empty text,
    // apostrophes and quotes as written).
    void rechazos_data() { FilasDeMotores(); }
    void rechazos() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& c = t.conexion("INTERNOS");
        // The report of the import, then the rows of the query after the partial one.
        auto importar = [&](const QString& tabla, const char* csv, const QString& consulta) {
            const int antes = Contar(c, tabla);
            QStringList r = Informe(Importar(t, tabla, QString::fromUtf8(csv)));
            if (Contar(c, tabla) != antes)
                r << QStringLiteral("<escribió sin ser parcial>");
            const auto p = Importar(t, tabla, QString::fromUtf8(csv), true);
            if (Informe(p) != r || p.importadas != p.leidas - r.size())
                r << QStringLiteral("<otro informe parcial>");
            return r + Filas(c, consulta);
        };
        QCOMPARE(
            importar("divisas",
                     "id,descripcion,imp\nDOL,DOLAR,1\nXXX,PRUEBA,uno\nEUR,EURO\n060,EURO,1.08\n"
                     "060,EURO OTRA,1.1\n,SIN CODIGO,1\n012,REAL,\"0,18\"\n"
                     "019,YEN,\"1.234,5\"\n013,YUAN,-.5e1\n014,PESO,nan\n",
                     "select id, imp from divisas order by id"),
            (QStringList{"2: La clave ya existe en la tabla divisas.",
                         "3: Valor no numérico en la columna imp: 'uno'",
                         "4: La línea tiene 2 campos y el encabezado 3.",
                         "6: Clave repetida en el archivo (ya está en la línea 5).",
                         "7: Falta el valor de la columna clave id.",
                         "8: Valor no numérico en la columna imp: '0,18'",
                         "9: Valor no numérico en la columna imp: '1.234,5'",
                         "11: Valor no numérico en la columna imp: 'nan'", "013|-5", "060|1.08",
                         "DOL|1"}));
        QCOMPARE(importar("ncm",
                          "001,002,003,010\n8471.30.12,100,B,BIEN\n847130.12,100,B,X\n"
                          "8471.30.12,10,B,X\n8471.30.12,200,b,X\n0101.21.00,100,A,REPETIDA\n",
                          "select \"001\", \"002\", \"003\", \"010\" from ncm order by 1"),
                 (QStringList{"3: La columna 001 debe tener la forma NNNN.NN.NN: '847130.12'",
                              "4: La columna 002 debe tener 3 dígitos: '10'",
                              "5: La columna 003 debe ser una letra mayúscula: 'b'",
                              "6: La clave ya existe en la tabla ncm.", "0101.21.00|100|A|CABALLOS",
                              "8471.30.12|100|B|BIEN"}));
        QCOMPARE(importar("sufidos",
                          "sim,sufijo,detalle\n8471.  .  .   ,ZD,BIEN\n8471.  .  .  ,ZD,CORTO\n"
                          "84  .  .  .   ,AAA,LARGO\n84  .  .  .   ,AA,EXISTE\n",
                          "select sim, sufijo from sufidos where detalle <> 'PREVIO'"),
                 (QStringList{"3: La columna sim debe tener 14 caracteres: '8471.  .  .  '",
                              "4: La columna sufijo debe tener 2 o 4 caracteres: 'AAA'",
                              "5: La clave ya existe en la tabla sufidos.", "8471.  .  .   |ZD"}));
        QCOMPARE(importar("caratula",
                          "interno,fechaalta,fobdivisas,factura7\nA1,2026-02-30,10,\n"
                          "A2,30/01/2026,1.5,\nA3,,,X\nX1,2026-01-01,0,\n",
                          "select interno, fechaalta, fobdivisas, factura7 from caratula order by "
                          "interno"),
                 (QStringList{"2: Fecha inválida en la columna fechaalta: '2026-02-30' (se espera "
                              "AAAA-MM-DD o DD/MM/AAAA)",
                              "5: La clave ya existe en la tabla caratula.", "A2|2026-01-30|1.5|",
                              "A3|-|-|X", "X1|-|-|PREVIO"}));
        QCOMPARE(importar("vendedor",
                          "codigo,nombre,domicilio\nV9,D'ALESSIO Y O'HARA,\"CALLE 1, \"\"B\"\"\"\n"
                          "V10,'; drop table vendedor;--,\n,SIN CODIGO,\n",
                          "select codigo, nombre, domicilio from vendedor order by codigo"),
                 (QStringList{"4: Falta el valor de la columna clave codigo.",
                              "V10|'; drop table vendedor;--|",
                              "V9|D'ALESSIO Y O'HARA|CALLE 1, \"B\""}));
        // A header the table cannot take is refused before any row is read.
        ERROR_CON_TEXTO(Importar(t, "vendedor", "codigo,nombre,telefono\nV1,A,1\n"),
                        QStringLiteral("La columna 'telefono' no es de la tabla vendedor."));
        ERROR_CON_TEXTO(Importar(t, "vendedor", "codigo,nombre,NOMBRE\nV1,A,B\n"),
                        QStringLiteral("La columna 'nombre' está repetida en el encabezado."));
        ERROR_CON_TEXTO(Importar(t, "ncm", "001,002,010\n8471.30.12,100,X\n"),
                        QStringLiteral("Falta la columna clave '003' de la tabla ncm."));
        ERROR_CON_TEXTO(Importar(t, "vendedor", ""),
                        QStringLiteral("El archivo no tiene encabezado."));
        ERROR_CON_TEXTO(Importar(t, "proveedores", "id\n1\n"),
                        QStringLiteral("La tabla proveedores no existe en el esquema."));
    }

    // Replacing empties the table and loads the file in the same transaction: a rejected row, or a
    // statement the store refuses in the middle (here a trigger on one row of the fourth batch),
    // keeps the old rows; the connection stays usable.
    void reemplazar_data() { FilasDeMotores(); }
    void reemplazar() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& c = t.conexion("NCM");
        const QString sufidos = QStringLiteral("sufidos");
        QCOMPARE(Informe(Importar(t, sufidos, "sim,sufijo,detalle\n85  .  .  .   ,TE010,X\n", false,
                                  true)),
                 QStringList{"2: La columna sufijo debe tener 2 o 4 caracteres: 'TE010'"});
        QCOMPARE(Contar(c, "sufidos where detalle = 'PREVIO'"), 5);
        for (const char* sql :
             t.motor() == Motor::SQLite
                 ? QList<const char*>{"CREATE TRIGGER falla BEFORE INSERT ON sufidos WHEN "
                                      "NEW.detalle = 'FALLA' BEGIN SELECT RAISE(ABORT, 'fila "
                                      "rechazada por la base'); END"}
                 : QList<const char*>{"CREATE FUNCTION falla() RETURNS trigger LANGUAGE plpgsql AS "
                                      "$$ BEGIN IF NEW.detalle = 'FALLA' THEN RAISE EXCEPTION "
                                      "'fila rechazada por la base'; END IF; RETURN NEW; END $$",
                                      "CREATE TRIGGER falla BEFORE INSERT ON sufidos FOR EACH ROW "
                                      "EXECUTE FUNCTION falla()"})
            c.Ejecutar(QString::fromLatin1(sql));
        QString csv = QStringLiteral("sim,sufijo,detalle\n");
        for (int i = 0; i < 1000; ++i)
            csv += QStringLiteral("%1.  .  .   ,Z%2,%3\n")
                       .arg(1000 + i)
                       .arg(i % 10)
                       .arg(QLatin1String(i == 999 ? "FALLA" : "DETALLE"));
        for (bool reemplazando : {false, true}) {
            try {
                Importar(t, sufidos, csv, false, reemplazando);
                QFAIL("se esperaba un error del store");
            } catch (const KorvenError& e) {
                QVERIFY2(e.descripcion().contains(QStringLiteral("fila rechazada por la base")),
                         qPrintable(e.descripcion()));
            }
            QCOMPARE(Contar(c, "sufidos where detalle = 'PREVIO'"), 5);
            QCOMPARE(Contar(c, sufidos), 5);
        }
        Importar(t, sufidos, "sim,sufijo,detalle\n84  .  .  .   ,AA,MARCA\n", false, true);
        QCOMPARE(Filas(c, "select sim, sufijo, detalle from sufidos"),
                 QStringList{"84  .  .  .   |AA|MARCA"});
    }

    // Every file of the data folder is loaded whole into its table, once; a table the office
    // emptied is loaded again. The demo Operations likewise: a deleted one comes back alone.
    void cargaCompleta_data() { FilasDeMotores(); }
    void cargaCompleta() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        const auto cargadas = DatosReferencia(t.stores(), Datos()).Cargar();
        Conexion& i = t.conexion("INTERNOS");
        int archivos = 0;
        for (const QString& e : StoreDirectory::Entidades()) {
            const QDir dir(QDir(Datos()).filePath(StoreDirectory::NombreArchivo(e)));
            for (const QString& a : dir.entryList({QStringLiteral("*.csv")}, QDir::Files)) {
                ++archivos;
                const QString tabla = QFileInfo(a).completeBaseName();
                const int filas = int(LectorCsv::DeArchivo(dir.filePath(a)).filas().size());
                QCOMPARE(Contar(i, tabla), filas);
                QVERIFY(cargadas.contains(qMakePair(tabla, filas)));
            }
        }
        QCOMPARE(cargadas.size(), archivos);
        QVERIFY(DatosReferencia(t.stores(), Datos()).Cargar().isEmpty());
        i.Ejecutar("delete from via");
        i.Ejecutar("delete from sta where id = 'IC04'");
        const auto otra = DatosReferencia(t.stores(), Datos()).Cargar();
        QVERIFY(otra.size() == 1 && otra.first().first == QLatin1String("via"));
        QCOMPARE(Contar(i, "sta where id = 'IC04'"), 0);

        QCOMPARE(OperacionesDemo(t.stores(), Datos()).Cargar(),
                 (QStringList{"DEMO-IC04-001", "DEMO-EC01-001", "DEMO-IT01-001", "DEMO-IC05-001"}));
        QVERIFY(OperacionesDemo(t.stores(), Datos()).Cargar().isEmpty());
        for (const char* tabla : {"caratula", "facturas", "subitems"})
            i.Ejecutar(QStringLiteral("delete from %1 where interno = 'DEMO-EC01-001'")
                           .arg(QLatin1String(tabla)));
        QCOMPARE(OperacionesDemo(t.stores(), Datos()).Cargar(), QStringList{"DEMO-EC01-001"});
        QCOMPARE(Contar(i, "subitems"), 13);
        QCOMPARE(Contar(i, "caratula"), 4);
    }

    // What the logic of the system needs of the reference data and of the demo Operations, each as
    // one count that must come out as said.
    void contenido_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("esperado");
        const std::tuple<const char*, QString, int> casos[] = {
            {"posiciones 8409.91.12.100G y 8409.99.12.100C",
             "ncm where (\"001\", \"002\", \"003\") in (('8409.91.12', '100', 'G'), ('8409.99.12', "
             "'100', 'C'))",
             2},
            {"subregimenes pedidos",
             "sta where id in "
             "('IC04','IC05','IC81','ICR1','IDA4','IT01','IT04','LAPI','ZFE1','EC01','EC02','EG01')"
             " and cstaimpexp = (case when id like 'E%' then 'E' else 'I' end)",
             12},
            {"conceptos de la liquidacion en tax",
             "tax where ctax in "
             "('010','011','015','016','020','032','041','059','061','062','065','415','417','422',"
             "'424','500','501','601','611','852','854','856','866','900') and ctaxpog in "
             "('P','G','C') and ctax in (select id from conceptos)",
             24},
            {"ventajas que el sistema escribe",
             "ventajas where id in "
             "('IVAADREDUCCION','GANANEXIMICION','MUESTRAEXPO','VEHICULOPARTES','AUTOLIQLIBREEXP','"
             "AUTOLIQLIBREIMP')",
             6},
            {"apostrofes conservados",
             "clientes, despadu where clientes.cuit = '30712345671' and clientes.nombre = "
             "'METALURGICA D''ANGELO HNOS S.R.L.' and despadu.cuit = '27312345671' and "
             "despadu.nombre = 'FERNANDEZ O''NEILL PATRICIA'",
             1},
            {"demo: carátulas completas",
             "caratula c join sta on sta.id = c.idsubreg join dest d on d.subreg = c.idsubreg "
             "where c.idaduana <> '' and c.fobdivisas > 0 and c.fobdivcambio > 0 and c.factura8 = "
             "'S' and c.fobcoddivisas in (select id from divisas) and c.cuitcliente in (select "
             "cuit from clientes) and c.factura3 = (select nombre from despadu where cuit = "
             "c.cuitdespaduana) and (d.txtidvendedor <> '' or c.idvendedor <> '') and "
             "(d.txtidcondventa <> '' or c.idcondiciondeventa <> '') and (sta.cstaimpexp = 'E' or "
             "(c.fletedivisas > 0 and c.fletedivcambio > 0 and c.segurodivisas > 0 and "
             "c.segurodivcambio > 0 and c.fletecoddivisas <> '' and c.segurocoddivisas <> ''))",
             4},
            {"demo: FOB de las lineas",
             "caratula c where abs(c.fobdivisas - (select sum(fob) from subitems s where s.interno "
             "= c.interno)) < 0.005",
             4},
            {"demo: lineas segun el nomenclador",
             "subitems s join ncm n on n.\"001\" = substr(s.ncm, 1, 10) and n.\"002\" = "
             "substr(s.ncm, 12, 3) and n.\"003\" = substr(s.ncm, 15, 1) where n.\"012\" = "
             "s.estadistica and n.\"020\" = s.deresp and s.lapi = (case "
             "when n.\"059\" = '*' then 'S' else 'N' end) and s.kgneto <= s.kgbruto and "
             "(s.idunidad <> s.estadistica or s.valorrelacionestadistica = s.cantidad)",
             13},
        };
        for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)})
            for (const auto& [nombre, sql, esperado] : casos)
                QTest::addRow("%s: %s", m ? "postgresql" : "sqlite", nombre)
                    << m << sql << esperado;
    }
    void contenido() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sql);
        QFETCH(int, esperado);
        // One set of stores per engine, with the reference data and the demo, serves every row.
        std::unique_ptr<TestStores>& t = compartidas_[motor];
        if (!t) {
            t = std::make_unique<TestStores>(static_cast<Motor>(motor));
            CrearOActualizar(t->stores());
            CargarDatosReferencia(t->stores(), Datos());
            CargarOperacionesDemo(t->stores(), Datos());
        }
        QCOMPARE(Contar(t->conexion("INTERNOS"), sql), esperado);
    }

    // A file with a bad row anywhere leaves every store as it was.
    void cargaFallida_data() { FilasDeMotores(); }
    void cargaFallida() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        QTemporaryDir dir;
        for (const char* a : {"internos/sta.csv", "systablas/pais.csv"}) {
            QDir(dir.path()).mkpath(QString::fromLatin1(a).section(QLatin1Char('/'), 0, 0));
            QFile::copy(QDir(Datos()).filePath(QLatin1String(a)), dir.filePath(QLatin1String(a)));
        }
        const QString malo = dir.filePath(QStringLiteral("internos/unidrel.csv"));
        Escribir(malo, "unid1,unid2,pase\n08,07,2\n09,07,doce\n");
        ERROR_CON_TEXTO(DatosReferencia(t.stores(), dir.path()).Cargar(),
                        malo + QStringLiteral(", línea 3: Valor no numérico en la columna pase: "
                                              "'doce'"));
        QCOMPARE(Contar(t.conexion("INTERNOS"),
                        QStringLiteral("select (select count(*) from sta) + (select count(*) "
                                       "from unidrel) + (select count(*) from pais)")),
                 0);
    }

    // The administration tool korven-admin.
    // "estado" and "actualizar" on stores of version 1; then "crear --demo" loads the data, and a
    // second run finds everything there.
    void crear_data() { FilasDeMotores(); }
    void crear() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        for (const QString& e : StoreDirectory::Entidades())
            Migrador(t.stores()).CrearEnVersion(e, 1);
        Corrida c = Correr(t, {"estado"});
        QCOMPARE(c.codigo, Administracion::Fallo);
        QVERIFY(c.salida.value(0).startsWith(QStringLiteral("INTERNOS: versión 1 (debe "
                                                            "actualizarse) - ")));
        c = Correr(t, {"actualizar"});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida, LineasEsquema(QStringLiteral("actualizada desde la versión 1")));

        c = Correr(t, {"crear", "--demo"});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida.mid(0, 8), LineasEsquema(QStringLiteral("al día")));
        QVERIFY(c.salida.value(8).startsWith(QStringLiteral("Datos de referencia: 46 tablas "
                                                            "cargadas, ")));
        QCOMPARE(c.salida.mid(9) + c.errores,
                 QStringList{"Operaciones de demostración cargadas: DEMO-IC04-001, "
                             "DEMO-EC01-001, DEMO-IT01-001, DEMO-IC05-001."});
        c = Correr(t, {"crear", "--demo"});
        QCOMPARE(c.salida.mid(8),
                 (QStringList{"Datos de referencia: nada que cargar (las tablas ya "
                              "tenían datos).",
                              "Las operaciones de demostración ya estaban cargadas."}));
    }

    // An import says what it read and rejected; with a rejected row it writes nothing unless
    // partial. A file that is not UTF-8 is read as Latin-1, and said so. "listar" shows the table
    // afterwards, as wide as its values.
    void importar_data() { FilasDeMotores(); }
    void importar() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        QCOMPARE(Correr(t, {"crear", "--sin-datos"}).codigo, 0);
        const QString csv = t.directorio() + QStringLiteral("archivo.csv");
        // The exit code, then the lines an import says.
        auto importar = [&](const QByteArray& archivo, QStringList args) {
            Escribir(csv, archivo);
            args.insert(1, csv);
            const Corrida c = Correr(t, QStringList{QStringLiteral("importar")} + args);
            return QStringList{QString::number(c.codigo)} + c.salida + c.errores;
        };
        auto listar = [&](const QStringList& args) {
            return Correr(t, QStringList{QStringLiteral("listar")} + args).salida;
        };
        const QByteArray ncm("001,002,003,010,012\n8471.30.12,100,B,NOTEBOOK,07\n"
                             "8471.30.12,100,B,OTRA VEZ,07\n8471.30,100,C,CORTA,07\n");
        const QStringList informe{
            "Tabla ncm: 3 filas leídas, 1 válidas, 2 rechazadas.",
            "  línea 3: Clave repetida en el archivo (ya está en la línea 2).",
            "  línea 4: La columna 001 debe tener la forma NNNN.NN.NN: '8471.30'"};
        const QStringList columnas{"ncm", "--columnas", "001,002,003,012"};
        QCOMPARE(
            importar(ncm, {"ncm"}),
            QStringList{"1"} + informe +
                QStringList{"No se importó ninguna fila: corrija el archivo o use --parcial."});
        QCOMPARE(listar(columnas),
                 (QStringList{"001 | 002 | 003 | 012", "----+-----+-----+----", "(0 filas)"}));
        QCOMPARE(importar(ncm, {"ncm", "--parcial"}),
                 QStringList{"0"} + informe + QStringList{"Filas importadas en ncm: 1."});
        QCOMPARE(listar(columnas),
                 (QStringList{"001        | 002 | 003 | 012", "-----------+-----+-----+----",
                              "8471.30.12 | 100 | B   | 07", "(1 filas)"}));
        QCOMPARE(importar("id,descripcion,dias,impexpo\nA1,Dep\xF3sito,2.5,I\n", {"mottmp"}),
                 (QStringList{"0",
                              QStringLiteral("El archivo %1 no está en UTF-8: se leyó como "
                                             "Latin-1.")
                                  .arg(QDir::toNativeSeparators(csv)),
                              "Tabla mottmp: 1 filas leídas, 1 válidas, 0 rechazadas.",
                              "Filas importadas en mottmp: 1."}));
        QCOMPARE(
            listar({"mottmp", "--columnas", "id,descripcion,dias,impexpo"}),
            (QStringList{"id | descripcion | dias | impexpo", "---+-------------+------+--------",
                         "A1 | Depósito    | 2.5  | I", "(1 filas)"}));
        // One Operation's rows as CSV, in key order, quoted where needed.
        QCOMPARE(importar("interno,orden,factura\nB,1.5,\"A-1, \"\"bis\"\"\"\nA,2,Z-9\nA,1,A-2\n",
                          {"facturas"})
                     .first(),
                 QStringLiteral("0"));
        QCOMPARE(listar({"facturas", "--interno", "A", "--csv"}),
                 (QStringList{"interno,orden,factura", "A,1,A-2", "A,2,Z-9"}));
        QCOMPARE(listar({"facturas", "--interno", "B", "--csv"}),
                 (QStringList{"interno,orden,factura", "B,1.5,\"A-1, \"\"bis\"\"\""}));
    }

    // Command lines not understood exit with 2, failures with 1, each with its message; none of
    // them makes a table.
    void errores() {
        TestStores t(Motor::SQLite);
        auto error = [&](const QStringList& args) {
            const Corrida c = Correr(t, args);
            return QString::number(c.codigo) + QLatin1Char(' ') + c.errores.value(0);
        };
        QCOMPARE(error({}), QStringLiteral("2 Uso: korven-admin <orden> [opciones]"));
        QCOMPARE(error({"borrar"}), QStringLiteral("2 Orden desconocida: borrar"));
        QCOMPARE(error({"crear", "--todo"}), QStringLiteral("2 Opción desconocida: --todo"));
        QCOMPARE(error({"importar", "ncm"}),
                 QStringLiteral("2 Uso: korven-admin importar <tabla> <archivo.csv> [--parcial] "
                                "[--reemplazar]"));
        QCOMPARE(error({"listar"}),
                 QStringLiteral("2 Uso: korven-admin listar <tabla> [--columnas a,b] [--limite N] "
                                "[--entidad E] [--interno X] [--csv]"));
        QCOMPARE(error({"listar", "sta", "--limite", "diez"}),
                 QStringLiteral("2 El límite debe ser un número entero: diez"));
        QCOMPARE(error({"listar", "sta", "--columnas"}),
                 QStringLiteral("2 Falta el valor de la opción --columnas."));
        QCOMPARE(error({"crear", "--config", "/no/existe/DataAccessConfig.ini"}),
                 QStringLiteral("1 Error 53: No existe el archivo de configuración: "
                                "/no/existe/DataAccessConfig.ini"));
        QCOMPARE(error({"listar", "proveedores"}),
                 QStringLiteral("1 La tabla proveedores no existe en el esquema; indique su base "
                                "con --entidad."));
        QCOMPARE(error({"demo"}), QStringLiteral("1 La base de INTERNOS no está al día: ejecute "
                                                 "primero \"korven-admin crear\"."));
        QCOMPARE(error({"listar", "sta"}),
                 QStringLiteral("1 La base de INTERNOS no tiene la tabla sta."));
        // The built program itself refuses an import without the schema, and a wrong command.
        QProcess p;
        p.start(QStringLiteral(KORVEN_ADMIN), {"importar", "sta", "x.csv", "--config", Config(t)});
        QVERIFY(p.waitForFinished(120000));
        QCOMPARE(p.exitCode(), 1);
        QCOMPARE(p.readAllStandardError(), QByteArray("La base de INTERNOS no está al día: ejecute "
                                                      "primero \"korven-admin crear\".\n"));
        p.start(QStringLiteral(KORVEN_ADMIN), {"otra"});
        QVERIFY(p.waitForFinished(120000));
        QCOMPARE(p.exitCode(), 2);
        QCOMPARE(Contar(t.conexion(kInternos), "sqlite_master where name = 'caratula'"), 0);
    }

    // Stores of the former layout, one file per store: the program refuses them naming the command,
    // and the command brings every table into korven.db, all or nothing.
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
        for (const char* e : {"INTERNOS", "ESTADO"})
            for (const char* sql : {"create table propia (id integer primary key, texto text)",
                                    "insert into propia values (7, 'D''Angelo')"})
                if (e == kInternos || conflicto)
                    t.conexion(e).Ejecutar(sql);
        t.stores().CloseAllDataConnection();
        const QString db = t.directorio() + QStringLiteral("db/");
        const QStringList antes = StoreDirectory::ArchivosFormatoAnterior(db);
        QCOMPARE(antes.size(), 8);
        QFile::remove(t.directorio() + QStringLiteral("DataAccessConfig.ini"));
        t.AgregarConfiguracion({});
        ERROR_CON_TEXTO(t.conexion(kInternos),
                        QStringLiteral("La carpeta %1 tiene las bases en el formato anterior, un "
                                       "archivo por base (internos.db, systablas.db, personal.db, "
                                       "ncm.db, usuario.db, estados.db, catalogos.db, "
                                       "insumos.db), y no tiene korven.db. Únalas en un solo "
                                       "archivo con: korven-admin unificar")
                            .arg(QDir::toNativeSeparators(t.directorio() + QStringLiteral("db"))));

        const Corrida c = Admin(t.directorio(), {"unificar"});
        QCOMPARE(StoreDirectory::ArchivosFormatoAnterior(db), antes); // the old files stay
        if (conflicto) {
            QCOMPARE(c.codigo, Administracion::Fallo);
            QCOMPARE(c.errores, QStringList{"Error 3051: No se pudo copiar estados.db, tabla "
                                            "propia: UNIQUE constraint failed: propia.id"});
            QCOMPARE(QDir(db).entryList({"korven*"}), QStringList{});
            return;
        }
        QCOMPARE(c.codigo, Administracion::Correcto);
        QVERIFY2(c.salida.value(0).startsWith(
                     QStringLiteral(
                         "Bases unificadas en %1korven.db: internos.db, systablas.db, personal.db, "
                         "ncm.db, usuario.db, estados.db, catalogos.db, insumos.db (")
                         .arg(QDir::toNativeSeparators(db))),
                 qPrintable(c.salida.join('\n')));
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(VersionDe(t.stores(), e), VersionActual());
        QCOMPARE(Filas(t.conexion(kInternos), "select id, texto from propia"),
                 QStringList{"7|D'Angelo"});
    }

    // korven-admin on an office server: a missing database is made when the role may; a server that
    // cannot be reached is named.
    void servidor_data() {
        QTest::addColumn<bool>("alcanzable");
        QTest::newRow("base que falta") << true;
        QTest::newRow("servidor inalcanzable") << false;
    }
    void servidor() {
        QFETCH(bool, alcanzable);
        std::optional<TestStores> servidor;
        QHash<QString, QString> p{{"HOST", "127.0.0.1"}, {"PORT", "1"}, {"USER", "korven"}};
        if (alcanzable)
            p = servidor.emplace(Motor::PostgreSQL).stores().Parametros(kInternos);
        const QString base =
            QStringLiteral("korven_nueva_%1").arg(QCoreApplication::applicationPid());
        TestStores t(Motor::SQLite);
        t.AgregarConfiguracion(
            QStringLiteral("[DEFAULT]\nDRIVER=QPSQL\nHOST=%1\nPORT=%2\nDATABASE=%3\nUSER=%4\n")
                .arg(p.value("HOST"), p.value("PORT"), base, p.value("USER")));
        const Corrida c = Admin(t.directorio(), {"crear", "--sin-datos"});
        if (alcanzable) {
            servidor->conexion(kInternos).Ejecutar(
                QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(base));
            QCOMPARE(c.salida.mid(0, 2) + c.errores,
                     (QStringList{QStringLiteral("Base de datos creada: PostgreSQL socket %1 "
                                                 "(puerto %2), base %3.")
                                      .arg(p.value("HOST"), p.value("PORT"), base),
                                  LineasEsquema(QStringLiteral("creada")).first()}));
            return;
        }
        QCOMPARE(c.codigo, Administracion::Fallo);
        QVERIFY2(c.errores.value(0).startsWith(
                     QStringLiteral("Error 3044: No se puede conectar con el servidor de la base "
                                    "de datos de INTERNOS (PostgreSQL 127.0.0.1:1, base %1, "
                                    "usuario korven). Verifique que el servidor esté en marcha y "
                                    "que DataAccessConfig.ini lo indique bien. Detalle: ")
                         .arg(base)),
                 qPrintable(c.errores.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestEsquema)
#include "test_esquema.moc"
