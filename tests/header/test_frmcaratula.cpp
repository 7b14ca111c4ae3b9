// The header screen driven from the keyboard: a complete import and a complete export typed as
// a clerk types them, saved with Esc and checked against the stores; the checks of the save,
// the sub-regime's fields, the look-ups and the hub.

#include "FixtureCaratula.h"
#include "foundation/EstadoInterno.h"
#include "foundation/FrmDetalleInterno.h"
#include "header/CaratulaDatos.h"
#include "header/FrmCaratula.h"
#include "header/PantallasCaratula.h"
#include "platform/Formato.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
#include "support/TestStores.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

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

// The clients' book as the header uses it: in selection mode it hands a tax number back.
class LibroGuionado : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool Seleccionar MEMBER seleccionar)
    Q_PROPERTY(bool OrigenKorven MEMBER origenKorven)
    Q_PROPERTY(QString Cliente_Cuit MEMBER cuit)
public:
    bool seleccionar = false;
    bool origenKorven = false;
    QString cuit;
    QString elegir;
    Q_INVOKABLE void SetDataConnection(QObject*) {}
    Q_INVOKABLE void MostrarListado(QObject* formulario) {
        if (seleccionar && origenKorven && formulario)
            cuit = elegir;
    }
};

} // namespace

// Asserts where the focus is, types, and presses Enter.
#define CAMPO(nombre, texto)                                                                       \
    do {                                                                                           \
        QCOMPARE(NombreFoco(), QStringLiteral(nombre));                                            \
        Escribir(QStringLiteral(texto));                                                           \
        Tecla(Qt::Key_Return);                                                                     \
    } while (0)

class TestFrmCaratula : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void importacion_data() { FilasDeMotores(); }
    void importacion();
    void salirSinGuardar_data() { FilasDeMotores(); }
    void salirSinGuardar();
    void vendedorOculto_data() { FilasDeMotores(); }
    void vendedorOculto();
    void camposYListas_data() { FilasDeMotores(); }
    void camposYListas();
    void facturasYCarga_data() { FilasDeMotores(); }
    void facturasYCarga();
    void hub_data() { FilasDeMotores(); }
    void hub();
};

