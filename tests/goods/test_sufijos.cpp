// The suffix string of a position: the dialogue that builds and re-checks it, its silent
// sibling, the rewrite of one code, the customer rule and the nomenclator check.

#include "FixtureNomenclador.h"
#include "goods/Sufijos.h"
#include "goods/ValidadorNCM.h"
#include "platform/Formato.h"

#include <QGuiApplication>

using namespace korven;
using namespace korven::test;

namespace {

// A position with suffixes at all four levels: chapter 87 (AA AB AI), heading 8703 (ZF ZA, CB),
// subheading 8703.23 (TR) and the full position (SE).
const QString kAuto = QStringLiteral("8703.23.10.100");
const QString kAutoCompleto =
    QStringLiteral("AA(FORD)-AB(M1)-AI(X)-CB01-SE01-TR01-ZA(002020)-ZF(001600)");

const QString kDifiere =
    QStringLiteral("Se encontro diferencias entre los Sufijos de Subitem y el nomenclador.");

QString Pedido(const char* codigo, const char* titulo, int maximo, const QString& porDefecto = {}) {
    return QStringLiteral("SUFIJO %1|%2|%3|%4")
        .arg(QString::fromLatin1(codigo), QString::fromUtf8(titulo))
        .arg(maximo)
        .arg(porDefecto);
}

// The free codes of kAuto, asked with their titles, the article and the description.
QStringList PedidosAuto(const QStringList& porDefecto = {"AUTO", "ART-1", "ART-1", "", ""}) {
    return {Pedido("AA", "MARCA", 20, porDefecto[0]), Pedido("AB", "MODELO", 20, porDefecto[1]),
            Pedido("AI", "IDENTIFICACION DEL ARTICULO", 20, porDefecto[2]),
            Pedido("ZA", "AÑO MODELO", 6, porDefecto[3]),
            Pedido("ZF", "CILINDRADA (CM3)", 6, porDefecto[4])};
}

} // namespace

class TestSufijos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void verificar_data();
    void verificar();
    void opcionesDeLista();
    void componenteAusente();
    void actuSufijos_data();
    void actuSufijos();
    void validador_data();
    void validador();
    void marcas();
    void reemplazar_data();
    void reemplazar();
    void cordano_data();
    void cordano();
    void limpiarValor_data();
    void limpiarValor();

private:
    BasesNomenclador bases_;
};

