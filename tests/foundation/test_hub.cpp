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

QVariantMap Expo(const char* subreg) {
    QVariantMap c = CaratulaCompleta("100");
    c.insert("idsubreg", subreg);
    for (const auto& [k, v] : {std::pair<const char*, QVariant>{"bulnro", "1-10"},
                               {"bulcod", "01"},
                               {"bultip", "CA"},
                               {"bulpes", 100.0},
                               {"buldes", 10.0}})
        c.insert(k, v);
    return c;
}

// An Operation open on this workstation, its lines adding up to its FOB.
void Abierta(TestStores& ts, const QVariantMap& caratula) {
    Insertar(ts, "INTERNOS", "caratula", caratula);
    const QString x = caratula.value("interno").toString();
    Insertar(ts, "INTERNOS", "subitems", {{"interno", x}, {"id", 1}, {"fob", 1000.0}});
    Insertar(
        ts, "INTERNOS", "interno",
        {{"interno", x}, {"maquina", "PC-A"}, {"usuario", ""}, {"fecha", QDate::currentDate()}});
}

QString Texto(FrmDetalleInterno& f, const char* label) {
    return f.findChild<QLabel*>(label)->text();
}

QPushButton* Boton(FrmDetalleInterno& f, const QString& nombre) {
    return f.findChild<QPushButton*>(nombre);
}

// Presses a button from the keyboard: Enter on the button that has the focus.
void Pulsar(QPushButton* b) {
    QVERIFY(b->isEnabled());
    b->setFocus();
    QTest::keyClick(b, Qt::Key_Return);
}

} // namespace

class TestHub : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cargaMuestraEstadoYOpciones_data() { FilasDeMotores(); }
    void cargaMuestraEstadoYOpciones();
    void escGuardaOpcionesYLiberaElBloqueo_data();
    void escGuardaOpcionesYLiberaElBloqueo();
    void traspasosSinComponente_data();
    void traspasosSinComponente();
    void command1SinComponente();
    void transferenciaConDiferencias_data() { FilasDeMotores(); }
    void transferenciaConDiferencias();
    void armadoDeItems_data();
    void armadoDeItems();
    void armadoSinPantalla();
    void pantallasDeLaOperacionRecalculanElEstado_data() { FilasDeMotores(); }
    void pantallasDeLaOperacionRecalculanElEstado();
};

void TestHub::cargaMuestraEstadoYOpciones() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    Abierta(*ts, CaratulaCompleta("100"));
    SettingsStore& s = ts->settings();
    s.SaveSetting("KORVEN", "100", "FLAG1", "0");
    s.SaveSetting("KORVEN", "100", "FLAG3", "");
    s.SaveSetting("KORVEN", "100", "FLAG6", "0");
    s.SaveSetting("KORVEN", "100", "COEFEXPO", "0");
    ts->ctx().config().ARMARITEM = 1;
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    QCOMPARE(f.windowTitle(), QStringLiteral("Detalles de Interno"));
    QCOMPARE(Texto(f, "LbInterno"), QStringLiteral("100"));
    QCOMPARE(Texto(f, "LbSubregimen"), QStringLiteral("IC04"));
    QCOMPARE(Texto(f, "LbAduana"), QStringLiteral("(001) BUENOS AIRES"));
    QCOMPARE(Texto(f, "LbCliente"), QStringLiteral("Cliente Uno"));
    QCOMPARE(Texto(f, "LbItem"), QStringLiteral("0"));
    QCOMPARE(Texto(f, "LbEstadoCaratula"), QStringLiteral("COMPLETO!"));
    QCOMPARE(Texto(f, "LbEstadoSubItem"), QStringLiteral("COMPLETO!"));
    QCOMPARE(Texto(f, "LbEstadoItem"), QStringLiteral("GENERADO!"));
    QCOMPARE(Texto(f, "LbEstadoMaria"), QString());
    const bool esperados[8] = {true, false, true, true, true, true, false, true};
    for (int i = 0; i < 8; ++i)
        QCOMPARE(f.CkFlag(i)->isChecked(), esperados[i]);
    QVERIFY(!f.findChild<QCheckBox*>("ChCOEF")->isChecked());
    QVERIFY(!f.findChild<QCheckBox*>("ChCOEF")->isEnabled());
    QVERIFY(f.findChild<QRadioButton*>("opOrdenxNCM")->isChecked());
    QVERIFY(!Boton(f, "Command1")->isEnabled());
    QVERIFY(Boton(f, "cmdITEM")->isEnabled());
    QVERIFY(Boton(f, "CmdTransMaria")->isEnabled());
    QVERIFY(!Boton(f, "CmdBultos")->isEnabled());
    QVERIFY(Boton(f, "CmdHojaVal")->isEnabled());
    QVERIFY(f.findChild<QWidget*>("frmOrdenar")->isHidden());
    QCOMPARE(ts->ctx().InternoActual, QStringLiteral("100"));
    QVERIFY(ts->dialogos().registro().isEmpty());
}

