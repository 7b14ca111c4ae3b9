// The assembly as a whole: the same figures on both engines for the demo Operations and a
// generated one; the headless command; the hub's button.

#include "FixtureArmado.h"
#include "assembly/AdminArmado.h"
#include "assembly/ArmadoItems.h"
#include "assembly/FrmArmarItem.h"
#include "assembly/PantallasArmado.h"
#include "foundation/FrmDetalleInterno.h"
#include "liquidation/PantallasLiquidacion.h"
#include "schema/Catalogo.h"
#include "schema/OperacionesDemo.h"
#include "support/OperacionArmado.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QPushButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QStringList kTablas = {"caratula", "subitems", "groupsubitems", "idrel",    "sysflag",
                             "item",     "itemliq",  "itemventaja",   "iteminfo", "liqcero"};

QString Valor(const QVariant& v) {
    if (v.isNull())
        return QStringLiteral("null");
    const int t = v.metaType().id();
    if (t == QMetaType::Double || t == QMetaType::Int || t == QMetaType::LongLong) {
        QString s = QString::number(v.toDouble(), 'f', 6);
        while (s.endsWith(QLatin1Char('0')))
            s.chop(1);
        if (s.endsWith(QLatin1Char('.')))
            s.chop(1);
        return s == QLatin1String("-0") ? QStringLiteral("0") : s;
    }
    return v.toString();
}

// Every row of the Operation in the tables of an assembly, in key order, as text: one line per
// row, the table first, the number of the Operation left out.
QStringList Volcado(TestStores& ts, const QString& interno) {
    Conexion& c = ts.conexion(QStringLiteral("INTERNOS"));
    QStringList r;
    for (const QString& tabla : kTablas) {
        QStringList cols = c.Columnas(tabla);
        if (cols.isEmpty()) // a table a test took away
            continue;
        cols.removeAll(QStringLiteral("interno"));
        cols.sort();
        const schema::DefTabla* def = schema::Catalogo::Tabla(tabla);
        QStringList orden;
        for (const QString& k : def->clave)
            if (k != QLatin1String("interno"))
                orden << k + (c.motor() == Motor::PostgreSQL &&
                                      def->Columna(k)->tipo == schema::TipoColumna::Texto
                                  ? QStringLiteral(" COLLATE \"C\"")
                                  : QString());
        const Recordset rs = c.Abrir(
            QStringLiteral("select %1 from %2 where interno = ?%3")
                .arg(cols.join(QLatin1Char(',')), tabla,
                     orden.isEmpty() ? QString()
                                     : QStringLiteral(" order by ") + orden.join(QLatin1Char(','))),
            {interno});
        for (int i = 0; i < rs.RecordCount(); ++i) {
            QStringList f{tabla};
            for (const QVariant& v : rs.Fila(i))
                f << Valor(v);
            r << f.join(QLatin1Char('|'));
        }
    }
    return r;
}

std::unique_ptr<TestStores> ConDemo(Motor motor) {
    auto ts = std::make_unique<TestStores>(motor);
    PrepararArmado(*ts);
    schema::OperacionesDemo(ts->stores(), schema::CarpetaDatos(ts->directorio())).Cargar();
    ts->dialogos().ResponderSiempre(false);
    return ts;
}

QString Armar(TestStores& ts, const QString& interno) {
    ts.ctx().ArmadoResultado = QStringLiteral("SI");
    ProgresoArmado sinVentana;
    ArmadoItems(ts.ctx(), interno, sinVentana).Ejecutar();
    return ts.ctx().ArmadoResultado;
}

} // namespace

