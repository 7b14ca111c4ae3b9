// The configuration: what the start reads from KORVEN.ini and the settings store, the general
// options screen and the screen of the store locations.

#include "foundation/FrmBase.h"
#include "foundation/FrmConGen.h"
#include "foundation/FrmConfig.h"
#include "foundation/LeerConfig.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace korven;
using korven::test::Control;
using korven::test::TestStores;

namespace {

void EscribirArchivo(const QString& ruta, const QString& texto) {
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(texto.toUtf8());
}

QString LeerArchivo(const QString& ruta) {
    QFile f(ruta);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

// A setting by the name of its key.
QVariant Ajuste(const Configuracion& c, const QString& clave) {
    const QHash<QString, QVariant> t = {
        {"CORDANO", c.CORDANO},
        {"MODIFCAT", c.MODIFCAT},
        {"VALORCAT", c.VALORCAT},
        {"PRIMR100", c.PRIMR100},
        {"ARMARITEM", c.ARMARITEM},
        {"MODARTSUB", c.MODARTSUB},
        {"VERSION", c.VERSION},
        {"VrySbtDup", c.VrySbtDup},
        {"SbtFuncionCargaPor", c.SbtFuncionCargaPor},
        {"LISTADO", c.LISTADO},
        {"DEVICENAME", c.DEVICENAME},
        {"DIEMCHINA-IndMaxArancel", c.DIEMCHINA_IndMaxArancel},
        {"DIEMCHINA-PrefPorc", c.DIEMCHINA_PrefPorc},
    };
    return t.value(clave);
}

// A component that can always be made (stands for an installed one).
class Presente : public QObject {};

void Abrir(FrmConGen& frm) {
    frm.LeeImpresoras({});
    frm.show();
    QApplication::setActiveWindow(&frm);
}

void Reemplazar(QLineEdit* t, const QString& texto) {
    t->setFocus();
    t->selectAll();
    QTest::keyClicks(t, texto);
}

} // namespace

class TestConfiguracion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ubicacionesVaciasSeEscribenEnElArchivo();
    void ubicacionesPresentesSeUsanComoEstan();
    void clavesGenerales_data();
    void clavesGenerales();
    void tasasDeIvaConAmbosSeparadores_data();
    void tasasDeIvaConAmbosSeparadores();
    void ajustesDelUsuario();
    void opcionesGeneralesEscribeLasClaves_data();
    void opcionesGeneralesEscribeLasClaves();
    void opcionesGeneralesCamposNumericos();
    void impresoras();
    void insumosTemporales_data();
    void insumosTemporales();
    void ubicacionesF6YCierre();
};

void TestConfiguracion::ubicacionesVaciasSeEscribenEnElArchivo() {
    TestStores ts(Motor::SQLite);
    SettingsStore& s = ts.settings();
    const QString ini = ts.ctx().rutaIni();
    EscribirArchivo(ini, QStringLiteral("[GENERAL]\nCORDANO=S\n"));
    LeerConfig(ts.ctx());
    const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
    // The section GENERAL stays as it was; the keys come in the order they were written back.
    QCOMPARE(LeerArchivo(ini), QStringLiteral("[GENERAL]\nCORDANO=S\n\n"
                                              "[BASESERVER]\nINTERNO=%1\nPERSONAL=%1\nNCM=%1\n"
                                              "ESTADO=%1\n\n[BASELOCAL]\nUSUARIO=%1\n")
                                   .arg(db));
    const Configuracion& c = ts.ctx().config();
    QCOMPARE((QStringList{c.rutaInternos, c.rutaSystablas, c.rutaPersonal, c.rutaNcm, c.rutaUsuario,
                          c.rutaEstado}),
             (QStringList{db + "internos.mdb", db + "systablas.mdb", db + "personal.mdb",
                          db + "ncm.mdb", db + "usuario.mdb", db + "estados.mdb"}));
    // The settings store received the empty locations first, INTERNO normalised to a lone
    // separator; the second start publishes what the first wrote back, and changes nothing.
    const QStringList bases = {"INTERNO", "SYSTABLAS", "PERSONAL", "NCM", "ESTADO", "USUARIO"};
    QCOMPARE(s.GetSetting("KORVEN", "DEFAULT", "UBICACION"), ts.directorio());
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "INTERNO", "x"), DirectorioNormal(QString()));
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "NCM", "x"), QString());
    LeerConfig(ts.ctx());
    for (const QString& b : bases)
        QCOMPARE(s.GetSetting("KORVEN", "BASES", b), db);
    QCOMPARE(LeerArchivo(ini).count(QStringLiteral("INTERNO=")), 1);
}

