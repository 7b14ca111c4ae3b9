// The catalogue component over the stores: catalogues by code, articles read, and articles
// added, updated and kept, with who wrote them and when. Deletion runs in the screen tests.

#include "FixtureCatalogo.h"
#include "goods/CatalogoArticulos.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kHoy = QDate::currentDate().toString(Qt::ISODate);

// The article written, field by field in the order of the columns of FilasCatalogo.
const QString kNueva = QStringLiteral("HORNO D'ANGELO 60 L|212|203|07|2|S|7790001|OTRO|NOV|C1|"
                                      "8516.60.00.100I|AA(DA)-TE01-|120.5|14.25|");

using A = ArticuloCatalogo;
QString A::*const kTextos[] = {&A::descripcion,    &A::idPais,      &A::idPaisProc, &A::idUnidad,
                               &A::estadoMerc,     &A::bienDeUso,   &A::codigoEAN,  &A::otros,
                               &A::onccaCategoria, &A::onccaCortes, &A::ncm,        &A::sufijos};

A Horno(const QString& catalogo, const QString& articulo) {
    const QStringList v = kNueva.split(QLatin1Char('|'));
    A a;
    a.idCatalogo = catalogo;
    a.idArticulo = articulo;
    for (int i = 0; i < 12; ++i)
        a.*kTextos[i] = v[i];
    a.precioUnitario = v[12].toDouble();
    a.kgUnitario = v[13].toDouble();
    return a;
}

} // namespace

class TestCatalogoArticulos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void leer_data() { FilasDeMotores(); }
    void leer();
    void guardar_data();
    void guardar();
};

void TestCatalogoArticulos::leer() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCatalogo(ts);
    CatalogoArticulos c(ts.ctx());
    QCOMPARE(c.BuscarCatalogo(QStringLiteral("CAT-5671 ")),
             QStringLiteral("CATALOGO DE METALURGICA D'ANGELO HNOS S.R.L."));
    QCOMPARE(c.BuscarCatalogo(QStringLiteral("CAT-9")),
             QStringLiteral("Advertencia: CATALOGO CAT-9 inexistente"));
    QCOMPARE(c.BuscarCatalogo(QStringLiteral("  ")), QString());
    const auto a = c.LeerArticulo(QStringLiteral("CAT-1239"), QStringLiteral("LOMO-ENF"));
    QVERIFY(a && !c.LeerArticulo(QStringLiteral("CAT-3451"), QStringLiteral("LOMO-ENF")));
    QCOMPARE(a->onccaCortes + a->idUnidad + a->fecha.toString(Qt::ISODate), "LOM012026-02-18");
    QCOMPARE(a->precioUnitario, 9.8);
}

void TestCatalogoArticulos::guardar_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("articulo");
    QTest::addColumn<bool>("noModificar");
    QTest::addColumn<bool>("resultado");
    QTest::addColumn<QString>("fila"); // the article as stored after, "" for no change
    const QString nueva = kNueva;
    const QString vieja = QStringLiteral("HE-45|HORNO ELECTRICO 45 LITROS|203|203|07|1|N|||||"
                                         "8516.60.00.100I|AA(ELECTROLUX)-AB(EOT45)-AI(HE 45)-"
                                         "TE01-|95|12|1|KORVEN|2026-02-10");
    for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)}) {
        const char* e = m == int(Motor::SQLite) ? "sqlite" : "postgresql";
        const QString yo = QStringLiteral("|") + MaquinaLocal() + QLatin1Char('|') + kHoy;
        QTest::addRow("%s alta", e)
            << m << "NUEVO" << false << true << QStringLiteral("NUEVO|") + nueva + "1" + yo;
        QTest::addRow("%s alta sin modificar", e)
            << m << "NUEVO" << true << true << QStringLiteral("NUEVO|") + nueva + "1" + yo;
        // An update keeps the quantity the article had.
        QTest::addRow("%s modificar", e)
            << m << " HE-45 " << false << true << QStringLiteral("HE-45|") + nueva + "1" + yo;
        QTest::addRow("%s no modificar existente", e) << m << "HE-45" << true << true << vieja;
        QTest::addRow("%s sin codigo", e)
            << m << "" << false << true
            << QStringLiteral("HORNO D'ANGELO 60 L|") + nueva + "1" + yo;
        QTest::addRow("%s sin catalogo", e) << m << "X" << false << false << QString();
    }
}

void TestCatalogoArticulos::guardar() {
    MOTOR_O_SALTAR();
    QFETCH(QString, articulo);
    QFETCH(bool, noModificar);
    QFETCH(bool, resultado);
    QFETCH(QString, fila);
    TestStores ts(static_cast<Motor>(motor));
    PrepararCatalogo(ts);
    const QStringList antes = FilasCatalogo(ts, QStringLiteral("CAT-3451"));
    QCOMPARE(antes.size(), 5);
    CatalogoArticulos c(ts.ctx());
    const QString catalogo =
        articulo == QStringLiteral("X") ? QString() : QStringLiteral("CAT-3451");
    QCOMPARE(c.GuardarArticulo(Horno(catalogo, articulo), noModificar), resultado);
    QStringList despues = FilasCatalogo(ts, QStringLiteral("CAT-3451"));
    despues.sort();
    QStringList esperado = antes;
    esperado.sort();
    if (!fila.isEmpty()) {
        esperado.removeIf(
            [&](const QString& f) { return f.section('|', 0, 0) == fila.section('|', 0, 0); });
        esperado << fila;
        esperado.sort();
    }
    QCOMPARE(despues, esperado);
    // Other catalogues are not touched.
    QCOMPARE(FilasCatalogo(ts, QStringLiteral("CAT-5433")).size(), 3);
}

QTEST_MAIN(TestCatalogoArticulos)
#include "test_catalogo_articulos.moc"
