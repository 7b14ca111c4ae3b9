#pragma once

// A real SMTP server on the loopback for the mail tests: tests/quote/servidor_smtp.py, run by
// the system's Python with its aiosmtpd, on a free port. What it receives lands in a temporary
// folder, one raw message and one JSON of envelope and session per mail.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtGlobal>

namespace korven::test {

class ServidorSmtp {
public:
    // modo: "normal", "rechazo" (550 to RCPT TO), "mudo" (never answers), "tls" (STARTTLS and
    // AUTH required: user "despachante", password "s3creta"; its CA in ca()).
    explicit ServidorSmtp(const QString& modo) {
        const QString python = QFile::exists(QStringLiteral("/usr/bin/python3"))
                                   ? QStringLiteral("/usr/bin/python3")
                                   : QStringLiteral("python3");
        const QString script = qEnvironmentVariable("KORVEN_SOURCE_DIR") +
                               QStringLiteral("/tests/quote/servidor_smtp.py");
        proceso_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        proceso_.start(python, {script, carpeta_.path(), modo});
        QByteArray linea;
        while (!linea.endsWith('\n') && proceso_.waitForReadyRead(15000))
            linea += proceso_.readLine();
        if (!linea.startsWith("LISTO "))
            qFatal("El servidor SMTP de prueba no arranca (python3-aiosmtpd y openssl "
                   "instalados?): %s",
                   linea.constData());
        puerto_ = linea.mid(6).trimmed().toInt();
    }
    ~ServidorSmtp() {
        proceso_.kill();
        proceso_.waitForFinished(5000);
    }
    ServidorSmtp(const ServidorSmtp&) = delete;
    ServidorSmtp& operator=(const ServidorSmtp&) = delete;

    int puerto() const { return puerto_; }
    QString direccion() const { return QStringLiteral("127.0.0.1:%1").arg(puerto_); }
    QString ca() const { return carpeta_.filePath(QStringLiteral("ca.pem")); }

    // How many messages arrived.
    int recibidos() const {
        return QDir(carpeta_.path())
            .entryList({QStringLiteral("mensaje-*.eml")}, QDir::Files)
            .size();
    }
    // How many connections the silent server accepted.
    int conexiones() const {
        return QDir(carpeta_.path()).entryList({QStringLiteral("conexion-*")}, QDir::Files).size();
    }
    // The raw bytes of message n (from 1), as the sender meant them.
    QByteArray mensaje(int n) const {
        QFile f(carpeta_.filePath(QStringLiteral("mensaje-%1.eml").arg(n)));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    // Envelope and session of message n: "saludo", "ehlo", "tls", "usuario", "desde", "para".
    QJsonObject sobre(int n) const {
        QFile f(carpeta_.filePath(QStringLiteral("mensaje-%1.json").arg(n)));
        return f.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(f.readAll()).object()
                                           : QJsonObject();
    }

private:
    QTemporaryDir carpeta_;
    QProcess proceso_;
    int puerto_ = 0;
};

} // namespace korven::test