void TestConfiguracion::ubicacionesPresentesSeUsanComoEstan() {
    TestStores ts(Motor::SQLite);
    const QString ini = ts.ctx().rutaIni();
    // A directory without its final separator is taken as it stands: the file name is glued
    // to it.
    EscribirArchivo(ini, QStringLiteral("[BASESERVER]\nInterno=/srv/korven\nPERSONAL=/srv/p/\n"
                                        "NCM=   \n[BASELOCAL]\nusuario=/home/u/\n"));
    LeerConfig(ts.ctx());
    const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
    const Configuracion& c = ts.ctx().config();
    QCOMPARE(
        (QStringList{c.rutaInternos, c.rutaSystablas, c.rutaPersonal, c.rutaNcm, c.rutaUsuario,
                     c.rutaEstado}),
        (QStringList{"/srv/korveninternos.mdb", "/srv/korvensystablas.mdb", "/srv/p/personal.mdb",
                     db + "ncm.mdb", "/home/u/usuario.mdb", db + "estados.mdb"}));
    QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ini), QStringLiteral("/srv/korven"));
    QCOMPARE(IniFile::Leer("NCM", "BASESERVER", ini), db);
    SettingsStore& s = ts.settings();
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "INTERNO"), QStringLiteral("/srv/korven/"));
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "SYSTABLAS"), QStringLiteral("/srv/korven"));
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "USUARIO"), QStringLiteral("/home/u/"));
}

void TestConfiguracion::clavesGenerales_data() {
    QTest::addColumn<QString>("clave");
    QTest::addColumn<QString>("linea");    // the line of the file; empty: the key is missing
    QTest::addColumn<QString>("esperado"); // as the value reads as text
    const char* casos[][3] = {
        {"VERSION", "VERSION=1", "2"},
        {"VERSION", "", "2"},
        {"DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=abc", "40"},
        {"DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=12.5", "12.5"},
        {"DIEMCHINA-IndMaxArancel", "DIEMCHINA-IndMaxArancel=abc", "35"},
        {"DIEMCHINA-IndMaxArancel", "DIEMCHINA-IndMaxArancel=20", "20"},
        {"SbtFuncionCargaPor", "", "true"},
        {"SbtFuncionCargaPor", "sbtfuncioncargapor=N", "false"},
        {"ARMARITEM", "ARMARITEM=1", "1"},
        {"ARMARITEM", "ARMARITEM=3", "2"},
        {"ARMARITEM", "", "2"},
        {"MODIFCAT", "MODIFCAT=S", "2"},
        {"MODIFCAT", "MODIFCAT=SI", "1"},
        {"VALORCAT", "VALORCAT=S", "2"},
        {"PRIMR100", "PRIMR100=N", "1"},
        {"MODARTSUB", "MODARTSUB= S ", "S"},
        {"MODARTSUB", "MODARTSUB=X", "N"},
        {"VrySbtDup", "VrySbtDup=S", "S"},
        {"CORDANO", "CORDANO=S", "true"},
        {"LISTADO", "LISTADO=1", "1"},
        {"LISTADO", "LISTADO=", "0"},
        {"DEVICENAME", "DEVICENAME=HP LaserJet 1020", "HP LaserJet 1020"},
    };
    for (const auto& c : casos)
        QTest::addRow("%s", *c[1] ? c[1] : qPrintable(QStringLiteral("%1 falta").arg(c[0])))
            << c[0] << c[1] << c[2];
}

