#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/DatosReferencia.h"
#include "schema/Esquema.h"
#include "schema/LectorCsv.h"
#include "schema/OperacionesDemo.h"
#include "support/TestStores.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace korven;
using namespace korven::schema;
using korven::test::TestStores;

namespace {

QString Datos() {
    return QDir(qEnvironmentVariable("KORVEN_SOURCE_DIR")).filePath(QStringLiteral("data"));
}

// A set of stores with the schema and the reference data.
void Preparar(TestStores& t) {
    CrearOActualizar(t.stores());
    CargarDatosReferencia(t.stores(), Datos());
}

int Contar(Conexion& c, const QString& sql) {
    return static_cast<int>(EsNumero(c.Escalar(sql)));
}

// The four texts of the suffix levels that apply to a position.
QString ListaSim(const QString& p) {
    return QStringLiteral("('%1  .  .  .   ','%2.  .  .   ','%3.  .   ','%4')")
        .arg(p.left(2), p.left(4), p.left(7), p.left(14));
}

// The codes of a suffix string, in its order: "AA(X)-EM01-" gives AA, EM.
QStringList CodigosDe(const QString& sufijos) {
    QStringList r;
    if (sufijos == QLatin1String("SIN SUFIJOS"))
        return r;
    QString resto = sufijos;
    while (!resto.isEmpty()) {
        const QString codigo = resto.left(2);
        r << codigo;
        int fin;
        if (resto.at(2) == QLatin1Char('('))
            fin = static_cast<int>(resto.indexOf(QStringLiteral(")-"))) + 2;
        else
            fin = 5;
        resto = resto.mid(fin);
    }
    return r;
}

} // namespace

class TestDatos : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStores> compartidas_[2];

