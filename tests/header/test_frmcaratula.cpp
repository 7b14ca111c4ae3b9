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

#include "FixtureCaratula.h"
#include "TecladoCaratula.h"
#include "foundation/EstadoInterno.h"
#include "foundation/FrmDetalleInterno.h"
#include "header/CaratulaDatos.h"
#include "header/FrmABMAgTrans.h"
#include "header/FrmBultos.h"
#include "header/FrmCaratula.h"
#include "header/PantallasCaratula.h"
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
    return EjecutarClases<QApplication, TestFrmBultos, TestFrmCaratula>(argc, argv);
}

#include "test_frmcaratula.moc"
