// The calculator's properties, the two bases, the comparison of duties, the answer on the common
// external tariff and the trapped failures, under "," and under "." as the system separator.

#include "AjustesLiquidacion.h"
#include "liquidation/ClassLiquidacion.h"
#include "liquidation/ReglasLiquidacion.h"
#include "liquidation/RespuestaAEC.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "support/TestStores.h"

#include <QTest>
#include <set>

using namespace korven;
using korven::test::AplicarAjustes;
using korven::test::kInterno;
using korven::test::TestStores;

namespace {

const QString kItem = QStringLiteral("SubReg=IC04;DivFOB=1;FOB=1000;Pais=101;");

struct Calculadora {
    explicit Calculadora(const QString& ajustes = {}) : t(Motor::SQLite), liq(t.ctx()) {
        t.ctx().InternoActual = kInterno;
        AplicarAjustes(liq, t.ctx(), ajustes);
    }
    QString AEC() {
        return t.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), kInterno,
                                       QStringLiteral("<nada>"));
    }
    TestStores t;
    ClassLiquidacion liq;
};

} // namespace

class TestClassLiquidacion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // ---- Properties ----

    void seguroPorcentual_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<double>("fob");
        QTest::addColumn<double>("flete");
        QTest::addColumn<double>("seguro");
        QTest::addColumn<double>("porcentaje");
        QTest::addColumn<double>("esperado");
        for (const char* sep : {",", "."}) {
            const QString s = QString::fromLatin1(sep);
            QTest::addRow("sin seguro [%s]", sep) << s << 1000.0 << 200.0 << 0.0 << 1.0 << 12.0;
            QTest::addRow("con seguro [%s]", sep) << s << 1000.0 << 200.0 << 5.0 << 1.0 << 5.0;
            QTest::addRow("redondeo [%s]", sep) << s << 1234.5 << 0.0 << 0.0 << 1.0 << 12.35;
            QTest::addRow("sin porcentaje [%s]", sep) << s << 1000.0 << 200.0 << 0.0 << 0.0 << 0.0;
        }
    }
    void seguroPorcentual() {
        QFETCH(QString, sep);
        QFETCH(double, fob);
        QFETCH(double, flete);
        QFETCH(double, seguro);
        QFETCH(double, porcentaje);
        QFETCH(double, esperado);
        SeparadorDecimalScope scope(sep);
        Calculadora c;
        c.liq.setCaratulaFobTotal(fob);
        c.liq.setCaratulaFleteTotal(flete);
        c.liq.setCaratulaSeguroValor(seguro);
        c.liq.setCaratulaSeguroProcent(porcentaje);
        QCOMPARE(c.liq.CaratulaSeguroValor(), esperado);
        QCOMPARE(c.liq.CaratulaSeguroProcent(), porcentaje);
    }

    void propiedades() {
        Calculadora c;
        c.liq.setItemCantidad(25);
        QCOMPARE(c.liq.ItemCantidad(), 0.0);
        c.liq.setItemPais(QStringLiteral("203"));
        QCOMPARE(c.liq.ItemIdPais(), QStringLiteral("203"));
        c.liq.setItemIdPais(QStringLiteral("310"));
        QCOMPARE(c.liq.ItemPais(), QStringLiteral("310"));
        c.liq.setCalculoAEC(QStringLiteral("R"));
        QCOMPARE(c.liq.CalculoAEC(), QStringLiteral("R"));
        c.liq.ResetAEC();
        QCOMPARE(c.liq.CalculoAEC(), QString());

        // The export coefficient of the item is set by its own property only.
        c.liq.setFOBTotalITEM(1000);
        c.liq.setCaratulaDivisasFOB(1);
        c.liq.setItemxItmCOFEXP(0.5);
        QCOMPARE(c.liq.ItemCoeficienteExportacion(), 0.0);
        QCOMPARE(c.liq.ObtenerBaseImponible(), 1000.0);
    }

    void valoresEnDolares() {
        Calculadora c(QStringLiteral("DivFOB=1.5;DivFlete=2;DivSeguro=0.5;FOB=100;Flete=30;"
                                     "Seguro=7;AjInc=11;AjDed=3"));
        QCOMPARE(c.liq.ObtenerFobItemUS(), 150.0);
        QCOMPARE(c.liq.ObtenerFLETEItemUs(), 60.0);
        QCOMPARE(c.liq.ObtenerSEGUROItemUs(), 3.5);
        QCOMPARE(c.liq.ObtenerAjusteIncUs(), 16.5);
        QCOMPARE(c.liq.ObtenerAjusteDedUs(), 4.5);
    }

    // Whole numbers of the exemption round half to even; 0 exempts, 1 reduces.
    void exencionIVA_data() {
        QTest::addColumn<double>("exencion");
        QTest::addColumn<double>("tasa");
        QTest::newRow("0") << 0.0 << 0.0;
        QTest::newRow("0.5 es 0") << 0.5 << 0.0;
        QTest::newRow("1") << 1.0 << 10.5;
        QTest::newRow("1.4 es 1") << 1.4 << 10.5;
        QTest::newRow("1.5 es 2") << 1.5 << 21.0;
        QTest::newRow("2") << 2.0 << 21.0;
        QTest::newRow("fuera de rango") << 1e9 << 21.0;
    }
    void exencionIVA() {
        QFETCH(double, exencion);
        QFETCH(double, tasa);
        Calculadora c(kItem + QStringLiteral("IVARIN=21;IVARNI=10.5"));
        c.liq.setncmExencionReduccionIVA(exencion);
        c.liq.ObtenerBaseImponible();
        c.liq.ObtenerBaseIVA();
        QString p = QStringLiteral("Vacio");
        double b = 0;
        c.liq.ObtenerValorConcepto(QStringLiteral("415"), p, 0, b, {}, 0);
        QCOMPARE(c.liq.ObtenerLqPorc(), tasa);
    }

    void derechoAdicionalTexto() {
        Calculadora c;
        try {
            c.liq.setNcmDerechoAdicional(QStringLiteral("x"));
            QFAIL("sin error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), 13);
        }
    }

    // ---- Decimal separator ----

    void separadorDecimal_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("coma") << ","
                              << "1.234,5"
                              << "1,234,5";
        QTest::newRow("punto") << "."
                               << "1.234,5"
                               << "1.234.5";
        QTest::newRow("coma sin separador") << ","
                                            << "21"
                                            << "21";
        QTest::newRow("punto desde coma") << "."
                                          << "10,5"
                                          << "10.5";
    }
    void separadorDecimal() {
        QFETCH(QString, sep);
        QFETCH(QString, texto);
        QFETCH(QString, esperado);
        Calculadora c;
        SeparadorDecimalScope scope(sep);
        QString t = texto;
        QCOMPARE(c.liq.ReemplazarSeparadorDecimal(t), esperado);
        QCOMPARE(t, esperado);
        QCOMPARE(c.liq.SeparadorDecimal(), sep);
        QCOMPARE(c.liq.Obtener_Sep_Decim(), sep);
    }

    // ---- Bases and duties ----

    void bases_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("ajustes");
        QTest::addColumn<double>("baseImponible");
        QTest::addColumn<double>("valorDerechos");
        QTest::addColumn<double>("valorEspecifico");
        QTest::addColumn<double>("valorDIEM");
        QTest::addColumn<double>("auxPorcentaje");
        QTest::addColumn<double>("derechoDespues");
        QTest::addColumn<double>("baseIVA");
        const QString flete =
            QStringLiteral("Derecho=10;DivFlete=1;DivSeguro=1;Flete=100;Seguro=10;");
        const QString minimo = QStringLiteral("Derecho=10;Indicador=1;CantEsp=1.5;ValorEsp=100;");
        struct F {
            const char* nombre;
            QString ajustes;
            double bi, vd, ve, diem, aux, derecho, iva;
        };
        const F filas[] = {
            {"importacion", flete, 1110, 111, 0, 0, 10, 10, 1221},
            {"exportacion", flete + "SubReg=EC01", 1000, 100, 0, 0, 10, 10, 1100},
            {"ajustes", flete + "DivFOB=2;AjInc=50;AjDed=20", 2170, 217, 0, 0, 10, 10, 2387},
            // Inputs and commissions of the item, in its own currency.
            {"con insumos", flete + "SubReg=IC06;DivFOB=2;Temporal=300;ComExt=40", 1850, 185, 0, 0,
             10, 10, 2035},
            {"sin insumos", flete + "DivFOB=2;Temporal=300;ComExt=40", 2110, 211, 0, 0, 10, 10,
             2321},
            {"ad valorem igual al especifico", "Derecho=10;CantEsp=1;ValorEsp=100", 1000, 100, 0, 0,
             10, 10, 1100},
            {"pais socio", minimo + "Pais=225", 1000, 0, 0, 0, 10, 0, 1000},
            {"pais bilateral", minimo + "Pais=203", 1000, 0, 0, 0, 10, 0, 1000},
            {"pais fuera de la lista", minimo + "Pais=999", 1000, 0, 150, 0, 10, 10, 1100},
            {"pais vacio", minimo + "Pais=", 1000, 0, 150, 0, 10, 10, 1100},
            {"tope 30", minimo, 1000, 0, 0, 150, 30, 10, 1150},
            {"tope 30 con ceros", minimo + "Pais=0101", 1000, 0, 0, 150, 30, 10, 1150},
            {"tope 30 alcanzado", minimo + "ValorEsp=400", 1000, 0, 0, 300, 30, 10, 1300},
            {"tope 35", minimo + "Indicador=2", 1000, 0, 0, 150, 35, 10, 1150},
            {"sin indicador", minimo + "Indicador=0", 1000, 0, 0, 0, 0, 10, 1100},
            {"minimo redondeado", "Derecho=1;Indicador=1;CantEsp=12.345;ValorEsp=1", 1000, 0, 0,
             12.35, 30, 1, 1012.35},
            {"310 especifico al tope", "Derecho=10;Pais=310;Indicador=2;CantEsp=2;ValorEsp=100",
             1000, 0, 350, 0, 35, 10, 1100},
            {"310 minimo", "Derecho=10;Pais=310;Indicador=1;CantEsp=4;ValorEsp=100", 1000, 0, 0,
             300, 30, 10, 1300},
        };
        for (const char* sep : {",", "."})
            for (const F& f : filas)
                QTest::addRow("%s [%s]", f.nombre, sep)
                    << QString::fromLatin1(sep)
                    << QStringLiteral("SubReg=IC04;Pais=101;FOB=1000;DivFOB=1;") + f.ajustes << f.bi
                    << f.vd << f.ve << f.diem << f.aux << f.derecho << f.iva;
    }
    void bases() {
        QFETCH(QString, sep);
        QFETCH(QString, ajustes);
        QFETCH(double, baseImponible);
        QFETCH(double, valorDerechos);
        QFETCH(double, valorEspecifico);
        QFETCH(double, valorDIEM);
        QFETCH(double, auxPorcentaje);
        QFETCH(double, derechoDespues);
        QFETCH(double, baseIVA);
        SeparadorDecimalScope scope(sep);
        Calculadora c(ajustes);
        if (QTest::currentTestFailed())
            return;
        QCOMPARE(c.liq.ObtenerBaseImponible(), baseImponible);
        QCOMPARE(c.liq.ObtenerBaseIVA(), baseIVA);
        QCOMPARE(c.liq.BaseImponible(), baseImponible);
        QCOMPARE(c.liq.ValorDerechos(), valorDerechos);
        QCOMPARE(c.liq.ValorEspecifico(), valorEspecifico);
        QCOMPARE(c.liq.ValorDIEM(), valorDIEM);
        QCOMPARE(c.liq.ValorDIEMCHINA(), 0.0);
        QCOMPARE(c.liq.Aux_PORCENTAJE(), auxPorcentaje);
        QCOMPARE(c.liq.NcmDerechodeImportacionExtrazona(), derechoDespues);
        QCOMPARE(c.liq.BaseAEC(), 0.0);
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // The export coefficient multiplies a base that is computed anew on each call.
    void baseConCoeficiente() {
        Calculadora c(kItem + QStringLiteral("Coef=0.9"));
        QCOMPARE(c.liq.ObtenerBaseImponible(), 900.0);
        QCOMPARE(c.liq.ObtenerBaseImponible(), 900.0);
    }

    // ObtenerBaseIVA starts from whatever base the previous item left.
    void baseIVASinBaseImponible() {
        Calculadora c(kItem);
        QCOMPARE(c.liq.ObtenerBaseImponible(), 1000.0);
        c.liq.setFOBTotalITEM(500);
        c.liq.setNcmDerechodeImportacionExtrazona(10);
        QCOMPARE(c.liq.ObtenerBaseIVA(), 1100.0);
        QCOMPARE(c.liq.ValorDerechos(), 100.0);
    }

    // ---- Base of the taxes on the sale ----

    void baseIVA_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("ajustes");
        QTest::addColumn<double>("baseIVA");
        QTest::addColumn<double>("baseAEC");
        QTest::addColumn<double>("porcentajeAEC");
        QTest::addColumn<double>("derecho");
        QTest::addColumn<double>("estadistica");
        // Duty 10 % on 1000, fee 3 %, common external tariff 14 % on the position.
        const QString aec = QStringLiteral("Derecho=10;Estadistica=3;ncm_AEC=*;ValorAEC=14;");
        const QString minimo = QStringLiteral("Indicador=1;CantEsp=1.5;ValorEsp=100;");
        struct F {
            const char* nombre;
            QString ajustes;
            double iva, baseAEC, porcAEC, derecho, estadistica;
        };
        const F filas[] = {
            {"R extrazona", aec + "AEC=R", 1170, 0, 0, 14, 3},
            {"R pais vacio", aec + "AEC=R;Pais=", 1170, 0, 0, 14, 3},
            {"R forzado", aec + "AEC=R;Force=1", 1130, 0, 0, 10, 3},
            {"R bilateral", aec + "AEC=R;Pais=203", 1000, 105, 10.5, 0, 0},
            {"R bilateral mercosur", aec + "AEC=R;Pais=203;Mercosur=1", 1000, 105, 10.5, 0, 0},
            {"R socio", aec + "AEC=R;Pais=225", 1130, 0, 0, 10, 3},
            {"R sin marca", aec + "AEC=R;ncm_AEC=", 1130, 0, 0, 10, 3},
            {"R sin marca mercosur", aec + "AEC=R;ncm_AEC=;Mercosur=1", 1000, 0, 0, 10, 3},
            {"R sin marca minimo", aec + minimo + "AEC=R;ncm_AEC=", 1180, 0, 0, 10, 3},
            {"P", aec + "AEC=P", 1030, 0, 0, 10, 3},
            {"N", aec + "AEC=N", 1130, 0, 0, 10, 3},
            {"N automotriz", aec + "AEC=N;Lista=314/R.AUTOMOTRIZ", 1000, 105, 10.5, 0, 0},
            {"N mercosur", aec + "AEC=N;Mercosur=1", 1000, 0, 0, 10, 3},
            {"N minimo", aec + minimo + "AEC=N", 1180, 0, 0, 10, 3},
            {"mineria", aec + "AEC=N;Mineria=1;TasaLey=1", 1010, 0, 0, 0, 0},
            {"mineria mercosur", aec + "AEC=N;Mineria=1;TasaLey=1;Mercosur=1", 1000, 0, 0, 0, 0},
            {"sin mineria", aec + "AEC=N;TasaLey=1", 1130, 0, 0, 10, 3},
            {"decreto 1439", aec + "AEC=N;FlagDto1439=S;Adicional=24", 1370, 0, 0, 10, 3},
            {"decreto 1439 A1", aec + "AEC=N;FlagDto1439A1=S;Adicional=48", 1610, 0, 0, 10, 3},
            {"IC81", aec + "AEC=N;SubReg=IC81;Adicional=24", 1370, 0, 0, 10, 3},
            {"adicional sin decreto", aec + "AEC=N;Adicional=24", 1130, 0, 0, 10, 3},
            {"tramo 1 al limite", "Estadistica=3;FOB=79999", 79999 + 2399.97, 0, 0, 0, 3},
            {"hueco del tramo 1", "Estadistica=3;FOB=79999.5", 79999.5, 0, 0, 0, 3},
            {"tramo 2", "Estadistica=3;FOB=80000", 80400, 0, 0, 0, 3},
            {"tramo 2 al limite", "Estadistica=3;FOB=99999", 100399, 0, 0, 0, 3},
            {"hueco del tramo 2", "Estadistica=3;FOB=99999.5", 99999.5, 0, 0, 0, 3},
            {"tramo 3", "Estadistica=3;FOB=100000", 100500, 0, 0, 0, 3},
        };
        for (const char* sep : {",", "."})
            for (const F& f : filas)
                QTest::addRow("%s [%s]", f.nombre, sep)
                    << QString::fromLatin1(sep) << kItem + f.ajustes << f.iva << f.baseAEC
                    << f.porcAEC << f.derecho << f.estadistica;
    }
    void baseIVA() {
        QFETCH(QString, sep);
        QFETCH(QString, ajustes);
        QFETCH(double, baseIVA);
        QFETCH(double, baseAEC);
        QFETCH(double, porcentajeAEC);
        QFETCH(double, derecho);
        QFETCH(double, estadistica);
        SeparadorDecimalScope scope(sep);
        Calculadora c(ajustes);
        if (QTest::currentTestFailed())
            return;
        c.liq.ObtenerBaseImponible();
        QCOMPARE(c.liq.ObtenerBaseIVA(), baseIVA);
        QCOMPARE(c.liq.BaseAEC(), baseAEC);
        QCOMPARE(c.liq.PorcentajeAEC(), porcentajeAEC);
        QCOMPARE(c.liq.NcmDerechodeImportacionExtrazona(), derecho);
        QCOMPARE(c.liq.NcmTasaEstadistica(), estadistica);
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // ---- The question of the automotive regime ----

    void preguntaAEC_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("ajustes");
        QTest::addColumn<QString>("respuesta"); // what the screen saves; "-" nothing
        QTest::addColumn<int>("preguntas");
        QTest::addColumn<QString>("calculoAEC");
        QTest::addColumn<double>("baseIVA");
        const QString aec = QStringLiteral("Derecho=10;ValorAEC=14;ncm_AEC=*;");
        for (const char* sep : {",", "."}) {
            const QString s = QString::fromLatin1(sep);
            QTest::addRow("reposicion [%s]", sep) << s << aec << "R" << 1 << "R" << 1140.0;
            QTest::addRow("produccion [%s]", sep) << s << aec << "P" << 1 << "P" << 1000.0;
            QTest::addRow("no [%s]", sep) << s << aec << "N" << 1 << "N" << 1100.0;
            QTest::addRow("sin respuesta [%s]", sep) << s << aec << "-" << 1 << "N" << 1100.0;
            QTest::addRow("ya contestada [%s]", sep) << s << aec + "AEC=P"
                                                     << "R" << 0 << "P" << 1000.0;
            QTest::addRow("posicion sin marca [%s]", sep) << s << "Derecho=10;ValorAEC=14;ncm_AEC="
                                                          << "R" << 0 << "" << 1100.0;
            QTest::addRow("marca con blancos [%s]", sep)
                << s << "Derecho=10;ValorAEC=14;ncm_AEC= * "
                << "R" << 0 << "" << 1100.0;
        }
    }
    void preguntaAEC() {
        QFETCH(QString, sep);
        QFETCH(QString, ajustes);
        QFETCH(QString, respuesta);
        QFETCH(int, preguntas);
        QFETCH(QString, calculoAEC);
        QFETCH(double, baseIVA);
        SeparadorDecimalScope scope(sep);
        Calculadora c(kItem + ajustes);
        if (QTest::currentTestFailed())
            return;
        int abierta = 0;
        c.t.ctx().pantallas().Registrar(
            QStringLiteral("FrmABMClientes"), [&](AppContext& ctx, const QVariantMap& args) {
                ++abierta;
                [&] { QCOMPARE(args.value(QStringLiteral("interno")).toString(), kInterno); }();
                if (respuesta != QLatin1String("-"))
                    GuardarRespuestaAEC(ctx.settings(), args.value("interno").toString(),
                                        respuesta);
                return QVariant();
            });
        c.liq.setCalculoAEC(QStringLiteral("X"));
        c.liq.ObtenerBaseImponible();
        QCOMPARE(c.liq.ObtenerBaseIVA(), baseIVA);
        QCOMPARE(abierta, preguntas);
        QCOMPARE(c.liq.CalculoAEC(), calculoAEC);
        // The answer stands for the next item: no second question.
        c.liq.ObtenerBaseIVA();
        QCOMPARE(abierta, respuesta == QLatin1String("-") ? 2 * preguntas : preguntas);
    }

    // ---- Trapped failures ----

    void falloBaseImponible() {
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(QString::fromLatin1(sep));
            Calculadora c(kItem + QStringLiteral("FOB=1e308;DivFOB=10;Derecho=10"));
            QCOMPARE(c.liq.ObtenerBaseImponible(), 0.0);
            QCOMPARE(c.t.dialogos().mensajes(),
                     QStringList{QStringLiteral("Desbordamiento[clCalcular.BaseImponible] ")});
            // The caller goes on with 0.
            QCOMPARE(c.liq.ObtenerBaseIVA(), 0.0);
            QCOMPARE(c.t.dialogos().mensajes().size(), 1);
        }
    }

    void falloDerechos() {
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(QString::fromLatin1(sep));
            Calculadora c(kItem + QStringLiteral("Derecho=10;CantEsp=1e300;ValorEsp=1e300"));
            c.liq.ObtenerBaseImponible();
            // The duty of the base still enters the base of the taxes.
            QCOMPARE(c.liq.ObtenerBaseIVA(), 1100.0);
            QCOMPARE(c.liq.ValorDerechos(), 0.0);
            QCOMPARE(c.liq.ValorDIEM(), 0.0);
            QCOMPARE(c.liq.ValorEspecifico(), 0.0);
            const auto& r = c.t.dialogos().registro();
            QCOMPARE(r.size(), 1);
            QCOMPARE(r[0].texto, QStringLiteral("6 - Desbordamiento\n\nSección "
                                                "[KORVEN.ClassLiquidacion.CalcularDerechos]"));
            QCOMPARE(r[0].icono, Dialogos::Icono::Critico);
        }
    }

    void falloBaseIVA() {
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(QString::fromLatin1(sep));
            // No screen registered to put the question.
            Calculadora c(kItem + QStringLiteral("Derecho=10;ncm_AEC=*"));
            c.liq.ObtenerBaseImponible();
            QCOMPARE(c.liq.ObtenerBaseIVA(), 0.0);
            QCOMPARE(c.liq.BaseIVA(), 0.0);
            QCOMPARE(c.t.dialogos().mensajes(),
                     QStringList{QStringLiteral("La pantalla FrmABMClientes no está instalada.")});
        }
    }

    // ---- Special duty of the country 310 ----

    void diemChina_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("pais");
        QTest::addColumn<bool>("calcula");
        QTest::addColumn<double>("diem");
        QTest::addColumn<double>("cantidad");
        QTest::addColumn<double>("base");
        QTest::addColumn<double>("esperado");
        for (const char* sep : {",", "."}) {
            const QString s = QString::fromLatin1(sep);
            // x = 5 x 100 x 100 / 1000 = 50; y = 15; z = 15 - 6 = 9; w = 44; 44 x 1000 / 100.
            QTest::addRow("simple [%s]", sep)
                << s << "310" << true << 5.0 << 100.0 << 1000.0 << 440.0;
            // x = 2331 / 1234 = 1.888979; y = -33.111021; 40 % of y rounds to -13.24;
            // w = 15.128979; w x 1234 / 100 = 186.6916.
            QTest::addRow("redondeo [%s]", sep)
                << s << "310" << true << 3.33 << 7.0 << 1234.0 << 186.69;
            QTest::addRow("otro pais [%s]", sep)
                << s << "311" << true << 5.0 << 100.0 << 1000.0 << 0.0;
            QTest::addRow("sin fila [%s]", sep)
                << s << "310" << false << 5.0 << 100.0 << 1000.0 << 0.0;
        }
    }
    void diemChina() {
        QFETCH(QString, sep);
        QFETCH(QString, pais);
        QFETCH(bool, calcula);
        QFETCH(double, diem);
        QFETCH(double, cantidad);
        QFETCH(double, base);
        QFETCH(double, esperado);
        SeparadorDecimalScope scope(sep);
        Calculadora c;
        c.liq.setItemPais(pais);
        c.liq.setncmCalculaDIEMCHINA(calcula);
        c.liq.setncmDIEMCHINAValor(diem);
        c.liq.setItemCantidadDerechoEspecifico(cantidad);
        c.liq.setncmDIEMIndMaxArancelValor(35);
        c.liq.setncmDIEMPREFPorcValor(40);
        QCOMPARE(c.liq.CalcularDiemCHINA(base), esperado);
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    void diemChinaFallo() {
        Calculadora c;
        c.liq.setItemPais(QStringLiteral("310"));
        c.liq.setncmCalculaDIEMCHINA(true);
        c.liq.setncmDIEMCHINAValor(5);
        c.liq.setItemCantidadDerechoEspecifico(100);
        QCOMPARE(c.liq.CalcularDiemCHINA(0), 0.0);
        const auto& r = c.t.dialogos().registro();
        QCOMPARE(r.size(), 1);
        QCOMPARE(r[0].texto, QStringLiteral("División por cero\n\n11 - seccion "
                                            "[KORVEN.ClassLiquidacion.CalcularDIEMCHINA]"));
        QCOMPARE(r[0].icono, Dialogos::Icono::Critico);
    }

    // ---- Country and subregime rules ----

    void marcaPais_data() {
        QTest::addColumn<QString>("pais");
        QTest::addColumn<QString>("marca");
        QTest::newRow("225") << "225"
                             << "M";
        QTest::newRow("221 con blancos") << " 221 "
                                         << "M";
        QTest::newRow("203") << "203"
                             << "B";
        QTest::newRow("vacio") << ""
                               << "";
        QTest::newRow("blancos") << "   "
                                 << "";
        QTest::newRow("310") << "310"
                             << "E";
        QTest::newRow("0225") << "0225"
                              << "E";
    }
    void marcaPais() {
        QFETCH(QString, pais);
        QFETCH(QString, marca);
        QCOMPARE(MarcaPais(pais), marca);
    }

    void paisConTopeArancel() {
        const std::set<int> lista = {
            101, 103, 104, 105, 107, 108, 111, 112, 113, 115, 116, 117, 118, 120, 121, 124, 125,
            126, 127, 128, 129, 130, 131, 132, 133, 134, 135, 137, 139, 140, 141, 142, 144, 149,
            151, 153, 156, 158, 159, 200, 201, 202, 203, 204, 205, 206, 208, 209, 210, 211, 212,
            213, 214, 215, 216, 217, 218, 219, 220, 221, 222, 224, 225, 226, 232, 233, 234, 235,
            236, 237, 238, 240, 303, 304, 307, 308, 309, 312, 315, 316, 319, 320, 322, 323, 326,
            327, 329, 331, 332, 333, 335, 341, 344, 345, 346, 405, 406, 407, 409, 410, 411, 412,
            413, 414, 415, 416, 417, 418, 419, 420, 422, 423, 424, 425, 426, 427, 429, 430, 435,
            436, 438, 448, 449, 451, 501, 504, 512, 513, 518};
        QCOMPARE(lista.size(), size_t(129));
        for (int n = -5; n <= 1000; ++n)
            QVERIFY2(PaisConTopeArancel(QString::number(n)) == (lista.count(n) == 1),
                     qPrintable(QString::number(n)));
        QVERIFY(PaisConTopeArancel(QStringLiteral("0101")));
        QVERIFY(PaisConTopeArancel(QStringLiteral(" 518 ")));
        QVERIFY(!PaisConTopeArancel(QStringLiteral("310")));
        QVERIFY(!PaisConTopeArancel(QString()));
        QVERIFY(!PaisConTopeArancel(QStringLiteral("ABC")));
    }

    void subregimenes() {
        const QStringList insumos = {"EC02", "EC03", "EC04", "EC05", "EC06", "EC16",
                                     "EG02", "EG03", "IC81", "IC82", "IC83", "DIR6",
                                     "IC06", "IC26", "IC36", "IG06", "IT06", "RnaE06",
                                     "TG06", "TG16", "TR06", "MARE", "IDT4"};
        const QStringList temporales = {"IT01", "IT03", "IT04", "IT05", "IT06", "IT07",
                                        "IT11", "IT13", "IT14", "IT15", "IT16", "IT17",
                                        "ET01", "ET02", "ETA1", "ETE1", "ETE2"};
        for (const QString& s : insumos) {
            QVERIFY2(SubregimenConInsumos(s), qPrintable(s));
            QVERIFY2(SubregimenConInsumos(QLatin1Char(' ') + s + QLatin1Char(' ')), qPrintable(s));
        }
        for (const QString& s : temporales) {
            QVERIFY2(SubregimenTemporal(s), qPrintable(s));
            QVERIFY2(!SubregimenTemporal(s + QLatin1Char(' ')), qPrintable(s));
        }
        for (const char* s : {"EC01", "IC04", "IT02", "rnae06", "", "IC8", "ET03"}) {
            QVERIFY2(!SubregimenConInsumos(QString::fromLatin1(s)), s);
            QVERIFY2(!SubregimenTemporal(QString::fromLatin1(s)), s);
        }
    }
};

QTEST_MAIN(TestClassLiquidacion)
#include "test_classliquidacion.moc"
