// The catalogue of articles: the component over the stores, and its screens driven from the
// keyboard (the maintenance screen in its two modes, its checks before a save, the pick of an
// article by typing, and the searches by field).
//
// The nomenclator's screens driven from the keyboard: the query, the position picker, the
// details display and the list of a listed suffix, alone and inside the suffix dialogue.
//
// The suffix string of a position: the dialogue that builds and re-checks it, its silent
// sibling, the rewrite of one code, the customer rule and the nomenclator check.

#include "FixtureCatalogo.h"
#include "FixtureNomenclador.h"
#include "goods/CatalogoArticulos.h"
#include "goods/FrmArticulos.h"
#include "goods/FrmCargaSufijos.h"
#include "goods/FrmCatArticulos.h"
#include "goods/FrmCatArticulosBuscar.h"
#include "goods/FrmConsultas.h"
#include "goods/FrmPosicion.h"
#include "goods/FrmSufijos.h"
#include "goods/FrmbArticulos.h"
#include "goods/PantallasCatalogo.h"
#include "goods/PantallasNomenclador.h"
#include "goods/Sufijos.h"
#include "goods/ValidadorNCM.h"
#include "platform/Formato.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/Principal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;
using A = ArticuloCatalogo;

namespace {

// A position with suffixes at all four levels: chapter 87 (AA AB AI), heading 8703 (ZF ZA, CB),
// subheading 8703.23 (TR) and the full position (SE).
const QString kAuto = QStringLiteral("8703.23.10.100");
const QString kCompleto =
    QStringLiteral("AA(FORD)-AB(M1)-AI(X)-CB01-SE01-TR01-ZA(002020)-ZF(001600)");
const QString kDifiere =
    QStringLiteral("!Se encontro diferencias entre los Sufijos de Subitem y el nomenclador.");
const QString kDeArticulo =
    QStringLiteral("!Se encontró diferencias, entre los sufijos de su ARTICULO y la posición del "
                   "nomenclador\n\nSe procederá a reconfirmarlos.");
const QString kCancelar = QStringLiteral("?Desea cancelar la operación");

// The input box of a free code of kAuto, with its default answer.
QString P(const char* codigo, const QString& porDefecto = {}) {
    const QHash<QString, QString> titulos{{"AA", "MARCA|20"},
                                          {"AB", "MODELO|20"},
                                          {"AI", "IDENTIFICACION DEL ARTICULO|20"},
                                          {"ZA", "AÑO MODELO|6"},
                                          {"ZF", "CILINDRADA (CM3)|6"}};
    return QStringLiteral("SUFIJO %1|%2|%3").arg(codigo, titulos[codigo], porDefecto);
}

// The three lists of kAuto: what each answers and the present value each is opened with.
const QStringList kListas{"#CB02 - DIESEL", "#SE01 - CON AIRBAGS FRONTALES",
                          "#TR00 - Ninguna opción"};

// One dialogue: answers are typed texts, "?S"/"?N" for the questions and "#row" for the list
// screen; pasos is every step shown, in order, with "#<present value>" for each list opened.
struct Caso {
    const char* nombre;
    QString posicion, sufijos;
    int modo;
    bool deArticulo;
    QStringList respuestas;
    QString esperado;
    QStringList pasos;
    bool flagFinal = false;
    QString separador = QStringLiteral(",");
};

QList<Caso> Casos() {
    const QStringList nuevo{P("AA", "AUTO"), P("AB", "ART-1"), P("AI", "ART-1"), "#", "#", "#"};
    return {
        {"nuevo, cuatro niveles", kAuto, "", 2, false,
         QStringList{"ford (ka)", "m-1", "art.1/ñ", "abc", "2024", "1234567"} + kListas,
         "AA(FORD  KA)-AB(M 1)-AI(ART.1/Ñ)-CB02-SE01-TR00-ZA(002024)-ZF(123456)-",
         nuevo + QStringList{P("ZA"), "!Debe Ingresar un Valor Númerico", P("ZA"), P("ZF")}},
        // 12.4 shows as 000012 and 12.5 rounds away from zero to 000013.
        {"decimales con coma", kAuto, "", 2, false,
         QStringList{"F", "M", "I", "12,4", "12,5"} + kListas,
         "AA(F)-AB(M)-AI(I)-CB02-SE01-TR00-ZA(000012)-ZF(000013)-",
         nuevo + QStringList{P("ZA"), P("ZF")}},
        {"decimales con punto", kAuto, "", 2, false,
         QStringList{"F", "M", "I", "12.4", "12.5"} + kListas,
         "AA(F)-AB(M)-AI(I)-CB02-SE01-TR00-ZA(000012)-ZF(000013)-",
         nuevo + QStringList{P("ZA"), P("ZF")}, false, "."},
        {"modo 2 conserva y cierra con guion", kAuto, kCompleto, 2, false, {}, kCompleto + "-", {}},
        {"modo 1 pregunta con los valores presentes",
         kAuto,
         kCompleto + "-",
         1,
         false,
         {"FORD", "M2", "X", "2021", "1600", "#CB01 - NAFTA", "#SE02 - X", "#TR01 - X"},
         "AA(FORD)-AB(M2)-AI(X)-CB01-SE02-TR01-ZA(002021)-ZF(001600)-",
         {P("AA", "FORD"), P("AB", "M1"), P("AI", "X"), "#CB01", "#SE01", "#TR01",
          P("ZA", "002020"), P("ZF", "001600")}},
        {"modo 2 con diferencias",
         kAuto,
         "AA(FORD)-CB03-TR02",
         2,
         false,
         QStringList{"FORD", "M1", "X1", "2020", "1600"} + kListas,
         "AA(FORD)-AB(M1)-AI(X1)-CB02-SE01-TR00-ZA(002020)-ZF(001600)-",
         {kDifiere, P("AA", "FORD"), P("AB", "ART-1"), P("AI", "ART-1"), "#CB03", "#", "#TR02",
          P("ZA"), P("ZF")}},
        {"articulo con diferencias",
         kAuto,
         "AA(FORD)-",
         2,
         true,
         QStringList{"FORD", "M1", "X1", "2020", "1600"} + kListas,
         "AA(FORD)-AB(M1)-AI(X1)-CB02-SE01-TR00-ZA(002020)-ZF(001600)-",
         {kDeArticulo, P("AA", "FORD"), P("AB", "ART-1"), P("AI", "ART-1"), "#", "#", "#", P("ZA"),
          P("ZF")}},
        {"articulo que coincide",
         kAuto,
         kCompleto,
         2,
         true,
         {},
         kCompleto + "-",
         {kDeArticulo},
         true},
        {"vacio: No pregunta otra vez, Si abandona",
         kAuto,
         "",
         2,
         false,
         {"", "?N", "", "?S"},
         "",
         {P("AA", "AUTO"), kCancelar, P("AA", "AUTO"), kCancelar}},
        {"abandonar descarta lo cargado", kAuto, "", 2, false,
         QStringList{"(-)", "FORD", "M1", "X", "", "?S"} + kListas, "",
         nuevo.mid(0, 1) + nuevo + QStringList{P("ZA"), kCancelar}},
        {"lista cancelada",
         kAuto,
         "",
         2,
         false,
         {"FORD", "M1", "X", "####CANCELADO###"},
         "AA(FORD)-AB(M1)-AI(X)",
         nuevo.mid(0, 4) + QStringList{"!Carga de SUFIJOS cancelada"}},
        {"lista sin respuesta",
         kAuto,
         "",
         2,
         false,
         {"FORD", "M1", "X", "#"},
         "AA(FORD)-AB(M1)-AI(X)",
         nuevo.mid(0, 4) + QStringList{"!Error en generar sufijos"}},
        {"solo a nivel de capitulo",
         "3004.10.12.100",
         "",
         2,
         false,
         {"aspirina", "12-34"},
         "AA(ASPIRINA)-AE(12 34)-",
         {"SUFIJO AA|NOMBRE COMERCIAL|20|AUTO", "SUFIJO AE|NUMERO DE CERTIFICADO ANMAT|20|"}},
        {"posicion sin sufijos",
         "0401.10.10.100",
         "AA(X)-",
         1,
         true,
         {},
         "SIN SUFIJOS",
         {"!No se encontro Sufijo en el nomenclador"},
         true},
        {"posicion inexistente",
         "0401.10.10.999",
         "",
         2,
         false,
         {},
         "##ERRORNCM##",
         {"!No existe la posicion 0401.10.10.999 en el nomenclador"}},
    };
}

void FilasDeCasos() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<int>("caso");
    const QList<Caso> casos = Casos();
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
        for (int i = 0; i < casos.size(); ++i)
            QTest::newRow(ConMotor(casos[i].nombre, m).constData()) << static_cast<int>(m) << i;
}

} // namespace

