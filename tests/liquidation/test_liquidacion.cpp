// The calculator of the liquidation: its properties and bases, every concept code computed by
// hand from its rule, the internal taxes read from the stores, and the question of the
// automotive regime, under "," and under "." as the system separator.
//
// The liquidation rows of an Operation's items (lists by regime, rates by client and regime)
// and the calculation of item 0 with its totals, on SQLite and PostgreSQL, under "," and ".".

#include "liquidation/ClassLiquidacion.h"
#include "liquidation/GeneracionLiquidacion.h"
#include "liquidation/LiquidacionOperacion.h"
#include "liquidation/PantallasLiquidacion.h"
#include "liquidation/ReglasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "schema/Esquema.h"
#include "support/LiqTablas.h"
#include "support/Pantallas.h"
#include "support/Principal.h"
#include "support/TestStores.h"

#include <QApplication>
#include <QHash>
#include <QMap>
#include <QRadioButton>
#include <QTest>
#include <set>

using namespace korven;
using namespace korven::test;
using L = ClassLiquidacion;

namespace {

const QString kT1 = QStringLiteral("T1");

void Preparar(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
}

// An item of the position 9999.99.99 100 with the given columns.
void Item(TestStores& ts, int id, const char* bien, const char* estado, const char* filler = "",
          double fob = 0, double flete = 0, double seguro = 0, const char* pais = "999",
          const char* lista = "") {
    ts.conexion("INTERNOS")
        .Ejecutar("insert into item "
                  "(interno,id,ncm,idpais,biendeuso,estadomerc,itfiller,fobtotal,itflete,"
                  "itseguro,ajusteinc,ajusteded,lista) values "
                  "(?,?,'9999.99.99100A',?,?,?,?,?,?,?,'0','0',?)",
                  {kT1, id, pais, bien, estado, filler, fob, flete, seguro, lista});
}

void Posicion(TestStores& ts, const char* lapi = "") {
    ts.conexion("NCM").Ejecutar("insert into ncm (\"001\",\"002\",\"003\",\"015\",\"016\",\"048\","
                                "\"059\") values ('9999.99.99','100','A','12','3','2',?)",
                                {lapi});
}

// Every row of a query, values joined by "|", numbers as "0.#####", rows by " " (sorted as text
// when asked: the engines' collations differ on marks such as "#").
QString Filas(TestStores& ts, const QString& sql, bool ordenar = false) {
    Recordset rs = ts.conexion("INTERNOS").Abrir(sql, {kT1});
    QStringList r;
    for (int i = 0; i < rs.RecordCount(); ++i) {
        QStringList f;
        for (const QVariant& v : rs.Fila(i))
            f << (v.isNull() ? QStringLiteral("null")
                  : v.metaType().id() == QMetaType::QString
                      ? v.toString()
                      : Formato(v.toDouble(), QStringLiteral("0.#####"), QStringLiteral(".")));
        r << f.join(QLatin1Char('|'));
    }
    if (ordenar)
        r.sort();
    return r.join(QLatin1Char(' '));
}

// The concepts of each item as "id:code,code".
QString Conceptos(TestStores& ts) {
    QString r;
    Recordset rs = ts.conexion("INTERNOS")
                       .Abrir("select iditem, idconceptos from itemliq where interno = ? order by "
                              "iditem, idconceptos",
                              {kT1});
    for (int id = -1; !rs.Eof(); rs.MoveNext()) {
        const bool otro = id != rs.Fields(0).toInt();
        id = rs.Fields(0).toInt();
        r += (otro ? " " + QString::number(id) + ":" : ",") + rs.Fields(1).toString();
    }
    return r.mid(1);
}

} // namespace

