// The screens of the Operations driven from the keyboard, with the stores checked afterwards: the
// register (Insert, Enter, Delete, F6, F12 and Esc), the hub of an open Operation (its options,
// the lock it gives back, the assembly button and the hand-offs to components a plain
// installation does not have) and the small master lists.

#include "FixtureOperaciones.h"
#include "components/RegistrarComponentesPropios.h"
#include "foundation/ClListadoEx.h"
#include "foundation/FrmDetalleInterno.h"
#include "foundation/FrmInternoNew.h"
#include "foundation/FrmListado.h"
#include "foundation/FrmLstDiv.h"
#include "foundation/FrmLstVendedores.h"
#include "foundation/FrmNewVendedor.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "platform/AppContext.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "support/Pantallas.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

// Stores with the masters, three vendors and the given headers, and the screens registered.
std::unique_ptr<TestStores> Stores(int motor, const QStringList& internos = {}) {
    auto ts = StoresConMaestros(motor);
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    RegistrarComponentesPropios(ts->ctx().componentes());
    for (const auto& [c, n, d] : {std::tuple{"V03", "Ana", "Calle 3"},
                                  {"V01", "Pedro", "Calle 1"},
                                  {"V02", "Luis", "Calle 2"}})
        Insertar(*ts, "PERSONAL", "vendedor", {{"codigo", c}, {"nombre", n}, {"domicilio", d}});
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
    Insertar(*ts, "INTERNOS", "interno", {{"interno", "100"}, {"maquina", "PC-A"}});
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

QStringList Columna(QTreeWidget* t, int col) {
    QStringList r;
    for (int i = 0; i < t->topLevelItemCount(); ++i)
        r << t->topLevelItem(i)->text(col);
    return r;
}

QString Vendedor(TestStores& ts, const char* campo, const char* codigo) {
    return EsNull(
        Valor(ts, QStringLiteral("select %1 from vendedor where codigo = '%2'").arg(campo, codigo),
              "PERSONAL"));
}

void Llenar(QWidget* w, const char* campo, const QString& texto) {
    auto* t = w->findChild<QLineEdit*>(campo);
    t->setText(texto);
    QTest::keyClick(t, Qt::Key_Return);
}

} // namespace

