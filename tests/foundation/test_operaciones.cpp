// The register of Operations without its screen, on SQLite and on PostgreSQL: the search with
// its filters and orders, the creation of an Operation (its number is one whatever its case),
// its deletion, the lock with its time, and the migration of the headers.

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
#include "foundation/BloqueoInterno.h"
#include "foundation/BuscarInternos.h"
#include "foundation/EliminarInterno.h"
#include "foundation/Integridad.h"
#include "foundation/NuevoInterno.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "schema/LectorEsquema.h"
#include "schema/Migrador.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kApp = QStringLiteral("KORVEN");

QStringList Buscar(TestStores& ts, const FiltroInternos& f = {}) {
    QStringList r;
    for (const FilaInterno& fila : BuscarInternos(ts.stores(), ts.ctx().config()).Buscar(f))
        r << fila.interno;
    return r;
}

} // namespace

class TestOperaciones : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ordenYLimite_data();
    void ordenYLimite();
    void filtros_data();
    void filtros();
    void filtroDeNumero_data();
    void filtroDeNumero();
    void detalleDeLaFila_data();
    void detalleDeLaFila();
    void nuevoInterno_data() { FilasDeMotores(); }
    void nuevoInterno();
    void numeroSinMayusculas_data();
    void numeroSinMayusculas();
    void eliminarBorraCadaTablaYDejaLoDemas_data() { FilasDeMotores(); }
    void eliminarBorraCadaTablaYDejaLoDemas();
    void eliminarNoBorraNada_data();
    void eliminarNoBorraNada();
    void bloqueoConHora_data() { FilasDeMotores(); }
    void bloqueoConHora();
    void migracionDeCaratula_data() { FilasDeMotores(); }
    void migracionDeCaratula();
};

void TestOperaciones::ordenYLimite_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<int>("listado");
    QTest::addColumn<bool>("todo");
    QTest::addColumn<QStringList>("esperados");
    // Numbers in text order: 1, 10, 11, ..., 19, 2, 20, ..., 60 goes after 6.
    QStringList texto, nuevos;
    for (int i = 60; i >= 1; --i)
        nuevos << QString::number(i);
    texto = nuevos;
    texto.sort();
    FILA_MOTORES("LISTADO=0, 50", 0 << false << texto.mid(0, 50));
    FILA_MOTORES("LISTADO=0, todo", 0 << true << texto);
    FILA_MOTORES("LISTADO=1, 50 nuevos", 1 << false << nuevos.mid(0, 50));
    FILA_MOTORES("LISTADO=1, todo", 1 << true << nuevos);
}

void TestOperaciones::ordenYLimite() {
    MOTOR_O_SALTAR();
    QFETCH(int, listado);
    QFETCH(bool, todo);
    QFETCH(QStringList, esperados);
    auto ts = StoresConMaestros(motor);
    for (int i = 1; i <= 60; ++i)
        InsertarCaratula(*ts, QString::number(i), {{"fechaalta", QDate(2024, 1, 1).addDays(i)}});
    ts->ctx().config().LISTADO = listado;
    ts->ctx().config().OperacionesMostrarTODO = todo;
    QCOMPARE(Buscar(*ts), esperados);
}

void TestOperaciones::filtros_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QStringList>("filtro"); // client, broker, number, "F" for the dates
    QTest::addColumn<QStringList>("esperados");
    const QStringList todos{"A-1", "A-2", "B-1", "O'Hara"};
    FILA_MOTORES("sin filtros", QStringList{"", "", "", ""} << todos);
    FILA_MOTORES("cliente", QStringList{"30999999997", "", "", ""} << QStringList{"A-2", "B-1"});
    FILA_MOTORES("despachante", QStringList{"", "20222222223", "", ""} << QStringList{"B-1"});
    FILA_MOTORES("cliente y despachante",
                 QStringList{"30999999997", "20111111112", "", ""} << QStringList{"A-2"});
    FILA_MOTORES("numero en blanco no filtra", QStringList{"", "", "  ", ""} << todos);
    FILA_MOTORES("numero con apostrofo", QStringList{"", "", "O'", ""} << QStringList{"O'Hara"});
    FILA_MOTORES("fechas", QStringList{"", "", "", "F"} << QStringList{"A-2", "B-1"});
}

