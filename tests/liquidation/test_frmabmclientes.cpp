// The question of the automotive regime: the answer kept per operation, the form driven from the
// keyboard, and the form opened by the calculator through the screens service.

#include "AjustesLiquidacion.h"
#include "liquidation/ClassLiquidacion.h"
#include "liquidation/FrmABMClientes.h"
#include "liquidation/PantallasLiquidacion.h"
#include "liquidation/RespuestaAEC.h"
#include "platform/Formato.h"
#include "support/TestStores.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <functional>

using namespace korven;
using korven::test::AplicarAjustes;
using korven::test::kInterno;
using korven::test::TestStores;

namespace {

// A settings store that keeps every write in order.
struct SettingsGrabados {
    QStringList escrituras;
    void SaveSetting(const QString& app, const QString& seccion, const QString& clave,
                     const QString& valor) {
        escrituras << app + QLatin1Char('/') + seccion + QLatin1Char('/') + clave +
                          QLatin1Char('=') + valor;
    }
};

QString AEC(TestStores& t) {
    return t.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), kInterno,
                                   QStringLiteral("<nada>"));
}

template <class W> W* Control(QWidget* f, const char* nombre) {
    W* w = f->findChild<W*>(QString::fromLatin1(nombre));
    if (!w)
        qFatal("Falta el control %s", nombre);
    return w;
}

// Clicks an option on its indicator (the middle of a wide option is outside its click area).
void Clic(QRadioButton* op) {
    QTest::mouseClick(op, Qt::LeftButton, {}, QPoint(6, op->height() / 2));
}

// Runs the action on the modal screen as soon as it is up.
void AlAbrirse(std::function<void(QWidget*)> accion) {
    QTimer::singleShot(0, [accion] {
        QWidget* w = QApplication::activeModalWidget();
        if (!w) {
            AlAbrirse(accion);
            return;
        }
        if (!QTest::qWaitForWindowActive(w))
            qFatal("La pantalla no se activa");
        accion(w);
    });
}

} // namespace

