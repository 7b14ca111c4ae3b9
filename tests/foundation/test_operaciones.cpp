// The Operations without their screens, on SQLite and on PostgreSQL: the register's search with
// its filters and orders, the creation of an Operation (its number is one whatever its case), its
// deletion, the lock with its time, the migration of the headers, and the status the hub derives
// (VerDatos) with the buttons that follow from it.

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
#include "foundation/BloqueoInterno.h"
#include "foundation/BuscarInternos.h"
#include "foundation/EliminarInterno.h"
#include "foundation/EstadoInterno.h"
#include "foundation/Integridad.h"
#include "foundation/NuevoInterno.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
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

// Packages of an export, all present.
QVariantMap Bultos() {
    return {{"bulnro", "1-10"},
            {"bulcod", "01"},
            {"bultip", "CA"},
            {"bulpes", 100.0},
            {"buldes", 10.0}};
}

QVariantMap Unir(QVariantMap a, const QVariantMap& b) {
    a.insert(b);
    return a;
}

} // namespace

class TestOperaciones : public QObject {
    Q_OBJECT
    std::unique_ptr<TestStores> stores_[2];
    // Stores kept for the rows of one engine; each row starts without Operation 100 and with
    // the dest rows of the masters.
    TestStores& Compartidas(int motor) {
        if (!stores_[motor])
            stores_[motor] = StoresConMaestros(motor);
        TestStores& ts = *stores_[motor];
        ts.dialogos().Limpiar();
        for (const char* t : {"caratula", "subitems", "groupsubitems", "item"})
            ts.conexion("INTERNOS").Ejecutar(QStringLiteral("delete from %1").arg(t));
        ts.conexion("USUARIO").Ejecutar("delete from dest");
        CargarDest(ts);
        return ts;
    }
private Q_SLOTS:
    void ordenYLimite_data() {
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
    void ordenYLimite() {
        MOTOR_O_SALTAR();
        QFETCH(int, listado);
        QFETCH(bool, todo);
        QFETCH(QStringList, esperados);
        auto ts = StoresConMaestros(motor);
        for (int i = 1; i <= 60; ++i)
            InsertarCaratula(*ts, QString::number(i),
                             {{"fechaalta", QDate(2024, 1, 1).addDays(i)}});
        ts->ctx().config().LISTADO = listado;
        ts->ctx().config().OperacionesMostrarTODO = todo;
        QCOMPARE(Buscar(*ts), esperados);
    }
    void filtros_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("textoFiltro"); // client|broker|number|"F" for the dates
        QTest::addColumn<QString>("esperados");
        FILA_MOTORES("sin filtros", "|||" << QString("A-1 A-2 B-1 O'Hara"));
        FILA_MOTORES("cliente", "30999999997|||" << QString("A-2 B-1"));
        FILA_MOTORES("despachante", "|20222222223||" << QString("B-1"));
        FILA_MOTORES("cliente y despachante", "30999999997|20111111112||" << QString("A-2"));
        FILA_MOTORES("numero en blanco no filtra", "||  |" << QString("A-1 A-2 B-1 O'Hara"));
        FILA_MOTORES("numero con apostrofo", "||O'|" << QString("O'Hara"));
        FILA_MOTORES("fechas", "|||F" << QString("A-2 B-1"));
    }
    void filtros() {
        MOTOR_O_SALTAR();
        QFETCH(QString, textoFiltro);
        QFETCH(QString, esperados);
        const QStringList filtro = textoFiltro.split('|');
        auto ts = StoresConMaestros(motor);
        struct {
            const char *interno, *cliente, *despachante;
            QDate alta;
        } filas[] = {{"A-1", "30500010912", "20111111112", QDate(2024, 1, 31)},
                     {"A-2", "30999999997", "20111111112", QDate(2024, 2, 1)},
                     {"B-1", "30999999997", "20222222223", QDate(2024, 2, 29)},
                     {"O'Hara", "30500010912", "20111111112", QDate(2024, 3, 1)}};
        for (const auto& f : filas)
            InsertarCaratula(*ts, f.interno,
                             {{"cuitcliente", f.cliente},
                              {"cuitdespaduana", f.despachante},
                              {"fechaalta", f.alta}});
        FiltroInternos f{filtro[0],        filtro[1],         filtro[2],
                         filtro[3] == "F", QDate(2024, 2, 1), QDate(2024, 2, 29)};
        QCOMPARE(Buscar(*ts, f).join(QLatin1Char(' ')), esperados);
    }
    void filtroDeNumero_data() {
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
    void filtroDeNumero() {
        MOTOR_O_SALTAR();
        QFETCH(QString, prefijo);
        QFETCH(QStringList, esperados);
        auto ts = StoresConMaestros(motor);
        for (const char* n :
             {"demo-2", "DEMO-1", "DEMOZ", "DEN", "DF", "D", "CZ", "Z~9", "z{", "["})
            InsertarCaratula(*ts, n);
        FiltroInternos f;
        f.interno = prefijo;
        QCOMPARE(Buscar(*ts, f), esperados);
    }
    void detalleDeLaFila_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("separador");
        FILA_MOTORES("','", ",");
        FILA_MOTORES("'.'", ".");
    }
    void detalleDeLaFila() {
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
        QCOMPARE(
            (QStringList{f.interno, f.subRegimen, f.impExp, f.despachante, f.cliente, f.vendedor}),
            (QStringList{"100", "IC04", "Importacion", "Despachante Uno", "Cliente Uno",
                         "Vendedor Uno"}));
        QString esperado =
            QStringLiteral("Aduana: (001) BUENOS AIRES - Cond Venta: FOB\n"
                           "FOB : 1234#50 (DOL) - Flete : 07#00 (EUR) - Seguro : 00#13 "
                           "(DOL)\nCreado : viernes, 15 de marzo de 2024");
        QCOMPARE(f.detalle, esperado.replace(QLatin1Char('#'), separador));
        QCOMPARE(filas.at(1).impExp, QStringLiteral("Exportacion"));
        QCOMPARE(filas.at(2).impExp, QStringLiteral("Otros"));
        QVERIFY(
            filas.at(2).detalle.startsWith(QStringLiteral("Aduana: (999)  - Cond Venta: FOB\n")));
    }
    void nuevoInterno_data() { FilasDeMotores(); }
    void nuevoInterno() {
        MOTOR_O_SALTAR();
        auto ts = StoresConMaestros(motor);
        ScriptedDialogs& d = ts->dialogos();
        d.ResponderTexto(QStringLiteral("D'Alessio 1"));
        QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QStringLiteral("D'Alessio 1"));
        QCOMPARE(d.registro().size(), 1);
        QCOMPARE(d.registro().at(0).texto,
                 QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"));
        Recordset rs = ts->conexion("INTERNOS").Abrir("select * from caratula");
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNull(rs.Fields("interno")), QStringLiteral("D'Alessio 1"));
        QCOMPARE(EsNull(rs.Fields("onccahabilitado")), QStringLiteral("N"));
        QCOMPARE(rs.Fields("fechaalta").toDate(), QDate::currentDate());
        QVERIFY(EsNull(rs.Fields("idsubreg")).isEmpty());
        QVERIFY(rs.Fields("factura8").isNull());
        // Its options: the eight flags on, the coefficient off, and nothing else.
        QStringList opciones;
        for (const QString& k : ts->settings().Claves(kApp, "D'Alessio 1"))
            opciones << k + "=" + ts->settings().GetSetting(kApp, "D'Alessio 1", k);
        opciones.sort();
        QCOMPARE(opciones.join(' '), "COEFEXPO=0 FLAG0=1 FLAG1=1 FLAG2=1 FLAG3=1 FLAG4=1 FLAG5=1 "
                                     "FLAG6=1 FLAG7=1");
        // A blank number and a cancelled question make nothing, and say nothing.
        d.Limpiar();
        d.ResponderTexto(QStringLiteral("   "));
        d.ResponderCancelar();
        QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
        QCOMPARE(NuevoInterno(ts->ctx()).Ejecutar(), QString());
        QVERIFY(d.mensajes().isEmpty());
        QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 1.0);
    }
    void numeroSinMayusculas_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<bool>("copia");
        FILA_MOTORES("nuevo", false);
        FILA_MOTORES("copia", true);
    }
    // "ic-2026/001" is the Operation "IC-2026/001": neither a new one nor a copy takes it.
    void numeroSinMayusculas() {
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
            KorvenError, ts->conexion("INTERNOS")
                             .Ejecutar("insert into caratula (interno) values ('Ic-2026/001')"));
    }
    void eliminarBorraCadaTablaYDejaLoDemas_data() { FilasDeMotores(); }
    void eliminarBorraCadaTablaYDejaLoDemas() {
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
        QVERIFY(
            EliminarInterno(ts->ctx(), "PC-OTRA ").Ejecutar("X-1", [&](int n) { avance << n; }));
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
    void eliminarNoBorraNada_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("caso");
        QTest::addColumn<QString>("mensaje"); // "*x": begins with the prefix and names x
        FILA_MOTORES("sin confirmar", QString("no") << "");
        FILA_MOTORES("abierta en otra PC", QString("otra pc")
                                               << "Este interno esta abierto por la PC: PC-OTRA\n\n"
                                                  "Accedido el sábado, 16 de marzo de 2024");
        // A store that refuses one statement: the tables emptied before it come back.
        FILA_MOTORES("falla del almacen", QString("falla") << "*descargas");
        // Lines taken from the supplies need the supplies component to give them back.
        FILA_MOTORES("con insumos sin componente",
                     QString("insumos") << "[INTERNO.EliminarInterno] 429 - El componente "
                                           "SupplyLink.Main no está instalado.");
    }
    void eliminarNoBorraNada() {
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
            cx.Ejecutar(
                "update subitems set cancelaciones = 'OK' where interno = 'X-1' and id = 2");
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
    void bloqueoConHora_data() { FilasDeMotores(); }
    // The lock keeps the moment it was taken, not only the day.
    void bloqueoConHora() {
        MOTOR_O_SALTAR();
        auto ts = StoresConMaestros(motor);
        QVERIFY(BloqueoInterno(ts->stores(), ts->dialogos(), "PC-A").Tomar("100"));
        const QVariant v = Valor(*ts, "select fecha from interno where interno = '100'");
        const QDateTime momento =
            v.typeId() == QMetaType::QDateTime
                ? v.toDateTime()
                : QDateTime::fromString(v.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        QVERIFY2(qAbs(momento.secsTo(QDateTime::currentDateTime())) < 300,
                 qPrintable(v.toString()));
    }
    void migracionDeCaratula_data() { FilasDeMotores(); }
    // A store of the previous version keeps its headers and gets the key of the number.
    void migracionDeCaratula() {
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
        QCOMPARE(
            EsNumero(Valor(ts, "select count(*) from caratula where factura7 = 'Cliente Uno'")),
            2.0);
        QCOMPARE(FechaDeCampo(Valor(ts, "select fecha from interno")), QDate(2024, 1, 2));
    }
    void cleanupTestCase() {
        stores_[0].reset();
        stores_[1].reset();
    }
    void reglas_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QVariantMap>("cambios"); // header columns that differ from complete
        QTest::addColumn<QVariantList>("lineas"); // FOB of each goods line
        QTest::addColumn<QString>("dest"); // "" a plain dest row; "sin" none; else a hidden control
        // Header, goods lines, items, packages: C "COMPLETO!", I "INCOMPLETO", G "GENERADO!",
        // S "SIN GENERAR", B "COMPLETO", _ empty, - no label.
        QTest::addColumn<QString>("codigos");
        QTest::addColumn<QString>("botones"); // "b" enabled, "!b" disabled, "?b" left untouched
        auto fila = [](const char* nombre, const QVariantMap& cambios, const QVariantList& lineas,
                       const QString& dest, const QString& estados, const QString& botones) {
            for (int motor : {0, 1})
                QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", nombre)
                    << motor << cambios << lineas << dest << estados << botones;
        };
        const QVariantList mil{600.0, 400.0};
        const QVariantMap expo = Unir({{"idsubreg", "EC01"}}, Bultos());
        const QString bloqueados = "cmdITEM !CmdTransMaria !CmdBultos !cmdCertOrig !CmdPresupuesto "
                                   "!CmdHojaVal !cmdExportar !cmdExportINS !cmdPrint";
        const QString incompleta = "I - _ -";
        fila("importacion completa", {}, mil, "", "C C G -",
             "cmdITEM CmdPresupuesto CmdTransMaria cmdExportar !cmdExportINS !cmdPrint !CmdBultos "
             "!cmdCertOrig !ChCOEF ?CmdHojaVal");
        fila("sin registro en dest", {}, mil, "sin", incompleta,
             "!cmdITEM !CmdPresupuesto !CmdTransMaria !cmdExportar !cmdExportINS !cmdPrint "
             "?CmdHojaVal "
             "?CmdBultos ?cmdCertOrig");
        fila("fob cero", {{"fobdivisas", 0.0}}, {}, "", incompleta, "!cmdITEM");
        fila("fob 1000.004 contra 1000.00", {}, {1000.004}, "", "C C G -", "cmdITEM");
        fila("lineas 999.99 contra 1000", {}, {999.99}, "", "C I - -", "cmdITEM CmdTransMaria");
        fila("sin vendedor", {{"idvendedor", ""}}, mil, "", incompleta, "");
        fila("sin vendedor que dest oculta", {{"idvendedor", ""}}, mil, "Txtidvendedor", "C C G -",
             "");
        fila("sin condicion de venta", {{"idcondiciondeventa", QVariant()}}, mil, "", incompleta,
             "");
        fila("sin cliente", {{"cuitcliente", " "}}, mil, "", incompleta, "");
        fila("importacion sin flete", {{"fletedivisas", 0.0}}, mil, "", incompleta, "");
        fila("LAPI sin seguro", {{"idsubreg", "LAPI"}, {"segurodivisas", 0.0}}, mil, "", incompleta,
             "");
        fila("exportacion sin flete ni seguro",
             Unir(expo, {{"fletedivisas", 0.0}, {"segurodivisas", QVariant()}}), mil, "", "C C G B",
             "CmdTransMaria");
        fila("06 sin deposito", {{"idsubreg", "IC06"}}, mil, "", incompleta, "");
        fila("06 con deposito", {{"idsubreg", "IC06"}, {"factura5", "DEP01"}}, mil, "", "C C G -",
             "cmdPrint");
        fila("exportacion con bultos incompletos", {{"idsubreg", "EC01"}}, mil, "", "C C G I",
             "!CmdTransMaria !cmdExportar !cmdExportINS CmdBultos cmdCertOrig CmdHojaVal ChCOEF "
             "cmdITEM");
        fila("exportacion con bultos", expo, mil, "", "C C G B",
             "CmdTransMaria cmdExportar !cmdExportINS !cmdPrint CmdBultos cmdCertOrig CmdHojaVal");
        const QVariantMap b32{{"idsubreg", "EC01"}, {"bulcod", "32"}, {"bulpes", 80.0}};
        fila("BULCOD 32 con BULTIP A sin numero ni cantidad", Unir(b32, {{"bultip", "A"}}), mil, "",
             "C C G B", "CmdTransMaria cmdExportar");
        fila("BULCOD 32 con BULTIP B pide todo", Unir(b32, {{"bultip", "B"}}), mil, "", "C C G I",
             "!CmdTransMaria");
        fila("bultos que no se transfieren", {{"idsubreg", "EC01"}, {"factura9", " 1 "}}, mil, "",
             "C C G B", "CmdTransMaria");
        fila("exportacion temporal", Unir(expo, {{"idsubreg", "ET01"}}), mil, "", "C C G B",
             "cmdExportINS !cmdPrint");
        fila("exportacion con formularios", Unir(expo, {{"idsubreg", "EC02"}}), mil, "", "C C G B",
             "!cmdExportINS cmdPrint");
        fila("importacion temporal", {{"idsubreg", "IT01"}}, mil, "", "C C G -",
             "cmdExportINS CmdTransMaria ?CmdHojaVal");
        fila("IDA4 generado", {{"idsubreg", "IDA4"}}, mil, "", "C C G -",
             "cmdExportar CmdTransMaria !cmdExportINS !cmdPrint");
        fila("IDA4 con lineas incompletas", {{"idsubreg", "IDA4"}}, {10.0}, "", "C I - -",
             "!cmdExportar CmdTransMaria");
        fila("cambiado desde el armado", {{"factura8", "S"}}, mil, "", "C C S -", bloqueados);
        fila("cambiada con caratula incompleta", {{"factura8", "S"}, {"idaduana", ""}}, mil, "",
             incompleta, "!CmdHojaVal !cmdITEM");
        fila("nueva sin factura8", {{"factura8", QVariant()}}, mil, "", "C C G -", "");
    }
    void reglas() {
        MOTOR_O_SALTAR();
        QFETCH(QVariantMap, cambios);
        QFETCH(QVariantList, lineas);
        QFETCH(QString, dest);
        QFETCH(QString, codigos);
        QFETCH(QString, botones);
        TestStores& ts = Compartidas(motor);
        const QVariantMap c = Unir(CaratulaCompleta("100"), cambios);
        Insertar(ts, "INTERNOS", "caratula", c);
        const QString subreg = c.value("idsubreg").toString();
        ts.conexion("USUARIO").Ejecutar("delete from dest where subreg = ?", {subreg});
        if (dest != "sin") {
            QVariantMap d{{"subreg", subreg}};
            if (!dest.isEmpty())
                d.insert(dest.toLower(), "x");
            Insertar(ts, "USUARIO", "dest", d);
        }
        int id = 0;
        for (const QVariant& fob : lineas) {
            ++id;
            Insertar(ts, "INTERNOS", "subitems", {{"interno", "100"}, {"id", id}, {"fob", fob}});
            Insertar(ts, "INTERNOS", "groupsubitems",
                     {{"interno", "100"}, {"id", 1}, {"idsub", id}});
        }
        for (int i : {0, 1, 2})
            Insertar(ts, "INTERNOS", "item", {{"interno", "100"}, {"id", i}});

        EstadoDetalle e;
        QVERIFY(EstadoInterno(ts.ctx()).VerDatos("100", e));
        QVERIFY(ts.dialogos().registro().isEmpty());
        QCOMPARE((QStringList{e.textos.value("LbInterno"), e.textos.value("LbSubregimen"),
                              e.textos.value("LbItem"), e.textos.value("LbSubItem")}),
                 (QStringList{"100", subreg, "2", QString::number(lineas.size())}));
        const QHash<QString, QString> texto{{"COMPLETO!", "C"}, {"INCOMPLETO", "I"},
                                            {"GENERADO!", "G"}, {"SIN GENERAR", "S"},
                                            {"COMPLETO", "B"},  {"", "_"}};
        QStringList vistos;
        for (const char* l :
             {"LbEstadoCaratula", "LbEstadoSubItem", "LbEstadoItem", "LbEstadoBultos"})
            vistos << (e.textos.contains(l) ? texto.value(e.textos.value(l), "?") : "-");
        QCOMPARE(vistos.join(' '), codigos);
        QCOMPARE(e.caratulaCompleta, codigos.startsWith('C'));
        for (QString b : botones.split(' ', Qt::SkipEmptyParts)) {
            const QChar marca = b.at(0);
            if (marca == '!' || marca == '?')
                b.remove(0, 1);
            QCOMPARE(e.habilitados.contains(b), marca != '?');
            if (marca != '?')
                QVERIFY2(e.habilitados.value(b) == (marca != '!'), qPrintable(b));
        }
        QCOMPARE(e.visibles.value("frmOrdenar"), codigos.section(' ', 2, 2) == "S");
        QCOMPARE(e.tipoSubRegimen, QStringLiteral("P"));
    }
    void sinCaratula_data() { FilasDeMotores(); }
    // With no header the header labels stay empty and nothing can be done.
    void sinCaratula() {
        MOTOR_O_SALTAR();
        auto ts = StoresConMaestros(motor);
        EstadoDetalle e;
        QVERIFY(EstadoInterno(ts->ctx()).VerDatos("900", e));
        QCOMPARE(e.textos.value("LbInterno"), QStringLiteral("900"));
        for (const char* l : {"LbSubregimen", "LbAduana", "LbDespa", "LbCliente"})
            QVERIFY2(!e.textos.contains(l), l);
        QCOMPARE(e.textos.value("LbEstadoCaratula"), QStringLiteral("INCOMPLETO"));
        QCOMPARE(e.cstaimpexp, QStringLiteral("N"));
        QVERIFY(!e.habilitados.value("cmdITEM", true) &&
                !e.habilitados.value("CmdTransMaria", true));
    }
    void marcarCambiado_data() { FilasDeMotores(); }
    void marcarCambiado() {
        MOTOR_O_SALTAR();
        auto ts = StoresConMaestros(motor);
        InsertarCaratula(*ts, "100");
        InsertarCaratula(*ts, "200");
        ts->settings().SaveSetting("KORVEN", "AEC", "100", "R");
        ts->settings().SaveSetting("KORVEN", "AEC", "200", "P");
        EstadoInterno estado(ts->ctx());
        QCOMPARE(estado.LeerFactura8("100"), QStringLiteral("N"));
        estado.MarcarCambiado("100");
        QCOMPARE(estado.LeerFactura8("100"), QStringLiteral("S"));
        QCOMPARE(estado.LeerFactura8("200"), QStringLiteral("N"));
        QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "100", "?"), QString());
        QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "200"), QStringLiteral("P"));
    }
};

QTEST_GUILESS_MAIN(TestOperaciones)
#include "test_operaciones.moc"