class TestSufijos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void verificar_data() { FilasDeCasos(); }
    void verificar();
    void componenteAusente();
    void actuSufijos_data();
    void actuSufijos();
    void validador_data();
    void validador();
    void textos();

private:
    BasesNomenclador bases_;
};

void TestSufijos::verificar() {
    BASES_O_SALTAR(ts);
    QFETCH(int, caso);
    const Caso k = Casos()[caso];
    SeparadorDecimalScope sep(k.separador);
    Contexto c(*ts);
    QStringList listas;
    for (const QString& r : k.respuestas) {
        if (r == "?S" || r == "?N")
            r == "?S" ? c.dialogos.ResponderSi() : c.dialogos.ResponderNo();
        else if (r.startsWith('#'))
            listas << r.mid(1);
        else
            c.dialogos.ResponderTexto(r);
    }
    c.ctx.pantallas().Registrar("FrmCargaSufijos", [&](AppContext&, const QVariantMap& args) {
        c.dialogos.pasos << "#" + args.value("seleccion").toString();
        return listas.isEmpty() ? QVariant() : QVariant(listas.takeFirst());
    });
    c.ctx.SufijosDeArticulo = k.deArticulo;
    QCOMPARE(Sufijos(c.ctx).VerificarSufijos(k.posicion, k.sufijos, k.modo, "ART-1", "AUTO"),
             k.esperado);
    QCOMPARE(c.dialogos.pasos, k.pasos);
    QVERIFY(c.dialogos.guionAgotado() && listas.isEmpty());
    QCOMPARE(c.ctx.SufijosDeArticulo, k.flagFinal);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestSufijos::componenteAusente() {
    TestStores* ts = bases_.Para(Motor::SQLite);
    DialogosGrabados dialogos;
    AppContext ctx(ts->stores(), dialogos, ts->settings(), ts->directorio());
    QCOMPARE(Sufijos(ctx).VerificarSufijos(kAuto, kCompleto, 2, {}, {}), QString());
    QCOMPARE(dialogos.pasos,
             QStringList{"!El componente ValidadorNCM no está instalado.\n - seccion "
                         "[KORVEN.Global.VerificarSufijos]:: - nro 429"});
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestSufijos::actuSufijos_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("posicion");
    QTest::addColumn<QString>("viejos");
    QTest::addColumn<QString>("esperado");
    QTest::addColumn<bool>("flag");
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        auto fila = [m](const char* nombre) -> QTestData& {
            return QTest::newRow(ConMotor(nombre, m).constData()) << static_cast<int>(m);
        };
        // CB has four rows and TR two: a token found by search is added once per row.
        fila("buscados") << kAuto << "AA(FORD)-AB(M1)-CB02-TR01-ZF(1600)-"
                         << "AA(FORD)-AB(M1)-CB02-CB02-CB02-CB02-TR01-TR01-ZF(1600)-" << true;
        fila("listado al principio") << kAuto << "CB02-AA(FORD)"
                                     << "AA(FORD)-CB02-CB02-CB02-CB02-" << true;
        fila("solo el del principio") << kAuto << "CB02-"
                                      << "CB02-CB02-CB02-CB02-" << false;
        fila("libre en minusculas") << kAuto << "aa(ford)-zf( )-"
                                    << "AA(ford)-" << true;
        fila("sin sufijos") << "0401.10.10.100"
                            << "AA(X)-"
                            << "SIN SUFIJOS" << false;
        fila("sin posicion") << ""
                             << "AA(X)-"
                             << "" << false;
    }
}

void TestSufijos::actuSufijos() {
    BASES_O_SALTAR(ts);
    QFETCH(QString, posicion);
    QFETCH(QString, viejos);
    QFETCH(QString, esperado);
    QFETCH(bool, flag);
    Contexto c(*ts);
    QCOMPARE(Sufijos(c.ctx).ActuSufijos(posicion, viejos), esperado);
    QCOMPARE(c.ctx.SufijosDeArticulo, flag);
    QCOMPARE(c.dialogos.pasos, esperado == "SIN SUFIJOS"
                                   ? QStringList{"!No se encontro Sufijo en el nomenclador"}
                                   : QStringList{});
}

