// The items built from the groups of an Operation, the kilo checks of the items and the check
// of the countries with its report screen.

#include "FixtureArmado.h"
#include "assembly/ComprobacionInterno.h"
#include "assembly/ConstruccionItems.h"
#include "assembly/ControlesArmado.h"
#include "assembly/PantallasArmado.h"
#include "platform/KorvenError.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QListWidget>
#include <QMap>
#include <QTest>

using namespace korven;
using namespace korven::test;
using L = QStringList;

namespace {

const QString OP = QStringLiteral("OP-1");

// One row of a data table for each engine; the table's first column is "motor".
template <class... V> void Fila(const char* caso, const V&... valores) {
    for (auto [m, nombre] : {std::pair{Motor::SQLite, "sqlite"}, {Motor::PostgreSQL, "pg"}}) {
        QTestData& d = QTest::addRow("%s %s", nombre, caso);
        d << int(m);
        ((d << valores), ...);
    }
}

template <class... T, class... N> void Columnas(N... nombres) {
    QTest::addColumn<int>("motor");
    (QTest::addColumn<T>(nombres), ...);
}

#define STORES()                                                                                   \
    MOTOR_O_SALTAR();                                                                              \
    TestStores ts(static_cast<Motor>(motor));                                                      \
    PrepararArmado(ts)

// A group of goods lines of OP, written in the given order; every key column not given is ''.
void Grupo(TestStores& ts, int orden, const QString& pares) {
    QMap<QString, QString> v;
    const QString todos = QStringLiteral(
        "idunidad=07;biendeuso=N;tipoitem=N;cancelaciones=;estadomerc=;idpais=;idpaisproc=;"
        "itfiller=;estadistica=;deresp=;lapi=;onccacategoria=;onccacortes=;");
    for (const QString& p : (todos + pares).split(QLatin1Char(';'), Qt::SkipEmptyParts))
        v.insert(p.section(QLatin1Char('='), 0, 0), p.section(QLatin1Char('='), 1));
    QString fila = QStringLiteral("interno=%1;orden=%2").arg(OP).arg(orden);
    for (auto it = v.cbegin(); it != v.cend(); ++it)
        fila += QLatin1Char(';') + it.key() + QLatin1Char('=') + it.value();
    Insertar(ts, QStringLiteral("groupsubitems"), fila);
}

void Item(TestStores& ts, int id, const QString& pares) {
    Insertar(ts, QStringLiteral("item"),
             QStringLiteral("interno=%1;id=%2;").arg(OP).arg(id) + pares);
}

// A run over OP with its header read, as the driver leaves it before building the items.
struct Corrida {
    explicit Corrida(TestStores& ts, int ordenItems = 1, double totalFob = 0)
        : r(ts.ctx(), OP, progreso) {
        r.LeerCaratula();
        r.OrdenItems = ordenItems;
        r.TotalFobOperacion = totalFob;
    }
    ProgresoArmado progreso;
    CorridaArmado r;
};

// Two items of origin 310 and provenance 200; line 1, group 1 and item 1 as given.
void Paises(TestStores& ts, const QString& forzar, const QString& linea, const QString& uno) {
    Caratula(ts, OP,
             QStringLiteral("dcpaisorigen=310;dcpaisdestino=;dcforzarpaisorigen=") + forzar);
    for (int i : {1, 2}) {
        const QString o = i == 1 ? uno : QStringLiteral("310");
        Linea(ts, OP, i, QStringLiteral("idpais=%1;idpaisproc=200").arg(i == 1 ? linea : o));
        Grupo(ts, i, QStringLiteral("id=%1;idsub=%1;idpais=%2;idpaisproc=200").arg(i).arg(o));
        Item(ts, i, QStringLiteral("idpais=%1;idproc=200").arg(o));
    }
}

const QString kLinea = QStringLiteral("Item: 1 (Pais Origen SUBITEM=200) difiere de (Pais Origen ");

} // namespace