void TestOperaciones::filtros() {
    MOTOR_O_SALTAR();
    QFETCH(QStringList, filtro);
    QFETCH(QStringList, esperados);
    auto ts = StoresConMaestros(motor);
    struct {
        const char *interno, *cliente, *despachante;
        QDate alta;
    } filas[] = {{"A-1", "30500010912", "20111111112", QDate(2024, 1, 31)},
                 {"A-2", "30999999997", "20111111112", QDate(2024, 2, 1)},
                 {"B-1", "30999999997", "20222222223", QDate(2024, 2, 29)},
                 {"O'Hara", "30500010912", "20111111112", QDate(2024, 3, 1)}};
    for (const auto& f : filas)
        InsertarCaratula(
            *ts, f.interno,
            {{"cuitcliente", f.cliente}, {"cuitdespaduana", f.despachante}, {"fechaalta", f.alta}});
    FiltroInternos f{filtro[0],        filtro[1],         filtro[2],
                     filtro[3] == "F", QDate(2024, 2, 1), QDate(2024, 2, 29)};
    QCOMPARE(Buscar(*ts, f), esperados);
}

void TestOperaciones::filtroDeNumero_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("prefijo");
    QTest::addColumn<QStringList>("esperados");
    FILA_MOTORES("demo", "demo" << QStringList{"DEMO-1", "demo-2", "DEMOZ"});
    FILA_MOTORES("DEMO-", "DEMO-" << QStringList{"DEMO-1", "demo-2"});
    FILA_MOTORES("demoz", "demoz" << QStringList{"DEMOZ"});
    FILA_MOTORES("de", "de" << QStringList{"DEMO-1", "demo-2", "DEMOZ", "DEN"});
    FILA_MOTORES("con %", "D%" << QStringList{});
    FILA_MOTORES("z", "z" << QStringList{"z{", "Z~9"});
}

// The beginning of the number, whatever its case, listed without regard to case on both
// engines.
void TestOperaciones::filtroDeNumero() {
    MOTOR_O_SALTAR();
    QFETCH(QString, prefijo);
    QFETCH(QStringList, esperados);
    auto ts = StoresConMaestros(motor);
    for (const char* n : {"demo-2", "DEMO-1", "DEMOZ", "DEN", "DF", "D", "CZ", "Z~9", "z{", "["})
        InsertarCaratula(*ts, n);
    FiltroInternos f;
    f.interno = prefijo;
    QCOMPARE(Buscar(*ts, f), esperados);
}

void TestOperaciones::detalleDeLaFila_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    FILA_MOTORES("','", ",");
    FILA_MOTORES("'.'", ".");
}

void TestOperaciones::detalleDeLaFila() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    SeparadorDecimalScope scope(separador);
    auto ts = StoresConMaestros(motor);
    InsertarCaratula(*ts, "100",
                     {{"fobdivisas", 1234.5},
                      {"fletedivisas", 7.0},
                      {"fletecoddivisas", "EUR"},
                      {"segurodivisas", 0.125}});
    InsertarCaratula(*ts, "200", {{"idsubreg", "EC01"}});
    InsertarCaratula(*ts, "300", {{"idsubreg", "XX00"}, {"idaduana", "999"}});
    const QList<FilaInterno> filas =
        BuscarInternos(ts->stores(), ts->ctx().config()).Buscar(FiltroInternos{});
    QCOMPARE(filas.size(), 3);
    const FilaInterno& f = filas.at(0);
    QCOMPARE((QStringList{f.interno, f.subRegimen, f.impExp, f.despachante, f.cliente, f.vendedor}),
             (QStringList{"100", "IC04", "Importacion", "Despachante Uno", "Cliente Uno",
                          "Vendedor Uno"}));
    QString esperado = QStringLiteral("Aduana: (001) BUENOS AIRES - Cond Venta: FOB\n"
                                      "FOB : 1234#50 (DOL) - Flete : 07#00 (EUR) - Seguro : 00#13 "
                                      "(DOL)\nCreado : viernes, 15 de marzo de 2024");
    QCOMPARE(f.detalle, esperado.replace(QLatin1Char('#'), separador));
    QCOMPARE(filas.at(1).impExp, QStringLiteral("Exportacion"));
    QCOMPARE(filas.at(2).impExp, QStringLiteral("Otros"));
    QVERIFY(filas.at(2).detalle.startsWith(QStringLiteral("Aduana: (999)  - Cond Venta: FOB\n")));
}

