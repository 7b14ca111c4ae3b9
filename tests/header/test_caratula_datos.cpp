// Load and save of the header, what the sub-regime makes of the screen, invoices, packages,
// transport agents and ONCCA data, on SQLite and on PostgreSQL.

#include "FixtureCaratula.h"
#include "header/BultosDatos.h"
#include "header/CaratulaDatos.h"
#include "header/DisposicionCaratula.h"
#include "header/Facturas.h"
#include "header/OnccaDatos.h"
#include "header/Transportes.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

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
    const Caso casos[] = {
        {"cierre invalido",
         "TxtCierreVenta=31/02/2026;TxtCuitAduana=",
         "",
         false,
         {cierre},
         R::Quedarse,
         "TxtCierreVenta"},
        {"sin despachante",
         "TxtCuitAduana=;Txtidvendedor=",
         "",
         false,
         {"Debe ingresar el CUIT de DESPACHANTE", kSalir},
         R::Quedarse,
         "TxtCuitAduana"},
        {"sin despachante sale",
         "TxtCuitAduana=",
         "",
         true,
         {"Debe ingresar el CUIT de DESPACHANTE", kSalir},
         R::Salir,
         ""},
        {"sin vendedor",
         "Txtidvendedor=",
         "",
         false,
         {"Debe seleccionar vendedor", kSalir},
         R::Quedarse,
         "Txtidvendedor"},
        // Hidden by the sub-regime: no vendor is required.
        {"vendedor oculto", "Txtidvendedor=", "Txtidvendedor", false, {}, R::Guardado, ""},
        {"sin condicion",
         "Txtidcondventa=",
         "",
         false,
         {"Debe ingresar Condición de venta", kSalir},
         R::Quedarse,
         "Txtidcondventa"},
        {"condicion oculta", "Txtidcondventa=", "Txtidcondventa", false, {}, R::Guardado, ""},
        {"embarque invalido",
         "txtFechaEmbarque=32/10/2026",
         "",
         false,
         {"Debe ingresar una fecha valida en Fecha de Embarque", kSalir},
         R::Quedarse,
         "txtFechaEmbarque"},
        {"embarque oculto",
         "txtFechaEmbarque=32/10/2026",
         "txtFechaEmbarque",
         false,
         {},
         R::Guardado,
         ""},
        {"fob vacio",
         "Txtfobdivisas=",
         "",
         false,
         {"El valor FOB debe ser un valor númerico", kSalir},
         R::Quedarse,
         "Txtfobdivisas"},
        {"fob vacio sale sin facturas",
         "Txtfobdivisas=;#facturas",
         "",
         true,
         {"El valor FOB debe ser un valor númerico", kSalir, faltan},
         R::Salir,
         ""},
        {"divisa fob",
         "TxtCoddivfob=",
         "",
         false,
         {"Codigo de divisa no ingresado", kSalir},
         R::Quedarse,
         "TxtCoddivfob"},
        {"cambio fob",
         "TxtDivValorFob=uno",
         "",
         false,
         {"El tipo de cambio debe ser un valor numerico valido", kSalir},
         R::Quedarse,
         "TxtDivValorFob"},
        {"flete",
         "Txtfletedivisas=x",
         "",
         false,
         {"El valor FLETE debe ser un valor númerico", kSalir},
         R::Quedarse,
         "Txtfletedivisas"},
        {"divisa flete",
         "TxtCodDivFlete=",
         "",
         false,
         {"Codigo de divisa en FLETE no ingresado", kSalir},
         R::Quedarse,
         "TxtCodDivFlete"},
        {"cambio flete",
         "TxtDivValorFlete=",
         "",
         false,
         {"El tipo de cambio en FLETE debe ser un valor numerico valido", kSalir},
         R::Quedarse,
         "TxtDivValorFlete"},
        {"flete oculto",
         "Txtfletedivisas=;TxtCodDivFlete=;TxtDivValorFlete=",
         "Txtfletedivisas",
         false,
         {},
         R::Guardado,
         ""},
        {"seguro",
         "Txtsegurodivisas=",
         "",
         false,
         {"El valor SEGURO debe ser un valor númerico", kSalir},
         R::Quedarse,
         "Txtsegurodivisas"},
        {"divisa seguro",
         "TxtCodDivseguro=",
         "",
         false,
         {"Codigo de divisa en SEGURO no ingresado", kSalir},
         R::Quedarse,
         "TxtCodDivseguro"},
        {"cambio seguro",
         "TxtDivValorSeguro=",
         "",
         false,
         {"El tipo de cambio en SEGURO debe ser un valor numerico valido", kSalir},
         R::Quedarse,
         "TxtDivValorSeguro"},
        // Only the first failed check speaks.
        {"dos fallas",
         "Txtidvendedor=;Txtfobdivisas=",
         "",
         false,
         {"Debe seleccionar vendedor", kSalir},
         R::Quedarse,
         "Txtidvendedor"},
        // Leaving an export ("EC...") without invoices does not ask for them.
        {"export sin facturas",
         "TxtSubReg=EC01;Txtfobdivisas=;#facturas",
         "",
         true,
         {"El valor FOB debe ser un valor númerico", kSalir},
         R::Salir,
         ""},
        {"factura oculta",
         "Txtfobdivisas=;#facturas",
         "TxtFactura",
         true,
         {"El valor FOB debe ser un valor númerico", kSalir},
         R::Salir,
         ""},
        {"facilidad vacia",
         "cboFacilidadPago=",
         "",
         false,
         {"Debe seleccionar S/N en Facilidad de Pago"},
         R::Quedarse,
         "cboFacilidadPago"},
        {"facilidad elegida", "cboFacilidadPago=S", "", false, {}, R::Guardado, ""},
        {"interno inexistente",
         "#interno",
         "",
         true,
         {"Los datos no pueden ser guardados, desea SALIR de caratula?"},
         R::Salir,
         ""},
        {"interno inexistente sin facturas",
         "#interno;#facturas",
         "",
         false,
         {"Los datos no pueden ser guardados, desea SALIR de caratula?"},
         R::Quedarse,
         ""},
        {"interno inexistente sale sin facturas",
         "#interno;#facturas",
         "",
         true,
         {"Los datos no pueden ser guardados, desea SALIR de caratula?", faltan},
         R::Salir,
         ""},
    };
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

QTEST_GUILESS_MAIN(TestCaratulaDatos)
#include "test_caratula_datos.moc"
