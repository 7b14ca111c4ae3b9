// Goods lines brought from a spreadsheet: reading pasted rows and CSV files, the mapping of
// columns to fields, the decimal mark of the figures, and the goods screen's arithmetic that
// completes each line from the nomenclator and the unit conversions, on SQLite and PostgreSQL,
// under both decimal separators.
//
// Imported goods lines through the save of the goods screen: the verdict of each row with the
// save's own message, a trial that writes nothing, the import of the correct rows in one
// transaction, all or nothing in korven-admin, and the preview screen driven by keys. Both
// engines, both decimal separators.

#include "FixtureSubItems.h"
#include "goods/AdminSubItems.h"
#include "goods/CargaSubItems.h"
#include "goods/FrmImportarSubItems.h"
#include "goods/ImportadorSubItems.h"
#include "goods/PantallasImportar.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/Principal.h"

#include <QFile>
#include <QLabel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;
using Campo = ImportadorSubItems::Campo;

namespace {

// Our own nomenclator rows, statistics unit ("012"), specific-duty unit ("020") and LAPI ("059"),
// and unit conversions.
void PrepararNomenclador(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    Conexion& ncm = ts.conexion(QStringLiteral("NCM"));
    ncm.Ejecutar(QStringLiteral(
        "insert into ncm (\"001\",\"002\",\"003\",\"004\",\"012\",\"020\",\"059\") values "
        "('8471.30.12','100','M','NOTEBOOKS','07','',''),"
        "('6403.99.90','100','T','CALZADO','08','08','*'),"
        "('0201.10.00','900','Q','CARNE','01','',''),"
        "('0201.10.00','100','G','CARNE','01','',''),"
        "('9503.00.97','100','T','JUGUETES','07','01','')"));
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("insert into unidrel (unid1,unid2,pase) values "
                                 "('09','07',12),('09','01',3.5),('08','07',2)"));
}

// The fields the arithmetic touches, "|"-joined.
QString Resumen(const ImportadorSubItems::Preparada& p) {
    const LineaSubItem& l = p.datos;
    return QStringList{l.posicion,         l.codigoEstadistica,
                       l.unidad,           l.cantidad,
                       l.unitario,         l.fobTotal,
                       l.valorEstadistica, l.kgNeto,
                       l.idDerEsp,         l.derEsp,
                       l.lapi ? "L" : "",  p.aviso}
        .join(QLatin1Char('|'));
}

// A commercial invoice as a clerk saves it from a spreadsheet: Latin-1, ";" and decimal ",".
// Line 2: 100 kg of a kilo position at 2,5: FOB 250, statistics and net kilos 100.
// Line 3: 10 units at 12,5 of a position whose specific duty is in units.
// Line 4: a position without statistics unit. Line 5: net kilos above the gross.
// Line 6: a position whose suffixes must be typed.
const QString kFactura = QStringLiteral(
    "Posición;Descripción;Cantidad;Unidad Declarada;Unitario;KG Neto;KG Bruto;Pais de Origen\r\n"
    "9902.20.00.100B;MAÍZ D'ORO;100;01;2,5;;110;310\r\n"
    "9901.10.00.100A;MUÑECA \"BEBÉ\";10;7;12,5;5;6;310\r\n"
    "9904.40.00.100D;SIN UNIDAD;1;07;1;;;310\r\n"
    "9902.20.00.100B;TRIGO;50;01;3;60;55;310\r\n"
    "8471.30.12.100M;NOTEBOOK;2;07;450;;;310\r\n");

const QString kSufijosNotebook =
    QStringLiteral("Los sufijos de la posición piden datos (SUFIJO AA): complete la columna "
                   "Sufijos o cargue esta línea en la pantalla.");

const QString kColumnas = QStringLiteral("ncm,idunidad,cantidad,preciounitario,fob,estadistica,"
                                         "valorrelacionestadistica,deresp,valorderesp,kgneto,"
                                         "kgbruto,idpais,sufijos,descripcion");