void TestHub::escGuardaOpcionesYLiberaElBloqueo_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("subreg");
    QTest::addColumn<int>("tecla");
    QTest::addColumn<QString>("coef"); // COEFEXPO after closing
    for (int motor : {0, 1}) {
        const QString m = motor == 0 ? "sqlite " : "postgresql ";
        QTest::newRow(qPrintable(m + "importacion, Esc"))
            << motor << "IC04" << int(Qt::Key_Escape) << "0";
        QTest::newRow(qPrintable(m + "exportacion, Esc"))
            << motor << "EC01" << int(Qt::Key_Escape) << "1";
        QTest::newRow(qPrintable(m + "exportacion, Ctrl+C"))
            << motor << "EC01" << int(Qt::Key_C) << "1";
    }
}

void TestHub::escGuardaOpcionesYLiberaElBloqueo() {
    MOTOR_O_SALTAR();
    QFETCH(QString, subreg);
    QFETCH(int, tecla);
    QFETCH(QString, coef);
    auto ts = StoresConMaestros(motor);
    Abierta(*ts, Expo(qPrintable(subreg)));
    Insertar(*ts, "INTERNOS", "interno", {{"interno", "200"}, {"maquina", "PC-B"}});
    ts->settings().SaveSetting("KORVEN", "100", "COEFEXPO", "0");
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    // The clerk turns off "Pais de Origen" and turns on the coefficient.
    f.CkFlag(2)->setFocus();
    QTest::keyClick(f.CkFlag(2), Qt::Key_Space);
    auto* coeficiente = f.findChild<QCheckBox*>("ChCOEF");
    if (coeficiente->isEnabled()) {
        coeficiente->setFocus();
        QTest::keyClick(coeficiente, Qt::Key_Space);
    }
    QTest::keyClick(Boton(f, "cmdCaratula"), static_cast<Qt::Key>(tecla),
                    tecla == Qt::Key_C ? Qt::ControlModifier : Qt::NoModifier);
    QVERIFY(!f.isVisible());
    QCOMPARE(f.result(), int(QDialog::Rejected));
    SettingsStore& s = ts->settings();
    for (int i = 0; i < 8; ++i)
        QCOMPARE(s.GetSetting("KORVEN", "100", QStringLiteral("FLAG%1").arg(i)),
                 i == 2 ? QStringLiteral("0") : QStringLiteral("1"));
    QCOMPARE(s.GetSetting("KORVEN", "100", "COEFEXPO"), coef);
    // Its lock is gone, the lock of another Operation stays.
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 0);
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "200"), 1);
    QVERIFY(ts->ctx().InternoActual.isEmpty());
}

void TestHub::traspasosSinComponente_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("subreg");
    QTest::addColumn<QString>("boton");
    QTest::addColumn<QString>("mensaje");
    struct {
        const char* subreg;
        const char* boton;
        const char* componente;
        const char* seccion;
    } casos[] = {
        {"ET01", "CmdTransMaria", "DeclarationOutput.Main",
         "Seccion [KORVEN.frmDetalleInterno.CmdTransMaria]"},
        {"EC02", "cmdPrint", "SupplyLink.Main", "Seccion [KORVEN.frmDetalleInterno.cmdPrint]"},
        {"ET01", "CmdHojaVal", "ValueSheet.Main", "Seccion [KORVEN.frmDetalleInterno.CmdHojaVal]"},
        {"ET01", "cmdCertOrig", "OriginCertificate.Main",
         "Seccion [KORVEN.frmDetalleInterno.cmdCertOrig]"},
        {"ET01", "cmdExportar", "CancellationImport.Main",
         "Seccion [KORVEN.Detalleinterno.cmdExportar]"},
        {"ET01", "cmdExportINS", "SupplyTemporary.Main",
         "Seccion [Korven.frmdetalleinterno.cmdExportINS]"},
    };
    for (int motor : {0, 1})
        for (const auto& c : casos)
            QTest::newRow(qPrintable(
                QStringLiteral("%1 %2").arg(motor == 0 ? "sqlite" : "postgresql", c.boton)))
                << motor << c.subreg << c.boton
                << QStringLiteral("429 - El componente %1 no está instalado. - %2")
                       .arg(c.componente, c.seccion);
}

