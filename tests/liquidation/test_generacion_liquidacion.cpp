// The liquidation rows of an Operation's items (lists by regime, rates by client and regime)
// and the calculation of item 0 with its totals, on SQLite and PostgreSQL, under "," and ".".

#include "liquidation/GeneracionLiquidacion.h"
#include "liquidation/LiquidacionOperacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/Recordset.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kInterno = QStringLiteral("T1");

void Preparar(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
}

// An item: id, biendeuso, estadomerc, itfiller, fobtotal, itflete, itseguro.
void Item(TestStores& ts, int id, const char* bien, const char* estado, const char* filler = "",
          double fob = 0, double flete = 0, double seguro = 0) {
    ts.conexion("INTERNOS")
        .Ejecutar("insert into item "
                  "(interno,id,ncm,idpais,biendeuso,estadomerc,itfiller,fobtotal,itflete,"
                  "itseguro,ajusteinc,ajusteded,lista) values "
                  "(?,?,'9999.99.99100A','999',?,?,?,?,?,?,'0',"
                  "'0','')",
                  {kInterno, id, bien, estado, filler, fob, flete, seguro});
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

// "id:code,code id:..." with the codes of each item in ascending order.
QString Ordenada(const QString& t) {
    QStringList r;
    for (const QString& item : t.split(QLatin1Char(' '))) {
        QStringList codigos = item.mid(item.indexOf(':') + 1).split(QLatin1Char(','));
        codigos.sort();
        r << item.left(item.indexOf(':') + 1) + codigos.join(QLatin1Char(','));
    }
    return r.join(QLatin1Char(' '));
}

// The concepts of each item as "id:code,code" (codes in ascending order).
QString Conceptos(TestStores& ts) {
    QString r;
    Recordset rs = ts.conexion("INTERNOS")
                       .Abrir("select iditem, idconceptos from itemliq where interno = ? order by "
                              "iditem, idconceptos",
                              {kInterno});
    QString anterior;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString id = QString::number(rs.Fields(0).toInt());
        r += id == anterior ? QStringLiteral(",") : (r.isEmpty() ? "" : " ") + id + ":";
        r += rs.Fields(1).toString();
        anterior = id;
    }
    return r;
}

const QString kImpo = "010,011,015,016,032,059,061,062,415,417,422,424,500,852,854,856,866";

} // namespace

