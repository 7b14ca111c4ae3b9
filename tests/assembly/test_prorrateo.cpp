// The header's totals spread over the groups and items, on both engines and under both decimal
// separators: the FOB by one value and by codes, the common data and gross kilos, the
// external-trade amount and the net kilos. Every figure is worked out by hand beside its case.

#include "FixtureArmado.h"
#include "assembly/ProrrateoTotales.h"
#include "platform/KorvenError.h"

#include <QtTest>
#include <optional>

using namespace korven;
using namespace korven::test;

namespace {

const QString kI = QStringLiteral("P-1");

// Rows of the Operation, one table a line: "tabla:col,col|val,val|val,val".
void Tablas(TestStores& ts, const QString& datos) {
    for (const QString& t : datos.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const int dos = static_cast<int>(t.indexOf(QLatin1Char(':')));
        QStringList filas = t.mid(dos + 1).split(QLatin1Char('|'));
        const QStringList cols = filas.takeFirst().split(QLatin1Char(','));
        for (const QString& f : filas) {
            const QStringList v = f.split(QLatin1Char(','));
            QString pares = QStringLiteral("interno=") + kI;
            for (int i = 0; i < cols.size(); ++i)
                pares += QLatin1Char(';') + cols[i] + QLatin1Char('=') + v[i];
            Insertar(ts, t.left(dos), pares);
        }
    }
}

struct Barras : ProgresoArmado {
    QList<int> v;
    void Barra(int x, int) override { v << x; }
};

// One Operation ready to prorate: header, rows, and the run with its header read.
struct Armado {
    TestStores ts;
    Barras pb;
    std::optional<CorridaArmado> r;
    Armado(int motor, const QString& car, const QString& tablas) : ts(static_cast<Motor>(motor)) {
        PrepararArmado(ts);
        Caratula(ts, kI, car);
        Tablas(ts, tablas);
        r.emplace(ts.ctx(), kI, pb);
        r->LeerCaratula();
    }
    // Every message as "title|icon|text".
    QStringList dichos() {
        QStringList l;
        for (const auto& m : ts.dialogos().registro())
            l << m.titulo + QLatin1Char('|') + QString::number(static_cast<int>(m.icono)) +
                     QLatin1Char('|') + m.texto;
        return l;
    }
};

// Columns motor and separador, then the case's own; each case under both engines and both
// separators. In expected messages "#" stands for the decimal separator.
template <typename F> void Casos(const char* caso, F resto) {
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
        for (const char* s : {",", "."})
            resto(QTest::addRow("%s %s %s", caso, m == Motor::SQLite ? "sqlite" : "postgresql", s)
                  << static_cast<int>(m) << QString::fromLatin1(s));
}

QStringList ConSeparador(QStringList l, const QString& sep) {
    for (QString& s : l)
        s.replace(QLatin1Char('#'), sep);
    return l;
}

void Columnas(std::initializer_list<const char*> cols) {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    for (const char* c : cols)
        QTest::addColumn<QString>(c);
}

} // namespace

class TestProrrateo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void fob_data();
    void fob();
    void comunesYBrutos_data();
    void comunesYBrutos();
    void comExt_data();
    void comExt();
    void kilosNetos_data();
    void kilosNetos();
};

