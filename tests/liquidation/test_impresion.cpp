// The printed liquidation of an assembled demo Operation: the lines of the printing table for an
// item and for item 0, the refusal of a reversed range, two workstations printing at once, and
// the PDF of korven-admin imprimir read back as text; under "," and "." on both engines.
//
// The items screen on the assembled demo Operation DEMO-IC04-001 (general FOB 16780, rates 1;
// items 1..5 with FOB 9000, 2220, 2850, 1150, 1560), driven from the keyboard on both engines
// and under both decimal separators ("#" in an expected text is the separator).

#include "assembly/FixtureArmado.h"
#include "liquidation/AdminImpresion.h"
#include "liquidation/FrmPrintItem.h"
#include "liquidation/FrmVerItem.h"
#include "liquidation/ImpresionLiquidacion.h"
#include "liquidation/PantallasLiquidacion.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/Principal.h"
#include "support/TextoPdf.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrintPreviewDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTimer>
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

namespace {

// The demo Operation assembled, with an apostrophe in the information of item 1.
std::unique_ptr<TestStores> Armada(Motor motor) {
    auto ts = DemoArmada(motor, kOp);
    Insertar(*ts, QStringLiteral("iteminfo"),
             QStringLiteral("interno=%1;iditem=1;idinfo=ORIGEN;valor=O'Higgins 1").arg(kOp));
    return ts;
}

// Columns cut or padded to their widths and joined by a blank; "~" is the decimal separator.
QString Columnas(const QStringList& valores, const QList<int>& anchos, const QString& sep) {
    QStringList r;
    for (int i = 0; i < valores.size(); ++i)
        r << QString(valores.at(i))
                 .replace(QLatin1Char('~'), sep)
                 .leftJustified(anchos.at(i), u' ', true);
    return r.join(QLatin1Char(' '));
}

QString Importe(const QString& numero, const QString& sep) {
    return Formato(numero.toDouble(), QStringLiteral("00.00"), sep);
}

} // namespace

