#pragma once

#include "platform/Dialogos.h"

#include <QByteArray>
#include <QString>
#include <vector>

namespace korven {

// The SMTP dialogue of the mail sender, apart from its socket: it is fed what the server says
// and answers with what to do next (show a text, send bytes, upgrade the channel, close it) and,
// once over, whether the server took the message and what the clerk is told. Each step wants
// its own reply: 220 to the greeting and to STARTTLS, 250 to HELO, EHLO and MAIL FROM, 250 or
// 251 to RCPT TO, 354 to DATA, 250 to the end of the message, 334 and 235 along AUTH. Any other
// reply ends the dialogue with "Error de SMTP: " and the reply; whatever QUIT gets, the message
// had been taken ("Datos enviados.").
class ConversacionSmtp {
public:
    struct Datos {
        QString desdeDireccion, desdeNombre, paraDireccion, paraNombre, asunto, cuerpo;
        bool seguro = false;    // EHLO, STARTTLS when offered, AUTH when the user has one
        QString usuario, clave; // the user's credentials for AUTH
    };
    struct Accion {
        enum class Tipo { Mostrar, Enviar, Cifrar, Cerrar };
        Tipo tipo;
        QByteArray datos; // Enviar: the bytes for the wire
        QString texto;    // Mostrar: the text; Enviar: what is shown of it (null: nothing)
    };
    // A reply of the secure dialogue longer than this is refused rather than awaited.
    static constexpr qsizetype LargoMaximo = 64 * 1024;

    explicit ConversacionSmtp(Datos datos) : d_(std::move(datos)) {}

    // What the server sent since the last call. The plain dialogue takes each piece as one
    // reply, read by its first three characters; the secure one waits for whole replies.
    std::vector<Accion> Recibir(const QByteArray& bytes);
    // The channel is encrypted after STARTTLS: the greeting starts again.
    std::vector<Accion> Cifrado();
    // Ends from outside (a socket error, a silent server): nothing that arrives counts any more.
    void Terminar() { terminado_ = true; }

    // 0 greeting awaited, 1 HELO sent, 2 MAIL FROM sent, 3 RCPT TO sent, 4 DATA sent,
    // 5 message sent, 6 QUIT sent.
    int estado() const { return estado_; }
    bool terminado() const { return terminado_; }
    bool aceptado() const { return aceptado_; }
    // The message that ends the dialogue (null when there is none), with its title and icon.
    const QString& mensaje() const { return mensaje_; }
    const QString& titulo() const { return titulo_; }
    Dialogos::Icono icono() const { return icono_; }

    // The body as it goes on the wire: lines end in CR LF, and a line that begins with "." gets
    // a second one, which the server takes away.
    static QByteArray CuerpoParaEnviar(const QString& cuerpo);

private:
    // The steps of the secure greeting, between the greeting and MAIL FROM.
    enum class Paso { Ninguno, Ehlo, StartTls, EhloSeguro, AuthPlain, AuthUsuario, AuthClave };

    void Responder(const QString& respuesta);
    bool Esperada(const QString& respuesta) const;
    void Saludado(const QString& respuesta);
    void EnviarDesde();
    void Enviar(const QByteArray& linea, const QString& mostrado);
    void Enviar(const QString& linea);
    void Mostrar(const QString& texto);
    void Fin(const QString& mensaje, const QString& titulo);

    Datos d_;
    std::vector<Accion> acciones_;
    int estado_ = 0;
    bool terminado_ = false;
    bool aceptado_ = false;
    bool cifrado_ = false;
    Paso paso_ = Paso::Ninguno;
    QByteArray pendiente_; // an incomplete reply of the secure dialogue
    QString mensaje_, titulo_;
    Dialogos::Icono icono_ = Dialogos::Icono::Informacion;
};

} // namespace korven
