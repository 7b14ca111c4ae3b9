// The header screen driven from the keyboard: a complete import typed as a clerk types it, saved
// with Esc and checked against the stores; the checks of the save, the sub-regime's fields, the
// look-ups and the invoices.
//
// Amounts typed on the header screen under either decimal separator: taken as the clerk meant
// them, or refused with the field's own message and the record left alone. And the insurance by
// percentage, which must count the proration codes as they stand when it is worked out.
//
// The packages screen, the list of transport agents and its editor, driven from the keyboard,
// and the hub's package status after them.
//
// The ONCCA screen: its ten codes from the lists of our own tables, F11 saves, Esc leaves the
// record as it was, the switch turns the lists off; opened from the header's button.
//
// Awkward text pasted into every text box of the header, packages and transport agent
// screens, saved, and read back from the stores: the text as pasted, less control characters,
// cut to the field's maximum length.
//
// The header without its screen: the rules that need no store (check digit, currency
// arithmetic, option codes, dates, the invoice text), the look-ups of codes and persons, and the
// load and save of the header with invoices, packages, transport agents and ONCCA data, on SQLite
// and on PostgreSQL.

#include "FixtureCaratula.h"
#include "TecladoCaratula.h"
#include "foundation/EstadoInterno.h"
#include "foundation/FrmDetalleInterno.h"
#include "header/BusquedaPersonas.h"
#include "header/CambioDivisas.h"
#include "header/CaratulaDatos.h"
#include "header/DigitoVerificador.h"
#include "header/Facturas.h"
#include "header/FechasTexto.h"
#include "header/FrmABMAgTrans.h"
#include "header/FrmBultos.h"
#include "header/FrmCaratula.h"
#include "header/ImportesCaratula.h"
#include "header/ListasCodigos.h"
#include "header/PantallasCaratula.h"
#include "header/PickLists.h"
#include "header/Transportes.h"
#include "header/frmONCCA.h"
#include "platform/Formato.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/Principal.h"
#include "support/TestStores.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

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

// Load and save of the header, what the sub-regime makes of the screen, invoices, packages,
// transport agents and ONCCA data, on SQLite and on PostgreSQL.

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

