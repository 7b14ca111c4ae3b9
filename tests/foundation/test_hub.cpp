// The hub of an open Operation, driven from the keyboard: what it shows at load, the options it
// reads and keeps, the lock it gives back, the assembly button and the hand-offs to components
// that a plain installation does not have.

#include "FixtureOperaciones.h"
#include "foundation/FrmDetalleInterno.h"
#include "platform/AppContext.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

// An Operation open on this workstation, its lines adding up to its FOB; exports get their
// packages.
std::unique_ptr<TestStores> Abierta(int motor, const QString& subreg = "IC04",
                                    const QVariantMap& cambios = {}) {
    auto ts = StoresConMaestros(motor);
    QVariantMap c{{"idsubreg", subreg}, {"bulnro", "1-10"}, {"bulcod", "01"},
                  {"bultip", "CA"},     {"bulpes", 100.0},  {"buldes", 10.0}};
    c.insert(cambios);
    InsertarCaratula(*ts, "100", c);
    Insertar(*ts, "INTERNOS", "subitems", {{"interno", "100"}, {"id", 1}, {"fob", 1000.0}});
    Insertar(
        *ts, "INTERNOS", "interno",
        {{"interno", "100"}, {"maquina", "PC-A"}, {"usuario", ""}, {"fecha", QDate(2024, 1, 1)}});
    return ts;
}

QString Texto(FrmDetalleInterno& f, const char* label) {
    return f.findChild<QLabel*>(label)->text();
}

QPushButton* Boton(FrmDetalleInterno& f, const QString& nombre) {
    return f.findChild<QPushButton*>(nombre);
}

// Enter on a control that has the focus (Space for check boxes).
void Pulsar(QWidget* w, Qt::Key tecla = Qt::Key_Return) {
    QVERIFY(w->isEnabled());
    w->setFocus();
    QTest::keyClick(w, tecla);
}

// Registers a stand-in screen that counts its openings, keeps its arguments and runs an action.
void Pantalla(TestStores& ts, const QString& nombre, QList<QVariantMap>* vistas,
              std::function<void(AppContext&)> accion = {}) {
    ts.ctx().pantallas().Registrar(nombre, [=](AppContext& ctx, const QVariantMap& a) {
        vistas->append(a);
        if (accion)
            accion(ctx);
        return QVariant();
    });
}

void Sql(AppContext& ctx, const QString& sql) {
    ctx.stores().getDataConnectionByEntity("INTERNOS").Ejecutar(sql);
}

} // namespace

class TestHub : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cargaLeeLasOpciones();
    void escGuardaOpcionesYLiberaElBloqueo_data();
    void escGuardaOpcionesYLiberaElBloqueo();
    void traspasosSinComponente_data();
    void traspasosSinComponente();
    void transferenciaConDiferencias();
    void armadoDeItems_data();
    void armadoDeItems();
    void pantallasDeLaOperacionRecalculanElEstado();
};

void TestHub::cargaLeeLasOpciones() {
    auto ts = Abierta(0);
    SettingsStore& s = ts->settings();
    for (const char* k : {"FLAG1", "FLAG6", "COEFEXPO"})
        s.SaveSetting("KORVEN", "100", k, "0");
    s.SaveSetting("KORVEN", "100", "FLAG3", "");
    ts->ctx().config().ARMARITEM = 1;
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    QCOMPARE(Texto(f, "LbAduana"), QStringLiteral("(001) BUENOS AIRES"));
    QCOMPARE(Texto(f, "LbEstadoItem"), QStringLiteral("GENERADO!"));
    for (int i = 0; i < 8; ++i)
        QCOMPARE(f.CkFlag(i)->isChecked(), i != 1 && i != 6);
    QVERIFY(!f.findChild<QCheckBox*>("ChCOEF")->isEnabled());
    QVERIFY(f.findChild<QRadioButton*>("opOrdenxNCM")->isChecked());
    QVERIFY(!Boton(f, "Command1")->isEnabled());
    QVERIFY(f.findChild<QWidget*>("frmOrdenar")->isHidden());
    QCOMPARE(ts->ctx().InternoActual, QStringLiteral("100"));
    // Command1 is off without its component; its own failure text says the section is off.
    f.Command1();
    QCOMPARE(ts->dialogos().mensajes(),
             QStringList{"429 - El componente OperationExchange.Main no está instalado.\n\nEsta "
                         "sección esta deshabilitada!"});
    QCOMPARE(ts->dialogos().registro().last().titulo,
             QStringLiteral("Sección OperationExchangexDLL"));
}

void TestHub::escGuardaOpcionesYLiberaElBloqueo_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("subreg");
    QTest::addColumn<int>("tecla");
    QTest::addColumn<QString>("coef"); // COEFEXPO after closing
    FILA_MOTORES("importacion, Esc", "IC04" << int(Qt::Key_Escape) << "0");
    FILA_MOTORES("exportacion, Esc", "EC01" << int(Qt::Key_Escape) << "1");
    FILA_MOTORES("exportacion, Ctrl+C", "EC01" << int(Qt::Key_C) << "1");
}

