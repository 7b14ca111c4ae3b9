#include "foundation/MenuP.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Pantallas.h"
#include "platform/ValueRules.h"
#include "support/TestStores.h"

#include <QHeaderView>
#include <QLabel>
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
    void setSeleccionar(bool v) { *notas_ << QStringLiteral("Seleccionar=") + Texto(v); }
    void setOrigenKorven(bool v) { *notas_ << QStringLiteral("OrigenKorven=") + Texto(v); }
    static QString Texto(bool v) { return v ? QStringLiteral("true") : QStringLiteral("false"); }
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

void Registrar(AppContext& ctx, const QString& nombre, QStringList* notas) {
    ctx.componentes().Registrar(nombre, [notas](AppContext&) {
        return std::unique_ptr<QObject>(new ComponenteAnotador(notas));
    });
}

QStringList TextosDeColumna(QTableWidget* g, int columna) {
    QStringList r;
    for (int i = 0; i < g->rowCount(); ++i)
        r << (g->item(i, columna) ? g->item(i, columna)->text() : QString());
    return r;
}

// The stores of a menu test: only the nomenclator's date table is needed.
struct Bases : TestStores {
    Bases() : TestStores(Motor::SQLite) {
        conexion("NCM").Ejecutar(QStringLiteral("create table control_fecha (fecha date)"));
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

} // namespace

class TestMenuP : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void grillas();
    void cargaFallida();
    void clientesNoInstalado();
    void clientesInstalado();
    void filasDelMenu_data();
    void filasDelMenu();
    void pantallaNoInstalada();
    void transferencia_data();
    void transferencia();
    void formulariosNoInstalados_data();
    void formulariosNoInstalados();
    void formularioInstalado();
    void dobleClic();
    void escTerminaElProceso();
};

void TestMenuP::grillas() {
    Bases ts;
    MenuP m(ts.ctx(), {});
    QTableWidget* menu = m.findChild<QTableWidget*>("GrdMenuMain");
    QTableWidget* forms = m.findChild<QTableWidget*>("GridFormularios");
    QVERIFY(menu && forms);
    QCOMPARE(menu->columnCount(), 2);
    QCOMPARE(menu->columnWidth(0), 40);
    QCOMPARE(menu->columnWidth(1), 200);
    QCOMPARE(TextosDeColumna(menu, 1),
             (QStringList{"Operaciones", "Clientes", "Nomenclador", "Catálogos", "Configuración",
                          "Exportar Operaciones ", "Importar Operaciones "}));
    for (int i = 0; i < menu->rowCount(); ++i)
        QVERIFY(!menu->item(i, 0)->icon().isNull());
    QCOMPARE(forms->horizontalHeaderItem(0)->text(), QStringLiteral("Formularios"));
    QCOMPARE(TextosDeColumna(forms, 0),
             (QStringList{"Hoja de Valoración", "Multinota", "Boleta de Deposito", "SENASA",
                          "Solictud Particular", "Mineria", "Om 1993", "PREDIBIOS - Impo",
                          "PREDIBIOS - Expo"}));
    QCOMPARE(m.findChild<QLabel*>("lbVersion")->text(), QStringLiteral("1.0.0"));
    QVERIFY(!m.findChild<QLabel*>("lbFechaKorven")->text().isEmpty());
    QCOMPARE(m.findChild<QLabel*>("lbNomenclador")->text(), QStringLiteral("Leyendo Fecha...."));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::cargaFallida() {
    // A store without the nomenclator: the load is reported and the menu stays up with what
    // was filled before.
    TestStores ts(Motor::SQLite);
    QList<int> fines;
    MenuP m(ts.ctx(), [&fines](int c) { fines << c; });
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY2(ts.dialogos().mensajes().at(0).contains(" - seccion[Form_Load.MenuP.KORVEN]::"),
             qPrintable(ts.dialogos().mensajes().at(0)));
    QCOMPARE(m.findChild<QLabel*>("lbVersion")->text(), QStringLiteral("1.0.0"));
    QCOMPARE(m.findChild<QLabel*>("lbNomenclador")->text(), QStringLiteral("Leyendo Fecha...."));
    QCOMPARE(m.GrdMenuMain()->rowCount(), 0);
    QTest::keyClick(m.GrdMenuMain(), Qt::Key_Escape);
    QCOMPARE(fines, QList<int>{0});
}

void TestMenuP::clientesNoInstalado() {
    Bases ts;
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GrdMenuMain(), 1);
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"[KORVEN.MenuP.Clientes]:: Nro: 429 / El componente ClientBook.Listing "
                         "no está instalado."});
    QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
    // The menu stays usable: the same row again gives the same message.
    QTest::keyClick(m.GrdMenuMain(), Qt::Key_Enter);
    QCOMPARE(ts.dialogos().mensajes().size(), 2);
}

void TestMenuP::clientesInstalado() {
    Bases ts;
    QStringList notas;
    Registrar(ts.ctx(), "ClientBook.Listing", &notas);
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GrdMenuMain(), 1);
    QCOMPARE(notas, (QStringList{"SetDataConnection", "Seleccionar=false", "OrigenKorven=true",
                                 "MostrarListado(MenuP)"}));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::filasDelMenu_data() {
    QTest::addColumn<int>("fila");
    QTest::addColumn<QString>("pantalla");
    QTest::newRow("Operaciones") << 0 << "FrmInternoNew";
    QTest::newRow("Nomenclador") << 2 << "FrmConsultas";
    QTest::newRow("Catálogos") << 3 << "FrmCatArticulos";
    QTest::newRow("Configuración") << 4 << "FrmConfig";
}

