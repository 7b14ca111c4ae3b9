#include "quote/ConversacionSmtp.h"

#include <QStringList>

namespace korven {

namespace {

const QString kFin = QStringLiteral("\n");

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

// The part of an address before "@": what HELO and EHLO give as the client's name.
QString Saludo(const QString& direccion) {
    const QString t = direccion.trimmed();
    return t.left(t.indexOf(QLatin1Char('@')));
}

} // namespace

QByteArray ConversacionSmtp::CuerpoParaEnviar(const QString& cuerpo) {
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

std::vector<ConversacionSmtp::Accion> ConversacionSmtp::Recibir(const QByteArray& bytes) {
    acciones_.clear();
    if (terminado_ || bytes.isEmpty())
        return {};
    if (!d_.seguro) {
        Responder(QString::fromLatin1(bytes));
        return std::move(acciones_);
    }
    // The secure dialogue reads whole replies (EHLO answers in several lines).
    pendiente_ += bytes;
    if (pendiente_.size() > LargoMaximo) {
        pendiente_.clear();
        acciones_.push_back({Accion::Tipo::Cerrar, {}, {}});
        Fin(QStringLiteral("Error de SMTP: el servidor envió una respuesta demasiado larga."),
            QStringLiteral("Error de SMTP"));
        return std::move(acciones_);
    }
    if (!RespuestaCompleta(pendiente_))
        return {};
    const QString respuesta = QString::fromLatin1(pendiente_);
    pendiente_.clear();
    Responder(respuesta);
    return std::move(acciones_);
}

std::vector<ConversacionSmtp::Accion> ConversacionSmtp::Cifrado() {
    acciones_.clear();
    if (terminado_)
        return {};
    cifrado_ = true;
    paso_ = Paso::EhloSeguro;
    Enviar(QStringLiteral("EHLO ") + Saludo(d_.desdeDireccion));
    return std::move(acciones_);
}

bool ConversacionSmtp::Esperada(const QString& respuesta) const {
    // The code, then a blank, a hyphen (more lines follow) or the end of the line.
    const QStringView resto = QStringView(respuesta).mid(3);
    if (!resto.isEmpty() && !resto.startsWith(u' ') && !resto.startsWith(u'-') &&
        !resto.startsWith(u"\r\n") && !resto.startsWith(u'\n'))
        return false;
    const QString codigo = respuesta.left(3);
    const auto es = [&codigo](const char* c) { return codigo == QLatin1String(c); };
    switch (estado_) {
    case 0:
        return es("220");
    case 1:
        switch (paso_) {
        case Paso::StartTls:
            return es("220");
        case Paso::AuthPlain:
            return es("235");
        case Paso::AuthUsuario:
        case Paso::AuthClave:
            return es("334");
        default:
            return es("250");
        }
    case 3:
        return es("250") || es("251");
    case 4:
        return es("354");
    default:
        return es("250");
    }
}

void ConversacionSmtp::Responder(const QString& respuesta) {
    Mostrar(QString(respuesta).remove(QLatin1Char('\r')) + kFin);
    if (estado_ == 6) {
        // The reply to QUIT: the message had been taken whatever it says.
        acciones_.push_back({Accion::Tipo::Cerrar, {}, {}});
        Fin(QStringLiteral("Datos enviados."), QStringLiteral("KORVEN/W"));
        return;
    }
    if (!Esperada(respuesta)) {
        acciones_.push_back({Accion::Tipo::Cerrar, {}, {}});
        Fin(QStringLiteral("Error de SMTP: ") + respuesta, QStringLiteral("Error de SMTP"));
        return;
    }
    switch (estado_) {
    case 0:
        estado_ = 1;
        if (d_.seguro) {
            paso_ = Paso::Ehlo;
            Enviar(QStringLiteral("EHLO ") + Saludo(d_.desdeDireccion));
        } else {
            Enviar(QStringLiteral("HELO ") + Saludo(d_.desdeDireccion));
        }
        break;
    case 1:
        if (d_.seguro)
            Saludado(respuesta);
        else
            EnviarDesde();
        break;
    case 2:
        estado_ = 3;
        Enviar(QStringLiteral("RCPT TO:<") + d_.paraDireccion.trimmed() + QLatin1Char('>'));
        break;
    case 3:
        estado_ = 4;
        Enviar(QStringLiteral("DATA"));
        break;
    case 4:
        estado_ = 5;
        Enviar(QStringLiteral("Content-Type: text/html;Charset=\"iso-8859-1\""));
        Enviar(QStringLiteral("From:") + d_.desdeNombre + QStringLiteral(" <") + d_.desdeDireccion +
               QLatin1Char('>'));
        Enviar(QStringLiteral("To:") + d_.paraNombre + QStringLiteral(" <") + d_.paraDireccion +
               QLatin1Char('>'));
        Enviar((QStringLiteral("Subject:") + d_.asunto).toLatin1() + "\r\n",
               QStringLiteral("Subject: ") + d_.asunto);
        Enviar(CuerpoParaEnviar(d_.cuerpo) + "\r\n", QString());
        Enviar(QStringLiteral("."));
        break;
    default:
        estado_ = 6;
        aceptado_ = true;
        Enviar(QStringLiteral("QUIT"));
        break;
    }
}

void ConversacionSmtp::Saludado(const QString& respuesta) {
    switch (paso_) {
    case Paso::Ehlo:
        if (!cifrado_ && !Extension(respuesta, QStringLiteral("STARTTLS")).isEmpty()) {
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
        if (d_.usuario.isEmpty() || mecanismos.isEmpty()) {
            EnviarDesde();
        } else if (mecanismos.contains(QLatin1String("PLAIN"))) {
            paso_ = Paso::AuthPlain;
            const QByteArray credencial = '\0' + d_.usuario.toUtf8() + '\0' + d_.clave.toUtf8();
            Enviar("AUTH PLAIN " + credencial.toBase64() + "\r\n",
                   QStringLiteral("AUTH PLAIN ********"));
        } else {
            paso_ = Paso::AuthUsuario;
            Enviar(QStringLiteral("AUTH LOGIN"));
        }
        break;
    }
    case Paso::StartTls:
        acciones_.push_back({Accion::Tipo::Cifrar, {}, {}});
        break;
    case Paso::AuthUsuario:
        paso_ = Paso::AuthClave;
        Enviar(d_.usuario.toUtf8().toBase64() + "\r\n", QStringLiteral("********"));
        break;
    case Paso::AuthClave:
        paso_ = Paso::AuthPlain;
        Enviar(d_.clave.toUtf8().toBase64() + "\r\n", QStringLiteral("********"));
        break;
    case Paso::AuthPlain:
    case Paso::Ninguno:
        EnviarDesde();
        break;
    }
}

void ConversacionSmtp::EnviarDesde() {
    paso_ = Paso::Ninguno;
    estado_ = 2;
    Enviar(QStringLiteral("MAIL FROM:") + d_.desdeDireccion.trimmed());
}

void ConversacionSmtp::Enviar(const QByteArray& linea, const QString& mostrado) {
    acciones_.push_back({Accion::Tipo::Enviar, linea, mostrado});
}

void ConversacionSmtp::Enviar(const QString& linea) {
    Enviar(linea.toLatin1() + "\r\n", linea);
}

void ConversacionSmtp::Mostrar(const QString& texto) {
    acciones_.push_back({Accion::Tipo::Mostrar, {}, texto});
}

void ConversacionSmtp::Fin(const QString& mensaje, const QString& titulo) {
    terminado_ = true;
    mensaje_ = mensaje;
    titulo_ = titulo;
    icono_ = Dialogos::Icono::Informacion;
}

} // namespace korven
