#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/SettingsStore.h"
#include "platform/ui/ClCntrl.h"
#include "platform/ui/TextosFormulario.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

using namespace korven;
using korven::test::TestStores;

namespace {

// A data form with three linked text boxes.
struct Formulario {
    explicit Formulario(AppContext& ctx) {
        auto* l = new QVBoxLayout(&form);
        for (int i = 0; i < 3; ++i) {
            auto* t = new QLineEdit(&form);
            t->setObjectName(QStringLiteral("Txt%1").arg(i));
            l->addWidget(t);
            ClCntrl::Vincular(ctx, t);
            txt << t;
        }
        form.show();
        form.activateWindow();
        QApplication::setActiveWindow(&form);
        txt[0]->setFocus();
    }
    QWidget form;
    QList<QLineEdit*> txt;
};

QColor Fondo(const QWidget* w) {
    return w->palette().color(QPalette::Base);
}

QString Factura8(TestStores& ts, const QString& interno) {
    return ts.conexion("INTERNOS")
        .Escalar("select factura8 from caratula where interno = '" + interno + "'")
        .toString();
}

} // namespace

class TestClCntrl : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void coloresVB();
    void enterYFlechasMuevenElFoco();
    void coloresPorTag_data();
    void coloresPorTag();
    void teclaDecimalDelTeclado_data();
    void teclaDecimalDelTeclado();
    void marcaDeCambio_data() { korven::test::FilasDeMotores(); }
    void marcaDeCambio();
    void busquedaEnListas_data();
    void busquedaEnListas();
    void ayudantesDelFormulario();
};

void TestClCntrl::coloresVB() {
    // The system keeps colours as BGR longs: 14083326 is &HD6E4FE.
    QCOMPARE(ClCntrl::ColorVB(ClCntrl::ColorF6), QColor(254, 228, 214));
    QCOMPARE(ClCntrl::ColorVB(0x0000FF), QColor(255, 0, 0));
    QCOMPARE(ClCntrl::ColorVB(ClCntrl::ColorFoco), QColor(192, 255, 192));
    QCOMPARE(ClCntrl::ColorVB(ClCntrl::ColorBlanco), QColor(255, 255, 255));
}

void TestClCntrl::enterYFlechasMuevenElFoco() {
    TestStores ts(Motor::SQLite);
    Formulario f(ts.ctx());
    QCOMPARE(QApplication::focusWidget(), f.txt[0]);
    QTest::keyClicks(f.txt[0], "12");
    QTest::keyClick(f.txt[0], Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.txt[1]);
    // Enter is eaten: the text did not change.
    QCOMPARE(f.txt[0]->text(), QStringLiteral("12"));
    QTest::keyClick(f.txt[1], Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(QApplication::focusWidget(), f.txt[2]);
    QTest::keyClick(f.txt[2], Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), f.txt[1]);
    QTest::keyClick(f.txt[1], Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), f.txt[0]);
    QTest::keyClick(f.txt[0], Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), f.txt[1]);
    // The text is selected whole when the field takes the focus.
    f.txt[2]->setText(QStringLiteral("abc"));
    QTest::keyClick(f.txt[1], Qt::Key_Down);
    QCOMPARE(f.txt[2]->selectedText(), QStringLiteral("abc"));
}

void TestClCntrl::coloresPorTag_data() {
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QColor>("conFoco");
    QTest::addColumn<QColor>("sinFoco");
    const QColor blanco(255, 255, 255), verde(192, 255, 192), f6(254, 228, 214);
    const QColor propio(10, 20, 30);
    QTest::newRow("sin tag") << "" << verde << blanco;
    QTest::newRow("F6") << "TxtCodigo#F6" << f6 << blanco;
    QTest::newRow("F6 en el medio") << "#F6x" << verde << blanco;
    QTest::newRow("BB") << "BBfijo" << propio << propio;
    // The F6 mark is looked at first; "BB" then keeps the colour when the focus leaves.
    QTest::newRow("BB y F6") << "BB#F6" << f6 << f6;
}