void TestSufijos::verificar_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("posicion");
    QTest::addColumn<QString>("sufijos");
    QTest::addColumn<int>("modo");
    QTest::addColumn<bool>("deArticulo");
    QTest::addColumn<QStringList>("textos"); // typed answers, in order
    QTest::addColumn<QString>("preguntas");  // "S"/"N" answers to the questions
    QTest::addColumn<QStringList>("listas"); // answers of FrmCargaSufijos
    QTest::addColumn<QString>("esperado");
    QTest::addColumn<QStringList>("mensajes");
    QTest::addColumn<QStringList>("pedidos");
    QTest::addColumn<QStringList>("selecciones"); // present values handed to the list
    QTest::addColumn<bool>("flagFinal");

    const QStringList listasAuto{"CB02 - DIESEL", "SE01 - CON AIRBAGS FRONTALES",
                                 "TR00 - Ninguna opción"};
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        auto fila = [m](const char* nombre,
                        const QString& sep = QStringLiteral(",")) -> QTestData& {
            return QTest::newRow(ConMotor(QString::fromUtf8(nombre), m).constData())
                   << static_cast<int>(m) << sep;
        };
        fila("nuevo, cuatro niveles")
            << kAuto << "" << 2 << false
            << QStringList{"ford (ka)", "m-1", "art.1/ñ", "abc", "2024", "1234567"} << ""
            << listasAuto
            << "AA(FORD  KA)-AB(M 1)-AI(ART.1/Ñ)-CB02-SE01-TR00-ZA(002024)-ZF(123456)-"
            << QStringList{"Debe Ingresar un Valor Númerico"}
            << QStringList{PedidosAuto()[0], PedidosAuto()[1], PedidosAuto()[2],
                           PedidosAuto()[3], PedidosAuto()[3], PedidosAuto()[4]}
            << QStringList{"", "", ""} << false;
        for (const QString& sep : {QStringLiteral(","), QStringLiteral(".")}) {
            // 12.4 shows as 000012 and 12.5 rounds away from zero to 000013.
            fila(qPrintable("numeros con decimales " + sep), sep)
                << kAuto << "" << 2 << false
                << QStringList{"F", "M", "I", "12" + sep + "4", "12" + sep + "5"} << ""
                << listasAuto << "AA(F)-AB(M)-AI(I)-CB02-SE01-TR00-ZA(000012)-ZF(000013)-"
                << QStringList{} << PedidosAuto() << QStringList{"", "", ""} << false;
        }
        fila("modo 2 conserva y cierra con guion")
            << kAuto << kAutoCompleto << 2 << false << QStringList{} << "" << QStringList{}
            << kAutoCompleto + "-" << QStringList{} << QStringList{} << QStringList{} << false;
        fila("modo 1 vuelve a preguntar con los valores presentes")
            << kAuto << kAutoCompleto + "-" << 1 << false
            << QStringList{"FORD", "M2", "X", "2021", "1600"} << ""
            << QStringList{"CB01 - NAFTA", "SE02 - CON AIRBAGS FRONTALES Y LATERALES",
                           "TR01 - TRACCION SIMPLE"}
            << "AA(FORD)-AB(M2)-AI(X)-CB01-SE02-TR01-ZA(002021)-ZF(001600)-" << QStringList{}
            << PedidosAuto({"FORD", "M1", "X", "002020", "001600"})
            << QStringList{"CB01", "SE01", "TR01"} << false;
        fila("modo 2 con diferencias")
            << kAuto << "AA(FORD)-CB03-TR02" << 2 << false
            << QStringList{"FORD", "M1", "X1", "2020", "1600"} << "" << listasAuto
            << "AA(FORD)-AB(M1)-AI(X1)-CB02-SE01-TR00-ZA(002020)-ZF(001600)-"
            << QStringList{kDifiere} << PedidosAuto({"FORD", "ART-1", "ART-1", "", ""})
            << QStringList{"CB03", "", "TR02"} << false;
        fila("sufijos de un articulo con diferencias")
            << kAuto << "AA(FORD)-" << 2 << true << QStringList{"FORD", "M1", "X1", "2020", "1600"}
            << "" << listasAuto << "AA(FORD)-AB(M1)-AI(X1)-CB02-SE01-TR00-ZA(002020)-ZF(001600)-"
            << QStringList{"Se encontró diferencias, entre los sufijos de su ARTICULO y la "
                           "posición del nomenclador\n\nSe procederá a reconfirmarlos."}
            << PedidosAuto({"FORD", "ART-1", "ART-1", "", ""}) << QStringList{"", "", ""} << false;
        fila("sufijos de un articulo que coinciden")
            << kAuto << kAutoCompleto << 2 << true << QStringList{} << "" << QStringList{}
            << kAutoCompleto + "-"
            << QStringList{"Se encontró diferencias, entre los sufijos de su ARTICULO y la "
                           "posición del nomenclador\n\nSe procederá a reconfirmarlos."}
            << QStringList{} << QStringList{} << true;
        fila("respuesta vacia: No pregunta otra vez, Si abandona")
            << kAuto << "" << 2 << false << QStringList{"", ""} << "NS" << QStringList{} << ""
            << QStringList{} << QStringList{PedidosAuto()[0], PedidosAuto()[0]} << QStringList{}
            << false;
        fila("abandonar descarta lo ya cargado")
            << kAuto << "" << 2 << false << QStringList{"FORD", "M1", "X", ""} << "S" << listasAuto
            << "" << QStringList{} << PedidosAuto().mid(0, 4) << QStringList{"", "", ""} << false;
        fila("texto en blanco se vuelve a pedir")
            << kAuto << "" << 2 << false << QStringList{"(-)", "FORD", "M1", "X", ""} << "S"
            << listasAuto << "" << QStringList{}
            << QStringList{PedidosAuto()[0], PedidosAuto()[0], PedidosAuto()[1], PedidosAuto()[2],
                           PedidosAuto()[3]}
            << QStringList{"", "", ""} << false;
        fila("lista cancelada") << kAuto << "" << 2 << false << QStringList{"FORD", "M1", "X"} << ""
                                << QStringList{"###CANCELADO###"} << "AA(FORD)-AB(M1)-AI(X)"
                                << QStringList{"Carga de SUFIJOS cancelada"}
                                << PedidosAuto().mid(0, 3) << QStringList{""} << false;
        fila("lista sin respuesta")
            << kAuto << "" << 2 << false << QStringList{"FORD", "M1", "X"} << "" << QStringList{""}
            << "AA(FORD)-AB(M1)-AI(X)" << QStringList{"Error en generar sufijos"}
            << PedidosAuto().mid(0, 3) << QStringList{""} << false;
        fila("solo a nivel de capitulo")
            << "3004.10.12.100"
            << "" << 2 << false << QStringList{"aspirina", "12-34"} << "" << QStringList{}
            << "AA(ASPIRINA)-AE(12 34)-" << QStringList{}
            << QStringList{Pedido("AA", "NOMBRE COMERCIAL", 20, "AUTO"),
                           Pedido("AE", "NUMERO DE CERTIFICADO ANMAT", 20)}
            << QStringList{} << false;
        fila("posicion sin sufijos")
            << "0401.10.10.100"
            << "AA(X)-" << 1 << true << QStringList{} << "" << QStringList{} << "SIN SUFIJOS"
            << QStringList{"No se encontro Sufijo en el nomenclador"} << QStringList{}
            << QStringList{} << true;
        fila("posicion inexistente")
            << "0401.10.10.999"
            << "" << 2 << false << QStringList{} << "" << QStringList{} << "##ERRORNCM##"
            << QStringList{"No existe la posicion 0401.10.10.999 en el nomenclador"}
            << QStringList{} << QStringList{} << false;
    }
}