void TestOperaciones::nuevoInterno() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    ScriptedDialogs& d = ts->dialogos();
    d.ResponderTexto(QStringLiteral("D'Alessio 1"));
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QStringLiteral("D'Alessio 1"));
    QCOMPARE(d.registro().size(), 1);
    QCOMPARE(d.registro().at(0).texto,
             QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"));
    QCOMPARE(d.registro().at(0).titulo, QStringLiteral("Crear nuevo interno"));
    Recordset rs =
        ts->conexion("INTERNOS")
            .Abrir("select interno, fechaalta, onccahabilitado, idsubreg, factura8 from caratula");
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(EsNull(rs.Fields("interno")), QStringLiteral("D'Alessio 1"));
    QCOMPARE(EsNull(rs.Fields("onccahabilitado")), QStringLiteral("N"));
    QCOMPARE(rs.Fields("fechaalta").toDate(), QDate::currentDate());
    QVERIFY(EsNull(rs.Fields("idsubreg")).isEmpty());
    QVERIFY(rs.Fields("factura8").isNull());
    SettingsStore& s = ts->settings();
    for (int i = 0; i < 8; ++i)
        QCOMPARE(s.GetSetting(kApp, "D'Alessio 1", QStringLiteral("FLAG%1").arg(i)),
                 QStringLiteral("1"));
    QCOMPARE(s.GetSetting(kApp, "D'Alessio 1", "COEFEXPO"), QStringLiteral("0"));
    QCOMPARE(s.Claves(kApp, "D'Alessio 1").size(), 9);
    // A blank number and a cancelled question make nothing, and say nothing.
    d.Limpiar();
    d.ResponderTexto(QStringLiteral("   "));
    d.ResponderCancelar();
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
    QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
    QVERIFY(d.mensajes().isEmpty());
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 1.0);
}

void TestOperaciones::numeroSinMayusculas_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<bool>("copia");
    FILA_MOTORES("nuevo", false);
    FILA_MOTORES("copia", true);
}

// "ic-2026/001" is the Operation "IC-2026/001": neither a new one nor a copy takes it.
void TestOperaciones::numeroSinMayusculas() {
    MOTOR_O_SALTAR();
    QFETCH(bool, copia);
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "IC-2026/001");
    OperacionConTodo(*ts, "B-1");
    const QMap<QString, int> antes = Todo(*ts, "IC-2026/001");
    ts->dialogos().ResponderTexto("ic-2026/001");
    const QString hecho =
        copia ? CopiaInterno(ts->ctx()).Mostrar("B-1") : NuevoInterno(ts->ctx()).Ejecutar();
    QCOMPARE(hecho, QString());
    QCOMPARE(ts->dialogos().mensajes(), QStringList{"El Código de interno ya existe."});
    QCOMPARE(ts->dialogos().registro().last().icono, Dialogos::Icono::Exclamacion);
    QCOMPARE(Todo(*ts, "ic-2026/001"), Todo(*ts, "no existe"));
    QCOMPARE(Todo(*ts, "IC-2026/001"), antes);
    QVERIFY(ts->settings().Claves(kApp, "ic-2026/001").isEmpty());
    // The store itself refuses it.
    QVERIFY_THROWS_EXCEPTION(
        KorvenError,
        ts->conexion("INTERNOS").Ejecutar("insert into caratula (interno) values ('Ic-2026/001')"));
}

void TestOperaciones::eliminarBorraCadaTablaYDejaLoDemas() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    SettingsStore& s = ts->settings();
    for (const QString x : {"X-1", "X-2"}) {
        OperacionConTodo(*ts, x);
        for (int i = 0; i < 9; ++i)
            s.SaveSetting(kApp, x, i < 8 ? QStringLiteral("FLAG%1").arg(i) : "COEFEXPO", "0");
        s.SaveSetting(kApp, x, "PROCESOS", "3");
        s.SaveSetting(kApp, x, "DESC", "0");
        s.SaveSetting(kApp, "AEC", x, "R");
    }
    ts->dialogos().ResponderSi();
    QList<int> avance;
    // The leftover lock of the same workstation does not stop it.
    QVERIFY(EliminarInterno(ts->ctx(), "PC-OTRA ").Ejecutar("X-1", [&](int n) { avance << n; }));
    QCOMPARE(ts->dialogos().registro().at(0).texto,
             QStringLiteral("Confirma eliminar el interno X-1"));
    QCOMPARE(ts->dialogos().registro().at(0).icono, Dialogos::Icono::Pregunta);
    QCOMPARE(avance, (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    const QMap<QString, int> quedan = Todo(*ts, "X-1");
    const QMap<QString, int> otra = Todo(*ts, "X-2");
    for (auto [tabla, n] : otra.asKeyValueRange()) {
        QVERIFY2(n > 0, qPrintable(tabla));
        QCOMPARE(quedan[tabla],
                 QStringList({"idrel", "sysflag", "coment"}).contains(tabla) ? n : 0);
    }
    // The options go, the AEC value and DESC stay; the other Operation keeps all of its own.
    QCOMPARE(s.Claves(kApp, "X-1"), QStringList{"DESC"});
    QCOMPARE(s.GetSetting(kApp, "AEC", "X-1"), QStringLiteral("R"));
    QCOMPARE(s.Claves(kApp, "X-2").size(), 11);
}

void TestOperaciones::eliminarNoBorraNada_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("caso");
    QTest::addColumn<QString>("mensaje"); // "*x": begins with the prefix and names x
    // clang-format off
    FILA_MOTORES("sin confirmar", "no" << "");
    FILA_MOTORES("abierta en otra PC", "otra pc" << "Este interno esta abierto por la PC: "
                 "PC-OTRA\n\nAccedido el sábado, 16 de marzo de 2024");
    // A store that refuses one statement: the tables emptied before it come back.
    FILA_MOTORES("falla del almacen", "falla" << "*descargas");
    // Lines taken from the supplies need the supplies component to give them back.
    FILA_MOTORES("con insumos sin componente", "insumos" << "[INTERNO.EliminarInterno] 429 - El "
                 "componente SupplyLink.Main no está instalado.");
    // clang-format on
}

