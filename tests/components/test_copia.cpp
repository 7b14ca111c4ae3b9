// The copy of an Operation under a new number, on SQLite and on PostgreSQL.

#include "components/CopiaInterno.h"
#include "components/RegistrarComponentesPropios.h"
#include "foundation/FixtureOperaciones.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    CargarMaestros(*ts);
    RegistrarComponentesPropios(ts->ctx().componentes());
    return ts;
}

// Every row of a table of one Operation, the key column left out, in a fixed order.
QList<QStringList> Filas(TestStores& ts, const QString& entidad, const QString& tabla,
                         const QString& interno, const QString& orden) {
    Recordset rs = ts.conexion(entidad).Abrir(
        QStringLiteral("select * from %1 where interno = ? order by %2").arg(tabla, orden),
        {interno});
    QList<QStringList> r;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList fila;
        for (const QString& c : rs.Campos())
            if (c.toLower() != "interno")
                fila << c.toLower() + "=" + EsNull(rs.Fields(c));
        r << fila;
    }
    return r;
}

} // namespace

class TestCopia : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void copiaLoQueCargoElDespachante_data() { FilasDeMotores(); }
    void copiaLoQueCargoElDespachante();
    void numeroExistenteOVacio_data() { FilasDeMotores(); }
    void numeroExistenteOVacio();
    void errorNoDejaMediaCopia_data() { FilasDeMotores(); }
    void errorNoDejaMediaCopia();
};

void TestCopia::copiaLoQueCargoElDespachante() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    OperacionConTodo(*ts, "100");
    SettingsStore& s = ts->settings();
    s.SaveSetting("KORVEN", "100", "FLAG4", "0");
    s.SaveSetting("KORVEN", "100", "COEFEXPO", "1");
    s.SaveSetting("KORVEN", "100", "DESC", "0");
    s.SaveSetting("KORVEN", "100", "PROCESOS", "2");
    s.SaveSetting("KORVEN", "AEC", "100", "R");

    std::unique_ptr<QObject> copiador =
        ts->ctx().componentes().Crear("OperationCopier.Main", ts->ctx());
    QVERIFY(copiador->setProperty("Numero_Interno", "100"));
    QVERIFY(QMetaObject::invokeMethod(copiador.get(), "GetDataAccessManager",
                                      Q_ARG(QObject*, nullptr)));
    ts->dialogos().ResponderTexto("100-B");
    QVERIFY(QMetaObject::invokeMethod(copiador.get(), "Mostrar"));
    QCOMPARE(copiador->property("NuevoNumero").toString(), QStringLiteral("100-B"));
    const auto& r = ts->dialogos().registro();
    QCOMPARE(r.size(), 1);
    QCOMPARE(r.at(0).texto, QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"));
    QCOMPARE(r.at(0).titulo, QStringLiteral("Copiar interno 100"));

    // The header: the same values, created today and to be assembled.
    QList<QStringList> original = Filas(*ts, "INTERNOS", "caratula", "100", "interno");
    QList<QStringList> copia = Filas(*ts, "INTERNOS", "caratula", "100-B", "interno");
    QCOMPARE(copia.size(), 1);
    QCOMPARE(Valor(*ts, "select fechaalta from caratula where interno = '100-B'").toDate(),
             QDate::currentDate());
    QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100-B'")),
             QStringLiteral("S"));
    for (QStringList* f : {&original.first(), &copia.first()})
        f->removeIf([](const QString& v) {
            return v.startsWith("fechaalta=") || v.startsWith("factura8=");
        });
    QCOMPARE(copia, original);
    QVERIFY(original.first().contains("cuitcliente=30500010912"));
    // What the clerk loaded comes along, row by row.
    for (const auto& [entidad, tabla, orden] : {std::tuple{"INTERNOS", "facturas", "orden"},
                                                {"INTERNOS", "subitems", "id"},
                                                {"INTERNOS", "prorrateo", "codigo"},
                                                {"SYSTABLAS", "coment", "coment"}}) {
        const auto o = Filas(*ts, entidad, tabla, "100", orden);
        QVERIFY2(!o.isEmpty(), tabla);
        QCOMPARE(Filas(*ts, entidad, tabla, "100-B", orden), o);
    }
    // What the assembly and the liquidation derive does not, nor the lock.
    for (const char* t : {"groupsubitems", "item", "itemliq", "liqcero", "itemventaja", "iteminfo",
                          "itempresu", "itemref", "idrel", "sysflag", "descargas", "interno"})
        QCOMPARE(Contar(*ts, "INTERNOS", t, "100-B"), 0);
    QCOMPARE(Contar(*ts, "SYSTABLAS", "hval", "100-B"), 0);
    // The options of the Operation, without the mark of a run.
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "FLAG4"), QStringLiteral("0"));
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "COEFEXPO"), QStringLiteral("1"));
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "DESC"), QStringLiteral("0"));
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "PROCESOS", "<no>"), QStringLiteral("<no>"));
    QCOMPARE(s.GetSetting("KORVEN", "AEC", "100-B", "<no>"), QStringLiteral("<no>"));
    // The original is untouched.
    QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
             QStringLiteral("N"));
    QCOMPARE(Contar(*ts, "INTERNOS", "item", "100"), 2);
}

void TestCopia::numeroExistenteOVacio() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    OperacionConTodo(*ts, "100");
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("200"));
    CopiaInterno copia(ts->ctx());
    ScriptedDialogs& d = ts->dialogos();
    d.ResponderTexto("200");
    d.ResponderTexto(" ");
    d.ResponderCancelar();
    QCOMPARE(copia.Mostrar("100"), QString());
    QCOMPARE(copia.Mostrar("100"), QString());
    QCOMPARE(copia.Mostrar("100"), QString());
    QCOMPARE(d.mensajes(), QStringList{"El Código de interno ya existe."});
    QCOMPARE(d.registro().at(1).icono, Dialogos::Icono::Exclamacion);
    QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "200"), 0);
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 2.0);
}

// A store that refuses one statement of the copy leaves nothing of it.
void TestCopia::errorNoDejaMediaCopia() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    OperacionConTodo(*ts, "100");
    ts->settings().SaveSetting("KORVEN", "100", "FLAG1", "0");
    ts->conexion("INTERNOS").Ejecutar("drop table prorrateo");
    ts->dialogos().ResponderTexto("101");
    QCOMPARE(CopiaInterno(ts->ctx()).Mostrar("100"), QString());
    const QStringList m = ts->dialogos().mensajes();
    QCOMPARE(m.size(), 1);
    QVERIFY2(m.at(0).endsWith(" - seccion [OperationCopier.Main.Mostrar]::"), qPrintable(m.at(0)));
    QVERIFY2(m.at(0).contains("prorrateo"), qPrintable(m.at(0)));
    for (const char* t : {"caratula", "facturas", "subitems"})
        QCOMPARE(Contar(*ts, "INTERNOS", t, "101"), 0);
    QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "101"), 0);
    QVERIFY(ts->settings().Claves("KORVEN", "101").isEmpty());
    QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "100"), 2);
}

QTEST_MAIN(TestCopia)
#include "test_copia.moc"