void TestSufijos::verificar() {
    QFETCH(int, motor);
    QFETCH(QString, separador);
    QFETCH(QString, posicion);
    QFETCH(QString, sufijos);
    QFETCH(int, modo);
    QFETCH(bool, deArticulo);
    QFETCH(QStringList, textos);
    QFETCH(QString, preguntas);
    QFETCH(QStringList, listas);
    QFETCH(QString, esperado);
    QFETCH(QStringList, mensajes);
    QFETCH(QStringList, pedidos);
    QFETCH(QStringList, selecciones);
    QFETCH(bool, flagFinal);
    TestStores* ts = bases_.Para(static_cast<Motor>(motor));
    if (!ts)
        QSKIP("PostgreSQL no está disponible en esta corrida");
    SeparadorDecimalScope sep(separador);
    Contexto c(*ts);
    for (const QString& t : textos)
        c.dialogos.ResponderTexto(t);
    for (const QChar p : preguntas)
        p == QLatin1Char('S') ? c.dialogos.ResponderSi() : c.dialogos.ResponderNo();
    QStringList vistas;
    c.ctx.pantallas().Registrar(QStringLiteral("FrmCargaSufijos"),
                                [&](AppContext&, const QVariantMap& args) -> QVariant {
                                    vistas << args.value(QStringLiteral("seleccion")).toString();
                                    if (vistas.size() > listas.size())
                                        qFatal("La lista de sufijos se abrió de más");
                                    return listas[vistas.size() - 1];
                                });
    c.ctx.SufijosDeArticulo = deArticulo;

    const QString r = Sufijos(c.ctx).VerificarSufijos(
        posicion, sufijos, modo, QStringLiteral("ART-1"), QStringLiteral("AUTO"));
    QCOMPARE(r, esperado);
    QCOMPARE(c.dialogos.mensajes(), mensajes);
    QCOMPARE(c.dialogos.pedidos, pedidos);
    QCOMPARE(vistas, selecciones);
    QVERIFY(c.dialogos.guionAgotado());
    QCOMPARE(c.ctx.SufijosDeArticulo, flagFinal);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestSufijos::opcionesDeLista() {
    TestStores* ts = bases_.Para(Motor::SQLite);
    Contexto c(*ts);
    QList<QStringList> opciones;
    c.ctx.pantallas().Registrar(
        QStringLiteral("FrmCargaSufijos"), [&](AppContext&, const QVariantMap& args) -> QVariant {
            opciones << args.value(QStringLiteral("opciones")).toStringList();
            return opciones.last().last();
        });
    c.dialogos.ResponderSiempre(false);
    for (const char* t : {"A", "B", "C", "1", "2"})
        c.dialogos.ResponderTexto(QString::fromLatin1(t));
    QCOMPARE(Sufijos(c.ctx).VerificarSufijos(kAuto, {}, 1, {}, {}),
             QStringLiteral("AA(A)-AB(B)-AI(C)-CB04-SE02-TR02-ZA(000001)-ZF(000002)-"));
    QCOMPARE(opciones, (QList<QStringList>{{"CB00 - Ninguna opción", "CB01 - NAFTA",
                                            "CB02 - DIESEL", "CB03 - ELECTRICO", "CB04 - HIBRIDO"},
                                           {"SE00 - Ninguna opción", "SE01 - CON AIRBAGS FRONTALES",
                                            "SE02 - CON AIRBAGS FRONTALES Y LATERALES"},
                                           {"TR00 - Ninguna opción", "TR01 - TRACCION SIMPLE",
                                            "TR02 - TRACCION INTEGRAL"}}));
}

void TestSufijos::componenteAusente() {
    TestStores* ts = bases_.Para(Motor::SQLite);
    DialogosGrabados dialogos;
    AppContext ctx(ts->stores(), dialogos, ts->settings(), ts->directorio());
    QCOMPARE(Sufijos(ctx).VerificarSufijos(kAuto, kAutoCompleto, 2, {}, {}), QString());
    QCOMPARE(dialogos.mensajes(),
             QStringList{"El componente ValidadorNCM no está instalado.\n - seccion "
                         "[KORVEN.Global.VerificarSufijos]:: - nro 429"});
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestSufijos::actuSufijos_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("posicion");
    QTest::addColumn<QString>("viejos");
    QTest::addColumn<QString>("esperado");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<QStringList>("mensajes");
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        auto fila = [m](const char* nombre) -> QTestData& {
            return QTest::newRow(ConMotor(QString::fromUtf8(nombre), m).constData())
                   << static_cast<int>(m);
        };
        // CB has four rows and TR two: a token found by search is added once per row.
        fila("buscados") << kAuto << "AA(FORD)-AB(M1)-CB02-TR01-ZF(1600)-"
                         << "AA(FORD)-AB(M1)-CB02-CB02-CB02-CB02-TR01-TR01-ZF(1600)-" << true
                         << QStringList{};
        fila("listado al principio") << kAuto << "CB02-AA(FORD)"
                                     << "AA(FORD)-CB02-CB02-CB02-CB02-" << true << QStringList{};
        fila("solo el del principio, sin busqueda")
            << kAuto << "CB02-"
            << "CB02-CB02-CB02-CB02-" << false << QStringList{};
        fila("codigo libre en minusculas") << kAuto << "aa(ford)-zf( )-"
                                           << "AA(ford)-" << true << QStringList{};
        fila("sin sufijos") << "0401.10.10.100"
                            << "AA(X)-"
                            << "SIN SUFIJOS" << false
                            << QStringList{"No se encontro Sufijo en el nomenclador"};
        fila("sin posicion") << ""
                             << "AA(X)-"
                             << "" << false << QStringList{};
    }
}

