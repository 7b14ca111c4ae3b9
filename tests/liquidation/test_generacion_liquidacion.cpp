// The liquidation rows of an Operation's items (lists by regime, rates by client and regime)
// and the calculation of item 0 with its totals, on SQLite and PostgreSQL, under "," and ".".

#include "liquidation/GeneracionLiquidacion.h"
#include "liquidation/LiquidacionOperacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QMap>
#include <QTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kInterno = QStringLiteral("T1");

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
                  {kInterno, id, pais, bien, estado, filler, fob, flete, seguro, lista});
}

void Posicion(TestStores& ts, const char* lapi = "") {
    ts.conexion("NCM").Ejecutar("insert into ncm (\"001\",\"002\",\"003\",\"015\",\"016\",\"048\","
                                "\"059\") values ('9999.99.99','100','A','12','3','2',?)",
                                {lapi});
}

// Every row of a query, values joined by "|", numbers as "0.#####", rows by " " (sorted as text
// when asked: the engines' collations differ on marks such as "#").
QString Filas(TestStores& ts, const QString& sql, bool ordenar = false) {
    Recordset rs = ts.conexion("INTERNOS").Abrir(sql, {kInterno});
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
                              {kInterno});
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
                .GenerarOperacion(
                    kInterno, c[0], c[1] == "1", {},
                    [&](int n, int total, long long id) { avances << total * 100 + n * 10 + id; });
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
                    .GenerarLiq("415,422,424,854,856,900,424", "1", kInterno, f[1].toDouble(),
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
            cn.Ejecutar("insert into caratula (interno,idsubreg) values (?,?)", {kInterno, c[0]});
            Item(ts, 1, "N", "2", "", 0, 0, 0, qPrintable(c[1]), "314/R.AUTOMOTRIZ");
            Item(ts, 2, "N", "2", "", 0, 0, 0, qPrintable(c[1]), "314/R.AUTOMOTRIZ");
            cn.Ejecutar("update item set itmodif = 'S' where id = 2");
            cn.Ejecutar("insert into itemventaja (interno,iditem,idventaja) values (?,3,"
                        "'VEHICULOPARTES')",
                        {kInterno});
            if (!c[2].isEmpty())
                c[2] == "S" ? ts.dialogos().ResponderSi() : ts.dialogos().ResponderNo();
            LiquidacionOperacion(ts.ctx(), cn).Calcular(kInterno);
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
                       {kInterno});
            Item(ts, 1, "N", "2", "", 100);
            for (const auto& [cod, tasa] : {std::pair{"FCV", 2}, {"777", 5}})
                c.Ejecutar("insert into itemliq (interno,iditem,idconceptos,porcentaje,pgc) "
                           "values (?,1,?,?,?)",
                           {kInterno, cod, tasa, pgc});
            try {
                const auto r = LiquidacionOperacion(ts.ctx(), c).Calcular(kInterno);
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
                       {kInterno});
            Posicion(ts);
            Item(ts, 1, "N", "2", "", 1000, 100, 10);
            Item(ts, 2, "S", "2", "", 500);
            GeneracionLiquidacion(ctx, c).GenerarOperacion(kInterno, "IC04", true, {});
            c.Ejecutar("update itemliq set porcentaje = 10 where interno = ? and iditem = 1 and "
                       "idconceptos = '010'",
                       {kInterno});
            ctx.LiquidacionPendiente = true;
            QStringList estados;
            LiquidacionOperacion l(ctx, c);
            const auto r = l.Calcular(kInterno, [&](const QString& e) { estados << e; });
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
                       {kInterno});
            const QString todo =
                "select * from itemliq where interno = ? order by iditem, idconceptos";
            const QString antes = Filas(ts, todo);
            const auto r2 = l.Calcular(kInterno, [&](const QString& e) { estados << e; });
            QCOMPARE(r2.pagar, 866.97);
            QCOMPARE(Filas(ts, sqlCero, true), liqcero);
            QCOMPARE(Filas(ts, todo), antes);
            QCOMPARE(estados.size(), 3);
            QCOMPARE(ts.dialogos().todo(), QStringList());
        }
    }
};

QTEST_GUILESS_MAIN(TestGeneracionLiquidacion)
#include "test_generacion_liquidacion.moc"
