#include "ApoyoEsquema.h"
#include "schema/Esquema.h"
#include "schema/Migrador.h"

#include <QCoreApplication>
#include <QProcess>
#include <optional>

using namespace korven;
using namespace korven::schema;
using namespace korven::test;

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

// The configuration of the test's stores as a file korven-admin can read: the one TestStores wrote
// for PostgreSQL, or one for SQLite files in its db folder.
QString Config(TestStores& t) {
    const QString ruta = t.directorio() + QStringLiteral("DataAccessConfig.ini");
    if (!QFile::exists(ruta))
        Escribir(ruta, "[DEFAULT]\nDRIVER=QSQLITE\nFOLDER=db\n");
    return ruta;
}

// One command run in process on the test's stores, with the data folder of the sources.
Corrida Correr(TestStores& t, QStringList args) {
    Config(t);
    if (args.value(0) == QLatin1String("crear"))
        args << QStringLiteral("--datos") << Datos();
    return Admin(t.directorio(), args);
}

QStringList LineasEsquema(const QString& como) {
    QStringList r;
    for (const QString& e : StoreDirectory::Entidades())
        r << QStringLiteral("%1: esquema versión 4, %2.").arg(e, como);
    return r;
}

} // namespace

// The administration tool korven-admin.
class TestAdministracion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // "estado" and "actualizar" on stores of version 1; then "crear --demo" loads the data, and a
    // second run finds everything there.
    void crear_data() { FilasDeMotores(); }
    void crear() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        for (const QString& e : StoreDirectory::Entidades())
            Migrador(t.stores()).CrearEnVersion(e, 1);
        Corrida c = Correr(t, {"estado"});
        QCOMPARE(c.codigo, Administracion::Fallo);
        QVERIFY(c.salida.value(0).startsWith(QStringLiteral("INTERNOS: versión 1 (debe "
                                                            "actualizarse) - ")));
        c = Correr(t, {"actualizar"});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida, LineasEsquema(QStringLiteral("actualizada desde la versión 1")));

        c = Correr(t, {"crear", "--demo"});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida.mid(0, 8), LineasEsquema(QStringLiteral("al día")));
        QVERIFY(c.salida.value(8).startsWith(QStringLiteral("Datos de referencia: 46 tablas "
                                                            "cargadas, ")));
        QCOMPARE(c.salida.mid(9) + c.errores,
                 QStringList{"Operaciones de demostración cargadas: DEMO-IC04-001, "
                             "DEMO-EC01-001, DEMO-IT01-001, DEMO-IC05-001."});
        c = Correr(t, {"crear", "--demo"});
        QCOMPARE(c.salida.mid(8),
                 (QStringList{"Datos de referencia: nada que cargar (las tablas ya "
                              "tenían datos).",
                              "Las operaciones de demostración ya estaban cargadas."}));
    }

    // An import says what it read and rejected; with a rejected row it writes nothing unless
    // partial. A file that is not UTF-8 is read as Latin-1, and said so. "listar" shows the table
    // afterwards, as wide as its values.
    void importar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QStringList>("importar"); // the table, and the options after the file
        QTest::addColumn<QByteArray>("archivo");
        QTest::addColumn<int>("codigo");
        QTest::addColumn<QStringList>("salida"); // then the error, if any
        QTest::addColumn<QStringList>("listar");
        QTest::addColumn<QStringList>("listado");
        const QByteArray ncm("001,002,003,010,012\n8471.30.12,100,B,NOTEBOOK,07\n"
                             "8471.30.12,100,B,OTRA VEZ,07\n8471.30,100,C,CORTA,07\n");
        // clang-format off
        const QStringList informe{"Tabla ncm: 3 filas leídas, 1 válidas, 2 rechazadas.",
                                  "  línea 3: Clave repetida en el archivo (ya está en la línea 2).",
                                  "  línea 4: La columna 001 debe tener la forma NNNN.NN.NN: '8471.30'"};
        const std::tuple<const char*, QStringList, QByteArray, int, QStringList, QStringList, QStringList> casos[] = {
            {"rechazada", {"ncm"}, ncm, 1, informe + QStringList{"No se importó ninguna fila: corrija el archivo o use --parcial."},
             {"ncm", "--columnas", "001,002,003,012"}, {"001 | 002 | 003 | 012", "----+-----+-----+----", "(0 filas)"}},
            {"parcial", {"ncm", "--parcial"}, ncm, 0, informe + QStringList{"Filas importadas en ncm: 1."},
             {"ncm", "--columnas", "001,002,003,012"}, {"001        | 002 | 003 | 012", "-----------+-----+-----+----", "8471.30.12 | 100 | B   | 07", "(1 filas)"}},
            {"punto y coma", {"VENDEDOR"}, "codigo;nombre;domicilio\nV2;O'HARA;SAN MARTIN 1\nV1;PEREZ;\nV3;GOMEZ;\n", 0,
             {"Tabla vendedor: 3 filas leídas, 3 válidas, 0 rechazadas.", "Filas importadas en vendedor: 3."},
             {"vendedor", "--limite", "2"}, {"codigo | nombre | domicilio", "-------+--------+-------------", "V1     | PEREZ  |", "V2     | O'HARA | SAN MARTIN 1", "(2 filas)"}},
            {"latin-1", {"mottmp"}, "id,descripcion,dias,impexpo\nA1,Dep\xF3sito,2.5,I\n", 0,
             {"El archivo %1 no está en UTF-8: se leyó como Latin-1.", "Tabla mottmp: 1 filas leídas, 1 válidas, 0 rechazadas.", "Filas importadas en mottmp: 1."},
             {"mottmp", "--columnas", "id,descripcion,dias,impexpo"}, {"id | descripcion | dias | impexpo", "---+-------------+------+--------", "A1 | Depósito    | 2.5  | I", "(1 filas)"}},
        };
        // clang-format on
        for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)})
            for (const auto& [nombre, importar, archivo, codigo, salida, listar, listado] : casos)
                QTest::addRow("%s: %s", m ? "postgresql" : "sqlite", nombre)
                    << m << importar << archivo << codigo << salida << listar << listado;
    }
    void importar() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, importar);
        QFETCH(QByteArray, archivo);
        QFETCH(int, codigo);
        QFETCH(QStringList, salida);
        QFETCH(QStringList, listar);
        QFETCH(QStringList, listado);
        TestStores t(static_cast<Motor>(motor));
        QCOMPARE(Correr(t, {"crear", "--sin-datos"}).codigo, 0);
        const QString csv = t.directorio() + QStringLiteral("archivo.csv");
        Escribir(csv, archivo);
        importar.insert(1, csv);
        const Corrida c = Correr(t, QStringList{QStringLiteral("importar")} + importar);
        QCOMPARE(c.codigo, codigo);
        salida.first() = salida.first().arg(QDir::toNativeSeparators(csv));
        QCOMPARE(c.salida + c.errores, salida);
        QCOMPARE(Correr(t, QStringList{QStringLiteral("listar")} + listar).salida, listado);
    }

    // Command lines not understood exit with 2, failures with 1, each with its message; none of
    // them makes a table.
    void errores_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codigo");
        QTest::addColumn<QString>("mensaje");
        // clang-format off
        QTest::newRow("sin orden") << QStringList{} << 2 << "Uso: korven-admin <orden> [opciones]";
        QTest::newRow("orden desconocida") << QStringList{"borrar"} << 2 << "Orden desconocida: borrar";
        QTest::newRow("opcion desconocida") << QStringList{"crear", "--todo"} << 2 << "Opción desconocida: --todo";
        QTest::newRow("falta el archivo") << QStringList{"importar", "ncm"} << 2 << "Uso: korven-admin importar <tabla> <archivo.csv> [--parcial] [--reemplazar]";
        QTest::newRow("falta la tabla") << QStringList{"listar"} << 2 << "Uso: korven-admin listar <tabla> [--columnas a,b] [--limite N] [--entidad E]";
        QTest::newRow("limite no numerico") << QStringList{"listar", "sta", "--limite", "diez"} << 2 << "El límite debe ser un número entero: diez";
        QTest::newRow("opcion sin valor") << QStringList{"listar", "sta", "--columnas"} << 2 << "Falta el valor de la opción --columnas.";
        QTest::newRow("configuracion inexistente") << QStringList{"crear", "--config", "/no/existe/DataAccessConfig.ini"} << 1 << "Error 53: No existe el archivo de configuración: /no/existe/DataAccessConfig.ini";
        QTest::newRow("tabla ajena") << QStringList{"listar", "proveedores"} << 1 << "La tabla proveedores no existe en el esquema; indique su base con --entidad.";
        QTest::newRow("demo sin esquema") << QStringList{"demo"} << 1 << "La base de INTERNOS no está al día: ejecute primero \"korven-admin crear\".";
        QTest::newRow("importar sin esquema") << QStringList{"importar", "sta", "x.csv"} << 1 << "La base de INTERNOS no está al día: ejecute primero \"korven-admin crear\".";
        QTest::newRow("listar sin esquema") << QStringList{"listar", "sta"} << 1 << "La base de INTERNOS no tiene la tabla sta.";
        // clang-format on
    }
    void errores() {
        QFETCH(QStringList, args);
        QFETCH(int, codigo);
        QFETCH(QString, mensaje);
        TestStores t(Motor::SQLite);
        const Corrida c = Correr(t, args);
        QCOMPARE(c.codigo, codigo);
        QCOMPARE(c.errores.value(0), mensaje);
        QCOMPARE(Contar(t.conexion(kInternos), "sqlite_master where name = 'caratula'"), 0);
    }

    // The built program itself: its exit codes and its output.
    void programa() {
        TestStores t(Motor::SQLite);
        QProcess p;
        p.start(QStringLiteral(KORVEN_ADMIN), {"importar", "sta", "x.csv", "--config", Config(t)});
        QVERIFY(p.waitForFinished(120000));
        QCOMPARE(p.exitCode(), 1);
        QCOMPARE(p.readAllStandardError(), QByteArray("La base de INTERNOS no está al día: ejecute "
                                                      "primero \"korven-admin crear\".\n"));
        p.start(QStringLiteral(KORVEN_ADMIN), {"otra"});
        QVERIFY(p.waitForFinished(120000));
        QCOMPARE(p.exitCode(), 2);
    }

    // Stores of the former layout, one file per store: the program refuses them naming the command,
    // and the command brings every table into korven.db, all or nothing.
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
        for (const char* e : {"INTERNOS", "ESTADO"})
            for (const char* sql : {"create table propia (id integer primary key, texto text)",
                                    "insert into propia values (7, 'D''Angelo')"})
                if (e == kInternos || conflicto)
                    t.conexion(e).Ejecutar(sql);
        t.stores().CloseAllDataConnection();
        const QString db = t.directorio() + QStringLiteral("db/");
        const QStringList antes = StoreDirectory::ArchivosFormatoAnterior(db);
        QCOMPARE(antes.size(), 8);
        QFile::remove(t.directorio() + QStringLiteral("DataAccessConfig.ini"));
        t.AgregarConfiguracion({});
        ERROR_CON_TEXTO(t.conexion(kInternos),
                        QStringLiteral("La carpeta %1 tiene las bases en el formato anterior, un "
                                       "archivo por base (internos.db, systablas.db, personal.db, "
                                       "ncm.db, usuario.db, estados.db, catalogos.db, "
                                       "insumos.db), y no tiene korven.db. Únalas en un solo "
                                       "archivo con: korven-admin unificar")
                            .arg(QDir::toNativeSeparators(t.directorio() + QStringLiteral("db"))));

        const Corrida c = Admin(t.directorio(), {"unificar"});
        QCOMPARE(StoreDirectory::ArchivosFormatoAnterior(db), antes); // the old files stay
        if (conflicto) {
            QCOMPARE(c.codigo, Administracion::Fallo);
            QCOMPARE(c.errores, QStringList{"Error 3051: No se pudo copiar estados.db, tabla "
                                            "propia: UNIQUE constraint failed: propia.id"});
            QCOMPARE(QDir(db).entryList({"korven*"}), QStringList{});
            return;
        }
        QCOMPARE(c.codigo, Administracion::Correcto);
        QVERIFY2(c.salida.value(0).startsWith(
                     QStringLiteral(
                         "Bases unificadas en %1korven.db: internos.db, systablas.db, personal.db, "
                         "ncm.db, usuario.db, estados.db, catalogos.db, insumos.db (")
                         .arg(QDir::toNativeSeparators(db))),
                 qPrintable(c.salida.join('\n')));
        for (const QString& e : StoreDirectory::Entidades())
            QCOMPARE(VersionDe(t.stores(), e), VersionActual());
        QCOMPARE(Filas(t.conexion(kInternos), "select id, texto from propia"),
                 QStringList{"7|D'Angelo"});
    }

    // korven-admin on an office server: a missing database is made when the role may; a server that
    // cannot be reached is named.
    void servidor_data() {
        QTest::addColumn<bool>("alcanzable");
        QTest::newRow("base que falta") << true;
        QTest::newRow("servidor inalcanzable") << false;
    }
    void servidor() {
        QFETCH(bool, alcanzable);
        std::optional<TestStores> servidor;
        QHash<QString, QString> p{{"HOST", "127.0.0.1"}, {"PORT", "1"}, {"USER", "korven"}};
        if (alcanzable)
            p = servidor.emplace(Motor::PostgreSQL).stores().Parametros(kInternos);
        const QString base =
            QStringLiteral("korven_nueva_%1").arg(QCoreApplication::applicationPid());
        TestStores t(Motor::SQLite);
        t.AgregarConfiguracion(
            QStringLiteral("[DEFAULT]\nDRIVER=QPSQL\nHOST=%1\nPORT=%2\nDATABASE=%3\nUSER=%4\n")
                .arg(p.value("HOST"), p.value("PORT"), base, p.value("USER")));
        const Corrida c = Admin(t.directorio(), {"crear", "--sin-datos"});
        if (alcanzable) {
            servidor->conexion(kInternos).Ejecutar(
                QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(base));
            QCOMPARE(c.salida.mid(0, 2) + c.errores,
                     (QStringList{QStringLiteral("Base de datos creada: PostgreSQL socket %1 "
                                                 "(puerto %2), base %3.")
                                      .arg(p.value("HOST"), p.value("PORT"), base),
                                  LineasEsquema(QStringLiteral("creada")).first()}));
            return;
        }
        QCOMPARE(c.codigo, Administracion::Fallo);
        QVERIFY2(c.errores.value(0).startsWith(
                     QStringLiteral("Error 3044: No se puede conectar con el servidor de la base "
                                    "de datos de INTERNOS (PostgreSQL 127.0.0.1:1, base %1, "
                                    "usuario korven). Verifique que el servidor esté en marcha y "
                                    "que DataAccessConfig.ini lo indique bien. Detalle: ")
                         .arg(base)),
                 qPrintable(c.errores.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestAdministracion)
#include "test_administracion.moc"
