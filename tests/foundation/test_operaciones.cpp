// The number of an Operation is one whatever its case; a deletion respects the workstation lock;
// the register's number filter ignores case; the lock keeps its time; the list shows what the
// hub changed.

#include "FixtureOperaciones.h"
#include "components/CopiaInterno.h"
#include "components/RegistrarComponentesPropios.h"
#include "foundation/BloqueoInterno.h"
#include "foundation/BuscarInternos.h"
#include "foundation/EliminarInterno.h"
#include "foundation/FrmDetalleInterno.h"
#include "foundation/FrmInternoNew.h"
#include "foundation/Integridad.h"
#include "foundation/NuevoInterno.h"
#include "foundation/RegistrarPantallasOperaciones.h"
#include "platform/KorvenError.h"
#include "schema/LectorEsquema.h"
#include "schema/Migrador.h"
#include "support/Pantallas.h"

#include <QLineEdit>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

QStringList Internos(const QList<FilaInterno>& filas) {
    QStringList r;
    for (const FilaInterno& f : filas)
        r << f.interno;
    return r;
}

QMap<QString, int> Todo(TestStores& ts, const QString& interno) {
    QMap<QString, int> r;
    for (const TablaOperacion& t : TablasDeOperacion())
        r.insert(t.tabla, Contar(ts, t.entidad, t.tabla, interno));
    return r;
}

} // namespace

class TestOperaciones : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void numeroSinMayusculas_data();
    void numeroSinMayusculas();
    void eliminarAbiertaEnOtraPc_data() { FilasDeMotores(); }
    void eliminarAbiertaEnOtraPc();
    void filtroDeNumero_data();
    void filtroDeNumero();
    void bloqueoConHora_data() { FilasDeMotores(); }
    void bloqueoConHora();
    void migracionDeCaratula_data() { FilasDeMotores(); }
    void migracionDeCaratula();
    void listaRefrescadaAlCerrarElHub();
};

void TestOperaciones::numeroSinMayusculas_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<bool>("copia");
    for (int m : {0, 1})
        for (bool c : {false, true})
            QTest::addRow("%s %s", m ? "postgresql" : "sqlite", c ? "copia" : "nuevo") << m << c;
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
    QVERIFY(ts->settings().Claves("KORVEN", "ic-2026/001").isEmpty());
    // The store itself refuses it.
    QVERIFY_THROWS_EXCEPTION(
        KorvenError,
        ts->conexion("INTERNOS").Ejecutar("insert into caratula (interno) values ('Ic-2026/001')"));
}

// An Operation open on another workstation is not deleted: the operator is told which, as when
// opening, and nothing goes. Its own workstation's leftover lock does not stop it.
void TestOperaciones::eliminarAbiertaEnOtraPc() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    OperacionConTodo(*ts, "100"); // open on PC-OTRA since 16/03/2024
    const QMap<QString, int> antes = Todo(*ts, "100");
    ts->dialogos().ResponderSiempre(true);
    QVERIFY(!EliminarInterno(ts->ctx(), "PC-MIA").Ejecutar("100"));
    QCOMPARE(ts->dialogos().mensajes(),
             QStringList{"Este interno esta abierto por la PC: PC-OTRA\n\nAccedido el sábado, 16 "
                         "de marzo de 2024"});
    QCOMPARE(ts->dialogos().registro().last().icono, Dialogos::Icono::Informacion);
    QCOMPARE(Todo(*ts, "100"), antes);

    ts->dialogos().Limpiar();
    QVERIFY(EliminarInterno(ts->ctx(), "PC-OTRA ").Ejecutar("100"));
    QCOMPARE(ts->dialogos().mensajes(), QStringList{});
    QCOMPARE(Contar(*ts, "INTERNOS", "caratula", "100"), 0);
    QCOMPARE(Contar(*ts, "INTERNOS", "interno", "100"), 0);
    QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "100"), 0);
}

