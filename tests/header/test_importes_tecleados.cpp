// Amounts typed on the header screen under either decimal separator: taken as the clerk meant
// them, or refused with the field's own message and the record left alone. And the insurance by
// percentage, which must count the proration codes as they stand when it is worked out.

#include "FixtureCaratula.h"
#include "header/FrmBultos.h"
#include "header/FrmCaratula.h"
#include "header/PantallasCaratula.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QLineEdit>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kDemo = QStringLiteral("DEMO-IC04-001");

double Columna(TestStores& ts, const QString& columna) {
    Recordset rs =
        ts.conexion(QStringLiteral("INTERNOS"))
            .Abrir(QStringLiteral("select %1 from caratula where interno = ?").arg(columna),
                   {kDemo});
    return EsNumero(rs.Fields(0));
}

} // namespace

class TestImportesTecleados : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void importe_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("pantalla");
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("campo");
        QTest::addColumn<QString>("columna");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("mensaje"); // empty: saved
        QTest::addColumn<double>("valor");
        const QString fob = QStringLiteral("El valor FOB debe ser un valor númerico");
        const QString kilos = QStringLiteral("El valor KG NETO TOTAL debe ser un valor númerico");
        const QString peso = QStringLiteral("El PESO debe ser un valor númerico");
        const struct {
            const char* nombre;
            const char* pantalla;
            const char* sep;
            const char* campo;
            const char* columna;
            const char* texto;
            QString mensaje;
            double valor;
        } filas[] = {
            // clang-format off
            {"coma fob miles", "FrmCaratula", ",", "Txtfobdivisas", "fobdivisas", "1.234,56", {}, 1234.56},
            {"coma fob al reves", "FrmCaratula", ",", "Txtfobdivisas", "fobdivisas", "1,234.56", fob, 0},
            {"punto fob miles", "FrmCaratula", ".", "Txtfobdivisas", "fobdivisas", "1,234.56", {}, 1234.56},
            {"punto fob al reves", "FrmCaratula", ".", "Txtfobdivisas", "fobdivisas", "1.234,56", fob, 0},
            {"coma kilos al reves", "FrmCaratula", ",", "txtKgNeto", "dckgneto", "1,234.5", kilos, 0},
            {"coma kilos miles", "FrmCaratula", ",", "txtKgNeto", "dckgneto", "1.234,5", {}, 1234.5},
            {"punto kilos miles", "FrmCaratula", ".", "txtKgNeto", "dckgneto", "1,234.5", {}, 1234.5},
            {"coma peso al reves", "FrmBultos", ",", "TxtPeso", "bulpes", "1,234.5", peso, 0},
            {"punto peso miles", "FrmBultos", ".", "TxtPeso", "bulpes", "1,234.5", {}, 1234.5},
            // clang-format on
        };
        for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
            for (const auto& f : filas)
                QTest::addRow("%s %s", m == Motor::SQLite ? "sqlite" : "postgresql", f.nombre)
                    << int(m) << QString::fromLatin1(f.pantalla) << QString::fromLatin1(f.sep)
                    << QString::fromLatin1(f.campo) << QString::fromLatin1(f.columna)
                    << QString::fromLatin1(f.texto) << f.mensaje << f.valor;
    }

    void importe() {
        MOTOR_O_SALTAR();
        QFETCH(QString, pantalla);
        QFETCH(QString, sep);
        QFETCH(QString, campo);
        QFETCH(QString, columna);
        QFETCH(QString, texto);
        QFETCH(QString, mensaje);
        QFETCH(double, valor);
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope scope(sep);
        ts.ctx().InternoActual = kDemo;
        const double antes = Columna(ts, columna);
        // The packages want an expiry from today on.
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set venemb = ? where interno = ?"),
                      {FormatoFecha(QDate::currentDate(), QStringLiteral("dd-mm-yy")), kDemo});

        std::unique_ptr<QDialog> f;
        if (pantalla == QStringLiteral("FrmCaratula"))
            f = std::make_unique<FrmCaratula>(ts.ctx(),
                                              QVariantMap{{QStringLiteral("interno"), kDemo}});
        else
            f = std::make_unique<FrmBultos>(ts.ctx(),
                                            QVariantMap{{QStringLiteral("interno"), kDemo}});
        Mostrar(*f);
        f->findChild<QLineEdit*>(campo)->setFocus();
        QCOMPARE(NombreFoco(), campo);
        QTest::keyClick(Foco(), Qt::Key_A, Qt::ControlModifier);
        Escribir(texto);
        Tecla(Qt::Key_Return);
        if (!mensaje.isEmpty() && pantalla == QStringLiteral("FrmCaratula"))
            ts.dialogos().ResponderNo(); // stay on the screen
        Tecla(Qt::Key_Escape);

        if (mensaje.isEmpty()) {
            QCOMPARE(ts.dialogos().mensajes(), QStringList());
            QVERIFY(!f->isVisible());
            QCOMPARE(Columna(ts, columna), valor);
        } else {
            QCOMPARE(ts.dialogos().mensajes(), QStringList{mensaje});
            QVERIFY(f->isVisible());
            QCOMPARE(NombreFoco(), campo);
            QCOMPARE(Columna(ts, columna), antes);
        }
    }

    void prorrateo_data() { FilasDeMotores(); }
    void prorrateo() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope scope(QStringLiteral(","));
        const QString interno = QStringLiteral("T-PRORR");
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("insert into caratula (interno,fechaalta,onccahabilitado) "
                                     "values (?,'2026-11-22','N')"),
                      {interno});
        ts.ctx().InternoActual = interno;
        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
        Mostrar(f);
        auto texto = [&f](const char* nombre) {
            return f.findChild<QLineEdit*>(QString::fromLatin1(nombre));
        };
        texto("Txtfobdivisas")->setText(QStringLiteral("1000"));
        texto("TxtDivValorFob")->setText(QStringLiteral("1"));
        texto("Txtfletedivisas")->setText(QStringLiteral("100"));
        texto("TxtDivValorFlete")->setText(QStringLiteral("1"));
        QCOMPARE(texto("TxtDolFlete")->text(), QStringLiteral("100,00"));
        // The proration codes change while the header is open, as CODIGOS leaves them.
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("insert into prorrateo (interno,codigo,descripcion,valor) "
                                     "values (?,'A','GASTOS',400)"),
                      {interno});
        texto("TxtPorc")->setFocus();
        Escribir(QStringLiteral("10"));
        // 10 % of 1000 + 100 + 400.
        QCOMPARE(texto("TxtDolSeguro")->text(), QStringLiteral("150,00"));
    }
};

QTEST_MAIN(TestImportesTecleados)
#include "test_importes_tecleados.moc"
