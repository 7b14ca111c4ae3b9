// The header's totals spread over groups and items, each case on both engines and under both
// decimal separators, with the figures worked out by hand beside it.

#include "FixtureArmado.h"
#include "assembly/ProrrateoTotales.h"
#include "platform/KorvenError.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kI = QStringLiteral("P-1");
const QString kRaya(64, QLatin1Char('-'));
const QString kGrupos = QStringLiteral("groupsubitems:orden,idsub,fob,cantidad");
const QString kComun = QStringLiteral("groupsubitems:orden,idsub,kgbruto,estadomerc,idpais,"
                                      "onccacategoria,codprorrateo");
const QString kItems = QStringLiteral("item:id,fobtotal,itcomext|0,0,0|");
const QString kKilos = QStringLiteral("groupsubitems:orden,id,idsub,fob,kgneto,estadistica,deresp");
const QString kItemsKilos = QStringLiteral(
    "\nitem:id,totalkneto,valorrelacionestadistica,valorderesp|0,0,0,0|1,0,0,0|2,0,5,6");
const QString kSinCambio = QStringLiteral(" 0|0|0|0 1|0|0|0 2|0|5|6 pb:");

struct Barras : ProgresoArmado {
    QStringList v;
    void Barra(int x, int) override { v << QString::number(x); }
};

// One case under both engines and both separators; "#" in a message is the separator.
void Caso(const char* nombre, const char* rutina, const QString& car, const QString& tablas,
          double a1, double a2, const QString& esperado, const QStringList& dichos = {}) {
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
        for (const char* s : {",", "."})
            QTest::addRow("%s %s %s", nombre, m == Motor::SQLite ? "sqlite" : "postgresql", s)
                << static_cast<int>(m) << QString::fromLatin1(s) << QString::fromLatin1(rutina)
                << car << tablas << a1 << a2 << esperado << dichos;
}

} // namespace

class TestProrrateo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void prorratear_data();
    void prorratear();
};

