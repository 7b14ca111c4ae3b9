// The client's quote on an assembled and liquidated demo Operation, driven from the keyboard on
// both engines and under both decimal separators.
//
// The mail sender against a real SMTP server on the loopback: the dialogue's ends (accepted,
// refused, silent server, closed port, missing data), the secure dialogue with STARTTLS and AUTH,
// the bytes that arrive, and Esc refused until the dialogue is over.

#include "assembly/FixtureArmado.h"
#include "foundation/ListasMaestras.h"
#include "liquidation/LiquidacionOperacion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/Pantallas.h"
#include "quote/FrmPresupuesto.h"
#include "quote/FrmProcesando.h"
#include "support/Pantallas.h"
#include "support/Pantallazo.h"
#include "support/Principal.h"
#include "support/ServidorSmtp.h"
#include "support/TestStores.h"

#include <QFile>
#include <QJsonArray>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTcpServer>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

const QString kCuerpo = QStringLiteral("<html><body>\r\n"
                                       "<p>Cotizaci\u00f3n del interno 1234</p>\r\n"
                                       ".\r\n"
                                       "..dos puntos\r\n"
                                       ".oculto</p>\n"
                                       ".con LF\r\n"
                                       "</body></html>");
// What the server must keep: the header lines, then the body as meant (its LF alone now CR LF).
const QByteArray kRecibido = "Content-Type: text/html;Charset=\"iso-8859-1\"\r\n"
                             "From:Estudio P\xe9rez <despacho@example.com>\r\n"
                             "To:Cliente SA <cliente@example.com>\r\n"
                             "Subject:Presupuesto \xf1\x61nd\xfa\r\n"
                             "<html><body>\r\n"
                             "<p>Cotizaci\xf3n del interno 1234</p>\r\n"
                             ".\r\n"
                             "..dos puntos\r\n"
                             ".oculto</p>\r\n"
                             ".con LF\r\n"
                             "</body></html>\r\n";

QVariantMap Datos(const QString& servidor) {
    return {{QStringLiteral("servidor"), servidor},
            {QStringLiteral("desdeDireccion"), QStringLiteral("despacho@example.com")},
            {QStringLiteral("desdeNombre"), QStringLiteral("Estudio P\u00e9rez")},
            {QStringLiteral("paraDireccion"), QStringLiteral("cliente@example.com")},
            {QStringLiteral("paraNombre"), QStringLiteral("Cliente SA")},
            {QStringLiteral("asunto"), QStringLiteral("Presupuesto \u00f1and\u00fa")},
            {QStringLiteral("cuerpo"), kCuerpo},
            {QStringLiteral("esperaMs"), 10000}};
}

// Secure dialogue from KORVEN.ini and the user's credentials in the settings store.
void Seguro(TestStores& ts, const QString& clave) {
    IniFile::Escribir(QStringLiteral("SMTP"), QStringLiteral("TLS"), QStringLiteral("S"),
                      ts.ctx().rutaIni());
    ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("SMTP"),
                              QStringLiteral("USUARIO"), QStringLiteral("despachante"));
    ts.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("SMTP"),
                              QStringLiteral("CLAVE"), clave);
}

struct Envio {
    QString txtMen;
    int estado = -1;
    QVariant respuesta;
    bool quedoAbierta = false;
};

// Opens the sender as its caller does, lets the dialogue end and leaves with Esc. `durante`
// runs on the screen as soon as it is up.
Envio Enviar(TestStores& ts, const QVariantMap& args,
             const std::function<void(FrmProcesando*)>& durante = {}) {
    RegistrarEnvioCorreo(ts.ctx().pantallas());
    Envio e;
    AlAbrirseYCerrar(
        QStringLiteral("FrmProcesando"),
        [&](QWidget* w) {
            auto* f = qobject_cast<FrmProcesando*>(w);
            if (durante)
                durante(f);
            if (!QTest::qWaitFor([f] { return f->terminado(); }, 30000)) {
                // Esc would be refused: end it here so that the test fails instead of waiting.
                qWarning("El dialogo no termina");
                f->done(QDialog::Rejected);
                return;
            }
            e.txtMen = Control<QPlainTextEdit>(w, "TxtMen")->toPlainText();
            e.estado = f->estado();
            Tecla(Qt::Key_Escape);
        },
        &e.quedoAbierta);
    e.respuesta = ts.ctx().AbrirModal(QStringLiteral("FrmProcesando"), args);
    return e;
}

} // namespace

