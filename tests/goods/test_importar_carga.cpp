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

namespace {

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

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestImportarCarga>(argc, argv);
}

#include "test_importar_carga.moc"
