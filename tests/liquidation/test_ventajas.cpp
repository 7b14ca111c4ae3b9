// The open lists of an item: advantages and information added and removed on item 0 and on a
// normal item, the concept of the liquidation added or modified by hand, and the two lists of
// the quote; on both engines, the screens under both decimal separators ("#" in a text is the
// separator). The Operation V-1 has items 0 to 3; V-2 has the same numbers and must not move.

#include "assembly/FixtureArmado.h"
#include "header/PantallasCaratula.h"
#include "liquidation/FrmAdCon.h"
#include "liquidation/FrmListaPresupuesto.h"
#include "liquidation/ListasItem.h"
#include "liquidation/PantallasLiquidacion.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kI = QStringLiteral("V-1");

std::unique_ptr<TestStores> Stores(Motor motor, const QString& filas) {
    auto ts = std::make_unique<TestStores>(motor);
    PrepararArmado(*ts);
    TablasOperacion(*ts, kI, QStringLiteral("item:id,lman|0,|1,|2,|3,\n") + filas);
    TablasOperacion(*ts, QStringLiteral("V-2"),
                    QStringLiteral("item:id,lman|0,|1,M\nitemventaja:iditem,idventaja|1,"
                                   "AUTOLIQLIBREIMP|0,BKREDUCCION"));
    return ts;
}

// The lists of V-1 as "item|code" (information "item|code|value"), then "lman:" and the items
// marked; V-2 must keep its two advantages and its mark.
QString Estado(TestStores& ts) {
    const QStringList v2 =
        Filas(ts, QStringLiteral("select iditem, idventaja from itemventaja where interno = "
                                 "'V-2' union all select id, lman from item where interno = "
                                 "'V-2' and lman = 'M' order by 1, 2"));
    if (v2 != QStringList{"0|BKREDUCCION", "1|AUTOLIQLIBREIMP", "1|M"})
        return QStringLiteral("V-2 cambio: ") + v2.join(QLatin1Char(' '));
    return (Filas(ts, QStringLiteral("select iditem, idventaja from itemventaja where interno = "
                                     "'V-1' order by iditem, idventaja")) +
            Filas(ts, QStringLiteral("select iditem, idinfo, valor from iteminfo where interno = "
                                     "'V-1' order by iditem, idinfo")) +
            QStringList{QStringLiteral("lman:")} +
            Filas(ts, QStringLiteral("select id from item where interno = 'V-1' and lman = 'M' "
                                     "order by id")))
        .join(QLatin1Char(' '));
}

struct Caso {
    const char* n;
    const char* lista; // "V" advantages, "I" information
    int item;
    const char* codigo; // picked, or removed
    const char* antes;  // rows of V-1 as in TablasOperacion
    const char* valor;  // the value typed for information; "-" cancels the box
    bool resultado;
    const char* estado;
    QStringList dichos; // "title|icon|text"; "*" stands for the store's own text
};

void Comparar(const QStringList& vistos, const QStringList& dichos) {
    QCOMPARE(vistos.size(), dichos.size());
    for (int i = 0; i < vistos.size(); ++i) {
        const QStringList partes = dichos[i].split(QLatin1Char('*'));
        if (partes.size() < 2 || !vistos[i].startsWith(partes.first()) ||
            !vistos[i].endsWith(partes.last()))
            QCOMPARE(vistos[i], dichos[i]);
    }
}

} // namespace

Q_DECLARE_METATYPE(Caso)

class TestVentajas : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agregar_data();
    void agregar();
    void eliminar_data();
    void eliminar();
    void eliminarConcepto_data() { FilasDeMotores(); }
    void eliminarConcepto();
    void elegirEnPantalla_data() { FilasDeMotores(); }
    void elegirEnPantalla();
    void concepto_data();
    void concepto();
    void listasPresupuesto_data();
    void listasPresupuesto();
};

const char* const kAvP = "itemventaja:iditem,idventaja";
const char* const kInf = "iteminfo:iditem,idinfo,valor";

