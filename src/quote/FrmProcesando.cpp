#include "quote/FrmProcesando.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/SettingsStore.h"
#include "platform/ui/PantallasEscritorio.h"

#include <QDate>
#include <QPlainTextEdit>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTimer>
#include <QVBoxLayout>

namespace korven {

namespace {

const QString kFin = QStringLiteral("\n");

QString Dos(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

// The number by which the old socket control told each failure.
int NumeroWinsock(QAbstractSocket::SocketError error) {
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return 10061;
    case QAbstractSocket::RemoteHostClosedError:
        return 10054;
    case QAbstractSocket::HostNotFoundError:
        return 11001;
    case QAbstractSocket::SocketTimeoutError:
        return 10060;
    case QAbstractSocket::NetworkError:
        return 10050;
    case QAbstractSocket::SocketAccessError:
        return 10013;
    case QAbstractSocket::AddressInUseError:
        return 10048;
    default:
        return 10053;
    }
}

// True when the text holds a whole reply: its last line has a blank after the code.
bool RespuestaCompleta(const QByteArray& texto) {
    if (!texto.endsWith("\r\n"))
        return false;
    const qsizetype inicio = texto.lastIndexOf('\n', texto.size() - 2) + 1;
    return texto.size() - inicio >= 4 && texto.at(inicio + 3) == ' ';
}

// The extension line of an EHLO reply ("250-AUTH PLAIN LOGIN"), without its code; empty
// when the server does not offer it.
QString Extension(const QString& respuesta, const QString& nombre) {
    for (const QString& linea : respuesta.split(QStringLiteral("\r\n"))) {
        const QString resto = linea.mid(4).trimmed();
        if (resto.compare(nombre, Qt::CaseInsensitive) == 0 ||
            resto.startsWith(nombre + QLatin1Char(' '), Qt::CaseInsensitive))
            return resto;
    }
    return {};
}

} // namespace

FrmProcesando::FrmProcesando(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ctx_(ctx), args_(args), txtMen_(new QPlainTextEdit(this)),
      socket_(new QSslSocket(this)), espera_(new QTimer(this)) {
    setObjectName(QStringLiteral("FrmProcesando"));
    setWindowTitle(QStringLiteral("  Proceso de envio"));
    txtMen_->setObjectName(QStringLiteral("TxtMen"));
    txtMen_->setReadOnly(true);
    auto* disposicion = new QVBoxLayout(this);
    disposicion->addWidget(txtMen_);
    resize(480, 320);
    setProperty("Respuesta", false);

    espera_->setSingleShot(true);
    connect(espera_, &QTimer::timeout, this, &FrmProcesando::SinRespuesta);
    connect(socket_, &QIODevice::readyRead, this, &FrmProcesando::AlLlegarDatos);
    connect(socket_, &QAbstractSocket::errorOccurred, this, &FrmProcesando::ErrorDeSocket);
    connect(socket_, &QSslSocket::encrypted, this, [this] {
        paso_ = Paso::EhloSeguro;
        const QString helo = args_.value(QStringLiteral("desdeDireccion")).toString().trimmed();
        Enviar(QStringLiteral("EHLO ") + helo.left(helo.indexOf(QLatin1Char('@'))));
    });
    Iniciar();
}

FrmProcesando::~FrmProcesando() = default;

QByteArray FrmProcesando::CuerpoParaEnviar(const QString& cuerpo) {
    const QByteArray texto = cuerpo.toLatin1();
    QByteArray salida;
    salida.reserve(texto.size() + 64);
    bool inicioDeLinea = true;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const char c = texto.at(i);
        // Lines end in CR LF on the wire; a line end of LF alone gets its CR.
        if (c == '\n' && (i == 0 || texto.at(i - 1) != '\r'))
            salida.append('\r');
        if (inicioDeLinea && c == '.')
            salida.append('.');
        salida.append(c);
        inicioDeLinea = c == '\n';
    }
    return salida;
}

void FrmProcesando::Iniciar() {
    const auto valor = [this](const char* clave) {
        return args_.value(QString::fromLatin1(clave)).toString();
    };
    if (valor("paraDireccion").isEmpty() || valor("desdeDireccion").isEmpty() ||
        valor("servidor").isEmpty()) {
        ctx_.dialogos().Mensaje(QStringLiteral("Datos incompletos.") + kFin +
                                    QStringLiteral("Verifique los datos como e-mail de su cliente "
                                                   "o configuración del sistema."),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        terminado_ = true;
        return;
    }

    const QString ini = ctx_.rutaIni();
    seguro_ = IniFile::Leer(QStringLiteral("TLS"), QStringLiteral("SMTP"), ini)
                  .compare(QStringLiteral("S"), Qt::CaseInsensitive) == 0;
    bool ok = false;
    const int segundos =
        IniFile::Leer(QStringLiteral("ESPERA"), QStringLiteral("SMTP"), ini).toInt(&ok);
    if (ok && segundos > 0)
        esperaMs_ = segundos * 1000;
    const int esperaMs = args_.value(QStringLiteral("esperaMs")).toInt();
    if (esperaMs > 0)
        esperaMs_ = esperaMs;
    if (seguro_) {
        usuario_ = ctx_.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("SMTP"),
                                              QStringLiteral("USUARIO"));
        clave_ = ctx_.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("SMTP"),
                                            QStringLiteral("CLAVE"));
        QSslConfiguration conf = QSslConfiguration::defaultConfiguration();
        const QString ca = valor("tlsConfianza");
        if (!ca.isEmpty())
            conf.addCaCertificates(ca);
        socket_->setSslConfiguration(conf);
    }