void TestFrmCaratula::importacion() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral(","));
    const QString interno = QStringLiteral("T-IC04");
    Nueva(ts, interno);
    QCOMPARE(Estado(ts, interno), QStringLiteral("INCOMPLETO"));

    FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
    Mostrar(f);
    // The header of the demo import, typed field after field as Enter leads.
    CAMPO("TxtSubReg", "ic04");
    QCOMPARE(Texto(&f, "TxtSubReg"), QStringLiteral("IC04"));
    QCOMPARE(Texto(&f, "TxtSubRegDesc"), QStringLiteral("IMPORTACION A CONSUMO"));
    QVERIFY(Control<QLineEdit>(&f, "TxtIdAduana2")->isHidden()); // dest
    QCOMPARE(NombreFoco(), QStringLiteral("txtIdAduana1"));
    ElegirEnListado(QStringLiteral("001"));
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "txtIdAduana1"), QStringLiteral("001"));
    QCOMPARE(Texto(&f, "TxtAduana1"), QStringLiteral("BUENOS AIRES"));
    Tecla(Qt::Key_Return);
    CAMPO("TxtCUITCliente", "30708123451");
    QCOMPARE(Texto(&f, "TxtNombre"), QStringLiteral("IMPORTADORA DEL PLATA S.A."));
    CAMPO("TxtCuitAduana", "20203040505");
    QCOMPARE(Texto(&f, "TxtNombreadu"), QStringLiteral("GOMEZ MARIA LAURA"));
    CAMPO("Txtidvendedor", "v001");
    QCOMPARE(Texto(&f, "TxtNombreven"), QStringLiteral("ROBERTO SALINAS"));
    CAMPO("Txtfobdivisas", "16780");
    QCOMPARE(Texto(&f, "Txtfobdivisas"), QStringLiteral("16780,00"));
    CAMPO("TxtCoddivfob", "DOL");
    QCOMPARE(Texto(&f, "TxtDivValorFob"), QStringLiteral("01,000000"));
    CAMPO("TxtDivValorFob", "1");
    QCOMPARE(Texto(&f, "TxtDolFob"), QStringLiteral("16780,00"));
    CAMPO("Txtfletedivisas", "850");
    CAMPO("TxtCodDivFlete", "DOL");
    CAMPO("TxtDivValorFlete", "1");
    QCOMPARE(Texto(&f, "TxtDolFlete"), QStringLiteral("850,00"));
    CAMPO("Txtsegurodivisas", "120,5");
    QCOMPARE(Texto(&f, "Txtsegurodivisas"), QStringLiteral("120,50"));
    CAMPO("TxtCodDivseguro", "DOL");
    CAMPO("TxtDivValorSeguro", "1");
    QCOMPARE(Texto(&f, "TxtDolSeguro"), QStringLiteral("120,50"));
    CAMPO("TxtPorc", "0");
    QCOMPARE(Texto(&f, "TxtDolSeguro"), QStringLiteral("120,50")); // 0 % computes nothing
    CAMPO("TxtProrratear", "0");
    CAMPO("TxtAjustIncluir", "0");
    CAMPO("TxtAjustDeducir", "0");
    QVERIFY(!Control<QLineEdit>(&f, "TxtFactCon")->isEnabled());
    QCOMPARE(NombreFoco(), QStringLiteral("Txtidcondventa"));
    ElegirEnListado(QStringLiteral("FOB"));
    Tecla(Qt::Key_F6);
    QCOMPARE(Control<QLabel>(&f, "lbDescConven")->text(), QStringLiteral("FRANCO A BORDO"));
    Tecla(Qt::Key_Return);
    CAMPO("Txtidpais", "310");
    QCOMPARE(Texto(&f, "TxtdescPais"), QStringLiteral("CHINA"));
    CAMPO("txtFechaEmbarque", "15/1/2026");
    // Enter in the invoice field adds the number and stays there for the next one.
    CAMPO("TxtFactura", "A-0001-00012345");
    CAMPO("TxtFactura", "A-0001-00012346");
    CAMPO("TxtFactura", "");
    QCOMPARE(Control<QListWidget>(&f, "LstFact")->count(), 2);
    QCOMPARE(NombreFoco(), QStringLiteral("LstFact"));
    Tecla(Qt::Key_Return);
    QCOMPARE(NombreFoco(), QStringLiteral("ChFacturas"));
    Tecla(Qt::Key_Space);
    Tecla(Qt::Key_Return);
    QVERIFY(!Control<QCheckBox>(&f, "chkDCForzarEstMerc")->isEnabled());
    QCOMPARE(NombreFoco(), QStringLiteral("txtDCEstMerc"));
    ElegirEnListado(QStringLiteral("1"));
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "txtDCEstMerc"), QStringLiteral("1"));
    QVERIFY(Control<QCheckBox>(&f, "chkDCForzarEstMerc")->isEnabled());
    Tecla(Qt::Key_Return);
    QCOMPARE(NombreFoco(), QStringLiteral("chkDCForzarEstMerc"));
    Tecla(Qt::Key_Return);
    CAMPO("txtDCPaisOrigen", "");
    CAMPO("txtDCPaisDest", "310");
    QCOMPARE(Texto(&f, "txtDCStandard"), QStringLiteral("N"));
    CAMPO("txtDCStandard", "");
    CAMPO("TxtDCRegalias", "");
    CAMPO("txtKgNeto", "0");
    QCOMPARE(NombreFoco(), QStringLiteral("cboOpcionIVA"));
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Down);
    QCOMPARE(Control<QComboBox>(&f, "cboOpcionIVA")->currentText(), QStringLiteral("Ninguno"));
    Tecla(Qt::Key_Return);
    QCOMPARE(NombreFoco(), QStringLiteral("cboOpcionesGanancias"));
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Down);
    QCOMPARE(Control<QComboBox>(&f, "cboOpcionesGanancias")->currentText(),
             QStringLiteral("Comercial"));
    QVERIFY(!Control<QPushButton>(&f, "cmdONCCA")->isEnabled());
    QVERIFY(ts.dialogos().registro().isEmpty());

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

