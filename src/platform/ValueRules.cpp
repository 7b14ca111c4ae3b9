#include "platform/ValueRules.h"

#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSysInfo>
#include <QUrl>
#include <charconv>
#include <cmath>

namespace korven {

namespace {

bool EsTipoNumerico(const QVariant& v) {
    switch (v.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

// Reads a value of a store kept as text: "." is the decimal point, there is no grouping.
bool LeerNumero(const QString& texto, double* valor) {
    const QString t = texto.trimmed();
    if (t.isEmpty())
        return false;
    QLocale c = QLocale::c();
    c.setNumberOptions(QLocale::RejectGroupSeparator);
    bool ok = false;
    const double v = c.toDouble(t, &ok);
    if (ok && !std::isfinite(v))
        ok = false;
    if (ok && valor)
        *valor = v;
    return ok;
}

bool SoloDigitos(const QString& t) {
    for (const QChar c : t)
        if (c.unicode() < u'0' || c.unicode() > u'9')
            return false;
    return true;
}

// The text of a number with a point, as short as reads back the same.
QString TextoNumero(double v) {
    char buf[400];
    auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed);
    return QString::fromLatin1(buf, static_cast<int>(r.ptr - buf));
}

} // namespace

QString EsNull(const QVariant& valor) {
    if (!valor.isValid() || valor.isNull())
        return {};
    if (valor.metaType().id() == QMetaType::Double || valor.metaType().id() == QMetaType::Float)
        return TextoNumero(valor.toDouble()).replace(QLatin1Char('.'), SeparadorDecimal());
    return valor.toString();
}

bool LeerNumeroTecleado(const QString& texto, double* valor) {
    const QString sep = SeparadorDecimal();
    const QChar s = sep == QStringLiteral(",") ? QLatin1Char(',') : QLatin1Char('.');
    const QChar g = s == QLatin1Char(',') ? QLatin1Char('.') : QLatin1Char(',');
    QString t = texto.trimmed();
    QString signo;
    if (t.startsWith(QLatin1Char('-')) || t.startsWith(QLatin1Char('+'))) {
        if (t.startsWith(QLatin1Char('-')))
            signo = QStringLiteral("-");
        t.remove(0, 1);
    }
    const qsizetype p = t.indexOf(s);
    if (p >= 0 && t.indexOf(s, p + 1) >= 0)
        return false;
    QString entero = p >= 0 ? t.left(p) : t;
    const QString decimales = p >= 0 ? t.mid(p + 1) : QString();
    if (!SoloDigitos(decimales))
        return false;
    if (entero.contains(g)) {
        // The other mark only groups thousands: "1.234.567" under ",".
        const QStringList grupos = entero.split(g);
        if (grupos.first().isEmpty() || grupos.first().size() > 3)
            return false;
        for (qsizetype i = 0; i < grupos.size(); ++i)
            if (!SoloDigitos(grupos.at(i)) || (i > 0 && grupos.at(i).size() != 3))
                return false;
        entero = grupos.join(QString());
    } else if (!SoloDigitos(entero)) {
        return false;
    }
    if (entero.isEmpty() && decimales.isEmpty())
        return false;
    const QString normal = signo + (entero.isEmpty() ? QStringLiteral("0") : entero) +
                           QLatin1Char('.') +
                           (decimales.isEmpty() ? QStringLiteral("0") : decimales);
    bool ok = false;
    const double v = QLocale::c().toDouble(normal, &ok);
    if (!ok || !std::isfinite(v))
        return false;
    if (valor)
        *valor = v;
    return true;
}

bool EsNumeroTecleado(const QString& texto) {
    return LeerNumeroTecleado(texto, nullptr);
}

double NumeroTecleado(const QString& texto) {
    double v = 0;
    return LeerNumeroTecleado(texto, &v) ? v : 0.0;
}

bool EsNumerico(const QVariant& valor) {
    if (!valor.isValid() || valor.isNull())
        return false;
    if (EsTipoNumerico(valor))
        return true;
    if (valor.metaType().id() == QMetaType::QString ||
        valor.metaType().id() == QMetaType::QByteArray)
        return LeerNumero(valor.toString(), nullptr);
    return false;
}

double EsNumero(const QVariant& valor) {
    if (!valor.isValid() || valor.isNull())
        return 0;
    if (EsTipoNumerico(valor))
        return valor.toDouble();
    double v = 0;
    if (LeerNumero(valor.toString(), &v))
        return v;
    return 0;
}

QString SqlNumero(const QVariant& valor, const QString& separador) {
    double v = 0;
    if (EsTipoNumerico(valor))
        v = valor.toDouble();
    else if (!valor.isValid() || valor.isNull() || !LeerNumeroTecleado(valor.toString(), &v))
        return QStringLiteral("0");
    QString t = TextoNumero(v);
    if (!separador.trimmed().isEmpty())
        t.replace(QLatin1Char('.'), separador.trimmed());
    return t;
}

QString RedondeoSql(StoreDirectory& stores, const QString& entidad, const QString& expr,
                    const QString& mascara) {
    // Decimals: the length of the mask less the (1-based) position of its first ".".
    const int d = static_cast<int>(mascara.size()) - (mascara.indexOf(QLatin1Char('.')) + 1);
    QString f = stores.getNumberFormatbyEntity(entidad, QStringLiteral("999,999"), d);
    return f.replace(QStringLiteral("999.999"), expr);
}

double DobleSeguro(QVariant& valor) {
    const double d = EsNumerico(valor) ? EsNumero(valor) : 0.0;
    valor = d;
    return d;
}

bool EsVacio(const QVariant& valor) {
    if (!valor.isValid() || valor.isNull())
        return true;
    return valor.toString().trimmed().isEmpty();
}

bool IsRecord(const Recordset& rs) {
    return !(rs.Eof() && rs.Bof());
}

QString Rellenar(const QString& texto, int ancho) {
    if (texto.size() >= ancho)
        return texto.left(ancho);
    return QString(ancho - texto.size(), QLatin1Char(' ')) + texto;
}

QString LimpiarTexto(const QString& texto) {
    QString t = texto;
    t.replace(QLatin1Char('-'), QLatin1Char(' '));
    t.replace(QLatin1Char('('), QLatin1Char(' '));
    t.replace(QLatin1Char(')'), QLatin1Char(' '));
    while (t.contains(QStringLiteral("  ")))
        t.replace(QStringLiteral("  "), QStringLiteral(" "));
    return t.trimmed();
}

QString ComponerValor(const QString& texto) {
    QString t = texto.toUpper().trimmed().left(20);
    for (QChar& c : t) {
        const char16_t u = c.unicode();
        const bool pasa = (u >= u'A' && u <= u'Z') || u == 0x00D1 || (u >= u'0' && u <= u'9') ||
                          u == u'/' || u == u'.' || u == u',' || u == u'#' || u == u'&';
        if (!pasa)
            c = QLatin1Char(' ');
    }
    return t;
}

QString DirectorioNormal(const QString& ruta) {
    const QChar sep = QDir::separator();
    if (ruta.endsWith(sep) || ruta.endsWith(QLatin1Char('/')))
        return ruta;
    return ruta + sep;
}

QString MaquinaLocal() {
    return QSysInfo::machineHostName().left(255);
}

bool ValidaMail(const QString& mail) {
    const QStringList partes = mail.split(QLatin1Char('@'));
    if (partes.size() != 2)
        return false;
    for (const QString& parte : partes) {
        if (parte.isEmpty() || parte.startsWith(QLatin1Char('.')) ||
            parte.endsWith(QLatin1Char('.')) || parte.contains(QStringLiteral("..")))
            return false;
        for (QChar c : parte.toLower()) {
            const char16_t u = c.unicode();
            const bool permitido = (u >= u'a' && u <= u'z') || u == 0x00AD || u == u'_' ||
                                   u == u'-' || u == u'.' || (u >= u'0' && u <= u'9');
            if (!permitido)
                return false;
        }
    }
    return true;
}

bool Abrir(const QString& archivo, const QString& directorioPrograma) {
    QFileInfo fi(archivo);
    const QString ruta = fi.isAbsolute() ? archivo : QDir(directorioPrograma).filePath(archivo);
    return QDesktopServices::openUrl(QUrl::fromLocalFile(ruta));
}

double ImportePorcentual(double base, double tasa) {
    return RedondearDecimal(base * tasa / 100.0, 2);
}

QString ReemplazarSeparadorDecimal(const QString& texto) {
    const QString sep = SeparadorDecimal();
    QString t = texto;
    t.replace(QLatin1Char('.'), sep);
    t.replace(QLatin1Char(','), sep);
    return t;
}

QString PonerPuntoDecimal(const QString& texto) {
    QString t = texto;
    t.replace(SeparadorDecimal(), QStringLiteral("."));
    return t;
}

QString SinControles(const QString& texto) {
    QString t;
    t.reserve(texto.size());
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto.at(i);
        const char16_t u = c.unicode();
        if ((u < 0x20 && u != u'\t' && u != u'\r' && u != u'\n') || (u >= 0x7F && u <= 0x9F))
            continue;
        // Half a character (a text cut in the middle of a pair) cannot be stored either.
        if (c.isHighSurrogate()) {
            if (i + 1 < texto.size() && texto.at(i + 1).isLowSurrogate()) {
                t.append(c);
                t.append(texto.at(++i));
            }
            continue;
        }
        if (c.isLowSurrogate())
            continue;
        t.append(c);
    }
    return t;
}

QString SqlTexto(const QString& valor) {
    QString t = valor;
    t.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + t + QLatin1Char('\'');
}

} // namespace korven
