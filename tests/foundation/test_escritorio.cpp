#include "foundation/FrmMostrarDatos.h"
#include "foundation/LlamadaComponente.h"
#include "platform/AppContext.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/ui/DesktopDialogs.h"
#include "platform/ui/PantallasEscritorio.h"
#include "support/TestStores.h"

#include <QClipboard>
#include <QDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <functional>

using namespace korven;
using korven::test::TestStores;

namespace {

// Acts on the modal window once it is up, as the clerk would.
void CuandoAparezca(std::function<void(QWidget*)> accion) {
    QTimer::singleShot(0, [accion] {
        QWidget* w = QApplication::activeModalWidget();
        if (!w) {
            CuandoAparezca(accion);
            return;
        }
        accion(w);
    });
}

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
    Q_PROPERTY(QString Ruta MEMBER ruta)
public:
    Q_INVOKABLE QString Unir(const QString& a, int n, bool b) {
        return a + QString::number(n) + (b ? "S" : "N");
    }
    Q_INVOKABLE void Formulario(QWidget* w) { nombre = w->objectName(); }
    int vinculado = 0;
    QString ruta;
    QString nombre;
};

} // namespace

class TestEscritorio : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mensajes_data();
    void mensajes();
    void pregunta();
    void pedirTextoConLargoMaximo();
    void pedirTextoCancelado();
    void formularioRegistrado();
    void mostrarDatos();
    void miembrosDeComponentes();
};

void TestEscritorio::mensajes_data() {
    QTest::addColumn<int>("icono");
    QTest::addColumn<int>("esperado");
    QTest::newRow("crítico") << int(Dialogos::Icono::Critico) << int(QMessageBox::Critical);
    QTest::newRow("exclamación") << int(Dialogos::Icono::Exclamacion) << int(QMessageBox::Warning);
    QTest::newRow("información") << int(Dialogos::Icono::Informacion)
                                 << int(QMessageBox::Information);
    QTest::newRow("pregunta") << int(Dialogos::Icono::Pregunta) << int(QMessageBox::Question);
    QTest::newRow("ninguno") << int(Dialogos::Icono::Ninguno) << int(QMessageBox::NoIcon);
}

void TestEscritorio::mensajes() {
    QFETCH(int, icono);
    QFETCH(int, esperado);
    DesktopDialogs d;
    QString texto, titulo;
    int visto = -1;
    CuandoAparezca([&](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        QVERIFY(box);
        texto = box->text();
        titulo = box->windowTitle();
        visto = box->icon();
        box->button(QMessageBox::Ok)->click();
    });
    d.Mensaje("Valor Guardado Correctamente.", "KORVEN", static_cast<Dialogos::Icono>(icono));
    QCOMPARE(texto, QStringLiteral("Valor Guardado Correctamente."));
    QCOMPARE(titulo, QStringLiteral("KORVEN"));
    QCOMPARE(visto, esperado);
}

void TestEscritorio::pregunta() {
    DesktopDialogs d;
    CuandoAparezca(
        [](QWidget* w) { qobject_cast<QMessageBox*>(w)->button(QMessageBox::No)->click(); });
    QVERIFY(!d.Pregunta("¿Borrar?", "KORVEN", Dialogos::Icono::Pregunta));
    CuandoAparezca([](QWidget* w) {
        // Enter takes the default answer: yes.
        QTest::keyClick(w, Qt::Key_Return);
    });
    QVERIFY(d.Pregunta("¿Borrar?", "KORVEN", Dialogos::Icono::Pregunta));
}

void TestEscritorio::pedirTextoConLargoMaximo() {
    DesktopDialogs d;
    QString etiqueta;
    CuandoAparezca([&etiqueta](QWidget* w) {
        auto* dlg = qobject_cast<QInputDialog*>(w);
        QVERIFY(dlg);
        etiqueta = dlg->labelText();
        QLineEdit* txt = dlg->findChild<QLineEdit*>();
        QCOMPARE(txt->maxLength(), 5);
        QCOMPARE(txt->text(), QStringLiteral("A1"));
        txt->selectAll();
        QTest::keyClicks(txt, "1234567");
        QTest::keyClick(txt, Qt::Key_Return);
    });
    const std::optional<QString> r = d.PedirTexto("Numero de interno:", "KORVEN", 5, "A1");
    QCOMPARE(etiqueta, QStringLiteral("Numero de interno:"));
    QVERIFY(r.has_value());
    QCOMPARE(*r, QStringLiteral("12345"));
}

