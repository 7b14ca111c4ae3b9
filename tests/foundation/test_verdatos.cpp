// The status of an Operation as the hub derives it (VerDatos): header, goods lines, items and
// packages, and the buttons that follow from them, on SQLite and on PostgreSQL.

#include "FixtureOperaciones.h"
#include "foundation/EstadoInterno.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

// Packages of an export, all present.
QVariantMap Bultos() {
    return {{"bulnro", "1-10"},
            {"bulcod", "01"},
            {"bultip", "CA"},
            {"bulpes", 100.0},
            {"buldes", 10.0}};
}

QVariantMap Unir(QVariantMap a, const QVariantMap& b) {
    a.insert(b);
    return a;
}

} // namespace

class TestVerDatos : public QObject {
    Q_OBJECT
    std::unique_ptr<TestStores> stores_[2];
    // Stores kept for the rows of one engine; each row starts without Operation 100 and with
    // the dest rows of the masters.
    TestStores& Compartidas(int motor) {
        if (!stores_[motor])
            stores_[motor] = StoresConMaestros(motor);
        TestStores& ts = *stores_[motor];
        ts.dialogos().Limpiar();
        for (const char* t : {"caratula", "subitems", "groupsubitems", "item"})
            ts.conexion("INTERNOS").Ejecutar(QStringLiteral("delete from %1").arg(t));
        ts.conexion("USUARIO").Ejecutar("delete from dest");
        CargarDest(ts);
        return ts;
    }
private Q_SLOTS:
    void cleanupTestCase() {
        stores_[0].reset();
        stores_[1].reset();
    }
    void reglas_data();
    void reglas();
    void sinCaratula_data() { FilasDeMotores(); }
    void sinCaratula();
    void errorDejaLoEscrito_data() { FilasDeMotores(); }
    void errorDejaLoEscrito();
    void marcarCambiado_data() { FilasDeMotores(); }
    void marcarCambiado();
};