void TestConfiguracion::clavesGenerales() {
    QFETCH(QString, clave);
    QFETCH(QString, linea);
    QFETCH(QString, esperado);
    TestStores ts(Motor::SQLite);
    EscribirArchivo(ts.ctx().rutaIni(), QStringLiteral("[GENERAL]\n") + linea + "\n");
    LeerConfig(ts.ctx());
    const QVariant valor = Ajuste(ts.ctx().config(), clave);
    QVERIFY2(valor.isValid(), qPrintable(clave));
    QCOMPARE(valor.toString(), esperado);
}

void TestConfiguracion::tasasDeIvaConAmbosSeparadores_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<double>("esperado");
    for (const QString s : {",", "."}) {
        QTest::addRow("punto, separador %s", qPrintable(s)) << s << "10.5" << 10.5;
        QTest::addRow("coma, separador %s", qPrintable(s)) << s << "10,5" << 10.5;
        QTest::addRow("entero, separador %s", qPrintable(s)) << s << "21" << 21.0;
        QTest::addRow("vacio, separador %s", qPrintable(s)) << s << "" << 0.0;
    }
}

void TestConfiguracion::tasasDeIvaConAmbosSeparadores() {
    QFETCH(QString, separador);
    QFETCH(QString, texto);
    QFETCH(double, esperado);
    SeparadorDecimalScope sep(separador);
    TestStores ts(Motor::SQLite);
    EscribirArchivo(ts.ctx().rutaIni(),
                    QStringLiteral("[GENERAL]\nIVARIN=%1\nIVARNI=%1\n").arg(texto));
    LeerConfig(ts.ctx());
    QCOMPARE(ts.ctx().config().IVARIN, esperado);
    QCOMPARE(ts.ctx().config().IVARNI, esperado);
}

void TestConfiguracion::ajustesDelUsuario() {
    TestStores ts(Motor::SQLite);
    SettingsStore& s = ts.settings();
    const Configuracion& c = ts.ctx().config();
    s.SaveSetting("GENERAL", "OBJ", "CancelManual", "S");
    s.SaveSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "S");
    // Without the temporary supplies component the option is off whatever the store says.
    LeerConfig(ts.ctx());
    QVERIFY(c.CancelManual && !c.SupplyTemporaryInstalado && !c.INSTMP_RestarPerMer);
    ts.ctx().componentes().Registrar(
        "SupplyTemporary.Main", [](AppContext&) { return std::unique_ptr<QObject>(new Presente); });
    LeerConfig(ts.ctx());
    QVERIFY(c.SupplyTemporaryInstalado && c.INSTMP_RestarPerMer);
    s.SaveSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "N");
    s.SaveSetting("GENERAL", "OBJ", "CancelManual", "X");
    LeerConfig(ts.ctx());
    QVERIFY(!c.INSTMP_RestarPerMer && !c.CancelManual);
}

void TestConfiguracion::opcionesGeneralesEscribeLasClaves_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("tasa");
    QTest::newRow("coma") << ","
                          << "21,5";
    QTest::newRow("punto") << "."
                           << "21.5";
}

