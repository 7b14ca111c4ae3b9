#include "components/RegistrarComponentesPropios.h"
#include "platform/Formato.h"
#include "support/TestStores.h"

#include <QTest>

using namespace korven;

// The service components reached by name, as the start routine and the forms reach them.
class TestServicios : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void exInputBox() {
        test::TestStores t(Motor::SQLite);
        RegistrarComponentesPropios(t.ctx().componentes());
        std::unique_ptr<QObject> mail =
            t.ctx().componentes().Crear(QStringLiteral("DesktopMail.Main"), t.ctx());
        bool llamado = true;
        auto preguntar = [&] {
            QString r;
            llamado =
                llamado &&
                QMetaObject::invokeMethod(
                    mail.get(), "ExInputBox", Q_RETURN_ARG(QString, r),
                    Q_ARG(QString, QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA")),
                    Q_ARG(QString, QStringLiteral("Crear nuevo interno")), Q_ARG(int, 15),
                    Q_ARG(QString, QString()), Q_ARG(QString, QString()), Q_ARG(bool, false));
            return r;
        };
        t.dialogos().ResponderTexto(QStringLiteral("2026-000123456789"));
        t.dialogos().ResponderCancelar();
        QCOMPARE(preguntar(), QStringLiteral("2026-0001234567"));
        QCOMPARE(preguntar(), QString());
        QVERIFY(llamado);
        QCOMPARE(t.dialogos().todo(),
                 (QStringList{QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"),
                              QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA")}));
        QCOMPARE(t.dialogos().registro().first().titulo, QStringLiteral("Crear nuevo interno"));
    }

    void valueRules_data() {
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<double>("numero");
        // A value of a store: "." is its decimal point under either separator.
        QTest::newRow("coma") << ","
                              << "1234.5" << 1234.5;
        QTest::newRow("punto") << "."
                               << "1234.5" << 1234.5;
        QTest::newRow("no numero") << ","
                                   << "12 kg" << 0.0;
    }
    void valueRules() {
        QFETCH(QString, sep);
        QFETCH(QString, texto);
        QFETCH(double, numero);
        SeparadorDecimalScope scope(sep);
        test::TestStores t(Motor::SQLite);
        RegistrarComponentesPropios(t.ctx().componentes());
        std::unique_ptr<QObject> reglas =
            t.ctx().componentes().Crear(QStringLiteral("ValueRules.Main"), t.ctx());
        double n = -1;
        QVERIFY(QMetaObject::invokeMethod(reglas.get(), "EsNumero", Q_RETURN_ARG(double, n),
                                          Q_ARG(QVariant, QVariant(texto))));
        QCOMPARE(n, numero);
        QString s = QStringLiteral("x");
        QVERIFY(QMetaObject::invokeMethod(reglas.get(), "EsNull", Q_RETURN_ARG(QString, s),
                                          Q_ARG(QVariant, QVariant())));
        QCOMPARE(s, QString());
    }
};

QTEST_MAIN(TestServicios)
#include "test_servicios.moc"