const QString kFila1 = QStringLiteral("9902.20.00.100B|01|100|2.5|250|01|100||0|100|110|310|"
                                      "SIN SUFIJOS|MAÍZ D ORO");
const QString kFila2 = QStringLiteral("9901.10.00.100A|07|10|12.5|125|07|10|07|10|5|6|310|"
                                      "SIN SUFIJOS|MUÑECA \"BEBÉ\"");

QString Archivo(QTemporaryDir& dir, const QString& texto) {
    const QString ruta = dir.filePath(QStringLiteral("factura.csv"));
    QFile f(ruta);
    f.open(QIODevice::WriteOnly);
    f.write(texto.toLatin1());
    return ruta;
}

std::vector<LineaSubItem> Lineas(AppContext& ctx, const QString& ruta) {
    const ImportadorSubItems::Tabla t = ImportadorSubItems::LeerArchivo(ruta);
    std::vector<LineaSubItem> r;
    for (const auto& p : ImportadorSubItems(ctx).Preparar(t, ImportadorSubItems::Mapeo(t)))
        r.push_back(p.datos);
    return r;
}

QString Veredictos(const std::vector<CargaSubItems::Veredicto>& v) {
    QStringList r;
    for (const auto& x : v)
        r << (x.aceptada ? QStringLiteral("OK ") : QStringLiteral("NO ")) + x.mensaje;
    return r.join(QLatin1Char('\n'));
}

const QString kSinSufijos = QStringLiteral("No se encontro Sufijo en el nomenclador");
const QString kVeredictos =
    QStringList{QStringLiteral("OK ") + kSinSufijos, QStringLiteral("OK ") + kSinSufijos,
                QStringLiteral("NO Falta unidad estadistica"),
                QStringLiteral("NO KG Neto debe ser Menor que KG Bruto"),
                QStringLiteral("NO ") + kSufijosNotebook}
        .join(QLatin1Char('\n'));

QString Aec(TestStores& ts) {
    return ts.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), kInterno,
                                    QStringLiteral("(sin valor)"));
}

void FilasMotorYSeparador() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    for (const char* s : {",", "."}) {
        QTest::newRow(qPrintable(QStringLiteral("sqlite %1").arg(QLatin1String(s))))
            << static_cast<int>(Motor::SQLite) << QString::fromLatin1(s);
        QTest::newRow(qPrintable(QStringLiteral("postgresql %1").arg(QLatin1String(s))))
            << static_cast<int>(Motor::PostgreSQL) << QString::fromLatin1(s);
    }
}

} // namespace

class TestImportarCarga : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void verificarYGrabar_data() { FilasMotorYSeparador(); }
    void verificarYGrabar();
    void admin_data() { FilasDeMotores(); }
    void admin();
    void pantalla_data() { FilasMotorYSeparador(); }
    void pantalla();
};

void TestImportarCarga::verificarYGrabar() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    SeparadorDecimalScope sep(separador);
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    QTemporaryDir dir;
    const std::vector<LineaSubItem> lineas = Lineas(ts.ctx(), Archivo(dir, kFactura));
    CargaSubItems carga(ts.ctx(), kInterno);

    // The trial: the save's verdicts, and nothing in the stores nor in the settings.
    QCOMPARE(Veredictos(carga.Verificar(lineas)), kVeredictos);
    QCOMPARE(Lineas(ts), 0);
    QCOMPARE(Factura8(ts), QStringLiteral("N"));
    QCOMPARE(Aec(ts), QStringLiteral("(sin valor)"));
    QVERIFY(ts.dialogos().registro().isEmpty());

    // All or nothing: the third line stops the import and the first two go back.
    const CargaSubItems::Resultado todo = carga.Grabar(lineas);
    QVERIFY(!todo.grabado);
    QCOMPARE(todo.veredictos.size(), size_t(3));
    QCOMPARE(todo.veredictos.back().mensaje, QStringLiteral("Falta unidad estadistica"));
    QCOMPARE(Lineas(ts), 0);
    QCOMPARE(Factura8(ts), QStringLiteral("N"));

    // The two correct lines, as the save writes them.
    const CargaSubItems::Resultado r = carga.Grabar({lineas[0], lineas[1]});
    QVERIFY(r.grabado);
    QCOMPARE(r.grabadas, 2);
    QCOMPARE(Fila(ts, 1, kColumnas), kFila1);
    QCOMPARE(Fila(ts, 2, kColumnas), kFila2);
    QCOMPARE(Lineas(ts), 2);
    QCOMPARE(Factura8(ts), QStringLiteral("S"));
    QCOMPARE(Aec(ts), QString());
}