void TestProrrateo::prorratear_data() {
    QTest::addColumn<int>("motor");
    for (const char* c : {"separador", "rutina", "caratula", "tablas"})
        QTest::addColumn<QString>(c);
    QTest::addColumn<double>("a1");
    QTest::addColumn<double>("a2");
    QTest::addColumn<QString>("esperado");
    QTest::addColumn<QStringList>("dichos");
    // 1000 + 1000 x 100 / 1000 = 1100, / 10 = 110.
    Caso("un valor", "fob", "fobdivisas=1000;valoraprorratear=100", kGrupos + "|1,1,1000,10", 0, 0,
         "1|1100|110 si 1100");
    // 100 + 100 x 100 / 300 = 133.33 three times: the 0.01 left goes to the last group with a
    // FOB above it (3, not the empty 4): 133.34 / 4 = 33.335.
    Caso("resto", "fob", "fobdivisas=300;valoraprorratear=100",
         kGrupos + "|1,1,100,1|2,2,100,2|3,3,100,4|4,4,0,1", 0, 0,
         "1|133.33|133.33 2|133.33|66.665 3|133.34|33.335 4|0|0 si 400");
    // One line number, FOB 100 and 200: both take 200 + 20 = 220, total 440; the -110 goes to
    // the last group above 110: 110, / 2 = 55.
    Caso("mismo idsub", "fob", "fobdivisas=300;valoraprorratear=30",
         kGrupos + "|1,1,100,1|2,1,200,2", 0, 0, "1|220|220 2|110|55 si 330");
    // A 300 over 100 and 200: 200 and 400 (not 400 twice). B 10 over three 100: 103.3333 each.
    // Rounded 1909.99 against 1600 + 310: the largest coded FOB takes 0.01; no code, no change.
    Caso(
        "codigos", "fob", "fobdivisas=1600",
        "prorrateo:codigo,descripcion,valor|A,UNO,300|B,DOS,10\n" + kGrupos +
            ",codprorrateo|1,1,100,1,A|2,2,200,1,A|3,3,100,1,B|4,4,100,2,B|5,5,100,4,B|6,6,1000,1,",
        0, 0,
        "1|200|200 2|400.01|400.01 3|103.3333|103.3333 4|103.3333|51.6667 5|103.3333|25.8333 "
        "6|1000|null si 1910");
    Caso("codigo sin usar", "fob", "fobdivisas=150",
         "prorrateo:codigo,descripcion,valor|A,UNO,5|Z, ZETA ,5\n" + kGrupos +
             ",codprorrateo|1,1,100,1,A\n" + kGrupos + "|2,2,50,1",
         0, 0, "1|100|null 2|50|null NO fin 0",
         {"KORVEN|3|" + kRaya +
          "\nSe encontraron CODIGOS DE PRORRATEOS sin utilizar\nNo se puede continuar con el "
          "armado.\n" +
          kRaya + "\nZ - ZETA\n"});
    // State where empty, country everywhere, ONCCA where empty; 10.5 + 4.25 = 14.75.
    Caso("con bruto", "comunes",
         "bulpes=77;dcestmerc=NU;dcforzarestmerc=N;dcpaisorigen=200;dcforzarpaisorigen=S;"
         "onccacategoria=C1",
         kComun + "|1,1,10.5,US,300,X,A|2,2,4.25,,,,B", 0, 0, "1|US|200|X|| 2|NU|200|C1|| 14.75");
    Caso("sin bruto", "comunes", "bulpes=77;dcestmerc=NU;dcforzarestmerc=S",
         kComun + "|1,1,0,US,300,X,A|2,2,0,,,,B", 0, 0, "1|NU|300|X|| 2|NU|||| 0");
    Caso("algunos con bruto", "comunes", "bulpes=77", kComun + "|1,1,5,US,300,X,A|2,2,0,,,,B", 0, 0,
         "1|US|300|X|| 2||||| 77",
         {"KG BRUTOS (BULTOS)|4|Hay Subitem's que no tiene ingresado el KG Bruto.\n\nPor favor "
          "verifique los mismos en la opcion CARGA DE SUBITEMS"});
    // 100 x 100 / 300 = 33.33 three times: the smallest (first by id) takes the 0.01.
    Caso("comext igual", "comext", "", kItems + "1,100,0|2,100,0|3,100,0", 100, 300,
         "0|100 1|33.34 2|33.33 3|33.33");
    // 1/6 = 0.17, 0.17, 4/6 = 0.67: 1.01, the largest gives 0.01 back.
    Caso("comext excedente", "comext", "", kItems + "1,1,0|2,1,0|3,4,0", 1, 6,
         "0|1 1|0.17 2|0.17 3|0.66");
    Caso("comext sin fob", "comext", "", kItems + "1,1,0", 1, 0,
         "0|0 1|0 11 División por cero- seccion [korven.frmarmaritem.ProrratearComExt]");
    // 120 - 20 = 100 over FOB 1000.04: 99.996 is 100.00, 0.0039998 is 0.00 and takes 0.01
    // from the heaviest marked line. Item 1 holds 100 in kilo units too.
    Caso("cuota en cero", "kilos", "",
         kKilos + "|1,1,1,1000,0,01,01|2,1,2,0.04,0,01,01|3,2,3,500,20,07,02" + kItemsKilos, 120, 0,
         "1|99.99|*|99.99|99.99 2|0.01|*|0.01|0.01 3|20||null|null 0|120|0|0 1|100|100|100 "
         "2|20|5|6 pb:0,10,20,30,40,50,70,80");
    // 100 / 3 = 33.33 three times, 99.99: the first of the heaviest takes 0.01. Item 2's groups
    // differ in units: it keeps the last of them in unit order (07 after 01), 33.33.
    Caso("ajuste", "kilos", "",
         kKilos + "|1,1,1,1,0,07,02|2,2,2,1,0,07,02|3,2,3,1,0,01," + kItemsKilos, 100, 0,
         "1|33.34|*|null|null 2|33.33|*|null|null 3|33.33|*|33.33|null 0|100|0|0 1|33.34|0|0 "
         "2|33.33|33.33|6 pb:0,10,20,30,40,50,70,80");
    // Kilos equal to the sum: nothing to share; the empty line takes 0.01 from the 10.
    Caso("sin resto", "kilos", "", kKilos + "|1,1,1,100,10,07,02|2,2,2,50,0,07,02" + kItemsKilos,
         10, 0,
         "1|9.99||null|null 2|0.01|*|null|null 0|10|0|0 1|9.99|0|0 2|0.01|5|6 "
         "pb:0,10,20,30,40,50,70,80");
    // Three empty lines need 0.03; the two of 0.02 give 0.01 each and nothing is left.
    Caso("nadie cede", "kilos", "",
         kKilos + "|1,1,1,1,0.02,,|2,1,2,1,0.02,,|3,1,3,1,0,,|4,1,4,1,0,,|5,1,5,1,0,," +
             kItemsKilos,
         0.04, 0,
         "1|0.01||null|null 2|0.01||null|null 3|0|*|null|null 4|0|*|null|null 5|0|*|null|null" +
             kSinCambio + "0,10,20,30,40,50",
         {"KORVEN|1|3021 - No quedan subitems con kilos mayor a 0#01 para ceder 0#01 - seccion "
          "[FrmArmaritem.Prorratear_ItemsEX] linea "});
    Caso("menos que lo cargado", "kilos", "", kKilos + "|1,1,1,1,20.25,,|2,1,2,1,0,," + kItemsKilos,
         10.5, 0, "1|20.25|null|null|null 2|0|null|null|null" + kSinCambio + "0,10,20",
         {"KORVEN|0|El kilo a prorratear (10#5) debe ser mayor a 20#25"});
    Caso("todos cargados", "kilos", "", kKilos + "|1,1,1,1,5,," + kItemsKilos, 10, 0,
         "1|5||null|null" + kSinCambio + "0,10,20",
         {"PRORRATEO DE KILOS NETO..|3|No hay registros para prorratear!\nya que todos los "
          "articulos tienen cargado kilo neto.\nSi desea prorratear debe poner los kilos en 0 "
          "(cero)\nEn Carga de Subitems"});
    // 0.02 / 3 = 0.0067 is 0.01 three times: 0.03, and no line above 0.01 can give it back.
    Caso("no redondea", "kilos", "", kKilos + "|1,1,1,1,0,,|2,1,2,1,0,,|3,1,3,1,0,," + kItemsKilos,
         0.02, 0,
         "1|0.01|*|null|null 2|0.01|*|null|null 3|0.01|*|null|null" + kSinCambio +
             "0,10,20,30,40,50,70",
         {"KORVEN|3|Error al redondear prorrateo, no se encontro subitems con kilos mayor a "
          "0#01\nNo se puede continuar.."});
}