class TestArmado : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // The demo Operations and 2,000 generated lines give the same rows on both engines.
    void motoresIguales() {
        if (!TestStores::Disponible(Motor::PostgreSQL))
            QSKIP("PostgreSQL no disponible");
        QStringList resultado[2];
        for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
            auto ts = ConDemo(m);
            OperacionParaArmar(ts->stores(), QStringLiteral("GEN-2000"), 2000);
            QStringList internos =
                schema::OperacionesDemo(ts->stores(), schema::CarpetaDatos(ts->directorio()))
                    .Internos();
            internos << QStringLiteral("GEN-2000");
            QStringList& r = resultado[m == Motor::PostgreSQL];
            for (const QString& interno : internos) {
                r << interno + QStringLiteral(": ") + Armar(*ts, interno);
                r << ts->dialogos().todo();
                ts->dialogos().Limpiar();
                r << Volcado(*ts, interno);
            }
        }
        QVERIFY(resultado[0].size() > 2000 * 3);
        if (qEnvironmentVariableIsSet("KORVEN_DIFERENCIAS"))
            for (int i = 0, n = 0; i < std::min(resultado[0].size(), resultado[1].size()) && n < 60;
                 ++i)
                if (resultado[0].at(i) != resultado[1].at(i)) {
                    qInfo("%s\n%s", qPrintable(resultado[0].at(i)), qPrintable(resultado[1].at(i)));
                    ++n;
                }
        for (int i = 0; i < std::min(resultado[0].size(), resultado[1].size()); ++i)
            QCOMPARE(resultado[1].at(i), resultado[0].at(i));
        QCOMPARE(resultado[1].size(), resultado[0].size());
    }

    // How a run ends: a line the nomenclator refuses stops it at once; NOCALCLIQU makes no
    // liquidation rows but keeps the client's advantages; an error of the store rolls the whole
    // run back and is reported with the stage it reached.
    void finDelArmado_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("caso");
        for (const char* caso : {"sufijo", "nocalcliqu", "error"}) {
            QTest::addRow("sqlite %s", caso) << int(Motor::SQLite) << QString::fromLatin1(caso);
            QTest::addRow("postgresql %s", caso)
                << int(Motor::PostgreSQL) << QString::fromLatin1(caso);
        }
    }
    void finDelArmado() {
        MOTOR_O_SALTAR();
        QFETCH(QString, caso);
        auto ts = ConDemo(static_cast<Motor>(motor));
        const QString op = QStringLiteral("DEMO-IC04-001");
        Conexion& c = ts->conexion(QStringLiteral("INTERNOS"));
        if (caso == QLatin1String("sufijo"))
            c.Ejecutar(QStringLiteral("update subitems set sufijos = 'ZZ(1)-' where interno = ? "
                                      "and id = 2"),
                       {op});
        if (caso == QLatin1String("error"))
            c.Ejecutar(QStringLiteral("drop table iteminfo"));
        ts->ctx().config().NOCALCLIQU = caso == QLatin1String("nocalcliqu");
        const QStringList antes = Volcado(*ts, op);
        const QString resultado = Armar(*ts, op);
        const QStringList mensajes = ts->dialogos().mensajes();
        if (caso == QLatin1String("sufijo")) {
            QCOMPARE(resultado, QStringLiteral("No"));
            QCOMPARE(mensajes.size(), 1);
            QVERIFY2(mensajes.first().endsWith(
                         QStringLiteral("6403.99.90.100T     120.00      18.50    2220.00 - "
                                        "ZZ(1)-\nError: SUFIJO INVÁLIDOS\n\n")),
                     qPrintable(mensajes.first()));
            // Only the repairs of the goods lines stay.
            auto sinLineas = [](QStringList v) {
                v.removeIf(
                    [](const QString& f) { return f.startsWith(QLatin1String("subitems|")); });
                return v;
            };
            QCOMPARE(sinLineas(Volcado(*ts, op)), sinLineas(antes));
        } else if (caso == QLatin1String("nocalcliqu")) {
            QCOMPARE(resultado, QStringLiteral("SI"));
            QCOMPARE(Filas(*ts, "select count(*) from itemliq where interno = ?", {op}),
                     QStringList{"0"});
            // The client 30708123451 has the rule of positions 8471 under IC04.
            QCOMPARE(
                Filas(*ts, "select iditem, idventaja from itemventaja where interno = ?", {op}),
                QStringList{"1|ACEMERCOSUR"});
        } else {
            QCOMPARE(resultado, QStringLiteral("NO"));
            QCOMPARE(mensajes.size(), 1);
            QVERIFY2(mensajes.first().contains(QStringLiteral(" [ArmarItem.Generar]:7 : ")),
                     qPrintable(mensajes.first()));
            QCOMPARE(ts->dialogos().registro().first().icono, Dialogos::Icono::Critico);
            QCOMPARE(Volcado(*ts, op), antes);
        }
    }

    // The command without a window prints what the run shows and takes the answers given by
    // the beginning of each question; without an answer a question is answered "No". Under
    // IDA4 the items get 500 (and 041 with fines), new goods 601 and 611 besides.
    void ordenArmar_data() {
        QTest::addColumn<QStringList>("respuestas");
        QTest::addColumn<QString>("pregunta");
        QTest::addColumn<QStringList>("conceptos");
        QTest::newRow("multas") << QStringList{"--respuesta", "Desea calcular=S"}
                                << QStringLiteral("Sí") << QStringList{"041", "500", "601", "611"};
        QTest::newRow("sin respuesta")
            << QStringList{} << QStringLiteral("No") << QStringList{"500", "601", "611"};
    }
    void ordenArmar() {
        QFETCH(QStringList, respuestas);
        QFETCH(QString, pregunta);
        QFETCH(QStringList, conceptos);
        auto ts = ConDemo(Motor::SQLite);
        ts->AgregarConfiguracion(QString());
        const QString op = QStringLiteral("DEMO-IC04-001");
        ts->conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set idsubreg = 'IDA4' where interno = ?"),
                      {op});
        ts->stores().CloseAllDataConnection();
        QString salida, errores;
        QTextStream out(&salida), err(&errores);
        AdminArmado admin(out, err, ts->directorio(), ts->directorio() + QStringLiteral("aj"));
        QCOMPARE(admin.Ejecutar(
                     QStringList{op, "--config", ts->stores().parametersPath(), "--orden", "1"} +
                     respuestas),
                 AdminArmado::Correcto);
        out.flush();
        QCOMPARE(
            salida,
            QStringLiteral("[KORVEN] Desea calcular multas? -> %1\nArmado: SI\n").arg(pregunta));
        QCOMPARE(errores, QString());
        QCOMPARE(Filas(*ts,
                       "select distinct idconceptos from itemliq where interno = ? and iditem = 1 "
                       "order by idconceptos",
                       {op}),
                 conceptos);
        QCOMPARE(AdminArmado(out, err, ts->directorio(), QString())
                     .Ejecutar({op, "--orden", "3", "--config", ts->stores().parametersPath()}),
                 AdminArmado::Uso);
    }

    // The hub assembles only an Operation marked to assemble, and opens item 0 after it.
    void botonDelHub() {
        auto ts = ConDemo(Motor::SQLite);
        RegistrarPantallasArmado(ts->ctx().pantallas());
        RegistrarPantallasLiquidacion(ts->ctx().pantallas());
        const QString interno = QStringLiteral("DEMO-IC04-001");
        QStringList vistas;
        ts->conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set factura8 = 'S' where interno = ?"),
                      {interno});
        FrmDetalleInterno f(ts->ctx(), {{QStringLiteral("interno"), interno}});
        Mostrar(f);
        for (const QString& factura8 : {QStringLiteral("S"), QStringLiteral("N")}) {
            // A mark the run would wipe: the items are built again only when assembled.
            ts->conexion(QStringLiteral("INTERNOS"))
                .Ejecutar(QStringLiteral("update item set itmodif = 'X' where interno = ?"),
                          {interno});
            AlAbrirse(QStringLiteral("FrmVerItem"), [&](QWidget* w) {
                vistas << factura8 + QLatin1Char(':') + w->windowTitle();
                if (factura8 == QLatin1String("S"))
                    GuardarPantallazo(QStringLiteral("FrmVerItem"), w);
                Tecla(Qt::Key_Escape);
            });
            Control<QPushButton>(f, "cmdITEM")->click();
            const int marcados = Filas(*ts,
                                       QStringLiteral("select id from item where interno = ? "
                                                      "and itmodif = 'X'"),
                                       {interno})
                                     .size();
            QCOMPARE(marcados == 0, factura8 == QLatin1String("S"));
        }
        QCOMPARE(vistas, QStringList({"S:Item's - Interno: DEMO-IC04-001",
                                      "N:Item's - Interno: DEMO-IC04-001"}));
        // The progress window, half-way, as a picture.
        FrmArmarItem armado(ts->ctx());
        for (int etapa = 1; etapa <= 6; ++etapa)
            armado.Etapa(etapa, etapa < 6);
        armado.Item(QStringLiteral("Creando liquidación Item: 3"));
        GuardarPantallazo(QStringLiteral("FrmArmarItem"), &armado);
    }
};

QTEST_MAIN(TestArmado)
#include "test_armado.moc"