class TestFrmABMClientes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void respuesta_data() {
        QTest::addColumn<bool>("calcular");
        QTest::addColumn<bool>("reposicion");
        QTest::addColumn<QString>("respuesta");
        QTest::newRow("reposicion") << true << true << "R";
        QTest::newRow("produccion") << true << false << "P";
        QTest::newRow("no") << false << true << "N";
        QTest::newRow("no produccion") << false << false << "N";
    }
    void respuesta() {
        QFETCH(bool, calcular);
        QFETCH(bool, reposicion);
        QFETCH(QString, respuesta);
        QCOMPARE(RespuestaAEC(calcular, reposicion), respuesta);
    }

    // The key is written empty first, then with the answer.
    void ordenDeEscritura() {
        SettingsGrabados s;
        GuardarRespuestaAEC(s, QStringLiteral("A-1"), QStringLiteral("R"));
        QCOMPARE(s.escrituras, (QStringList{"KORVEN/AEC/A-1=", "KORVEN/AEC/A-1=R"}));
    }

    void textos() {
        TestStores t(Motor::SQLite);
        FrmABMClientes f(t.ctx(), {{QStringLiteral("interno"), kInterno}});
        QCOMPARE(f.windowTitle(), QStringLiteral(" Régimen Automotriz"));
        QCOMPARE(
            Control<QLabel>(&f, "Label1")->text(),
            QStringLiteral(
                "Se han encontrado posiciones arancelarias pertenecientes al régimen automotriz"));
        QCOMPARE(Control<QLabel>(&f, "Label2")->text(),
                 QStringLiteral("Desea calcular Arancel Externo Común?"));
        QCOMPARE(Control<QGroupBox>(&f, "Frame1")->title(), QStringLiteral("Destino del repuesto"));
        QCOMPARE(Control<QRadioButton>(&f, "opPRO")->text(), QStringLiteral("Producción"));
        QCOMPARE(Control<QRadioButton>(&f, "opREP")->text(), QStringLiteral("Reposición"));
        QCOMPARE(Control<QPushButton>(&f, "cmdAceptar")->text(), QStringLiteral("&Si"));
        QCOMPARE(Control<QPushButton>(&f, "cmdCancelar")->text(), QStringLiteral("&No"));
        QVERIFY(Control<QRadioButton>(&f, "opPRO")->isChecked());
        QCOMPARE(AEC(t), QStringLiteral("<nada>"));
    }

    void teclado_data() {
        QTest::addColumn<QString>("teclas");
        QTest::addColumn<QString>("respuesta");
        QTest::addColumn<int>("resultado");
        QTest::newRow("reposicion y si") << "rep alt+s"
                                         << "R" << int(QDialog::Accepted);
        QTest::newRow("flecha a reposicion y si") << "pro right alt+s"
                                                  << "R" << int(QDialog::Accepted);
        QTest::newRow("produccion y si") << "alt+s"
                                         << "P" << int(QDialog::Accepted);
        QTest::newRow("enter") << "enter"
                               << "P" << int(QDialog::Accepted);
        QTest::newRow("reposicion y no") << "rep alt+n"
                                         << "N" << int(QDialog::Rejected);
        QTest::newRow("esc") << "rep esc"
                             << "N" << int(QDialog::Rejected);
    }
    void teclado() {
        QFETCH(QString, teclas);
        QFETCH(QString, respuesta);
        QFETCH(int, resultado);
        TestStores t(Motor::SQLite);
        t.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), kInterno,
                                 QStringLiteral("X"));
        FrmABMClientes f(t.ctx(), {{QStringLiteral("interno"), kInterno}});
        f.show();
        QVERIFY(QTest::qWaitForWindowActive(&f));
        auto* rep = Control<QRadioButton>(&f, "opREP");
        auto* pro = Control<QRadioButton>(&f, "opPRO");
        for (const QString& k : teclas.split(QLatin1Char(' '))) {
            if (k == "rep")
                Clic(rep);
            else if (k == "pro")
                pro->setFocus();
            else if (k == "right")
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
            else if (k == "alt+s")
                QTest::keyClick(&f, Qt::Key_S, Qt::AltModifier);
            else if (k == "alt+n")
                QTest::keyClick(&f, Qt::Key_N, Qt::AltModifier);
            else if (k == "enter")
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            else if (k == "esc")
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        }
        // A mnemonic clicks its button a moment later, as a click shows on the screen.
        QTRY_VERIFY(!f.isVisible());
        QCOMPARE(f.result(), resultado);
        QCOMPARE(AEC(t), respuesta);
        QCOMPARE(f.property("Respuesta").toString(), respuesta);
    }

    // The calculator asks through the screens service, and goes on with the answer saved.
    void desdeLaCalculadora_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<bool>("reposicion");
        QTest::addColumn<QString>("respuesta");
        QTest::addColumn<double>("baseIVA");
        for (const char* sep : {",", "."}) {
            QTest::addRow("reposicion [%s]", sep)
                << QString::fromLatin1(sep) << true << "R" << 1140.0;
            QTest::addRow("produccion [%s]", sep)
                << QString::fromLatin1(sep) << false << "P" << 1000.0;
        }
    }
    void desdeLaCalculadora() {
        QFETCH(QString, sep);
        QFETCH(bool, reposicion);
        QFETCH(QString, respuesta);
        QFETCH(double, baseIVA);
        SeparadorDecimalScope scope(sep);
        TestStores t(Motor::SQLite);
        t.ctx().InternoActual = kInterno;
        RegistrarPantallasLiquidacion(t.ctx().pantallas());
        ClassLiquidacion liq(t.ctx());
        AplicarAjustes(liq, t.ctx(),
                       QStringLiteral("SubReg=IC04;DivFOB=1;FOB=1000;Pais=101;Derecho=10;"
                                      "ValorAEC=14;ncm_AEC=*"));
        liq.ObtenerBaseImponible();
        QString titulo;
        AlAbrirse([&](QWidget* w) {
            titulo = w->windowTitle();
            if (reposicion)
                Clic(Control<QRadioButton>(w, "opREP"));
            QTest::keyClick(w, Qt::Key_S, Qt::AltModifier);
        });
        QCOMPARE(liq.ObtenerBaseIVA(), baseIVA);
        QCOMPARE(titulo, QStringLiteral(" Régimen Automotriz"));
        QCOMPARE(liq.CalculoAEC(), respuesta);
        QCOMPARE(AEC(t), respuesta);
        QCOMPARE(t.dialogos().todo(), QStringList());
    }
};

QTEST_MAIN(TestFrmABMClientes)
#include "test_frmabmclientes.moc"
