// The catalogue of articles: the component over the stores, and its screens driven from the
// keyboard (the maintenance screen in its two modes, its checks before a save, the pick of an
// article by typing, and the searches by field).

#include "FixtureCatalogo.h"
#include "goods/CatalogoArticulos.h"
#include "goods/FrmArticulos.h"
#include "goods/FrmCatArticulos.h"
#include "goods/FrmCatArticulosBuscar.h"
#include "goods/FrmbArticulos.h"
#include "goods/PantallasCatalogo.h"
#include "goods/PantallasNomenclador.h"
#include "platform/Formato.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kCat = QStringLiteral("CAT-3451");

const QString kHoy = QDate::currentDate().toString(Qt::ISODate);

// The article written, field by field in the order of the columns of FilasCatalogo.
const QString kNueva = QStringLiteral("HORNO D'ANGELO 60 L|212|203|07|2|S|7790001|OTRO|NOV|C1|"
                                      "8516.60.00.100I|AA(DA)-TE01-|120.5|14.25|");

using A = ArticuloCatalogo;
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

QTEST_MAIN(TestFrmCatArticulos)
#include "test_frmcatarticulos.moc"