void TestSufijos::validador_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("ncm");
    QTest::addColumn<QString>("sufijos");
    QTest::addColumn<int>("resultado");
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        auto fila = [m](const char* nombre) -> QTestData& {
            return QTest::newRow(ConMotor(nombre, m).constData()) << static_cast<int>(m);
        };
        const QString a = kAuto + "Y";
        fila("completo") << a << kCompleto + "-" << 0;
        fila("sin letra") << kAuto << kCompleto << 0;
        fila("en otro orden") << a << "ZF(1)-ZA(2)-TR01-SE01-CB01-AI(X)-AB(Y)-AA(Z)-" << 0;
        fila("ninguna opcion") << a << "AA(F)-AB(M)-AI(X)-CB00-SE00-TR00-ZA(1)-ZF(2)-" << 0;
        fila("repetido igual") << a << "AA(F)-AB(M)-AI(X)-CB01-CB01-SE01-TR01-ZA(1)-ZF(2)-" << 0;
        fila("repetido distinto") << a << "AA(F)-AB(M)-AI(X)-CB01-CB02-SE01-TR01-ZA(1)-ZF(2)-" << 2;
        fila("falta un codigo") << a << "AA(F)-AB(M)-AI(X)-CB01-SE01-TR01-ZA(1)-" << 2;
        fila("codigo ajeno") << a << kCompleto + "-EM01-" << 2;
        fila("opcion inexistente") << a << "AA(F)-AB(M)-AI(X)-CB09-SE01-TR01-ZA(1)-ZF(2)-" << 2;
        fila("libre como listado") << a << "AA00-AB(M)-AI(X)-CB01-SE01-TR01-ZA(1)-ZF(2)-" << 2;
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
        fila("letra equivocada") << kAuto + "Z" << kCompleto << 1;
        fila("posicion inexistente") << "0401.10.10.999X"
                                     << "" << 1;
        fila("posicion corta") << "0401.10"
                               << "" << 1;
    }
}

void TestSufijos::validador() {
    BASES_O_SALTAR(ts);
    QFETCH(QString, ncm);
    QFETCH(QString, sufijos);
    QFETCH(int, resultado);
    Contexto c(*ts);
    // Reached by name, as the assembly and the dialogue reach it.
    auto v = c.ctx.componentes().Crear("ValidadorNCM", c.ctx);
    int r = -1;
    QVERIFY(QMetaObject::invokeMethod(v.get(), "ValidarSubItem", Q_RETURN_ARG(int, r),
                                      Q_ARG(QString, ncm), Q_ARG(QString, sufijos)));
    QCOMPARE(r, resultado);
    // The marks of the position: [059] "*" is LAPI, [041] "*" stamps.
    QVariantMap marcas;
    QVERIFY(QMetaObject::invokeMethod(v.get(), "MarcasPosicion", Q_RETURN_ARG(QVariantMap, marcas),
                                      Q_ARG(QString, ncm)));
    const bool automovil = resultado != 1 && ncm.startsWith(kAuto);
    QCOMPARE(marcas, (QVariantMap{{"lapi", automovil}, {"estampillas", false}}));
    QCOMPARE(static_cast<ValidadorNCM*>(v.get())->MarcasPosicion("2208.30.20.100I"),
             (QVariantMap{{"lapi", false}, {"estampillas", true}}));
}

// The pure rules on text: the rewrite of a code, the customer rule and the value clean-up.
void TestSufijos::textos() {
    const struct {
        QString sufijos, codigo, valor, esperado;
    } reemplazos[] = {
        {"AA(FORD)-ZA(002020)-", "ZA", "001999", "AA(FORD)-ZA(001999)-"},
        {"AA(FORD)-ZA(002020)-", "AA", "O'NEIL", "AA(ONEIL)-ZA(002020)-"},
        {"CB01-AB(M1)-TR01-", "AB", "", "CB01-AB()-TR01-"},
        {"AA(FORD)-", "AB", "X", ""},
    };
    for (const auto& r : reemplazos)
        QCOMPARE(Sufijos::Reemplazarsufijos(r.sufijos, r.codigo, r.valor), r.esperado);

    const struct {
        QString posicion, sufijos, articulo;
        bool valido;
    } cordano[] = {
        {"8409.91.12.100G", "", "X", true},
        {"8409.99.12.100C", "", "X", true},
        {"8409.91.12.900H", "", "X", false},
        {"8407.34.90.900Z", "", "X", true},
        {"8703.23.10.100Y", "", "X", true},
        {"8705.10.00.100A", "", "X", false},
        {"8471.30.12.100A", "AA(F)-AI(AB 12)-", "AB-12", true},
        {"8471.30.12.100A", "AB((X  1))-", " (X  1) ", false},
        {"8471.30.12.100A", "AB(X 1)-", "(X  1)", true},
        {"8471.30.12.100A", "AA(X1)-", "X1", false},
    };
    for (const auto& k : cordano)
        QCOMPARE(Sufijos::ValidaSufijoCordano(k.posicion, k.sufijos, k.articulo), k.valido);

    const std::pair<QString, QString> valores[] = {
        {"abc(d)-e", "ABC D  E"},
        {"   x", "X"}, // trimmed before the cut
        {"123456789012345678901234", "12345678901234567890"},
        {"ñandu 1/2 & co.,#", "ÑANDU 1/2 & CO.,#"},
        {"x@", "X "}, // not trimmed after the filter
        {"canción", "CANCI N"},
    };
    for (const auto& [texto, esperado] : valores)
        QCOMPARE(Sufijos::LimpiarValor(texto), esperado);
}

namespace {

// The answer of the position picker as "key=value;..." in the order of the keys.
QString Respuesta(const QWidget& f) {
    QStringList l;
    const QVariantMap m = f.property("Respuesta").toMap();
    for (auto it = m.cbegin(); it != m.cend(); ++it)
        l << it.key() + "=" + it.value().toString();
    return l.join(';');
}

const QString kCilindrada = QStringLiteral("AUTOMÓVILES DE CILINDRADA ENTRE 1500 Y 3000 CM3");

} // namespace

class TestPantallasNomenclador : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void consultas_data() { FilasDeMotores(); }
    void consultas();
    void posicion_data() { FilasDeMotores(); }
    void posicion();
    void sufijos_data() { FilasDeMotores(); }
    void sufijos();
    void cargaSufijos();
    void dialogoConLaLista();

private:
    BasesNomenclador bases_;
};

