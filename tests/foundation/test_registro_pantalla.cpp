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

std::unique_ptr<TestStores> ConPantallas(int motor) {
    auto ts = StoresConMaestros(motor);
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    RegistrarComponentesPropios(ts->ctx().componentes());
    return ts;
}

struct Registro {
    explicit Registro(TestStores& ts) : f(ts.ctx(), {{"maquina", "PC-A"}}) {
        f.show();
        f.activateWindow();
        if (!QTest::qWaitForWindowActive(&f))
            qWarning("El registro no llego a ser la ventana activa");
    }
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
};

// What the hub found when it opened, before it was closed with Esc.
struct HubVisto {
    QString interno;
    QString maquinaDelBloqueo;
    QString titulo;
};

} // namespace

class TestRegistroPantalla : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertCreaUnaOperacion_data() { FilasDeMotores(); }
    void insertCreaUnaOperacion();
    void enterEnElNumeroLista50EnOrdenDeTexto_data() { FilasDeMotores(); }
    void enterEnElNumeroLista50EnOrdenDeTexto();
    void enterAbreBajoBloqueo_data();
    void enterAbreBajoBloqueo();
    void deleteEliminaLaOperacion_data() { FilasDeMotores(); }
    void deleteEliminaLaOperacion();
    void deleteEnGrillaVaciaNoHaceNada();
    void f6CopiaLaOperacion_data() { FilasDeMotores(); }
    void f6CopiaLaOperacion();
    void f12SinComponente();
    void agruparPorCliente();
    void f6EnClienteEligeDelLibro();
    void escCierra();
};

void TestRegistroPantalla::insertCreaUnaOperacion() {
    MOTOR_O_SALTAR();
    auto ts = ConPantallas(motor);
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("2024-0001"));
    Registro r(*ts);
    ts->dialogos().ResponderTexto("2024-0007");
    QTest::keyClick(r.txt("txtCliente"), Qt::Key_Insert);
    QCOMPARE(r.txt("txtInterno")->text(), QStringLiteral("2024-0007"));
    QCOMPARE(r.f.InternosListados(), QStringList{"2024-0007"});
    QCOMPARE(r.f.InternoSeleccionado(), QStringLiteral("2024-0007"));
    QCOMPARE(Contar(*ts, "INTERNOS", "caratula", "2024-0007"), 1);
    QCOMPARE(ts->settings().GetSetting("KORVEN", "2024-0007", "COEFEXPO"), QStringLiteral("0"));

    // The same number again: the message, and nothing changes.
    ts->dialogos().ResponderTexto("2024-0007");
    QTest::keyClick(r.grilla(), Qt::Key_Insert);
    QCOMPARE(ts->dialogos().mensajes(), QStringList{"El Código de interno ya existe."});
    QCOMPARE(r.f.InternosListados(), QStringList{"2024-0007"});
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 2.0);
}

void TestRegistroPantalla::enterEnElNumeroLista50EnOrdenDeTexto() {
    MOTOR_O_SALTAR();
    auto ts = ConPantallas(motor);
    for (int i = 1; i <= 60; ++i)
        Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta(QString::number(i)));
    ts->ctx().config().LISTADO = 0;
    ts->ctx().config().OperacionesMostrarTODO = false;
    Registro r(*ts);
    r.Buscar();
    QStringList texto;
    for (int i = 1; i <= 60; ++i)
        texto << QString::number(i);
    texto.sort();
    QCOMPARE(r.f.InternosListados(), texto.mid(0, 50));
    QCOMPARE(r.f.InternoSeleccionado(), QStringLiteral("1"));
    QVERIFY(r.grilla()->hasFocus());
    // The detail lines below each row.
    QTreeWidgetItem* fila = r.grilla()->topLevelItem(0);
    QCOMPARE(fila->childCount(), 1);
    QVERIFY(fila->child(0)->text(0).startsWith(QStringLiteral("Aduana: (001) BUENOS AIRES")));
    QCOMPARE(fila->child(0)->foreground(0).color(), QColor(0, 102, 102));
}

