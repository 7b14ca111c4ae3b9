// The goods lines of an Operation repaired, checked and grouped; the regime flags; the merge of
// groups whose prices differ by a hair.

#include "FixtureArmado.h"
#include "assembly/AgrupacionSubItems.h"
#include "platform/KorvenError.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

// A line of 0401.10.10.100X (no suffixes), kilo statistics, article ART of catalogue CAT.
const QString kBase = QStringLiteral("ncm=0401.10.10.100X;idunidad=07;estadistica=01;"
                                     "valorrelacionestadistica=0;kgneto=0;preciounitario=10;"
                                     "idarticulo=ART;idcatalogo=CAT;otros=OTR;");

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
    void Lineas(const QStringList& ls, const QString& interno = QStringLiteral("A1")) {
        for (int i = 0; i < ls.size(); ++i) {
            // A column named twice takes its last value.
            QMap<QString, QString> m;
            for (const QString& p : ls[i].split(';', Qt::SkipEmptyParts))
                m[p.section('=', 0, 0)] = p.section('=', 1);
            QString pares;
            for (auto it = m.cbegin(); it != m.cend(); ++it)
                pares += it.key() + '=' + it.value() + ';';
            Linea(ts, interno, i + 1, pares);
        }
    }
};

void PorMotor(const char* nombre, const std::function<void(QTestData&)>& resto) {
    for (int m : {static_cast<int>(Motor::SQLite), static_cast<int>(Motor::PostgreSQL)})
        resto(QTest::addRow("%s %s", m == 0 ? "sqlite" : "postgresql", nombre) << m);
}

} // namespace

