// The goods lines of an Operation repaired, checked and grouped; the regime flags; the merge of
// groups whose prices differ by a hair.
//
// The header's totals spread over groups and items, each case on both engines and under both
// decimal separators, with the figures worked out by hand beside it.
//
// The net kilos the clerk spreads by hand: the routines on their own, and the screen driven
// from the keyboard; each case on both engines and under both decimal separators ("#" in a text
// is the separator). Rows: groups as orden|kgneto|statistic qty|specific-duty qty, then items
// as id|totalkneto|statistic qty|specific-duty qty.

#include "FixtureArmado.h"
#include "assembly/AgrupacionSubItems.h"
#include "assembly/FrmProrKg.h"
#include "assembly/ProrrateoKilos.h"
#include "assembly/ProrrateoTotales.h"
#include "platform/KorvenError.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/Principal.h"

#include <QPushButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kKg = QStringLiteral("K-1");
const QString kG = QStringLiteral("groupsubitems:orden,id,fob,kgneto,estadistica,deresp,"
                                  "valorrelacionestadistica,valorderesp");
const QString kIt =
    QStringLiteral("\nitem:id,fobtotal,totalkneto,valorrelacionestadistica,valorderesp");

void Filas(const char* nombre, const QString& a, const QString& tablas, const QString& b,
           const QString& esperado, const QStringList& dichos) {
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
        for (const char* s : {",", "."})
            QTest::addRow("%s %s %s", nombre, m == Motor::SQLite ? "sqlite" : "postgresql", s)
                << static_cast<int>(m) << QString::fromLatin1(s) << a << tablas << b << esperado
                << dichos;
}

QString Estado(TestStores& ts) {
    return (Filas(ts, QStringLiteral("select orden, kgneto, valorrelacionestadistica, valorderesp "
                                     "from groupsubitems order by orden")) +
            Filas(ts, QStringLiteral("select id, totalkneto, valorrelacionestadistica, valorderesp "
                                     "from item order by id")))
        .join(QLatin1Char(' '));
}

} // namespace

class TestProrKg : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void prorratear_data();
    void prorratear();
};