class TestItems : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void limiteDeGrupos_data() { FilasDeMotores(); }
    void limiteDeGrupos() {
        STORES();
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04;fletedivisas=0;segurodivisas=0"));
        for (int i = 1; i <= 301; ++i)
            Grupo(ts, i, QStringLiteral("idsub=%1;ncm=8471.30.12.100M;cantidad=1;fob=2").arg(i));
        Corrida c(ts, 1, 602);
        ConstruccionItems(c.r).GenerarItems();
        // 300 groups of 1 unit and FOB 2 in the first block, the 301st alone in the second.
        QCOMPARE(Filas(ts, "select id, itfiller, cantidad, fobtotal from item order by id"),
                 L({"0|null|null|null", "1|1|300|600", "2|2|1|2"}));
        QCOMPARE(Filas(ts, "select id, count(*), max(orden) from groupsubitems group by id "
                           "order by id"),
                 L({"1|300|300", "2|1|301"}));
        QVERIFY(ts.dialogos().mensajes().isEmpty());
    }

    // Without groups only item 0 is left; by position the link of no group is the error of
    // the grouping. In order of loading a group without unit could never be numbered.
    void sinGrupos_data() { FilasDeMotores(); }
    void sinGrupos() {
        STORES();
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04"));
        Corrida c(ts, 1);
        ConstruccionItems(c.r).GenerarItems();
        QCOMPARE(Filas(ts, "select id, totalkneto from item"), L{"0|0"});
        QCOMPARE(ts.dialogos().mensajes(), L{"Error en Agrupar Subitems"});
        QCOMPARE(ts.dialogos().registro().constLast().icono, Dialogos::Icono::Critico);
        Insertar(ts, "groupsubitems", "interno=" + OP + ";orden=1;idsub=1;ncm=8471.30.12.100M");
        c.r.OrdenItems = 2;
        c.r.TotalFobOperacion = 1;
        QVERIFY_THROWS_EXCEPTION(KorvenError, ConstruccionItems(c.r).GenerarItems());
    }

    void ordenDeItems_data() {
        Columnas<int, L, L>("modo", "items", "grupos");
        // By position: N before G, then by position. 8471: FOB 100 + 30.5, 2 + 1 units, kilos
        // rounded one by one, 1.23 + 2 = 3.23.
        Fila("posicion", 1,
             L({"1|6403.99.90.100T|N|50|4|0", "2|8471.30.12.100M|N|130.5|3|3.23",
                "3|6403.99.90.100T|G|20|1|0"}),
             L({"1|2", "2|1", "3|2", "4|3"}));
        // In order of loading: the type does not split items, the first group's stays.
        Fila("carga", 2, L({"1|6403.99.90.100T|N|70|5|0", "2|8471.30.12.100M|N|130.5|3|3.23"}),
             L({"1|2", "2|1", "3|2", "4|1"}));
    }
    void ordenDeItems() {
        STORES();
        QFETCH(int, modo);
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04;fletedivisas=0;segurodivisas=0"));
        Grupo(ts, 1, QStringLiteral("idsub=3;ncm=8471.30.12.100M;cantidad=2;fob=100;kgneto=1.234"));
        Grupo(ts, 2, QStringLiteral("idsub=1;ncm=6403.99.90.100T;cantidad=4;fob=50"));
        Grupo(ts, 3, QStringLiteral("idsub=2;ncm=8471.30.12.100M;cantidad=1;fob=30.5;kgneto=2"));
        Grupo(ts, 4, QStringLiteral("idsub=4;ncm=6403.99.90.100T;cantidad=1;fob=20;tipoitem=G"));
        Corrida c(ts, modo, 200.5);
        ConstruccionItems(c.r).GenerarItems();
        QTEST(Filas(ts, "select id, ncm, tipoitem, fobtotal, cantidad, totalkneto from item "
                        "where id<>0 order by id"),
              "items");
        QTEST(Filas(ts, "select orden, id from groupsubitems order by orden"), "grupos");
    }

    void fleteSeguroYDatosComunes_data() {
        Columnas<QString, QString, QString, L>("separador", "flete", "seguro", "reparto");
        // Three items of equal FOB: 100 x 10 / 30 = 33.333 gives 33.33 each, 99.99 in all; the
        // cent that is short goes to the first of the largest, item 1 (10: 3.33 and 3.34).
        for (const QString sep : {",", "."}) {
            Fila(qPrintable("reparto " + sep), sep, "100", "10",
                 L({"1|33.34|3.34", "2|33.33|3.33", "3|33.33|3.33"}));
            Fila(qPrintable("sin flete " + sep), sep, "0", "0", L({"1|0|0", "2|0|0", "3|0|0"}));
        }
    }
    void fleteSeguroYDatosComunes() {
        STORES();
        QFETCH(QString, separador);
        QFETCH(QString, flete);
        QFETCH(QString, seguro);
        SeparadorDecimalScope sep(separador);
        Caratula(ts, OP,
                 QStringLiteral("idsubreg=IC04;fletedivisas=%1;segurodivisas=%2;dcpaisdestino=200;"
                                "dcstandard=ST;dcpaisorigen=310;dcforzarpaisorigen=S;dcestmerc=2;"
                                "dcforzarestmerc=N;opcionesiva=R")
                     .arg(flete, seguro));
        Grupo(ts, 1, QStringLiteral("idsub=1;ncm=8471.30.12.100M;fob=10;idpaisproc=410"));
        Grupo(ts, 2, QStringLiteral("idsub=2;ncm=8471.30.12.200M;fob=10"));
        Grupo(ts, 3, QStringLiteral("idsub=3;ncm=8471.30.12.300M;fob=10"));
        Corrida c(ts, 1, 30);
        ConstruccionItems(c.r).GenerarItems();
        QTEST(Filas(ts, "select id, itflete, itseguro from item where id<>0 order by id"),
              "reparto");
        // Provenance only where empty, origin on item 0 (forced), the state not (not forced).
        QCOMPARE(Filas(ts, "select id, idpais, idproc, estadomerc, standard, opcionesiva from item "
                           "order by id"),
                 L({"0|310|200|null|ST|R", "1||410||ST|R", "2||200||ST|R", "3||200||ST|R"}));
    }

    void ventajasYTarifaExterna_data() {
        Columnas<QString, L, QString>("subregimen", "ventajas", "aec");
        // IC04 has the client's rule of "8471" (reference data); the client's rule of "4011"
        // holds for every subregime, the one with no position adds nothing.
        Fila("IC04", "IC04", L({"1|ACEMERCOSUR", "2|ACEMERCOSUR", "3|CUBIERTAS"}), "R");
        Fila("EC01", "EC01", L({"3|CUBIERTAS"}), "N");
    }
    void ventajasYTarifaExterna() {
        STORES();
        QFETCH(QString, subregimen);
        const QString cuit = QStringLiteral("30708123451");
        for (const char* regla : {"4011;idventaja=CUBIERTAS", ";idventaja=NUNCA"})
            Insertar(ts, QStringLiteral("ventajasrel"),
                     QStringLiteral("cuit=%1;idsubregimen=;ncm=").arg(cuit) + regla,
                     QStringLiteral("PERSONAL"));
        Caratula(ts, OP, QStringLiteral("cuitcliente=%1;idsubreg=%2").arg(cuit, subregimen));
        int id = 0;
        for (const char* ncm :
             {"8471.30.12.100M", "8471.50.10.100K", "4011.10.00.900Z", "6403.99.90.100T"})
            Item(ts, ++id, QStringLiteral("ncm=") + ncm);
        Corrida c(ts);
        ts.ctx().settings().SaveSetting("KORVEN", "AEC", OP, "P");
        if (subregimen == QLatin1String("IC04")) {
            ts.dialogos().ResponderSi(); // calculate it,
            ts.dialogos().ResponderSi(); // for a replacement part
        }
        ConstruccionItems(c.r).Ventajas();
        ConstruccionItems(c.r).TarifaExternaComun();
        QTEST(Filas(ts, "select iditem, idventaja from itemventaja order by iditem, idventaja"),
              "ventajas");
        // 4011.10.00 900 carries the mark of the common external tariff: asked only in IC04.
        QTEST(ts.ctx().settings().GetSetting("KORVEN", "AEC", OP), "aec");
        QCOMPARE(ts.dialogos().todo().size(), subregimen == QLatin1String("IC04") ? 2 : 0);
        QVERIFY(ts.dialogos().guionAgotado());
    }

    void itemsGyD_data() {
        Columnas<QString, QString, int, L>("tipos", "mensaje", "icono", "asociados");
        const QString no = QStringLiteral("\n\nNo se establecio el ITEM RELACIONADO!");
        const int aviso = int(Dialogos::Icono::Exclamacion);
        Fila("G primero", "GDD",
             "Se establecio como ITEM RELACIONADO el 001 en todos los items tipo D",
             int(Dialogos::Icono::Informacion), L({"", "001", "001"}));
        Fila("G segundo", "NGD", "ADVERTENCIA!: El Item tipo G debe ser el primer item" + no, aviso,
             L({"", "", ""}));
        Fila("dos G", "GGD",
             "ADVERTENCIA!: Hay mas de 1 item tipo G, solo puede haber uno y ser el primer item" +
                 no,
             aviso, L({"", "", ""}));
        Fila("sin G", "NDD", QString(), 0, L({"", "", ""}));
    }
    void itemsGyD() {
        STORES();
        QFETCH(QString, tipos);
        QFETCH(QString, mensaje);
        for (int i = 0; i < tipos.size(); ++i)
            Item(ts, i + 1, QStringLiteral("itemasociado=;tipoitem=") + tipos.at(i));
        Corrida c(ts);
        ConstruccionItems(c.r).ItemsGyD(); // option off: nothing
        QVERIFY(ts.dialogos().mensajes().isEmpty());
        ts.ctx().config().CORDANORAF = true;
        ConstruccionItems(c.r).ItemsGyD();
        QCOMPARE(ts.dialogos().mensajes(), mensaje.isNull() ? L() : L{mensaje});
        if (!mensaje.isNull())
            QTEST(int(ts.dialogos().registro().constLast().icono), "icono");
        QTEST(Filas(ts, "select itemasociado from item order by id"), "asociados");
    }

    void integridad_data() {
        Columnas<QString, QString, QString, QString, QString>("separador", "item", "segundo",
                                                              "resultado", "kilos");
        for (const QString sep : {",", "."}) {
            // Kilos as statistical unit: 5 kg in one group, none in the other.
            Fila(qPrintable("mezcla " + sep), sep, "estadistica=01;valorrelacionestadistica=5",
                 "valorrelacionestadistica=0;kgneto=0", "NO", "0");
            // 5 + 2.5 kg: the item's net kilos.
            Fila(qPrintable("lleno " + sep), sep, "estadistica=01;valorrelacionestadistica=5",
                 "valorrelacionestadistica=2.5;kgneto=2.5", "SI", "7.5");
            // Another unit with kilos: every group must have them.
            Fila(qPrintable("otra unidad " + sep), sep, "estadistica=07;totalkneto=3",
                 "valorrelacionestadistica=0;kgneto=0", "NO", "3");
        }
    }
    void integridad() {
        STORES();
        QFETCH(QString, separador);
        QFETCH(QString, item);
        QFETCH(QString, segundo);
        QFETCH(QString, resultado);
        SeparadorDecimalScope sep(separador);
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04"));
        Item(ts, 1, QStringLiteral("deresp=;") + item);
        const QString comun = QStringLiteral("id=1;ncm=0201.10.00.100G;idunidad=01;estadistica=01;"
                                             "valorderesp=0;");
        Grupo(ts, 1, comun + "cantidad=5;preciounitario=2.5;valorrelacionestadistica=5;kgneto=5");
        Grupo(ts, 2, comun + "cantidad=3;preciounitario=1.25;" + segundo);
        Corrida c(ts);
        ts.ctx().ArmadoResultado = QStringLiteral("SI");
        ControlesArmado(c.r).VerificarIntegridad();
        QCOMPARE(ts.ctx().ArmadoResultado, resultado);
        QTEST(Filas(ts, "select coalesce(totalkneto, 0) from item").join(QString()), "kilos");
        QString t = QStringLiteral(
            "Verificación de Subitem's:\n--------------------------\nLos siguientes subitem's "
            "deberán tener cargados todos kilogramos o ninguno.\nPor favor revise los campos "
            "ESTADÍSTICA si es 01, DERECHO ESPECIFICO si es 01\ny Kilogramos Neto.\n\nUE = UNIDAD "
            "ESTADISTICA, UDE = UNIDAD DE DERECHO ESPECIFICO\n\n"
            "NCM             UD   CANTIDAD PRE. UNIT. UE   CANT. UE UDE  CANT UDE.    KG NETO\n"
            "--------------- -- ---------- ---------- -- ---------- --- ---------- ----------\n"
            "0201.10.00.100G 01      05#00      02#50 01      05#00          00#00      05#00\n"
            "0201.10.00.100G 01      03#00      01#25 01      00#00          00#00      00#00\n");
        QCOMPARE(ts.dialogos().mensajes(), resultado == QLatin1String("NO")
                                               ? L{t.replace(QLatin1Char('#'), separador)}
                                               : L());
    }

    void paises_data() {
        // The origin of line 1, then of group 1 and item 1.
        Columnas<QString, QString, QString, L, int>("forzar", "linea", "uno", "reporte", "alertas");
        const QString ok2 = QStringLiteral("Item: 2 Verificacion OK");
        Fila("forzado linea", "S", "200", "310",
             L({kLinea + "Grupo=310) - Forzar ACTIVADO", kLinea + "ITEM=310) - Forzar ACTIVADO",
                ok2}),
             0);
        Fila("forzado item", "S", "200", "200",
             L({"Item: 1 (Pais Origen ITEM=200) difiere de (Pais Origen Caratula=310) - Forzar "
                "ACTIVADO",
                ok2}),
             0);
        Fila("sin forzar", "N", "200", "310",
             L({"ERROR DE INCONGRUENCIA DE DATOS " + kLinea + "Grupo=310) - Forzar DESACTIVADO",
                kLinea + "ITEM=310) - Forzar DESACTIVADO", ok2}),
             1);
        Fila("sin pais", "N", "", "",
             L({"Advertencia! Item: 1 (Pais Origen SUBITEM no se ha completado) - Forzar "
                "DESACTIVADO",
                ok2}),
             0);
        Fila("iguales", "N", "310", "310", L({"Item: 1 Verificacion OK", ok2}), 0);
    }
    void paises() {
        STORES();
        QFETCH(QString, forzar);
        QFETCH(QString, linea);
        QFETCH(QString, uno);
        QFETCH(L, reporte);
        QFETCH(int, alertas);
        Paises(ts, forzar, linea, uno);
        bool hay = false;
        QCOMPARE(ComprobacionInterno(ts.ctx()).ChequearInterno(OP, hay), reporte.join('\n'));
        QCOMPARE(hay, reporte.first() != QLatin1String("Item: 1 Verificacion OK"));
        QCOMPARE(ts.dialogos().mensajes(),
                 L(alertas, QStringLiteral("ERROR EN ARMADO DE ITEMS, INFORMAR A ZEPTO7000")));
        // Without the report screen the differences come as a message with its title.
        ts.dialogos().Limpiar();
        QCOMPARE(ComprobacionInterno(ts.ctx()).Comprobar(OP), hay);
        if (hay)
            QCOMPARE(ts.dialogos().registro().constLast().titulo,
                     QStringLiteral("Korven v3 - Reporte de Diferencias Encontradas."));
        QCOMPARE(ts.dialogos().mensajes().size(), alertas + (hay ? 1 : 0));
        QCOMPARE(ComprobacionInterno(ts.ctx()).ChequearInterno("OTRO", hay),
                 QStringLiteral("Error Buscando Interno en CARATULA"));
    }

    // The hub's check opens the report screen; Esc closes it.
    void pantallaDelReporte() {
        TestStores ts(Motor::SQLite);
        PrepararArmado(ts);
        Paises(ts, "S", "200", "310");
        RegistrarPantallasComprobacion(ts.ctx().pantallas());
        L vistas;
        QString titulo;
        bool abierta = true;
        AlAbrirse(QStringLiteral("Frm_ComprobacionErrores"), [&](QWidget* w) {
            titulo = w->windowTitle();
            GuardarPantallazo(QStringLiteral("Frm_ComprobacionErrores"), w);
            auto* lista = Control<QListWidget>(w, "LstReporte");
            for (int i = 0; i < lista->count(); ++i)
                vistas << lista->item(i)->text();
            Tecla(Qt::Key_Escape);
            abierta = w->isVisible();
        });
        QVERIFY(ts.ctx().AbrirModal(QStringLiteral("ChequearInterno"), {{"interno", OP}}).toBool());
        QVERIFY(!abierta);
        QCOMPARE(titulo, QStringLiteral("Korven v3 - Reporte de Diferencias Encontradas."));
        QCOMPARE(vistas, L({kLinea + "Grupo=310) - Forzar ACTIVADO",
                            kLinea + "ITEM=310) - Forzar ACTIVADO", "Item: 2 Verificacion OK"}));
        QVERIFY(ts.dialogos().mensajes().isEmpty());
    }
};

QTEST_MAIN(TestItems)
#include "test_items.moc"
