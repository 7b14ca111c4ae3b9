// The small master lists driven from the keyboard: the code list, the vendors and their editor,
// the customs brokers, the two-column list with its feeder and the comment of an Operation.

#include "FixtureOperaciones.h"
#include "foundation/ClListadoEx.h"
#include "foundation/FrmListado.h"
#include "foundation/FrmListadoDespachante.h"
#include "foundation/FrmListadoeX.h"
#include "foundation/FrmLstDiv.h"
#include "foundation/FrmLstVendedores.h"
#include "foundation/FrmNewVendedor.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "platform/AppContext.h"
#include "platform/Pantallas.h"
#include "support/Pantallas.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolBar>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    return ts;
}

void Vendedores(TestStores& ts) {
    for (const auto& [c, n, d] : {std::tuple{"V03", "Ana", "Calle 3"},
                                  {"V01", "Pedro", "Calle 1"},
                                  {"V02", "Luis", "Calle 2"}})
        Insertar(ts, "PERSONAL", "vendedor", {{"codigo", c}, {"nombre", n}, {"domicilio", d}});
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

} // namespace

class TestListasMaestras : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void listadoBuscaYElige();
    void listadoSinEleccion();
    void vendedoresOrden_data();
    void vendedoresOrden();
    void vendedoresVacios_data() { FilasDeMotores(); }
    void vendedoresVacios();
    void vendedoresAltaCambioYBaja_data() { FilasDeMotores(); }
    void vendedoresAltaCambioYBaja();
    void nuevoVendedorExistente_data() { FilasDeMotores(); }
    void nuevoVendedorExistente();
    void despachantes_data() { FilasDeMotores(); }
    void despachantes();
    void listadoExPaises_data() { FilasDeMotores(); }
    void listadoExPaises();
    void listadoExBusca();
    void comentario_data() { FilasDeMotores(); }
    void comentario();
};

void TestListasMaestras::listadoBuscaYElige() {
    auto ts = Stores(0);
    FrmListado f(ts->ctx(),
                 {{"titulo", "Buscar PAIS"},
                  {"codigos", QStringList{"200", "203", "221", "310"}},
                  {"descripciones", QStringList{"ARGENTINA", "BRASIL", "URUGUAY", "CHINA"}},
                  {"valores", QStringList{"200", "203", "221", "310|5"}}});
    Mostrar(f);
    QCOMPARE(f.windowTitle(), QStringLiteral("Buscar PAIS"));
    auto* txt = f.findChild<QLineEdit*>("TxtBs");
    auto* cod = f.findChild<QListWidget*>("LstCod");
    auto* des = f.findChild<QListWidget*>("LstDescripcion");
    QTest::keyClicks(txt, "22");
    QCOMPARE(cod->currentRow(), 2);
    QCOMPARE(des->currentRow(), 2);
    QTest::keyClick(txt, Qt::Key_Down);
    QCOMPARE(cod->currentRow(), 3);
    QVERIFY(txt->hasFocus());
    QTest::keyClick(txt, Qt::Key_Down);
    QCOMPARE(cod->currentRow(), 3);
    QTest::keyClick(txt, Qt::Key_Return);
    QCOMPARE(f.result(), int(QDialog::Accepted));
    QCOMPARE(f.Respuesta(), QStringLiteral("310|5"));
}

