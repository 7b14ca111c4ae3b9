// The platform: number and date formats, the two readings of a number, the value rules, the INI
// files and the one way of reading and writing the stores.

#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/QueryDesk.h"
#include "platform/Recordset.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "support/LiqTablas.h"
#include "support/Principal.h"
#include "support/TestStores.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using korven::test::FilasDeTexto;
using korven::test::N;
using korven::test::TestStores;
using namespace korven;

// Every number case runs under both system separators; expectations are written with "." and
// the separator is put in for the "," run.
class TestPlataforma : public QObject {
    Q_OBJECT

    QTemporaryDir tmp_;
    QString escribir(const QByteArray& contenido) {
        const QString ruta = tmp_.filePath("KORVEN.ini");
        QFile f(ruta);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(contenido);
        return ruta;
    }
    static QByteArray leer(const QString& ruta) {
        QFile f(ruta);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }

private Q_SLOTS:
    // value | mask -> text
    void mascaras_data() {
        FilasDeTexto(R"(
            # binary 2.67499..., decimal 2.675
            2.675       | 00.00      | 02.68
            -2.675      | 00.00      | -02.68
            99.995      | 00.00      | 100.00
            # no negative zero
            -0.001      | 00.00      | 00.00
            0.5         | ##.00      | .50
            1.23456789  | 00.0000    | 01.2346
            2.5         | 0000       | 0003
            12.3456785  | 000.000000 | 012.345679)");
    }
    void mascaras() {
        FILA();
        const QString esperado = QString(f[2]).replace('.', sep);
        QCOMPARE(Formato(N(f[0]), f[1]), esperado);
        // The variant form reads numeric text typed with the system separator.
        QCOMPARE(Formato(QVariant(N(f[0])), f[1]), esperado);
    }

    void fechas_data() {
        FilasDeTexto(R"(
            largo miercoles      | 2026-11-25 | Long Date  | miércoles, 25 de noviembre de 2026
            largo sabado enero   | 2022-01-01 | Long Date  | sábado, 1 de enero de 2022
            mascara del arranque | 2026-11-22 | yyyyMMdd   | 20261122
            fecha invalida       |            | dd/mm/yyyy |)");
    }
    void fechas() {
        FILA();
        QCOMPARE(FormatoFecha(QDate::fromString(f[1], Qt::ISODate), f[2]), f[3]);
    }

    void fechaDesdeTexto() {
        QCOMPARE(Formato(QVariant("2026-11-22"), "dd/mm/yyyy"), QStringLiteral("22/11/2026"));
        QCOMPARE(Formato(QVariant("22/11/2026"), "Long Date"),
                 QStringLiteral("domingo, 22 de noviembre de 2026"));
        QCOMPARE(Formato(QVariant("no es fecha"), "dd/mm/yyyy"), QStringLiteral("no es fecha"));
    }

