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
#include "foundation/FrmDetalleInterno.h"
#include "header/CaratulaDatos.h"
#include "header/FrmABMAgTrans.h"
#include "header/FrmBultos.h"
#include "header/FrmCaratula.h"
#include "header/PantallasCaratula.h"
#include "header/frmONCCA.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/Pantallas.h"
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

QTEST_MAIN(TestFrmBultos)

#include "test_frmbultos.moc"