// a: the routine, or F and the item of the screen (F0 the Operation); b: the kilos, or for the
// screen the text typed, the key, and the text the field is left with.
void TestProrKg::prorratear_data() {
    QTest::addColumn<int>("motor");
    for (const char* c : {"separador", "a", "tablas", "b", "esperado"})
        QTest::addColumn<QString>(c);
    QTest::addColumn<QStringList>("dichos");
    const QString g1 = kG + "|1,1,100,10,01,07,10,0|2,1,100,0,01,07,0,0|3,1,100,0,01,07,0,0|";
    // r = 110 - 10 = 100 over FOB 300: 33.33 x 3, the 0.01 short to the heaviest (2); the item
    // 400 x 100 / 300 = 133.33; item 2 untouched.
    Filas(
        "clase 1", "1",
        g1 + "4,1,100,0,01,07,0,0|5,2,50,0,01,07,0,0" + kIt + "|1,400,10,10,0|2,50,0,0,0", "110",
        "1|10|10|0 2|33.34|33.34|0 3|33.33|33.33|0 4|33.33|33.33|0 5|0|0|0 1|110|133.33|0 2|0|0|0",
        {});
    // r = 45 - 5 = 40 over FOB 400: 30 and 10 in both units; the item 500 x 40 / 400 = 50.
    Filas("clase 3", "2",
          kG + "|5,2,300,0,01,01,0,0|6,2,100,0,01,01,0,0|7,2,100,5,01,01,5,5|8,1,100,0,01,01,0,0" +
              kIt + "|1,100,0,0,0|2,500,5,5,5",
          "45", "5|30|30|30 6|10|10|10 7|5|5|5 8|0|0|0 1|0|0|0 2|45|50|50", {});
    Filas("igual a lo cargado", "1",
          kG + "|1,1,100,10.5,01,07,10.5,0|2,1,100,0,01,07,0,0" + kIt + "|1,200,10.5,10.5,0",
          "10.5", "1|10.5|10.5|0 2|0|0|0 1|10.5|10.5|0",
          {"KORVEN|0|Item: 1\n\nEl valor ingresado a Prorratear (10#5) es menor o igual\nal total "
           "de Kg ingresados en Subitem's (10#5)"});
    // Every line loaded: 20 replaces 12, 100 / 400 and 300 / 400 of it.
    Filas("clase 2 cargada", "3",
          kG + "|1,3,100,4,07,01,0,4|2,3,300,8,07,01,0,8" + kIt + "|3,400,12,0,12", "20",
          "1|5|0|5 2|15|0|15 3|20|0|20", {});
    Filas("sin unidades en kilos", "4", kG + "|1,4,100,0,07,07,0,0" + kIt + "|4,100,0,0,0", "5",
          "1|0|0|0 4|0|0|0", {"KORVEN|3|En los subitem's no se encontro campos para prorratear"});
    // Item 1: two empty lines take 0.01 each from line 1; item 2 has no line above 0.01.
    Filas("vacios", "vacios",
          kG +
              "|1,1,100,10,01,07,10,0|2,1,100,0,01,07,0,0|3,1,100,0,07,01,0,0|4,2,100,0.01,01,07,"
              "0.01,0|5,2,100,0,01,07,0,0" +
              kIt + "|1,0,0,0,0",
          "", "1|9.98|9.98|0 2|0.01|0.01|0 3|0.01|0|0.01 4|0.01|0.01|0 5|0|0|0 1|0|0|0", {});
    // r = 51 - 50 = 1 over FOB 3: 0.33 x 3; the 0.01 short goes to the heaviest line (1).
    Filas("operacion", "operacion",
          kG + "|1,1,1,50,01,07,50,0|2,1,1,0,01,07,0,0|3,1,1,0,01,07,0,0|4,1,1,0,01,07,0,0" + kIt +
              "|0,0,0,0,0|1,4,50,50,0",
          "51", "1|50.01|50.01|0 2|0.33|0.33|0 3|0.33|0.33|0 4|0.33|0.33|0 0|51|0|0 1|51|51|0", {});
    Filas("operacion cargada", "operacion",
          kG + "|1,1,1,5,01,07,5,0" + kIt + "|0,0,0,0,0|1,1,5,5,0", "10", "1|5|5|0 0|0|0|0 1|5|5|0",
          {"PRORRATEO DE KILOS NETO..|3|No hay registros para prorratear!\nSi necesita cambiar el "
           "kilo total\ndebe rearmar los item's, modifícando\nalgún valor de carátula."});
    // r = 110 - 10 over the FOB 300 of items 1-3: 33.33 each, the 0.01 short to item 1.
    Filas("items sin kilos", "cero",
          kG +
              "|1,1,100,0,01,07,0,0|2,2,100,0,01,07,0,0|3,3,100,0,01,07,0,0|4,4,100,10,01,07,10,0" +
              kIt + "|0,0,0,0,0|1,100,0,0,0|2,100,0,0,0|3,100,0,0,0|4,100,10,10,0",
          "110",
          "1|33.34|33.34|0 2|33.33|33.33|0 3|33.33|33.33|0 4|10|10|0 0|110|0|0 1|33.34|33.34|0 "
          "2|33.33|33.33|0 3|33.33|33.33|0 4|10|10|0",
          {});
    const QString t =
        kG + "|1,1,100,0,01,07,0,0|2,1,400,0,01,07,0,0" + kIt + "|0,0,0,0,0|1,500,0,0,0";
    const QString antes = QStringLiteral("1|0|0|0 2|0|0|0 0|0|0|0 1|0|0|0");
    // 12.5 over FOB 500: 2.5 and 10; the item 500 x 12.5 / 500.
    Filas("item con enter", "F1", t, "12#5 enter 12#50",
          "1|2.5|2.5|0 2|10|10|0 0|0|0|0 1|12.5|12.5|0", {});
    Filas("item no numerico", "F1", t, "x enter x", antes,
          {"KORVEN|0|El valor a prorratear debe ser numerico"});
    Filas("operacion en cero", "F0", t, "0 click 0", antes,
          {"KORVEN|0|Los valores deben ser mayores a cero"});
    Filas("operacion no numerica", "F0", t, "abc enter abc", antes,
          {"KORVEN|3|Debe ingresar un valor númerico"});
    // 20 over FOB 500: 4 and 16.
    Filas("pantalla", "F0", t, "20 click 20", "1|4|4|0 2|16|16|0 0|20|0|0 1|20|20|0", {});
    // The items' table gone after the lines took their shares: all of it is undone.
    Filas("error del almacen", "F0", t, "20 roto 20", antes,
          {"KORVEN|1|*- seccion [FrmArmaritem.Prorratear_ItemsEX] linea "});
}