void TestEscritorio::pedirTextoCancelado() {
    DesktopDialogs d;
    CuandoAparezca([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
    QVERIFY(!d.PedirTexto("Numero de interno:", "KORVEN", 0, {}).has_value());
}

void TestEscritorio::formularioRegistrado() {
    TestStores ts(Motor::SQLite);
    RegistrarFormulario<Pregunta>(ts.ctx().pantallas(), "Pregunta");
    QVERIFY(ts.ctx().pantallas().Registrada("PREGUNTA"));
    CuandoAparezca([](QWidget* w) {
        auto* txt = w->findChild<QLineEdit*>();
        QCOMPARE(txt->text(), QStringLiteral("uno"));
        QTest::keyClicks(txt, "dos");
        QTest::keyClick(txt, Qt::Key_Return);
    });
    QCOMPARE(ts.ctx().AbrirModal("Pregunta", {{"inicial", "uno"}}).toString(),
             QStringLiteral("unodos"));
    // A screen closed with Esc answers nothing.
    CuandoAparezca([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
    QVERIFY(!ts.ctx().AbrirModal("Pregunta").isValid());
}

void TestEscritorio::mostrarDatos() {
    TestStores ts(Motor::SQLite);
    FrmMostrarDatos frm(ts.ctx(), {{"texto", "linea 1\nlinea 2"}});
    QCOMPARE(frm.windowTitle(), QStringLiteral("Resultados"));
    QCOMPARE(frm.texto()->toPlainText(), QStringLiteral("linea 1\nlinea 2"));
    frm.mnucopiar_Click();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("linea 1\nlinea 2"));
    frm.show();
    QApplication::setActiveWindow(&frm);
    frm.texto()->setFocus();
    QTest::keyClick(frm.texto(), Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!frm.isVisible());
    frm.show();
    QTest::keyClick(frm.texto(), Qt::Key_Escape);
    QVERIFY(!frm.isVisible());
}

void TestEscritorio::miembrosDeComponentes() {
    Miembros m;
    m.setObjectName("Prueba.Main");
    AsignarMiembro(m, "Vinculado", 3);
    AsignarMiembro(m, "Ruta", QStringLiteral("/db/"));
    QCOMPARE(m.vinculado, 3);
    QCOMPARE(m.ruta, QStringLiteral("/db/"));
    QCOMPARE(LlamarMiembro(m, "Unir", {QStringLiteral("x"), 7, true}).toString(),
             QStringLiteral("x7S"));
    QWidget w;
    w.setObjectName("MenuP");
    LlamarMiembro(m, "Formulario", {QVariant::fromValue<QObject*>(&w)});
    QCOMPARE(m.nombre, QStringLiteral("MenuP"));

    auto error = [](std::function<void()> f) {
        try {
            f();
        } catch (const KorvenError& e) {
            return QStringLiteral("%1 / %2 (%3)").arg(e.numero()).arg(e.descripcion(), e.origen());
        }
        return QString();
    };
    QCOMPARE(error([&] { AsignarMiembro(m, "Falta", 1); }),
             QStringLiteral("438 / El objeto no admite esta propiedad o método: Falta "
                            "(Prueba.Main)"));
    QCOMPARE(error([&] { LlamarMiembro(m, "Unir", {QStringLiteral("x")}); }),
             QStringLiteral("438 / El objeto no admite esta propiedad o método: Unir "
                            "(Prueba.Main)"));
    QCOMPARE(error([&] { AsignarMiembro(m, "Vinculado", QStringLiteral("abc")); }),
             QStringLiteral("13 / No coinciden los tipos (Prueba.Main)"));
}

QTEST_MAIN(TestEscritorio)
#include "test_escritorio.moc"