// What the save of the header may say.
QMap<QString, QString> Dichos() {
    return {
        {"cierre", "El valor ingresado en el campo CIERRE DE VENTA no es una FECHA valida. Corrija "
                   "el Valor o deje vacio el campo."},
        {"despachante", "Debe ingresar el CUIT de DESPACHANTE"},
        {"vendedor", "Debe seleccionar vendedor"},
        {"condicion", "Debe ingresar Condición de venta"},
        {"embarque", "Debe ingresar una fecha valida en Fecha de Embarque"},
        {"fob", "El valor FOB debe ser un valor númerico"},
        {"divfob", "Codigo de divisa no ingresado"},
        {"cambiofob", "El tipo de cambio debe ser un valor numerico valido"},
        {"flete", "El valor FLETE debe ser un valor númerico"},
        {"divflete", "Codigo de divisa en FLETE no ingresado"},
        {"cambioflete", "El tipo de cambio en FLETE debe ser un valor numerico valido"},
        {"seguro", "El valor SEGURO debe ser un valor númerico"},
        {"divseguro", "Codigo de divisa en SEGURO no ingresado"},
        {"cambioseguro", "El tipo de cambio en SEGURO debe ser un valor numerico valido"},
        {"facilidad", "Debe seleccionar S/N en Facilidad de Pago"},
        {"noguarda", "Los datos no pueden ser guardados, desea SALIR de caratula?"},
        {"faltan", "Faltan Facturas."},
        {"salir", kSalir},
    };
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
    // First the rules that need no store: check digit, currency arithmetic, dates and the
    // invoice text.
    void digitoVerificador_data() {
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
        QTest::newRow("con guiones") << "20-12345678" << false << -1;
    }
    void digitoVerificador() {
        QFETCH(QString, cuit);
        QFETCH(bool, valido);
        QFETCH(int, digito);
        QCOMPARE(DigitoVerificador::Valido(cuit), valido);
        QCOMPARE(DigitoVerificador::Calcular(cuit), digito);
    }
    void multiplicar_data() {
        QTest::addColumn<QString>("separador");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<QString>("dolares"); // "-": not computed
        const char* casos[][4] = {
            // 1234.50 x 1.085 = 1339.4325, shown as 1339.43.
            {"euro", "1234.50", "1.085000", "1339.43"},
            // 10.005 x 1 = 10.005: half away from zero on the decimal value.
            {"medio", "10.005", "1.000000", "10.01"},
            {"cero da vacio", "0.00", "1.000000", ""},
            {"cambio vacio", "1000.00", "", "-"},
        };
        for (const char* sep : {",", "."}) {
            auto n = [&](const char* t) {
                return QString::fromLatin1(t).replace('.', QLatin1String(sep));
            };
            for (const auto& c : casos)
                QTest::addRow("%s %s", c[0], sep) << sep << n(c[1]) << n(c[2]) << n(c[3]);
        }
    }
    void multiplicar() {
        QFETCH(QString, separador);
        QFETCH(QString, valor);
        QFETCH(QString, cambio);
        QFETCH(QString, dolares);
        SeparadorDecimalScope sep(separador);
        QCOMPARE(ImportesCaratula::Multiplicar(valor, cambio).value_or(QStringLiteral("-")),
                 dolares);
    }
    void seguroPorcentual_data() {
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
    void seguroPorcentual() {
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
    void fechas_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QDate>("fecha");
        QTest::newRow("dos digitos") << "22-11-26" << QDate(2026, 11, 22);
        QTest::newRow("siglo pasado") << "01/01/45" << QDate(1945, 1, 1);
        QTest::newRow("iso") << "2026-11-22" << QDate(2026, 11, 22);
        QTest::newRow("puntos") << "22.11.2026" << QDate(2026, 11, 22);
        QTest::newRow("texto") << "mañana" << QDate();
    }
    void fechas() {
        QFETCH(QString, texto);
        QFETCH(QDate, fecha);
        QCOMPARE(FechasTexto::Leer(texto), fecha);
        QCOMPARE(FechasTexto::EsFecha(texto), fecha.isValid());
    }
    void factura1_data() {
        QTest::addColumn<QStringList>("facturas");
        QTest::addColumn<QString>("texto");
        QTest::newRow("ninguna") << QStringList() << QString();
        QTest::newRow("dos") << QStringList{"A-0001", "B-22"} << "A-0001,B-22";
        const QStringList siete = {"F00000001", "F00000002", "F00000003", "F00000004",
                                   "F00000005", "F00000006", "F00000007"};
        // 81 characters with the commas: cut to 80 ends inside the last number, which loses one
        // more character.
        QTest::newRow("corta un numero")
            << (QStringList(siete) << "G123456789")
            << "F00000001,F00000002,F00000003,F00000004,F00000005,F00000006,F00000007,G12345678";
    }
    void factura1() {
        QFETCH(QStringList, facturas);
        QFETCH(QString, texto);
        QCOMPARE(CaratulaDatos::Factura1(facturas), texto);
    }
    // Then the look-ups, the load and the save on the stores of each engine.
    void cleanupTestCase() {
        stores_[0].reset();
        stores_[1].reset();
    }
    void buscarDescripcion_data() {
        // list|code|description|what comes with it|table named by the message of a missing code;
        // the rate comes as "00.000000" in the system separator.
        CasosPorMotor({
            "SUBREG|EC01|EXPORTACION A CONSUMO|E|",
            "ADUANA|073|EZEIZA||",
            "PAIS|212|ESTADOS UNIDOS||",
            "PUERTO|ROS|ROSARIO||",
            "DIVISAS|060|EURO|01.085000|",
            "DIVISAS|001|PESO|00.000000|",
            "ADUANA||||",
            "ADUANA|999|||ADUANA",
            "SUBREG|XX01|||sta",
            "CODVENTA|EXW|||CONDICIONDEVENTA",
            "ADUANA|0'1|||ADUANA",
        });
    }
    void buscarDescripcion() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, caso);
        TestStores& ts = Compartidas(motor);
        for (const QString s : {",", "."}) {
            SeparadorDecimalScope sep(s);
            ts.dialogos().Limpiar();
            QString extra;
            QCOMPARE(ListasCodigos(ts.ctx()).BuscarDescripcion(caso[0], caso[1], &extra), caso[2]);
            QCOMPARE(extra, QString(caso[3]).replace(QLatin1Char('.'), s));
            QCOMPARE(ts.dialogos().mensajes(),
                     caso[4].isEmpty() ? QStringList() : QStringList{Inexistente(caso[4])});
        }
    }
    void filas_data() {
        // list|codes and what they hand over, ';' apart|texts, ';' apart.
        CasosPorMotor({
            // Ordered by description, then code; the rate as "000.000000".
            "DIVISAS|DOL;060;001|DOL\tDOLAR ESTADOUNIDENSE\t001,000000;060\tEURO\t001,085000;"
            "001\tPESO\t000,000000",
            "BANCOS|007;011|007\tBANCO GALICIA (007);011\tBANCO NACION (011)",
            // The temporary motives hand over the code and the days.
            "MOTIVOSTEMPI|T2;90;T1;180|T2\tEXHIBICION;T1\tPERFECCIONAMIENTO",
            // Longest codes first, then by description.
            "PAIS|203;212;1|203\tBRASIL;212\tESTADOS UNIDOS;1\tZONA FRANCA",
            "UNIDADES|01;07|01\t KILOGRAMO;07\t UNIDAD",
        });
    }
    void filas() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, caso);
        TestStores& ts = Compartidas(motor);
        SeparadorDecimalScope sep(QStringLiteral(","));
        QStringList c, t;
        for (const ListasCodigos::Fila& f : ListasCodigos(ts.ctx()).Filas(caso[0])) {
            c << f.codigo.split(QLatin1Char('|'));
            t << f.texto;
        }
        QCOMPARE(c.join(';'), caso[1]);
        QCOMPARE(t.join(';'), caso[2]);
    }
    void pickLists_data() {
        // method|code|description; unknown codes answer empty, without a message.
        CasosPorMotor({
            "getAduanaDescripcion|001|BUENOS AIRES",
            "getPaisDescripcion|203|BRASIL",
            "getUnidadesDescripcion|01|KILOGRAMO",
            "getCondicionVentaDescripcion|CIF|COSTO SEGURO Y FLETE",
            "getSubRegimen|IT01|IMPORTACION TEMPORAL",
            "getONCCAFaneador|F2|FANEADOR OESTE",
            "getONCCASisPro|P1|PASTORIL",
            "getAduanaDescripcion|999|",
            "getONCCASisPro|P9|",
        });
    }
    void pickLists() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, caso);
        TestStores& ts = Compartidas(motor);
        PickLists p(ts.ctx());
        // Reached by its name, late-bound, as other libraries reach it.
        QString r;
        QVERIFY(QMetaObject::invokeMethod(&p, caso[0].toLatin1().constData(),
                                          Q_RETURN_ARG(QString, r), Q_ARG(QString, caso[1])));
        QCOMPARE(r, caso[2]);
        QVERIFY(ts.dialogos().registro().isEmpty());
    }
    void cortes_data() { FilasDeMotores(); }
    void cortes() {
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
            QCOMPARE(listado.recibido.value(QStringLiteral("codigos")).toStringList().join(','),
                     f[2]);
        }
        listado.elegir = QStringLiteral("M1");
        QCOMPARE(p.getMotivosListado(), QStringLiteral("M1"));
    }
    void personas_data() { FilasDeMotores(); }
    void personas() {
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
    void verificarCambio_data() {
        // code|rate typed, with "." for the decimal point|answer to the question (none: not asked)|
        // rate kept afterwards|message.
        CasosPorMotor({
            "060|1.085000||1.085|",
            // The seventh decimal does not count.
            "060|1.0850004||1.085|",
            "060|1.1|no|1.085|",
            "060|1.1|si|1.1|Valor Guardado Correctamente.",
            "999|1.1||1.085|No se encontro codigo de DIVISAS en base.",
        });
    }
    void verificarCambio() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, caso);
        TestStores& ts = Compartidas(motor);
        for (const QString s : {",", "."}) {
            SeparadorDecimalScope sep(s);
            const QString valor = QString(caso[1]).replace(QLatin1Char('.'), s);
            ts.dialogos().Limpiar();
            if (caso[2] == QStringLiteral("si"))
                ts.dialogos().ResponderSi();
            else if (caso[2] == QStringLiteral("no"))
                ts.dialogos().ResponderNo();
            ts.conexion(QStringLiteral("INTERNOS"))
                .Ejecutar(QStringLiteral("update divisas set imp = 1.085 where id = '060'"));
            CambioDivisas(ts.ctx()).VerificarCambio(caso[0], valor);
            QVERIFY(ts.dialogos().guionAgotado());
            QCOMPARE(Imp(ts, "060"), caso[3].toDouble());
            QCOMPARE(ts.dialogos().mensajes(),
                     caso[4].isEmpty() ? QStringList() : QStringList{caso[4]});
            const QString pregunta =
                QStringLiteral(
                    "El valor ingresado por usted es %1 este valor no corresponde al que "
                    "tiene guardado en la tabla de Divisas que es %2, desea guardar el "
                    "nuevo valor como predeterminado.")
                    .arg(valor, QStringLiteral("1.085000").replace(QLatin1Char('.'), s));
            if (!caso[2].isEmpty())
                QCOMPARE(ts.dialogos().todo().first(), pregunta);
        }
    }
    void cargar_data() { FilasDeMotores(); }
    void cargar() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararCaratula(ts);
        NuevaOperacion(ts, QStringLiteral("NUEVA"));
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral(
                "insert into caratula "
                "(interno,idsubreg,idaduana,cuitcliente,fobdivisas,fobcoddivisas,"
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
            QCOMPARE(orden.mid(0, 7),
                     (QStringList{"idsubreg", "idaduana", "idaduanasal", "cuitcliente",
                                  "cuitdespaduana", "idvendedor", "fobdivisas"}));
            QCOMPARE(orden.last(), QStringLiteral("opcionesganancias"));
            QStringList vistos;
            for (const char* c :
                 {"TxtSubReg", "Txtfobdivisas", "TxtDivValorFob", "TxtFactCon", "Txtfletedivisas",
                  "cboFacilidadPago", "ChFacturas", "chkDCForzarEstMerc", "chkDCForzarPaisOrigen",
                  "txtDCStandard", "TxtDCRegalias", "cboOpcionIVA", "txtFechaEmbarque"})
                vistos << QString::fromLatin1(c) + QLatin1Char('=') + v.value(c);
            // A NULL stays empty, a facility neither S nor N too.
            QCOMPARE(
                vistos.join(';'),
                QStringLiteral("TxtSubReg=IC04;Txtfobdivisas=1234.50;TxtDivValorFob=1.085000;"
                               "TxtFactCon=0.5;Txtfletedivisas=;cboFacilidadPago=;ChFacturas=S;"
                               "chkDCForzarEstMerc=S;chkDCForzarPaisOrigen=N;txtDCStandard=N;"
                               "TxtDCRegalias=S;cboOpcionIVA=IVAAD2;txtFechaEmbarque=03/11/2026")
                    .replace(QLatin1Char('.'), QLatin1String(s)));
            QCOMPARE(carga->facturas, (QStringList{"A", "B"}));
        }
        QCOMPARE(cd.SumaProrrateo(QStringLiteral("P-100")), 150.0);
        QCOMPARE(cd.SumaProrrateo(QStringLiteral("NUEVA")), 0.0);
        QVERIFY(ts.dialogos().registro().isEmpty());
        QVERIFY(!cd.Cargar(QStringLiteral("NADA")).has_value());
        QCOMPARE(ts.dialogos().mensajes(), QStringList{"No se encontro Interno en base de datos"});
    }
    void guardar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("separador");
        for (int motor : {0, 1})
            for (const char* s : {",", "."})
                QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", s) << motor << s;
    }
    void guardar() {
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
        QCOMPARE(fila, esperado);
        QCOMPARE(fila.at(5).size(), QStringLiteral("factura1=").size() + 79);

        // Commissions abroad that are no number are written as 0.
        p.Poner(QStringLiteral("txtDCComiExt"), QStringLiteral("abc"));
        QCOMPARE(CaratulaDatos(ts.ctx()).Guardar(QStringLiteral("P-1"), p),
                 CaratulaDatos::Resultado::Guardado);
        QCOMPARE(Fila(ts, QStringLiteral("P-1")).at(32), QStringLiteral("dccomext=0"));
    }
    void controles_data() {
        // control=value;... applied to the import screen|controls the sub-regime hides|the answer
        // to the question|what is said, keys of Dichos().
        CasosPorMotor({
            "TxtCierreVenta=31/02/2026;TxtCuitAduana=||no|cierre",
            "TxtCuitAduana=||si|despachante salir",
            "Txtidvendedor=||no|vendedor salir",
            // Hidden by the sub-regime: no vendor is required.
            "Txtidvendedor=|Txtidvendedor|no|",
            "Txtidcondventa=||no|condicion salir",
            "txtFechaEmbarque=32/10/2026||no|embarque salir",
            "Txtfobdivisas=;#facturas||si|fob salir faltan",
            "TxtCoddivfob=||no|divfob salir",
            "TxtDivValorFob=uno||no|cambiofob salir",
            "Txtfletedivisas=x||no|flete salir",
            "TxtCodDivFlete=||no|divflete salir",
            "TxtDivValorFlete=||no|cambioflete salir",
            "Txtfletedivisas=;TxtCodDivFlete=;TxtDivValorFlete=|Txtfletedivisas|no|",
            "Txtsegurodivisas=||no|seguro salir",
            "TxtCodDivseguro=||no|divseguro salir",
            "TxtDivValorSeguro=||no|cambioseguro salir",
            // Only the first failed check speaks.
            "Txtidvendedor=;Txtfobdivisas=||no|vendedor salir",
            // Leaving an export ("EC...") without invoices does not ask for them.
            "TxtSubReg=EC01;Txtfobdivisas=;#facturas||si|fob salir",
            "Txtfobdivisas=;#facturas|TxtFactura|si|fob salir",
            "cboFacilidadPago=||no|facilidad",
            "#interno||si|noguarda",
            "#interno;#facturas||si|noguarda faltan",
        });
    }
    void controles() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, caso);
        const QString cambios = caso[0];
        const bool salir = caso[2] == QStringLiteral("si");
        QStringList dialogo;
        for (const QString& k : caso[3].split(QLatin1Char(' '), Qt::SkipEmptyParts))
            dialogo << Dichos().value(k);
        // Nothing said: saved; otherwise the answer leaves or stays on the field of the first
        // change.
        using R = CaratulaDatos::Resultado;
        const R resultado = dialogo.isEmpty() ? R::Guardado : salir ? R::Salir : R::Quedarse;
        const QString foco = resultado == R::Quedarse && !cambios.startsWith(QLatin1Char('#'))
                                 ? cambios.section(QLatin1Char('='), 0, 0)
                                 : QString();
        TestStores& ts = Compartidas(motor);
        SeparadorDecimalScope sep(QStringLiteral(","));
        CaratulaDatos::Pantalla p = PantallaImport(QStringLiteral(","));
        QString interno = QStringLiteral("P-1");
        p.Visible(QStringLiteral("cboFacilidadPago"),
                  cambios.contains(QStringLiteral("cboFacilidadPago")));
        for (const QString& c : cambios.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            if (c == QStringLiteral("#facturas"))
                p.facturas.clear();
            else if (c == QStringLiteral("#interno"))
                interno = QStringLiteral("NO-EXISTE");
            else
                p.Poner(c.section(QLatin1Char('='), 0, 0), c.section(QLatin1Char('='), 1));
        }
        for (const QString& c : caso[1].split(QLatin1Char(';'), Qt::SkipEmptyParts))
            p.Visible(c, false);
        const QStringList antes = Fila(ts, QStringLiteral("P-1"));
        if (dialogo.join(' ').contains(QStringLiteral("SALIR"))) {
            if (salir)
                ts.dialogos().ResponderSi();
            else
                ts.dialogos().ResponderNo();
        }
        QString enfocado;
        const auto r = CaratulaDatos(ts.ctx()).Guardar(interno, p, &enfocado);
        QCOMPARE(ts.dialogos().todo(), dialogo);
        QVERIFY(ts.dialogos().guionAgotado());
        QCOMPARE(r, resultado);
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
    void facturas_data() { FilasDeMotores(); }
    void facturas() {
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
    void transportes_data() { FilasDeMotores(); }
    void transportes() {
        MOTOR_O_SALTAR();
        TestStores& ts = Compartidas(motor);
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(
                QStringLiteral("update caratula set cuittrans = '23000000000' where interno = "
                               "'P-1'"));
        // The screens of the agents cover the rest; here what they cannot reach.
        Transportes t(ts.ctx());
        bool encontrado = true;
        QCOMPARE(t.BuscarTrans(QStringLiteral("20123456786"), &encontrado), QString());
        QVERIFY(!encontrado && ts.dialogos().registro().isEmpty());
        QVERIFY(!t.Guardar(1, {}, QStringLiteral("23000000000"), QStringLiteral("OTRO")));
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"El CUIT ingresado ya existe en el sistema"});
        // A changed tax number: the Operation keeps the old one.
        QVERIFY(t.Guardar(2, QStringLiteral("23000000000"), QStringLiteral("20123456786"),
                          QStringLiteral("TRANSPORTES SUR SA")));
        QCOMPARE(t.BuscarTrans(QStringLiteral("20123456786")),
                 QStringLiteral("TRANSPORTES SUR SA"));
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
};