void TestProrKg::prorratear() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, a);
    QFETCH(QString, tablas);
    QFETCH(QString, b);
    SeparadorDecimalScope sep(separador);
    TestStores ts(static_cast<Motor>(motor));
    PrepararArmado(ts);
    TablasOperacion(ts, kKg, tablas);
    if (a.startsWith(QLatin1Char('F'))) {
        const QStringList pasos = b.replace(QLatin1Char('#'), separador).split(QLatin1Char(' '));
        Conexion& c = ts.conexion(QStringLiteral("INTERNOS"));
        const bool roto = pasos[1] == QLatin1String("roto");
        if (roto)
            c.Ejecutar(QStringLiteral("alter table item rename to item_roto"));
        FrmProrKg f(ts.ctx(),
                    {{QStringLiteral("interno"), kKg}, {QStringLiteral("item"), a.mid(1)}});
        Mostrar(f);
        Escribir(pasos[0]);
        if (pasos[1] == QLatin1String("enter"))
            Tecla(Qt::Key_Return);
        else
            QTest::mouseClick(Control<QPushButton>(f, "CmdPror"), Qt::LeftButton);
        if (roto)
            c.Ejecutar(QStringLiteral("alter table item_roto rename to item"));
        QCOMPARE(Texto(&f, "TxtValor"), pasos[2]);
        QVERIFY(Control<QPushButton>(f, "CmdPror")->isEnabled());
        if (QTest::currentDataTag() == QByteArray("pantalla sqlite ,"))
            GuardarPantallazo(QStringLiteral("FrmProrKg"), &f);
        Tecla(Qt::Key_Escape);
        QVERIFY(!f.isVisible());
    } else {
        ProgresoArmado pb;
        CorridaArmado r(ts.ctx(), kKg, pb);
        ProrrateoKilos p(r);
        double kilos = EsNumero(b);
        if (a == QLatin1String("vacios"))
            p.Prorratear_ItemVacios();
        else if (a == QLatin1String("operacion"))
            p.Prorratear_ItemCeroEx(kilos);
        else if (a == QLatin1String("cero"))
            p.Prorratear_ItemCero(kilos);
        else
            p.Prorratear_ItemEx(a.toLongLong(), kilos);
    }
    QTEST(Estado(ts), "esperado");
    // The messages; "*" in one stands for the store's own text.
    QFETCH(QStringList, dichos);
    const QStringList vistos = Dichos(ts);
    QCOMPARE(vistos.size(), dichos.size());
    for (int i = 0; i < vistos.size(); ++i) {
        const QString d = dichos[i].replace(QLatin1Char('#'), separador);
        const QStringList partes = d.split(QLatin1Char('*'));
        if (partes.size() < 2 || !vistos[i].startsWith(partes.first()) ||
            !vistos[i].endsWith(partes.last()))
            QCOMPARE(vistos[i], d);
    }
}

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

