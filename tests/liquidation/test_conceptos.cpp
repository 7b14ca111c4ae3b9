// Every concept code of the liquidation, automatic and manual, computed by hand from its rule,
// under "," and under "." as the system separator.

#include "AjustesLiquidacion.h"
#include "liquidation/ClassLiquidacion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "support/TestStores.h"

#include <QTest>

using namespace korven;
using korven::test::AplicarAjustes;
using korven::test::ConSeparador;
using korven::test::kInterno;
using korven::test::TestStores;

namespace {

const QString kVacio = QStringLiteral("Vacio");

// An import item of FOB 1000 at a rate of exchange of 1 from a country with the tariff cap:
// BaseImponible 1000; with no duty nor fee, BaseIVA 1000 too.
const QString kItem = QStringLiteral("SubReg=IC04;DivFOB=1;FOB=1000;Pais=101;");
// Reduced common external tariff (country of marker "B", 75 % of 14): PorcentajeAEC 10.5,
// BaseAEC 105.
const QString kAECReducido =
    QStringLiteral("AEC=R;ncm_AEC=*;Pais=203;ValorAEC=14;IVARIN=21;IVARNI=10.5;");
// Duty 10 % and fee 3 %: BaseIVA 1000 + 100 + 30 = 1130.
const QString kIVA = QStringLiteral("Derecho=10;Estadistica=3;IVARIN=21;IVARNI=10.5;");
// Specific duty 1.5 x 100 = 150 against 10 % of 1000, cap of indicator 1: 30 % of 1000 = 300.
const QString kMinimo = QStringLiteral("Derecho=10;Indicador=1;CantEsp=1.5;ValorEsp=100;");
// An export item for the refunds: F 1000, I 50, D 20, T 100, C 30, X 10.
const QString kReintegro =
    QStringLiteral("SubReg=EC01;AjInc=50;AjDed=20;Temporal=100;TmpCons=30;ComExt=10;"
                   "Reintegro=5;ReintegroIntra=2.5;");

struct Calculadora {
    explicit Calculadora(const QString& ajustes) : t(Motor::SQLite), liq(t.ctx()) {
        t.ctx().InternoActual = kInterno;
        AplicarAjustes(liq, t.ctx(), kItem + ajustes);
    }
    TestStores t;
    ClassLiquidacion liq;
};

} // namespace

class TestConceptos : public QObject {
    Q_OBJECT

    static void Fila(const char* nombre, const QString& ajustes, const QString& codigo,
                     const QString& porcentaje, double base, const QString& porcentajeB,
                     double valor, bool sinCoeficiente, double importe, double baseSalida,
                     double lqPorc, const QString& porcentajeSalida) {
        for (const char* sep : {",", "."}) {
            QTest::addRow("%s [%s]", nombre, sep)
                << QString::fromLatin1(sep) << ajustes << codigo << porcentaje << base
                << porcentajeB << valor << sinCoeficiente << importe << baseSalida << lqPorc
                << porcentajeSalida;
        }
    }

private Q_SLOTS:
    void concepto_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("ajustes");
        QTest::addColumn<QString>("codigo");
        QTest::addColumn<QString>("porcentaje");
        QTest::addColumn<double>("base");
        QTest::addColumn<QString>("porcentajeB");
        QTest::addColumn<double>("valor");
        QTest::addColumn<bool>("sinCoeficiente");
        QTest::addColumn<double>("importe");
        QTest::addColumn<double>("baseSalida");
        QTest::addColumn<double>("lqPorc");
        QTest::addColumn<QString>("porcentajeSalida");