namespace {

const QString kDemo = QStringLiteral("DEMO-EC01-001");

QStringList Agentes(TestStores& ts) {
    Recordset rs = ts.conexion(QStringLiteral("PERSONAL"))
                       .Abrir(QStringLiteral("select cuit,nombre from transporte order by cuit"));
    QStringList l;
    for (; !rs.Eof(); rs.MoveNext())
        l << EsNull(rs.Fields("cuit")) + QLatin1Char(' ') + EsNull(rs.Fields("nombre"));
    return l;
}

QStringList Oncca(TestStores& ts) {
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select onccahabilitado,onccaacuerdo,onccacategoria,"
                                             "onccacortes,onccaelaborador,onccaespecie,"
                                             "onccafaneador,onccameccoorgbio,onccares3106,"
                                             "onccasispro,onccamatadero from caratula where "
                                             "interno = '%1'")
                                  .arg(kDemo));
    QStringList l;
    for (const QString& c : rs.Campos())
        l << EsNull(rs.Fields(c));
    return l;
}

const QString kInterno = QStringLiteral("T-PEGAR");

// Ctrl+A, Ctrl+V: the clerk replaces what the field holds with the clipboard.
void Pegar(QLineEdit* t, const QString& texto) {
    QGuiApplication::clipboard()->setText(texto);
    QTest::keyClick(t, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(t, Qt::Key_V, Qt::ControlModifier);
}

// What the field keeps of the clean text: its maximum length, never half a character.
QString Esperado(const QLineEdit* t, const QString& limpio) {
    QString e = limpio.left(t->maxLength());
    if (!e.isEmpty() && e.back().isHighSurrogate())
        e.chop(1);
    return e;
}

// The text boxes the clerk can type in.
QList<QLineEdit*> Editables(QWidget* f) {
    QList<QLineEdit*> r;
    for (QLineEdit* t : f->findChildren<QLineEdit*>())
        if (!t->isReadOnly() && t->isEnabled() && t->isVisibleTo(f))
            r << t;
    return r;
}

// Pastes into every editable text box but those given a fixed text, and answers the column of
// each pasted field ("?" for a field the test does not know: none may be left out).
QMap<QLineEdit*, QString> PegarEnTodos(QWidget* f, const QMap<QString, QString>& columnas,
                                       const QMap<QString, QString>& fijos, const QString& pegado) {
    QMap<QLineEdit*, QString> r;
    for (QLineEdit* t : Editables(f)) {
        const QString n = t->objectName();
        if (fijos.contains(n)) {
            t->setText(fijos.value(n));
        } else {
            Pegar(t, pegado);
            r.insert(t, columnas.value(n, QStringLiteral("?")));
        }
    }
    return r;
}

QString Leer(TestStores& ts, const char* entidad, const QString& sql, const QVariant& clave) {
    Recordset rs = ts.conexion(QString::fromLatin1(entidad)).Abrir(sql, {clave});
    return rs.Eof() ? QStringLiteral("<sin fila>") : EsNull(rs.Fields(0));
}

// Each pasted field against its column, read by a select of one column ("%1") and a key.
void Comparar(TestStores& ts, const char* entidad, const QString& sql, const QVariant& clave,
              const QMap<QLineEdit*, QString>& pegados, const QString& limpio) {
    for (auto it = pegados.cbegin(); it != pegados.cend(); ++it)
        if (!it.value().isEmpty())
            QCOMPARE(it.key()->objectName() + QLatin1Char('=') +
                         Leer(ts, entidad, sql.arg(it.value()), clave),
                     it.key()->objectName() + QLatin1Char('=') + Esperado(it.key(), limpio));
}

} // namespace

