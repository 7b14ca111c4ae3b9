// An Operation from end to end, as a clerk takes it through the desktop with the keyboard: created
// in the register, its header and three goods lines typed, the items assembled, item 0 shown and
// the liquidation saved as PDF; the totals read back from the PDF against the stores and against
// figures worked out by hand. Both engines.

#include "assembly/PantallasArmado.h"
#include "foundation/FrmPrincipal.h"
#include "foundation/Main.h"
#include "foundation/MenuP.h"
#include "foundation/Sesion.h"
#include "goods/PantallasCatalogo.h"
#include "goods/PantallasNomenclador.h"
#include "goods/PantallasSubItems.h"
#include "header/PantallasCaratula.h"
#include "header/TecladoCaratula.h"
#include "liquidation/FrmPrintItem.h"
#include "liquidation/PantallasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/Pantallas.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "platform/ui/PantallasEscritorio.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/TecladoSubItems.h"
#include "support/TestStores.h"
#include "support/TextoPdf.h"

#include <QTableWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kInterno = QStringLiteral("E2E-0001");

// The three lines: two of the cookers (one item, FOB 600 + 150) and the steel sheet (FOB 250).
const QStringList kLineas = {
    "TxtPosicion:7321.11.00.100X|TxtUnidad:7|TxtCantidad:4|TxtFobTotal:600|"
    "TxtValorsobreestadistica:4|TxtKgNeto:40{s}5|TxtKgBruto:50|TxtIdpais:310",
    "TxtPosicion:7208.51.00.100B|TxtUnidad:14|TxtCantidad:0{s}5|TxtFobTotal:250|TxtKgBruto:520|"
    "TxtIdpais:310",
    "TxtPosicion:7321.11.00.100X|TxtUnidad:7|TxtCantidad:1|TxtFobTotal:150|"
    "TxtValorsobreestadistica:1|TxtKgNeto:10|TxtKgBruto:12|TxtIdpais:310",
};

// Back from a modal screen: the screen under it is the active window again.
void Activa(QWidget* w) {
    w->activateWindow();
    if (!QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }))
        qWarning("La pantalla %s no vuelve a ser la activa", qPrintable(w->objectName()));
}

// Tab until the control has the focus, as a clerk moves among the buttons of a screen.
bool TabHasta(const QString& nombre) {
    for (int i = 0; i < 20 && NombreFoco() != nombre; ++i)
        Tecla(Qt::Key_Tab);
    return NombreFoco() == nombre;
}

QVariant Escalar(Conexion& c, const QString& sql) {
    return c.Escalar(QString(sql).replace(QStringLiteral("$i"),
                                          QLatin1Char('\'') + kInterno + QLatin1Char('\'')));
}

} // namespace

class TestExtremo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void deLaAltaAlPdf_data();
    void deLaAltaAlPdf();

private:
    // The header of an import, typed as Enter leads: FOB 1000, freight 100, insurance 20 dollars.
    static bool TeclearCaratula(const QString& sep);
};

bool TestExtremo::TeclearCaratula(const QString& sep) {
    const QByteArray coma = sep.toLatin1();
    if (!Campos({{"TxtSubReg", "ic04"}, {"txtIdAduana1", "001"}}))
        return false;
    return Campos({{"TxtCUITCliente", "30708123451"},
                   {"TxtCuitAduana", "20203040505"},
                   {"Txtidvendedor", "v001"},
                   {"Txtfobdivisas", "1000"},
                   {"TxtCoddivfob", "DOL"},
                   {"TxtDivValorFob", "1"},
                   {"Txtfletedivisas", "100"},
                   {"TxtCodDivFlete", "DOL"},
                   {"TxtDivValorFlete", "1"},
                   {"Txtsegurodivisas", QByteArray("20" + coma + "00").constData()},
                   {"TxtCodDivseguro", "DOL"},
                   {"TxtDivValorSeguro", "1"},
                   {"TxtPorc", "0"},
                   {"TxtProrratear", "0"},
                   {"TxtAjustIncluir", "0"},
                   {"TxtAjustDeducir", "0"},
                   {"Txtidcondventa", "FOB"},
                   {"Txtidpais", "310"},
                   {"txtFechaEmbarque", "15/1/2026"},
                   {"TxtFactura", "A-0001-00000077"},
                   {"TxtFactura", ""},
                   {"LstFact", ""}});
}

