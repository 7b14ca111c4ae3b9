// The small master lists driven from the keyboard: the code list, the vendors and their editor,
// the customs brokers, the two-column list with its feeder and the comment of an Operation.

#include "FixtureOperaciones.h"
#include "foundation/ClListadoEx.h"
#include "foundation/FrmListado.h"
#include "foundation/FrmListadoDespachante.h"
#include "foundation/FrmLstDiv.h"
#include "foundation/FrmLstVendedores.h"
#include "foundation/FrmNewVendedor.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "platform/AppContext.h"
#include "platform/Pantallas.h"
#include "support/Pantallas.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    for (const auto& [c, n, d] : {std::tuple{"V03", "Ana", "Calle 3"},
                                  {"V01", "Pedro", "Calle 1"},
                                  {"V02", "Luis", "Calle 2"}})
        Insertar(*ts, "PERSONAL", "vendedor", {{"codigo", c}, {"nombre", n}, {"domicilio", d}});
    return ts;
}

QStringList Columna(QTreeWidget* t, int col) {
    QStringList r;
    for (int i = 0; i < t->topLevelItemCount(); ++i)
        r << t->topLevelItem(i)->text(col);
    return r;
}

QVariantMap Par(const QString& a, const QString& b, const char* clave = "codigo",
                const char* valor = "nombre") {
    return {{clave, a}, {valor, b}};
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

class TestListasMaestras : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void listado();
    void vendedoresOrden_data();
    void vendedoresOrden();
    void vendedoresAltaCambioYBaja_data() { FilasDeMotores(); }
    void vendedoresAltaCambioYBaja();
    void despachantes();
    void listadoExPaises_data() { FilasDeMotores(); }
    void listadoExPaises();
    void comentario_data() { FilasDeMotores(); }
    void comentario();
};

void TestListasMaestras::listado() {
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
    QCOMPARE(Control<QListWidget>(f, "LstDescripcion")->currentRow(), 2);
    QTest::keyClick(txt, Qt::Key_Down);
    QTest::keyClick(txt, Qt::Key_Down);
    QCOMPARE(cod->currentRow(), 3);
    QVERIFY(txt->hasFocus());
    QTest::keyClick(txt, Qt::Key_Return);
    QCOMPARE(f.result(), int(QDialog::Accepted));
    QCOMPARE(f.Respuesta(), QStringLiteral("310|5"));
    // Enter with no row selected hands nothing over.
    FrmListado g(ts->ctx(), args);
    Mostrar(g);
    txt = Control<QLineEdit>(g, "TxtBs");
    QTest::keyClicks(txt, "X");
    QCOMPARE(Control<QListWidget>(g, "LstCod")->currentRow(), -1);
    QTest::keyClick(txt, Qt::Key_Return);
    QVERIFY(g.isVisible());
    QTest::keyClick(txt, Qt::Key_Escape);
    QVERIFY(!g.isVisible());
    QCOMPARE(g.Respuesta(), QString());
    // A double click on the description chooses too; without values the code answers.
    FrmListado h(ts->ctx(), args);
    Mostrar(h);
    auto* des = Control<QListWidget>(h, "LstDescripcion");
    des->setCurrentRow(1);
    const QPoint punto = des->visualItemRect(des->item(1)).center();
    QTest::mousePress(des->viewport(), Qt::LeftButton, {}, punto);
    QTest::mouseDClick(des->viewport(), Qt::LeftButton, {}, punto);
    QCOMPARE(h.Respuesta(), QStringLiteral("203"));
}

void TestListasMaestras::vendedoresOrden_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<bool>("porNombre");
    QTest::addColumn<QStringList>("primera");
    FILA_MOTORES("por codigo", false << QStringList{"V01", "V02", "V03"});
    FILA_MOTORES("por nombre", true << QStringList{"Ana", "Luis", "Pedro"});
}

void TestListasMaestras::vendedoresOrden() {
    MOTOR_O_SALTAR();
    QFETCH(bool, porNombre);
    QFETCH(QStringList, primera);
    auto ts = Stores(motor);
    ts->ctx().config().VendedorOrderxNombre = porNombre;
    FrmLstVendedores f(ts->ctx());
    Mostrar(f);
    auto* lst = Control<QTreeWidget>(f, "Lst");
    QCOMPARE(Columna(lst, 0), primera);
    // Typing searches the first column.
    Llenar(&f, "txtBuscar", porNombre ? "lu" : "V02");
    QVERIFY(lst->hasFocus());
    QTest::keyClick(lst, Qt::Key_Return);
    QCOMPARE(f.property("Respuesta").toMap(), Par("V02", "Luis"));
}

void TestListasMaestras::vendedoresAltaCambioYBaja() {
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
    QCOMPARE(alta.veces(), 1);
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
    QCOMPARE(cambio.veces(), 1);
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
    QVERIFY(g.isVisible());
    QTest::keyClick(lst, Qt::Key_Escape);
    QVERIFY(!g.isVisible());
    QVERIFY(g.property("Respuesta").toMap().isEmpty());
}

void TestListasMaestras::despachantes() {
    auto ts = Stores(0);
    Insertar(*ts, "PERSONAL", "despadu", {{"cuit", "20111111112"}, {"nombre", "Zapata"}});
    Insertar(*ts, "PERSONAL", "despadu", {{"cuit", "20222222223"}, {"nombre", "Acosta"}});
    FrmListadoDespachante f(ts->ctx());
    Mostrar(f);
    auto* lst = Control<QTreeWidget>(f, "Lst");
    QCOMPARE(Columna(lst, 1), (QStringList{"Acosta", "Zapata"}));
    QTest::keyClick(lst, Qt::Key_Down);
    QTest::keyClick(lst, Qt::Key_Return);
    QCOMPARE(f.property("Respuesta").toMap(), Par("20111111112", "Zapata", "cuit"));
    // Through the screens, Esc leaves the pair empty.
    AlAbrir<FrmListadoDespachante> esc([](FrmListadoDespachante* d) {
        QTest::keyClick(Control<QTreeWidget>(d, "Lst"), Qt::Key_Escape);
    });
    QVERIFY(ts->ctx().AbrirModal("FrmListadoDespachante").toMap().isEmpty());
    QCOMPARE(esc.veces(), 1);
}

void TestListasMaestras::listadoExPaises() {
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

void TestListasMaestras::comentario() {
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
        QCOMPARE(EsNull(Valor(*ts, "select coment from coment where interno = '100'", "SYSTABLAS")),
                 texto);
    }
    QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "100"), 1);
    QVERIFY(ts->dialogos().registro().isEmpty());
    FrmLstDiv g(ts->ctx(), {{"interno", "200"}});
    QCOMPARE(Control<QPlainTextEdit>(g, "TxtCom")->toPlainText(), QStringLiteral("Otro"));
}

QTEST_MAIN(TestListasMaestras)
#include "test_listas_maestras.moc"