void TestRegistroPantalla::enterAbreBajoBloqueo_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("bloqueo"); // workstation of a lock already there
    QTest::addColumn<bool>("abre");
    QTest::addColumn<QString>("mensaje");
    const QString otra = "Este interno esta abierto por la PC: PC-B\n\nAccedido el viernes, 15 "
                         "de marzo de 2024";
    const QString misma = "El estado de INTERNO indica que el mismo esta abierto.\n\nSe "
                          "procedera a cambiar el estado.\n\nUltimo Acceso: viernes, 15 de marzo "
                          "de 2024";
    for (int motor : {0, 1}) {
        const QString m = motor == 0 ? "sqlite " : "postgresql ";
        QTest::newRow(qPrintable(m + "libre")) << motor << "" << true << "";
        QTest::newRow(qPrintable(m + "bloqueo de la misma PC")) << motor << "PC-A" << true << misma;
        QTest::newRow(qPrintable(m + "bloqueo de otra PC")) << motor << "PC-B" << false << otra;
    }
}

void TestRegistroPantalla::enterAbreBajoBloqueo() {
    MOTOR_O_SALTAR();
    QFETCH(QString, bloqueo);
    QFETCH(bool, abre);
    QFETCH(QString, mensaje);
    auto ts = ConPantallas(motor);
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("100"));
    if (!bloqueo.isEmpty())
        Insertar(*ts, "INTERNOS", "interno",
                 {{"interno", "100"},
                  {"maquina", bloqueo},
                  {"usuario", ""},
                  {"fecha", QDate(2024, 3, 15)}});
    QWidget marco;
    marco.setObjectName("FrmPrincipal");
    marco.setWindowTitle("Korven Windows - 01.00.00");
    Registro r(*ts);
    r.Buscar();
    HubVisto visto;
    AlAbrir<FrmDetalleInterno> hub([&](FrmDetalleInterno* h) {
        visto.interno = h->interno();
        visto.maquinaDelBloqueo =
            EsNull(Valor(*ts, "select maquina from interno where interno = '100'"));
        visto.titulo = marco.windowTitle();
        QTest::keyClick(h, Qt::Key_Escape);
    });
    r.Tecla("100", Qt::Key_Return);
    QCOMPARE(hub.veces(), abre ? 1 : 0);
    QCOMPARE(ts->dialogos().mensajes(), mensaje.isEmpty() ? QStringList{} : QStringList{mensaje});
    if (abre) {
        QCOMPARE(visto.interno, QStringLiteral("100"));
        QCOMPARE(visto.maquinaDelBloqueo, QStringLiteral("PC-A"));
        QCOMPARE(visto.titulo, QStringLiteral("Korven Windows 1.0.0 - PC [ PC-A ]"));
        // Closed with Esc, the hub gave the lock back.
        QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 0);
        QCOMPARE(ts->settings().GetSetting("KORVEN", "100", "FLAG0"), QStringLiteral("1"));
    } else {
        QCOMPARE(EsNull(Valor(*ts, "select maquina from interno where interno = '100'")),
                 QStringLiteral("PC-B"));
        QCOMPARE(marco.windowTitle(), QStringLiteral("Korven Windows - 01.00.00"));
    }
}

void TestRegistroPantalla::deleteEliminaLaOperacion() {
    MOTOR_O_SALTAR();
    auto ts = ConPantallas(motor);
    OperacionConTodo(*ts, "X-1");
    OperacionConTodo(*ts, "X-2");
    ts->settings().SaveSetting("KORVEN", "X-1", "FLAG0", "0");
    Registro r(*ts);
    r.Buscar();
    QCOMPARE(r.f.InternosListados(), (QStringList{"X-1", "X-2"}));
    // The locks left by this workstation do not stop the deletion.
    ts->conexion("INTERNOS").Ejecutar("update interno set maquina = 'PC-A'");
    ts->dialogos().ResponderSi();
    r.Tecla("X-1", Qt::Key_Delete);
    QCOMPARE(ts->dialogos().registro().at(0).texto,
             QStringLiteral("Confirma eliminar el interno X-1"));
    QCOMPARE(r.f.InternosListados(), QStringList{"X-2"});
    auto* pb = r.f.findChild<QProgressBar*>("PB");
    QVERIFY(pb->isHidden());
    QCOMPARE(pb->value(), 16);
    for (const TablaOperacion& t : TablasDeOperacion()) {
        const QString tabla = t.tabla;
        const bool queda = tabla == "idrel" || tabla == "sysflag" || tabla == "coment";
        QCOMPARE(Contar(*ts, t.entidad, t.tabla, "X-1") > 0, queda);
        QVERIFY(Contar(*ts, t.entidad, t.tabla, "X-2") > 0);
    }
    QVERIFY(ts->settings().GetSetting("KORVEN", "X-1", "FLAG0").isEmpty());

    // Answering no keeps the Operation and its row.
    ts->dialogos().ResponderNo();
    r.Tecla("X-2", Qt::Key_Delete);
    QCOMPARE(r.f.InternosListados(), QStringList{"X-2"});
    QCOMPARE(Contar(*ts, "INTERNOS", "caratula", "X-2"), 1);
}