void TestExtremo::deLaAltaAlPdf_data() {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QString>("sep");
    QTest::newRow("sqlite ,") << static_cast<int>(Motor::SQLite) << QStringLiteral(",");
    QTest::newRow("postgresql .") << static_cast<int>(Motor::PostgreSQL) << QStringLiteral(".");
}

void TestExtremo::deLaAltaAlPdf() {
    MOTOR_O_SALTAR();
    QFETCH(QString, sep);
    SeparadorDecimalScope separador(sep);
    TestStores ts(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
    ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("FLAGS"),
                              QStringLiteral("CARGASBTPOR"), QStringLiteral("F"));
    const QString pdf = ts.directorio() + QStringLiteral("liquidacion.pdf");

    // The program's own start, with the screens of every library as the program registers them.
    ParametrosArranque p;
    p.directorioPrograma = ts.directorio();
    p.carpetaSettings = ts.settings().carpeta();
    p.dialogos = &ts.dialogos();
    p.registros.push_back([](AppContext& ctx) {
        RegistrarPantallasLiquidacion(ctx.pantallas());
        RegistrarComponentesCaratula(ctx.componentes());
        RegistrarPantallasCaratula(ctx.pantallas());
        RegistrarPantallasSubItems(ctx.pantallas());
        RegistrarComponentesNomenclador(ctx.componentes());
        RegistrarPantallasNomenclador(ctx.pantallas());
        RegistrarPantallasCatalogo(ctx.pantallas());
        RegistrarPantallasArmado(ctx.pantallas());
    });
    // The printing screen is the real one, told where to save the PDF.
    QList<QVariantMap> impresiones;
    p.registros.push_back([&](AppContext& ctx) {
        RegistrarFormulario(ctx.pantallas(), QStringLiteral("FrmPrintItem"),
                            [&](AppContext& c, const QVariantMap& args, QWidget* padre) {
                                impresiones << args;
                                QVariantMap a = args;
                                a.insert(QStringLiteral("archivoPdf"), pdf);
                                return new FrmPrintItem(c, a, padre);
                            });
    });
    std::unique_ptr<Sesion> sesion = Main(p);
    QVERIFY(sesion);
    ts.dialogos().ResponderTexto(kInterno);

    // Each screen is driven once it is up and closed with its keys; the steps say how far it went.
    QStringList pasos;
    const auto paso = [&pasos](const QString& nombre, bool bien) {
        pasos << nombre + (bien ? QString() : QStringLiteral(" FALLÓ en ") + NombreFoco());
        return bien;
    };
    bool quedoAbierta = false;
    QString cabecera;
    const auto lineas = [&ts] {
        return static_cast<int>(
            EsNumero(Escalar(ts.conexion(QStringLiteral("INTERNOS")),
                             "select count(*) from subitems where interno = $i")));
    };
    const auto caratula = [&](QWidget*) {
        if (paso(QStringLiteral("caratula"), TeclearCaratula(sep)))
            Tecla(Qt::Key_Escape);
    };
    const auto subitems = [&](QWidget*) {
        for (int i = 0; i < kLineas.size(); ++i) {
            Teclear(kLineas.at(i), sep, lineas);
            if (!paso(QStringLiteral("linea %1").arg(i + 1), !QTest::currentTestFailed()))
                return;
        }
        Tecla(Qt::Key_Escape);
    };
    // Item 0 on screen: F12 opens the printing, its button saves the PDF; Esc closes each.
    const auto verItem = [&](QWidget* ver) {
        cabecera = ver->windowTitle();
        AlAbrirseYCerrar(
            QStringLiteral("FrmPrintItem"),
            [&](QWidget*) {
                if (paso(QStringLiteral("pdf"), TabHasta(QStringLiteral("CmdPdf"))))
                    Tecla(Qt::Key_Space);
                Tecla(Qt::Key_Escape);
            },
            &quedoAbierta);
        Tecla(Qt::Key_F12);
        Tecla(Qt::Key_Escape);
    };
    const auto detalle = [&](QWidget* hub) {
        if (!paso(QStringLiteral("hub"), NombreFoco() == QStringLiteral("cmdCaratula")))
            return;
        AlAbrirseYCerrar(QStringLiteral("FrmCaratula"), caratula, &quedoAbierta);
        Tecla(Qt::Key_Return);
        Activa(hub);
        if (!paso(QStringLiteral("subitems"), TabHasta(QStringLiteral("CmdSubItems"))))
            return;
        AlAbrirseYCerrar(QStringLiteral("FrmSubItems"), subitems, &quedoAbierta);
        Tecla(Qt::Key_Return);
        // The assembly button, reached as with the mouse: Tab does not lead to it.
        Activa(hub);
        Control<QWidget>(hub, "cmdITEM")->setFocus();
        if (!paso(QStringLiteral("armado"), NombreFoco() == QStringLiteral("cmdITEM")))
            return;
        AlAbrirseYCerrar(QStringLiteral("FrmVerItem"), verItem, &quedoAbierta);
        Tecla(Qt::Key_Return);
        Activa(hub);
        GuardarPantallazo(QStringLiteral("e2e-hub"), hub, sesion->principal());
        Tecla(Qt::Key_Escape);
    };
    // The register: Insert asks for the number and lists the new Operation, Enter opens it.
    AlAbrirseYCerrar(
        QStringLiteral("FrmInternoNew"),
        [&](QWidget*) {
            Tecla(Qt::Key_Insert);
            if (!paso(QStringLiteral("alta"), NombreFoco() == QStringLiteral("lstInterno")))
                return;
            AlAbrirseYCerrar(QStringLiteral("FrmDetalleInterno"), detalle, &quedoAbierta);
            Tecla(Qt::Key_Return);
            Tecla(Qt::Key_Escape);
        },
        &quedoAbierta);
    QTableWidget* menu = sesion->menu()->GrdMenuMain();
    menu->setFocus();
    menu->setCurrentCell(0, menu->columnCount() - 1);
    QTest::keyClick(menu, Qt::Key_Return);

    QCOMPARE(
        pasos.join(QStringLiteral(", ")),
        QStringLiteral("alta, hub, caratula, subitems, linea 1, linea 2, linea 3, armado, pdf"));
    QVERIFY(!quedoAbierta);
    // The number asked for, and each line of a position without suffixes says so.
    const QString sinSufijos = QStringLiteral("No se encontro Sufijo en el nomenclador");
    QCOMPARE(ts.dialogos().todo(),
             (QStringList{QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"), sinSufijos,
                          sinSufijos, sinSufijos}));
    QVERIFY(ts.dialogos().guionAgotado());
    QCOMPARE(cabecera, QStringLiteral("Item's - Interno: ") + kInterno);
    QCOMPARE(impresiones.size(), 1);
    QCOMPARE(impresiones.first().value(QStringLiteral("interno")).toString(), kInterno);

    // What the stores hold for item 0 and what the PDF shows of it.
    Conexion& c = ts.conexion(QStringLiteral("INTERNOS"));
    QString error;
    const QString texto = TextoDePdf(pdf, &error);
    QVERIFY2(!texto.isEmpty(), qPrintable(error));
    const auto importe = [&](double v) {
        return QRegularExpression::escape(Formato(v, QStringLiteral("00.00")));
    };
    const auto suma = [&](const char* columna) {
        return EsNumero(Escalar(c, QStringLiteral("select sum(%1) from item where interno = $i "
                                                  "and id <> 0")
                                       .arg(QLatin1String(columna))));
    };
    QCOMPARE(suma("fobtotal"), 1000.0);
    QCOMPARE(suma("itflete"), 100.0);
    QCOMPARE(suma("itseguro"), 20.0);
    const double baseimp = EsNumero(
        Escalar(c, "select valor from liqcero where interno = $i and idconcepto = '###baseimp'"));
    QCOMPARE(baseimp, 1120.0); // FOB 1000 + freight 100 + insurance 20
    // By hand: item 0 holds FOB 1000, freight 100 and insurance 20, CIF 1120, of which the
    // statistics fee (011) is 3 %: 33.60. Freight and insurance go to the items by FOB: the
    // cookers 750 (600 + 150) take 75 and 15, the sheet 250 takes 25 and 5; net kilos 40.5 + 10
    // and 500 (half a tonne). Each item's printed base of VAT adds its position's duty, 16 % and
    // 12 %, and its fee: 840 + 134.40 + 25.20 = 999.60 and 280 + 33.60 + 8.40 = 322.
    const QString s = QRegularExpression::escape(sep);
    for (QString patron :
         {QStringLiteral("Interno: ") + kInterno, QStringLiteral("Ajuste Ded.: 00~00 FOB: 1000~00"),
          QStringLiteral("Flete: 100~00 Seguro: 20~00"), QStringLiteral("Base Imponible: 1120~00"),
          QStringLiteral("\\(011\\) TASA DE ESTADISTICA 33~60"), QStringLiteral("ITEM 001"),
          QStringLiteral("ITEM 002"), QStringLiteral("FOB 750~00 - AJUS INC 00~00"),
          QStringLiteral("FLETE 75~00 - AJUS DED 00~00"),
          QStringLiteral("SEGURO 15~00 - KG NETO 50~50"),
          QStringLiteral("Base Imponible: 840~00 - Base Iva: 999~60"),
          QStringLiteral("\\(011\\) TASA DE ESTADISTICA 03~00 P 840~00 25~20"),
          QStringLiteral("FOB 250~00 - AJUS INC 00~00"),
          QStringLiteral("FLETE 25~00 - AJUS DED 00~00"),
          QStringLiteral("SEGURO 05~00 - KG NETO 500~00"),
          QStringLiteral("Base Imponible: 280~00 - Base Iva: 322~00"),
          QStringLiteral("\\(011\\) TASA DE ESTADISTICA 03~00 P 280~00 08~40")}) {
        patron.replace(QLatin1Char('~'), s).replace(QLatin1Char(' '), QStringLiteral("\\s+"));
        QVERIFY2(TieneLinea(texto, patron), qPrintable(patron + QLatin1Char('\n') + texto));
    }
    QVERIFY(!texto.contains(QStringLiteral("ITEM 003")));
    // The other totals of item 0 as the stores hold them.
    QVERIFY(TieneLinea(texto, QStringLiteral("Base Iva: ") +
                                  importe(EsNumero(Escalar(c, "select valor from liqcero where "
                                                              "interno = $i and idconcepto = "
                                                              "'###baseiva'")))));
    Recordset rs = c.Abrir(QStringLiteral("select idconcepto, valor from liqcero where interno = ? "
                                          "and idconcepto not like '###%' order by idconcepto"),
                           {kInterno});
    int conceptos = 0;
    for (; !rs.Eof(); rs.MoveNext(), ++conceptos) {
        const QString patron = QStringLiteral("\\(") + EsNull(rs.Fields(0)) +
                               QStringLiteral("\\) [^\\n]*\\s") + importe(EsNumero(rs.Fields(1)));
        QVERIFY2(TieneLinea(texto, patron), qPrintable(patron + QLatin1Char('\n') + texto));
    }
    QCOMPARE(conceptos, 2); // the statistics fee and the fixed fee (500)
}

QTEST_MAIN(TestExtremo)
#include "test_extremo.moc"