class TestGeneracionLiquidacion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The lists by regime and kind for item 0, a common item with estadomerc 1 (",601,611"),
    // capital goods with estadomerc 1 (",601" kept for the items after) and 2, a common item
    // with estadomerc 2; the fines question of "IDA4"; the export sample advantage.
    // subregime; import; answer; concepts of items 0..4 ($I $J $K the import list in three
    // parts, $B capital goods, $E export); advantages.
    void listas_data() { FilasDeMotores(); }
    void listas() {
        MOTOR_O_SALTAR();
        for (const char* caso :
             {"IC04;1;;0:020,500 1:$I,065,$J,601,611,$K,900 2:$B,601 3:$B,601 4:$I,065,$J,$K,900;",
              "ZFE1;1;;0:020,500 1:$I,$J,601,611,$K,900 2:$B,601 3:$B,601 4:$I,$J,$K,900;",
              "IG01;1;;0:020,500 1:$I,065,$J,601,611,$K,900 2:$B,601 3:$B,601 4:$I,065,$J,$K,900;",
              "IDA4;1;S;0:020,500 1:041,500,601,611 2:041,500,601 3:041,500,601 4:041,500;",
              "IDA4;1;N;0:020,500 1:500,601,611 2:500,601 3:500,601 4:500;",
              "LAPI;1;;0:501 1:501,601,611 2:501,601 3:501,601 4:501;",
              "EC01;0;;0:$E 1:$E 2:$E 3:$E 4:$E;1|MUESTRAEXPO"}) {
            const QStringList c = QString(caso).split(';');
            TestStores ts(static_cast<Motor>(motor));
            Preparar(ts);
            Item(ts, 1, "N", "1", "m");
            Item(ts, 2, "S", "1");
            Item(ts, 3, "S", "2");
            Item(ts, 4, "N", "2");
            if (!c[2].isEmpty())
                c[2] == "S" ? ts.dialogos().ResponderSi() : ts.dialogos().ResponderNo();
            QList<long long> avances;
            GeneracionLiquidacion(ts.ctx(), ts.conexion("INTERNOS"))
                .GenerarOperacion(kT1, c[0], c[1] == "1", {}, [&](int n, int total, long long id) {
                    avances << total * 100 + n * 10 + id;
                });
            QCOMPARE(Conceptos(ts), QString(c[3])
                                        .replace("$I", "010,011,015,016,032,059,061,062")
                                        .replace("$J", "415,417,422,424,500")
                                        .replace("$K", "852,854,856,866")
                                        .replace("$B", "010,011,015,061,062,415,500")
                                        .replace("$E", "020,501,601,611"));
            QCOMPARE(avances, (QList<long long>{411, 422, 433, 444}));
            QCOMPARE(Filas(ts, "select iditem, idventaja from itemventaja where interno = ?"),
                     c[4]);
            QCOMPARE(ts.dialogos().todo(),
                     c[2].isEmpty() ? QStringList() : QStringList{"Desea calcular multas?"});
            QCOMPARE(ts.ctx().CalcMultas, c[2] == "S");
        }
    }

    // The rates of one item with the list 415,422,424,854,856,900. Each case: subregime,
    // Ganancias, Reduccion, CVDI, IngresosBrutos, TasaIVA, flag 1439/96, Muestra, then the rows
    // "code|porcentaje|porcentajeb|pgc" that differ from those of a client that is not CVDI
    // (X 2) under "IC04" (10 x 2 and 5 x 2 for 422 and 854, 3 x 2 for 424 and 856), "G*" for
    // every row to guarantee, and the advantages of item 1.
    void tasas_data() { FilasDeMotores(); }
    void tasas() {
        MOTOR_O_SALTAR();
        const char* casos[] = {
            "IC04;0;0;N;2.5;0;N;;900|3|null|P", // IB 3 outside the agreement
            "IC04;0;0;S;2.5;10.5;N;;415|10.5|null|P 422|10|5|P 424|3|null|P 854|10|5|G "
            "856|3|null|G 900|2.5|null|P",
            "TR01;0;0;N;0;0;N;;G* 422|20|20|G 424|11|null|G 854|20|20|G",
            "IT04;0;50;N;0;0;N;;G*", // no reduction under "IT"
            "IC04;0;100;N;0;0;N;;422|0.00001|null|P 854|0.00001|null|G 1|IVAADREDUCCION",
            // 20 - 12.34 x 20 / 100 = 17.532; 10 - 12.34 x 10 / 100 = 8.766.
            "IC04;0;12.34;N;0;0;N;;422|17.532|8.766|P 854|17.532|8.766|G 1|IVAADREDUCCION",
            "IC04;100;0;N;0;0;N;;424|200|null|P 856|200|null|G 1|GANANEXIMICION",
            "IC04;40;0;N;0;0;N;;424|3.6|null|P 856|3.6|null|G 1|GANANEXIMICION", // 6 - 2.4
            // CVDI (X 1): 3 - 33.333 x 3 / 100 = 2.00001, rounded to 2.
            "IC04;33.333;0;S;0;0;N;;422|10|5|P 424|2|null|P 854|10|5|G 856|2|null|G "
            "1|GANANEXIMICION",
            "IC04;0;0;N;0;0;S;;424|11|null|P", // a decree flag
            "EC01;0;0;N;0;0;N;m;1|MUESTRAEXPO"};
        for (const char* caso : casos)
            for (const QString sep : {",", "."}) {
                SeparadorDecimalScope scope(sep);
                const QStringList f = QString(caso).split(';');
                QMap<QString, QString> filas; // code -> row
                for (const char* b : {"415|0|null|P", "422|20|10|P", "424|6|null|P", "854|20|10|G",
                                      "856|6|null|G", "900|0|null|P"})
                    filas[QString(b).left(3)] = b;
                QString ventajas;
                for (const QString& x : f[8].split(' ', Qt::SkipEmptyParts))
                    if (x == "G*")
                        for (QString& v : filas)
                            v = v.left(v.size() - 1) + "G";
                    else if (x.startsWith("1|"))
                        ventajas = x;
                    else
                        filas[x.left(3)] = x;
                TestStores ts(static_cast<Motor>(motor));
                Preparar(ts);
                ts.ctx().FlagDto1439 = f[6];
                GeneracionLiquidacion(ts.ctx(), ts.conexion("INTERNOS"))
                    .GenerarLiq("415,422,424,854,856,900,424", "1", kT1, f[1].toDouble(),
                                f[2].toDouble(), f[3] == "S", f[5].toDouble(), 7, f[4].toDouble(),
                                f[0], f[7]);
                QCOMPARE(Filas(ts, "select idconceptos, porcentaje, porcentajeb, pgc from "
                                   "itemliq where interno = ? order by idconceptos"),
                         QStringList(filas.values()).join(' '));
                QCOMPARE(Filas(ts, "select iditem, idventaja from itemventaja where interno = ?"),
                         ventajas);
            }
    }

    // The automotive regime on two items of a LAPI position without common external tariff,
    // list "314/R.AUTOMOTRIZ": under "ICR1" the question once, whose yes gives both items the
    // advantage; a partner of marker "B" turns the list to "MERCOSUR" (an item modified by
    // hand keeps its own); under "LAPI" the advantages go and the warning shows.
    // subregime; country; answer; messages; advantages; lists.
    void automotriz_data() { FilasDeMotores(); }
    void automotriz() {
        MOTOR_O_SALTAR();
        const QString pregunta = "ADVERTENCIA: Hay Posiciones arancelarias con LAPI pero no "
                                 "pertenecen\nal régimen automotriz, desea agregarle igual la "
                                 "ventaja VEHICULOPARTES?";
        const QString aviso = "ADVERTENCIA: Hay posiciones con LAPI\npero que no estan en el "
                              "Regimen Automotriz.\n\nVerifique el subregimen del despacho.";
        const QString v = "VEHICULOPARTES", a = "314/R.AUTOMOTRIZ";
        const QList<QStringList> casos = {
            {"ICR1", "999", "S", pregunta, "1|" + v + " 2|" + v + " 3|" + v, a + " " + a},
            {"ICR1", "999", "N", pregunta, "3|" + v, a + " " + a},
            {"ICR1", "203", "", "", "3|" + v, "MERCOSUR " + a},
            {"LAPI", "999", "", aviso, "", a + " " + a}};
        for (const QStringList& c : casos) {
            TestStores ts(static_cast<Motor>(motor));
            Preparar(ts);
            Posicion(ts, "*");
            Conexion& cn = ts.conexion("INTERNOS");
            cn.Ejecutar("insert into caratula (interno,idsubreg) values (?,?)", {kT1, c[0]});
            Item(ts, 1, "N", "2", "", 0, 0, 0, qPrintable(c[1]), "314/R.AUTOMOTRIZ");
            Item(ts, 2, "N", "2", "", 0, 0, 0, qPrintable(c[1]), "314/R.AUTOMOTRIZ");
            cn.Ejecutar("update item set itmodif = 'S' where id = 2");
            cn.Ejecutar("insert into itemventaja (interno,iditem,idventaja) values (?,3,"
                        "'VEHICULOPARTES')",
                        {kT1});
            if (!c[2].isEmpty())
                c[2] == "S" ? ts.dialogos().ResponderSi() : ts.dialogos().ResponderNo();
            LiquidacionOperacion(ts.ctx(), cn).Calcular(kT1);
            QCOMPARE(ts.dialogos().todo().join('/'), c[3]);
            const char* ventajas = "select iditem, idventaja from itemventaja where interno = ? "
                                   "order by iditem";
            QCOMPARE(Filas(ts, ventajas), c[4]);
            QCOMPARE(Filas(ts, "select lista from item where interno = ? order by id"), c[5]);
        }
    }

    // Concepts that tax does not know: "FCV" shows between parentheses without a mark, "777"
    // to pay goes with an empty text; to guarantee, the run fails naming its section. FOB 100 at
    // rate 1: FCV 2% = 2, 777 5% = 5.
    void sinTax_data() { FilasDeMotores(); }
    void sinTax() {
        MOTOR_O_SALTAR();
        for (const QString pgc : {"P", "G"}) {
            TestStores ts(static_cast<Motor>(motor));
            Preparar(ts);
            Posicion(ts);
            Conexion& c = ts.conexion("INTERNOS");
            c.Ejecutar("insert into caratula (interno,idsubreg,fobdivcambio) values (?,'IC04',1)",
                       {kT1});
            Item(ts, 1, "N", "2", "", 100);
            for (const auto& [cod, tasa] : {std::pair{"FCV", 2}, {"777", 5}})
                c.Ejecutar("insert into itemliq (interno,iditem,idconceptos,porcentaje,pgc) "
                           "values (?,1,?,?,?)",
                           {kT1, cod, tasa, pgc});
            try {
                const auto r = LiquidacionOperacion(ts.ctx(), c).Calcular(kT1);
                QCOMPARE(pgc, "P");
                QCOMPARE(r.grilla.size(), 2);
                // In order of code; the mask "00.00" keeps two whole digits.
                QCOMPARE(r.grilla[0].descripcion + r.grilla[0].importe,
                         "05" + SeparadorDecimal() + "00");
                QCOMPARE(r.grilla[1].descripcion + r.grilla[1].importe,
                         "Factor de Convergencia(02" + SeparadorDecimal() + "00)");
                QCOMPARE(r.pagar, 5.0);
                QCOMPARE(Filas(ts, "select idconcepto, concepto, valor, pgc from liqcero where "
                                   "interno = ? and idconcepto in ('FCV','777') order by valor"),
                         "FCV||2|null 777||5|P");
            } catch (const KorvenError& e) {
                QCOMPARE(pgc, "G");
                QCOMPARE(e.origen(), "KORVEN.frmverItem.VerDetalleITEM");
            }
        }
    }

    // Two items assembled and calculated. Import "IC04", rates 1, client not CVDI (X 2). Position
    // 015 12, 016 3, 048 2; IVA 21.
    // Item 1 (common, estadomerc 2): FOB 1000, freight 100, insurance 10, its 010 typed at 10.
    //   BaseImponible 1110; duty 111; statistics 1110 x 3% = 33.30; BaseIVA 1254.30.
    //   415 263.40 (263.403); 422 20% 250.86; 424 6% 75.258 -> 75.26; AEC concepts 0.
    // Item 2 (capital goods, estadomerc 2): FOB 500. Its 010 is the stored 0, so no duty.
    //   Statistics 15; BaseIVA 515; 415 108.15.
    // Totals: 010 111, 011 48.30, 415 371.55, 422 250.86, 424 75.26, 500 10.
    // To pay: 866.97. Sums: BaseIVA 1769.30, BaseImp 1610.
    void operacion_data() { FilasDeMotores(); }
    void operacion() {
        MOTOR_O_SALTAR();
        for (const QString sep : {",", "."}) {
            SeparadorDecimalScope scope(sep);
            TestStores ts(static_cast<Motor>(motor));
            Preparar(ts);
            AppContext& ctx = ts.ctx();
            ctx.config().IVARIN = 21;
            Conexion& c = ts.conexion("INTERNOS");
            c.Ejecutar("insert into caratula (interno,idsubreg,fobdivcambio,fletedivcambio,"
                       "segurodivcambio) values (?,'IC04',1,1,1)",
                       {kT1});
            Posicion(ts);
            Item(ts, 1, "N", "2", "", 1000, 100, 10);
            Item(ts, 2, "S", "2", "", 500);
            GeneracionLiquidacion(ctx, c).GenerarOperacion(kT1, "IC04", true, {});
            c.Ejecutar("update itemliq set porcentaje = 10 where interno = ? and iditem = 1 and "
                       "idconceptos = '010'",
                       {kT1});
            ctx.LiquidacionPendiente = true;
            QStringList estados;
            LiquidacionOperacion l(ctx, c);
            const auto r = l.Calcular(kT1, [&](const QString& e) { estados << e; });
            QStringList grilla;
            for (const auto& g : r.grilla)
                grilla << g.idconcepto + "|" + g.descripcion + "|" +
                              QString(g.importe).replace(sep, ".");
            QCOMPARE(r.grilla.value(0).importe, "111" + sep + "00");
            QCOMPARE(grilla, (QStringList{"010|DERECHO DE IMPORTACION|111.00",
                                          "011|TASA DE ESTADISTICA|48.30", "415|I.V.A.|371.55",
                                          "422|I.V.A. ADICIONAL|250.86",
                                          "424|ANTICIPO IMPUESTO A LAS GANANCIAS|75.26",
                                          "500|ARANCEL SIM IMPO|10.00"}));
            QCOMPARE(r.pagar, 866.97);
            QCOMPARE(r.garantizar + r.cobrar, 0.0);
            const QString liqcero =
                "###ajded|null|0|null ###ajinc|null|0|null ###baseimp|null|1610|null "
                "###baseiva|null|1769.3|null 010|DERECHO DE IMPORTACION|111|P 011|TASA DE "
                "ESTADISTICA|48.3|P 415|I.V.A.|371.55|P 422|I.V.A. ADICIONAL|250.86|P "
                "424|ANTICIPO IMPUESTO A LAS GANANCIAS|75.26|P 500|ARANCEL SIM IMPO|10|P";
            const char* sqlCero = "select idconcepto, concepto, valor, pgc from liqcero where "
                                  "interno = ?";
            QCOMPARE(Filas(ts, sqlCero, true), liqcero);
            const char* sqlLiq = "select iditem, idconceptos, baseimp, porcentaje, total, pgc from "
                                 "itemliq where interno = ? and (total <> 0 or iditem = 0) order "
                                 "by iditem, idconceptos";
            QCOMPARE(Filas(ts, sqlLiq),
                     "0|020|0|0|0|P 0|500|0|0|0|P 1|010|1110|10|111|P 1|011|1110|3|33.3|P "
                     "1|415|1254.3|21|263.4|P 1|422|1254.3|20|250.86|P 1|424|1254.3|6|75.26|P "
                     "2|011|500|3|15|P 2|415|515|21|108.15|P");
            QCOMPARE(estados,
                     (QStringList{"Liquidando ITEM 1 ...", "Liquidando ITEM 2 ...", "LISTO"}));
            QVERIFY(!ctx.LiquidacionPendiente);

            // Nothing dirty: the totals again from the rows as written, itemliq untouched.
            c.Ejecutar("update itemliq set total = 999 where interno = ? and idconceptos = '062'",
                       {kT1});
            const QString todo =
                "select * from itemliq where interno = ? order by iditem, idconceptos";
            const QString antes = Filas(ts, todo);
            const auto r2 = l.Calcular(kT1, [&](const QString& e) { estados << e; });
            QCOMPARE(r2.pagar, 866.97);
            QCOMPARE(Filas(ts, sqlCero, true), liqcero);
            QCOMPARE(Filas(ts, todo), antes);
            QCOMPARE(estados.size(), 3);
            QCOMPARE(ts.dialogos().todo(), QStringList());
        }
    }
};

