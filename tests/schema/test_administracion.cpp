#include "platform/ValueRules.h"
#include "schema/Administracion.h"
#include "schema/Esquema.h"
#include "schema/Migrador.h"
#include "support/TestStores.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

using namespace korven;
using namespace korven::schema;
using korven::test::TestStores;

namespace {

QString Datos() {
    return QDir(qEnvironmentVariable("KORVEN_SOURCE_DIR")).filePath(QStringLiteral("data"));
}

// The configuration of the test's stores as a file korven-admin can read: the one TestStores
// wrote for PostgreSQL, or one for SQLite files in its db folder.
QString Config(TestStores& t) {
    const QString ruta = t.directorio() + QStringLiteral("DataAccessConfig.ini");
    if (!QFile::exists(ruta)) {
        QFile f(ruta);
        if (!f.open(QIODevice::WriteOnly))
            qFatal("No se puede escribir %s", qPrintable(ruta));
        f.write("[DEFAULT]\nDRIVER=QSQLITE\nFOLDER=db\n");
    }
    return ruta;
}

void Escribir(const QString& ruta, const QByteArray& contenido) {
    QFile f(ruta);
    if (!f.open(QIODevice::WriteOnly))
        qFatal("No se puede escribir %s", qPrintable(ruta));
    f.write(contenido);
}

// Runs one command in process; the lines written to the output and to the errors.
struct Corrida {
    int codigo = -1;
    QStringList salida, errores;
};
Corrida Correr(TestStores& t, QStringList args) {
    Config(t);
    QString out, err;
    QTextStream so(&out), se(&err);
    Administracion a(so, se, t.directorio());
    if (!args.contains(QStringLiteral("--datos")))
        args << QStringLiteral("--datos") << Datos();
    Corrida c;
    c.codigo = a.Ejecutar(args);
    so.flush();
    se.flush();
    c.salida = out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    c.errores = err.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return c;
}

QStringList LineasEsquema(const QString& como) {
    QStringList r;
    for (const QString& e : StoreDirectory::Entidades())
        r << QStringLiteral("%1: esquema versión 4, %2.").arg(e, como);
    return r;
}

int Contar(Conexion& c, const QString& sql) {
    return static_cast<int>(EsNumero(c.Escalar(sql)));
}

} // namespace

