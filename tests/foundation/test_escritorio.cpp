// The start and the desktop: what the start reads from KORVEN.ini and the settings store, the
// general options and store locations screens, the main menu with and without its components,
// the desktop dialogs, the members of components and what every data form shares (ClCntrl).
//
// The screens of the Operations driven from the keyboard, with the stores checked afterwards: the
// register (Insert, Enter, Delete, F6, F12 and Esc), the hub of an open Operation (its options,
// the lock it gives back, the assembly button and the hand-offs to components a plain
// installation does not have) and the small master lists.
//
// The Operations without their screens, on SQLite and on PostgreSQL: the register's search with
// its filters and orders, the creation of an Operation (its number is one whatever its case), its
// deletion, the lock with its time, the migration of the headers, and the status the hub derives
// (VerDatos) with the buttons that follow from it.

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
#include "components/RegistrarComponentesPropios.h"
#include "foundation/BloqueoInterno.h"
#include "foundation/BuscarInternos.h"
#include "foundation/ClListadoEx.h"
#include "foundation/EliminarInterno.h"
#include "foundation/EstadoInterno.h"
#include "foundation/FrmBase.h"
#include "foundation/FrmConGen.h"
#include "foundation/FrmDetalleInterno.h"
#include "foundation/FrmInternoNew.h"
#include "foundation/FrmListado.h"
#include "foundation/FrmLstDiv.h"
#include "foundation/FrmLstVendedores.h"
#include "foundation/FrmNewVendedor.h"
#include "foundation/FrmPrincipal.h"
#include "foundation/Integridad.h"
#include "foundation/LeerConfig.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/NuevoInterno.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "foundation/Sesion.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"
#include "platform/ui/DesktopDialogs.h"
#include "schema/Esquema.h"
#include "schema/Migrador.h"
#include "support/Pantallas.h"
#include "support/Principal.h"
#include "support/TestStores.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
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

namespace {

// Stores with the masters, three vendors and the given headers, and the screens registered.
std::unique_ptr<TestStores> Stores(int motor, const QStringList& internos = {}) {
    auto ts = StoresConMaestros(motor);
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    RegistrarComponentesPropios(ts->ctx().componentes());
    for (const auto& [c, n, d] : {std::tuple{"V03", "Ana", "Calle 3"},
                                  {"V01", "Pedro", "Calle 1"},
                                  {"V02", "Luis", "Calle 2"}})
        Insertar(*ts, "PERSONAL", "vendedor", {{"codigo", c}, {"nombre", n}, {"domicilio", d}});
    for (const QString& x : internos)
        InsertarCaratula(*ts, x);
    return ts;
}

struct Registro {
    explicit Registro(int motor, const QStringList& internos = {})
        : ts(Stores(motor, internos)), f(ts->ctx(), {{"maquina", "PC-A"}}) {
        Mostrar(f);
    }
    std::unique_ptr<TestStores> ts;
    FrmInternoNew f;
    QTreeWidget* grilla() { return f.findChild<QTreeWidget*>("lstInterno"); }
    QLineEdit* txt(const char* nombre) { return f.findChild<QLineEdit*>(nombre); }
    // Enter in the number: the search.
    void Buscar(const QString& interno = {}) {
        txt("txtInterno")->setText(interno);
        QTest::keyClick(txt("txtInterno"), Qt::Key_Return);
    }
    // Selects the row of an Operation and presses a key on the grid.
    void Tecla(const QString& interno, Qt::Key tecla) {
        for (QTreeWidgetItemIterator i(grilla()); *i; ++i)
            if ((*i)->text(1) == interno)
                grilla()->setCurrentItem(*i);
        QCOMPARE(f.InternoSeleccionado(), interno);
        QTest::keyClick(grilla(), tecla);
    }
    QStringList mensajes() { return ts->dialogos().mensajes(); }
};

// An Operation open on this workstation, its lines adding up to its FOB; exports get their
// packages.
std::unique_ptr<TestStores> Abierta(int motor, const QString& subreg = "IC04",
                                    const QVariantMap& cambios = {}) {
    auto ts = StoresConMaestros(motor);
    QVariantMap c{{"idsubreg", subreg}, {"bulnro", "1-10"}, {"bulcod", "01"},
                  {"bultip", "CA"},     {"bulpes", 100.0},  {"buldes", 10.0}};
    c.insert(cambios);
    InsertarCaratula(*ts, "100", c);
    Insertar(*ts, "INTERNOS", "subitems", {{"interno", "100"}, {"id", 1}, {"fob", 1000.0}});
    Insertar(*ts, "INTERNOS", "interno", {{"interno", "100"}, {"maquina", "PC-A"}});
    return ts;
}

QString Texto(FrmDetalleInterno& f, const char* label) {
    return f.findChild<QLabel*>(label)->text();
}

QPushButton* Boton(FrmDetalleInterno& f, const QString& nombre) {
    return f.findChild<QPushButton*>(nombre);
}

// Enter on a control that has the focus (Space for check boxes).
void Pulsar(QWidget* w, Qt::Key tecla = Qt::Key_Return) {
    QVERIFY(w->isEnabled());
    w->setFocus();
    QTest::keyClick(w, tecla);
}

// Registers a stand-in screen that counts its openings, keeps its arguments and runs an action.
void Pantalla(TestStores& ts, const QString& nombre, QList<QVariantMap>* vistas,
              std::function<void(AppContext&)> accion = {}) {
    ts.ctx().pantallas().Registrar(nombre, [=](AppContext& ctx, const QVariantMap& a) {
        vistas->append(a);
        if (accion)
            accion(ctx);
        return QVariant();
    });
}

void Sql(AppContext& ctx, const QString& sql) {
    ctx.stores().getDataConnectionByEntity("INTERNOS").Ejecutar(sql);
}

QStringList Columna(QTreeWidget* t, int col) {
    QStringList r;
    for (int i = 0; i < t->topLevelItemCount(); ++i)
        r << t->topLevelItem(i)->text(col);
    return r;
}

QString Vendedor(TestStores& ts, const char* campo, const char* codigo) {
    return EsNull(
        Valor(ts, QStringLiteral("select %1 from vendedor where codigo = '%2'").arg(campo, codigo),
              "PERSONAL"));
}

void Llenar(QWidget* w, const char* campo, const QString& texto) {
    auto* t = w->findChild<QLineEdit*>(campo);
    t->setText(texto);
    QTest::keyClick(t, Qt::Key_Return);
}

} // namespace