void TestOperaciones::eliminarNoBorraNada() {
    MOTOR_O_SALTAR();
    QFETCH(QString, caso);
    QFETCH(QString, mensaje);
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "X-1"); // open on PC-OTRA since 16/03/2024
    ts->settings().SaveSetting(kApp, "X-1", "FLAG0", "0");
    Conexion& cx = ts->conexion("INTERNOS");
    if (caso == "falla")
        cx.Ejecutar("drop table descargas");
    if (caso == "insumos")
        cx.Ejecutar("update subitems set cancelaciones = 'OK' where interno = 'X-1' and id = 2");
    QStringList tablas = TablasDeOperacion();
    if (caso == "falla")
        tablas.removeOne(QStringLiteral("descargas"));
    const QMap<QString, int> antes = FilasDe(ts->stores(), "X-1", tablas);
    ts->dialogos().ResponderSiempre(caso != "no");
    QList<int> avance;
    QVERIFY(!EliminarInterno(ts->ctx(), caso == "otra pc" ? "PC-MIA" : "PC-OTRA")
                 .Ejecutar("X-1", [&](int n) { avance << n; }));
    const QStringList m = ts->dialogos().mensajes();
    if (mensaje.startsWith('*')) {
        QCOMPARE(avance.size(), 13);
        QCOMPARE(m.size(), 1);
        QVERIFY2(m[0].startsWith("[INTERNO.EliminarInterno] ") && m[0].contains(mensaje.mid(1)),
                 qPrintable(m[0]));
    } else {
        QCOMPARE(m, mensaje.isEmpty() ? QStringList() : QStringList{mensaje});
    }
    QCOMPARE(FilasDe(ts->stores(), "X-1", tablas), antes);
    QCOMPARE(ts->settings().GetSetting(kApp, "X-1", "FLAG0"), QStringLiteral("0"));
}

// The lock keeps the moment it was taken, not only the day.
void TestOperaciones::bloqueoConHora() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    QVERIFY(BloqueoInterno(ts->stores(), ts->dialogos(), "PC-A").Tomar("100"));
    const QVariant v = Valor(*ts, "select fecha from interno where interno = '100'");
    const QDateTime momento =
        v.typeId() == QMetaType::QDateTime
            ? v.toDateTime()
            : QDateTime::fromString(v.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY2(qAbs(momento.secsTo(QDateTime::currentDateTime())) < 300, qPrintable(v.toString()));
}

// A store of the previous version keeps its headers and gets the key of the number.
void TestOperaciones::migracionDeCaratula() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::Migrador m(ts.stores());
    for (const QString& e : StoreDirectory::Entidades())
        m.CrearEnVersion(e, 3);
    InsertarCaratula(ts, "A-1");
    InsertarCaratula(ts, "B-1");
    Insertar(
        ts, "INTERNOS", "interno",
        {{"interno", "A-1"}, {"maquina", "PC"}, {"usuario", ""}, {"fecha", QDate(2024, 1, 2)}});
    schema::CrearOActualizar(ts.stores());
    Conexion& c = ts.conexion("INTERNOS");
    QCOMPARE(schema::LectorEsquema::ClavePrimaria(c, "caratula"), QStringList{"interno"});
    QCOMPARE(EsNumero(Valor(ts, "select count(*) from caratula where factura7 = 'Cliente Uno'")),
             2.0);
    QCOMPARE(FechaDeCampo(Valor(ts, "select fecha from interno")), QDate(2024, 1, 2));
    QVERIFY_THROWS_EXCEPTION(KorvenError,
                             c.Ejecutar("insert into caratula (interno) values ('a-1')"));
}

QTEST_GUILESS_MAIN(TestOperaciones)
#include "test_operaciones.moc"