void TestListasMaestras::listadoSinEleccion() {
    auto ts = Stores(0);
    FrmListado f(ts->ctx(), {{"codigos", QStringList{"A", "B"}},
                             {"descripciones", QStringList{"Uno", "Dos"}}});
    Mostrar(f);
    auto* txt = f.findChild<QLineEdit*>("TxtBs");
    QTest::keyClicks(txt, "X");
    QCOMPARE(f.findChild<QListWidget*>("LstCod")->currentRow(), -1);
    // Enter with no row selected hands nothing over.
    QTest::keyClick(txt, Qt::Key_Return);
    QVERIFY(f.isVisible());
    QTest::keyClick(txt, Qt::Key_Escape);
    QVERIFY(!f.isVisible());
    QCOMPARE(f.Respuesta(), QString());
    // A double click on the description chooses too; without values the code answers.
    FrmListado g(ts->ctx(), {{"codigos", QStringList{"A", "B"}},
                             {"descripciones", QStringList{"Uno", "Dos"}}});
    Mostrar(g);
    auto* des = g.findChild<QListWidget*>("LstDescripcion");
    des->setCurrentRow(1);
    const QPoint punto = des->visualItemRect(des->item(1)).center();
    QTest::mousePress(des->viewport(), Qt::LeftButton, {}, punto);
    QTest::mouseDClick(des->viewport(), Qt::LeftButton, {}, punto);
    QCOMPARE(g.Respuesta(), QStringLiteral("B"));
}

void TestListasMaestras::vendedoresOrden_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<bool>("porNombre");
    QTest::addColumn<QStringList>("primera");
    QTest::addColumn<QVariantMap>("elegido");
    for (int motor : {0, 1}) {
        const QString m = motor == 0 ? "sqlite " : "postgresql ";
        QTest::newRow(qPrintable(m + "por codigo"))
            << motor << false << QStringList{"V01", "V02", "V03"} << Par("V02", "Luis");
        QTest::newRow(qPrintable(m + "por nombre"))
            << motor << true << QStringList{"Ana", "Luis", "Pedro"} << Par("V02", "Luis");
    }
}

void TestListasMaestras::vendedoresOrden() {
    MOTOR_O_SALTAR();
    QFETCH(bool, porNombre);
    QFETCH(QStringList, primera);
    QFETCH(QVariantMap, elegido);
    auto ts = Stores(motor);
    Vendedores(*ts);
    ts->ctx().config().VendedorOrderxNombre = porNombre;
    FrmLstVendedores f(ts->ctx());
    Mostrar(f);
    auto* lst = f.findChild<QTreeWidget*>("Lst");
    QCOMPARE(Columna(lst, 0), primera);
    // Typing searches the first column.
    QTest::keyClicks(f.findChild<QLineEdit*>("txtBuscar"), porNombre ? "lu" : "V02");
    QTest::keyClick(f.findChild<QLineEdit*>("txtBuscar"), Qt::Key_Return);
    QVERIFY(lst->hasFocus());
    QTest::keyClick(lst, Qt::Key_Return);
    QCOMPARE(f.property("Respuesta").toMap(), elegido);
}

void TestListasMaestras::vendedoresVacios() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    FrmLstVendedores f(ts->ctx());
    Mostrar(f);
    QCOMPARE(ts->dialogos().mensajes(), QStringList{"No hay vendedores en la Base"});
    auto* lst = f.findChild<QTreeWidget*>("Lst");
    QCOMPARE(lst->topLevelItemCount(), 0);
    QTest::keyClick(lst, Qt::Key_Return);
    QVERIFY(f.isVisible());
    QTest::keyClick(lst, Qt::Key_Escape);
    QVERIFY(!f.isVisible());
    QVERIFY(f.property("Respuesta").toMap().isEmpty());
}

