// The header without its screen: the rules that need no store (check digit, currency
// arithmetic, option codes, dates, the invoice text), the look-ups of codes and persons, and the
// load and save of the header with invoices, packages, transport agents and ONCCA data, on SQLite
// and on PostgreSQL.

#include "FixtureCaratula.h"
#include "header/BusquedaPersonas.h"
#include "header/CambioDivisas.h"
#include "header/CaratulaDatos.h"
#include "header/DigitoVerificador.h"
#include "header/DisposicionCaratula.h"
#include "header/Facturas.h"
#include "header/FechasTexto.h"
#include "header/ImportesCaratula.h"
#include "header/ListasCodigos.h"
#include "header/PickLists.h"
#include "header/Transportes.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "support/Principal.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

// Rules of the header that need no store: check digit, currency arithmetic, option codes,
// dates and the invoice text.
class TestReglas : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void digitoVerificador_data();
    void digitoVerificador();
    void multiplicar_data();
    void multiplicar();
    void seguroPorcentual_data();
    void seguroPorcentual();
    void fechas_data();
    void fechas();
    void factura1_data();
    void factura1();
};

void TestReglas::digitoVerificador_data() {
    QTest::addColumn<QString>("cuit");
    QTest::addColumn<bool>("valido");
    QTest::addColumn<int>("digito");
    // Sums worked out by hand: 2*5+0*4+1*3+2*2+3*7+4*6+5*5+6*4+7*3+8*2 = 148, 148 mod 11 = 5.
    QTest::newRow("resto 5") << "20123456786" << true << 6;
    QTest::newRow("resto 5, digito errado") << "20123456787" << false << 6;
    // 3*5+7*3+1*2+2*7+3*6+4*5+5*4+6*3+7*2 = 142, mod 11 = 10: 11 - 10 = 1.
    QTest::newRow("resto 10") << "30712345671" << true << 1;
    // 2*3+3*... : 23000000000 sums 2*5+3*4 = 22, mod 11 = 0: the digit is 0.
    QTest::newRow("resto 0") << "23000000000" << true << 0;
    // 2*5+1*2 = 12, mod 11 = 1: the remainder itself is the digit.
    QTest::newRow("resto 1") << "20000000011" << true << 1;
    QTest::newRow("diez digitos") << "2012345678" << false << 6;
    QTest::newRow("doce digitos") << "201234567860" << false << 6;
    QTest::newRow("con guiones") << "20-12345678" << false << -1;
    QTest::newRow("letra al final") << "2012345678X" << false << 6;
}

void TestReglas::digitoVerificador() {
    QFETCH(QString, cuit);
    QFETCH(bool, valido);
    QFETCH(int, digito);
    QCOMPARE(DigitoVerificador::Valido(cuit), valido);
    QCOMPARE(DigitoVerificador::Calcular(cuit), digito);
}

void TestReglas::multiplicar_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("cambio");
    QTest::addColumn<QString>("dolares"); // "-": not computed
    const char* casos[][4] = {
        {"entero", "1000.00", "1.000000", "1000.00"},
        // 1234.50 x 1.085 = 1339.4325, shown as 1339.43.
        {"euro", "1234.50", "1.085000", "1339.43"},
        // 10.005 x 1 = 10.005: half away from zero on the decimal value.
        {"medio", "10.005", "1.000000", "10.01"},
        {"cero da vacio", "0.00", "1.000000", ""},
        {"cambio vacio", "1000.00", "", "-"},
        {"valor texto", "abc", "1.000000", "-"},
    };
    for (const char* sep : {",", "."}) {
        auto n = [&](const char* t) {
            return QString::fromLatin1(t).replace('.', QLatin1String(sep));
        };
        for (const auto& c : casos)
            QTest::addRow("%s %s", c[0], sep) << sep << n(c[1]) << n(c[2]) << n(c[3]);
    }
}

void TestReglas::multiplicar() {
    QFETCH(QString, separador);
    QFETCH(QString, valor);
    QFETCH(QString, cambio);
    QFETCH(QString, dolares);
    SeparadorDecimalScope sep(separador);
    QCOMPARE(ImportesCaratula::Multiplicar(valor, cambio).value_or(QStringLiteral("-")), dolares);
}

void TestReglas::seguroPorcentual_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("entrada"); // percentage|FOB|freight|to prorate|codes|rate
    QTest::addColumn<QString>("salida");  // dollars|currency; "-" computes nothing
    const char* casos[][3] = {
        // (1000 + 200) x 1.5% = 18.00; in a currency of 2.000000: 9.00.
        {"fob y flete", "1.50|1000.00|200.00||0|2.000000", "18.00|09.00"},
        // With the proration codes (150) and the value to prorate (50):
        // (1000 + 200 + 150 + 50) x 1% = 14.00.
        {"con prorrateo", "1.00|1000.00|200.00|50.00|150|1.000000", "14.00|14.00"},
        // Codes above 0 count even with no value to prorate: (1000 + 200 + 150) x 1% = 13.50.
        {"solo codigos", "1.00|1000.00|200.00||150|1.000000", "13.50|13.50"},
        // 1234.56 x 0.5% = 6.1728 -> 6.17; / 3 = 2.0566 -> 2.06.
        {"redondeo", "0.50|1034.56|200.00||0|3.000000", "06.17|02.06"},
        {"sin cambio", "1.00|1000.00|200.00||0|", "12.00|"},
        {"porcentaje cero", "0.00|1000.00|200.00||0|1.000000", "-"},
        // Freight 0 leaves its dollars field empty: nothing is computed.
        {"sin flete", "1.00|1000.00|||0|1.000000", "-"},
    };
    for (const char* sep : {",", "."})
        for (const auto& c : casos)
            QTest::addRow("%s %s", c[0], sep)
                << sep << QString::fromLatin1(c[1]).replace('.', QLatin1String(sep))
                << QString::fromLatin1(c[2]).replace('.', QLatin1String(sep));
}