void TestVentajas::agregar_data() {
    const QString yaEsta = QStringLiteral("KORVEN|3|Este item ya esta ingresado.");
    CasosPorMotor<Caso>({
        {"item 0 a todos, item 2 ya la tenia",
         "V",
         0,
         "BKREDUCCION",
         "itemventaja:iditem,idventaja|2,BKREDUCCION",
         "",
         true,
         "0|BKREDUCCION 1|BKREDUCCION 2|BKREDUCCION 3|BKREDUCCION lman:",
         {}},
        {"item normal", "V", 2, "MUESTRAEXPO", "", "", true, "2|MUESTRAEXPO lman:", {}},
        {"ya esta",
         "V",
         2,
         "BKREDUCCION",
         "itemventaja:iditem,idventaja|2,BKREDUCCION",
         "",
         false,
         "2|BKREDUCCION lman:",
         {yaEsta}},
        {"autoliquidacion en item 0 marca los items que toca",
         "V",
         0,
         "AUTOLIQLIBREIMP",
         "itemventaja:iditem,idventaja|1,AUTOLIQLIBREIMP",
         "",
         true,
         "0|AUTOLIQLIBREIMP 1|AUTOLIQLIBREIMP 2|AUTOLIQLIBREIMP 3|AUTOLIQLIBREIMP lman: 0 2 3",
         {}},
        {"autoliquidacion en un item",
         "V",
         3,
         "AUTOLIQLIBREEXP",
         "",
         "",
         true,
         "3|AUTOLIQLIBREEXP lman: 3",
         {}},
        {"nada elegido", "V", 1, "", "", "", false, "lman:", {}},
        {"informacion con su valor",
         "I",
         1,
         "DJAI",
         "",
         "O'Brien 12/26",
         true,
         "1|DJAI|O'Brien 12/26 lman:",
         {"KORVEN|0|Ingrese el Valor de: NUMERO DE DECLARACION JURADA ANTICIPADA"}},
        {"informacion en item 0",
         "I",
         0,
         "CERTORIGEN",
         "iteminfo:iditem,idinfo,valor|3,CERTORIGEN,B-7",
         "A-1",
         true,
         "0|CERTORIGEN|A-1 1|CERTORIGEN|A-1 2|CERTORIGEN|A-1 3|CERTORIGEN|B-7 lman:",
         {"KORVEN|0|Ingrese el Valor de: NUMERO DE CERTIFICADO DE ORIGEN"}},
        {"informacion ya esta",
         "I",
         3,
         "CERTORIGEN",
         "iteminfo:iditem,idinfo,valor|3,CERTORIGEN,B-7",
         "",
         false,
         "3|CERTORIGEN|B-7 lman:",
         {yaEsta}},
        {"valor cancelado",
         "I",
         1,
         "DJAI",
         "",
         "-",
         false,
         "lman:",
         {"KORVEN|0|Ingrese el Valor de: NUMERO DE DECLARACION JURADA ANTICIPADA"}},
        // The items' table gone after item 0 took its row: that row goes back too.
        {"error del almacen",
         "V",
         0,
         "AUTOLIQLIBREEXP",
         "",
         "",
         false,
         "",
         {"KORVEN|1|* - seccion[CmdAgregarVen.FrmVerItem.KORVEN]::"}},
    });
}

void TestVentajas::agregar() {
    MOTOR_O_SALTAR();
    QFETCH(Caso, c);
    auto ts = Stores(static_cast<Motor>(motor), QString::fromUtf8(c.antes));
    const bool informacion = QByteArray(c.lista) == "I";
    QString listaPedida;
    const QString codigo = QString::fromUtf8(c.codigo);
    ts->ctx().pantallas().Registrar(
        QStringLiteral("FrmVentajas"), [&](AppContext& ctx, const QVariantMap& args) {
            listaPedida = args.value(QStringLiteral("lista")).toString();
            ctx.VentajaElegida = codigo;
            return QVariant(codigo);
        });
    ts->ctx().VentajaElegida = QStringLiteral("ANTERIOR");
    if (QByteArray(c.valor) == "-")
        ts->dialogos().ResponderCancelar();
    else if (*c.valor)
        ts->dialogos().ResponderTexto(QString::fromUtf8(c.valor));
    const bool roto = QByteArray(c.n) == "error del almacen";
    if (roto)
        ts->conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("alter table item rename to item_roto"));
    const bool r = ListasItem(ts->ctx()).Agregar(
        informacion ? ListasItem::Lista::Informacion : ListasItem::Lista::Ventajas, kI, c.item);
    if (roto) {
        ts->conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("alter table item_roto rename to item"));
        QCOMPARE(Estado(*ts), QStringLiteral("lman:"));
    } else {
        QCOMPARE(Estado(*ts), QString::fromUtf8(c.estado));
    }
    QCOMPARE(r, c.resultado);
    QCOMPARE(listaPedida, informacion ? QStringLiteral("informacion") : QStringLiteral("ventajas"));
    QCOMPARE(ts->ctx().VentajaElegida, codigo);
    QVERIFY(ts->dialogos().guionAgotado());
    Comparar(Dichos(*ts), c.dichos);
}

