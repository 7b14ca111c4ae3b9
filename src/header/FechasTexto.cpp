#include "header/FechasTexto.h"

#include <QRegularExpression>

namespace korven {

QDate FechasTexto::Leer(const QString& texto) {
    const QString t = texto.trimmed();
    if (t.isEmpty())
        return {};
    // Year first, as the stores write it.
    const QRegularExpression iso(QStringLiteral("^(\\d{4})[-/.](\\d{1,2})[-/.](\\d{1,2})$"));
    QRegularExpressionMatch m = iso.match(t);
    if (m.hasMatch())
        return QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    const QRegularExpression dma(QStringLiteral("^(\\d{1,2})[-/.](\\d{1,2})[-/.](\\d{2}|\\d{4})$"));
    m = dma.match(t);
    if (!m.hasMatch())
        return {};
    int anio = m.captured(3).toInt();
    if (m.captured(3).size() == 2)
        anio += anio < 30 ? 2000 : 1900;
    return QDate(anio, m.captured(2).toInt(), m.captured(1).toInt());
}

} // namespace korven
