// Every screen on a 1024 x 768 desktop, the keys all screens share, and Qt's own texts in
// Spanish, all through the program's real start routine.

#include "components/FrmCliente.h"
#include "components/FrmClientes.h"
#include "foundation/FrmConfig.h"
#include "foundation/FrmDetalleInterno.h"
#include "foundation/FrmPrincipal.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "header/FrmCaratula.h"
#include "header/PantallasCaratula.h"
#include "liquidation/PantallasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Pantallas.h"
#include "schema/Esquema.h"
#include "support/Pantallazo.h"
#include "support/TestStores.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <memory>

using namespace korven;
using namespace korven::test;

namespace {

const QString kExpo = QStringLiteral("DEMO-EC01-001");
const QString kImpo = QStringLiteral("DEMO-IC04-001");

// Closes every modal window that is not the screen under test, keeping their names.
class Cerrador {
public:
    explicit Cerrador(QWidget* propia) : propia_(propia) {
        reloj_.setInterval(5);
        QObject::connect(&reloj_, &QTimer::timeout, [this] {
            auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!d || d == propia_ || !d->isVisible())
                return;
            nombres << d->objectName();
            d->reject();
        });
        reloj_.start();
    }
    QStringList nombres;

private:
    QWidget* propia_;
    QTimer reloj_;
};

} // namespace

class TestPantallasEscritorio : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void entranEn1024_data();
    void entranEn1024();
    void enterYF6_data();
    void enterYF6();
    void botonesEnCastellano();

private:
    // Checks the screen against the room of the desktop and saves its picture.
    void Medir(const QString& nombre, QWidget* w);

    std::unique_ptr<TestStores> ts_;
    std::unique_ptr<Sesion> sesion_;
};

void TestPantallasEscritorio::initTestCase() {
    ts_ = std::make_unique<TestStores>(Motor::SQLite);
    schema::CrearOActualizar(ts_->stores());
    const QString datos = schema::CarpetaDatos(ts_->directorio());
    schema::CargarDatosReferencia(ts_->stores(), datos);
    schema::CargarOperacionesDemo(ts_->stores(), datos);
    ParametrosArranque p;
    p.directorioPrograma = ts_->directorio();
    p.carpetaSettings = ts_->settings().carpeta();
    p.dialogos = &ts_->dialogos();
    p.registros.push_back([](AppContext& ctx) {
        RegistrarPantallasCaratula(ctx.pantallas());
        RegistrarPantallasLiquidacion(ctx.pantallas());
    });
    sesion_ = Main(p);
    QVERIFY(sesion_);
    ts_->dialogos().ResponderSiempre(false);
}

void TestPantallasEscritorio::cleanupTestCase() {
    sesion_.reset();
    ts_.reset();
}

void TestPantallasEscritorio::Medir(const QString& nombre, QWidget* w) {
    const QSize area = sesion_->principal()->AreaDePantallas(kEscritorio);
    GuardarPantallazo(nombre, w, sesion_->principal());
    const QSize minimo = w->minimumSizeHint().expandedTo(w->minimumSize());
    QVERIFY2(w->width() <= area.width() && w->height() <= area.height() &&
                 minimo.width() <= area.width() && minimo.height() <= area.height(),
             qPrintable(QStringLiteral("%1 abre en %2x%3 (minimo %4x%5)")
                            .arg(nombre)
                            .arg(w->width())
                            .arg(w->height())
                            .arg(minimo.width())
                            .arg(minimo.height())));
}

void TestPantallasEscritorio::entranEn1024_data() {
    QTest::addColumn<QString>("nombre");
    for (const QString& n : sesion_->ctx().pantallas().Nombres())
        QTest::newRow(qPrintable(n)) << n;
    // The frame with the menu, and the client book's screens, which are not opened by name.
    QTest::newRow("MENUP") << QStringLiteral("MENUP");
    QTest::newRow("FRMCLIENTES") << QStringLiteral("FRMCLIENTES");
    QTest::newRow("FRMCLIENTE") << QStringLiteral("FRMCLIENTE");
}

void TestPantallasEscritorio::entranEn1024() {
    QFETCH(QString, nombre);
    AppContext& ctx = sesion_->ctx();
    if (nombre == QStringLiteral("MENUP")) {
        Medir(nombre, sesion_->principal());
        return;
    }
    if (nombre == QStringLiteral("FRMCLIENTES") || nombre == QStringLiteral("FRMCLIENTE")) {
        std::unique_ptr<QDialog> d;
        if (nombre == QStringLiteral("FRMCLIENTES"))
            d = std::make_unique<FrmClientes>(ctx, true);
        else
            d = std::make_unique<FrmCliente>(ctx, std::nullopt);
        d->show();
        Medir(nombre, d.get());
        return;
    }
    // Opened by name as the program opens it, with the arguments any of them takes.
    ctx.InternoActual = kExpo;
    const QVariantMap args = {
        {QStringLiteral("interno"), kExpo},
        {QStringLiteral("titulo"), QStringLiteral("Lista")},
        {QStringLiteral("codigos"), QStringList{"001", "073"}},
        {QStringLiteral("descripciones"), QStringList{"BUENOS AIRES", "EZEIZA"}},
        {QStringLiteral("filas"), QVariantList{QStringList{"001", "BUENOS AIRES"}}},
        {QStringLiteral("modo"), 1},
    };
    bool abierta = false;
    QTimer reloj;
    reloj.setInterval(5);
    connect(&reloj, &QTimer::timeout, this, [&] {
        QWidget* w = QApplication::activeModalWidget();
        if (!w || !w->isVisible())
            return;
        reloj.stop();
        abierta = true;
        Medir(nombre, w);
        if (auto* d = qobject_cast<QDialog*>(w))
            d->reject();
        else
            w->close();
    });
    reloj.start();
    ctx.AbrirModal(nombre, args);
    QVERIFY2(abierta, qPrintable(nombre + QStringLiteral(" no se abrió")));
}