void TestHub::escGuardaOpcionesYLiberaElBloqueo() {
    MOTOR_O_SALTAR();
    QFETCH(QString, subreg);
    QFETCH(int, tecla);
    QFETCH(QString, coef);
    auto ts = Abierta(motor, subreg);
    Insertar(*ts, "INTERNOS", "interno", {{"interno", "200"}, {"maquina", "PC-B"}});
    ts->settings().SaveSetting("KORVEN", "100", "COEFEXPO", "0");
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    // The clerk turns off "Pais de Origen" and turns on the coefficient where it may.
    Pulsar(f.CkFlag(2), Qt::Key_Space);
    auto* coeficiente = f.findChild<QCheckBox*>("ChCOEF");
    if (coeficiente->isEnabled())
        Pulsar(coeficiente, Qt::Key_Space);
    QTest::keyClick(Boton(f, "cmdCaratula"), static_cast<Qt::Key>(tecla),
                    tecla == Qt::Key_C ? Qt::ControlModifier : Qt::NoModifier);
    QVERIFY(!f.isVisible());
    SettingsStore& s = ts->settings();
    for (int i = 0; i < 8; ++i)
        QCOMPARE(s.GetSetting("KORVEN", "100", QStringLiteral("FLAG%1").arg(i)),
                 QString(i == 2 ? "0" : "1"));
    QCOMPARE(s.GetSetting("KORVEN", "100", "COEFEXPO"), coef);
    // Its lock is gone, the lock of another Operation stays.
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 0);
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "200"), 1);
    QVERIFY(ts->ctx().InternoActual.isEmpty());
}

void TestHub::traspasosSinComponente_data() {
    QTest::addColumn<QString>("subreg");
    QTest::addColumn<QString>("boton");
    QTest::addColumn<QString>("mensaje");
    const char* casos[][4] = {
        {"ET01", "CmdTransMaria", "DeclarationOutput.Main",
         "KORVEN.frmDetalleInterno.CmdTransMaria"},
        {"EC02", "cmdPrint", "SupplyLink.Main", "KORVEN.frmDetalleInterno.cmdPrint"},
        {"ET01", "CmdHojaVal", "ValueSheet.Main", "KORVEN.frmDetalleInterno.CmdHojaVal"},
        {"ET01", "cmdCertOrig", "OriginCertificate.Main", "KORVEN.frmDetalleInterno.cmdCertOrig"},
        {"ET01", "cmdExportar", "CancellationImport.Main", "KORVEN.Detalleinterno.cmdExportar"},
        {"ET01", "cmdExportINS", "SupplyTemporary.Main", "Korven.frmdetalleinterno.cmdExportINS"},
        {"IC04", "cmdITEM", "", "KORVEN.frmDetalleInterno.cmdItem"},
    };
    for (const auto& c : casos)
        QTest::newRow(c[1]) << c[0] << c[1]
                            << (*c[2] ? QStringLiteral("429 - El componente %1 no está instalado. "
                                                       "- Seccion [%2]")
                                            .arg(c[2], c[3])
                                      : QStringLiteral("%1 - La pantalla FrmArmarItem no está "
                                                       "instalada. - [%2]")
                                            .arg(KorvenError::ComponenteNoInstalado)
                                            .arg(c[3]));
}

// Each hand-off reports, when it is pressed, that its component is not installed, with its own
// section text; the hub stays on the screen and usable.
void TestHub::traspasosSinComponente() {
    QFETCH(QString, subreg);
    QFETCH(QString, boton);
    QFETCH(QString, mensaje);
    auto ts = Abierta(0, subreg, {{"factura8", boton == "cmdITEM" ? "S" : "N"}});
    QList<QVariantMap> chequeos;
    ts->ctx().pantallas().Registrar("ChequearInterno", [&](AppContext&, const QVariantMap& a) {
        chequeos << a;
        return QVariant(false);
    });
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    Pulsar(Boton(f, boton));
    QCOMPARE(ts->dialogos().mensajes(), QStringList{mensaje});
    QCOMPARE(ts->dialogos().registro().last().icono, Dialogos::Icono::Critico);
    QCOMPARE(chequeos.size(), boton == "CmdTransMaria" ? 1 : 0);
    QVERIFY(f.isVisible());
    QVERIFY(Boton(f, boton)->isEnabled());
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 1);
}

// Differences found by the check of the countries are confirmed before the transfer.
void TestHub::transferenciaConDiferencias() {
    auto ts = Abierta(0);
    ts->ctx().pantallas().Registrar("ChequearInterno",
                                    [](AppContext&, const QVariantMap&) { return QVariant(true); });
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    ScriptedDialogs& d = ts->dialogos();
    d.ResponderNo();
    Pulsar(Boton(f, "CmdTransMaria"));
    QCOMPARE(d.registro().size(), 1);
    QCOMPARE(d.registro().at(0).titulo,
             QStringLiteral("Diferencias en Operacion - Confirmacion de la Operacion"));
    QVERIFY(d.registro().at(0).texto.endsWith(
        QStringLiteral("y la informacion a enviar al SIM, ¿desea continuar?")));
    d.ResponderSi();
    Pulsar(Boton(f, "CmdTransMaria"));
    QCOMPARE(d.mensajes().last(),
             QStringLiteral("429 - El componente DeclarationOutput.Main no está "
                            "instalado. - Seccion [KORVEN.frmDetalleInterno.CmdTransMaria]"));
}