void TestFrmCaratula::salirSinGuardar() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral(","));
    const QString interno = QStringLiteral("DEMO-IC04-001");
    ts.ctx().InternoActual = interno;
    const QStringList antes = Fila(ts, interno);
    FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
    Mostrar(f);
    // An incomplete FOB: the message, the question; No keeps the screen on the field.
    Control<QLineEdit>(&f, "Txtfobdivisas")->setFocus();
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Tecla(Qt::Key_Delete);
    ts.dialogos().ResponderNo();
    Tecla(Qt::Key_Escape);
    QVERIFY(f.isVisible());
    QCOMPARE(NombreFoco(), QStringLiteral("Txtfobdivisas"));
    const QString salir = QStringLiteral("desea SALIR de la caratula, sin guardar la información?");
    QCOMPARE(ts.dialogos().todo(), (QStringList{"El valor FOB debe ser un valor númerico", salir}));
    // Yes leaves; the invoices are there, so nothing more is said. The record is unchanged
    // but for the change mark of the edit.
    ts.dialogos().Limpiar();
    ts.dialogos().ResponderSi();
    Tecla(Qt::Key_Escape);
    QVERIFY(!f.isVisible());
    QCOMPARE(ts.dialogos().todo(), (QStringList{"El valor FOB debe ser un valor númerico", salir}));
    QCOMPARE(Fila(ts, interno), antes);
}

void TestFrmCaratula::vendedorOculto() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral("."));
    Nueva(ts, QStringLiteral("T-TR"));
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update caratula set idvendedor = 'V001', factura2 = 'X' where "
                                 "interno = 'T-TR'"));
    FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("T-TR")}});
    Mostrar(f);
    // TR01 does without the vendor, the freight, the insurance and the condition of sale.
    CAMPO("TxtSubReg", "TR01");
    for (const char* n :
         {"Txtidvendedor", "TxtNombreven", "Txtfletedivisas", "TxtCodDivFlete", "TxtDivValorFlete",
          "TxtDolFlete", "Txtsegurodivisas", "TxtPorc", "TxtDolSeguro", "Txtidcondventa"})
        QVERIFY2(Control<QWidget>(&f, n)->isHidden(), n);
    QCOMPARE(Texto(&f, "Txtidvendedor"), QString()); // emptied with it
    CAMPO("txtIdAduana1", "001");
    CAMPO("TxtIdAduana2", "");
    CAMPO("TxtCUITCliente", "30708123451");
    CAMPO("TxtCuitAduana", "20203040505");
    CAMPO("Txtfobdivisas", "100.5");
    CAMPO("TxtCoddivfob", "DOL");
    CAMPO("TxtDivValorFob", "1");
    QCOMPARE(NombreFoco(), QStringLiteral("Txtidpais"));
    Tecla(Qt::Key_Escape);
    QCOMPARE(f.result(), int(QDialog::Accepted));
    QVERIFY(ts.dialogos().registro().isEmpty());
    QStringList c;
    for (const char* n : {"idvendedor", "factura2", "fobdivisas", "fletedivisas", "factura7"})
        c << Columna(ts, "T-TR", n);
    QCOMPARE(c, (QStringList{"", "", "100.5", "0", "IMPORTADORA DEL PLATA S.A."}));
}

