// Rules of the header that need no store: check digit, currency arithmetic, option codes,
// dates and the invoice text.

#include "header/CaratulaDatos.h"
#include "header/DigitoVerificador.h"
#include "header/FechasTexto.h"
#include "header/ImportesCaratula.h"
#include "header/OpcionesCaratula.h"
#include "platform/Formato.h"

#include <QtTest>

using namespace korven;

class TestReglas : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void digitoVerificador_data();
    void digitoVerificador();
    void multiplicar_data();
    void multiplicar();
    void seguroPorcentual_data();
    void seguroPorcentual();
    void codigoDivisa_data();
    void codigoDivisa();
    void opciones();
    void fechas_data();
    void fechas();
    void factura1_data();
    void factura1();
};

void TestReglas::digitoVerificador_data() {
    QTest::addColumn<QString>("cuit");
    QTest::addColumn<bool>("valido");
    QTest::addColumn<int>("digito");
    // Sums worked out by hand: 2*5+0*4+1*3+2*2+3*7+4*6+5*5+6*4+7*3+8*2 = 148, 148 mod 11 = 5.
    QTest::newRow("resto 5") << "20123456786" << true << 6;
    QTest::newRow("resto 5, digito errado") << "20123456787" << false << 6;
    // 3*5+7*3+1*2+2*7+3*6+4*5+5*4+6*3+7*2 = 142, mod 11 = 10: 11 - 10 = 1.
    QTest::newRow("resto 10") << "30712345671" << true << 1;
    // 2*3+3*... : 23000000000 sums 2*5+3*4 = 22, mod 11 = 0: the digit is 0.
    QTest::newRow("resto 0") << "23000000000" << true << 0;
    // 2*5+1*2 = 12, mod 11 = 1: the remainder itself is the digit.
    QTest::newRow("resto 1") << "20000000011" << true << 1;
    QTest::newRow("diez digitos") << "2012345678" << false << 6;
    QTest::newRow("doce digitos") << "201234567860" << false << 6;
    QTest::newRow("con guiones") << "20-12345678" << false << -1;
    QTest::newRow("letra al final") << "2012345678X" << false << 6;
}

void TestReglas::digitoVerificador() {
    QFETCH(QString, cuit);
    QFETCH(bool, valido);
    QFETCH(int, digito);
    QCOMPARE(DigitoVerificador::Valido(cuit), valido);
    QCOMPARE(DigitoVerificador::Calcular(cuit), digito);
}

void TestReglas::multiplicar_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("cambio");
    QTest::addColumn<bool>("calcula");
    QTest::addColumn<QString>("dolares");
    for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
        auto n = [&](const char* t) { return QString::fromLatin1(t).replace('.', sep); };
        const QByteArray s = sep.toLatin1();
        QTest::newRow(("entero " + s).constData())
            << sep << n("1000.00") << n("1.000000") << true << n("1000.00");
        // 1234.50 x 1.085 = 1339.4325, shown as 1339.43.
        QTest::newRow(("euro " + s).constData())
            << sep << n("1234.50") << n("1.085000") << true << n("1339.43");
        // 10.005 x 1 = 10.005: half away from zero on the decimal value.
        QTest::newRow(("medio " + s).constData())
            << sep << n("10.005") << n("1.000000") << true << n("10.01");
        QTest::newRow(("cero da vacio " + s).constData())
            << sep << n("0.00") << n("1.000000") << true << QString();
        QTest::newRow(("cambio vacio " + s).constData())
            << sep << n("1000.00") << QString() << false << QString();
        QTest::newRow(("valor texto " + s).constData())
            << sep << QStringLiteral("abc") << n("1.000000") << false << QString();
    }
}

void TestReglas::multiplicar() {
    QFETCH(QString, separador);
    QFETCH(QString, valor);
    QFETCH(QString, cambio);
    QFETCH(bool, calcula);
    QFETCH(QString, dolares);
    SeparadorDecimalScope sep(separador);
    const auto r = ImportesCaratula::Multiplicar(valor, cambio);
    QCOMPARE(r.has_value(), calcula);
    if (calcula)
        QCOMPARE(*r, dolares);
}

