#pragma once

#include "quote/ConversacionSmtp.h"

#include <QAbstractSocket>
#include <QByteArray>
#include <QDialog>
#include <QVariantMap>
#include <memory>
#include <vector>

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
    int estado() const;
    bool terminado() const { return terminado_; }
    bool aceptado() const;

public Q_SLOTS:
    void reject() override;

private:
    void Iniciar();
    void AlLlegarDatos();
    // Carries out what the dialogue answered to the server.
    void Ejecutar(const std::vector<ConversacionSmtp::Accion>& acciones);
    void ErrorDeSocket(QAbstractSocket::SocketError error);
    void SinRespuesta();
    void Mostrar(const QString& texto);
    void Terminar();

    AppContext& ctx_;
    QVariantMap args_;
    QPlainTextEdit* txtMen_;
    QSslSocket* socket_;
    QTimer* espera_;
    int esperaMs_ = 60000;
    QString host_;
    bool terminado_ = false;
    std::unique_ptr<ConversacionSmtp> conversacion_;
};

// Registers the sender as "FrmProcesando".
void RegistrarEnvioCorreo(Pantallas& pantallas);

} // namespace korven
