// The register of Operations without its screen: the search with its filters and orders,
// the creation of an Operation and its deletion, on SQLite and on PostgreSQL.

#include "FixtureOperaciones.h"
#include "foundation/BuscarInternos.h"
#include "foundation/EliminarInterno.h"
#include "foundation/NuevoInterno.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kApp = QStringLiteral("KORVEN");

// Headers numbered 1 to n, created on consecutive days from 2024-01-01.
void Numerados(TestStores& ts, int n) {
    for (int i = 1; i <= n; ++i) {
        QVariantMap c = CaratulaCompleta(QString::number(i));
        c.insert("fechaalta", QDate(2024, 1, 1).addDays(i - 1));
        Insertar(ts, "INTERNOS", "caratula", c);
    }
}

QStringList Internos(const QList<FilaInterno>& filas) {
    QStringList r;
    for (const FilaInterno& f : filas)
        r << f.interno;
    return r;
}

QStringList Rango(int desde, int hasta) {
    QStringList r;
    for (int i = desde; i <= hasta; ++i)
        r << QString::number(i);
    return r;
}

} // namespace

class TestRegistro : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ordenYLimite_data();
    void ordenYLimite();
    void filtros_data();
    void filtros();
    void detalleDeLaFila_data();
    void detalleDeLaFila();
    void nuevoInterno_data() { FilasDeMotores(); }
    void nuevoInterno();
    void nuevoInternoExistenteOVacio_data() { FilasDeMotores(); }
    void nuevoInternoExistenteOVacio();
    void eliminarBorraCadaTablaYDejaLoDemas_data() { FilasDeMotores(); }
    void eliminarBorraCadaTablaYDejaLoDemas();
    void eliminarSinConfirmar_data() { FilasDeMotores(); }
    void eliminarSinConfirmar();
    void eliminarFallidoNoBorraNada_data() { FilasDeMotores(); }
    void eliminarFallidoNoBorraNada();
    void eliminarConInsumosSinComponente_data() { FilasDeMotores(); }
    void eliminarConInsumosSinComponente();
};

void TestRegistro::ordenYLimite_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<int>("listado");
    QTest::addColumn<bool>("todo");
    QTest::addColumn<QStringList>("esperados");
    // Numbers in text order: 1, 10, 11, ..., 19, 2, 20, ..., 60 goes after 6.
    QStringList texto = Rango(1, 60);
    texto.sort();
    QStringList nuevos;
    for (int i = 60; i >= 1; --i)
        nuevos << QString::number(i);
    for (int motor : {0, 1}) {
        const char* m = motor == 0 ? "sqlite" : "postgresql";
        QTest::newRow(qPrintable(QStringLiteral("%1 LISTADO=0, 50").arg(m)))
            << motor << 0 << false << texto.mid(0, 50);
        QTest::newRow(qPrintable(QStringLiteral("%1 LISTADO=0, todo").arg(m)))
            << motor << 0 << true << texto;
        QTest::newRow(qPrintable(QStringLiteral("%1 LISTADO=1, 50 nuevos").arg(m)))
            << motor << 1 << false << nuevos.mid(0, 50);
        QTest::newRow(qPrintable(QStringLiteral("%1 LISTADO=1, todo").arg(m)))
            << motor << 1 << true << nuevos;
    }
}

void TestRegistro::ordenYLimite() {
    MOTOR_O_SALTAR();
    QFETCH(int, listado);
    QFETCH(bool, todo);
    QFETCH(QStringList, esperados);
    auto ts = StoresConMaestros(motor);
    Numerados(*ts, 60);
    ts->ctx().config().LISTADO = listado;
    ts->ctx().config().OperacionesMostrarTODO = todo;
    const QList<FilaInterno> filas =
        BuscarInternos(ts->stores(), ts->ctx().config()).Buscar(FiltroInternos{});
    QCOMPARE(Internos(filas), esperados);
    QCOMPARE(esperados.first(), listado == 0 ? QStringLiteral("1") : QStringLiteral("60"));
}

