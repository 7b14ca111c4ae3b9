// The header without its screen: the rules that need no store (check digit, currency
// arithmetic, option codes, dates, the invoice text), the look-ups of codes and persons, and the
// load and save of the header with invoices, packages, transport agents and ONCCA data, on SQLite
// and on PostgreSQL.

#include "FixtureCaratula.h"
#include "header/BultosDatos.h"
#include "header/BusquedaPersonas.h"
#include "header/CambioDivisas.h"
#include "header/CaratulaDatos.h"
#include "header/DigitoVerificador.h"
#include "header/DisposicionCaratula.h"
#include "header/Facturas.h"
#include "header/FechasTexto.h"
#include "header/ImportesCaratula.h"
#include "header/ListasCodigos.h"
#include "header/OnccaDatos.h"
#include "header/OpcionesCaratula.h"
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
    void codigoDivisa_data();
    void codigoDivisa();
    void opciones();
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
    QTest::addColumn<bool>("calcula");
    QTest::addColumn<QString>("dolares");
    for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
        auto n = [&](const char* t) { return QString::fromLatin1(t).replace('.', sep); };
        const QByteArray s = sep.toLatin1();
        QTest::newRow(("entero " + s).constData())
            << sep << n("1000.00") << n("1.000000") << true << n("1000.00");
        // 1234.50 x 1.085 = 1339.4325, shown as 1339.43.
        QTest::newRow(("euro " + s).constData())
            << sep << n("1234.50") << n("1.085000") << true << n("1339.43");
        // 10.005 x 1 = 10.005: half away from zero on the decimal value.
        QTest::newRow(("medio " + s).constData())
            << sep << n("10.005") << n("1.000000") << true << n("10.01");
        QTest::newRow(("cero da vacio " + s).constData())
            << sep << n("0.00") << n("1.000000") << true << QString();
        QTest::newRow(("cambio vacio " + s).constData())
            << sep << n("1000.00") << QString() << false << QString();
        QTest::newRow(("valor texto " + s).constData())
            << sep << QStringLiteral("abc") << n("1.000000") << false << QString();
    }
}

void TestReglas::multiplicar() {
    QFETCH(QString, separador);
    QFETCH(QString, valor);
    QFETCH(QString, cambio);
    QFETCH(bool, calcula);
    QFETCH(QString, dolares);
    SeparadorDecimalScope sep(separador);
    const auto r = ImportesCaratula::Multiplicar(valor, cambio);
    QCOMPARE(r.has_value(), calcula);
    if (calcula)
        QCOMPARE(*r, dolares);
}

void TestReglas::seguroPorcentual_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("porcentaje");
    QTest::addColumn<QString>("dolFob");
    QTest::addColumn<QString>("dolFlete");
    QTest::addColumn<QString>("prorratear");
    QTest::addColumn<double>("codigos");
    QTest::addColumn<QString>("cambio");
    QTest::addColumn<bool>("calcula");
    QTest::addColumn<QString>("dolares");
    QTest::addColumn<QString>("divisas");
    for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
        auto n = [&](const char* t) { return QString::fromLatin1(t).replace('.', sep); };
        const QByteArray s = sep.toLatin1();
        // (1000 + 200) x 1.5% = 18.00; in a currency of 2.000000: 9.00.
        QTest::newRow(("fob y flete " + s).constData())
            << sep << n("1.50") << n("1000.00") << n("200.00") << QString() << 0.0 << n("2.000000")
            << true << n("18.00") << n("09.00");
        // With the proration codes (150) and the value to prorate (50):
        // (1000 + 200 + 150 + 50) x 1% = 14.00.
        QTest::newRow(("con prorrateo " + s).constData())
            << sep << n("1.00") << n("1000.00") << n("200.00") << n("50.00") << 150.0
            << n("1.000000") << true << n("14.00") << n("14.00");
        // Codes above 0 count even with no value to prorate: (1000 + 200 + 150) x 1% = 13.50.
        QTest::newRow(("solo codigos " + s).constData())
            << sep << n("1.00") << n("1000.00") << n("200.00") << QString() << 150.0
            << n("1.000000") << true << n("13.50") << n("13.50");
        // 1234.56 x 0.5% = 6.1728 -> 6.17; / 3 = 2.0566 -> 2.06.
        QTest::newRow(("redondeo " + s).constData())
            << sep << n("0.50") << n("1034.56") << n("200.00") << QString() << 0.0 << n("3.000000")
            << true << n("06.17") << n("02.06");
        QTest::newRow(("sin cambio " + s).constData())
            << sep << n("1.00") << n("1000.00") << n("200.00") << QString() << 0.0 << QString()
            << true << n("12.00") << QString();
        QTest::newRow(("porcentaje cero " + s).constData())
            << sep << n("0.00") << n("1000.00") << n("200.00") << QString() << 0.0 << n("1.000000")
            << false << QString() << QString();
        // Freight 0 leaves its dollars field empty: nothing is computed.
        QTest::newRow(("sin flete " + s).constData())
            << sep << n("1.00") << n("1000.00") << QString() << QString() << 0.0 << n("1.000000")
            << false << QString() << QString();
    }
}

