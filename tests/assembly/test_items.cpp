// The items built from the groups of an Operation, the kilo checks of the items and the check
// of the countries with its report screen.

#include "FixtureArmado.h"
#include "assembly/ComprobacionInterno.h"
#include "assembly/ConstruccionItems.h"
#include "assembly/ControlesArmado.h"
#include "assembly/PantallasArmado.h"
#include "support/Pantallas.h"

#include <QListWidget>
#include <QMap>
#include <QTest>
#include <memory>

using namespace korven;
using namespace korven::test;

namespace {

const QString OP = QStringLiteral("OP-1");

// A group of goods lines of OP, written in the given order; every key column not given is ''.
void Grupo(TestStores& ts, int orden, const QString& pares) {
    QMap<QString, QString> v;
    for (const char* c : {"idunidad=07", "biendeuso=N", "tipoitem=N",
                          "cancelaciones=", "estadomerc=", "idpais=", "idpaisproc=", "itfiller=",
                          "estadistica=", "deresp=", "lapi=", "onccacategoria=", "onccacortes="})
        v.insert(QString::fromLatin1(c).section(QLatin1Char('='), 0, 0),
                 QString::fromLatin1(c).section(QLatin1Char('='), 1));
    for (const QString& p : pares.split(QLatin1Char(';'), Qt::SkipEmptyParts))
        v.insert(p.section(QLatin1Char('='), 0, 0), p.section(QLatin1Char('='), 1));
    QString todo = QStringLiteral("interno=%1;orden=%2").arg(OP).arg(orden);
    for (auto it = v.cbegin(); it != v.cend(); ++it)
        todo += QLatin1Char(';') + it.key() + QLatin1Char('=') + it.value();
    Insertar(ts, QStringLiteral("groupsubitems"), todo);
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

void MotoresYSeparadores() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    for (auto [m, nombre] : {std::pair{Motor::SQLite, "sqlite"}, {Motor::PostgreSQL, "pg"}})
        for (const char* sep : {",", "."})
            QTest::addRow("%s %s", nombre, sep) << int(m) << QString::fromLatin1(sep);
}

} // namespace