namespace {

// Fills a calculator from a compact text, "Propiedad=valor;Propiedad=valor", so that each row of
// a data-driven test states the whole item it calculates. Numbers are written with ".", on the
// operation kT1.
const QString kInterno = QStringLiteral("100");

void AplicarAjustes(ClassLiquidacion& l, AppContext& ctx, const QString& ajustes) {
    static const QHash<QString, void (L::*)(double)> numeros = {
        {"DivFOB", &L::setCaratulaDivisasFOB},
        {"DivFlete", &L::setCaratulaDivisasFlete},
        {"DivSeguro", &L::setCaratulaDivisasSeguro},
        {"Expo", &L::setNcmDerechodeExpo},
        {"FOB", &L::setFOBTotalITEM},
        {"Flete", &L::setFLETETotalITEM},
        {"Derecho", &L::setNcmDerechodeImportacionExtrazona},
        {"Seguro", &L::setSEGUROTotalITEM},
        {"Estadistica", &L::setNcmTasaEstadistica},
        {"AjInc", &L::setAJUSTEINCLUIRtotalITEM},
        {"CantEsp", &L::setncmCantidadDerechoEspecifico},
        {"AjDed", &L::setAJUSTEDEDUCIRtotalITEM},
        {"Indicador", &L::setNcmIndicadorMaximoArancel},
        {"Reintegro", &L::setncmReintegroFijo},
        {"ReintegroIntra", &L::setncmReintFijoIntraZona},
        {"ValorAEC", &L::setncmValor_AEC},
        {"Exencion", &L::setncmExencionReduccionIVA},
        {"TasaLey", &L::setncmMineriaTasaLey},
        {"ValorEsp", &L::setItemCantidadDerechoEspecifico},
        {"ComExt", &L::setItmComsionesExt},
        {"Coef", &L::setItemCoeficienteExportacion},
        {"TmpCons", &L::setItmImportacionTmpCons},
        {"Temporal", &L::setItmImportacionTemporal}};
    static const QHash<QString, void (L::*)(const QString&)> textos = {
        {"SubReg", &L::setCaratulaSubRegimen},
        {"Adicional", &L::setNcmDerechoAdicional},
        {"ncm_AEC", &L::setncm_AEC},
        {"Pais", &L::setItemIdPais},
        {"Lista", &L::setItemLista}};
    static const QHash<QString, void (L::*)(bool)> marcas = {
        {"Force", &L::setNcmDerechodeImportacionExtrazonaForce},
        {"Mineria", &L::setItemMineria},
        {"CalcCoef", &L::setItemCalcularCoeficienteExportacion},
        {"Mercosur", &L::setItemLISTA_MERCOSUR}};
    for (const QString& par : ajustes.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int i = par.indexOf(QLatin1Char('='));
        const QString k = par.left(i).trimmed();
        const QString v = par.mid(i + 1);
        if (numeros.contains(k))
            (l.*numeros.value(k))(N(v));
        else if (textos.contains(k))
            (l.*textos.value(k))(v);
        else if (marcas.contains(k))
            (l.*marcas.value(k))(v == QLatin1String("1"));
        else if (k == "IVARIN" || k == "IVARNI")
            (k == "IVARIN" ? ctx.config().IVARIN : ctx.config().IVARNI) = N(v);
        else if (k == "FlagDto1439" || k == "FlagDto1439A1")
            (k == "FlagDto1439" ? ctx.FlagDto1439 : ctx.FlagDto1439A1) = v;
        else if (k == "AEC")
            ctx.settings().SaveSetting("KORVEN", "AEC", kInterno, v);
        else
            qFatal("Ajuste desconocido: %s", qPrintable(k));
    }
}

// An import item of FOB 1000 at a rate of exchange of 1 from a country with the tariff cap:
// BaseImponible 1000; with no duty nor fee, BaseIVA 1000 too.
const QString kItem = QStringLiteral("SubReg=IC04;DivFOB=1;FOB=1000;Pais=101;");

// A calculator on private stores, working on the operation kInterno, filled from the text.
struct Calculadora {
    explicit Calculadora(const QString& ajustes = {}) : t(Motor::SQLite), liq(t.ctx()) {
        t.ctx().InternoActual = kInterno;
        AplicarAjustes(liq, t.ctx(), ajustes);
    }
    // Concept codigo with the percentage p and base b; both come back as the calculator left them.
    double Concepto(const QString& codigo, QString& p, double& b, const QString& pB = {},
                    double valor = 0, bool sinCoef = false) {
        return liq.ObtenerValorConcepto(codigo, p, 0, b, pB, valor, sinCoef);
    }
    TestStores t;
    ClassLiquidacion liq;
};

// The text of a number written with "." as the system writes it.
QString ConSeparador(QString texto, const QString& separador) {
    return texto.replace(QLatin1Char('.'), separador);
}

const QString kVacio = QStringLiteral("Vacio");

// The items the tables name by a mark.
QString Ajustes(QString a) {
    // Reduced common external tariff (country of marker "B", 75 % of 14): PorcentajeAEC 10.5,
    // BaseAEC 105.
    a.replace("$AEC", "AEC=R;ncm_AEC=*;Pais=203;ValorAEC=14;IVARIN=21;IVARNI=10.5");
    // Duty 10 %, fee 3 %, common external tariff 14 % on the position.
    a.replace("$TAR", "Derecho=10;Estadistica=3;ncm_AEC=*;ValorAEC=14");
    // Duty 10 % and fee 3 %: BaseIVA 1000 + 100 + 30 = 1130.
    a.replace("$IVA", "Derecho=10;Estadistica=3;IVARIN=21;IVARNI=10.5");
    // Specific duty 1.5 x 100 = 150 against 10 % of 1000, cap of indicator 1: 30 % of 1000.
    a.replace("$MIN", "Derecho=10;Indicador=1;CantEsp=1.5;ValorEsp=100");
    // Freight 100 and insurance 10 at a rate of 1 under a duty of 10 %.
    a.replace("$FLETE", "Derecho=10;DivFlete=1;DivSeguro=1;Flete=100;Seguro=10");
    // An export item for the refunds: F 1000, I 50, D 20, T 100, C 30, X 10.
    a.replace("$REI", "SubReg=EC01;AjInc=50;AjDed=20;Temporal=100;TmpCons=30;ComExt=10;"
                      "Reintegro=5;ReintegroIntra=2.5");
    return kItem + a;
}

} // namespace

