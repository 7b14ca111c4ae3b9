// The register of Operations driven from the keyboard: Insert, Enter, Delete, F6, F12 and Esc,
// with the stores checked afterwards.

#include "FixtureOperaciones.h"
#include "components/FrmClientes.h"
#include "components/RegistrarComponentesPropios.h"
#include "foundation/FrmDetalleInterno.h"
#include "foundation/FrmInternoNew.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"
#include "support/Pantallas.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

// The register on stores with the masters and the given headers.
std::unique_ptr<TestStores> Stores(int motor, const QStringList& internos) {
    auto ts = StoresConMaestros(motor);
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    RegistrarComponentesPropios(ts->ctx().componentes());
    for (const QString& x : internos)
        InsertarCaratula(*ts, x);
    return ts;
}

struct Registro {
    explicit Registro(int motor, const QStringList& internos = {})
        : ts(Stores(motor, internos)), f(ts->ctx(), {{"maquina", "PC-A"}}) {
        Mostrar(f);
    }
    std::unique_ptr<TestStores> ts;
    FrmInternoNew f;
    QTreeWidget* grilla() { return f.findChild<QTreeWidget*>("lstInterno"); }
    QLineEdit* txt(const char* nombre) { return f.findChild<QLineEdit*>(nombre); }
    // Enter in the number: the search.
    void Buscar(const QString& interno = {}) {
        txt("txtInterno")->setText(interno);
        QTest::keyClick(txt("txtInterno"), Qt::Key_Return);
    }
    // Selects the row of an Operation and presses a key on the grid.
    void Tecla(const QString& interno, Qt::Key tecla) {
        for (QTreeWidgetItemIterator i(grilla()); *i; ++i)
            if ((*i)->text(1) == interno)
                grilla()->setCurrentItem(*i);
        QCOMPARE(f.InternoSeleccionado(), interno);
        QTest::keyClick(grilla(), tecla);
    }
    QStringList mensajes() { return ts->dialogos().mensajes(); }
};

} // namespace

class TestRegistroPantalla : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertCreaUnaOperacion_data() { FilasDeMotores(); }
    void insertCreaUnaOperacion();
    void enterAbreBajoBloqueo_data();
    void enterAbreBajoBloqueo();
    void deleteEliminaLaOperacion_data() { FilasDeMotores(); }
    void deleteEliminaLaOperacion();
    void f6CopiaLaOperacion();
    void f12YEsc();
    void agruparPorCliente();
    void f6EnClienteEligeDelLibro();
};

void TestRegistroPantalla::insertCreaUnaOperacion() {
    MOTOR_O_SALTAR();
    Registro r(motor, {"2024-0001"});
    r.ts->dialogos().ResponderTexto("2024-0007");
    QTest::keyClick(r.txt("txtCliente"), Qt::Key_Insert);
    QCOMPARE(r.txt("txtInterno")->text(), QStringLiteral("2024-0007"));
    QCOMPARE(r.f.InternosListados(), QStringList{"2024-0007"});
    QCOMPARE(r.f.InternoSeleccionado(), QStringLiteral("2024-0007"));
    QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "2024-0007"), 1);
    // The same number again: the message, and nothing changes.
    r.ts->dialogos().ResponderTexto("2024-0007");
    QTest::keyClick(r.grilla(), Qt::Key_Insert);
    QCOMPARE(r.mensajes(), QStringList{"El Código de interno ya existe."});
    QCOMPARE(r.f.InternosListados(), QStringList{"2024-0007"});
    QCOMPARE(EsNumero(Valor(*r.ts, "select count(*) from caratula")), 2.0);
}

void TestRegistroPantalla::enterAbreBajoBloqueo_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("bloqueo"); // workstation of a lock already there
    QTest::addColumn<QString>("mensaje");
    FILA_MOTORES("libre", ""
                              << "");
    FILA_MOTORES(
        "bloqueo de la misma PC",
        " PC-A "
            << "El estado de INTERNO indica que el mismo "
               "esta abierto.\n\nSe procedera a cambiar el estado.\n\nUltimo Acceso: viernes, "
               "15 de marzo de 2024");
    FILA_MOTORES("bloqueo de otra PC", "PC-B"
                                           << "Este interno esta abierto por la PC: PC-B\n\n"
                                              "Accedido el viernes, 15 de marzo de 2024");
}