void TestReglas::seguroPorcentual_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("porcentaje");
    QTest::addColumn<QString>("dolFob");
    QTest::addColumn<QString>("dolFlete");
    QTest::addColumn<QString>("prorratear");
    QTest::addColumn<double>("codigos");
    QTest::addColumn<QString>("cambio");
    QTest::addColumn<bool>("calcula");
    QTest::addColumn<QString>("dolares");
    QTest::addColumn<QString>("divisas");
    for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
        auto n = [&](const char* t) { return QString::fromLatin1(t).replace('.', sep); };
        const QByteArray s = sep.toLatin1();
        // (1000 + 200) x 1.5% = 18.00; in a currency of 2.000000: 9.00.
        QTest::newRow(("fob y flete " + s).constData())
            << sep << n("1.50") << n("1000.00") << n("200.00") << QString() << 0.0 << n("2.000000")
            << true << n("18.00") << n("09.00");
        // With the proration codes (150) and the value to prorate (50):
        // (1000 + 200 + 150 + 50) x 1% = 14.00.
        QTest::newRow(("con prorrateo " + s).constData())
            << sep << n("1.00") << n("1000.00") << n("200.00") << n("50.00") << 150.0
            << n("1.000000") << true << n("14.00") << n("14.00");
        // Codes above 0 count even with no value to prorate: (1000 + 200 + 150) x 1% = 13.50.
        QTest::newRow(("solo codigos " + s).constData())
            << sep << n("1.00") << n("1000.00") << n("200.00") << QString() << 150.0
            << n("1.000000") << true << n("13.50") << n("13.50");
        // 1234.56 x 0.5% = 6.1728 -> 6.17; / 3 = 2.0566 -> 2.06.
        QTest::newRow(("redondeo " + s).constData())
            << sep << n("0.50") << n("1034.56") << n("200.00") << QString() << 0.0 << n("3.000000")
            << true << n("06.17") << n("02.06");
        QTest::newRow(("sin cambio " + s).constData())
            << sep << n("1.00") << n("1000.00") << n("200.00") << QString() << 0.0 << QString()
            << true << n("12.00") << QString();
        QTest::newRow(("porcentaje cero " + s).constData())
            << sep << n("0.00") << n("1000.00") << n("200.00") << QString() << 0.0 << n("1.000000")
            << false << QString() << QString();
        // Freight 0 leaves its dollars field empty: nothing is computed.
        QTest::newRow(("sin flete " + s).constData())
            << sep << n("1.00") << n("1000.00") << QString() << QString() << 0.0 << n("1.000000")
            << false << QString() << QString();
    }
}

void TestReglas::seguroPorcentual() {
    QFETCH(QString, separador);
    QFETCH(QString, porcentaje);
    QFETCH(QString, dolFob);
    QFETCH(QString, dolFlete);
    QFETCH(QString, prorratear);
    QFETCH(double, codigos);
    QFETCH(QString, cambio);
    QFETCH(bool, calcula);
    QFETCH(QString, dolares);
    QFETCH(QString, divisas);
    SeparadorDecimalScope sep(separador);
    const auto r = ImportesCaratula::SeguroPorcentual(porcentaje, dolFob, dolFlete, prorratear,
                                                      codigos, cambio);
    QCOMPARE(r.has_value(), calcula);
    if (!calcula)
        return;
    QCOMPARE(r->dolares, dolares);
    QCOMPARE(r->conDivisas, !divisas.isEmpty());
    QCOMPARE(r->divisas, divisas);
}

void TestReglas::codigoDivisa_data() {
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("resultado");
    QTest::newRow("uno") << "1"
                         << "001";
    QTest::newRow("sesenta") << "60"
                             << "060";
    QTest::newRow("tres") << "060"
                          << "060";
    QTest::newRow("letras") << "DOL"
                            << "DOL";
    QTest::newRow("vacio") << ""
                           << "";
}

void TestReglas::codigoDivisa() {
    QFETCH(QString, codigo);
    QFETCH(QString, resultado);
    for (const char* s : {",", "."}) {
        SeparadorDecimalScope sep(QString::fromLatin1(s));
        QCOMPARE(ImportesCaratula::CodigoDivisa(codigo), resultado);
    }
}

