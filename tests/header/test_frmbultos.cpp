// The packages screen, the list of transport agents and its editor, driven from the keyboard,
// and the hub's package status after them.

#include "FixtureCaratula.h"
#include "foundation/FrmDetalleInterno.h"
#include "header/FrmBultos.h"
#include "header/PantallasCaratula.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kDemo = QStringLiteral("DEMO-EC01-001");

QStringList Agentes(TestStores& ts) {
    Recordset rs = ts.conexion(QStringLiteral("PERSONAL"))
                       .Abrir(QStringLiteral("select cuit,nombre from transporte order by cuit"));
    QStringList l;
    for (; !rs.Eof(); rs.MoveNext())
        l << EsNull(rs.Fields("cuit")) + QLatin1Char(' ') + EsNull(rs.Fields("nombre"));
    return l;
}

// Replaces what the focused field holds and presses Enter.
void Tipear(const QString& texto) {
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(texto);
    Tecla(Qt::Key_Return);
}

} // namespace

class TestFrmBultos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cargaYGrabado_data() { FilasDeMotores(); }
    void cargaYGrabado();
    void agentes_data() { FilasDeMotores(); }
    void agentes();
    void noTransferir_data() { FilasDeMotores(); }
    void noTransferir();
};

void TestFrmBultos::cargaYGrabado() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral(","));
    FrmBultos f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
    Mostrar(f);
    QStringList cargado;
    for (const char* c :
         {"TxtNroBultos", "Lbcodigoemb", "LbTipoemb", "LbVia", "LbBandera", "TxtPeso",
          "TxtBultDesp", "TxtCantDisp", "TxtVencimiento", "TxtNombreTrans"})
        cargado << (c[0] == 'L' ? f.findChild<QLabel*>(c)->text() : Texto(&f, c));
    QCOMPARE(cargado, (QStringList{"1/8", "CONTENEDOR", "CONTENEDOR 20 PIES", "MARITIMA",
                                   "REINO UNIDO", "31500,00", "8", "8", "31/12/2027",
                                   "AGENCIA MARITIMA RIO DE LA PLATA S.A."}));
    QVERIFY(!f.findChild<QCheckBox*>("chTransBultos")->isChecked());
    QVERIFY(f.findChild<QLabel*>("lbAdvert")->isHidden());

    // From the first field, as Enter leads.
    QCOMPARE(NombreFoco(), QStringLiteral("TxtNroBultos"));
    Tipear(QStringLiteral("1/10"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtCodigo"));
    ElegirEnListado(QStringLiteral("33"));
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "TxtCodigo"), QStringLiteral("33"));
    QCOMPARE(f.findChild<QLabel*>("Lbcodigoemb")->text(), QStringLiteral("CONTENEDOR REFRIGERADO"));
    Tecla(Qt::Key_Return);
    Tipear(QStringLiteral("b"));
    QCOMPARE(Texto(&f, "TxtTipo"), QStringLiteral("B"));
    QCOMPARE(f.findChild<QLabel*>("LbTipoemb")->text(), QStringLiteral("CONTENEDOR 40 PIES"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtBultDesp"));
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(QStringLiteral("10"));
    QCOMPARE(Texto(&f, "TxtCantDisp"), QStringLiteral("10"));
    Tecla(Qt::Key_Return);
    Tipear(QStringLiteral("40250,5"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtMarcaBul"));
    Tipear(QStringLiteral("LAS PAMPAS 'EXPORT'"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtVia"));
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Return);
    // A tax number whose check digit fails.
    QCOMPARE(NombreFoco(), QStringLiteral("TxtCuit"));
    Tipear(QStringLiteral("30712223334"));
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"Cuit Invalido"});
    QCOMPARE(Texto(&f, "TxtNombreTrans"), QStringLiteral("AGENCIA MARITIMA RIO DE LA PLATA S.A."));
    Control<QLineEdit>(&f, "TxtCuit")->setFocus();
    Tipear(QStringLiteral("30715556665"));
    QCOMPARE(Texto(&f, "TxtNombreTrans"), QStringLiteral("TRANSPORTES DEL LITORAL S.R.L."));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtBandera"));
    Tecla(Qt::Key_Return);
    // The expiry: not a date, then yesterday; the screen stays on the field.
    QCOMPARE(NombreFoco(), QStringLiteral("TxtVencimiento"));
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(QStringLiteral("31/02/2027"));
    ts.dialogos().Limpiar();
    Tecla(Qt::Key_Escape);
    QVERIFY(f.isVisible());
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(FormatoFecha(QDate::currentDate().addDays(-1), QStringLiteral("dd/mm/yyyy")));
    Tecla(Qt::Key_Escape);
    QVERIFY(f.isVisible());
    QCOMPARE(NombreFoco(), QStringLiteral("TxtVencimiento"));
    QCOMPARE(ts.dialogos().mensajes(),
             (QStringList{"En Vencimiendo de Embarque debe tener una fecha valida",
                          "La fecha Vencimiento de Embarque debe ser superior a la del día."}));
    QCOMPARE(Columna(ts, kDemo, "bulnro"), QStringLiteral("1/8"));
    // Today passes; Ctrl+C leaves as Esc does.
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(FormatoFecha(QDate::currentDate(), QStringLiteral("dd/mm/yyyy")));
    Tecla(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!f.isVisible());
    QStringList fila;
    for (const char* c : {"bulnro", "bulcod", "bultip", "buldes", "bulpes", "marcabul", "via",
                          "trans", "cuittrans", "factura10", "bandera", "factura9"})
        fila << Columna(ts, kDemo, c);
    QCOMPARE(fila, (QStringList{"1/10", "33", "B", "10", "40250.5", "LAS PAMPAS 'EXPORT'", "1",
                                "MSC ANNA", "30715556665", "TRANSPORTES DEL LITORAL S.R.L.", "426",
                                "0"}));
    QCOMPARE(Columna(ts, kDemo, "venemb"),
             FormatoFecha(QDate::currentDate(), QStringLiteral("dd-mm-yy")));
}

void TestFrmBultos::agentes() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    FrmBultos f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
    Mostrar(f);
    Control<QLineEdit>(&f, "TxtCuit")->setFocus();
    // F6 shows the agents by name; Insert adds one through its editor, whose check digit
    // refuses a wrong number first.
    AlAbrirse(QStringLiteral("FrmLstTrans"), [&ts](QWidget* lista) {
        auto* lst = lista->findChild<QTreeWidget*>(QStringLiteral("Lst"));
        QCOMPARE(lst->topLevelItemCount(), 3);
        QCOMPARE(lst->topLevelItem(0)->text(1), QStringLiteral("AEROCARGAS EZEIZA S.A."));
        AlAbrirse(QStringLiteral("FrmABMAgTrans"), [&ts](QWidget* abm) {
            auto* cuit = abm->findChild<QLineEdit*>(QStringLiteral("TxtCuit"));
            QTest::keyClicks(cuit, QStringLiteral("20000000012"));
            QTest::keyClicks(abm->findChild<QLineEdit*>(QStringLiteral("TxtNombre")),
                             QStringLiteral("D'ALESSANDRO CARGAS"));
            auto* guardar = abm->findChild<QPushButton*>(QStringLiteral("CmdGuardar"));
            guardar->click();
            QVERIFY(abm->isVisible());
            QCOMPARE(ts.dialogos().mensajes(), QStringList{"Cuit Invalido"});
            cuit->selectAll();
            QTest::keyClicks(cuit, QStringLiteral("20000000011"));
            guardar->click();
        });
        QTest::keyClick(lst, Qt::Key_Insert);
        QCOMPARE(lst->topLevelItemCount(), 4);
        // F6 changes the selected agent: the tax number too.
        lst->setCurrentItem(lst->topLevelItem(1));
        QCOMPARE(lst->currentItem()->text(1),
                 QStringLiteral("AGENCIA MARITIMA RIO DE LA PLATA S.A."));
        AlAbrirse(QStringLiteral("FrmABMAgTrans"), [](QWidget* abm) {
            auto* nombre = abm->findChild<QLineEdit*>(QStringLiteral("TxtNombre"));
            QCOMPARE(nombre->text(), QStringLiteral("AGENCIA MARITIMA RIO DE LA PLATA S.A."));
            nombre->selectAll();
            QTest::keyClicks(nombre, QStringLiteral("AGENCIA MARITIMA DEL PLATA"));
            abm->findChild<QPushButton*>(QStringLiteral("CmdGuardar"))->click();
        });
        QTest::keyClick(lst, Qt::Key_F6);
        // Delete asks first; No keeps the agent.
        ts.dialogos().ResponderNo();
        lst->setCurrentItem(lst->topLevelItem(0));
        QTest::keyClick(lst, Qt::Key_Delete);
        QCOMPARE(lst->topLevelItemCount(), 4);
        ts.dialogos().ResponderSi();
        QTest::keyClick(lst, Qt::Key_Delete);
        QCOMPARE(lst->topLevelItemCount(), 3);
        // Enter hands the agent chosen back: D'ALESSANDRO comes after AGENCIA by name.
        lst->setCurrentItem(lst->topLevelItem(1));
        QTest::keyClick(lst, Qt::Key_Return);
    });
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "TxtCuit"), QStringLiteral("20000000011"));
    QCOMPARE(Texto(&f, "TxtNombreTrans"), QStringLiteral("D'ALESSANDRO CARGAS"));
    QCOMPARE(Agentes(ts), (QStringList{"20000000011 D'ALESSANDRO CARGAS",
                                       "30543210982 AGENCIA MARITIMA DEL PLATA",
                                       "30715556665 TRANSPORTES DEL LITORAL S.R.L."}));
    QCOMPARE(ts.dialogos().todo().mid(1),
             (QStringList{"Confirma eliminar el Agente de Tranporte seleccionado",
                          "Confirma eliminar el Agente de Tranporte seleccionado"}));
    // Esc in the list hands nothing back.
    AlAbrirse(QStringLiteral("FrmLstTrans"), [](QWidget* lista) {
        QTest::keyClick(lista->findChild<QTreeWidget*>(QStringLiteral("Lst")), Qt::Key_Escape);
    });
    Control<QLineEdit>(&f, "TxtCuit")->setFocus();
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "TxtCuit"), QStringLiteral("20000000011"));
    f.findChild<QCheckBox*>("chTransBultos")->setChecked(true);
    ts.dialogos().Limpiar();
    f.reject();
}