// Enter on a row opens the hub under the lock; closing it gives the lock back and reads the
// row of its Operation again.
void TestRegistroPantalla::enterAbreBajoBloqueo() {
    MOTOR_O_SALTAR();
    QFETCH(QString, bloqueo);
    QFETCH(QString, mensaje);
    const bool abre = bloqueo != "PC-B";
    QWidget marco;
    marco.setObjectName("FrmPrincipal");
    marco.setWindowTitle("Korven Windows - 01.00.00");
    Registro r(motor, {"100", "200"});
    TestStores& ts = *r.ts;
    if (!bloqueo.isEmpty())
        Insertar(ts, "INTERNOS", "interno",
                 {{"interno", "100"},
                  {"maquina", bloqueo},
                  {"usuario", ""},
                  {"fecha", QDate(2024, 3, 15)}});
    r.Buscar();
    QVERIFY(r.grilla()->hasFocus());
    QTreeWidgetItem* fila = r.grilla()->topLevelItem(0);
    QVERIFY(fila->child(0)->text(0).startsWith(QStringLiteral("Aduana: (001) BUENOS AIRES")));
    QCOMPARE(fila->child(0)->foreground(0).color(), QColor(0, 102, 102));
    QStringList visto;
    AlAbrir<FrmDetalleInterno> hub([&](FrmDetalleInterno* h) {
        visto << h->interno() << marco.windowTitle()
              << EsNull(Valor(ts, "select maquina from interno where interno = '100'"));
        ts.conexion("INTERNOS")
            .Ejecutar("update caratula set factura7 = 'Cliente Nuevo', "
                      "idsubreg = 'EC01' where interno = '100'");
        QTest::keyClick(h, Qt::Key_Escape);
    });
    r.Tecla("100", Qt::Key_Return);
    QCOMPARE(r.mensajes(), mensaje.isEmpty() ? QStringList{} : QStringList{mensaje});
    if (!abre) {
        QCOMPARE(hub.veces(), 0);
        QCOMPARE(EsNull(Valor(ts, "select maquina from interno where interno = '100'")), bloqueo);
        QCOMPARE(marco.windowTitle(), QStringLiteral("Korven Windows - 01.00.00"));
        return;
    }
    QCOMPARE(visto, (QStringList{"100", "Korven Windows 1.0.0 - PC [ PC-A ]", "PC-A"}));
    QCOMPARE(Contar(ts, "INTERNOS", "interno", "100"), 0);
    QCOMPARE(ts.settings().GetSetting("KORVEN", "100", "FLAG0"), QStringLiteral("1"));
    QStringList vistas;
    for (QTreeWidgetItemIterator i(r.grilla()); *i; ++i)
        if (!(*i)->text(1).isEmpty())
            vistas << QStringList{(*i)->text(1), (*i)->text(2), (*i)->text(3), (*i)->text(5)}.join(
                '|');
    QCOMPARE(vistas, (QStringList{"100|EC01|Exportacion|Cliente Nuevo",
                                  "200|IC04|Importacion|Cliente Uno"}));
    QCOMPARE(r.f.InternoSeleccionado(), QStringLiteral("100"));
}

void TestRegistroPantalla::deleteEliminaLaOperacion() {
    MOTOR_O_SALTAR();
    Registro r(motor);
    // An empty grid: Delete and F6 ask nothing (an unscripted question would end the test).
    r.Buscar("nada");
    QTest::keyClick(r.grilla(), Qt::Key_Delete);
    QTest::keyClick(r.grilla(), Qt::Key_F6);
    QVERIFY(r.ts->dialogos().registro().isEmpty());
    OperacionConTodo(*r.ts, "X-1");
    OperacionConTodo(*r.ts, "X-2");
    r.Buscar();
    // The locks left by this workstation do not stop the deletion.
    r.ts->conexion("INTERNOS").Ejecutar("update interno set maquina = 'PC-A'");
    r.ts->dialogos().ResponderSi();
    r.Tecla("X-1", Qt::Key_Delete);
    QCOMPARE(r.ts->dialogos().registro().at(0).texto,
             QStringLiteral("Confirma eliminar el interno X-1"));
    QCOMPARE(r.f.InternosListados(), QStringList{"X-2"});
    auto* pb = r.f.findChild<QProgressBar*>("PB");
    QVERIFY(pb->isHidden());
    QCOMPARE(pb->value(), 16);
    QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "X-1"), 0);
    // Answering no keeps the Operation and its row.
    r.ts->dialogos().ResponderNo();
    r.Tecla("X-2", Qt::Key_Delete);
    QCOMPARE(r.f.InternosListados(), QStringList{"X-2"});
    QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "X-2"), 1);
}