namespace {

// A line of 0401.10.10.100X (no suffixes) of catalogue CAT.
const QString kBase = QStringLiteral("ncm=0401.10.10.100X;idunidad=07;"
                                     "valorrelacionestadistica=0;preciounitario=10;"
                                     "idcatalogo=CAT;otros=OTR;");

struct Progreso : ProgresoArmado {
    QStringList pasos;
    void BarraSufijos(int v, int m) override { pasos << QStringLiteral("%1/%2").arg(v).arg(m); }
};

struct Corrida {
    TestStores ts;
    Progreso progreso;
    std::unique_ptr<CorridaArmado> r;
    explicit Corrida(int motor) : ts(static_cast<Motor>(motor)) { PrepararArmado(ts); }
    CorridaArmado& run() {
        if (!r)
            r = std::make_unique<CorridaArmado>(ts.ctx(), QStringLiteral("A1"), progreso);
        return *r;
    }
    void Lineas(const QString& ls, const QString& base = {}) {
        korven::test::Lineas(ts, QStringLiteral("A1"), ls, base);
    }
};

// Groups: idsub|idarticulo|idcatalogo|cantidad|fob|valorrelacionestadistica|lapi|orden.
struct Agrupado {
    const char *n, *lineas;
    bool otros;
    const char *grupos, *idrel, *error;
};
struct Regimen {
    const char *n, *caratula, *flags, *sysflag, *aec;
};
// Groups: idsub|idarticulo|idcatalogo|preciounitario|cantidad|fob|kgneto|orden.
struct Duplicado {
    const char *n, *s, *p2, *canc, *grupos, *idrel, *error;
};

const char* kSinInsumos = "429|El componente SupplyLink.Main no está instalado.|";

} // namespace

Q_DECLARE_METATYPE(Agrupado)
Q_DECLARE_METATYPE(Regimen)
Q_DECLARE_METATYPE(Duplicado)