        // 010: the ad-valorem duty of the comparison with the specific one.
        Fila("010 Vacio", "Derecho=10", "010", kVacio, 0, "", 0, false, 100, 1000, 10, "10");
        Fila("010 con tasa", "Derecho=10", "010", "12.5", 0, "", 0, false, 125, 1000, 12.5, "12.5");
        Fila("010 manual", "Derecho=10", "010", "7.25", 333.33, "", 1, false, 24.17, 333.33, 7.25,
             "7.25");
        Fila("010 mercosur", "Derecho=10;Mercosur=1", "010", kVacio, 55, "", 0, false, 0, 0, 0,
             kVacio);
        Fila("010 automotriz", "Derecho=10;Lista=314/R.AUTOMOTRIZ", "010", kVacio, 55, "", 0, false,
             0, 0, 0, kVacio);
        Fila("010 mineria manual", "Derecho=10;Mineria=1", "010", "10", 500, "", 1, false, 0, 0, 0,
             "10");
        Fila("010 especifico mayor", "Derecho=10;Pais=999;CantEsp=1.5;ValorEsp=100", "010", kVacio,
             0, "", 0, false, 0, 1000, 10, "10");
        Fila("010 minimo", kMinimo, "010", kVacio, 0, "", 0, false, 0, 1000, 10, "10");

        // 866: the common external tariff, also when manual.
        Fila("866 Vacio", kAECReducido, "866", kVacio, 0, "", 0, false, 105, 1000, 10.5, "10.5");
        Fila("866 mercosur", kAECReducido + "Mercosur=1", "866", kVacio, 0, "", 0, false, 0, 1000,
             0, "0");
        Fila("866 manual", "", "866", "5", 200, "", 1, false, 50, 1000, 5, "5");

        // 852 and 415: VAT by the position's exemption.
        Fila("852 Vacio normal", kAECReducido + "Exencion=2", "852", kVacio, 0, "", 0, false, 22.05,
             105, 21, "21");
        Fila("852 Vacio otra exencion", kAECReducido + "Exencion=7", "852", kVacio, 0, "", 0, false,
             22.05, 105, 21, "21");
        Fila("852 Vacio reducido", kAECReducido + "Exencion=1", "852", kVacio, 0, "", 0, false,
             11.03, 105, 10.5, "10.5");
        Fila("852 Vacio exento", kAECReducido + "Exencion=0", "852", kVacio, 0, "", 0, false, 0,
             105, 0, "0");
        Fila("852 con tasa", kAECReducido + "Exencion=2", "852", "27", 0, "", 0, false, 28.35, 105,
             27, "27");
        Fila("852 manual", kAECReducido + "Exencion=2", "852", "21", 400, "", 1, false, 84, 400, 21,
             "21");
        Fila("415 Vacio normal", kIVA + "Exencion=2", "415", kVacio, 0, "", 0, false, 237.3, 1130,
             21, "21");
        Fila("415 Vacio reducido", kIVA + "Exencion=1", "415", kVacio, 0, "", 0, false, 118.65,
             1130, 10.5, "10.5");
        Fila("415 Vacio exento", kIVA + "Exencion=0", "415", kVacio, 0, "", 0, false, 0, 1130, 0,
             "0");
        Fila("415 con tasa", kIVA + "Exencion=0", "415", "10.5", 0, "", 0, false, 118.65, 1130,
             10.5, "10.5");
        Fila("415 manual", kIVA + "Exencion=2", "415", "21", 500, "", 1, false, 105, 500, 21, "21");

        // 854 and 422: VAT additional; the reduced position takes the second rate.
        Fila("854 reducido", kAECReducido + "Exencion=1", "854", "10", 0, "5", 0, false, 5.25, 105,
             5, "5");
        Fila("854 exento", kAECReducido + "Exencion=0", "854", "10", 0, "5", 0, false, 0, 105, 0,
             "0");
        Fila("854 normal", kAECReducido + "Exencion=2", "854", "10", 0, "5", 0, false, 10.5, 105,
             10, "10");
        Fila("854 Vacio no es numero", kAECReducido + "Exencion=2", "854", kVacio, 0, "", 0, false,
             0, 105, 0, "0");
        Fila("854 sin segunda tasa", kAECReducido + "Exencion=1", "854", "10", 0, "", 0, false, 0,
             105, 0, "0");
        Fila("854 manual", kAECReducido + "Exencion=2", "854", "20", 999, "", 1, false, 21, 105, 20,
             "20");
        Fila("422 normal", kIVA + "Exencion=2", "422", "20", 0, "10", 0, false, 226, 1130, 20,
             "20");
        Fila("422 reducido", kIVA + "Exencion=1", "422", "20", 0, "10", 0, false, 113, 1130, 10,
             "10");
        Fila("422 exento", kIVA + "Exencion=0", "422", "20", 0, "10", 0, false, 0, 1130, 0, "0");
        Fila("422 manual", kIVA + "Exencion=2", "422", "10", 400, "", 1, false, 40, 400, 10, "10");