void TestConfiguracion::opcionesGeneralesEscribeLasClaves() {
    QFETCH(QString, separador);
    QFETCH(QString, tasa);
    SeparadorDecimalScope sep(separador);
    TestStores ts(Motor::SQLite);
    EscribirArchivo(ts.ctx().rutaIni(), "[GENERAL]\nMODIFCAT=S\nDIEMCHINA-PrefPorc=abc\n"
                                        "ARMARITEM=1\nLISTADO=1\nIVARIN=10.5\nSbtMostrarAsc=S\n"
                                        "MODARTSUB=S\n");
    ts.settings().SaveSetting("GENERAL", "OBJ", "CancelManual", "S");
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    QFile::remove(ts.ctx().rutaIni());
    // It shows what was read; without the temporary supplies component its options are off.
    QCOMPARE(Control<QComboBox>(frm, "cboListado")->currentText(),
             QStringLiteral("Fecha de Creación"));
    QCOMPARE(Control<QLineEdit>(frm, "txtRIN")->text(), QString("10#5").replace('#', separador));
    QVERIFY(!Control<QCheckBox>(frm, "chINSTEMPPerMer")->isEnabled());
    QVERIFY(!Control<QCheckBox>(frm, "chINSTEMPVDE")->isEnabled());
    Control<QCheckBox>(frm, "chVfySbtDup")->setChecked(true);
    Control<QCheckBox>(frm, "chSbtFuncionCargaPor")->setChecked(false);
    Reemplazar(Control<QLineEdit>(frm, "txtRIN"), tasa);
    QTest::keyClick(Control<QLineEdit>(frm, "txtRIN"), Qt::Key_Escape);
    QVERIFY(!frm.isVisible());
    // The keys in the order they are written, the rates always with a point.
    QCOMPARE(LeerArchivo(ts.ctx().rutaIni()),
             QStringLiteral("[GENERAL]\nLISTADO=1\nGROUPBYART=N\nMODIFCAT=S\nPRIMR100=N\n"
                            "VALORCAT=N\nFLGIDARTTOOTROS=N\nARMARITEM=1\nVRYSBTDUP=S\n"
                            "SBTNROARTAI=N\nNOCALCLIQU=N\nIVARIN=21.5\nIVARNI=0\n"
                            "OPERACIONESMOSTRARTODO=N\nVENDEDORORDERXNOMBRE=N\nSBTMANTCODART=N\n"
                            "SBTMANTDATOS=N\nSBTMOSTRARASC=S\nSBTFORZARNROARTAI=N\n"
                            "SBTFUNCIONCARGAPOR=N\nMODARTSUB=S\nENVIARCOMEXT=N\n"
                            "DIEMCHINA-INDMAXARANCEL=35\nDIEMCHINA-PREFPORC=40\n"));
    const Configuracion& c = ts.ctx().config();
    QCOMPARE(c.IVARIN, 21.5);
    QCOMPARE(QList<int>({c.MODIFCAT, c.ARMARITEM, c.LISTADO}), QList<int>({2, 1, 1}));
    QCOMPARE(c.VrySbtDup, QStringLiteral("S"));
    QVERIFY(!c.SbtFuncionCargaPor && c.CancelManual);
    QCOMPARE(ts.settings().GetSetting("GENERAL", "OBJ", "CancelManual"), QStringLiteral("S"));
    // The inputs component is absent: its options are left as they were.
    QCOMPARE(ts.settings().GetSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "-"),
             QStringLiteral("-"));
    QCOMPARE(ts.settings().GetSetting("SupplyLink", "CONFIG", "opVDE", "-"), QStringLiteral("-"));
}

void TestConfiguracion::opcionesGeneralesCamposNumericos() {
    SeparadorDecimalScope sep(",");
    TestStores ts(Motor::SQLite);
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    QLineEdit* ind = Control<QLineEdit>(frm, "txtIndMaxArancel");
    QLineEdit* pref = Control<QLineEdit>(frm, "txtPrefPorc");
    Reemplazar(ind, "x");
    pref->clear();
    QTest::keyClick(ind, Qt::Key_Escape);
    QVERIFY(frm.isVisible());
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"El campo Indice Maximo Arancel debe tener un valor númerico"});
    QCOMPARE(QApplication::focusWidget(), ind);
    QVERIFY(!QFile::exists(ts.ctx().rutaIni()));
    Reemplazar(ind, "30,5");
    QTest::keyClick(ind, Qt::Key_Escape);
    QVERIFY(frm.isVisible());
    QCOMPARE(ts.dialogos().mensajes().last(),
             QStringLiteral("El campo Preferencia Porcentual debe tener un valor númerico"));
    QCOMPARE(QApplication::focusWidget(), pref);
    QTest::keyClicks(pref, "12");
    QTest::keyClick(pref, Qt::Key_Escape);
    QVERIFY(!frm.isVisible());
    QCOMPARE(IniFile::Leer("DIEMCHINA-IndMaxArancel", "GENERAL", ts.ctx().rutaIni()),
             QStringLiteral("30.5"));
    QCOMPARE(ts.ctx().config().DIEMCHINA_IndMaxArancel, 30.5);
    QCOMPARE(ts.ctx().config().DIEMCHINA_PrefPorc, 12.0);
}