void TestReglas::seguroPorcentual() {
    QFETCH(QString, separador);
    QFETCH(QString, porcentaje);
    QFETCH(QString, dolFob);
    QFETCH(QString, dolFlete);
    QFETCH(QString, prorratear);
    QFETCH(double, codigos);
    QFETCH(QString, cambio);
    QFETCH(bool, calcula);
    QFETCH(QString, dolares);
    QFETCH(QString, divisas);
    SeparadorDecimalScope sep(separador);
    const auto r = ImportesCaratula::SeguroPorcentual(porcentaje, dolFob, dolFlete, prorratear,
                                                      codigos, cambio);
    QCOMPARE(r.has_value(), calcula);
    if (!calcula)
        return;
    QCOMPARE(r->dolares, dolares);
    QCOMPARE(r->conDivisas, !divisas.isEmpty());
    QCOMPARE(r->divisas, divisas);
}

void TestReglas::codigoDivisa_data() {
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("resultado");
    // clang-format off
    QTest::newRow("uno") << "1" << "001";
    QTest::newRow("sesenta") << "60" << "060";
    QTest::newRow("tres") << "060" << "060";
    QTest::newRow("letras") << "DOL" << "DOL";
    QTest::newRow("vacio") << "" << "";
    // clang-format on
}

void TestReglas::codigoDivisa() {
    QFETCH(QString, codigo);
    QFETCH(QString, resultado);
    for (const char* s : {",", "."}) {
        SeparadorDecimalScope sep(QString::fromLatin1(s));
        QCOMPARE(ImportesCaratula::CodigoDivisa(codigo), resultado);
    }
}

