#pragma once

#include <QByteArray>
#include <QString>

namespace korven {

// The quote as a mail message the desktop's mail program opens as not yet sent: headers with
// the addresses and the subject, an HTML body in UTF-8, quoted-printable, lines ending in CR LF.
QByteArray MensajeEml(const QString& desde, const QString& para, const QString& asunto,
                      const QString& html);

// Bytes as quoted-printable: lines of at most 76 characters, CR LF between them.
QByteArray QuotedPrintable(const QByteArray& datos);

} // namespace korven