void TestReglas::seguroPorcentual() {
    QFETCH(QString, separador);
    QFETCH(QString, entrada);
    QFETCH(QString, salida);
    SeparadorDecimalScope sep(separador);
    const QStringList e = entrada.split(QLatin1Char('|'));
    const auto r =
        ImportesCaratula::SeguroPorcentual(e[0], e[1], e[2], e[3], e[4].toDouble(), e[5]);
    QCOMPARE(r.has_value(), salida != QStringLiteral("-"));
    if (r)
        QCOMPARE(r->dolares + QLatin1Char('|') + r->divisas, salida);
    if (r)
        QCOMPARE(r->conDivisas, !salida.endsWith(QLatin1Char('|')));
}

void TestReglas::fechas_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QDate>("fecha");
    QTest::newRow("barras") << "22/11/2026" << QDate(2026, 11, 22);
    QTest::newRow("guiones") << "05-03-2027" << QDate(2027, 3, 5);
    QTest::newRow("dos digitos") << "22-11-26" << QDate(2026, 11, 22);
    QTest::newRow("siglo pasado") << "01/01/45" << QDate(1945, 1, 1);
    QTest::newRow("un digito") << "1/2/2026" << QDate(2026, 2, 1);
    QTest::newRow("iso") << "2026-11-22" << QDate(2026, 11, 22);
    QTest::newRow("puntos") << "22.11.2026" << QDate(2026, 11, 22);
    QTest::newRow("30 de febrero") << "30/02/2026" << QDate();
    QTest::newRow("mes 13") << "01/13/2026" << QDate();
    QTest::newRow("texto") << "mañana" << QDate();
    QTest::newRow("vacio") << "" << QDate();
}

void TestReglas::fechas() {
    QFETCH(QString, texto);
    QFETCH(QDate, fecha);
    QCOMPARE(FechasTexto::Leer(texto), fecha);
    QCOMPARE(FechasTexto::EsFecha(texto), fecha.isValid());
}

void TestReglas::factura1_data() {
    QTest::addColumn<QStringList>("facturas");
    QTest::addColumn<QString>("texto");
    QTest::newRow("ninguna") << QStringList() << QString();
    QTest::newRow("una") << QStringList{"A-0001"} << "A-0001";
    QTest::newRow("dos") << QStringList{"A-0001", "B-22"} << "A-0001,B-22";
    // Eight numbers of nine characters make 8 x 10 = 80 characters with their commas: the last
    // comma goes, 79 remain.
    const QStringList ocho = {"F00000001", "F00000002", "F00000003", "F00000004",
                              "F00000005", "F00000006", "F00000007", "F00000008"};
    QTest::newRow("justo 80") << ocho
                              << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,"
                                 "F00000007,F00000008";
    // A ninth: cut to 80 (ending in the comma after the eighth), then one more goes.
    QTest::newRow("mas de 80") << (QStringList(ocho) << "F00000009")
                               << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,"
                                  "F00000007,F00000008";
    // 81 characters with the commas: cut to 80 ends inside the last number, which loses one
    // more character.
    QTest::newRow("corta un numero")
        << (QStringList(ocho.mid(0, 7)) << "G123456789")
        << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,F00000007,G12345678";
}

void TestReglas::factura1() {
    QFETCH(QStringList, facturas);
    QFETCH(QString, texto);
    const QString r = CaratulaDatos::Factura1(facturas);
    QCOMPARE(r, texto);
    QVERIFY(r.size() <= 79);
}

// The shared code look-ups, the list dialogs, the persons' look-ups and the exchange-rate check,
// on SQLite and on PostgreSQL.
namespace {

QString Inexistente(const QString& tabla) {
    return QStringLiteral("CODIGO INEXISTENTE DE %1\n\nNo se enconto DESCRIPCIÓN para esta "
                          "CLAVE\n\n[CARATULA.BUSCARDESCRIPCION.%1]")
        .arg(tabla);
}

// A list screen that remembers what it was given and chooses the row of a given code.
struct ListadoGuionado {
    QVariantMap recibido;
    QString elegir;
    void Registrar(AppContext& ctx) {
        ctx.pantallas().Registrar(
            QStringLiteral("FrmListado"), [this](AppContext&, const QVariantMap& args) {
                recibido = args;
                const QStringList c = args.value(QStringLiteral("codigos")).toStringList();
                const QStringList v = args.value(QStringLiteral("valores")).toStringList();
                const int i = static_cast<int>(c.indexOf(elegir));
                return QVariant(i < 0 ? QString() : v.value(i));
            });
    }
};

double Imp(TestStores& ts, const char* id) {
    return EsNumero(ts.conexion(QStringLiteral("INTERNOS"))
                        .Escalar(QStringLiteral("select imp from divisas where id = '%1'")
                                     .arg(QString::fromLatin1(id))));
}

} // namespace

class TestCaratulaDatos : public QObject {
    Q_OBJECT
    // One set of stores per engine, for the rows that put back what they change; each row
    // starts from a new P-1.
    std::unique_ptr<TestStores> stores_[2];
    ListadoGuionado listado;
    TestStores& Compartidas(int motor) {
        if (!stores_[motor]) {
            stores_[motor] = std::make_unique<TestStores>(static_cast<Motor>(motor));
            PrepararCaratula(*stores_[motor]);
        }
        TestStores& ts = *stores_[motor];
        ts.dialogos().Limpiar();
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("delete from caratula where interno = 'P-1'"));
        NuevaOperacion(ts, QStringLiteral("P-1"));
        return ts;
    }
private Q_SLOTS:
    void cleanupTestCase() {
        stores_[0].reset();
        stores_[1].reset();
    }
    void buscarDescripcion_data();
    void buscarDescripcion();
    void filas_data();
    void filas();
    void pickLists_data();
    void pickLists();
    void cortes_data() { FilasDeMotores(); }
    void cortes();
    void personas_data() { FilasDeMotores(); }
    void personas();
    void verificarCambio_data();
    void verificarCambio();
    void cargar_data() { FilasDeMotores(); }
    void cargar();
    void guardar_data();
    void guardar();
    void controles_data();
    void controles();
    void sinRegistro_data() { FilasDeMotores(); }
    void sinRegistro();
    void disposicion_data() { FilasDeMotores(); }
    void disposicion();
    void facturas_data() { FilasDeMotores(); }
    void facturas();
    void transportes_data() { FilasDeMotores(); }
    void transportes();
};

