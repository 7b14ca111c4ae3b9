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

const QStringList kSalidas = {"CmdTransMaria", "CmdBultos",   "cmdCertOrig",  "CmdPresupuesto",
                              "CmdHojaVal",    "cmdExportar", "cmdExportINS", "cmdPrint"};

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    CargarMaestros(*ts);
    return ts;
}

// Packages of an export, all present.
QVariantMap Bultos() {
    return {{"bulnro", "1-10"},
            {"bulcod", "01"},
            {"bultip", "CA"},
            {"bulpes", 100.0},
            {"buldes", 10.0}};
}

QVariantMap Unir(QVariantMap a, const QVariantMap& b) {
    for (auto i = b.cbegin(); i != b.cend(); ++i)
        a.insert(i.key(), i.value());
    return a;
}

} // namespace

class TestVerDatos : public QObject {
    Q_OBJECT
private Q_SLOTS:
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
    QTest::addColumn<QString>("dest");        // "" a plain dest row; "sin" none; else a
                                              // control the sub-regime hides
    QTest::addColumn<QString>("caratula");
    QTest::addColumn<QString>("subitems");        // "-" not touched
    QTest::addColumn<QString>("items");           // "-" not touched
    QTest::addColumn<QString>("bultos");          // "-" not touched
    QTest::addColumn<QVariantMap>("habilitados"); // control -> enabled
    QTest::addColumn<QStringList>("intactos");    // controls the run leaves as they were
    QTest::addColumn<bool>("ordenar");            // frmOrdenar shown