void TestRegistro::filtros_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("cliente");
    QTest::addColumn<QString>("despachante");
    QTest::addColumn<QString>("interno");
    QTest::addColumn<bool>("porFecha");
    QTest::addColumn<QStringList>("esperados");
    for (int motor : {0, 1}) {
        const QString m = motor == 0 ? "sqlite " : "postgresql ";
        QTest::newRow(qPrintable(m + "sin filtros"))
            << motor << ""
            << ""
            << "" << false << QStringList{"A-1", "A-2", "B-1", "O'Hara"};
        QTest::newRow(qPrintable(m + "cliente")) << motor << "30999999997"
                                                 << ""
                                                 << "" << false << QStringList{"A-2", "B-1"};
        QTest::newRow(qPrintable(m + "despachante")) << motor << ""
                                                     << "20222222223"
                                                     << "" << false << QStringList{"B-1"};
        QTest::newRow(qPrintable(m + "cliente y despachante")) << motor << "30999999997"
                                                               << "20111111112"
                                                               << "" << false << QStringList{"A-2"};
        QTest::newRow(qPrintable(m + "comienzo del numero"))
            << motor << ""
            << ""
            << "A-" << false << QStringList{"A-1", "A-2"};
        QTest::newRow(qPrintable(m + "numero en blanco no filtra"))
            << motor << ""
            << ""
            << "  " << false << QStringList{"A-1", "A-2", "B-1", "O'Hara"};
        QTest::newRow(qPrintable(m + "numero con apostrofo"))
            << motor << ""
            << ""
            << "O'" << false << QStringList{"O'Hara"};
        QTest::newRow(qPrintable(m + "fechas")) << motor << ""
                                                << ""
                                                << "" << true << QStringList{"A-2", "B-1"};
        QTest::newRow(qPrintable(m + "sin resultados")) << motor << ""
                                                        << ""
                                                        << "Z" << false << QStringList{};
    }
}

void TestRegistro::filtros() {
    MOTOR_O_SALTAR();
    QFETCH(QString, cliente);
    QFETCH(QString, despachante);
    QFETCH(QString, interno);
    QFETCH(bool, porFecha);
    QFETCH(QStringList, esperados);
    auto ts = StoresConMaestros(motor);
    struct {
        const char* interno;
        const char* cliente;
        const char* despachante;
        QDate alta;
    } filas[] = {{"A-1", "30500010912", "20111111112", QDate(2024, 1, 31)},
                 {"A-2", "30999999997", "20111111112", QDate(2024, 2, 1)},
                 {"B-1", "30999999997", "20222222223", QDate(2024, 2, 29)},
                 {"O'Hara", "30500010912", "20111111112", QDate(2024, 3, 1)}};
    for (const auto& f : filas) {
        QVariantMap c = CaratulaCompleta(f.interno);
        c.insert("cuitcliente", f.cliente);
        c.insert("cuitdespaduana", f.despachante);
        c.insert("fechaalta", f.alta);
        Insertar(*ts, "INTERNOS", "caratula", c);
    }
    FiltroInternos filtro;
    filtro.cliente = cliente;
    filtro.despachante = despachante;
    filtro.interno = interno;
    filtro.filtroFecha = porFecha;
    filtro.desde = QDate(2024, 2, 1);
    filtro.hasta = QDate(2024, 2, 29);
    QCOMPARE(Internos(BuscarInternos(ts->stores(), ts->ctx().config()).Buscar(filtro)), esperados);
}

void TestRegistro::detalleDeLaFila_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    for (int motor : {0, 1})
        for (const char* s : {",", "."})
            QTest::newRow(
                qPrintable(QStringLiteral("%1 '%2'").arg(motor == 0 ? "sqlite" : "postgresql", s)))
                << motor << QString::fromLatin1(s);
}

void TestRegistro::detalleDeLaFila() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    SeparadorDecimalScope scope(separador);
    auto ts = StoresConMaestros(motor);
    QVariantMap c = CaratulaCompleta("100");
    c.insert("fobdivisas", 1234.5);
    c.insert("fletedivisas", 7.0);
    c.insert("fletecoddivisas", "EUR");
    c.insert("segurodivisas", 0.125);
    Insertar(*ts, "INTERNOS", "caratula", c);
    QVariantMap e = CaratulaCompleta("200");
    e.insert("idsubreg", "EC01");
    Insertar(*ts, "INTERNOS", "caratula", e);
    QVariantMap o = CaratulaCompleta("300");
    o.insert("idsubreg", "XX00");
    o.insert("idaduana", "999");
    Insertar(*ts, "INTERNOS", "caratula", o);

    const QList<FilaInterno> filas =
        BuscarInternos(ts->stores(), ts->ctx().config()).Buscar(FiltroInternos{});
    QCOMPARE(filas.size(), 3);
    const FilaInterno& f = filas.at(0);
    QCOMPARE(f.interno, QStringLiteral("100"));
    QCOMPARE(f.subRegimen, QStringLiteral("IC04"));
    QCOMPARE(f.impExp, QStringLiteral("Importacion"));
    QCOMPARE(f.despachante, QStringLiteral("Despachante Uno"));
    QCOMPARE(f.cliente, QStringLiteral("Cliente Uno"));
    QCOMPARE(f.vendedor, QStringLiteral("Vendedor Uno"));
    QString esperado = QStringLiteral("Aduana: (001) BUENOS AIRES - Cond Venta: FOB\n"
                                      "FOB : 1234#50 (DOL) - Flete : 07#00 (EUR) - Seguro : 00#13 "
                                      "(DOL)\nCreado : viernes, 15 de marzo de 2024");
    QCOMPARE(f.detalle, esperado.replace(QLatin1Char('#'), separador));
    QCOMPARE(filas.at(1).impExp, QStringLiteral("Exportacion"));
    QCOMPARE(filas.at(2).impExp, QStringLiteral("Otros"));
    QVERIFY(filas.at(2).detalle.startsWith(QStringLiteral("Aduana: (999)  - Cond Venta: FOB\n")));
}