void TestReglas::opciones() {
    QCOMPARE(OpcionesCaratula::EntradasIVA().at(3),
             QStringLiteral("Importación definitiva de cosas muebles"));
    const QStringList iva = {"NOCONTESTA", "NO_VALIDA", "IVAAD1", "IVAAD2"};
    for (int i = 0; i < iva.size(); ++i) {
        QCOMPARE(OpcionesCaratula::CodigoIVA(i), iva.at(i));
        QCOMPARE(OpcionesCaratula::PosicionIVA(iva.at(i)), i);
    }
    const QStringList gan = {"NOCONTESTA", "NO_VALIDA", "COMERC", "BDEUSO", "USOPAR"};
    QCOMPARE(OpcionesCaratula::EntradasGanancias().size(), gan.size());
    for (int i = 0; i < gan.size(); ++i) {
        QCOMPARE(OpcionesCaratula::CodigoGanancias(i), gan.at(i));
        QCOMPARE(OpcionesCaratula::PosicionGanancias(gan.at(i)), i);
    }
    QCOMPARE(OpcionesCaratula::CodigoIVA(-1), QString());
    QCOMPARE(OpcionesCaratula::PosicionIVA(QStringLiteral("COMERC")), -1);
    QCOMPARE(OpcionesCaratula::PosicionGanancias(QString()), -1);
}

void TestReglas::fechas_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QDate>("fecha");
    QTest::newRow("barras") << "22/11/2026" << QDate(2026, 11, 22);
    QTest::newRow("guiones") << "05-03-2027" << QDate(2027, 3, 5);
    QTest::newRow("dos digitos") << "22-11-26" << QDate(2026, 11, 22);
    QTest::newRow("siglo pasado") << "01/01/45" << QDate(1945, 1, 1);
    QTest::newRow("un digito") << "1/2/2026" << QDate(2026, 2, 1);
    QTest::newRow("iso") << "2026-11-22" << QDate(2026, 11, 22);
    QTest::newRow("puntos") << "22.11.2026" << QDate(2026, 11, 22);
    QTest::newRow("30 de febrero") << "30/02/2026" << QDate();
    QTest::newRow("mes 13") << "01/13/2026" << QDate();
    QTest::newRow("texto") << "mañana" << QDate();
    QTest::newRow("vacio") << "" << QDate();
}

void TestReglas::fechas() {
    QFETCH(QString, texto);
    QFETCH(QDate, fecha);
    QCOMPARE(FechasTexto::Leer(texto), fecha);
    QCOMPARE(FechasTexto::EsFecha(texto), fecha.isValid());
}

void TestReglas::factura1_data() {
    QTest::addColumn<QStringList>("facturas");
    QTest::addColumn<QString>("texto");
    QTest::newRow("ninguna") << QStringList() << QString();
    QTest::newRow("una") << QStringList{"A-0001"} << "A-0001";
    QTest::newRow("dos") << QStringList{"A-0001", "B-22"} << "A-0001,B-22";
    // Eight numbers of nine characters make 8 x 10 = 80 characters with their commas: the last
    // comma goes, 79 remain.
    const QStringList ocho = {"F00000001", "F00000002", "F00000003", "F00000004",
                              "F00000005", "F00000006", "F00000007", "F00000008"};
    QTest::newRow("justo 80") << ocho
                              << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,"
                                 "F00000007,F00000008";
    // A ninth: cut to 80 (ending in the comma after the eighth), then one more goes.
    QTest::newRow("mas de 80") << (QStringList(ocho) << "F00000009")
                               << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,"
                                  "F00000007,F00000008";
    // 81 characters with the commas: cut to 80 ends inside the last number, which loses one
    // more character.
    QTest::newRow("corta un numero")
        << (QStringList(ocho.mid(0, 7)) << "G123456789")
        << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,F00000007,G12345678";
}

void TestReglas::factura1() {
    QFETCH(QStringList, facturas);
    QFETCH(QString, texto);
    const QString r = CaratulaDatos::Factura1(facturas);
    QCOMPARE(r, texto);
    QVERIFY(r.size() <= 79);
}

QTEST_GUILESS_MAIN(TestReglas)
#include "test_reglas.moc"