void TestClCntrl::coloresPorTag() {
    QFETCH(QString, tag);
    QFETCH(QColor, conFoco);
    QFETCH(QColor, sinFoco);
    TestStores ts(Motor::SQLite);
    Formulario f(ts.ctx());
    QLineEdit* t = f.txt[1];
    t->setProperty("Tag", tag);
    QPalette p = t->palette();
    p.setColor(QPalette::Base, QColor(10, 20, 30));
    t->setPalette(p);
    QTest::keyClick(f.txt[0], Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), t);
    QCOMPARE(Fondo(t), conFoco);
    QTest::keyClick(t, Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.txt[2]);
    QCOMPARE(Fondo(t), sinFoco);
}

void TestClCntrl::teclaDecimalDelTeclado_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<int>("tecla");
    QTest::addColumn<bool>("teclado");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("punto del teclado numérico, coma")
        << "," << int(Qt::Key_Period) << true << "12,5";
    QTest::newRow("punto del teclado numérico, punto")
        << "." << int(Qt::Key_Period) << true << "12.5";
    QTest::newRow("coma del teclado numérico, punto")
        << "." << int(Qt::Key_Comma) << true << "12.5";
    QTest::newRow("punto común, coma") << "," << int(Qt::Key_Period) << false << "12.5";
    QTest::newRow("coma común, punto") << "." << int(Qt::Key_Comma) << false << "12,5";
}

void TestClCntrl::teclaDecimalDelTeclado() {
    QFETCH(QString, separador);
    QFETCH(int, tecla);
    QFETCH(bool, teclado);
    QFETCH(QString, esperado);
    SeparadorDecimalScope sep(separador);
    TestStores ts(Motor::SQLite);
    Formulario f(ts.ctx());
    QLineEdit* t = f.txt[0];
    QTest::keyClick(t, Qt::Key_1, teclado ? Qt::KeypadModifier : Qt::NoModifier);
    QTest::keyClick(t, Qt::Key_2, teclado ? Qt::KeypadModifier : Qt::NoModifier);
    QTest::keyClick(t, static_cast<Qt::Key>(tecla), teclado ? Qt::KeypadModifier : Qt::NoModifier);
    QTest::keyClick(t, Qt::Key_5);
    QCOMPARE(t->text(), esperado);
}

void TestClCntrl::marcaDeCambio() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    Conexion& cn = ts.conexion("INTERNOS");
    cn.Ejecutar("insert into caratula (interno, factura8) values ('A-1', 'N')");
    cn.Ejecutar("insert into caratula (interno, factura8) values ('B-2', 'N')");
    SettingsStore& s = ts.settings();
    s.SaveSetting("KORVEN", "AEC", "A-1", "R");
    s.SaveSetting("KORVEN", "AEC", "B-2", "P");
    AppContext& ctx = ts.ctx();
    Formulario f(ctx);

    // While the form loads, the flag is off: nothing is marked.
    ctx.InternoActual = QStringLiteral("A-1");
    f.txt[0]->setText(QStringLiteral("cargado"));
    QTest::keyClicks(f.txt[0], "x");
    QCOMPARE(Factura8(ts, "A-1"), QStringLiteral("N"));
    QCOMPARE(s.GetSetting("KORVEN", "AEC", "A-1"), QStringLiteral("R"));

    // With the flag on but no Operation open, nothing either.
    ctx.FormularioDeDatos = true;
    ctx.InternoActual.clear();
    QTest::keyClicks(f.txt[0], "y");
    QCOMPARE(Factura8(ts, "A-1"), QStringLiteral("N"));

    // A data form of an open Operation: a keystroke marks it changed and clears its advantage.
    ctx.InternoActual = QStringLiteral("A-1");
    QTest::keyClicks(f.txt[1], "7");
    QCOMPARE(Factura8(ts, "A-1"), QStringLiteral("S"));
    QCOMPARE(s.GetSetting("KORVEN", "AEC", "A-1", "sin valor"), QString());
    QCOMPARE(Factura8(ts, "B-2"), QStringLiteral("N"));
    QCOMPARE(s.GetSetting("KORVEN", "AEC", "B-2"), QStringLiteral("P"));
    QVERIFY(ts.dialogos().mensajes().isEmpty());

    // The flag off again: changes are not marks.
    ctx.FormularioDeDatos = false;
    cn.Ejecutar("update caratula set factura8 = 'N'");
    s.SaveSetting("KORVEN", "AEC", "A-1", "N");
    f.txt[2]->setText(QStringLiteral("otro"));
    QCOMPARE(Factura8(ts, "A-1"), QStringLiteral("N"));
    QCOMPARE(s.GetSetting("KORVEN", "AEC", "A-1"), QStringLiteral("N"));
}