void TestListasMaestras::vendedoresAltaCambioYBaja() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Vendedores(*ts);
    FrmLstVendedores f(ts->ctx());
    Mostrar(f);
    auto* lst = f.findChild<QTreeWidget*>("Lst");
    // Insert: a new vendor in its editor.
    AlAbrir<FrmNewVendedor> alta([](FrmNewVendedor* e) {
        QTest::keyClicks(e->findChild<QLineEdit*>("TxtCodigo"), "V04");
        QTest::keyClick(e->findChild<QLineEdit*>("TxtCodigo"), Qt::Key_Return);
        QTest::keyClicks(e->findChild<QLineEdit*>("TxtNombre"), "O'Brien");
        QTest::keyClick(e->findChild<QLineEdit*>("TxtNombre"), Qt::Key_Return);
        QTest::keyClicks(e->findChild<QLineEdit*>("TxtDomicilio"), "Calle 4");
        QTest::keyClick(e->findChild<QLineEdit*>("TxtDomicilio"), Qt::Key_Return);
        QTest::keyClick(e->findChild<QPushButton*>("Command1"), Qt::Key_Return);
    });
    QTest::keyClick(lst, Qt::Key_Insert);
    QCOMPARE(alta.veces(), 1);
    QCOMPARE(ts->dialogos().mensajes(), QStringList{"Datos ingresados correctamente."});
    QCOMPARE(Columna(lst, 0), (QStringList{"V01", "V02", "V03", "V04"}));
    QCOMPARE(EsNull(Valor(*ts, "select nombre from vendedor where codigo = 'V04'", "PERSONAL")),
             QStringLiteral("O'Brien"));
    // F6: the selected vendor changes its name.
    lst->setCurrentItem(lst->topLevelItem(1));
    AlAbrir<FrmNewVendedor> cambio([](FrmNewVendedor* e) {
        auto* codigo = e->findChild<QLineEdit*>("TxtCodigo");
        QVERIFY(codigo->isReadOnly());
        QCOMPARE(codigo->text(), QStringLiteral("V02"));
        auto* nombre = e->findChild<QLineEdit*>("TxtNombre");
        QCOMPARE(nombre->text(), QStringLiteral("Luis"));
        nombre->setText("Luis Alberto");
        e->Command1();
    });
    QTest::keyClick(lst, Qt::Key_F6);
    QCOMPARE(cambio.veces(), 1);
    QCOMPARE(lst->topLevelItem(1)->text(1), QStringLiteral("Luis Alberto"));
    QCOMPARE(EsNull(Valor(*ts, "select domicilio from vendedor where codigo = 'V02'", "PERSONAL")),
             QStringLiteral("Calle 2"));
    // Delete: the selected vendor goes, from the list and the store.
    lst->setCurrentItem(lst->topLevelItem(0));
    QTest::keyClick(lst, Qt::Key_Delete);
    QCOMPARE(Columna(lst, 0), (QStringList{"V02", "V03", "V04"}));
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from vendedor where codigo = 'V01'", "PERSONAL")),
             0.0);
}

void TestListasMaestras::nuevoVendedorExistente() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Vendedores(*ts);
    // Opened from the header with an unknown code already typed.
    FrmNewVendedor f(ts->ctx(), {{"codigo", "V03"}});
    Mostrar(f);
    QCOMPARE(f.findChild<QLineEdit*>("TxtCodigo")->text(), QStringLiteral("V03"));
    f.findChild<QLineEdit*>("TxtNombre")->setText("Otra");
    QTest::keyClick(f.findChild<QPushButton*>("Command1"), Qt::Key_Space);
    QCOMPARE(ts->dialogos().mensajes(), QStringList{"El codigo ya existe.!"});
    QVERIFY(f.isVisible());
    QCOMPARE(EsNull(Valor(*ts, "select nombre from vendedor where codigo = 'V03'", "PERSONAL")),
             QStringLiteral("Ana"));
    f.findChild<QLineEdit*>("TxtCodigo")->setText("V09");
    QTest::keyClick(f.findChild<QPushButton*>("Command1"), Qt::Key_Space);
    QVERIFY(!f.isVisible());
    QCOMPARE(f.property("Respuesta").toMap(), Par("V09", "Otra"));
    QTest::keyClick(f.findChild<QPushButton*>("Command2"), Qt::Key_Space);
}

