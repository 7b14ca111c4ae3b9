#include "platform/Formato.h"
#include "platform/ValueRules.h"

#include <QTest>

using namespace korven;

// Every number case runs under both system separators; expectations are written with "." and
// the separator is put in for the "," run.
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
        QTest::newRow("largo domingo") << QDate(2026, 11, 22) << "Long Date"
                                       << QString::fromUtf8("domingo, 22 de noviembre de 2026");
        QTest::newRow("largo miercoles") << QDate(2026, 11, 25) << "Long Date"
                                         << QString::fromUtf8("miércoles, 25 de noviembre de 2026");
        QTest::newRow("largo sabado enero")
            << QDate(2022, 1, 1) << "Long Date" << QString::fromUtf8("sábado, 1 de enero de 2022");
        QTest::newRow("barras") << QDate(2026, 1, 5) << "dd/mm/yyyy"
                                << "05/01/2026";
        QTest::newRow("guiones") << QDate(2026, 1, 5) << "dd-mm-yyyy"
                                 << "05-01-2026";
        QTest::newRow("anio corto") << QDate(2009, 12, 31) << "dd-mm-yy"
                                    << "31-12-09";
        QTest::newRow("mascara de fecha del arranque") << QDate(2026, 11, 22) << "yyyyMMdd"
                                                       << "20261122";
        QTest::newRow("fecha invalida") << QDate() << "dd/mm/yyyy"
                                        << "";
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

QTEST_GUILESS_MAIN(TestFormato)
#include "test_formato.moc"