class TestSmtp : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void finDelDialogo_data();
    void finDelDialogo();
    void mensajeRecibido_data();
    void mensajeRecibido();
    void escDuranteElDialogo();
};

void TestSmtp::finDelDialogo_data() {
    QTest::addColumn<QString>("modo");     // of the server; "cerrado": a port with none
    QTest::addColumn<QString>("clave");    // empty: plain dialogue, else TLS=S and this password
    QTest::addColumn<QString>("faltante"); // an argument left empty
    QTest::addColumn<QString>("mensaje");  // the one message shown
    QTest::addColumn<QString>("titulo");
    QTest::addColumn<int>("icono");
    QTest::addColumn<int>("estado");
    QTest::addColumn<int>("recibidos");

    const int info = int(Dialogos::Icono::Informacion);
    const int excl = int(Dialogos::Icono::Exclamacion);
    const QString enviados = QStringLiteral("Datos enviados.");
    const QString incompletos = QStringLiteral("Datos incompletos.\nVerifique los datos como "
                                               "e-mail de su cliente o configuración del sistema.");
    const QString kw = QStringLiteral("KORVEN/W");
    const QString smtp = QStringLiteral("Error de SMTP");
    const QString winsock = QStringLiteral("Error de Winsock");

    QTest::newRow("aceptado") << "normal"
                              << ""
                              << "" << enviados << kw << info << 6 << 1;
    QTest::newRow("550 a RCPT TO")
        << "rechazo"
        << ""
        << ""
        << "Error de SMTP: 550 5.1.1 <cliente@example.com>: Recipient address rejected\r\n"
        << smtp << info << 3 << 0;
    QTest::newRow("servidor mudo")
        << "mudo"
        << ""
        << ""
        << "Winsock Error número 10060\nEl servidor no respondió en el tiempo de espera." << winsock
        << excl << 0 << 0;
    QTest::newRow("puerto cerrado")
        << "cerrado"
        << ""
        << ""
        << "Winsock Error número 10061\nConnection refused" << winsock << excl << 0 << 0;
    QTest::newRow("STARTTLS y AUTH") << "tls"
                                     << "s3creta"
                                     << "" << enviados << kw << info << 6 << 1;
    QTest::newRow("clave errada")
        << "tls"
        << "otra"
        << ""
        << "Error de SMTP: 535 5.7.8 Authentication credentials invalid\r\n"
        << smtp << info << 1 << 0;
    QTest::newRow("sin TLS ante un servidor que lo exige")
        << "tls"
        << ""
        << ""
        << "Error de SMTP: 530 Must issue a STARTTLS command first\r\n"
        << smtp << info << 1 << 0;
    for (const char* falta : {"paraDireccion", "desdeDireccion", "servidor"})
        QTest::newRow(falta) << "mudo"
                             << "" << falta << incompletos << "KORVEN"
                             << int(Dialogos::Icono::Critico) << 0 << 0;
}

