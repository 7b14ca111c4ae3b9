#pragma once

// A PDF read back as text (pdftotext, keeping the layout), and its lines looked up by pattern.

#include <QProcess>
#include <QRegularExpression>
#include <QString>

namespace korven::test {

// The text of the PDF; empty, with the reason in *error, when it cannot be read.
inline QString TextoDePdf(const QString& archivo, QString* error = nullptr) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), archivo, QStringLiteral("-")});
    if (!p.waitForFinished(20000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        if (error)
            *error = p.error() == QProcess::FailedToStart
                         ? QStringLiteral("pdftotext no está instalado")
                         : QString::fromUtf8(p.readAllStandardError());
        return {};
    }
    return QString::fromUtf8(p.readAllStandardOutput());
}

// True when a whole line of the text (blanks around it aside) matches the pattern.
inline bool TieneLinea(const QString& texto, const QString& patron) {
    return QRegularExpression(QStringLiteral("(^|\\n)\\s*") + patron +
                              QStringLiteral("\\s*(\\n|$)"))
        .match(texto)
        .hasMatch();
}

} // namespace korven::test