void TestVentajas::eliminar_data() {
    CasosPorMotor<Caso>({
        {"ventaja de item 0 en un item",
         "V",
         1,
         "BKREDUCCION",
         "itemventaja:iditem,idventaja|0,BKREDUCCION|1,BKREDUCCION",
         "",
         false,
         "0|BKREDUCCION 1|BKREDUCCION lman:",
         {"KORVEN|3|No se puede eliminar esta Ventaja. Debe eliminar la misma en el ITEM 0 "
          "(cero)"}},
        {"informacion de item 0 en un item",
         "I",
         2,
         "DJAI",
         "iteminfo:iditem,idinfo,valor|0,DJAI,X|2,DJAI,X",
         "",
         false,
         "0|DJAI|X 2|DJAI|X lman:",
         {"KORVEN|3|No se puede eliminar esta Información. Debe eliminar el mismo en el ITEM 0 "
          "(cero)"}},
        {"en item 0 de todos",
         "V",
         0,
         "BKREDUCCION",
         "itemventaja:iditem,idventaja|0,BKREDUCCION|1,BKREDUCCION|3,BKREDUCCION|3,MUESTRAEXPO",
         "",
         true,
         "3|MUESTRAEXPO lman:",
         {}},
        {"informacion en item 0 de todos",
         "I",
         0,
         "DJAI",
         "iteminfo:iditem,idinfo,valor|0,DJAI,X|2,DJAI,Y|2,CERTORIGEN,Z",
         "",
         true,
         "2|CERTORIGEN|Z lman:",
         {}},
        {"solo el item",
         "V",
         1,
         "MUESTRAEXPO",
         "itemventaja:iditem,idventaja|1,MUESTRAEXPO|2,MUESTRAEXPO",
         "",
         true,
         "2|MUESTRAEXPO lman:",
         {}},
        {"autoliquidacion desmarca el item",
         "V",
         2,
         "AUTOLIQLIBREIMP",
         "itemventaja:iditem,idventaja|2,AUTOLIQLIBREIMP|3,AUTOLIQLIBREIMP",
         "",
         true,
         "3|AUTOLIQLIBREIMP lman: 3",
         {}},
    });
}

void TestVentajas::eliminar() {
    MOTOR_O_SALTAR();
    QFETCH(Caso, c);
    auto ts = Stores(static_cast<Motor>(motor), QString::fromUtf8(c.antes));
    ts->conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update item set lman = 'M' where interno = ? and id in (?, 3)"),
                  {kI, c.item});
    const bool informacion = QByteArray(c.lista) == "I";
    const bool r = ListasItem(ts->ctx()).Eliminar(informacion ? ListasItem::Lista::Informacion
                                                              : ListasItem::Lista::Ventajas,
                                                  kI, c.item, QString::fromUtf8(c.codigo));
    // Every case starts with its item (and item 3) marked; the mark goes only with the two
    // self-assessment advantages.
    QString esperado = QString::fromUtf8(c.estado);
    if (!QByteArray(c.codigo).startsWith("AUTOLIQ"))
        esperado += c.item == 3 ? QStringLiteral(" 3") : QStringLiteral(" %1 3").arg(c.item);
    QCOMPARE(Estado(*ts), esperado);
    QCOMPARE(r, c.resultado);
    Comparar(Dichos(*ts), c.dichos);
}

void TestVentajas::eliminarConcepto() {
    MOTOR_O_SALTAR();
    auto ts = Stores(static_cast<Motor>(motor),
                     QStringLiteral("itemliq:iditem,idconceptos,total|1,011,5|1,010,7|2,011,3"));
    ListasItem l(ts->ctx());
    QVERIFY(!l.EliminarConcepto(kI, 3, QStringLiteral("011")));
    QVERIFY(!ts->ctx().LiquidacionPendiente);
    QVERIFY(l.EliminarConcepto(kI, 1, QStringLiteral("011")));
    QVERIFY(ts->ctx().LiquidacionPendiente);
    QCOMPARE(Filas(*ts, QStringLiteral("select iditem, idconceptos from itemliq order by 1, 2")),
             (QStringList{"1|010", "2|011"}));
}