void TestFrmCaratula::camposYListas() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral(","));
    Nueva(ts, QStringLiteral("T-IT"));
    FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), QStringLiteral("T-IT")}});
    Mostrar(f);
    CAMPO("TxtSubReg", "IT01");
    // A currency code is padded to three digits and brings its rate.
    Control<QLineEdit>(&f, "TxtCoddivfob")->setFocus();
    CAMPO("TxtCoddivfob", "60");
    QCOMPARE(Texto(&f, "TxtCoddivfob"), QStringLiteral("060"));
    QCOMPARE(Texto(&f, "TxtDivValorFob"), QStringLiteral("01,084512"));
    CAMPO("TxtDivValorFob", "1,084512");
    // The FOB value and its rate give the dollars; 1000 x 1.084512 = 1084.51.
    Control<QLineEdit>(&f, "Txtfobdivisas")->setFocus();
    CAMPO("Txtfobdivisas", "1000");
    QCOMPARE(Texto(&f, "TxtDolFob"), QStringLiteral("1084,51"));
    // Insurance by percentage over FOB and freight in dollars: (1084.51 + 200) x 1% = 12.85.
    Control<QLineEdit>(&f, "Txtfletedivisas")->setFocus();
    CAMPO("Txtfletedivisas", "200");
    CAMPO("TxtCodDivFlete", "DOL");
    CAMPO("TxtDivValorFlete", "1");
    CAMPO("Txtsegurodivisas", "");
    CAMPO("TxtCodDivseguro", "DOL");
    ts.dialogos().ResponderNo(); // 2 is not the rate the table keeps for DOL
    CAMPO("TxtDivValorSeguro", "2");
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
    CAMPO("TxtProrratear", "100");
    QCOMPARE(Texto(&f, "TxtProrratear"), QStringLiteral("100,00"));
    QCOMPARE(Texto(&f, "Txtsegurodivisas"), QStringLiteral("06,93"));
    QCOMPARE(Texto(&f, "TxtDolSeguro"), QStringLiteral("13,85"));
    // Enter in the FOB keeps the adjustment to include and the value to prorate in step with
    // it, and the insurance follows: (1084.51 + 200 + 1000) x 1% = 22.85; 11.425 -> 11.43.
    CAMPO("TxtAjustIncluir", "5");
    Control<QLineEdit>(&f, "Txtfobdivisas")->setFocus();
    CAMPO("Txtfobdivisas", "1000");
    QCOMPARE(Texto(&f, "TxtAjustIncluir"), QStringLiteral("1000"));
    QCOMPARE(Texto(&f, "TxtProrratear"), QStringLiteral("1000"));
    QCOMPARE(Texto(&f, "Txtsegurodivisas"), QStringLiteral("11,43"));
    // The temporary motives of imports hand over the code and the days of the term.
    Control<QLineEdit>(&f, "Txtmotdestsusp")->setFocus();
    ElegirEnListado(QStringLiteral("D1439/96-AI"));
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "Txtmotdestsusp"), QStringLiteral("D1439/96-AI"));
    QCOMPARE(Texto(&f, "TxtPlazoaut"), QStringLiteral("180"));
    // A term that is a date is shown as "dd-mm-yyyy" once the field is left.
    Control<QLineEdit>(&f, "TxtPlazoaut")->setFocus();
    Tecla(Qt::Key_A, Qt::ControlModifier);
    CAMPO("TxtPlazoaut", "5/3/2027");
    QCOMPARE(Texto(&f, "TxtPlazoaut"), QStringLiteral("05-03-2027"));
    // The "Forzar" marks lose their mark with an empty code.
    Control<QLineEdit>(&f, "txtDCPaisOrigen")->setFocus();
    CAMPO("txtDCPaisOrigen", "203");
    Tecla(Qt::Key_Space);
    QVERIFY(Control<QCheckBox>(&f, "chkDCForzarPaisOrigen")->isChecked());
    Control<QLineEdit>(&f, "txtDCPaisOrigen")->setFocus();
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Tecla(Qt::Key_Delete);
    QVERIFY(!Control<QCheckBox>(&f, "chkDCForzarPaisOrigen")->isChecked());
    QVERIFY(!Control<QCheckBox>(&f, "chkDCForzarPaisOrigen")->isEnabled());
    // An unknown code costs its message and nothing else.
    Control<QLineEdit>(&f, "Txtidpais")->setFocus();
    CAMPO("Txtidpais", "998");
    QCOMPARE(ts.dialogos().mensajes(),
             QStringList{"CODIGO INEXISTENTE DE PAIS\n\nNo se enconto DESCRIPCIÓN para esta "
                         "CLAVE\n\n[CARATULA.BUSCARDESCRIPCION.PAIS]"});
    QCOMPARE(NombreFoco(), QStringLiteral("Txtmotdestsusp"));
    // A broker's tax number of ten digits.
    ts.dialogos().Limpiar();
    Control<QLineEdit>(&f, "TxtCuitAduana")->setFocus();
    CAMPO("TxtCuitAduana", "2020304050");
    QCOMPARE(Texto(&f, "TxtNombreadu"), QString());
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"Cuit Invalido"});
    // F6 lists the brokers and the vendors; the row chosen fills code and name.
    auto elegirFila = [](const QString& pantalla, const QString& codigo) {
        AlAbrirse(pantalla, [codigo](QWidget* w) {
            auto* lst = w->findChild<QTreeWidget*>(QStringLiteral("Lst"));
            const auto filas = lst->findItems(codigo, Qt::MatchExactly, 0);
            QCOMPARE(filas.size(), 1);
            lst->setCurrentItem(filas.first());
            QTest::keyClick(lst, Qt::Key_Return);
        });
    };
    elegirFila(QStringLiteral("FrmListadoDespachante"), QStringLiteral("27312345671"));
    Control<QLineEdit>(&f, "TxtCuitAduana")->setFocus();
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "TxtCuitAduana"), QStringLiteral("27312345671"));
    QCOMPARE(Texto(&f, "TxtNombreadu"), QStringLiteral("FERNANDEZ O'NEILL PATRICIA"));
    elegirFila(QStringLiteral("FrmLstVendedores"), QStringLiteral("V003"));
    Control<QLineEdit>(&f, "Txtidvendedor")->setFocus();
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "Txtidvendedor"), QStringLiteral("V003"));
    QCOMPARE(Texto(&f, "TxtNombreven"), QStringLiteral("OFICINA CENTRAL"));
    // F6 in the client's field chooses from the clients' book, and the look-up follows.
    ts.dialogos().Limpiar();
    ts.ctx().componentes().Registrar(QStringLiteral("ClientBook.Listing"), [](AppContext&) {
        auto libro = std::make_unique<LibroGuionado>();
        libro->elegir = QStringLiteral("30712345671");
        return std::unique_ptr<QObject>(std::move(libro));
    });
    Control<QLineEdit>(&f, "TxtCUITCliente")->setFocus();
    Tecla(Qt::Key_F6);
    QCOMPARE(Texto(&f, "TxtCUITCliente"), QStringLiteral("30712345671"));
    QCOMPARE(Texto(&f, "TxtNombre"), QStringLiteral("METALURGICA D'ANGELO HNOS S.R.L."));
    QVERIFY(ts.dialogos().registro().isEmpty());
    // A new vendor is added from the header.
    ts.dialogos().Limpiar();
    ts.dialogos().ResponderSi();
    AlAbrirse(QStringLiteral("FrmNewVendedor"), [](QWidget* w) {
        QTest::keyClicks(w->findChild<QLineEdit*>(QStringLiteral("TxtNombre")),
                         QStringLiteral("D'ARTAGNAN"));
        w->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    Control<QLineEdit>(&f, "Txtidvendedor")->setFocus();
    CAMPO("Txtidvendedor", "v009");
    QCOMPARE(Texto(&f, "Txtidvendedor"), QStringLiteral("V009"));
    QCOMPARE(Texto(&f, "TxtNombreven"), QStringLiteral("D'ARTAGNAN"));
    QCOMPARE(ts.dialogos().todo().first(),
             QStringLiteral("No se encontro este codigo en la lista de VENDEDORES.\nDesea "
                            "AGREGARLO a la lista"));
    ts.dialogos().ResponderSiempre(true);
    f.reject();
}

void TestFrmCaratula::facturasYCarga() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral("."));
    const QString interno = QStringLiteral("DEMO-IT01-001");
    ts.ctx().InternoActual = interno;
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(
            QStringLiteral("update caratula set factura8 = 'N' where interno = '%1'").arg(interno));
    ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno,
                              QStringLiteral("R"));
    FrmCaratula f(ts.ctx(), {{QStringLiteral("interno"), interno}});
    Mostrar(f);
    // The load fills every field, resolves every code and marks nothing.
    QCOMPARE(Texto(&f, "TxtSubRegDesc"),
             QStringLiteral("IMPORTACION TEMPORAL PARA PERFECCIONAMIENTO INDUSTRIAL"));
    QCOMPARE(Texto(&f, "TxtNombre"), QStringLiteral("METALURGICA D'ANGELO HNOS S.R.L."));
    QCOMPARE(Texto(&f, "Txtfobdivisas"), QStringLiteral("75860.00"));
    QCOMPARE(Texto(&f, "TxtDivValorFob"), QStringLiteral("1.000000"));
    QCOMPARE(Texto(&f, "TxtDolFob"), QStringLiteral("75860.00"));
    QCOMPARE(Texto(&f, "Txtmotdestsusp"), QStringLiteral("DTO.1439/96"));
    QCOMPARE(Texto(&f, "TxtPlazoaut"), QStringLiteral("02-03-2027"));
    QCOMPARE(Control<QComboBox>(&f, "cboOpcionesGanancias")->currentText(),
             QStringLiteral("Comercial"));
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
    CAMPO("TxtFactura", "FT-2026-00088");
    QCOMPARE(ts.dialogos().mensajes(), QStringList{"Ya existe esta factura."});
    QCOMPARE(Texto(&f, "TxtFactura"), QString());
    // Typing marks the Operation changed and clears its AEC value.
    QCOMPARE(Columna(ts, interno, "factura8"), QStringLiteral("S"));
    QCOMPARE(ts.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno),
             QString());
    Tecla(Qt::Key_Escape);
    QCOMPARE(f.result(), int(QDialog::Accepted));
    QCOMPARE(Columna(ts, interno, "factura1"), QStringLiteral("FT-2026-00088,FT-2026-00090"));
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select factura from facturas where interno = '%1' "
                                             "order by orden")
                                  .arg(interno));
    QStringList fs;
    for (; !rs.Eof(); rs.MoveNext())
        fs << EsNull(rs.Fields("factura"));
    QCOMPARE(fs, (QStringList{"FT-2026-00088", "FT-2026-00090"}));
}