        // 856 and 424: income tax advance; 200 marks full exemption.
        Fila("856 Vacio", kAECReducido, "856", kVacio, 0, "", 0, false, 3.15, 105, 3, "3");
        Fila("856 exencion total", kAECReducido, "856", "200", 0, "", 0, false, 0, 105, 0, "0");
        Fila("856 manual", kAECReducido, "856", "6", 50, "", 1, false, 6.3, 105, 6, "6");
        Fila("424 Vacio", kIVA, "424", kVacio, 0, "", 0, false, 33.9, 1130, 3, "3");
        Fila("424 Vacio IT04", kIVA + "SubReg=IT04", "424", kVacio, 0, "", 0, false, 124.3, 1130,
             11, "11");
        Fila("424 exencion total", kIVA, "424", "200", 0, "", 0, false, 0, 1130, 0, "0");
        Fila("424 IT04 automatico con 200", kIVA + "SubReg=IT04", "424", "200", 0, "", 0, false,
             124.3, 1130, 11, "11");
        Fila("424 IT04 manual con 200", kIVA + "SubReg=IT04", "424", "200", 700, "", 1, false, 0,
             700, 0, "0");
        Fila("424 IT04 manual", kIVA + "SubReg=IT04", "424", "6", 100, "", 1, false, 6, 100, 6,
             "6");

        // 059 and 015: the minimum and the specific duty of the comparison.
        Fila("059 minimo", kMinimo, "059", kVacio, 0, "", 0, false, 150, 1000, 30, kVacio);
        Fila("059 minimo al tope", kMinimo + "ValorEsp=400", "059", "7", 0, "", 0, false, 300, 1000,
             30, "7");
        Fila("059 mercosur", kMinimo + "Mercosur=1", "059", kVacio, 9, "", 0, false, 0, 0, 0,
             kVacio);
        Fila("059 sin minimo", "Derecho=10", "059", kVacio, 9, "", 0, false, 0, 0, 0, kVacio);
        Fila("059 pais 310", "Derecho=10;Pais=310;Indicador=1;CantEsp=4;ValorEsp=100", "059",
             kVacio, 0, "", 0, false, 300, 1000, 30, kVacio);
        Fila("015 especifico", "Derecho=10;Pais=999;CantEsp=1.5;ValorEsp=100", "015", kVacio, 77,
             "", 0, false, 150, 150, 0, kVacio);
        Fila("015 sin especifico", "Derecho=10", "015", kVacio, 77, "", 0, false, 0, 77, 0, kVacio);
        Fila("015 pais socio", "Derecho=10;Pais=225;CantEsp=1.5;ValorEsp=100", "015", kVacio, 77,
             "", 0, false, 0, 77, 0, kVacio);
        Fila("015 pais 310 toma el tope", "Derecho=10;Pais=310;Indicador=2;CantEsp=2;ValorEsp=100",
             "015", kVacio, 0, "", 0, false, 350, 350, 0, kVacio);

        // 016: additional duty.
        Fila("016 Vacio", "Adicional=24", "016", kVacio, 5, "", 0, false, 240, 1000, 24, "24");
        Fila("016 adicional con coma", "Adicional=24,5", "016", kVacio, 5, "", 0, false, 245, 1000,
             24.5, "24.5");
        Fila("016 con tasa", "Adicional=24", "016", "7.5", 5, "", 0, false, 75, 1000, 7.5, "7.5");
        Fila("016 manual", "Adicional=24", "016", "10", 123.45, "", 1, false, 12.35, 123.45, 10,
             "10");