void TestConfiguracion::impresoras() {
    TestStores ts(Motor::SQLite);
    Configuracion& c = ts.ctx().config();
    c.DEVICENAME = QStringLiteral("P3");
    c.DRIVERNAME = QStringLiteral("winspool");
    c.PORT = QStringLiteral("LPT1:");
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    ts.dialogos().Limpiar();
    QStringList nombres;
    for (int i = 1; i <= 11; ++i)
        nombres << QStringLiteral("P%1").arg(i);
    // The form keeps ten printers; the eleventh is a fault.
    frm.LeeImpresoras(nombres);
    auto* lst = Control<QListWidget>(frm, "LstImpresoras");
    QCOMPARE(lst->count(), 10);
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"9 / Subíndice fuera del intervalo Seccion "
                                                   "[KORVEN.frmConGen.LeeImpresoras]"});
    QCOMPARE(lst->currentItem()->text(), QStringLiteral("P3"));
    lst->setCurrentRow(6);
    frm.reject();
    QCOMPARE(IniFile::Leer("DEVICENAME", "GENERAL", ts.ctx().rutaIni()), QStringLiteral("P7"));
    QCOMPARE((QStringList{c.DEVICENAME, c.DRIVERNAME, c.PORT}), (QStringList{"P7", "", ""}));
}

void TestConfiguracion::insumosTemporales_data() {
    QTest::addColumn<bool>("restar");
    QTest::addColumn<bool>("vde");
    QTest::addColumn<QString>("restarGuardado");
    QTest::newRow("restar") << true << false << "S";
    QTest::newRow("no restar") << false << false << "N";
    // The extended decimal mode excludes the other.
    QTest::newRow("restar y decimal extendido") << true << true << "N";
}

