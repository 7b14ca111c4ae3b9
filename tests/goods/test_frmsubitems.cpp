// The goods screen driven from the keyboard: lines of each kind typed as a clerk types them and
// checked column by column in the store, under "," and "."; modifying by F9; the list with its
// filters, colours, deletion and bulk utilities. Both engines.
//
// The save and the modification of a goods line without the screen: each check in its order
// with its exact message and the field that takes the focus, the mark of the Operation, the
// rows written, and a store failure in the middle leaving nothing behind. Both engines.
//
// The proration codes of an Operation: the maintenance screen and the picker, driven from the
// keyboard on both engines and under both decimal separators, and the header's button.

#include "FixtureNomenclador.h"
#include "FixtureSubItems.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "goods/FrmABMProrrateos.h"
#include "goods/FrmLstProrrateo.h"
#include "goods/FrmSubItems.h"
#include "goods/GrabacionSubItems.h"
#include "goods/ModeloSubItems.h"
#include "goods/PantallasImportar.h"
#include "goods/PantallasNomenclador.h"
#include "header/FixtureCaratula.h"
#include "header/FrmCaratula.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ScriptedDialogs.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/Principal.h"
#include "support/TecladoSubItems.h"

#include <QAction>
#include <QClipboard>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTableView>
#include <QTemporaryDir>
#include <QThread>
#include <QTreeWidget>
#include <QtTest>
#include <functional>
#include <map>
#include <thread>

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

namespace {

const QString kSegunda =
    QStringLiteral("\n\nPara refrescar las unidades del ncm presione ENTER en el campo posición");

// A line that passes every check: 100 kilograms at 2 each, of a position without suffixes.
LineaSubItem Base() {
    LineaSubItem l;
    l.posicion = QStringLiteral("9902.20.00.100B");
    l.codigoEstadistica = QStringLiteral("01");
    l.unidad = QStringLiteral("01");
    l.cantidad = QStringLiteral("100");
    l.unitario = QStringLiteral("2");
    l.fobTotal = QStringLiteral("200");
    l.valorEstadistica = QStringLiteral("100");
    l.kgNeto = QStringLiteral("100");
    l.kgBruto = QStringLiteral("110");
    l.idPais = QStringLiteral("310");
    l.descripcion = QStringLiteral("MAIZ D'ORO");
    return l;
}

// "campo=valor;campo=valor" applied to a line; {s} stands for the decimal separator.
void Cambiar(LineaSubItem& l, const QString& cambios, const QString& sep) {
    const std::map<QString, QString LineaSubItem::*> campos{
        {QStringLiteral("pos"), &LineaSubItem::posicion},
        {QStringLiteral("est"), &LineaSubItem::codigoEstadistica},
        {QStringLiteral("der"), &LineaSubItem::idDerEsp},
        {QStringLiteral("vder"), &LineaSubItem::derEsp},
        {QStringLiteral("uni"), &LineaSubItem::unidad},
        {QStringLiteral("cant"), &LineaSubItem::cantidad},
        {QStringLiteral("pu"), &LineaSubItem::unitario},
        {QStringLiteral("fob"), &LineaSubItem::fobTotal},
        {QStringLiteral("vest"), &LineaSubItem::valorEstadistica},
        {QStringLiteral("neto"), &LineaSubItem::kgNeto},
        {QStringLiteral("bruto"), &LineaSubItem::kgBruto},
        {QStringLiteral("cat"), &LineaSubItem::idCatalogo},
        {QStringLiteral("art"), &LineaSubItem::idArticulo},
        {QStringLiteral("suf"), &LineaSubItem::sufijos}};
    for (const QString& c : cambios.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QString campo = c.section(QLatin1Char('='), 0, 0);
        QString valor = c.section(QLatin1Char('='), 1);
        valor.replace(QStringLiteral("{s}"), sep);
        if (campo == QStringLiteral("catvis"))
            l.catalogoVisible = true;
        else if (campo == QStringLiteral("dervis"))
            l.derEspVisible = true;
        else
            l.*(campos.at(campo)) = valor;
    }
}

} // namespace

class TestGrabacionSubItems : public QObject {
    Q_OBJECT
    std::map<int, std::unique_ptr<TestStores>> stores_;

    TestStores& Stores(int motor) {
        auto& ts = stores_[motor];
        if (!ts) {
            ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
            PrepararSubItems(*ts);
        }
        Conexion& cn = ts->conexion(QStringLiteral("INTERNOS"));
        cn.Ejecutar(QStringLiteral("delete from subitems"));
        cn.Ejecutar(QStringLiteral("update caratula set factura8 = 'N'"));
        ts->dialogos().Limpiar();
        ts->ctx().config() = Configuracion{};
        return *ts;
    }

private Q_SLOTS:
    void chequeos_data();
    void chequeos();
    void grabaYModifica_data() { FilasDeMotores(); }
    void grabaYModifica();
    void falloDelStore_data() { FilasDeMotores(); }
    void falloDelStore();
    void dosEstaciones_data() { FilasDeMotores(); }
    void dosEstaciones();
};