void TestPantallasNomenclador::consultas() {
    BASES_O_SALTAR(ts);
    Contexto c(*ts);
    FrmConsultas f(c.ctx, {});
    Mostrar(f);
    auto* lista = Control<QTreeWidget>(&f, "LstResult");
    QCOMPARE(NombreFoco(), QStringLiteral("TxtSIM"));
    Tecla(Qt::Key_Return);
    QCOMPARE(c.dialogos.mensajes(), QStringList{"Debe ingresar una posición"});

    // "8703,23" looks for 8703%23%.
    Escribir(QStringLiteral("8703,23"));
    Tecla(Qt::Key_Return);
    QCOMPARE(Filas(lista), (QStringList{"8703.23.10.100Y|" + kCilindrada + " - - LOS DEMÁS, NUEVOS",
                                        "8703.23.10.900I|" + kCilindrada + " - - LOS DEMÁS"}));
    QCOMPARE(NombreFoco(), QStringLiteral("LstResult"));

    // Enter on a row shows its details.
    QString detalle;
    AlAbrirse(QStringLiteral("FrmSufijos"), [&detalle](QWidget* w) {
        detalle = Control<QLabel>(w, "LbPosicion")->text();
        QTest::keyClick(Control<QTableWidget>(w, "Grid2"), Qt::Key_Escape);
    });
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Return);
    QCOMPARE(detalle, QStringLiteral("8703.23.10.900I"));

    // By description, whatever the case typed, in [010] or [004].
    // Accents cannot be typed key by key here: the text goes in as pasted.
    Control<QLineEdit>(&f, "TxtDescripcion")->setFocus();
    Control<QLineEdit>(&f, "TxtDescripcion")->setText(QStringLiteral("diésel de cilindrada"));
    Tecla(Qt::Key_Return);
    QCOMPARE(Filas(lista),
             (QStringList{"8703.32.10.100X|AUTOMÓVILES DIÉSEL DE CILINDRADA ENTRE 1500 Y 2500 "
                          "CM3 -- LOS DEMÁS, NUEVOS",
                          "8703.32.10.900H|AUTOMÓVILES DIÉSEL DE CILINDRADA ENTRE 1500 Y 2500 "
                          "CM3 -- LOS DEMÁS"}));
    Control<QLineEdit>(&f, "TxtDescripcion")->setFocus();
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(QStringLiteral("nuevos"));
    Tecla(Qt::Key_Return);
    QCOMPARE(lista->topLevelItemCount(), 155);
    GuardarPantallazo(QStringLiteral("FrmConsultas"), &f);
    Tecla(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!f.isVisible());
    QCOMPARE(c.dialogos.mensajes().size(), 1);
}

void TestPantallasNomenclador::posicion() {
    BASES_O_SALTAR(ts);
    Contexto c(*ts);
    {
        FrmPosicion f(c.ctx, {{QStringLiteral("texto"), QStringLiteral("4012.")}});
        Mostrar(f);
        QCOMPARE(NombreFoco(), QStringLiteral("LstNCM"));
        QCOMPARE(Filas(Control<QListWidget>(&f, "LstNCM")),
                 (QStringList{"4012.20.00.100C", "4012.20.00.900M"}));
        QCOMPARE(Control<QLabel>(&f, "LbDescripcion")->text(),
                 QStringLiteral("NEUMÁTICOS USADOS\nLOS DEMÁS, NUEVOS"));
        QCOMPARE(Filas(Control<QListWidget>(&f, "LstSufijos")),
                 (QStringList{"AA   MARCA", "US01 NUEVO", "US02 RECAUCHUTADO"}));
        GuardarPantallazo(QStringLiteral("FrmPosicion"), &f);
        Tecla(Qt::Key_Down);
        QCOMPARE(Control<QLabel>(&f, "LbDescripcion")->text(),
                 QStringLiteral("NEUMÁTICOS USADOS\nLOS DEMÁS"));
        Tecla(Qt::Key_Return);
        QVERIFY(!f.isVisible());
        QCOMPARE(Respuesta(f),
                 QStringLiteral("deresp=;estadistica=07;lapi=false;posicion=4012.20.00.900M;"
                                "prohibicion=true;reintegro=true;segelect=false"));
    }
    {
        FrmPosicion f(c.ctx, {{QStringLiteral("texto"), QStringLiteral("9999")}});
        Mostrar(f);
        QCOMPARE(c.dialogos.mensajes(), QStringList{"Posición no Encontrada."});
        QCOMPARE(NombreFoco(), QStringLiteral("TxtNCM"));
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Escribir(QStringLiteral("77"));
        Tecla(Qt::Key_Return);
        QCOMPARE(c.dialogos.mensajes(),
                 (QStringList{"Posición no Encontrada.", "Posición no encontrada."}));
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Escribir(QStringLiteral("8703.23"));
        Tecla(Qt::Key_Return);
        QCOMPARE(NombreFoco(), QStringLiteral("LstNCM"));
        QCOMPARE(Control<QLabel>(&f, "LbDescripcion")->text(),
                 kCilindrada + QStringLiteral("\nLOS DEMÁS, NUEVOS"));
        Tecla(Qt::Key_Return);
        QCOMPARE(Respuesta(f),
                 QStringLiteral("deresp=;estadistica=07;lapi=true;posicion=8703.23.10.100Y;"
                                "prohibicion=false;reintegro=true;segelect=false"));
    }
    {
        FrmPosicion f(c.ctx, {{QStringLiteral("texto"), QStringLiteral("0201")}});
        Mostrar(f);
        Tecla(Qt::Key_Escape);
        QVERIFY(!f.isVisible());
        QVERIFY(!f.property("Respuesta").isValid());
    }
}

void TestPantallasNomenclador::sufijos() {
    BASES_O_SALTAR(ts);
    Contexto c(*ts);
    FrmSufijos f(c.ctx, {{QStringLiteral("posicion"), QStringLiteral("8703.23.10.100Y")}});
    Mostrar(f);
    // Chapter, heading, subheading and the position itself, whose rows are green.
    QCOMPARE(
        Filas(Control<QTableWidget>(&f, "Grid2")),
        (QStringList{"AA|MARCA", "AB|MODELO", "AI|IDENTIFICACION DEL ARTICULO", "CB01|NAFTA",
                     "CB02|DIESEL", "CB03|ELECTRICO", "CB04|HIBRIDO", "ZA|AÑO MODELO",
                     "ZF|CILINDRADA (CM3)", "TR01|TRACCION SIMPLE", "TR02|TRACCION INTEGRAL",
                     "*SE01|CON AIRBAGS FRONTALES", "*SE02|CON AIRBAGS FRONTALES Y LATERALES"}));
    QCOMPARE(Control<QPlainTextEdit>(&f, "Text1")->toPlainText(),
             kCilindrada + QStringLiteral("\nLOS DEMÁS, NUEVOS"));
    const QStringList grid = Filas(Control<QTableWidget>(&f, "Grid"));
    // 1 + 3 header rows, 1 + 8 duties, 1 + 9 sources, 1 + 20 marks: [040] set, [059] set and
    // [062] empty are left out of the marks shown as not had.
    QCOMPARE(grid.size(), 44);
    QCOMPARE(grid.mid(0, 6),
             (QStringList{"*Detalles del Nomenclador", "012|Unidad Estadistica:|07",
                          "020|Unidad del Derecho Especifico:|No posee", "013|Ramo:|V87",
                          "*GRAVAMENES", "015|Derecho de Importación Extrazona:|35"}));
    QCOMPARE(grid[11], QStringLiteral("019|Reintegro Extrazona:|4.05"));
    QCOMPARE(grid[13], QStringLiteral("*FUENTES"));
    QCOMPARE(grid[23], QStringLiteral("*POSEE"));
    QCOMPARE(grid[24], QStringLiteral("040|Impuestos Interno:|*"));
    QCOMPARE(grid[25], QStringLiteral("041|Estampillado:"));
    QCOMPARE(grid[41], QStringLiteral("058|Cupo Salvaguardia:"));
    QCOMPARE(grid[42], QStringLiteral("060|Insumos Inversiones Mineras:"));
    QCOMPARE(grid[43], QStringLiteral("061|Seguridad Gas:"));
    Control<QTabWidget>(&f, "Tabs")->setCurrentIndex(1);
    GuardarPantallazo(QStringLiteral("FrmSufijos"), &f);
    Control<QTabWidget>(&f, "Tabs")->setCurrentIndex(0);
    GuardarPantallazo(QStringLiteral("FrmSufijos-sufijos"), &f);
    Tecla(Qt::Key_Escape);
    QVERIFY(!f.isVisible());
}