void TestClCntrl::busquedaEnListas_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("fila");
    QTest::newRow("prefijo") << "01" << 0;
    QTest::newRow("entero") << "0102" << 1;
    QTest::newRow("sin mayúsculas") << "abd" << 3;
    QTest::newRow("mayúsculas") << "AB" << 2;
    QTest::newRow("ninguna") << "zz" << -1;
    QTest::newRow("vacío") << "" << 0;
}

void TestClCntrl::busquedaEnListas() {
    QFETCH(QString, texto);
    QFETCH(int, fila);
    TestStores ts(Motor::SQLite);
    const QStringList filas = {"0101", "0102", "Abc", "abd"};
    QListWidget lst;
    lst.addItems(filas);
    lst.setCurrentRow(2);
    QComboBox cbo;
    cbo.addItems(filas);
    ClCntrl cl(ts.ctx());
    cl.sLinkListBox(&lst);
    cl.sLinkCBoBox(&cbo);
    QCOMPARE(cl.LstBuscarStr(texto), fila);
    QCOMPARE(lst.currentRow(), fila);
    QCOMPARE(cl.BuscarCBO(texto), fila);
    QCOMPARE(cbo.currentIndex(), fila);
}

void TestClCntrl::ayudantesDelFormulario() {
    TestStores ts(Motor::SQLite);
    QWidget form;
    auto* l = new QVBoxLayout(&form);
    auto* a = new QLineEdit(QStringLiteral("a"), &form);
    auto* b = new QPushButton(QStringLiteral("b"), &form);
    auto* c = new QLineEdit(QStringLiteral("c"), &form);
    auto* d = new QLineEdit(QStringLiteral("d"), &form);
    for (QWidget* w : {static_cast<QWidget*>(a), static_cast<QWidget*>(b), static_cast<QWidget*>(c),
                       static_cast<QWidget*>(d)})
        l->addWidget(w);
    form.show();
    QCOMPARE(PosicionTab(&form, a), 0);
    QCOMPARE(PosicionTab(&form, c), 2);
    QCOMPARE(UltimoTab(&form), 3);
    d->hide();
    QCOMPARE(UltimoTab(&form), 2);
    QWidget::setTabOrder(c, a);
    QCOMPARE(UltimoTab(&form), PosicionTab(&form, a));

    HabilitarTextos(&form, false);
    QVERIFY(!a->isEnabled() && !c->isEnabled() && !d->isEnabled());
    QVERIFY(b->isEnabled());
    HabilitarTextos(&form, true);
    QVERIFY(a->isEnabled() && d->isEnabled());
    ClCntrl::VaciarTxt(&form);
    QVERIFY(a->text().isEmpty() && c->text().isEmpty() && d->text().isEmpty());
    QCOMPARE(b->text(), QStringLiteral("b"));
}

QTEST_MAIN(TestClCntrl)
#include "test_clcntrl.moc"
