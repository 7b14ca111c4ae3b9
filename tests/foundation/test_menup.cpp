// The start of the program and its main menu: the check of the nomenclator's dates, the frame
// with the menu inside, the rows of the menu and of the forms, with and without their
// components, and the end of the process.

#include "foundation/FrmPrincipal.h"
#include "foundation/Integridad.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableWidget>
#include <QtTest>

using namespace korven;
using korven::test::TestStores;

namespace {

// An installed component that writes down what the menu did with it.
class ComponenteAnotador : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool Seleccionar MEMBER seleccionar_ WRITE setSeleccionar)
    Q_PROPERTY(bool OrigenKorven MEMBER origenKorven_ WRITE setOrigenKorven)
    Q_PROPERTY(QObject* DAMSource MEMBER damSource_ WRITE setDAMSource)
public:
    explicit ComponenteAnotador(QStringList* notas) : notas_(notas) {}
    void setSeleccionar(bool v) { *notas_ << QString("Seleccionar=") + (v ? "true" : "false"); }
    void setOrigenKorven(bool v) { *notas_ << QString("OrigenKorven=") + (v ? "true" : "false"); }
    void setDAMSource(QObject*) { *notas_ << QStringLiteral("DAMSource"); }
    Q_INVOKABLE void SetDataConnection(QObject*) { *notas_ << QStringLiteral("SetDataConnection"); }
    Q_INVOKABLE void MostrarListado(QObject* formulario) {
        *notas_ << QStringLiteral("MostrarListado(%1)").arg(formulario->objectName());
    }
    Q_INVOKABLE void GuardarInternos() { *notas_ << QStringLiteral("GuardarInternos"); }
    Q_INVOKABLE void LeerInternos() { *notas_ << QStringLiteral("LeerInternos"); }

private:
    QStringList* notas_;
    bool seleccionar_ = true;
    bool origenKorven_ = false;
    QObject* damSource_ = nullptr;
};

// The stores of a menu test: only the nomenclator's date table is needed.
struct Bases : TestStores {
    explicit Bases(Motor motor = Motor::SQLite) : TestStores(motor) {
        conexion("NCM").Ejecutar(QStringLiteral("create table control_fecha (fecha date)"));
    }
    void Registrar(const QString& nombre, QStringList* notas) {
        ctx().componentes().Registrar(nombre, [notas](AppContext&) {
            return std::unique_ptr<QObject>(new ComponenteAnotador(notas));
        });
    }
    void Fechas(const QList<QDate>& fechas) {
        for (const QDate& d : fechas)
            conexion("NCM").Ejecutar(QStringLiteral("insert into control_fecha (fecha) values (%1)")
                                         .arg(stores().getDateFormatbyEntity("NCM", d)));
    }
};

// Moves to the row with the arrows, as the clerk does, and presses Enter.
void Elegir(QTableWidget* g, int fila) {
    g->setFocus();
    g->setCurrentCell(0, g->columnCount() - 1);
    for (int i = 0; i < fila; ++i)
        QTest::keyClick(g, Qt::Key_Down);
    QCOMPARE(g->currentRow(), fila);
    QTest::keyClick(g, Qt::Key_Return);
}

QString Etiqueta(const QWidget& w, const char* nombre) {
    return w.findChild<QLabel*>(nombre)->text();
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

class TestMenuP : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void integridad_data() { korven::test::FilasDeMotores(); }
    void integridad();
    void mainMuestraElMenuEnElMarco();
    void escEnElMenuYCierreDelMarcoTerminan();
    void errorDelArranque();
    void cargaFallida();
    void clientes();
    void filasDelMenu_data();
    void filasDelMenu();
    void transferencia_data();
    void transferencia();
    void formulariosNoInstalados_data();
    void formulariosNoInstalados();
    void formularioInstalado();
    void bases_data() { korven::test::FilasDeMotores(); }
    void bases();
};

