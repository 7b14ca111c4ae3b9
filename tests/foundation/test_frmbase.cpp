#include "foundation/FrmBase.h"
#include "foundation/FrmConfig.h"
#include "platform/AppContext.h"
#include "platform/IniFile.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "support/TestStores.h"

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using namespace korven;
using korven::test::TestStores;

namespace {

// The folder browser as a clerk answers it: one folder after another, and what it was asked.
struct Navegador {
    QStringList respuestas;
    QList<QVariantMap> pedidos;
    void Registrar(AppContext& ctx) {
        ctx.pantallas().Registrar(FrmBase::PantallaCarpeta(),
                                  [this](AppContext&, const QVariantMap& args) {
                                      pedidos << args;
                                      return QVariant(respuestas.takeFirst());
                                  });
    }
};

} // namespace

class TestFrmBase : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cargaF6YCierre();
    void configAbreSusDosPantallas();
};

void TestFrmBase::cargaF6YCierre() {
    TestStores ts(Motor::SQLite);
    AppContext& ctx = ts.ctx();
    const QString ini = ctx.rutaIni();
    {
        QFile f(ini);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("[BASESERVER]\nINTERNO=/srv/k/\nPERSONAL=/srv/p\nNCM=\nESTADO=/srv/e/\n"
                "[BASELOCAL]\nUSUARIO=/home/u\n");
    }
    ctx.config().rutaSystablas = QStringLiteral("/viejo/systablas.mdb");
    ctx.settings().SaveSetting("KORVEN", "BASES", "NCM", "sin tocar");
    Navegador nav;
    nav.respuestas = {QStringLiteral("/datos/ncm"), QString()};
    nav.Registrar(ctx);

    FrmBase frm(ctx);
    frm.show();
    QApplication::setActiveWindow(&frm);
    QCOMPARE(frm.windowTitle(), QStringLiteral("Configuración Base de Datos"));
    auto txt = [&frm](const char* n) { return frm.findChild<QLineEdit*>(n); };
    QCOMPARE(txt("txtInterno")->text(), QStringLiteral("/srv/k/"));
    QCOMPARE(txt("TxtPersonal")->text(), QStringLiteral("/srv/p"));
    QCOMPARE(txt("TxtNcm")->text(), QString());
    QCOMPARE(txt("TxtEstado")->text(), QStringLiteral("/srv/e/"));
    QCOMPARE(txt("TxtUsuario")->text(), QStringLiteral("/home/u"));

    // Enter moves on to the nomenclator's field; F6 there asks for a folder.
    txt("txtInterno")->setFocus();
    QTest::keyClick(txt("txtInterno"), Qt::Key_Return);
    QTest::keyClick(txt("TxtPersonal"), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), txt("TxtNcm"));
    QTest::keyClick(txt("TxtNcm"), Qt::Key_F6);
    QCOMPARE(txt("TxtNcm")->text(), QStringLiteral("/datos/ncm"));
    QCOMPARE(nav.pedidos.size(), 1);
    QCOMPARE(nav.pedidos[0].value("titulo").toString(), QStringLiteral("Seleccione Ubicación"));
    QCOMPARE(nav.pedidos[0].value("inicial").toString(), QString());
    // A cancelled browser leaves the field as it was.
    QTest::keyClick(txt("TxtNcm"), Qt::Key_F6);
    QCOMPARE(txt("TxtNcm")->text(), QStringLiteral("/datos/ncm"));
    QCOMPARE(nav.pedidos[1].value("inicial").toString(), QStringLiteral("/datos/ncm"));

    // Esc closes: every field is normalised and written to its key.
    QTest::keyClick(txt("TxtNcm"), Qt::Key_Escape);
    QVERIFY(!frm.isVisible());
    QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ini), QStringLiteral("/srv/k/"));
    QCOMPARE(IniFile::Leer("PERSONAL", "BASESERVER", ini), DirectorioNormal("/srv/p"));
    QCOMPARE(IniFile::Leer("NCM", "BASESERVER", ini), DirectorioNormal("/datos/ncm"));
    QCOMPARE(IniFile::Leer("ESTADO", "BASESERVER", ini), QStringLiteral("/srv/e/"));
    QCOMPARE(IniFile::Leer("USUARIO", "BASELOCAL", ini), DirectorioNormal("/home/u"));
    QCOMPARE(IniFile::Leer("USUARIO", "BASESERVER", ini), QString());
    // The paths in memory follow, but systablas and the settings store wait for the next start.
    const Configuracion& c = ctx.config();
    QCOMPARE(c.rutaInternos, QStringLiteral("/srv/k/internos.mdb"));
    QCOMPARE(c.rutaPersonal, DirectorioNormal("/srv/p") + "personal.mdb");
    QCOMPARE(c.rutaNcm, DirectorioNormal("/datos/ncm") + "ncm.mdb");
    QCOMPARE(c.rutaEstado, QStringLiteral("/srv/e/estados.mdb"));
    QCOMPARE(c.rutaUsuario, DirectorioNormal("/home/u") + "usuario.mdb");
    QCOMPARE(c.rutaSystablas, QStringLiteral("/viejo/systablas.mdb"));
    QCOMPARE(ctx.settings().GetSetting("KORVEN", "BASES", "NCM"), QStringLiteral("sin tocar"));
}

void TestFrmBase::configAbreSusDosPantallas() {
    TestStores ts(Motor::SQLite);
    QStringList abiertas;
    for (const char* n : {"FrmConGen", "FrmBase"})
        ts.ctx().pantallas().Registrar(n, [&abiertas, n](AppContext&, const QVariantMap&) {
            abiertas << QString::fromLatin1(n);
            return QVariant();
        });
    FrmConfig cfg(ts.ctx());
    QCOMPARE(cfg.windowTitle(), QStringLiteral("Parametros / Configuracion"));
    auto* command1 = cfg.findChild<QPushButton*>("Command1");
    auto* cmdBase = cfg.findChild<QPushButton*>("CmdBase");
    QCOMPARE(command1->text(), QStringLiteral("Opciones Generales"));
    QCOMPARE(cmdBase->text(), QStringLiteral("Base de Datos"));
    QTest::mouseClick(command1, Qt::LeftButton);
    QTest::mouseClick(cmdBase, Qt::LeftButton);
    QCOMPARE(abiertas, (QStringList{"FrmConGen", "FrmBase"}));
}

QTEST_MAIN(TestFrmBase)
#include "test_frmbase.moc"
