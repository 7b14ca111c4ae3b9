// The two readings of a number: a value kept as text in a store is read with ".", whatever the
// locale; a text typed by the clerk follows the system separator, and a text that mixes the two
// marks in a way that could be read two ways is refused. Also what a text box lets in.

#include "platform/Formato.h"
#include "platform/ValueRules.h"

#include <QTest>

using namespace korven;

class TestNumeros : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lecturas_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<bool>("tecleadoOk");
        QTest::addColumn<double>("tecleado");
        QTest::addColumn<bool>("storeOk");
        QTest::addColumn<double>("store");
        // A store's text column under either separator: "1.5" is one and a half, never 15.
        QTest::newRow(", store 1.5") << ","
                                     << "1.5" << false << 0.0 << true << 1.5;
        QTest::newRow(". store 1.5") << "."
                                     << "1.5" << true << 1.5 << true << 1.5;
        QTest::newRow(", store -0.25") << ","
                                       << "-0.25" << false << 0.0 << true << -0.25;
        // Typed with the system separator, with and without thousands.
        QTest::newRow(", 1,5") << ","
                               << "1,5" << true << 1.5 << false << 0.0;
        QTest::newRow(", 1.234,56") << ","
                                    << "1.234,56" << true << 1234.56 << false << 0.0;
        QTest::newRow(", 1.234.567") << ","
                                     << "1.234.567" << true << 1234567.0 << false << 0.0;
        QTest::newRow(", -1.500") << ","
                                  << "-1.500" << true << -1500.0 << true << -1.5;
        QTest::newRow(", ,5") << ","
                              << ",5" << true << 0.5 << false << 0.0;
        QTest::newRow(". 1,234.56") << "."
                                    << "1,234.56" << true << 1234.56 << false << 0.0;
        QTest::newRow(". 1,500") << "."
                                 << "1,500" << true << 1500.0 << false << 0.0;
        // Refused: the marks the wrong way round, a badly grouped thousand, two decimal marks.
        QTest::newRow(", 1,234.56") << ","
                                    << "1,234.56" << false << 0.0 << false << 0.0;
        QTest::newRow(", 1,234.5") << ","
                                   << "1,234.5" << false << 0.0 << false << 0.0;
        QTest::newRow(". 1.234,56") << "."
                                    << "1.234,56" << false << 0.0 << false << 0.0;
        QTest::newRow(", 12.34") << ","
                                 << "12.34" << false << 0.0 << true << 12.34;
        QTest::newRow(". 1,5") << "."
                               << "1,5" << false << 0.0 << false << 0.0;
        QTest::newRow(", 1,2,3") << ","
                                 << "1,2,3" << false << 0.0 << false << 0.0;
        QTest::newRow(", 1.2345,6") << ","
                                    << "1.2345,6" << false << 0.0 << false << 0.0;
        QTest::newRow(". -") << "."
                             << "-" << false << 0.0 << false << 0.0;
        QTest::newRow(". 1e3") << "."
                               << "1e3" << false << 0.0 << true << 1000.0;
    }
    void lecturas() {
        QFETCH(QString, sep);
        QFETCH(QString, texto);
        QFETCH(bool, tecleadoOk);
        QFETCH(double, tecleado);
        QFETCH(bool, storeOk);
        QFETCH(double, store);
        SeparadorDecimalScope scope(sep);
        QCOMPARE(EsNumeroTecleado(texto), tecleadoOk);
        QCOMPARE(NumeroTecleado(texto), tecleado);
        QCOMPARE(EsNumerico(texto), storeOk);
        QCOMPARE(EsNumero(texto), store);
        // A typed amount reaches SQL as the clerk meant it, or as the documented "0".
        QCOMPARE(SqlNumero(texto, QStringLiteral(".")),
                 tecleadoOk ? Formato(tecleado, QStringLiteral("0.######"), QStringLiteral("."))
                            : QStringLiteral("0"));
    }

    void sinControles_data() {
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("nul y controles")
            << QStringLiteral("A") + QChar(0) + QStringLiteral("B\x01\x1f\x7f") + QChar(0x85) +
                   QStringLiteral("C")
            << "ABC";
        QTest::newRow("tab y saltos quedan") << "a\tb\r\nc"
                                             << "a\tb\r\nc";
        QTest::newRow("4 bytes") << QString::fromUtf8("clave \xF0\x9D\x84\x9E ok")
                                 << QString::fromUtf8("clave \xF0\x9D\x84\x9E ok");
        QTest::newRow("medio caracter")
            << QString::fromUtf8("ab\xF0\x9D\x84\x9E").left(3) + QStringLiteral("c") + QChar(0xDD1E)
            << "abc";
    }
    void sinControles() {
        QFETCH(QString, entrada);
        QFETCH(QString, esperado);
        QCOMPARE(SinControles(entrada), esperado);
    }
};

QTEST_GUILESS_MAIN(TestNumeros)
#include "test_numeros.moc"
