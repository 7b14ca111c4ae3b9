#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"

#include <QDir>
#include <QTest>

using namespace korven;

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
            QTest::addRow("%s nulo", s.constData()) << sep << nulo << false << 0.0;
            QTest::addRow("%s vacio", s.constData()) << sep << QVariant(QString()) << false << 0.0;
            QTest::addRow("%s blancos", s.constData())
                << sep << QVariant(QStringLiteral("  ")) << false << 0.0;
            QTest::addRow("%s letras", s.constData())
                << sep << QVariant(QStringLiteral("abc")) << false << 0.0;
            QTest::addRow("%s doble", s.constData()) << sep << QVariant(2.5) << true << 2.5;
            QTest::addRow("%s entero", s.constData())
                << sep << QVariant(qlonglong(42)) << true << 42.0;
            QTest::addRow("%s entero texto", s.constData())
                << sep << QVariant(QStringLiteral(" 42 ")) << true << 42.0;
            QTest::addRow("%s negativo", s.constData())
                << sep << QVariant(QStringLiteral("-3")) << true << -3.0;
        }
        QTest::newRow("coma lee punto decimal")
            << "," << QVariant(QStringLiteral("0.25")) << true << 0.25;
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
        QTest::newRow("coma tipeada al store") << "," << QVariant(QStringLiteral("1,5")) << "."
                                               << "1.5";
        QTest::newRow("punto tipeado al store") << "." << QVariant(QStringLiteral("1.5")) << "."
                                                << "1.5";
        QTest::newRow("doble") << "," << QVariant(1234.25) << "."
                               << "1234.25";
        QTest::newRow("store con coma") << "." << QVariant(QStringLiteral("1.5")) << ","
                                        << "1,5";
        // Typed text is read as the clerk meant it, thousands and all.
        QTest::newRow("miles y decimales") << "," << QVariant(QStringLiteral("1.234,5")) << "."
                                           << "1234.5";
        QTest::newRow("separador en blanco") << "," << QVariant(QStringLiteral("2,75")) << " "
                                             << "2.75";
        QTest::newRow("no numero") << "," << QVariant(QStringLiteral("abc")) << "."
                                   << "0";
        QTest::newRow("vacio") << "." << QVariant(QString()) << "."
                               << "0";
        QTest::newRow("nulo") << "." << QVariant() << "."
                              << "0";
        QTest::newRow("entero") << "." << QVariant(7) << "."
                                << "7";
        QTest::newRow("negativo") << "," << QVariant(-0.5) << "."
                                  << "-0.5";
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
        QTest::newRow("componer 25 caracteres") << "ComponerValor"
                                                << "abcdefghijklmnopqrstuvwxy"
                                                << "ABCDEFGHIJKLMNOPQRST";
        QTest::newRow("componer filtra") << "ComponerValor" << QString::fromUtf8("  año-2026 (x) ")
                                         << QString::fromUtf8("AÑO 2026  X ");
        QTest::newRow("componer simbolos")
            << "ComponerValor" << QString::fromUtf8("éa/.,#&*") << " A/.,#& ";
        QTest::newRow("limpiar") << "LimpiarTexto"
                                 << " a-(b)   c- "
                                 << "a b c";
        QTest::newRow("limpiar vacio") << "LimpiarTexto"
                                       << "-()"
                                       << "";
        QTest::newRow("sql texto apostrofo") << "SqlTexto"
                                             << "D'Angelo y O''Neil"
                                             << "'D''Angelo y O''''Neil'";
        QTest::newRow("sql texto vacio") << "SqlTexto"
                                         << ""
                                         << "''";
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

QTEST_GUILESS_MAIN(TestValueRules)
#include "test_valuerules.moc"