void TestSufijos::actuSufijos() {
    QFETCH(int, motor);
    QFETCH(QString, posicion);
    QFETCH(QString, viejos);
    QFETCH(QString, esperado);
    QFETCH(bool, flag);
    QFETCH(QStringList, mensajes);
    TestStores* ts = bases_.Para(static_cast<Motor>(motor));
    if (!ts)
        QSKIP("PostgreSQL no está disponible en esta corrida");
    Contexto c(*ts);
    QCOMPARE(Sufijos(c.ctx).ActuSufijos(posicion, viejos), esperado);
    QCOMPARE(c.ctx.SufijosDeArticulo, flag);
    QCOMPARE(c.dialogos.mensajes(), mensajes);
}

void TestSufijos::validador_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("ncm");
    QTest::addColumn<QString>("sufijos");
    QTest::addColumn<int>("resultado");
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        auto fila = [m](const char* nombre) -> QTestData& {
            return QTest::newRow(ConMotor(QString::fromUtf8(nombre), m).constData())
                   << static_cast<int>(m);
        };
        const QString a = kAuto + "Y";
        fila("completo") << a << kAutoCompleto + "-" << 0;
        fila("sin letra") << kAuto << kAutoCompleto << 0;
        fila("en otro orden") << a << "ZF(1)-ZA(2)-TR01-SE01-CB01-AI(X)-AB(Y)-AA(Z)-" << 0;
        fila("ninguna opcion") << a << "AA(F)-AB(M)-AI(X)-CB00-SE00-TR00-ZA(1)-ZF(2)-" << 0;
        fila("repetido igual") << a << "AA(F)-AB(M)-AI(X)-CB01-CB01-SE01-TR01-ZA(1)-ZF(2)-" << 0;
        fila("repetido distinto") << a << "AA(F)-AB(M)-AI(X)-CB01-CB02-SE01-TR01-ZA(1)-ZF(2)-" << 2;
        fila("falta un codigo") << a << "AA(F)-AB(M)-AI(X)-CB01-SE01-TR01-ZA(1)-" << 2;
        fila("codigo ajeno") << a << kAutoCompleto + "-EM01-" << 2;
        fila("opcion inexistente") << a << "AA(F)-AB(M)-AI(X)-CB09-SE01-TR01-ZA(1)-ZF(2)-" << 2;
        fila("libre como listado") << a << "AA01-AB(M)-AI(X)-CB01-SE01-TR01-ZA(1)-ZF(2)-" << 2;
        fila("libre sin valor") << a << "AA( )-AB(M)-AI(X)-CB01-SE01-TR01-ZA(1)-ZF(2)-" << 2;
        fila("mal formado") << a << "AA(F" << 2;
        fila("vacio con sufijos") << a << "" << 2;
        fila("error de posicion") << a << "##ERRORNCM##" << 2;
        fila("sin sufijos vacio") << "0401.10.10.100X"
                                  << "" << 0;
        fila("sin sufijos literal") << "0401.10.10.100X"
                                    << "SIN SUFIJOS" << 0;
        fila("sin sufijos con codigos") << "0401.10.10.100X"
                                        << "AA(X)-" << 2;
        fila("letra equivocada") << kAuto + "Z" << kAutoCompleto << 1;
        fila("posicion inexistente") << "0401.10.10.999X"
                                     << "" << 1;
        fila("posicion corta") << "0401.10"
                               << "" << 1;
    }
}