void TestSmtp::finDelDialogo() {
    QFETCH(QString, modo);
    QFETCH(QString, clave);
    QFETCH(QString, faltante);
    QFETCH(QString, mensaje);
    QFETCH(QString, titulo);
    QFETCH(int, icono);
    QFETCH(int, estado);
    QFETCH(int, recibidos);

    TestStores ts(Motor::SQLite);
    std::unique_ptr<ServidorSmtp> servidor;
    QString direccion;
    if (modo == QLatin1String("cerrado")) {
        QTcpServer libre;
        QVERIFY(libre.listen(QHostAddress::LocalHost));
        direccion = QStringLiteral("127.0.0.1:%1").arg(libre.serverPort());
    } else {
        servidor = std::make_unique<ServidorSmtp>(modo);
        direccion = servidor->direccion();
    }
    if (!clave.isEmpty())
        Seguro(ts, clave);
    QVariantMap args = Datos(direccion);
    if (modo == QLatin1String("mudo"))
        args[QStringLiteral("esperaMs")] = 1000;
    if (modo == QLatin1String("tls"))
        args[QStringLiteral("tlsConfianza")] = servidor->ca();
    if (!faltante.isEmpty())
        args[faltante] = QString();

    const Envio e = Enviar(ts, args);

    QVERIFY(!e.quedoAbierta);
    QCOMPARE(ts.dialogos().registro().size(), 1);
    const auto& m = ts.dialogos().registro().first();
    QCOMPARE(m.texto, mensaje);
    QCOMPARE(m.titulo, titulo);
    QCOMPARE(int(m.icono), icono);
    QCOMPARE(e.estado, estado);
    QCOMPARE(e.respuesta.toBool(), recibidos == 1);
    if (servidor)
        QCOMPARE(servidor->recibidos(), recibidos);
    if (!faltante.isEmpty()) {
        QCOMPARE(e.txtMen, QString());
        QTest::qWait(200);
        QCOMPARE(servidor->conexiones(), 0);
    }
}

void TestSmtp::mensajeRecibido_data() {
    QTest::addColumn<bool>("seguro");
    QTest::newRow("HELO") << false;
    QTest::newRow("EHLO, STARTTLS y AUTH") << true;
}

void TestSmtp::mensajeRecibido() {
    QFETCH(bool, seguro);
    TestStores ts(Motor::SQLite);
    ServidorSmtp servidor(seguro ? QStringLiteral("tls") : QStringLiteral("normal"));
    QVariantMap args = Datos(QStringLiteral("  ") + servidor.direccion() + QStringLiteral(" "));
    if (seguro) {
        Seguro(ts, QStringLiteral("s3creta"));
        args[QStringLiteral("tlsConfianza")] = servidor.ca();
    }
    const Envio e = Enviar(ts, args);

    QCOMPARE(ts.dialogos().mensajes(), QStringList{QStringLiteral("Datos enviados.")});
    QCOMPARE(servidor.recibidos(), 1);
    QCOMPARE(servidor.mensaje(1), kRecibido);
    const QJsonObject s = servidor.sobre(1);
    QCOMPARE(s.value(QStringLiteral("saludo")).toString(), QStringLiteral("despacho"));
    QCOMPARE(s.value(QStringLiteral("ehlo")).toBool(), seguro);
    QCOMPARE(s.value(QStringLiteral("tls")).toBool(), seguro);
    QCOMPARE(s.value(QStringLiteral("usuario")).toString(),
             seguro ? QStringLiteral("despachante") : QString());
    QCOMPARE(s.value(QStringLiteral("desde")).toString(), QStringLiteral("despacho@example.com"));
    QCOMPARE(s.value(QStringLiteral("para")).toArray(),
             QJsonArray{QStringLiteral("cliente@example.com")});

    // The screen: the opening lines, then the commands with the header shown and one "." for
    // the body; the password never shows.
    const QString apertura = QStringLiteral("Enviando mail a : cliente@example.com\n\n"
                                            "Fecha sistema : ") +
                             FormatoFecha(QDate::currentDate(), QStringLiteral("Long Date")) +
                             QStringLiteral("\nKORVEN SMTP v.%1.%2.%3\n\n"
                                            "Conectando...  (espere for favor)\n\n220 ")
                                 .arg(KORVEN_VERSION_MAJOR, 2, 10, QLatin1Char('0'))
                                 .arg(KORVEN_VERSION_MINOR, 2, 10, QLatin1Char('0'))
                                 .arg(KORVEN_VERSION_PATCH, 2, 10, QLatin1Char('0'));
    QVERIFY2(e.txtMen.startsWith(apertura), qPrintable(e.txtMen));
    QVERIFY(e.txtMen.contains(QStringLiteral("\nTo:Cliente SA <cliente@example.com>\n"
                                             "Subject: Presupuesto \u00f1and\u00fa\n.\n250 ")));
    QVERIFY(e.txtMen.contains(seguro ? QStringLiteral("\nEHLO despacho\n")
                                     : QStringLiteral("\nHELO despacho\n")));
    QVERIFY(e.txtMen.contains(QStringLiteral("\nMAIL FROM:despacho@example.com\n")));
    QVERIFY(!e.txtMen.contains(QStringLiteral("interno 1234")));
    QVERIFY(!e.txtMen.contains(QStringLiteral("s3creta").toUtf8().toBase64()));
}

