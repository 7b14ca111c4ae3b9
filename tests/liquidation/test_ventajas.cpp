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

// Cases written one a line as "name ; field ; field ..." (fields trimmed), each on both engines
// (column "f"); when asked, SQLite under "." and PostgreSQL under "," (column "sep"), so that
// both separators and both engines are crossed where a typed number reaches the store.
void Casos(const char* texto, bool separadores = false) {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("sep");
    QTest::addColumn<QStringList>("f");
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
        for (const QString& sep : QStringList{separadores && m == Motor::PostgreSQL ? "," : "."})
            for (const QString& l : QString::fromUtf8(texto).split(u'\n', Qt::SkipEmptyParts)) {
                QStringList f = l.split(u';');
                for (QString& x : f)
                    x = x.trimmed();
                QTest::addRow("%s %s%s", m == Motor::SQLite ? "sqlite" : "postgresql",
                              qPrintable(f.first()), separadores ? qPrintable(sep) : "")
                    << static_cast<int>(m) << sep << f;
            }
}

// The messages shown against those expected ("title|icon|text", several joined by "\n"); "*"
// in one stands for the store's own text.
void Comparar(const QStringList& vistos, const QString& esperados) {
    const QStringList dichos = esperados.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(vistos.size(), dichos.size());
    for (int i = 0; i < vistos.size(); ++i) {
        const QStringList partes = dichos[i].split(QLatin1Char('*'));
        if (partes.size() < 2 || !vistos[i].startsWith(partes.first()) ||
            !vistos[i].endsWith(partes.last()))
            QCOMPARE(vistos[i], dichos[i]);
    }
}

// V-1 with the rows of the list ("V" advantages as item,code, "I" information as
// item,code,value; "/" between rows).
std::unique_ptr<TestStores> ConLista(int motor, const QString& lista, const QString& filas) {
    const QString tabla = lista == QLatin1String("V")
                              ? QStringLiteral("itemventaja:iditem,idventaja|")
                              : QStringLiteral("iteminfo:iditem,idinfo,valor|");
    return Stores(static_cast<Motor>(motor),
                  filas.isEmpty() ? QString() : tabla + QString(filas).replace(u'/', u'|'));
}

ListasItem::Lista De(const QString& lista) {
    return lista == QLatin1String("V") ? ListasItem::Lista::Ventajas
                                       : ListasItem::Lista::Informacion;
}

const char* const kYaEsta = "KORVEN|3|Este item ya esta ingresado.";
const char* const kValorDJAI =
    "KORVEN|0|Ingrese el Valor de: NUMERO DE DECLARACION JURADA ANTICIPADA";

} // namespace

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

// name ; list ; item ; code picked ; rows before ; value typed ("-" cancels) ; answer ; rows
// after (see Estado) ; messages. "roto" has the items' table gone once item 0 took its row:
// that row goes back too.
void TestVentajas::agregar_data() {
    const QString t = QStringLiteral(R"(
item 0 a todos, item 2 ya la tenia ; V ; 0 ; BKREDUCCION ; 2,BKREDUCCION ; ; 1 ; 0|BKREDUCCION 1|BKREDUCCION 2|BKREDUCCION 3|BKREDUCCION lman: ;
ya esta ; V ; 2 ; BKREDUCCION ; 2,BKREDUCCION ; ; 0 ; 2|BKREDUCCION lman: ; YA
autoliquidacion en item 0 ; V ; 0 ; AUTOLIQLIBREIMP ; 1,AUTOLIQLIBREIMP ; ; 1 ; 0|AUTOLIQLIBREIMP 1|AUTOLIQLIBREIMP 2|AUTOLIQLIBREIMP 3|AUTOLIQLIBREIMP lman: 0 2 3 ;
autoliquidacion en un item ; V ; 3 ; AUTOLIQLIBREEXP ; ; ; 1 ; 3|AUTOLIQLIBREEXP lman: 3 ;
nada elegido ; V ; 1 ; ; ; ; 0 ; lman: ;
informacion con su valor ; I ; 1 ; DJAI ; ; O'Brien 12/26 ; 1 ; 1|DJAI|O'Brien 12/26 lman: ; DJAI
informacion en item 0 ; I ; 0 ; CERTORIGEN ; 3,CERTORIGEN,B-7 ; A-1 ; 1 ; 0|CERTORIGEN|A-1 1|CERTORIGEN|A-1 2|CERTORIGEN|A-1 3|CERTORIGEN|B-7 lman: ; KORVEN|0|Ingrese el Valor de: NUMERO DE CERTIFICADO DE ORIGEN
informacion ya esta ; I ; 3 ; CERTORIGEN ; 3,CERTORIGEN,B-7 ; ; 0 ; 3|CERTORIGEN|B-7 lman: ; YA
valor cancelado ; I ; 1 ; DJAI ; ; - ; 0 ; lman: ; DJAI
roto ; V ; 0 ; AUTOLIQLIBREEXP ; ; ; 0 ; lman: ; KORVEN|1|* - seccion[CmdAgregarVen.FrmVerItem.KORVEN]::
)")
                          .replace(QStringLiteral("; YA"), QLatin1String("; ") + kYaEsta)
                          .replace(QStringLiteral("; DJAI\n"),
                                   QLatin1String("; ") + kValorDJAI + QLatin1Char('\n'));
    Casos(t.toUtf8().constData());
}

