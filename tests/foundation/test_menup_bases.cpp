#include "foundation/MenuP.h"
#include "support/TestStores.h"

#include <QDir>
#include <QLabel>
#include <QtTest>

using namespace korven;
using korven::test::TestStores;

// The main menu names the stores in use, so that a clerk sees which database is behind it.
class TestMenuPBases : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bases_data() { test::FilasDeMotores(); }
    void bases() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        t.conexion(QStringLiteral("NCM"))
            .Ejecutar(QStringLiteral("create table control_fecha (fecha date)"));
        MenuP m(t.ctx(), {});
        auto* bases = m.findChild<QLabel*>(QStringLiteral("lbBases"));
        QVERIFY(bases);
        QString esperado;
        if (static_cast<Motor>(motor) == Motor::SQLite) {
            esperado = QDir::toNativeSeparators(t.directorio() + QStringLiteral("db/korven.db"));
        } else {
            const QHash<QString, QString> p = t.stores().Parametros(QStringLiteral("INTERNOS"));
            esperado = QStringLiteral("PostgreSQL socket %1 (puerto %2), base %3")
                           .arg(p.value(QStringLiteral("HOST")), p.value(QStringLiteral("PORT")),
                                p.value(QStringLiteral("DATABASE")));
        }
        QCOMPARE(bases->text(), esperado);
        // A configuration that splits the stores shows where each one is.
        if (static_cast<Motor>(motor) == Motor::SQLite) {
            t.AgregarConfiguracion(QStringLiteral("[NCM]\nFILE=aparte.db\n"));
            t.conexion(QStringLiteral("NCM"))
                .Ejecutar(QStringLiteral("create table control_fecha (fecha date)"));
            MenuP dividido(t.ctx(), {});
            QCOMPARE(dividido.findChild<QLabel*>(QStringLiteral("lbBases"))->text(),
                     QStringLiteral("INTERNOS,SYSTABLAS,PERSONAL,USUARIO,ESTADO,CATALOGOS,"
                                    "INSUMOS: %1\nNCM: %2")
                         .arg(esperado, QDir::toNativeSeparators(t.directorio() +
                                                                 QStringLiteral("aparte.db"))));
        }
    }
};

QTEST_MAIN(TestMenuPBases)
#include "test_menup_bases.moc"
