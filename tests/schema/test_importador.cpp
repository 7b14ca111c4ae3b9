#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "schema/ImportadorCsv.h"
#include "schema/LectorCsv.h"
#include "support/TestStores.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace korven;
using namespace korven::schema;
using korven::test::TestStores;

namespace {

int Contar(Conexion& c, const QString& tabla) {
    return static_cast<int>(EsNumero(c.Escalar(QStringLiteral("select count(*) from ") + tabla)));
}

QStringList Informe(const ImportadorCsv::Resultado& r) {
    QStringList l;
    for (const auto& x : r.rechazos)
        l << QStringLiteral("%1: %2").arg(x.linea).arg(x.motivo);
    return l;
}

// The stores with the schema and a few rows that the imports must not lose.
void Sembrar(TestStores& t) {
    CrearOActualizar(t.stores());
    Conexion& i = t.conexion(QStringLiteral("INTERNOS"));
    i.Ejecutar(QStringLiteral("insert into divisas (id, descripcion, imp) values ('DOL', 'DOLAR', "
                              "1)"));
    i.Ejecutar(QStringLiteral("insert into caratula (interno, factura7) values ('X1', 'PREVIO')"));
    Conexion& n = t.conexion(QStringLiteral("NCM"));
    n.Ejecutar(QStringLiteral("insert into ncm (\"001\", \"002\", \"003\", \"010\") values "
                              "('0101.21.00', '100', 'A', 'CABALLOS')"));
    for (const char* s : {"AA", "AB", "ZA", "EM01", "EM02"})
        n.Ejecutar(QStringLiteral("insert into sufidos (sim, sufijo, detalle) values ('84  .  .  "
                                  ".   ', '%1', 'PREVIO')")
                       .arg(QLatin1String(s)));
}

} // namespace