// Each hand-off reports, when it is pressed, that its component is not installed, with its own
// section text; the hub stays on the screen and usable.
void TestHub::traspasosSinComponente() {
    MOTOR_O_SALTAR();
    QFETCH(QString, subreg);
    QFETCH(QString, boton);
    QFETCH(QString, mensaje);
    auto ts = StoresConMaestros(motor);
    Abierta(*ts, Expo(qPrintable(subreg)));
    bool chequeado = false;
    ts->ctx().pantallas().Registrar("ChequearInterno", [&](AppContext&, const QVariantMap& a) {
        chequeado = a.value("interno") == "100";
        return QVariant(false);
    });
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    Pulsar(Boton(f, boton));
    QCOMPARE(ts->dialogos().mensajes(), QStringList{mensaje});
    QCOMPARE(ts->dialogos().registro().last().icono, Dialogos::Icono::Critico);
    QCOMPARE(chequeado, boton == "CmdTransMaria");
    QVERIFY(f.isVisible());
    QVERIFY(Boton(f, boton)->isEnabled());
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 1);
    QCOMPARE(Texto(f, "LbEstadoBultos"), QStringLiteral("COMPLETO"));
}

// Command1 is off without its component; its own failure text says the section is disabled.
void TestHub::command1SinComponente() {
    auto ts = StoresConMaestros(0);
    Abierta(*ts, CaratulaCompleta("100"));
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    QVERIFY(!Boton(f, "Command1")->isEnabled());
    f.Command1();
    QCOMPARE(ts->dialogos().mensajes(),
             QStringList{"429 - El componente OperationExchange.Main no está instalado.\n\nEsta "
                         "sección esta deshabilitada!"});
    QCOMPARE(ts->dialogos().registro().last().titulo,
             QStringLiteral("Sección OperationExchangexDLL"));
}

// Differences found by the check of the countries are confirmed before the transfer.
void TestHub::transferenciaConDiferencias() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    Abierta(*ts, CaratulaCompleta("100"));
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
    QCOMPARE(d.mensajes(),
             QStringList{"429 - El componente DeclarationOutput.Main no está "
                         "instalado. - Seccion [KORVEN.frmDetalleInterno.CmdTransMaria]"});
}

void TestHub::armadoDeItems_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("factura8");
    QTest::addColumn<QString>("resultado"); // ArmadoResultado the assembly leaves
    QTest::addColumn<bool>("armado");       // the assembly screen opened
    QTest::addColumn<bool>("verItem");      // the item screen opened
    QTest::addColumn<QString>("factura8Despues");
    QTest::addColumn<QString>("estadoItem");
    for (int motor : {0, 1}) {
        const QString m = motor == 0 ? "sqlite " : "postgresql ";
        QTest::newRow(qPrintable(m + "sin cambios va a los items")) << motor << "N"
                                                                    << "SI" << false << true << "N"
                                                                    << "GENERADO!";
        QTest::newRow(qPrintable(m + "armado correcto")) << motor << "S"
                                                         << "SI" << true << true << "N"
                                                         << "GENERADO!";
        QTest::newRow(qPrintable(m + "armado fallido")) << motor << "S"
                                                        << "NO" << true << false << "S"
                                                        << "SIN GENERAR";
        QTest::newRow(qPrintable(m + "armado cancelado")) << motor << "S"
                                                          << "No" << true << false << "S"
                                                          << "SIN GENERAR";
    }
}

