// The items screen on the assembled demo Operation DEMO-IC04-001 (general FOB 16780, rates 1;
// items 1..5 with FOB 9000, 2220, 2850, 1150, 1560), driven from the keyboard on both engines
// and under both decimal separators ("#" in an expected text is the separator).

#include "assembly/FixtureArmado.h"
#include "liquidation/FrmVerItem.h"
#include "liquidation/PantallasLiquidacion.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kOp = QStringLiteral("DEMO-IC04-001");

struct Pantalla {
    std::unique_ptr<TestStores> ts;
    std::unique_ptr<FrmVerItem> f;
    QString sep;

    QString Etiqueta(const char* nombre) const { return Control<QLabel>(f.get(), nombre)->text(); }
    // The text with "#" as the separator.
    QString S(QString t) const { return t.replace(QLatin1Char('#'), sep); }
    void Campo(const char* nombre, const QString& texto) {
        auto* t = Control<QLineEdit>(f.get(), nombre);
        t->setFocus();
        t->selectAll();
        QTest::keyClicks(t, S(texto));
    }
    void IrA(const QString& item) {
        auto* t = Control<QLineEdit>(f.get(), "TxtItem");
        t->setFocus();
        t->selectAll();
        QTest::keyClicks(t, item);
        QTest::keyClick(t, Qt::Key_Return);
    }
    // A key to the widget of the screen that holds the focus, whichever window is active.
    void Tecla(Qt::Key tecla) {
        QWidget* w = f->focusWidget();
        QTest::keyClick(w ? w : f.get(), tecla);
    }
    QStringList Grilla(const char* nombre, int columnas) const {
        auto* g = Control<QTableWidget>(f.get(), nombre);
        QStringList r;
        for (int i = 0; i < g->rowCount(); ++i) {
            QStringList fila;
            for (int c = 0; c < columnas; ++c)
                fila << (g->item(i, c) ? g->item(i, c)->text() : QString());
            r << fila.join(QLatin1Char('|'));
        }
        return r;
    }
    QStringList Items(const char* columnas) {
        return Filas(*ts,
                     QStringLiteral("select id,%1 from item where interno = ? order by id")
                         .arg(QString::fromLatin1(columnas)),
                     {kOp});
    }
};

std::unique_ptr<Pantalla> Abrir(int motor, const QString& sep) {
    auto p = std::make_unique<Pantalla>();
    p->sep = sep;
    p->ts = DemoArmada(static_cast<Motor>(motor), kOp);
    RegistrarPantallasLiquidacion(p->ts->ctx().pantallas());
    p->f =
        std::make_unique<FrmVerItem>(p->ts->ctx(), QVariantMap{{QStringLiteral("interno"), kOp}});
    Mostrar(*p->f);
    return p;
}

} // namespace