// The picker as the clerk sees it, opened by the add flow: lines of code and description,
// Enter on the third line, and Escape.
void TestVentajas::elegirEnPantalla() {
    MOTOR_O_SALTAR();
    auto ts = Stores(static_cast<Motor>(motor), {});
    RegistrarPantallasLiquidacion(ts->ctx().pantallas());
    ListasItem l(ts->ctx());
    QStringList lineas;
    AlAbrirse(QStringLiteral("FrmVentajas"), [&](QWidget* w) {
        auto* lst = Control<QListWidget>(w, "Lst");
        for (int i = 0; i < 3; ++i)
            lineas << lst->item(i)->text();
        if (QTest::currentDataTag() == QByteArray("sqlite"))
            GuardarPantallazo(QStringLiteral("FrmVentajas"), w);
        QTest::keyClick(lst, Qt::Key_Down);
        QTest::keyClick(lst, Qt::Key_Down);
        QTest::keyClick(lst, Qt::Key_Return);
    });
    QVERIFY(l.Agregar(ListasItem::Lista::Ventajas, kI, 2));
    QCOMPARE(lineas, (QStringList{"ACE35CHILE      PREFERENCIA ACE 35 CHILE",
                                  "ACEMERCOSUR     PREFERENCIA ACUERDO MERCOSUR",
                                  "AUTOLIQLIBREEXP AUTOLIQUIDACION LIBRE EXPORTACION"}));
    QCOMPARE(ts->ctx().VentajaElegida, QStringLiteral("AUTOLIQLIBREEXP"));
    AlAbrirse(QStringLiteral("FrmVentajas"),
              [](QWidget* w) { QTest::keyClick(Control<QListWidget>(w, "Lst"), Qt::Key_Escape); });
    QVERIFY(!l.Agregar(ListasItem::Lista::Ventajas, kI, 1));
    QCOMPARE(ts->ctx().VentajaElegida, QString());
    QCOMPARE(Estado(*ts), QStringLiteral("2|AUTOLIQLIBREEXP lman: 2"));
    QCOMPARE(Dichos(*ts), QStringList());
}