void TestListasMaestras::despachantes() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Insertar(*ts, "PERSONAL", "despadu", {{"cuit", "20111111112"}, {"nombre", "Zapata"}});
    Insertar(*ts, "PERSONAL", "despadu", {{"cuit", "20222222223"}, {"nombre", "Acosta"}});
    FrmListadoDespachante f(ts->ctx());
    Mostrar(f);
    auto* lst = f.findChild<QTreeWidget*>("Lst");
    QCOMPARE(Columna(lst, 1), (QStringList{"Acosta", "Zapata"}));
    QTest::keyClick(lst, Qt::Key_Down);
    QTest::keyClick(lst, Qt::Key_Return);
    QCOMPARE(f.property("Respuesta").toMap(), Par("20111111112", "Zapata", "cuit"));
    // Through the screens, Esc leaves the pair empty.
    AlAbrir<FrmListadoDespachante> esc([](FrmListadoDespachante* d) {
        QTest::keyClick(d->findChild<QTreeWidget*>("Lst"), Qt::Key_Escape);
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
    QCOMPARE(l.ancho1(), 2000);
    QCOMPARE(l.ancho2(), 2000);
    QCOMPARE(l.Mostrar("", ""), QStringList{});
    QCOMPARE(l.Mostrar("999", ""), QStringList{});
    QCOMPARE(ts->dialogos().mensajes(),
             (QStringList{"No hay Países ingresados.",
                          "No hay LISTA para mostrar con los Países ingresados"}));
    QVERIFY(recibido.isEmpty());
    QCOMPARE(l.Mostrar("200", "203"), (QStringList{"200", "MERCOSUR"}));
    QCOMPARE(recibido.value("titulo").toString(), QStringLiteral("LISTAS"));
    QCOMPARE(recibido.value("anchos").toList(), (QVariantList{2000, 2000}));
    QVariantList filas;
    for (const QStringList& f : {QStringList{"200", "ALADI"}, QStringList{"200", "MERCOSUR"},
                                 QStringList{"203", "MERCOSUR"}})
        filas << f;
    QCOMPARE(recibido.value("filas").toList(), filas);
}

void TestListasMaestras::listadoExBusca() {
    auto ts = Stores(0);
    QVariantList filas{QStringList{"200", "ALADI"}, QStringList{"203", "MERCOSUR"},
                       QStringList{"310", "OMC"}};
    FrmListadoeX f(ts->ctx(), {{"titulo", "LISTAS"}, {"filas", filas}});
    Mostrar(f);
    auto* tb = f.findChild<QToolBar*>("Tb");
    auto* lst = f.findChild<QTreeWidget*>("Lst");
    ts->dialogos().ResponderTexto("merco");
    tb->actions().at(1)->trigger();
    QCOMPARE(lst->currentItem()->text(0), QStringLiteral("203"));
    ts->dialogos().ResponderTexto("999");
    tb->actions().at(0)->trigger();
    QCOMPARE(ts->dialogos().todo(),
             (QStringList{"Ingrese el texto a buscar en DESCRIPCIÓN",
                          "Ingrese el texto a buscar en CODIGO", "Cadena no encontrada"}));
    QCOMPARE(lst->currentItem()->text(0), QStringLiteral("203"));
    QTest::keyClick(lst, Qt::Key_Return);
    QCOMPARE(f.property("Respuesta").toMap(), Par("203", "MERCOSUR", "codigo", "descripcion"));
}

void TestListasMaestras::comentario() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Insertar(*ts, "SYSTABLAS", "coment", {{"interno", "200"}, {"coment", "Otro"}});
    for (const QString& texto :
         {QStringLiteral("Don't forget\nthe invoices"), QStringLiteral("Llega el 'lunes'")}) {
        FrmLstDiv f(ts->ctx(), {{"interno", "100"}});
        Mostrar(f);
        auto* txt = f.findChild<QPlainTextEdit*>("TxtCom");
        txt->setPlainText(texto);
        QTest::keyClick(txt, Qt::Key_Escape);
        QVERIFY(!f.isVisible());
        QCOMPARE(EsNull(Valor(*ts, "select coment from coment where interno = '100'", "SYSTABLAS")),
                 texto);
    }
    QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "100"), 1);
    QVERIFY(ts->dialogos().registro().isEmpty());
    FrmLstDiv g(ts->ctx(), {{"interno", "200"}});
    QCOMPARE(g.findChild<QPlainTextEdit*>("TxtCom")->toPlainText(), QStringLiteral("Otro"));
}

QTEST_MAIN(TestListasMaestras)
#include "test_listas_maestras.moc"