// Ctrl+C leaves the screen from a text box too, and saves as Esc does.
void TestConfiguracion::insumosTemporales() {
    QFETCH(bool, restar);
    QFETCH(bool, vde);
    QFETCH(QString, restarGuardado);
    TestStores ts(Motor::SQLite);
    ts.ctx().config().SupplyTemporaryInstalado = true;
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    Control<QCheckBox>(frm, "chINSTEMPPerMer")->setChecked(restar);
    Control<QCheckBox>(frm, "chINSTEMPVDE")->setChecked(vde);
    QLineEdit* rin = Control<QLineEdit>(frm, "txtRIN");
    rin->setFocus();
    QTest::keyClick(rin, Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!frm.isVisible());
    QCOMPARE(IniFile::Leer("SbtFuncionCargaPor", "GENERAL", ts.ctx().rutaIni()),
             QStringLiteral("S"));
    QCOMPARE(ts.settings().GetSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer"), restarGuardado);
    QCOMPARE(ts.settings().GetSetting("SupplyLink", "CONFIG", "opVDE"), QString(vde ? "S" : "N"));
    QCOMPARE(ts.ctx().config().INSTMP_RestarPerMer, restarGuardado == "S");
}

void TestConfiguracion::ubicacionesF6YCierre() {
    TestStores ts(Motor::SQLite);
    AppContext& ctx = ts.ctx();
    const QString ini = ctx.rutaIni();
    EscribirArchivo(ini, "[BASESERVER]\nINTERNO=/srv/k/\nPERSONAL=/srv/p\nNCM=\nESTADO=/srv/e/\n"
                         "[BASELOCAL]\nUSUARIO=/home/u\n");
    ctx.config().rutaSystablas = QStringLiteral("/viejo/systablas.mdb");
    ctx.settings().SaveSetting("KORVEN", "BASES", "NCM", "sin tocar");
    // The folder browser answers one folder, then is cancelled.
    QStringList respuestas{"/datos/ncm", ""};
    QList<QVariantMap> pedidos;
    ctx.pantallas().Registrar(FrmBase::PantallaCarpeta(), [&](AppContext&, const QVariantMap& a) {
        pedidos << a;
        return QVariant(respuestas.takeFirst());
    });
    // The configuration screen opens its two screens.
    QStringList abiertas;
    ctx.pantallas().Registrar("FrmConGen", [&](AppContext&, const QVariantMap&) {
        abiertas << "FrmConGen";
        return QVariant();
    });
    FrmConfig cfg(ctx);
    QTest::mouseClick(Control<QPushButton>(cfg, "Command1"), Qt::LeftButton);
    QCOMPARE(abiertas, QStringList{"FrmConGen"});
    FrmBase frm(ctx);
    frm.show();
    QApplication::setActiveWindow(&frm);
    auto txt = [&frm](const char* n) { return Control<QLineEdit>(frm, n); };
    QCOMPARE(
        (QStringList{txt("txtInterno")->text(), txt("TxtPersonal")->text(), txt("TxtNcm")->text(),
                     txt("TxtEstado")->text(), txt("TxtUsuario")->text()}),
        (QStringList{"/srv/k/", "/srv/p", "", "/srv/e/", "/home/u"}));
    // Enter moves on to the nomenclator's field; F6 there asks for a folder.
    txt("txtInterno")->setFocus();
    QTest::keyClick(txt("txtInterno"), Qt::Key_Return);
    QTest::keyClick(txt("TxtPersonal"), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), txt("TxtNcm"));
    QTest::keyClick(txt("TxtNcm"), Qt::Key_F6);
    QCOMPARE(txt("TxtNcm")->text(), QStringLiteral("/datos/ncm"));
    QCOMPARE(pedidos[0].value("titulo").toString(), QStringLiteral("Seleccione Ubicación"));
    QCOMPARE(pedidos[0].value("inicial").toString(), QString());
    // A cancelled browser leaves the field as it was.
    QTest::keyClick(txt("TxtNcm"), Qt::Key_F6);
    QCOMPARE(txt("TxtNcm")->text(), QStringLiteral("/datos/ncm"));
    QCOMPARE(pedidos[1].value("inicial").toString(), QStringLiteral("/datos/ncm"));
    // Esc closes: every field is normalised and written to its key.
    QTest::keyClick(txt("TxtNcm"), Qt::Key_Escape);
    QVERIFY(!frm.isVisible());
    QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ini), QStringLiteral("/srv/k/"));
    QCOMPARE(IniFile::Leer("PERSONAL", "BASESERVER", ini), DirectorioNormal("/srv/p"));
    QCOMPARE(IniFile::Leer("NCM", "BASESERVER", ini), DirectorioNormal("/datos/ncm"));
    QCOMPARE(IniFile::Leer("USUARIO", "BASELOCAL", ini), DirectorioNormal("/home/u"));
    QCOMPARE(IniFile::Leer("USUARIO", "BASESERVER", ini), QString());
    // The paths in memory follow, but systablas and the settings store wait for the next start.
    const Configuracion& c = ctx.config();
    QCOMPARE((QStringList{c.rutaInternos, c.rutaNcm, c.rutaEstado, c.rutaSystablas}),
             (QStringList{"/srv/k/internos.mdb", DirectorioNormal("/datos/ncm") + "ncm.mdb",
                          "/srv/e/estados.mdb", "/viejo/systablas.mdb"}));
    QCOMPARE(ctx.settings().GetSetting("KORVEN", "BASES", "NCM"), QStringLiteral("sin tocar"));
}

QTEST_MAIN(TestConfiguracion)
#include "test_configuracion.moc"