void TestMenuP::filasDelMenu() {
    QFETCH(int, fila);
    QFETCH(QString, pantalla);
    Bases ts;
    QStringList abiertas;
    for (const char* n : {"FrmInternoNew", "FrmConsultas", "FrmCatArticulos", "FrmConfig"})
        ts.ctx().pantallas().Registrar(n, [&abiertas, n](AppContext&, const QVariantMap&) {
            abiertas << QString::fromLatin1(n);
            return QVariant();
        });
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GrdMenuMain(), fila);
    QCOMPARE(abiertas, QStringList{pantalla});
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::pantallaNoInstalada() {
    Bases ts;
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GrdMenuMain(), 0);
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"429 / La pantalla FrmInternoNew no está instalada. - "
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
        ts.dialogos().Limpiar();
        Elegir(m.GrdMenuMain(), fila);
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"429 / El componente OperationTransfer.Main no está instalado. - "
                             "seccion[GrdMenuMain_DblClick.MenuP.KORVEN]::OperationTransfer.Main"});
    }
    QStringList notas;
    Registrar(ts.ctx(), "OperationTransfer.Main", &notas);
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GrdMenuMain(), fila);
    QCOMPARE(notas, (QStringList{"DAMSource", operacion}));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::formulariosNoInstalados_data() {
    QTest::addColumn<int>("fila");
    QTest::addColumn<QString>("mensaje");
    const QString no = QStringLiteral("429 / El componente %1 no está instalado.");
    // clang-format off
    QTest::newRow("Hoja de Valoración")
        << 0 << "seccion HojadeValorEXPO en Formulario MenuP :: " + no.arg("ValueSheet.Main");
    QTest::newRow("Multinota") << 1 << "KORVEN.MenuP.Multinota::" + no.arg("NoteForm.Main");
    QTest::newRow("Boleta de Deposito")
        << 2 << "seccion BoletaDeposito en Formulario MenuP :: " + no.arg("DepositSlipForm.Main");
    QTest::newRow("SENASA") << 3 << "seccion SENASA en Formulario MenuP :: " + no.arg("HealthForm.Main");
    QTest::newRow("Solictud Particular")
        << 4
        << "seccion SolicitudParticular en Formulario MenuP :: " + no.arg("ParticularRequest.Main");
    QTest::newRow("Mineria") << 5 << "seccion Mineria en Formulario MenuP :: " + no.arg("MiningForm.Main");
    QTest::newRow("Om 1993") << 6 << "seccion Om1993 en Formulario MenuP :: " + no.arg("Form1993.Main");
    QTest::newRow("PREDIBIOS - Impo")
        << 7
        << no.arg("DepotManifest.Impo") +
               " - seccion[LlamarFormulario.MenuNew.KORVEN]::DepotManifest.Impo";
    QTest::newRow("PREDIBIOS - Expo")
        << 8
        << no.arg("DepotManifest.Expo") +
               " - seccion[LlamarFormulario.MenuNew.KORVEN]::DepotManifest.Expo";
    // clang-format on
}

void TestMenuP::formulariosNoInstalados() {
    QFETCH(int, fila);
    QFETCH(QString, mensaje);
    Bases ts;
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GridFormularios(), fila);
    QCOMPARE(ts.dialogos().mensajes(), QStringList{mensaje});
}

void TestMenuP::formularioInstalado() {
    // A component without the members the menu sets: the first missing member is reported with
    // the row's section, and the menu goes on.
    Bases ts;
    QStringList notas;
    Registrar(ts.ctx(), "DepotManifest.Expo", &notas);
    MenuP m(ts.ctx(), {});
    ts.dialogos().Limpiar();
    Elegir(m.GridFormularios(), 8);
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"438 / El objeto no admite esta propiedad o método: BasedeDatos - "
                         "seccion[LlamarFormulario.MenuNew.KORVEN]::DepotManifest.Expo"});
    // A text that names no form is ignored.
    ts.dialogos().Limpiar();
    m.LlamarFormulario(QStringLiteral("Otro"));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::dobleClic() {
    Bases ts;
    MenuP m(ts.ctx(), {});
    m.resize(560, 440);
    m.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m));
    ts.dialogos().Limpiar();
    QTableWidget* g = m.GrdMenuMain();
    const QRect celda = g->visualItemRect(g->item(1, 1));
    // A double click arrives as a click followed by the double click.
    QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, celda.center());
    QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, celda.center());
    QCOMPARE(ts.dialogos().mensajes().size(), 1);
    QVERIFY(ts.dialogos().mensajes().at(0).startsWith("[KORVEN.MenuP.Clientes]:: Nro: 429"));
    // GridFormularios is chosen by Enter only.
    ts.dialogos().Limpiar();
    QTableWidget* f = m.GridFormularios();
    const QPoint senasa = f->visualItemRect(f->item(3, 0)).center();
    QTest::mouseClick(f->viewport(), Qt::LeftButton, {}, senasa);
    QTest::mouseDClick(f->viewport(), Qt::LeftButton, {}, senasa);
    QCOMPARE(f->currentRow(), 3);
    QVERIFY(ts.dialogos().mensajes().isEmpty());
}

void TestMenuP::escTerminaElProceso() {
    Bases ts;
    QList<int> fines;
    MenuP m(ts.ctx(), [&fines](int c) { fines << c; });
    ts.dialogos().Limpiar();
    QTest::keyClick(m.GridFormularios(), Qt::Key_Escape);
    QCOMPARE(fines, QList<int>{0});
    QTest::keyClick(m.GrdMenuMain(), Qt::Key_Escape);
    QCOMPARE(fines, (QList<int>{0, 0}));
    // No question was asked.
    QVERIFY(ts.dialogos().registro().isEmpty());
}

QTEST_MAIN(TestMenuP)
#include "test_menup.moc"