class TestImportador : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lector_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QStringList>("encabezado");
        QTest::addColumn<QStringList>("filas"); // "line:v1|v2"
        QTest::newRow("simple") << "a,b\n1,2\n3,4\n"
                                << "," << QStringList{"a", "b"} << QStringList{"2:1|2", "3:3|4"};
        QTest::newRow("coma entre comillas")
            << "a,b\n\"x,y\",2\n"
            << "," << QStringList{"a", "b"} << QStringList{"2:x,y|2"};
        QTest::newRow("comillas dobladas")
            << "a,b\n\"dijo \"\"hola\"\"\",2\n"
            << "," << QStringList{"a", "b"} << QStringList{"2:dijo \"hola\"|2"};
        QTest::newRow("salto entre comillas")
            << "a,b\n\"uno\ndos\",2\n3,4\n"
            << "," << QStringList{"a", "b"} << QStringList{"2:uno\ndos|2", "4:3|4"};
        QTest::newRow("CRLF") << "a,b\r\n1,2\r\n"
                              << "," << QStringList{"a", "b"} << QStringList{"2:1|2"};
        QTest::newRow("punto y coma") << "a;b\n1,5;2\n"
                                      << ";" << QStringList{"a", "b"} << QStringList{"2:1,5|2"};
        QTest::newRow("lineas en blanco") << "a,b\n\n1,2\n   \n"
                                          << "," << QStringList{"a", "b"} << QStringList{"3:1|2"};
        QTest::newRow("sin salto final") << "a,b\n1,2"
                                         << "," << QStringList{"a", "b"} << QStringList{"2:1|2"};
        QTest::newRow("blancos conservados")
            << "sim,sufijo\n\"84  .  .  .   \", AA \n"
            << "," << QStringList{"sim", "sufijo"} << QStringList{"2:84  .  .  .   | AA "};
        QTest::newRow("campo vacio al final")
            << "a,b\n1,\n"
            << "," << QStringList{"a", "b"} << QStringList{"2:1|"};
        QTest::newRow("encabezado con blancos")
            << " a , b \n1,2\n"
            << "," << QStringList{"a", "b"} << QStringList{"2:1|2"};
    }
    void lector() {
        QFETCH(QString, texto);
        QFETCH(QString, separador);
        QFETCH(QStringList, encabezado);
        QFETCH(QStringList, filas);
        const LectorCsv csv = LectorCsv::DeTexto(texto);
        QCOMPARE(QString(csv.separador()), separador);
        QCOMPARE(csv.encabezado(), encabezado);
        QStringList leidas;
        for (const auto& f : csv.filas())
            leidas << QStringLiteral("%1:%2").arg(f.linea).arg(f.valores.join(QLatin1Char('|')));
        QCOMPARE(leidas, filas);
    }

    void lectorArchivo() {
        QTemporaryDir dir;
        QFile f(dir.filePath(QStringLiteral("x.csv")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("\xEF\xBB\xBFid,descripcion\n203,BRASIL\n410,ESPA\xC3\x91"
                "A\n");
        f.close();
        const LectorCsv csv = LectorCsv::DeArchivo(f.fileName());
        QCOMPARE(csv.encabezado(), (QStringList{"id", "descripcion"}));
        QCOMPARE(csv.filas().at(1).valores.at(1), QStringLiteral("ESPAÑA"));
        try {
            LectorCsv::DeTexto(QStringLiteral("a,b\n1,\"abierta\n2,3\n"), QStringLiteral("p.csv"));
            QFAIL("se esperaba un error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.descripcion(),
                     QStringLiteral("p.csv: comillas sin cerrar desde la línea 2"));
        }
        QVERIFY_THROWS_EXCEPTION(KorvenError,
                                 LectorCsv::DeArchivo(dir.filePath(QStringLiteral("no.csv"))));
    }

    // Every rejected row with its line and reason; with one reject nothing is written.
    void rechazos_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<QString>("csv");
        QTest::addColumn<QStringList>("informe");
        struct Caso {
            const char* nombre;
            const char* tabla;
            const char* csv;
            QStringList informe;
        };
        const Caso casos[] = {
            {"divisas",
             "divisas",
             "id,descripcion,imp\nDOL,DOLAR,1\nXXX,PRUEBA,uno\nEUR,EURO\n060,EURO,1.08\n060,EURO "
             "OTRA,1.1\n,SIN CODIGO,1\n012,REAL,\"0,18\"\n019,YEN,\"1.234,5\"\n",
             {"2: La clave ya existe en la tabla divisas.",
              "3: Valor no numérico en la columna imp: 'uno'",
              "4: La línea tiene 2 campos y el encabezado 3.",
              "6: Clave repetida en el archivo (ya está en la línea 5).",
              "7: Falta el valor de la columna clave id.",
              "8: Valor no numérico en la columna imp: '0,18'",
              "9: Valor no numérico en la columna imp: '1.234,5'"}},
            {"posiciones",
             "ncm",
             "001,002,003,010\n8471.30.12,100,B,BIEN\n847130.12,100,B,X\n8471.30.12,10,B,X\n"
             "8471.30.12,200,b,X\n0101.21.00,100,A,REPETIDA\n",
             {"3: La columna 001 debe tener la forma NNNN.NN.NN: '847130.12'",
              "4: La columna 002 debe tener 3 dígitos: '10'",
              "5: La columna 003 debe ser una letra mayúscula: 'b'",
              "6: La clave ya existe en la tabla ncm."}},
            {"sufijos",
             "sufidos",
             "sim,sufijo,detalle\n8471.  .  .   ,ZD,BIEN\n8471.  .  .  ,ZD,CORTO\n"
             "84  .  .  .   ,AAA,LARGO\n84  .  .  .   ,AA,EXISTE\n",
             {"3: La columna sim debe tener 14 caracteres: '8471.  .  .  '",
              "4: La columna sufijo debe tener 2 o 4 caracteres: 'AAA'",
              "5: La clave ya existe en la tabla sufidos."}},
            {"fechas",
             "caratula",
             "interno,fechaalta,fobdivisas\nA1,2026-02-30,10\nA2,30/01/2026,1.5\nA3,,\n"
             "X1,2026-01-01,0\n",
             {"2: Fecha inválida en la columna fechaalta: '2026-02-30' (se espera AAAA-MM-DD o "
              "DD/MM/AAAA)",
              "5: La clave ya existe en la tabla caratula."}},
        };
        for (const Caso& c : casos)
            for (int m : {static_cast<int>(Motor::SQLite), static_cast<int>(Motor::PostgreSQL)})
                QTest::addRow("%s: %s", m == 0 ? "sqlite" : "postgresql", c.nombre)
                    << m << QString::fromLatin1(c.tabla) << QString::fromUtf8(c.csv) << c.informe;
    }
    void rechazos() {
        MOTOR_O_SALTAR();
        QFETCH(QString, tabla);
        QFETCH(QString, csv);
        QFETCH(QStringList, informe);
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& c = t.conexion(tabla == QLatin1String("ncm") || tabla == QLatin1String("sufidos")
                                     ? QStringLiteral("NCM")
                                     : QStringLiteral("INTERNOS"));
        const int antes = Contar(c, tabla);
        const auto r = ImportadorCsv(t.stores()).Importar(tabla, LectorCsv::DeTexto(csv), {});
        QCOMPARE(Informe(r), informe);
        QCOMPARE(r.importadas, 0);
        QCOMPARE(Contar(c, tabla), antes);

        // The same file, partial: the good rows go in.
        ImportadorCsv::Opciones parcial;
        parcial.parcial = true;
        const auto p = ImportadorCsv(t.stores()).Importar(tabla, LectorCsv::DeTexto(csv), parcial);
        QCOMPARE(Informe(p), informe);
        QCOMPARE(p.importadas, p.leidas - static_cast<int>(informe.size()));
        QCOMPARE(Contar(c, tabla), antes + p.importadas);
    }

    // The values of a partial import, as stored: decimal comma, dates in both forms, NULL for
    // an empty number, '' for an empty text.
    void valores_data() { test::FilasDeMotores(); }
    void valores() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        ImportadorCsv::Opciones o;
        o.parcial = true;
        ImportadorCsv imp(t.stores());
        imp.Importar(QStringLiteral("divisas"),
                     LectorCsv::DeTexto(QStringLiteral("id,descripcion,imp\n012,REAL,0.18\n")), o);
        imp.Importar(QStringLiteral("caratula"),
                     LectorCsv::DeTexto(QStringLiteral("interno,fechaalta,fobdivisas,factura7\n"
                                                       "A2,30/01/2026,1.5,\nA3,2026-02-28,,X\n")),
                     o);
        Conexion& c = t.conexion(QStringLiteral("INTERNOS"));
        QCOMPARE(EsNumero(c.Escalar(QStringLiteral("select imp from divisas where id = '012'"))),
                 0.18);
        Recordset rs = c.Abrir(
            QStringLiteral("select interno, fechaalta, fobdivisas, factura7 "
                           "from caratula where fechaalta = ") +
            t.stores().getDateFormatbyEntity(QStringLiteral("INTERNOS"), QDate(2026, 1, 30)));
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNull(rs.Fields(0)), QStringLiteral("A2"));
        QCOMPARE(Formato(rs.Fields(1), QStringLiteral("dd/mm/yyyy")), QStringLiteral("30/01/2026"));
        QCOMPARE(EsNumero(rs.Fields(2)), 1.5);
        QVERIFY(!rs.Fields(3).isNull());
        QCOMPARE(EsNull(rs.Fields(3)), QString());
        QCOMPARE(EsNumero(c.Escalar(QStringLiteral("select count(*) from caratula where "
                                                   "fobdivisas is null and interno = 'A3'"))),
                 1.0);
        QCOMPARE(EsNumero(c.Escalar(QStringLiteral("select count(*) from caratula where "
                                                   "factura7 = '' and interno = 'A2'"))),
                 1.0);
    }

    // A text with apostrophes, quotes and separators is stored as written.
    void apostrofe_data() { test::FilasDeMotores(); }
    void apostrofe() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        const QString csv = QStringLiteral("codigo,nombre,domicilio\n"
                                           "V9,D'ALESSIO Y O'HARA,\"CALLE 1, \"\"B\"\"\"\n"
                                           "V10,'; drop table vendedor;--,\n");
        const auto r = ImportadorCsv(t.stores())
                           .Importar(QStringLiteral("vendedor"), LectorCsv::DeTexto(csv), {});
        QCOMPARE(r.importadas, 2);
        Conexion& c = t.conexion(QStringLiteral("PERSONAL"));
        Recordset rs = c.Abrir(QStringLiteral("select nombre, domicilio from vendedor order by "
                                              "codigo"));
        QCOMPARE(EsNull(rs.Fields(0)), QStringLiteral("'; drop table vendedor;--"));
        rs.MoveNext();
        QCOMPARE(EsNull(rs.Fields(0)), QStringLiteral("D'ALESSIO Y O'HARA"));
        QCOMPARE(EsNull(rs.Fields(1)), QStringLiteral("CALLE 1, \"B\""));
        QCOMPARE(EsNull(c.Escalar(QStringLiteral("select codigo from vendedor where nombre = ") +
                                  SqlTexto(QStringLiteral("D'ALESSIO Y O'HARA")))),
                 QStringLiteral("V9"));
    }

    void encabezado_data() {
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<QString>("csv");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("columna ajena") << "vendedor"
                                       << "codigo,nombre,telefono\nV1,A,1\n"
                                       << "La columna 'telefono' no es de la tabla vendedor.";
        QTest::newRow("columna repetida") << "vendedor"
                                          << "codigo,nombre,NOMBRE\nV1,A,B\n"
                                          << "La columna 'nombre' está repetida en el encabezado.";
        QTest::newRow("falta la clave") << "ncm"
                                        << "001,002,010\n8471.30.12,100,X\n"
                                        << "Falta la columna clave '003' de la tabla ncm.";
        QTest::newRow("archivo vacio") << "vendedor"
                                       << ""
                                       << "El archivo no tiene encabezado.";
        QTest::newRow("tabla desconocida") << "proveedores"
                                           << "id\n1\n"
                                           << "La tabla proveedores no existe en el esquema.";
    }
    void encabezado() {
        QFETCH(QString, tabla);
        QFETCH(QString, csv);
        QFETCH(QString, mensaje);
        TestStores t(Motor::SQLite);
        CrearOActualizar(t.stores());
        try {
            ImportadorCsv(t.stores()).Importar(tabla, LectorCsv::DeTexto(csv), {});
            QFAIL("se esperaba un error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.descripcion(), mensaje);
        }
    }

    // Replacing empties the table and loads the file in the same transaction; a rejected row
    // keeps the old rows.
    void reemplazar_data() { test::FilasDeMotores(); }
    void reemplazar() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& n = t.conexion(QStringLiteral("NCM"));
        ImportadorCsv::Opciones o;
        o.reemplazar = true;
        const QString malo = QStringLiteral("sim,sufijo,detalle\n85  .  .  .   ,AA,MARCA\n"
                                            "85  .  .  .   ,TE010,TENSION\n");
        auto r = ImportadorCsv(t.stores())
                     .Importar(QStringLiteral("sufidos"), LectorCsv::DeTexto(malo), o);
        QCOMPARE(r.rechazos.size(), size_t(1));
        QCOMPARE(Contar(n, QStringLiteral("sufidos")), 5);
        const QString bueno = QStringLiteral("sim,sufijo,detalle\n85  .  .  .   ,AA,MARCA\n"
                                             "85  .  .  .   ,TE01,220 V\n"
                                             "84  .  .  .   ,AA,MARCA\n");
        r = ImportadorCsv(t.stores())
                .Importar(QStringLiteral("sufidos"), LectorCsv::DeTexto(bueno), o);
        QCOMPARE(r.importadas, 3);
        QCOMPARE(Contar(n, QStringLiteral("sufidos")), 3);
        QCOMPARE(EsNumero(n.Escalar(QStringLiteral("select count(*) from sufidos where detalle = "
                                                   "'PREVIO'"))),
                 0.0);
    }

    // A statement the store refuses in the middle of an import (here a trigger on one row of
    // the fourth batch) rolls back all the batches written before it, and the emptying too.
    void fallaDelStore_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<bool>("reemplazar");
        for (bool r : {false, true}) {
            QTest::addRow("sqlite%s", r ? " reemplazando" : "")
                << static_cast<int>(Motor::SQLite) << r;
            QTest::addRow("postgresql%s", r ? " reemplazando" : "")
                << static_cast<int>(Motor::PostgreSQL) << r;
        }
    }
    void fallaDelStore() {
        MOTOR_O_SALTAR();
        QFETCH(bool, reemplazar);
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& n = t.conexion(QStringLiteral("NCM"));
        if (t.motor() == Motor::SQLite) {
            n.Ejecutar(QStringLiteral("CREATE TRIGGER falla BEFORE INSERT ON sufidos WHEN "
                                      "NEW.detalle = 'FALLA' BEGIN SELECT RAISE(ABORT, 'fila "
                                      "rechazada por la base'); END"));
        } else {
            n.Ejecutar(QStringLiteral("CREATE FUNCTION falla() RETURNS trigger LANGUAGE plpgsql "
                                      "AS $$ BEGIN IF NEW.detalle = 'FALLA' THEN RAISE EXCEPTION "
                                      "'fila rechazada por la base'; END IF; RETURN NEW; END $$"));
            n.Ejecutar(QStringLiteral("CREATE TRIGGER falla BEFORE INSERT ON sufidos FOR EACH ROW "
                                      "EXECUTE FUNCTION falla()"));
        }
        QString csv = QStringLiteral("sim,sufijo,detalle\n");
        for (int i = 0; i < 1000; ++i)
            csv += QStringLiteral("%1.  .  .   ,Z%2,%3\n")
                       .arg(1000 + i)
                       .arg(i % 10)
                       .arg(i == 999 ? QStringLiteral("FALLA") : QStringLiteral("DETALLE"));
        ImportadorCsv::Opciones o;
        o.reemplazar = reemplazar;
        try {
            ImportadorCsv(t.stores())
                .Importar(QStringLiteral("sufidos"), LectorCsv::DeTexto(csv), o);
            QFAIL("se esperaba un error del store");
        } catch (const KorvenError& e) {
            QVERIFY2(e.descripcion().contains(QStringLiteral("fila rechazada por la base")),
                     qPrintable(e.descripcion()));
        }
        QCOMPARE(Contar(n, QStringLiteral("sufidos")), 5);
        QCOMPARE(EsNumero(n.Escalar(QStringLiteral("select count(*) from sufidos where detalle = "
                                                   "'PREVIO'"))),
                 5.0);
        // The connection is usable afterwards.
        const auto r = ImportadorCsv(t.stores())
                           .Importar(QStringLiteral("sufidos"),
                                     LectorCsv::DeTexto(QStringLiteral(
                                         "sim,sufijo,detalle\n9999.  .  .   ,AA,BIEN\n")),
                                     {});
        QCOMPARE(r.importadas, 1);
        QCOMPARE(Contar(n, QStringLiteral("sufidos")), 6);
    }
};

QTEST_GUILESS_MAIN(TestImportador)
#include "test_importador.moc"
