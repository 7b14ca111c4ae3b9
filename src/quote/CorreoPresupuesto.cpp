#include "quote/CorreoPresupuesto.h"

#include <QDateTime>

namespace korven {

namespace {
const QByteArray kFin = QByteArrayLiteral("\r\n");

// A header text outside ASCII as an encoded word.
QByteArray Encabezado(const QString& texto) {
    const QByteArray utf8 = texto.toUtf8();
    bool ascii = true;
    for (char c : utf8)
        ascii = ascii && static_cast<unsigned char>(c) < 0x80;
    if (ascii)
        return utf8;
    return "=?UTF-8?B?" + utf8.toBase64() + "?=";
}

QByteArray Direccion(const QString& direccion) {
    return "<" + direccion.toUtf8() + ">";
}
} // namespace

QByteArray QuotedPrintable(const QByteArray& datos) {
    QByteArray salida;
    QByteArray linea;
    auto agregar = [&](const QByteArray& pieza) {
        if (linea.size() + pieza.size() > 75) {
            salida += linea + "=" + kFin;
            linea.clear();
        }
        linea += pieza;
    };
    const QByteArray texto = QByteArray(datos).replace("\r\n", "\n");
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const auto c = static_cast<unsigned char>(texto[i]);
        if (c == '\n') {
            // A blank at the end of a line would be lost on the way.
            if (!linea.isEmpty() && (linea.endsWith(' ') || linea.endsWith('\t'))) {
                const char ultimo = linea.back();
                linea.chop(1);
                agregar(QByteArray("=") + QByteArray(1, ultimo).toHex().toUpper());
            }
            salida += linea + kFin;
            linea.clear();
        } else if ((c >= 33 && c <= 126 && c != '=') || c == ' ' || c == '\t') {
            agregar(QByteArray(1, static_cast<char>(c)));
        } else {
            agregar("=" + QByteArray(1, static_cast<char>(c)).toHex().toUpper());
        }
    }
    salida += linea;
    return salida;
}

QByteArray MensajeEml(const QString& desde, const QString& para, const QString& asunto,
                      const QString& html) {
    QByteArray m;
    m += "From: " + Direccion(desde) + kFin;
    m += "To: " + Direccion(para) + kFin;
    m += "Subject: " + Encabezado(asunto) + kFin;
    m += "Date: " + QDateTime::currentDateTime().toString(Qt::RFC2822Date).toUtf8() + kFin;
    m += "MIME-Version: 1.0" + kFin;
    m += "Content-Type: text/html; charset=\"utf-8\"" + kFin;
    m += "Content-Transfer-Encoding: quoted-printable" + kFin;
    m += "X-Unsent: 1" + kFin;
    m += kFin;
    m += QuotedPrintable(html.toUtf8());
    m += kFin;
    return m;
}

} // namespace korven