class TestGeneracionLiquidacion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The lists of concepts by regime and kind for item 0, a common item with estadomerc 1
    // (",601,611"), capital goods with estadomerc 1 (",601" kept for the items after) and 2, and
    // a common item with estadomerc 2; the fines question of "IDA4"; the export sample advantage.
    void listas_data() { FilasDeMotores(); }
    void listas() {
        MOTOR_O_SALTAR();
        const QString bien = "010,011,015,061,062,415,500";
        // subregime | import | answer | concepts of items 0..4 | advantages
        const QList<QStringList> casos = {
            {"IC04", "1", "",
             "0:020,500 1:" + kImpo + ",065,601,611,900 2:" + bien + ",601 3:" + bien +
                 ",601 4:" + kImpo + ",065,900",
             ""},
            {"ZFE1", "1", "",
             "0:020,500 1:" + kImpo + ",601,611,900 2:" + bien + ",601 3:" + bien +
                 ",601 4:" + kImpo + ",900",
             ""},
            {"IG01", "1", "",
             "0:020,500 1:" + kImpo + ",065,601,611,900 2:" + bien + ",601 3:" + bien +
                 ",601 4:" + kImpo + ",065,900",
             ""},
            {"IDA4", "1", "S", "0:020,500 1:041,500,601,611 2:041,500,601 3:041,500,601 4:041,500",
             ""},
            {"IDA4", "1", "N", "0:020,500 1:500,601,611 2:500,601 3:500,601 4:500", ""},
            {"LAPI", "1", "", "0:501 1:501,601,611 2:501,601 3:501,601 4:501", ""},
            {"EC01", "0", "",
             "0:020,501,601,611 1:020,501,601,611 2:020,501,601,611 3:020,501,601,611 "
             "4:020,501,601,611",
             "1|MUESTRAEXPO"},
        };
        for (const QStringList& c : casos) {
            TestStores ts(static_cast<Motor>(motor));
            Preparar(ts);
            Item(ts, 1, "N", "1", "m");
            Item(ts, 2, "S", "1");
            Item(ts, 3, "S", "2");
            Item(ts, 4, "N", "2");
            if (!c[2].isEmpty())
                c[2] == "S" ? ts.dialogos().ResponderSi() : ts.dialogos().ResponderNo();
            GeneracionLiquidacion g(ts.ctx(), ts.conexion("INTERNOS"));
            QList<long long> avances;
            g.GenerarOperacion(kInterno, c[0], c[1] == "1", {},
                               [&](int n, int total, long long id) {
                                   QCOMPARE(total, 4);
                                   avances << n * 10 + id;
                               });
            QCOMPARE(Conceptos(ts), Ordenada(c[3]));
            QCOMPARE(avances, (QList<long long>{11, 22, 33, 44}));
            QCOMPARE(Filas(ts, "select iditem, idventaja from itemventaja where interno = ?"),
                     c[4]);
            QCOMPARE(ts.dialogos().todo(),
                     c[2].isEmpty() ? QStringList() : QStringList{"Desea calcular multas?"});
            QCOMPARE(ts.ctx().CalcMultas, c[2] == "S");
        }
    }

    // The rates of one item by client and subregime: each row gives subregime, Ganancias,
    // Reduccion, CVDI, IngresosBrutos, TasaIVA, flag 1439/96, Muestra; then the rows
    // "code|porcentaje|porcentajeb|pgc" and the advantages.
    void tasas_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QStringList>("f");
        const char* casos[][10] = {
            // Not CVDI (X 2) under "IC": 422 10 x 2 and 5 x 2, 424 3 x 2; 900 3 for IB 2.5.
            {"ic", "IC04", "0", "0", "N", "2.5", "0", "N", "",
             "415|0|null|P 422|20|10|P 424|6|null|P 854|20|10|G 856|6|null|G 900|3|null|P"},
            // CVDI (X 1): 10 and 5, 3; IB as the client's; TasaIVA 10.5 on 415.
            {"cvdi", "IC04", "0", "0", "S", "2.5", "10.5", "N", "",
             "415|10.5|null|P 422|10|5|P 424|3|null|P 854|10|5|G 856|3|null|G 900|2.5|null|P"},
            // "TR": 20 and 20, 424 11, every row to guarantee.
            {"tr", "TR01", "0", "0", "N", "0", "0", "N", "",
             "415|0|null|G 422|20|20|G 424|11|null|G 854|20|20|G 856|6|null|G 900|0|null|G"},
            // "IT04": no reduction under "IT", every row to guarantee.
            {"it04", "IT04", "0", "50", "N", "0", "0", "N", "",
             "415|0|null|G 422|20|10|G 424|6|null|G 854|20|10|G 856|6|null|G 900|0|null|G"},
            // Reduccion 100: 0.00001 and the advantage.
            {"red100", "IC04", "0", "100", "N", "0", "0", "N", "",
             "415|0|null|P 422|0.00001|null|P 424|6|null|P 854|0.00001|null|G 856|6|null|G "
             "900|0|null|P 1|IVAADREDUCCION"},
            // Reduccion 12.34, X 2: 20 - 12.34 x 20 / 100 = 17.532; 10 - 1.234 = 8.766.
            {"red", "IC04", "0", "12.34", "N", "0", "0", "N", "",
             "415|0|null|P 422|17.532|8.766|P 424|6|null|P 854|17.532|8.766|G 856|6|null|G "
             "900|0|null|P 1|IVAADREDUCCION"},
            // Ganancias 100 is the marker 200; 40 with X 2: 6 - 40 x 6 / 100 = 3.6; 33.333 for
            // CVDI (X 1): 3 - 0.99999 = 2.00001, rounded 2.
            {"gan100", "IC04", "100", "0", "N", "0", "0", "N", "",
             "415|0|null|P 422|20|10|P 424|200|null|P 854|20|10|G 856|200|null|G 900|0|null|P "
             "1|GANANEXIMICION"},
            {"gan40", "IC04", "40", "0", "N", "0", "0", "N", "",
             "415|0|null|P 422|20|10|P 424|3.6|null|P 854|20|10|G 856|3.6|null|G 900|0|null|P "
             "1|GANANEXIMICION"},
            {"gan33", "IC04", "33.333", "0", "S", "0", "0", "N", "",
             "415|0|null|P 422|10|5|P 424|2|null|P 854|10|5|G 856|2|null|G 900|0|null|P "
             "1|GANANEXIMICION"},
            // A decree flag: 424 11; an export sample.
            {"dto", "IC04", "0", "0", "N", "0", "0", "S", "",
             "415|0|null|P 422|20|10|P 424|11|null|P 854|20|10|G 856|6|null|G 900|0|null|P"},
            {"muestra", "EC01", "0", "0", "N", "0", "0", "N", "m",
             "415|0|null|P 422|20|10|P 424|6|null|P 854|20|10|G 856|6|null|G 900|0|null|P "
             "1|MUESTRAEXPO"},
        };
        for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)})
            for (const auto& c : casos) {
                QStringList f;
                for (const char* x : c)
                    f << QString::fromUtf8(x);
                QTest::newRow(qPrintable(f[0] + (m ? "/pg" : "/sqlite"))) << m << f;
            }
    }
    void tasas() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, f);
        for (const QString sep : {",", "."}) {
            SeparadorDecimalScope scope(sep);
            TestStores ts(static_cast<Motor>(motor));
            Preparar(ts);
            ts.ctx().FlagDto1439 = f[7];
            GeneracionLiquidacion(ts.ctx(), ts.conexion("INTERNOS"))
                .GenerarLiq("415,422,424,854,856,900,424", "1", kInterno, f[2].toDouble(),
                            f[3].toDouble(), f[4] == "S", f[6].toDouble(), 7, f[5].toDouble(), f[1],
                            f[8]);
            const QString r =
                Filas(ts, "select idconceptos, porcentaje, porcentajeb, pgc from itemliq where "
                          "interno = ? order by idconceptos") +
                (Filas(ts, "select iditem, idventaja from itemventaja where interno = ?")
                     .prepend(' '));
            QCOMPARE(r.trimmed(), f[9]);
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
            ctx.config().IVARNI = 10.5;
            Conexion& c = ts.conexion("INTERNOS");
            c.Ejecutar("insert into caratula (interno,idsubreg,fobdivcambio,fletedivcambio,"
                       "segurodivcambio) values (?,'IC04',1,1,1)",
                       {kInterno});
            ts.conexion("NCM").Ejecutar("insert into ncm (\"001\",\"002\",\"003\",\"015\",\"016\","
                                        "\"048\") values ('9999.99.99','100','A','12','3','2')");
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
                grilla << g.idconcepto + "|" + g.descripcion + "|" + g.importe;
            const auto S = [&](const char* x) { // the amount in the system separator
                const QString t(x);
                const qsizetype i = t.lastIndexOf('|');
                return t.left(i) + t.mid(i).replace('.', sep);
            };
            QCOMPARE(grilla, (QStringList{S("010|DERECHO DE IMPORTACION|111.00"),
                                          S("011|TASA DE ESTADISTICA|48.30"),
                                          S("415|I.V.A.|371.55"), S("422|I.V.A. ADICIONAL|250.86"),
                                          S("424|ANTICIPO IMPUESTO A LAS GANANCIAS|75.26"),
                                          S("500|ARANCEL SIM IMPO|10.00")}));
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
            const QString antes = Filas(ts, "select * from itemliq where interno = ? order by "
                                            "iditem, idconceptos");
            const auto r2 = l.Calcular(kInterno, [&](const QString& e) { estados << e; });
            QCOMPARE(r2.pagar, 866.97);
            QCOMPARE(Filas(ts, sqlCero, true), liqcero);
            QCOMPARE(Filas(ts, "select * from itemliq where interno = ? order by iditem, "
                               "idconceptos"),
                     antes);
            QCOMPARE(estados.size(), 3);
            QCOMPARE(ts.dialogos().todo(), QStringList());
        }
    }
};

QTEST_GUILESS_MAIN(TestGeneracionLiquidacion)
#include "test_generacion_liquidacion.moc"