void TestCaratulaDatos::buscarDescripcion_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("lista");
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("descripcion");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("mensaje");
    struct Caso {
        const char* nombre;
        const char* lista;
        const char* codigo;
        const char* descripcion;
        const char* extra;
        QString mensaje;
    };
    const Caso casos[] = {
        {"subregimen import", "SUBREG", "IC04", "IMPORTACION A CONSUMO", "I", {}},
        {"subregimen export", "SUBREG", "EC01", "EXPORTACION A CONSUMO", "E", {}},
        {"aduana", "ADUANA", "073", "EZEIZA", "", {}},
        {"codigo de embarque", "CODEMB", "32", "CONTENEDOR", "", {}},
        {"tipo de embarque", "TIPOEMB", "A", "CAJA", "", {}},
        {"condicion de venta", "CODVENTA", "FOB", "FREE ON BOARD", "", {}},
        {"pais en systablas", "PAIS", "212", "ESTADOS UNIDOS", "", {}},
        {"motivos", "MOTIVOS", "M1", "MOTIVO UNO", "", {}},
        {"via", "VIA", "4", "AEREA", "", {}},
        {"estado", "ESTADOMERCADERIA", "U", "USADO", "", {}},
        {"unidades", "UNIDADES", "07", "UNIDAD", "", {}},
        {"puerto", "PUERTO", "ROS", "ROSARIO", "", {}},
        // The rate comes as "00.000000" in the system separator: see the test.
        {"divisa", "DIVISAS", "060", "EURO", "01.085000", {}},
        {"divisa sin cambio", "DIVISAS", "001", "PESO", "00.000000", {}},
        {"codigo vacio", "ADUANA", "", "", "", {}},
        {"aduana inexistente", "ADUANA", "999", "", "", Inexistente("ADUANA")},
        {"subregimen inexistente", "SUBREG", "XX01", "", "", Inexistente("sta")},
        {"condicion inexistente", "CODVENTA", "EXW", "", "", Inexistente("CONDICIONDEVENTA")},
        {"pais inexistente", "PAIS", "999", "", "", Inexistente("PAIS")},
        {"puerto inexistente", "PUERTO", "XXX", "", "", Inexistente("PUERTOS")},
        {"apostrofo", "ADUANA", "0'1", "", "", Inexistente("ADUANA")},
    };
    for (int motor : {0, 1}) {
        for (const Caso& c : casos) {
            QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", c.nombre)
                << motor << c.lista << c.codigo << c.descripcion << c.extra << c.mensaje;
        }
    }
}

void TestCaratulaDatos::buscarDescripcion() {
    MOTOR_O_SALTAR();
    QFETCH(QString, lista);
    QFETCH(QString, codigo);
    QFETCH(QString, descripcion);
    QFETCH(QString, extra);
    QFETCH(QString, mensaje);
    TestStores& ts = Compartidas(motor);
    for (const char* s : {",", "."}) {
        SeparadorDecimalScope sep(QString::fromLatin1(s));
        ts.dialogos().Limpiar();
        QString obtenido;
        QCOMPARE(ListasCodigos(ts.ctx()).BuscarDescripcion(lista, codigo, &obtenido), descripcion);
        QCOMPARE(obtenido, QString(extra).replace(QLatin1Char('.'), QString::fromLatin1(s)));
        QCOMPARE(ts.dialogos().mensajes(),
                 mensaje.isEmpty() ? QStringList() : QStringList{mensaje});
    }
}

void TestCaratulaDatos::filas_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("lista");
    QTest::addColumn<QStringList>("codigos");
    QTest::addColumn<QStringList>("textos");
    const char* casos[][3] = {
        // Ordered by description, then code; the rate as "000.000000".
        {"DIVISAS", "DOL|060|001",
         "DOL\tDOLAR ESTADOUNIDENSE\t001,000000|060\tEURO\t001,085000|001\tPESO\t000,000000"},
        {"BANCOS", "007|011", "007\tBANCO GALICIA (007)|011\tBANCO NACION (011)"},
        // The temporary motives hand over the code and the days.
        {"MOTIVOSTEMPI", "T2|90|T1|180", "T2\tEXHIBICION|T1\tPERFECCIONAMIENTO"},
        {"MOTIVOSTEMPE", "T9|60", "T9\tREPARACION"},
        // Longest codes first, then by description.
        {"PAIS", "203|212|1", "203\tBRASIL|212\tESTADOS UNIDOS|1\tZONA FRANCA"},
        {"SUBREG", "EC01|EC16|IC04|IT01|ZZ99",
         "EC01\tEXPORTACION A CONSUMO|EC16\tEXPORTACION CON FACILIDAD|IC04\tIMPORTACION A "
         "CONSUMO|IT01\tIMPORTACION TEMPORAL|ZZ99\tSIN DESTINO"},
        {"UNIDADES", "01|07", "01\t KILOGRAMO|07\t UNIDAD"},
        {"PUERTO", "BUE|ROS", "BUE\tBUENOS AIRES|ROS\tROSARIO"},
        {"ADUANA", "001|073|033", "001\tBUENOS AIRES|073\tEZEIZA|033\tROSARIO"},
    };
    for (int motor : {0, 1})
        for (const auto& c : casos)
            QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", c[0])
                << motor << c[0] << QString::fromLatin1(c[1]).split(QLatin1Char('|'))
                << QString::fromLatin1(c[2]).split(QLatin1Char('|'));
}

void TestCaratulaDatos::filas() {
    MOTOR_O_SALTAR();
    QFETCH(QString, lista);
    QFETCH(QStringList, codigos);
    QFETCH(QStringList, textos);
    TestStores& ts = Compartidas(motor);
    SeparadorDecimalScope sep(QStringLiteral(","));
    QStringList c, t;
    for (const ListasCodigos::Fila& f : ListasCodigos(ts.ctx()).Filas(lista)) {
        c << f.codigo.split(QLatin1Char('|'));
        t << f.texto;
    }
    QCOMPARE(c, codigos);
    QCOMPARE(t, textos);
}