void TestSmtp::escDuranteElDialogo() {
    TestStores ts(Motor::SQLite);
    ServidorSmtp servidor(QStringLiteral("mudo"));
    // The wait from KORVEN.ini, in seconds, when the caller gives none.
    IniFile::Escribir(QStringLiteral("SMTP"), QStringLiteral("ESPERA"), QStringLiteral("1"),
                      ts.ctx().rutaIni());
    QVariantMap args = Datos(servidor.direccion());
    args.remove(QStringLiteral("esperaMs"));
    bool abiertaTrasEsc = false;
    const Envio e = Enviar(ts, args, [&](FrmProcesando* f) {
        QVERIFY(QTest::qWaitFor([&] { return servidor.conexiones() == 1; }, 5000));
        Tecla(Qt::Key_Escape);
        QTest::qWait(50);
        abiertaTrasEsc = f->isVisible() && !f->terminado();
    });
    QVERIFY(abiertaTrasEsc);
    QVERIFY(!e.quedoAbierta); // the Esc after the end closed it
    QCOMPARE(
        ts.dialogos().mensajes(),
        QStringList{QStringLiteral("Winsock Error número 10060\nEl servidor no respondió en el "
                                   "tiempo de espera.")});
}

namespace {
const QString kInterno = QStringLiteral("DEMO-IC04-001");

// The demo Operation assembled and liquidated, the quote's rate at 2.5, the mail server in
// KORVEN.ini, and stand-ins for what lies outside the quote: the list screen answers the row
// asked for, the sender and the desktop record what they were given.
struct Escenario {
    std::unique_ptr<TestStores> ts;
    QStringList abiertos;  // files handed to the desktop
    QVariantMap envio;     // what the sender was given
    QString elegir;        // the row the list screen answers
    QStringList ofrecidos; // the rows it was offered

    explicit Escenario(Motor motor) : ts(DemoArmada(motor, kInterno)) {
        {
            Transaccion t(ts->stores(), {QStringLiteral("INTERNOS")});
            LiquidacionOperacion(ts->ctx(), ts->conexion(QStringLiteral("INTERNOS")))
                .Calcular(kInterno);
            t.Confirmar();
        }
        ts->settings().SaveSetting("KORVEN", "PRESUPUESTO", "PASE", "2.5");
        IniFile::Escribir("SMTP", "EMAIL", "despachos@korven.test", ts->ctx().rutaIni());
        IniFile::Escribir("SMTP", "SERVER", "smtp.korven.test:25", ts->ctx().rutaIni());
        Pantallas& p = ts->ctx().pantallas();
        RegistrarPresupuesto(p, [this](const QString& ruta) {
            abiertos << ruta;
            return true;
        });
        p.Registrar("FrmListado", [this](AppContext&, const QVariantMap& a) {
            ofrecidos = a.value("valores").toStringList();
            return QVariant(elegir);
        });
        p.Registrar("FrmProcesando", [this](AppContext&, const QVariantMap& a) {
            envio = a;
            return QVariant(true);
        });
    }
    QString Leer(const QString& archivo) {
        QFile f(ts->directorio() + archivo);
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }
};

QStringList Grilla(QWidget& f, const char* nombre) {
    auto* g = Control<QTableWidget>(f, nombre);
    QStringList r;
    for (int i = 0; i < g->rowCount(); ++i) {
        QStringList c;
        for (int j = 0; j < g->columnCount(); ++j)
            c << g->item(i, j)->text();
        r << c.join('|');
    }
    return r;
}

QString Etiquetas(QWidget& f, const QList<const char*>& nombres) {
    QStringList r;
    for (const char* n : nombres)
        r << Control<QLabel>(f, n)->text();
    return r.join(' ');
}

// A figure written with "." shown in the separator of the run.
QString Sep(QString texto, const QString& sep) {
    static const QRegularExpression punto(QStringLiteral("(\\d)\\.(\\d)"));
    return texto.replace(punto, QStringLiteral("\\1") + sep + QStringLiteral("\\2"));
}
} // namespace

