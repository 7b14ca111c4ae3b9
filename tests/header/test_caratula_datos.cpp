// The header without its screen: the rules that need no store (check digit, currency
// arithmetic, option codes, dates, the invoice text), the look-ups of codes and persons, and the
// load and save of the header with invoices, packages, transport agents and ONCCA data, on SQLite
// and on PostgreSQL.

#include "FixtureCaratula.h"
#include "header/BusquedaPersonas.h"
#include "header/CambioDivisas.h"
#include "header/CaratulaDatos.h"
#include "header/DigitoVerificador.h"
#include "header/Facturas.h"
#include "header/FechasTexto.h"
#include "header/ImportesCaratula.h"
#include "header/ListasCodigos.h"
#include "header/PickLists.h"
#include "header/Transportes.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"

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

QTEST_GUILESS_MAIN(TestCaratulaDatos)

#include "test_caratula_datos.moc"