void TestCaratulaDatos::pickLists_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("metodo");
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("descripcion");
    // clang-format off
    const char* casos[][3] = {
        {"getAduanaDescripcion", "001", "BUENOS AIRES"}, {"getPaisDescripcion", "203", "BRASIL"},
        {"getEstadoMercaderiaDescripcion", "N", "NUEVO"}, {"getUnidadesDescripcion", "01", "KILOGRAMO"},
        {"getVIADescripcion", "1", "MARITIMA"}, {"getTipoEmbarqueDescripcion", "B", "BOLSA"},
        {"getCodigoEmbarqueDescripcion", "10", "PALLET"}, {"getCondicionVentaDescripcion", "CIF", "COSTO SEGURO Y FLETE"},
        {"getSubRegimen", "IT01", "IMPORTACION TEMPORAL"}, {"getONCCAAcuerdo", "AC1", "CUOTA HILTON"},
        {"getONCCACategoria", "NOV", "NOVILLO"}, {"getONCCAElaborador", "E1", "FRIGORIFICO SUR"},
        {"getONCCAEspecie", "BOV", "BOVINA"}, {"getONCCAFaneador", "F2", "FANEADOR OESTE"},
        {"getONCCAMecoorgbio", "ORG", "ORGANICO"}, {"getONCCAres3106", "R1", "CON RESOLUCION"},
        {"getONCCASisPro", "P1", "PASTORIL"},
        // Unknown codes answer empty, without a message.
        {"getAduanaDescripcion", "999", ""}, {"getVIADescripcion", "", ""}, {"getONCCASisPro", "P9", ""},
    };
    // clang-format on
    for (int motor : {0, 1})
        for (const auto& c : casos)
            QTest::addRow("%s %s %s", motor ? "postgresql" : "sqlite", c[0], c[1])
                << motor << c[0] << c[1] << c[2];
}

void TestCaratulaDatos::pickLists() {
    MOTOR_O_SALTAR();
    QFETCH(QString, metodo);
    QFETCH(QString, codigo);
    QFETCH(QString, descripcion);
    TestStores& ts = Compartidas(motor);
    PickLists p(ts.ctx());
    // Reached by its name, late-bound, as other libraries reach it.
    QString r;
    QVERIFY(QMetaObject::invokeMethod(&p, metodo.toLatin1().constData(), Q_RETURN_ARG(QString, r),
                                      Q_ARG(QString, codigo)));
    QCOMPARE(r, descripcion);
    QVERIFY(ts.dialogos().registro().isEmpty());
}

void TestCaratulaDatos::cortes() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    PickLists p(ts.ctx());
    QCOMPARE(p.getONCCACortes(QStringLiteral("C2"), QString()), QStringLiteral("BIFE"));
    QCOMPARE(p.getONCCACortes(QStringLiteral("C2"), QStringLiteral("NOV")), QString());
    QCOMPARE(p.getONCCACortes(QStringLiteral("C1"), QStringLiteral("0201.30.00.900Z")),
             QStringLiteral("LOMO"));
    listado.Registrar(ts.ctx());
    // The cuts of one category, all of them with an empty filter, or those of a position.
    const QList<std::array<QString, 3>> filtros = {
        {"NOV", "C1", "C1"}, {"", "C1", "C1,C2"}, {"0202.30.00.100A", "C2", "C2"}};
    for (const auto& f : filtros) {
        listado.elegir = f[1];
        QCOMPARE(p.getONCCACortesListado(f[0]), f[1]);
        QCOMPARE(listado.recibido.value(QStringLiteral("codigos")).toStringList().join(','), f[2]);
        QCOMPARE(listado.recibido.value(QStringLiteral("titulo")).toString(),
                 QStringLiteral("ONCCA - Corte"));
    }
    listado.elegir = QStringLiteral("M1");
    QCOMPARE(p.getMotivosListado(), QStringLiteral("M1"));
    QCOMPARE(listado.recibido.value(QStringLiteral("titulo")).toString(),
             QStringLiteral("Buscar MOTIVOS"));
}

void TestCaratulaDatos::personas() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    BusquedaPersonas b(ts.ctx());
    QCOMPARE(b.BuscarDespachante("20123456786"), QStringLiteral("DESPACHANTE PRUEBA"));
    const BusquedaPersonas::Cliente c = b.BuscarCliente(QStringLiteral("30712345671"));
    QVERIFY(c.encontrado && c.regalias == 1.0 && c.ajxvinc4102 == 0.0);
    QCOMPARE(c.nombre, QStringLiteral("O'HIGGINS S.A."));
    QVERIFY(!b.BuscarCliente(QStringLiteral("30000000000")).encontrado);
    QCOMPARE(b.NombrePersona("vendedor", "V01"), QStringLiteral("VENDEDOR UNO"));
    QCOMPARE(b.NombrePersona("despadu", "1"), QString());
    QVERIFY(ts.dialogos().registro().isEmpty());
    // Ten digits: the name stays empty. The check digit is not tested here.
    QCOMPARE(b.BuscarDespachante("2012345678"), QString());
    QCOMPARE(b.BuscarDespachante("20123456787"), QString());
    QVERIFY(!b.BuscarCliente(QString()).encontrado);
    QCOMPARE(ts.dialogos().mensajes(),
             (QStringList{"Cuit Invalido", "No se encontro el CUIT Ingresado",
                          "Falta ingresar CUIT como parametro"}));
}

void TestCaratulaDatos::verificarCambio_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("valor"); // with "." for the decimal point
    QTest::addColumn<int>("respuesta"); // -1 no question, 0 No, 1 Yes
    QTest::addColumn<double>("imp");
    QTest::addColumn<QString>("mensaje");
    for (int motor : {0, 1}) {
        for (const char* s : {",", "."}) {
            const char* m = motor ? "postgresql" : "sqlite";
            // clang-format off
            QTest::addRow("%s %s igual", m, s) << motor << s << "060" << "1.085000" << -1 << 1.085 << "";
            // The seventh decimal does not count.
            QTest::addRow("%s %s septimo decimal", m, s) << motor << s << "060"
                                                         << "1.0850004" << -1 << 1.085 << "";
            QTest::addRow("%s %s distinto no", m, s) << motor << s << "060" << "1.1" << 0 << 1.085 << "";
            QTest::addRow("%s %s distinto si", m, s)
                << motor << s << "060"
                << "1.1" << 1 << 1.1 << "Valor Guardado Correctamente.";
            QTest::addRow("%s %s inexistente", m, s)
                << motor << s << "999"
                << "1.1" << -1 << 1.085 << "No se encontro codigo de DIVISAS en base.";
            QTest::addRow("%s %s sin codigo", m, s) << motor << s << "  " << "1.1" << -1 << 1.085 << "";
            // clang-format on
        }
    }
}