void TestVentajas::agregar() {
    MOTOR_O_SALTAR();
    QFETCH(QStringList, f);
    auto ts = ConLista(motor, f[1], f[4]);
    QString listaPedida;
    ts->ctx().pantallas().Registrar(
        QStringLiteral("FrmVentajas"), [&](AppContext& ctx, const QVariantMap& args) {
            listaPedida = args.value(QStringLiteral("lista")).toString();
            ctx.VentajaElegida = f[3];
            return QVariant(f[3]);
        });
    if (f[5] == QLatin1String("-"))
        ts->dialogos().ResponderCancelar();
    else if (!f[5].isEmpty())
        ts->dialogos().ResponderTexto(f[5]);
    Conexion& c = ts->conexion(QStringLiteral("INTERNOS"));
    if (f[0] == QLatin1String("roto"))
        c.Ejecutar(QStringLiteral("alter table item rename to item_roto"));
    const bool r = ListasItem(ts->ctx()).Agregar(De(f[1]), kI, f[2].toLongLong());
    if (f[0] == QLatin1String("roto"))
        c.Ejecutar(QStringLiteral("alter table item_roto rename to item"));
    QCOMPARE(Estado(*ts), f[7]);
    QCOMPARE(r, f[6] == QLatin1String("1"));
    QCOMPARE(listaPedida, f[1] == QLatin1String("V") ? QStringLiteral("ventajas")
                                                     : QStringLiteral("informacion"));
    QVERIFY(ts->dialogos().guionAgotado());
    Comparar(Dichos(*ts), f[8]);
}

// name ; list ; item ; code removed ; rows before ; answer ; rows after ; message. Each case
// starts with its item and item 3 marked; the mark goes only with the two self-assessment
// advantages, from the item the removal was asked on.
void TestVentajas::eliminar_data() {
    Casos(R"(
ventaja de item 0 en un item ; V ; 1 ; BKREDUCCION ; 0,BKREDUCCION/1,BKREDUCCION ; 0 ; 0|BKREDUCCION 1|BKREDUCCION lman: 1 3 ; KORVEN|3|No se puede eliminar esta Ventaja. Debe eliminar la misma en el ITEM 0 (cero)
informacion de item 0 en un item ; I ; 2 ; DJAI ; 0,DJAI,X/2,DJAI,X ; 0 ; 0|DJAI|X 2|DJAI|X lman: 2 3 ; KORVEN|3|No se puede eliminar esta Información. Debe eliminar el mismo en el ITEM 0 (cero)
en item 0 de todos ; V ; 0 ; BKREDUCCION ; 0,BKREDUCCION/1,BKREDUCCION/3,BKREDUCCION/3,MUESTRAEXPO ; 1 ; 3|MUESTRAEXPO lman: 0 3 ;
informacion en item 0 de todos ; I ; 0 ; DJAI ; 0,DJAI,X/2,DJAI,Y/2,CERTORIGEN,Z ; 1 ; 2|CERTORIGEN|Z lman: 0 3 ;
solo el item ; V ; 1 ; MUESTRAEXPO ; 1,MUESTRAEXPO/2,MUESTRAEXPO ; 1 ; 2|MUESTRAEXPO lman: 1 3 ;
autoliquidacion desmarca el item ; V ; 2 ; AUTOLIQLIBREIMP ; 2,AUTOLIQLIBREIMP/3,AUTOLIQLIBREIMP ; 1 ; 3|AUTOLIQLIBREIMP lman: 3 ;
autoliquidacion en item 0 ; V ; 0 ; AUTOLIQLIBREEXP ; 0,AUTOLIQLIBREEXP/3,AUTOLIQLIBREEXP ; 1 ; lman: 3 ;
)");
}

void TestVentajas::eliminar() {
    MOTOR_O_SALTAR();
    QFETCH(QStringList, f);
    auto ts = ConLista(motor, f[1], f[4]);
    ts->conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update item set lman = 'M' where interno = ? and id in (?, 3)"),
                  {kI, f[2].toLongLong()});
    const bool r = ListasItem(ts->ctx()).Eliminar(De(f[1]), kI, f[2].toLongLong(), f[3]);
    QCOMPARE(Estado(*ts), f[6]);
    QCOMPARE(r, f[5] == QLatin1String("1"));
    Comparar(Dichos(*ts), f[7]);
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