void TestImportarCarga::admin() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    QTemporaryDir dir, settings;
    // The stores of the test: its DataAccessConfig.ini, or without one the program's default.
    const QString ini = ts.directorio() + QStringLiteral("DataAccessConfig.ini");
    const QStringList config =
        QFile::exists(ini) ? QStringList{QStringLiteral("--config"), ini} : QStringList{};
    auto correr = [&](const QStringList& args, QString* salida, QString* errores) {
        salida->clear();
        errores->clear();
        QTextStream out(salida), err(errores);
        AdminSubItems a(out, err, ts.directorio(), settings.path());
        const int r = a.Ejecutar(args);
        out.flush();
        err.flush();
        return r;
    };
    QString out, err;
    const QString uso = QStringLiteral("Uso: korven-admin importar-subitems <interno> "
                                       "<archivo.csv> [--config F]\n");
    QCOMPARE(correr({kInterno}, &out, &err), 2);
    QCOMPARE(err, uso);
    QCOMPARE(correr({kInterno, QStringLiteral("a.csv"), QStringLiteral("--parcial")}, &out, &err),
             2);
    QCOMPARE(err, QStringLiteral("Opción desconocida: --parcial\n"));
    QCOMPARE(correr({kInterno, QStringLiteral("a.csv"), QStringLiteral("--config")}, &out, &err),
             2);
    QCOMPARE(err, QStringLiteral("Falta el valor de la opción --config.\n"));

    const QString ruta = Archivo(dir, kFactura);
    QCOMPARE(correr(QStringList{QStringLiteral("NO-HAY"), ruta} + config, &out, &err), 1);
    QCOMPARE(err, QStringLiteral("No existe el interno NO-HAY.\n"));

    // Rejected rows: every one reported by its line, nothing written.
    QCOMPARE(correr(QStringList{kInterno, ruta} + config, &out, &err), 1);
    QCOMPARE(out, QStringLiteral("Línea 4: Falta unidad estadistica\n"
                                 "Línea 5: KG Neto debe ser Menor que KG Bruto\n"
                                 "Línea 6: ") +
                      kSufijosNotebook +
                      QStringLiteral("\n3 de 5 filas rechazadas: no se importó ninguna.\n"));
    QCOMPARE(Lineas(ts), 0);

    // The correct rows alone, in a comma file with the columns of subitems and one of its own.
    const QString buenas = Archivo(dir, QStringLiteral("ncm,descripcion,cantidad,idunidad,"
                                                       "fob,kgbruto,idpais,color\n"
                                                       "9902.20.00.100B,MAÍZ D'ORO,100,01,250,"
                                                       "110,310,AMARILLO\n"));
    QCOMPARE(correr(QStringList{kInterno, buenas} + config, &out, &err), 0);
    QCOMPARE(out, QStringLiteral("Columnas que no se importan: color.\n"
                                 "Se importaron 1 filas en el interno T-SUB.\n"));
    QCOMPARE(Fila(ts, 1, kColumnas), kFila1);
}