void TestProrrateo::fob_data() {
    Columnas({"caratula", "tablas"});
    QTest::addColumn<double>("total");
    QTest::addColumn<QStringList>("filas");
    QTest::addColumn<QStringList>("dichos");
    const QString g = QStringLiteral("groupsubitems:orden,idsub,fob,cantidad");
    // 1000 + 1000 x 100 / 1000 = 1100; 1100 / 10 = 110.
    Casos("un valor", [&](QTestData& d) {
        d << "fobdivisas=1000;valoraprorratear=100" << g + "|1,1,1000,10" << 1100.0
          << QStringList{"1|1100|110"} << QStringList{};
    });
    // 100 + 100 x 100 / 300 = 133.33 three times, 399.99: the 0.01 goes to the last group with
    // a FOB above it (orden 3, not the empty 4): 133.34 / 4 = 33.335.
    Casos("resto", [&](QTestData& d) {
        d << "fobdivisas=300;valoraprorratear=100" << g + "|1,1,100,1|2,2,100,2|3,3,100,4|4,4,0,1"
          << 400.0 << QStringList{"1|133.33|133.33", "2|133.33|66.665", "3|133.34|33.335", "4|0|0"}
          << QStringList{};
    });
    // One line number, FOB 100 and 200: both take 200 + 20 = 220, total 440; the -110 goes to
    // the last group above 110: 110, 110 / 2 = 55.
    Casos("mismo idsub", [&](QTestData& d) {
        d << "fobdivisas=300;valoraprorratear=30" << g + "|1,1,100,1|2,1,200,2" << 330.0
          << QStringList{"1|220|220", "2|110|55"} << QStringList{};
    });
    // A 300 over 100 and 200: 200 and 400 (the 200 is not prorated twice). B 10 over three 100:
    // 103.3333 each. Rounded total 1909.99 against 1600 + 310: the 400 of the largest FOB takes
    // 0.01. The line without a code keeps its FOB.
    Casos("codigos", [&](QTestData& d) {
        d << "fobdivisas=1600"
          << "prorrateo:codigo,descripcion,valor|A,UNO,300|B,DOS,10\n" + g +
                 ",codprorrateo|1,1,100,1,A|2,2,200,1,A|3,3,100,1,B|4,4,100,2,B|5,5,100,4,B|6,6,"
                 "1000,1,"
          << 1910.0
          << QStringList{"1|200|200",          "2|400.01|400.01",    "3|103.3333|103.3333",
                         "4|103.3333|51.6667", "5|103.3333|25.8333", "6|1000|null"}
          << QStringList{};
    });
    const QString raya(64, QLatin1Char('-'));
    Casos("codigo sin usar", [&](QTestData& d) {
        d << "fobdivisas=150"
          << "prorrateo:codigo,descripcion,valor|A,UNO,5|Z, ZETA ,5\n" + g +
                 ",codprorrateo|1,1,100,1,A\n" + g + "|2,2,50,1"
          << 0.0 << QStringList{"1|100|null", "2|50|null"}
          << QStringList{"KORVEN|3|" + raya +
                         "\nSe encontraron CODIGOS DE PRORRATEOS sin utilizar\nNo se puede "
                         "continuar con el armado.\n" +
                         raya + "\nZ - ZETA\n"};
    });
}

void TestProrrateo::fob() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, caratula);
    QFETCH(QString, tablas);
    QFETCH(QStringList, dichos);
    SeparadorDecimalScope sep(separador);
    Armado a(motor, caratula, tablas);
    const bool ok = ProrrateoTotales(*a.r).ProrratearFob();
    QCOMPARE(ok, dichos.isEmpty());
    QCOMPARE(a.r->terminada, !ok);
    QCOMPARE(a.ts.ctx().ArmadoResultado, ok ? QString() : QStringLiteral("NO"));
    QTEST(a.r->TotalFobOperacion, "total");
    QTEST(Filas(a.ts, "select orden, fob, preciounitario from groupsubitems order by orden"),
          "filas");
    QCOMPARE(a.dichos(), dichos);
}

void TestProrrateo::comunesYBrutos_data() {
    Columnas({"caratula", "tablas"});
    QTest::addColumn<QStringList>("filas");
    QTest::addColumn<QStringList>("dichos");
    const QString g = QStringLiteral("groupsubitems:orden,idsub,kgbruto,estadomerc,idpais,"
                                     "onccacategoria,codprorrateo");
    // State only where empty, country on every group, ONCCA where empty; 10.5 + 4.25 = 14.75.
    Casos("todos con bruto", [&](QTestData& d) {
        d << "bulpes=77;dcestmerc=NU;dcforzarestmerc=N;dcpaisorigen=200;dcforzarpaisorigen=S;"
             "onccacategoria=C1"
          << g + "|1,1,10.5,US,300,X,A|2,2,4.25,,,,B"
          << QStringList{"1|US|200|X||", "2|NU|200|C1||", "14.75"} << QStringList{};
    });
    Casos("todos sin bruto", [&](QTestData& d) {
        d << "bulpes=77;dcestmerc=NU;dcforzarestmerc=S" << g + "|1,1,0,US,300,X,A|2,2,0,,,,B"
          << QStringList{"1|NU|300|X||", "2|NU||||", "0"} << QStringList{};
    });
    Casos("algunos sin bruto", [&](QTestData& d) {
        d << "bulpes=77" << g + "|1,1,5,US,300,X,A|2,2,0,,,,B"
          << QStringList{"1|US|300|X||", "2|||||", "77"}
          << QStringList{"KG BRUTOS (BULTOS)|4|Hay Subitem's que no tiene ingresado el KG "
                         "Bruto.\n\nPor favor verifique los mismos en la opcion CARGA DE "
                         "SUBITEMS"};
    });
}