class TestPantallas : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertF6YDelete_data() { FilasDeMotores(); }
    // Insert makes an Operation, F6 copies the selected one, Delete removes it.
    void insertF6YDelete() {
        MOTOR_O_SALTAR();
        Registro r(motor);
        // An empty grid: Delete and F6 ask nothing (an unscripted question would end the test).
        r.Buscar("nada");
        QTest::keyClick(r.grilla(), Qt::Key_Delete);
        QTest::keyClick(r.grilla(), Qt::Key_F6);
        QVERIFY(r.ts->dialogos().registro().isEmpty());
        r.ts->dialogos().ResponderTexto("2024-0007");
        QTest::keyClick(r.txt("txtCliente"), Qt::Key_Insert);
        QCOMPARE(r.f.InternosListados(), QStringList{"2024-0007"});
        QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "2024-0007"), 1);
        OperacionConTodo(*r.ts, "X-1");
        r.Buscar();
        r.ts->dialogos().ResponderTexto("X-2");
        r.Tecla("X-1", Qt::Key_F6);
        QCOMPARE(r.f.InternosListados(), QStringList{"X-2"});
        QCOMPARE(Contar(*r.ts, "INTERNOS", "subitems", "X-2"), 2);
        r.Buscar();
        // The locks left by this workstation do not stop the deletion.
        r.ts->conexion("INTERNOS").Ejecutar("update interno set maquina = 'PC-A'");
        r.ts->dialogos().ResponderSi();
        r.Tecla("X-1", Qt::Key_Delete);
        QCOMPARE(r.f.InternosListados(), (QStringList{"2024-0007", "X-2"}));
        QCOMPARE(Contar(*r.ts, "INTERNOS", "caratula", "X-1"), 0);
        QCOMPARE(Contar(*r.ts, "INTERNOS", "subitems", "X-2"), 2);
    }
    void enterAbreBajoBloqueo_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("bloqueo"); // workstation of a lock already there
        QTest::addColumn<QString>("mensaje");
        FILA_MOTORES("libre", ""
                                  << "");
        FILA_MOTORES(
            "bloqueo de la misma PC",
            " PC-A "
                << "El estado de INTERNO indica que el mismo "
                   "esta abierto.\n\nSe procedera a cambiar el estado.\n\nUltimo Acceso: viernes, "
                   "15 de marzo de 2024");
        FILA_MOTORES("bloqueo de otra PC", "PC-B"
                                               << "Este interno esta abierto por la PC: PC-B\n\n"
                                                  "Accedido el viernes, 15 de marzo de 2024");
    }
    // Enter on a row opens the hub under the lock; closing it gives the lock back and reads the
    // row of its Operation again.
    void enterAbreBajoBloqueo() {
        MOTOR_O_SALTAR();
        QFETCH(QString, bloqueo);
        QFETCH(QString, mensaje);
        const bool abre = bloqueo != "PC-B";
        QWidget marco;
        marco.setObjectName("FrmPrincipal");
        marco.setWindowTitle("Korven Windows - 01.00.00");
        Registro r(motor, {"100", "200"});
        TestStores& ts = *r.ts;
        if (!bloqueo.isEmpty())
            Insertar(ts, "INTERNOS", "interno",
                     {{"interno", "100"}, {"maquina", bloqueo}, {"fecha", QDate(2024, 3, 15)}});
        r.Buscar();
        QVERIFY(r.grilla()->hasFocus());
        QStringList visto;
        AlAbrir<FrmDetalleInterno> hub([&](FrmDetalleInterno* h) {
            visto << h->interno() << marco.windowTitle()
                  << EsNull(Valor(ts, "select maquina from interno where interno = '100'"));
            ts.conexion("INTERNOS")
                .Ejecutar("update caratula set factura7 = 'Cliente Nuevo', "
                          "idsubreg = 'EC01' where interno = '100'");
            QTest::keyClick(h, Qt::Key_Escape);
        });
        r.Tecla("100", Qt::Key_Return);
        QCOMPARE(r.mensajes(), mensaje.isEmpty() ? QStringList{} : QStringList{mensaje});
        if (!abre) {
            QCOMPARE(hub.veces(), 0);
            QCOMPARE(EsNull(Valor(ts, "select maquina from interno where interno = '100'")),
                     bloqueo);
            return;
        }
        QCOMPARE(visto, (QStringList{"100", "Korven Windows 1.0.0 - PC [ PC-A ]", "PC-A"}));
        QCOMPARE(Contar(ts, "INTERNOS", "interno", "100"), 0);
        QCOMPARE(ts.settings().GetSetting("KORVEN", "100", "FLAG0"), QStringLiteral("1"));
        QStringList vistas;
        for (QTreeWidgetItemIterator i(r.grilla()); *i; ++i)
            if (!(*i)->text(1).isEmpty())
                vistas << QStringList{(*i)->text(1), (*i)->text(2), (*i)->text(3), (*i)->text(5)}
                              .join('|');
        QCOMPARE(vistas, (QStringList{"100|EC01|Exportacion|Cliente Nuevo",
                                      "200|IC04|Importacion|Cliente Uno"}));
        QCOMPARE(r.f.InternoSeleccionado(), QStringLiteral("100"));
    }
    void cargaLeeLasOpciones() {
        auto ts = Abierta(0);
        SettingsStore& s = ts->settings();
        for (const char* k : {"FLAG1", "FLAG6", "COEFEXPO"})
            s.SaveSetting("KORVEN", "100", k, "0");
        s.SaveSetting("KORVEN", "100", "FLAG3", "");
        ts->ctx().config().ARMARITEM = 1;
        FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
        QCOMPARE(Texto(f, "LbAduana"), QStringLiteral("(001) BUENOS AIRES"));
        QCOMPARE(Texto(f, "LbEstadoItem"), QStringLiteral("GENERADO!"));
        for (int i = 0; i < 8; ++i)
            QCOMPARE(f.CkFlag(i)->isChecked(), i != 1 && i != 6);
        QVERIFY(!f.findChild<QCheckBox*>("ChCOEF")->isEnabled());
        QVERIFY(f.findChild<QRadioButton*>("opOrdenxNCM")->isChecked());
        QVERIFY(f.findChild<QWidget*>("frmOrdenar")->isHidden());
        QCOMPARE(ts->ctx().InternoActual, QStringLiteral("100"));
    }
    void escGuardaOpcionesYLiberaElBloqueo_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("subreg");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<QString>("coef"); // COEFEXPO after closing
        FILA_MOTORES("importacion, Esc", "IC04" << int(Qt::Key_Escape) << "0");
        FILA_MOTORES("exportacion, Esc", "EC01" << int(Qt::Key_Escape) << "1");
        FILA_MOTORES("exportacion, Ctrl+C", "EC01" << int(Qt::Key_C) << "1");
    }
    void escGuardaOpcionesYLiberaElBloqueo() {
        MOTOR_O_SALTAR();
        QFETCH(QString, subreg);
        QFETCH(int, tecla);
        QFETCH(QString, coef);
        auto ts = Abierta(motor, subreg);
        Insertar(*ts, "INTERNOS", "interno", {{"interno", "200"}, {"maquina", "PC-B"}});
        ts->settings().SaveSetting("KORVEN", "100", "COEFEXPO", "0");
        FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
        f.show();
        // The clerk turns off "Pais de Origen" and turns on the coefficient where it may.
        Pulsar(f.CkFlag(2), Qt::Key_Space);
        auto* coeficiente = f.findChild<QCheckBox*>("ChCOEF");
        if (coeficiente->isEnabled())
            Pulsar(coeficiente, Qt::Key_Space);
        QTest::keyClick(Boton(f, "cmdCaratula"), static_cast<Qt::Key>(tecla),
                        tecla == Qt::Key_C ? Qt::ControlModifier : Qt::NoModifier);
        QVERIFY(!f.isVisible());
        SettingsStore& s = ts->settings();
        for (int i = 0; i < 8; ++i)
            QCOMPARE(s.GetSetting("KORVEN", "100", QStringLiteral("FLAG%1").arg(i)),
                     QString(i == 2 ? "0" : "1"));
        QCOMPARE(s.GetSetting("KORVEN", "100", "COEFEXPO"), coef);
        // Its lock is gone, the lock of another Operation stays.
        QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 0);
        QCOMPARE(Contar(*ts, "INTERNOS", "interno", "200"), 1);
        QVERIFY(ts->ctx().InternoActual.isEmpty());
    }
    void traspasosSinComponente_data() {
        QTest::addColumn<QString>("subreg");
        QTest::addColumn<QString>("boton");
        QTest::addColumn<QString>("mensaje");
        const QString no =
            QStringLiteral("429 - El componente %1 no está instalado. - Seccion [%2]");
        QTest::newRow("CmdTransMaria")
            << "ET01"
            << "CmdTransMaria"
            << no.arg("DeclarationOutput.Main", "KORVEN.frmDetalleInterno.CmdTransMaria");
        QTest::newRow("cmdExportar")
            << "ET01"
            << "cmdExportar"
            << no.arg("CancellationImport.Main", "KORVEN.Detalleinterno.cmdExportar");
        QTest::newRow("cmdITEM") << "IC04"
                                 << "cmdITEM"
                                 << "429 - La pantalla FrmArmarItem no está instalada. - "
                                    "[KORVEN.frmDetalleInterno.cmdItem]";
    }
    // Each hand-off reports, when it is pressed, that its component is not installed, with its own
    // section text; the hub stays on the screen and usable.
    void traspasosSinComponente() {
        QFETCH(QString, subreg);
        QFETCH(QString, boton);
        QFETCH(QString, mensaje);
        auto ts = Abierta(0, subreg, {{"factura8", boton == "cmdITEM" ? "S" : "N"}});
        QList<QVariantMap> chequeos;
        ts->ctx().pantallas().Registrar("ChequearInterno", [&](AppContext&, const QVariantMap& a) {
            chequeos << a;
            return QVariant(false);
        });
        FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
        f.show();
        Pulsar(Boton(f, boton));
        QCOMPARE(ts->dialogos().mensajes(), QStringList{mensaje});
        QCOMPARE(ts->dialogos().registro().last().icono, Dialogos::Icono::Critico);
        QCOMPARE(chequeos.size(), boton == "CmdTransMaria" ? 1 : 0);
        QVERIFY(f.isVisible());
        QVERIFY(Boton(f, boton)->isEnabled());
        QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 1);
    }
    void armadoDeItems_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("factura8");
        QTest::addColumn<bool>("generado");     // the items are generated after the button
        QTest::addColumn<QString>("resultado"); // ArmadoResultado the assembly leaves
        FILA_MOTORES("sin cambios va a los items", "N" << true << "SI");
        FILA_MOTORES("armado correcto", "S" << true << "SI");
        FILA_MOTORES("armado fallido", "S" << false << "NO");
        FILA_MOTORES("armado cancelado", "S" << false << "No");
    }
    void armadoDeItems() {
        MOTOR_O_SALTAR();
        QFETCH(QString, factura8);
        QFETCH(bool, generado);
        QFETCH(QString, resultado);
        auto ts = Abierta(motor, "IC04", {{"factura8", factura8}});
        ts->settings().SaveSetting("KORVEN", "AEC", "100", "R");
        QList<QVariantMap> armados, vistos;
        // The assembly: a good run clears the change mark.
        Pantalla(*ts, "FrmArmarItem", &armados, [resultado](AppContext& ctx) {
            ctx.ArmadoResultado = resultado;
            if (resultado == "SI")
                Sql(ctx, "update caratula set factura8 = 'N' where interno = '100'");
        });
        Pantalla(*ts, "FrmVerItem", &vistos);
        FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
        f.show();
        Pulsar(f.findChild<QRadioButton*>("opOrdenxNCM"), Qt::Key_Space);
        Pulsar(f.findChild<QCheckBox*>("ChMulta"), Qt::Key_Space);
        Pulsar(Boton(f, "cmdITEM"));
        QCOMPARE(armados.size(), factura8 == "S" ? 1 : 0);
        QCOMPARE(vistos.size(), generado ? 1 : 0);
        const QVariantMap esperados[] = {{{"interno", "100"}, {"ejecutar", true}, {"multa", true}},
                                         {{"interno", "100"}, {"item", 0}}};
        for (int i = 0; i < 2; ++i)
            for (const QVariantMap& a : i ? vistos : armados)
                for (auto [k, v] : esperados[i].asKeyValueRange())
                    QCOMPARE(a.value(k), v);
        QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
                 generado ? "N" : "S");
        QCOMPARE(ts->settings().GetSetting("KORVEN", "AEC", "100"),
                 resultado == "SI" ? QStringLiteral("R") : QString());
        QCOMPARE(Texto(f, "LbEstadoItem"), generado ? "GENERADO!" : "SIN GENERAR");
        QCOMPARE(Boton(f, "CmdTransMaria")->isEnabled(), generado);
        QVERIFY(ts->dialogos().registro().isEmpty());
    }
    // What the screens of the Operation leave behind shows as soon as they close.
    void pantallasDeLaOperacionRecalculanElEstado() {
        auto ts = Abierta(0);
        QList<QVariantMap> lineas;
        Pantalla(*ts, "FrmSubItems", &lineas, [](AppContext& ctx) {
            Sql(ctx, "update caratula set factura8 = 'S' where interno = '100'");
        });
        FrmDetalleInterno f(ts->ctx(), {{"interno", "100"}});
        f.show();
        Pulsar(f.CkFlag(4), Qt::Key_Space);
        Pulsar(Boton(f, "CmdSubItems"));
        // The goods screen learns which options are off.
        QCOMPARE(lineas[0].value("flags").toList(),
                 (QVariantList{true, true, true, true, false, true, true, true}));
        QCOMPARE(Texto(f, "LbEstadoItem"), QStringLiteral("SIN GENERAR"));
        QVERIFY(!Boton(f, "CmdTransMaria")->isEnabled());
        QVERIFY(!f.findChild<QWidget*>("frmOrdenar")->isHidden());
    }
    void listado() {
        auto ts = Stores(0);
        const QVariantMap args{
            {"codigos", QStringList{"200", "203", "221", "310"}},
            {"descripciones", QStringList{"ARGENTINA", "BRASIL", "URUGUAY", "CHINA"}}};
        QVariantMap conValores = args;
        conValores.insert("valores", QStringList{"200", "203", "221", "310|5"});
        FrmListado f(ts->ctx(), conValores);
        Mostrar(f);
        auto* txt = Control<QLineEdit>(f, "TxtBs");
        auto* cod = Control<QListWidget>(f, "LstCod");
        QTest::keyClicks(txt, "22");
        QCOMPARE(cod->currentRow(), 2);
        QTest::keyClick(txt, Qt::Key_Down);
        QTest::keyClick(txt, Qt::Key_Down);
        QCOMPARE(cod->currentRow(), 3);
        QVERIFY(txt->hasFocus());
        QTest::keyClick(txt, Qt::Key_Return);
        QCOMPARE(f.Respuesta(), QStringLiteral("310|5"));
        // Enter with no row selected hands nothing over.
        FrmListado g(ts->ctx(), args);
        Mostrar(g);
        txt = Control<QLineEdit>(g, "TxtBs");
        QTest::keyClicks(txt, "X");
        QTest::keyClick(txt, Qt::Key_Return);
        QVERIFY(g.isVisible());
        QTest::keyClick(txt, Qt::Key_Escape);
        QVERIFY(!g.isVisible());
        QCOMPARE(g.Respuesta(), QString());
    }
    void vendedoresAltaCambioYBaja_data() { FilasDeMotores(); }
    void vendedoresAltaCambioYBaja() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        FrmLstVendedores f(ts->ctx());
        Mostrar(f);
        auto* lst = Control<QTreeWidget>(f, "Lst");
        // Insert: a new vendor in its editor; first with a code that exists.
        AlAbrir<FrmNewVendedor> alta([](FrmNewVendedor* e) {
            Llenar(e, "TxtCodigo", "V03");
            Llenar(e, "TxtNombre", "O'Brien");
            Llenar(e, "TxtDomicilio", "Calle 4");
            QTest::keyClick(Control<QPushButton>(e, "Command1"), Qt::Key_Return);
            QVERIFY(e->isVisible());
            Control<QLineEdit>(e, "TxtCodigo")->setText("V04");
            QTest::keyClick(Control<QPushButton>(e, "Command1"), Qt::Key_Space);
        });
        QTest::keyClick(lst, Qt::Key_Insert);
        QCOMPARE(ts->dialogos().mensajes(),
                 (QStringList{"El codigo ya existe.!", "Datos ingresados correctamente."}));
        QCOMPARE(Columna(lst, 0), (QStringList{"V01", "V02", "V03", "V04"}));
        QCOMPARE(Vendedor(*ts, "nombre", "V03"), QStringLiteral("Ana"));
        QCOMPARE(Vendedor(*ts, "nombre", "V04"), QStringLiteral("O'Brien"));
        // F6: the selected vendor changes its name.
        lst->setCurrentItem(lst->topLevelItem(1));
        AlAbrir<FrmNewVendedor> cambio([](FrmNewVendedor* e) {
            QVERIFY(Control<QLineEdit>(e, "TxtCodigo")->isReadOnly());
            QCOMPARE(Texto(e, "TxtCodigo"), QStringLiteral("V02"));
            QCOMPARE(Texto(e, "TxtNombre"), QStringLiteral("Luis"));
            Control<QLineEdit>(e, "TxtNombre")->setText("Luis Alberto");
            e->Command1();
        });
        QTest::keyClick(lst, Qt::Key_F6);
        QCOMPARE(lst->topLevelItem(1)->text(1), QStringLiteral("Luis Alberto"));
        QCOMPARE(Vendedor(*ts, "domicilio", "V02"), QStringLiteral("Calle 2"));
        // Delete: the selected vendor goes, from the list and the store.
        lst->setCurrentItem(lst->topLevelItem(0));
        QTest::keyClick(lst, Qt::Key_Delete);
        QCOMPARE(Columna(lst, 0), (QStringList{"V02", "V03", "V04"}));
        QCOMPARE(Vendedor(*ts, "nombre", "V01"), QString());
        // An empty store: the message, and Enter hands nothing over.
        ts->conexion("PERSONAL").Ejecutar("delete from vendedor");
        ts->dialogos().Limpiar();
        FrmLstVendedores g(ts->ctx());
        Mostrar(g);
        QCOMPARE(ts->dialogos().mensajes(), QStringList{"No hay vendedores en la Base"});
        lst = Control<QTreeWidget>(g, "Lst");
        QTest::keyClick(lst, Qt::Key_Return);
        QVERIFY(g.isVisible() && g.property("Respuesta").toMap().isEmpty());
    }
    void listadoExPaises_data() { FilasDeMotores(); }
    void listadoExPaises() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        for (const auto& [id, d] :
             {std::pair{"200", "MERCOSUR"}, {"200", "ALADI"}, {"203", "MERCOSUR"}, {"310", "OMC"}})
            Insertar(*ts, "SYSTABLAS", "lista", {{"id", id}, {"descripcion", d}});
        QVariantMap recibido;
        ts->ctx().pantallas().Registrar("FrmListadoeX", [&](AppContext&, const QVariantMap& a) {
            recibido = a;
            return QVariant(QVariantMap{{"codigo", "200"}, {"descripcion", "MERCOSUR"}});
        });
        ClListadoEx l(ts->ctx());
        l.setTipo(ClListadoEx::ListasDePaises);
        QCOMPARE(l.Mostrar("", ""), QStringList{});
        QCOMPARE(l.Mostrar("999", ""), QStringList{});
        QCOMPARE(ts->dialogos().mensajes(),
                 (QStringList{"No hay Países ingresados.",
                              "No hay LISTA para mostrar con los Países ingresados"}));
        QVERIFY(recibido.isEmpty());
        QCOMPARE(l.Mostrar("200", "203"), (QStringList{"200", "MERCOSUR"}));
        QCOMPARE(recibido.value("titulo").toString(), QStringLiteral("LISTAS"));
        QCOMPARE(recibido.value("anchos").toList(), (QVariantList{2000, 2000}));
        QCOMPARE(recibido.value("filas").toList(),
                 (QVariantList{QStringList{"200", "ALADI"}, QStringList{"200", "MERCOSUR"},
                               QStringList{"203", "MERCOSUR"}}));
    }
    void comentario_data() { FilasDeMotores(); }
    void comentario() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        Insertar(*ts, "SYSTABLAS", "coment", {{"interno", "200"}, {"coment", "Otro"}});
        for (const QString texto : {"Don't forget\nthe invoices", "Llega el 'lunes'"}) {
            FrmLstDiv f(ts->ctx(), {{"interno", "100"}});
            Mostrar(f);
            auto* txt = Control<QPlainTextEdit>(f, "TxtCom");
            txt->setPlainText(texto);
            QTest::keyClick(txt, Qt::Key_Escape);
            QVERIFY(!f.isVisible());
            QCOMPARE(
                EsNull(Valor(*ts, "select coment from coment where interno = '100'", "SYSTABLAS")),
                texto);
        }
        QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "100"), 1);
        QVERIFY(ts->dialogos().registro().isEmpty());
        FrmLstDiv g(ts->ctx(), {{"interno", "200"}});
        QCOMPARE(Control<QPlainTextEdit>(g, "TxtCom")->toPlainText(), QStringLiteral("Otro"));
    }
};