void TestImportarCarga::pantalla() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    SeparadorDecimalScope sep(separador);
    TestStores ts(static_cast<Motor>(motor));
    PrepararSubItems(ts);
    RegistrarPantallasImportar(ts.ctx().pantallas());
    // Pasted without a header: position, description, quantity, unit, then the FOB where the
    // unit price would go, which the clerk maps with Right on the fifth column.
    const QString pegado = QStringLiteral("9902.20.00.100B\tMAIZ\t100\t01\t250\t\n"
                                          "9904.40.00.100D\tNADA\t1\t07\t1\n");
    auto resumen = [](QWidget* w) { return Control<QLabel>(w, "LbResumen")->text(); };
    auto celda = [](QWidget* w, int f, int c) {
        return Control<QTableWidget>(w, "GrdFilas")->item(f, c)->text();
    };

    // As pasted the fifth column is the unit price; Esc leaves and writes nothing.
    AlAbrirse(QStringLiteral("FrmImportarSubItems"), [&](QWidget* w) {
        QCOMPARE(resumen(w), QStringLiteral("2 filas: 1 correctas, 1 rechazadas"));
        QCOMPARE(celda(w, 0, 5), QStringLiteral("250") + separador + QStringLiteral("0000"));
        QCOMPARE(celda(w, 0, 12), QStringLiteral("Correcta: ") + kSinSufijos);
        QTest::keyClick(w->focusWidget(), Qt::Key_Escape);
    });
    QCOMPARE(FrmImportarSubItems::Importar(ts.ctx(), kInterno, pegado), 0);
    QCOMPARE(Lineas(ts), 0);
    QCOMPARE(Factura8(ts), QStringLiteral("N"));

    // Right on the fifth column makes it the FOB: 250 / 100 = 2.5 each. F12 imports the
    // correct row after the question.
    ts.dialogos().ResponderSi();
    AlAbrirse(QStringLiteral("FrmImportarSubItems"), [&](QWidget* w) {
        QWidget* lista = Control<QTreeWidget>(w, "LstColumnas");
        for (int i = 0; i < 4; ++i)
            QTest::keyClick(lista, Qt::Key_Down);
        QTest::keyClick(lista, Qt::Key_Right);
        QCOMPARE(Control<QTreeWidget>(w, "LstColumnas")->topLevelItem(4)->text(3),
                 QStringLiteral("FOB Total"));
        QTRY_COMPARE(resumen(w), QStringLiteral("2 filas: 1 correctas, 1 rechazadas"));
        QCOMPARE(celda(w, 0, 5), QStringLiteral("02") + separador + QStringLiteral("5000"));
        QCOMPARE(celda(w, 1, 12), QStringLiteral("Rechazada: Falta unidad estadistica"));
        GuardarPantallazo(QStringLiteral("FrmImportarSubItems"), w);
        QTest::keyClick(lista, Qt::Key_F12);
    });
    QCOMPARE(FrmImportarSubItems::Importar(ts.ctx(), kInterno, pegado), 1);
    QCOMPARE(ts.dialogos().todo(),
             QStringList{QStringLiteral("1 filas rechazadas no se importarán. ¿Importa las 1 "
                                        "filas correctas?")});
    QCOMPARE(Fila(ts, 1, QStringLiteral("ncm,cantidad,preciounitario,fob,kgneto,descripcion")),
             QStringLiteral("9902.20.00.100B|100|2.5|250|100|MAIZ"));
    QCOMPARE(Lineas(ts), 1);
}

class TestImportarSubItems : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void numeros_data();
    void numeros();
    void marcaDecimal_data();
    void marcaDecimal();
    void leerTexto_data();
    void leerTexto();
    void archivoLatin1();
    void preparar_data();
    void preparar();
};

