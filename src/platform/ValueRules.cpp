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

// Reads text typed in the system's format ("1.234,5" in Argentina) or with a plain point.
bool LeerNumero(const QString& texto, double* valor) {
    const QString t = texto.trimmed();
    if (t.isEmpty())
        return false;
    bool ok = false;
    double v = QLocale().toDouble(t, &ok);
    if (!ok) {
        QLocale c = QLocale::c();
        c.setNumberOptions(QLocale::RejectGroupSeparator);
        v = c.toDouble(t, &ok);
    }
    if (ok && !std::isfinite(v))
        ok = false;
    if (ok && valor)
        *valor = v;
    return ok;
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
    if (!EsNumerico(valor))
        return QStringLiteral("0");
    QString t = EsTipoNumerico(valor) ? TextoNumero(valor.toDouble()) : valor.toString().trimmed();
    if (!separador.trimmed().isEmpty()) {
        t.replace(QLatin1Char(','), separador);
        t.replace(QLatin1Char('.'), separador);
    } else {
        t.replace(QLatin1Char(','), QLatin1Char('.'));
    }
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

QString SqlTexto(const QString& valor) {
    QString t = valor;
    t.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + t + QLatin1Char('\'');
}

} // namespace korven