        // 020: export duty, with the export coefficient.
        Fila("020 sin coeficiente", "SubReg=EC01;Expo=5", "020", kVacio, 0, "", 0, false, 50, 1000,
             0, "5");
        Fila("020 calcula coeficiente", "SubReg=EC01;CalcCoef=1", "020", "5", 0, "", 0, false,
             47.62, 952.38, 5, "5");
        Fila("020 coeficiente dado sin aplicar", "SubReg=EC01;Coef=0.9", "020", "5", 0, "", 0, true,
             45, 900, 5, "5");
        Fila("020 coeficiente dado", "SubReg=EC01;Coef=0.9", "020", "5", 0, "", 0, false, 40.5, 810,
             5, "5");

        // 032: mining levy.
        Fila("032 sin mineria", "TasaLey=1", "032", kVacio, 9, "", 0, false, 0, 0, 0, kVacio);
        Fila("032 Vacio", "Mineria=1;TasaLey=1", "032", kVacio, 9, "", 0, false, 10, 1000, 1, "1");
        Fila("032 con tasa", "Mineria=1;TasaLey=1", "032", "2.5", 9, "", 0, false, 25, 1000, 2.5,
             "2.5");

        // 065: the duty of the country 310 is only ever entered by hand.
        Fila("065 manual", "", "065", "3", 200, "", 1, false, 6, 200, 3, "3");
        Fila("065 pais 310", "Pais=310", "065", kVacio, 9, "", 0, false, 0, 0, 0, kVacio);
        Fila("065 otro pais", "", "065", kVacio, 9, "", 0, false, 0, 0, 0, kVacio);

        // 601 and 611: refunds, on amounts in the currency of the item.
        Fila("601 sin coeficiente", kReintegro, "601", kVacio, 9, "", 0, false, 46.5, 930, 5,
             kVacio);
        Fila("601 pais bilateral", kReintegro + "Pais=203", "601", "3", 9, "", 0, false, 23.25, 930,
             2.5, "3");
        Fila("601 deduccion sumada", kReintegro + "TmpCons=-30;ComExt=0", "601", kVacio, 9, "", 0,
             false, 53.5, 1070, 5, kVacio);
        Fila("601 con coeficiente", kReintegro + "Coef=0.9", "601", kVacio, 9, "", 0, false, 0, 0,
             0, kVacio);
        Fila("611 con coeficiente", kReintegro + "Coef=0.9;Pais=225", "611", kVacio, 9, "", 0,
             false, 20.93, 837, 2.5, kVacio);
        Fila("611 menor sin insumos", kReintegro + "Coef=0.98", "611", kVacio, 9, "", 0, false,
             44.5, 890, 5, kVacio);
        Fila("611 sin coeficiente", kReintegro, "611", kVacio, 9, "", 0, false, 0, 0, 0, kVacio);

        // 500 and 501: the fixed system fee is not calculated here.
        Fila("500", "", "500", "12", 40, "", 0, false, 0, 0, 0, "0");
        Fila("501 manual", "", "501", "12", 40, "", 1, false, 0, 0, 0, "0");