    const QVariantList mil{600.0, 400.0};
    const QString C = "COMPLETO!", I = "INCOMPLETO", G = "GENERADO!", S = "SIN GENERAR";
    const QVariantMap expo = Unir({{"idsubreg", "EC01"}}, Bultos());
    struct Caso {
        const char* nombre;
        QVariantMap cambios;
        QVariantList lineas;
        QString dest, caratula, subitems, items, bultos;
        QVariantMap habilitados;
        QStringList intactos;
        bool ordenar;
    };
    const QList<Caso> casos = {
        {"importacion completa",
         {},
         mil,
         "",
         C,
         C,
         G,
         "-",
         {{"cmdITEM", true},
          {"CmdPresupuesto", true},
          {"CmdTransMaria", true},
          {"cmdExportar", true},
          {"cmdExportINS", false},
          {"cmdPrint", false},
          {"CmdBultos", false},
          {"cmdCertOrig", false},
          {"ChCOEF", false}},
         {"CmdHojaVal"},
         false},
        {"sin registro en dest",
         {},
         mil,
         "sin",
         I,
         "-",
         "",
         "-",
         {{"cmdITEM", false},
          {"CmdPresupuesto", false},
          {"CmdTransMaria", false},
          {"cmdExportar", false},
          {"cmdExportINS", false},
          {"cmdPrint", false}},
         {"CmdHojaVal", "CmdBultos", "cmdCertOrig"},
         false},
        {"fob cero",
         {{"fobdivisas", 0.0}},
         {},
         "",
         I,
         "-",
         "",
         "-",
         {{"cmdITEM", false}},
         {},
         false},
        {"fob 1000.004 contra 1000.00",
         {},
         {1000.004},
         "",
         C,
         C,
         G,
         "-",
         {{"cmdITEM", true}},
         {},
         false},
        {"lineas 999.99 contra 1000",
         {},
         {999.99},
         "",
         C,
         I,
         "-",
         "-",
         {{"cmdITEM", true}, {"CmdTransMaria", true}},
         {},
         false},
        {"sin lineas", {}, {}, "", C, I, "-", "-", {}, {}, false},
        {"sin vendedor", {{"idvendedor", ""}}, mil, "", I, "-", "", "-", {}, {}, false},
        {"sin vendedor que dest oculta",
         {{"idvendedor", ""}},
         mil,
         "Txtidvendedor",
         C,
         C,
         G,
         "-",
         {},
         {},
         false},
        {"sin condicion de venta",
         {{"idcondiciondeventa", QVariant()}},
         mil,
         "",
         I,
         "-",
         "",
         "-",
         {},
         {},
         false},
        {"sin condicion de venta que dest oculta",
         {{"idcondiciondeventa", ""}},
         mil,
         "Txtidcondventa",
         C,
         C,
         G,
         "-",
         {},
         {},
         false},
        {"sin cliente", {{"cuitcliente", " "}}, mil, "", I, "-", "", "-", {}, {}, false},
        {"sin cambio de fob", {{"fobdivcambio", 0.0}}, mil, "", I, "-", "", "-", {}, {}, false},
        {"importacion sin flete", {{"fletedivisas", 0.0}}, mil, "", I, "-", "", "-", {}, {}, false},
        {"importacion sin divisa de seguro",
         {{"segurocoddivisas", ""}},
         mil,
         "",
         I,
         "-",
         "",
         "-",
         {},
         {},
         false},
        {"LAPI sin seguro",
         {{"idsubreg", "LAPI"}, {"segurodivisas", 0.0}},
         mil,
         "",
         I,
         "-",
         "",
         "-",
         {},
         {},
         false},
        {"exportacion sin flete ni seguro",
         Unir(expo, {{"fletedivisas", 0.0}, {"segurodivisas", QVariant()}}),
         mil,
         "",
         C,
         C,
         G,
         "COMPLETO",
         {{"CmdTransMaria", true}},
         {},
         false},
        {"06 sin deposito", {{"idsubreg", "IC06"}}, mil, "", I, "-", "", "-", {}, {}, false},
        {"06 con deposito",
         {{"idsubreg", "IC06"}, {"factura5", "DEP01"}},
         mil,
         "",
         C,
         C,
         G,
         "-",
         {{"cmdPrint", true}},
         {},
         false},
        {"exportacion con bultos incompletos",
         {{"idsubreg", "EC01"}},
         mil,
         "",
         C,
         C,
         G,
         "INCOMPLETO",
         {{"CmdTransMaria", false},
          {"cmdExportar", false},
          {"cmdExportINS", false},
          {"CmdBultos", true},
          {"cmdCertOrig", true},
          {"CmdHojaVal", true},
          {"ChCOEF", true},
          {"cmdITEM", true}},
         {},
         false},
        {"exportacion con bultos",
         expo,
         mil,
         "",
         C,
         C,
         G,
         "COMPLETO",
         {{"CmdTransMaria", true},
          {"cmdExportar", true},
          {"cmdExportINS", false},
          {"cmdPrint", false},
          {"CmdBultos", true},
          {"cmdCertOrig", true},
          {"CmdHojaVal", true}},
         {},
         false},
        {"exportacion sin peso de bultos",
         Unir(expo, {{"bulpes", 0.0}}),
         mil,
         "",
         C,
         C,
         G,
         "INCOMPLETO",
         {{"CmdTransMaria", false}},
         {},
         false},
        {"BULCOD 32 con BULTIP A sin numero ni cantidad",
         {{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bultip", "A"}, {"bulpes", 80.0}},
         mil,
         "",
         C,
         C,
         G,
         "COMPLETO",
         {{"CmdTransMaria", true}, {"cmdExportar", true}},
         {},
         false},
        {"BULCOD 32 con BULTIP A sin peso",
         {{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bultip", "A"}},
         mil,
         "",
         C,
         C,
         G,
         "INCOMPLETO",
         {{"CmdTransMaria", false}},
         {},
         false},
        {"BULCOD 32 con BULTIP B pide todo",
         {{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bultip", "B"}, {"bulpes", 80.0}},
         mil,
         "",
         C,
         C,
         G,
         "INCOMPLETO",
         {{"CmdTransMaria", false}},
         {},
         false},
        {"bultos que no se transfieren",
         {{"idsubreg", "EC01"}, {"factura9", " 1 "}},
         mil,
         "",
         C,
         C,
         G,
         "COMPLETO",
         {{"CmdTransMaria", true}},
         {},
         false},
        {"exportacion temporal",
         Unir(expo, {{"idsubreg", "ET01"}}),
         mil,
         "",
         C,
         C,
         G,
         "COMPLETO",
         {{"cmdExportINS", true}, {"cmdPrint", false}},
         {},
         false},
        {"exportacion con formularios",
         Unir(expo, {{"idsubreg", "EC02"}}),
         mil,
         "",
         C,
         C,
         G,
         "COMPLETO",
         {{"cmdExportINS", false}, {"cmdPrint", true}},
         {},
         false},
        {"importacion temporal",
         {{"idsubreg", "IT01"}},
         mil,
         "",
         C,
         C,
         G,
         "-",
         {{"cmdExportINS", true}, {"CmdTransMaria", true}},
         {"CmdHojaVal"},
         false},
        {"IDA4 generado",
         {{"idsubreg", "IDA4"}},
         mil,
         "",
         C,
         C,
         G,
         "-",
         {{"cmdExportar", true},
          {"CmdTransMaria", true},
          {"cmdExportINS", false},
          {"cmdPrint", false}},
         {},
         false},
        {"IDA4 con lineas incompletas",
         {{"idsubreg", "IDA4"}},
         {10.0},
         "",
         C,
         I,
         "-",
         "-",
         {{"cmdExportar", false}, {"CmdTransMaria", true}},
         {},
         false},
        {"cambiado desde el armado",
         {{"factura8", "S"}},
         mil,
         "",
         C,
         C,
         S,
         "-",
         {{"cmdITEM", true},
          {"CmdTransMaria", false},
          {"CmdBultos", false},
          {"cmdCertOrig", false},
          {"CmdPresupuesto", false},
          {"CmdHojaVal", false},
          {"cmdExportar", false},
          {"cmdExportINS", false},
          {"cmdPrint", false}},
         {},
         true},
        {"exportacion cambiada desde el armado",
         Unir(expo, {{"factura8", "S"}}),
         mil,
         "",
         C,
         C,
         S,
         "COMPLETO",
         {{"cmdITEM", true},
          {"CmdTransMaria", false},
          {"CmdBultos", false},
          {"cmdCertOrig", false},
          {"CmdPresupuesto", false},
          {"CmdHojaVal", false},
          {"cmdExportar", false},
          {"cmdExportINS", false},
          {"cmdPrint", false}},
         {},
         true},
        {"cambiada con caratula incompleta",
         {{"factura8", "S"}, {"idaduana", ""}},
         mil,
         "",
         I,
         "-",
         "",
         "-",
         {{"CmdHojaVal", false}, {"cmdITEM", false}},
         {},
         false},
        {"nueva sin factura8", {{"factura8", QVariant()}}, mil, "", C, C, G, "-", {}, {}, false},
    };
    for (int motor : {0, 1})
        for (const Caso& c : casos)
            QTest::newRow(qPrintable(
                QStringLiteral("%1 %2").arg(motor == 0 ? "sqlite" : "postgresql", c.nombre)))
                << motor << c.cambios << c.lineas << c.dest << c.caratula << c.subitems << c.items
                << c.bultos << c.habilitados << c.intactos << c.ordenar;
}

void TestVerDatos::reglas() {
    MOTOR_O_SALTAR();
    QFETCH(QVariantMap, cambios);
    QFETCH(QVariantList, lineas);
    QFETCH(QString, dest);
    QFETCH(QString, caratula);
    QFETCH(QString, subitems);
    QFETCH(QString, items);
    QFETCH(QString, bultos);
    QFETCH(QVariantMap, habilitados);
    QFETCH(QStringList, intactos);
    QFETCH(bool, ordenar);
    auto ts = Stores(motor);
    const QVariantMap c = Unir(CaratulaCompleta("100"), cambios);
    Insertar(*ts, "INTERNOS", "caratula", c);
    const QString subreg = c.value("idsubreg").toString();
    ts->conexion("USUARIO").Ejecutar("delete from dest where subreg = ?", {subreg});
    if (dest != "sin") {
        QVariantMap d{{"subreg", subreg}};
        if (!dest.isEmpty())
            d.insert(dest.toLower(), "x");
        Insertar(*ts, "USUARIO", "dest", d);
    }
    int id = 0;
    for (const QVariant& fob : lineas) {
        ++id;
        Insertar(*ts, "INTERNOS", "subitems", {{"interno", "100"}, {"id", id}, {"fob", fob}});
        Insertar(*ts, "INTERNOS", "groupsubitems", {{"interno", "100"}, {"id", 1}, {"idsub", id}});
    }
    for (int i : {0, 1, 2})
        Insertar(*ts, "INTERNOS", "item", {{"interno", "100"}, {"id", i}});

    EstadoDetalle e;
    QVERIFY(EstadoInterno(ts->ctx()).VerDatos("100", e));
    QVERIFY(ts->dialogos().registro().isEmpty());
    QCOMPARE(e.textos.value("LbInterno"), QStringLiteral("100"));
    QCOMPARE(e.textos.value("LbSubregimen"), subreg);
    QCOMPARE(e.textos.value("LbItem"), QStringLiteral("2"));
    QCOMPARE(e.textos.value("LbSubItem"), QString::number(lineas.size()));
    QCOMPARE(e.textos.value("LbEstadoCaratula"), caratula);
    QCOMPARE(e.caratulaCompleta, caratula == "COMPLETO!");
    auto comparar = [&e](const char* control, const QString& esperado) {
        if (esperado == "-")
            QVERIFY2(!e.textos.contains(control), control);
        else
            QCOMPARE(e.textos.value(control, "<ninguno>"), esperado);
    };
    comparar("LbEstadoSubItem", subitems);
    comparar("LbEstadoItem", items);
    comparar("LbEstadoBultos", bultos);
    if (subitems != "-")
        QCOMPARE(e.colores.value("LbEstadoSubItem"),
                 subitems == "INCOMPLETO" ? QColor(255, 0, 0) : QColor(0, 0, 0));
    for (auto i = habilitados.cbegin(); i != habilitados.cend(); ++i) {
        QVERIFY2(e.habilitados.contains(i.key()), qPrintable(i.key()));
        QVERIFY2(e.habilitados.value(i.key()) == i.value().toBool(), qPrintable(i.key()));
    }
    for (const QString& control : intactos)
        QVERIFY2(!e.habilitados.contains(control), qPrintable(control));
    QCOMPARE(e.visibles.value("frmOrdenar"), ordenar);
    QCOMPARE(e.tipoSubRegimen, QStringLiteral("P"));
}

// With no header the header labels stay empty and nothing can be done.
void TestVerDatos::sinCaratula() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    EstadoDetalle e;
    QVERIFY(EstadoInterno(ts->ctx()).VerDatos("900", e));
    QCOMPARE(e.textos.value("LbInterno"), QStringLiteral("900"));
    for (const char* l : {"LbSubregimen", "LbAduana", "LbDespa", "LbCliente"})
        QVERIFY2(!e.textos.contains(l), l);
    QCOMPARE(e.textos.value("LbEstadoCaratula"), QStringLiteral("INCOMPLETO"));
    QCOMPARE(e.cstaimpexp, QStringLiteral("N"));
    QCOMPARE(e.habilitados.value("cmdITEM", true), false);
    QCOMPARE(e.habilitados.value("CmdTransMaria", true), false);

    // The labels of a header that exists.
    Insertar(*ts, "INTERNOS", "caratula", Unir(CaratulaCompleta("100"), {{"idsubreg", "TG01"}}));
    EstadoDetalle f;
    QVERIFY(EstadoInterno(ts->ctx()).VerDatos("100", f));
    QCOMPARE(f.textos.value("LbAduana"), QStringLiteral("(001) BUENOS AIRES"));
    QCOMPARE(f.textos.value("LbDespa"), QStringLiteral("Despachante Uno"));
    QCOMPARE(f.textos.value("LbCliente"), QStringLiteral("Cliente Uno"));
    QCOMPARE(f.tipoSubRegimen, QStringLiteral("T"));
    QCOMPARE(f.cstaimpexp, QStringLiteral("I"));
}

// An error keeps what was written before it, and says where it happened.
void TestVerDatos::errorDejaLoEscrito() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("100"));
    ts->conexion("INTERNOS").Ejecutar("drop table groupsubitems");
    EstadoDetalle e;
    QVERIFY(!EstadoInterno(ts->ctx()).VerDatos("100", e));
    const QStringList m = ts->dialogos().mensajes();
    QCOMPARE(m.size(), 1);
    QVERIFY2(m.at(0).contains(QStringLiteral(" - Seccion Verdatos::")), qPrintable(m.at(0)));
    QVERIFY2(m.at(0).contains(QStringLiteral("groupsubitems")), qPrintable(m.at(0)));
    QCOMPARE(e.textos.value("LbSubregimen"), QStringLiteral("IC04"));
    QCOMPARE(e.textos.value("LbCliente"), QStringLiteral("Cliente Uno"));
    QCOMPARE(e.textos.value("LbItem"), QStringLiteral("0"));
    QVERIFY(!e.textos.contains("LbSubItem"));
    QVERIFY(!e.textos.contains("LbEstadoCaratula"));
    QVERIFY(!e.habilitados.contains("cmdITEM"));
}

void TestVerDatos::marcarCambiado() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("100"));
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("200"));
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