// FrmAdCon on item 1: name ; mode ; concept code ; pgc ; rate typed ; base typed ; motive key
// ("F6" lists the motives) ; rows of item 1 as code,total,valor (after "+", written once the
// screen is open) ; the total shown ; the message ; the item's rows afterwards as
// code|concept|pgc|motive|rate|rateB|base|total|valor, or "=" when untouched.
// 1234.5 x 3 / 100 = 37.035, shown 37.04; 80 x 2.5 / 100 = 2; 500 x 12 / 100 = 60.
void TestVentajas::concepto_data() {
    Casos(R"(
nuevo ; 1 ; 011 ; P ; 3 ; 1234#5 ; ; 010,50,0 ; 37#04 ; ; 010|DERECHO DE IMPORTACION|P||10|10|500|50|0 011|TASA DE ESTADISTICA|P||3|3|1234.5|37.04|0
en cero ; 1 ; 011 ; C ; 2#5 ; 80 ; ; 010,50,0|011,0,0 ; 02#00 ; ; 010|DERECHO DE IMPORTACION|P||10|10|500|50|0 011|TASA DE ESTADISTICA|C||2.5|2.5|80|2|1
ya ingresado ; 1 ; 011 ; P ; 3 ; 100 ; ; 010,50,0+011,9,0 ; 03#00 ; KORVEN|3|El concepto ya esta ingresado en la liquidación ; =
sin concepto ; 1 ; ; P ; 3 ; 100 ; ; 010,50,0 ; 03#00 ; KORVEN|3|Debe seleccionar un concepto de la lista. ; =
G sin motivo ; 1 ; 011 ; G ; 3 ; 100 ; ; 010,50,0 ; 03#00 ; KORVEN|3|Usted selecionó como Obligacion G, entonces debe seleccionar un MOTIVO ; =
G con motivo ; 1 ; 011 ; G ; 3 ; 100 ; F6 ; 010,50,0 ; 03#00 ; ; 010|DERECHO DE IMPORTACION|P||10|10|500|50|0 011|TASA DE ESTADISTICA|G|04|3|3|100|3|0
motivo sin G ; 1 ; 011 ; P ; 3 ; 100 ; F6 ; 010,50,0 ; 03#00 ; KORVEN|3|Para seleccionar un MOTIVO, obligación debe estar como G ; 010|DERECHO DE IMPORTACION|P||10|10|500|50|0 011|TASA DE ESTADISTICA|P||3|3|100|3|0
porcentaje no numerico ; 1 ; 011 ; P ; 3x ; 100 ; ; 010,50,0 ; ; KORVEN|3|Debe seleccionar un PORCENTAJE válido ; =
total cero ; 1 ; 011 ; P ; 0 ; 100 ; ; 010,50,0 ; 00#00 ; KORVEN|3|Total debe ser mayor a cero. ; =
modificar ; 2 ; 010 ; P ; 12 ; 500 ; ; 010,50,1 ; 60#00 ; ; 010|DERECHO DE IMPORTACION|P||12|12|500|60|1
)",
          true);
}

void TestVentajas::concepto() {
    MOTOR_O_SALTAR();
    QFETCH(QString, sep);
    QFETCH(QStringList, f);
    SeparadorDecimalScope separador(sep);
    for (QString& x : f)
        x.replace(QLatin1Char('#'), sep);
    const QStringList p = f.mid(1);
    const QString filas = p[6];
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
    FrmAdCon w(ts->ctx(), args);
    Mostrar(w);
    auto* cb = Control<QComboBox>(w, "cbCONC");
    auto* id = Control<QComboBox>(w, "cbID");
    // To add, the list leaves out what the item carries with an amount.
    QCOMPARE(id->findText(QStringLiteral("010")) >= 0, modificar);
    QCOMPARE(cb->currentIndex() >= 0, modificar);
    if (!p[1].isEmpty())
        cb->setCurrentIndex(id->findText(p[1]));
    QCOMPARE(id->currentText(), p[1]);
    if (!filasDespues.isEmpty())
        TablasOperacion(*ts, kI, tabla(filasDespues));
    Control<QComboBox>(w, "cbPGC")->setCurrentText(p[2]);
    for (const auto& [campo, texto] : {std::pair{"txtPorc", p[3]}, std::pair{"txtBimp", p[4]}}) {
        auto* e = Control<QLineEdit>(w, campo);
        e->setFocus();
        e->selectAll();
        QTest::keyClick(e, Qt::Key_Backspace);
        QTest::keyClicks(e, texto);
    }
    QCOMPARE(Texto(&w, "TxtValor"), p[7]);
    if (p[5] == QLatin1String("F6")) {
        auto* m = Control<QLineEdit>(w, "TxtMotivos");
        m->setFocus();
        QTest::keyClick(m, Qt::Key_F6);
    }
    QTest::keyClick(Control<QPushButton>(w, "Command1"), Qt::Key_Return);
    Comparar(Dichos(*ts), p[8]);
    const QString esperado = p[9];
    const QString despues = Filas(*ts, QStringLiteral("select * from itemliq order by interno, "
                                                      "iditem, idconceptos"))
                                .join(QLatin1Char(' '));
    if (esperado == QLatin1String("=")) {
        if (filasDespues.isEmpty())
            QCOMPARE(despues, antes);
        QVERIFY(w.isVisible());
        QCOMPARE(w.result(), 0);
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
        QVERIFY(!w.isVisible());
        QCOMPARE(w.result(), static_cast<int>(QDialog::Accepted));
        QVERIFY(ts->ctx().LiquidacionPendiente);
    }
    if (QTest::currentDataTag() == QByteArray("sqlite nuevo."))
        GuardarPantallazo(QStringLiteral("FrmAdCon"), &w);
}