        // 011, 061, 062: the statistics fee by tier.
        Fila("011 Vacio", "Estadistica=3", "011", kVacio, 9, "", 0, false, 30, 1000, 3, "3");
        Fila("011 manual", "Estadistica=3", "011", "0.5", 2000, "", 1, false, 10, 2000, 0.5, "0.5");
        Fila("011 segundo tramo", "Estadistica=3;FOB=85000", "011", kVacio, 9, "", 0, false, 0, 0,
             0, kVacio);
        Fila("011 mercosur", "Estadistica=3;Mercosur=1", "011", kVacio, 9, "", 0, false, 0, 0, 0,
             kVacio);
        Fila("011 automotriz", "Estadistica=3;Lista=314/R.AUTOMOTRIZ", "011", kVacio, 9, "", 0,
             false, 0, 0, 0, kVacio);
        Fila("011 mineria manual", "Estadistica=3;Mineria=1", "011", "0.5", 2000, "", 1, false, 0,
             0, 0, "0.5");
        Fila("061 segundo tramo", "Estadistica=3;FOB=85000", "061", kVacio, 9, "", 0, false, 400, 0,
             0, kVacio);
        Fila("061 sin tasa", "FOB=85000", "061", kVacio, 9, "", 0, false, 0, 0, 0, kVacio);
        Fila("061 primer tramo con tasa", "Estadistica=3", "061", "2", 200, "", 0, false, 4, 200, 2,
             "2");
        Fila("061 primer tramo Vacio", "Estadistica=3", "061", kVacio, 200, "", 0, false, 0, 200, 0,
             kVacio);
        Fila("061 mercosur", "Estadistica=3;FOB=85000;Mercosur=1", "061", kVacio, 9, "", 0, false,
             0, 0, 0, kVacio);
        Fila("062 tercer tramo", "Estadistica=3;FOB=150000", "062", kVacio, 9, "", 0, false, 500, 0,
             0, kVacio);
        Fila("062 segundo tramo sin base", "Estadistica=3;FOB=85000", "062", "2", -5, "", 0, false,
             0, -5, 0, "2");

        // 041: fine.
        Fila("041 Vacio", "", "041", kVacio, 9, "", 0, false, 10, 1000, 1, "1");
        Fila("041 manual", "", "041", "2", 5, "", 1, false, 20, 1000, 2, "2");

        // 900: gross income tax.
        Fila("900 Vacio", kIVA, "900", kVacio, 9, "", 0, false, 0, 1130, 0, "0");
        Fila("900 con tasa", kIVA, "900", "3", 9, "", 0, false, 33.9, 1130, 3, "3");
        Fila("900 manual", kIVA, "900", "3.5", 1000, "", 1, false, 35, 1000, 3.5, "3.5");

        // 417: the internal tax (its decrees are read from the store; see the store test).
        Fila("417 manual", "", "417", "8", 250, "", 1, false, 20, 250, 8, "8");
        Fila("417 sin decreto", "", "417", kVacio, 77, "", 0, false, 0, 77, 0, kVacio);

        // FCV and any other code: a plain percentage.
        Fila("FCV Vacio", "", "FCV", kVacio, 9, "", 0, false, 0, 1000, 0, "0");
        Fila("FCV con tasa", "", "FCV", "2", 9, "", 0, false, 20, 1000, 2, "2");
        Fila("FCV manual", "", "FCV", "2", 50, "", 1, false, 20, 1000, 2, "2");
        Fila("otro manual", "", "099", "4", 250, "", 1, false, 10, 250, 4, "4");
        Fila("otro Vacio", "", "099", kVacio, 250, "", 0, false, 0, 1000, 0, "0");
        Fila("otro con tasa", "", "099", "1.5", 250, "", 0, false, 15, 1000, 1.5, "1.5");
        Fila("otro base no redonda", "DivFOB=1.1;FOB=1234.56", "099", "21", 0, "", 0, false, 285.18,
             1358.016, 21, "21");

