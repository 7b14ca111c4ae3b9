#include "foundation/FrmPrincipal.h"
#include "foundation/Integridad.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableWidget>
#include <QtTest>

using namespace korven;
using korven::test::TestStores;

namespace {

void CargarFechas(TestStores& ts, const QList<QDate>& fechas) {
    Conexion& cn = ts.conexion("NCM");
    for (const QDate& d : fechas)
        cn.Ejecutar(QStringLiteral("insert into control_fecha (fecha) values (%1)")
                        .arg(ts.stores().getDateFormatbyEntity("NCM", d)));
}

// The start routine on the stores of the test, answering from its script.
struct Arranque {
    explicit Arranque(TestStores& ts) {
        p.directorioPrograma = ts.directorio();
        p.carpetaSettings = ts.settings().carpeta();
        p.dialogos = &ts.dialogos();
        p.finDelProceso = [this](int c) { fines << c; };
    }
    ParametrosArranque p;
    QList<int> fines;
};

} // namespace

class TestArranque : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void integridad_data() { korven::test::FilasDeMotores(); }
    void integridad();
    void sinTablaDeFechasTerminaElProceso_data() { korven::test::FilasDeMotores(); }
    void sinTablaDeFechasTerminaElProceso();
    void mainMuestraElMenuEnElMarco_data() { korven::test::FilasDeMotores(); }
    void mainMuestraElMenuEnElMarco();
    void escEnElMenuYCierreDelMarcoTerminan();
    void menuInternosSinPantalla();
    void errorDelArranque();
};

void TestArranque::integridad() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    AppContext& ctx = ts.ctx();

    // An empty table: no date, and the start goes on.
    ctx.config().FechaNomenclador = QStringLiteral("x");
    QVERIFY(Integridad(ctx));
    QCOMPARE(ctx.config().FechaNomenclador, QString());
    {
        MenuP menu(ctx, {});
        QCOMPARE(menu.findChild<QLabel*>("lbNomenclador")->text(),
                 QStringLiteral("Leyendo Fecha...."));
    }

    CargarFechas(ts, {QDate(2024, 3, 1), QDate(2025, 6, 15), QDate(2023, 12, 31)});
    QVERIFY(Integridad(ctx));
    QCOMPARE(ctx.config().FechaNomenclador, QStringLiteral("domingo, 15 de junio de 2025"));
    {
        MenuP menu(ctx, {});
        QCOMPARE(menu.findChild<QLabel*>("lbNomenclador")->text(),
                 QStringLiteral("domingo, 15 de junio de 2025"));
    }
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestArranque::sinTablaDeFechasTerminaElProceso() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    // No schema: control_fecha is missing.
    QVERIFY(!Integridad(ts.ctx()));
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY2(ts.dialogos().mensajes().at(0).contains("\n\nSeccion Integridad (10)::"),
             qPrintable(ts.dialogos().mensajes().at(0)));
    QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);

    ts.dialogos().Limpiar();
    Arranque a(ts);
    std::unique_ptr<Sesion> s = Main(a.p);
    QVERIFY(!s);
    QCOMPARE(a.fines, QList<int>{1});
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY(ts.dialogos().mensajes().at(0).contains("Seccion Integridad (10)::"));
}