void TestCaratulaDatos::verificarCambio() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    QFETCH(QString, codigo);
    QFETCH(QString, valor);
    QFETCH(int, respuesta);
    QFETCH(double, imp);
    QFETCH(QString, mensaje);
    TestStores& ts = Compartidas(motor);
    SeparadorDecimalScope sep(separador);
    valor.replace(QLatin1Char('.'), separador);
    if (respuesta == 1)
        ts.dialogos().ResponderSi();
    else if (respuesta == 0)
        ts.dialogos().ResponderNo();
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update divisas set imp = 1.085 where id = '060'"));
    CambioDivisas(ts.ctx()).VerificarCambio(codigo, valor);
    QVERIFY(ts.dialogos().guionAgotado());
    QCOMPARE(Imp(ts, "060"), imp);
    QCOMPARE(ts.dialogos().mensajes(), mensaje.isEmpty() ? QStringList() : QStringList{mensaje});
    if (respuesta >= 0) {
        const QString pregunta =
            QStringLiteral("El valor ingresado por usted es %1 este valor no corresponde al que "
                           "tiene guardado en la tabla de Divisas que es %2, desea guardar el "
                           "nuevo valor como predeterminado.")
                .arg(valor, QStringLiteral("1.085000").replace(QLatin1Char('.'), separador));
        QCOMPARE(ts.dialogos().todo().first(), pregunta);
    }
}

// Load and save of the header, what the sub-regime makes of the screen, invoices, packages,
// transport agents and ONCCA data, on SQLite and on PostgreSQL.
namespace {

const QString kSalir = QStringLiteral("desea SALIR de la caratula, sin guardar la información?");

// Every field of the screen, visible, as a clerk leaves an import header (numbers with ".";
// the test turns them into the separator in use).
CaratulaDatos::Pantalla PantallaImport(const QString& sep) {
    CaratulaDatos::Pantalla p;
    const QString campos = QStringLiteral(
        "TxtSubReg=IC04;txtIdAduana1=001;TxtIdAduana2=073;TxtCUITCliente=30712345671;"
        "TxtNombre=O'HIGGINS S.A.;TxtCuitAduana=20123456786;TxtNombreadu=DESPACHANTE PRUEBA;"
        "Txtidvendedor=V01;TxtNombreven=VENDEDOR UNO;Txtfobdivisas=1234.50;TxtCoddivfob=060;"
        "TxtDivValorFob=1.085000;TxtDolFob=1339.43;Txtfletedivisas=200.00;TxtCodDivFlete=DOL;"
        "TxtDivValorFlete=1.000000;Txtsegurodivisas=15.39;TxtCodDivseguro=DOL;"
        "TxtDivValorSeguro=1.000000;TxtPorc=1.00;TxtProrratear=50.00;TxtAjustIncluir=10.50;"
        "TxtAjustDeducir=2.25;TxtFactCon=;Txtidcondventa=FOB;Txtidpais=212;Txtmotdestsusp=T1;"
        "TxtautdestSusp=AUT-1;TxtPlazoaut=20-05-2027;TxtCierreVenta=15/11/2026;"
        "cboFacilidadPago=;txtDepAlm=DEPOSITO 'NORTE';txtDCEstMerc=N;chkDCForzarEstMerc=S;"
        "txtDCPaisOrigen=203;chkDCForzarPaisOrigen=N;txtDCPaisDest=212;txtDCStandard=N;"
        "TxtDCRegalias=S;txtDCBancos=;txtKgNeto=850.75;txtDCComiExt=12.40;"
        "cboOpcionIVA=IVAAD1;cboOpcionesGanancias=BDEUSO;txtFechaEmbarque=3/11/2026");
    for (const QString& c : campos.split(QLatin1Char(';'))) {
        const QString control = c.section(QLatin1Char('='), 0, 0);
        p.Poner(control, c.section(QLatin1Char('='), 1)
                             .replace(QRegularExpression(QStringLiteral("(\\d)\\.(\\d)")),
                                      QStringLiteral("\\1") + sep + QStringLiteral("\\2")));
        p.Visible(control, true);
    }
    p.Visible(QStringLiteral("TxtFactura"), true);
    // The payment facility exists for one sub-regime only.
    p.Visible(QStringLiteral("cboFacilidadPago"), false);
    p.facturas = QStringList{"A-0001-00000123", "A-0001-00000124"};
    return p;
}

} // namespace