void TestPantallasNomenclador::cargaSufijos() {
    // Enter and the present value are driven inside the dialogue below; Esc answers here.
    TestStores* ts = bases_.Para(Motor::SQLite);
    Contexto c(*ts);
    FrmCargaSufijos f(
        c.ctx, {{"opciones", QStringList{"CB00 - Ninguna opción", "CB01 - NAFTA", "CB02 - DIESEL"}},
                {"seleccion", "CB02"}});
    Mostrar(f);
    QCOMPARE(Control<QListWidget>(&f, "LstOpcion")->currentRow(), 2);
    GuardarPantallazo(QStringLiteral("FrmCargaSufijos"), &f);
    Tecla(Qt::Key_Escape);
    QCOMPARE(f.property("Respuesta").toString(), QStringLiteral("###CANCELADO###"));
}

void TestPantallasNomenclador::dialogoConLaLista() {
    // Chapter 02 asks AA, then lists CO (chapter) and TR (heading 0201) on the real screen.
    TestStores* ts = bases_.Para(Motor::SQLite);
    Contexto c(*ts);
    c.dialogos.ResponderTexto(QStringLiteral("Frigorifico Sur"));
    QStringList vistas;
    AlAbrirse(QStringLiteral("FrmCargaSufijos"), [&vistas](QWidget* w) {
        auto* lista = Control<QListWidget>(w, "LstOpcion");
        vistas << Filas(lista).join(';');
        QTest::keyClick(lista, Qt::Key_Down);
        QTest::keyClick(lista, Qt::Key_Down);
        AlAbrirse(QStringLiteral("FrmCargaSufijos"), [&vistas](QWidget* w2) {
            vistas << Filas(Control<QListWidget>(w2, "LstOpcion")).join(';');
            QTest::keyClick(Control<QListWidget>(w2, "LstOpcion"), Qt::Key_Return);
        });
        QTest::keyClick(lista, Qt::Key_Return);
    });
    // The present TR02 is chosen when the list opens.
    QCOMPARE(Sufijos(c.ctx).VerificarSufijos(QStringLiteral("0201.10.00.100"),
                                             QStringLiteral("TR02-"), 1, {}, {}),
             QStringLiteral("AA(FRIGORIFICO SUR)-CO02-TR02-"));
    QCOMPARE(vistas, (QStringList{"CO00 - Ninguna opción;CO01 - ENFRIADO;CO02 - CONGELADO",
                                  "TR00 - Ninguna opción;TR01 - CON HUESO;TR02 - SIN HUESO"}));
}

namespace {

const QString kCat = QStringLiteral("CAT-3451");

const QString kHoy = QDate::currentDate().toString(Qt::ISODate);

// The article written, field by field in the order of the columns of FilasCatalogo.
const QString kNueva = QStringLiteral("HORNO D'ANGELO 60 L|212|203|07|2|S|7790001|OTRO|NOV|C1|"
                                      "8516.60.00.100I|AA(DA)-TE01-|120.5|14.25|");

QString A::*const kTextos[] = {&A::descripcion,    &A::idPais,      &A::idPaisProc, &A::idUnidad,
                               &A::estadoMerc,     &A::bienDeUso,   &A::codigoEAN,  &A::otros,
                               &A::onccaCategoria, &A::onccaCortes, &A::ncm,        &A::sufijos};

A Horno(const QString& catalogo, const QString& articulo) {
    const QStringList v = kNueva.split(QLatin1Char('|'));
    A a;
    a.idCatalogo = catalogo;
    a.idArticulo = articulo;
    for (int i = 0; i < 12; ++i)
        a.*kTextos[i] = v[i];
    a.precioUnitario = v[12].toDouble();
    a.kgUnitario = v[13].toDouble();
    return a;
}

// The stores, and the screens and components of the catalogue and of the nomenclator.
void Preparar(TestStores& ts) {
    PrepararCatalogo(ts);
    RegistrarPantallasCatalogo(ts.ctx().pantallas());
    RegistrarPantallasNomenclador(ts.ctx().pantallas());
    RegistrarComponentesNomenclador(ts.ctx().componentes());
}

void Poner(QWidget* f, const char* campo, const QString& texto) {
    Control<QLineEdit>(f, campo)->setFocus();
    Tecla(Qt::Key_A, Qt::ControlModifier);
    if (texto.isEmpty())
        Tecla(Qt::Key_Delete);
    else
        Escribir(texto);
}

QStringList Visibles(QTreeWidget* l, int columnas = 1) {
    QStringList r;
    for (int i = 0; i < l->topLevelItemCount(); ++i) {
        if (l->topLevelItem(i)->isHidden())
            continue;
        QStringList c;
        for (int j = 0; j < columnas; ++j)
            c << l->topLevelItem(i)->text(j);
        r << c.join(QLatin1Char('|'));
    }
    return r;
}

} // namespace