void TestArranque::mainMuestraElMenuEnElMarco() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    CargarFechas(ts, {QDate(2026, 11, 22)});
    Arranque a(ts);
    // The screen of the register is another library's: a stand-in answers here.
    QStringList abiertas;
    a.p.registros.push_back([&abiertas](AppContext& ctx) {
        ctx.pantallas().Registrar("FrmInternoNew", [&abiertas](AppContext&, const QVariantMap&) {
            abiertas << "FrmInternoNew";
            return QVariant();
        });
    });

    std::unique_ptr<Sesion> s = Main(a.p);
    QVERIFY(s);
    QVERIFY(a.fines.isEmpty());
    QVERIFY2(ts.dialogos().mensajes().isEmpty(), qPrintable(ts.dialogos().mensajes().join("|")));

    FrmPrincipal* f = s->principal();
    QVERIFY(f && f->isVisible());
    QCOMPARE(f->windowTitle(), QStringLiteral("Korven Windows - 01.00.00"));
    QCOMPARE(f->size(), QSize(797, 563));
    QCOMPARE(f->minimumSize(), QSize(797, 563));
    QCOMPARE(f->maximumSize(), QSize(797, 563));
    QVERIFY(!(f->windowFlags() & Qt::WindowMaximizeButtonHint));

    MenuP* m = s->menu();
    QVERIFY(m && m->isVisible());
    QCOMPARE(f->area()->subWindowList().size(), 1);
    QCOMPARE(f->area()->subWindowList().at(0)->widget(), m);
    QCOMPARE(m->findChild<QLabel*>("lbVersion")->text(), QStringLiteral("1.0.0"));
    QCOMPARE(m->findChild<QLabel*>("lbNomenclador")->text(),
             QStringLiteral("domingo, 22 de noviembre de 2026"));
    QCOMPARE(s->ctx().config().FechaNomenclador,
             QStringLiteral("domingo, 22 de noviembre de 2026"));

    // The configuration was read: the locations were written back and published.
    const QString db = DirectorioNormal(ts.directorio() + "db");
    QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ts.directorio() + "KORVEN.ini"), db);
    QCOMPARE(s->ctx().config().rutaNcm, db + "ncm.mdb");
    SettingsStore cfg(ts.settings().carpeta());
    QCOMPARE(cfg.GetSetting("KORVEN", "DEFAULT", "UBICACION"), ts.directorio());
    QCOMPARE(s->ctx().MascaraFecha, QStringLiteral("yyyyMMdd"));

    // The screens of this library and the components of ours are there.
    for (const char* n :
         {"FrmConfig", "FrmBase", "FrmConGen", "FrmMostrarDatos", "ClassFile.Carpeta"})
        QVERIFY2(s->ctx().pantallas().Registrada(n), n);
    QVERIFY(s->ctx().componentes().Instalado("ClientBook.Listing"));
    QVERIFY(!s->ctx().componentes().Instalado("DeclarationOutput.Main"));

    // Opciones > Internos opens the register.
    QAction* internos = f->findChild<QAction*>("mnuinternos");
    QVERIFY(internos);
    QCOMPARE(internos->text(), QStringLiteral("&Internos"));
    internos->trigger();
    QCOMPARE(abiertas, QStringList{"FrmInternoNew"});
}

void TestArranque::escEnElMenuYCierreDelMarcoTerminan() {
    TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
    Arranque a(ts);
    std::unique_ptr<Sesion> s = Main(a.p);
    QVERIFY(s);
    QTableWidget* g = s->menu()->GrdMenuMain();
    QTest::keyClick(g, Qt::Key_Escape);
    QCOMPARE(a.fines, QList<int>{0});
    // The frame was not closed: Esc ends the process without the frame's close path.
    QVERIFY(s->principal()->isVisible());
    s->principal()->close();
    QCOMPARE(a.fines, (QList<int>{0, 0}));
}

void TestArranque::menuInternosSinPantalla() {
    TestStores ts(Motor::SQLite);
    FrmPrincipal f(ts.ctx(), {});
    f.findChild<QAction*>("mnuinternos")->trigger();
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"429 / La pantalla FrmInternoNew no está instalada. - "
                         "seccion[mnuinternos_Click.FrmPrincipal.KORVEN]::FrmInternoNew"});
}

void TestArranque::errorDelArranque() {
    // Any error of the start routine: one critical message with its section, and the end.
    TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
    Arranque a(ts);
    a.p.registros.push_back([](AppContext&) {
        throw KorvenError(91, QStringLiteral("Variable de objeto no establecida"),
                          QStringLiteral("Registro"));
    });
    std::unique_ptr<Sesion> s = Main(a.p);
    QVERIFY(!s);
    QCOMPARE(a.fines, QList<int>{1});
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"91 / Variable de objeto no establecida\n\n"
                                                   "seccion [KORVEN.Global.Main::Registro] 20"});
    QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
}

QTEST_MAIN(TestArranque)
#include "test_arranque.moc"