void TestGrabacionSubItems::chequeos_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("sep");
    QTest::addColumn<QString>("rutina"); // G save, M modify
    QTest::addColumn<QString>("cambios");
    QTest::addColumn<QString>("config");
    QTest::addColumn<QString>("mensaje");
    QTest::addColumn<QString>("foco");
    QTest::addColumn<QString>("factura8");
    struct Caso {
        const char *nombre, *rutina, *cambios, *config, *mensaje, *foco, *factura8;
    };
    const QString segunda = kSegunda;
    const Caso casos[] = {
        {"1 sin estadistica", "G", "est=", "", "Falta unidad estadistica", "TxtPosicion", "N"},
        {"2.1 estadistica", "G", "est=07", "", "Error en Codigo de Estadistica debe ser [ 01 ]",
         "TxtPosicion", "N"},
        {"2.2 especifico de mas", "G", "der=07", "",
         "Esta posición no tiene Unidad del Derecho Especifico, pero en la pantalla tiene [ 07 ]",
         "", "N"},
        {"2.3 especifico", "G", "pos=9901.10.00.100A;est=07;uni=07", "",
         "Error en Codigo de Derecho Especifico debe ser [ 07 ]", "TxtPosicion", "N"},
        {"3 estadistica cero", "G", "pos=9901.10.00.100A;est=07;der=07;uni=07;vest=0", "",
         "Debe ingresar un valor mayor a cero en CANTIDA ESTADISTICA", "TxtValorsobreestadistica",
         "N"},
        {"3 kilos en cero pasan, 7 no", "G", "vest=", "",
         "La CANTIDAD DECLARADA ( 100 ) debe ser igual a CANTIDAD ESTADISTICA ( 0 )", "", "N"},
        {"4 cantidad cero", "G", "cant=0", "", "Valor Invalido en CANTIDAD", "TxtCantidad", "N"},
        {"4 cantidad texto", "G", "cant=diez", "", "Valor Invalido en CANTIDAD", "TxtCantidad",
         "N"},
        {"5 bruto menor", "G", "bruto=99{s}99", "", "KG Neto debe ser Menor que KG Bruto", "", "N"},
        {"5 pesos iguales pasan", "G", "bruto=100;pu=0", "", "Valor Invalido en PRECIO UNITARIO",
         "TxtUnitario", "N"},
        {"7 cantidades", "G", "vest=100{s}01", "",
         "La CANTIDAD DECLARADA ( 100 ) debe ser igual a CANTIDAD ESTADISTICA ( 100{s}01 )", "",
         "N"},
        {"8 unitario", "G", "pu=0", "", "Valor Invalido en PRECIO UNITARIO", "TxtUnitario", "N"},
        {"11 catalogo", "G", "cat=NOEXISTE;catvis", "MODIFCAT",
         "Codigo de catalogo no esta en base de datos.", "TxtIdCatalogo", "S"},
        {"12 posicion de 14", "G", "pos=9902.20.00.100", "",
         "Debe ingresar una POSICION del Nomenclador", "TxtPosicion", "S"},
        {"13 unidad", "G", "uni=;vest=100", "", "Debe ingresar el Codigo de UNIDAD", "TxtUnidad",
         "S"},
        {"14 fob", "G", "fob=x", "", "Debe ingresar un valor numerico en el campo FOB TOTAL",
         "TxtFobTotal", "S"},
        {"16 cordano", "G", "art=X-1", "CORDANO",
         "Error sufijos AB invàlido SIN SUFIJOS codigo de articulo X-1", "", "S"},
        {"M1 posicion", "M", "pos=9909{s}99.99.999Z", "",
         "No se encontro la posición 9909.99.99.999Z", "", "S"},
        {"M1 sin unidad", "M", "pos=9904.40.00.100D", "", "Error: no hay unidad estadistica", "",
         "S"},
        {"M2 estadistica", "M", "est=", "", "Falta unidad estadistica", "TxtPosicion", "S"},
        {"M3 fob", "M", "fob=x", "", "Debe ingresar un valor numeric en el campo FOB TOTAL",
         "TxtFobTotal", "S"},
        {"M4 especifico", "M", "dervis;vder=.", "",
         "El valor de el campo Derecho Especifico debe ser númerico", "", "S"},
        {"M5 kilos", "M", "bruto=50", "", "KG Neto debe ser Menor que KG Bruto", "", "S"},
    };
    for (int motor : {0, 1})
        for (const Caso& c : casos)
            for (const char* sep : {",", "."}) {
                if (!QByteArray(c.cambios).contains("{s}") && sep != QByteArrayLiteral(","))
                    continue;
                const bool conSegunda = QByteArray(c.nombre).startsWith("2.") &&
                                        !QByteArray(c.nombre).startsWith("2.1");
                QString mensaje = QString::fromUtf8(c.mensaje) + (conSegunda ? segunda : QString());
                mensaje.replace(QStringLiteral("{s}"), QString::fromLatin1(sep));
                QTest::newRow(qPrintable(
                    QStringLiteral("%1 %2 %3").arg(motor ? "pg" : "sqlite", c.nombre, sep)))
                    << motor << QString::fromLatin1(sep) << QString::fromLatin1(c.rutina)
                    << QString::fromUtf8(c.cambios) << QString::fromLatin1(c.config) << mensaje
                    << QString::fromLatin1(c.foco) << QString::fromLatin1(c.factura8);
            }
}