void TestProrrateo::prorratear() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, rutina);
    QFETCH(double, a1);
    QFETCH(double, a2);
    QFETCH(QStringList, dichos);
    SeparadorDecimalScope sep(separador);
    TestStores ts(static_cast<Motor>(motor));
    PrepararArmado(ts);
    QFETCH(QString, caratula);
    QFETCH(QString, tablas);
    Caratula(ts, kI, caratula);
    TablasOperacion(ts, kI, tablas);
    Barras pb;
    CorridaArmado r(ts.ctx(), kI, pb);
    r.LeerCaratula();
    ProrrateoTotales p(r);
    QString sql = QStringLiteral("select orden, fob, preciounitario from groupsubitems");
    QStringList visto;
    try {
        if (rutina == QLatin1String("fob")) {
            visto << (p.ProrratearFob() ? QStringLiteral("si") : ts.ctx().ArmadoResultado)
                  << (r.terminada ? QStringLiteral("fin") : QString())
                  << Formato(r.TotalFobOperacion, QStringLiteral("0.##"), QStringLiteral("."));
        } else if (rutina == QLatin1String("comunes")) {
            p.DatosComunes();
            p.KilosBrutos();
            sql = QStringLiteral("select orden, estadomerc, idpais, onccacategoria, onccacortes, "
                                 "codprorrateo from groupsubitems");
            visto = Filas(ts, QStringLiteral("select bulpes from caratula"));
        } else if (rutina == QLatin1String("comext")) {
            sql = QStringLiteral("select id, itcomext from item");
            p.ProrratearComExt(a1, a2);
        } else {
            sql = QStringLiteral("select orden, kgneto, flgkg, valorrelacionestadistica, "
                                 "valorderesp from groupsubitems");
            p.Prorratear_ItemCeroEx(a1);
            visto = Filas(ts, QStringLiteral("select id, totalkneto, valorrelacionestadistica, "
                                             "valorderesp from item order by id"));
            visto << QStringLiteral("pb:") + pb.v.join(QLatin1Char(','));
        }
    } catch (const KorvenError& e) {
        visto << QString::number(e.numero()) << e.descripcion() + e.origen();
    }
    visto = Filas(ts, sql + QStringLiteral(" order by 1")) + visto;
    visto.removeAll(QString());
    QTEST(visto.join(QLatin1Char(' ')), "esperado");
    QCOMPARE(Dichos(ts), dichos.replaceInStrings(QStringLiteral("#"), separador));
}

QTEST_GUILESS_MAIN(TestProrrateo)
#include "test_prorrateo.moc"