void TestProrrateo::comunesYBrutos() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, caratula);
    QFETCH(QString, tablas);
    SeparadorDecimalScope sep(separador);
    Armado a(motor, caratula, tablas);
    ProrrateoTotales p(*a.r);
    p.DatosComunes();
    p.KilosBrutos();
    QTEST(Filas(a.ts, "select orden, estadomerc, idpais, onccacategoria, onccacortes, "
                      "codprorrateo from groupsubitems order by orden") +
              Filas(a.ts, "select bulpes from caratula"),
          "filas");
    QTEST(a.dichos(), "dichos");
}

void TestProrrateo::comExt_data() {
    Columnas({"items", "error"});
    QTest::addColumn<double>("comext");
    QTest::addColumn<double>("fobtotal");
    QTest::addColumn<QStringList>("filas");
    const QString it = QStringLiteral("item:id,fobtotal,itcomext|0,0,0|");
    // 100 x 100 / 300 = 33.33 three times, 99.99: the smallest (first by id) takes 0.01.
    Casos("igual", [&](QTestData& d) {
        d << it + "1,100,0|2,100,0|3,100,0"
          << "" << 100.0 << 300.0 << QStringList{"0|100", "1|33.34", "2|33.33", "3|33.33"};
    });
    // 1/6 = 0.17, 0.17, 4/6 = 0.67: 1.01, the largest gives 0.01 back.
    Casos("excedente", [&](QTestData& d) {
        d << it + "1,1,0|2,1,0|3,4,0"
          << "" << 1.0 << 6.0 << QStringList{"0|1", "1|0.17", "2|0.17", "3|0.66"};
    });
    // 2/6 = 0.33, 0.33, 8/6 = 1.33: 1.99, the smallest takes 0.01.
    Casos("faltante", [&](QTestData& d) {
        d << it + "1,1,0|2,1,0|3,4,0"
          << "" << 2.0 << 6.0 << QStringList{"0|2", "1|0.34", "2|0.33", "3|1.33"};
    });
    Casos("sin fob", [&](QTestData& d) {
        d << it + "1,1,0"
          << "11|División por cero|- seccion [korven.frmarmaritem.ProrratearComExt]" << 1.0 << 0.0
          << QStringList{"0|0", "1|0"};
    });
}

void TestProrrateo::comExt() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, items);
    QFETCH(QString, error);
    QFETCH(double, comext);
    QFETCH(double, fobtotal);
    SeparadorDecimalScope sep(separador);
    Armado a(motor, QString(), items);
    QString visto;
    try {
        ProrrateoTotales(*a.r).ProrratearComExt(comext, fobtotal);
    } catch (const KorvenError& e) {
        visto = QString::number(e.numero()) + "|" + e.descripcion() + "|" + e.origen();
    }
    QCOMPARE(visto, error);
    QTEST(Filas(a.ts, "select id, itcomext from item order by id"), "filas");
}