void TestRegistroPantalla::deleteEnGrillaVaciaNoHaceNada() {
    auto ts = ConPantallas(0);
    Registro r(*ts);
    r.Buscar("nada");
    QVERIFY(r.f.InternosListados().isEmpty());
    // A question here would end the test: the script has no answer for it.
    QTest::keyClick(r.grilla(), Qt::Key_Delete);
    QTest::keyClick(r.grilla(), Qt::Key_F6);
    QVERIFY(ts->dialogos().registro().isEmpty());
}

void TestRegistroPantalla::f6CopiaLaOperacion() {
    MOTOR_O_SALTAR();
    auto ts = ConPantallas(motor);
    OperacionConTodo(*ts, "100");
    Registro r(*ts);
    r.Buscar();
    ts->dialogos().ResponderTexto("100");
    r.Tecla("100", Qt::Key_F6);
    QCOMPARE(ts->dialogos().mensajes(), QStringList{"El Código de interno ya existe."});
    ts->dialogos().ResponderTexto("101");
    r.Tecla("100", Qt::Key_F6);
    QCOMPARE(ts->dialogos().registro().last().titulo, QStringLiteral("Copiar interno 100"));
    QCOMPARE(r.txt("txtInterno")->text(), QStringLiteral("101"));
    QCOMPARE(r.f.InternosListados(), QStringList{"101"});
    QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "101"), 2);
    QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '101'")),
             QStringLiteral("S"));
}

void TestRegistroPantalla::f12SinComponente() {
    auto ts = ConPantallas(0);
    Registro r(*ts);
    QTest::keyClick(r.txt("txtInterno"), Qt::Key_F12);
    QCOMPARE(ts->dialogos().mensajes(),
             QStringList{"429 - El componente OperationExchange.Main no está instalado. - seccion "
                         "[KORVEN.FrmInternoNew.lp_ImprimirList]::"});
    QVERIFY(r.f.isVisible());
}

void TestRegistroPantalla::agruparPorCliente() {
    auto ts = ConPantallas(0);
    const char* filas[][2] = {{"1", "Zeta SA"}, {"2", "Alfa SRL"}, {"3", "Zeta SA"}};
    for (const auto& f : filas) {
        QVariantMap c = CaratulaCompleta(f[0]);
        c.insert("factura7", f[1]);
        Insertar(*ts, "INTERNOS", "caratula", c);
    }
    Registro r(*ts);
    r.Buscar();
    auto* cbo = r.f.findChild<QComboBox*>("cboAgruparPor");
    QCOMPARE(cbo->currentIndex(), -1);
    QCOMPARE(cbo->count(), 5);
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
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "2"), 0);
    // The empty entry groups by sub-regime.
    cbo->setCurrentIndex(0);
    QCOMPARE(g->topLevelItem(0)->text(0), QStringLiteral("SubRegimen: IC04 (3)"));
}

// F6 in the client filter chooses from the client book; Delete empties the filter.
void TestRegistroPantalla::f6EnClienteEligeDelLibro() {
    auto ts = ConPantallas(0);
    Insertar(*ts, "PERSONAL", "clientes", {{"cuit", "30999999997"}, {"nombre", "Beta SA"}});
    Registro r(*ts);
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

void TestRegistroPantalla::escCierra() {
    auto ts = ConPantallas(0);
    Registro r(*ts);
    QTest::keyClick(r.txt("txtDespachante"), Qt::Key_Escape);
    QVERIFY(!r.f.isVisible());
}

QTEST_MAIN(TestRegistroPantalla)
#include "test_registro_pantalla.moc"
