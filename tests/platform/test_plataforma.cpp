// The platform: number and date formats, the value rules, the INI files and the
// one way of reading and writing the stores.

#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/QueryDesk.h"
#include "platform/Recordset.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "support/Principal.h"
#include "support/TestStores.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using korven::test::TestStores;
using namespace korven;

// Every number case runs under both system separators; expectations are written
// with "." and the separator is put in for the "," run.
class TestFormato : public QObject {
    Q_OBJECT

    static void filasSeparador(const std::function<void(const QString&, const QString&)>& f) {
        for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")})
            f(sep, sep == QStringLiteral(",") ? QStringLiteral("coma") : QStringLiteral("punto"));
    }

private Q_SLOTS:
    void mascaras_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<double>("valor");
        QTest::addColumn<QString>("mascara");
        QTest::addColumn<QString>("esperado");
        struct Caso {
            double v;
            const char* m;
            const char* e;
        };
        const Caso casos[] = {
            {5, "00.00", "05.00"},
            {2.675, "00.00", "02.68"}, // binary 2.67499..., decimal 2.675
            {-2.675, "00.00", "-02.68"},
            {1.005, "00.00", "01.01"},
            {1.004999, "00.00", "01.00"},
            {99.995, "00.00", "100.00"},
            {1234567.891, "00.00", "1234567.89"},
            {-0.001, "00.00", "00.00"}, // no negative zero
            {0, "00.00", "00.00"},
            {0.5, "##.00", ".50"},
            {12.5, "##.00", "12.50"},
            {1.23456789, "00.0000", "01.2346"},
            {0.00005, "00.0000", "00.0001"},
            {1.5, "000", "002"},
            {2.5, "0000", "0003"},
            {-1.5, "000", "-002"},
            {7, "00", "07"},
            {123, "00", "123"},
            {0.123456789, "0.000000", "0.123457"},
            {12.3456785, "000.000000", "012.345679"},
            {1.0000005, "00.000000", "01.000001"},
            {9.9996, "00.000", "10.000"},
            {1.000005, "00.00000", "01.00001"},
            {3.14159, "00.000", "03.142"},
        };
        filasSeparador([&](const QString& sep, const QString& nombre) {
            for (const Caso& c : casos)
                QTest::addRow("%s %s %s", qPrintable(nombre), c.m,
                              QByteArray::number(c.v).constData())
                    << sep << c.v << QString::fromLatin1(c.m)
                    << QString::fromLatin1(c.e).replace(QLatin1Char('.'), sep);
        });
    }
    void mascaras() {
        QFETCH(QString, sep);
        QFETCH(double, valor);
        QFETCH(QString, mascara);
        QFETCH(QString, esperado);
        SeparadorDecimalScope scope(sep);
        QCOMPARE(SeparadorDecimal(), sep);
        QCOMPARE(Formato(valor, mascara), esperado);
        // The variant form reads numeric text typed with the system separator.
        QCOMPARE(Formato(QVariant(valor), mascara), esperado);
    }

    void fechas_data() {
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<QString>("mascara");
        QTest::addColumn<QString>("esperado");
        // clang-format off
        QTest::newRow("largo domingo") << QDate(2026, 11, 22) << "Long Date"
                                       << QString::fromUtf8("domingo, 22 de noviembre de 2026");
        QTest::newRow("largo miercoles") << QDate(2026, 11, 25) << "Long Date"
                                         << QString::fromUtf8("miércoles, 25 de noviembre de 2026");
        QTest::newRow("largo sabado enero")
            << QDate(2022, 1, 1) << "Long Date" << QString::fromUtf8("sábado, 1 de enero de 2022");
        QTest::newRow("barras") << QDate(2026, 1, 5) << "dd/mm/yyyy" << "05/01/2026";
        QTest::newRow("guiones") << QDate(2026, 1, 5) << "dd-mm-yyyy" << "05-01-2026";
        QTest::newRow("anio corto") << QDate(2009, 12, 31) << "dd-mm-yy" << "31-12-09";
        QTest::newRow("mascara de fecha del arranque") << QDate(2026, 11, 22) << "yyyyMMdd" << "20261122";
        QTest::newRow("fecha invalida") << QDate() << "dd/mm/yyyy" << "";
        // clang-format on
    }
    void fechas() {
        QFETCH(QDate, fecha);
        QFETCH(QString, mascara);
        QFETCH(QString, esperado);
        for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
            SeparadorDecimalScope scope(sep);
            QCOMPARE(FormatoFecha(fecha, mascara), esperado);
        }
    }

    void fechaDesdeTexto() {
        QCOMPARE(Formato(QVariant(QStringLiteral("2026-11-22")), QStringLiteral("dd/mm/yyyy")),
                 QStringLiteral("22/11/2026"));
        QCOMPARE(Formato(QVariant(QStringLiteral("22/11/2026")), QStringLiteral("Long Date")),
                 QString::fromUtf8("domingo, 22 de noviembre de 2026"));
        QCOMPARE(Formato(QVariant(QStringLiteral("no es fecha")), QStringLiteral("dd/mm/yyyy")),
                 QStringLiteral("no es fecha"));
    }

    void importePorcentual_data() {
        QTest::addColumn<double>("base");
        QTest::addColumn<double>("tasa");
        QTest::addColumn<double>("esperado");
        QTest::newRow("2.675 sube") << 267.5 << 1.0 << 2.68;
        QTest::newRow("-2.675 baja") << -267.5 << 1.0 << -2.68;
        QTest::newRow("iva 21") << 1000.0 << 21.0 << 210.0;
        QTest::newRow("derechos 10 sobre 1110") << 1110.0 << 10.0 << 111.0;
        QTest::newRow("34.99965") << 333.33 << 10.5 << 35.0;
        QTest::newRow("0.125") << 100.0 << 0.125 << 0.13;
        QTest::newRow("0.124999") << 100.0 << 0.124999 << 0.12;
        QTest::newRow("1.005") << 100.5 << 1.0 << 1.01;
        QTest::newRow("tasa cero") << 1000.0 << 0.0 << 0.0;
    }
    void importePorcentual() {
        QFETCH(double, base);
        QFETCH(double, tasa);
        QFETCH(double, esperado);
        for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
            SeparadorDecimalScope scope(sep);
            QCOMPARE(ImportePorcentual(base, tasa), esperado);
        }
    }
};