void TestGrabacionSubItems::chequeos() {
    MOTOR_O_SALTAR();
    QFETCH(QString, sep);
    QFETCH(QString, rutina);
    QFETCH(QString, cambios);
    QFETCH(QString, config);
    QFETCH(QString, mensaje);
    QFETCH(QString, foco);
    QFETCH(QString, factura8);
    TestStores& ts = Stores(motor);
    SeparadorDecimalScope s(sep);
    Configuracion& cfg = ts.ctx().config();
    cfg.MODIFCAT = config == QStringLiteral("MODIFCAT") ? 2 : 1;
    cfg.CORDANO = config == QStringLiteral("CORDANO");
    GrabacionSubItems g(ts.ctx(), ts.dialogos(), kInterno);
    if (rutina == QStringLiteral("M")) {
        LineaSubItem l = Base();
        QVERIFY(g.GrabarSubItems(2, l, false, true).grabado);
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set factura8 = 'N'"));
        ts.dialogos().Limpiar();
    }
    LineaSubItem l = Base();
    Cambiar(l, cambios, sep);
    const ResultadoSubItem r = rutina == QStringLiteral("G") ? g.GrabarSubItems(2, l, false, true)
                                                             : g.ModificarSubItems(2, l, 1, true);
    QVERIFY(!r.grabado);
    QStringList mensajes = ts.dialogos().mensajes();
    mensajes.removeAll(QStringLiteral("No se encontro Sufijo en el nomenclador"));
    QCOMPARE(mensajes, QStringList{mensaje});
    QCOMPARE(r.foco, foco);
    QCOMPARE(Factura8(ts), factura8);
    QCOMPARE(Lineas(ts), rutina == QStringLiteral("G") ? 0 : 1);
    if (rutina == QStringLiteral("M"))
        QCOMPARE(Fila(ts, 1, QStringLiteral("ncm,fob,kgbruto")),
                 QStringLiteral("9902.20.00.100B|200|110"));
}

// A save and a modification written column by column; the numbers typed in either separator.
void TestGrabacionSubItems::grabaYModifica() {
    MOTOR_O_SALTAR();
    TestStores& ts = Stores(motor);
    const QString cols = QStringLiteral(
        "id,idcatalogo,idarticulo,ncm,idunidad,cantidad,preciounitario,fob,estadistica,"
        "valorrelacionestadistica,idpais,estadomerc,sufijos,biendeuso,codprorrateo,insumostemp,"
        "insumosacons,cancelaciones,deresp,valorderesp,lapi,kgneto,kgbruto,descripcion,otros,"
        "itfiller,certorig,idpaisproc,codigoean,sbtrei");
    for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
        SeparadorDecimalScope s(sep);
        GrabacionSubItems g(ts.ctx(), ts.dialogos(), kInterno);
        LineaSubItem l = Base();
        Cambiar(l, QStringLiteral("neto=100{s}004;pu=2{s}5;fob=250{s}01"), sep);
        l.filler = QStringLiteral("F1");
        l.codigoEAN = QStringLiteral("779");
        const bool ean = sep == QStringLiteral(",");
        const ResultadoSubItem r = g.GrabarSubItems(2, l, false, ean);
        QVERIFY(r.grabado);
        QCOMPARE(r.foco, QStringLiteral("TxtPosicion"));
        const long long id = sep == QStringLiteral(",") ? 1 : 2;
        QCOMPARE(r.id, id);
        // Quantities go formatted "00.00", the price and the FOB as typed; the apostrophe of
        // the description became a blank; the EAN only where the sub-regime admits it.
        QCOMPARE(Fila(ts, id, cols),
                 QStringLiteral("%1|||9902.20.00.100B|01|100|2.5|250.01|01|100|310||SIN SUFIJOS|"
                                "S||0|0|||0|N|100|110|MAIZ D ORO||F1|||%2|")
                     .arg(id)
                     .arg(ean ? QStringLiteral("779") : QString()));
        QCOMPARE(l.valorEstadistica, QStringLiteral("100") + sep + QStringLiteral("00"));
    }
    QCOMPARE(Factura8(ts), QStringLiteral("S"));
    // The modification rewrites the line in hand and nothing else.
    SeparadorDecimalScope s(QStringLiteral(","));
    LineaSubItem l = Base();
    Cambiar(l,
            QStringLiteral("pos=9901.10.00.100A;est=07;der=07;uni=07;cant=4;vest=4;vder=4;"
                           "pu=12,5;fob=50;neto=3,5;bruto=4;suf=SIN SUFIJOS;dervis"),
            QStringLiteral(","));
    l.lapi = true;
    l.bienDeUso = false;
    l.reintegro = QStringLiteral("0");
    const ResultadoSubItem r =
        GrabacionSubItems(ts.ctx(), ts.dialogos(), kInterno).ModificarSubItems(2, l, 2, true);
    QVERIFY(r.grabado);
    QCOMPARE(Fila(ts, 2,
                  QStringLiteral("ncm,idunidad,cantidad,preciounitario,fob,estadistica,"
                                 "valorrelacionestadistica,deresp,valorderesp,kgneto,"
                                 "kgbruto,lapi,biendeuso,sufijos,sbtrei")),
             QStringLiteral("9901.10.00.100A|07|4|12.5|50|07|4|07|4|3.5|4|S|N|SIN SUFIJOS|0"));
    QCOMPARE(Fila(ts, 1, QStringLiteral("ncm,fob")), QStringLiteral("9902.20.00.100B|250.01"));
}