void TestCaratulaDatos::cargar() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    NuevaOperacion(ts, QStringLiteral("NUEVA"));
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral(
            "insert into caratula (interno,idsubreg,idaduana,cuitcliente,fobdivisas,fobcoddivisas,"
            "fobdivcambio,factorconver,facilidadpago,facturas,dcforzarestmerc,dcstandard,"
            "dcregalias,opcionesiva,fechaembarque) values ('P-100','IC04','001','30712345671',"
            "1234.5,'060',1.0850004,0.5,'X','S','S','','S','IVAAD2','03/11/2026')"));
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("insert into facturas (interno,orden,factura) values "
                                 "('P-100',2,'B'),('P-100',1,'A')"));
    CaratulaDatos cd(ts.ctx());
    for (const char* s : {",", "."}) {
        SeparadorDecimalScope sep(QString::fromLatin1(s));
        const auto carga = cd.Cargar(QStringLiteral("P-100"));
        QVERIFY(carga.has_value());
        QHash<QString, QString> v;
        QStringList orden;
        for (const CaratulaDatos::Valor& x : carga->valores) {
            v.insert(x.campo.control, x.texto);
            orden << x.campo.columna;
        }
        // The order of the columns of the record.
        QCOMPARE(orden.mid(0, 7), (QStringList{"idsubreg", "idaduana", "idaduanasal", "cuitcliente",
                                               "cuitdespaduana", "idvendedor", "fobdivisas"}));
        QCOMPARE(orden.last(), QStringLiteral("opcionesganancias"));
        QStringList vistos;
        for (const char* c :
             {"TxtSubReg", "Txtfobdivisas", "TxtDivValorFob", "TxtFactCon", "Txtfletedivisas",
              "cboFacilidadPago", "ChFacturas", "chkDCForzarEstMerc", "chkDCForzarPaisOrigen",
              "txtDCStandard", "TxtDCRegalias", "cboOpcionIVA", "txtFechaEmbarque"})
            vistos << QString::fromLatin1(c) + QLatin1Char('=') + v.value(c);
        // A NULL stays empty, a facility neither S nor N too.
        QCOMPARE(vistos.join(';'),
                 QStringLiteral("TxtSubReg=IC04;Txtfobdivisas=1234.50;TxtDivValorFob=1.085000;"
                                "TxtFactCon=0.5;Txtfletedivisas=;cboFacilidadPago=;ChFacturas=S;"
                                "chkDCForzarEstMerc=S;chkDCForzarPaisOrigen=N;txtDCStandard=N;"
                                "TxtDCRegalias=S;cboOpcionIVA=IVAAD2;txtFechaEmbarque=03/11/2026")
                     .replace(QLatin1Char('.'), QLatin1String(s)));
        QCOMPARE(carga->facturas, (QStringList{"A", "B"}));
    }
    QCOMPARE(cd.SumaProrrateo(QStringLiteral("P-100")), 150.0);
    QCOMPARE(cd.SumaProrrateo(QStringLiteral("NUEVA")), 0.0);

    // A new Operation: empty fields, "N" in standard and royalties.
    const auto nueva = cd.Cargar(QStringLiteral("NUEVA"));
    QVERIFY(nueva.has_value());
    for (const CaratulaDatos::Valor& x : nueva->valores) {
        if (x.campo.control == QStringLiteral("txtDCStandard") ||
            x.campo.control == QStringLiteral("TxtDCRegalias") ||
            x.campo.tipo == CaratulaDatos::Tipo::Marca)
            QCOMPARE(x.texto, QStringLiteral("N"));
        else
            QVERIFY2(x.texto.isEmpty(), qPrintable(x.campo.control));
    }
    QVERIFY(ts.dialogos().registro().isEmpty());
}

void TestCaratulaDatos::guardar_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    for (int motor : {0, 1})
        for (const char* s : {",", "."})
            QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", s) << motor << s;
}

void TestCaratulaDatos::guardar() {
    MOTOR_O_SALTAR();
    QFETCH(QString, separador);
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    NuevaOperacion(ts, QStringLiteral("P-1"));
    SeparadorDecimalScope sep(separador);
    CaratulaDatos::Pantalla p = PantallaImport(separador);
    // Ten invoices of 15 characters: 160 with the commas; cut to 80 (five numbers with their
    // commas), the last comma goes.
    for (int i = 125; i < 133; ++i)
        p.facturas << QStringLiteral("A-0001-00000%1").arg(i);
    QString foco;
    QCOMPARE(CaratulaDatos(ts.ctx()).Guardar(QStringLiteral("P-1"), p, &foco),
             CaratulaDatos::Resultado::Guardado);
    QVERIFY(ts.dialogos().registro().isEmpty());
    // The shipment date is rewritten as "dd/mm/yyyy".
    QCOMPARE(p.Texto(QStringLiteral("txtFechaEmbarque")), QStringLiteral("03/11/2026"));
    const QStringList esperado =
        QStringLiteral(
            "idsubreg=IC04|idaduana=001|idaduanasal=073|cuitcliente=30712345671|"
            "cuitdespaduana=20123456786|"
            "factura1=A-0001-00000123,A-0001-00000124,A-0001-00000125,A-0001-00000126,A-0001-"
            "00000127|"
            "factura2=VENDEDOR UNO|factura3=DESPACHANTE PRUEBA|factura5=DEPOSITO 'NORTE'|"
            "factura7=O'HIGGINS S.A.|idvendedor=V01|fobdivisas=1234.5|fobcoddivisas=060|"
            "fobdivcambio=1.085|fletedivisas=200|fletecoddivisas=DOL|fletedivcambio=1|"
            "segurodivisas=15.39|segurocoddivisas=DOL|segurodivcambio=1|seguroporcentaje=1|"
            "valoraprorratear=50|ajusteincluir=10.5|ajustededucir=2.25|factorconver=0|"
            "idcondiciondeventa=FOB|idpaisdestino=212|motivodestsuspensiva=T1|"
            "autorizdestsuspensiva=AUT-1|plazoautorizacion=20-05-2027|cierreventa=15/11/2026|"
            "facilidadpago=|dccomext=12.4|dcestmerc=N|dcforzarestmerc=S|dcpaisorigen=203|"
            "dcforzarpaisorigen=N|dcpaisdestino=212|dcstandard=N|dcregalias=S|dcbancos=|"
            "dckgneto=850.75|opcionesiva=IVAAD1|opcionesganancias=BDEUSO|"
            "fechaembarque=03/11/2026")
            .split(QLatin1Char('|'));
    const QStringList fila = Fila(ts, QStringLiteral("P-1"));
    QCOMPARE(fila.size(), esperado.size());
    for (int i = 0; i < esperado.size(); ++i)
        QCOMPARE(fila.at(i), esperado.at(i));
    QCOMPARE(fila.at(5).size(), QStringLiteral("factura1=").size() + 79);

    // Commissions abroad that are no number are written as 0.
    p.Poner(QStringLiteral("txtDCComiExt"), QStringLiteral("abc"));
    QCOMPARE(CaratulaDatos(ts.ctx()).Guardar(QStringLiteral("P-1"), p),
             CaratulaDatos::Resultado::Guardado);
    QCOMPARE(Fila(ts, QStringLiteral("P-1")).at(32), QStringLiteral("dccomext=0"));
}