void TestRegistroPantalla::f6CopiaLaOperacion() {
    Registro r(0);
    OperacionConTodo(*r.ts, "100");
    r.Buscar();
    r.ts->dialogos().ResponderTexto("100");
    r.Tecla("100", Qt::Key_F6);
    QCOMPARE(r.mensajes(), QStringList{"El Código de interno ya existe."});
    r.ts->dialogos().ResponderTexto("101");
    r.Tecla("100", Qt::Key_F6);
    QCOMPARE(r.ts->dialogos().registro().last().titulo, QStringLiteral("Copiar interno 100"));
    QCOMPARE(r.txt("txtInterno")->text(), QStringLiteral("101"));
    QCOMPARE(r.f.InternosListados(), QStringList{"101"});
    QCOMPARE(Contar(*r.ts, "INTERNOS", "subitems", "101"), 2);
}

void TestRegistroPantalla::f12YEsc() {
    Registro r(0);
    QTest::keyClick(r.txt("txtInterno"), Qt::Key_F12);
    QCOMPARE(r.mensajes(),
             QStringList{"429 - El componente OperationExchange.Main no está instalado. - seccion "
                         "[KORVEN.FrmInternoNew.lp_ImprimirList]::"});
    QVERIFY(r.f.isVisible());
    QTest::keyClick(r.txt("txtDespachante"), Qt::Key_Escape);
    QVERIFY(!r.f.isVisible());
}

void TestRegistroPantalla::agruparPorCliente() {
    Registro r(0);
    for (const auto& [x, cliente] :
         {std::pair{"1", "Zeta SA"}, {"2", "Alfa SRL"}, {"3", "Zeta SA"}})
        InsertarCaratula(*r.ts, x, {{"factura7", cliente}});
    r.Buscar();
    auto* cbo = r.f.findChild<QComboBox*>("cboAgruparPor");
    QCOMPARE(cbo->currentIndex(), -1);
    cbo->setCurrentIndex(3);
    QTreeWidget* g = r.grilla();
    QCOMPARE(g->topLevelItemCount(), 2);
    QCOMPARE(g->topLevelItem(0)->text(0), QStringLiteral("Cliente: Alfa SRL (1)"));
    QCOMPARE(g->topLevelItem(1)->text(0), QStringLiteral("Cliente: Zeta SA (2)"));
    QCOMPARE(r.f.InternosListados(), (QStringList{"2", "1", "3"}));
    // Enter on a group row opens nothing.
    g->setCurrentItem(g->topLevelItem(0));
    QCOMPARE(r.f.InternoSeleccionado(), QString());
    QTest::keyClick(g, Qt::Key_Return);
    QCOMPARE(Contar(*r.ts, "INTERNOS", "interno", "2"), 0);
    // The empty entry groups by sub-regime.
    cbo->setCurrentIndex(0);
    QCOMPARE(g->topLevelItem(0)->text(0), QStringLiteral("SubRegimen: IC04 (3)"));
}

// F6 in the client filter chooses from the client book; Delete empties the filter.
void TestRegistroPantalla::f6EnClienteEligeDelLibro() {
    Registro r(0);
    Insertar(*r.ts, "PERSONAL", "clientes", {{"cuit", "30999999997"}, {"nombre", "Beta SA"}});
    AlAbrir<FrmClientes> libro([](FrmClientes* l) {
        l->findChild<QLineEdit*>("TxtBuscarNombre")->setText("beta");
        QTest::keyClick(l->findChild<QLineEdit*>("TxtBuscarNombre"), Qt::Key_Return);
        QTest::keyClick(l->findChild<QTreeWidget*>("LstClientes"), Qt::Key_Return);
    });
    QTest::keyClick(r.txt("txtCliente"), Qt::Key_F6);
    QCOMPARE(libro.veces(), 1);
    QCOMPARE(r.txt("txtCliente")->text(), QStringLiteral("30999999997"));
    QCOMPARE(r.txt("txtCliente")->toolTip(), QStringLiteral("Beta SA"));
    QTest::keyClick(r.txt("txtCliente"), Qt::Key_Delete);
    QVERIFY(r.txt("txtCliente")->text().isEmpty());
}

QTEST_MAIN(TestRegistroPantalla)
#include "test_registro_pantalla.moc"
