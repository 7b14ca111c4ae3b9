// The proration codes of an Operation: the maintenance screen and the picker, driven from the
// keyboard on both engines and under both decimal separators, and the header's button.

#include "FixtureNomenclador.h"
#include "goods/FrmABMProrrateos.h"
#include "goods/FrmLstProrrateo.h"
#include "goods/PantallasNomenclador.h"
#include "header/FixtureCaratula.h"
#include "header/FrmCaratula.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kNavegar = QStringLiteral("[INSERT] Agregar - [DELETE] Eliminar - [ESC] Cerrar");
const QString kAgregar = QStringLiteral("[F11] Agregar - [ESC] Cancelar");

void Preparar(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    Ejecutar(ts, "INTERNOS",
             {"insert into prorrateo (interno,codigo,descripcion,valor) values "
              "('P-1','A','GASTOS',100),('P-2','C','OTRA',5)"});
    RegistrarPantallasNomenclador(ts.ctx().pantallas());
}

// The codes of an Operation in the store, "codigo|descripcion|valor".
QStringList Filas(TestStores& ts, const QString& interno) {
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select codigo,descripcion,valor from prorrateo "
                                             "where interno = ? order by codigo"),
                              {interno});
    QStringList l;
    for (; !rs.Eof(); rs.MoveNext())
        l << EsNull(rs.Fields(0)) + "|" + EsNull(rs.Fields(1)) + "|" +
                 Formato(EsNumero(rs.Fields(2)), QStringLiteral("0.00"), QStringLiteral("."));
    return l;
}

void Campo(const char* nombre, QWidget* f, const QString& texto) {
    Control<QLineEdit>(f, nombre)->setFocus();
    Tecla(Qt::Key_A, Qt::ControlModifier);
    if (texto.isEmpty())
        Tecla(Qt::Key_Delete);
    else
        Escribir(texto);
}

} // namespace

class TestProrrateos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agregarYEliminar_data() { FilasDeMotoresYSeparadores("separador"); }
    void agregarYEliminar();
    void listaVacia_data() { FilasDeMotores(); }
    void listaVacia();
    void elegir_data() { FilasDeMotoresYSeparadores("separador"); }
    void elegir();
    void desdeLaCaratula();
};

void TestProrrateos::agregarYEliminar() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    TestStores ts(static_cast<Motor>(motor));
    Preparar(ts);
    SeparadorDecimalScope sep(separador);
    auto n = [&](const char* t) { return QString::fromLatin1(t).replace('.', separador); };
    ts.ctx().TotalProrrateo = -1;
    FrmABMProrrateos f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("P-1")}});
    Mostrar(f);
    QCOMPARE(Filas(Control<QTreeWidget>(&f, "LstProrrateo")),
             QStringList{"A|GASTOS|" + n("100.00")});
    QCOMPARE(Control<QLabel>(&f, "lbEstado")->text(), kNavegar);
    QVERIFY(!Control<QGroupBox>(&f, "FramDatos")->isEnabled());
    QCOMPARE(NombreFoco(), QStringLiteral("LstProrrateo"));

    Tecla(Qt::Key_Insert);
    QCOMPARE(Control<QLabel>(&f, "lbEstado")->text(), kAgregar);
    QVERIFY(Control<QGroupBox>(&f, "FramDatos")->isEnabled());
    QCOMPARE(NombreFoco(), QStringLiteral("TxtCodigo"));

    // Each refusal, in the order the fields are checked.
    const struct {
        const char *codigo, *valor, *mensaje;
    } rechazos[] = {
        {"", "1", "Debe ingresar un valor en el campo CODIGO"},
        {"B", "abc", "Debe ingresar un dato Númerico en el campo VALOR"},
        {"B", "", "Debe ingresar un dato Númerico en el campo VALOR"},
        {"B", "0", "El dato en el campo VALOR debe ser MAYOR A 0 (cero)"},
        {"B", "-5", "El dato en el campo VALOR debe ser MAYOR A 0 (cero)"},
        {"A", "1", "El codigo ya Existe"},
    };
    QStringList esperados;
    for (const auto& r : rechazos) {
        Campo("TxtCodigo", &f, QString::fromLatin1(r.codigo));
        Campo("TxtValor", &f, QString::fromLatin1(r.valor));
        Tecla(Qt::Key_F11);
        esperados << QString::fromUtf8(r.mensaje);
    }
    QCOMPARE(ts.dialogos().mensajes(), esperados);
    QCOMPARE(Filas(ts, "P-1"), QStringList{"A|GASTOS|100.00"});

    // Typed from the code on, Enter moving from field to field.
    Campo("TxtCodigo", &f, "B");
    Tecla(Qt::Key_Return);
    Escribir(QStringLiteral("O'HIGGINS"));
    Tecla(Qt::Key_Return);
    QCOMPARE(NombreFoco(), QStringLiteral("TxtValor"));
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(n("1234.5"));
    Tecla(Qt::Key_F11);
    QCOMPARE(Texto(&f, "TxtCodigo"), QString());
    QCOMPARE(Texto(&f, "TxtValor"), QString());
    QCOMPARE(NombreFoco(), QStringLiteral("TxtCodigo"));
    // A code of another Operation is free here.
    Escribir(QStringLiteral("C"));
    Campo("TxtValor", &f, n("0.25"));
    Tecla(Qt::Key_F11);
    QCOMPARE(ts.dialogos().mensajes().size(), esperados.size());
    QCOMPARE(Filas(ts, "P-1"), (QStringList{"A|GASTOS|100.00", "B|O'HIGGINS|1234.50", "C||0.25"}));
    QCOMPARE(Filas(Control<QTreeWidget>(&f, "LstProrrateo")),
             (QStringList{"A|GASTOS|" + n("100.00"), "B|O'HIGGINS|" + n("1234.50"),
                          "C||" + n("00.25")}));
    GuardarPantallazo(QStringLiteral("FrmABMProrrateos"), &f);

    // Esc goes back to browsing without closing and without the total.
    Tecla(Qt::Key_Escape);
    QVERIFY(f.isVisible());
    QCOMPARE(Control<QLabel>(&f, "lbEstado")->text(), kNavegar);
    QCOMPARE(ts.ctx().TotalProrrateo, -1.0);
    // Delete removes the code chosen, with no question.
    QCOMPARE(NombreFoco(), QStringLiteral("LstProrrateo"));
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Delete);
    QCOMPARE(Filas(ts, "P-1"), (QStringList{"A|GASTOS|100.00", "C||0.25"}));
    QCOMPARE(Filas(ts, "P-2"), QStringList{"C|OTRA|5.00"});
    QCOMPARE(Filas(Control<QTreeWidget>(&f, "LstProrrateo")).size(), 2);
    Tecla(Qt::Key_Escape);
    QVERIFY(!f.isVisible());
    QCOMPARE(ts.ctx().TotalProrrateo, 100.25);
    QCOMPARE(ts.dialogos().mensajes().size(), esperados.size());
}

