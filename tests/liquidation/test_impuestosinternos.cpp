// The internal tax of a position, read from the store USUARIO, and its concept 417, on SQLite and
// on PostgreSQL, under "," and under ".".

#include "liquidation/ClassLiquidacion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QTest>

using namespace korven;
using korven::test::TestStores;

class TestImpuestosInternos : public QObject {
    Q_OBJECT

    static void Cargar(TestStores& t) {
        schema::CrearOActualizar(t.stores());
        Conexion& c = t.conexion(QStringLiteral("USUARIO"));
        const QString sql = QStringLiteral(
            "insert into impuestos_internos (ncm, decreto, tasa_nominal) values (?, ?, ?)");
        c.Ejecutar(sql, {QStringLiteral("2203.00.00"), QStringLiteral("SINDEC"), 20.0});
        c.Ejecutar(sql, {QStringLiteral("2204.10.00"), QStringLiteral(" DEC290_00 "), 20.0});
        c.Ejecutar(sql, {QStringLiteral("2204.21.00"), QStringLiteral("DEC999"), 20.0});
        c.Ejecutar(sql, {QStringLiteral("2208.30.00"), QStringLiteral("SINDEC"), 12.5});
        c.Ejecutar(sql, {QStringLiteral("2402.20.00"), QStringLiteral("SINDEC"), 100.0});
        c.Ejecutar(sql, {QStringLiteral("O'Brien"), QStringLiteral("DEC290_00"), 10.0});
    }

private Q_SLOTS:
    void concepto417_data() { test::FilasDeMotores(); }
    void concepto417() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Cargar(t);

        struct Caso {
            QString ncm, decreto;
            double nominal, efectiva, importe;
        };
        // BaseIVA 1000. SINDEC: 1000 x 1.3 x effective rate / 100; DEC290_00: 1000 x effective
        // rate / 100; the effective rate is nominal x 100 / (100 - nominal).
        const Caso casos[] = {
            {"2203.00.00", "SINDEC", 20, 25, 325},
            {"2204.10.00", "DEC290_00", 20, 25, 250},
            {"2204.21.00", "DEC999", 20, 25, 0},
            // Not rounded: 1300 x 14.2857142857... / 100.
            {"2208.30.00", "SINDEC", 12.5, 12.5 * 100 / 87.5, 1300 * (12.5 * 100 / 87.5) / 100},
            {"O'Brien", "DEC290_00", 10, 10 * 100.0 / 90, 1000 * (10 * 100.0 / 90) / 100},
        };
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope scope(QString::fromLatin1(sep));
            ClassLiquidacion liq(t.ctx());
            liq.setCaratulaSubRegimen(QStringLiteral("IC04"));
            liq.setCaratulaDivisasFOB(1);
            liq.setFOBTotalITEM(1000);
            liq.ObtenerBaseImponible();
            QCOMPARE(liq.ObtenerBaseIVA(), 1000.0);
            for (const Caso& k : casos) {
                liq.GetMarcaImpuestosInternos(k.ncm);
                QCOMPARE(liq.DecretoInterno(), k.decreto);
                QCOMPARE(liq.TasaNominal(), k.nominal);
                QCOMPARE(liq.TasaEfectiva(), 0.0);
                QString p = QStringLiteral("Vacio");
                double b = 5;
                QCOMPARE(liq.ObtenerValorConcepto(QStringLiteral("417"), p, 0, b, {}, 0),
                         k.importe);
                QCOMPARE(liq.TasaEfectiva(), k.efectiva);
                QCOMPARE(liq.ObtenerLqPorc(), k.nominal);
                QCOMPARE(b, 1000.0);
                QCOMPARE(p, QString::number(k.nominal).replace(QLatin1Char('.'),
                                                               QString::fromLatin1(sep)));
            }

            // A position without a row has no internal tax: what the previous one left is gone.
            liq.GetMarcaImpuestosInternos(QStringLiteral("9999.99.99"));
            QCOMPARE(liq.DecretoInterno(), QString());
            QCOMPARE(liq.TasaNominal(), 0.0);
            QCOMPARE(liq.TasaEfectiva(), 0.0);
            QString p = QStringLiteral("Vacio");
            double b = 5;
            QCOMPARE(liq.ObtenerValorConcepto(QStringLiteral("417"), p, 0, b, {}, 0), 0.0);
            QCOMPARE(liq.ObtenerLqPorc(), 0.0);
            QCOMPARE(b, 5.0);

            // A nominal rate of 100 divides by zero, and the failure reaches the caller.
            liq.GetMarcaImpuestosInternos(QStringLiteral("2402.20.00"));
            try {
                liq.ObtenerValorConcepto(QStringLiteral("417"), p, 0, b, {}, 0);
                QFAIL("sin error");
            } catch (const KorvenError& e) {
                QCOMPARE(e.numero(), 11);
                QCOMPARE(e.descripcion(), QStringLiteral("División por cero"));
            }
            QCOMPARE(t.dialogos().todo(), QStringList());
        }
    }

    void falloDelStore_data() { test::FilasDeMotores(); }
    void falloDelStore() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Cargar(t);
        t.conexion(QStringLiteral("USUARIO"))
            .Ejecutar(QStringLiteral("drop table impuestos_internos"));
        ClassLiquidacion liq(t.ctx());
        try {
            liq.GetMarcaImpuestosInternos(QStringLiteral("2203.00.00"));
            QFAIL("sin error");
        } catch (const KorvenError& e) {
            QVERIFY2(e.descripcion().startsWith(
                         QStringLiteral("ClassLiquidacion.GetMarcaImpuestosInternos::")),
                     qPrintable(e.descripcion()));
            QVERIFY(e.descripcion().size() > 45);
        }
        QCOMPARE(liq.DecretoInterno(), QString());
        QCOMPARE(t.dialogos().todo(), QStringList());
    }
};

QTEST_MAIN(TestImpuestosInternos)
#include "test_impuestosinternos.moc"