void TestOperaciones::filtroDeNumero_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("prefijo");
    QTest::addColumn<QStringList>("esperados");
    for (int m : {0, 1}) {
        const char* n = m ? "postgresql" : "sqlite";
        QTest::addRow("%s demo", n) << m << "demo" << QStringList{"DEMO-1", "demo-2", "DEMOZ"};
        QTest::addRow("%s DEMO-", n) << m << "DEMO-" << QStringList{"DEMO-1", "demo-2"};
        QTest::addRow("%s demoz", n) << m << "demoz" << QStringList{"DEMOZ"};
        QTest::addRow("%s de", n) << m << "de" << QStringList{"DEMO-1", "demo-2", "DEMOZ", "DEN"};
        QTest::addRow("%s con %%", n) << m << "D%" << QStringList{};
        QTest::addRow("%s z", n) << m << "z" << QStringList{"z{", "Z~9"};
    }
}

// The beginning of the number, whatever its case, listed without regard to case on both
// engines.
void TestOperaciones::filtroDeNumero() {
    MOTOR_O_SALTAR();
    QFETCH(QString, prefijo);
    QFETCH(QStringList, esperados);
    auto ts = StoresConMaestros(motor);
    for (const char* n : {"demo-2", "DEMO-1", "DEMOZ", "DEN", "DF", "D", "CZ", "Z~9", "z{", "["})
        Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta(n));
    FiltroInternos f;
    f.interno = prefijo;
    QCOMPARE(Internos(BuscarInternos(ts->stores(), ts->ctx().config()).Buscar(f)), esperados);
}

// The lock keeps the moment it was taken, not only the day.
void TestOperaciones::bloqueoConHora() {
    MOTOR_O_SALTAR();
    auto ts = StoresConMaestros(motor);
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("100"));
    QVERIFY(BloqueoInterno(ts->stores(), ts->dialogos(), "PC-A").Tomar("100"));
    const QVariant v = Valor(*ts, "select fecha from interno where interno = '100'");
    const QDateTime momento =
        v.typeId() == QMetaType::QDateTime
            ? v.toDateTime()
            : QDateTime::fromString(v.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY2(momento.isValid(), qPrintable(v.toString()));
    QVERIFY2(qAbs(momento.secsTo(QDateTime::currentDateTime())) < 300, qPrintable(v.toString()));
}

// A store of the previous version keeps its headers and gets the key of the number.
void TestOperaciones::migracionDeCaratula() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    schema::Migrador m(ts.stores());
    for (const QString& e : StoreDirectory::Entidades())
        m.CrearEnVersion(e, 3);
    Insertar(ts, "INTERNOS", "caratula", CaratulaCompleta("A-1"));
    Insertar(ts, "INTERNOS", "caratula", CaratulaCompleta("B-1"));
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

// Closing the hub reads the row of its Operation again.
void TestOperaciones::listaRefrescadaAlCerrarElHub() {
    auto ts = StoresConMaestros(0);
    RegistrarPantallasOperaciones(ts->ctx().pantallas());
    RegistrarComponentesPropios(ts->ctx().componentes());
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("100"));
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("200"));
    FrmInternoNew f(ts->ctx(), {{"maquina", "PC-A"}});
    f.show();
    f.BuscarInternos();
    AlAbrir<FrmDetalleInterno> hub([&](FrmDetalleInterno* h) {
        ts->conexion("INTERNOS")
            .Ejecutar(
                "update caratula set factura7 = 'Cliente Nuevo', idsubreg = 'EC01' where interno = "
                "'100'");
        QTest::keyClick(h, Qt::Key_Escape);
    });
    f.AbrirInterno("100");
    QCOMPARE(hub.veces(), 1);
    QStringList vistas;
    for (QTreeWidgetItemIterator i(f.findChild<QTreeWidget*>("lstInterno")); *i; ++i)
        if (!(*i)->text(1).isEmpty())
            vistas << (*i)->text(1) + "|" + (*i)->text(2) + "|" + (*i)->text(3) + "|" +
                          (*i)->text(5);
    QCOMPARE(vistas, (QStringList{"100|EC01|Exportacion|Cliente Nuevo",
                                  "200|IC04|Importacion|Cliente Uno"}));
    QCOMPARE(f.InternoSeleccionado(), QStringLiteral("100"));
}

QTEST_MAIN(TestOperaciones)
#include "test_operaciones.moc"