void TestReglas::opciones() {
    QCOMPARE(OpcionesCaratula::EntradasIVA().at(3),
             QStringLiteral("Importación definitiva de cosas muebles"));
    const QStringList iva = {"NOCONTESTA", "NO_VALIDA", "IVAAD1", "IVAAD2"};
    for (int i = 0; i < iva.size(); ++i) {
        QCOMPARE(OpcionesCaratula::CodigoIVA(i), iva.at(i));
        QCOMPARE(OpcionesCaratula::PosicionIVA(iva.at(i)), i);
    }
    const QStringList gan = {"NOCONTESTA", "NO_VALIDA", "COMERC", "BDEUSO", "USOPAR"};
    QCOMPARE(OpcionesCaratula::EntradasGanancias().size(), gan.size());
    for (int i = 0; i < gan.size(); ++i) {
        QCOMPARE(OpcionesCaratula::CodigoGanancias(i), gan.at(i));
        QCOMPARE(OpcionesCaratula::PosicionGanancias(gan.at(i)), i);
    }
    QCOMPARE(OpcionesCaratula::CodigoIVA(-1), QString());
    QCOMPARE(OpcionesCaratula::PosicionIVA(QStringLiteral("COMERC")), -1);
    QCOMPARE(OpcionesCaratula::PosicionGanancias(QString()), -1);
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

class TestListas : public QObject {
    Q_OBJECT
    // One set of stores per engine serves the rows that only read (and those that put back
    // what they change).
    std::unique_ptr<TestStores> stores_[2];
    ListadoGuionado listado;
    TestStores& Compartidas(int motor) {
        if (!stores_[motor]) {
            stores_[motor] = std::make_unique<TestStores>(static_cast<Motor>(motor));
            PrepararCaratula(*stores_[motor]);
        }
        stores_[motor]->dialogos().Limpiar();
        return *stores_[motor];
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
    void mostrarLista_data();
    void mostrarLista();
    void pickLists_data() { FilasDeMotores(); }
    void pickLists();
    void despachante_data() { FilasDeMotores(); }
    void despachante();
    void cliente_data() { FilasDeMotores(); }
    void cliente();
    void vendedor_data() { FilasDeMotores(); }
    void vendedor();
    void verificarCambio_data();
    void verificarCambio();
};

void TestListas::buscarDescripcion_data() {
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

void TestListas::buscarDescripcion() {
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

void TestListas::filas_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("lista");
    QTest::addColumn<QStringList>("codigos");
    QTest::addColumn<QStringList>("textos");
    for (int motor : {0, 1}) {
        const char* m = motor ? "postgresql" : "sqlite";
        // Ordered by description, then code; the rate as "000.000000".
        QTest::addRow("%s divisas", m)
            << motor << "DIVISAS" << QStringList{"DOL", "060", "001"}
            << QStringList{"DOL\tDOLAR ESTADOUNIDENSE\t001,000000", "060\tEURO\t001,085000",
                           "001\tPESO\t000,000000"};
        QTest::addRow("%s bancos", m)
            << motor << "BANCOS" << QStringList{"007", "011"}
            << QStringList{"007\tBANCO GALICIA (007)", "011\tBANCO NACION (011)"};
        // The temporary motives hand over the code and the days.
        QTest::addRow("%s motivos temporales import", m)
            << motor << "MOTIVOSTEMPI" << QStringList{"T2|90", "T1|180"}
            << QStringList{"T2\tEXHIBICION", "T1\tPERFECCIONAMIENTO"};
        QTest::addRow("%s motivos temporales export", m)
            << motor << "MOTIVOSTEMPE" << QStringList{"T9|60"} << QStringList{"T9\tREPARACION"};
        // Longest codes first, then by description.
        QTest::addRow("%s paises", m)
            << motor << "PAIS" << QStringList{"203", "212", "1"}
            << QStringList{"203\tBRASIL", "212\tESTADOS UNIDOS", "1\tZONA FRANCA"};
        QTest::addRow("%s subregimenes", m)
            << motor << "SUBREG" << QStringList{"EC01", "EC16", "IC04", "IT01", "ZZ99"}
            << QStringList{"EC01\tEXPORTACION A CONSUMO", "EC16\tEXPORTACION CON FACILIDAD",
                           "IC04\tIMPORTACION A CONSUMO", "IT01\tIMPORTACION TEMPORAL",
                           "ZZ99\tSIN DESTINO"};
        QTest::addRow("%s unidades", m) << motor << "UNIDADES" << QStringList{"01", "07"}
                                        << QStringList{"01\t KILOGRAMO", "07\t UNIDAD"};
        QTest::addRow("%s puertos", m) << motor << "PUERTO" << QStringList{"BUE", "ROS"}
                                       << QStringList{"BUE\tBUENOS AIRES", "ROS\tROSARIO"};
        QTest::addRow("%s aduanas", m)
            << motor << "ADUANA" << QStringList{"001", "073", "033"}
            << QStringList{"001\tBUENOS AIRES", "073\tEZEIZA", "033\tROSARIO"};
    }
}

void TestListas::filas() {
    MOTOR_O_SALTAR();
    QFETCH(QString, lista);
    QFETCH(QStringList, codigos);
    QFETCH(QStringList, textos);
    TestStores& ts = Compartidas(motor);
    SeparadorDecimalScope sep(QStringLiteral(","));
    QStringList c, t;
    for (const ListasCodigos::Fila& f : ListasCodigos(ts.ctx()).Filas(lista)) {
        c << f.codigo;
        t << f.texto;
    }
    QCOMPARE(c, codigos);
    QCOMPARE(t, textos);
}

void TestListas::mostrarLista_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("lista");
    QTest::addColumn<QString>("elegir");
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("extra");
    for (int motor : {0, 1}) {
        const char* m = motor ? "postgresql" : "sqlite";
        // clang-format off
        QTest::addRow("%s subregimen", m) << motor << "SUBREG" << "EC16" << "EC16" << "E";
        QTest::addRow("%s divisa", m) << motor << "DIVISAS" << "060" << "060" << "01,085000";
        QTest::addRow("%s motivo temporal", m) << motor << "MOTIVOSTEMPI" << "T1" << "T1|180" << "";
        QTest::addRow("%s nada elegido", m) << motor << "SUBREG" << "" << "" << "";
        // clang-format on
    }
}

void TestListas::mostrarLista() {
    MOTOR_O_SALTAR();
    QFETCH(QString, lista);
    QFETCH(QString, elegir);
    QFETCH(QString, codigo);
    QFETCH(QString, extra);
    TestStores& ts = Compartidas(motor);
    SeparadorDecimalScope sep(QStringLiteral(","));
    listado.elegir = elegir;
    listado.Registrar(ts.ctx());
    QString obtenido;
    QCOMPARE(
        ListasCodigos(ts.ctx()).MostrarLista(lista, QStringLiteral("Buscar ") + lista, &obtenido),
        codigo);
    QCOMPARE(obtenido, extra);
    QCOMPARE(listado.recibido.value(QStringLiteral("titulo")).toString(),
             QStringLiteral("Buscar ") + lista);
    const QStringList codigos = listado.recibido.value(QStringLiteral("codigos")).toStringList();
    QCOMPARE(codigos.size(),
             listado.recibido.value(QStringLiteral("descripciones")).toStringList().size());
    QVERIFY(!codigos.isEmpty());
}

void TestListas::pickLists() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    PickLists p(ts.ctx());
    QCOMPARE(p.getAduanaDescripcion(QStringLiteral("001")), QStringLiteral("BUENOS AIRES"));
    QCOMPARE(p.getPaisDescripcion(QStringLiteral("203")), QStringLiteral("BRASIL"));
    QCOMPARE(p.getEstadoMercaderiaDescripcion(QStringLiteral("N")), QStringLiteral("NUEVO"));
    QCOMPARE(p.getUnidadesDescripcion(QStringLiteral("01")), QStringLiteral("KILOGRAMO"));
    QCOMPARE(p.getVIADescripcion(QStringLiteral("1")), QStringLiteral("MARITIMA"));
    QCOMPARE(p.getTipoEmbarqueDescripcion(QStringLiteral("B")), QStringLiteral("BOLSA"));
    QCOMPARE(p.getCodigoEmbarqueDescripcion(QStringLiteral("10")), QStringLiteral("PALLET"));
    QCOMPARE(p.getCondicionVentaDescripcion(QStringLiteral("CIF")),
             QStringLiteral("COSTO SEGURO Y FLETE"));
    QCOMPARE(p.getSubRegimen(QStringLiteral("IT01")), QStringLiteral("IMPORTACION TEMPORAL"));
    // Unknown codes answer empty, without a message.
    QCOMPARE(p.getAduanaDescripcion(QStringLiteral("999")), QString());
    QCOMPARE(p.getVIADescripcion(QString()), QString());
    QVERIFY(ts.dialogos().registro().isEmpty());

    QCOMPARE(p.getONCCAAcuerdo(QStringLiteral("AC1")), QStringLiteral("CUOTA HILTON"));
    QCOMPARE(p.getONCCACategoria(QStringLiteral("NOV")), QStringLiteral("NOVILLO"));
    QCOMPARE(p.getONCCACortes(QStringLiteral("C2"), QString()), QStringLiteral("BIFE"));
    QCOMPARE(p.getONCCACortes(QStringLiteral("C2"), QStringLiteral("NOV")), QString());
    QCOMPARE(p.getONCCAElaborador(QStringLiteral("E1")), QStringLiteral("FRIGORIFICO SUR"));
    QCOMPARE(p.getONCCAEspecie(QStringLiteral("BOV")), QStringLiteral("BOVINA"));
    QCOMPARE(p.getONCCAFaneador(QStringLiteral("F2")), QStringLiteral("FANEADOR OESTE"));
    QCOMPARE(p.getONCCAMecoorgbio(QStringLiteral("ORG")), QStringLiteral("ORGANICO"));
    QCOMPARE(p.getONCCAres3106(QStringLiteral("R1")), QStringLiteral("CON RESOLUCION"));
    QCOMPARE(p.getONCCASisPro(QStringLiteral("P1")), QStringLiteral("PASTORIL"));
    QCOMPARE(p.getONCCASisPro(QStringLiteral("P9")), QString());

    listado.Registrar(ts.ctx());
    listado.elegir = QStringLiteral("F2");
    QCOMPARE(p.getONCCAFaneadorListado(), QStringLiteral("F2"));
    QCOMPARE(listado.recibido.value(QStringLiteral("codigos")).toStringList(),
             (QStringList{"F1", "F2"}));
    QCOMPARE(listado.recibido.value(QStringLiteral("descripciones")).toStringList(),
             (QStringList{"FANEADOR NORTE", "FANEADOR OESTE"}));
    // The cuts of one category, or all of them with an empty filter.
    listado.elegir = QStringLiteral("C1");
    QCOMPARE(p.getONCCACortesListado(QStringLiteral("NOV")), QStringLiteral("C1"));
    QCOMPARE(listado.recibido.value(QStringLiteral("codigos")).toStringList(), QStringList{"C1"});
    QCOMPARE(p.getONCCACortesListado(QString()), QStringLiteral("C1"));
    QCOMPARE(listado.recibido.value(QStringLiteral("codigos")).toStringList(),
             (QStringList{"C1", "C2"}));
    // Or the cuts of a position.
    listado.elegir = QStringLiteral("C2");
    QCOMPARE(p.getONCCACortesListado(QStringLiteral("0202.30.00.100A")), QStringLiteral("C2"));
    QCOMPARE(listado.recibido.value(QStringLiteral("codigos")).toStringList(), QStringList{"C2"});
    QCOMPARE(listado.recibido.value(QStringLiteral("titulo")).toString(),
             QStringLiteral("ONCCA - Corte"));
    QCOMPARE(p.getONCCACortes(QStringLiteral("C1"), QStringLiteral("0201.30.00.900Z")),
             QStringLiteral("LOMO"));
    // The component is reached by its name, late-bound, as other libraries reach it.
    listado.elegir = QStringLiteral("M1");
    QString elegido;
    QVERIFY(QMetaObject::invokeMethod(&p, "getMotivosListado", Q_RETURN_ARG(QString, elegido)));
    QCOMPARE(elegido, QStringLiteral("M1"));
    QCOMPARE(listado.recibido.value(QStringLiteral("titulo")).toString(),
             QStringLiteral("Buscar MOTIVOS"));
}

void TestListas::despachante() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    BusquedaPersonas b(ts.ctx());
    QCOMPARE(b.BuscarDespachante(QStringLiteral("20123456786")),
             QStringLiteral("DESPACHANTE PRUEBA"));
    QVERIFY(ts.dialogos().registro().isEmpty());
    // Ten digits: the name stays empty. The check digit is not tested here.
    QCOMPARE(b.BuscarDespachante(QStringLiteral("2012345678")), QString());
    QCOMPARE(b.BuscarDespachante(QStringLiteral("20123456787")), QString());
    QCOMPARE(ts.dialogos().mensajes(),
             (QStringList{"Cuit Invalido", "No se encontro el CUIT Ingresado"}));
    QCOMPARE(ts.dialogos().registro().last().icono, Dialogos::Icono::Exclamacion);
}