void TestFrmBultos::noTransferir() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    // Packages without a code: the hub counts them incomplete.
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update caratula set bulcod = '', factura8 = 'N' where interno = "
                                 "'%1'")
                      .arg(kDemo));
    FrmDetalleInterno hub(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
    QLabel* estado = hub.findChild<QLabel*>(QStringLiteral("LbEstadoBultos"));
    QCOMPARE(estado->text(), QStringLiteral("INCOMPLETO"));
    QVERIFY(hub.findChild<QPushButton*>(QStringLiteral("CmdBultos"))->isEnabled());
    // "NO Transferir bultos": only the mark is written, whatever was typed.
    AlAbrirse(QStringLiteral("FrmBultos"), [](QWidget* f) {
        auto* peso = f->findChild<QLineEdit*>(QStringLiteral("TxtPeso"));
        peso->selectAll();
        QTest::keyClicks(peso, QStringLiteral("1"));
        auto* marca = f->findChild<QCheckBox*>(QStringLiteral("chTransBultos"));
        marca->setFocus();
        QTest::keyClick(marca, Qt::Key_Space);
        QVERIFY(!f->findChild<QLabel*>(QStringLiteral("lbAdvert"))->isHidden());
        QTest::keyClick(marca, Qt::Key_Escape);
    });
    hub.CmdBultos();
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"Eligio no transferir bultos, los datos no seran guardados"});
    QCOMPARE(Columna(ts, kDemo, "factura9"), QStringLiteral("1"));
    QCOMPARE(Columna(ts, kDemo, "bulpes"), QStringLiteral("31500"));
    QCOMPARE(estado->text(), QStringLiteral("COMPLETO"));
}

QTEST_MAIN(TestFrmBultos)
#include "test_frmbultos.moc"