void TestProrrateo::kilosNetos_data() {
    Columnas({"tablas"});
    QTest::addColumn<double>("kilos");
    QTest::addColumn<QStringList>("grupos");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QStringList>("dichos");
    const QString g = QStringLiteral("groupsubitems:orden,id,idsub,fob,kgneto,estadistica,deresp");
    const QString it = QStringLiteral(
        "\nitem:id,totalkneto,valorrelacionestadistica,valorderesp|0,0,0,0|1,0,0,0|2,0,5,6");
    const QStringList sinItems{"0|0|0|0", "1|0|0|0", "2|0|5|6"};
    // 120 - 20 = 100 over FOB 1000.04: 99.996 gives 100.00, 0.0039998 gives 0.00; that one
    // takes 0.01 from the heaviest marked line: 99.99. Item 1 has 100 in kilos units.
    Casos("cuota en cero", [&](QTestData& d) {
        d << g + "|1,1,1,1000,0,01,01|2,1,2,0.04,0,01,01|3,2,3,500,20,07,02" + it << 120.0
          << QStringList{"1|99.99|*|99.99|99.99", "2|0.01|*|0.01|0.01", "3|20||null|null"}
          << QStringList{"0|120|0|0", "1|100|100|100", "2|20|5|6"} << QStringList{};
    });
    // 100 / 3 = 33.33 three times, 99.99: the first of the heaviest takes 0.01.
    Casos("ajuste", [&](QTestData& d) {
        d << g + "|1,1,1,1,0,07,02|2,2,2,1,0,07,02|3,2,3,1,0,07,02" + it << 100.0
          << QStringList{"1|33.34|*|null|null", "2|33.33|*|null|null", "3|33.33|*|null|null"}
          << QStringList{"0|100|0|0", "1|33.34|0|0", "2|66.66|5|6"} << QStringList{};
    });
    // Kilos equal to the sum: nothing to share, the empty line takes 0.01 from the 10.
    Casos("sin resto", [&](QTestData& d) {
        d << g + "|1,1,1,100,10,07,02|2,2,2,50,0,07,02" + it << 10.0
          << QStringList{"1|9.99||null|null", "2|0.01|*|null|null"}
          << QStringList{"0|10|0|0", "1|9.99|0|0", "2|0.01|5|6"} << QStringList{};
    });
    // Three empty lines need 0.03; the two of 0.02 give 0.01 each and nothing is left.
    Casos("nadie cede", [&](QTestData& d) {
        d << g + "|1,1,1,1,0.02,,|2,1,2,1,0.02,,|3,1,3,1,0,,|4,1,4,1,0,,|5,1,5,1,0,," + it << 0.04
          << QStringList{"1|0.01||null|null", "2|0.01||null|null", "3|0|*|null|null",
                         "4|0|*|null|null", "5|0|*|null|null"}
          << sinItems
          << QStringList{"KORVEN|1|3021 - No quedan subitems con kilos mayor a 0#01 para ceder "
                         "0#01 - seccion [FrmArmaritem.Prorratear_ItemsEX] linea "};
    });
    Casos("menos que lo cargado", [&](QTestData& d) {
        d << g + "|1,1,1,1,20.25,,|2,1,2,1,0,," + it << 10.5
          << QStringList{"1|20.25|null|null|null", "2|0|null|null|null"} << sinItems
          << QStringList{"KORVEN|0|El kilo a prorratear (10#5) debe ser mayor a 20#25"};
    });
    Casos("todos cargados", [&](QTestData& d) {
        d << g + "|1,1,1,1,5,," + it << 10.0 << QStringList{"1|5||null|null"} << sinItems
          << QStringList{"PRORRATEO DE KILOS NETO..|3|No hay registros para prorratear!\nya que "
                         "todos los articulos tienen cargado kilo neto.\nSi desea prorratear "
                         "debe poner los kilos en 0 (cero)\nEn Carga de Subitems"};
    });
    // 0.02 / 3 = 0.0067 gives 0.01 three times: 0.03, and no line above 0.01 can give it back.
    Casos("no redondea", [&](QTestData& d) {
        d << g + "|1,1,1,1,0,,|2,1,2,1,0,,|3,1,3,1,0,," + it << 0.02
          << QStringList{"1|0.01|*|null|null", "2|0.01|*|null|null", "3|0.01|*|null|null"}
          << sinItems
          << QStringList{"KORVEN|3|Error al redondear prorrateo, no se encontro subitems con "
                         "kilos mayor a 0#01\nNo se puede continuar.."};
    });
}

void TestProrrateo::kilosNetos() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, tablas);
    QFETCH(double, kilos);
    QFETCH(QStringList, dichos);
    SeparadorDecimalScope sep(separador);
    Armado a(motor, QString(), tablas);
    ProrrateoTotales(*a.r).Prorratear_ItemCeroEx(kilos);
    QTEST(Filas(a.ts, "select orden, kgneto, flgkg, valorrelacionestadistica, valorderesp from "
                      "groupsubitems order by orden"),
          "grupos");
    QTEST(Filas(a.ts, "select id, totalkneto, valorrelacionestadistica, valorderesp from item "
                      "order by id"),
          "items");
    QCOMPARE(a.dichos(), ConSeparador(dichos, separador));
    if (dichos.isEmpty())
        QCOMPARE(a.pb.v, (QList<int>{0, 10, 20, 30, 40, 50, 70, 80}));
}

QTEST_GUILESS_MAIN(TestProrrateo)
#include "test_prorrateo.moc"