void TestListas::cliente() {
    MOTOR_O_SALTAR();
    TestStores& ts = Compartidas(motor);
    BusquedaPersonas b(ts.ctx());
    const BusquedaPersonas::Cliente c = b.BuscarCliente(QStringLiteral("30712345671"));
    QVERIFY(c.encontrado);
    QCOMPARE(c.nombre, QStringLiteral("O'HIGGINS S.A."));
    QCOMPARE(c.regalias, 1.0);
    QCOMPARE(c.ajxvinc4102, 0.0);
    QVERIFY(!b.BuscarCliente(QStringLiteral("30000000000")).encontrado);
    QVERIFY(ts.dialogos().registro().isEmpty());
    QVERIFY(!b.BuscarCliente(QString()).encontrado);
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"Falta ingresar CUIT como parametro"});
    QCOMPARE(b.NombrePersona(QStringLiteral("clientes"), QStringLiteral("30712345671")),
             QStringLiteral("O'HIGGINS S.A."));
    QCOMPARE(b.NombrePersona(QStringLiteral("vendedor"), QStringLiteral("V01")),
             QStringLiteral("VENDEDOR UNO"));
    QCOMPARE(b.NombrePersona(QStringLiteral("despadu"), QStringLiteral("1")), QString());
}

void TestListas::vendedor() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    // The new-vendor screen as the clerk fills it: adds the vendor and hands code and name back.
    QString codigoRecibido;
    ts.ctx().pantallas().Registrar(
        QStringLiteral("FrmNewVendedor"), [&](AppContext& ctx, const QVariantMap& args) {
            codigoRecibido = args.value(QStringLiteral("codigo")).toString();
            ctx.stores()
                .getDataConnectionByEntity(QStringLiteral("PERSONAL"))
                .Ejecutar(QStringLiteral("insert into vendedor (codigo,nombre,domicilio) values "
                                         "('V77','VENDEDOR NUEVO','')"));
            QVariantMap r;
            r.insert(QStringLiteral("codigo"), QStringLiteral("V77"));
            r.insert(QStringLiteral("nombre"), QStringLiteral("VENDEDOR NUEVO"));
            return QVariant(r);
        });
    BusquedaPersonas b(ts.ctx());
    const auto v = b.BuscarVendedor(QStringLiteral("V01"));
    QVERIFY(v.has_value());
    QCOMPARE(v->nombre, QStringLiteral("VENDEDOR UNO"));

    const QString pregunta = QStringLiteral(
        "No se encontro este codigo en la lista de VENDEDORES.\nDesea AGREGARLO a la lista");
    ts.dialogos().ResponderNo();
    QVERIFY(!b.BuscarVendedor(QStringLiteral("V77")).has_value());
    QCOMPARE(ts.dialogos().todo(), QStringList{pregunta});
    QVERIFY(codigoRecibido.isEmpty());

    ts.dialogos().Limpiar();
    ts.dialogos().ResponderSi();
    const auto nuevo = b.BuscarVendedor(QStringLiteral("V77"));
    QVERIFY(nuevo.has_value());
    QCOMPARE(codigoRecibido, QStringLiteral("V77"));
    QCOMPARE(nuevo->codigo, QStringLiteral("V77"));
    QCOMPARE(nuevo->nombre, QStringLiteral("VENDEDOR NUEVO"));
    QCOMPARE(b.NombrePersona(QStringLiteral("vendedor"), QStringLiteral("V77")),
             QStringLiteral("VENDEDOR NUEVO"));

    ts.dialogos().Limpiar();
    QVERIFY(!b.BuscarVendedor(QString()).has_value());
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"Falta Codigo de Vendedor para realizar la busqueda."});
}