void TestSufijos::validador() {
    QFETCH(int, motor);
    QFETCH(QString, ncm);
    QFETCH(QString, sufijos);
    QFETCH(int, resultado);
    TestStores* ts = bases_.Para(static_cast<Motor>(motor));
    if (!ts)
        QSKIP("PostgreSQL no está disponible en esta corrida");
    Contexto c(*ts);
    // Reached by name, as the assembly and the dialogue reach it.
    auto v = c.ctx.componentes().Crear(QStringLiteral("ValidadorNCM"), c.ctx);
    int r = -1;
    QVERIFY(QMetaObject::invokeMethod(v.get(), "ValidarSubItem", Q_RETURN_ARG(int, r),
                                      Q_ARG(QString, ncm), Q_ARG(QString, sufijos)));
    QCOMPARE(r, resultado);
}

void TestSufijos::marcas() {
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        TestStores* ts = bases_.Para(m);
        if (!ts)
            continue;
        Contexto c(*ts);
        ValidadorNCM v(c.ctx);
        Conexion& cn = ts->conexion(QStringLiteral("NCM"));
        // Every position of the reference data, against its own columns.
        Recordset rs = cn.Abrir(QStringLiteral(
            "select \"001\" || '.' || \"002\" || \"003\" as p, \"059\" as l, \"041\" as e from "
            "ncm order by \"001\", \"002\""));
        int lapi = 0, estampillas = 0;
        for (; !rs.Eof(); rs.MoveNext()) {
            const QVariantMap r = v.MarcasPosicion(rs.Fields(QStringLiteral("p")).toString());
            QCOMPARE(r.value(QStringLiteral("lapi")).toBool(),
                     rs.Fields(QStringLiteral("l")).toString() == QLatin1String("*"));
            QCOMPARE(r.value(QStringLiteral("estampillas")).toBool(),
                     rs.Fields(QStringLiteral("e")).toString() == QLatin1String("*"));
            lapi += r.value(QStringLiteral("lapi")).toBool();
            estampillas += r.value(QStringLiteral("estampillas")).toBool();
        }
        QCOMPARE(lapi, 38);
        QCOMPARE(estampillas, 6);
        QCOMPARE(v.MarcasPosicion(QStringLiteral("0401.10.10.999X")).value("lapi").toBool(), false);
    }
}