void TestImportarSubItems::numeros_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("marca");
    QTest::addColumn<QString>("esperado"); // '#' is the system's decimal mark
    QTest::newRow("miles y decimales con coma") << "1.234,5"
                                                << ","
                                                << "1234#5";
    QTest::newRow("miles y decimales con punto") << "1,234.5"
                                                 << "."
                                                 << "1234#5";
    QTest::newRow("solo miles") << "1.234.567"
                                << ","
                                << "1234567";
    QTest::newRow("negativo") << "-12,75"
                              << ","
                              << "-12#75";
    QTest::newRow("entero") << " 20 "
                            << "."
                            << "20";
    QTest::newRow("miles mal agrupados") << "12.34,5"
                                         << ","
                                         << "12.34,5";
    QTest::newRow("dos marcas decimales") << "1,2,3"
                                          << ","
                                          << "1,2,3";
    QTest::newRow("texto") << "doce"
                           << ","
                           << "doce";
}

void TestImportarSubItems::numeros() {
    QFETCH(QString, texto);
    QFETCH(QString, marca);
    QFETCH(QString, esperado);
    for (const char* sep : {",", "."}) {
        SeparadorDecimalScope s(QString::fromLatin1(sep));
        QCOMPARE(ImportadorSubItems::NumeroDelSistema(texto, marca.at(0)),
                 QString(esperado).replace(QLatin1Char('#'), QLatin1String(sep)));
    }
}

void TestImportarSubItems::marcaDecimal_data() {
    QTest::addColumn<QString>("cantidades"); // one figure per row, in the quantity column
    QTest::addColumn<QString>("conComa");    // the mark under "," as system
    QTest::addColumn<QString>("conPunto");   // the mark under "."
    QTest::newRow("decimales con coma") << "10;2,5;1.500"
                                        << ","
                                        << ",";
    QTest::newRow("decimales con punto") << "10;2.5;1,500"
                                         << "."
                                         << ".";
    QTest::newRow("ambiguo: la del sistema") << "1.500;20"
                                             << ","
                                             << ".";
    QTest::newRow("cero coma: decimal") << "0,125"
                                        << ","
                                        << ",";
    QTest::newRow("miles repetidos") << "1.000.000"
                                     << ","
                                     << ",";
    QTest::newRow("contradictorio: la del sistema") << "2,5;3.25"
                                                    << ","
                                                    << ".";
}

void TestImportarSubItems::marcaDecimal() {
    QFETCH(QString, cantidades);
    QFETCH(QString, conComa);
    QFETCH(QString, conPunto);
    ImportadorSubItems::Tabla t;
    t.columnas = 2;
    int linea = 1;
    for (const QString& c : cantidades.split(QLatin1Char(';')))
        t.filas.push_back({linea++, {QStringLiteral("8471.30.12.100M"), c}});
    const std::vector<Campo> mapeo{Campo::Posicion, Campo::Cantidad};
    SeparadorDecimalScope coma(QStringLiteral(","));
    QCOMPARE(QString(ImportadorSubItems::MarcaDecimal(t, mapeo)), conComa);
    SeparadorDecimalScope punto(QStringLiteral("."));
    QCOMPARE(QString(ImportadorSubItems::MarcaDecimal(t, mapeo)), conPunto);
}

void TestImportarSubItems::leerTexto_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("mapeo"); // field captions of the columns, "|"-joined
    QTest::addColumn<QString>("filas"); // line: values "|"-joined, rows ";"-joined
    QTest::newRow("pegado sin encabezado, comillas de la planilla")
        << "\n8471.30.12.100M\t\"NOTEBOOK \"\"14\"\"\tGRIS\"\t20\r\n"
           "6403.99.90.100T\t\"ZAPATO\nDE CUERO\"\t5\t\t\n\t\t\n"
        << "\t"
        << "Posición|Descripción|Cantidad|Unidad Declarada|Unitario"
        << "2:8471.30.12.100M|NOTEBOOK \"14\"\tGRIS|20;3:6403.99.90.100T|ZAPATO\nDE CUERO|5||";
    QTest::newRow("pegado con títulos de la pantalla")
        << "Posición\tCantidad\tFOB Total\tKG Neto\tPais de Origen\tColor\n"
           "8471.30.12.100M\t20\t9.000,00\t36\t310\tNEGRO\n"
        << "\t"
        << "Posición|Cantidad|FOB Total|KG Neto|Pais de Origen|(no importar)"
        << "2:8471.30.12.100M|20|9.000,00|36|310|NEGRO";
    QTest::newRow("csv con columnas de subitems")
        << "NCM,IdUnidad,PrecioUnitario,KgBruto,Sufijos,id\n"
           "0201.10.00.100G,01,\"12,5\",10,SIN SUFIJOS,7\n"
        << ","
        << "Posición|Unidad Declarada|Unitario|KG Bruto|Sufijos|(no importar)"
        << "2:0201.10.00.100G|01|12,5|10|SIN SUFIJOS|7";
    QTest::newRow("csv con punto y coma, columna repetida")
        << "ncm;cantidad;Cantidad\n9503.00.97.100T;3;4\n"
        << ";"
        << "Posición|Cantidad|(no importar)"
        << "2:9503.00.97.100T|3|4";
}