void TestListas::verificarCambio_data() {
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

void TestListas::verificarCambio() {
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
    auto n = [&](const char* t) { return QString::fromLatin1(t).replace('.', sep); };
    const QList<QPair<const char*, QString>> campos = {
        {"TxtSubReg", "IC04"},
        {"txtIdAduana1", "001"},
        {"TxtIdAduana2", "073"},
        {"TxtCUITCliente", "30712345671"},
        {"TxtNombre", "O'HIGGINS S.A."},
        {"TxtCuitAduana", "20123456786"},
        {"TxtNombreadu", "DESPACHANTE PRUEBA"},
        {"Txtidvendedor", "V01"},
        {"TxtNombreven", "VENDEDOR UNO"},
        {"Txtfobdivisas", n("1234.50")},
        {"TxtCoddivfob", "060"},
        {"TxtDivValorFob", n("1.085000")},
        {"TxtDolFob", n("1339.43")},
        {"Txtfletedivisas", n("200.00")},
        {"TxtCodDivFlete", "DOL"},
        {"TxtDivValorFlete", n("1.000000")},
        {"Txtsegurodivisas", n("15.39")},
        {"TxtCodDivseguro", "DOL"},
        {"TxtDivValorSeguro", n("1.000000")},
        {"TxtPorc", n("1.00")},
        {"TxtProrratear", n("50.00")},
        {"TxtAjustIncluir", n("10.50")},
        {"TxtAjustDeducir", n("2.25")},
        {"TxtFactCon", ""},
        {"Txtidcondventa", "FOB"},
        {"Txtidpais", "212"},
        {"Txtmotdestsusp", "T1"},
        {"TxtautdestSusp", "AUT-1"},
        {"TxtPlazoaut", "20-05-2027"},
        {"TxtCierreVenta", "15/11/2026"},
        {"cboFacilidadPago", ""},
        {"txtDepAlm", "DEPOSITO 'NORTE'"},
        {"txtDCEstMerc", "N"},
        {"chkDCForzarEstMerc", "S"},
        {"txtDCPaisOrigen", "203"},
        {"chkDCForzarPaisOrigen", "N"},
        {"txtDCPaisDest", "212"},
        {"txtDCStandard", "N"},
        {"TxtDCRegalias", "S"},
        {"txtDCBancos", ""},
        {"txtKgNeto", n("850.75")},
        {"txtDCComiExt", n("12.40")},
        {"cboOpcionIVA", "IVAAD1"},
        {"cboOpcionesGanancias", "BDEUSO"},
        {"txtFechaEmbarque", "3/11/2026"},
    };
    for (const auto& c : campos) {
        p.Poner(QString::fromLatin1(c.first), c.second);
        p.Visible(QString::fromLatin1(c.first), true);
    }
    p.Visible(QStringLiteral("TxtFactura"), true);
    // The payment facility exists for one sub-regime only.
    p.Visible(QStringLiteral("cboFacilidadPago"), false);
    p.facturas = QStringList{"A-0001-00000123", "A-0001-00000124"};
    return p;
}

// The columns the save writes, as the store gives them back, numbers rounded to 6 decimals.
QStringList Fila(TestStores& ts, const QString& interno) {
    QStringList cols;
    for (const CaratulaDatos::Campo& c : CaratulaDatos::CamposDeGuardado())
        cols << c.columna.toLower();
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select %1 from caratula where interno = '%2'")
                                  .arg(cols.join(QLatin1Char(',')), interno));
    QStringList r;
    if (rs.Eof())
        return r;
    for (const QString& c : cols) {
        const QVariant v = rs.Fields(c);
        if (v.metaType().id() == QMetaType::Double)
            r << c + QLatin1Char('=') + Formato(v.toDouble(), QStringLiteral("0.######"), ".");
        else
            r << c + QLatin1Char('=') + EsNull(v);
    }
    return r;
}

} // namespace