        // The one rounding: half away from zero on the decimal value.
        Fila("redondeo 2.675", "", "099", "1", 267.5, "", 1, false, 2.68, 267.5, 1, "1");
        Fila("redondeo -2.675", "", "099", "1", -267.5, "", 1, false, -2.68, -267.5, 1, "1");
        Fila("redondeo 12.345", "", "099", "10", 123.45, "", 1, false, 12.35, 123.45, 10, "10");
    }
    void concepto() {
        QFETCH(QString, sep);
        QFETCH(QString, ajustes);
        QFETCH(QString, codigo);
        QFETCH(QString, porcentaje);
        QFETCH(double, base);
        QFETCH(QString, porcentajeB);
        QFETCH(double, valor);
        QFETCH(bool, sinCoeficiente);
        QFETCH(double, importe);
        QFETCH(double, baseSalida);
        QFETCH(double, lqPorc);
        QFETCH(QString, porcentajeSalida);

        SeparadorDecimalScope scope(sep);
        Calculadora c(ajustes);
        if (QTest::currentTestFailed())
            return;
        c.liq.ObtenerBaseImponible();
        c.liq.ObtenerBaseIVA();

        QString p = ConSeparador(porcentaje, sep);
        double b = base;
        const double r = c.liq.ObtenerValorConcepto(codigo, p, 0, b, ConSeparador(porcentajeB, sep),
                                                    valor, sinCoeficiente);
        QCOMPARE(r, importe);
        QCOMPARE(b, baseSalida);
        QCOMPARE(c.liq.ObtenerLqPorc(), lqPorc);
        QCOMPARE(p, ConSeparador(porcentajeSalida, sep));
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // The coefficient of concept 020 reduces the base of the concepts that follow, and the
    // commissions and inputs that exceed the duty send the refund to 601.
    void coeficienteYReintegros_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("ajustes");
        QTest::addColumn<bool>("excedido");
        QTest::addColumn<double>("importe601");
        QTest::addColumn<double>("importe611");
        for (const char* sep : {",", "."}) {
            // 50 of commissions and inputs exceed the duty of 47.62; the refund goes by 601 on
            // F - C - X = 950.
            QTest::addRow("excedido [%s]", sep)
                << QString::fromLatin1(sep) << "ComExt=40;TmpCons=10" << true << 47.5 << 0.0;
            // Otherwise 611 on the lesser of 1000 x 0.95238 and 1000 - 5 - 40.
            QTest::addRow("no excedido [%s]", sep)
                << QString::fromLatin1(sep) << "ComExt=40;TmpCons=5" << false << 0.0 << 47.62;
        }
    }
    void coeficienteYReintegros() {
        QFETCH(QString, sep);
        QFETCH(QString, ajustes);
        QFETCH(bool, excedido);
        QFETCH(double, importe601);
        QFETCH(double, importe611);
        SeparadorDecimalScope scope(sep);
        Calculadora c(QStringLiteral("SubReg=EC01;CalcCoef=1;Reintegro=5;") + ajustes);
        if (QTest::currentTestFailed())
            return;
        QCOMPARE(c.liq.ObtenerBaseImponible(), 1000.0);
        c.liq.ObtenerBaseIVA();

        QString p = ConSeparador(QStringLiteral("5"), sep);
        double b = 0;
        QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("020"), p, 0, b, {}, 0), 47.62);
        QCOMPARE(c.liq.ItemCoeficienteExportacion(), 0.95238);
        QCOMPARE(c.liq.BaseImponible(), 952.38);
        QCOMPARE(c.liq.CoeficienteExcedido(), excedido);

        p = ConSeparador(QStringLiteral("3"), sep);
        QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("099"), p, 0, b, {}, 0), 28.57);
        QCOMPARE(b, 952.38);

        QVERIFY(!c.t.ctx().LiquidacionPendiente);
        p = kVacio;
        QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("601"), p, 0, b, {}, 0), importe601);
        QVERIFY(c.t.ctx().LiquidacionPendiente);
        c.t.ctx().LiquidacionPendiente = false;
        QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("611"), p, 0, b, {}, 0), importe611);
        QVERIFY(c.t.ctx().LiquidacionPendiente);

        // The next 020 starts by clearing the mark.
        c.liq.setItmComsionesExt(0);
        c.liq.setItmImportacionTmpCons(0);
        p = ConSeparador(QStringLiteral("5"), sep);
        c.liq.ObtenerValorConcepto(QStringLiteral("020"), p, 0, b, {}, 0);
        QVERIFY(!c.liq.CoeficienteExcedido());
    }

    // Statistics tiers: a base in the one-unit gap between tiers keeps the tier of the previous
    // call, and the fee enters neither base.
    void tramosEstadistica() {
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(QString::fromLatin1(sep));
            Calculadora c(QStringLiteral("Estadistica=3;FOB=85000"));
            c.liq.ObtenerBaseImponible();
            QCOMPARE(c.liq.ObtenerBaseIVA(), 85400.0);
            QString p = kVacio;
            double b = 0;
            QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("061"), p, 0, b, {}, 0), 400.0);
            QCOMPARE(c.liq.TramoEstadistica(), short(2));

            c.liq.setFOBTotalITEM(79999.5);
            QCOMPARE(c.liq.ObtenerBaseImponible(), 79999.5);
            QCOMPARE(c.liq.ObtenerBaseIVA(), 79999.5);
            QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("061"), p, 0, b, {}, 0), 400.0);
            QCOMPARE(c.liq.TramoEstadistica(), short(2));
            QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("011"), p, 0, b, {}, 0), 0.0);

            c.liq.setFOBTotalITEM(99999.5);
            c.liq.ObtenerBaseImponible();
            QCOMPARE(c.liq.ObtenerBaseIVA(), 99999.5);
            QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("062"), p, 0, b, {}, 0), 0.0);
            QCOMPARE(c.liq.TramoEstadistica(), short(2));

            c.liq.setFOBTotalITEM(79999);
            c.liq.ObtenerBaseImponible();
            QCOMPARE(c.liq.ObtenerBaseIVA(), 79999 + 2399.97);
            QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("011"), p, 0, b, {}, 0), 2399.97);
            QCOMPARE(c.liq.TramoEstadistica(), short(1));

            c.liq.setFOBTotalITEM(100000);
            c.liq.ObtenerBaseImponible();
            QCOMPARE(c.liq.ObtenerBaseIVA(), 100500.0);
            p = kVacio;
            QCOMPARE(c.liq.ObtenerValorConcepto(QStringLiteral("062"), p, 0, b, {}, 0), 500.0);
            QCOMPARE(c.liq.TramoEstadistica(), short(3));
        }
    }

    // Failures inside a concept reach the caller.
    void fallos_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("ajustes");
        QTest::addColumn<QString>("codigo");
        QTest::addColumn<QString>("porcentaje");
        QTest::addColumn<double>("base");
        QTest::addColumn<double>("valor");
        QTest::addColumn<int>("numero");
        QTest::addColumn<QString>("descripcion");
        for (const char* sep : {",", "."}) {
            const QString s = QString::fromLatin1(sep);
            QTest::addRow("020 a -100 [%s]", sep)
                << s << "CalcCoef=1"
                << "020"
                << "-100" << 0.0 << 0.0 << 11 << QStringLiteral("División por cero");
            QTest::addRow("tasa que no es numero [%s]", sep)
                << s << ""
                << "010"
                << "abc" << 0.0 << 0.0 << 13 << QStringLiteral("No coinciden los tipos");
            QTest::addRow("manual Vacio [%s]", sep)
                << s << ""
                << "099"
                << "Vacio" << 10.0 << 1.0 << 13 << QStringLiteral("No coinciden los tipos");
            QTest::addRow("desbordamiento [%s]", sep)
                << s << ""
                << "099"
                << "1e300" << 1e300 << 1.0 << 6 << QStringLiteral("Desbordamiento");
        }
    }
    void fallos() {
        QFETCH(QString, sep);
        QFETCH(QString, ajustes);
        QFETCH(QString, codigo);
        QFETCH(QString, porcentaje);
        QFETCH(double, base);
        QFETCH(double, valor);
        QFETCH(int, numero);
        QFETCH(QString, descripcion);
        SeparadorDecimalScope scope(sep);
        Calculadora c(ajustes);
        c.liq.ObtenerBaseImponible();
        c.liq.ObtenerBaseIVA();
        QString p = porcentaje;
        double b = base;
        try {
            c.liq.ObtenerValorConcepto(codigo, p, 0, b, {}, valor);
            QFAIL("sin error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), numero);
            QCOMPARE(e.descripcion(), descripcion);
        }
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }
};

QTEST_MAIN(TestConceptos)
#include "test_conceptos.moc"