void TestPantallasEscritorio::enterYF6_data() {
    QTest::addColumn<QString>("pantalla");
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("tecla");
    // The screen Enter opens; empty where F6 opens the combo box's list.
    QTest::addColumn<QString>("abre");
    // Options of VAT and income tax apply to imports.
    QTest::addColumn<QString>("interno");
    QTest::newRow("caratula, boton ONCCA")
        << "FrmCaratula"
        << "cmdONCCA" << int(Qt::Key_Return) << "frmONCCA" << kExpo;
    QTest::newRow("configuracion, base de datos")
        << "FrmConfig"
        << "CmdBase" << int(Qt::Key_Enter) << "FrmBase" << kExpo;
    QTest::newRow("centro, caratula")
        << "FrmDetalleInterno"
        << "cmdCaratula" << int(Qt::Key_Return) << "FrmCaratula" << kExpo;
    QTest::newRow("caratula, opciones de IVA") << "FrmCaratula"
                                               << "cboOpcionIVA" << int(Qt::Key_F6) << "" << kImpo;
    QTest::newRow("caratula, opciones de ganancias")
        << "FrmCaratula"
        << "cboOpcionesGanancias" << int(Qt::Key_F6) << "" << kImpo;
}

void TestPantallasEscritorio::enterYF6() {
    QFETCH(QString, pantalla);
    QFETCH(QString, control);
    QFETCH(int, tecla);
    QFETCH(QString, abre);
    QFETCH(QString, interno);
    AppContext& ctx = sesion_->ctx();
    ctx.InternoActual = interno;
    const QVariantMap args = {{QStringLiteral("interno"), interno}};
    std::unique_ptr<QDialog> f;
    if (pantalla == QStringLiteral("FrmCaratula"))
        f = std::make_unique<FrmCaratula>(ctx, args);
    else if (pantalla == QStringLiteral("FrmConfig"))
        f = std::make_unique<FrmConfig>(ctx, args);
    else
        f = std::make_unique<FrmDetalleInterno>(ctx, args);
    f->show();
    QVERIFY(QTest::qWaitForWindowActive(f.get()));
    auto* w = f->findChild<QWidget*>(control);
    QVERIFY(w && w->isEnabled());
    w->setFocus();
    QCOMPARE(QApplication::focusWidget(), w);

    Cerrador cerrador(f.get());
    QTest::keyClick(w, static_cast<Qt::Key>(tecla));
    if (abre.isEmpty()) {
        auto* combo = qobject_cast<QComboBox*>(w);
        QVERIFY(combo->view()->isVisible());
        combo->hidePopup();
    } else {
        QTRY_COMPARE(cerrador.nombres, QStringList{abre});
    }
}

void TestPantallasEscritorio::botonesEnCastellano() {
    // Whatever Qt's Spanish translations say, installed by the start routine.
    QDialogButtonBox caja(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Yes |
                          QDialogButtonBox::No);
    auto texto = [&caja](QDialogButtonBox::StandardButton b) {
        return caja.button(b)->text().remove(QLatin1Char('&'));
    };
    QCOMPARE(texto(QDialogButtonBox::Ok), QStringLiteral("Aceptar"));
    QCOMPARE(texto(QDialogButtonBox::Cancel), QStringLiteral("Cancelar"));
    QCOMPARE(texto(QDialogButtonBox::Yes), QStringLiteral("Sí"));
    QCOMPARE(texto(QDialogButtonBox::No), QStringLiteral("No"));
    QMessageBox caja2(QMessageBox::Question, QStringLiteral("KORVEN"), QStringLiteral("?"),
                      QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(caja2.button(QMessageBox::Yes)->text().remove(QLatin1Char('&')), QStringLiteral("Sí"));
}

// The screens are measured on a desktop of 1024 x 768.
int main(int argc, char** argv) {
    QTemporaryDir dir;
    QFile config(dir.filePath(QStringLiteral("pantalla.json")));
    if (config.open(QIODevice::WriteOnly))
        config.write(R"({"screens":[{"name":"Pantalla","x":0,"y":0,"width":1024,"height":768,)"
                     R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    config.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toLocal8Bit());
    QApplication app(argc, argv);
    TestPantallasEscritorio t;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&t, argc, argv);
}

#include "test_pantallas_escritorio.moc"