class TestAgrupacion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agrupar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QStringList>("lineas");
        QTest::addColumn<bool>("otros");
        QTest::addColumn<QStringList>(
            "grupos"); // idsub|idarticulo|idcatalogo|cantidad|fob|vre|lapi|orden
        QTest::addColumn<QStringList>("idrel");
        QTest::addColumn<QString>("error");
        const QString b = kBase;
        const QList<std::tuple<const char*, QStringList, bool, QStringList, QStringList, QString>>
            casos{
                {"vacia", {}, false, {}, {}, ""},
                {"una linea", {b + "cantidad=2;fob=20"}, false, {"1|ART|CAT|2|20|0||1"}, {}, ""},
                {"articulo de otros",
                 {b + "cantidad=2;fob=20"},
                 true,
                 {"1|OTR|CAT|2|20|0||1"},
                 {},
                 ""},
                {"articulos distintos",
                 {b + "cantidad=2;fob=20", b + "cantidad=3;fob=30;idarticulo=ART2"},
                 false,
                 {"1|agrupado!|null|5|50|0||1"},
                 {"1|2"},
                 ""},
                // 20 + 30.5 = 50.5 at the same unit price.
                {"fob distinto",
                 {b + "cantidad=2;fob=20", b + "cantidad=3;fob=30.5"},
                 false,
                 {"1|ART|CAT|5|50.5|0||1"},
                 {"1|2"},
                 ""},
                {"kilos en estadistica 01",
                 {b + "cantidad=2;fob=20;kgneto=5"},
                 false,
                 {"1|ART|CAT|2|20|5||1"},
                 {},
                 ""},
                {"unidad estadistica igual",
                 {b + "cantidad=2;fob=20;estadistica=07"},
                 false,
                 {"1|ART|CAT|2|20|2||1"},
                 {},
                 ""},
                {"lapi no pasa",
                 {b + "cantidad=2;fob=20;lapi=S"},
                 false,
                 {"1|ART|CAT|2|20|0||1"},
                 {},
                 ""},
                // Groups are numbered by their key: the price 10 comes before 20.
                {"orden por clave",
                 {b + "cantidad=1;fob=20;preciounitario=20", b + "cantidad=1;fob=10"},
                 false,
                 {"2|ART|CAT|1|10|0||1", "1|ART|CAT|1|20|0||2"},
                 {},
                 ""},
                {"cancelacion sin insumos",
                 {b + "cantidad=2;fob=20;cancelaciones=OK",
                  b + "cantidad=3;fob=30;cancelaciones=OK"},
                 false,
                 {"null||null|5|50|0||1"},
                 {"1|2"},
                 "429|El componente SupplyLink.Main no está "
                 "instalado.|go_SupplyLink.EnviarGrupoIdSub"},
            };
        for (const auto& [n, l, o, g, i, e] : casos)
            PorMotor(n, [&](QTestData& d) { d << l << o << g << i << QString(e); });
    }
    void agrupar() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, lineas);
        QFETCH(bool, otros);
        QFETCH(QStringList, grupos);
        QFETCH(QStringList, idrel);
        QFETCH(QString, error);
        Corrida k(motor);
        k.Lineas(lineas);
        // Another Operation's group in kilos without statistics is not touched.
        Insertar(k.ts, "groupsubitems",
                 "interno=B1;orden=1;estadistica=01;kgneto=7;"
                 "valorrelacionestadistica=0");
        // What a former run left is cleared first.
        Insertar(k.ts, "idrel", "interno=A1;idroot=8;idsub=9;orden=1");
        Insertar(k.ts, "groupsubitems", "interno=A1;orden=5;idsub=77");
        CorridaArmado& r = k.run();
        r.FlgIdArtTOOtros = otros;
        AgrupacionSubItems a(r);
        a.Limpiar();
        a.Normalizar();
        QVERIFY(a.Validar());
        QString obtenido;
        try {
            a.Agrupar();
        } catch (const KorvenError& e) {
            obtenido = QStringLiteral("%1|%2|%3").arg(e.numero()).arg(e.descripcion(), e.origen());
        }
        QCOMPARE(obtenido, error);
        QCOMPARE(Filas(k.ts, "select idsub, idarticulo, idcatalogo, cantidad, fob, "
                             "valorrelacionestadistica, lapi, orden from groupsubitems where "
                             "interno = 'A1' order by orden"),
                 grupos);
        QCOMPARE(Filas(k.ts, "select idroot, idsub from idrel where interno = 'A1' order by orden"),
                 idrel);
        QCOMPARE(Filas(k.ts, "select valorrelacionestadistica from groupsubitems where interno = "
                             "'B1'"),
                 QStringList{"0"});
        QVERIFY(k.ts.dialogos().todo().isEmpty());
    }

    void normalizar_data() { FilasDeMotores(); }
    void normalizar() {
        MOTOR_O_SALTAR();
        Corrida k(motor);
        k.Lineas({"sufijos=AB;tipoitem=", "sufijos=SIN SUFIJOS", "tipoitem=D", "sufijos=AA(1)-"});
        k.Lineas({"sufijos=AB"}, "B1");
        AgrupacionSubItems(k.run()).Normalizar();
        QCOMPARE(Filas(k.ts, "select interno, id, sufijos, tipoitem, idpais, valorderesp, "
                             "insumostemp from subitems order by interno, id"),
                 (QStringList{"A1|1|AB-|N||0|0", "A1|2||N||0|0", "A1|3||D||0|0",
                              "A1|4|AA(1)-|N||0|0", "B1|1|AB|null|null|null|null"}));
    }

    void validar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("separador");
        for (const char* s : {",", "."})
            PorMotor(s, [&](QTestData& d) { d << QString::fromLatin1(s); });
    }
    void validar() {
        MOTOR_O_SALTAR();
        QFETCH(QString, separador);
        SeparadorDecimalScope sep(separador);
        Corrida k(motor);
        k.Lineas({kBase + "cantidad=1;fob=10",
                  "ncm=9999.99.99.999Z;cantidad=2;preciounitario=10.5;fob=21",
                  "ncm=0201.10.00.100G;cantidad=1.5;preciounitario=3.335;fob=5;sufijos=AA(X)-"});
        AgrupacionSubItems a(k.run());
        QVERIFY(!a.Validar());
        const QString s = separador;
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
        QCOMPARE(k.progreso.pasos, (QStringList{"1/3", "2/3", "3/3"}));
        QCOMPARE(k.ts.ctx().ArmadoResultado, QStringLiteral("No"));
        QVERIFY(k.run().terminada);
    }

    void regimen_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("caratula");
        QTest::addColumn<QString>("flags");
        QTest::addColumn<QStringList>("sysflag");
        QTest::addColumn<QString>("aec");
        const QList<std::tuple<const char*, QString, QString, QStringList, QString>> casos{
            {"temporal 1439",
             "idsubreg=IT01;motivodestsuspensiva=DTO.1439/96",
             "SNNNN",
             {"1439/96|S|0"},
             "N"},
            {"temporal A7",
             "idsubreg=ETE2;motivodestsuspensiva= D1330/04-A7 ",
             "NNNSN",
             {"D1330/04A7|S|0"},
             "N"},
            {"no temporal",
             "idsubreg=EC01;motivodestsuspensiva=DTO.1439/96",
             "NNNNN",
             {"1439/96|N|0", "1439/96A1|N|0"},
             "N"},
            {"consumo IC", "idsubreg=ic04", "NNNNN", {"1439/96|N|0", "1439/96A1|N|0"}, "-"},
            {"sin caratula", "", "SSSSS", {}, "-"},
        };
        for (const auto& [n, c, f, s, a] : casos)
            PorMotor(n, [&](QTestData& d) { d << c << f << s << a; });
    }
    void regimen() {
        MOTOR_O_SALTAR();
        QFETCH(QString, caratula);
        QFETCH(QString, flags);
        QFETCH(QStringList, sysflag);
        QFETCH(QString, aec);
        Corrida k(motor);
        if (!caratula.isEmpty())
            Caratula(k.ts, "A1", caratula);
        AppContext& c = k.ts.ctx();
        for (QString* f :
             {&c.FlagDto1439, &c.FlagDto1439A1, &c.FlagD1330A6, &c.FlagD1330A7, &c.FlagD1330A8})
            *f = "S";
        AgrupacionSubItems(k.run()).MarcarRegimen();
        QCOMPARE(c.FlagDto1439 + c.FlagDto1439A1 + c.FlagD1330A6 + c.FlagD1330A7 + c.FlagD1330A8,
                 flags);
        QCOMPARE(Filas(k.ts, "select flag, valor, item from sysflag where interno = 'A1' order by "
                             "orden"),
                 sysflag);
        QCOMPARE(k.ts.settings().GetSetting("KORVEN", "AEC", "A1", "-"), aec);
    }

    void duplicados_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QString>("precio2");
        QTest::addColumn<QString>("cancelaciones");
        QTest::addColumn<QStringList>("grupos"); // idsub|art|cat|precio|cantidad|fob|kgneto|orden
        QTest::addColumn<QStringList>("idrel");
        QTest::addColumn<QString>("error");
        // (10 + 10.0002) / 2 = 10.0001; the second group then finds the merged one alone and
        // writes it again, last.
        const QStringList uno{"1|agrupado!|agrupado!|10.0001|2|20.0002|4|4"};
        const QStringList dos{"1|A|C|10|1|10|2|3", "2|B|C|10.0004|1|10.0004|2|4"};
        const QList<
            std::tuple<const char*, QString, QString, QString, QStringList, QStringList, QString>>
            casos{
                {"10.0002 coma", ",", "10.0002", "", uno, {"1|2"}, ""},
                {"10.0002 punto", ".", "10.0002", "", uno, {"1|2"}, ""},
                {"10.0004", ",", "10.0004", "", dos, {}, ""},
                {"cancelacion",
                 ".",
                 "10.0002",
                 "OK",
                 {"1|A|C|10|1|10|2|1", "2|B|C|10.0002|1|10.0002|2|2"},
                 {"1|2"},
                 "429|Sección [KORVEN.frmArmarItem.lp_BuscarDuplicados]"},
            };
        for (const auto& [n, s, p, c, g, i, e] : casos)
            PorMotor(n, [&](QTestData& d) { d << s << p << c << g << i << e; });
    }
    void duplicados() {
        MOTOR_O_SALTAR();
        QFETCH(QString, separador);
        QFETCH(QString, precio2);
        QFETCH(QString, cancelaciones);
        QFETCH(QStringList, grupos);
        QFETCH(QStringList, idrel);
        QFETCH(QString, error);
        SeparadorDecimalScope sep(separador);
        Corrida k(motor);
        const QString comun =
            "interno=A1;ncm=0401.10.10.100X;idpais=203;idpaisproc=203;sufijos=;idunidad=07;"
            "estadomerc=1;biendeuso=N;estadistica=01;deresp=;lapi=;itfiller=;codigoean=;"
            "tipoitem=N;onccacategoria=;onccacortes=;cantidad=1;valorrelacionestadistica=0;"
            "valorderesp=0;kgneto=2;kgbruto=3;insumostemp=0;insumosacons=0;cancelaciones=" +
            cancelaciones;
        Insertar(k.ts, "groupsubitems",
                 comun + ";idsub=1;orden=1;preciounitario=10;fob=10;idarticulo=A;idcatalogo=C");
        Insertar(k.ts, "groupsubitems",
                 comun + ";idsub=2;orden=2;idarticulo=B;idcatalogo=C;preciounitario=" + precio2 +
                     ";fob=" + precio2);
        QString obtenido;
        try {
            AgrupacionSubItems(k.run()).BuscarDuplicados();
        } catch (const KorvenError& e) {
            obtenido = QStringLiteral("%1|%2").arg(e.numero()).arg(e.origen());
        }
        QCOMPARE(obtenido, error);
        QCOMPARE(Filas(k.ts, "select idsub, idarticulo, idcatalogo, preciounitario, cantidad, "
                             "fob, kgneto, orden from groupsubitems order by orden"),
                 grupos);
        QCOMPARE(Filas(k.ts, "select idroot, idsub from idrel order by orden"), idrel);
    }
};

QTEST_GUILESS_MAIN(TestAgrupacion)
#include "test_agrupacion.moc"
