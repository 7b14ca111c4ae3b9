// The goods lines of an Operation repaired, checked and grouped; the regime flags; the merge of
// groups whose prices differ by a hair.

#include "FixtureArmado.h"
#include "assembly/AgrupacionSubItems.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

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

QTEST_GUILESS_MAIN(TestAgrupacion)
#include "test_agrupacion.moc"
