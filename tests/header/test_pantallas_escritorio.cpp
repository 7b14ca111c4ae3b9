// Every screen on a 1024 x 768 desktop, through the program's real start routine.

#include "foundation/FrmPrincipal.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "header/PantallasCaratula.h"
#include "liquidation/PantallasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Pantallas.h"
#include "quote/PantallasPresupuesto.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/TestStores.h"

#include <QDialog>
#include <QtTest>
#include <memory>

using namespace korven;
using namespace korven::test;

const QString kExpo = QStringLiteral("DEMO-EC01-001");

class TestPantallasEscritorio : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
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
            RegistrarPantallasPresupuesto(ctx.pantallas());
        });
        sesion_ = Main(p);
        QVERIFY(sesion_);
        ts_->dialogos().ResponderSiempre(false);
    }
    void cleanupTestCase() {
        sesion_.reset();
        ts_.reset();
    }
    void entranEn1024_data() {
        QTest::addColumn<QString>("nombre");
        for (const QString& n : sesion_->ctx().pantallas().Nombres())
            QTest::newRow(qPrintable(n)) << n;
        // The frame with the menu, which is not opened by name.
        QTest::newRow("MENUP") << QStringLiteral("MENUP");
    }
    void entranEn1024() {
        QFETCH(QString, nombre);
        AppContext& ctx = sesion_->ctx();
        if (nombre == QStringLiteral("MENUP")) {
            Medir(nombre, sesion_->principal());
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
        AlAbrirse([&](QWidget* w) {
            abierta = true;
            Medir(nombre, w);
            w->close();
        });
        ctx.AbrirModal(nombre, args);
        QVERIFY2(abierta, qPrintable(nombre + QStringLiteral(" no se abrió")));
    }

private:
    // Checks the screen against the room of the desktop and saves its picture.
    void Medir(const QString& nombre, QWidget* w);

    std::unique_ptr<TestStores> ts_;
    std::unique_ptr<Sesion> sesion_;
};

void TestPantallasEscritorio::Medir(const QString& nombre, QWidget* w) {
    const QSize area = sesion_->principal()->AreaDePantallas(kEscritorio);
    GuardarPantallazo(nombre, w, sesion_->principal());
    const QSize minimo = w->minimumSizeHint().expandedTo(w->minimumSize());
    QVERIFY2(w->width() <= area.width() && w->height() <= area.height() &&
                 minimo.width() <= area.width() && minimo.height() <= area.height(),
             qPrintable(nombre));
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