// FrmAdCon on item 1: a = mode|concept code|pgc|rate typed|base typed|motive key ("F6" lists
// the motives) ; existing rows of item 1 as code,total,valor (after "+", written once the screen
// is open); the total the screen shows; the message; the item's rows afterwards as
// code|concept|pgc|motive|rate|rateB|base|total|valor, or "=" when untouched.
void TestVentajas::concepto_data() {
    QTest::addColumn<int>("motor");
    for (const char* c : {"sep", "a", "filas", "valor", "dicho", "esperado"})
        QTest::addColumn<QString>(c);
    auto fila = [](const char* n, const char* a, const char* filas, const char* valor,
                   const char* dicho, const char* esperado) {
        for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
            for (const char* s : {",", "."})
                QTest::addRow("%s %s %s", n, m == Motor::SQLite ? "sqlite" : "postgresql", s)
                    << static_cast<int>(m) << QString::fromLatin1(s) << QString::fromUtf8(a)
                    << QString::fromUtf8(filas) << QString::fromUtf8(valor)
                    << QString::fromUtf8(dicho) << QString::fromUtf8(esperado);
    };
    // 1234.5 x 3 / 100 = 37.035, shown 37.04.
    fila("nuevo se inserta con valor 0", "1|011|P|3|1234#5|", "010,50,0", "37#04", "",
         "010|DERECHO DE IMPORTACION|P||10|10|500|50|0 "
         "011|TASA DE ESTADISTICA|P||3|3|1234.5|37.04|0");
    fila("en cero se actualiza con valor 1", "1|011|C|2#5|80|", "010,50,0|011,0,0", "02#00", "",
         "010|DERECHO DE IMPORTACION|P||10|10|500|50|0 "
         "011|TASA DE ESTADISTICA|C||2.5|2.5|80|2|1");
    fila("ya ingresado", "1|011|P|3|100|", "010,50,0+011,9,0", "03#00",
         "KORVEN|3|El concepto ya esta ingresado en la liquidación", "=");
    fila("sin concepto", "1||P|3|100|", "010,50,0", "03#00",
         "KORVEN|3|Debe seleccionar un concepto de la lista.", "=");
    fila("G sin motivo", "1|011|G|3|100|", "010,50,0", "03#00",
         "KORVEN|3|Usted selecionó como Obligacion G, entonces debe seleccionar un MOTIVO", "=");
    fila("G con motivo de la lista", "1|011|G|3|100|F6", "010,50,0", "03#00", "",
         "010|DERECHO DE IMPORTACION|P||10|10|500|50|0 "
         "011|TASA DE ESTADISTICA|G|04|3|3|100|3|0");
    fila("motivo con otra obligacion", "1|011|P|3|100|F6", "010,50,0", "03#00",
         "KORVEN|3|Para seleccionar un MOTIVO, obligación debe estar como G",
         "010|DERECHO DE IMPORTACION|P||10|10|500|50|0 "
         "011|TASA DE ESTADISTICA|P||3|3|100|3|0");
    fila("porcentaje no numerico", "1|011|P|3x|100|", "010,50,0", "",
         "KORVEN|3|Debe seleccionar un PORCENTAJE válido", "=");
    fila("base no numerica", "1|011|P|3|1#2#3|", "010,50,0", "",
         "KORVEN|3|Debe seleccionar una BASE IMPONIBLE válida", "=");
    fila("total cero", "1|011|P|0|100|", "010,50,0", "00#00",
         "KORVEN|3|Total debe ser mayor a cero.", "=");
    // 500 x 12 / 100 = 60.
    fila("modificar", "2|010|P|12|500|", "010,50,1", "60#00", "",
         "010|DERECHO DE IMPORTACION|P||12|12|500|60|1");
    fila("modificar a G con motivo", "2|010|G|10|500|F6", "010,50,0", "50#00", "",
         "010|DERECHO DE IMPORTACION|G|04|10|10|500|50|1");
}