void TestRegistro::nuevoInterno() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    ts->dialogos().ResponderTexto(QStringLiteral("2024-0001"));
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QStringLiteral("2024-0001"));
    const auto& r = ts->dialogos().registro();
    QCOMPARE(r.size(), 1);
    QCOMPARE(r.at(0).texto, QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"));
    QCOMPARE(r.at(0).titulo, QStringLiteral("Crear nuevo interno"));
    Recordset rs =
        ts->conexion("INTERNOS")
            .Abrir("select interno, fechaalta, onccahabilitado, idsubreg, factura8 from caratula");
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(EsNull(rs.Fields("interno")), QStringLiteral("2024-0001"));
    QCOMPARE(EsNull(rs.Fields("onccahabilitado")), QStringLiteral("N"));
    QCOMPARE(rs.Fields("fechaalta").toDate(), QDate::currentDate());
    QVERIFY(EsNull(rs.Fields("idsubreg")).isEmpty());
    QVERIFY(rs.Fields("factura8").isNull());
    SettingsStore& s = ts->settings();
    for (int i = 0; i < 8; ++i)
        QCOMPARE(s.GetSetting(kApp, "2024-0001", QStringLiteral("FLAG%1").arg(i)),
                 QStringLiteral("1"));
    QCOMPARE(s.GetSetting(kApp, "2024-0001", "COEFEXPO"), QStringLiteral("0"));
    QCOMPARE(s.Claves(kApp, "2024-0001").size(), 9);

    // A number with an apostrophe is kept as typed.
    ts->dialogos().ResponderTexto(QStringLiteral("D'Alessio 1"));
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QStringLiteral("D'Alessio 1"));
    QCOMPARE(Contar(*ts, "INTERNOS", "caratula", "D'Alessio 1"), 1);
}

void TestRegistro::nuevoInternoExistenteOVacio() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("500"));
    ScriptedDialogs& d = ts->dialogos();
    d.ResponderTexto(QStringLiteral("500"));
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
    QCOMPARE(d.mensajes(), QStringList{"El Código de interno ya existe."});
    QCOMPARE(d.registro().last().icono, Dialogos::Icono::Exclamacion);
    // The header that was there is untouched.
    QCOMPARE(EsNull(Valor(*ts, "select idsubreg from caratula where interno = '500'")),
             QStringLiteral("IC04"));
    QVERIFY(ts->settings().Claves(kApp, "500").isEmpty());

    d.Limpiar();
    d.ResponderTexto(QStringLiteral("   "));
    d.ResponderCancelar();
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
    QVERIFY(d.mensajes().isEmpty());
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 1.0);
}