    // The two readings of a number: a value kept as text in a store is read with ".", whatever
    // the locale; a text typed by the clerk follows the system separator, and a text that mixes
    // the two marks in a way that could be read two ways is refused.
    // separator | text -> typed ok | typed | store ok | store
    void lecturas_data() {
        FilasDeTexto(R"(
            # A store's text column under either separator: "1.5" is one and a half, never 15.
            , store 1.5   | , | 1.5      | 0 | 0       | 1 | 1.5
            . store 1.5   | . | 1.5      | 1 | 1.5     | 1 | 1.5
            # Typed with the system separator, with and without thousands.
            , 1,5         | , | 1,5      | 1 | 1.5     | 0 | 0
            , 1.234,56    | , | 1.234,56 | 1 | 1234.56 | 0 | 0
            , -1.500      | , | -1.500   | 1 | -1500   | 1 | -1.5
            , ,5          | , | ,5       | 1 | 0.5     | 0 | 0
            . 1,234.56    | . | 1,234.56 | 1 | 1234.56 | 0 | 0
            # Refused: the marks the wrong way round, a badly grouped thousand, two decimal marks.
            , 1,234.56    | , | 1,234.56 | 0 | 0       | 0 | 0
            . 1.234,56    | . | 1.234,56 | 0 | 0       | 0 | 0
            , 12.34       | , | 12.34    | 0 | 0       | 1 | 12.34
            . 1,5         | . | 1,5      | 0 | 0       | 0 | 0
            , 1.2345,6    | , | 1.2345,6 | 0 | 0       | 0 | 0
            . -           | . | -        | 0 | 0       | 0 | 0
            . 1e3         | . | 1e3      | 0 | 0       | 1 | 1000
            , vacio       | , |          | 0 | 0       | 0 | 0
            . entero      | . |  42      | 1 | 42      | 1 | 42)",
                     false);
    }
    void lecturas() {
        QFETCH(QStringList, f);
        SeparadorDecimalScope scope(f[1]);
        const QString& texto = f[2];
        QCOMPARE(EsNumeroTecleado(texto), f[3] == "1");
        QCOMPARE(NumeroTecleado(texto), N(f[4]));
        QCOMPARE(EsNumerico(texto), f[5] == "1");
        QCOMPARE(EsNumero(texto), N(f[6]));
        QVariant v = texto;
        QCOMPARE(DobleSeguro(v), N(f[6]));
        QCOMPARE(v.toDouble(), N(f[6]));
        // A typed amount reaches SQL as the clerk meant it, or as the documented "0".
        QCOMPARE(SqlNumero(texto, "."), f[3] == "1" ? Formato(N(f[4]), "0.######", ".") : "0");
    }

    void valoresNoTexto() {
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(sep);
            for (const auto& [v, n] : {std::pair{QVariant(), 0.0},
                                       {QVariant(qlonglong(42)), 42.0},
                                       {QVariant(" -3 "), -3.0}}) {
                QCOMPARE(EsNumerico(v), v.isValid());
                QCOMPARE(EsNumero(v), n);
            }
            QCOMPARE(EsNull(QVariant(1.5)), QString("1") + sep + "5");
            QCOMPARE(ReemplazarSeparadorDecimal("1.234,5"), QString("1") + sep + "234" + sep + "5");
            QCOMPARE(PonerPuntoDecimal(QString("21") + sep + "5"), QStringLiteral("21.5"));
        }
        QCOMPARE(EsNull(QVariant()) + EsNull(QVariant("x")), QStringLiteral("x"));
        QVERIFY(EsVacio(QVariant("   ")) && !EsVacio(QVariant(" a ")) && !EsVacio(QVariant(0)));
    }

    // An amount reaches SQL with the store's decimal point, under either system separator.
    void sqlNumero() {
        for (const QString sep : {",", "."}) {
            SeparadorDecimalScope scope(sep);
            QCOMPARE(SqlNumero("1" + sep + "5", ","), QStringLiteral("1,5"));
            QCOMPARE(SqlNumero(QVariant(1234.25), ","), QStringLiteral("1234,25"));
            QCOMPARE(SqlNumero(QVariant(1234.25), "."), QStringLiteral("1234.25"));
        }
    }

    void textos() {
        QCOMPARE(ComponerValor("  año-2026 (x) abcdefghijk"),
                 QStringLiteral("AÑO 2026  X  ABCDEFG"));
        QCOMPARE(ComponerValor("éa/.,#&*"), QStringLiteral(" A/.,#& "));
        QCOMPARE(LimpiarTexto(" a-(b)   c- "), QStringLiteral("a b c"));
        QCOMPARE(SqlTexto("D'Angelo y O''Neil"), QStringLiteral("'D''Angelo y O''''Neil'"));
        QCOMPARE(SqlNumero(QVariant(), "."), QStringLiteral("0"));
        SeparadorDecimalScope coma(",");
        QCOMPARE(SqlNumero(QVariant("2,75"), " "), QStringLiteral("2.75"));
        QCOMPARE(Rellenar("abc", 5) + Rellenar("abcdef", 3), QStringLiteral("  abcabc"));
        // What a text box lets in.
        QCOMPARE(SinControles(QString("A") + QChar(0) + "B\x01\x1f\x7f" + QChar(0x85) + "C"),
                 QStringLiteral("ABC"));
        QCOMPARE(SinControles("a\tb\r\n\xF0\x9D\x84\x9E"), QString("a\tb\r\n\xF0\x9D\x84\x9E"));
        QCOMPARE(SinControles(QString("ab\xF0\x9D\x84\x9E").left(3) + "c" + QChar(0xDD1E)),
                 QStringLiteral("abc"));
    }

    void validaMail() {
        for (const char* m :
             {"juan.perez@empresa.com.ar", "JUAN@EMPRESA.COM", "ju_an-1@x-y.com", "juan@servidor"})
            QVERIFY2(ValidaMail(m), m);
        for (const char* m : {"juan..perez@x.com", ".juan@x.com", "juan@x.com.", "juan@@x.com",
                              "juan.x.com", "juan@", "juan perez@x.com", "josé@x.com"})
            QVERIFY2(!ValidaMail(m), m);
    }

    // A field not in the record, or read past its end.
    void recordset() {
        Recordset rs({"Interno"}, {{QVariant("A1")}});
        QCOMPARE(korven::test::NumeroDeError([&] { rs.Fields("noexiste"); }), 3265);
        rs.MoveNext();
        QVERIFY_THROWS_EXCEPTION(KorvenError, rs.Fields(0));
    }

    // Names without regard to case; values trimmed unless quoted; a key only in its section.
    void lectura() {
        const QString ruta = escribir("; comentario\n[BaseServer]\nInterno = C:\\korven\\db\\ \n"
                                      "[general]\ncordano=S\nDIEMCHINA-PrefPorc=abc\nVACIA=\n"
                                      "COMILLAS=\"con blancos \"\n");
        QCOMPARE(IniFile::Leer("CORDANO", "GENERAL", ruta), QStringLiteral("S"));
        QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ruta), QStringLiteral("C:\\korven\\db\\"));
        QCOMPARE(IniFile::Leer("diemchina-prefporc", "general", ruta), QStringLiteral("abc"));
        QCOMPARE(IniFile::Leer("COMILLAS", "GENERAL", ruta), QStringLiteral("con blancos "));
        for (const auto& [clave, seccion] : {std::pair{"VACIA", "GENERAL"},
                                             {"LISTADO", "GENERAL"},
                                             {"SERVER", "SMTP"},
                                             {"CORDANO", "BASESERVER"}})
            QVERIFY2(IniFile::Leer(clave, seccion, ruta).isEmpty(), clave);
        QCOMPARE(IniFile::Leer("LISTADO", "GENERAL", escribir("[GENERAL]\r\nLISTADO=1\r\n")), "1");
        QCOMPARE(IniFile::Leer("K", "G", escribir("[G]\nK=" + QByteArray(800, 'x') + "\n")),
                 QString(750, 'x'));
        QCOMPARE(IniFile::Leer("X", "Y", tmp_.filePath("no.ini")), QString());
    }

    void escrituraEditaSoloSuLinea() {
        const QString ruta =
            escribir("; cabecera\n[BASESERVER]\nncm=/a/\n\n[GENERAL]\nCordano=N\nLISTADO=0\n");
        QVERIFY(IniFile::Escribir("general", "cordano", "S", ruta));
        QVERIFY(IniFile::Escribir("BASESERVER", "interno", "/b/", ruta));
        QVERIFY(IniFile::Escribir("SMTP", "server", "mail", ruta));
        QCOMPARE(leer(ruta),
                 QByteArray("; cabecera\n[BASESERVER]\nncm=/a/\nINTERNO=/b/\n\n[GENERAL]\n"
                            "CORDANO=S\nLISTADO=0\n\n[SMTP]\nSERVER=mail\n"));
        const QString nuevo = tmp_.filePath("nuevo.ini");
        QVERIFY(IniFile::Escribir("BASELOCAL", "usuario", "/u/", nuevo));
        QCOMPARE(leer(nuevo), QByteArray("[BASELOCAL]\nUSUARIO=/u/\n"));
        const QString crlf = escribir("[GENERAL]\r\nLISTADO=0\r\n");
        QVERIFY(IniFile::Escribir("GENERAL", "listado", "1", crlf));
        QCOMPARE(leer(crlf), QByteArray("[GENERAL]\r\nLISTADO=1\r\n"));
    }

    void settingsStore() {
        QTemporaryDir carpeta;
        SettingsStore a(carpeta.path());
        QCOMPARE(a.GetSetting("KORVEN", "AEC", "100", "N"), QStringLiteral("N"));
        a.SaveSetting("KORVEN", "AEC", "100", "R");
        a.SaveSetting("KORVEN", "100/A", "FLAG0", "tab\tlinea\n%");
        // Names compare without regard to case.
        QCOMPARE(a.GetSetting("korven", "aec", "100"), QStringLiteral("R"));
        // A second store on the same folder (another process of the same user) sees the values.
        SettingsStore b(carpeta.path());
        QCOMPARE(b.GetSetting("KORVEN", "100/A", "flag0"), QStringLiteral("tab\tlinea\n%"));
        QCOMPARE(b.Claves("KORVEN", "AEC"), QStringList{"100"});
        b.SaveSetting("KORVEN", "AEC", "100", QString());
        QCOMPARE(a.GetSetting("KORVEN", "AEC", "100", "N"), QString());
        a.DeleteSetting("KORVEN", "AEC", "100");
        QCOMPARE(b.GetSetting("KORVEN", "AEC", "100", "N"), QStringLiteral("N"));
        b.DeleteSetting("KORVEN", "100/A");
        QCOMPARE(a.GetSetting("KORVEN", "100/A", "FLAG0", "x"), QStringLiteral("x"));
    }

    // The one way of reading and writing, on both engines.
    // Inside a scope of reused statements the same text with other values gives their own rows,
    // a failed statement leaves the next one working, and once the scope ends a changed table is
    // read as it now is.
    void sentenciasPreparadas_data() { test::FilasDeMotores(); }
    void sentenciasPreparadas() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion("INTERNOS");
        c.Ejecutar("create table prueba (id integer primary key, nombre text)");
        auto nombres = [&] {
            QStringList r;
            for (int id : {1, 2, 3}) {
                const Recordset rs = c.Abrir("select * from prueba where id = ?", {id});
                r << rs.Campos().join(',') + ":" + (rs.RecordCount() ? EsNull(rs.Fields(1)) : "-");
            }
            return r.join('|');
        };
        {
            SentenciasPreparadas reutilizar;
            Transaccion tx(t.stores(), {"INTERNOS"});
            for (int id : {1, 2})
                c.Ejecutar("insert into prueba (id, nombre) values (?, ?)",
                           {id, QString("N%1").arg(id)});
            QVERIFY_THROWS_EXCEPTION(
                KorvenError, c.Ejecutar("insert into prueba (id, nombre) values (?, ?)", {1, "X"}));
            tx.Deshacer();
        }
        {
            SentenciasPreparadas reutilizar;
            for (int id : {1, 3})
                c.Ejecutar("insert into prueba (id, nombre) values (?, ?)",
                           {id, QString("N%1").arg(id)});
            QCOMPARE(nombres(), QStringLiteral("id,nombre:N1|id,nombre:-|id,nombre:N3"));
        }
        c.Ejecutar("alter table prueba add column valor integer");
        QCOMPARE(nombres(),
                 QStringLiteral("id,nombre,valor:N1|id,nombre,valor:-|id,nombre,valor:N3"));
        SentenciasPreparadas reutilizar;
        QCOMPARE(nombres(),
                 QStringLiteral("id,nombre,valor:N1|id,nombre,valor:-|id,nombre,valor:N3"));
    }

    void stores_data() { test::FilasDeMotores(); }
    void stores() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Conexion& c = t.conexion("INTERNOS");
        c.Ejecutar("create table prueba (interno text, descripcion text, valor double precision, "
                   "fecha date)");
        const QString sep = t.stores().getDecimalSeparatorbyEntity("INTERNOS");
        const QString fecha = t.stores().getDateFormatbyEntity("INTERNOS", QDate(2026, 11, 22));
        SeparadorDecimalScope coma(",");
        const QString texto = "Tornillos D'Angelo; drop table prueba;--";
        c.setSql("insert into prueba (interno, descripcion, valor, fecha) values ('100', " +
                 SqlTexto(texto) + ", " + SqlNumero("1234,56", sep) + ", " + fecha + ")");
        QCOMPARE(c.Ejecutar(), 1);
        Recordset rs;
        c.setSql("select * from prueba where interno = '100' and fecha = " + fecha);
        QVERIFY(c.CrearRs(rs));
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNull(rs.Fields("DESCRIPCION")), texto);
        QCOMPARE(EsNumero(rs.Fields("valor")), 1234.56);
        QCOMPARE(Formato(rs.Fields("fecha"), "dd/mm/yyyy"), QStringLiteral("22/11/2026"));
        // The same text bound as a parameter.
        QCOMPARE(
            c.Ejecutar("update prueba set descripcion = ? where interno = ?", {"O'Higgins", "100"}),
            1);
        QCOMPARE(c.Escalar("select descripcion from prueba").toString(),
                 QStringLiteral("O'Higgins"));
        c.setSql("select * from prueba where interno = 'no'");
        QVERIFY(!c.CrearRs(rs) && !IsRecord(rs));

        // The functions of the system's SQL on either engine.
        QCOMPARE(
            c.Escalar("select left('8703.23.10', 4) || '|' || right('8703.23.10', 2)").toString(),
            QStringLiteral("8703|10"));
        QCOMPARE(c.Escalar("select left('añoñ', 2) || right('añoñ', 2)").toString(),
                 QStringLiteral("añoñ"));
        // Text that only looks like a call stays as typed.
        QCOMPARE(c.Escalar("select 'a left(b) right (c)' || LEFT ( 'xyz' , 1)").toString(),
                 QStringLiteral("a left(b) right (c)x"));
        // The rounding of the masks, in SQL.
        for (const auto& [valor, mascara, esperado] : {std::tuple{2.675, "00.00", 2.68},
                                                       {-2.675, "00.00", -2.68},
                                                       {1.23456789, "00.000000", 1.234568},
                                                       {0.5, "00.", 1.0}}) {
            c.Ejecutar(QString("update prueba set valor = %1").arg(SqlNumero(valor, ".")));
            const QString expr = RedondeoSql(t.stores(), "INTERNOS", "valor", mascara);
            QCOMPARE(EsNumero(c.Escalar("select " + expr + " from prueba")), esperado);
        }

        // A normal end commits; nested scopes share the outer transaction; an explicit undo
        // undoes. (A failed statement undoing the action: see the copy of an Operation.)
        auto contar = [&] { return int(EsNumero(c.Escalar("select count(*) from prueba"))); };
        {
            Transaccion tx(t.stores(), {"INTERNOS", "INTERNOS"});
            c.Ejecutar("insert into prueba (interno) values ('2')");
            {
                Transaccion interna(t.stores(), {"INTERNOS"});
                c.Ejecutar("insert into prueba (interno) values ('3')");
            }
        }
        QCOMPARE(contar(), 3);
        {
            Transaccion tx(t.stores(), {"INTERNOS"});
            c.Ejecutar("delete from prueba");
            tx.Deshacer();
        }
        QCOMPARE(contar(), 3);

        StoreDirectory& s = t.stores();
        QCOMPARE(&c, &s.getDataConnectionByEntity("ncm"));
        QCOMPARE(s.getDataConnectionTAG(),
                 static_cast<Motor>(motor) == Motor::PostgreSQL ? "POSTGRESQL" : "SQLITE");
        if (static_cast<Motor>(motor) == Motor::SQLite)
            QCOMPARE(s.ArchivoSQLite("ESTADO"), t.directorio() + "db/korven.db");
        QVERIFY_THROWS_EXCEPTION(KorvenError, s.getDataConnectionByEntity("NOEXISTE"));
        // QueryDesk reaches the store a legacy connection string names.
        QueryDesk& q = t.ctx().queryDesk(1);
        QVERIFY(!q.EstadoConexion());
        q.setCadenaConexion("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\k\\db\\insumos.mdb");
        q.Conectar();
        QVERIFY(q.EstadoConexion());
        QCOMPARE(&q.conexion(), &s.getDataConnectionByEntity("INSUMOS"));
        // Closing every connection leaves the desk usable: it reopens its store.
        s.CloseAllDataConnection();
        QVERIFY(q.EstadoConexion());
        q.setSql("select 1 as uno");
        Recordset uno;
        QVERIFY(q.CrearRs(uno));
        QCOMPARE(EsNumero(uno.Fields("uno")), 1.0);
        QueryDesk& otro = t.ctx().queryDesk(2);
        otro.setCadenaConexion("Data Source=planillas.mdb");
        QVERIFY_THROWS_EXCEPTION(KorvenError, otro.Conectar());
    }
};

int main(int argc, char** argv) {
    return korven::test::EjecutarClases<QCoreApplication, TestPlataforma>(argc, argv);
}

#include "test_plataforma.moc"