void TestImportarSubItems::leerTexto() {
    QFETCH(QString, texto);
    QFETCH(QString, separador);
    QFETCH(QString, mapeo);
    QFETCH(QString, filas);
    const ImportadorSubItems::Tabla t = ImportadorSubItems::LeerTexto(texto);
    QCOMPARE(QString(t.separador), separador);
    QStringList campos;
    for (Campo c : ImportadorSubItems::Mapeo(t))
        campos << ImportadorSubItems::Nombre(c);
    QCOMPARE(campos.join(QLatin1Char('|')), mapeo);
    QStringList leidas;
    for (const ImportadorSubItems::Fila& f : t.filas)
        leidas << QString::number(f.linea) + QLatin1Char(':') + f.valores.join(QLatin1Char('|'));
    QCOMPARE(leidas.join(QLatin1Char(';')), filas);
}

void TestImportarSubItems::archivoLatin1() {
    QTemporaryDir dir;
    const QString ruta = dir.filePath(QStringLiteral("factura.csv"));
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(QStringLiteral("Posición;Descripción;Cantidad\r\n"
                           "8471.30.12.100M;CAÑO D'ACERO PEQUEÑO;2\r\n")
                .toLatin1());
    f.close();
    const ImportadorSubItems::Tabla t = ImportadorSubItems::LeerArchivo(ruta);
    QVERIFY(t.latin1);
    QCOMPARE(t.encabezado.join(QLatin1Char('|')), QStringLiteral("Posición|Descripción|Cantidad"));
    QCOMPARE(t.filas.size(), size_t(1));
    QCOMPARE(t.filas[0].valores.at(1), QStringLiteral("CAÑO D'ACERO PEQUEÑO"));
}