void TestRegistro::eliminarBorraCadaTablaYDejaLoDemas() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "X-1");
    OperacionConTodo(*ts, "X-2");
    SettingsStore& s = ts->settings();
    for (const QString& x : {QStringLiteral("X-1"), QStringLiteral("X-2")}) {
        for (int i = 0; i < 8; ++i)
            s.SaveSetting(kApp, x, QStringLiteral("FLAG%1").arg(i), "0");
        s.SaveSetting(kApp, x, "COEFEXPO", "1");
        s.SaveSetting(kApp, x, "PROCESOS", "3");
        s.SaveSetting(kApp, x, "DESC", "0");
        s.SaveSetting(kApp, "AEC", x, "R");
    }
    ts->dialogos().ResponderSi();
    QList<int> avance;
    QVERIFY(EliminarInterno(ts->ctx(), "PC-OTRA").Ejecutar("X-1", [&](int n) { avance << n; }));
    QCOMPARE(ts->dialogos().registro().at(0).texto,
             QStringLiteral("Confirma eliminar el interno X-1"));
    QCOMPARE(ts->dialogos().registro().at(0).icono, Dialogos::Icono::Pregunta);
    QCOMPARE(avance, (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    QStringList orden;
    for (const EliminarInterno::Paso& p : EliminarInterno::Pasos())
        orden << p.entidad + "." + p.tabla;
    QCOMPARE(orden, (QStringList{"INTERNOS.subitems", "INTERNOS.groupsubitems", "INTERNOS.item",
                                 "INTERNOS.liqcero", "INTERNOS.itemventaja", "INTERNOS.itemref",
                                 "INTERNOS.itempresu", "INTERNOS.itemliq", "INTERNOS.iteminfo",
                                 "INTERNOS.interno", "INTERNOS.caratula", "INTERNOS.facturas",
                                 "INTERNOS.prorrateo", "INTERNOS.descargas", "SYSTABLAS.hval",
                                 "SYSTABLAS.hvalexp"}));
    for (const TablaOperacion& t : TablasDeOperacion()) {
        const bool queda = QString(t.tabla) == "idrel" || QString(t.tabla) == "sysflag" ||
                           QString(t.tabla) == "coment";
        const int antes = Contar(*ts, t.entidad, t.tabla, "X-2");
        QVERIFY2(antes > 0, t.tabla);
        QCOMPARE(Contar(*ts, t.entidad, t.tabla, "X-1"), queda ? antes : 0);
    }
    // The options go, the AEC value and DESC stay; the other Operation keeps all of its own.
    QCOMPARE(s.Claves(kApp, "X-1"), QStringList{"DESC"});
    QCOMPARE(s.GetSetting(kApp, "AEC", "X-1"), QStringLiteral("R"));
    QCOMPARE(s.Claves(kApp, "X-2").size(), 11);
}

void TestRegistro::eliminarSinConfirmar() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "X-1");
    ts->settings().SaveSetting(kApp, "X-1", "FLAG0", "1");
    ts->dialogos().ResponderNo();
    QVERIFY(!EliminarInterno(ts->ctx(), "PC-OTRA").Ejecutar("X-1"));
    for (const TablaOperacion& t : TablasDeOperacion())
        QVERIFY2(Contar(*ts, t.entidad, t.tabla, "X-1") > 0, t.tabla);
    QCOMPARE(ts->settings().GetSetting(kApp, "X-1", "FLAG0"), QStringLiteral("1"));
}

// A store that refuses one statement leaves the Operation whole: the tables emptied before it
// come back.
void TestRegistro::eliminarFallidoNoBorraNada() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "X-1");
    ts->settings().SaveSetting(kApp, "X-1", "FLAG0", "0");
    ts->conexion("INTERNOS").Ejecutar("drop table descargas");
    ts->dialogos().ResponderSi();
    QList<int> avance;
    QVERIFY(!EliminarInterno(ts->ctx(), "PC-OTRA").Ejecutar("X-1", [&](int n) { avance << n; }));
    QCOMPARE(avance.size(), 13);
    const QStringList m = ts->dialogos().mensajes();
    QCOMPARE(m.size(), 1);
    QVERIFY2(m.at(0).startsWith(QStringLiteral("[INTERNO.EliminarInterno] ")), qPrintable(m.at(0)));
    QVERIFY2(m.at(0).contains(QStringLiteral("descargas")), qPrintable(m.at(0)));
    for (const TablaOperacion& t : TablasDeOperacion())
        if (QString(t.tabla) != "descargas")
            QVERIFY2(Contar(*ts, t.entidad, t.tabla, "X-1") > 0, t.tabla);
    QCOMPARE(ts->settings().GetSetting(kApp, "X-1", "FLAG0"), QStringLiteral("0"));
    // The store is usable afterwards.
    QCOMPARE(Contar(*ts, "INTERNOS", "caratula", "X-1"), 1);
}

// Lines taken from the supplies need the supplies component to give them back; without it the
// Operation is not deleted.
void TestRegistro::eliminarConInsumosSinComponente() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "X-1");
    ts->conexion("INTERNOS")
        .Ejecutar("update subitems set cancelaciones = 'OK' where interno = 'X-1' and id = 2");
    ts->dialogos().ResponderSi();
    QVERIFY(!EliminarInterno(ts->ctx(), "PC-OTRA").Ejecutar("X-1"));
    QCOMPARE(ts->dialogos().mensajes(),
             QStringList{"[INTERNO.EliminarInterno] 429 - El componente SupplyLink.Main no está "
                         "instalado."});
    for (const TablaOperacion& t : TablasDeOperacion())
        QVERIFY2(Contar(*ts, t.entidad, t.tabla, "X-1") > 0, t.tabla);
}

QTEST_GUILESS_MAIN(TestRegistro)
#include "test_registro.moc"
