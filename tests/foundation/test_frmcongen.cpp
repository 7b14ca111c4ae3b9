#include "foundation/FrmConGen.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/SettingsStore.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QtTest>

using namespace korven;
using korven::test::Control;
using korven::test::TestStores;

namespace {

void Escribir(const QString& ruta, const QByteArray& texto) {
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(texto);
}

QString Leer(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

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

class TestFrmConGen : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void carga();
    void cierreEscribeLasClaves_data();
    void cierreEscribeLasClaves();
    void camposNumericos();
    void impresoras();
    void insumosTemporales_data();
    void insumosTemporales();
    void ctrlCCierra();
};

void TestFrmConGen::carga() {
    SeparadorDecimalScope sep(",");
    TestStores ts(Motor::SQLite);
    Escribir(ts.ctx().rutaIni(), "[GENERAL]\nMODIFCAT=S\nDIEMCHINA-PrefPorc=abc\nARMARITEM=1\n"
                                 "LISTADO=1\nIVARIN=10.5\nSbtMostrarAsc=S\nMODARTSUB=S\n");
    ts.settings().SaveSetting("GENERAL", "OBJ", "CancelManual", "S");
    FrmConGen frm(ts.ctx());
    QCOMPARE(frm.windowTitle(), QStringLiteral("Configuración General - Korven Windows"));
    QVERIFY(Control<QCheckBox>(frm, "Check1")->isChecked());
    QVERIFY(!Control<QCheckBox>(frm, "Check3")->isChecked());
    QVERIFY(Control<QCheckBox>(frm, "chSbtFuncionCargaPor")->isChecked());
    QVERIFY(Control<QCheckBox>(frm, "chSbtMostrarAsc")->isChecked());
    QVERIFY(Control<QCheckBox>(frm, "chFlgArtModSub")->isChecked());
    QVERIFY(Control<QCheckBox>(frm, "chCANCSinStock")->isChecked());
    QVERIFY(Control<QRadioButton>(frm, "opARMARITEM1")->isChecked());
    QCOMPARE(Control<QComboBox>(frm, "cboListado")->currentText(),
             QStringLiteral("Fecha de Creación"));
    QCOMPARE(Control<QLineEdit>(frm, "txtPrefPorc")->text(), QStringLiteral("40"));
    QCOMPARE(Control<QLineEdit>(frm, "txtIndMaxArancel")->text(), QStringLiteral("35"));
    QCOMPARE(Control<QLineEdit>(frm, "txtRIN")->text(), QStringLiteral("10,5"));
    QCOMPARE(Control<QCheckBox>(frm, "Check4")->text(),
             QStringLiteral("En armado cambiar \"Cod Art.\" por \"Otros\""));
    // Without the temporary supplies component its options cannot be changed.
    QVERIFY(!Control<QCheckBox>(frm, "chINSTEMPPerMer")->isEnabled());
    QVERIFY(!Control<QCheckBox>(frm, "chINSTEMPVDE")->isEnabled());
}

void TestFrmConGen::cierreEscribeLasClaves_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("tasa");
    // clang-format off
    QTest::newRow("coma") << "," << "21,5";
    QTest::newRow("punto") << "." << "21.5";
    // clang-format on
}