// The catalogue cannot take the article: the line, the mark and the catalogue stay as they
// were.
void TestGrabacionSubItems::falloDelStore() {
    MOTOR_O_SALTAR();
    TestStores& ts = Stores(motor);
    ts.ctx().config().MODARTSUB = QStringLiteral("S");
    ts.conexion(QStringLiteral("CATALOGOS")).Ejecutar(QStringLiteral("drop table catarticulos"));
    LineaSubItem l = Base();
    Cambiar(l, QStringLiteral("cat=CAT-3451;art=NUEVO;catvis"), QStringLiteral(","));
    // The table is gone: the next test starts afresh.
    const auto borrar = qScopeGuard([this, motor] { stores_.erase(motor); });
    const ResultadoSubItem r =
        GrabacionSubItems(ts.ctx(), ts.dialogos(), kInterno).GrabarSubItems(2, l, false, true);
    QVERIFY(!r.grabado);
    QCOMPARE(Lineas(ts), 0);
    QCOMPARE(Factura8(ts), QStringLiteral("N"));
    const QString ultimo = ts.dialogos().mensajes().value(ts.dialogos().mensajes().size() - 1);
    QVERIFY2(
        ultimo.endsWith(QStringLiteral(" - seccion [KORVEN.Global.GrabarSubItems]:: LINEA: 22")),
        qPrintable(ultimo));
}

// Two workstations save a line of the same Operation at once: the second waits for the first
// to end and takes the next number.
void TestGrabacionSubItems::dosEstaciones() {
    MOTOR_O_SALTAR();
    TestStores& ts = Stores(motor);
    Conexion& primera = ts.conexion(QStringLiteral("INTERNOS"));
    primera.Comenzar();
    primera.Ejecutar(QStringLiteral("update caratula set factura8 = 'S' where interno = 'T-SUB'"));
    primera.Ejecutar(
        QStringLiteral("insert into subitems (id,interno,ncm) values (1,'T-SUB','X')"));
    ResultadoSubItem r;
    QStringList mensajes;
    std::thread segunda([&] {
        QTemporaryDir carpeta;
        StoreDirectory stores;
        stores.setParametersPath(ts.stores().parametersPath());
        stores.LoadParameters();
        ScriptedDialogs dialogos;
        SettingsStore settings(carpeta.path());
        AppContext ctx(stores, dialogos, settings, ts.directorio());
        RegistrarComponentesNomenclador(ctx.componentes());
        LineaSubItem l = Base();
        r = GrabacionSubItems(ctx, dialogos, kInterno).GrabarSubItems(2, l, false, true);
        mensajes = dialogos.mensajes();
        stores.CloseAllDataConnection();
    });
    QThread::msleep(500);
    primera.Confirmar();
    segunda.join();
    QCOMPARE(mensajes, QStringList{QStringLiteral("No se encontro Sufijo en el nomenclador")});
    QVERIFY(r.grabado);
    QCOMPARE(r.id, 2LL);
    QCOMPARE(Fila(ts, 1, QStringLiteral("ncm")) + QLatin1Char('/') +
                 Fila(ts, 2, QStringLiteral("ncm")),
             QStringLiteral("X/9902.20.00.100B"));
}

namespace {

const QString kColumnas = QStringLiteral(
    "ncm,idunidad,cantidad,preciounitario,fob,estadistica,valorrelacionestadistica,deresp,"
    "valorderesp,kgneto,kgbruto,idpais,sufijos,biendeuso,lapi,codigoean,idcatalogo,idarticulo");

QString Etiqueta(QWidget& f, const char* nombre) {
    return Control<QLabel>(&f, nombre)->text();
}

void Accion(QWidget& f, const char* nombre) {
    QAction* a = f.findChild<QAction*>(QString::fromLatin1(nombre));
    QVERIFY2(a, nombre);
    a->trigger();
}

// Lines of our own for the list: ids 1 to 4.
void Sembrar(TestStores& ts) {
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral(
            "insert into subitems (id,interno,ncm,idunidad,cantidad,preciounitario,fob,"
            "estadistica,valorrelacionestadistica,deresp,valorderesp,kgneto,idpais,estadomerc,"
            "sufijos,itfiller,codprorrateo,cancelaciones,idarticulo) values "
            "(1,'T-SUB','9902.20.00.100B','01',10,2,20,'01',10,'',0,10,'310','1','SIN SUFIJOS',"
            "'F','A','','ART1'),"
            "(2,'T-SUB','9903.30.00.100C','07',5,4,20,'07',5,'01',7,7,'','','','F','A','OK',''),"
            "(3,'T-SUB','9901.10.00.100','07',3,10,30,'07',0,'07',3,0,'212','',"
            "'SIN SUFIJOS','','','',''),"
            "(4,'T-SUB','9901.10.00.100A','07',1,1.5,1.5,'07',1,'07',1,0,'','2','',"
            "'','','','ART4')"));
}

} // namespace

class TestFrmSubItems : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lineas_data();
    void lineas();
    void reglasDeCampos();
    void modificarPorF9_data() { FilasDeMotores(); }
    void modificarPorF9();
    void lista_data() { FilasDeMotores(); }
    void lista();
    void masivos_data();
    void masivos();
    void importar_data() { FilasDeMotores(); }
    void importar();
};