class TestFrmCatArticulos : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agregar_data();
    void agregar();
    void modos_data() { FilasDeMotores(); }
    void modos();
    void buscarPorTexto();
    void busquedaPorCampo_data();
    void busquedaPorCampo();

    // The catalogue component over the stores: catalogues by code, articles read, and articles
    // added, updated and kept, with who wrote them and when.
    void leer_data() { FilasDeMotores(); }
    void leer() {
        MOTOR_O_SALTAR();
        TestStores ts(static_cast<Motor>(motor));
        PrepararCatalogo(ts);
        CatalogoArticulos c(ts.ctx());
        QCOMPARE(c.BuscarCatalogo(QStringLiteral("CAT-5671 ")),
                 QStringLiteral("CATALOGO DE METALURGICA D'ANGELO HNOS S.R.L."));
        QCOMPARE(c.BuscarCatalogo(QStringLiteral("CAT-9")),
                 QStringLiteral("Advertencia: CATALOGO CAT-9 inexistente"));
        QCOMPARE(c.BuscarCatalogo(QStringLiteral("  ")), QString());
        const auto a = c.LeerArticulo(QStringLiteral("CAT-1239"), QStringLiteral("LOMO-ENF"));
        QVERIFY(a && !c.LeerArticulo(QStringLiteral("CAT-3451"), QStringLiteral("LOMO-ENF")));
        QCOMPARE(a->onccaCortes + a->idUnidad + a->fecha.toString(Qt::ISODate), "LOM012026-02-18");
        QCOMPARE(a->precioUnitario, 9.8);
    }
    void guardar_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("articulo");
        QTest::addColumn<bool>("noModificar");
        QTest::addColumn<bool>("resultado");
        QTest::addColumn<QString>("fila"); // the article as stored after, "" for no change
        const QString nueva = kNueva;
        const QString vieja = QStringLiteral("HE-45|HORNO ELECTRICO 45 LITROS|203|203|07|1|N|||||"
                                             "8516.60.00.100I|AA(ELECTROLUX)-AB(EOT45)-AI(HE 45)-"
                                             "TE01-|95|12|1|KORVEN|2026-02-10");
        for (int m : {int(Motor::SQLite), int(Motor::PostgreSQL)}) {
            const char* e = m == int(Motor::SQLite) ? "sqlite" : "postgresql";
            const QString yo = QStringLiteral("|") + MaquinaLocal() + QLatin1Char('|') + kHoy;
            QTest::addRow("%s alta", e)
                << m << "NUEVO" << false << true << QStringLiteral("NUEVO|") + nueva + "1" + yo;
            QTest::addRow("%s alta sin modificar", e)
                << m << "NUEVO" << true << true << QStringLiteral("NUEVO|") + nueva + "1" + yo;
            // An update keeps the quantity the article had.
            QTest::addRow("%s modificar", e)
                << m << " HE-45 " << false << true << QStringLiteral("HE-45|") + nueva + "1" + yo;
            QTest::addRow("%s no modificar existente", e) << m << "HE-45" << true << true << vieja;
            QTest::addRow("%s sin codigo", e)
                << m << "" << false << true
                << QStringLiteral("HORNO D'ANGELO 60 L|") + nueva + "1" + yo;
            QTest::addRow("%s sin catalogo", e) << m << "X" << false << false << QString();
        }
    }
    void guardar() {
        MOTOR_O_SALTAR();
        QFETCH(QString, articulo);
        QFETCH(bool, noModificar);
        QFETCH(bool, resultado);
        QFETCH(QString, fila);
        TestStores ts(static_cast<Motor>(motor));
        PrepararCatalogo(ts);
        const QStringList antes = FilasCatalogo(ts, QStringLiteral("CAT-3451"));
        QCOMPARE(antes.size(), 5);
        CatalogoArticulos c(ts.ctx());
        const QString catalogo =
            articulo == QStringLiteral("X") ? QString() : QStringLiteral("CAT-3451");
        QCOMPARE(c.GuardarArticulo(Horno(catalogo, articulo), noModificar), resultado);
        QStringList despues = FilasCatalogo(ts, QStringLiteral("CAT-3451"));
        despues.sort();
        QStringList esperado = antes;
        esperado.sort();
        if (!fila.isEmpty()) {
            esperado.removeIf(
                [&](const QString& f) { return f.section('|', 0, 0) == fila.section('|', 0, 0); });
            esperado << fila;
            esperado.sort();
        }
        QCOMPARE(despues, esperado);
        // Other catalogues are not touched.
        QCOMPARE(FilasCatalogo(ts, QStringLiteral("CAT-5433")).size(), 3);
    }
};

// Each row fills the fields it names over a complete article and saves with the button.
void TestFrmCatArticulos::agregar_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("sep");
    QTest::addColumn<QString>("campo");
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QStringList>("mensajes");
    QTest::addColumn<QString>("foco");
    QTest::addColumn<QString>("fila"); // the article as stored, "" when nothing is saved
    const int lite = int(Motor::SQLite);
    const QStringList sinSufijos{"No se encontro Sufijo en el nomenclador"};
    const QString hoy = QStringLiteral("|") + MaquinaLocal() + QLatin1Char('|') +
                        QDate::currentDate().toString(Qt::ISODate);
    auto grabado = [&](const char* precio) {
        return QStringLiteral("BOT-1|BOTELLA|203||01|1|S|779|VERDE|||3923.30.00.200M|SIN "
                              "SUFIJOS|") +
               QString::fromLatin1(precio) + QStringLiteral("|0.25|1") + hoy;
    };
    // The refusals, in the order of the checks.
    const struct {
        const char *nombre, *sep, *campo, *valor, *mensaje, *foco;
    } rechazos[] = {
        {"sin codigo ni nombre", ",", "TxtCatalogo+TxtArtDesc", "",
         "Debe ingresar un Nombre o Código de Articulo", "TxtCatalogo"},
        {"sin unidad", ",", "TxtUnidad", " ", "Debe ingresar el Codigo de UNIDAD", "TxtUnidad"},
        {"unitario no numerico", ",", "TxtUnitario", "12a",
         "Debe ingresar un valor numeric en el campo VALOR UNITARIO", "TxtUnitario"},
        {"unitario con el punto bajo la coma", ",", "TxtUnitario", "1.5",
         "Debe ingresar un valor numeric en el campo VALOR UNITARIO", "TxtUnitario"},
        {"sin posicion", ".", "TxtPosicion", "", "Debe ingresar una POSICION del Nomenclador",
         "TxtPosicion"},
        {"posicion desconocida", ",", "TxtPosicion", "9999.99.99.999Z",
         "No existe la posicion 9999.99.99.999 en el nomenclador", "CmdAgregar"}};
    for (const auto& r : rechazos)
        QTest::newRow(r.nombre) << lite << r.sep << r.campo << r.valor
                                << QStringList{QString::fromUtf8(r.mensaje)} << r.foco << "";
    for (int m : {lite, int(Motor::PostgreSQL)}) {
        const char* e = m == lite ? "sqlite" : "postgresql";
        QTest::addRow("%s graba con coma", e)
            << m << ","
            << "TxtUnitario"
            << "1.234,5" << sinSufijos << "TxtCatalogo" << grabado("1234.5");
        QTest::addRow("%s graba con punto", e)
            << m << "."
            << "TxtUnitario"
            << "1,234.5" << sinSufijos << "TxtCatalogo" << grabado("1234.5");
    }
}