void TestProrrateos::listaVacia() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    Preparar(ts);
    ts.ctx().TotalProrrateo = -1;
    FrmABMProrrateos f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("P-3")}});
    Mostrar(f);
    // With no codes it opens adding; Ctrl+C goes back to browsing and then closes.
    QCOMPARE(Control<QLabel>(&f, "lbEstado")->text(), kAgregar);
    QCOMPARE(NombreFoco(), QStringLiteral("TxtCodigo"));
    Tecla(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Control<QLabel>(&f, "lbEstado")->text(), kNavegar);
    QCOMPARE(ts.ctx().TotalProrrateo, -1.0);
    Tecla(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!f.isVisible());
    QCOMPARE(ts.ctx().TotalProrrateo, 0.0);
}

void TestProrrateos::elegir() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    TestStores ts(static_cast<Motor>(motor));
    Preparar(ts);
    SeparadorDecimalScope sep(separador);
    Ejecutar(ts, "INTERNOS",
             {"insert into prorrateo (interno,codigo,descripcion,valor) values "
              "('P-1','B','FLETE',2.5)"});
    {
        FrmLstProrrateo f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("P-1")}});
        Mostrar(f);
        QCOMPARE(Filas(Control<QTreeWidget>(&f, "LstProrrateo")),
                 (QStringList{"A|GASTOS|" + QStringLiteral("100.00").replace('.', separador),
                              "B|FLETE|" + QStringLiteral("02.50").replace('.', separador)}));
        GuardarPantallazo(QStringLiteral("FrmLstProrrateo"), &f);
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Return);
        QVERIFY(!f.isVisible());
        QCOMPARE(f.property("Respuesta").toString(), QStringLiteral("B"));
    }
    {
        FrmLstProrrateo f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("P-1")}});
        Mostrar(f);
        Tecla(Qt::Key_Escape);
        QVERIFY(!f.isVisible());
        QCOMPARE(f.property("Respuesta").toString(), QString());
    }
}

void TestProrrateos::desdeLaCaratula() {
    TestStores ts(Motor::SQLite);
    PrepararDemo(ts);
    RegistrarPantallasNomenclador(ts.ctx().pantallas());
    const QString interno = QStringLiteral("DEMO-EC01-001");
    Ejecutar(ts, "INTERNOS",
             {"insert into prorrateo (interno,codigo,descripcion,valor) values "
              "('DEMO-EC01-001','X','GASTOS',7.5),('DEMO-EC01-001','Y','FLETE',1.25)"});
    FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
    Mostrar(f);
    QString visto;
    AlAbrirse(QStringLiteral("FrmABMProrrateos"), [&visto](QWidget* w) {
        visto = w->windowTitle();
        QTest::keyClick(Control<QTreeWidget>(w, "LstProrrateo"), Qt::Key_Escape);
    });
    ts.ctx().TotalProrrateo = -1;
    Control<QPushButton>(&f, "CmdProrrat")->click();
    QCOMPARE(visto, QStringLiteral("Codigos de Prorrateo"));
    QCOMPARE(ts.ctx().TotalProrrateo, 8.75);
}

QTEST_MAIN(TestProrrateos)
#include "test_prorrateos.moc"