class TestFrmBultos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cargaYGrabado_data() { FilasDeMotores(); }
    void cargaYGrabado() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope sep(QStringLiteral(","));
        FrmBultos f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
        Mostrar(f);
        QStringList cargado;
        for (const char* c :
             {"TxtNroBultos", "Lbcodigoemb", "LbTipoemb", "LbVia", "LbBandera", "TxtPeso",
              "TxtBultDesp", "TxtCantDisp", "TxtVencimiento", "TxtNombreTrans"})
            cargado << (c[0] == 'L' ? f.findChild<QLabel*>(c)->text() : Texto(&f, c));
        QCOMPARE(cargado, (QStringList{"1/8", "CONTENEDOR", "CONTENEDOR 20 PIES", "MARITIMA",
                                       "REINO UNIDO", "31500,00", "8", "8", "31/12/2027",
                                       "AGENCIA MARITIMA RIO DE LA PLATA S.A."}));
        QVERIFY(!f.findChild<QCheckBox*>("chTransBultos")->isChecked());
        QVERIFY(f.findChild<QLabel*>("lbAdvert")->isHidden());

        // From the first field, as Enter leads.
        QCOMPARE(NombreFoco(), QStringLiteral("TxtNroBultos"));
        Reemplazar(QStringLiteral("1/10"));
        QCOMPARE(NombreFoco(), QStringLiteral("TxtCodigo"));
        ElegirEnListado(QStringLiteral("33"));
        Tecla(Qt::Key_F6);
        QCOMPARE(Texto(&f, "TxtCodigo"), QStringLiteral("33"));
        QCOMPARE(f.findChild<QLabel*>("Lbcodigoemb")->text(),
                 QStringLiteral("CONTENEDOR REFRIGERADO"));
        Tecla(Qt::Key_Return);
        Reemplazar(QStringLiteral("b"));
        QCOMPARE(Texto(&f, "TxtTipo"), QStringLiteral("B"));
        QCOMPARE(f.findChild<QLabel*>("LbTipoemb")->text(), QStringLiteral("CONTENEDOR 40 PIES"));
        QCOMPARE(NombreFoco(), QStringLiteral("TxtBultDesp"));
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Escribir(QStringLiteral("10"));
        QCOMPARE(Texto(&f, "TxtCantDisp"), QStringLiteral("10"));
        Tecla(Qt::Key_Return);
        Reemplazar(QStringLiteral("40250,5"));
        QCOMPARE(NombreFoco(), QStringLiteral("TxtMarcaBul"));
        Reemplazar(QStringLiteral("LAS PAMPAS 'EXPORT'"));
        QCOMPARE(NombreFoco(), QStringLiteral("TxtVia"));
        Tecla(Qt::Key_Return);
        Tecla(Qt::Key_Return);
        // A tax number whose check digit fails.
        QCOMPARE(NombreFoco(), QStringLiteral("TxtCuit"));
        Reemplazar(QStringLiteral("30712223334"));
        QCOMPARE(ts.dialogos().mensajes(), QStringList{"Cuit Invalido"});
        QCOMPARE(Texto(&f, "TxtNombreTrans"),
                 QStringLiteral("AGENCIA MARITIMA RIO DE LA PLATA S.A."));
        Control<QLineEdit>(&f, "TxtCuit")->setFocus();
        Reemplazar(QStringLiteral("30715556665"));
        QCOMPARE(Texto(&f, "TxtNombreTrans"), QStringLiteral("TRANSPORTES DEL LITORAL S.R.L."));
        QCOMPARE(NombreFoco(), QStringLiteral("TxtBandera"));
        Tecla(Qt::Key_Return);
        // The expiry: not a date, then yesterday; the screen stays on the field.
        QCOMPARE(NombreFoco(), QStringLiteral("TxtVencimiento"));
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Escribir(QStringLiteral("31/02/2027"));
        ts.dialogos().Limpiar();
        Tecla(Qt::Key_Escape);
        QVERIFY(f.isVisible());
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Escribir(FormatoFecha(QDate::currentDate().addDays(-1), QStringLiteral("dd/mm/yyyy")));
        Tecla(Qt::Key_Escape);
        QVERIFY(f.isVisible());
        QCOMPARE(NombreFoco(), QStringLiteral("TxtVencimiento"));
        QCOMPARE(ts.dialogos().mensajes(),
                 (QStringList{"En Vencimiendo de Embarque debe tener una fecha valida",
                              "La fecha Vencimiento de Embarque debe ser superior a la del día."}));
        QCOMPARE(Columna(ts, kDemo, "bulnro"), QStringLiteral("1/8"));
        // Today passes; Ctrl+C leaves as Esc does.
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Escribir(FormatoFecha(QDate::currentDate(), QStringLiteral("dd/mm/yyyy")));
        Tecla(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!f.isVisible());
        QStringList fila;
        for (const char* c : {"bulnro", "bulcod", "bultip", "buldes", "bulpes", "marcabul", "via",
                              "trans", "cuittrans", "factura10", "bandera", "factura9"})
            fila << Columna(ts, kDemo, c);
        QCOMPARE(fila, (QStringList{"1/10", "33", "B", "10", "40250.5", "LAS PAMPAS 'EXPORT'", "1",
                                    "MSC ANNA", "30715556665", "TRANSPORTES DEL LITORAL S.R.L.",
                                    "426", "0"}));
        QCOMPARE(Columna(ts, kDemo, "venemb"),
                 FormatoFecha(QDate::currentDate(), QStringLiteral("dd-mm-yy")));
    }
    void agentes_data() { FilasDeMotores(); }
    void agentes() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        FrmBultos f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
        Mostrar(f);
        Control<QLineEdit>(&f, "TxtCuit")->setFocus();
        // F6 shows the agents by name; Insert adds one through its editor, whose check digit
        // refuses a wrong number first.
        AlAbrirse(QStringLiteral("FrmLstTrans"), [&ts](QWidget* lista) {
            auto* lst = lista->findChild<QTreeWidget*>(QStringLiteral("Lst"));
            QCOMPARE(lst->topLevelItemCount(), 3);
            QCOMPARE(lst->topLevelItem(0)->text(1), QStringLiteral("AEROCARGAS EZEIZA S.A."));
            AlAbrirse(QStringLiteral("FrmABMAgTrans"), [&ts](QWidget* abm) {
                auto* cuit = abm->findChild<QLineEdit*>(QStringLiteral("TxtCuit"));
                QTest::keyClicks(cuit, QStringLiteral("20000000012"));
                QTest::keyClicks(abm->findChild<QLineEdit*>(QStringLiteral("TxtNombre")),
                                 QStringLiteral("D'ALESSANDRO CARGAS"));
                auto* guardar = abm->findChild<QPushButton*>(QStringLiteral("CmdGuardar"));
                guardar->click();
                QVERIFY(abm->isVisible());
                QCOMPARE(ts.dialogos().mensajes(), QStringList{"Cuit Invalido"});
                cuit->selectAll();
                QTest::keyClicks(cuit, QStringLiteral("20000000011"));
                guardar->click();
            });
            QTest::keyClick(lst, Qt::Key_Insert);
            QCOMPARE(lst->topLevelItemCount(), 4);
            // Delete asks first.
            ts.dialogos().ResponderSi();
            lst->setCurrentItem(lst->topLevelItem(0));
            QTest::keyClick(lst, Qt::Key_Delete);
            QCOMPARE(lst->topLevelItemCount(), 3);
            // Enter hands the agent chosen back: D'ALESSANDRO comes after AGENCIA by name.
            lst->setCurrentItem(lst->topLevelItem(1));
            QTest::keyClick(lst, Qt::Key_Return);
        });
        Tecla(Qt::Key_F6);
        QCOMPARE(Texto(&f, "TxtCuit"), QStringLiteral("20000000011"));
        QCOMPARE(Texto(&f, "TxtNombreTrans"), QStringLiteral("D'ALESSANDRO CARGAS"));
        QCOMPARE(Agentes(ts), (QStringList{"20000000011 D'ALESSANDRO CARGAS",
                                           "30543210982 AGENCIA MARITIMA RIO DE LA PLATA S.A.",
                                           "30715556665 TRANSPORTES DEL LITORAL S.R.L."}));
        QCOMPARE(ts.dialogos().todo().mid(1),
                 QStringList{"Confirma eliminar el Agente de Tranporte seleccionado"});
        f.findChild<QCheckBox*>("chTransBultos")->setChecked(true);
        ts.dialogos().Limpiar();
        f.reject();
    }
    void noTransferir_data() { FilasDeMotores(); }
    void noTransferir() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        // Packages without a code: the hub counts them incomplete.
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(
                QStringLiteral("update caratula set bulcod = '', factura8 = 'N' where interno = "
                               "'%1'")
                    .arg(kDemo));
        FrmDetalleInterno hub(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
        QLabel* estado = hub.findChild<QLabel*>(QStringLiteral("LbEstadoBultos"));
        QCOMPARE(estado->text(), QStringLiteral("INCOMPLETO"));
        QVERIFY(hub.findChild<QPushButton*>(QStringLiteral("CmdBultos"))->isEnabled());
        // "NO Transferir bultos": only the mark is written, whatever was typed.
        AlAbrirse(QStringLiteral("FrmBultos"), [](QWidget* f) {
            auto* peso = f->findChild<QLineEdit*>(QStringLiteral("TxtPeso"));
            peso->selectAll();
            QTest::keyClicks(peso, QStringLiteral("1"));
            auto* marca = f->findChild<QCheckBox*>(QStringLiteral("chTransBultos"));
            marca->setFocus();
            QTest::keyClick(marca, Qt::Key_Space);
            QVERIFY(!f->findChild<QLabel*>(QStringLiteral("lbAdvert"))->isHidden());
            QTest::keyClick(marca, Qt::Key_Escape);
        });
        hub.CmdBultos();
        QCOMPARE(ts.dialogos().mensajes(),
                 QStringList{"Eligio no transferir bultos, los datos no seran guardados"});
        QCOMPARE(Columna(ts, kDemo, "factura9"), QStringLiteral("1"));
        QCOMPARE(Columna(ts, kDemo, "bulpes"), QStringLiteral("31500"));
        QCOMPARE(estado->text(), QStringLiteral("COMPLETO"));
    }
    void cargarGuardarYApagar_data() { FilasDeMotores(); }
    void cargarGuardarYApagar() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        const QStringList antes = Oncca(ts);
        {
            frmONCCA f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
            Mostrar(f);
            QVERIFY(f.findChild<QCheckBox*>("chONCCA")->isChecked());
            QCOMPARE(Texto(&f, "txtAcuerdo"), QStringLiteral("481 - CUOTA 481 UNION EUROPEA"));
            QCOMPARE(f.Codigo(QStringLiteral("txtAcuerdo")), QStringLiteral("481"));
            // The slaughterhouse is described from the faneadores.
            QCOMPARE(Texto(&f, "txtMatadero"),
                     QStringLiteral("5001 - FRIGORIFICO LAS PAMPAS S.A. - PLANTA AZUL"));
            QCOMPARE(Texto(&f, "txtCorte"), QStringLiteral("LOM - LOMO"));
            // Esc leaves the record as it was.
            Tecla(Qt::Key_Escape);
            QVERIFY(!f.isVisible());
        }
        QCOMPARE(Oncca(ts), antes);

        frmONCCA f(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
        Mostrar(f);
        ts.ctx().pantallas().Registrar(QStringLiteral("FrmListado"), [](AppContext&,
                                                                        const QVariantMap& args) {
            return QVariant(
                args.value(QStringLiteral("titulo")).toString().endsWith(QStringLiteral("Corte"))
                    ? QStringLiteral("NAL")
                    : QStringLiteral("HIL"));
        });
        f.findChild<QPushButton*>("cmdAcuerdo")->click();
        f.findChild<QPushButton*>("cmdCorte")->click();
        QCOMPARE(Texto(&f, "txtAcuerdo"), QStringLiteral("HIL - CUOTA HILTON"));
        QCOMPARE(Texto(&f, "txtCorte"), QStringLiteral("NAL - NALGA"));
        Tecla(Qt::Key_F11);
        QVERIFY(!f.isVisible());
        QCOMPARE(Oncca(ts), (QStringList{"S", "HIL", "NO", "NAL", "1021", "BOV", "5001", "C", "01",
                                         "P", "5001"}));
        QVERIFY(ts.dialogos().registro().isEmpty());

        // From the header's button.
        ts.ctx().InternoActual = kDemo;
        FrmCaratula c(ts.ctx(), {{QStringLiteral("interno"), kDemo}});
        Mostrar(c);
        auto* boton = c.findChild<QPushButton*>("cmdONCCA");
        QVERIFY(boton->isEnabled()); // an export "EC"
        // The switch off turns the lists off; F11 saves the codes as they were, with "N".
        AlAbrirse(QStringLiteral("frmONCCA"), [](QWidget* f) {
            auto* ch = f->findChild<QCheckBox*>(QStringLiteral("chONCCA"));
            ch->setFocus();
            QTest::keyClick(ch, Qt::Key_Space);
            for (QPushButton* b : f->findChildren<QPushButton*>())
                QVERIFY2(!b->isEnabled(), qPrintable(b->objectName()));
            QTest::keyClick(ch, Qt::Key_F11);
        });
        boton->click();
        QCOMPARE(Oncca(ts), (QStringList{"N", "HIL", "NO", "NAL", "1021", "BOV", "5001", "C", "01",
                                         "P", "5001"}));
        QVERIFY(c.isVisible());
        // The demo export's header is complete: Esc saves it without a question, and the save of
        // the header leaves the ONCCA switch as the ONCCA screen wrote it.
        Tecla(Qt::Key_Escape);
        QCOMPARE(c.result(), int(QDialog::Accepted));
        QCOMPARE(ts.dialogos().todo(), QStringList());
        QCOMPARE(Oncca(ts).first(), QStringLiteral("N"));
    }
    void pegar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("pegado");
        QTest::addColumn<QString>("limpio");
        const QString largo = QStringLiteral("LARGO'4000;-- \\").repeated(300).left(4000);
        const QString clave = QString::fromUtf8("CLAVE \xF0\x9D\x84\x9E SOL");
        const struct {
            const char* nombre;
            QString pegado, limpio;
        } textos[] = {
            {"punto y coma", QStringLiteral("X'); DELETE FROM CARATULA; --"),
             QStringLiteral("X'); DELETE FROM CARATULA; --")},
            {"nul",
             QStringLiteral("AB") + QChar(0) + QStringLiteral("CD\x01\x7f") + QChar(0x1B) +
                 QStringLiteral("E\tF"),
             QStringLiteral("ABCDE\tF")},
            {"4 bytes", clave, clave},
            {"4000", largo, largo},
        };
        for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
            for (const auto& t : textos)
                QTest::addRow("%s %s", m == Motor::SQLite ? "sqlite" : "postgresql", t.nombre)
                    << int(m) << t.pegado << t.limpio;
    }

    void pegar() {
        MOTOR_O_SALTAR();
        QFETCH(QString, pegado);
        QFETCH(QString, limpio);
        TestStores ts(static_cast<Motor>(motor));
        PrepararCaratula(ts);
        NuevaOperacion(ts, kInterno);
        ts.ctx().InternoActual = kInterno;
        SeparadorDecimalScope sep(QStringLiteral(","));
        const QString selectCaratula = QStringLiteral("select %1 from caratula where interno = ?");

        // The header: every text field, and an invoice number added with Enter.
        {
            FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
            Mostrar(f);
            QMap<QString, QString> columnas;
            for (const CaratulaDatos::Campo& c : CaratulaDatos::CamposDeGuardado())
                if (c.tipo == CaratulaDatos::Tipo::Texto)
                    columnas.insert(c.control, c.columna.toLower());
            columnas.insert(QStringLiteral("TxtFactura"), QString());
            const QMap<QString, QString> fijos = {
                {"Txtfobdivisas", "100"},  {"TxtDivValorFob", "1"},   {"Txtfletedivisas", "0"},
                {"TxtDivValorFlete", "1"}, {"Txtsegurodivisas", "0"}, {"TxtDivValorSeguro", "1"},
                {"TxtPorc", ""},           {"TxtProrratear", ""},     {"TxtAjustIncluir", ""},
                {"TxtAjustDeducir", ""},   {"TxtFactCon", ""},        {"txtKgNeto", ""},
                {"txtDCComiExt", ""},      {"TxtCierreVenta", ""},    {"txtFechaEmbarque", ""}};
            const QMap<QLineEdit*, QString> pegados = PegarEnTodos(&f, columnas, fijos, pegado);
            QVERIFY(pegados.size() >= 20);
            QVERIFY(!pegados.values().contains(QStringLiteral("?")));
            auto* cbo = f.findChild<QComboBox*>(QStringLiteral("cboFacilidadPago"));
            if (cbo->isVisibleTo(&f))
                cbo->setCurrentIndex(0);
            auto* factura = f.findChild<QLineEdit*>(QStringLiteral("TxtFactura"));
            const QString numero = Esperado(factura, limpio);
            factura->setFocus();
            Tecla(Qt::Key_Return);
            QCOMPARE(f.findChild<QListWidget*>(QStringLiteral("LstFact"))->count(), 1);
            Tecla(Qt::Key_Escape);
            QCOMPARE(ts.dialogos().todo(), QStringList());
            QVERIFY(!f.isVisible());
            Comparar(ts, "INTERNOS", selectCaratula, kInterno, pegados, limpio);
            QCOMPARE(Leer(ts, "INTERNOS", selectCaratula.arg(QStringLiteral("factura1")), kInterno),
                     numero);
            QCOMPARE(Leer(ts, "INTERNOS",
                          QStringLiteral("select factura from facturas where interno = ?"),
                          kInterno),
                     numero);
        }

        // The packages and the means of transport.
        {
            FrmBultos f(ts.ctx(), {{QStringLiteral("interno"), kInterno}});
            Mostrar(f);
            const QMap<QString, QString> columnas = {
                {"TxtNroBultos", "bulnro"},  {"TxtCodigo", "bulcod"},  {"TxtTipo", "bultip"},
                {"TxtMarcaBul", "marcabul"}, {"TxtVia", "via"},        {"TxtNomTrans", "trans"},
                {"TxtCuit", "cuittrans"},    {"TxtBandera", "bandera"}};
            const QMap<QString, QString> fijos = {
                {"TxtPeso", ""},
                {"TxtBultDesp", ""},
                {"TxtCantDisp", ""},
                {"TxtVencimiento",
                 FormatoFecha(QDate::currentDate(), QStringLiteral("dd/mm/yyyy"))}};
            const QMap<QLineEdit*, QString> pegados = PegarEnTodos(&f, columnas, fijos, pegado);
            QCOMPARE(pegados.size(), columnas.size());
            QVERIFY(!pegados.values().contains(QStringLiteral("?")));
            Tecla(Qt::Key_Escape);
            QCOMPARE(ts.dialogos().todo(), QStringList());
            QVERIFY(!f.isVisible());
            Comparar(ts, "INTERNOS", selectCaratula, kInterno, pegados, limpio);
        }
    }
};

