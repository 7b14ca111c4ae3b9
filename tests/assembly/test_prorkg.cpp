// The net kilos the clerk spreads by hand: the routines on their own, and the screen driven
// from the keyboard; each case on both engines and under both decimal separators ("#" in a text
// is the separator). Rows: groups as orden|kgneto|statistic qty|specific-duty qty, then items
// as id|totalkneto|statistic qty|specific-duty qty.

#include "FixtureArmado.h"
#include "assembly/FrmProrKg.h"
#include "assembly/ProrrateoKilos.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QPushButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kI = QStringLiteral("K-1");
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
    TablasOperacion(ts, kI, tablas);
    if (a.startsWith(QLatin1Char('F'))) {
        const QStringList pasos = b.replace(QLatin1Char('#'), separador).split(QLatin1Char(' '));
        Conexion& c = ts.conexion(QStringLiteral("INTERNOS"));
        const bool roto = pasos[1] == QLatin1String("roto");
        if (roto)
            c.Ejecutar(QStringLiteral("alter table item rename to item_roto"));
        FrmProrKg f(ts.ctx(),
                    {{QStringLiteral("interno"), kI}, {QStringLiteral("item"), a.mid(1)}});
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
        CorridaArmado r(ts.ctx(), kI, pb);
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

QTEST_MAIN(TestProrKg)
#include "test_prorkg.moc"