// The nomenclator's date is the latest of its table; without the table the start ends.
void TestMenuP::integridad() {
    MOTOR_O_SALTAR();
    Bases ts(static_cast<Motor>(motor));
    AppContext& ctx = ts.ctx();
    ctx.config().FechaNomenclador = QStringLiteral("x");
    QVERIFY(Integridad(ctx));
    QCOMPARE(ctx.config().FechaNomenclador, QString());
    QCOMPARE(Etiqueta(MenuP(ctx, {}), "lbNomenclador"), QStringLiteral("Leyendo Fecha...."));
    ts.Fechas({QDate(2024, 3, 1), QDate(2025, 6, 15), QDate(2023, 12, 31)});
    QVERIFY(Integridad(ctx));
    QCOMPARE(ctx.config().FechaNomenclador, QStringLiteral("domingo, 15 de junio de 2025"));
    QCOMPARE(Etiqueta(MenuP(ctx, {}), "lbNomenclador"),
             QStringLiteral("domingo, 15 de junio de 2025"));
    QVERIFY(ts.dialogos().mensajes().isEmpty());

    ts.conexion("NCM").Ejecutar("drop table control_fecha");
    QVERIFY(!Integridad(ctx));
    QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
    ts.dialogos().Limpiar();
    Arranque a(ts);
    QVERIFY(!Main(a.p));
    QCOMPARE(a.fines, QList<int>{1});
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY2(ts.dialogos().mensajes().at(0).contains("\n\nSeccion Integridad (10)::"),
             qPrintable(ts.dialogos().mensajes().at(0)));
}

void TestMenuP::mainMuestraElMenuEnElMarco() {
    TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
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
    QVERIFY(f->isVisible());
    QCOMPARE(f->windowTitle(), QStringLiteral("Korven Windows - 01.00.00"));
    QCOMPARE(f->maximumSize(), QSize(797, 563));
    QCOMPARE(f->area()->subWindowList().size(), 1);
    QCOMPARE(f->area()->subWindowList().at(0)->widget(), s->menu());
    QCOMPARE(Etiqueta(*s->menu(), "lbVersion"), QStringLiteral("1.0.0"));
    // The configuration was read.
    QCOMPARE(s->ctx().config().rutaNcm, DirectorioNormal(ts.directorio() + "db") + "ncm.mdb");
    QCOMPARE(s->ctx().MascaraFecha, QStringLiteral("yyyyMMdd"));
    // The screens of this library and the components of ours are there.
    for (const char* n :
         {"FrmConfig", "FrmBase", "FrmConGen", "FrmMostrarDatos", "ClassFile.Carpeta"})
        QVERIFY2(s->ctx().pantallas().Registrada(n), n);
    QVERIFY(s->ctx().componentes().Instalado("ClientBook.Listing"));
    QVERIFY(!s->ctx().componentes().Instalado("DeclarationOutput.Main"));
    // Opciones > Internos opens the register.
    f->findChild<QAction*>("mnuinternos")->trigger();
    QCOMPARE(abiertas, QStringList{"FrmInternoNew"});
}

void TestMenuP::escEnElMenuYCierreDelMarcoTerminan() {
    TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
    Arranque a(ts);
    std::unique_ptr<Sesion> s = Main(a.p);
    QTest::keyClick(s->menu()->GridFormularios(), Qt::Key_Escape);
    QTest::keyClick(s->menu()->GrdMenuMain(), Qt::Key_Escape);
    QCOMPARE(a.fines, (QList<int>{0, 0}));
    // The frame was not closed: Esc ends the process without the frame's close path.
    QVERIFY(s->principal()->isVisible());
    s->principal()->close();
    QCOMPARE(a.fines, (QList<int>{0, 0, 0}));
    QVERIFY(ts.dialogos().registro().isEmpty());
    // Without the register's screen the frame's menu says so.
    FrmPrincipal f(ts.ctx(), {});
    f.findChild<QAction*>("mnuinternos")->trigger();
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"429 / La pantalla FrmInternoNew no está instalada. - "
                         "seccion[mnuinternos_Click.FrmPrincipal.KORVEN]::FrmInternoNew"});
}

// Any error of the start routine: one critical message with its section, and the end.
void TestMenuP::errorDelArranque() {
    TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
    Arranque a(ts);
    a.p.registros.push_back([](AppContext&) {
        throw KorvenError(91, QStringLiteral("Variable de objeto no establecida"),
                          QStringLiteral("Registro"));
    });
    QVERIFY(!Main(a.p));
    QCOMPARE(a.fines, QList<int>{1});
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"91 / Variable de objeto no establecida\n\n"
                                                   "seccion [KORVEN.Global.Main::Registro] 20"});
    QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
}