void TestFrmSubItems::lineas_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("sep");
    QTest::addColumn<QString>("carga");  // "U": by unit price; else by FOB
    QTest::addColumn<QString>("textos"); // answers of the suffix prompts, "|"-separated
    QTest::addColumn<QString>("listas"); // answers of the list of suffix values
    QTest::addColumn<QString>("pasos");
    QTest::addColumn<QString>("fila");
    struct Caso {
        const char *nombre, *carga, *textos, *listas, *pasos, *fila;
    };
    const Caso casos[] = {
        // 12 digits are rewritten; FOB 9000 / 20 gives the unit price; refunds show.
        {"unidades por fob", "F", "", "",
         "TxtPosicion:73211100100X|TxtUnidad:7|TxtCantidad:20|TxtFobTotal:9000|"
         "TxtValorsobreestadistica:20|TxtKgNeto:36{s}5|TxtKgBruto:44|TxtIdpais:310|"
         "TxtCodigoEAN:779",
         "7321.11.00.100X|07|20|450|9000|07|20||0|36.5|44|310|SIN SUFIJOS|S|N|779||"},
        // 1,5 tonnes at 600: FOB 900; 1500 kilograms of statistics and net weight.
        {"kilos por unitario", "U", "", "",
         "TxtPosicion:7208.51.00.100B|TxtUnidad:14|TxtCantidad:1{s}5|TxtUnitario:600|"
         "TxtKgBruto:1600",
         "7208.51.00.100B|14|1.5|600|900|01|1500||0|1500|1600||SIN SUFIJOS|S|N|||"},
        // 4 units of 2,5 kilograms each: 10 kilograms of statistics and net weight.
        {"unidad con kilos", "F", "", "",
         "Up|Up|txtKgUnitario:2{s}5|TxtPosicion:9902.20.00.100B|TxtUnidad:07|TxtCantidad:4|"
         "TxtFobTotal:100|TxtKgBruto:12",
         "9902.20.00.100B|07|4|25|100|01|10||0|10|12||SIN SUFIJOS|S|N|||"},
        // 3 dozen: 36 units of statistics and of specific duty; the position has LAPI.
        {"derecho especifico", "F", "", "",
         "TxtPosicion:9901.10.00.100A|TxtUnidad:9|TxtCantidad:3|TxtFobTotal:72|TxtKgNeto:5|"
         "TxtKgBruto:6",
         "9901.10.00.100A|09|3|24|72|07|36|07|36|5|6||SIN SUFIJOS|S|S|||"},
        // Free codes by prompt, listed codes from the list of values.
        {"sufijos", "F", "ACME|42", "MS02|TC01",
         "TxtPosicion:6403.99.90.100T|TxtUnidad:8|TxtCantidad:6|TxtFobTotal:120|"
         "TxtValorsobreestadistica:6|TxtKgNeto:3|TxtKgBruto:4",
         "6403.99.90.100T|08|6|20|120|08|6|08|6|3|4||AA(ACME)-MS02-TC01-ZB(000042)-|S|N|||"},
        // The article brings its position, unit, countries, kilos per unit and suffixes; the
        // suffixes are rebuilt for the position, a listed code once per row of its list.
        {"del catalogo", "F", "", "",
         "txtIdArticulo:NB-14-16|TxtCantidad:2|TxtFobTotal:900|TxtValorsobreestadistica:2",
         "8471.30.12.100M|07|2|450|900|07|2||0|3.6|0|310|AA(LENOVO)-AB(IDEAPAD 5)-AI(NB 14 16)-"
         "AJ(PF4XK2LM)-EM01-EM01-EM01-PR02-PR02-PR02-ZA(002025)-ZD(000016)-ZG(001550)-ZH(000140)-|"
         "N|N||CAT-3451|"
         "NB-14-16"},
    };
    for (int motor : {0, 1})
        for (const Caso& c : casos)
            for (const char* sep : {",", "."})
                QTest::newRow(qPrintable(
                    QStringLiteral("%1 %2 %3").arg(motor ? "pg" : "sqlite", c.nombre, sep)))
                    << motor << QString::fromLatin1(sep) << QString::fromLatin1(c.carga)
                    << QString::fromLatin1(c.textos) << QString::fromLatin1(c.listas)
                    << QString::fromLatin1(c.pasos) << QString::fromLatin1(c.fila);
}

void TestFrmSubItems::lineas() {
    MOTOR_O_SALTAR();
    QFETCH(QString, sep);
    QFETCH(QString, carga);
    QFETCH(QString, textos);
    QFETCH(QString, listas);
    QFETCH(QString, pasos);
    QFETCH(QString, fila);
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    RegistrarPantallasOperaciones(ts.ctx().pantallas());
    CargaSufijosGuionada cs;
    for (const QString& r : listas.split(QLatin1Char('|'), Qt::SkipEmptyParts))
        cs.respuestas.push_back(r);
    cs.Registrar(ts.ctx());
    for (const QString& t : textos.split(QLatin1Char('|'), Qt::SkipEmptyParts))
        ts.dialogos().ResponderTexto(t);
    ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("FLAGS"),
                              QStringLiteral("CARGASBTPOR"), carga);
    if (fila.contains(QStringLiteral("CAT-3451")))
        ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("DEFAULT"),
                                  QStringLiteral("CATALOGO"), QStringLiteral("CAT-3451"));
    SeparadorDecimalScope s(sep);
    FrmSubItems f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
    Mostrar(f);
    Teclear(pasos, sep, [&ts] { return Lineas(ts); });
    QCOMPARE(Lineas(ts), 1);
    QCOMPARE(Fila(ts, 1, kColumnas), fila);
    QCOMPARE(Factura8(ts), QStringLiteral("S"));
    QVERIFY(ts.dialogos().guionAgotado());
    // Ready for the next line, with the list and its totals refreshed.
    QCOMPARE(Texto(&f, "TxtCantidad"), QString());
    QCOMPARE(f.modelo()->rowCount(), 1);
    const double fob = EsNumero(ts.conexion(QStringLiteral("INTERNOS"))
                                    .Escalar(QStringLiteral("select fob from subitems")));
    QCOMPARE(Etiqueta(f, "LbTotSubitems"), Formato(fob, QStringLiteral("00.00")));
    QCOMPARE(Etiqueta(f, "lbDIF"), Formato(1000 - fob, QStringLiteral("00.00")));
    QCOMPARE(Control<QLabel>(&f, "LbTotSubitems")->palette().color(QPalette::WindowText),
             fob > 1000 ? QColor(255, 0, 0) : QColor(0, 0, 128));
    if (!CarpetaPantallazos().isEmpty() && motor == 0 && sep == QStringLiteral(","))
        Pantallazo(&f).save(CarpetaPantallazos() +
                            QStringLiteral("/FrmSubItems-%1.png").arg(QTest::currentDataTag()));
}

