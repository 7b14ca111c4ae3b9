// The desktop layer: the questions, the screens opened by name, the members of
// components, and the behaviour every data form shares (ClCntrl): focus moves, colours, the
// keypad's decimal key, the change mark of an open Operation and the list searches.

#include "foundation/LlamadaComponente.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ui/ClCntrl.h"
#include "platform/ui/DesktopDialogs.h"
#include "platform/ui/PantallasEscritorio.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QComboBox>
#include <QInputDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

using namespace korven;
using korven::test::AlAbrirse;
using korven::test::TestStores;

namespace {

// A screen that answers what was typed in it on Enter.
class Pregunta : public QDialog {
public:
    Pregunta(AppContext&, const QVariantMap& args, QWidget* padre) : QDialog(padre) {
        txt = new QLineEdit(args.value("inicial").toString(), this);
        connect(txt, &QLineEdit::returnPressed, this, &QDialog::accept);
    }
    void accept() override {
        setProperty("Respuesta", txt->text());
        QDialog::accept();
    }
    QLineEdit* txt;
};

class Miembros : public QObject {
    Q_OBJECT
    Q_PROPERTY(int Vinculado MEMBER vinculado)
public:
    Q_INVOKABLE QString Unir(const QString& a, int n, bool b) {
        return a + QString::number(n) + (b ? "S" : "N");
    }
    int vinculado = 0;
};

// A data form with three linked text boxes.
struct Formulario {
    explicit Formulario(AppContext& ctx) {
        auto* l = new QVBoxLayout(&form);
        for (int i = 0; i < 3; ++i) {
            auto* t = new QLineEdit(&form);
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

} // namespace

class TestEscritorio : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void preguntaYTexto();
    void formularioRegistrado();
    void miembrosDeComponentes();
    void enterYFlechasMuevenElFoco();
    void coloresPorTag_data();
    void coloresPorTag();
    void teclaDecimalDelTeclado_data();
    void teclaDecimalDelTeclado();
    void marcaDeCambio_data() { korven::test::FilasDeMotores(); }
    void marcaDeCambio();
    void busquedaEnListas_data();
    void busquedaEnListas();
};

void TestEscritorio::preguntaYTexto() {
    DesktopDialogs d;
    AlAbrirse([](QWidget* w) { qobject_cast<QMessageBox*>(w)->button(QMessageBox::No)->click(); });
    QVERIFY(!d.Pregunta("¿Borrar?", "KORVEN", Dialogos::Icono::Pregunta));
    // Enter takes the default answer: yes.
    AlAbrirse([](QWidget* w) { QTest::keyClick(w, Qt::Key_Return); });
    QVERIFY(d.Pregunta("¿Borrar?", "KORVEN", Dialogos::Icono::Pregunta));
    // The text asked for is cut at its maximum length.
    QString etiqueta;
    AlAbrirse([&etiqueta](QWidget* w) {
        etiqueta = qobject_cast<QInputDialog*>(w)->labelText();
        QLineEdit* txt = w->findChild<QLineEdit*>();
        QCOMPARE(txt->text(), QStringLiteral("A1"));
        txt->selectAll();
        QTest::keyClicks(txt, "1234567");
        QTest::keyClick(txt, Qt::Key_Return);
    });
    QCOMPARE(d.PedirTexto("Numero de interno:", "KORVEN", 5, "A1").value_or("-"),
             QStringLiteral("12345"));
    QCOMPARE(etiqueta, QStringLiteral("Numero de interno:"));
    AlAbrirse([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
    QVERIFY(!d.PedirTexto("Numero de interno:", "KORVEN", 0, {}).has_value());
}

void TestEscritorio::formularioRegistrado() {
    TestStores ts(Motor::SQLite);
    RegistrarFormulario<Pregunta>(ts.ctx().pantallas(), "Pregunta");
    QVERIFY(ts.ctx().pantallas().Registrada("PREGUNTA"));
    AlAbrirse([](QWidget* w) {
        auto* txt = w->findChild<QLineEdit*>();
        QCOMPARE(txt->text(), QStringLiteral("uno"));
        QTest::keyClicks(txt, "dos");
        QTest::keyClick(txt, Qt::Key_Return);
    });
    QCOMPARE(ts.ctx().AbrirModal("Pregunta", {{"inicial", "uno"}}).toString(),
             QStringLiteral("unodos"));
    // A screen closed with Esc answers nothing.
    AlAbrirse([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
    QVERIFY(!ts.ctx().AbrirModal("Pregunta").isValid());
}

void TestEscritorio::miembrosDeComponentes() {
    Miembros m;
    m.setObjectName("Prueba.Main");
    AsignarMiembro(m, "Vinculado", 3);
    QCOMPARE(m.vinculado, 3);
    QCOMPARE(LlamarMiembro(m, "Unir", {QStringLiteral("x"), 7, true}).toString(),
             QStringLiteral("x7S"));
    auto error = [](std::function<void()> f) {
        try {
            f();
        } catch (const KorvenError& e) {
            return QStringLiteral("%1 / %2 (%3)").arg(e.numero()).arg(e.descripcion(), e.origen());
        }
        return QString();
    };
    const QString falta = "438 / El objeto no admite esta propiedad o método: %1 (Prueba.Main)";
    QCOMPARE(error([&] { AsignarMiembro(m, "Falta", 1); }), falta.arg("Falta"));
    QCOMPARE(error([&] { LlamarMiembro(m, "Unir", {QStringLiteral("x")}); }), falta.arg("Unir"));
    QCOMPARE(error([&] { AsignarMiembro(m, "Vinculado", QStringLiteral("abc")); }),
             QStringLiteral("13 / No coinciden los tipos (Prueba.Main)"));
}

void TestEscritorio::enterYFlechasMuevenElFoco() {
    TestStores ts(Motor::SQLite);
    Formulario f(ts.ctx());
    QTest::keyClicks(f.txt[0], "12");
    QTest::keyClick(f.txt[0], Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.txt[1]);
    // Enter is eaten: the text did not change.
    QCOMPARE(f.txt[0]->text(), QStringLiteral("12"));
    QTest::keyClick(f.txt[1], Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(QApplication::focusWidget(), f.txt[2]);
    QTest::keyClick(f.txt[2], Qt::Key_Up);
    QTest::keyClick(f.txt[1], Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), f.txt[0]);
    QTest::keyClick(f.txt[0], Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), f.txt[1]);
    // The text is selected whole when the field takes the focus.
    f.txt[2]->setText(QStringLiteral("abc"));
    QTest::keyClick(f.txt[1], Qt::Key_Down);
    QCOMPARE(f.txt[2]->selectedText(), QStringLiteral("abc"));
}

void TestEscritorio::coloresPorTag_data() {
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QColor>("conFoco");
    QTest::addColumn<QColor>("sinFoco");
    // The system keeps colours as BGR longs: the F6 colour 14083326 is &HD6E4FE.
    const QColor blanco(255, 255, 255), verde(192, 255, 192), f6(254, 228, 214);
    const QColor propio(10, 20, 30);
    QTest::newRow("sin tag") << "" << verde << blanco;
    QTest::newRow("F6") << "TxtCodigo#F6" << f6 << blanco;
    QTest::newRow("F6 en el medio") << "#F6x" << verde << blanco;
    QTest::newRow("BB") << "BBfijo" << propio << propio;
    // The F6 mark is looked at first; "BB" then keeps the colour when the focus leaves.
    QTest::newRow("BB y F6") << "BB#F6" << f6 << f6;
}

void TestEscritorio::coloresPorTag() {
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
    QCOMPARE(Fondo(t), conFoco);
    QTest::keyClick(t, Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.txt[2]);
    QCOMPARE(Fondo(t), sinFoco);
}

void TestEscritorio::teclaDecimalDelTeclado_data() {
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

void TestEscritorio::teclaDecimalDelTeclado() {
    QFETCH(QString, separador);
    QFETCH(int, tecla);
    QFETCH(bool, teclado);
    QFETCH(QString, esperado);
    SeparadorDecimalScope sep(separador);
    TestStores ts(Motor::SQLite);
    Formulario f(ts.ctx());
    const Qt::KeyboardModifiers m = teclado ? Qt::KeypadModifier : Qt::NoModifier;
    for (int k : {int(Qt::Key_1), int(Qt::Key_2), tecla})
        QTest::keyClick(f.txt[0], static_cast<Qt::Key>(k), m);
    QTest::keyClick(f.txt[0], Qt::Key_5);
    QCOMPARE(f.txt[0]->text(), esperado);
}

void TestEscritorio::marcaDeCambio() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    Conexion& cn = ts.conexion("INTERNOS");
    cn.Ejecutar("insert into caratula (interno, factura8) values ('A-1', 'N')");
    cn.Ejecutar("insert into caratula (interno, factura8) values ('B-2', 'N')");
    SettingsStore& s = ts.settings();
    s.SaveSetting("KORVEN", "AEC", "A-1", "R");
    s.SaveSetting("KORVEN", "AEC", "B-2", "P");
    // The change mark of both Operations and their advantage values.
    auto estado = [&] {
        return cn.Escalar("select factura8 from caratula where interno = 'A-1'").toString() +
               cn.Escalar("select factura8 from caratula where interno = 'B-2'").toString() +
               s.GetSetting("KORVEN", "AEC", "A-1", "-") + s.GetSetting("KORVEN", "AEC", "B-2");
    };
    AppContext& ctx = ts.ctx();
    Formulario f(ctx);
    // While the form loads, the flag is off: nothing is marked.
    ctx.InternoActual = QStringLiteral("A-1");
    f.txt[0]->setText(QStringLiteral("cargado"));
    QTest::keyClicks(f.txt[0], "x");
    QCOMPARE(estado(), QStringLiteral("NNRP"));
    // With the flag on but no Operation open, nothing either.
    ctx.FormularioDeDatos = true;
    ctx.InternoActual.clear();
    QTest::keyClicks(f.txt[0], "y");
    QCOMPARE(estado(), QStringLiteral("NNRP"));
    // A data form of an open Operation: a keystroke marks it changed and clears its advantage.
    ctx.InternoActual = QStringLiteral("A-1");
    QTest::keyClicks(f.txt[1], "7");
    QCOMPARE(estado(), QStringLiteral("SNP"));
    QVERIFY(ts.dialogos().mensajes().isEmpty());
    // The flag off again: changes are not marks.
    ctx.FormularioDeDatos = false;
    cn.Ejecutar("update caratula set factura8 = 'N'");
    s.SaveSetting("KORVEN", "AEC", "A-1", "N");
    f.txt[2]->setText(QStringLiteral("otro"));
    QCOMPARE(estado(), QStringLiteral("NNNP"));
}

void TestEscritorio::busquedaEnListas_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("fila");
    QTest::newRow("prefijo") << "01" << 0;
    QTest::newRow("entero") << "0102" << 1;
    QTest::newRow("sin mayúsculas") << "abd" << 3;
    QTest::newRow("mayúsculas") << "AB" << 2;
    QTest::newRow("ninguna") << "zz" << -1;
    QTest::newRow("vacío") << "" << 0;
}

void TestEscritorio::busquedaEnListas() {
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

QTEST_MAIN(TestEscritorio)
#include "test_escritorio.moc"