namespace {

void EscribirArchivo(const QString& ruta, const QString& texto) {
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(texto.toUtf8());
}

QString LeerArchivo(const QString& ruta) {
    QFile f(ruta);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

// A setting by the name of its key.
QVariant Ajuste(const Configuracion& c, const QString& clave) {
    const QHash<QString, QVariant> t = {
        {"CORDANO", c.CORDANO},
        {"VERSION", c.VERSION},
        {"MODIFCAT", c.MODIFCAT},
        {"ARMARITEM", c.ARMARITEM},
        {"MODARTSUB", c.MODARTSUB},
        {"SbtFuncionCargaPor", c.SbtFuncionCargaPor},
        {"LISTADO", c.LISTADO},
        {"DIEMCHINA-IndMaxArancel", c.DIEMCHINA_IndMaxArancel},
        {"DIEMCHINA-PrefPorc", c.DIEMCHINA_PrefPorc},
        {"IVARIN", c.IVARIN},
        {"IVARNI", c.IVARNI},
    };
    return t.value(clave);
}

void Abrir(FrmConGen& frm) {
    frm.LeeImpresoras({});
    frm.show();
    QApplication::setActiveWindow(&frm);
}

void Reemplazar(QLineEdit* t, const QString& texto) {
    t->setFocus();
    t->selectAll();
    QTest::keyClicks(t, texto);
}

// An installed component that writes down what the menu did with it.
class ComponenteAnotador : public QObject {
    Q_OBJECT
    Q_PROPERTY(QObject* DAMSource MEMBER damSource_ WRITE setDAMSource)
public:
    explicit ComponenteAnotador(QStringList* notas) : notas_(notas) {}
    void setDAMSource(QObject*) { *notas_ << QStringLiteral("DAMSource"); }
    Q_INVOKABLE void GuardarInternos() { *notas_ << QStringLiteral("GuardarInternos"); }
    Q_INVOKABLE void LeerInternos() { *notas_ << QStringLiteral("LeerInternos"); }

private:
    QStringList* notas_;
    QObject* damSource_ = nullptr;
};

// The stores of a menu test: only the nomenclator's date table is needed.
struct Bases : TestStores {
    explicit Bases(Motor motor = Motor::SQLite) : TestStores(motor) {
        conexion("NCM").Ejecutar(QStringLiteral("create table control_fecha (fecha date)"));
    }
    void Registrar(const QString& nombre, QStringList* notas) {
        ctx().componentes().Registrar(nombre, [notas](AppContext&) {
            return std::unique_ptr<QObject>(new ComponenteAnotador(notas));
        });
    }
    void Fechas(const QList<QDate>& fechas) {
        for (const QDate& d : fechas)
            conexion("NCM").Ejecutar(QStringLiteral("insert into control_fecha (fecha) values (%1)")
                                         .arg(stores().getDateFormatbyEntity("NCM", d)));
    }
};

// Moves to the row with the arrows, as the clerk does, and presses Enter.
void Elegir(QTableWidget* g, int fila) {
    g->setFocus();
    g->setCurrentCell(0, g->columnCount() - 1);
    for (int i = 0; i < fila; ++i)
        QTest::keyClick(g, Qt::Key_Down);
    QCOMPARE(g->currentRow(), fila);
    QTest::keyClick(g, Qt::Key_Return);
}

QString Etiqueta(const QWidget& w, const char* nombre) {
    return w.findChild<QLabel*>(nombre)->text();
}

// The start routine on the stores of the test, answering from its script.
struct Arranque {
    explicit Arranque(TestStores& ts) {
        p.directorioPrograma = ts.directorio();
        p.carpetaSettings = ts.settings().carpeta();
        p.dialogos = &ts.dialogos();
        p.finDelProceso = [this](int c) { fines << c; };
    }
    ParametrosArranque p;
    QList<int> fines;
};

// A data form with three linked text boxes.
struct Formulario {
    explicit Formulario(AppContext& ctx) {
        auto* l = new QVBoxLayout(&form);
        for (int i = 0; i < 3; ++i) {
            auto* t = new QLineEdit(&form);
            l->addWidget(t);
            ClCntrl::Vincular(ctx, t);
            txt << t;
        }
        form.show();
        form.activateWindow();
        QApplication::setActiveWindow(&form);
        txt[0]->setFocus();
    }
    QWidget form;
    QList<QLineEdit*> txt;
};

// The paths of the six stores, as the configuration holds them.
QStringList Rutas(const Configuracion& c) {
    return {c.rutaInternos, c.rutaSystablas, c.rutaPersonal,
            c.rutaNcm,      c.rutaUsuario,   c.rutaEstado};
}

} // namespace

class TestEscritorio : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ubicacionesVaciasSeEscribenEnElArchivo() {
        TestStores ts(Motor::SQLite);
        SettingsStore& s = ts.settings();
        const QString ini = ts.ctx().rutaIni();
        EscribirArchivo(ini, QStringLiteral("[GENERAL]\nCORDANO=S\n"));
        LeerConfig(ts.ctx());
        const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
        // The section GENERAL stays as it was; the keys come in the order they were written back.
        QCOMPARE(LeerArchivo(ini), QStringLiteral("[GENERAL]\nCORDANO=S\n\n"
                                                  "[BASESERVER]\nINTERNO=%1\nPERSONAL=%1\nNCM=%1\n"
                                                  "ESTADO=%1\n\n[BASELOCAL]\nUSUARIO=%1\n")
                                       .arg(db));
        QCOMPARE(Rutas(ts.ctx().config()),
                 (QStringList{db + "internos.mdb", db + "systablas.mdb", db + "personal.mdb",
                              db + "ncm.mdb", db + "usuario.mdb", db + "estados.mdb"}));
        // The settings store received the empty locations first, INTERNO normalised to a lone
        // separator; the second start publishes what the first wrote back, and changes nothing.
        QCOMPARE(s.GetSetting("KORVEN", "DEFAULT", "UBICACION"), ts.directorio());
        QCOMPARE(s.GetSetting("KORVEN", "BASES", "INTERNO", "x"), DirectorioNormal(QString()));
        QCOMPARE(s.GetSetting("KORVEN", "BASES", "NCM", "x"), QString());
        LeerConfig(ts.ctx());
        for (const char* b : {"INTERNO", "SYSTABLAS", "PERSONAL", "NCM", "ESTADO", "USUARIO"})
            QCOMPARE(s.GetSetting("KORVEN", "BASES", b), db);
        QCOMPARE(LeerArchivo(ini).count(QStringLiteral("INTERNO=")), 1);
    }
    void ubicacionesPresentesSeUsanComoEstan() {
        TestStores ts(Motor::SQLite);
        const QString ini = ts.ctx().rutaIni();
        // A directory without its final separator is taken as it stands: the file name is glued
        // to it.
        EscribirArchivo(ini, QStringLiteral("[BASESERVER]\nInterno=/srv/korven\nPERSONAL=/srv/p/\n"
                                            "NCM=   \n[BASELOCAL]\nusuario=/home/u/\n"));
        LeerConfig(ts.ctx());
        const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
        QCOMPARE(Rutas(ts.ctx().config()),
                 (QStringList{"/srv/korveninternos.mdb", "/srv/korvensystablas.mdb",
                              "/srv/p/personal.mdb", db + "ncm.mdb", "/home/u/usuario.mdb",
                              db + "estados.mdb"}));
        QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ini), QStringLiteral("/srv/korven"));
        QCOMPARE(IniFile::Leer("NCM", "BASESERVER", ini), db);
        SettingsStore& s = ts.settings();
        QCOMPARE(s.GetSetting("KORVEN", "BASES", "INTERNO"), QStringLiteral("/srv/korven/"));
        QCOMPARE(s.GetSetting("KORVEN", "BASES", "SYSTABLAS"), QStringLiteral("/srv/korven"));
        QCOMPARE(s.GetSetting("KORVEN", "BASES", "USUARIO"), QStringLiteral("/home/u/"));
    }
    void clavesGenerales_data() {
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QString>("clave");
        QTest::addColumn<QString>("linea");    // the line of the file; empty: the key is missing
        QTest::addColumn<QString>("esperado"); // as the value reads as text
        const char* casos[][4] = {
            {",", "VERSION", "VERSION=1", "2"},
            {",", "DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=abc", "40"},
            {",", "DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=12.5", "12.5"},
            {",", "DIEMCHINA-IndMaxArancel", "DIEMCHINA-IndMaxArancel=abc", "35"},
            {",", "SbtFuncionCargaPor", "", "true"},
            {",", "SbtFuncionCargaPor", "sbtfuncioncargapor=N", "false"},
            {",", "ARMARITEM", "ARMARITEM=3", "2"},
            {",", "MODIFCAT", "MODIFCAT=S", "2"},
            {",", "MODIFCAT", "MODIFCAT=SI", "1"},
            {",", "MODARTSUB", "MODARTSUB= S ", "S"},
            {",", "CORDANO", "CORDANO=S", "true"},
            {",", "LISTADO", "LISTADO=1", "1"},
            // The VAT rates are read with either mark, whatever the separator in use.
            {",", "IVARIN", "IVARIN=10.5", "10.5"},
            {".", "IVARIN", "IVARIN=10,5", "10.5"},
            {",", "IVARNI", "IVARNI=10.5", "10.5"},
            {".", "IVARNI", "IVARNI=10,5", "10.5"},
            {",", "IVARNI", "IVARNI=", "0"},
        };
        for (const auto& c : casos)
            QTest::addRow("%s, separador %s",
                          *c[2] ? c[2] : qPrintable(QStringLiteral("%1 falta").arg(c[1])), c[0])
                << c[0] << c[1] << c[2] << c[3];
    }
    void clavesGenerales() {
        QFETCH(QString, separador);
        QFETCH(QString, clave);
        QFETCH(QString, linea);
        QFETCH(QString, esperado);
        SeparadorDecimalScope sep(separador);
        TestStores ts(Motor::SQLite);
        EscribirArchivo(ts.ctx().rutaIni(), QStringLiteral("[GENERAL]\n") + linea + "\n");
        LeerConfig(ts.ctx());
        const QVariant valor = Ajuste(ts.ctx().config(), clave);
        QVERIFY2(valor.isValid(), qPrintable(clave));
        QCOMPARE(valor.toString(), esperado);
    }
    void ajustesDelUsuario() {
        TestStores ts(Motor::SQLite);
        SettingsStore& s = ts.settings();
        const Configuracion& c = ts.ctx().config();
        s.SaveSetting("GENERAL", "OBJ", "CancelManual", "S");
        s.SaveSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "S");
        // Without the temporary supplies component the option is off whatever the store says.
        LeerConfig(ts.ctx());
        QVERIFY(c.CancelManual && !c.SupplyTemporaryInstalado && !c.INSTMP_RestarPerMer);
        ts.ctx().componentes().Registrar("SupplyTemporary.Main",
                                         [](AppContext&) { return std::make_unique<QObject>(); });
        LeerConfig(ts.ctx());
        QVERIFY(c.SupplyTemporaryInstalado && c.INSTMP_RestarPerMer);
        s.SaveSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "N");
        s.SaveSetting("GENERAL", "OBJ", "CancelManual", "X");
        LeerConfig(ts.ctx());
        QVERIFY(!c.INSTMP_RestarPerMer && !c.CancelManual);
    }
    void opcionesGeneralesEscribeLasClaves_data() {
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QString>("tasa");
        QTest::newRow("coma") << ","
                              << "21,5";
        QTest::newRow("punto") << "."
                               << "21.5";
    }
    void opcionesGeneralesEscribeLasClaves() {
        QFETCH(QString, separador);
        QFETCH(QString, tasa);
        SeparadorDecimalScope sep(separador);
        TestStores ts(Motor::SQLite);
        EscribirArchivo(ts.ctx().rutaIni(), "[GENERAL]\nMODIFCAT=S\nDIEMCHINA-PrefPorc=abc\n"
                                            "ARMARITEM=1\nLISTADO=1\nIVARIN=10.5\nSbtMostrarAsc=S\n"
                                            "MODARTSUB=S\n");
        ts.settings().SaveSetting("GENERAL", "OBJ", "CancelManual", "S");
        FrmConGen frm(ts.ctx());
        Abrir(frm);
        QFile::remove(ts.ctx().rutaIni());
        // It shows what was read; without the temporary supplies component its options are off.
        QCOMPARE(Control<QLineEdit>(frm, "txtRIN")->text(),
                 QString("10#5").replace('#', separador));
        QVERIFY(!Control<QCheckBox>(frm, "chINSTEMPPerMer")->isEnabled());
        Control<QCheckBox>(frm, "chVfySbtDup")->setChecked(true);
        Control<QCheckBox>(frm, "chSbtFuncionCargaPor")->setChecked(false);
        Reemplazar(Control<QLineEdit>(frm, "txtRIN"), tasa);
        QTest::keyClick(Control<QLineEdit>(frm, "txtRIN"), Qt::Key_Escape);
        QVERIFY(!frm.isVisible());
        // The keys in the order they are written, the rates always with a point.
        QCOMPARE(
            LeerArchivo(ts.ctx().rutaIni()),
            QStringLiteral("[GENERAL]\nLISTADO=1\nGROUPBYART=N\nMODIFCAT=S\nPRIMR100=N\n"
                           "VALORCAT=N\nFLGIDARTTOOTROS=N\nARMARITEM=1\nVRYSBTDUP=S\n"
                           "SBTNROARTAI=N\nNOCALCLIQU=N\nIVARIN=21.5\nIVARNI=0\n"
                           "OPERACIONESMOSTRARTODO=N\nVENDEDORORDERXNOMBRE=N\nSBTMANTCODART=N\n"
                           "SBTMANTDATOS=N\nSBTMOSTRARASC=S\nSBTFORZARNROARTAI=N\n"
                           "SBTFUNCIONCARGAPOR=N\nMODARTSUB=S\nENVIARCOMEXT=N\n"
                           "DIEMCHINA-INDMAXARANCEL=35\nDIEMCHINA-PREFPORC=40\n"));
        const Configuracion& c = ts.ctx().config();
        QCOMPARE(c.IVARIN, 21.5);
        QCOMPARE(QList<int>({c.MODIFCAT, c.ARMARITEM, c.LISTADO}), QList<int>({2, 1, 1}));
        QCOMPARE(c.VrySbtDup, QStringLiteral("S"));
        QVERIFY(!c.SbtFuncionCargaPor && c.CancelManual);
        QCOMPARE(ts.settings().GetSetting("GENERAL", "OBJ", "CancelManual"), QStringLiteral("S"));
    }
    void opcionesGeneralesCamposNumericos() {
        SeparadorDecimalScope sep(",");
        TestStores ts(Motor::SQLite);
        FrmConGen frm(ts.ctx());
        Abrir(frm);
        QLineEdit* ind = Control<QLineEdit>(frm, "txtIndMaxArancel");
        QLineEdit* pref = Control<QLineEdit>(frm, "txtPrefPorc");
        Reemplazar(ind, "x");
        pref->clear();
        QTest::keyClick(ind, Qt::Key_Escape);
        QVERIFY(frm.isVisible());
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"El campo Indice Maximo Arancel debe tener un valor númerico"});
        QCOMPARE(QApplication::focusWidget(), ind);
        QVERIFY(!QFile::exists(ts.ctx().rutaIni()));
        Reemplazar(ind, "30,5");
        QTest::keyClick(ind, Qt::Key_Escape);
        QVERIFY(frm.isVisible());
        QCOMPARE(ts.dialogos().mensajes().last(),
                 QStringLiteral("El campo Preferencia Porcentual debe tener un valor númerico"));
        QCOMPARE(QApplication::focusWidget(), pref);
        QTest::keyClicks(pref, "12");
        QTest::keyClick(pref, Qt::Key_Escape);
        QVERIFY(!frm.isVisible());
        QCOMPARE(IniFile::Leer("DIEMCHINA-IndMaxArancel", "GENERAL", ts.ctx().rutaIni()),
                 QStringLiteral("30.5"));
        QCOMPARE(ts.ctx().config().DIEMCHINA_IndMaxArancel, 30.5);
        QCOMPARE(ts.ctx().config().DIEMCHINA_PrefPorc, 12.0);
    }
    // Ctrl+C leaves the screen from a text box too, and saves as Esc does. The extended decimal
    // mode of the supplies excludes subtracting the goods.
    void insumosTemporales() {
        TestStores ts(Motor::SQLite);
        ts.ctx().config().SupplyTemporaryInstalado = true;
        FrmConGen frm(ts.ctx());
        Abrir(frm);
        Control<QCheckBox>(frm, "chINSTEMPPerMer")->setChecked(true);
        Control<QCheckBox>(frm, "chINSTEMPVDE")->setChecked(true);
        QLineEdit* rin = Control<QLineEdit>(frm, "txtRIN");
        rin->setFocus();
        QTest::keyClick(rin, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!frm.isVisible());
        QCOMPARE(IniFile::Leer("SbtFuncionCargaPor", "GENERAL", ts.ctx().rutaIni()),
                 QStringLiteral("S"));
        QCOMPARE(ts.settings().GetSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer"),
                 QStringLiteral("N"));
        QCOMPARE(ts.settings().GetSetting("SupplyLink", "CONFIG", "opVDE"), QStringLiteral("S"));
        QVERIFY(!ts.ctx().config().INSTMP_RestarPerMer);
    }
    void ubicacionesF6YCierre() {
        TestStores ts(Motor::SQLite);
        AppContext& ctx = ts.ctx();
        const QString ini = ctx.rutaIni();
        EscribirArchivo(ini,
                        "[BASESERVER]\nINTERNO=/srv/k/\nPERSONAL=/srv/p\nNCM=\nESTADO=/srv/e/\n"
                        "[BASELOCAL]\nUSUARIO=/home/u\n");
        ctx.config().rutaSystablas = QStringLiteral("/viejo/systablas.mdb");
        ctx.settings().SaveSetting("KORVEN", "BASES", "NCM", "sin tocar");
        // The folder browser answers one folder, then is cancelled.
        QStringList respuestas{"/datos/ncm", ""};
        QList<QVariantMap> pedidos;
        ctx.pantallas().Registrar(FrmBase::PantallaCarpeta(),
                                  [&](AppContext&, const QVariantMap& a) {
                                      pedidos << a;
                                      return QVariant(respuestas.takeFirst());
                                  });
        FrmBase frm(ctx);
        frm.show();
        QApplication::setActiveWindow(&frm);
        auto txt = [&frm](const char* n) { return Control<QLineEdit>(frm, n); };
        QCOMPARE((QStringList{txt("txtInterno")->text(), txt("TxtPersonal")->text(),
                              txt("TxtNcm")->text(), txt("TxtEstado")->text(),
                              txt("TxtUsuario")->text()}),
                 (QStringList{"/srv/k/", "/srv/p", "", "/srv/e/", "/home/u"}));
        // Enter moves on to the nomenclator's field; F6 there asks for a folder.
        txt("txtInterno")->setFocus();
        QTest::keyClick(txt("txtInterno"), Qt::Key_Return);
        QTest::keyClick(txt("TxtPersonal"), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), txt("TxtNcm"));
        QTest::keyClick(txt("TxtNcm"), Qt::Key_F6);
        QCOMPARE(txt("TxtNcm")->text(), QStringLiteral("/datos/ncm"));
        QCOMPARE(pedidos[0].value("inicial").toString(), QString());
        // A cancelled browser leaves the field as it was.
        QTest::keyClick(txt("TxtNcm"), Qt::Key_F6);
        QCOMPARE(txt("TxtNcm")->text(), QStringLiteral("/datos/ncm"));
        QCOMPARE(pedidos[1].value("inicial").toString(), QStringLiteral("/datos/ncm"));
        // Esc closes: every field is normalised and written to its key.
        QTest::keyClick(txt("TxtNcm"), Qt::Key_Escape);
        QVERIFY(!frm.isVisible());
        QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ini), QStringLiteral("/srv/k/"));
        QCOMPARE(IniFile::Leer("PERSONAL", "BASESERVER", ini), DirectorioNormal("/srv/p"));
        QCOMPARE(IniFile::Leer("NCM", "BASESERVER", ini), DirectorioNormal("/datos/ncm"));
        QCOMPARE(IniFile::Leer("USUARIO", "BASELOCAL", ini), DirectorioNormal("/home/u"));
        QCOMPARE(IniFile::Leer("USUARIO", "BASESERVER", ini), QString());
        // The paths in memory follow, but systablas and the settings store wait for the next start.
        const Configuracion& c = ctx.config();
        QCOMPARE((QStringList{c.rutaInternos, c.rutaNcm, c.rutaEstado, c.rutaSystablas}),
                 (QStringList{"/srv/k/internos.mdb", DirectorioNormal("/datos/ncm") + "ncm.mdb",
                              "/srv/e/estados.mdb", "/viejo/systablas.mdb"}));
        QCOMPARE(ctx.settings().GetSetting("KORVEN", "BASES", "NCM"), QStringLiteral("sin tocar"));
    }
    void integridad_data() { korven::test::FilasDeMotores(); }
    // The nomenclator's date is the latest of its table; without the table the start ends.
    void integridad() {
        MOTOR_O_SALTAR();
        Bases ts(static_cast<Motor>(motor));
        AppContext& ctx = ts.ctx();
        ctx.config().FechaNomenclador = QStringLiteral("x");
        QVERIFY(Integridad(ctx));
        QCOMPARE(ctx.config().FechaNomenclador, QString());
        ts.Fechas({QDate(2024, 3, 1), QDate(2025, 6, 15), QDate(2023, 12, 31)});
        QVERIFY(Integridad(ctx));
        QCOMPARE(ctx.config().FechaNomenclador, QStringLiteral("domingo, 15 de junio de 2025"));
        QCOMPARE(Etiqueta(MenuP(ctx, {}), "lbNomenclador"),
                 QStringLiteral("domingo, 15 de junio de 2025"));
        QVERIFY(ts.dialogos().mensajes().isEmpty());

        ts.conexion("NCM").Ejecutar("drop table control_fecha");
        QVERIFY(!Integridad(ctx));
        QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
        ts.dialogos().Limpiar();
        Arranque a(ts);
        QVERIFY(!Main(a.p));
        QCOMPARE(a.fines, QList<int>{1});
        QCOMPARE(ts.dialogos().mensajes().size(), 1);
        QVERIFY2(ts.dialogos().mensajes().at(0).contains("\n\nSeccion Integridad (10)::"),
                 qPrintable(ts.dialogos().mensajes().at(0)));
    }
    void mainMuestraElMenuEnElMarco() {
        TestStores ts(Motor::SQLite);
        schema::CrearOActualizar(ts.stores());
        Arranque a(ts);
        // The screen of the register is another library's: a stand-in answers here.
        QStringList abiertas;
        a.p.registros.push_back([&abiertas](AppContext& ctx) {
            ctx.pantallas().Registrar("FrmInternoNew",
                                      [&abiertas](AppContext&, const QVariantMap&) {
                                          abiertas << "FrmInternoNew";
                                          return QVariant();
                                      });
        });
        std::unique_ptr<Sesion> s = Main(a.p);
        QVERIFY(s && a.fines.isEmpty());
        FrmPrincipal* f = s->principal();
        QCOMPARE(f->area()->subWindowList().at(0)->widget(), s->menu());
        // The configuration was read.
        QCOMPARE(s->ctx().config().rutaNcm, DirectorioNormal(ts.directorio() + "db") + "ncm.mdb");
        QCOMPARE(s->ctx().MascaraFecha, QStringLiteral("yyyyMMdd"));
        // The screens of this library and the components of ours are there.
        for (const char* n :
             {"FrmConfig", "FrmBase", "FrmConGen", "FrmMostrarDatos", "ClassFile.Carpeta"})
            QVERIFY2(s->ctx().pantallas().Registrada(n), n);
        QVERIFY(s->ctx().componentes().Instalado("ClientBook.Listing"));
        QVERIFY(!s->ctx().componentes().Instalado("DeclarationOutput.Main"));
        // Opciones > Internos opens the register.
        f->findChild<QAction*>("mnuinternos")->trigger();
        QCOMPARE(abiertas, QStringList{"FrmInternoNew"});
        // Esc in the menu ends the process without the frame's close path, which ends it too.
        QTest::keyClick(s->menu()->GridFormularios(), Qt::Key_Escape);
        QTest::keyClick(s->menu()->GrdMenuMain(), Qt::Key_Escape);
        QCOMPARE(a.fines, (QList<int>{0, 0}));
        QVERIFY(f->isVisible());
        f->close();
        QCOMPARE(a.fines, (QList<int>{0, 0, 0}));
        QVERIFY(ts.dialogos().registro().isEmpty());
    }
    // Any error of the start routine: one critical message with its section, and the end.
    void errorDelArranque() {
        TestStores ts(Motor::SQLite);
        schema::CrearOActualizar(ts.stores());
        Arranque a(ts);
        a.p.registros.push_back([](AppContext&) {
            throw KorvenError(91, QStringLiteral("Variable de objeto no establecida"),
                              QStringLiteral("Registro"));
        });
        QVERIFY(!Main(a.p));
        QCOMPARE(a.fines, QList<int>{1});
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"91 / Variable de objeto no establecida\n\n"
                             "seccion [KORVEN.Global.Main::Registro] 20"});
        QCOMPARE(ts.dialogos().registro().at(0).icono, Dialogos::Icono::Critico);
    }
    // A row of the main menu or of the forms grid, chosen with the arrows and Enter: the screen it
    // opens, what its component is told, or the message when neither is installed.
    void filasDelMenu_data() {
        QTest::addColumn<bool>("formularios"); // the forms grid; otherwise the main menu
        QTest::addColumn<int>("fila");
        QTest::addColumn<QString>("instalado"); // the screen or component registered, if any
        QTest::addColumn<QStringList>("hecho"); // the screen opened, or what the component was told
        QTest::addColumn<QString>("mensaje");
        const QString no = QStringLiteral("429 / El componente %1 no está instalado.");
        const QString predibios = " - seccion[LlamarFormulario.MenuNew.KORVEN]::DepotManifest.Expo";
        const QString transferencia = QStringLiteral("OperationTransfer.Main");
        QTest::newRow("Operaciones sin pantalla")
            << false << 0 << "" << QStringList{}
            << "429 / La pantalla FrmInternoNew no está instalada. - "
               "seccion[GrdMenuMain_DblClick.MenuP.KORVEN]::FrmInternoNew";
        QTest::newRow("Clientes sin componente")
            << false << 1 << "" << QStringList{}
            << "[KORVEN.MenuP.Clientes]:: Nro: " + no.arg("ClientBook.Listing");
        QTest::newRow("Nomenclador")
            << false << 2 << "FrmConsultas" << QStringList{"FrmConsultas"} << "";
        QTest::newRow("Exportar") << false << 5 << transferencia
                                  << QStringList{"DAMSource", "GuardarInternos"} << "";
        QTest::newRow("Importar") << false << 6 << transferencia
                                  << QStringList{"DAMSource", "LeerInternos"} << "";
        QTest::newRow("Hoja de Valoración")
            << true << 0 << "" << QStringList{}
            << "seccion HojadeValorEXPO en Formulario MenuP :: " + no.arg("ValueSheet.Main");
        QTest::newRow("Multinota") << true << 1 << "" << QStringList{}
                                   << "KORVEN.MenuP.Multinota::" + no.arg("NoteForm.Main");
        QTest::newRow("PREDIBIOS - Expo")
            << true << 8 << "" << QStringList{} << no.arg("DepotManifest.Expo") + predibios;
        // The first missing member is reported with the row's section, and the menu goes on.
        QTest::newRow("PREDIBIOS - Expo sin miembros")
            << true << 8 << "DepotManifest.Expo" << QStringList{}
            << "438 / El objeto no admite esta propiedad o método: BasedeDatos" + predibios;
    }
    void filasDelMenu() {
        QFETCH(bool, formularios);
        QFETCH(int, fila);
        QFETCH(QString, instalado);
        QFETCH(QStringList, hecho);
        QFETCH(QString, mensaje);
        Bases ts;
        QStringList notas;
        if (instalado.startsWith(QLatin1String("Frm")))
            ts.ctx().pantallas().Registrar(instalado, [&](AppContext&, const QVariantMap&) {
                notas << instalado;
                return QVariant();
            });
        else if (!instalado.isEmpty())
            ts.Registrar(instalado, &notas);
        MenuP m(ts.ctx(), {});
        Elegir(formularios ? m.GridFormularios() : m.GrdMenuMain(), fila);
        QCOMPARE(notas, hecho);
        QCOMPARE(ts.dialogos().mensajes(),
                 mensaje.isEmpty() ? QStringList{} : QStringList{mensaje});
    }
    void bases_data() { korven::test::FilasDeMotores(); }
    // The main menu names the stores in use, so that a clerk sees which database is behind it.
    void bases() {
        MOTOR_O_SALTAR();
        Bases t(static_cast<Motor>(motor));
        QString esperado;
        if (static_cast<Motor>(motor) == Motor::SQLite) {
            esperado = QDir::toNativeSeparators(t.directorio() + QStringLiteral("db/korven.db"));
        } else {
            const QHash<QString, QString> p = t.stores().Parametros(QStringLiteral("INTERNOS"));
            esperado = QStringLiteral("PostgreSQL socket %1 (puerto %2), base %3")
                           .arg(p.value("HOST"), p.value("PORT"), p.value("DATABASE"));
        }
        QCOMPARE(Etiqueta(MenuP(t.ctx(), {}), "lbBases"), esperado);
    }
    void preguntaYTexto() {
        DesktopDialogs d;
        // Enter takes the default answer: yes.
        AlAbrirse([](QWidget* w) { QTest::keyClick(w, Qt::Key_Return); });
        QVERIFY(d.Pregunta("¿Borrar?", "KORVEN", Dialogos::Icono::Pregunta));
        // The text asked for is cut at its maximum length.
        AlAbrirse([](QWidget* w) {
            QLineEdit* txt = w->findChild<QLineEdit*>();
            QCOMPARE(txt->text(), QStringLiteral("A1"));
            txt->selectAll();
            QTest::keyClicks(txt, "1234567");
            QTest::keyClick(txt, Qt::Key_Return);
        });
        QCOMPARE(d.PedirTexto("Numero de interno:", "KORVEN", 5, "A1").value_or("-"),
                 QStringLiteral("12345"));
        AlAbrirse([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
        QVERIFY(!d.PedirTexto("Numero de interno:", "KORVEN", 0, {}).has_value());
    }
    void enterYFlechasMuevenElFoco() {
        TestStores ts(Motor::SQLite);
        Formulario f(ts.ctx());
        QTest::keyClicks(f.txt[0], "12");
        QTest::keyClick(f.txt[0], Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), f.txt[1]);
        // Enter is eaten: the text did not change.
        QCOMPARE(f.txt[0]->text(), QStringLiteral("12"));
        QTest::keyClick(f.txt[1], Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(QApplication::focusWidget(), f.txt[2]);
        QTest::keyClick(f.txt[2], Qt::Key_Up);
        QTest::keyClick(f.txt[1], Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget(), f.txt[0]);
        QTest::keyClick(f.txt[0], Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget(), f.txt[1]);
        // The text is selected whole when the field takes the focus.
        f.txt[2]->setText(QStringLiteral("abc"));
        QTest::keyClick(f.txt[1], Qt::Key_Down);
        QCOMPARE(f.txt[2]->selectedText(), QStringLiteral("abc"));
    }
    void teclaDecimalDelTeclado_data() {
        QTest::addColumn<QString>("separador");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<bool>("teclado");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("punto del teclado, coma") << "," << int(Qt::Key_Period) << true << "12,5";
        QTest::newRow("punto del teclado, punto") << "." << int(Qt::Key_Period) << true << "12.5";
        QTest::newRow("coma del teclado, punto") << "." << int(Qt::Key_Comma) << true << "12.5";
        QTest::newRow("punto común, coma") << "," << int(Qt::Key_Period) << false << "12.5";
        QTest::newRow("coma común, punto") << "." << int(Qt::Key_Comma) << false << "12,5";
    }
    void teclaDecimalDelTeclado() {
        QFETCH(QString, separador);
        QFETCH(int, tecla);
        QFETCH(bool, teclado);
        QFETCH(QString, esperado);
        SeparadorDecimalScope sep(separador);
        TestStores ts(Motor::SQLite);
        Formulario f(ts.ctx());
        const Qt::KeyboardModifiers m = teclado ? Qt::KeypadModifier : Qt::NoModifier;
        for (int k : {int(Qt::Key_1), int(Qt::Key_2), tecla})
            QTest::keyClick(f.txt[0], static_cast<Qt::Key>(k), m);
        QTest::keyClick(f.txt[0], Qt::Key_5);
        QCOMPARE(f.txt[0]->text(), esperado);
    }
};

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestOperaciones, TestPantallas, TestEscritorio>(argc, argv);
}

#include "test_escritorio.moc"
