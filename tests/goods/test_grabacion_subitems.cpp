// The save and the modification of a goods line without the screen: each check in its order
// with its exact message and the field that takes the focus, the mark of the Operation, the
// rows written, and a store failure in the middle leaving nothing behind. Both engines.

#include "FixtureSubItems.h"
#include "goods/GrabacionSubItems.h"
#include "platform/KorvenError.h"
#include "platform/ScriptedDialogs.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"

#include <QScopeGuard>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>
#include <functional>
#include <map>
#include <thread>

using namespace korven;
using namespace korven::test;

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

QTEST_MAIN(TestGrabacionSubItems)
#include "test_grabacion_subitems.moc"