    const QString servidor = valor("servidor").trimmed();
    int puerto = 25;
    host_ = servidor;
    const qsizetype dosPuntos = servidor.indexOf(QLatin1Char(':'));
    if (dosPuntos >= 0) {
        puerto = servidor.mid(dosPuntos + 1).toInt();
        host_ = servidor.left(dosPuntos);
    }

    Mostrar(QStringLiteral("Enviando mail a : ") + valor("paraDireccion") + kFin + kFin +
            QStringLiteral("Fecha sistema : ") +
            FormatoFecha(QDate::currentDate(), QStringLiteral("Long Date")) + kFin +
            QStringLiteral("KORVEN SMTP v.") + Dos(KORVEN_VERSION_MAJOR) + QLatin1Char('.') +
            Dos(KORVEN_VERSION_MINOR) + QLatin1Char('.') + Dos(KORVEN_VERSION_PATCH) + kFin + kFin +
            QStringLiteral("Conectando...  (espere for favor)") + kFin + kFin);
    espera_->start(esperaMs_);
    socket_->connectToHost(host_, static_cast<quint16>(puerto));
}

void FrmProcesando::AlLlegarDatos() {
    if (terminado_) {
        socket_->readAll();
        return;
    }
    espera_->stop();
    if (!seguro_) {
        // Each piece that arrives is one reply, read by its first three characters.
        Responder(QString::fromLatin1(socket_->readAll()));
        return;
    }
    // The secure dialogue reads whole replies (EHLO answers in several lines).
    pendiente_ += socket_->readAll();
    if (!RespuestaCompleta(pendiente_)) {
        espera_->start(esperaMs_);
        return;
    }
    const QString respuesta = QString::fromLatin1(pendiente_);
    pendiente_.clear();
    Responder(respuesta);
}

void FrmProcesando::Responder(const QString& respuesta) {
    Mostrar(QString(respuesta).remove(QLatin1Char('\r')) + kFin);
    const QString codigo = respuesta.left(3);
    const bool autenticando =
        paso_ == Paso::AuthPlain || paso_ == Paso::AuthUsuario || paso_ == Paso::AuthClave;
    const bool aceptada =
        codigo == QLatin1String("220") || codigo == QLatin1String("250") ||
        codigo == QLatin1String("354") ||
        (autenticando && (codigo == QLatin1String("334") || codigo == QLatin1String("235")));
    if (!aceptada) {
        socket_->close();
        Terminar(); // before the message: nothing that arrives while it shows counts any more
        if (estado_ == 6)
            ctx_.dialogos().Mensaje(QStringLiteral("Datos enviados."), QStringLiteral("KORVEN/W"),
                                    Dialogos::Icono::Informacion);
        else
            ctx_.dialogos().Mensaje(QStringLiteral("Error de SMTP: ") + respuesta,
                                    QStringLiteral("Error de SMTP"), Dialogos::Icono::Informacion);
        return;
    }

    const QString desde = args_.value(QStringLiteral("desdeDireccion")).toString();
    const QString para = args_.value(QStringLiteral("paraDireccion")).toString();
    switch (estado_) {
    case 0: {
        estado_ = 1;
        const QString helo = desde.trimmed();
        const QString izquierda = helo.left(helo.indexOf(QLatin1Char('@')));
        if (seguro_) {
            paso_ = Paso::Ehlo;
            Enviar(QStringLiteral("EHLO ") + izquierda);
        } else {
            Enviar(QStringLiteral("HELO ") + izquierda);
        }
        break;
    }
    case 1:
        if (seguro_)
            Saludado(respuesta);
        else
            EnviarDesde();
        break;
    case 2:
        estado_ = 3;
        Enviar(QStringLiteral("RCPT TO:<") + para.trimmed() + QLatin1Char('>'));
        break;
    case 3:
        estado_ = 4;
        Enviar(QStringLiteral("DATA"));
        break;
    case 4: {
        estado_ = 5;
        const QString asunto = args_.value(QStringLiteral("asunto")).toString();
        const QString desdeNombre = args_.value(QStringLiteral("desdeNombre")).toString();
        const QString paraNombre = args_.value(QStringLiteral("paraNombre")).toString();
        Enviar(QStringLiteral("Content-Type: text/html;Charset=\"iso-8859-1\""));
        Enviar(QStringLiteral("From:") + desdeNombre + QStringLiteral(" <") + desde +
               QLatin1Char('>'));
        Enviar(QStringLiteral("To:") + paraNombre + QStringLiteral(" <") + para + QLatin1Char('>'));
        Enviar((QStringLiteral("Subject:") + asunto).toLatin1() + "\r\n",
               QStringLiteral("Subject: ") + asunto);
        Enviar(CuerpoParaEnviar(args_.value(QStringLiteral("cuerpo")).toString()) + "\r\n",
               QString());
        Enviar(QStringLiteral("."));
        break;
    }
    case 5:
        estado_ = 6;
        aceptado_ = true;
        setProperty("Respuesta", true);
        Enviar(QStringLiteral("QUIT"));
        break;
    default:
        // An accepted reply to QUIT: nothing more will come, so the screen may be closed.
        socket_->close();
        Terminar();
        break;
    }
}