class TestAgrupacion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agrupar_data() {
        CasosPorMotor<Agrupado>({
            {"vacia", "", false, "", "", ""},
            {"una linea", "idarticulo=ART;cantidad=2;fob=20", false, "1|ART|CAT|2|20|0||1", "", ""},
            {"articulo de otros", "cantidad=2;fob=20", true, "1|OTR|CAT|2|20|0||1", "", ""},
            {"articulos distintos",
             "idarticulo=A;cantidad=2;fob=20 / idarticulo=B;cantidad=3;fob=30", false,
             "1|agrupado!|null|5|50|0||1", "1|2", ""},
            // 20 + 30.5 = 50.5 at the same unit price.
            {"fob distinto", "idarticulo=A;cantidad=2;fob=20 / idarticulo=A;cantidad=3;fob=30.5",
             false, "1|A|CAT|5|50.5|0||1", "1|2", ""},
            {"kilos", "cantidad=2;fob=20;kgneto=5;estadistica=01", false, "1||CAT|2|20|5||1", "",
             ""},
            {"unidad igual", "cantidad=2;fob=20;estadistica=07", false, "1||CAT|2|20|2||1", "", ""},
            {"lapi no pasa", "cantidad=2;fob=20;lapi=S", false, "1||CAT|2|20|0||1", "", ""},
            // Groups are numbered by their key: the price 10 comes before 20.
            {"orden por clave", "cantidad=1;fob=20;preciounitario=20 / cantidad=1;fob=10", false,
             "2||CAT|1|10|0||1 1||CAT|1|20|0||2", "", ""},
            // Both lines fit both groups: each takes the first loaded.
            {"enlace al primero", "itfiller=X;cantidad=2;idarticulo=A / itfiller=Y;cantidad=2",
             false, "1|A|CAT|2|null|0||1 1|A|CAT|2|null|0||2", "", ""},
            {"cancelacion", "cantidad=2;fob=20;cancelaciones=OK / cantidad=3;cancelaciones=OK",
             false, "null||null|5|20|0||1", "1|2", "go_SupplyLink.EnviarGrupoIdSub"},
        });
    }
    void agrupar() {
        MOTOR_O_SALTAR();
        QFETCH(Agrupado, c);
        Corrida k(motor);
        k.Lineas(c.lineas, kBase);
        // Another Operation's group of kilos without statistics is left alone; what a former
        // run left is cleared.
        Insertar(k.ts, "groupsubitems",
                 "interno=B1;orden=1;estadistica=01;kgneto=7;"
                 "valorrelacionestadistica=0");
        Insertar(k.ts, "groupsubitems", "interno=A1;orden=5;idsub=77");
        Insertar(k.ts, "idrel", "interno=A1;idroot=8;idsub=9;orden=1");
        k.run().FlgIdArtTOOtros = c.otros;
        AgrupacionSubItems a(k.run());
        a.Limpiar();
        a.Normalizar();
        QVERIFY(a.Validar());
        QCOMPARE(ErrorDe([&] { a.Agrupar(); }), *c.error ? kSinInsumos + QString(c.error) : "");
        QCOMPARE(Filas(k.ts, "select idsub, idarticulo, idcatalogo, cantidad, fob, "
                             "valorrelacionestadistica, lapi, orden from groupsubitems where "
                             "interno = 'A1' order by orden"),
                 Lista(c.grupos));
        QCOMPARE(Filas(k.ts, "select idroot, idsub from idrel where interno = 'A1' order by orden"),
                 Lista(c.idrel));
        QCOMPARE(Filas(k.ts, "select valorrelacionestadistica from groupsubitems where interno = "
                             "'B1'"),
                 QStringList{"0"});
        QVERIFY(k.ts.dialogos().todo().isEmpty());
    }

    void normalizar_data() { FilasDeMotores(); }
    void normalizar() {
        MOTOR_O_SALTAR();
        Corrida k(motor);
        k.Lineas("sufijos=AB;tipoitem= / sufijos=SIN SUFIJOS / tipoitem=D / sufijos=AA(1)-");
        Linea(k.ts, "B1", 1, "sufijos=AB");
        AgrupacionSubItems(k.run()).Normalizar();
        QCOMPARE(Filas(k.ts, "select interno, id, sufijos, tipoitem, idpais, valorderesp, "
                             "insumostemp from subitems order by interno, id"),
                 Lista("A1|1|AB-|N||0|0 A1|2||N||0|0 A1|3||D||0|0 A1|4|AA(1)-|N||0|0 "
                       "B1|1|AB|null|null|null|null"));
    }

    void validar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("s");
        for (const char* s : {",", "."})
            for (int m : {0, 1})
                QTest::addRow("%d %s", m, s) << m << QString::fromLatin1(s);
    }
    void validar() {
        MOTOR_O_SALTAR();
        QFETCH(QString, s);
        SeparadorDecimalScope sep(s);
        Corrida k(motor);
        k.Lineas(kBase + "cantidad=1;fob=10 / ncm=9999.99.99.999Z;cantidad=2;preciounitario=10.5;"
                         "fob=21 / ncm=0201.10.00.100G;cantidad=1.5;preciounitario=3.335;fob=5;"
                         "sufijos=AA(X)-");
        AgrupacionSubItems a(k.run());
        QVERIFY(!a.Validar());
        // 3.335 shows as 03,34: half away from zero.
        const QString esperado =
            "Se han encontrado subitem's inválidos\n-------------------------------------\n\n"
            "       Posición   Cantidad   Unitario        FOB\n"
            "--------------- ---------- ---------- ---------- \n"
            "9999.99.99.999Z      02" +
            s + "00      10" + s + "50      21" + s +
            "00 - \n"
            "Error: POSICIÓN INVALIDA\n\n"
            "0201.10.00.100G      01" +
            s + "50      03" + s + "34      05" + s +
            "00 - AA(X)-\n"
            "Error: SUFIJO INVÁLIDOS\n\n";
        QCOMPARE(k.ts.dialogos().mensajes(), QStringList{esperado});
        QCOMPARE(k.ts.dialogos().registro().first().titulo, QStringLiteral("Resultados"));
        QCOMPARE(k.progreso.pasos, Lista("1/3 2/3 3/3"));
        QCOMPARE(k.ts.ctx().ArmadoResultado, QStringLiteral("No"));
        QVERIFY(k.run().terminada);
    }

    void regimen_data() {
        CasosPorMotor<Regimen>({
            {"temporal 1439", "idsubreg=IT01;motivodestsuspensiva=DTO.1439/96", "SNNNN",
             "1439/96|S|0", "N"},
            {"temporal A7", "idsubreg=ETE2;motivodestsuspensiva= D1330/04-A7 ", "NNNSN",
             "D1330/04A7|S|0", "N"},
            {"no temporal", "idsubreg=EC01;motivodestsuspensiva=DTO.1439/96", "NNNNN",
             "1439/96|N|0 1439/96A1|N|0", "N"},
            {"consumo IC", "idsubreg=ic04", "NNNNN", "1439/96|N|0 1439/96A1|N|0", "-"},
            {"sin caratula", "", "SSSSS", "", "-"},
        });
    }
    void regimen() {
        MOTOR_O_SALTAR();
        QFETCH(Regimen, c);
        Corrida k(motor);
        if (*c.caratula)
            Caratula(k.ts, "A1", c.caratula);
        AppContext& x = k.ts.ctx();
        QString* flags[] = {&x.FlagDto1439, &x.FlagDto1439A1, &x.FlagD1330A6, &x.FlagD1330A7,
                            &x.FlagD1330A8};
        for (QString* f : flags)
            *f = "S";
        AgrupacionSubItems(k.run()).MarcarRegimen();
        QString obtenidos;
        for (QString* f : flags)
            obtenidos += *f;
        QCOMPARE(obtenidos, QString(c.flags));
        QCOMPARE(Filas(k.ts, "select flag, valor, item from sysflag where interno = 'A1' order by "
                             "orden"),
                 Lista(c.sysflag));
        QCOMPARE(k.ts.settings().GetSetting("KORVEN", "AEC", "A1", "-"), QString(c.aec));
    }

    void duplicados_data() {
        // (10 + 10.0002) / 2 = 10.0001; the second group then finds the merged one alone and
        // writes it again, last.
        const char* uno = "1|agrupado!|agrupado!|10.0001|2|20.0002|4|4";
        CasosPorMotor<Duplicado>({
            {"10.0002 coma", ",", "10.0002", "", uno, "1|2", ""},
            {"10.0002 punto", ".", "10.0002", "", uno, "1|2", ""},
            {"10.0004", ",", "10.0004", "", "1|A|C|10|1|10|2|3 2|B|C|10.0004|1|10.0004|2|4", "",
             ""},
            {"cancelacion", ".", "10.0002", "OK", "1|A|C|10|1|10|2|1 2|B|C|10.0002|1|10.0002|2|2",
             "1|2", "Sección [KORVEN.frmArmarItem.lp_BuscarDuplicados]"},
        });
    }
    void duplicados() {
        MOTOR_O_SALTAR();
        QFETCH(Duplicado, c);
        SeparadorDecimalScope sep(c.s);
        Corrida k(motor);
        const QString comun =
            QStringLiteral("interno=A1;ncm=0401.10.10.100X;idpais=203;idpaisproc=203;sufijos=;"
                           "idunidad=07;estadomerc=1;biendeuso=N;estadistica=01;deresp=;lapi=;"
                           "itfiller=;codigoean=;tipoitem=N;onccacategoria=;onccacortes=;"
                           "cantidad=1;valorrelacionestadistica=0;valorderesp=0;kgneto=2;"
                           "kgbruto=3;insumostemp=0;insumosacons=0;idcatalogo=C;cancelaciones=") +
            c.canc;
        Insertar(k.ts, "groupsubitems",
                 comun + ";idsub=1;orden=1;preciounitario=10;fob=10;idarticulo=A");
        Insertar(k.ts, "groupsubitems",
                 comun + ";idsub=2;orden=2;idarticulo=B;preciounitario=" + c.p2 + ";fob=" + c.p2);
        QCOMPARE(ErrorDe([&] { AgrupacionSubItems(k.run()).BuscarDuplicados(); }),
                 *c.error ? kSinInsumos + QString::fromUtf8(c.error) : "");
        QCOMPARE(Filas(k.ts, "select idsub, idarticulo, idcatalogo, preciounitario, cantidad, "
                             "fob, kgneto, orden from groupsubitems order by orden"),
                 Lista(c.grupos));
        QCOMPARE(Filas(k.ts, "select idroot, idsub from idrel order by orden"), Lista(c.idrel));
    }
};

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestProrKg, TestProrrateo, TestAgrupacion>(argc, argv);
}

#include "test_agrupacion.moc"