// The field rules on the way: an unknown position, a short one sent to the position search,
// kilograms refused without the kilos, the FOB of an emptied quantity.
void TestFrmSubItems::reglasDeCampos() {
    TestStores ts(Motor::SQLite);
    PrepararSubItems(ts);
    QVariantMap elegida{{QStringLiteral("posicion"), QStringLiteral("9901.10.00.100A")},
                        {QStringLiteral("lapi"), true}};
    QString buscada;
    ts.ctx().pantallas().Registrar(QStringLiteral("FrmPosicion"),
                                   [&](AppContext&, const QVariantMap& args) {
                                       buscada = args.value(QStringLiteral("texto")).toString();
                                       return QVariant(elegida);
                                   });
    SeparadorDecimalScope s(QStringLiteral(","));
    const QVariantList flags{true, true, true, true, true, true, false, true};
    FrmSubItems f(ts.ctx(),
                  {{QStringLiteral("interno"), kInterno}, {QStringLiteral("flags"), flags}});
    Mostrar(f);
    Escribir(QStringLiteral("9999.99.99.999Z"));
    Tecla(Qt::Key_Return);
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{QStringLiteral("POSICIÓN INEXISTENTE, en el Nomenclador")});
    QCOMPARE(NombreFoco(), QStringLiteral("TxtPosicion"));
    Control<QLineEdit>(&f, "TxtPosicion")->clear();
    Escribir(QStringLiteral("9901,10"));
    Tecla(Qt::Key_Return);
    QCOMPARE(buscada, QStringLiteral("9901.10"));
    QCOMPARE(Texto(&f, "TxtPosicion"), QStringLiteral("9901.10.00.100A"));
    QCOMPARE(Etiqueta(f, "LbCodigoEstadistica") + Etiqueta(f, "LbIdDerEsp"),
             QStringLiteral("0707"));
    QVERIFY(!Control<QLabel>(&f, "LbLapi")->isHidden());
    // Without the kilos the positions in units lock nothing, but the kilogram is refused.
    QVERIFY(!Control<QLineEdit>(&f, "TxtValorsobreestadistica")->isReadOnly());
    Tecla(Qt::Key_Return);
    QCOMPARE(NombreFoco(), QStringLiteral("TxtUnidad"));
    Escribir(QStringLiteral("1"));
    Tecla(Qt::Key_Return);
    QCOMPARE(ts.dialogos().mensajes().last(),
             QStringLiteral("No puede cargar Kilos.\n\nDebe habilitar el campo Kilos Neto"));
    QCOMPARE(Texto(&f, "TxtUnidad"), QString());
    Control<QLineEdit>(&f, "TxtCantidad")->setText(QStringLiteral("5"));
    Control<QLineEdit>(&f, "TxtCantidad")->clear();
    QCOMPARE(Texto(&f, "TxtFobTotal"), QStringLiteral("000"));
    // Esc while adding closes.
    Tecla(Qt::Key_Escape);
    QVERIFY(!f.isVisible());
}