class TestAdministracion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // "crear --demo" on empty stores, then again: the second run finds everything there.
    void crear_data() { test::FilasDeMotores(); }
    void crear() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Corrida c = Correr(t, {QStringLiteral("crear"), QStringLiteral("--demo")});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.errores, QStringList{});
        QCOMPARE(c.salida.mid(0, 8), LineasEsquema(QStringLiteral("creada")));
        QVERIFY(c.salida.at(8).startsWith(QStringLiteral("Datos de referencia: 46 tablas "
                                                         "cargadas, ")));
        QCOMPARE(c.salida.at(9),
                 QStringLiteral("Operaciones de demostración cargadas: DEMO-IC04-001, "
                                "DEMO-EC01-001, DEMO-IT01-001, DEMO-IC05-001."));
        QCOMPARE(Contar(t.conexion(QStringLiteral("INTERNOS")),
                        QStringLiteral("select count(*) from caratula")),
                 4);

        c = Correr(t, {QStringLiteral("crear"), QStringLiteral("--demo")});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida,
                 LineasEsquema(QStringLiteral("al día"))
                     << QStringLiteral("Datos de referencia: nada que cargar (las tablas ya "
                                       "tenían datos).")
                     << QStringLiteral("Las operaciones de demostración ya estaban cargadas."));
    }

    // "actualizar" brings stores of version 1 up; "estado" tells before and after.
    void actualizar_data() { test::FilasDeMotores(); }
    void actualizar() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Migrador m(t.stores());
        for (const QString& e : StoreDirectory::Entidades())
            m.CrearEnVersion(e, 1);
        Corrida c = Correr(t, {QStringLiteral("estado")});
        QCOMPARE(c.codigo, Administracion::Fallo);
        QVERIFY(c.salida.first().startsWith(QStringLiteral("INTERNOS: versión 1 (debe "
                                                           "actualizarse) - ")));
        c = Correr(t, {QStringLiteral("actualizar")});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida, LineasEsquema(QStringLiteral("actualizada desde la versión 1")));
        c = Correr(t, {QStringLiteral("estado")});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QVERIFY(c.salida.first().startsWith(QStringLiteral("INTERNOS: versión 4 (al día) - ")));
    }

    // An import with rejected rows writes nothing and says why; a good one writes and counts.
    void importarYListar_data() { test::FilasDeMotores(); }
    void importarYListar() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        QCOMPARE(Correr(t, {QStringLiteral("crear"), QStringLiteral("--sin-datos")}).codigo,
                 Administracion::Correcto);
        const QString malo = t.directorio() + QStringLiteral("malo.csv");
        Escribir(malo, "001,002,003,010,012\n8471.30.12,100,B,NOTEBOOK,07\n"
                       "8471.30.12,100,B,OTRA VEZ,07\n8471.30,100,C,CORTA,07\n");
        Corrida c = Correr(t, {QStringLiteral("importar"), QStringLiteral("ncm"), malo});
        QCOMPARE(c.codigo, Administracion::Fallo);
        QCOMPARE(
            c.salida,
            (QStringList{QStringLiteral("Tabla ncm: 3 filas leídas, 1 válidas, 2 rechazadas."),
                         QStringLiteral("  línea 3: Clave repetida en el archivo (ya está en la "
                                        "línea 2)."),
                         QStringLiteral("  línea 4: La columna 001 debe tener la forma NNNN.NN.NN: "
                                        "'8471.30'")}));
        QCOMPARE(c.errores, QStringList{QStringLiteral("No se importó ninguna fila: corrija el "
                                                       "archivo o use --parcial.")});
        Conexion& n = t.conexion(QStringLiteral("NCM"));
        QCOMPARE(Contar(n, QStringLiteral("select count(*) from ncm")), 0);

        c = Correr(t, {QStringLiteral("importar"), QStringLiteral("ncm"), malo,
                       QStringLiteral("--parcial")});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida.last(), QStringLiteral("Filas importadas en ncm: 1."));
        QCOMPARE(Contar(n, QStringLiteral("select count(*) from ncm")), 1);

        const QString vendedores = t.directorio() + QStringLiteral("vendedores.csv");
        Escribir(vendedores, "codigo;nombre;domicilio\nV2;O'HARA;SAN MARTIN 1\nV1;PEREZ;\n");
        c = Correr(t, {QStringLiteral("importar"), QStringLiteral("VENDEDOR"), vendedores});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida, (QStringList{QStringLiteral("Tabla vendedor: 2 filas leídas, 2 "
                                                       "válidas, 0 rechazadas."),
                                        QStringLiteral("Filas importadas en vendedor: 2.")}));
        c = Correr(t, {QStringLiteral("listar"), QStringLiteral("vendedor")});
        QCOMPARE(c.codigo, Administracion::Correcto);
        QCOMPARE(c.salida, (QStringList{QStringLiteral("codigo | nombre | domicilio"),
                                        QStringLiteral("-------+--------+-------------"),
                                        QStringLiteral("V1     | PEREZ  |"),
                                        QStringLiteral("V2     | O'HARA | SAN MARTIN 1"),
                                        QStringLiteral("(2 filas)")}));
        c = Correr(t, {QStringLiteral("listar"), QStringLiteral("ncm"),
                       QStringLiteral("--columnas"), QStringLiteral("001,002,003,012"),
                       QStringLiteral("--limite"), QStringLiteral("5")});
        QCOMPARE(c.salida, (QStringList{QStringLiteral("001        | 002 | 003 | 012"),
                                        QStringLiteral("-----------+-----+-----+----"),
                                        QStringLiteral("8471.30.12 | 100 | B   | 07"),
                                        QStringLiteral("(1 filas)")}));
    }

    // Command lines not understood exit with 2, failures with 1, each with its message.
    void errores_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codigo");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("orden desconocida")
            << QStringList{"borrar"} << 2 << "Orden desconocida: borrar";
        QTest::newRow("opcion desconocida")
            << QStringList{"crear", "--todo"} << 2 << "Opción desconocida: --todo";
        QTest::newRow("falta el archivo") << QStringList{"importar", "ncm"} << 2
                                          << "Uso: korven-admin importar <tabla> <archivo.csv> "
                                             "[--parcial] [--reemplazar]";
        QTest::newRow("falta la tabla") << QStringList{"listar"} << 2
                                        << "Uso: korven-admin listar <tabla> [--columnas a,b] "
                                           "[--limite N] [--entidad E]";
        QTest::newRow("limite no numerico") << QStringList{"listar", "sta", "--limite", "diez"} << 2
                                            << "El límite debe ser un número entero: diez";
        QTest::newRow("opcion sin valor") << QStringList{"listar", "sta", "--columnas"} << 2
                                          << "Falta el valor de la opción --columnas.";
        QTest::newRow("configuracion inexistente")
            << QStringList{"crear", "--config", "/no/existe/DataAccessConfig.ini"} << 1
            << "Error 53: No existe el archivo de configuración: /no/existe/DataAccessConfig.ini";
        QTest::newRow("tabla ajena") << QStringList{"listar", "proveedores"} << 1
                                     << "La tabla proveedores no existe en el esquema; indique "
                                        "su base con --entidad.";
        QTest::newRow("demo sin esquema") << QStringList{"demo"} << 1
                                          << "La base de INTERNOS no está al día: ejecute "
                                             "primero \"korven-admin crear\".";
        QTest::newRow("importar sin esquema") << QStringList{"importar", "sta", "x.csv"} << 1
                                              << "La base de INTERNOS no está al día: ejecute "
                                                 "primero \"korven-admin crear\".";
        QTest::newRow("listar sin esquema")
            << QStringList{"listar", "sta"} << 1 << "La base de INTERNOS no tiene la tabla sta.";
    }
    void errores() {
        QFETCH(QStringList, args);
        QFETCH(int, codigo);
        QFETCH(QString, mensaje);
        TestStores t(Motor::SQLite);
        const Corrida c = Correr(t, args);
        QCOMPARE(c.codigo, codigo);
        QCOMPARE(c.errores.value(0), mensaje);
        QCOMPARE(Contar(t.conexion(QStringLiteral("INTERNOS")),
                        QStringLiteral("select count(*) from sqlite_master where name = "
                                       "'caratula'")),
                 0);
    }

    void ayuda() {
        TestStores t(Motor::SQLite);
        Corrida c = Correr(t, {QStringLiteral("ayuda")});
        QCOMPARE(c.codigo, 0);
        QCOMPARE(c.salida.first(), QStringLiteral("Uso: korven-admin <orden> [opciones]"));
        for (const char* o : {"crear", "actualizar", "demo", "importar", "listar", "estado"})
            QVERIFY2(c.salida.contains(QRegularExpression(QStringLiteral("  %1 .*").arg(o))), o);
        c = Correr(t, {});
        QCOMPARE(c.codigo, 2);
    }

    // The built program itself: exit codes and output through a process.
    void programa_data() { test::FilasDeMotores(); }
    void programa() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        const QString config = Config(t);
        auto correr = [&](const QStringList& args, QString* salida, QString* errores) {
            QProcess p;
            p.start(QStringLiteral(KORVEN_ADMIN), QStringList(args)
                                                      << QStringLiteral("--config") << config);
            if (!p.waitForFinished(120000))
                return -1;
            *salida = QString::fromUtf8(p.readAllStandardOutput());
            *errores = QString::fromUtf8(p.readAllStandardError());
            return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
        };
        QString out, err;
        QCOMPARE(correr({QStringLiteral("crear"), QStringLiteral("--demo")}, &out, &err), 0);
        QVERIFY2(out.contains(QStringLiteral("Operaciones de demostración cargadas: "
                                             "DEMO-IC04-001, DEMO-EC01-001, DEMO-IT01-001, "
                                             "DEMO-IC05-001.")),
                 qPrintable(out + err));
        QCOMPARE(correr({QStringLiteral("listar"), QStringLiteral("caratula"),
                         QStringLiteral("--columnas"), QStringLiteral("interno,factura7")},
                        &out, &err),
                 0);
        QVERIFY(out.contains(QStringLiteral("DEMO-IT01-001 | METALURGICA D'ANGELO HNOS S.R.L.")));
        QVERIFY(out.endsWith(QStringLiteral("(4 filas)\n")));
        const QString malo = t.directorio() + QStringLiteral("sufidos.csv");
        Escribir(malo, "sim,sufijo,detalle\n84  .  .  .   ,QQQ,MAL\n");
        QCOMPARE(correr({QStringLiteral("importar"), QStringLiteral("sufidos"), malo}, &out, &err),
                 1);
        QVERIFY(out.contains(QStringLiteral("línea 2: La columna sufijo debe tener 2 o 4 "
                                            "caracteres: 'QQQ'")));
        QCOMPARE(err, QStringLiteral("No se importó ninguna fila: corrija el archivo o use "
                                     "--parcial.\n"));
        QCOMPARE(correr({QStringLiteral("otra")}, &out, &err), 2);
    }
};

QTEST_GUILESS_MAIN(TestAdministracion)
#include "test_administracion.moc"