void TestFrmCaratula::hub() {
    MOTOR_O_SALTAR();
    TestStores ts(static_cast<Motor>(motor));
    PrepararDemo(ts);
    SeparadorDecimalScope sep(QStringLiteral(","));
    // The demo import without its vendor: incomplete until the header gets one.
    const QString interno = QStringLiteral("DEMO-IC04-001");
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("update caratula set idvendedor = '' where interno = '%1'")
                      .arg(interno));
    FrmDetalleInterno hub(ts.ctx(), {{QStringLiteral("interno"), interno}});
    QLabel* estado = hub.findChild<QLabel*>(QStringLiteral("LbEstadoCaratula"));
    QCOMPARE(estado->text(), QStringLiteral("INCOMPLETO"));
    AlAbrirse(QStringLiteral("FrmCaratula"), [](QWidget* w) {
        auto* v = w->findChild<QLineEdit*>(QStringLiteral("Txtidvendedor"));
        v->setFocus();
        QTest::keyClicks(v, QStringLiteral("V001"));
        QTest::keyClick(v, Qt::Key_Return);
        QTest::keyClick(w->focusWidget(), Qt::Key_Escape);
    });
    hub.cmdCaratula();
    QCOMPARE(estado->text(), QStringLiteral("COMPLETO!"));
    QCOMPARE(Columna(ts, interno, "factura2"), QStringLiteral("ROBERTO SALINAS"));
}

QTEST_MAIN(TestFrmCaratula)
#include "test_frmcaratula.moc"