class TestVerItem : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void recorrido_data() { FilasDeMotoresYSeparadores(); }
    // Item 0 shows what its run wrote; the walk shows each item with its own values.
    void recorrido() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        SeparadorDecimalScope scope(sep);
        auto p = Abrir(motor, sep);
        QCOMPARE(p->Etiqueta("LbPos"), QStringLiteral("00 / 05"));
        QStringList totales;
        for (const QString& r :
             Filas(*p->ts,
                   QStringLiteral("select idconcepto,concepto,valor from liqcero where "
                                  "interno = ? and idconcepto not like '###%' order by "
                                  "idconcepto"),
                   {kOp}))
            totales << r.section('|', 0, 1) + QStringLiteral("|||") +
                           Formato(r.section('|', 2).toDouble(), QStringLiteral("00.00"));
        QCOMPARE(p->Grilla("GrdLiq", 5), totales);
        GuardarPantallazo(QStringLiteral("FrmVerItem-0"), p->f.get());
        // What item 0 cannot do for all the items: it says where to do it.
        for (const char* campo : {"TxtIdpais", "TxtIdproc", "TxtTotKgNeto"}) {
            Control<QLineEdit>(p->f.get(), campo)->setFocus();
            p->Tecla(Qt::Key_F6);
        }
        QCOMPARE(Dichos(*p->ts),
                 QStringList({"KORVEN|4|Si desea establecer un PAIS ORIGEN para todos los item's , "
                              "debe ingresarlo en Caratula",
                              "KORVEN|4|Si desea establecer un PAIS DESTINO / PROC para todos los "
                              "item's, debe ingresarlo en Caratula",
                              "KORVEN|0|Si desea prorratear Kilos Neto, debe ingresar el valor "
                              "total en Caratula"}));
        p->ts->dialogos().Limpiar();

        // Item 1: 9000 + 455.90 + 64.63 of customs value; 3 % of it as statistics fee.
        p->Tecla(Qt::Key_PageDown);
        QCOMPARE(p->Etiqueta("LbPos"), QStringLiteral("01 / 05"));
        QCOMPARE(p->Etiqueta("lbNCM"), QStringLiteral("8471.30.12.100M"));
        QCOMPARE(p->Etiqueta("LbFOB"), p->S("9000#00"));
        QCOMPARE(p->Etiqueta("LbBaseImp"), p->S("9520#53"));
        QCOMPARE(p->Etiqueta("LbBaseIVA"), p->S("9806#15"));
        QCOMPARE(p->Grilla("GrdLiq", 1), QStringList({"011", "422", "424", "601", "900"}));
        QCOMPARE(p->Etiqueta("LbTotPagar"), p->S("1364#29"));
        QCOMPARE(p->Etiqueta("LbTotCobrar"), p->S("180#00"));
        QCOMPARE(p->Grilla("LstV", 1).size(), 1);
        GuardarPantallazo(QStringLiteral("FrmVerItem-1"), p->f.get());

        p->IrA(QStringLiteral("4"));
        QCOMPARE(p->Etiqueta("LbPos"), QStringLiteral("04 / 05"));
        QCOMPARE(p->Etiqueta("LbFOB"), p->S("1150#00"));
        p->IrA(QStringLiteral("9"));
        QCOMPARE(p->Etiqueta("LbPos"), QStringLiteral("04 / 05"));

        p->f->InsertarCancelacion();
        QCOMPARE(Dichos(*p->ts).value(0),
                 QStringLiteral("KORVEN|1|%1 - El componente SupplyLink.Main no está instalado. "
                                "seccion[InsertarCancelacion.FrmVerItem.KORVEN Linea 1 ]::")
                     .arg(KorvenError::ComponenteNoInstalado));
        p->Tecla(Qt::Key_Escape);
        QVERIFY(!p->f->isVisible());
    }

    void item0_data() { FilasDeMotoresYSeparadores(); }
    // Item 0 sends its values to every item (the country of provenance only to items without
    // one), its inclusion spread by FOB; the deduction's statement is refused by the store.
    void item0() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        SeparadorDecimalScope scope(sep);
        auto p = Abrir(motor, sep);
        p->ts->conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update item set idproc = '' where interno = ? and id = 2"),
                      {kOp});
        p->Campo("TxtReg", QStringLiteral("S"));
        p->Campo("TxtIdproc", QStringLiteral("203"));
        // 100.5 x FOB / 16780: 53.90, 13.30, 17.07, 6.89, 9.34.
        p->Campo("TxtAjusteInc", QStringLiteral("100#5"));
        p->Tecla(Qt::Key_Return);
        QCOMPARE(p->Items("ajusteinc,regalias,idproc"),
                 QStringList({"0|100.50|S|203", "1|53.90|S|310", "2|13.30|S|203", "3|17.07|S|310",
                              "4|6.89|S|310", "5|9.34|S|310"}));
        // The run that follows carries item 1's share into its customs value.
        QCOMPARE(Filas(*p->ts,
                       QStringLiteral("select baseimp,total from itemliq where interno = ? and "
                                      "iditem = 1 and idconceptos = '011'"),
                       {kOp}),
                 QStringList({"9574.43|287.23"}));
        QCOMPARE(Filas(*p->ts,
                       QStringLiteral("select valor from liqcero where interno = ? and "
                                      "idconcepto = '###ajinc'"),
                       {kOp}),
                 QStringList({"100.5"}));

        p->ts->dialogos().Limpiar();
        p->Campo("txtAjusteDed", QStringLiteral("20"));
        p->Tecla(Qt::Key_Return);
        const QStringList dichos = Dichos(*p->ts);
        QCOMPARE(dichos.size(), 1);
        QVERIFY2(dichos[0].startsWith(QStringLiteral("KORVEN|1|")) &&
                     dichos[0].endsWith(
                         QStringLiteral(" seccion[GrabarItem.FrmVerItem.KORVEN Linea 3 ]::")),
                 qPrintable(dichos[0]));
        QCOMPARE(p->Items("ajusteded").join(QLatin1Char(' ')),
                 QStringLiteral("0|20.00 1|null 2|null 3|null 4|null 5|null"));
        p->Tecla(Qt::Key_Escape);
        QVERIFY(!p->f->isVisible());
    }

    void ventajasYConcepto_data() { FilasDeMotoresYSeparadores(); }
    // An advantage given on item 0 reaches every item and goes only from there; a concept
    // changed by hand on item 1 keeps its rate and base when item 0 calculates again.
    void ventajasYConcepto() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        SeparadorDecimalScope scope(sep);
        auto p = Abrir(motor, sep);
        const auto ventaja = [&](Qt::Key tecla) {
            p->Tecla(Qt::Key_F2);
            auto* lista = Control<QListWidget>(p->f.get(), "LstVentajas");
            lista->setFocus();
            const auto fila = lista->findItems(QStringLiteral("AUTOLIQLIBREIMP"), Qt::MatchExactly);
            if (!fila.isEmpty())
                lista->setCurrentItem(fila.first());
            if (tecla == Qt::Key_F6)
                AlAbrirse(QStringLiteral("FrmVentajas"), [](QWidget* w) {
                    auto* lst = Control<QListWidget>(w, "Lst");
                    while (
                        !lst->currentItem()->text().startsWith(QStringLiteral("AUTOLIQLIBREIMP")))
                        QTest::keyClick(lst, Qt::Key_Down);
                    QTest::keyClick(lst, Qt::Key_Return);
                });
            p->Tecla(tecla);
        };
        const QString sqlVentaja = QStringLiteral("select iditem from itemventaja where interno = "
                                                  "? and idventaja = 'AUTOLIQLIBREIMP' order by "
                                                  "iditem");
        ventaja(Qt::Key_F6);
        QCOMPARE(Filas(*p->ts, sqlVentaja, {kOp}).join(QLatin1Char(' ')),
                 QStringLiteral("0 1 2 3 4 5"));
        QCOMPARE(p->Items("lman").join(QLatin1Char(' ')),
                 QStringLiteral("0|M 1|M 2|M 3|M 4|M 5|M"));
        QVERIFY(Control<QLabel>(p->f.get(), "lbAutoliq")->isVisibleTo(p->f.get()));

        p->IrA(QStringLiteral("1"));
        ventaja(Qt::Key_Delete);
        QCOMPARE(Dichos(*p->ts).value(0),
                 QStringLiteral("KORVEN|3|No se puede eliminar esta Ventaja. Debe eliminar la "
                                "misma en el ITEM 0 (cero)"));
        QCOMPARE(Filas(*p->ts, sqlVentaja, {kOp}).size(), 6);

        // The statistics fee of item 1 at 5 % of its 9520.53 instead of 3 %: 476.03, and the
        // Operation's 532.53 - 285.62 + 476.03.
        p->Tecla(Qt::Key_F4);
        Control<QTableWidget>(p->f.get(), "GrdLiq")->setFocus();
        AlAbrirse(QStringLiteral("FrmAdCon"), [](QWidget* w) {
            auto* porc = Control<QLineEdit>(w, "txtPorc");
            porc->setFocus();
            porc->selectAll();
            QTest::keyClicks(porc, QStringLiteral("5"));
            QTest::keyClick(Control<QPushButton>(w, "Command1"), Qt::Key_Return);
        });
        p->Tecla(Qt::Key_Return);
        const QString sql011 = QStringLiteral("select porcentaje,baseimp,total,valor from itemliq "
                                              "where interno = ? and iditem = 1 and idconceptos "
                                              "= '011'");
        QCOMPARE(Filas(*p->ts, sql011, {kOp}), QStringList({"5|9520.53|476.03|1"}));
        p->IrA(QStringLiteral("0"));
        QCOMPARE(Filas(*p->ts, sql011, {kOp}), QStringList({"5|9520.53|476.03|1"}));
        QCOMPARE(Filas(*p->ts,
                       QStringLiteral("select valor from liqcero where interno = ? and "
                                      "idconcepto = '011'"),
                       {kOp}),
                 QStringList({"722.94"}));

        ventaja(Qt::Key_Delete);
        QVERIFY(Filas(*p->ts, sqlVentaja, {kOp}).isEmpty());
        QCOMPARE(p->Items("lman").value(0), QStringLiteral("0|"));
        p->Tecla(Qt::Key_Escape);
        QVERIFY(!p->f->isVisible());
    }

    void listas_data() { FilasDeMotores(); }
    // A list of partners on an item: its duties lose their rates when the item is saved, and the
    // screen cannot be left until item 0 has calculated again. A list cleared by hand marks the
    // item so that the run keeps it.
    void listas() {
        MOTOR_O_SALTAR();
        auto p = Abrir(motor, QStringLiteral("."));
        p->ts->ctx().pantallas().Registrar(
            QStringLiteral("FrmListadoeX"), [](AppContext&, const QVariantMap& args) {
                for (const QVariant& f : args.value(QStringLiteral("filas")).toList())
                    if (f.toStringList().value(1) == QLatin1String("MERCOSUR"))
                        return QVariant(QVariantMap{{"codigo", f.toStringList().value(0)},
                                                    {"descripcion", QStringLiteral("MERCOSUR")}});
                return QVariant();
            });
        p->IrA(QStringLiteral("3"));
        Control<QLineEdit>(p->f.get(), "TxtLista")->setFocus();
        p->Tecla(Qt::Key_F6);
        p->Tecla(Qt::Key_PageDown);
        const QString sql = QStringLiteral("select idconceptos,porcentaje,total from itemliq where "
                                           "interno = ? and iditem = ? and idconceptos in "
                                           "('010','011','015','020') order by idconceptos");
        QCOMPARE(Filas(*p->ts, sql, {kOp, 3}), QStringList({"010|0|0", "011|0|0", "015|0|0"}));
        QCOMPARE(p->Items("lista").value(3), QStringLiteral("3|MERCOSUR"));

        p->Tecla(Qt::Key_Escape);
        QVERIFY(p->f->isVisible());
        QCOMPARE(Dichos(*p->ts).value(0),
                 QStringLiteral("KORVEN|3|Se modifico algun concepto de liquidación, \n\ndebe ir "
                                "al item 0 (cero) para calcular y actualizar los totales."));

        // Back to no list: the rates at 0 become none, which the run fills from the position.
        p->IrA(QStringLiteral("3"));
        Control<QLineEdit>(p->f.get(), "TxtLista")->setFocus();
        p->Tecla(Qt::Key_Delete);
        QCOMPARE(p->Items("itmodif").value(3), QStringLiteral("3|S"));
        p->IrA(QStringLiteral("0"));
        QCOMPARE(Filas(*p->ts, sql, {kOp, 3}).value(1), QStringLiteral("011|3|90.45"));
        p->Tecla(Qt::Key_Escape);
        QVERIFY(!p->f->isVisible());
    }
};

QTEST_MAIN(TestVerItem)
#include "test_veritem.moc"