// A store without the nomenclator: the load is reported and the menu stays up with what was
// filled before.
void TestMenuP::cargaFallida() {
    TestStores ts(Motor::SQLite);
    QList<int> fines;
    MenuP m(ts.ctx(), [&fines](int c) { fines << c; });
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY2(ts.dialogos().mensajes().at(0).contains(" - seccion[Form_Load.MenuP.KORVEN]::"),
             qPrintable(ts.dialogos().mensajes().at(0)));
    QCOMPARE(Etiqueta(m, "lbVersion"), QStringLiteral("1.0.0"));
    QCOMPARE(m.GrdMenuMain()->rowCount(), 0);
    QTest::keyClick(m.GrdMenuMain(), Qt::Key_Escape);
    QCOMPARE(fines, QList<int>{0});
}

void TestMenuP::clientes() {
    Bases ts;
    {
        MenuP m(ts.ctx(), {});
        Elegir(m.GrdMenuMain(), 1);
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"[KORVEN.MenuP.Clientes]:: Nro: 429 / El componente "
                             "ClientBook.Listing no está instalado."});
        QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
        // The menu stays usable: the same row again gives the same message.
        QTest::keyClick(m.GrdMenuMain(), Qt::Key_Enter);
        QCOMPARE(ts.dialogos().mensajes().size(), 2);
    }
    QStringList notas;
    ts.Registrar("ClientBook.Listing", &notas);
    ts.dialogos().Limpiar();
    MenuP m(ts.ctx(), {});
    Elegir(m.GrdMenuMain(), 1);
    QCOMPARE(notas, (QStringList{"SetDataConnection", "Seleccionar=false", "OrigenKorven=true",
                                 "MostrarListado(MenuP)"}));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::filasDelMenu_data() {
    QTest::addColumn<int>("fila");
    QTest::addColumn<QString>("pantalla");
    QTest::addColumn<bool>("registrada");
    QTest::newRow("Operaciones") << 0 << "FrmInternoNew" << true;
    QTest::newRow("Operaciones sin pantalla") << 0 << "FrmInternoNew" << false;
    QTest::newRow("Nomenclador") << 2 << "FrmConsultas" << true;
    QTest::newRow("Catálogos") << 3 << "FrmCatArticulos" << true;
    QTest::newRow("Configuración") << 4 << "FrmConfig" << true;
}

void TestMenuP::filasDelMenu() {
    QFETCH(int, fila);
    QFETCH(QString, pantalla);
    QFETCH(bool, registrada);
    Bases ts;
    QStringList abiertas;
    for (const QString n : {"FrmInternoNew", "FrmConsultas", "FrmCatArticulos", "FrmConfig"})
        if (registrada)
            ts.ctx().pantallas().Registrar(n, [&abiertas, n](AppContext&, const QVariantMap&) {
                abiertas << n;
                return QVariant();
            });
    MenuP m(ts.ctx(), {});
    Elegir(m.GrdMenuMain(), fila);
    QCOMPARE(abiertas, registrada ? QStringList{pantalla} : QStringList{});
    QCOMPARE(ts.dialogos().mensajes(),
             registrada ? QStringList{}
                        : QStringList{"429 / La pantalla FrmInternoNew no está instalada. - "
                                      "seccion[GrdMenuMain_DblClick.MenuP.KORVEN]::FrmInternoNew"});
}

void TestMenuP::transferencia_data() {
    QTest::addColumn<int>("fila");
    QTest::addColumn<QString>("operacion");
    QTest::newRow("Exportar") << 5 << "GuardarInternos";
    QTest::newRow("Importar") << 6 << "LeerInternos";
}

