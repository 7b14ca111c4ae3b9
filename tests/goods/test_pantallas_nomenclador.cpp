// The nomenclator's screens driven from the keyboard: the query, the position picker, the
// details display and the list of a listed suffix, alone and inside the suffix dialogue.

#include "FixtureNomenclador.h"
#include "goods/FrmCargaSufijos.h"
#include "goods/FrmConsultas.h"
#include "goods/FrmPosicion.h"
#include "goods/FrmSufijos.h"
#include "goods/Sufijos.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

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

QTEST_MAIN(TestPantallasNomenclador)
#include "test_pantallas_nomenclador.moc"