void TestImportarSubItems::preparar_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("esperado"); // Resumen of each row, ";"-joined; '#' the system mark
    // Without a header: position, description, quantity, unit, unit price, net kilos, country.
    // 20 x 450 = 9000; unit 07 is the statistics unit, so the statistics quantity is the 20.
    QTest::newRow("precio unitario: FOB = cantidad x unitario")
        << "8471.30.12.100M\tNOTEBOOK\t20\t7\t450\t\t212"
        << "8471.30.12.100M|07|07|20#00|450#0000|9000#00|20|||0||";
    // Twelve characters take the points of a position.
    QTest::newRow("posición de doce caracteres")
        << "84713012100M\tNOTEBOOK\t1,5\t07\t3,3333"
        << "8471.30.12.100M|07|07|01#50|03#3333|05#00|1#5|||0||";
    // Fourteen characters: the first row of the nomenclator by its letter (G before Q). Unit
    // 01 and statistics unit 01: the kilos are the quantity; 1500,5 x 2 = 3001.
    QTest::newRow("kilos: la cantidad es el peso")
        << "0201.10.00.100\tCARNE\t\t01\t2\t1.500,5"
        << "0201.10.00.100G|01|01|1500#50|02#0000|3001#00|1500#5|1500#5||0||";
    // Dozens: 10 dozen are 120 units (statistics) and 35 kilos (unidrel 09->01 3.5), and the
    // specific-duty unit is the kilo.
    QTest::newRow("docenas por unidrel")
        << "9503.00.97.100T\tJUGUETE\t10\t9\t24"
        << "9503.00.97.100T|07|09|10#00|24#0000|240#00|120|35|01|35||";
    // Pairs: the specific-duty unit is the statistics unit (08) and LAPI is marked; kilos given.
    QTest::newRow("pares con derecho específico")
        << "6403.99.90.100T\tZAPATO\t120\t08\t18,5\t96"
        << "6403.99.90.100T|08|08|120#00|18#5000|2220#00|120|96|08|120|L|";
    // Unit without conversion to the statistics unit: left for the save to refuse.
    QTest::newRow("sin conversión de unidad")
        << "8471.30.12.100M\tNOTEBOOK\t3\t02\t100"
        << "8471.30.12.100M|07|02|03#00|100#0000|300#00||||0||";
    QTest::newRow("posición inexistente")
        << "9999.99.99.999Z\tNADA\t1\t07\t1"
        << "9999.99.99.999Z||07|01#00|01#0000|01#00||||0||POSICIÓN INEXISTENTE, en el Nomenclador";
    QTest::newRow("posición corta") << "8471.30\tNADA\t1\t07\t1"
                                    << "8471.30||07|01#00|01#0000|01#00||||0||Longitud erronea del "
                                       "Posición";
    // With a header: the FOB is given, the unit price is the quotient 1000 / 3.
    QTest::newRow("FOB dado: unitario = FOB / cantidad")
        << "ncm;cantidad;idunidad;fob\n8471.30.12.100M;3;07;1000\n"
        << "8471.30.12.100M|07|07|03#00|333#3333|1000#00|3|||0||";
    // Statistics quantity given on a kilo position: net kilos and quantity follow it.
    QTest::newRow("cantidad estadística dada")
        << "ncm,idunidad,valorrelacionestadistica,preciounitario\n0201.10.00.900Q,01,250,4\n"
        << "0201.10.00.900Q|01|01|250#00|04#0000|1000#00|250|250||0||";
    // Units with a weight each: 4 x 2.25 kg.
    QTest::newRow("kilos por unidad")
        << "posicion\tcantidad\tunidad\tunitario\tKg Net. Unit\n"
           "9503.00.97.100T\t4\t07\t10\t2,25\n"
        << "9503.00.97.100T|07|07|04#00|10#0000|40#00|4|09#00|01|09#00||";
    // Figures that are no numbers stay for the save to refuse.
    QTest::newRow("cantidad no numérica") << "8471.30.12.100M\tNOTEBOOK\tveinte\t07\t450"
                                          << "8471.30.12.100M|07|07|veinte|450|||||0||";
}

void TestImportarSubItems::preparar() {
    QFETCH(QString, texto);
    QFETCH(QString, esperado);
    for (Motor motor : {Motor::SQLite, Motor::PostgreSQL}) {
        QString motivo;
        if (!TestStores::Disponible(motor, &motivo))
            QSKIP(qPrintable(motivo));
        TestStores ts(motor);
        PrepararNomenclador(ts);
        for (const char* sep : {",", "."}) {
            SeparadorDecimalScope s(QString::fromLatin1(sep));
            ImportadorSubItems imp(ts.ctx());
            const ImportadorSubItems::Tabla t = ImportadorSubItems::LeerTexto(texto);
            QStringList r;
            for (const auto& p : imp.Preparar(t, ImportadorSubItems::Mapeo(t)))
                r << Resumen(p);
            QCOMPARE(r.join(QLatin1Char(';')),
                     QString(esperado).replace(QLatin1Char('#'), QLatin1String(sep)));
        }
    }
}

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestImportarSubItems, TestImportarCarga>(argc, argv);
}

#include "test_importar_carga.moc"