void TestFrmCatArticulos::agregar() {
    MOTOR_O_SALTAR();
    QFETCH(QString, sep);
    QFETCH(QString, campo);
    QFETCH(QString, valor);
    QFETCH(QStringList, mensajes);
    QFETCH(QString, foco);
    QFETCH(QString, fila);
    TestStores ts(static_cast<Motor>(motor));
    Preparar(ts);
    SeparadorDecimalScope separador(sep);
    FrmCatArticulos f(ts.ctx(), {});
    Mostrar(f);
    ElegirEnListado(QStringLiteral("CAT-34"));
    Tecla(Qt::Key_F6);
    // A complete article, typed field by field; the row puts its value in the fields it names.
    const QString articulo = QStringLiteral("TxtCatalogo=BOT-1;TxtArtDesc=BOTELLA;TxtPosicion="
                                            "3923.30.00.200M;TxtUnidad=01;TxtUnitario=2;TxtIdpais="
                                            "203;txtKgUnitario=0#25;TxtIdEstadoMercaderia=1;"
                                            "txtCodigoEAN=779;txtOtros=VERDE")
                                 .replace(QLatin1Char('#'), sep);
    for (const QString& par : articulo.split(QLatin1Char(';'))) {
        const QString nombre = par.section(QLatin1Char('='), 0, 0);
        Poner(&f, nombre.toLatin1().constData(),
              campo.split(QLatin1Char('+')).contains(nombre) ? valor : par.section('=', 1));
        // The codes of country and state are looked up as the clerk leaves them.
        if (nombre == QStringLiteral("TxtIdpais") ||
            nombre == QStringLiteral("TxtIdEstadoMercaderia"))
            Tecla(Qt::Key_Return);
    }
    QCOMPARE(Texto(&f, "TxtdescPais"), QStringLiteral("BRASIL"));
    Control<QCheckBox>(&f, "ckBiendeUso")->setChecked(true);
    ts.dialogos().Limpiar();
    Control<QPushButton>(&f, "CmdAgregar")->setFocus();
    Tecla(Qt::Key_Return);
    QCOMPARE(ts.dialogos().mensajes(), mensajes);
    QCOMPARE(NombreFoco(), foco);
    const QStringList filas = FilasCatalogo(ts, kCat);
    QCOMPARE(filas.filter(QStringLiteral("BOT-1|")),
             fila.isEmpty() ? QStringList() : QStringList{fila});
    // A save reloads the list and clears the fields; a refusal keeps them.
    auto* lst = Control<QTreeWidget>(&f, "Lst");
    QCOMPARE(lst->topLevelItemCount(), fila.isEmpty() ? 5 : 6);
    QCOMPARE(Texto(&f, "txtOtros").isEmpty(), !fila.isEmpty());
    QCOMPARE(Texto(&f, "TxtDescMercaderia").isEmpty(), !fila.isEmpty());
    if (!fila.isEmpty())
        QCOMPARE(lst->topLevelItem(0)->text(3), sep == "," ? "1234,5000" : "1234.5000");
    Tecla(Qt::Key_Escape);
    QVERIFY(!f.isVisible());
}

void TestFrmCatArticulos::modos() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    Preparar(ts);
    SeparadorDecimalScope separador(QStringLiteral(","));
    FrmCatArticulos f(ts.ctx(), {});
    Mostrar(f);
    auto* estado = Control<QLabel>(&f, "LbEstado");
    auto* lst = Control<QTreeWidget>(&f, "Lst");
    QCOMPARE(estado->text(), FrmCatArticulos::kEstadoCatalogos);
    // An unknown catalogue: its warning, and the fields stay closed.
    Escribir(QStringLiteral("cat-9"));
    Tecla(Qt::Key_Return);
    QCOMPARE(Control<QLabel>(&f, "LbDescCatalogo")->text(),
             QStringLiteral("Advertencia: CATALOGO CAT-9 inexistente"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtIdCatalogo"));
    QVERIFY(!Control<QLineEdit>(&f, "TxtCatalogo")->isEnabled());
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribir(QStringLiteral("CAT-3451"));
    Tecla(Qt::Key_Return);
    QCOMPARE(NombreFoco(), QStringLiteral("TxtCatalogo"));
    QCOMPARE(Visibles(lst), (QStringList{"HE-45", "JUG-ENC", "NB-14-16", "PET-500", "ZAP-CU-42"}));
    // A text that is no code: the pick by typing, Down to the second match, Enter.
    AlAbrirse(QStringLiteral("FrmCatArticulosBuscar"), [](QWidget* b) {
        QCOMPARE(Visibles(Control<QTreeWidget>(b, "Lst")), (QStringList{"HE-45", "PET-500"}));
        auto* texto = Control<QLineEdit>(b, "txtBuscar");
        QTest::keyClick(texto, Qt::Key_Down);
        QTest::keyClick(texto, Qt::Key_Return);
    });
    Escribir(QStringLiteral("el"));
    Tecla(Qt::Key_Return);
    QCOMPARE(Texto(&f, "TxtCatalogo"), QStringLiteral("PET-500"));
    QCOMPARE(Texto(&f, "TxtArtDesc"), QStringLiteral("BOTELLAS PET VACIAS 500 ML"));
    QCOMPARE(Texto(&f, "TxtUnitario"), QStringLiteral("1,95"));
    QCOMPARE(Texto(&f, "TxtdescPais"), QStringLiteral("BRASIL"));
    QCOMPARE(Texto(&f, "TxtDescMercaderia"), QStringLiteral("NUEVA SIN USO"));
    QCOMPARE(Texto(&f, "txtSufijos"), QStringLiteral("SIN SUFIJOS"));
    GuardarPantallazo(QStringLiteral("FrmCatArticulos"), &f);
    // F6 on the position hands the text typed, with the point, to the position picker.
    QVariantMap pedido;
    ts.ctx().pantallas().Registrar("FrmPosicion", [&pedido](AppContext&, const QVariantMap& a) {
        pedido = a;
        return QVariant(QVariantMap{{"posicion", "3923.30.00.900L"}});
    });
    Poner(&f, "TxtPosicion", QStringLiteral("3923,30"));
    Tecla(Qt::Key_F6);
    QCOMPARE(pedido.value("texto").toString(), QStringLiteral("3923.30"));
    QCOMPARE(Texto(&f, "TxtPosicion"), QStringLiteral("3923.30.00.900L"));

    // F9: the list of articles; + opens the details, Delete asks, Enter takes the article.
    Tecla(Qt::Key_F9);
    QCOMPARE(estado->text(), FrmCatArticulos::kEstadoArticulos);
    QCOMPARE(NombreFoco(), QStringLiteral("Lst"));
    QVERIFY(!Control<QLineEdit>(&f, "TxtArtDesc")->isEnabled());
    Tecla(Qt::Key_Plus);
    QVERIFY(lst->topLevelItem(0)->isExpanded());
    QCOMPARE(lst->topLevelItem(0)->child(0)->text(1),
             QStringLiteral("AA(ELECTROLUX)-AB(EOT45)-AI(HE 45)-TE01-"));
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Minus);
    QCOMPARE(lst->currentItem(), lst->topLevelItem(0));
    QVERIFY(!lst->topLevelItem(0)->isExpanded());
    Tecla(Qt::Key_Down);
    ts.dialogos().ResponderNo();
    ts.dialogos().ResponderSi();
    Tecla(Qt::Key_Delete);
    QCOMPARE(lst->topLevelItemCount(), 5);
    lst->setCurrentItem(lst->topLevelItem(1));
    Tecla(Qt::Key_Delete);
    QCOMPARE(Visibles(lst), (QStringList{"HE-45", "NB-14-16", "PET-500", "ZAP-CU-42"}));
    QCOMPARE(FilasCatalogo(ts, kCat).size(), 4);
    lst->setCurrentItem(lst->topLevelItem(0));
    Tecla(Qt::Key_Return);
    QCOMPARE(estado->text(), FrmCatArticulos::kEstadoCatalogos);
    QCOMPARE(Texto(&f, "TxtCatalogo"), QStringLiteral("HE-45"));
    QCOMPARE(Texto(&f, "TxtUnitario"), QStringLiteral("95"));
    QCOMPARE(NombreFoco(), QStringLiteral("TxtArtDesc"));
    // F11 prints, without the printer installed; Ctrl+C closes.
    Tecla(Qt::Key_F11);
    QCOMPARE(ts.dialogos().todo(),
             (QStringList{"Confirma eliminar el articulo: JUG-ENC del catalogo: CAT-3451",
                          "Confirma eliminar el articulo: JUG-ENC del catalogo: CAT-3451",
                          "429 - El componente CataloguePrinter.Main no está instalado. - "
                          "[ARTICULOS.IMPRIMIR]"}));
    QVERIFY(f.isVisible());
    Tecla(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(!f.isVisible());
}

void TestFrmCatArticulos::buscarPorTexto() {
    TestStores ts(Motor::SQLite);
    Preparar(ts);
    FrmCatArticulosBuscar b(ts.ctx(), {{QStringLiteral("catalogo"), QStringLiteral("CAT-5433")},
                                       {QStringLiteral("texto"), QStringLiteral("")}});
    Mostrar(b);
    auto* lst = Control<QTreeWidget>(&b, "Lst");
    QCOMPARE(Visibles(lst), (QStringList{"BC-50", "ET-L2", "LL-24"}));
    // Typing filters on code and description; the arrows stay in the text.
    Escribir(QStringLiteral("bo"));
    QCOMPARE(Visibles(lst), (QStringList{"BC-50", "LL-24"}));
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Down);
    QCOMPARE(NombreFoco(), QStringLiteral("txtBuscar"));
    QCOMPARE(lst->currentItem()->text(0), QStringLiteral("LL-24"));
    Tecla(Qt::Key_Up);
    QCOMPARE(lst->currentItem()->text(0), QStringLiteral("BC-50"));
    // Delete asks, spelt so, and removes from the catalogue.
    ts.dialogos().ResponderSi();
    Tecla(Qt::Key_Delete);
    QCOMPARE(ts.dialogos().todo(), QStringList{"Confima eliminar el articulo BC-50"});
    QCOMPARE(Visibles(lst), QStringList{"LL-24"});
    QCOMPARE(FilasCatalogo(ts, QStringLiteral("CAT-5433")).size(), 2);
    // F6 in the list: a new text.
    lst->setFocus();
    ts.dialogos().ResponderTexto(QStringLiteral("lineal"));
    Tecla(Qt::Key_F6);
    QCOMPARE(Visibles(lst, 2), QStringList{"ET-L2|ETIQUETADORA AUTOMATICA LINEAL"});
    GuardarPantallazo(QStringLiteral("FrmCatArticulosBuscar"), &b);
    Tecla(Qt::Key_Return);
    QCOMPARE(
        b.property("Respuesta").toMap(),
        (QVariantMap{{"articulo", "ET-L2"}, {"descripcion", "ETIQUETADORA AUTOMATICA LINEAL"}}));
    // Esc answers nothing.
    FrmCatArticulosBuscar otra(ts.ctx(),
                               {{QStringLiteral("catalogo"), QStringLiteral("CAT-5433")}});
    Mostrar(otra);
    Tecla(Qt::Key_Escape);
    QVERIFY(!otra.property("Respuesta").isValid());
}

