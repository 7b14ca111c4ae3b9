#pragma once

#include <QAbstractSocket>
#include <QByteArray>
#include <QDialog>
#include <QVariantMap>

class QPlainTextEdit;
class QSslSocket;
class QTimer;

namespace korven {

class AppContext;
class Pantallas;

// The mail sender: sends one HTML message to an SMTP server and shows the dialogue in TxtMen
// while it runs. Esc closes it only once the dialogue has ended, either way.
//
// args: "servidor" (host, or host:port; port 25 when none), "desdeDireccion", "desdeNombre",
// "paraDireccion", "paraNombre", "asunto", "cuerpo"; optional "esperaMs" (how long a silent
// server is waited for; [SMTP] ESPERA of KORVEN.ini in seconds, else 60 s) and "tlsConfianza"
// (the file of a CA certificate to trust besides the system's).
//
// With [SMTP] TLS=S in KORVEN.ini the sender greets with EHLO, upgrades with STARTTLS when the
// server offers it and signs in with AUTH PLAIN or LOGIN, as the user and password kept in the
// per-user settings (KORVEN / SMTP / USUARIO, CLAVE). Otherwise it speaks the plain dialogue
// with HELO.
//
// "Respuesta": true when the server accepted the message.
class FrmProcesando : public QDialog {
    Q_OBJECT
public:
    FrmProcesando(AppContext& ctx, const QVariantMap& args, QWidget* padre = nullptr);
    ~FrmProcesando() override;

    // 0 greeting awaited, 1 HELO sent, 2 MAIL FROM sent, 3 RCPT TO sent, 4 DATA sent,
    // 5 message sent, 6 QUIT sent.
    int estado() const { return estado_; }
    bool terminado() const { return terminado_; }
    bool aceptado() const { return aceptado_; }

    // The body as it goes on the wire: lines end in CR LF, and a line that begins with "." gets
    // a second one, which the server takes away.
    static QByteArray CuerpoParaEnviar(const QString& cuerpo);

public Q_SLOTS:
    void reject() override;

private:
    // The steps of the secure greeting, between the greeting and MAIL FROM.
    enum class Paso { Ninguno, Ehlo, StartTls, EhloSeguro, AuthPlain, AuthUsuario, AuthClave };

    void Iniciar();
    void AlLlegarDatos();
    void Responder(const QString& respuesta);
    void Saludado(const QString& respuesta);
    void EnviarDesde();
    void ErrorDeSocket(QAbstractSocket::SocketError error);
    void SinRespuesta();
    void Enviar(const QByteArray& linea, const QString& mostrado);
    void Enviar(const QString& linea);
    void Mostrar(const QString& texto);
    void Terminar();

    AppContext& ctx_;
    QVariantMap args_;
    QPlainTextEdit* txtMen_;
    QSslSocket* socket_;
    QTimer* espera_;
    int esperaMs_ = 60000;
    QString host_;
    int estado_ = 0;
    bool terminado_ = false;
    bool aceptado_ = false;
    bool seguro_ = false;
    Paso paso_ = Paso::Ninguno;
    QString usuario_, clave_;
    QByteArray pendiente_; // an incomplete reply of the secure dialogue
};

// Registers the sender as "FrmProcesando".
void RegistrarEnvioCorreo(Pantallas& pantallas);

} // namespace korven