// Keys on FrmConceptos ("C") and FrmReferencias ("R"): "ins" opens the entry line, a text is
// typed, "enter" saves, "esc" cancels, "del" removes the row selected. Then the rows added (+)
// and removed (-), the message, and whether the entry line is still shown.
void TestVentajas::listasPresupuesto_data() {
    Casos(R"(
concepto nuevo ; C ; ins|FLETE D'ORO|enter ; +FLETE D'ORO ; ; 0
concepto repetido ; C ; ins|ACARREO|enter ; ; KORVEN|3|Ya existe este concepto.! ; 1
concepto vacio ; C ; ins|   |enter ; ; KORVEN|3|Debe ingresar un Nombre valido para el nuevo concepto. ; 1
entrada cancelada ; C ; ins|PEAJE|esc ; ; ; 0
concepto borrado ; C ; del ; -ACARREO ; ; 0
referencia repetida ; R ; ins|GUIA AEREA|enter ; ; KORVEN|3|Esta referencia ya existe ; 1
referencia borrada ; R ; del ; -CONOCIMIENTO DE EMBARQUE ; ; 0
)");
}

void TestVentajas::listasPresupuesto() {
    MOTOR_O_SALTAR();
    QFETCH(QStringList, f);
    auto ts = Stores(static_cast<Motor>(motor), {});
    const bool conceptos = f[1] == QLatin1String("C");
    const QString sql = conceptos ? QStringLiteral("select concepto from conpresu")
                                  : QStringLiteral("select referencia from referencias");
    const QStringList antes = Filas(*ts, sql);
    std::unique_ptr<QDialog> d(conceptos ? static_cast<QDialog*>(new FrmConceptos(ts->ctx(), {}))
                                         : new FrmReferencias(ts->ctx(), {}));
    Mostrar(*d);
    QCOMPARE(d->windowTitle(),
             conceptos ? QStringLiteral("Conceptos") : QStringLiteral("Referencias"));
    auto* lista = Control<QListWidget>(d.get(), conceptos ? "LstConceptos" : "LstReferencias");
    QCOMPARE(lista->count(), antes.size());
    const QHash<QString, Qt::Key> teclas{{"ins", Qt::Key_Insert},
                                         {"enter", Qt::Key_Return},
                                         {"esc", Qt::Key_Escape},
                                         {"del", Qt::Key_Delete}};
    for (const QString& t : f[2].split(QLatin1Char('|'))) {
        if (teclas.contains(t))
            Tecla(teclas.value(t));
        else
            Escribir(t);
    }
    const QStringList despues = Filas(*ts, sql);
    QStringList cambio;
    for (const QString& r : despues)
        if (!antes.contains(r))
            cambio << QLatin1Char('+') + r;
    for (const QString& r : antes)
        if (!despues.contains(r))
            cambio << QLatin1Char('-') + r;
    QCOMPARE(cambio.join(QLatin1Char(' ')), f[3]);
    QCOMPARE(lista->count(), despues.size());
    Comparar(Dichos(*ts), f[4]);
    QCOMPARE(Control<QLineEdit>(d.get(), "TxtNuevo")->isVisible(), f[5] == QLatin1String("1"));
    QCOMPARE(Control<QLabel>(d.get(), "LbAyuda")->isVisible(), f[5] == QLatin1String("1"));
    QVERIFY(d->isVisible());
}

QTEST_MAIN(TestVentajas)
#include "test_ventajas.moc"
