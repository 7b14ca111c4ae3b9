// The workstation lock of an Operation, on SQLite and on PostgreSQL; the race of two processes
// for the same Operation is in test_bloqueo_carrera.

#include "FixtureOperaciones.h"
#include "foundation/BloqueoInterno.h"
#include "platform/AppContext.h"
#include "platform/KorvenError.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

std::unique_ptr<TestStores> Stores(int motor) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    return ts;
}

void Bloquear(TestStores& ts, const QString& interno, const QString& maquina, const QDate& fecha) {
    Insertar(ts, "INTERNOS", "interno",
             {{"interno", interno}, {"maquina", maquina}, {"usuario", ""}, {"fecha", fecha}});
}

} // namespace

class TestBloqueo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void libreSeToma_data() { FilasDeMotores(); }
    void libreSeToma();
    void mismaPcReemplaza_data() { FilasDeMotores(); }
    void mismaPcReemplaza();
    void otraPcNoAbre_data() { FilasDeMotores(); }
    void otraPcNoAbre();
    void segundoIntentoDeLaOtraPc_data() { FilasDeMotores(); }
    void segundoIntentoDeLaOtraPc();
    void laClaveRechazaUnSegundoCerrojo_data() { FilasDeMotores(); }
    void laClaveRechazaUnSegundoCerrojo();
};

void TestBloqueo::libreSeToma() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    BloqueoInterno b(ts->stores(), ts->dialogos(), "PC-A");
    QVERIFY(b.Tomar("7'1"));
    QVERIFY(ts->dialogos().registro().isEmpty());
    Recordset rs =
        ts->conexion("INTERNOS").Abrir("select interno,maquina,usuario,fecha from interno");
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(EsNull(rs.Fields("interno")), QStringLiteral("7'1"));
    QCOMPARE(EsNull(rs.Fields("maquina")), QStringLiteral("PC-A"));
    QCOMPARE(EsNull(rs.Fields("usuario")), QString());
    QVERIFY(!rs.Fields("usuario").isNull());
    QCOMPARE(b.Leer("7'1")->fecha, QDate::currentDate());
    b.Liberar("7'1");
    QVERIFY(!b.Leer("7'1"));
}

// A lock left by this workstation (a crash): told with the critical icon, replaced, and the
// Operation opens.
void TestBloqueo::mismaPcReemplaza() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Bloquear(*ts, "100", " PC-A ", QDate(2024, 3, 15));
    BloqueoInterno b(ts->stores(), ts->dialogos(), "PC-A");
    QVERIFY(b.Tomar("100"));
    const auto& r = ts->dialogos().registro();
    QCOMPARE(r.size(), 1);
    QCOMPARE(
        r.at(0).texto,
        QStringLiteral("El estado de INTERNO indica que el mismo esta abierto.\n\nSe procedera "
                       "a cambiar el estado.\n\nUltimo Acceso: viernes, 15 de marzo de 2024"));
    QCOMPARE(r.at(0).icono, Dialogos::Icono::Critico);
    const auto c = b.Leer("100");
    QVERIFY(c);
    QCOMPARE(c->maquina, QStringLiteral("PC-A"));
    QCOMPARE(c->fecha, QDate::currentDate());
}

void TestBloqueo::otraPcNoAbre() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Bloquear(*ts, "100", "PC-B", QDate(2024, 3, 15));
    BloqueoInterno b(ts->stores(), ts->dialogos(), "PC-A");
    QVERIFY(!b.Tomar("100"));
    const auto& r = ts->dialogos().registro();
    QCOMPARE(r.size(), 1);
    QCOMPARE(r.at(0).texto, QStringLiteral("Este interno esta abierto por la PC: PC-B\n\nAccedido "
                                           "el viernes, 15 de marzo de 2024"));
    QCOMPARE(r.at(0).icono, Dialogos::Icono::Informacion);
    const auto c = b.Leer("100");
    QCOMPARE(c->maquina, QStringLiteral("PC-B"));
    QCOMPARE(c->fecha, QDate(2024, 3, 15));
}

// Two workstations on one set of stores: the second is told who has the Operation until the
// first gives it back.
void TestBloqueo::segundoIntentoDeLaOtraPc() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    BloqueoInterno a(ts->stores(), ts->dialogos(), "PC-A");
    BloqueoInterno b(ts->stores(), ts->dialogos(), "PC-B");
    QVERIFY(a.Tomar("100"));
    QVERIFY(!b.Tomar("100"));
    QVERIFY(ts->dialogos().mensajes().at(0).startsWith(
        QStringLiteral("Este interno esta abierto por la PC: PC-A\n\nAccedido el ")));
    a.Liberar("100");
    QVERIFY(b.Tomar("100"));
    QCOMPARE(b.Leer("100")->maquina, QStringLiteral("PC-B"));
    QCOMPARE(ts->dialogos().mensajes().size(), 1);
}

// The store itself refuses a second lock of the same Operation: this is what makes taking the
// lock safe between workstations.
void TestBloqueo::laClaveRechazaUnSegundoCerrojo() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor);
    Bloquear(*ts, "100", "PC-A", QDate::currentDate());
    QVERIFY_THROWS_EXCEPTION(KorvenError, Bloquear(*ts, "100", "PC-B", QDate::currentDate()));
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from interno")), 1.0);
}

QTEST_GUILESS_MAIN(TestBloqueo)
#include "test_bloqueo.moc"
