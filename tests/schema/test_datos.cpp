#include "ApoyoEsquema.h"
#include "schema/DatosReferencia.h"
#include "schema/Esquema.h"
#include "schema/ImportadorCsv.h"
#include "schema/OperacionesDemo.h"

#include <QTemporaryDir>

using namespace korven;
using namespace korven::schema;
using namespace korven::test;

namespace {

ImportadorCsv::Resultado Importar(TestStores& t, const QString& tabla, const QString& csv,
                                  bool parcial = false, bool reemplazar = false) {
    return ImportadorCsv(t.stores())
        .Importar(tabla, LectorCsv::DeTexto(csv), {parcial, reemplazar});
}

QStringList Informe(const ImportadorCsv::Resultado& r) {
    QStringList l;
    for (const auto& x : r.rechazos)
        l << QStringLiteral("%1: %2").arg(x.linea).arg(x.motivo);
    return l;
}

// The stores with the schema and a few rows that the imports must not lose: five suffixes (detail
// PREVIO) among them.
void Sembrar(TestStores& t) {
    CrearOActualizar(t.stores());
    // clang-format off
    for (const char* sql : {"insert into divisas (id, descripcion, imp) values ('DOL', 'DOLAR', 1)",
                            "insert into caratula (interno, factura7) values ('X1', 'PREVIO')",
                            "insert into ncm (\"001\", \"002\", \"003\", \"010\") values ('0101.21.00', '100', 'A', 'CABALLOS')",
                            "insert into sufidos (sim, sufijo, detalle) select '84  .  .  .   ', id, 'PREVIO' from (select 'AA' as id union select 'AB' union select 'ZA' union select 'EM01' union select 'EM02') as x"})
        // clang-format on
        t.conexion("INTERNOS").Ejecutar(QString::fromLatin1(sql));
}

} // namespace

// CSV files read and imported, the reference data and the demo Operations loaded.
class TestDatos : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStores> compartidas_[2]; // one per engine, for the rows of contenido