class TestCaratulaDatos : public QObject {
    Q_OBJECT
    std::unique_ptr<TestStores> stores_[2];
    // Shared stores for the checks of the save: each row starts from a new P-1.
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
    void bultos_data() { FilasDeMotores(); }
    void bultos();
    void transportes_data() { FilasDeMotores(); }
    void transportes();
    void oncca_data() { FilasDeMotores(); }
    void oncca();
};

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
        QCOMPARE(v.value("TxtSubReg"), QStringLiteral("IC04"));
        const QString sp = QString::fromLatin1(s);
        QCOMPARE(v.value("Txtfobdivisas"), QStringLiteral("1234") + sp + QStringLiteral("50"));
        QCOMPARE(v.value("TxtDivValorFob"), QStringLiteral("1") + sp + QStringLiteral("085000"));
        QCOMPARE(v.value("TxtFactCon"), QStringLiteral("0") + sp + QStringLiteral("5"));
        QCOMPARE(v.value("Txtfletedivisas"), QString());  // NULL stays empty
        QCOMPARE(v.value("cboFacilidadPago"), QString()); // neither S nor N
        QCOMPARE(v.value("ChFacturas"), QStringLiteral("S"));
        QCOMPARE(v.value("chkDCForzarEstMerc"), QStringLiteral("S"));
        QCOMPARE(v.value("chkDCForzarPaisOrigen"), QStringLiteral("N"));
        QCOMPARE(v.value("txtDCStandard"), QStringLiteral("N"));
        QCOMPARE(v.value("TxtDCRegalias"), QStringLiteral("S"));
        QCOMPARE(v.value("cboOpcionIVA"), QStringLiteral("IVAAD2"));
        QCOMPARE(v.value("txtFechaEmbarque"), QStringLiteral("03/11/2026"));
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
    const QStringList esperado = {
        "idsubreg=IC04",
        "idaduana=001",
        "idaduanasal=073",
        "cuitcliente=30712345671",
        "cuitdespaduana=20123456786",
        "factura1=A-0001-00000123,A-0001-00000124,A-0001-00000125,A-0001-00000126,A-0001-00000127",
        "factura2=VENDEDOR UNO",
        "factura3=DESPACHANTE PRUEBA",
        "factura5=DEPOSITO 'NORTE'",
        "factura7=O'HIGGINS S.A.",
        "idvendedor=V01",
        "fobdivisas=1234.5",
        "fobcoddivisas=060",
        "fobdivcambio=1.085",
        "fletedivisas=200",
        "fletecoddivisas=DOL",
        "fletedivcambio=1",
        "segurodivisas=15.39",
        "segurocoddivisas=DOL",
        "segurodivcambio=1",
        "seguroporcentaje=1",
        "valoraprorratear=50",
        "ajusteincluir=10.5",
        "ajustededucir=2.25",
        "factorconver=0",
        "idcondiciondeventa=FOB",
        "idpaisdestino=212",
        "motivodestsuspensiva=T1",
        "autorizdestsuspensiva=AUT-1",
        "plazoautorizacion=20-05-2027",
        "cierreventa=15/11/2026",
        "facilidadpago=",
        "dccomext=12.4",
        "dcestmerc=N",
        "dcforzarestmerc=S",
        "dcpaisorigen=203",
        "dcforzarpaisorigen=N",
        "dcpaisdestino=212",
        "dcstandard=N",
        "dcregalias=S",
        "dcbancos=",
        "dckgneto=850.75",
        "opcionesiva=IVAAD1",
        "opcionesganancias=BDEUSO",
        "fechaembarque=03/11/2026",
    };
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
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    QVERIFY(!CaratulaDatos(ts.ctx()).Cargar(QStringLiteral("NADA")).has_value());
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"No se encontro Interno en base de datos"});
}