class TestPantallas : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertF6YDelete_data() { FilasDeMotores(); }
    // Insert makes an Operation, F6 copies the selected one, Delete removes it.
    void insertF6YDelete() {
        MOTOR_O_SALTAR();
        Registro r(motor);
        // An empty grid: Delete and F6 ask nothing (an unscripted question would end the test).
        r.Buscar("nada");
        QTest::keyClick(r.grilla(), Qt::Key_Delete);
        QTest::keyClick(r.grilla(), Qt::Key_F6);
        QVERIFY(r.ts->dialogos().registro().isEmpty());
        r.ts->dialogos().ResponderTexto("2024-0007");
        QTest::keyClick(r.txt("txtCliente"), Qt::Key_Insert);
        QCOMPARE(r.f.InternosListados(), QStringList{"2024-0007"});
        QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "2024-0007"), 1);
        OperacionConTodo(*r.ts, "X-1");
        r.Buscar();
        r.ts->dialogos().ResponderTexto("X-2");
        r.Tecla("X-1", Qt::Key_F6);
        QCOMPARE(r.f.InternosListados(), QStringList{"X-2"});
        QCOMPARE(Contar(*r.ts, "INTERNOS", "subitems", "X-2"), 2);
        r.Buscar();
        // The locks left by this workstation do not stop the deletion.
        r.ts->conexion("INTERNOS").Ejecutar("update interno set maquina = 'PC-A'");
        r.ts->dialogos().ResponderSi();
        r.Tecla("X-1", Qt::Key_Delete);
        QCOMPARE(r.f.InternosListados(), (QStringList{"2024-0007", "X-2"}));
        QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "X-1"), 0);
        QCOMPARE(Contar(*r.ts, "INTERNOS", "subitems", "X-2"), 2);
    }
    void enterAbreBajoBloqueo_data() {
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
    void enterAbreBajoBloqueo() {
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
                     {{"interno", "100"}, {"maquina", bloqueo}, {"fecha", QDate(2024, 3, 15)}});
        r.Buscar();
        QVERIFY(r.grilla()->hasFocus());
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
            QCOMPARE(EsNull(Valor(ts, "select maquina from interno where interno = '100'")),
                     bloqueo);
            return;
        }
        QCOMPARE(visto, (QStringList{"100", "Korven Windows 1.0.0 - PC [ PC-A ]", "PC-A"}));
        QCOMPARE(Contar(ts, "INTERNOS", "interno", "100"), 0);
        QCOMPARE(ts.settings().GetSetting("KORVEN", "100", "FLAG0"), QStringLiteral("1"));
        QStringList vistas;
        for (QTreeWidgetItemIterator i(r.grilla()); *i; ++i)
            if (!(*i)->text(1).isEmpty())
                vistas << QStringList{(*i)->text(1), (*i)->text(2), (*i)->text(3), (*i)->text(5)}
                              .join('|');
        QCOMPARE(vistas, (QStringList{"100|EC01|Exportacion|Cliente Nuevo",
                                      "200|IC04|Importacion|Cliente Uno"}));
        QCOMPARE(r.f.InternoSeleccionado(), QStringLiteral("100"));
    }
    void cargaLeeLasOpciones() {
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
        QVERIFY(f.findChild<QWidget*>("frmOrdenar")->isHidden());
        QCOMPARE(ts->ctx().InternoActual, QStringLiteral("100"));
    }
    void escGuardaOpcionesYLiberaElBloqueo_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("subreg");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<QString>("coef"); // COEFEXPO after closing
        FILA_MOTORES("importacion, Esc", "IC04" << int(Qt::Key_Escape) << "0");
        FILA_MOTORES("exportacion, Esc", "EC01" << int(Qt::Key_Escape) << "1");
        FILA_MOTORES("exportacion, Ctrl+C", "EC01" << int(Qt::Key_C) << "1");
    }
    void escGuardaOpcionesYLiberaElBloqueo() {
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
    void traspasosSinComponente_data() {
        QTest::addColumn<QString>("subreg");
        QTest::addColumn<QString>("boton");
        QTest::addColumn<QString>("mensaje");
        const QString no =
            QStringLiteral("429 - El componente %1 no está instalado. - Seccion [%2]");
        QTest::newRow("CmdTransMaria")
            << "ET01"
            << "CmdTransMaria"
            << no.arg("DeclarationOutput.Main", "KORVEN.frmDetalleInterno.CmdTransMaria");
        QTest::newRow("cmdExportar")
            << "ET01"
            << "cmdExportar"
            << no.arg("CancellationImport.Main", "KORVEN.Detalleinterno.cmdExportar");
        QTest::newRow("cmdITEM") << "IC04"
                                 << "cmdITEM"
                                 << "429 - La pantalla FrmArmarItem no está instalada. - "
                                    "[KORVEN.frmDetalleInterno.cmdItem]";
    }
    // Each hand-off reports, when it is pressed, that its component is not installed, with its own
    // section text; the hub stays on the screen and usable.
    void traspasosSinComponente() {
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
    void armadoDeItems_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("factura8");
        QTest::addColumn<bool>("generado");     // the items are generated after the button
        QTest::addColumn<QString>("resultado"); // ArmadoResultado the assembly leaves
        FILA_MOTORES("sin cambios va a los items", "N" << true << "SI");
        FILA_MOTORES("armado correcto", "S" << true << "SI");
        FILA_MOTORES("armado fallido", "S" << false << "NO");
        FILA_MOTORES("armado cancelado", "S" << false << "No");
    }
    void armadoDeItems() {
        MOTOR_O_SALTAR();
        QFETCH(QString, factura8);
        QFETCH(bool, generado);
        QFETCH(QString, resultado);
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
        QCOMPARE(armados.size(), factura8 == "S" ? 1 : 0);
        QCOMPARE(vistos.size(), generado ? 1 : 0);
        const QVariantMap esperados[] = {{{"interno", "100"}, {"ejecutar", true}, {"multa", true}},
                                         {{"interno", "100"}, {"item", 0}}};
        for (int i = 0; i < 2; ++i)
            for (const QVariantMap& a : i ? vistos : armados)
                for (auto [k, v] : esperados[i].asKeyValueRange())
                    QCOMPARE(a.value(k), v);
        QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
                 generado ? "N" : "S");
        QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "100"),
                 resultado == "SI" ? QStringLiteral("R") : QString());
        QCOMPARE(Texto(f, "LbEstadoItem"), generado ? "GENERADO!" : "SIN GENERAR");
        QCOMPARE(Boton(f, "CmdTransMaria")->isEnabled(), generado);
        QVERIFY(ts->dialogos().registro().isEmpty());
    }
    // What the screens of the Operation leave behind shows as soon as they close.
    void pantallasDeLaOperacionRecalculanElEstado() {
        auto ts = Abierta(0);
        QList<QVariantMap> lineas;
        Pantalla(*ts, "FrmSubItems", &lineas, [](AppContext& ctx) {
            Sql(ctx, "update caratula set factura8 = 'S' where interno = '100'");
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
    }
    void listado() {
        auto ts = Stores(0);
        const QVariantMap args{
            {"codigos", QStringList{"200", "203", "221", "310"}},
            {"descripciones", QStringList{"ARGENTINA", "BRASIL", "URUGUAY", "CHINA"}}};
        QVariantMap conValores = args;
        conValores.insert("valores", QStringList{"200", "203", "221", "310|5"});
        FrmListado f(ts->ctx(), conValores);
        Mostrar(f);
        auto* txt = Control<QLineEdit>(f, "TxtBs");
        auto* cod = Control<QListWidget>(f, "LstCod");
        QTest::keyClicks(txt, "22");
        QCOMPARE(cod->currentRow(), 2);
        QTest::keyClick(txt, Qt::Key_Down);
        QTest::keyClick(txt, Qt::Key_Down);
        QCOMPARE(cod->currentRow(), 3);
        QVERIFY(txt->hasFocus());
        QTest::keyClick(txt, Qt::Key_Return);
        QCOMPARE(f.Respuesta(), QStringLiteral("310|5"));
        // Enter with no row selected hands nothing over.
        FrmListado g(ts->ctx(), args);
        Mostrar(g);
        txt = Control<QLineEdit>(g, "TxtBs");
        QTest::keyClicks(txt, "X");
        QTest::keyClick(txt, Qt::Key_Return);
        QVERIFY(g.isVisible());
        QTest::keyClick(txt, Qt::Key_Escape);
        QVERIFY(!g.isVisible());
        QCOMPARE(g.Respuesta(), QString());
    }
    void vendedoresAltaCambioYBaja_data() { FilasDeMotores(); }
    void vendedoresAltaCambioYBaja() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        FrmLstVendedores f(ts->ctx());
        Mostrar(f);
        auto* lst = Control<QTreeWidget>(f, "Lst");
        // Insert: a new vendor in its editor; first with a code that exists.
        AlAbrir<FrmNewVendedor> alta([](FrmNewVendedor* e) {
            Llenar(e, "TxtCodigo", "V03");
            Llenar(e, "TxtNombre", "O'Brien");
            Llenar(e, "TxtDomicilio", "Calle 4");
            QTest::keyClick(Control<QPushButton>(e, "Command1"), Qt::Key_Return);
            QVERIFY(e->isVisible());
            Control<QLineEdit>(e, "TxtCodigo")->setText("V04");
            QTest::keyClick(Control<QPushButton>(e, "Command1"), Qt::Key_Space);
        });
        QTest::keyClick(lst, Qt::Key_Insert);
        QCOMPARE(ts->dialogos().mensajes(),
                 (QStringList{"El codigo ya existe.!", "Datos ingresados correctamente."}));
        QCOMPARE(Columna(lst, 0), (QStringList{"V01", "V02", "V03", "V04"}));
        QCOMPARE(Vendedor(*ts, "nombre", "V03"), QStringLiteral("Ana"));
        QCOMPARE(Vendedor(*ts, "nombre", "V04"), QStringLiteral("O'Brien"));
        // F6: the selected vendor changes its name.
        lst->setCurrentItem(lst->topLevelItem(1));
        AlAbrir<FrmNewVendedor> cambio([](FrmNewVendedor* e) {
            QVERIFY(Control<QLineEdit>(e, "TxtCodigo")->isReadOnly());
            QCOMPARE(Texto(e, "TxtCodigo"), QStringLiteral("V02"));
            QCOMPARE(Texto(e, "TxtNombre"), QStringLiteral("Luis"));
            Control<QLineEdit>(e, "TxtNombre")->setText("Luis Alberto");
            e->Command1();
        });
        QTest::keyClick(lst, Qt::Key_F6);
        QCOMPARE(lst->topLevelItem(1)->text(1), QStringLiteral("Luis Alberto"));
        QCOMPARE(Vendedor(*ts, "domicilio", "V02"), QStringLiteral("Calle 2"));
        // Delete: the selected vendor goes, from the list and the store.
        lst->setCurrentItem(lst->topLevelItem(0));
        QTest::keyClick(lst, Qt::Key_Delete);
        QCOMPARE(Columna(lst, 0), (QStringList{"V02", "V03", "V04"}));
        QCOMPARE(Vendedor(*ts, "nombre", "V01"), QString());
        // An empty store: the message, and Enter hands nothing over.
        ts->conexion("PERSONAL").Ejecutar("delete from vendedor");
        ts->dialogos().Limpiar();
        FrmLstVendedores g(ts->ctx());
        Mostrar(g);
        QCOMPARE(ts->dialogos().mensajes(), QStringList{"No hay vendedores en la Base"});
        lst = Control<QTreeWidget>(g, "Lst");
        QTest::keyClick(lst, Qt::Key_Return);
        QVERIFY(g.isVisible() && g.property("Respuesta").toMap().isEmpty());
    }
    void listadoExPaises_data() { FilasDeMotores(); }
    void listadoExPaises() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        for (const auto& [id, d] :
             {std::pair{"200", "MERCOSUR"}, {"200", "ALADI"}, {"203", "MERCOSUR"}, {"310", "OMC"}})
            Insertar(*ts, "SYSTABLAS", "lista", {{"id", id}, {"descripcion", d}});
        QVariantMap recibido;
        ts->ctx().pantallas().Registrar("FrmListadoeX", [&](AppContext&, const QVariantMap& a) {
            recibido = a;
            return QVariant(QVariantMap{{"codigo", "200"}, {"descripcion", "MERCOSUR"}});
        });
        ClListadoEx l(ts->ctx());
        l.setTipo(ClListadoEx::ListasDePaises);
        QCOMPARE(l.Mostrar("", ""), QStringList{});
        QCOMPARE(l.Mostrar("999", ""), QStringList{});
        QCOMPARE(ts->dialogos().mensajes(),
                 (QStringList{"No hay Países ingresados.",
                              "No hay LISTA para mostrar con los Países ingresados"}));
        QVERIFY(recibido.isEmpty());
        QCOMPARE(l.Mostrar("200", "203"), (QStringList{"200", "MERCOSUR"}));
        QCOMPARE(recibido.value("titulo").toString(), QStringLiteral("LISTAS"));
        QCOMPARE(recibido.value("anchos").toList(), (QVariantList{2000, 2000}));
        QCOMPARE(recibido.value("filas").toList(),
                 (QVariantList{QStringList{"200", "ALADI"}, QStringList{"200", "MERCOSUR"},
                               QStringList{"203", "MERCOSUR"}}));
    }
    void comentario_data() { FilasDeMotores(); }
    void comentario() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        Insertar(*ts, "SYSTABLAS", "coment", {{"interno", "200"}, {"coment", "Otro"}});
        for (const QString texto : {"Don't forget\nthe invoices", "Llega el 'lunes'"}) {
            FrmLstDiv f(ts->ctx(), {{"interno", "100"}});
            Mostrar(f);
            auto* txt = Control<QPlainTextEdit>(f, "TxtCom");
            txt->setPlainText(texto);
            QTest::keyClick(txt, Qt::Key_Escape);
            QVERIFY(!f.isVisible());
            QCOMPARE(
                EsNull(Valor(*ts, "select coment from coment where interno = '100'", "SYSTABLAS")),
                texto);
        }
        QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "100"), 1);
        QVERIFY(ts->dialogos().registro().isEmpty());
        FrmLstDiv g(ts->ctx(), {{"interno", "200"}});
        QCOMPARE(Control<QPlainTextEdit>(g, "TxtCom")->toPlainText(), QStringLiteral("Otro"));
    }
};

QTEST_MAIN(TestPantallas)
#include "test_pantallas.moc"