private Q_SLOTS:
    void cleanupTestCase() {
        compartidas_[0].reset();
        compartidas_[1].reset();
    }

    // Every file of the data folder is loaded whole into its table.
    void cargaCompleta_data() { test::FilasDeMotores(); }
    void cargaCompleta() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        const auto cargadas = DatosReferencia(t.stores(), Datos()).Cargar();
        int archivos = 0;
        for (const QString& e : StoreDirectory::Entidades()) {
            const QDir dir(QDir(Datos()).filePath(StoreDirectory::NombreArchivo(e)));
            for (const QString& a : dir.entryList({QStringLiteral("*.csv")}, QDir::Files)) {
                ++archivos;
                const QString tabla = QFileInfo(a).completeBaseName();
                const int filas =
                    static_cast<int>(LectorCsv::DeArchivo(dir.filePath(a)).filas().size());
                QVERIFY2(filas > 0, qPrintable(a));
                QCOMPARE(Contar(t.conexion(e), QStringLiteral("select count(*) from ") + tabla),
                         filas);
                QVERIFY(cargadas.contains(qMakePair(tabla, filas)));
            }
        }
        QCOMPARE(cargadas.size(), archivos);
        // A second load finds every table with rows and loads nothing.
        QVERIFY(DatosReferencia(t.stores(), Datos()).Cargar().isEmpty());
        // A table the office emptied is loaded again; one it changed is left alone.
        Conexion& i = t.conexion(QStringLiteral("INTERNOS"));
        i.Ejecutar(QStringLiteral("delete from via"));
        i.Ejecutar(QStringLiteral("delete from sta where id = 'IC04'"));
        const auto otra = DatosReferencia(t.stores(), Datos()).Cargar();
        QCOMPARE(otra.size(), 1);
        QCOMPARE(otra.first().first, QStringLiteral("via"));
        QCOMPARE(Contar(i, QStringLiteral("select count(*) from sta where id = 'IC04'")), 0);
    }

    // What the logic of the system needs of the reference data, each as one count that must
    // come out as said (negative: at least that many). The query is "select count(*) from" and
    // the text given, unless the text is a whole select.
    void contenido_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("entidad");
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("esperado");
        struct Caso {
            const char* nombre;
            const char* entidad;
            const char* sql;
            int esperado;
        };
        // clang-format off
        const Caso casos[] = {
            {"nomenclador de 300 posiciones o más", "NCM", "ncm", -300},
            {"diez capitulos o más", "NCM", "select count(distinct left(\"001\",2)) from ncm", -10},
            {"posicion 8409.91.12.100G", "NCM", "ncm where \"001\" = '8409.91.12' and \"002\" = '100' and \"003\" = 'G'", 1},
            {"posicion 8409.99.12.100C", "NCM", "ncm where \"001\" = '8409.99.12' and \"002\" = '100' and \"003\" = 'C'", 1},
            {"clave sin repetir", "NCM", "select count(*) from (select \"001\",\"002\" from ncm group by \"001\",\"002\" having count(*) > 1) as x", 0},
            {"unidad estadistica 01", "NCM", "ncm where \"012\" = '01'", -1},
            {"unidad estadistica 07", "NCM", "ncm where \"012\" = '07'", -1},
            {"derecho especifico con su unidad", "NCM", "ncm where \"017\" <> '' and \"020\" in ('07','08')", -1},
            {"unidad especifica sin derecho", "NCM", "ncm where (\"017\" = '') <> (\"020\" = '')", 0},
            {"marca AEC 028 con su tasa 026", "NCM", "ncm where \"028\" = '*' and \"026\" <> ''", -1},
            {"marca LAPI 059", "NCM", "ncm where \"059\" = '*'", -1},
            {"marca prohibicion 044", "NCM", "ncm where \"044\" = '*'", -1},
            {"marca seguridad electrica 052", "NCM", "ncm where \"052\" = '*'", -1},
            {"reintegro 019", "NCM", "ncm where isnumeric(\"019\") <> 0 and \"019\" <> '0'", -1},
            {"exencion de iva 048 en 0, 1 y 2", "NCM", "select count(distinct \"048\") from ncm", 3},
            {"sufijos de capitulo", "NCM", "sufidos where sim like '__  .  .  .   '", -1},
            {"sufijos de partida", "NCM", "sufidos where sim like '____.  .  .   '", -1},
            {"sufijos de subpartida", "NCM", "sufidos where sim like '____.__.  .   '", -1},
            {"sufijos de posicion", "NCM", "sufidos where sim not like '% %'", -1},
            {"sufijo libre de texto", "NCM", "sufidos where length(sufijo) = 2 and sufijo like 'A%'", -1},
            {"sufijo libre numerico", "NCM", "sufidos where length(sufijo) = 2 and sufijo like 'Z%'", -1},
            {"sufijo de lista", "NCM", "sufidos where length(sufijo) = 4", -1},
            {"los cuatro niveles en 8471.30.12.100", "NCM", "select count(distinct sim) from sufidos where sim in ('84  .  .  .   ','8471.  .  .   ','8471.30.  .   ','8471.30.12.100')", 4},
            {"fecha del nomenclador", "NCM", "control_fecha", 2},
            {"subregimen IC04 de importacion", "INTERNOS", "sta where id = 'IC04' and cstaimpexp = 'I'", 1},
            {"subregimen EC01 de exportacion", "INTERNOS", "sta where id = 'EC01' and cstaimpexp = 'E'", 1},
            {"subregimenes de transito", "INTERNOS", "sta where id like 'TR%'", -2},
            {"subregimenes pedidos", "INTERNOS", "sta where id in ('IC04','IC05','IC81','ICR1','IDA4','IT01','IT04','LAPI','ZFE1','EC01','EC02','EG01')", 12},
            {"conceptos de la liquidacion en tax", "INTERNOS", "tax where ctax in ('010','011','015','016','020','032','041','059','061','062','065','415','417','422','424','500','501','601','611','852','854','856','866','900')", 24},
            {"marca de cada concepto", "INTERNOS", "tax where ctaxpog not in ('P','G','C')", 0},
            {"textos de los conceptos", "INTERNOS", "tax where ctax not in (select id from conceptos)", 0},
            {"divisa DOL a 1", "INTERNOS", "divisas where id = 'DOL' and imp = 1", 1},
            {"divisa sin cotizacion", "INTERNOS", "divisas where imp = 0", 1},
            {"par de unidades 08 a 07", "INTERNOS", "unidrel where unid1 = '08' and unid2 = '07' and pase = 2", 1},
            {"ventajas que el sistema escribe", "INTERNOS", "ventajas where id in ('IVAADREDUCCION','GANANEXIMICION','MUESTRAEXPO','VEHICULOPARTES','AUTOLIQLIBREEXP','AUTOLIQLIBREIMP')", 6},
            {"estados 1, 2, 4 y 6", "INTERNOS", "estadomercaderia where id in ('1','2','4','6')", 4},
            {"codigo de embarque 32 y tipo A", "INTERNOS", "codemb, tipoemb where codemb.id = '32' and tipoemb.id = 'A'", 1},
            {"paises 203, 221, 225 y 310", "SYSTABLAS", "pais where id in ('203','221','225','310')", 4},
            {"paises de la lista de 129", "SYSTABLAS", "pais where id in ('101','103','107','124','159','200','202','203','204','205','206','208','210','212','218','221','222','225','226','308','309','312','315','320','326','333','341','344','345','406','409','410','412','417','423','426','427','429','436','438','448','451','501','504')", -20},
            {"paises fuera de la lista", "SYSTABLAS", "pais where id in ('310','301','999')", 3},
            {"MERCOSUR de 203, 221 y 225", "SYSTABLAS", "lista where descripcion = 'MERCOSUR'", 3},
            {"motivo DTO.1439/96 de importacion", "SYSTABLAS", "mottmp where id = 'DTO.1439/96' and impexpo = 'I'", 1},
            {"motivos de exportacion", "SYSTABLAS", "mottmp where impexpo = 'E'", -1},
            {"cortes por categoria", "SYSTABLAS", "oncca_cortes where categoria not in (select id from oncca_categoria)", 0},
            {"cliente con todas las opciones", "PERSONAL", "clientes where eximgan = 'S' and ivaareduccion = 'S' and cvdi = 'S' and ingbru > 0 and exceplapiaec = 'S' and regalias > 0 and ajxvinc_4102 > 0", 1},
            {"cliente con exencion total", "PERSONAL", "clientes where eximganvalor = 100 and ivaareduccionvalor = 100 and cvdi = 'N'", 1},
            {"reglas de ventajas", "PERSONAL", "ventajasrel where idsubregimen = '' and ncm = '8708'", 1},
            {"dest de cada subregimen", "USUARIO", "dest", 32},
            {"dest que oculta el vendedor", "USUARIO", "dest where txtidvendedor = 'x'", -1},
            {"impuestos internos SINDEC y DEC290_00", "USUARIO", "select count(distinct decreto) from impuestos_internos", 2},
        };
        // clang-format on
        for (const Caso& c : casos) {
            QTest::addRow("sqlite: %s", c.nombre)
                << static_cast<int>(Motor::SQLite) << QString::fromLatin1(c.entidad)
                << QString::fromUtf8(c.sql) << c.esperado;
            QTest::addRow("postgresql: %s", c.nombre)
                << static_cast<int>(Motor::PostgreSQL) << QString::fromLatin1(c.entidad)
                << QString::fromUtf8(c.sql) << c.esperado;
        }
    }
    void contenido() {
        MOTOR_O_SALTAR();
        QFETCH(QString, entidad);
        QFETCH(QString, sql);
        QFETCH(int, esperado);
        // One set of stores per engine serves every row.
        std::unique_ptr<TestStores>& t = compartidas_[motor];
        if (!t) {
            t = std::make_unique<TestStores>(static_cast<Motor>(motor));
            Preparar(*t);
        }
        const bool entera = sql.startsWith(QStringLiteral("select "));
        const int n = Contar(t->conexion(entidad),
                             entera ? sql : QStringLiteral("select count(*) from ") + sql);
        if (esperado < 0)
            QVERIFY2(n >= -esperado, qPrintable(QString::number(n)));
        else
            QCOMPARE(n, esperado);
    }

    // References between stores: what one table names, the other holds.
    void referencias_data() { test::FilasDeMotores(); }
    void referencias() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Preparar(t);
        Conexion& ncm = t.conexion(QStringLiteral("NCM"));
        QSet<QString> items, posiciones, unidades;
        for (Recordset rs = ncm.Abrir(QStringLiteral("select \"001\", \"002\", \"003\", \"012\", "
                                                     "\"020\" from ncm"));
             !rs.Eof(); rs.MoveNext()) {
            items.insert(EsNull(rs.Fields(0)));
            posiciones.insert(EsNull(rs.Fields(0)) + QLatin1Char('.') + EsNull(rs.Fields(1)) +
                              EsNull(rs.Fields(2)));
            unidades << EsNull(rs.Fields(3));
            if (!EsNull(rs.Fields(4)).isEmpty())
                unidades << EsNull(rs.Fields(4));
        }
        Recordset u =
            t.conexion(QStringLiteral("INTERNOS")).Abrir(QStringLiteral("select id from unidades"));
        QSet<QString> conocidas;
        for (; !u.Eof(); u.MoveNext())
            conocidas << EsNull(u.Fields(0));
        for (const QString& x : unidades)
            QVERIFY2(conocidas.contains(x), qPrintable(x));
        for (Recordset rs = t.conexion(QStringLiteral("SYSTABLAS"))
                                .Abrir(QStringLiteral("select ncm from diemchina"));
             !rs.Eof(); rs.MoveNext())
            QVERIFY2(items.contains(EsNull(rs.Fields(0))), qPrintable(EsNull(rs.Fields(0))));
        for (Recordset rs = t.conexion(QStringLiteral("USUARIO"))
                                .Abrir(QStringLiteral("select ncm from impuestos_internos"));
             !rs.Eof(); rs.MoveNext())
            QVERIFY2(posiciones.contains(EsNull(rs.Fields(0))), qPrintable(EsNull(rs.Fields(0))));
        QCOMPARE(Contar(t.conexion(QStringLiteral("USUARIO")),
                        QStringLiteral("select count(*) from dest")),
                 Contar(t.conexion(QStringLiteral("INTERNOS")),
                        QStringLiteral("select count(*) from sta")));
    }

    // Texts with an apostrophe are kept as written.
    void apostrofe_data() { test::FilasDeMotores(); }
    void apostrofe() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Preparar(t);
        QCOMPARE(EsNull(t.conexion(QStringLiteral("PERSONAL"))
                            .Escalar(QStringLiteral("select nombre from clientes where cuit = "
                                                    "'30712345671'"))),
                 QStringLiteral("METALURGICA D'ANGELO HNOS S.R.L."));
        QCOMPARE(EsNull(t.conexion(QStringLiteral("PERSONAL"))
                            .Escalar(QStringLiteral("select cuit from despadu where nombre = ") +
                                     SqlTexto(QStringLiteral("FERNANDEZ O'NEILL PATRICIA")))),
                 QStringLiteral("27312345671"));
    }

    // A file with a bad row anywhere leaves every store as it was.
    void cargaFallida_data() { test::FilasDeMotores(); }
    void cargaFallida() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("internos"));
        QDir(dir.path()).mkpath(QStringLiteral("systablas"));
        QFile::copy(QDir(Datos()).filePath(QStringLiteral("internos/sta.csv")),
                    dir.filePath(QStringLiteral("internos/sta.csv")));
        QFile::copy(QDir(Datos()).filePath(QStringLiteral("systablas/pais.csv")),
                    dir.filePath(QStringLiteral("systablas/pais.csv")));
        QFile f(dir.filePath(QStringLiteral("internos/unidrel.csv")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("unid1,unid2,pase\n08,07,2\n09,07,doce\n");
        f.close();
        try {
            DatosReferencia(t.stores(), dir.path()).Cargar();
            QFAIL("se esperaba un error");
        } catch (const KorvenError& e) {
            QCOMPARE(e.descripcion(),
                     dir.filePath(QStringLiteral("internos/unidrel.csv")) +
                         QStringLiteral(", línea 3: Valor no numérico en la columna pase: "
                                        "'doce'"));
        }
        for (const char* tabla : {"sta", "unidrel"})
            QCOMPARE(Contar(t.conexion(QStringLiteral("INTERNOS")),
                            QStringLiteral("select count(*) from ") + QLatin1String(tabla)),
                     0);
        QCOMPARE(Contar(t.conexion(QStringLiteral("SYSTABLAS")),
                        QStringLiteral("select count(*) from pais")),
                 0);
    }

    // The demo Operations: four, each with a header complete for its sub-regime, its invoices
    // and goods lines that fit the nomenclator.
    void demo_data() { test::FilasDeMotores(); }
    void demo() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Preparar(t);
        const QStringList cargadas = OperacionesDemo(t.stores(), Datos()).Cargar();
        QCOMPARE(cargadas,
                 (QStringList{QStringLiteral("DEMO-IC04-001"), QStringLiteral("DEMO-EC01-001"),
                              QStringLiteral("DEMO-IT01-001"), QStringLiteral("DEMO-IC05-001")}));
        Conexion& i = t.conexion(QStringLiteral("INTERNOS"));
        Conexion& n = t.conexion(QStringLiteral("NCM"));
        Conexion& u = t.conexion(QStringLiteral("USUARIO"));
        Conexion& p = t.conexion(QStringLiteral("PERSONAL"));
        for (const QString& interno : cargadas) {
            Recordset c = i.Abrir(QStringLiteral("select * from caratula where interno = ") +
                                  SqlTexto(interno));
            QCOMPARE(c.RecordCount(), 1);
            auto v = [&](const char* col) { return EsNull(c.Fields(QString::fromLatin1(col))); };
            const QString subreg = v("idsubreg");
            Recordset d =
                u.Abrir(QStringLiteral("select * from dest where subreg = ") + SqlTexto(subreg));
            QVERIFY2(d.RecordCount() == 1, qPrintable(interno));
            const QString tipo = EsNull(i.Escalar(
                QStringLiteral("select cstaimpexp from sta where id = ") + SqlTexto(subreg)));
            // What the hub asks of a complete header.
            QVERIFY(!v("idaduana").isEmpty());
            QVERIFY(!v("cuitcliente").isEmpty());
            QVERIFY(!v("cuitdespaduana").isEmpty());
            if (EsNull(d.Fields(QStringLiteral("txtidvendedor"))).isEmpty())
                QVERIFY(!v("idvendedor").isEmpty());
            if (EsNull(d.Fields(QStringLiteral("txtidcondventa"))).isEmpty())
                QVERIFY(!v("idcondiciondeventa").isEmpty());
            if (subreg.endsWith(QLatin1String("06")))
                QVERIFY(!v("factura5").isEmpty());
            QVERIFY(EsNumero(c.Fields(QStringLiteral("fobdivisas"))) > 0);
            QVERIFY(!v("fobcoddivisas").isEmpty());
            QVERIFY(EsNumero(c.Fields(QStringLiteral("fobdivcambio"))) > 0);
            if (tipo == QLatin1String("I")) {
                for (const char* col :
                     {"fletedivisas", "fletedivcambio", "segurodivisas", "segurodivcambio"})
                    QVERIFY2(EsNumero(c.Fields(QString::fromLatin1(col))) > 0, col);
                QVERIFY(!v("fletecoddivisas").isEmpty());
                QVERIFY(!v("segurocoddivisas").isEmpty());
            } else {
                // Packages of an export: "32" and "A" ask for code, type and weight.
                QCOMPARE(v("bulcod"), QStringLiteral("32"));
                QCOMPARE(v("bultip"), QStringLiteral("A"));
                QVERIFY(EsNumero(c.Fields(QStringLiteral("bulpes"))) > 0);
                QCOMPARE(v("onccahabilitado"), QStringLiteral("S"));
            }
            QCOMPARE(EsNumero(i.Escalar(QStringLiteral("select count(*) from divisas where "
                                                       "id = ") +
                                        SqlTexto(v("fobcoddivisas")))),
                     1.0);
            QCOMPARE(EsNumero(p.Escalar(QStringLiteral("select count(*) from clientes where "
                                                       "cuit = ") +
                                        SqlTexto(v("cuitcliente")))),
                     1.0);
            QCOMPARE(EsNull(p.Escalar(QStringLiteral("select nombre from despadu where cuit = ") +
                                      SqlTexto(v("cuitdespaduana")))),
                     v("factura3"));
            // Invoices, and factura1 that joins them.
            QStringList facturas;
            for (Recordset f = i.Abrir(QStringLiteral("select factura from facturas where "
                                                      "interno = ") +
                                       SqlTexto(interno) + QStringLiteral(" order by orden"));
                 !f.Eof(); f.MoveNext())
                facturas << EsNull(f.Fields(0));
            QVERIFY(!facturas.isEmpty());
            QCOMPARE(v("factura1"), facturas.join(QLatin1Char(',')));
            QCOMPARE(v("factura8"), QStringLiteral("S"));
            // Goods lines: their FOB is the header's, each position and its suffixes are what
            // the nomenclator asks.
            QCOMPARE(Formato(i.Escalar(QStringLiteral("select sum(fob) from subitems where "
                                                      "interno = ") +
                                       SqlTexto(interno)),
                             QStringLiteral("00.00")),
                     Formato(c.Fields(QStringLiteral("fobdivisas")), QStringLiteral("00.00")));
            Recordset s = i.Abrir(QStringLiteral("select * from subitems where interno = ") +
                                  SqlTexto(interno) + QStringLiteral(" order by id"));
            QVERIFY(s.RecordCount() >= 2);
            for (; !s.Eof(); s.MoveNext()) {
                const QString pos = EsNull(s.Fields(QStringLiteral("ncm")));
                QCOMPARE(pos.size(), 15);
                Recordset r = n.Abrir(QStringLiteral("select \"012\", \"020\", \"059\" from ncm "
                                                     "where \"001\" = ? and \"002\" = ? and "
                                                     "\"003\" = ?"),
                                      {pos.left(10), pos.mid(11, 3), pos.right(1)});
                QVERIFY2(r.RecordCount() == 1, qPrintable(pos));
                QCOMPARE(EsNull(s.Fields(QStringLiteral("estadistica"))), EsNull(r.Fields(0)));
                QCOMPARE(EsNull(s.Fields(QStringLiteral("deresp"))), EsNull(r.Fields(1)));
                QCOMPARE(EsNull(s.Fields(QStringLiteral("lapi"))),
                         EsNull(r.Fields(2)) == QLatin1String("*") ? QStringLiteral("S")
                                                                   : QStringLiteral("N"));
                if (EsNull(s.Fields(QStringLiteral("idunidad"))) == EsNull(r.Fields(0)))
                    QCOMPARE(EsNumero(s.Fields(QStringLiteral("valorrelacionestadistica"))),
                             EsNumero(s.Fields(QStringLiteral("cantidad"))));
                QVERIFY(EsNumero(s.Fields(QStringLiteral("kgneto"))) <=
                        EsNumero(s.Fields(QStringLiteral("kgbruto"))));
                QStringList prefijos;
                for (Recordset a = n.Abrir(QStringLiteral("select distinct left(sufijo,2) as "
                                                          "asufijo from sufidos where sim in ") +
                                           ListaSim(pos) + QStringLiteral(" order by asufijo"));
                     !a.Eof(); a.MoveNext())
                    prefijos << EsNull(a.Fields(0));
                const QString sufijos = EsNull(s.Fields(QStringLiteral("sufijos")));
                QVERIFY2(prefijos.isEmpty() == (sufijos == QLatin1String("SIN SUFIJOS")),
                         qPrintable(pos));
                QVERIFY(sufijos.endsWith(QLatin1Char('-')) || prefijos.isEmpty());
                QCOMPARE(CodigosDe(sufijos), prefijos);
                if (interno == QLatin1String("DEMO-IC05-001")) {
                    QCOMPARE(EsNull(s.Fields(QStringLiteral("biendeuso"))), QStringLiteral("S"));
                    QCOMPARE(EsNull(s.Fields(QStringLiteral("estadomerc"))), QStringLiteral("1"));
                    QCOMPARE(EsNull(n.Escalar(QStringLiteral("select \"055\" from ncm where "
                                                             "\"001\" = ") +
                                              SqlTexto(pos.left(10)) +
                                              QStringLiteral(" and \"002\" = ") +
                                              SqlTexto(pos.mid(11, 3)))),
                             QStringLiteral("*"));
                }
            }
        }
        Recordset tmp = i.Abrir(QStringLiteral("select idsubreg, motivodestsuspensiva from "
                                               "caratula where interno = 'DEMO-IT01-001'"));
        QCOMPARE(EsNull(tmp.Fields(0)), QStringLiteral("IT01"));
        QCOMPARE(EsNull(tmp.Fields(1)), QStringLiteral("DTO.1439/96"));
        QCOMPARE(EsNull(t.conexion(QStringLiteral("SYSTABLAS"))
                            .Escalar(QStringLiteral("select coment from coment where interno = "
                                                    "'DEMO-IC04-001'"))),
                 QStringLiteral("Entregar en el depósito de D'Agostino; avisar al cliente "
                                "antes."));

        // A second load loads nothing; a deleted Operation comes back alone.
        QVERIFY(OperacionesDemo(t.stores(), Datos()).Cargar().isEmpty());
        for (const char* tabla : {"caratula", "facturas", "subitems"})
            i.Ejecutar(QStringLiteral("delete from %1 where interno = 'DEMO-EC01-001'")
                           .arg(QLatin1String(tabla)));
        const int lineas = Contar(i, QStringLiteral("select count(*) from subitems"));
        QCOMPARE(OperacionesDemo(t.stores(), Datos()).Cargar(),
                 QStringList{QStringLiteral("DEMO-EC01-001")});
        QCOMPARE(Contar(i, QStringLiteral("select count(*) from subitems")), lineas + 2);
        QCOMPARE(Contar(i, QStringLiteral("select count(*) from caratula")), 4);
    }
};

QTEST_GUILESS_MAIN(TestDatos)
#include "test_datos.moc"