void TestCaratulaDatos::disposicion() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    auto bajo = [](QStringList l) {
        for (QString& s : l)
            s = s.toLower();
        return l;
    };
    const DisposicionCaratula ic = DisposicionCaratula::Calcular(ts.ctx(), "IC04");
    QVERIFY(ic.hayDest);
    QCOMPARE(bajo(ic.ocultos), QStringList{"txtidvendedor"});
    QVERIFY(!ic.exportacion);
    QVERIFY(ic.opcionesHabilitadas);
    QVERIFY(!ic.facilidadPagoVisible);

    // The freight takes its companions with it, in the order of the dest columns.
    const DisposicionCaratula ec = DisposicionCaratula::Calcular(ts.ctx(), "EC01");
    QCOMPARE(bajo(ec.ocultos), (QStringList{"txtfletedivisas", "txtdivvalorflete", "txtcoddivflete",
                                            "txtdolflete", "txtfactura"}));
    QVERIFY(ec.exportacion);
    QVERIFY(!ec.opcionesHabilitadas);

    const DisposicionCaratula ef = DisposicionCaratula::Calcular(ts.ctx(), "EC16");
    QVERIFY(ef.facilidadPagoVisible);
    QVERIFY(ef.ocultos.isEmpty());

    const DisposicionCaratula sin = DisposicionCaratula::Calcular(ts.ctx(), "ZZ99");
    QVERIFY(!sin.hayDest);
    QVERIFY(sin.ocultos.isEmpty());
    QVERIFY(DisposicionCaratula::Calcular(ts.ctx(), "LAPI01").opcionesHabilitadas);
    QVERIFY(DisposicionCaratula::Calcular(ts.ctx(), "EG02").exportacion);

    QCOMPARE(bajo(DisposicionCaratula::Companeros("TxtSeguroDivisas")),
             (QStringList{"txtdivvalorseguro", "txtcoddivseguro", "txtporc", "txtdolseguro"}));
    QCOMPARE(bajo(DisposicionCaratula::Companeros("Txtfobdivisas")),
             (QStringList{"txtcoddivfob", "txtdivvalorfob"}));
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

void TestCaratulaDatos::bultos() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    NuevaOperacion(ts, QStringLiteral("E-1"));
    BultosDatos b(ts.ctx());
    const QDate hoy(2026, 11, 22);
    SeparadorDecimalScope sep(QStringLiteral(","));
    BultosDatos::Datos d;
    d.nroBultos = QStringLiteral("1/20");
    d.codigo = QStringLiteral("32");
    d.tipo = QStringLiteral("A");
    d.peso = QStringLiteral("1520,5");
    d.bultosDespachar = QStringLiteral("20");
    d.marca = QStringLiteral("MARCA 'SUR'");
    d.via = QStringLiteral("1");
    d.nombreTransporte = QStringLiteral("MSC ANNA");
    d.cuit = QStringLiteral("23000000000");
    d.nombreAgente = QStringLiteral("TRANSPORTES SUR");
    d.bandera = QStringLiteral("212");

    // The expiry must be a date, and not before today.
    d.vencimiento = QStringLiteral("31/11/2026");
    QString foco;
    QVERIFY(!b.Grabar(QStringLiteral("E-1"), d, hoy, &foco));
    QCOMPARE(foco, QStringLiteral("TxtVencimiento"));
    d.vencimiento = QStringLiteral("21/11/2026");
    QVERIFY(!b.Grabar(QStringLiteral("E-1"), d, hoy));
    QCOMPARE(ts.dialogos().mensajes(),
             (QStringList{"En Vencimiendo de Embarque debe tener una fecha valida",
                          "La fecha Vencimiento de Embarque debe ser superior a la del día."}));
    QVERIFY(b.MostrarDatos(QStringLiteral("E-1"))->codigo.isEmpty());
    // Today passes.
    d.vencimiento = QStringLiteral("22/11/2026");
    QVERIFY(b.Grabar(QStringLiteral("E-1"), d, hoy));
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select * from caratula where interno = 'E-1'"));
    QCOMPARE(EsNull(rs.Fields("venemb")), QStringLiteral("22-11-26"));
    QCOMPARE(EsNumero(rs.Fields("bulpes")), 1520.5);
    QCOMPARE(EsNumero(rs.Fields("buldes")), 20.0);
    QCOMPARE(EsNull(rs.Fields("marcabul")), QStringLiteral("MARCA 'SUR'"));
    QCOMPARE(EsNull(rs.Fields("factura9")), QStringLiteral("0"));
    QCOMPARE(EsNull(rs.Fields("factura10")), QStringLiteral("TRANSPORTES SUR"));
    QCOMPARE(EsNull(rs.Fields("cuittrans")), QStringLiteral("23000000000"));

    const auto m = b.MostrarDatos(QStringLiteral("E-1"));
    QVERIFY(m.has_value());
    QCOMPARE(m->peso, QStringLiteral("1520,50"));
    QCOMPARE(m->vencimiento, QStringLiteral("22/11/2026"));
    QCOMPARE(m->bultosDespachar, QStringLiteral("20"));
    QCOMPARE(m->bandera, QStringLiteral("212"));
    QVERIFY(!m->noTransferir);

    // Without a transport agent its name goes too.
    d.cuit.clear();
    QVERIFY(b.Grabar(QStringLiteral("E-1"), d, hoy));
    QCOMPARE(b.MostrarDatos(QStringLiteral("E-1"))->nombreAgente, QString());

    // "NO Transferir bultos": only the mark is written, whatever was typed.
    ts.dialogos().Limpiar();
    d.noTransferir = true;
    d.codigo = QStringLiteral("10");
    d.vencimiento = QStringLiteral("ayer");
    QVERIFY(b.Grabar(QStringLiteral("E-1"), d, hoy));
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"Eligio no transferir bultos, los datos no seran guardados"});
    QCOMPARE(ts.dialogos().registro().first().icono, Dialogos::Icono::Informacion);
    const auto n = b.MostrarDatos(QStringLiteral("E-1"));
    QVERIFY(n->noTransferir);
    QCOMPARE(n->codigo, QStringLiteral("32"));
    QCOMPARE(n->vencimiento, QStringLiteral("22/11/2026"));
}