void TestFrmSubItems::modificarPorF9() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    Sembrar(ts);
    SeparadorDecimalScope s(QStringLiteral(","));
    FrmSubItems f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
    Mostrar(f);
    Tecla(Qt::Key_F9);
    QCOMPARE(f.modo(), 2);
    QCOMPARE(NombreFoco(), QStringLiteral("LstArticulos"));
    QVERIFY(!Control<QLineEdit>(&f, "TxtCantidad")->isEnabled());
    // The rows go by number descending: the first is line 4.
    Tecla(Qt::Key_Return);
    QCOMPARE(Texto(&f, "TxtPosicion"), QStringLiteral("9901.10.00.100A"));
    QCOMPARE(Texto(&f, "TxtCantidad"), QStringLiteral("01,00"));
    QCOMPARE(Texto(&f, "TxtUnitario"), QStringLiteral("01,5000"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtFobTotal"));
    // A new FOB: the unit price follows, and Enter on to the last field saves.
    Escribir(QStringLiteral("7"));
    Tecla(Qt::Key_Return);
    QCOMPARE(Texto(&f, "TxtUnitario"), QStringLiteral("07,0000"));
    QCOMPARE(Texto(&f, "TxtFobTotal"), QStringLiteral("07,00"));
    Teclear(QStringLiteral("TxtKgBruto:2"), QStringLiteral(","));
    for (int i = 0; i < 40 && NombreFoco() != QStringLiteral("LstArticulos"); ++i)
        Tecla(Qt::Key_Return);
    QCOMPARE(Fila(ts, 4, QStringLiteral("cantidad,preciounitario,fob,kgbruto,sufijos")),
             QStringLiteral("1|7|7|2|SIN SUFIJOS"));
    QCOMPARE(Lineas(ts), 4);
    QCOMPARE(Factura8(ts), QStringLiteral("S"));
    QCOMPARE(f.modo(), 2);
    QVERIFY(!Control<QLineEdit>(&f, "TxtCantidad")->isEnabled());
    // Esc leaves modifying; a second Esc closes.
    Tecla(Qt::Key_Escape);
    QCOMPARE(f.modo(), 1);
    Tecla(Qt::Key_Escape);
    QVERIFY(!f.isVisible());
}

void TestFrmSubItems::lista() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    Sembrar(ts);
    SeparadorDecimalScope s(QStringLiteral(","));
    FrmSubItems f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
    Mostrar(f);
    ModeloSubItems* m = f.modelo();
    auto filas = [m] {
        QStringList r;
        for (int i = 0; i < m->rowCount(); ++i) {
            QStringList c;
            for (int j = 0; j < m->columnCount(); ++j)
                c << m->index(i, j).data().toString();
            r << c.join(QLatin1Char(' '));
        }
        return r.join(QLatin1Char('/'));
    };
    QCOMPARE(filas(), QStringLiteral("0004 9901.10.00.100A 07 01,00 01,5000 01,50 4 ART4/"
                                     "0003 9901.10.00.100 07 03,00 10,0000 30,00 3 /"
                                     "0002 9903.30.00.100C 07 05,00 04,0000 20,00 2 /"
                                     "0001 9902.20.00.100B 01 10,00 02,0000 20,00 1 ART1"));
    // The cancelled line is brown; the totals are those of every line.
    QCOMPARE(m->index(2, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(128, 64, 0));
    QVERIFY(!m->index(1, 0).data(Qt::ForegroundRole).isValid());
    QCOMPARE(Etiqueta(f, "LbTotCantidad"), QStringLiteral("19,00"));
    QCOMPARE(Etiqueta(f, "LbTotKilos"), QStringLiteral("17,00"));
    QCOMPARE(Etiqueta(f, "LbTotSubitems"), QStringLiteral("71,50"));
    QCOMPARE(Etiqueta(f, "lbDIF"), QStringLiteral("928,50"));
    // SbtMostrarAsc shows the lines ascending, numbered from 1.
    ts.ctx().config().SbtMostrarAsc = true;
    f.Filtrar(0);
    QCOMPARE(m->index(0, 0).data().toString() + m->index(0, 6).data().toString() +
                 m->index(3, 0).data().toString(),
             QStringLiteral("000110004"));
    ts.ctx().config().SbtMostrarAsc = false;
    f.Filtrar(0);
    // A click on a header orders by it, the next one reverses; the numbers stay with the lines.
    auto* lst = Control<QTableView>(&f, "LstArticulos");
    const QPoint cabecera(lst->horizontalHeader()->sectionViewportPosition(5) + 5, 5);
    QTest::mouseClick(lst->horizontalHeader()->viewport(), Qt::LeftButton, {}, cabecera);
    QCOMPARE(m->index(0, 0).data().toString() + m->index(3, 0).data().toString(),
             QStringLiteral("00040003"));
    QTest::mouseClick(lst->horizontalHeader()->viewport(), Qt::LeftButton, {}, cabecera);
    QCOMPARE(m->index(0, 0).data().toString(), QStringLiteral("0003"));
    // Filters, each with its lines.
    const struct {
        int filtro;
        const char* ids;
    } filtros[] = {{1, "2,1"}, {2, "4,3"}, {3, "3,1"}, {4, "4,2"}, {5, "4,1"},
                   {6, "3,2"}, {8, "3"},   {9, "4,2"}, {10, "3"},  {0, "4,3,2,1"}};
    for (const auto& c : filtros) {
        f.Filtrar(c.filtro);
        QStringList ids;
        for (int i = 0; i < m->rowCount(); ++i)
            ids << QString::number(m->Id(i));
        std::sort(ids.begin(), ids.end(), std::greater<>());
        QCOMPARE(ids.join(QLatin1Char(',')), QString::fromLatin1(c.ids));
        QCOMPARE(!Control<QLabel>(&f, "lbFiltro")->isHidden(), c.filtro != 0);
    }
    ts.dialogos().ResponderTexto(QStringLiteral("9901"));
    Accion(f, "mnuFiltro7");
    QCOMPARE(m->rowCount(), 2);
    ts.dialogos().ResponderTexto(QString());
    Accion(f, "mnuFiltro7");
    QCOMPARE(m->rowCount(), 4);
    QVERIFY(Control<QLabel>(&f, "lbFiltro")->isHidden());
    // Delete: the cancelled line stays without the inputs component; the other goes.
    lst->setFocus();
    lst->clearSelection();
    for (int i = 0; i < m->rowCount(); ++i)
        if (m->Id(i) == 2 || m->Id(i) == 3)
            lst->selectionModel()->select(m->index(i, 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    ts.dialogos().ResponderSi();
    Tecla(Qt::Key_Delete);
    QCOMPARE(ts.dialogos().todo().mid(ts.dialogos().todo().size() - 2),
             (QStringList{QStringLiteral("Confirma eliminar el o los subitems seleccionado"),
                          QStringLiteral("seccion lpEliminar en Formulario FrmSubItems :: El "
                                         "componente SupplyLink.Main no está instalado.")}));
    QCOMPARE(m->rowCount(), 3);
    QCOMPARE(Factura8(ts), QStringLiteral("S"));
    QCOMPARE(Fila(ts, 3, QStringLiteral("id")), QStringLiteral("(no existe)"));
    // The components of reports, printing and inputs are not installed here.
    ts.dialogos().Limpiar();
    Accion(f, "mnuReporteArchivo");
    Tecla(Qt::Key_P, Qt::AltModifier);
    Tecla(Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(ts.dialogos().mensajes(),
             (QStringList{QStringLiteral("seccion GenerarReportes en Formulario FrmSubItems :: El "
                                         "componente SubitemReports.Main no está instalado."),
                          QStringLiteral("seccion lpImprimir en Formulario FrmSubItems :: El "
                                         "componente SubitemPrinter.Main no está instalado."),
                          QStringLiteral("INSUMOS TEMPORALES no habilitado")}));
}

void TestFrmSubItems::masivos_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("accion");
    QTest::addColumn<QString>("pregunta");
    QTest::addColumn<QString>("filas"); // kgneto, statistics, specific, country, filler, code
    struct Caso {
        const char *accion, *pregunta, *filas;
    };
    const Caso casos[] = {
        {"mnuUtilidad0", "CONFIRMA DEJAR EN 0, KG NETO, ESTADISTICA, ESPECIFICO",
         "0|0|0|310|F|A/0|5|0||F|A"},
        {"mnuUtilidad1", "Confirma vaciar el campo Pais Origen en todos los articulos cargados?",
         "10|10|0||F|A/7|5|7||F|A"},
        {"mnuUtilidad2", "Confirma vaciar el campo Filler en todos los articulos cargados?",
         "10|10|0|310||A/7|5|7|||A"},
        {"mnuUtilidad3", "Confirma vaciar el campo Id Prorrateo en todos los articulos cargados?",
         "10|10|0|310|F|/7|5|7||F|"},
    };
    for (int motor : {0, 1})
        for (const Caso& c : casos)
            QTest::newRow(
                qPrintable(QStringLiteral("%1 %2").arg(motor ? "pg" : "sqlite", c.accion)))
                << motor << QString::fromLatin1(c.accion) << QString::fromLatin1(c.pregunta)
                << QString::fromLatin1(c.filas);
}

// Each utility asks first; No leaves the lines, Yes runs its statements on this Operation only.
void TestFrmSubItems::masivos() {
    MOTOR_O_SALTAR();
    QFETCH(QString, accion);
    QFETCH(QString, pregunta);
    QFETCH(QString, filas);
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    Sembrar(ts);
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("insert into subitems (id,interno,kgneto,itfiller) values "
                                 "(1,'OTRO',9,'G')"));
    FrmSubItems f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
    const QString cols =
        QStringLiteral("kgneto,valorrelacionestadistica,valorderesp,idpais,itfiller,codprorrateo");
    auto ahora = [&] { return Fila(ts, 1, cols) + QLatin1Char('/') + Fila(ts, 2, cols); };
    const QString antes = ahora();
    ts.dialogos().ResponderNo();
    Accion(f, qPrintable(accion));
    QCOMPARE(ahora(), antes);
    ts.dialogos().ResponderSi();
    Accion(f, qPrintable(accion));
    QCOMPARE(ts.dialogos().todo(), (QStringList{pregunta, pregunta}));
    QCOMPARE(ahora(), filas);
    QCOMPARE(EsNumero(ts.conexion(QStringLiteral("INTERNOS"))
                          .Escalar(QStringLiteral("select count(*) from subitems where interno = "
                                                  "'OTRO' and kgneto = 9 and itfiller = 'G'"))),
             1.0);
}

// Ctrl+Shift+V takes the rows on the clipboard to the import preview; F12 there writes them and
// the list and its totals show them: 100 at 2 each is 200 of FOB.
void TestFrmSubItems::importar() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    RegistrarPantallasImportar(ts.ctx().pantallas());
    SeparadorDecimalScope s(QStringLiteral(","));
    FrmSubItems f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
    Mostrar(f);
    QGuiApplication::clipboard()->setText(QStringLiteral("9902.20.00.100B\tMAIZ\t100\t01\t2\n"));
    AlAbrirse(QStringLiteral("FrmImportarSubItems"),
              [](QWidget* w) { QTest::keyClick(w->focusWidget(), Qt::Key_F12); });
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V,
                    Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Fila(ts, 1, QStringLiteral("ncm,cantidad,preciounitario,fob,descripcion")),
             QStringLiteral("9902.20.00.100B|100|2|200|MAIZ"));
    QCOMPARE(f.modelo()->rowCount(), 1);
    QCOMPARE(f.modelo()->index(0, 1).data().toString(), QStringLiteral("9902.20.00.100B"));
    QCOMPARE(Etiqueta(f, "LbTotSubitems"), QStringLiteral("200,00"));
    QCOMPARE(Etiqueta(f, "lbDIF"), QStringLiteral("800,00"));
    QVERIFY(ts.dialogos().todo().isEmpty());
}

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestProrrateos, TestGrabacionSubItems, TestFrmSubItems>(
        argc, argv);
}

#include "test_frmsubitems.moc"