void TestHub::armadoDeItems_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("factura8");
    QTest::addColumn<QString>("resultado"); // ArmadoResultado the assembly leaves
    QTest::addColumn<bool>("armado");       // the assembly screen opened
    QTest::addColumn<bool>("verItem");      // the item screen opened
    QTest::addColumn<QString>("factura8Despues");
    QTest::addColumn<QString>("estadoItem");
    FILA_MOTORES("sin cambios va a los items", "N"
                                                   << "SI" << false << true << "N"
                                                   << "GENERADO!");
    FILA_MOTORES("armado correcto", "S"
                                        << "SI" << true << true << "N"
                                        << "GENERADO!");
    FILA_MOTORES("armado fallido", "S"
                                       << "NO" << true << false << "S"
                                       << "SIN GENERAR");
    FILA_MOTORES("armado cancelado", "S"
                                         << "No" << true << false << "S"
                                         << "SIN GENERAR");
}

void TestHub::armadoDeItems() {
    MOTOR_O_SALTAR();
    QFETCH(QString, factura8);
    QFETCH(QString, resultado);
    QFETCH(bool, armado);
    QFETCH(bool, verItem);
    QFETCH(QString, factura8Despues);
    QFETCH(QString, estadoItem);
    auto ts = Abierta(motor, "IC04", {{"factura8", factura8}});
    ts->settings().SaveSetting("KORVEN", "AEC", "100", "R");
    QList<QVariantMap> armados, vistos;
    // The assembly: a good run clears the change mark.
    Pantalla(*ts, "FrmArmarItem", &armados, [resultado](AppContext& ctx) {
        ctx.ArmadoResultado = resultado;
        if (resultado == "SI")
            Sql(ctx, "update caratula set factura8 = 'N' where interno = '100'");
    });
    Pantalla(*ts, "FrmVerItem", &vistos);
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    Pulsar(f.findChild<QRadioButton*>("opOrdenxNCM"), Qt::Key_Space);
    Pulsar(f.findChild<QCheckBox*>("ChMulta"), Qt::Key_Space);
    Pulsar(Boton(f, "cmdITEM"));
    QCOMPARE(armados.size(), armado ? 1 : 0);
    QCOMPARE(vistos.size(), verItem ? 1 : 0);
    const QVariantMap esperados[] = {
        {{"interno", "100"}, {"ejecutar", true}, {"multa", true}, {"coeficiente", false}},
        {{"interno", "100"}, {"item", 0}}};
    for (int i = 0; i < 2; ++i)
        for (const QVariantMap& a : i ? vistos : armados)
            for (auto [k, v] : esperados[i].asKeyValueRange())
                QCOMPARE(a.value(k), v);
    QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
             factura8Despues);
    QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "100"),
             resultado == "SI" ? QStringLiteral("R") : QString());
    QCOMPARE(Texto(f, "LbEstadoItem"), estadoItem);
    QCOMPARE(Boton(f, "CmdTransMaria")->isEnabled(), factura8Despues == "N");
    QVERIFY(ts->dialogos().registro().isEmpty());
}

// What the screens of the Operation leave behind shows as soon as they close.
void TestHub::pantallasDeLaOperacionRecalculanElEstado() {
    auto ts = Abierta(0);
    QList<QVariantMap> lineas, caratulas;
    Pantalla(*ts, "FrmSubItems", &lineas, [](AppContext& ctx) {
        Sql(ctx, "update caratula set factura8 = 'S' where interno = '100'");
    });
    Pantalla(*ts, "FrmCaratula", &caratulas, [](AppContext& ctx) {
        Sql(ctx, "update caratula set fobdivisas = 0 where interno = '100'");
    });
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    Pulsar(f.CkFlag(4), Qt::Key_Space);
    Pulsar(Boton(f, "CmdSubItems"));
    // The goods screen learns which options are off.
    QCOMPARE(lineas[0].value("flags").toList(),
             (QVariantList{true, true, true, true, false, true, true, true}));
    QCOMPARE(Texto(f, "LbEstadoItem"), QStringLiteral("SIN GENERAR"));
    QVERIFY(!Boton(f, "CmdTransMaria")->isEnabled());
    QVERIFY(!f.findChild<QWidget*>("frmOrdenar")->isHidden());
    Pulsar(Boton(f, "cmdCaratula"));
    QCOMPARE(caratulas[0].value("interno").toString(), QStringLiteral("100"));
    QCOMPARE(Texto(f, "LbEstadoCaratula"), QStringLiteral("INCOMPLETO"));
    QCOMPARE(Texto(f, "LbEstadoItem"), QString());
    QVERIFY(!Boton(f, "cmdITEM")->isEnabled());
    QVERIFY(f.findChild<QWidget*>("frmOrdenar")->isHidden());
}

QTEST_MAIN(TestHub)
#include "test_hub.moc"
