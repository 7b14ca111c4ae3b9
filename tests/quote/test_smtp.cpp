// The mail sender against a real SMTP server on the loopback: the dialogue's ends (accepted,
// refused, silent server, closed port, missing data), the secure dialogue with STARTTLS and AUTH,
// the bytes that arrive, and Esc refused until the dialogue is over.

#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/Pantallas.h"
#include "quote/FrmProcesando.h"
#include "support/Pantallas.h"
#include "support/ServidorSmtp.h"
#include "support/TestStores.h"

#include <QJsonArray>
#include <QPlainTextEdit>
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

QTEST_MAIN(TestSmtp)
#include "test_smtp.moc"