class TestImpresion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void listado_data() { FilasDeMotoresYSeparadores(); }
    // Item 1 line by line; item 2, with no concept above 0, has no liquidation block; item 0
    // shows the totals of liqcero, without its internal rows.
    void listado() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        auto ts = Armada(static_cast<Motor>(motor));
        ts->conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update itemliq set total = 0 where interno = ? and iditem = "
                                     "2"),
                      {kOp});
        SeparadorDecimalScope separador(sep);
        ImpresionLiquidacion imp(ts->ctx(), QStringLiteral("PC-1#10"));
        QVERIFY(imp.pr_ImprimirLiq(1, 2, kOp, true));
        const QList<int> liq{30, 15, 5, 15, 15, 10};
        const QList<int> sub{15, 15, 15, 15, 15};
        // FOB 9000 + freight 455.90 + insurance 64.63 = 9520.53; the printed base of VAT
        // takes the position's duty 16 % (1523.2848) and fee 3 % (285.6159), whatever the
        // advantages: 9520.53 + 1523.28 + 285.62 = 11329.43. 011: 3 % of 9520.53 = 285.6159;
        // 422: 5 % of 9520.53 + 285.62 = 9806.15 is 490.3075; 424 and 900: 3 % of 9806.15 =
        // 294.1845; 601: 2 % of FOB 9000 = 180.
        const auto texto = [&](const QByteArray& t) {
            return QString::fromUtf8(t).replace(u'~', sep).split(u'\n');
        };
        const QString g(80, u'-');
        const QStringList esperado =
            texto("\n" + QString(79, u'.').toLatin1() +
                  "\n\n   ITEM 001\n    NCM 8471.30.12.100M -  UNID ESTA 07\n CANTIDAD 20~00\n\n"
                  "    FOB 9000~00 -  AJUS INC 00~00\n  FLETE 455~90 -  AJUS DED 00~00\n"
                  "   SEGURO 64~63 -  KG NETO 36~00\n\n EST MERC 1\n\nPAIS ORIG 310\n\n"
                  "PAIS PROC 310\n\nBase Imponible: 9520~53 - Base Iva: 11329~43\n\n"
                  "------------\nLIQUIDACION:") +
            QStringList{
                Columnas({"Conceptos", "Porc. %", "P/C/G", "Base Imponible", "Importe", "Motivos"},
                         liq, sep),
                Columnas({g, g, g, g, g, g}, liq, sep),
                Columnas({"(011) TASA DE ESTADISTICA", "03~00", "P", "9520~53", "285~62", ""}, liq,
                         sep),
                Columnas({"(422) I.V.A. ADICIONAL", "05~00", "P", "9806~15", "490~31", ""}, liq,
                         sep),
                Columnas({"(424) ANTICIPO IMPUESTO A LAS GANANCIAS", "03~00", "P", "9806~15",
                          "294~18", ""},
                         liq, sep),
                Columnas({"(601) REINTEGRO", "02~00", "C", "9000~00", "180~00", ""}, liq, sep),
                Columnas({"(900) INGRESOS BRUTOS", "03~00", "P", "9806~15", "294~18", ""}, liq,
                         sep)} +
            texto("\n---------\nVENTAJAS:\n\nACEMERCOSUR\n\n----------------------\n"
                  "INFORMACIÓN ADICIONAL:\n") +
            QStringList{Columnas({"Información", "Valor"}, {30, 30}, sep),
                        Columnas({g, g}, {30, 30}, sep),
                        Columnas({"ORIGEN", "O`Higgins 1"}, {30, 30}, sep)} +
            texto("\n---------\nSUBITEMS:\n---------\n") +
            QStringList{
                Columnas({"Cantidad", "Unitario", "FobTotal", "Estadistica", "Cant. Especifico"},
                         sub, sep),
                Columnas({g, g, g, g, g}, sub, sep),
                Columnas({"20~00", "450~0000", "9000~00", "20~00", "00~00"}, sub, sep)};
        const QStringList lineas = imp.LineasDeTabla();
        QCOMPARE(lineas.mid(0, esperado.size()), esperado);
        QVERIFY(lineas.at(esperado.size()).startsWith(QLatin1String("SUFIJO: AA(LENOVO)-")));
        const QStringList item2 = lineas.mid(lineas.indexOf(QStringLiteral("   ITEM 002")));
        QCOMPARE(item2.value(1), QStringLiteral("    NCM 6403.99.90.100T -  UNID ESTA 08"));
        QVERIFY(!item2.contains(QStringLiteral("LIQUIDACION:")));
        QCOMPARE(imp.Listados().size(), 1);
        QCOMPARE(imp.Listados().first().lineas, lineas);

        // Item 0: the two sums and every total of liqcero.
        QVERIFY(imp.pr_ImprimirLiq(0, 0, kOp, false));
        QStringList cero{"Interno: " + kOp};
        for (const char* codigo : {"###baseimp", "###baseiva"}) {
            const QStringList v = Filas(*ts,
                                        "select valor from liqcero where interno = ? and "
                                        "idconcepto = ?",
                                        {kOp, QString::fromLatin1(codigo)});
            QCOMPARE(v.size(), 1);
            cero << (codigo[8] == 'm' ? QStringLiteral("Base Imponible: ")
                                      : QStringLiteral("Base Iva: ")) +
                        Importe(v.first(), sep);
        }
        cero << "------------"
             << "LIQUIDACION:" << QStringLiteral("Conceptos").leftJustified(41) + " Importe"
             << QString(15, u'-') + ' ' + QString(26, u'-');
        for (const QString& f :
             Filas(*ts,
                   "select l.idconcepto, c.descripcion, l.valor from liqcero l join "
                   "conceptos c on c.id = l.idconcepto where l.interno = ? and "
                   "l.idconcepto not like '###%' order by l.idconcepto",
                   {kOp})) {
            const QStringList c = f.split(u'|');
            cero << (" (" + c[0] + ") " + c[1]).leftJustified(41, u' ', true) + ' ' +
                        Importe(c[2], sep);
        }
        QCOMPARE(cero.size(), 5 + 2 + 7);
        QCOMPARE(imp.LineasDeTabla(), cero);
        QCOMPARE(imp.Listados().size(), 1);
        QVERIFY(imp.Listados().first().itemCero);
        QVERIFY(imp.Listados().first().etiquetas.contains(
            qMakePair(QStringLiteral("LbPaisProc"), QStringLiteral("310"))));
        QCOMPARE(ts->dialogos().todo(), QStringList());
    }

    void puestosYPantalla_data() { FilasDeMotoresYSeparadores(); }
    // Two workstations print at once without mixing their lines; the screen refuses a reversed
    // range and leaves its lines; the screen and the preview as a clerk sees them.
    void puestosYPantalla() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        auto ts = Armada(static_cast<Motor>(motor));
        SeparadorDecimalScope separador(sep);
        ImpresionLiquidacion a(ts->ctx(), QStringLiteral("PC-1#10"));
        ImpresionLiquidacion b(ts->ctx(), QStringLiteral("PC-2#20"));
        QVERIFY(a.pr_ImprimirLiq(1, 1, kOp, false));
        QVERIFY(b.pr_ImprimirLiq(2, 3, kOp, false));
        QVERIFY(a.pr_ImprimirLiq(1, 1, kOp, false));
        const QStringList deA = a.LineasDeTabla(), deB = b.LineasDeTabla();
        QCOMPARE(deA.count(QString(79, u'.')), 1);
        QCOMPARE(deA.value(3), QStringLiteral("   ITEM 001"));
        QCOMPARE(deB.count(QString(79, u'.')), 2);
        QCOMPARE(deB.value(3), QStringLiteral("   ITEM 002"));
        QCOMPARE(Filas(*ts, "select puesto, count(*) from tabla group by puesto order by puesto"),
                 (QStringList{"PC-1#10|" + QString::number(deA.size()),
                              "PC-2#20|" + QString::number(deB.size())}));

        FrmPrintItem frm(ts->ctx(), {{"interno", kOp},
                                     {"archivoPdf", ts->directorio() + QStringLiteral("f.pdf")}});
        auto* desde = frm.findChild<QComboBox*>(QStringLiteral("cbDesde"));
        auto* hasta = frm.findChild<QComboBox*>(QStringLiteral("CbHasta"));
        QCOMPARE(desde->count(), 6); // items 0 to 5
        QCOMPARE(hasta->currentText(), QStringLiteral("5"));
        desde->setCurrentText(QStringLiteral("2"));
        hasta->setCurrentText(QStringLiteral("3"));
        frm.findChild<QPushButton*>(QStringLiteral("CmdPdf"))->click();
        QVERIFY(QFileInfo(ts->directorio() + QStringLiteral("f.pdf")).size() > 0);
        QCOMPARE(frm.findChild<QLabel*>(QStringLiteral("LbDesc"))->text(),
                 QStringLiteral("Item: 03 de 03"));
        ImpresionLiquidacion local(ts->ctx());
        const QStringList antes = local.LineasDeTabla();
        QCOMPARE(antes.mid(0, 4), deB.mid(0, 4));
        desde->setCurrentText(QStringLiteral("3"));
        hasta->setCurrentText(QStringLiteral("2"));
        frm.findChild<QPushButton*>(QStringLiteral("CmdPrint"))->click();
        QCOMPARE(ts->dialogos().mensajes(),
                 QStringList{QStringLiteral("El campo DESDE no puede ser mayor que HASTA")});
        QCOMPARE(ts->dialogos().registro().first().icono, Dialogos::Icono::Exclamacion);
        QCOMPARE(local.LineasDeTabla(), antes);
        QCOMPARE(a.LineasDeTabla(), deA);
        // No such printer: said, nothing printed.
        ts->ctx().config().DEVICENAME = QStringLiteral("IMPRESORA-X");
        hasta->setCurrentText(QStringLiteral("3"));
        frm.findChild<QPushButton*>(QStringLiteral("CmdPrint"))->click();
        QCOMPARE(ts->dialogos().mensajes().value(1),
                 QStringLiteral("No se encontró la impresora IMPRESORA-X."));
        QCOMPARE(local.LineasDeTabla().value(3), QStringLiteral("   ITEM 003"));

        // The preview, modal, of items 0 to 1.
        GuardarPantallazo(QStringLiteral("FrmPrintItem"), &frm);
        desde->setCurrentText(QStringLiteral("0"));
        hasta->setCurrentText(QStringLiteral("1"));
        frm.findChild<QCheckBox*>(QStringLiteral("ChVistaPrel"))->setChecked(true);
        bool vista = false;
        QTimer::singleShot(0, this, [&] {
            auto* d = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
            if (!d)
                return;
            vista = true;
            d->resize(900, 680);
            QTest::qWait(50);
            GuardarPantallazo(QStringLiteral("FrmPrintItem-vista"), d);
            d->reject();
        });
        frm.findChild<QPushButton*>(QStringLiteral("CmdPrint"))->click();
        QVERIFY(vista);
        // A failure of the store: reported with its section, the lines of the last print kept.
        const QStringList impresas = local.LineasDeTabla();
        QCOMPARE(impresas.value(0), QStringLiteral("Interno: ") + kOp);
        ts->conexion(QStringLiteral("INTERNOS")).Ejecutar(QStringLiteral("drop table iteminfo"));
        frm.findChild<QPushButton*>(QStringLiteral("CmdPrint"))->click();
        QVERIFY2(
            QRegularExpression(
                "iteminfo.*\\n-?\\d+ - seccion \\[korven\\.frmprintitem\\.pr_imprimirliq\\]::$",
                QRegularExpression::DotMatchesEverythingOption)
                .match(ts->dialogos().mensajes().value(2))
                .hasMatch(),
            qPrintable(ts->dialogos().mensajes().value(2)));
        QCOMPARE(local.LineasDeTabla(), impresas);
    }

    void pdf_data() { FilasDeMotoresYSeparadores(); }
    // korven-admin imprimir: the PDF read as text shows item 0's totals and every item's
    // liquidation rows as the stores hold them.
    void pdf() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        auto ts = Armada(static_cast<Motor>(motor));
        ts->AgregarConfiguracion(QString());
        SeparadorDecimalScope separador(sep);
        const QString archivo = ts->directorio() + QStringLiteral("liq.pdf");
        QString salida, errores;
        QTextStream out(&salida), err(&errores);
        AdminImpresion admin(out, err, ts->directorio(), ts->directorio() + QStringLiteral("aj"));
        QCOMPARE(admin.Ejecutar({kOp, "--pdf", archivo, "--config", ts->stores().parametersPath()}),
                 AdminImpresion::Correcto);
        out.flush();
        err.flush();
        QCOMPARE(salida, QStringLiteral("Liquidación del interno %1 guardada en %2.\n")
                             .arg(kOp, QDir::toNativeSeparators(archivo)));
        QCOMPARE(errores, QString());
        QCOMPARE(AdminImpresion(out, err, ts->directorio(), QString())
                     .Ejecutar({kOp, "--pdf", archivo, "--desde", "x"}),
                 AdminImpresion::Uso);

        QString error;
        const QString texto = TextoDePdf(archivo, &error);
        QVERIFY2(!texto.isEmpty(), qPrintable(error));
        const auto tiene = [&](const QString& patron) { return TieneLinea(texto, patron); };
        const auto num = [&](const QString& v) {
            return QRegularExpression::escape(Importe(v, sep));
        };
        QVERIFY(tiene("Interno: " + kOp));
        for (const QString& id :
             Filas(*ts, "select id from item where interno = ? and id > 0", {kOp}))
            QVERIFY2(tiene("ITEM " + id.rightJustified(3, u'0')), qPrintable(id));
        for (const QString& f :
             Filas(*ts, "select idconcepto, valor from liqcero where interno = ? order by 1",
                   {kOp})) {
            const QStringList c = f.split(u'|');
            const QString patron = c[0] == "###baseimp" ? "Base Imponible: " + num(c[1])
                                   : c[0] == "###baseiva"
                                       ? "Base Iva: " + num(c[1])
                                       : "\\(" + c[0] + "\\) [^\\n]*\\s" + num(c[1]);
            if (!c[0].startsWith("###") || c[0].startsWith("###base"))
                QVERIFY2(tiene(patron), qPrintable(patron + "\n" + texto));
        }
        int filas = 0;
        for (const QString& f : Filas(*ts,
                                      "select idconceptos, porcentaje, pgc, baseimp, total from "
                                      "itemliq where interno = ? and total > 0 order by iditem, "
                                      "idconceptos",
                                      {kOp})) {
            const QStringList c = f.split(u'|');
            const QString patron = "\\(" + c[0] + "\\)[^\\n]*\\s" + num(c[1]) + "\\s+" + c[2] +
                                   "\\s+" + num(c[3]) + "\\s+" + num(c[4]);
            QVERIFY2(tiene(patron), qPrintable(patron + "\n" + texto));
            ++filas;
        }
        QVERIFY(filas >= 20);
    }
};

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestVerItem, TestImpresion>(argc, argv);
}

#include "test_impresion.moc"