void TestCaratulaDatos::transportes() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    NuevaOperacion(ts, QStringLiteral("E-1"));
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update caratula set cuittrans = '23000000000' where interno = "
                                 "'E-1'"));
    Transportes t(ts.ctx());
    bool encontrado = false;
    QCOMPARE(t.BuscarTrans(QStringLiteral("23000000000"), &encontrado),
             QStringLiteral("TRANSPORTES SUR"));
    QVERIFY(encontrado);
    QCOMPARE(t.BuscarTrans(QStringLiteral("20123456786"), &encontrado), QString());
    QVERIFY(!encontrado);
    QVERIFY(ts.dialogos().registro().isEmpty());
    QCOMPARE(t.BuscarTrans(QStringLiteral("20123456787")), QString());
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"Cuit Invalido"});

    ts.dialogos().Limpiar();
    QVERIFY(!t.Guardar(1, {}, QStringLiteral("20123456780"), QStringLiteral("MAL")));
    QVERIFY(!t.Guardar(1, {}, QStringLiteral("23000000000"), QStringLiteral("OTRO")));
    QVERIFY(t.Guardar(1, {}, QStringLiteral("20000000011"), QStringLiteral("D'ALESSANDRO")));
    QCOMPARE(ts.dialogos().mensajes(),
             (QStringList{"Cuit Invalido", "El CUIT ingresado ya existe en el sistema"}));
    QList<Transportes::Agente> l = t.Cargar();
    QCOMPARE(l.size(), 2);
    QCOMPARE(l.at(0).nombre, QStringLiteral("D'ALESSANDRO"));
    QCOMPARE(l.at(1).cuit, QStringLiteral("23000000000"));

    // A changed tax number: the Operation keeps the old one.
    QVERIFY(t.Guardar(2, QStringLiteral("23000000000"), QStringLiteral("20123456786"),
                      QStringLiteral("TRANSPORTES SUR SA")));
    QCOMPARE(t.BuscarTrans(QStringLiteral("20123456786")), QStringLiteral("TRANSPORTES SUR SA"));
    QCOMPARE(EsNull(ts.conexion(QStringLiteral("INTERNOS"))
                        .Escalar(QStringLiteral(
                            "select cuittrans from caratula where interno = 'E-1'"))),
             QStringLiteral("23000000000"));

    ts.dialogos().Limpiar();
    ts.dialogos().ResponderNo();
    QVERIFY(!t.Eliminar(QStringLiteral("20123456786")));
    ts.dialogos().ResponderSi();
    QVERIFY(t.Eliminar(QStringLiteral("20123456786")));
    ts.dialogos().ResponderSi();
    QVERIFY(!t.Eliminar(QStringLiteral("20123456786")));
    QCOMPARE(ts.dialogos().todo(),
             (QStringList{"Confirma eliminar el Agente de Tranporte seleccionado",
                          "Confirma eliminar el Agente de Tranporte seleccionado",
                          "Confirma eliminar el Agente de Tranporte seleccionado",
                          "0 cero registros eliminados"}));
    QCOMPARE(t.Cargar().size(), 1);
}

void TestCaratulaDatos::oncca() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararCaratula(ts);
    NuevaOperacion(ts, QStringLiteral("E-1"));
    OnccaDatos o(ts.ctx());
    auto d = o.CargarDatos(QStringLiteral("E-1"));
    QVERIFY(d.has_value());
    QVERIFY(!d->habilitado);
    QCOMPARE(d->codigos.size(), 10);
    for (const QString& c : OnccaDatos::Columnas())
        QVERIFY(d->codigos.value(c).isEmpty());
    // Saving with the switch off keeps the codes, with "N".
    d->codigos.insert(QStringLiteral("ONCCAAcuerdo"), QStringLiteral("AC1"));
    d->codigos.insert(QStringLiteral("ONCCAMatadero"), QStringLiteral("F2"));
    d->codigos.insert(QStringLiteral("ONCCAsispro"), QStringLiteral("P'1"));
    QVERIFY(o.GuardarDatos(QStringLiteral("E-1"), *d));
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select * from caratula where interno = 'E-1'"));
    QCOMPARE(EsNull(rs.Fields("onccahabilitado")), QStringLiteral("N"));
    QCOMPARE(EsNull(rs.Fields("onccaacuerdo")), QStringLiteral("AC1"));
    QCOMPARE(EsNull(rs.Fields("onccamatadero")), QStringLiteral("F2"));
    QCOMPARE(EsNull(rs.Fields("onccasispro")), QStringLiteral("P'1"));
    QCOMPARE(EsNull(rs.Fields("onccafaneador")), QString());
    d->habilitado = true;
    QVERIFY(o.GuardarDatos(QStringLiteral("E-1"), *d));
    const auto e = o.CargarDatos(QStringLiteral("E-1"));
    QVERIFY(e->habilitado);
    QCOMPARE(e->codigos.value(QStringLiteral("ONCCAMatadero")), QStringLiteral("F2"));
    QVERIFY(ts.dialogos().registro().isEmpty());
}

int main(int argc, char** argv) {
    return korven::test::EjecutarClases<QCoreApplication, TestReglas, TestListas,
                                        TestCaratulaDatos>(argc, argv);
}

#include "test_caratula_datos.moc"
