// Awkward text pasted into every text box of the header, packages, transport agent and client
// screens, saved, and read back from the stores: the text as pasted, less control characters,
// cut to the field's maximum length. The ONCCA codes, which come from lists, go through the same
// save.

#include "FixtureCaratula.h"
#include "components/FrmCliente.h"
#include "components/LibroClientes.h"
#include "header/CaratulaDatos.h"
#include "header/FrmABMAgTrans.h"
#include "header/FrmBultos.h"
#include "header/FrmCaratula.h"
#include "header/OnccaDatos.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "support/Pantallas.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

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

QString Columna(TestStores& ts, const char* entidad, const QString& sql, const QVariant& clave) {
    Recordset rs = ts.conexion(QString::fromLatin1(entidad)).Abrir(sql, {clave});
    return rs.Eof() ? QStringLiteral("<sin fila>") : EsNull(rs.Fields(0));
}

// Each pasted field against its column, read by a select of one column ("%1") and a key.
void Comparar(TestStores& ts, const char* entidad, const QString& sql, const QVariant& clave,
              const QMap<QLineEdit*, QString>& pegados, const QString& limpio) {
    for (auto it = pegados.cbegin(); it != pegados.cend(); ++it)
        if (!it.value().isEmpty())
            QCOMPARE(it.key()->objectName() + QLatin1Char('=') +
                         Columna(ts, entidad, sql.arg(it.value()), clave),
                     it.key()->objectName() + QLatin1Char('=') + Esperado(it.key(), limpio));
}

} // namespace

class TestTextosPegados : public QObject {
    Q_OBJECT
private Q_SLOTS:
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
            {"apostrofe", QStringLiteral("O'HIGGINS"), QStringLiteral("O'HIGGINS")},
            {"guiones", QStringLiteral("A -- B"), QStringLiteral("A -- B")},
            {"punto y coma", QStringLiteral("X'); DELETE FROM CARATULA; --"),
             QStringLiteral("X'); DELETE FROM CARATULA; --")},
            {"barra", QStringLiteral("C:\\TEMP\\"), QStringLiteral("C:\\TEMP\\")},
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
            QCOMPARE(
                Columna(ts, "INTERNOS", selectCaratula.arg(QStringLiteral("factura1")), kInterno),
                numero);
            QCOMPARE(Columna(ts, "INTERNOS",
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

        // A transport agent changed: new tax number and name.
        {
            FrmABMAgTrans f(ts.ctx(),
                            {{QStringLiteral("modo"), 2},
                             {QStringLiteral("cuit"), QStringLiteral("23000000000")},
                             {QStringLiteral("nombre"), QStringLiteral("TRANSPORTES SUR")}});
            Mostrar(f);
            const QMap<QLineEdit*, QString> pegados =
                PegarEnTodos(&f, {{"TxtCuit", "cuit"}, {"TxtNombre", "nombre"}}, {}, pegado);
            QCOMPARE(pegados.size(), 2);
            QVERIFY(!pegados.values().contains(QStringLiteral("?")));
            f.findChild<QPushButton*>(QStringLiteral("CmdGuardar"))->click();
            QCOMPARE(ts.dialogos().todo(), QStringList());
            const QString cuit =
                Esperado(f.findChild<QLineEdit*>(QStringLiteral("TxtCuit")), limpio);
            QCOMPARE(Columna(ts, "PERSONAL",
                             QStringLiteral("select nombre from transporte where cuit = ?"), cuit),
                     Esperado(f.findChild<QLineEdit*>(QStringLiteral("TxtNombre")), limpio));
        }

        // A client of the book.
        {
            const QString cuit = QStringLiteral("30712345671");
            FrmCliente f(ts.ctx(), LibroClientes(ts.stores()).Leer(cuit));
            Mostrar(f);
            const QMap<QLineEdit*, QString> pegados = PegarEnTodos(
                &f, {{"TxtNombre", "nombre"}, {"TxtDomicilio", "domicilio"}},
                {{"TxtEmail", ""}, {"TxtRegalias", "1"}, {"TxtAjVinc", "0"}, {"TxtIngBru", "0"}},
                pegado);
            QCOMPARE(pegados.size(), 2);
            QVERIFY(!pegados.values().contains(QStringLiteral("?")));
            f.findChild<QPushButton*>(QStringLiteral("CmdGuardar"))->click();
            QCOMPARE(ts.dialogos().todo(), QStringList());
            Comparar(ts, "PERSONAL", QStringLiteral("select %1 from clientes where cuit = ?"), cuit,
                     pegados, limpio);
        }

        // The ONCCA codes.
        {
            OnccaDatos::Datos d;
            d.habilitado = true;
            for (const QString& c : OnccaDatos::Columnas())
                d.codigos.insert(c, limpio);
            QVERIFY(OnccaDatos(ts.ctx()).GuardarDatos(kInterno, d));
            for (const QString& c : OnccaDatos::Columnas())
                QCOMPARE(c + QLatin1Char('=') +
                             Columna(ts, "INTERNOS", selectCaratula.arg(c), kInterno),
                         c + QLatin1Char('=') + limpio);
        }
    }
};

QTEST_MAIN(TestTextosPegados)
#include "test_textos_pegados.moc"