void TestFrmCatArticulos::busquedaPorCampo_data() {
    QTest::addColumn<bool>("conTotal");
    QTest::addColumn<QString>("campo");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("sep");
    QTest::addColumn<QStringList>("filas");
    QTest::newRow("total por descripcion")
        << true << "descripcion"
        << "de"
        << ","
        << QStringList{"JUG-ENC|JUGUETE DE ENCASTRE PLASTICO|9503.00.97.100T|02,30",
                       "ZAP-CU-42|ZAPATO DE CUERO PARA HOMBRE|6403.99.90.100T|18,50"};
    QTest::newRow("total por posicion") << true << "ncm"
                                        << "3923"
                                        << "."
                                        << QStringList{"PET-500|BOTELLAS PET VACIAS 500 ML|"
                                                       "3923.30.00.200M|01.95"};
    QTest::newRow("apostrofo") << true << "descripcion"
                               << "D'A"
                               << "," << QStringList{};
    QTest::newRow("cantidad por articulo")
        << false << "idarticulo"
        << "-1"
        << ","
        << QStringList{"NB-14-16|8471.30.12.100M|NOTEBOOK 14 PULGADAS 16GB RAM|01,00|450,00"};
    QTest::newRow("cantidad sin texto")
        << false << "ncm"
        << ""
        << "." << QStringList{"NB-14-16", "ZAP-CU-42", "HE-45", "JUG-ENC", "PET-500"};
}

void TestFrmCatArticulos::busquedaPorCampo() {
    QFETCH(bool, conTotal);
    QFETCH(QString, campo);
    QFETCH(QString, texto);
    QFETCH(QString, sep);
    QFETCH(QStringList, filas);
    TestStores ts(Motor::SQLite);
    Preparar(ts);
    SeparadorDecimalScope separador(sep);
    const QVariantMap args{{QStringLiteral("catalogo"), kCat}};
    std::unique_ptr<QDialog> f(conTotal ? static_cast<QDialog*>(new FrmbArticulos(ts.ctx(), args))
                                        : new FrmArticulos(ts.ctx(), args));
    Mostrar(*f);
    Control<QComboBox>(f.get(), "CboCampo")->setFocus();
    Escribir(campo);
    Control<QLineEdit>(f.get(), "TxtValor")->setFocus();
    Escribir(texto);
    Tecla(Qt::Key_Return);
    auto* lst = Control<QTreeWidget>(f.get(), "Lst");
    // The statement has no order: the rows are compared sorted.
    QStringList r = Visibles(lst, texto.isEmpty() ? 1 : lst->columnCount());
    r.sort();
    filas.sort();
    QCOMPARE(r, filas);
    QVERIFY(ts.dialogos().mensajes().isEmpty());
    GuardarPantallazo(QString::fromLatin1(f->metaObject()->className()).section(':', -1), f.get());
}

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestSufijos, TestPantallasNomenclador, TestFrmCatArticulos>(
        argc, argv);
}

#include "test_frmcatarticulos.moc"