// The calculator's properties, the two bases, the comparison of duties, the answer on the common
// external tariff and the trapped failures, under "," and under "." as the system separator.
class TestLiquidacion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // name | FOB | freight | insurance | percentage -> insurance
    void seguroPorcentual_data() {
        FilasDeTexto(R"(
            sin seguro     | 1000   | 200 | 0 | 1 | 12
            con seguro     | 1000   | 200 | 5 | 1 | 5
            redondeo       | 1234.5 | 0   | 0 | 1 | 12.35
            sin porcentaje | 1000   | 200 | 0 | 0 | 0)");
    }
    void seguroPorcentual() {
        FILA();
        Calculadora c;
        c.liq.setCaratulaFobTotal(N(f[1]));
        c.liq.setCaratulaFleteTotal(N(f[2]));
        c.liq.setCaratulaSeguroValor(N(f[3]));
        c.liq.setCaratulaSeguroProcent(N(f[4]));
        QCOMPARE(c.liq.CaratulaSeguroValor(), N(f[5]));
    }

    void valoresEnDolares() {
        Calculadora c(
            "DivFOB=1.5;DivFlete=2;DivSeguro=0.5;FOB=100;Flete=30;Seguro=7;AjInc=11;AjDed=3");
        QCOMPARE((QList<double>{c.liq.ObtenerFobItemUS(), c.liq.ObtenerFLETEItemUs(),
                                c.liq.ObtenerSEGUROItemUs(), c.liq.ObtenerAjusteIncUs(),
                                c.liq.ObtenerAjusteDedUs()}),
                 (QList<double>{150, 60, 3.5, 16.5, 4.5}));
        // The export coefficient of the item is set by its own property only.
        c.liq.setItemxItmCOFEXP(0.5);
        QCOMPARE(c.liq.ItemCoeficienteExportacion(), 0.0);
        QCOMPARE(NumeroDeError([&] { c.liq.setNcmDerechoAdicional("x"); }), 13);
    }

    // name | item -> BaseImponible | ValorDerechos | ValorEspecifico | ValorDIEM | Aux_PORCENTAJE |
    // duty after | BaseIVA
    void bases_data() {
        FilasDeTexto(R"(
            importacion        | $FLETE                            | 1110 | 111 | 0 | 0 | 10 | 10 | 1221
            exportacion        | $FLETE;SubReg=EC01                | 1000 | 100 | 0 | 0 | 10 | 10 | 1100
            ajustes            | $FLETE;DivFOB=2;AjInc=50;AjDed=20 | 2170 | 217 | 0 | 0 | 10 | 10 | 2387
            # Inputs and commissions of the item, in its own currency.
            con insumos | $FLETE;SubReg=IC06;DivFOB=2;Temporal=300;ComExt=40 | 1850 | 185 | 0 | 0 | 10 | 10 | 2035
            sin insumos | $FLETE;DivFOB=2;Temporal=300;ComExt=40             | 2110 | 211 | 0 | 0 | 10 | 10 | 2321
            ad valorem igual al especifico | Derecho=10;CantEsp=1;ValorEsp=100 | 1000 | 100 | 0 | 0 | 10 | 10 | 1100
            pais socio             | $MIN;Pais=225       | 1000 | 0 | 0   | 0   | 10 | 0  | 1000
            pais bilateral         | $MIN;Pais=203       | 1000 | 0 | 0   | 0   | 10 | 0  | 1000
            pais fuera de la lista | $MIN;Pais=999       | 1000 | 0 | 150 | 0   | 10 | 10 | 1100
            tope 30                | $MIN                | 1000 | 0 | 0   | 150 | 30 | 10 | 1150
            tope 30 alcanzado      | $MIN;ValorEsp=400   | 1000 | 0 | 0   | 300 | 30 | 10 | 1300
            tope 35                | $MIN;Indicador=2    | 1000 | 0 | 0   | 150 | 35 | 10 | 1150
            sin indicador          | $MIN;Indicador=0    | 1000 | 0 | 0   | 0   | 0  | 10 | 1100
            minimo redondeado | Derecho=1;Indicador=1;CantEsp=12.345;ValorEsp=1 | 1000 | 0 | 0 | 12.35 | 30 | 1 | 1012.35
            310 especifico al tope | Derecho=10;Pais=310;Indicador=2;CantEsp=2;ValorEsp=100 | 1000 | 0 | 350 | 0 | 35 | 10 | 1100
            310 minimo             | Derecho=10;Pais=310;Indicador=1;CantEsp=4;ValorEsp=100 | 1000 | 0 | 0 | 300 | 30 | 10 | 1300
            # The export coefficient multiplies the base.
            coeficiente            | Coef=0.9            | 900  | 0 | 0   | 0   | 0  | 0  | 900)");
    }
    void bases() {
        FILA();
        Calculadora c(Ajustes(f[1]));
        QCOMPARE(c.liq.ObtenerBaseImponible(), N(f[2]));
        // Computed anew on each call.
        QCOMPARE(c.liq.ObtenerBaseImponible(), N(f[2]));
        const double iva = c.liq.ObtenerBaseIVA();
        QVERIFY(Cifras(f, 2,
                       {c.liq.BaseImponible(), c.liq.ValorDerechos(), c.liq.ValorEspecifico(),
                        c.liq.ValorDIEM(), c.liq.Aux_PORCENTAJE(),
                        c.liq.NcmDerechodeImportacionExtrazona(), iva}));
        QCOMPARE(c.liq.ValorDIEMCHINA() + c.liq.BaseAEC(), 0.0);
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // ObtenerBaseIVA starts from whatever base the previous item left.
    void baseIVASinBaseImponible() {
        Calculadora c(kItem);
        QCOMPARE(c.liq.ObtenerBaseImponible(), 1000.0);
        c.liq.setFOBTotalITEM(500);
        c.liq.setNcmDerechodeImportacionExtrazona(10);
        QCOMPARE(c.liq.ObtenerBaseIVA(), 1100.0);
        QCOMPARE(c.liq.ValorDerechos(), 100.0);
    }

    // The base of the taxes on the sale.
    // name | item -> BaseIVA | BaseAEC | PorcentajeAEC | duty | statistics fee
    void baseIVA_data() {
        FilasDeTexto(R"(
            R extrazona             | $TAR;AEC=R                         | 1170 | 0   | 0    | 14 | 3
            R forzado               | $TAR;AEC=R;Force=1                 | 1130 | 0   | 0    | 10 | 3
            R bilateral             | $TAR;AEC=R;Pais=203                | 1000 | 105 | 10.5 | 0  | 0
            R bilateral mercosur    | $TAR;AEC=R;Pais=203;Mercosur=1     | 1000 | 105 | 10.5 | 0  | 0
            R socio                 | $TAR;AEC=R;Pais=225                | 1130 | 0   | 0    | 10 | 3
            R sin marca             | $TAR;AEC=R;ncm_AEC=                | 1130 | 0   | 0    | 10 | 3
            R sin marca mercosur    | $TAR;AEC=R;ncm_AEC=;Mercosur=1     | 1000 | 0   | 0    | 10 | 3
            P                       | $TAR;AEC=P                         | 1030 | 0   | 0    | 10 | 3
            N                       | $TAR;AEC=N                         | 1130 | 0   | 0    | 10 | 3
            N automotriz            | $TAR;AEC=N;Lista=314/R.AUTOMOTRIZ  | 1000 | 105 | 10.5 | 0  | 0
            N mercosur              | $TAR;AEC=N;Mercosur=1              | 1000 | 0   | 0    | 10 | 3
            N minimo                | $TAR;$MIN;AEC=N                    | 1180 | 0   | 0    | 10 | 3
            mineria                 | $TAR;AEC=N;Mineria=1;TasaLey=1     | 1010 | 0   | 0    | 0  | 0
            mineria mercosur        | $TAR;AEC=N;Mineria=1;TasaLey=1;Mercosur=1 | 1000 | 0 | 0 | 0 | 0
            sin mineria             | $TAR;AEC=N;TasaLey=1               | 1130 | 0   | 0    | 10 | 3
            decreto 1439            | $TAR;AEC=N;FlagDto1439=S;Adicional=24   | 1370 | 0 | 0 | 10 | 3
            decreto 1439 A1         | $TAR;AEC=N;FlagDto1439A1=S;Adicional=48 | 1610 | 0 | 0 | 10 | 3
            IC81                    | $TAR;AEC=N;SubReg=IC81;Adicional=24     | 1370 | 0 | 0 | 10 | 3
            adicional sin decreto   | $TAR;AEC=N;Adicional=24            | 1130 | 0   | 0    | 10 | 3
            # The statistics fee by tier: 3 % up to 79999, 400 from 80000 to 99999, 500 from 100000.
            tramo 1 al limite       | Estadistica=3;FOB=79999            | 82398.97 | 0 | 0 | 0 | 3
            hueco del tramo 1       | Estadistica=3;FOB=79999.5          | 79999.5  | 0 | 0 | 0 | 3
            tramo 2                 | Estadistica=3;FOB=80000            | 80400    | 0 | 0 | 0 | 3
            tramo 2 al limite       | Estadistica=3;FOB=99999            | 100399   | 0 | 0 | 0 | 3
            hueco del tramo 2       | Estadistica=3;FOB=99999.5          | 99999.5  | 0 | 0 | 0 | 3
            tramo 3                 | Estadistica=3;FOB=100000           | 100500   | 0 | 0 | 0 | 3)");
    }
    void baseIVA() {
        FILA();
        Calculadora c(Ajustes(f[1]));
        c.liq.ObtenerBaseImponible();
        const double iva = c.liq.ObtenerBaseIVA();
        QVERIFY(Cifras(f, 2,
                       {iva, c.liq.BaseAEC(), c.liq.PorcentajeAEC(),
                        c.liq.NcmDerechodeImportacionExtrazona(), c.liq.NcmTasaEstadistica()}));
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // Trapped failures: the calculator goes on with 0 after its message.
    // name | item -> BaseImponible | BaseIVA | ValorDerechos | the one message
    void fallos_data() {
        FilasDeTexto(R"(
            base imponible | FOB=1e308;DivFOB=10;Derecho=10     | 0    | 0    | 0 | Desbordamiento[clCalcular.BaseImponible]_
            derechos       | Derecho=10;CantEsp=1e300;ValorEsp=1e300 | 1000 | 1100 | 0 | 6 - Desbordamiento\n\nSección [KORVEN.ClassLiquidacion.CalcularDerechos]
            sin pantalla   | Derecho=10;ncm_AEC=*               | 1000 | 0    | 100 | La pantalla FrmABMClientes no está instalada.)");
    }
    void fallos() {
        FILA();
        Calculadora c(Ajustes(f[1]));
        const double bi = c.liq.ObtenerBaseImponible();
        // The duty of the base still enters the base of the taxes.
        const double iva = c.liq.ObtenerBaseIVA();
        QVERIFY(Cifras(f, 2, {bi, iva, c.liq.ValorDerechos()}));
        QCOMPARE(c.liq.ValorDIEM() + c.liq.ValorEspecifico(), 0.0);
        const auto& r = c.t.dialogos().registro();
        QCOMPARE(r.size(), 1);
        QCOMPARE(r[0].texto, f[5].replace("\\n", "\n").replace("_", " "));
        if (f[0].startsWith("derechos"))
            QCOMPARE(r[0].icono, Dialogos::Icono::Critico);
    }

    // The special duty of the country 310.
    // name | country | calculates | DIEM | quantity | base -> duty | message
    void diemChina_data() {
        FilasDeTexto(R"(
            # x = 5 x 100 x 100 / 1000 = 50; y = 15; z = 15 - 6 = 9; w = 44; 44 x 1000 / 100.
            simple    | 310 | 1 | 5    | 100 | 1000 | 440
            # x = 2331 / 1234 = 1.888979; y = -33.111021; 40 % of y rounds to -13.24;
            # w = 15.128979; w x 1234 / 100 = 186.6916.
            redondeo  | 310 | 1 | 3.33 | 7   | 1234 | 186.69
            otro pais | 311 | 1 | 5    | 100 | 1000 | 0
            sin fila  | 310 | 0 | 5    | 100 | 1000 | 0
            base cero | 310 | 1 | 5    | 100 | 0    | 0 | División por cero\n\n11 - seccion [KORVEN.ClassLiquidacion.CalcularDIEMCHINA])");
    }
    void diemChina() {
        FILA();
        Calculadora c;
        c.liq.setItemPais(f[1]);
        c.liq.setncmCalculaDIEMCHINA(f[2] == "1");
        c.liq.setncmDIEMCHINAValor(N(f[3]));
        c.liq.setItemCantidadDerechoEspecifico(N(f[4]));
        c.liq.setncmDIEMIndMaxArancelValor(35);
        c.liq.setncmDIEMPREFPorcValor(40);
        QCOMPARE(c.liq.CalcularDiemCHINA(N(f[5])), N(f[6]));
        const QStringList m = f.size() > 7 ? QStringList{f[7].replace("\\n", "\n")} : QStringList();
        QCOMPARE(c.t.dialogos().mensajes(), m);
        if (!m.isEmpty())
            QCOMPARE(c.t.dialogos().registro()[0].icono, Dialogos::Icono::Critico);
    }

    // Country and subregime rules.
    void marcaPais() {
        const QList<std::pair<QString, QString>> casos = {
            {"225", "M"}, {" 221 ", "M"}, {"203", "B"}, {"", ""},
            {"   ", ""},  {"310", "E"},   {"0225", "E"}};
        for (const auto& [pais, marca] : casos)
            QVERIFY2(MarcaPais(pais) == marca, qPrintable(pais));
    }

    void paisConTopeArancel() {
        const std::set<int> lista = {
            101, 103, 104, 105, 107, 108, 111, 112, 113, 115, 116, 117, 118, 120, 121, 124, 125,
            126, 127, 128, 129, 130, 131, 132, 133, 134, 135, 137, 139, 140, 141, 142, 144, 149,
            151, 153, 156, 158, 159, 200, 201, 202, 203, 204, 205, 206, 208, 209, 210, 211, 212,
            213, 214, 215, 216, 217, 218, 219, 220, 221, 222, 224, 225, 226, 232, 233, 234, 235,
            236, 237, 238, 240, 303, 304, 307, 308, 309, 312, 315, 316, 319, 320, 322, 323, 326,
            327, 329, 331, 332, 333, 335, 341, 344, 345, 346, 405, 406, 407, 409, 410, 411, 412,
            413, 414, 415, 416, 417, 418, 419, 420, 422, 423, 424, 425, 426, 427, 429, 430, 435,
            436, 438, 448, 449, 451, 501, 504, 512, 513, 518};
        for (int n = -5; n <= 1000; ++n)
            QVERIFY2(PaisConTopeArancel(QString::number(n)) == (lista.count(n) == 1),
                     qPrintable(QString::number(n)));
        QVERIFY(PaisConTopeArancel("0101") && PaisConTopeArancel(" 518 "));
        QVERIFY(!PaisConTopeArancel("310") && !PaisConTopeArancel("") &&
                !PaisConTopeArancel("ABC"));
    }

    // Subregimes with inputs (blanks aside), and temporary ones (exactly as written).
    void subregimenes() {
        const QStringList insumos =
            QString("EC02 EC03 EC04 EC05 EC06 EC16 EG02 EG03 IC81 IC82 IC83 DIR6 IC06 IC26 IC36 "
                    "IG06 IT06 RnaE06 TG06 TG16 TR06 MARE IDT4")
                .split(' ');
        const QStringList temporales = QString("IT01 IT03 IT04 IT05 IT06 IT07 IT11 IT13 IT14 IT15 "
                                               "IT16 IT17 ET01 ET02 ETA1 ETE1 ETE2")
                                           .split(' ');
        for (const QString& s :
             insumos + temporales + QString("EC01 IC04 IT02 rnae06 IC8 ET03 ").split(' ')) {
            QVERIFY2(SubregimenConInsumos(' ' + s + ' ') == insumos.contains(s), qPrintable(s));
            QVERIFY2(SubregimenTemporal(s) == temporales.contains(s), qPrintable(s));
            QVERIFY2(!SubregimenTemporal(s + ' '), qPrintable(s));
        }
    }

    // Every concept code of the liquidation, automatic and manual, computed by hand from its rule,
    // under "," and under "." as the system separator.
    // name | item | code | percentage | base | second percentage | manual | without coefficient
    //  -> amount | base | LqPorc | percentage
    void concepto_data() {
        FilasDeTexto(R"(
            # 010: the ad-valorem duty of the comparison with the specific one.
            010 Vacio|Derecho=10|010|Vacio|0||0|0|100|1000|10|10
            010 con tasa|Derecho=10|010|12.5|0||0|0|125|1000|12.5|12.5
            010 manual|Derecho=10|010|7.25|333.33||1|0|24.17|333.33|7.25|7.25
            010 mercosur|Derecho=10;Mercosur=1|010|Vacio|55||0|0|0|0|0|Vacio
            010 automotriz|Derecho=10;Lista=314/R.AUTOMOTRIZ|010|Vacio|55||0|0|0|0|0|Vacio
            010 mineria manual|Derecho=10;Mineria=1|010|10|500||1|0|0|0|0|10
            010 especifico mayor|Derecho=10;Pais=999;CantEsp=1.5;ValorEsp=100|010|Vacio|0||0|0|0|1000|10|10
            # 866: the common external tariff, also when manual.
            866 Vacio|$AEC|866|Vacio|0||0|0|105|1000|10.5|10.5
            866 mercosur|$AEC;Mercosur=1|866|Vacio|0||0|0|0|1000|0|0
            866 manual||866|5|200||1|0|50|1000|5|5
            # 852 and 415: VAT by the position's exemption (whole numbers round half to even).
            852 Vacio normal|$AEC;Exencion=2|852|Vacio|0||0|0|22.05|105|21|21
            852 Vacio reducido|$AEC;Exencion=1|852|Vacio|0||0|0|11.03|105|10.5|10.5
            415 exencion 0.5 es 0|$IVA;Exencion=0.5|415|Vacio|0||0|0|0|1130|0|0
            415 exencion 1.4 es 1|$IVA;Exencion=1.4|415|Vacio|0||0|0|118.65|1130|10.5|10.5
            415 exencion 1.5 es 2|$IVA;Exencion=1.5|415|Vacio|0||0|0|237.3|1130|21|21
            415 exencion fuera de rango|$IVA;Exencion=1e9|415|Vacio|0||0|0|237.3|1130|21|21
            415 con tasa|$IVA;Exencion=0|415|10.5|0||0|0|118.65|1130|10.5|10.5
            415 manual|$IVA;Exencion=2|415|21|500||1|0|105|500|21|21
            # 854 and 422: VAT additional; the reduced position takes the second rate.
            854 reducido|$AEC;Exencion=1|854|10|0|5|0|0|5.25|105|5|5
            854 exento|$AEC;Exencion=0|854|10|0|5|0|0|0|105|0|0
            854 Vacio no es numero|$AEC;Exencion=2|854|Vacio|0||0|0|0|105|0|0
            854 sin segunda tasa|$AEC;Exencion=1|854|10|0||0|0|0|105|0|0
            854 manual|$AEC;Exencion=2|854|20|999||1|0|21|105|20|20
            422 normal|$IVA;Exencion=2|422|20|0|10|0|0|226|1130|20|20
            422 manual|$IVA;Exencion=2|422|10|400||1|0|40|400|10|10
            # 856 and 424: income tax advance; 200 marks full exemption.
            856 Vacio|$AEC|856|Vacio|0||0|0|3.15|105|3|3
            856 exencion total|$AEC|856|200|0||0|0|0|105|0|0
            856 manual|$AEC|856|6|50||1|0|6.3|105|6|6
            424 Vacio|$IVA|424|Vacio|0||0|0|33.9|1130|3|3
            424 IT04 automatico con 200|$IVA;SubReg=IT04|424|200|0||0|0|124.3|1130|11|11
            424 IT04 manual con 200|$IVA;SubReg=IT04|424|200|700||1|0|0|700|0|0
            424 IT04 manual|$IVA;SubReg=IT04|424|6|100||1|0|6|100|6|6
            # 059 and 015: the minimum and the specific duty of the comparison.
            059 minimo|$MIN|059|Vacio|0||0|0|150|1000|30|Vacio
            059 mercosur|$MIN;Mercosur=1|059|Vacio|9||0|0|0|0|0|Vacio
            059 sin minimo|Derecho=10|059|Vacio|9||0|0|0|0|0|Vacio
            015 especifico|Derecho=10;Pais=999;CantEsp=1.5;ValorEsp=100|015|Vacio|77||0|0|150|150|0|Vacio
            015 sin especifico|Derecho=10|015|Vacio|77||0|0|0|77|0|Vacio
            # 016: additional duty.
            016 Vacio|Adicional=24|016|Vacio|5||0|0|240|1000|24|24
            016 adicional con coma|Adicional=24,5|016|Vacio|5||0|0|245|1000|24.5|24.5
            016 manual|Adicional=24|016|10|123.45||1|0|12.35|123.45|10|10
            # 020: export duty, with the export coefficient.
            020 sin coeficiente|SubReg=EC01;Expo=5|020|Vacio|0||0|0|50|1000|0|5
            020 calcula coeficiente|SubReg=EC01;CalcCoef=1|020|5|0||0|0|47.62|952.38|5|5
            020 coeficiente dado sin aplicar|SubReg=EC01;Coef=0.9|020|5|0||0|1|45|900|5|5
            020 coeficiente dado|SubReg=EC01;Coef=0.9|020|5|0||0|0|40.5|810|5|5
            # 032: mining levy.
            032 sin mineria|TasaLey=1|032|Vacio|9||0|0|0|0|0|Vacio
            032 Vacio|Mineria=1;TasaLey=1|032|Vacio|9||0|0|10|1000|1|1
            # 065: the duty of the country 310 is only ever entered by hand.
            065 manual||065|3|200||1|0|6|200|3|3
            065 pais 310|Pais=310|065|Vacio|9||0|0|0|0|0|Vacio
            # 601 and 611: refunds, on amounts in the currency of the item.
            601 sin coeficiente|$REI|601|Vacio|9||0|0|46.5|930|5|Vacio
            601 pais bilateral|$REI;Pais=203|601|3|9||0|0|23.25|930|2.5|3
            601 deduccion sumada|$REI;TmpCons=-30;ComExt=0|601|Vacio|9||0|0|53.5|1070|5|Vacio
            601 con coeficiente|$REI;Coef=0.9|601|Vacio|9||0|0|0|0|0|Vacio
            611 con coeficiente|$REI;Coef=0.9;Pais=225|611|Vacio|9||0|0|20.93|837|2.5|Vacio
            611 menor sin insumos|$REI;Coef=0.98|611|Vacio|9||0|0|44.5|890|5|Vacio
            611 sin coeficiente|$REI|611|Vacio|9||0|0|0|0|0|Vacio
            # 500 and 501: the fixed system fee is not calculated here.
            500||500|12|40||0|0|0|0|0|0
            # 011, 061, 062: the statistics fee by tier.
            011 Vacio|Estadistica=3|011|Vacio|9||0|0|30|1000|3|3
            011 manual|Estadistica=3|011|0.5|2000||1|0|10|2000|0.5|0.5
            011 segundo tramo|Estadistica=3;FOB=85000|011|Vacio|9||0|0|0|0|0|Vacio
            011 mercosur|Estadistica=3;Mercosur=1|011|Vacio|9||0|0|0|0|0|Vacio
            011 automotriz|Estadistica=3;Lista=314/R.AUTOMOTRIZ|011|Vacio|9||0|0|0|0|0|Vacio
            011 mineria manual|Estadistica=3;Mineria=1|011|0.5|2000||1|0|0|0|0|0.5
            061 segundo tramo|Estadistica=3;FOB=85000|061|Vacio|9||0|0|400|0|0|Vacio
            061 sin tasa|FOB=85000|061|Vacio|9||0|0|0|0|0|Vacio
            061 primer tramo con tasa|Estadistica=3|061|2|200||0|0|4|200|2|2
            061 primer tramo Vacio|Estadistica=3|061|Vacio|200||0|0|0|200|0|Vacio
            061 mercosur|Estadistica=3;FOB=85000;Mercosur=1|061|Vacio|9||0|0|0|0|0|Vacio
            062 tercer tramo|Estadistica=3;FOB=150000|062|Vacio|9||0|0|500|0|0|Vacio
            062 segundo tramo sin base|Estadistica=3;FOB=85000|062|2|-5||0|0|0|-5|0|2
            # 041: fine.
            041 Vacio||041|Vacio|9||0|0|10|1000|1|1
            041 manual||041|2|5||1|0|20|1000|2|2
            # 900: gross income tax.
            900 Vacio|$IVA|900|Vacio|9||0|0|0|1130|0|0
            900 manual|$IVA|900|3.5|1000||1|0|35|1000|3.5|3.5
            # 417: the internal tax (its decrees are read from the store; see the store test).
            417 manual||417|8|250||1|0|20|250|8|8
            417 sin decreto||417|Vacio|77||0|0|0|77|0|Vacio
            # FCV and any other code: a plain percentage; the one rounding is half away from zero.
            FCV Vacio||FCV|Vacio|9||0|0|0|1000|0|0
            FCV manual||FCV|2|50||1|0|20|1000|2|2
            otro Vacio||099|Vacio|250||0|0|0|1000|0|0
            otro base no redonda|DivFOB=1.1;FOB=1234.56|099|21|0||0|0|285.18|1358.016|21|21
            redondeo 2.675||099|1|267.5||1|0|2.68|267.5|1|1
            redondeo -2.675||099|1|-267.5||1|0|-2.68|-267.5|1|1)");
    }
    void concepto() {
        FILA();
        Calculadora c(Ajustes(f[1]));
        c.liq.ObtenerBaseImponible();
        c.liq.ObtenerBaseIVA();
        QString p = ConSeparador(f[3], sep);
        double b = N(f[4]);
        const double r = c.Concepto(f[2], p, b, ConSeparador(f[5], sep), N(f[6]), f[7] == "1");
        QVERIFY(Cifras(f, 8, {r, b, c.liq.ObtenerLqPorc()}));
        QCOMPARE(p, ConSeparador(f[11], sep));
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // The coefficient of concept 020 reduces the base of the concepts that follow, and the
    // commissions and inputs that exceed the duty send the refund to 601.
    // name | item -> exceeded | 601 | 611
    void coeficienteYReintegros_data() {
        FilasDeTexto(R"(
            # 50 of commissions and inputs exceed the duty of 47.62; the refund goes by 601 on
            # F - C - X = 950.
            excedido    | ComExt=40;TmpCons=10 | 1 | 47.5 | 0
            # Otherwise 611 on the lesser of 1000 x 0.95238 and 1000 - 5 - 40.
            no excedido | ComExt=40;TmpCons=5  | 0 | 0    | 47.62)");
    }
    void coeficienteYReintegros() {
        FILA();
        Calculadora c(kItem + "SubReg=EC01;CalcCoef=1;Reintegro=5;" + f[1]);
        QCOMPARE(c.liq.ObtenerBaseImponible(), 1000.0);
        c.liq.ObtenerBaseIVA();
        QString p = "5";
        double b = 0;
        QCOMPARE(c.Concepto("020", p, b), 47.62);
        QCOMPARE(c.liq.ItemCoeficienteExportacion(), 0.95238);
        QCOMPARE(c.liq.BaseImponible(), 952.38);
        QCOMPARE(c.liq.CoeficienteExcedido(), f[2] == "1");
        p = ConSeparador("3", sep);
        QCOMPARE(c.Concepto("099", p, b), 28.57);
        QCOMPARE(b, 952.38);
        QVERIFY(!c.t.ctx().LiquidacionPendiente);
        p = kVacio;
        QCOMPARE(c.Concepto("601", p, b), N(f[3]));
        QVERIFY(c.t.ctx().LiquidacionPendiente);
        c.t.ctx().LiquidacionPendiente = false;
        QCOMPARE(c.Concepto("611", p, b), N(f[4]));
        QVERIFY(c.t.ctx().LiquidacionPendiente);
        // The next 020 starts by clearing the mark.
        c.liq.setItmComsionesExt(0);
        c.liq.setItmImportacionTmpCons(0);
        p = "5";
        c.Concepto("020", p, b);
        QVERIFY(!c.liq.CoeficienteExcedido());
    }

    // Statistics tiers: a base in the one-unit gap between tiers keeps the tier of the previous
    // call, and the fee enters neither base.
    void tramosEstadistica() {
        // FOB -> BaseIVA | concept | amount | tier
        const std::tuple<double, double, const char*, double, short> pasos[] = {
            {85000, 85400, "061", 400, 2},        {79999.5, 79999.5, "061", 400, 2},
            {79999.5, 79999.5, "011", 0, 2},      {99999.5, 99999.5, "062", 0, 2},
            {79999, 82398.97, "011", 2399.97, 1}, {100000, 100500, "062", 500, 3}};
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(sep);
            Calculadora c(kItem + "Estadistica=3");
            for (const auto& [fob, baseIVA, codigo, importe, tramo] : pasos) {
                c.liq.setFOBTotalITEM(fob);
                c.liq.ObtenerBaseImponible();
                QCOMPARE(c.liq.ObtenerBaseIVA(), baseIVA);
                QString p = kVacio;
                double b = 0;
                QCOMPARE(c.Concepto(codigo, p, b), importe);
                QCOMPARE(c.liq.TramoEstadistica(), tramo);
            }
        }
    }

    // Failures inside a concept reach the caller.
    // name | item | code | percentage | base | manual -> number | description
    void fallosDeConcepto_data() {
        FilasDeTexto(R"(
            020 a -100             | CalcCoef=1 | 020 | -100  | 0     | 0 | 11 | División por cero
            tasa que no es numero  |            | 010 | abc   | 0     | 0 | 13 | No coinciden los tipos
            manual Vacio           |            | 099 | Vacio | 10    | 1 | 13 | No coinciden los tipos
            desbordamiento         |            | 099 | 1e300 | 1e300 | 1 | 6  | Desbordamiento)");
    }
    void fallosDeConcepto() {
        FILA();
        Calculadora c(kItem + f[1]);
        c.liq.ObtenerBaseImponible();
        c.liq.ObtenerBaseIVA();
        QString p = f[3], d;
        double b = N(f[4]);
        QCOMPARE(NumeroDeError([&] { c.Concepto(f[2], p, b, {}, N(f[5])); }, &d), int(N(f[6])));
        QCOMPARE(d, f[7]);
        QCOMPARE(c.t.dialogos().todo(), QStringList());
    }

    // The internal tax of a position, read from the store USUARIO, and its concept 417, on SQLite
    // and on PostgreSQL, under "," and under ".".
    void concepto417_data() { test::FilasDeMotores(); }
    void concepto417() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        schema::CrearOActualizar(t.stores());
        const QString sql =
            "insert into impuestos_internos (ncm, decreto, tasa_nominal) values (?, ?, ?)";
        for (const auto& [ncm, decreto, tasa] : {std::tuple{"2203.00.00", "SINDEC", 20.0},
                                                 {"2204.10.00", " DEC290_00 ", 20.0},
                                                 {"2204.21.00", "DEC999", 20.0},
                                                 {"2208.30.00", "SINDEC", 12.5},
                                                 {"2402.20.00", "SINDEC", 100.0},
                                                 {"O'Brien", "DEC290_00", 10.0}})
            t.conexion("USUARIO").Ejecutar(sql, {ncm, decreto, tasa});
        // BaseIVA 1000. SINDEC: 1000 x 1.3 x effective rate / 100; DEC290_00: 1000 x effective
        // rate / 100; the effective rate is nominal x 100 / (100 - nominal). A position without
        // a row has no internal tax: what the previous one left is gone.
        // position | decree | nominal -> effective | amount
        const std::tuple<QString, QString, double, double, double> casos[] = {
            {"2203.00.00", "SINDEC", 20, 25, 325},
            {"2204.10.00", "DEC290_00", 20, 25, 250},
            {"2204.21.00", "DEC999", 20, 25, 0},
            // Not rounded: 1300 x 14.2857142857... / 100.
            {"2208.30.00", "SINDEC", 12.5, 12.5 * 100 / 87.5, 1300 * (12.5 * 100 / 87.5) / 100},
            {"O'Brien", "DEC290_00", 10, 10 * 100.0 / 90, 1000 * (10 * 100.0 / 90) / 100},
            {"9999.99.99", "", 0, 0, 0},
        };
        for (const QString sep : {",", "."}) {
            SeparadorDecimalScope scope(sep);
            ClassLiquidacion liq(t.ctx());
            AplicarAjustes(liq, t.ctx(), kItem);
            liq.ObtenerBaseImponible();
            QCOMPARE(liq.ObtenerBaseIVA(), 1000.0);
            for (const auto& [ncm, decreto, nominal, efectiva, importe] : casos) {
                liq.GetMarcaImpuestosInternos(ncm);
                QCOMPARE(liq.DecretoInterno(), decreto);
                QCOMPARE(liq.TasaNominal(), nominal);
                QCOMPARE(liq.TasaEfectiva(), 0.0);
                QString p = kVacio;
                double b = 5;
                QCOMPARE(liq.ObtenerValorConcepto("417", p, 0, b, {}, 0), importe);
                QCOMPARE(liq.TasaEfectiva(), efectiva);
                QCOMPARE(liq.ObtenerLqPorc(), nominal);
                QCOMPARE(b, decreto.isEmpty() ? 5.0 : 1000.0);
                QCOMPARE(p,
                         decreto.isEmpty() ? kVacio : ConSeparador(QString::number(nominal), sep));
            }
            // A nominal rate of 100 divides by zero, and the failure reaches the caller.
            liq.GetMarcaImpuestosInternos("2402.20.00");
            QString p = kVacio, d;
            double b = 5;
            QCOMPARE(NumeroDeError([&] { liq.ObtenerValorConcepto("417", p, 0, b, {}, 0); }, &d),
                     11);
            QCOMPARE(d, QStringLiteral("División por cero"));
        }
        // A store that fails reaches the caller, and no decree is left.
        t.conexion("USUARIO").Ejecutar("drop table impuestos_internos");
        ClassLiquidacion liq(t.ctx());
        QString d;
        QVERIFY(NumeroDeError([&] { liq.GetMarcaImpuestosInternos("2203.00.00"); }, &d) != -1);
        QVERIFY2(d.startsWith("ClassLiquidacion.GetMarcaImpuestosInternos::") && d.size() > 45,
                 qPrintable(d));
        QCOMPARE(liq.DecretoInterno(), QString());
        QCOMPARE(t.dialogos().todo(), QStringList());
    }

    // The question of the automotive regime: the form the calculator opens through the screens
    // service, driven from the keyboard ("-": no question), the answer saved for the operation
    // and kept for the next item, and the base of the taxes that follows.
    // name | item | keys -> answer | BaseIVA
    void preguntaAEC_data() {
        FilasDeTexto(R"(
            reposicion y si          |                        | rep alt+s       | R | 1140
            flecha a reposicion y si |                        | pro right alt+s | R | 1140
            produccion y si          |                        | alt+s           | P | 1000
            enter                    |                        | enter           | P | 1000
            reposicion y no          |                        | rep alt+n       | N | 1100
            esc                      |                        | rep esc         | N | 1100
            ya contestada            | AEC=P                  | -               | P | 1000
            posicion sin marca       | ncm_AEC=               | -               |   | 1100
            marca con blancos        | ncm_AEC= * ;Derecho=10 | -               |   | 1100)");
    }
    void preguntaAEC() {
        FILA();
        Calculadora c(kItem + "Derecho=10;ValorAEC=14;ncm_AEC=*;" + f[1]);
        c.liq.setCalculoAEC("X");
        c.liq.ObtenerBaseImponible();
        // Without the screens installed a question would be refused with a message.
        if (f[2] != "-") {
            RegistrarPantallasLiquidacion(c.t.ctx().pantallas());
            AlAbrirse([&](QWidget* w) {
                for (const QString& k : f[2].split(' ')) {
                    auto* op = Control<QRadioButton>(w, k == "rep" ? "opREP" : "opPRO");
                    if (k == "rep") // on its indicator: the middle of the option is outside it
                        QTest::mouseClick(op, Qt::LeftButton, {}, QPoint(6, op->height() / 2));
                    else if (k == "pro")
                        op->setFocus();
                    else if (k.startsWith("alt+"))
                        QTest::keyClick(w, k == "alt+s" ? Qt::Key_S : Qt::Key_N, Qt::AltModifier);
                    else
                        QTest::keyClick(QApplication::focusWidget(),
                                        k == "right"
                                            ? Qt::Key_Right
                                            : (k == "enter" ? Qt::Key_Return : Qt::Key_Escape));
                }
            });
        }
        QCOMPARE(c.liq.ObtenerBaseIVA(), N(f[4]));
        QCOMPARE(c.liq.CalculoAEC(), f[3]);
        QCOMPARE(c.t.dialogos().todo(), QStringList());
        // The answer stands for the next item: no second question.
        int otra = 0;
        c.t.ctx().pantallas().Registrar("FrmABMClientes", [&](AppContext&, const QVariantMap&) {
            ++otra;
            return QVariant();
        });
        QCOMPARE(c.liq.ObtenerBaseIVA(), N(f[4]));
        QCOMPARE(otra, 0);
    }
};

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestGeneracionLiquidacion, TestLiquidacion>(argc, argv);
}

#include "test_liquidacion.moc"