class TestValueRules : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void esNumero_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QVariant>("valor");
        QTest::addColumn<bool>("numerico");
        QTest::addColumn<double>("numero");
        const QVariant nulo;
        for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
            const QByteArray s = sep == QStringLiteral(",") ? "coma" : "punto";
            // clang-format off
            QTest::addRow("%s nulo", s.constData()) << sep << nulo << false << 0.0;
            QTest::addRow("%s vacio", s.constData()) << sep << QVariant(QString()) << false << 0.0;
            QTest::addRow("%s blancos", s.constData())
                << sep << QVariant(QStringLiteral("  ")) << false << 0.0;
            QTest::addRow("%s letras", s.constData())
                << sep << QVariant(QStringLiteral("abc")) << false << 0.0;
            QTest::addRow("%s doble", s.constData()) << sep << QVariant(2.5) << true << 2.5;
            QTest::addRow("%s entero", s.constData()) << sep << QVariant(qlonglong(42)) << true << 42.0;
            QTest::addRow("%s entero texto", s.constData())
                << sep << QVariant(QStringLiteral(" 42 ")) << true << 42.0;
            QTest::addRow("%s negativo", s.constData())
                << sep << QVariant(QStringLiteral("-3")) << true << -3.0;
            // clang-format on
        }
        // clang-format off
        QTest::newRow("coma lee punto decimal") << "," << QVariant(QStringLiteral("0.25")) << true << 0.25;
        // clang-format on
    }
    void esNumero() {
        QFETCH(QString, sep);
        QFETCH(QVariant, valor);
        QFETCH(bool, numerico);
        QFETCH(double, numero);
        SeparadorDecimalScope scope(sep);
        QCOMPARE(EsNumerico(valor), numerico);
        QCOMPARE(EsNumero(valor), numero);
        QVariant v = valor;
        QCOMPARE(DobleSeguro(v), numero);
        QCOMPARE(v.toDouble(), numero);
    }

    void esNull() {
        QCOMPARE(EsNull(QVariant()), QString());
        QCOMPARE(EsNull(QVariant(QStringLiteral("x"))), QStringLiteral("x"));
        {
            SeparadorDecimalScope scope(QStringLiteral(","));
            QCOMPARE(EsNull(QVariant(1.5)), QStringLiteral("1,5"));
        }
        {
            SeparadorDecimalScope scope(QStringLiteral("."));
            QCOMPARE(EsNull(QVariant(1.5)), QStringLiteral("1.5"));
        }
        QVERIFY(EsVacio(QVariant()));
        QVERIFY(EsVacio(QVariant(QStringLiteral("   "))));
        QVERIFY(!EsVacio(QVariant(QStringLiteral(" a "))));
        QVERIFY(!EsVacio(QVariant(0)));
    }

    void sqlNumero_data() {
        QTest::addColumn<QString>("sistema");
        QTest::addColumn<QVariant>("valor");
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QString>("esperado");
        // clang-format off
        QTest::newRow("coma tipeada al store") << "," << QVariant(QStringLiteral("1,5")) << "." << "1.5";
        QTest::newRow("punto tipeado al store") << "." << QVariant(QStringLiteral("1.5")) << "." << "1.5";
        QTest::newRow("doble") << "," << QVariant(1234.25) << "." << "1234.25";
        QTest::newRow("store con coma") << "." << QVariant(QStringLiteral("1.5")) << "," << "1,5";
        // Both marks become the separator: the statement then fails; the screens
        // send one only.
        QTest::newRow("miles y decimales") << "," << QVariant(QStringLiteral("1.234,5")) << "." << "1234.5";
        QTest::newRow("separador en blanco") << "," << QVariant(QStringLiteral("2,75")) << " " << "2.75";
        QTest::newRow("no numero") << "," << QVariant(QStringLiteral("abc")) << "." << "0";
        QTest::newRow("vacio") << "." << QVariant(QString()) << "." << "0";
        QTest::newRow("nulo") << "." << QVariant() << "." << "0";
        QTest::newRow("entero") << "." << QVariant(7) << "." << "7";
        QTest::newRow("negativo") << "," << QVariant(-0.5) << "." << "-0.5";
        // clang-format on
    }
    void sqlNumero() {
        QFETCH(QString, sistema);
        QFETCH(QVariant, valor);
        QFETCH(QString, separador);
        QFETCH(QString, esperado);
        SeparadorDecimalScope scope(sistema);
        QCOMPARE(SqlNumero(valor, separador), esperado);
    }

    void textos_data() {
        QTest::addColumn<QString>("funcion");
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<QString>("esperado");
        // clang-format off
        QTest::newRow("componer 25 caracteres") << "ComponerValor"
                                                << "abcdefghijklmnopqrstuvwxy"
                                                << "ABCDEFGHIJKLMNOPQRST";
        QTest::newRow("componer filtra") << "ComponerValor" << QString::fromUtf8("  año-2026 (x) ")
                                         << QString::fromUtf8("AÑO 2026  X ");
        QTest::newRow("componer simbolos") << "ComponerValor" << QString::fromUtf8("éa/.,#&*") << " A/.,#& ";
        QTest::newRow("limpiar") << "LimpiarTexto" << " a-(b)   c- " << "a b c";
        QTest::newRow("limpiar vacio") << "LimpiarTexto" << "-()" << "";
        QTest::newRow("sql texto apostrofo") << "SqlTexto"
                                             << "D'Angelo y O''Neil"
                                             << "'D''Angelo y O''''Neil'";
        QTest::newRow("sql texto vacio") << "SqlTexto" << "" << "''";
        // clang-format on
    }
    void textos() {
        QFETCH(QString, funcion);
        QFETCH(QString, entrada);
        QFETCH(QString, esperado);
        QString r;
        if (funcion == QStringLiteral("ComponerValor"))
            r = ComponerValor(entrada);
        else if (funcion == QStringLiteral("LimpiarTexto"))
            r = LimpiarTexto(entrada);
        else
            r = SqlTexto(entrada);
        QCOMPARE(r, esperado);
    }

    void rellenar() {
        QCOMPARE(Rellenar(QStringLiteral("abc"), 5), QStringLiteral("  abc"));
        QCOMPARE(Rellenar(QStringLiteral("abcdef"), 3), QStringLiteral("abc"));
        QCOMPARE(Rellenar(QStringLiteral("abc"), 3), QStringLiteral("abc"));
    }

    void directorioNormal() {
        const QString s = QDir::separator();
        QCOMPARE(DirectorioNormal(QString()), s);
        QCOMPARE(DirectorioNormal(QStringLiteral("/opt/korven")),
                 QStringLiteral("/opt/korven") + s);
        QCOMPARE(DirectorioNormal(QStringLiteral("/opt/korven/")), QStringLiteral("/opt/korven/"));
    }

    void validaMail_data() {
        QTest::addColumn<QString>("mail");
        QTest::addColumn<bool>("valido");
        QTest::newRow("comun") << "juan.perez@empresa.com.ar" << true;
        QTest::newRow("mayusculas") << "JUAN@EMPRESA.COM" << true;
        QTest::newRow("guiones") << "ju_an-1@x-y.com" << true;
        QTest::newRow("sin punto en dominio") << "juan@servidor" << true;
        QTest::newRow("dos puntos") << "juan..perez@x.com" << false;
        QTest::newRow("empieza con punto") << ".juan@x.com" << false;
        QTest::newRow("termina con punto") << "juan@x.com." << false;
        QTest::newRow("dos arrobas") << "juan@@x.com" << false;
        QTest::newRow("sin arroba") << "juan.x.com" << false;
        QTest::newRow("sin dominio") << "juan@" << false;
        QTest::newRow("blanco") << "juan perez@x.com" << false;
        QTest::newRow("acento") << QString::fromUtf8("josé@x.com") << false;
    }
    void validaMail() {
        QFETCH(QString, mail);
        QFETCH(bool, valido);
        QCOMPARE(ValidaMail(mail), valido);
    }

    void reemplazarSeparador() {
        {
            SeparadorDecimalScope scope(QStringLiteral(","));
            QCOMPARE(ReemplazarSeparadorDecimal(QStringLiteral("1.234,5")),
                     QStringLiteral("1,234,5"));
            QCOMPARE(PonerPuntoDecimal(QStringLiteral("21,5")), QStringLiteral("21.5"));
        }
        {
            SeparadorDecimalScope scope(QStringLiteral("."));
            QCOMPARE(ReemplazarSeparadorDecimal(QStringLiteral("1.234,5")),
                     QStringLiteral("1.234.5"));
            QCOMPARE(PonerPuntoDecimal(QStringLiteral("21.5")), QStringLiteral("21.5"));
        }
    }

    void recordset() {
        Recordset vacio;
        QVERIFY(!IsRecord(vacio));
        Recordset rs({QStringLiteral("Interno"), QStringLiteral("valor")},
                     {{QVariant(QStringLiteral("A1")), QVariant(1.5)},
                      {QVariant(QStringLiteral("A2")), QVariant()}});
        QVERIFY(IsRecord(rs));
        QCOMPARE(rs.Fields(QStringLiteral("INTERNO")).toString(), QStringLiteral("A1"));
        rs.MoveNext();
        QCOMPARE(EsNumero(rs.Fields(QStringLiteral("valor"))), 0.0);
        QCOMPARE(EsNull(rs.Fields(QStringLiteral("valor"))), QString());
        try {
            rs.Fields(QStringLiteral("noexiste"));
            QFAIL("un campo desconocido debe fallar");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), 3265);
        }
        rs.MoveNext();
        QVERIFY(rs.Eof());
        QVERIFY_THROWS_EXCEPTION(KorvenError, rs.Fields(0));
    }
};