void TestVentajas::concepto() {
    MOTOR_O_SALTAR();
    QFETCH(QString, sep);
    QFETCH(QString, a);
    QFETCH(QString, filas);
    SeparadorDecimalScope separador(sep);
    const QStringList p = a.replace(QLatin1Char('#'), sep).split(QLatin1Char('|'));
    const QString filasAntes = filas.section(QLatin1Char('+'), 0, 0);
    const QString filasDespues = filas.section(QLatin1Char('+'), 1);
    auto tabla = [](const QString& f) {
        QString t = QStringLiteral(
            "itemliq:iditem,idconceptos,conceptos,pgc,motivo,porcentaje,porcentajeb,baseimp,total,"
            "valor");
        for (const QString& r : f.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
            const QStringList c = r.split(QLatin1Char(','));
            const bool d010 = c[0] == QLatin1String("010");
            t += QStringLiteral("|1,%1,%2,P,,%3,%3,%4,%5,%6")
                     .arg(c[0], d010 ? "DERECHO DE IMPORTACION" : "TASA DE ESTADISTICA",
                          d010 ? "10" : "3", d010 ? "500" : "100", c[1], c[2]);
        }
        return t;
    };
    auto ts = Stores(static_cast<Motor>(motor), tabla(filasAntes));
    // Another Operation holding 011 on its item 1 does not hide it here.
    TablasOperacion(*ts, QStringLiteral("V-2"),
                    QStringLiteral("itemliq:iditem,idconceptos,total|1,011,4"));
    RegistrarComponentesCaratula(ts->ctx().componentes());
    ts->ctx().pantallas().Registrar(
        QStringLiteral("FrmListado"), [](AppContext&, const QVariantMap& args) {
            const int i = args.value(QStringLiteral("descripciones"))
                              .toStringList()
                              .indexOf(QStringLiteral("MUESTRAS"));
            return QVariant(args.value(QStringLiteral("valores")).toStringList().value(i));
        });
    const QString antes = Filas(*ts, QStringLiteral("select * from itemliq order by interno, "
                                                    "iditem, idconceptos"))
                              .join(QLatin1Char(' '));
    const bool modificar = p[0] == QLatin1String("2");
    QVariantMap args{{QStringLiteral("interno"), kI},
                     {QStringLiteral("iditem"), 1},
                     {QStringLiteral("modo"), p[0].toInt()}};
    if (modificar) {
        const QVariantMap fila{
            {QStringLiteral("idconceptos"), QStringLiteral("010")},
            {QStringLiteral("conceptos"), QStringLiteral("DERECHO DE IMPORTACION")},
            {QStringLiteral("porcentaje"), 10.0},
            {QStringLiteral("baseimp"), 500.0},
            {QStringLiteral("total"), 50.0},
            {QStringLiteral("pgc"), QStringLiteral("P")},
            {QStringLiteral("motivo"), QString()}};
        args.insert(fila);
    }
    FrmAdCon f(ts->ctx(), args);
    Mostrar(f);
    auto* cb = Control<QComboBox>(f, "cbCONC");
    auto* id = Control<QComboBox>(f, "cbID");
    QCOMPARE(Control<QPushButton>(f, "Command1")->text(),
             modificar ? QStringLiteral("Modificar") : QStringLiteral("Agregar"));
    // To add, the list leaves out what the item carries with an amount.
    QCOMPARE(id->findText(QStringLiteral("010")) >= 0, modificar);
    QCOMPARE(cb->currentIndex() >= 0, modificar);
    if (!p[1].isEmpty())
        cb->setCurrentIndex(id->findText(p[1]));
    QCOMPARE(id->currentText(), p[1]);
    if (!filasDespues.isEmpty())
        TablasOperacion(*ts, kI, tabla(filasDespues));
    Control<QComboBox>(f, "cbPGC")->setCurrentText(p[2]);
    for (const auto& [campo, texto] : {std::pair{"txtPorc", p[3]}, std::pair{"txtBimp", p[4]}}) {
        auto* e = Control<QLineEdit>(f, campo);
        e->setFocus();
        e->selectAll();
        QTest::keyClick(e, Qt::Key_Backspace);
        QTest::keyClicks(e, texto);
    }
    QFETCH(QString, valor);
    QCOMPARE(Texto(&f, "TxtValor"), valor.replace(QLatin1Char('#'), sep));
    if (p[5] == QLatin1String("F6")) {
        auto* m = Control<QLineEdit>(f, "TxtMotivos");
        m->setFocus();
        QTest::keyClick(m, Qt::Key_F6);
    }
    QTest::keyClick(Control<QPushButton>(f, "Command1"), Qt::Key_Return);
    QFETCH(QString, dicho);
    QCOMPARE(Dichos(*ts), dicho.isEmpty() ? QStringList() : dicho.split(QLatin1Char('\n')));
    QFETCH(QString, esperado);
    const QString despues = Filas(*ts, QStringLiteral("select * from itemliq order by interno, "
                                                      "iditem, idconceptos"))
                                .join(QLatin1Char(' '));
    if (esperado == QLatin1String("=")) {
        if (filasDespues.isEmpty())
            QCOMPARE(despues, antes);
        QVERIFY(f.isVisible());
        QCOMPARE(f.result(), 0);
        QVERIFY(!ts->ctx().LiquidacionPendiente);
        if (p[2] == QLatin1String("G"))
            QCOMPARE(NombreFoco(), QStringLiteral("cbPGC"));
    } else {
        QCOMPARE(Filas(*ts, QStringLiteral("select idconceptos, conceptos, pgc, motivo, "
                                           "porcentaje, porcentajeb, baseimp, total, valor from "
                                           "itemliq where interno = 'V-1' and iditem = 1 order "
                                           "by idconceptos"))
                     .join(QLatin1Char(' ')),
                 esperado);
        QVERIFY(!f.isVisible());
        QCOMPARE(f.result(), static_cast<int>(QDialog::Accepted));
        QVERIFY(ts->ctx().LiquidacionPendiente);
    }
    if (QTest::currentDataTag() == QByteArray("nuevo se inserta con valor 0 sqlite ,"))
        GuardarPantallazo(QStringLiteral("FrmAdCon"), &f);
}