void FrmProcesando::Saludado(const QString& respuesta) {
    switch (paso_) {
    case Paso::Ehlo:
        if (!socket_->isEncrypted() &&
            !Extension(respuesta, QStringLiteral("STARTTLS")).isEmpty()) {
            paso_ = Paso::StartTls;
            Enviar(QStringLiteral("STARTTLS"));
            return;
        }
        [[fallthrough]];
    case Paso::EhloSeguro: {
        const QStringList mecanismos = Extension(respuesta, QStringLiteral("AUTH"))
                                           .mid(5)
                                           .toUpper()
                                           .split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (usuario_.isEmpty() || mecanismos.isEmpty()) {
            EnviarDesde();
        } else if (mecanismos.contains(QLatin1String("PLAIN"))) {
            paso_ = Paso::AuthPlain;
            const QByteArray credencial = '\0' + usuario_.toUtf8() + '\0' + clave_.toUtf8();
            Enviar("AUTH PLAIN " + credencial.toBase64() + "\r\n",
                   QStringLiteral("AUTH PLAIN ********"));
        } else {
            paso_ = Paso::AuthUsuario;
            Enviar(QStringLiteral("AUTH LOGIN"));
        }
        break;
    }
    case Paso::StartTls:
        espera_->start(esperaMs_);
        socket_->startClientEncryption();
        break;
    case Paso::AuthUsuario:
        paso_ = Paso::AuthClave;
        Enviar(usuario_.toUtf8().toBase64() + "\r\n", QStringLiteral("********"));
        break;
    case Paso::AuthClave:
        paso_ = Paso::AuthPlain;
        Enviar(clave_.toUtf8().toBase64() + "\r\n", QStringLiteral("********"));
        break;
    case Paso::AuthPlain:
        if (respuesta.startsWith(QLatin1String("235")))
            EnviarDesde();
        else // a challenge where none was due
            Responder(QStringLiteral("535 ") + respuesta);
        break;
    case Paso::Ninguno:
        EnviarDesde();
        break;
    }
}

void FrmProcesando::EnviarDesde() {
    paso_ = Paso::Ninguno;
    estado_ = 2;
    Enviar(QStringLiteral("MAIL FROM:") +
           args_.value(QStringLiteral("desdeDireccion")).toString().trimmed());
}

void FrmProcesando::ErrorDeSocket(QAbstractSocket::SocketError error) {
    if (terminado_)
        return;
    Terminar();
    const QString descripcion = socket_->errorString();
    socket_->abort();
    ctx_.dialogos().Mensaje(QStringLiteral("Winsock Error número ") +
                                QString::number(NumeroWinsock(error)) + kFin + descripcion,
                            QStringLiteral("Error de Winsock"), Dialogos::Icono::Exclamacion);
}

void FrmProcesando::SinRespuesta() {
    if (terminado_)
        return;
    Terminar();
    socket_->abort();
    ctx_.dialogos().Mensaje(
        QStringLiteral("Winsock Error número ") +
            QString::number(NumeroWinsock(QAbstractSocket::SocketTimeoutError)) + kFin +
            QStringLiteral("El servidor no respondió en el tiempo de espera."),
        QStringLiteral("Error de Winsock"), Dialogos::Icono::Exclamacion);
}

void FrmProcesando::Enviar(const QByteArray& linea, const QString& mostrado) {
    socket_->write(linea);
    // The body is not shown: the "." that ends it stands for it.
    if (!mostrado.isNull())
        Mostrar(mostrado + kFin);
    espera_->start(esperaMs_);
}

void FrmProcesando::Enviar(const QString& linea) {
    Enviar(linea.toLatin1() + "\r\n", linea);
}

void FrmProcesando::Mostrar(const QString& texto) {
    txtMen_->moveCursor(QTextCursor::End);
    txtMen_->insertPlainText(texto);
}

void FrmProcesando::Terminar() {
    espera_->stop();
    terminado_ = true;
}

void FrmProcesando::reject() {
    // The dialogue can't be abandoned half way.
    if (terminado_)
        QDialog::reject();
}

void RegistrarEnvioCorreo(Pantallas& pantallas) {
    RegistrarFormulario<FrmProcesando>(pantallas, QStringLiteral("FrmProcesando"));
}

} // namespace korven