class TestItems : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void limiteDeGrupos_data() { FilasDeMotores(); }
    void limiteDeGrupos() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararArmado(ts);
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04;fletedivisas=0;segurodivisas=0"));
        for (int i = 1; i <= 301; ++i)
            Grupo(ts, i, QStringLiteral("idsub=%1;ncm=8471.30.12.100M;cantidad=1;fob=2").arg(i));
        Corrida c(ts, 1, 602);
        ConstruccionItems(c.r).GenerarItems();
        // 300 groups of 1 unit and FOB 2 in the first block, the 301st alone in the second.
        QCOMPARE(Filas(ts, QStringLiteral("select id, itfiller, cantidad, fobtotal from item "
                                          "order by id")),
                 QStringList({"0|null|null|null", "1|1|300|600", "2|2|1|2"}));
        QCOMPARE(Filas(ts, QStringLiteral("select id, count(*), min(orden), max(orden) from "
                                          "groupsubitems group by id order by id")),
                 QStringList({"1|300|1|300", "2|1|301|301"}));
        QVERIFY(ts.dialogos().mensajes().isEmpty());
    }

    void ordenDeItems_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<int>("modo");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("grupos");
        for (auto [m, nombre] : {std::pair{Motor::SQLite, "sqlite"}, {Motor::PostgreSQL, "pg"}}) {
            // By position: N before G, then by position. 8471: 100 + 30.5 and 2 + 1 units; kilos
            // 1.234 + 2 rounded one by one, 1.23 + 2 = 3.23.
            QTest::addRow("%s posicion", nombre)
                << int(m) << 1
                << QStringList({"1|6403.99.90.100T|N|50|4|0", "2|8471.30.12.100M|N|130.5|3|3.23",
                                "3|6403.99.90.100T|G|20|1|0"})
                << QStringList({"1|2", "2|1", "3|2", "4|3"});
            // In order of loading: the type does not split items, the first group's stays.
            QTest::addRow("%s carga", nombre)
                << int(m) << 2
                << QStringList({"1|6403.99.90.100T|N|70|5|0", "2|8471.30.12.100M|N|130.5|3|3.23"})
                << QStringList({"1|2", "2|1", "3|2", "4|1"});
        }
    }
    void ordenDeItems() {
        MOTOR_O_SALTAR();
        QFETCH(int, modo);
        TestStores ts(static_cast<Motor>(motor));
        PrepararArmado(ts);
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04;fletedivisas=0;segurodivisas=0"));
        Grupo(ts, 1, QStringLiteral("idsub=3;ncm=8471.30.12.100M;cantidad=2;fob=100;kgneto=1.234"));
        Grupo(ts, 2, QStringLiteral("idsub=1;ncm=6403.99.90.100T;cantidad=4;fob=50"));
        Grupo(ts, 3, QStringLiteral("idsub=2;ncm=8471.30.12.100M;cantidad=1;fob=30.5;kgneto=2"));
        Grupo(ts, 4, QStringLiteral("idsub=4;ncm=6403.99.90.100T;cantidad=1;fob=20;tipoitem=G"));
        Corrida c(ts, modo, 200.5);
        ConstruccionItems(c.r).GenerarItems();
        QTEST(Filas(ts, QStringLiteral("select id, ncm, tipoitem, fobtotal, cantidad, totalkneto "
                                       "from item where id<>0 order by id")),
              "items");
        QTEST(Filas(ts, QStringLiteral("select orden, id from groupsubitems order by orden")),
              "grupos");
    }

    void fleteSeguroYDatosComunes_data() { MotoresYSeparadores(); }
    void fleteSeguroYDatosComunes() {
        MOTOR_O_SALTAR();
        QFETCH(QString, separador);
        SeparadorDecimalScope sep(separador);
        for (auto [flete, seguro, esperado] :
             {std::tuple{"100", "10",
                         QStringList({"1|33.34|3.34", "2|33.33|3.33", "3|33.33|3.33"})},
              {"0", "0", QStringList({"1|0|0", "2|0|0", "3|0|0"})},
              {"90", "0.03", QStringList({"1|30|0.01", "2|30|0.01", "3|30|0.01"})}}) {
            TestStores ts(static_cast<Motor>(motor));
            PrepararArmado(ts);
            Caratula(ts, OP,
                     QStringLiteral("idsubreg=IC04;fletedivisas=%1;segurodivisas=%2;"
                                    "dcpaisdestino=200;dcstandard=ST;dcpaisorigen=310;"
                                    "dcforzarpaisorigen=S;dcestmerc=2;dcforzarestmerc=N;"
                                    "opcionesiva=R")
                         .arg(QString::fromLatin1(flete), QString::fromLatin1(seguro)));
            // Three items of equal FOB: 100 x 10 / 30 = 33.333 gives 33.33 each, 99.99 in all;
            // the cent that is short goes to the first of the largest, item 1.
            Grupo(ts, 1, QStringLiteral("idsub=1;ncm=8471.30.12.100M;fob=10;idpaisproc=410"));
            Grupo(ts, 2, QStringLiteral("idsub=2;ncm=8471.30.12.200M;fob=10"));
            Grupo(ts, 3, QStringLiteral("idsub=3;ncm=8471.30.12.300M;fob=10"));
            Corrida c(ts, 1, 30);
            ConstruccionItems(c.r).GenerarItems();
            QCOMPARE(Filas(ts, QStringLiteral("select id, itflete, itseguro from item where "
                                              "id<>0 order by id")),
                     esperado);
            // Provenance only where empty, origin only on item 0 (forced), the state not
            // (not forced).
            QCOMPARE(Filas(ts, QStringLiteral("select id, idpais, idproc, estadomerc, standard, "
                                              "opcionesiva from item order by id")),
                     QStringList(
                         {"0|310|200|null|ST|R", "1||410||ST|R", "2||200||ST|R", "3||200||ST|R"}));
        }
    }

    void ventajasYTarifaExterna_data() { FilasDeMotores(); }
    void ventajasYTarifaExterna() {
        MOTOR_O_SALTAR();
        for (const QString& subregimen : {QStringLiteral("IC04"), QStringLiteral("EC01")}) {
            TestStores ts(static_cast<Motor>(motor));
            PrepararArmado(ts);
            const QString cuit = QStringLiteral("30708123451");
            Insertar(ts, QStringLiteral("ventajasrel"),
                     QStringLiteral("cuit=%1;idsubregimen=;ncm=4011;idventaja=CUBIERTAS").arg(cuit),
                     QStringLiteral("PERSONAL"));
            Insertar(ts, QStringLiteral("ventajasrel"),
                     QStringLiteral("cuit=%1;idsubregimen=;ncm=;idventaja=NUNCA").arg(cuit),
                     QStringLiteral("PERSONAL"));
            Caratula(ts, OP, QStringLiteral("cuitcliente=%1;idsubreg=%2").arg(cuit, subregimen));
            for (auto [id, ncm] : {std::pair{1, "8471.30.12.100M"},
                                   {2, "8471.50.10.100K"},
                                   {3, "4011.10.00.900"},
                                   {4, "6403.99.90.100T"}})
                Insertar(ts, QStringLiteral("item"),
                         QStringLiteral("interno=%1;id=%2;ncm=%3").arg(OP).arg(id).arg(ncm));
            Corrida c(ts);
            ts.ctx().settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), OP,
                                            QStringLiteral("P"));
            if (subregimen == QLatin1String("IC04"))
                ts.dialogos().ResponderTexto(QStringLiteral("R"));
            ConstruccionItems(c.r).Ventajas();
            ConstruccionItems(c.r).TarifaExternaComun();
            // IC04 has the client's rule of "8471" (ACEMERCOSUR, from the reference data); the
            // rule of "4011" holds for every subregime, the empty one adds nothing.
            QStringList ventajas{"3|CUBIERTAS"};
            if (subregimen == QLatin1String("IC04"))
                ventajas = QStringList({"1|ACEMERCOSUR", "2|ACEMERCOSUR", "3|CUBIERTAS"});
            QCOMPARE(Filas(ts, QStringLiteral("select iditem, idventaja from itemventaja order "
                                              "by iditem, idventaja")),
                     ventajas);
            // 4011.10.00 900 carries the mark of the common external tariff: asked in IC04.
            QCOMPARE(
                ts.ctx().settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), OP),
                subregimen == QLatin1String("IC04") ? QStringLiteral("R") : QStringLiteral("N"));
            QCOMPARE(ts.dialogos().todo().size(), subregimen == QLatin1String("IC04") ? 1 : 0);
            QVERIFY(ts.dialogos().guionAgotado());
        }
    }

    void itemsGyD_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("tipos");
        QTest::addColumn<QString>("mensaje");
        QTest::addColumn<int>("icono");
        QTest::addColumn<QStringList>("asociados");
        const QString no = QStringLiteral("\n\nNo se establecio el ITEM RELACIONADO!");
        for (auto [m, nombre] : {std::pair{Motor::SQLite, "sqlite"}, {Motor::PostgreSQL, "pg"}}) {
            QTest::addRow("%s G primero", nombre)
                << int(m) << "GDD"
                << "Se establecio como ITEM RELACIONADO el 001 en todos los items tipo D"
                << int(Dialogos::Icono::Informacion) << QStringList({"", "001", "001"});
            QTest::addRow("%s G segundo", nombre)
                << int(m) << "NGD"
                << "ADVERTENCIA!: El Item tipo G debe ser el primer item" + no
                << int(Dialogos::Icono::Exclamacion) << QStringList({"", "", ""});
            QTest::addRow("%s dos G", nombre)
                << int(m) << "GGD"
                << "ADVERTENCIA!: Hay mas de 1 item tipo G, solo puede haber uno y ser el "
                   "primer item" +
                       no
                << int(Dialogos::Icono::Exclamacion) << QStringList({"", "", ""});
            QTest::addRow("%s sin G", nombre)
                << int(m) << "NDD" << QString() << 0 << QStringList({"", "", ""});
        }
    }
    void itemsGyD() {
        MOTOR_O_SALTAR();
        QFETCH(QString, tipos);
        QFETCH(QString, mensaje);
        QFETCH(int, icono);
        TestStores ts(static_cast<Motor>(motor));
        PrepararArmado(ts);
        for (int i = 0; i < tipos.size(); ++i)
            Insertar(ts, QStringLiteral("item"),
                     QStringLiteral("interno=%1;id=%2;tipoitem=%3;itemasociado=")
                         .arg(OP)
                         .arg(i + 1)
                         .arg(tipos.at(i)));
        Corrida c(ts);
        ConstruccionItems(c.r).ItemsGyD(); // option off: nothing
        QVERIFY(ts.dialogos().mensajes().isEmpty());
        ts.ctx().config().CORDANORAF = true;
        ConstruccionItems(c.r).ItemsGyD();
        QCOMPARE(ts.dialogos().mensajes(), mensaje.isNull() ? QStringList() : QStringList{mensaje});
        if (!mensaje.isNull())
            QCOMPARE(int(ts.dialogos().registro().constLast().icono), icono);
        QTEST(Filas(ts, QStringLiteral("select itemasociado from item order by id")), "asociados");
    }
    void integridad_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("segundo");
        QTest::addColumn<QString>("resultado");
        QTest::addColumn<QString>("kilos");
        QTest::addColumn<bool>("reporte");
        for (auto [m, nombre] : {std::pair{Motor::SQLite, "sqlite"}, {Motor::PostgreSQL, "pg"}})
            for (const char* sep : {",", "."}) {
                // Kilos as statistical unit: 5 kg in one group and none in the other.
                QTest::addRow("%s %s mezcla", nombre, sep)
                    << int(m) << sep << "estadistica=01;totalkneto=0;valorrelacionestadistica=5"
                    << "valorrelacionestadistica=0;kgneto=0"
                    << "NO"
                    << "0" << true;
                // 5 + 2.5 kg: the item's net kilos.
                QTest::addRow("%s %s lleno", nombre, sep)
                    << int(m) << sep << "estadistica=01;totalkneto=0;valorrelacionestadistica=5"
                    << "valorrelacionestadistica=2.5;kgneto=2.5"
                    << "SI"
                    << "7.5" << false;
                // Another unit with kilos: every group must have them.
                QTest::addRow("%s %s otra unidad", nombre, sep)
                    << int(m) << sep << "estadistica=07;totalkneto=3;valorrelacionestadistica=3"
                    << "valorrelacionestadistica=0;kgneto=0"
                    << "NO"
                    << "3" << true;
            }
    }
    void integridad() {
        MOTOR_O_SALTAR();
        QFETCH(QString, separador);
        QFETCH(QString, item);
        QFETCH(QString, segundo);
        SeparadorDecimalScope sep(separador);
        TestStores ts(static_cast<Motor>(motor));
        PrepararArmado(ts);
        Caratula(ts, OP, QStringLiteral("idsubreg=IC04"));
        Insertar(ts, QStringLiteral("item"),
                 QStringLiteral("interno=%1;id=1;deresp=;").arg(OP) + item);
        const QString comun = QStringLiteral("id=1;ncm=0201.10.00.100G;idunidad=01;"
                                             "estadistica=01;valorderesp=0;");
        Grupo(ts, 1,
              comun + QStringLiteral("cantidad=5;preciounitario=2.5;valorrelacionestadistica=5;"
                                     "kgneto=5"));
        Grupo(ts, 2, comun + QStringLiteral("cantidad=3;preciounitario=1.25;") + segundo);
        Corrida c(ts);
        ts.ctx().ArmadoResultado = QStringLiteral("SI");
        ControlesArmado(c.r).VerificarIntegridad();
        QTEST(ts.ctx().ArmadoResultado, "resultado");
        QTEST(Filas(ts, QStringLiteral("select totalkneto from item")).join(QString()), "kilos");
        QStringList esperado;
        QFETCH(bool, reporte);
        if (reporte) {
            QString t = QStringLiteral(
                "Verificación de Subitem's:\n--------------------------\nLos siguientes "
                "subitem's deberán tener cargados todos kilogramos o ninguno.\nPor favor revise "
                "los campos ESTADÍSTICA si es 01, DERECHO ESPECIFICO si es 01\ny Kilogramos "
                "Neto.\n\nUE = UNIDAD ESTADISTICA, UDE = UNIDAD DE DERECHO ESPECIFICO\n\n"
                "NCM             UD   CANTIDAD PRE. UNIT. UE   CANT. UE UDE  CANT UDE.    KG NETO\n"
                "--------------- -- ---------- ---------- -- ---------- --- ---------- ----------\n"
                "0201.10.00.100G 01      05#00      02#50 01      05#00          00#00      05#00\n"
                "0201.10.00.100G 01      03#00      01#25 01 %1          00#00      00#00\n");
            t = t.arg(QString(segundo.contains(QLatin1String("2.5")) ? "02#50" : "00#00")
                          .rightJustified(10));
            esperado << t.replace(QLatin1Char('#'), separador);
        }
        QCOMPARE(ts.dialogos().mensajes(), esperado);
    }

    void paises_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("forzar");
        QTest::addColumn<QString>("linea");   // origin of line 1
        QTest::addColumn<QString>("itemUno"); // origin of group 1 and of item 1
        QTest::addColumn<QStringList>("reporte");
        QTest::addColumn<int>("alertas");
        const QString ok2 = QStringLiteral("Item: 2 Verificacion OK");
        for (auto [m, nombre] : {std::pair{Motor::SQLite, "sqlite"}, {Motor::PostgreSQL, "pg"}}) {
            QTest::addRow("%s forzado linea", nombre)
                << int(m) << "S"
                << "200"
                << "310"
                << QStringList({"Item: 1 (Pais Origen SUBITEM=200) difiere de (Pais Origen "
                                "Grupo=310) - Forzar ACTIVADO",
                                "Item: 1 (Pais Origen SUBITEM=200) difiere de (Pais Origen "
                                "ITEM=310) - Forzar ACTIVADO",
                                ok2})
                << 0;
            QTest::addRow("%s forzado item", nombre)
                << int(m) << "S"
                << "200"
                << "200"
                << QStringList({"Item: 1 (Pais Origen ITEM=200) difiere de (Pais Origen "
                                "Caratula=310) - Forzar ACTIVADO",
                                ok2})
                << 0;
            QTest::addRow("%s sin forzar", nombre)
                << int(m) << "N"
                << "200"
                << "310"
                << QStringList({"ERROR DE INCONGRUENCIA DE DATOS Item: 1 (Pais Origen "
                                "SUBITEM=200) difiere de (Pais Origen Grupo=310) - Forzar "
                                "DESACTIVADO",
                                "Item: 1 (Pais Origen SUBITEM=200) difiere de (Pais Origen "
                                "ITEM=310) - Forzar DESACTIVADO",
                                ok2})
                << 1;
            QTest::addRow("%s sin pais", nombre)
                << int(m) << "N"
                << ""
                << ""
                << QStringList({"Advertencia! Item: 1 (Pais Origen SUBITEM no se ha completado) "
                                "- Forzar DESACTIVADO",
                                ok2})
                << 0;
            QTest::addRow("%s iguales", nombre)
                << int(m) << "N"
                << "310"
                << "310" << QStringList({"Item: 1 Verificacion OK", ok2}) << 0;
        }
    }
    void paises() {
        MOTOR_O_SALTAR();
        QFETCH(QString, forzar);
        QFETCH(QString, linea);
        QFETCH(QString, itemUno);
        QFETCH(QStringList, reporte);
        QFETCH(int, alertas);
        TestStores ts(static_cast<Motor>(motor));
        PrepararArmado(ts);
        Caratula(ts, OP,
                 QStringLiteral("dcpaisorigen=310;dcpaisdestino=;dcforzarpaisorigen=") + forzar);
        for (int i : {1, 2}) {
            const QString origen = i == 1 ? itemUno : QStringLiteral("310");
            Linea(ts, OP, i,
                  QStringLiteral("idpais=%1;idpaisproc=200").arg(i == 1 ? linea : origen));
            Grupo(ts, i,
                  QStringLiteral("id=%1;idsub=%1;idpais=%2;idpaisproc=200").arg(i).arg(origen));
            Insertar(
                ts, QStringLiteral("item"),
                QStringLiteral("interno=%1;id=%2;idpais=%3;idproc=200").arg(OP).arg(i).arg(origen));
        }
        bool hay = false;
        QCOMPARE(ComprobacionInterno(ts.ctx()).ChequearInterno(OP, hay), reporte.join('\n'));
        QCOMPARE(hay, reporte.size() > 2 || !reporte.first().endsWith(QLatin1String(" OK")));
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList(alertas, QStringLiteral("ERROR EN ARMADO DE ITEMS, INFORMAR A "
                                                     "ZEPTO7000")));
        // Without the report screen the differences come as a message with its title.
        ts.dialogos().Limpiar();
        QCOMPARE(ComprobacionInterno(ts.ctx()).Comprobar(OP), hay);
        if (hay)
            QCOMPARE(ts.dialogos().registro().constLast().titulo,
                     QStringLiteral("Korven v3 - Reporte de Diferencias Encontradas."));
        QCOMPARE(ts.dialogos().mensajes().size(), alertas + (hay ? 1 : 0));
        QVERIFY(ComprobacionInterno(ts.ctx()).ChequearInterno(QStringLiteral("OTRO"), hay) ==
                    QLatin1String("Error Buscando Interno en CARATULA") &&
                hay);
    }

    // The hub's check opens the report screen; Esc closes it.
    void pantallaDelReporte() {
        TestStores ts(Motor::SQLite);
        PrepararArmado(ts);
        Caratula(ts, OP, QStringLiteral("dcpaisorigen=310;dcforzarpaisorigen=S"));
        Linea(ts, OP, 1, QStringLiteral("idpais=200;idpaisproc=200"));
        Grupo(ts, 1, QStringLiteral("id=1;idsub=1;idpais=310;idpaisproc=200"));
        Insertar(ts, QStringLiteral("item"),
                 QStringLiteral("interno=%1;id=1;idpais=310;idproc=200").arg(OP));
        RegistrarPantallasComprobacion(ts.ctx().pantallas());
        QStringList vistas;
        QString titulo;
        bool cerrada = false;
        AlAbrirse(QStringLiteral("Frm_ComprobacionErrores"), [&](QWidget* w) {
            titulo = w->windowTitle();
            auto* lista = Control<QListWidget>(w, "LstReporte");
            for (int i = 0; i < lista->count(); ++i)
                vistas << lista->item(i)->text();
            Tecla(Qt::Key_Escape);
            cerrada = !w->isVisible();
        });
        QVERIFY(ts.ctx().AbrirModal(QStringLiteral("ChequearInterno"), {{"interno", OP}}).toBool());
        QVERIFY(cerrada);
        QCOMPARE(titulo, QStringLiteral("Korven v3 - Reporte de Diferencias Encontradas."));
        QCOMPARE(vistas, QStringList({"Item: 1 (Pais Origen SUBITEM=200) difiere de (Pais Origen "
                                      "Grupo=310) - Forzar ACTIVADO",
                                      "Item: 1 (Pais Origen SUBITEM=200) difiere de (Pais Origen "
                                      "ITEM=310) - Forzar ACTIVADO"}));
        QVERIFY(ts.dialogos().mensajes().isEmpty());
    }
};

QTEST_MAIN(TestItems)
#include "test_items.moc"
