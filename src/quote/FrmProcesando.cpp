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
    connect(socket_, &QSslSocket::encrypted, this, [this] { Ejecutar(conversacion_->Cifrado()); });
    Iniciar();
}

FrmProcesando::~FrmProcesando() = default;

int FrmProcesando::estado() const {
    return conversacion_ ? conversacion_->estado() : 0;
}

bool FrmProcesando::aceptado() const {
    return conversacion_ && conversacion_->aceptado();
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
    ConversacionSmtp::Datos datos;
    datos.desdeDireccion = valor("desdeDireccion");
    datos.desdeNombre = valor("desdeNombre");
    datos.paraDireccion = valor("paraDireccion");
    datos.paraNombre = valor("paraNombre");
    datos.asunto = valor("asunto");
    datos.cuerpo = valor("cuerpo");
    datos.seguro = IniFile::Leer(QStringLiteral("TLS"), QStringLiteral("SMTP"), ini)
                       .compare(QStringLiteral("S"), Qt::CaseInsensitive) == 0;
    bool ok = false;
    const int segundos =
        IniFile::Leer(QStringLiteral("ESPERA"), QStringLiteral("SMTP"), ini).toInt(&ok);
    if (ok && segundos > 0)
        esperaMs_ = segundos * 1000;
    const int esperaMs = args_.value(QStringLiteral("esperaMs")).toInt();
    if (esperaMs > 0)
        esperaMs_ = esperaMs;
    if (datos.seguro) {
        datos.usuario = ctx_.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("SMTP"),
                                                   QStringLiteral("USUARIO"));
        datos.clave = ctx_.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("SMTP"),
                                                 QStringLiteral("CLAVE"));
        QSslConfiguration conf = QSslConfiguration::defaultConfiguration();
        const QString ca = valor("tlsConfianza");
        if (!ca.isEmpty())
            conf.addCaCertificates(ca);
        socket_->setSslConfiguration(conf);
    }
    conversacion_ = std::make_unique<ConversacionSmtp>(std::move(datos));

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
    const QByteArray datos = socket_->readAll();
    if (terminado_)
        return;
    espera_->stop();
    Ejecutar(conversacion_->Recibir(datos));
}

void FrmProcesando::Ejecutar(const std::vector<ConversacionSmtp::Accion>& acciones) {
    using Tipo = ConversacionSmtp::Accion::Tipo;
    for (const ConversacionSmtp::Accion& a : acciones) {
        switch (a.tipo) {
        case Tipo::Mostrar:
            Mostrar(a.texto);
            break;
        case Tipo::Enviar:
            socket_->write(a.datos);
            // The body is not shown: the "." that ends it stands for it.
            if (!a.texto.isNull())
                Mostrar(a.texto + kFin);
            break;
        case Tipo::Cifrar:
            socket_->startClientEncryption();
            break;
        case Tipo::Cerrar:
            socket_->close();
            break;
        }
    }
    setProperty("Respuesta", conversacion_->aceptado());
    if (!conversacion_->terminado()) {
        espera_->start(esperaMs_);
        return;
    }
    // Ended before the message is shown: nothing that arrives while it shows counts any more.
    Terminar();
    if (!conversacion_->mensaje().isNull())
        ctx_.dialogos().Mensaje(conversacion_->mensaje(), conversacion_->titulo(),
                                conversacion_->icono());
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

void FrmProcesando::Mostrar(const QString& texto) {
    txtMen_->moveCursor(QTextCursor::End);
    txtMen_->insertPlainText(texto);
}

void FrmProcesando::Terminar() {
    espera_->stop();
    terminado_ = true;
    if (conversacion_)
        conversacion_->Terminar();
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