void TestVerDatos::reglas_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QVariantMap>("cambios"); // header columns that differ from complete
    QTest::addColumn<QVariantList>("lineas"); // FOB of each goods line
    QTest::addColumn<QString>("dest"); // "" a plain dest row; "sin" none; else a hidden control
    QTest::addColumn<QStringList>("estados"); // header, goods lines, items, packages ("-": none)
    QTest::addColumn<QString>("botones");     // "b" enabled, "!b" disabled, "?b" left untouched

    const QVariantList mil{600.0, 400.0};
    const QString C = "COMPLETO!", I = "INCOMPLETO", G = "GENERADO!", S = "SIN GENERAR";
    const QString BC = "COMPLETO";
    const QVariantMap expo = Unir({{"idsubreg", "EC01"}}, Bultos());
    const QString bloqueados = "cmdITEM !CmdTransMaria !CmdBultos !cmdCertOrig !CmdPresupuesto "
                               "!CmdHojaVal !cmdExportar !cmdExportINS !cmdPrint";
    struct Caso {
        const char* nombre;
        QVariantMap cambios;
        QVariantList lineas;
        QString dest;
        QStringList estados;
        QString botones;
    };
    // clang-format off
    const QList<Caso> casos = {
        {"importacion completa", {}, mil, "", {C, C, G, "-"}, "cmdITEM CmdPresupuesto CmdTransMaria "
         "cmdExportar !cmdExportINS !cmdPrint !CmdBultos !cmdCertOrig !ChCOEF ?CmdHojaVal"},
        {"sin registro en dest", {}, mil, "sin", {I, "-", "", "-"}, "!cmdITEM !CmdPresupuesto "
         "!CmdTransMaria !cmdExportar !cmdExportINS !cmdPrint ?CmdHojaVal ?CmdBultos ?cmdCertOrig"},
        {"fob cero", {{"fobdivisas", 0.0}}, {}, "", {I, "-", "", "-"}, "!cmdITEM"},
        {"fob 1000.004 contra 1000.00", {}, {1000.004}, "", {C, C, G, "-"}, "cmdITEM"},
        {"lineas 999.99 contra 1000", {}, {999.99}, "", {C, I, "-", "-"}, "cmdITEM CmdTransMaria"},
        {"sin lineas", {}, {}, "", {C, I, "-", "-"}, ""},
        {"sin vendedor", {{"idvendedor", ""}}, mil, "", {I, "-", "", "-"}, ""},
        {"sin vendedor que dest oculta", {{"idvendedor", ""}}, mil, "Txtidvendedor", {C, C, G, "-"}, ""},
        {"sin condicion de venta", {{"idcondiciondeventa", QVariant()}}, mil, "", {I, "-", "", "-"}, ""},
        {"sin condicion de venta que dest oculta", {{"idcondiciondeventa", ""}}, mil, "Txtidcondventa",
         {C, C, G, "-"}, ""},
        {"sin cliente", {{"cuitcliente", " "}}, mil, "", {I, "-", "", "-"}, ""},
        {"sin cambio de fob", {{"fobdivcambio", 0.0}}, mil, "", {I, "-", "", "-"}, ""},
        {"importacion sin flete", {{"fletedivisas", 0.0}}, mil, "", {I, "-", "", "-"}, ""},
        {"importacion sin divisa de seguro", {{"segurocoddivisas", ""}}, mil, "", {I, "-", "", "-"}, ""},
        {"LAPI sin seguro", {{"idsubreg", "LAPI"}, {"segurodivisas", 0.0}}, mil, "", {I, "-", "", "-"}, ""},
        {"exportacion sin flete ni seguro", Unir(expo, {{"fletedivisas", 0.0}, {"segurodivisas", QVariant()}}),
         mil, "", {C, C, G, BC}, "CmdTransMaria"},
        {"06 sin deposito", {{"idsubreg", "IC06"}}, mil, "", {I, "-", "", "-"}, ""},
        {"06 con deposito", {{"idsubreg", "IC06"}, {"factura5", "DEP01"}}, mil, "", {C, C, G, "-"}, "cmdPrint"},
        {"exportacion con bultos incompletos", {{"idsubreg", "EC01"}}, mil, "", {C, C, G, I},
         "!CmdTransMaria !cmdExportar !cmdExportINS CmdBultos cmdCertOrig CmdHojaVal ChCOEF cmdITEM"},
        {"exportacion con bultos", expo, mil, "", {C, C, G, BC},
         "CmdTransMaria cmdExportar !cmdExportINS !cmdPrint CmdBultos cmdCertOrig CmdHojaVal"},
        {"exportacion sin peso de bultos", Unir(expo, {{"bulpes", 0.0}}), mil, "", {C, C, G, I}, "!CmdTransMaria"},
        {"BULCOD 32 con BULTIP A sin numero ni cantidad",
         {{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bultip", "A"}, {"bulpes", 80.0}}, mil, "",
         {C, C, G, BC}, "CmdTransMaria cmdExportar"},
        {"BULCOD 32 con BULTIP A sin peso", {{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bultip", "A"}}, mil,
         "", {C, C, G, I}, "!CmdTransMaria"},
        {"BULCOD 32 con BULTIP B pide todo",
         {{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bultip", "B"}, {"bulpes", 80.0}}, mil, "",
         {C, C, G, I}, "!CmdTransMaria"},
        {"bultos que no se transfieren", {{"idsubreg", "EC01"}, {"factura9", " 1 "}}, mil, "", {C, C, G, BC},
         "CmdTransMaria"},
        {"exportacion temporal", Unir(expo, {{"idsubreg", "ET01"}}), mil, "", {C, C, G, BC},
         "cmdExportINS !cmdPrint"},
        {"exportacion con formularios", Unir(expo, {{"idsubreg", "EC02"}}), mil, "", {C, C, G, BC},
         "!cmdExportINS cmdPrint"},
        {"importacion temporal", {{"idsubreg", "IT01"}}, mil, "", {C, C, G, "-"},
         "cmdExportINS CmdTransMaria ?CmdHojaVal"},
        {"IDA4 generado", {{"idsubreg", "IDA4"}}, mil, "", {C, C, G, "-"},
         "cmdExportar CmdTransMaria !cmdExportINS !cmdPrint"},
        {"IDA4 con lineas incompletas", {{"idsubreg", "IDA4"}}, {10.0}, "", {C, I, "-", "-"},
         "!cmdExportar CmdTransMaria"},
        {"cambiado desde el armado", {{"factura8", "S"}}, mil, "", {C, C, S, "-"}, bloqueados},
        {"exportacion cambiada desde el armado", Unir(expo, {{"factura8", "S"}}), mil, "", {C, C, S, BC},
         bloqueados},
        {"cambiada con caratula incompleta", {{"factura8", "S"}, {"idaduana", ""}}, mil, "",
         {I, "-", "", "-"}, "!CmdHojaVal !cmdITEM"},
        {"nueva sin factura8", {{"factura8", QVariant()}}, mil, "", {C, C, G, "-"}, ""},
    };
    // clang-format on
    for (int motor : {0, 1})
        for (const Caso& c : casos)
            QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", c.nombre)
                << motor << c.cambios << c.lineas << c.dest << c.estados << c.botones;
}

void TestVerDatos::reglas() {
    MOTOR_O_SALTAR();
    QFETCH(QVariantMap, cambios);
    QFETCH(QVariantList, lineas);
    QFETCH(QString, dest);
    QFETCH(QStringList, estados);
    QFETCH(QString, botones);
    TestStores& ts = Compartidas(motor);
    const QVariantMap c = Unir(CaratulaCompleta("100"), cambios);
    Insertar(ts, "INTERNOS", "caratula", c);
    const QString subreg = c.value("idsubreg").toString();
    ts.conexion("USUARIO").Ejecutar("delete from dest where subreg = ?", {subreg});
    if (dest != "sin") {
        QVariantMap d{{"subreg", subreg}};
        if (!dest.isEmpty())
            d.insert(dest.toLower(), "x");
        Insertar(ts, "USUARIO", "dest", d);
    }
    int id = 0;
    for (const QVariant& fob : lineas) {
        ++id;
        Insertar(ts, "INTERNOS", "subitems", {{"interno", "100"}, {"id", id}, {"fob", fob}});
        Insertar(ts, "INTERNOS", "groupsubitems", {{"interno", "100"}, {"id", 1}, {"idsub", id}});
    }
    for (int i : {0, 1, 2})
        Insertar(ts, "INTERNOS", "item", {{"interno", "100"}, {"id", i}});

    EstadoDetalle e;
    QVERIFY(EstadoInterno(ts.ctx()).VerDatos("100", e));
    QVERIFY(ts.dialogos().registro().isEmpty());
    QCOMPARE((QStringList{e.textos.value("LbInterno"), e.textos.value("LbSubregimen"),
                          e.textos.value("LbItem"), e.textos.value("LbSubItem")}),
             (QStringList{"100", subreg, "2", QString::number(lineas.size())}));
    QCOMPARE(e.textos.value("LbEstadoCaratula"), estados.at(0));
    QCOMPARE(e.caratulaCompleta, estados.at(0) == "COMPLETO!");
    const char* etiquetas[] = {"LbEstadoCaratula", "LbEstadoSubItem", "LbEstadoItem",
                               "LbEstadoBultos"};
    for (int i = 1; i < 4; ++i) {
        if (estados.at(i) == "-")
            QVERIFY2(!e.textos.contains(etiquetas[i]), etiquetas[i]);
        else
            QCOMPARE(e.textos.value(etiquetas[i], "<ninguno>"), estados.at(i));
    }
    if (estados.at(1) != "-")
        QCOMPARE(e.colores.value("LbEstadoSubItem"),
                 estados.at(1) == "INCOMPLETO" ? QColor(255, 0, 0) : QColor(0, 0, 0));
    for (QString b : botones.split(' ', Qt::SkipEmptyParts)) {
        const QChar marca = b.at(0);
        if (marca == '!' || marca == '?')
            b.remove(0, 1);
        QCOMPARE(e.habilitados.contains(b), marca != '?');
        if (marca != '?')
            QVERIFY2(e.habilitados.value(b) == (marca != '!'), qPrintable(b));
    }
    QCOMPARE(e.visibles.value("frmOrdenar"), estados.at(2) == "SIN GENERAR");
    QCOMPARE(e.tipoSubRegimen, QStringLiteral("P"));
}

// With no header the header labels stay empty and nothing can be done.
void TestVerDatos::sinCaratula() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    EstadoDetalle e;
    QVERIFY(EstadoInterno(ts->ctx()).VerDatos("900", e));
    QCOMPARE(e.textos.value("LbInterno"), QStringLiteral("900"));
    for (const char* l : {"LbSubregimen", "LbAduana", "LbDespa", "LbCliente"})
        QVERIFY2(!e.textos.contains(l), l);
    QCOMPARE(e.textos.value("LbEstadoCaratula"), QStringLiteral("INCOMPLETO"));
    QCOMPARE(e.cstaimpexp, QStringLiteral("N"));
    QVERIFY(!e.habilitados.value("cmdITEM", true) && !e.habilitados.value("CmdTransMaria", true));

    // The labels of a header that exists.
    InsertarCaratula(*ts, "100", {{"idsubreg", "TG01"}});
    EstadoDetalle f;
    QVERIFY(EstadoInterno(ts->ctx()).VerDatos("100", f));
    QCOMPARE((QStringList{f.textos.value("LbAduana"), f.textos.value("LbDespa"),
                          f.textos.value("LbCliente"), f.tipoSubRegimen, f.cstaimpexp}),
             (QStringList{"(001) BUENOS AIRES", "Despachante Uno", "Cliente Uno", "T", "I"}));
}

// An error keeps what was written before it, and says where it happened.
void TestVerDatos::errorDejaLoEscrito() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    InsertarCaratula(*ts, "100");
    ts->conexion("INTERNOS").Ejecutar("drop table groupsubitems");
    EstadoDetalle e;
    QVERIFY(!EstadoInterno(ts->ctx()).VerDatos("100", e));
    const QStringList m = ts->dialogos().mensajes();
    QCOMPARE(m.size(), 1);
    QVERIFY2(m.at(0).contains(QStringLiteral(" - Seccion Verdatos::")), qPrintable(m.at(0)));
    QVERIFY2(m.at(0).contains(QStringLiteral("groupsubitems")), qPrintable(m.at(0)));
    QCOMPARE((QStringList{e.textos.value("LbSubregimen"), e.textos.value("LbCliente"),
                          e.textos.value("LbItem")}),
             (QStringList{"IC04", "Cliente Uno", "0"}));
    QVERIFY(!e.textos.contains("LbSubItem") && !e.textos.contains("LbEstadoCaratula"));
    QVERIFY(!e.habilitados.contains("cmdITEM"));
}

void TestVerDatos::marcarCambiado() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    InsertarCaratula(*ts, "100");
    InsertarCaratula(*ts, "200");
    ts->settings().SaveSetting("KORVEN", "AEC", "100", "R");
    ts->settings().SaveSetting("KORVEN", "AEC", "200", "P");
    EstadoInterno estado(ts->ctx());
    QCOMPARE(estado.LeerFactura8("100"), QStringLiteral("N"));
    estado.MarcarCambiado("100");
    QCOMPARE(estado.LeerFactura8("100"), QStringLiteral("S"));
    QCOMPARE(estado.LeerFactura8("200"), QStringLiteral("N"));
    QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "100", "?"), QString());
    QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "200"), QStringLiteral("P"));
}

QTEST_GUILESS_MAIN(TestVerDatos)
#include "test_verdatos.moc"