void TestMenuP::transferencia() {
    QFETCH(int, fila);
    QFETCH(QString, operacion);
    Bases ts;
    {
        MenuP m(ts.ctx(), {});
        Elegir(m.GrdMenuMain(), fila);
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"429 / El componente OperationTransfer.Main no está instalado. - "
                             "seccion[GrdMenuMain_DblClick.MenuP.KORVEN]::OperationTransfer.Main"});
    }
    QStringList notas;
    ts.Registrar("OperationTransfer.Main", &notas);
    ts.dialogos().Limpiar();
    MenuP m(ts.ctx(), {});
    Elegir(m.GrdMenuMain(), fila);
    QCOMPARE(notas, (QStringList{"DAMSource", operacion}));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::formulariosNoInstalados_data() {
    QTest::addColumn<int>("fila");
    QTest::addColumn<QString>("mensaje");
    const QString no = QStringLiteral("429 / El componente %1 no está instalado.");
    const QString seccion = QStringLiteral("seccion %1 en Formulario MenuP :: ");
    const QString predibios = " - seccion[LlamarFormulario.MenuNew.KORVEN]::";
    QTest::newRow("Hoja de Valoración")
        << 0 << seccion.arg("HojadeValorEXPO") + no.arg("ValueSheet.Main");
    QTest::newRow("Multinota") << 1 << "KORVEN.MenuP.Multinota::" + no.arg("NoteForm.Main");
    QTest::newRow("Boleta de Deposito")
        << 2 << seccion.arg("BoletaDeposito") + no.arg("DepositSlipForm.Main");
    QTest::newRow("SENASA") << 3 << seccion.arg("SENASA") + no.arg("HealthForm.Main");
    QTest::newRow("Solictud Particular")
        << 4 << seccion.arg("SolicitudParticular") + no.arg("ParticularRequest.Main");
    QTest::newRow("Mineria") << 5 << seccion.arg("Mineria") + no.arg("MiningForm.Main");
    QTest::newRow("Om 1993") << 6 << seccion.arg("Om1993") + no.arg("Form1993.Main");
    QTest::newRow("PREDIBIOS - Impo")
        << 7 << no.arg("DepotManifest.Impo") + predibios + "DepotManifest.Impo";
    QTest::newRow("PREDIBIOS - Expo")
        << 8 << no.arg("DepotManifest.Expo") + predibios + "DepotManifest.Expo";
}

void TestMenuP::formulariosNoInstalados() {
    QFETCH(int, fila);
    QFETCH(QString, mensaje);
    Bases ts;
    MenuP m(ts.ctx(), {});
    Elegir(m.GridFormularios(), fila);
    QCOMPARE(ts.dialogos().mensajes(), QStringList{mensaje});
}

// A component without the members the menu sets: the first missing member is reported with the
// row's section, and the menu goes on.
void TestMenuP::formularioInstalado() {
    Bases ts;
    QStringList notas;
    ts.Registrar("DepotManifest.Expo", &notas);
    MenuP m(ts.ctx(), {});
    Elegir(m.GridFormularios(), 8);
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"438 / El objeto no admite esta propiedad o método: BasedeDatos - "
                         "seccion[LlamarFormulario.MenuNew.KORVEN]::DepotManifest.Expo"});
    // A text that names no form is ignored.
    ts.dialogos().Limpiar();
    m.LlamarFormulario(QStringLiteral("Otro"));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

// The main menu names the stores in use, so that a clerk sees which database is behind it.
void TestMenuP::bases() {
    MOTOR_O_SALTAR();
    Bases t(static_cast<Motor>(motor));
    QString esperado;
    if (static_cast<Motor>(motor) == Motor::SQLite) {
        esperado = QDir::toNativeSeparators(t.directorio() + QStringLiteral("db/korven.db"));
    } else {
        const QHash<QString, QString> p = t.stores().Parametros(QStringLiteral("INTERNOS"));
        esperado = QStringLiteral("PostgreSQL socket %1 (puerto %2), base %3")
                       .arg(p.value("HOST"), p.value("PORT"), p.value("DATABASE"));
    }
    QCOMPARE(Etiqueta(MenuP(t.ctx(), {}), "lbBases"), esperado);
    if (static_cast<Motor>(motor) != Motor::SQLite)
        return;
    // A configuration that splits the stores shows where each one is.
    t.AgregarConfiguracion(QStringLiteral("[NCM]\nFILE=aparte.db\n"));
    t.conexion("NCM").Ejecutar(QStringLiteral("create table control_fecha (fecha date)"));
    QCOMPARE(Etiqueta(MenuP(t.ctx(), {}), "lbBases"),
             QStringLiteral("INTERNOS,SYSTABLAS,PERSONAL,USUARIO,ESTADO,CATALOGOS,INSUMOS: "
                            "%1\nNCM: %2")
                 .arg(esperado, QDir::toNativeSeparators(t.directorio() + "aparte.db")));
}

QTEST_MAIN(TestMenuP)
#include "test_menup.moc"