void TestCaratulaDatos::controles_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("cambios"); // control=value;... applied to the import screen
    QTest::addColumn<QString>("ocultos"); // controls the sub-regime hides
    QTest::addColumn<bool>("salir");      // the answer to the question
    QTest::addColumn<QStringList>("dialogo");
    QTest::addColumn<int>("resultado");
    QTest::addColumn<QString>("foco");
    using R = CaratulaDatos::Resultado;
    struct Caso {
        const char* nombre;
        const char* cambios;
        const char* ocultos;
        bool salir;
        QStringList dialogo;
        R resultado;
        const char* foco;
    };
    const QString faltan = QStringLiteral("Faltan Facturas.");
    const QString cierre = QStringLiteral(
        "El valor ingresado en el campo CIERRE DE VENTA no es una FECHA valida. Corrija el Valor "
        "o deje vacio el campo.");
    const QString fob = QStringLiteral("El valor FOB debe ser un valor númerico");
    const QString noGuarda =
        QStringLiteral("Los datos no pueden ser guardados, desea SALIR de caratula?");
    const R Q = R::Quedarse, S = R::Salir, G = R::Guardado;
    // clang-format off
    const Caso casos[] = {
        {"cierre invalido", "TxtCierreVenta=31/02/2026;TxtCuitAduana=", "", false, {cierre}, Q, "TxtCierreVenta"},
        {"sin despachante", "TxtCuitAduana=;Txtidvendedor=", "", false, {"Debe ingresar el CUIT de DESPACHANTE", kSalir}, Q, "TxtCuitAduana"},
        {"sin despachante sale", "TxtCuitAduana=", "", true, {"Debe ingresar el CUIT de DESPACHANTE", kSalir}, S, ""},
        {"sin vendedor", "Txtidvendedor=", "", false, {"Debe seleccionar vendedor", kSalir}, Q, "Txtidvendedor"},
        // Hidden by the sub-regime: no vendor is required.
        {"vendedor oculto", "Txtidvendedor=", "Txtidvendedor", false, {}, G, ""},
        {"sin condicion", "Txtidcondventa=", "", false, {"Debe ingresar Condición de venta", kSalir}, Q, "Txtidcondventa"},
        {"condicion oculta", "Txtidcondventa=", "Txtidcondventa", false, {}, G, ""},
        {"embarque invalido", "txtFechaEmbarque=32/10/2026", "", false, {"Debe ingresar una fecha valida en Fecha de Embarque", kSalir}, Q, "txtFechaEmbarque"},
        {"embarque oculto", "txtFechaEmbarque=32/10/2026", "txtFechaEmbarque", false, {}, G, ""},
        {"fob vacio", "Txtfobdivisas=", "", false, {fob, kSalir}, Q, "Txtfobdivisas"},
        {"fob vacio sale sin facturas", "Txtfobdivisas=;#facturas", "", true, {fob, kSalir, faltan}, S, ""},
        {"divisa fob", "TxtCoddivfob=", "", false, {"Codigo de divisa no ingresado", kSalir}, Q, "TxtCoddivfob"},
        {"cambio fob", "TxtDivValorFob=uno", "", false, {"El tipo de cambio debe ser un valor numerico valido", kSalir}, Q, "TxtDivValorFob"},
        {"flete", "Txtfletedivisas=x", "", false, {"El valor FLETE debe ser un valor númerico", kSalir}, Q, "Txtfletedivisas"},
        {"divisa flete", "TxtCodDivFlete=", "", false, {"Codigo de divisa en FLETE no ingresado", kSalir}, Q, "TxtCodDivFlete"},
        {"cambio flete", "TxtDivValorFlete=", "", false, {"El tipo de cambio en FLETE debe ser un valor numerico valido", kSalir}, Q, "TxtDivValorFlete"},
        {"flete oculto", "Txtfletedivisas=;TxtCodDivFlete=;TxtDivValorFlete=", "Txtfletedivisas", false, {}, G, ""},
        {"seguro", "Txtsegurodivisas=", "", false, {"El valor SEGURO debe ser un valor númerico", kSalir}, Q, "Txtsegurodivisas"},
        {"divisa seguro", "TxtCodDivseguro=", "", false, {"Codigo de divisa en SEGURO no ingresado", kSalir}, Q, "TxtCodDivseguro"},
        {"cambio seguro", "TxtDivValorSeguro=", "", false, {"El tipo de cambio en SEGURO debe ser un valor numerico valido", kSalir}, Q, "TxtDivValorSeguro"},
        // Only the first failed check speaks.
        {"dos fallas", "Txtidvendedor=;Txtfobdivisas=", "", false, {"Debe seleccionar vendedor", kSalir}, Q, "Txtidvendedor"},
        // Leaving an export ("EC...") without invoices does not ask for them.
        {"export sin facturas", "TxtSubReg=EC01;Txtfobdivisas=;#facturas", "", true, {fob, kSalir}, S, ""},
        {"factura oculta", "Txtfobdivisas=;#facturas", "TxtFactura", true, {fob, kSalir}, S, ""},
        {"facilidad vacia", "cboFacilidadPago=", "", false, {"Debe seleccionar S/N en Facilidad de Pago"}, Q, "cboFacilidadPago"},
        {"facilidad elegida", "cboFacilidadPago=S", "", false, {}, G, ""},
        {"interno inexistente", "#interno", "", true, {noGuarda}, S, ""},
        {"interno inexistente sin facturas", "#interno;#facturas", "", false, {noGuarda}, Q, ""},
        {"interno inexistente sale sin facturas", "#interno;#facturas", "", true, {noGuarda, faltan}, S, ""},
    };
    // clang-format on
    for (int motor : {0, 1})
        for (const Caso& c : casos)
            QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", c.nombre)
                << motor << c.cambios << c.ocultos << c.salir << c.dialogo
                << static_cast<int>(c.resultado) << c.foco;
}