private Q_SLOTS:
    void lector_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QStringList>("filas"); // "line:v1|v2"; the header is a,b
                                                // clang-format off
        QTest::newRow("simple") << "a,b\n1,2\n3,4\n" << QStringList{"2:1|2", "3:3|4"};
        QTest::newRow("coma entre comillas") << "a,b\n\"x,y\",2\n" << QStringList{"2:x,y|2"};
        QTest::newRow("comillas dobladas") << "a,b\n\"dijo \"\"hola\"\"\",2\n" << QStringList{"2:dijo \"hola\"|2"};
        QTest::newRow("salto entre comillas") << "a,b\n\"uno\ndos\",2\n3,4\n" << QStringList{"2:uno\ndos|2", "4:3|4"};
        QTest::newRow("CRLF") << "a,b\r\n1,2\r\n" << QStringList{"2:1|2"};
        QTest::newRow("punto y coma") << "a;b\n1,5;2\n" << QStringList{"2:1,5|2"};
        QTest::newRow("lineas en blanco") << "a,b\n\n1,2\n   \n" << QStringList{"3:1|2"};
        QTest::newRow("blancos conservados") << "a,b\n\"84  .  \", AA \n" << QStringList{"2:84  .  | AA "};
        QTest::newRow("encabezado con blancos") << " a , b \n1,2\n" << QStringList{"2:1|2"};
        // clang-format on
    }
    void lector() {
        QFETCH(QString, texto);
        QFETCH(QStringList, filas);
        const LectorCsv csv = LectorCsv::DeTexto(texto);
        QCOMPARE(csv.encabezado(), (QStringList{"a", "b"}));
        QStringList leidas;
        for (const auto& f : csv.filas())
            leidas << QStringLiteral("%1:%2").arg(f.linea).arg(f.valores.join(QLatin1Char('|')));
        QCOMPARE(leidas, filas);
    }

    void lectorArchivo() {
        QTemporaryDir dir;
        const QString ruta = dir.filePath(QStringLiteral("x.csv"));
        Escribir(ruta, "\xEF\xBB\xBFid,descripcion\n410,ESPA\xC3\x91"
                       "A\n");
        const LectorCsv csv = LectorCsv::DeArchivo(ruta);
        QCOMPARE(csv.encabezado(), (QStringList{"id", "descripcion"}));
        QCOMPARE(csv.filas().at(0).valores.at(1), QStringLiteral("ESPAÑA"));
        ERROR_CON_TEXTO(LectorCsv::DeTexto("a,b\n1,\"abierta\n2,3\n", QStringLiteral("p.csv")),
                        QStringLiteral("p.csv: comillas sin cerrar desde la línea 2"));
    }

    // Every rejected row with its line and reason; with one reject nothing is written, unless the
    // import is partial: then the good rows go in, stored as the system reads them (a number with
    // its point, dates in both forms, NULL for an empty number or date, '' for an empty text,
    // apostrophes and quotes as written).
    void rechazos_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<QString>("csv");
        QTest::addColumn<QStringList>("informe");
        QTest::addColumn<QString>("consulta");
        QTest::addColumn<QStringList>("filas"); // the rows of the query after the partial import
        // clang-format off
        const std::tuple<const char*, const char*, const char*, QStringList, const char*, QStringList> casos[] = {
            {"divisas", "divisas",
             "id,descripcion,imp\nDOL,DOLAR,1\nXXX,PRUEBA,uno\nEUR,EURO\n060,EURO,1.08\n060,EURO OTRA,1.1\n,SIN CODIGO,1\n012,REAL,\"0,18\"\n019,YEN,\"1.234,5\"\n013,YUAN,-.5e1\n014,PESO,nan\n",
             {"2: La clave ya existe en la tabla divisas.", "3: Valor no numérico en la columna imp: 'uno'", "4: La línea tiene 2 campos y el encabezado 3.", "6: Clave repetida en el archivo (ya está en la línea 5).", "7: Falta el valor de la columna clave id.", "8: Valor no numérico en la columna imp: '0,18'", "9: Valor no numérico en la columna imp: '1.234,5'", "11: Valor no numérico en la columna imp: 'nan'"},
             "select id, imp from divisas order by id", {"013|-5", "060|1.08", "DOL|1"}},
            {"posiciones", "ncm",
             "001,002,003,010\n8471.30.12,100,B,BIEN\n847130.12,100,B,X\n8471.30.12,10,B,X\n8471.30.12,200,b,X\n0101.21.00,100,A,REPETIDA\n",
             {"3: La columna 001 debe tener la forma NNNN.NN.NN: '847130.12'", "4: La columna 002 debe tener 3 dígitos: '10'", "5: La columna 003 debe ser una letra mayúscula: 'b'", "6: La clave ya existe en la tabla ncm."},
             "select \"001\", \"002\", \"003\", \"010\" from ncm order by 1", {"0101.21.00|100|A|CABALLOS", "8471.30.12|100|B|BIEN"}},
            {"sufijos", "sufidos",
             "sim,sufijo,detalle\n8471.  .  .   ,ZD,BIEN\n8471.  .  .  ,ZD,CORTO\n84  .  .  .   ,AAA,LARGO\n84  .  .  .   ,AA,EXISTE\n",
             {"3: La columna sim debe tener 14 caracteres: '8471.  .  .  '", "4: La columna sufijo debe tener 2 o 4 caracteres: 'AAA'", "5: La clave ya existe en la tabla sufidos."},
             "select sim, sufijo from sufidos where detalle <> 'PREVIO'", {"8471.  .  .   |ZD"}},
            {"fechas", "caratula",
             "interno,fechaalta,fobdivisas,factura7\nA1,2026-02-30,10,\nA2,30/01/2026,1.5,\nA3,,,X\nX1,2026-01-01,0,\n",
             {"2: Fecha inválida en la columna fechaalta: '2026-02-30' (se espera AAAA-MM-DD o DD/MM/AAAA)", "5: La clave ya existe en la tabla caratula."},
             "select interno, fechaalta, fobdivisas, factura7 from caratula order by interno", {"A2|2026-01-30|1.5|", "A3|-|-|X", "X1|-|-|PREVIO"}},
            {"textos", "vendedor",
             "codigo,nombre,domicilio\nV9,D'ALESSIO Y O'HARA,\"CALLE 1, \"\"B\"\"\"\nV10,'; drop table vendedor;--,\n,SIN CODIGO,\n",
             {"4: Falta el valor de la columna clave codigo."},
             "select codigo, nombre, domicilio from vendedor order by codigo", {"V10|'; drop table vendedor;--|", "V9|D'ALESSIO Y O'HARA|CALLE 1, \"B\""}},
        };
        // clang-format on
        for (const auto& [nombre, tabla, csv, informe, consulta, filas] : casos)
            for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)})
                QTest::addRow("%s: %s", m ? "postgresql" : "sqlite", nombre)
                    << m << QString::fromLatin1(tabla) << QString::fromUtf8(csv) << informe
                    << QString::fromLatin1(consulta) << filas;
    }
    void rechazos() {
        MOTOR_O_SALTAR();
        QFETCH(QString, tabla);
        QFETCH(QString, csv);
        QFETCH(QStringList, informe);
        QFETCH(QString, consulta);
        QFETCH(QStringList, filas);
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& c = t.conexion("INTERNOS");
        const int antes = Contar(c, tabla);
        QCOMPARE(Informe(Importar(t, tabla, csv)), informe);
        QCOMPARE(Contar(c, tabla), antes);
        const auto p = Importar(t, tabla, csv, true);
        QCOMPARE(Informe(p), informe);
        QCOMPARE(p.importadas, p.leidas - static_cast<int>(informe.size()));
        QCOMPARE(Filas(c, consulta), filas);
    }

    void encabezado_data() {
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<QString>("csv");
        QTest::addColumn<QString>("mensaje");
        // clang-format off
        QTest::newRow("columna ajena") << "vendedor" << "codigo,nombre,telefono\nV1,A,1\n" << "La columna 'telefono' no es de la tabla vendedor.";
        QTest::newRow("columna repetida") << "vendedor" << "codigo,nombre,NOMBRE\nV1,A,B\n" << "La columna 'nombre' está repetida en el encabezado.";
        QTest::newRow("falta la clave") << "ncm" << "001,002,010\n8471.30.12,100,X\n" << "Falta la columna clave '003' de la tabla ncm.";
        QTest::newRow("archivo vacio") << "vendedor" << "" << "El archivo no tiene encabezado.";
        QTest::newRow("tabla desconocida") << "proveedores" << "id\n1\n" << "La tabla proveedores no existe en el esquema.";
        // clang-format on
    }
    void encabezado() {
        QFETCH(QString, tabla);
        QFETCH(QString, csv);
        QFETCH(QString, mensaje);
        TestStores t(Motor::SQLite);
        CrearOActualizar(t.stores());
        ERROR_CON_TEXTO(Importar(t, tabla, csv), mensaje);
    }

    // Replacing empties the table and loads the file in the same transaction: a rejected row, or a
    // statement the store refuses in the middle (here a trigger on one row of the fourth batch),
    // keeps the old rows; the connection stays usable.
    void reemplazar_data() { FilasDeMotores(); }
    void reemplazar() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        Sembrar(t);
        Conexion& c = t.conexion("NCM");
        const QString sufidos = QStringLiteral("sufidos");
        QCOMPARE(Informe(Importar(t, sufidos, "sim,sufijo,detalle\n85  .  .  .   ,TE010,X\n", false,
                                  true)),
                 QStringList{"2: La columna sufijo debe tener 2 o 4 caracteres: 'TE010'"});
        QCOMPARE(Contar(c, "sufidos where detalle = 'PREVIO'"), 5);
        // clang-format off
        for (const char* sql : t.motor() == Motor::SQLite
                 ? QList<const char*>{"CREATE TRIGGER falla BEFORE INSERT ON sufidos WHEN NEW.detalle = 'FALLA' BEGIN SELECT RAISE(ABORT, 'fila rechazada por la base'); END"}
                 : QList<const char*>{"CREATE FUNCTION falla() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN IF NEW.detalle = 'FALLA' THEN RAISE EXCEPTION 'fila rechazada por la base'; END IF; RETURN NEW; END $$",
                                      "CREATE TRIGGER falla BEFORE INSERT ON sufidos FOR EACH ROW EXECUTE FUNCTION falla()"})
            c.Ejecutar(QString::fromLatin1(sql));
        // clang-format on
        QString csv = QStringLiteral("sim,sufijo,detalle\n");
        for (int i = 0; i < 1000; ++i)
            csv += QStringLiteral("%1.  .  .   ,Z%2,%3\n")
                       .arg(1000 + i)
                       .arg(i % 10)
                       .arg(QLatin1String(i == 999 ? "FALLA" : "DETALLE"));
        for (bool reemplazando : {false, true}) {
            try {
                Importar(t, sufidos, csv, false, reemplazando);
                QFAIL("se esperaba un error del store");
            } catch (const KorvenError& e) {
                QVERIFY2(e.descripcion().contains(QStringLiteral("fila rechazada por la base")),
                         qPrintable(e.descripcion()));
            }
            QCOMPARE(Contar(c, "sufidos where detalle = 'PREVIO'"), 5);
            QCOMPARE(Contar(c, sufidos), 5);
        }
        Importar(t, sufidos, "sim,sufijo,detalle\n84  .  .  .   ,AA,MARCA\n", false, true);
        QCOMPARE(Filas(c, "select sim, sufijo, detalle from sufidos"),
                 QStringList{"84  .  .  .   |AA|MARCA"});
    }

    // Every file of the data folder is loaded whole into its table, once; a table the office
    // emptied is loaded again. The demo Operations likewise: a deleted one comes back alone.
    void cargaCompleta_data() { FilasDeMotores(); }
    void cargaCompleta() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        const auto cargadas = DatosReferencia(t.stores(), Datos()).Cargar();
        Conexion& i = t.conexion("INTERNOS");
        int archivos = 0;
        for (const QString& e : StoreDirectory::Entidades()) {
            const QDir dir(QDir(Datos()).filePath(StoreDirectory::NombreArchivo(e)));
            for (const QString& a : dir.entryList({QStringLiteral("*.csv")}, QDir::Files)) {
                ++archivos;
                const QString tabla = QFileInfo(a).completeBaseName();
                const int filas = int(LectorCsv::DeArchivo(dir.filePath(a)).filas().size());
                QCOMPARE(Contar(i, tabla), filas);
                QVERIFY(cargadas.contains(qMakePair(tabla, filas)));
            }
        }
        QCOMPARE(cargadas.size(), archivos);
        QVERIFY(DatosReferencia(t.stores(), Datos()).Cargar().isEmpty());
        i.Ejecutar("delete from via");
        i.Ejecutar("delete from sta where id = 'IC04'");
        const auto otra = DatosReferencia(t.stores(), Datos()).Cargar();
        QVERIFY(otra.size() == 1 && otra.first().first == QLatin1String("via"));
        QCOMPARE(Contar(i, "sta where id = 'IC04'"), 0);

        QCOMPARE(OperacionesDemo(t.stores(), Datos()).Cargar(),
                 (QStringList{"DEMO-IC04-001", "DEMO-EC01-001", "DEMO-IT01-001", "DEMO-IC05-001"}));
        QVERIFY(OperacionesDemo(t.stores(), Datos()).Cargar().isEmpty());
        for (const char* tabla : {"caratula", "facturas", "subitems"})
            i.Ejecutar(QStringLiteral("delete from %1 where interno = 'DEMO-EC01-001'")
                           .arg(QLatin1String(tabla)));
        QCOMPARE(OperacionesDemo(t.stores(), Datos()).Cargar(), QStringList{"DEMO-EC01-001"});
        QCOMPARE(Contar(i, "subitems"), 13);
        QCOMPARE(Contar(i, "caratula"), 4);
    }

    // What the logic of the system needs of the reference data and of the demo Operations, each as
    // one count that must come out as said (negative: at least that many).
    void contenido_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("esperado");
        // A goods line and its position in the nomenclator.
        const char* linea = "subitems s join ncm n on n.\"001\" = substr(s.ncm, 1, 10) and "
                            "n.\"002\" = substr(s.ncm, 12, 3) and n.\"003\" = substr(s.ncm, 15, 1)";
        // clang-format off
        const std::tuple<const char*, QString, int> casos[] = {
            {"posiciones 8409.91.12.100G y 8409.99.12.100C", "ncm where (\"001\", \"002\", \"003\") in (('8409.91.12', '100', 'G'), ('8409.99.12', '100', 'C'))", 2},
            {"clave sin repetir", "select count(*) from (select \"001\",\"002\" from ncm group by \"001\",\"002\" having count(*) > 1) as x", 0},
            {"unidades del nomenclador conocidas", "ncm where \"012\" not in (select id from unidades) or (\"020\" <> '' and \"020\" not in (select id from unidades))", 0},
            {"unidad especifica sin derecho", "ncm where (\"017\" = '') <> (\"020\" = '')", 0},
            {"marcas AEC con tasa, LAPI, prohibicion, seguridad", "select (select count(*) from ncm where \"028\" = '*' and \"026\" <> '') * (select count(*) from ncm where \"059\" = '*') * (select count(*) from ncm where \"044\" = '*') * (select count(*) from ncm where \"052\" = '*')", -1},
            {"sufijos de los cuatro niveles", "select count(distinct length(replace(sim, ' ', ''))) from sufidos", 4},
            {"subregimenes pedidos", "sta where id in ('IC04','IC05','IC81','ICR1','IDA4','IT01','IT04','LAPI','ZFE1','EC01','EC02','EG01') and cstaimpexp = (case when id like 'E%' then 'E' else 'I' end)", 12},
            {"conceptos de la liquidacion en tax", "tax where ctax in ('010','011','015','016','020','032','041','059','061','062','065','415','417','422','424','500','501','601','611','852','854','856','866','900') and ctaxpog in ('P','G','C') and ctax in (select id from conceptos)", 24},
            {"divisa DOL a 1 y una sin cotizacion", "divisas where (id = 'DOL' and imp = 1) or imp = 0", 2},
            {"par de unidades 08 a 07", "unidrel where unid1 = '08' and unid2 = '07' and pase = 2", 1},
            {"ventajas que el sistema escribe", "ventajas where id in ('IVAADREDUCCION','GANANEXIMICION','MUESTRAEXPO','VEHICULOPARTES','AUTOLIQLIBREEXP','AUTOLIQLIBREIMP')", 6},
            {"paises de la lista de 129", "pais where id in ('101','103','107','124','159','200','202','203','204','205','206','208','210','212','218','221','222','225','226','308','309','312','315','320','326','333','341','344','345','406','409','410','412','417','423','426','427','429','436','438','448','451','501','504')", -20},
            {"MERCOSUR de 203, 221 y 225", "lista where descripcion = 'MERCOSUR'", 3},
            {"cliente con todas las opciones", "clientes where eximgan = 'S' and ivaareduccion = 'S' and cvdi = 'S' and ingbru > 0 and exceplapiaec = 'S' and regalias > 0 and ajxvinc_4102 > 0", 1},
            {"apostrofes conservados", "clientes, despadu where clientes.cuit = '30712345671' and clientes.nombre = 'METALURGICA D''ANGELO HNOS S.R.L.' and despadu.cuit = '27312345671' and despadu.nombre = 'FERNANDEZ O''NEILL PATRICIA'", 1},
            {"dest de cada subregimen", "sta where id not in (select subreg from dest) or (select count(*) from dest) <> 32", 0},
            {"impuestos internos en el nomenclador", "impuestos_internos where ncm not in (select \"001\" || '.' || \"002\" || \"003\" from ncm)", 0},
            {"demo: carátulas completas", "caratula c join sta on sta.id = c.idsubreg join dest d on d.subreg = c.idsubreg where c.idaduana <> '' and c.fobdivisas > 0 and c.fobdivcambio > 0 and c.factura8 = 'S' and c.fobcoddivisas in (select id from divisas) and c.cuitcliente in (select cuit from clientes) and c.factura3 = (select nombre from despadu where cuit = c.cuitdespaduana) and (d.txtidvendedor <> '' or c.idvendedor <> '') and (d.txtidcondventa <> '' or c.idcondiciondeventa <> '') and (sta.cstaimpexp = 'E' or (c.fletedivisas > 0 and c.fletedivcambio > 0 and c.segurodivisas > 0 and c.segurodivcambio > 0 and c.fletecoddivisas <> '' and c.segurocoddivisas <> ''))", 4},
            {"demo: bultos de la exportacion", "caratula where idsubreg = 'EC01' and bulcod = '32' and bultip = 'A' and bulpes > 0 and onccahabilitado = 'S'", 1},
            {"demo: motivo de la temporal", "caratula c join mottmp m on m.id = c.motivodestsuspensiva and m.impexpo = 'I' where c.interno = 'DEMO-IT01-001' and c.idsubreg = 'IT01' and m.id = 'DTO.1439/96'", 1},
            {"demo: factura1 une las facturas", "facturas f join caratula c on c.interno = f.interno where c.factura1 like '%' || f.factura || '%' and (select count(*) from facturas) = 7", 7},
            {"demo: FOB de las lineas", "caratula c where abs(c.fobdivisas - (select sum(fob) from subitems s where s.interno = c.interno)) < 0.005", 4},
            {"demo: lineas segun el nomenclador", QString::fromLatin1(linea) + " where n.\"012\" = s.estadistica and n.\"020\" = s.deresp and s.lapi = (case when n.\"059\" = '*' then 'S' else 'N' end) and s.kgneto <= s.kgbruto and (s.idunidad <> s.estadistica or s.valorrelacionestadistica = s.cantidad)", 13},
            {"demo: sin sufijos cuando ninguno aplica", "subitems s where (s.sufijos = 'SIN SUFIJOS') = exists (select 1 from sufidos f where f.sim in (substr(s.ncm, 1, 2) || '  .  .  .   ', substr(s.ncm, 1, 4) || '.  .  .   ', substr(s.ncm, 1, 7) || '.  .   ', substr(s.ncm, 1, 14)))", 0},
            {"demo: bienes de uso de la IC05", QString::fromLatin1(linea) + " where s.interno = 'DEMO-IC05-001' and s.biendeuso = 'S' and s.estadomerc = '1' and n.\"055\" = '*'", 3},
            {"demo: comentario con apostrofe", "coment where interno = 'DEMO-IC04-001' and coment = 'Entregar en el depósito de D''Agostino; avisar al cliente antes.'", 1},
        };
        // clang-format on
        for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)})
            for (const auto& [nombre, sql, esperado] : casos)
                QTest::addRow("%s: %s", m ? "postgresql" : "sqlite", nombre)
                    << m << sql << esperado;
    }
    void contenido() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sql);
        QFETCH(int, esperado);
        // One set of stores per engine, with the reference data and the demo, serves every row.
        std::unique_ptr<TestStores>& t = compartidas_[motor];
        if (!t) {
            t = std::make_unique<TestStores>(static_cast<Motor>(motor));
            CrearOActualizar(t->stores());
            CargarDatosReferencia(t->stores(), Datos());
            CargarOperacionesDemo(t->stores(), Datos());
        }
        const int n = Contar(t->conexion("INTERNOS"), sql);
        if (esperado < 0)
            QVERIFY2(n >= -esperado, qPrintable(QString::number(n)));
        else
            QCOMPARE(n, esperado);
    }

    // A file with a bad row anywhere leaves every store as it was.
    void cargaFallida_data() { FilasDeMotores(); }
    void cargaFallida() {
        MOTOR_O_SALTAR();
        TestStores t(static_cast<Motor>(motor));
        CrearOActualizar(t.stores());
        QTemporaryDir dir;
        for (const char* a : {"internos/sta.csv", "systablas/pais.csv"}) {
            QDir(dir.path()).mkpath(QString::fromLatin1(a).section(QLatin1Char('/'), 0, 0));
            QFile::copy(QDir(Datos()).filePath(QLatin1String(a)), dir.filePath(QLatin1String(a)));
        }
        const QString malo = dir.filePath(QStringLiteral("internos/unidrel.csv"));
        Escribir(malo, "unid1,unid2,pase\n08,07,2\n09,07,doce\n");
        ERROR_CON_TEXTO(DatosReferencia(t.stores(), dir.path()).Cargar(),
                        malo + QStringLiteral(", línea 3: Valor no numérico en la columna pase: "
                                              "'doce'"));
        QCOMPARE(Contar(t.conexion("INTERNOS"),
                        QStringLiteral("select (select count(*) from sta) + (select count(*) "
                                       "from unidrel) + (select count(*) from pais)")),
                 0);
    }
};

QTEST_GUILESS_MAIN(TestDatos)
#include "test_datos.moc"