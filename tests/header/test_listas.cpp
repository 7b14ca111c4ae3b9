// The shared code look-ups, the list dialogs, the persons' look-ups and the exchange-rate check,
// on SQLite and on PostgreSQL.

#include "FixtureCaratula.h"
#include "header/BusquedaPersonas.h"
#include "header/CambioDivisas.h"
#include "header/ListasCodigos.h"
#include "header/PickLists.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"

#include <QtTest>

using namespace korven;
using namespace korven::test;

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
        QTest::addRow("%s subregimen", m) << motor << "SUBREG"
                                          << "EC16"
                                          << "EC16"
                                          << "E";
        QTest::addRow("%s divisa", m) << motor << "DIVISAS"
                                      << "060"
                                      << "060"
                                      << "01,085000";
        QTest::addRow("%s motivo temporal", m) << motor << "MOTIVOSTEMPI"
                                               << "T1"
                                               << "T1|180"
                                               << "";
        QTest::addRow("%s nada elegido", m) << motor << "SUBREG"
                                            << ""
                                            << ""
                                            << "";
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
            QTest::addRow("%s %s igual", m, s) << motor << s << "060"
                                               << "1.085000" << -1 << 1.085 << "";
            // The seventh decimal does not count.
            QTest::addRow("%s %s septimo decimal", m, s) << motor << s << "060"
                                                         << "1.0850004" << -1 << 1.085 << "";
            QTest::addRow("%s %s distinto no", m, s) << motor << s << "060"
                                                     << "1.1" << 0 << 1.085 << "";
            QTest::addRow("%s %s distinto si", m, s)
                << motor << s << "060"
                << "1.1" << 1 << 1.1 << "Valor Guardado Correctamente.";
            QTest::addRow("%s %s inexistente", m, s)
                << motor << s << "999"
                << "1.1" << -1 << 1.085 << "No se encontro codigo de DIVISAS en base.";
            QTest::addRow("%s %s sin codigo", m, s) << motor << s << "  "
                                                    << "1.1" << -1 << 1.085 << "";
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

QTEST_GUILESS_MAIN(TestListas)
#include "test_listas.moc"