namespace {

void Nueva(TestStores& ts, const QString& interno) {
    NuevaOperacion(ts, interno);
    ts.ctx().InternoActual = interno;
}

QString Estado(TestStores& ts, const QString& interno) {
    EstadoDetalle e;
    EstadoInterno(ts.ctx()).VerDatos(interno, e);
    return e.textos.value(QStringLiteral("LbEstadoCaratula"));
}

const QString kImpo = QStringLiteral("DEMO-IC04-001");

double Numero(TestStores& ts, const QString& columna) {
    Recordset rs =
        ts.conexion(QStringLiteral("INTERNOS"))
            .Abrir(QStringLiteral("select %1 from caratula where interno = ?").arg(columna),
                   {kImpo});
    return EsNumero(rs.Fields(0));
}

} // namespace

class TestFrmCaratula : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void importacion_data() { FilasDeMotores(); }
    void importacion() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope sep(QStringLiteral(","));
        const QString interno = QStringLiteral("T-IC04");
        Nueva(ts, interno);
        QCOMPARE(Estado(ts, interno), QStringLiteral("INCOMPLETO"));

        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
        Mostrar(f);
        // The header of the demo import, typed field after field as Enter leads; the names of the
        // persons and the codes' descriptions show in the row saved.
        QVERIFY(Campos({{"TxtSubReg", "ic04"}}));
        QCOMPARE(Texto(&f, "TxtSubRegDesc"), QStringLiteral("IMPORTACION A CONSUMO"));
        QVERIFY(Control<QLineEdit>(&f, "TxtIdAduana2")->isHidden()); // dest
        QCOMPARE(NombreFoco(), QStringLiteral("txtIdAduana1"));
        ElegirEnListado(QStringLiteral("001"));
        Tecla(Qt::Key_F6);
        QCOMPARE(Texto(&f, "TxtAduana1"), QStringLiteral("BUENOS AIRES"));
        Tecla(Qt::Key_Return);
        QVERIFY(Campos({{"TxtCUITCliente", "30708123451"},
                        {"TxtCuitAduana", "20203040505"},
                        {"Txtidvendedor", "v001"},
                        {"Txtfobdivisas", "16780"},
                        {"TxtCoddivfob", "DOL"}}));
        QCOMPARE(Texto(&f, "TxtDivValorFob"), QStringLiteral("01,000000"));
        QVERIFY(Campos({{"TxtDivValorFob", "1"},
                        {"Txtfletedivisas", "850"},
                        {"TxtCodDivFlete", "DOL"},
                        {"TxtDivValorFlete", "1"},
                        {"Txtsegurodivisas", "120,5"},
                        {"TxtCodDivseguro", "DOL"},
                        {"TxtDivValorSeguro", "1"}}));
        QCOMPARE(Texto(&f, "TxtDolFob"), QStringLiteral("16780,00"));
        QCOMPARE(Texto(&f, "TxtDolFlete"), QStringLiteral("850,00"));
        // 0 % computes nothing.
        QVERIFY(Campos({{"TxtPorc", "0"},
                        {"TxtProrratear", "0"},
                        {"TxtAjustIncluir", "0"},
                        {"TxtAjustDeducir", "0"}}));
        QCOMPARE(Texto(&f, "TxtDolSeguro"), QStringLiteral("120,50"));
        QVERIFY(!Control<QLineEdit>(&f, "TxtFactCon")->isEnabled());
        QCOMPARE(NombreFoco(), QStringLiteral("Txtidcondventa"));
        ElegirEnListado(QStringLiteral("FOB"));
        Tecla(Qt::Key_F6);
        Tecla(Qt::Key_Return);
        // Enter in the invoice field adds the number and stays there for the next one.
        QVERIFY(Campos({{"Txtidpais", "310"},
                        {"txtFechaEmbarque", "15/1/2026"},
                        {"TxtFactura", "A-0001-00012345"},
                        {"TxtFactura", "A-0001-00012346"},
                        {"TxtFactura", ""},
                        {"LstFact", ""}}));
        QCOMPARE(NombreFoco(), QStringLiteral("ChFacturas"));
        Tecla(Qt::Key_Space);
        Tecla(Qt::Key_Return);
        QVERIFY(!Control<QCheckBox>(&f, "chkDCForzarEstMerc")->isEnabled());
        QCOMPARE(NombreFoco(), QStringLiteral("txtDCEstMerc"));
        ElegirEnListado(QStringLiteral("1"));
        Tecla(Qt::Key_F6);
        QVERIFY(Control<QCheckBox>(&f, "chkDCForzarEstMerc")->isEnabled());
        Tecla(Qt::Key_Return);
        QVERIFY(Campos({{"chkDCForzarEstMerc", ""},
                        {"txtDCPaisOrigen", ""},
                        {"txtDCPaisDest", "310"},
                        {"txtDCStandard", ""},
                        {"TxtDCRegalias", ""},
                        {"txtKgNeto", "0"}}));
        QCOMPARE(NombreFoco(), QStringLiteral("cboOpcionIVA"));
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Return);
        QCOMPARE(NombreFoco(), QStringLiteral("cboOpcionesGanancias"));
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Down);
        QVERIFY(!Control<QPushButton>(&f, "cmdONCCA")->isEnabled());

        Tecla(Qt::Key_Escape);
        QVERIFY(!f.isVisible());
        QCOMPARE(f.result(), int(QDialog::Accepted));
        QVERIFY(!ts.ctx().FormularioDeDatos);
        QVERIFY(ts.dialogos().registro().isEmpty());

        // Column by column as the demo import holds it; typing marked the Operation changed.
        QCOMPARE(Fila(ts, interno), Fila(ts, QStringLiteral("DEMO-IC04-001")));
        QCOMPARE(Columna(ts, interno, "factura8"), QStringLiteral("S"));
        QCOMPARE(Columna(ts, interno, "fechaembarque"), QStringLiteral("15/01/2026"));
        QCOMPARE(Estado(ts, interno), QStringLiteral("COMPLETO!"));
    }
    void salirSinGuardar_data() { FilasDeMotores(); }
    void salirSinGuardar() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope sep(QStringLiteral(","));
        const QString interno = QStringLiteral("DEMO-IC04-001");
        ts.ctx().InternoActual = interno;
        const QStringList antes = Fila(ts, interno);
        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
        Mostrar(f);
        // An incomplete FOB: the message, the question; Yes leaves, and as the invoices are there
        // nothing more is said. The record is unchanged but for the change mark of the edit.
        Control<QLineEdit>(&f, "Txtfobdivisas")->setFocus();
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Tecla(Qt::Key_Delete);
        ts.dialogos().ResponderSi();
        Tecla(Qt::Key_Escape);
        QVERIFY(!f.isVisible());
        QCOMPARE(ts.dialogos().todo(),
                 (QStringList{"El valor FOB debe ser un valor númerico",
                              "desea SALIR de la caratula, sin guardar la información?"}));
        QCOMPARE(Fila(ts, interno), antes);
    }
    void vendedorOculto_data() { FilasDeMotores(); }
    void vendedorOculto() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope sep(QStringLiteral("."));
        Nueva(ts, QStringLiteral("T-TR"));
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(
                QStringLiteral("update caratula set idvendedor = 'V001', factura2 = 'X' where "
                               "interno = 'T-TR'"));
        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("T-TR")}});
        Mostrar(f);
        // TR01 does without the vendor, the freight, the insurance and the condition of sale.
        QVERIFY(Campos({{"TxtSubReg", "TR01"}}));
        for (const char* n : {"Txtidvendedor", "TxtNombreven", "Txtfletedivisas", "TxtDolFlete",
                              "Txtsegurodivisas", "TxtDolSeguro", "Txtidcondventa"})
            QVERIFY2(Control<QWidget>(&f, n)->isHidden(), n);
        QCOMPARE(Texto(&f, "Txtidvendedor"), QString()); // emptied with it
        QVERIFY(Campos({{"txtIdAduana1", "001"},
                        {"TxtIdAduana2", ""},
                        {"TxtCUITCliente", "30708123451"},
                        {"TxtCuitAduana", "20203040505"},
                        {"Txtfobdivisas", "100.5"},
                        {"TxtCoddivfob", "DOL"},
                        {"TxtDivValorFob", "1"}}));
        QCOMPARE(NombreFoco(), QStringLiteral("Txtidpais"));
        Tecla(Qt::Key_Escape);
        QCOMPARE(f.result(), int(QDialog::Accepted));
        QVERIFY(ts.dialogos().registro().isEmpty());
        QStringList c;
        for (const char* n : {"idvendedor", "factura2", "fobdivisas", "fletedivisas", "factura7"})
            c << Columna(ts, "T-TR", n);
        QCOMPARE(c, (QStringList{"", "", "100.5", "0", "IMPORTADORA DEL PLATA S.A."}));
    }
    void camposYListas_data() { FilasDeMotores(); }
    void camposYListas() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope sep(QStringLiteral(","));
        Nueva(ts, QStringLiteral("T-IT"));
        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("T-IT")}});
        Mostrar(f);
        QVERIFY(Campos({{"TxtSubReg", "IT01"}}));
        // A currency code is padded to three digits and brings its rate.
        Control<QLineEdit>(&f, "TxtCoddivfob")->setFocus();
        QVERIFY(Campos({{"TxtCoddivfob", "60"}}));
        QCOMPARE(Texto(&f, "TxtCoddivfob"), QStringLiteral("060"));
        QCOMPARE(Texto(&f, "TxtDivValorFob"), QStringLiteral("01,084512"));
        QVERIFY(Campos({{"TxtDivValorFob", "1,084512"}}));
        // The FOB value and its rate give the dollars; 1000 x 1.084512 = 1084.51.
        Control<QLineEdit>(&f, "Txtfobdivisas")->setFocus();
        QVERIFY(Campos({{"Txtfobdivisas", "1000"}}));
        QCOMPARE(Texto(&f, "TxtDolFob"), QStringLiteral("1084,51"));
        // Insurance by percentage over FOB and freight in dollars: (1084.51 + 200) x 1% = 12.85.
        Control<QLineEdit>(&f, "Txtfletedivisas")->setFocus();
        QVERIFY(Campos({{"Txtfletedivisas", "200"},
                        {"TxtCodDivFlete", "DOL"},
                        {"TxtDivValorFlete", "1"},
                        {"Txtsegurodivisas", ""},
                        {"TxtCodDivseguro", "DOL"}}));
        ts.dialogos().ResponderNo(); // 2 is not the rate the table keeps for DOL
        QVERIFY(Campos({{"TxtDivValorSeguro", "2"}}));
        ts.dialogos().Limpiar();
        QCOMPARE(NombreFoco(), QStringLiteral("TxtPorc"));
        Escribir(QStringLiteral("1"));
        QCOMPARE(Texto(&f, "TxtDolSeguro"), QStringLiteral("12,86"));
        // 12.85 / 2 = 6.425 -> 6.43 in the currency, which is 12.86 in dollars again.
        QCOMPARE(Texto(&f, "Txtsegurodivisas"), QStringLiteral("06,43"));
        Tecla(Qt::Key_Return);
        QCOMPARE(Texto(&f, "TxtPorc"), QStringLiteral("01,00"));
        // A value to prorate joins the base: (1084.51 + 200 + 100) x 1% = 13.85; 6.925 -> 6.93.
        // Leaving the field reformats it and computes again: the dollars are 13.85 once more and
        // the currency value, unchanged, does not bring them back to 6.93 x 2.
        QVERIFY(Campos({{"TxtProrratear", "100"}}));
        QCOMPARE(Texto(&f, "TxtProrratear"), QStringLiteral("100,00"));
        QCOMPARE(Texto(&f, "Txtsegurodivisas"), QStringLiteral("06,93"));
        QCOMPARE(Texto(&f, "TxtDolSeguro"), QStringLiteral("13,85"));
        // Enter in the FOB keeps the adjustment to include and the value to prorate in step with
        // it, and the insurance follows: (1084.51 + 200 + 1000) x 1% = 22.85; 11.425 -> 11.43.
        QVERIFY(Campos({{"TxtAjustIncluir", "5"}}));
        Control<QLineEdit>(&f, "Txtfobdivisas")->setFocus();
        QVERIFY(Campos({{"Txtfobdivisas", "1000"}}));
        QCOMPARE(Texto(&f, "TxtAjustIncluir"), QStringLiteral("1000"));
        QCOMPARE(Texto(&f, "TxtProrratear"), QStringLiteral("1000"));
        QCOMPARE(Texto(&f, "Txtsegurodivisas"), QStringLiteral("11,43"));
        // F6 lists the brokers; the row chosen fills code and name.
        AlAbrirse(QStringLiteral("FrmListadoDespachante"), [](QWidget* w) {
            auto* lst = w->findChild<QTreeWidget*>(QStringLiteral("Lst"));
            const auto filas = lst->findItems(QStringLiteral("27312345671"), Qt::MatchExactly, 0);
            QCOMPARE(filas.size(), 1);
            lst->setCurrentItem(filas.first());
            QTest::keyClick(lst, Qt::Key_Return);
        });
        Control<QLineEdit>(&f, "TxtCuitAduana")->setFocus();
        Tecla(Qt::Key_F6);
        QCOMPARE(Texto(&f, "TxtCuitAduana"), QStringLiteral("27312345671"));
        QCOMPARE(Texto(&f, "TxtNombreadu"), QStringLiteral("FERNANDEZ O'NEILL PATRICIA"));
        ts.dialogos().ResponderSiempre(true);
        f.reject();
    }
    void facturasYCarga_data() { FilasDeMotores(); }
    void facturasYCarga() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope sep(QStringLiteral("."));
        const QString interno = QStringLiteral("DEMO-IT01-001");
        ts.ctx().InternoActual = interno;
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set factura8 = 'N' where interno = '%1'")
                          .arg(interno));
        ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno,
                                  QStringLiteral("R"));
        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
        Mostrar(f);
        // The load fills the fields, resolves the codes and marks nothing.
        QCOMPARE(Texto(&f, "TxtNombre"), QStringLiteral("METALURGICA D'ANGELO HNOS S.R.L."));
        QCOMPARE(Texto(&f, "Txtfobdivisas"), QStringLiteral("75860.00"));
        QCOMPARE(Texto(&f, "TxtDolFob"), QStringLiteral("75860.00"));
        QCOMPARE(Texto(&f, "TxtPlazoaut"), QStringLiteral("02-03-2027"));
        QListWidget* lst = Control<QListWidget>(&f, "LstFact");
        QCOMPARE(lst->count(), 3);
        QCOMPARE(lst->currentRow(), 0); // the first is selected
        QVERIFY(ts.dialogos().registro().isEmpty());
        QCOMPARE(Columna(ts, interno, "factura8"), QStringLiteral("N"));
        // Delete in the list removes the number there and in the store.
        lst->setFocus();
        lst->setCurrentRow(1);
        Tecla(Qt::Key_Delete);
        QCOMPARE(lst->count(), 2);
        // A number that is there already.
        Control<QLineEdit>(&f, "TxtFactura")->setFocus();
        QVERIFY(Campos({{"TxtFactura", "FT-2026-00088"}}));
        QCOMPARE(ts.dialogos().mensajes(), QStringList{"Ya existe esta factura."});
        QCOMPARE(Texto(&f, "TxtFactura"), QString());
        // Typing marks the Operation changed and clears its AEC value.
        QCOMPARE(Columna(ts, interno, "factura8"), QStringLiteral("S"));
        QCOMPARE(ts.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno),
                 QString());
        Tecla(Qt::Key_Escape);
        QCOMPARE(f.result(), int(QDialog::Accepted));
        QCOMPARE(Columna(ts, interno, "factura1"), QStringLiteral("FT-2026-00088,FT-2026-00090"));
        Recordset rs =
            ts.conexion(QStringLiteral("INTERNOS"))
                .Abrir(QStringLiteral("select factura from facturas where interno = '%1' "
                                      "order by orden")
                           .arg(interno));
        QStringList fs;
        for (; !rs.Eof(); rs.MoveNext())
            fs << EsNull(rs.Fields("factura"));
        QCOMPARE(fs, (QStringList{"FT-2026-00088", "FT-2026-00090"}));
    }
    void importe_data() {
        // field|separator|typed|value saved (none: refused with the field's message).
        CasosPorMotor({
            "Txtfobdivisas|,|1.234,56|1234.56",
            "Txtfobdivisas|,|1,234.56|",
            "Txtfobdivisas|.|1,234.56|1234.56",
            "Txtfobdivisas|.|1.234,56|",
            "txtKgNeto|,|1,234.5|",
            "TxtPeso|,|1,234.5|",
            "TxtPeso|.|1,234.5|1234.5",
        });
    }
    void importe() {
        MOTOR_O_SALTAR();
        QFETCH(QStringList, caso);
        const QString campo = caso[0], sep = caso[1], texto = caso[2];
        // The field's screen, its column and the message of its refusal.
        const QStringList c =
            QMap<QString, QStringList>{
                {"Txtfobdivisas",
                 {"FrmCaratula", "fobdivisas", "El valor FOB debe ser un valor númerico"}},
                {"txtKgNeto",
                 {"FrmCaratula", "dckgneto", "El valor KG NETO TOTAL debe ser un valor númerico"}},
                {"TxtPeso", {"FrmBultos", "bulpes", "El PESO debe ser un valor númerico"}},
            }
                .value(campo);
        const QString pantalla = c[0], columna = c[1];
        const QString mensaje = caso[3].isEmpty() ? c[2] : QString();
        const double valor = caso[3].toDouble();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope scope(sep);
        ts.ctx().InternoActual = kImpo;
        const double antes = Numero(ts, columna);
        // The packages want an expiry from today on.
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set venemb = ? where interno = ?"),
                      {FormatoFecha(QDate::currentDate(), QStringLiteral("dd-mm-yy")), kImpo});

        std::unique_ptr<QDialog> f;
        if (pantalla == QStringLiteral("FrmCaratula"))
            f = std::make_unique<FrmCaratula>(ts.ctx(),
                                              QVariantMap{{QStringLiteral("interno"), kImpo}});
        else
            f = std::make_unique<FrmBultos>(ts.ctx(),
                                            QVariantMap{{QStringLiteral("interno"), kImpo}});
        Mostrar(*f);
        f->findChild<QLineEdit*>(campo)->setFocus();
        QCOMPARE(NombreFoco(), campo);
        QTest::keyClick(Foco(), Qt::Key_A, Qt::ControlModifier);
        Escribir(texto);
        Tecla(Qt::Key_Return);
        if (!mensaje.isEmpty() && pantalla == QStringLiteral("FrmCaratula"))
            ts.dialogos().ResponderNo(); // stay on the screen
        Tecla(Qt::Key_Escape);

        if (mensaje.isEmpty()) {
            QCOMPARE(ts.dialogos().mensajes(), QStringList());
            QVERIFY(!f->isVisible());
            QCOMPARE(Numero(ts, columna), valor);
        } else {
            QCOMPARE(ts.dialogos().mensajes(), QStringList{mensaje});
            QVERIFY(f->isVisible());
            QCOMPARE(NombreFoco(), campo);
            QCOMPARE(Numero(ts, columna), antes);
        }
    }

    void prorrateo_data() { FilasDeMotores(); }
    void prorrateo() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararDemo(ts);
        SeparadorDecimalScope scope(QStringLiteral(","));
        const QString interno = QStringLiteral("T-PRORR");
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("insert into caratula (interno,fechaalta,onccahabilitado) "
                                     "values (?,'2026-11-22','N')"),
                      {interno});
        ts.ctx().InternoActual = interno;
        FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
        Mostrar(f);
        auto texto = [&f](const char* nombre) {
            return f.findChild<QLineEdit*>(QString::fromLatin1(nombre));
        };
        texto("Txtfobdivisas")->setText(QStringLiteral("1000"));
        texto("TxtDivValorFob")->setText(QStringLiteral("1"));
        texto("Txtfletedivisas")->setText(QStringLiteral("100"));
        texto("TxtDivValorFlete")->setText(QStringLiteral("1"));
        QCOMPARE(texto("TxtDolFlete")->text(), QStringLiteral("100,00"));
        // The proration codes change while the header is open, as CODIGOS leaves them.
        ts.conexion(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("insert into prorrateo (interno,codigo,descripcion,valor) "
                                     "values (?,'A','GASTOS',400)"),
                      {interno});
        texto("TxtPorc")->setFocus();
        Escribir(QStringLiteral("10"));
        // 10 % of 1000 + 100 + 400.
        QCOMPARE(texto("TxtDolSeguro")->text(), QStringLiteral("150,00"));
    }
};

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestCaratulaDatos, TestFrmBultos, TestFrmCaratula>(argc,
                                                                                           argv);
}

#include "test_frmcaratula.moc"