class TestIniFile : public QObject {
    Q_OBJECT

    QTemporaryDir tmp_;
    QString escribir(const QByteArray& contenido) {
        const QString ruta = tmp_.filePath(QStringLiteral("KORVEN.ini"));
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
    void lectura_data() {
        QTest::addColumn<QByteArray>("contenido");
        QTest::addColumn<QString>("seccion");
        QTest::addColumn<QString>("clave");
        QTest::addColumn<QString>("esperado");
        const QByteArray base = "; comentario\n[BaseServer]\nInterno = C:\\korven\\db\\ \n"
                                "[general]\ncordano=S\nDIEMCHINA-PrefPorc=abc\nVACIA=\n"
                                "COMILLAS=\"con blancos \"\n";
        // clang-format off
        QTest::newRow("clave y seccion sin mayusculas") << base << "GENERAL" << "CORDANO" << "S";
        QTest::newRow("valor recortado") << base << "BASESERVER" << "INTERNO" << "C:\\korven\\db\\";
        QTest::newRow("clave con guion") << base << "general" << "diemchina-prefporc" << "abc";
        QTest::newRow("vacia") << base << "GENERAL" << "VACIA" << "";
        QTest::newRow("falta la clave") << base << "GENERAL" << "LISTADO" << "";
        QTest::newRow("falta la seccion") << base << "SMTP" << "SERVER" << "";
        QTest::newRow("otra seccion no cuenta") << base << "BASESERVER" << "CORDANO" << "";
        QTest::newRow("comillas") << base << "GENERAL" << "COMILLAS" << "con blancos ";
        QTest::newRow("crlf") << QByteArray("[GENERAL]\r\nLISTADO=1\r\n") << "GENERAL" << "LISTADO" << "1";
        QTest::newRow("750 caracteres") << QByteArray("[G]\nK=") + QByteArray(800, 'x') + "\n"
                                        << "G"
                                        << "K" << QString(750, QLatin1Char('x'));
        // clang-format on
    }
    void lectura() {
        QFETCH(QByteArray, contenido);
        QFETCH(QString, seccion);
        QFETCH(QString, clave);
        QFETCH(QString, esperado);
        QCOMPARE(IniFile::Leer(clave, seccion, escribir(contenido)), esperado);
    }

    void archivoInexistente() {
        QCOMPARE(IniFile::Leer(QStringLiteral("X"), QStringLiteral("Y"),
                               tmp_.filePath(QStringLiteral("no.ini"))),
                 QString());
    }

    void escrituraEditaSoloSuLinea() {
        const QString ruta =
            escribir("; "
                     "cabecera\n[BASESERVER]\nncm=/a/\n\n[GENERAL]\nCordano=N\nLISTADO=0\n");
        QVERIFY(IniFile::Escribir(QStringLiteral("general"), QStringLiteral("cordano"),
                                  QStringLiteral("S"), ruta));
        QVERIFY(IniFile::Escribir(QStringLiteral("BASESERVER"), QStringLiteral("interno"),
                                  QStringLiteral("/b/"), ruta));
        QVERIFY(IniFile::Escribir(QStringLiteral("SMTP"), QStringLiteral("server"),
                                  QStringLiteral("mail"), ruta));
        QCOMPARE(leer(ruta),
                 QByteArray("; cabecera\n[BASESERVER]\nncm=/a/\nINTERNO=/b/\n\n[GENERAL]\n"
                            "CORDANO=S\nLISTADO=0\n\n[SMTP]\nSERVER=mail\n"));
        QCOMPARE(IniFile::Leer(QStringLiteral("Interno"), QStringLiteral("BaseServer"), ruta),
                 QStringLiteral("/b/"));
    }

    void escrituraCreaArchivoYConservaCrlf() {
        const QString nuevo = tmp_.filePath(QStringLiteral("nuevo.ini"));
        QVERIFY(IniFile::Escribir(QStringLiteral("BASELOCAL"), QStringLiteral("usuario"),
                                  QStringLiteral("/u/"), nuevo));
        QCOMPARE(leer(nuevo), QByteArray("[BASELOCAL]\nUSUARIO=/u/\n"));
        const QString ruta = escribir("[GENERAL]\r\nLISTADO=0\r\n");
        QVERIFY(IniFile::Escribir(QStringLiteral("GENERAL"), QStringLiteral("listado"),
                                  QStringLiteral("1"), ruta));
        QCOMPARE(leer(ruta), QByteArray("[GENERAL]\r\nLISTADO=1\r\n"));
    }

    void settingsStore() {
        QTemporaryDir carpeta;
        SettingsStore a(carpeta.path());
        QCOMPARE(a.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"),
                              QStringLiteral("100"), QStringLiteral("N")),
                 QStringLiteral("N"));
        a.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), QStringLiteral("100"),
                      QStringLiteral("R"));
        a.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"), QStringLiteral("FLAG0"),
                      QStringLiteral("tab\tlinea\n%"));
        a.SaveSetting(QStringLiteral("GENERAL"), QStringLiteral("OBJ"),
                      QStringLiteral("CancelManual"), QStringLiteral("S"));
        // Names compare without regard to case.
        QCOMPARE(
            a.GetSetting(QStringLiteral("korven"), QStringLiteral("aec"), QStringLiteral("100")),
            QStringLiteral("R"));
        // A second store on the same folder (another process of the same user) sees
        // the values.
        SettingsStore b(carpeta.path());
        QCOMPARE(b.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"),
                              QStringLiteral("flag0")),
                 QStringLiteral("tab\tlinea\n%"));
        QCOMPARE(b.GetSetting(QStringLiteral("GENERAL"), QStringLiteral("OBJ"),
                              QStringLiteral("CANCELMANUAL")),
                 QStringLiteral("S"));
        QCOMPARE(b.Claves(QStringLiteral("KORVEN"), QStringLiteral("AEC")),
                 QStringList{QStringLiteral("100")});
        b.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), QStringLiteral("100"),
                      QString());
        QCOMPARE(a.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"),
                              QStringLiteral("100"), QStringLiteral("N")),
                 QString());
        a.DeleteSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), QStringLiteral("100"));
        QCOMPARE(b.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"),
                              QStringLiteral("100"), QStringLiteral("N")),
                 QStringLiteral("N"));
        b.DeleteSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"));
        QCOMPARE(a.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"),
                              QStringLiteral("FLAG0"), QStringLiteral("x")),
                 QStringLiteral("x"));
        QCOMPARE(a.GetSetting(QStringLiteral("GENERAL"), QStringLiteral("OBJ"),
                              QStringLiteral("CancelManual")),
                 QStringLiteral("S"));
    }
};

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
        c.setSql(QStringLiteral("insert into prueba (interno, descripcion, valor, "
                                "fecha) values (") +
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
        QCOMPARE(c.Escalar(QStringLiteral("select left('8703.23.10', 4) || '|' || "
                                          "right('8703.23.10', 2)"))
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
        // A failed statement in the middle of the action undoes the statements
        // before it.
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
        // A quote typed into a value that bypassed the quoting helper breaks the
        // statement and leaves the record as it was.
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

int main(int argc, char** argv) {
    return korven::test::EjecutarClases<QCoreApplication, TestFormato, TestValueRules, TestIniFile,
                                        TestStoresPlataforma>(argc, argv);
}

#include "test_plataforma.moc"