// Keys on FrmConceptos ("C") and FrmReferencias ("R"): "ins" opens the entry line, a text is
// typed, "enter" saves, "esc" cancels, "del" removes the row selected. Rows added (+) and
// removed (-), the message, and whether the entry line is still shown.
void TestVentajas::listasPresupuesto_data() {
    QTest::addColumn<int>("motor");
    for (const char* c : {"pantalla", "teclas", "cambio", "dicho"})
        QTest::addColumn<QString>(c);
    QTest::addColumn<bool>("entrada");
    auto fila = [](const char* n, const char* pantalla, const char* teclas, const char* cambio,
                   const char* dicho, bool entrada) {
        for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
            QTest::addRow("%s %s", n, m == Motor::SQLite ? "sqlite" : "postgresql")
                << static_cast<int>(m) << QString::fromLatin1(pantalla) << QString::fromUtf8(teclas)
                << QString::fromUtf8(cambio) << QString::fromUtf8(dicho) << entrada;
    };
    fila("concepto nuevo", "C", "ins|FLETE D'ORO|enter", "+FLETE D'ORO", "", false);
    fila("concepto repetido", "C", "ins|ACARREO|enter", "", "KORVEN|3|Ya existe este concepto.!",
         true);
    fila("concepto vacio", "C", "ins|   |enter", "",
         "KORVEN|3|Debe ingresar un Nombre valido para el nuevo concepto.", true);
    fila("entrada cancelada", "C", "ins|PEAJE|esc", "", "", false);
    fila("concepto borrado", "C", "del", "-ACARREO", "", false);
    fila("referencia nueva", "R", "ins|REMITO|enter", "+REMITO", "", false);
    fila("referencia repetida", "R", "ins|GUIA AEREA|enter", "",
         "KORVEN|3|Esta referencia ya existe", true);
    fila("referencia borrada", "R", "del", "-CONOCIMIENTO DE EMBARQUE", "", false);
}

void TestVentajas::listasPresupuesto() {
    MOTOR_O_SALTAR();
    QFETCH(QString, pantalla);
    QFETCH(QString, teclas);
    auto ts = Stores(static_cast<Motor>(motor), {});
    const bool conceptos = pantalla == QLatin1String("C");
    const QString sql = conceptos ? QStringLiteral("select concepto from conpresu")
                                  : QStringLiteral("select referencia from referencias");
    const QStringList antes = Filas(*ts, sql);
    std::unique_ptr<QDialog> f(conceptos ? static_cast<QDialog*>(new FrmConceptos(ts->ctx(), {}))
                                         : new FrmReferencias(ts->ctx(), {}));
    Mostrar(*f);
    QCOMPARE(f->windowTitle(),
             conceptos ? QStringLiteral("Conceptos") : QStringLiteral("Referencias"));
    auto* lista = Control<QListWidget>(f.get(), conceptos ? "LstConceptos" : "LstReferencias");
    QCOMPARE(lista->count(), antes.size());
    for (const QString& t : teclas.split(QLatin1Char('|'))) {
        if (t == QLatin1String("ins"))
            Tecla(Qt::Key_Insert);
        else if (t == QLatin1String("enter"))
            Tecla(Qt::Key_Return);
        else if (t == QLatin1String("esc"))
            Tecla(Qt::Key_Escape);
        else if (t == QLatin1String("del"))
            Tecla(Qt::Key_Delete);
        else
            Escribir(t);
        if (t == QLatin1String("ins"))
            QCOMPARE(Control<QLabel>(f.get(), "LbAyuda")->text(),
                     QStringLiteral("ENTER para Guardar ESCAPE para Cancelar"));
    }
    const QStringList despues = Filas(*ts, sql);
    QStringList cambio;
    for (const QString& r : despues)
        if (!antes.contains(r))
            cambio << QLatin1Char('+') + r;
    for (const QString& r : antes)
        if (!despues.contains(r))
            cambio << QLatin1Char('-') + r;
    QTEST(cambio.join(QLatin1Char(' ')), "cambio");
    QCOMPARE(lista->count(), despues.size());
    QFETCH(QString, dicho);
    QCOMPARE(Dichos(*ts), dicho.isEmpty() ? QStringList() : QStringList{dicho});
    QFETCH(bool, entrada);
    QCOMPARE(Control<QLineEdit>(f.get(), "TxtNuevo")->isVisible(), entrada);
    QVERIFY(f->isVisible());
}

QTEST_MAIN(TestVentajas)
#include "test_ventajas.moc"
