// The ONCCA screen: its ten codes from the lists of our own tables, F11 saves, Esc leaves the
// record as it was, the switch turns the lists off; opened from the header's button.

#include "FixtureCaratula.h"
#include "header/FrmCaratula.h"
#include "header/PantallasCaratula.h"
#include "header/frmONCCA.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kDemo = QStringLiteral("DEMO-EC01-001");

QStringList Oncca(TestStores& ts) {
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select onccahabilitado,onccaacuerdo,onccacategoria,"
                                             "onccacortes,onccaelaborador,onccaespecie,"
                                             "onccafaneador,onccameccoorgbio,onccares3106,"
                                             "onccasispro,onccamatadero from caratula where "
                                             "interno = '%1'")
                                  .arg(kDemo));
    QStringList l;
    for (const QString& c : rs.Campos())
        l << EsNull(rs.Fields(c));
    return l;
}

} // namespace

class TestFrmOncca : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cargarYGuardar_data() { FilasDeMotores(); }
    void cargarYGuardar();
    void desdeCaratula_data() { FilasDeMotores(); }
    void desdeCaratula();
};

void TestFrmOncca::cargarYGuardar() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    const QStringList antes = Oncca(ts);
    QCOMPARE(antes,
             (QStringList{"S", "481", "NO", "LOM", "1021", "BOV", "5001", "C", "01", "P", "5001"}));
    {
        frmONCCA f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
        Mostrar(f);
        QVERIFY(f.findChild<QCheckBox*>("chONCCA")->isChecked());
        QCOMPARE(Texto(&f, "txtAcuerdo"), QStringLiteral("481 - CUOTA 481 UNION EUROPEA"));
        QCOMPARE(f.Codigo(QStringLiteral("txtAcuerdo")), QStringLiteral("481"));
        // The slaughterhouse is described from the faneadores.
        QCOMPARE(Texto(&f, "txtMatadero"),
                 QStringLiteral("5001 - FRIGORIFICO LAS PAMPAS S.A. - PLANTA AZUL"));
        QCOMPARE(Texto(&f, "txtCorte"), QStringLiteral("LOM - LOMO"));
        // F6 in a field is its button; the slaughterhouse chooses from the faneadores' list.
        QVariantMap recibido;
        ts.ctx().pantallas().Registrar(QStringLiteral("FrmListado"),
                                       [&recibido](AppContext&, const QVariantMap& args) {
                                           recibido = args;
                                           return QVariant(QStringLiteral("5003"));
                                       });
        f.findChild<QLineEdit*>("txtMatadero")->setFocus();
        Tecla(Qt::Key_F6);
        QCOMPARE(recibido.value(QStringLiteral("titulo")).toString(),
                 QStringLiteral("ONCCA - Faneador"));
        QCOMPARE(recibido.value(QStringLiteral("codigos")).toStringList(),
                 (QStringList{"5001", "5002", "5003"}));
        QCOMPARE(Texto(&f, "txtMatadero"), QStringLiteral("5003 - FRIGORIFICO D'AMICO HNOS S.A."));
        // Esc leaves the record as it was.
        Tecla(Qt::Key_Escape);
        QVERIFY(!f.isVisible());
    }
    QCOMPARE(Oncca(ts), antes);

    frmONCCA f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
    Mostrar(f);
    ts.ctx().pantallas().Registrar(
        QStringLiteral("FrmListado"), [](AppContext&, const QVariantMap& args) {
            return QVariant(
                args.value(QStringLiteral("titulo")).toString().endsWith(QStringLiteral("Corte"))
                    ? QStringLiteral("NAL")
                    : QStringLiteral("HIL"));
        });
    f.findChild<QPushButton*>("cmdAcuerdo")->click();
    f.findChild<QPushButton*>("cmdCorte")->click();
    QCOMPARE(Texto(&f, "txtAcuerdo"), QStringLiteral("HIL - CUOTA HILTON"));
    QCOMPARE(Texto(&f, "txtCorte"), QStringLiteral("NAL - NALGA"));
    Tecla(Qt::Key_F11);
    QVERIFY(!f.isVisible());
    QCOMPARE(Oncca(ts),
             (QStringList{"S", "HIL", "NO", "NAL", "1021", "BOV", "5001", "C", "01", "P", "5001"}));
    QVERIFY(ts.dialogos().registro().isEmpty());
}

void TestFrmOncca::desdeCaratula() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    ts.ctx().InternoActual = kDemo;
    FrmCaratula c(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
    Mostrar(c);
    auto* boton = c.findChild<QPushButton*>("cmdONCCA");
    QVERIFY(boton->isEnabled()); // an export "EC"
    // The switch off turns the lists off; F11 saves the codes as they were, with "N".
    AlAbrirse(QStringLiteral("frmONCCA"), [](QWidget* f) {
        auto* ch = f->findChild<QCheckBox*>(QStringLiteral("chONCCA"));
        ch->setFocus();
        QTest::keyClick(ch, Qt::Key_Space);
        for (QPushButton* b : f->findChildren<QPushButton*>())
            QVERIFY2(!b->isEnabled(), qPrintable(b->objectName()));
        QTest::keyClick(ch, Qt::Key_F11);
    });
    boton->click();
    QCOMPARE(Oncca(ts),
             (QStringList{"N", "481", "NO", "LOM", "1021", "BOV", "5001", "C", "01", "P", "5001"}));
    QVERIFY(!frmONCCA(ts.ctx(), {{QStringLiteral("interno"), kDemo}})
                 .findChild<QPushButton*>("cmdSisProd")
                 ->isEnabled());
    QVERIFY(c.isVisible());
    // The demo export's header is complete: Esc saves it without a question, and the save of
    // the header leaves the ONCCA switch as the ONCCA screen wrote it.
    Tecla(Qt::Key_Escape);
    QCOMPARE(c.result(), int(QDialog::Accepted));
    QCOMPARE(ts.dialogos().todo(), QStringList());
    QCOMPARE(Oncca(ts).first(), QStringLiteral("N"));
}

QTEST_MAIN(TestFrmOncca)
#include "test_frmoncca.moc"