class TestPresupuesto : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // The liquidation totals at the rate 2.5 (liqcero in dollars, pesos = dollars x 2.5 rounded
    // half away: 584.09 -> 1460.225 -> 1460.23; 532.53 -> 1331.325 -> 1331.33).
    void totales_data() { FilasDeMotoresYSeparadores(); }
    void totales() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        SeparadorDecimalScope s(sep);
        Escenario e(static_cast<Motor>(motor));
        FrmPresupuesto f(e.ts->ctx(), {{"interno", kInterno}}, [](const QString&) { return true; });
        Mostrar(f);
        GuardarPantallazo("FrmPresupuesto", &f);
        QVERIFY(f.width() <= kEscritorio.width() && f.height() + 70 <= kEscritorio.height());
        QCOMPARE(Grilla(f, "GrdLiq"),
                 Sep("ANTICIPO IMPUESTO A LAS GANANCIAS|P|1460.23|584.09;"
                     "ARANCEL SIM IMPO|P|25.00|10.00;"
                     "DERECHO DE IMPORTACION MINIMO|P|2967.23|1186.89;"
                     "I.V.A. ADICIONAL|P|3641.73|1456.69;INGRESOS BRUTOS|P|1460.23|584.09;"
                     "TASA DE ESTADISTICA|P|1331.33|532.53;REINTEGRO|C|1008.35|403.34",
                     sep)
                     .split(';'));
        const QList<const char*> valores = {"LbFOB",     "LbFlete",   "LbSeguro", "LbPaseFob",
                                            "LbBaseImp", "LbBaseIVA", "TxtPase"};
        const QList<const char*> totales = {"LbGastosDespachoPeso", "LbGastosDespacho",
                                            "lbTOTALCOBPes",        "lbTOTALCOBDol",
                                            "lbTotalGARPes",        "lbTOTALGARDol"};
        QCOMPARE(Etiquetas(f, valores.mid(0, 6)) + ' ' + Texto(&f, "TxtPase"),
                 Sep("16780.00 850.00 120.50 01.000000 17750.50 19469.92 02.500000", sep));
        QCOMPARE(Etiquetas(f, totales), Sep("10885.75 4354.29 1008.35 403.34 00.00 00.00", sep));

        // Delete takes the row off the quote only: its mark's totals drop, liqcero keeps it.
        auto* liq = Control<QTableWidget>(f, "GrdLiq");
        liq->setFocus();
        liq->setCurrentCell(0, 0);
        Tecla(Qt::Key_Delete);
        QCOMPARE(liq->rowCount(), 6);
        QCOMPARE(Etiquetas(f, totales), Sep("9425.52 3770.20 1008.35 403.34 00.00 00.00", sep));
        QCOMPARE(Filas(*e.ts, "select count(*) from liqcero where interno = ?", {kInterno}),
                 QStringList{"11"});

        // A new rate recomputes the pesos and becomes the default.
        auto* pase = Control<QLineEdit>(f, "TxtPase");
        pase->setFocus();
        pase->selectAll();
        Escribir(Sep("3.1", sep));
        Tecla(Qt::Key_Return);
        QCOMPARE(Texto(&f, "TxtPase"), Sep("03.100000", sep));
        QCOMPARE(e.ts->settings().GetSetting("KORVEN", "PRESUPUESTO", "PASE"), "03.100000");
        QCOMPARE(Grilla(f, "GrdLiq").last(), Sep("REINTEGRO|C|1250.35|403.34", sep));
    }

    // Exports carry no freight or insurance in the taxable base (FOB 16780 + freight 850 +
    // insurance 120.50, all at rate 1); the sub-regime is read in upper case.
    void baseImponible_data() {
        QTest::addColumn<QString>("subregimen");
        QTest::addColumn<double>("base");
        QTest::newRow("importacion") << "IC04" << 17750.5;
        QTest::newRow("exportacion") << "EC01" << 16780.0;
        QTest::newRow("minusculas") << "eg01" << 16780.0;
    }
    void baseImponible() {
        QFETCH(QString, subregimen);
        QFETCH(double, base);
        auto ts = DemoArmada(Motor::SQLite, kInterno);
        ts->conexion("INTERNOS")
            .Ejecutar("update caratula set idsubreg = ? where interno = ?", {subregimen, kInterno});
        Presupuesto::Caratula c;
        QVERIFY(Presupuesto(ts->ctx(), kInterno).LeerCaratula(1, c));
        QCOMPARE(c.baseImp, base);
        QVERIFY(!Presupuesto(ts->ctx(), "NO-EXISTE").LeerCaratula(1, c));
    }

    // The sections with nothing to repeat, and the amount on account.
    void secciones_data() {
        QTest::addColumn<double>("acuenta");
        QTest::addColumn<QStringList>("tiene");
        QTest::addColumn<QStringList>("noTiene");
        QTest::newRow("sin a cuenta")
            << 0.0
            << QStringList{"<tr class=texto ></tr>", ">Sin Datos...</td></tr>",
                           "<td>TOTAL</td><td class=\"num\">150.00</td>"}
            << QStringList{"A CUENTA:", "###", "Comentarios"};
        QTest::newRow("con a cuenta")
            << 40.0
            << QStringList{"<td>A CUENTA:</td><td class=\"num\">40.00-</td>",
                           "<td>Subtotal</td><td class=\"num\">150.00</td>",
                           "<td>TOTAL</td><td class=\"num\">110.00</td>"}
            << QStringList{"###"};
    }
    void secciones() {
        QFETCH(double, acuenta);
        QFETCH(QStringList, tiene);
        QFETCH(QStringList, noTiene);
        SeparadorDecimalScope s(".");
        Presupuesto::Datos d;
        d.car.despacho = {40, 100};
        d.pase = 2;
        d.operativos = {25, 0}; // 100 + 2 x 25 = 150
        d.acuenta = acuenta;
        d.hayAcuenta = true;
        QString html, error;
        const QString carpeta = Presupuesto::CarpetaSecciones("/sin/programa");
        QVERIFY2(Presupuesto::Armar(d, carpeta, html, &error), qPrintable(error));
        for (const QString& t : tiene)
            QVERIFY2(html.contains(t), qPrintable(t));
        html.remove("<!--###seccioncc###-->"); // the comment's mark stays when there is none
        for (const QString& t : noTiene)
            QVERIFY2(!html.contains(t), qPrintable(t));
        QVERIFY(!Presupuesto::Armar(d, "/no/existe", html, &error));
        QCOMPARE(error.left(31), "No se pudo leer /no/existe/secc");
    }

    // A concept added with F6 and its amount in dollars through FrmDatos; the quote previewed
    // with a comment that carries markup, then sent by the sender and as a desktop message.
    void conceptoYEnvio_data() { FilasDeMotoresYSeparadores(); }
    void conceptoYEnvio() {
        MOTOR_O_SALTAR();
        QFETCH(QString, sep);
        SeparadorDecimalScope s(sep);
        Escenario e(static_cast<Motor>(motor));
        ListasMaestras(e.ts->stores())
            .GrabarComentario(kInterno, "Ver <script>alert('x')</script>\nD'Agostino & hijos");
        FrmPresupuesto f(e.ts->ctx(), {{"interno", kInterno}}, [&e](const QString& r) {
            e.abiertos << r;
            return true;
        });
        Mostrar(f);

        const QString importe = sep == "," ? "1.234,5" : "1,234.5";
        auto montoEnDolares = [&] {
            AlAbrirse("FrmDatos", [&](QWidget* w) {
                QCOMPARE(Control<QLabel>(w, "LbDescripcion")->text(), "ALMACENAJE");
                Control<QWidget>(w, "Option2")->setFocus();
                QTest::keyClick(Control<QWidget>(w, "Option2"), Qt::Key_Space);
                Control<QWidget>(w, "TxtValor")->setFocus();
                QTest::keyClicks(Control<QWidget>(w, "TxtValor"), importe);
                QTest::keyClick(Control<QWidget>(w, "TxtValor"), Qt::Key_Return);
            });
        };
        e.elegir = "ALMACENAJE";
        // Esc on the amount adds nothing.
        AlAbrirse("FrmDatos", [](QWidget* w) {
            QTest::keyClick(Control<QWidget>(w, "TxtValor"), Qt::Key_Escape);
        });
        Tecla(Qt::Key_F6);
        QCOMPARE(Control<QTableWidget>(f, "Grd")->rowCount(), 0);
        montoEnDolares();
        Tecla(Qt::Key_F6);
        QCOMPARE(e.ofrecidos.first(), "ACARREO");
        QCOMPARE(Filas(*e.ts,
                       "select concepto,valorpeso,valordolar from itempresu where "
                       "interno = ?",
                       {kInterno}),
                 QStringList{"ALMACENAJE|0|1234.5"});
        QCOMPARE(Grilla(f, "Grd"), QStringList{Sep("ALMACENAJE|00.00|1234.50", sep)});
        QCOMPARE(Etiquetas(f, {"LbGastosOperativos", "LbGastosOperativosDol"}),
                 Sep("00.00 1234.50", sep));
        montoEnDolares();
        Tecla(Qt::Key_F6);
        QCOMPARE(e.ts->dialogos().todo().join('/'), "Este concepto ya existe en el presupuesto.");

        // Preview: subtotal 10885.75 + 2.5 x 1234.50 = 13972.00, less 1000 on account.
        Control<QLineEdit>(f, "txtAcuenta")->setText("1000");
        Tecla(Qt::Key_F12);
        QCOMPARE(e.abiertos, QStringList{e.ts->directorio() + "vista.htm"});
        const QString html = e.Leer("vista.htm");
        QVERIFY(html.contains("Ver &lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;<br>"
                              "D&#39;Agostino &amp; hijos"));
        QVERIFY(!html.contains("<script>"));
        for (const QString& t :
             {Sep("<td>ALMACENAJE</td><td class=\"num\">00.00</td><td class=\"num\">1234.50", sep),
              Sep("<td>Subtotal</td><td class=\"num\">13972.00</td>", sep),
              Sep("<td>A CUENTA:</td><td class=\"num\">1000.00-</td>", sep),
              Sep("<td>TOTAL</td><td class=\"num\">12972.00</td>", sep),
              QString("<tr class=texto ></tr>"), QString("IMPORTADORA DEL PLATA S.A.")})
            QVERIFY2(html.contains(t), qPrintable(t));

        // By the sender: the arguments it gets; the amount on account is kept.
        Tecla(Qt::Key_F11);
        const QString asunto = "Presupuesto " + FormatoFecha(QDate::currentDate(), "Long Date");
        QCOMPARE(e.envio.value("servidor"), "smtp.korven.test:25");
        QCOMPARE(e.envio.value("desdeDireccion"), "despachos@korven.test");
        QCOMPARE(e.envio.value("desdeNombre"), "GOMEZ MARIA LAURA");
        QCOMPARE(e.envio.value("paraDireccion"), "compras@importadoradelplata.com.ar");
        QCOMPARE(e.envio.value("paraNombre"), "IMPORTADORA DEL PLATA S.A.");
        QCOMPARE(e.envio.value("asunto"), asunto);
        QCOMPARE(e.envio.value("cuerpo").toString(), html);
        QCOMPARE(Filas(*e.ts, "select factura6 from caratula where interno = ?", {kInterno}),
                 QStringList{"1000.00"});

        // By the desktop's mail program: a message file, and the choice is kept.
        Control<QRadioButton>(f, "opOutLook")->setChecked(true);
        Tecla(Qt::Key_F11);
        QCOMPARE(e.abiertos.last(), e.ts->directorio() + "Presupuesto.eml");
        const QString eml = e.Leer("Presupuesto.eml");
        QVERIFY(eml.startsWith("From: <despachos@korven.test>\r\n"
                               "To: <compras@importadoradelplata.com.ar>\r\nSubject: "));
        QVERIFY(eml.contains("\r\nContent-Type: text/html; charset=\"utf-8\"\r\n"
                             "Content-Transfer-Encoding: quoted-printable\r\nX-Unsent: 1\r\n\r\n"
                             "<!DOCTYPE html>\r\n"));
        QVERIFY(!eml.contains("<script>"));
        QCOMPARE(e.ts->settings().GetSetting("KORVEN", "FLAGS", "XOUTLOOK"), "S");

        // Delete on the concepts removes the row from the store.
        Control<QTableWidget>(f, "Grd")->setFocus();
        Tecla(Qt::Key_Delete);
        QCOMPARE(Filas(*e.ts, "select count(*) from itempresu where interno = ?", {kInterno}),
                 QStringList{"0"});
        f.close();
    }

    // The quote of the demo Operation through the real sender to a real server: the message
    // arrives with its headers and the quote's totals, and the comment as text.
    void envioAlServidor() {
        SeparadorDecimalScope s(QStringLiteral(","));
        Escenario e(Motor::SQLite);
        ServidorSmtp servidor(QStringLiteral("normal"));
        IniFile::Escribir("SMTP", "SERVER", servidor.direccion(), e.ts->ctx().rutaIni());
        RegistrarEnvioCorreo(e.ts->ctx().pantallas());
        ListasMaestras(e.ts->stores()).GrabarComentario(kInterno, "Ver <b>esto</b>");
        FrmPresupuesto f(e.ts->ctx(), {{"interno", kInterno}}, [](const QString&) { return true; });
        Mostrar(f);
        bool quedoAbierta = false;
        AlAbrirseYCerrar(
            QStringLiteral("FrmProcesando"),
            [](QWidget* w) {
                auto* p = qobject_cast<FrmProcesando*>(w);
                if (QTest::qWaitFor([p] { return p->terminado(); }, 30000))
                    QTest::keyClick(w, Qt::Key_Escape);
            },
            &quedoAbierta);
        Tecla(Qt::Key_F12);
        Tecla(Qt::Key_F11);
        QVERIFY(!quedoAbierta);
        QVERIFY2(servidor.recibidos() == 1, qPrintable(e.ts->dialogos().todo().join('/')));
        const QString mensaje = QString::fromLatin1(servidor.mensaje(1));
        QCOMPARE(servidor.sobre(1).value("para").toVariant().toStringList(),
                 QStringList{"compras@importadoradelplata.com.ar"});
        for (const QString& t :
             {QStringLiteral("\r\nTo:IMPORTADORA DEL PLATA S.A. "
                             "<compras@importadoradelplata.com.ar>\r\n"),
              QStringLiteral("Content-Type: text/html;Charset=\"iso-8859-1\"\r\n"),
              QStringLiteral("Ver &lt;b&gt;esto&lt;/b&gt;"),
              QStringLiteral("<td class=\"num\">10885,75</td>")})
            QVERIFY2(mensaje.contains(t), qPrintable(t));
        f.close();
    }
};

int main(int argc, char** argv) {
    return EjecutarClases<QApplication, TestSmtp, TestPresupuesto>(argc, argv);
}

#include "test_presupuesto.moc"
