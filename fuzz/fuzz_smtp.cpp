// The mail sender's dialogue before a hostile server: any bytes, cut into pieces anywhere. It
// never reports the message taken unless MAIL FROM, RCPT TO, DATA and the end of the message
// each got their success reply; once over it does nothing more; it ends with "Datos enviados."
// only when the message was taken and otherwise with "Error de SMTP: ...".

#include "Arnes.h"
#include "quote/ConversacionSmtp.h"

#include <QCoreApplication>
#include <QHash>

using namespace korven;
using korven::fuzz::Exigir;
using Tipo = ConversacionSmtp::Accion::Tipo;

namespace {

// A reply that begins with one of the codes, followed by a blank, a hyphen or the line's end.
bool Con(const QString& respuesta, std::initializer_list<const char*> codigos) {
    if (respuesta.size() > 3 && !QStringLiteral(" -\n").contains(respuesta.at(3)))
        return false;
    for (const char* c : codigos)
        if (respuesta.startsWith(QLatin1String(c)))
            return true;
    return false;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    korven::fuzz::Arnes arnes(argc, argv, "smtp",
                              {"220 ", "250 ", "250-", "354 ", "235 ", "334 ", "221 ", "550 ",
                               "250-STARTTLS\r\n", "250-AUTH PLAIN LOGIN\r\n", "250 AUTH LOGIN\r\n",
                               "2500", "999 ", "25", "0 OK\r\n"});
    arnes.LimitarBytes(96 * 1024);
    return arnes.Correr([](const QByteArray& entrada) {
        // The first byte chooses the dialogue; the rest is what the server says, in pieces.
        const unsigned char modo = entrada.isEmpty() ? 0 : static_cast<unsigned char>(entrada[0]);
        ConversacionSmtp::Datos d;
        d.desdeDireccion = QStringLiteral("despacho@example.com");
        d.paraDireccion = QStringLiteral("cliente@example.com");
        d.cuerpo = QStringLiteral("<p>Cotización</p>\n.\n");
        d.seguro = modo & 1;
        if (modo & 2)
            d.usuario = QStringLiteral("despachante"), d.clave = QStringLiteral("s3creta");
        ConversacionSmtp c(d);
        std::mt19937_64 azar(qHash(entrada, 0));
        QHash<QByteArray, QString> respuestas; // command -> the reply it got
        QByteArray ultimo;                     // the command the server is answering
        for (qsizetype i = 1; i < entrada.size();) {
            // Pieces end at a line end or anywhere.
            qsizetype fin = entrada.indexOf('\n', i);
            fin =
                fin < 0 || azar() % 4 == 0 ? i + 1 + static_cast<qsizetype>(azar() % 64) : fin + 1;
            const QByteArray pieza = entrada.mid(i, fin - i);
            i = fin;
            const bool antes = c.terminado();
            const bool aceptadoAntes = c.aceptado();
            std::vector<ConversacionSmtp::Accion> acciones = c.Recibir(pieza);
            // The channel upgrades at once when asked to.
            for (size_t k = 0; k < acciones.size(); ++k)
                if (acciones[k].tipo == Tipo::Cifrar && !c.terminado()) {
                    const auto mas = c.Cifrado();
                    acciones.insert(acciones.end(), mas.begin(), mas.end());
                    break;
                }
            Exigir(!antes || acciones.empty(), QStringLiteral("actúa después de terminar"));
            Exigir(!aceptadoAntes || c.aceptado(), QStringLiteral("deja de estar aceptado"));
            Exigir(c.estado() >= 0 && c.estado() <= 6, QStringLiteral("estado %1").arg(c.estado()));
            for (const ConversacionSmtp::Accion& a : acciones) {
                if (a.tipo == Tipo::Mostrar && !ultimo.isEmpty())
                    respuestas.insert(ultimo, a.texto);
                if (a.tipo == Tipo::Enviar) {
                    Exigir(a.datos.endsWith("\r\n"), QStringLiteral("envío sin CR LF"));
                    // The command's verb ("MAIL", "RCPT", "DATA"), or the whole ".\r\n".
                    qsizetype n = 0;
                    while (n < a.datos.size() && !QByteArrayView(" :\r").contains(a.datos[n]))
                        ++n;
                    ultimo = a.datos == ".\r\n" ? a.datos : a.datos.left(n);
                }
            }
            if (c.aceptado() && !aceptadoAntes) {
                const auto mal = [&](const char* cmd) {
                    return QStringLiteral("aceptado con '%1' a %2")
                        .arg(respuestas.value(cmd).left(40), QLatin1String(cmd));
                };
                Exigir(Con(respuestas.value("MAIL"), {"250"}), mal("MAIL"));
                Exigir(Con(respuestas.value("RCPT"), {"250", "251"}), mal("RCPT"));
                Exigir(Con(respuestas.value("DATA"), {"354"}), mal("DATA"));
                Exigir(Con(respuestas.value(".\r\n"), {"250"}), mal(".\r\n"));
            }
        }
        if (c.terminado()) {
            const bool bien = c.mensaje() == QStringLiteral("Datos enviados.");
            Exigir(bien ? c.aceptado() : c.mensaje().startsWith(QStringLiteral("Error de SMTP: ")),
                   QStringLiteral("termina con '%1'").arg(c.mensaje().left(60)));
        }
    });
}