void TestSufijos::reemplazar_data() {
    QTest::addColumn<QString>("sufijos");
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("ultimo") << "AA(FORD)-ZA(002020)-"
                            << "ZA"
                            << "001999"
                            << "AA(FORD)-ZA(001999)-";
    QTest::newRow("primero, sin apostrofos") << "AA(FORD)-ZA(002020)-"
                                             << "AA"
                                             << "O'NEIL"
                                             << "AA(ONEIL)-ZA(002020)-";
    QTest::newRow("entre listados") << "CB01-AB(M1)-TR01-"
                                    << "AB"
                                    << ""
                                    << "CB01-AB()-TR01-";
    QTest::newRow("codigo ausente") << "AA(FORD)-"
                                    << "AB"
                                    << "X"
                                    << "";
}

void TestSufijos::reemplazar() {
    QFETCH(QString, sufijos);
    QFETCH(QString, codigo);
    QFETCH(QString, valor);
    QFETCH(QString, esperado);
    QCOMPARE(Sufijos::Reemplazarsufijos(sufijos, codigo, valor), esperado);
}

void TestSufijos::cordano_data() {
    QTest::addColumn<QString>("posicion");
    QTest::addColumn<QString>("sufijos");
    QTest::addColumn<QString>("articulo");
    QTest::addColumn<bool>("valido");
    QTest::newRow("piston G") << "8409.91.12.100G"
                              << ""
                              << "X" << true;
    QTest::newRow("piston C") << "8409.99.12.100C"
                              << ""
                              << "X" << true;
    QTest::newRow("otra letra") << "8409.91.12.900H"
                                << ""
                                << "X" << false;
    QTest::newRow("8407") << "8407.34.90.900Z"
                          << ""
                          << "X" << true;
    QTest::newRow("8703") << "8703.23.10.100Y"
                          << ""
                          << "X" << true;
    QTest::newRow("8705 no") << "8705.10.00.100A"
                             << ""
                             << "X" << false;
    QTest::newRow("AI con el articulo") << "8471.30.12.100A"
                                        << "AA(F)-AI(AB 12)-"
                                        << "AB-12" << true;
    QTest::newRow("AB con el articulo") << "8471.30.12.100A"
                                        << "AB((X  1))-"
                                        << " (X  1) " << false;
    QTest::newRow("AB normalizado") << "8471.30.12.100A"
                                    << "AB(X 1)-"
                                    << "(X  1)" << true;
    QTest::newRow("solo AA") << "8471.30.12.100A"
                             << "AA(X1)-"
                             << "X1" << false;
}

void TestSufijos::cordano() {
    QFETCH(QString, posicion);
    QFETCH(QString, sufijos);
    QFETCH(QString, articulo);
    QFETCH(bool, valido);
    QCOMPARE(Sufijos::ValidaSufijoCordano(posicion, sufijos, articulo), valido);
}

void TestSufijos::limpiarValor_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("parentesis y guion") << "abc(d)-e"
                                        << "ABC D  E";
    QTest::newRow("recorta antes de cortar") << "   x"
                                             << "X";
    QTest::newRow("corta a 20") << "123456789012345678901234"
                                << "12345678901234567890";
    QTest::newRow("caracteres permitidos") << "ñandu 1/2 & co.,#"
                                           << "ÑANDU 1/2 & CO.,#";
    QTest::newRow("no recorta despues del filtro") << "x@"
                                                   << "X ";
    QTest::newRow("acento") << "canción"
                            << "CANCI N";
}

void TestSufijos::limpiarValor() {
    QFETCH(QString, texto);
    QFETCH(QString, esperado);
    QCOMPARE(Sufijos::LimpiarValor(texto), esperado);
}

QTEST_MAIN(TestSufijos)
#include "test_sufijos.moc"