void TestHub::armadoDeItems() {
    MOTOR_O_SALTAR();
    QFETCH(QString, factura8);
    QFETCH(QString, resultado);
    QFETCH(bool, armado);
    QFETCH(bool, verItem);
    QFETCH(QString, factura8Despues);
    QFETCH(QString, estadoItem);
    auto ts = StoresConMaestros(motor);
    QVariantMap c = CaratulaCompleta("100");
    c.insert("factura8", factura8);
    Abierta(*ts, c);
    ts->settings().SaveSetting("KORVEN", "AEC", "100", "R");
    QVariantMap argsArmado, argsItem;
    int armados = 0, vistos = 0;
    // The assembly: a good run clears the change mark.
    ts->ctx().pantallas().Registrar("FrmArmarItem", [&](AppContext& ctx, const QVariantMap& a) {
        ++armados;
        argsArmado = a;
        ctx.ArmadoResultado = resultado;
        if (resultado == "SI")
            ctx.stores()
                .getDataConnectionByEntity("INTERNOS")
                .Ejecutar("update caratula set factura8 = 'N' where interno = '100'");
        return QVariant();
    });
    ts->ctx().pantallas().Registrar("FrmVerItem", [&](AppContext&, const QVariantMap& a) {
        ++vistos;
        argsItem = a;
        return QVariant();
    });
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    auto* ncm = f.findChild<QRadioButton*>("opOrdenxNCM");
    ncm->setFocus();
    QTest::keyClick(ncm, Qt::Key_Space);
    auto* multa = f.findChild<QCheckBox*>("ChMulta");
    multa->setFocus();
    QTest::keyClick(multa, Qt::Key_Space);
    Pulsar(Boton(f, "cmdITEM"));
    QCOMPARE(armados, armado ? 1 : 0);
    QCOMPARE(vistos, verItem ? 1 : 0);
    if (armado) {
        QCOMPARE(argsArmado.value("interno").toString(), QStringLiteral("100"));
        QCOMPARE(argsArmado.value("ejecutar").toBool(), true);
        QCOMPARE(argsArmado.value("multa").toBool(), true);
        QCOMPARE(argsArmado.value("coeficiente").toBool(), false);
        QCOMPARE(ts->ctx().config().ARMARITEM, 1);
    }
    if (verItem) {
        QCOMPARE(argsItem.value("interno").toString(), QStringLiteral("100"));
        QCOMPARE(argsItem.value("item").toInt(), 0);
    }
    QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
             factura8Despues);
    QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "100"),
             resultado == "SI" ? QStringLiteral("R") : QString());
    QCOMPARE(Texto(f, "LbEstadoItem"), estadoItem);
    QCOMPARE(Boton(f, "CmdTransMaria")->isEnabled(), factura8Despues == "N");
    QVERIFY(ts->dialogos().registro().isEmpty());
}

void TestHub::armadoSinPantalla() {
    auto ts = StoresConMaestros(0);
    QVariantMap c = CaratulaCompleta("100");
    c.insert("factura8", "S");
    Abierta(*ts, c);
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    Pulsar(Boton(f, "cmdITEM"));
    QCOMPARE(ts->dialogos().mensajes(),
             QStringList{QString::number(KorvenError::ComponenteNoInstalado) +
                         " - La pantalla FrmArmarItem no está instalada. - "
                         "[KORVEN.frmDetalleInterno.cmdItem]"});
    QVERIFY(f.isVisible());
}

// What the screens of the Operation leave behind shows as soon as they close.
void TestHub::pantallasDeLaOperacionRecalculanElEstado() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    Abierta(*ts, CaratulaCompleta("100"));
    QStringList abiertas;
    QVariantList flags;
    auto pantalla = [&](const QString& nombre, const QString& sql) {
        ts->ctx().pantallas().Registrar(
            nombre, [&, nombre, sql](AppContext& ctx, const QVariantMap& a) {
                abiertas << nombre + ":" + a.value("interno").toString();
                if (a.contains("flags"))
                    flags = a.value("flags").toList();
                if (!sql.isEmpty())
                    ctx.stores().getDataConnectionByEntity("INTERNOS").Ejecutar(sql);
                return QVariant();
            });
    };
    pantalla("FrmSubItems", "update caratula set factura8 = 'S' where interno = '100'");
    pantalla("FrmCaratula", "update caratula set fobdivisas = 0 where interno = '100'");
    FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
    f.show();
    f.CkFlag(4)->setChecked(false);
    Pulsar(Boton(f, "CmdSubItems"));
    // The goods screen learns which options are off.
    QCOMPARE(flags, (QVariantList{true, true, true, true, false, true, true, true}));
    QCOMPARE(Texto(f, "LbEstadoItem"), QStringLiteral("SIN GENERAR"));
    QVERIFY(!Boton(f, "CmdTransMaria")->isEnabled());
    QVERIFY(!Boton(f, "CmdHojaVal")->isEnabled());
    QVERIFY(!f.findChild<QWidget*>("frmOrdenar")->isHidden());
    Pulsar(Boton(f, "cmdCaratula"));
    QCOMPARE(Texto(f, "LbEstadoCaratula"), QStringLiteral("INCOMPLETO"));
    QCOMPARE(Texto(f, "LbEstadoItem"), QString());
    QVERIFY(!Boton(f, "cmdITEM")->isEnabled());
    QVERIFY(f.findChild<QWidget*>("frmOrdenar")->isHidden());
    QCOMPARE(abiertas, (QStringList{"FrmSubItems:100", "FrmCaratula:100"}));
}

QTEST_MAIN(TestHub)
#include "test_hub.moc"