void TestCaratulaDatos::controles() {
    MOTOR_O_SALTAR();
    QFETCH(QString, cambios);
    QFETCH(QString, ocultos);
    QFETCH(bool, salir);
    QFETCH(QStringList, dialogo);
    QFETCH(int, resultado);
    QFETCH(QString, foco);
    TestStores& ts = Compartidas(motor);
    SeparadorDecimalScope sep(QStringLiteral(","));
    CaratulaDatos::Pantalla p = PantallaImport(QStringLiteral(","));
    QString interno = QStringLiteral("P-1");
    const bool conFacilidad = cambios.contains(QStringLiteral("cboFacilidadPago"));
    p.Visible(QStringLiteral("cboFacilidadPago"), conFacilidad);
    for (const QString& c : cambios.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        if (c == QStringLiteral("#facturas"))
            p.facturas.clear();
        else if (c == QStringLiteral("#interno"))
            interno = QStringLiteral("NO-EXISTE");
        else
            p.Poner(c.section(QLatin1Char('='), 0, 0), c.section(QLatin1Char('='), 1));
    }
    for (const QString& c : ocultos.split(QLatin1Char(';'), Qt::SkipEmptyParts))
        p.Visible(c, false);
    const QStringList antes = Fila(ts, QStringLiteral("P-1"));
    if (dialogo.contains(kSalir) ||
        dialogo.contains(
            QStringLiteral("Los datos no pueden ser guardados, desea SALIR de caratula?"))) {
        if (salir)
            ts.dialogos().ResponderSi();
        else
            ts.dialogos().ResponderNo();
    }
    QString enfocado;
    const auto r = CaratulaDatos(ts.ctx()).Guardar(interno, p, &enfocado);
    QCOMPARE(ts.dialogos().todo(), dialogo);
    QVERIFY(ts.dialogos().guionAgotado());
    QCOMPARE(static_cast<int>(r), resultado);
    QCOMPARE(enfocado, foco);
    const QStringList despues = Fila(ts, QStringLiteral("P-1"));
    if (r == CaratulaDatos::Resultado::Guardado)
        QVERIFY(antes != despues);
    else
        QCOMPARE(despues, antes); // nothing written
    if (!ts.dialogos().registro().isEmpty()) {
        const auto& primero = ts.dialogos().registro().first();
        QCOMPARE(primero.icono,
                 primero.texto.startsWith(QStringLiteral("El valor ingresado en el campo")) ||
                         primero.texto.startsWith(QStringLiteral("Debe seleccionar S/N"))
                     ? Dialogos::Icono::Critico
                 : primero.tipo == ScriptedDialogs::Registro::Tipo::Pregunta
                     ? Dialogos::Icono::Pregunta
                     : Dialogos::Icono::Exclamacion);
    }
}

void TestCaratulaDatos::sinRegistro() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    QVERIFY(!CaratulaDatos(ts.ctx()).Cargar(QStringLiteral("NADA")).has_value());
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"No se encontro Interno en base de datos"});
}

void TestCaratulaDatos::disposicion() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    auto d = [&](const char* sub) { return DisposicionCaratula::Calcular(ts.ctx(), sub); };
    // The freight takes its companions with it, in the order of the dest columns.
    QCOMPARE(
        d("EC01").ocultos.join(',').toLower(),
        QStringLiteral("txtfletedivisas,txtdivvalorflete,txtcoddivflete,txtdolflete,txtfactura"));
    QCOMPARE(DisposicionCaratula::Companeros("TxtSeguroDivisas").join(',').toLower(),
             QStringLiteral("txtdivvalorseguro,txtcoddivseguro,txtporc,txtdolseguro"));
    QVERIFY(d("EC16").facilidadPagoVisible && !d("IC04").facilidadPagoVisible);
    QVERIFY(!d("ZZ99").hayDest && d("ZZ99").ocultos.isEmpty());
    QVERIFY(d("LAPI01").opcionesHabilitadas && !d("EC01").opcionesHabilitadas);
    QVERIFY(d("EG02").exportacion && !d("IC04").exportacion);
}

void TestCaratulaDatos::facturas() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    Facturas f(ts.ctx());
    const QString interno = QStringLiteral("P-1");
    QVERIFY(f.Agregar_Facturas(interno, QStringLiteral("A-1")));
    QVERIFY(f.Agregar_Facturas(interno, QStringLiteral("B'2")));
    QVERIFY(f.Agregar_Facturas(QStringLiteral("OTRO"), QStringLiteral("A-1")));
    QVERIFY(!f.Agregar_Facturas(interno, QStringLiteral("A-1")));
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"Ya existe esta factura."});
    QCOMPARE(ts.dialogos().registro().first().icono, Dialogos::Icono::Exclamacion);
    QCOMPARE(f.Lista(interno), (QStringList{"A-1", "B'2"}));
    f.Eliminar_Factura(interno, QStringLiteral("A-1"));
    QVERIFY(f.Agregar_Facturas(interno, QStringLiteral("C-3")));
    QCOMPARE(f.Lista(interno), (QStringList{"B'2", "C-3"}));
    // The next order is the highest plus one.
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select orden from facturas where interno = 'P-1' "
                                             "and factura = 'C-3'"));
    QCOMPARE(EsNumero(rs.Fields(QStringLiteral("orden"))), 3.0);
    QCOMPARE(f.Lista(QStringLiteral("OTRO")), QStringList{"A-1"});
}

void TestCaratulaDatos::transportes() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update caratula set cuittrans = '23000000000' where interno = "
                                 "'P-1'"));
    // The screens of the agents cover the rest; here what they cannot reach.
    Transportes t(ts.ctx());
    bool encontrado = true;
    QCOMPARE(t.BuscarTrans(QStringLiteral("20123456786"), &encontrado), QString());
    QVERIFY(!encontrado && ts.dialogos().registro().isEmpty());
    QVERIFY(!t.Guardar(1, {}, QStringLiteral("23000000000"), QStringLiteral("OTRO")));
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"El CUIT ingresado ya existe en el sistema"});
    // A changed tax number: the Operation keeps the old one.
    QVERIFY(t.Guardar(2, QStringLiteral("23000000000"), QStringLiteral("20123456786"),
                      QStringLiteral("TRANSPORTES SUR SA")));
    QCOMPARE(t.BuscarTrans(QStringLiteral("20123456786")), QStringLiteral("TRANSPORTES SUR SA"));
    QCOMPARE(Columna(ts, "P-1", "cuittrans"), QStringLiteral("23000000000"));
    ts.dialogos().Limpiar();
    ts.dialogos().ResponderSi();
    QVERIFY(!t.Eliminar(QStringLiteral("23000000000")));
    QCOMPARE(ts.dialogos().todo(),
             (QStringList{"Confirma eliminar el Agente de Tranporte seleccionado",
                          "0 cero registros eliminados"}));
    // Put back for the other rows.
    QVERIFY(t.Guardar(2, QStringLiteral("20123456786"), QStringLiteral("23000000000"),
                      QStringLiteral("TRANSPORTES SUR")));
}

int main(int argc, char** argv) {
    return korven::test::EjecutarClases<QCoreApplication, TestReglas, TestCaratulaDatos>(argc,
                                                                                         argv);
}

#include "test_caratula_datos.moc"