void TestFrmConGen::cierreEscribeLasClaves() {
    QFETCH(QString, separador);
    QFETCH(QString, tasa);
    SeparadorDecimalScope sep(separador);
    TestStores ts(Motor::SQLite);
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    Control<QCheckBox>(frm, "Check1")->setChecked(true);
    Control<QCheckBox>(frm, "chVfySbtDup")->setChecked(true);
    Control<QCheckBox>(frm, "chSbtFuncionCargaPor")->setChecked(false);
    Control<QCheckBox>(frm, "chCANCSinStock")->setChecked(true);
    Control<QRadioButton>(frm, "opARMARITEM1")->setChecked(true);
    Control<QComboBox>(frm, "cboListado")->setCurrentIndex(1);
    Reemplazar(Control<QLineEdit>(frm, "txtRIN"), tasa);
    QTest::keyClick(Control<QLineEdit>(frm, "txtRIN"), Qt::Key_Escape);
    QVERIFY(!frm.isVisible());

    // The keys in the order they are written, the rates always with a point.
    QCOMPARE(Leer(ts.ctx().rutaIni()), QStringLiteral("[GENERAL]\n"
                                                      "LISTADO=1\n"
                                                      "GROUPBYART=N\n"
                                                      "MODIFCAT=S\n"
                                                      "PRIMR100=N\n"
                                                      "VALORCAT=N\n"
                                                      "FLGIDARTTOOTROS=N\n"
                                                      "ARMARITEM=1\n"
                                                      "VRYSBTDUP=S\n"
                                                      "SBTNROARTAI=N\n"
                                                      "NOCALCLIQU=N\n"
                                                      "IVARIN=21.5\n"
                                                      "IVARNI=0\n"
                                                      "OPERACIONESMOSTRARTODO=N\n"
                                                      "VENDEDORORDERXNOMBRE=N\n"
                                                      "SBTMANTCODART=N\n"
                                                      "SBTMANTDATOS=N\n"
                                                      "SBTMOSTRARASC=N\n"
                                                      "SBTFORZARNROARTAI=N\n"
                                                      "SBTFUNCIONCARGAPOR=N\n"
                                                      "MODARTSUB=N\n"
                                                      "ENVIARCOMEXT=N\n"
                                                      "DIEMCHINA-INDMAXARANCEL=35\n"
                                                      "DIEMCHINA-PREFPORC=40\n"));
    const Configuracion& c = ts.ctx().config();
    QCOMPARE(c.IVARIN, 21.5);
    QCOMPARE(c.MODIFCAT, 2);
    QCOMPARE(c.ARMARITEM, 1);
    QCOMPARE(c.LISTADO, 1);
    QCOMPARE(c.VrySbtDup, QStringLiteral("S"));
    QVERIFY(!c.SbtFuncionCargaPor);
    QVERIFY(c.CancelManual);
    QCOMPARE(ts.settings().GetSetting("GENERAL", "OBJ", "CancelManual"), QStringLiteral("S"));
    // The inputs component is absent: its options are left as they were.
    QCOMPARE(ts.settings().GetSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "sin valor"),
             QStringLiteral("sin valor"));
    QCOMPARE(ts.settings().GetSetting("SupplyLink", "CONFIG", "opVDE", "sin valor"),
             QStringLiteral("sin valor"));
}

void TestFrmConGen::camposNumericos() {
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

void TestFrmConGen::impresoras() {
    TestStores ts(Motor::SQLite);
    ts.ctx().config().DEVICENAME = QStringLiteral("P3");
    ts.ctx().config().DRIVERNAME = QStringLiteral("winspool");
    ts.ctx().config().PORT = QStringLiteral("LPT1:");
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
    QCOMPARE(ts.ctx().config().DEVICENAME, QStringLiteral("P7"));
    QCOMPARE(ts.ctx().config().DRIVERNAME, QString());
    QCOMPARE(ts.ctx().config().PORT, QString());
}

void TestFrmConGen::insumosTemporales_data() {
    QTest::addColumn<bool>("restar");
    QTest::addColumn<bool>("vde");
    QTest::addColumn<QString>("restarGuardado");
    QTest::newRow("restar") << true << false << "S";
    QTest::newRow("no restar") << false << false << "N";
    // The extended decimal mode excludes the other.
    QTest::newRow("restar y decimal extendido") << true << true << "N";
}

void TestFrmConGen::insumosTemporales() {
    QFETCH(bool, restar);
    QFETCH(bool, vde);
    QFETCH(QString, restarGuardado);
    TestStores ts(Motor::SQLite);
    ts.ctx().config().SupplyTemporaryInstalado = true;
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    QVERIFY(Control<QCheckBox>(frm, "chINSTEMPPerMer")->isEnabled());
    Control<QCheckBox>(frm, "chINSTEMPPerMer")->setChecked(restar);
    Control<QCheckBox>(frm, "chINSTEMPVDE")->setChecked(vde);
    frm.reject();
    QCOMPARE(ts.settings().GetSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer"), restarGuardado);
    QCOMPARE(ts.settings().GetSetting("SupplyLink", "CONFIG", "opVDE"), QString(vde ? "S" : "N"));
    QCOMPARE(ts.ctx().config().INSTMP_RestarPerMer, restarGuardado == "S");
}

void TestFrmConGen::ctrlCCierra() {
    TestStores ts(Motor::SQLite);
    FrmConGen frm(ts.ctx());
    Abrir(frm);
    QLineEdit* rin = Control<QLineEdit>(frm, "txtRIN");
    rin->setFocus();
    QTest::keyClick(rin, Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!frm.isVisible());
    QCOMPARE(IniFile::Leer("SbtFuncionCargaPor", "GENERAL", ts.ctx().rutaIni()),
             QStringLiteral("S"));
}

QTEST_MAIN(TestFrmConGen)
#include "test_frmcongen.moc"
