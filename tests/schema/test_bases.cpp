#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Administracion.h"
#include "schema/Esquema.h"
#include "schema/Migrador.h"
#include "support/TestStores.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace korven;
using namespace korven::schema;
using korven::test::TestStores;

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kNcm = QStringLiteral("NCM");

int Contar(Conexion& c, const QString& tabla) {
    return static_cast<int>(EsNumero(c.Escalar(QStringLiteral("select count(*) from ") + tabla)));
}

QByteArray Huella(const QString& archivo) {
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// Runs korven-admin in process; its exit code, output and errors.
int Admin(const QString& directorio, const QStringList& args, QString* salida, QString* errores) {
    QTextStream so(salida), se(errores);
    Administracion a(so, se, directorio);
    const int r = a.Ejecutar(args);
    so.flush();
    se.flush();
    return r;
}

} // namespace

// Where the stores live, and what one transaction may span.
class TestBases : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Every store in one database: an action over several stores is one transaction. A
    // configuration that splits them is refused before anything is written.
    void transaccionUnica_data() { test::FilasDeMotores(); }
    void transaccionUnica() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        const bool sqlite = static_cast<Motor>(motor) == Motor::SQLite;
        t.conexion(kInternos).Ejecutar(QStringLiteral("create table uno (x integer)"));
        t.conexion(kNcm).Ejecutar(QStringLiteral("create table dos (x integer)"));
        try {
            Transaccion tx(t.stores(), {kInternos, kNcm});
            t.conexion(kInternos).Ejecutar(QStringLiteral("insert into uno values (1)"));
            t.conexion(kNcm).Ejecutar(QStringLiteral("insert into dos values (1)"));
            t.conexion(kNcm).Ejecutar(QStringLiteral("insert into falta values (1)"));
            QFAIL("la sentencia debía fallar");
        } catch (const KorvenError&) {
        }
        QCOMPARE(Contar(t.conexion(kInternos), QStringLiteral("uno")), 0);
        QCOMPARE(Contar(t.conexion(kNcm), QStringLiteral("dos")), 0);
        if (sqlite)
            QCOMPARE(QDir(t.directorio() + QStringLiteral("db")).entryList({"*.db"}),
                     QStringList{QStringLiteral("korven.db")});

        t.AgregarConfiguracion(sqlite ? QStringLiteral("[NCM]\nFILE=db/aparte.db\n")
                                      : QStringLiteral("[NCM]\nSCHEMA=aparte\n"));
        try {
            Transaccion tx(t.stores(), {kInternos, QStringLiteral("systablas"), kNcm});
            QFAIL("la transacción sobre dos conexiones debía rechazarse");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), KorvenError::TransaccionDividida);
            QCOMPARE(e.descripcion(),
                     QStringLiteral("Esta acción escribe en INTERNOS y en NCM, que "
                                    "DataAccessConfig.ini ubica en bases de datos distintas; no "
                                    "puede hacerse en una sola transacción. Ubique todas las bases "
                                    "en un mismo archivo o en una misma base de datos."));
        }
        QVERIFY(!t.conexion(kInternos).enTransaccion());
        {
            Transaccion tx(t.stores(), {kInternos});
            t.conexion(kInternos).Ejecutar(QStringLiteral("insert into uno values (2)"));
        }
        QCOMPARE(Contar(t.conexion(kInternos), QStringLiteral("uno")), 1);
    }

    // Stores of the former layout, one file per store: the program refuses them naming the
    // command, and the command brings every table into korven.db, all or nothing.
    void unificar_data() {
        QTest::addColumn<bool>("conflicto");
        QTest::newRow("completo") << false;
        QTest::newRow("tabla repetida con la misma clave") << true;
    }
    void unificar() {
        QFETCH(bool, conflicto);
        TestStores t(Motor::SQLite);
        QString ini;
        for (const QString& e : StoreDirectory::Entidades())
            ini += QStringLiteral("[%1]\nFILE=db/%2.db\n").arg(e, StoreDirectory::NombreArchivo(e));
        t.AgregarConfiguracion(ini);
        CrearOActualizar(t.stores());
        t.conexion(kInternos).Ejecutar(QStringLiteral("create table propia (id integer primary "
                                                      "key, texto text)"));
        t.conexion(kInternos).Ejecutar(
            QStringLiteral("insert into propia values (7, 'D''Angelo')"));
        if (conflicto) {
            Conexion& estado = t.conexion(QStringLiteral("ESTADO"));
            estado.Ejecutar(QStringLiteral("create table propia (id integer primary key, texto "
                                           "text)"));
            estado.Ejecutar(QStringLiteral("insert into propia values (7, 'otro')"));
        }
        t.stores().CloseAllDataConnection();
        const QString db = t.directorio() + QStringLiteral("db/");
        QHash<QString, QByteArray> antes;
        for (const QString& a : StoreDirectory::ArchivosFormatoAnterior(db))
            antes.insert(a, Huella(db + a));
        QCOMPARE(antes.size(), 8);
        QFile::remove(t.directorio() + QStringLiteral("DataAccessConfig.ini"));
        t.AgregarConfiguracion({});

        try {
            t.conexion(kInternos);
            QFAIL("las bases del formato anterior debían rechazarse");
        } catch (const KorvenError& e) {
            QCOMPARE(e.numero(), KorvenError::FormatoAnterior);
            QCOMPARE(e.descripcion(),
                     QStringLiteral("La carpeta %1 tiene las bases en el formato anterior, un "
                                    "archivo por base (internos.db, systablas.db, personal.db, "
                                    "ncm.db, usuario.db, estados.db, catalogos.db, insumos.db), y "
                                    "no tiene korven.db. Únalas en un solo archivo con: "
                                    "korven-admin unificar")
                         .arg(QDir::toNativeSeparators(t.directorio() + QStringLiteral("db"))));
        }

        QString salida, errores;
        const int r = Admin(t.directorio(), {QStringLiteral("unificar")}, &salida, &errores);
        for (auto i = antes.cbegin(); i != antes.cend(); ++i)
            QCOMPARE(Huella(db + i.key()), i.value());
        if (conflicto) {
            QCOMPARE(r, Administracion::Fallo);
            QCOMPARE(errores, QStringLiteral("Error 3051: No se pudo copiar estados.db, tabla "
                                             "propia: UNIQUE constraint failed: propia.id\n"));
            QCOMPARE(QDir(db).entryList({"korven*"}), QStringList{});
            return;
        }
        QCOMPARE(r, Administracion::Correcto);
        QVERIFY2(salida.startsWith(
                     QStringLiteral(
                         "Bases unificadas en %1korven.db: internos.db, systablas.db, personal.db, "
                         "ncm.db, usuario.db, estados.db, catalogos.db, insumos.db (")
                         .arg(QDir::toNativeSeparators(db))),
                 qPrintable(salida));
        Migrador m(t.stores());
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(m.Version(e), Migrador::VersionActual);
        Recordset rs = t.conexion(kInternos).Abrir(QStringLiteral("select * from propia"));
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(EsNumero(rs.Fields(QStringLiteral("id"))), 7.0);
        QCOMPARE(rs.Fields(QStringLiteral("texto")).toString(), QStringLiteral("D'Angelo"));
        // A second run finds korven.db there and leaves it.
        salida.clear();
        errores.clear();
        QCOMPARE(Admin(t.directorio(), {QStringLiteral("unificar")}, &salida, &errores),
                 Administracion::Fallo);
        QCOMPARE(errores, QStringLiteral("Error 3051: Ya existe %1korven.db: no se unificó nada.\n")
                              .arg(QDir::toNativeSeparators(db)));
    }
};

QTEST_GUILESS_MAIN(TestBases)
#include "test_bases.moc"
