#include "platform/Formato.h"

#include "platform/ValueRules.h"

#include <QLocale>
#include <array>
#include <charconv>
#include <cmath>

namespace korven {

QString SeparadorDecimal() {
    return QLocale().decimalPoint();
}

SeparadorDecimalScope::SeparadorDecimalScope(const QString& separador) : anterior_(QLocale()) {
    // Argentina writes "1.234,5"; the English of the United States "1,234.5".
    QLocale::setDefault(separador == QStringLiteral(",")
                            ? QLocale(QLocale::Spanish, QLocale::Argentina)
                            : QLocale(QLocale::English, QLocale::UnitedStates));
}

SeparadorDecimalScope::~SeparadorDecimalScope() {
    QLocale::setDefault(anterior_);
}

namespace {

// The shortest decimal text that reads back as the same double, in fixed notation
// ("2.675", "-0.001", "100000000000000000000"): the decimal value the user typed.
std::string DecimalCorto(double valor) {
    std::array<char, 400> buf{};
    auto r = std::to_chars(buf.data(), buf.data() + buf.size(), valor, std::chars_format::fixed);
    return std::string(buf.data(), r.ptr);
}

struct Digitos {
    bool negativo = false;
    std::string entero;  // without leading zeros, may be empty for zero
    std::string decimal; // exactly the number of decimals asked for
};

// Rounds half away from zero on the decimal digits.
Digitos Redondear(double valor, int decimales) {
    Digitos d;
    if (!std::isfinite(valor))
        valor = 0;
    std::string s = DecimalCorto(valor);
    if (!s.empty() && s[0] == '-') {
        d.negativo = true;
        s.erase(0, 1);
    }
    auto punto = s.find('.');
    std::string ent = punto == std::string::npos ? s : s.substr(0, punto);
    std::string dec = punto == std::string::npos ? std::string() : s.substr(punto + 1);
    bool subir = static_cast<int>(dec.size()) > decimales && dec[decimales] >= '5';
    dec.resize(decimales, '0');
    std::string todo = ent + dec;
    if (subir) {
        int i = static_cast<int>(todo.size()) - 1;
        for (; i >= 0; --i) {
            if (todo[i] == '9') {
                todo[i] = '0';
            } else {
                ++todo[i];
                break;
            }
        }
        if (i < 0)
            todo.insert(todo.begin(), '1');
    }
    d.entero = todo.substr(0, todo.size() - decimales);
    d.decimal = todo.substr(todo.size() - decimales);
    auto nz = d.entero.find_first_not_of('0');
    d.entero = nz == std::string::npos ? std::string() : d.entero.substr(nz);
    if (d.entero.empty() && d.decimal.find_first_not_of('0') == std::string::npos)
        d.negativo = false; // no "-0"
    return d;
}

bool EsMascaraFecha(const QString& m) {
    const QString l = m.toLower();
    return l == QStringLiteral("long date") || l.contains(QLatin1Char('d')) ||
           l.contains(QLatin1Char('y'));
}

} // namespace

double RedondearDecimal(double valor, int decimales) {
    Digitos d = Redondear(valor, decimales);
    std::string s = (d.negativo ? "-" : "") + (d.entero.empty() ? std::string("0") : d.entero);
    if (decimales > 0)
        s += "." + d.decimal;
    double r = 0;
    std::from_chars(s.data(), s.data() + s.size(), r);
    return r;
}

QString Formato(double valor, const QString& mascara) {
    return Formato(valor, mascara, SeparadorDecimal());
}

QString Formato(double valor, const QString& mascara, const QString& separador) {
    const int punto = mascara.indexOf(QLatin1Char('.'));
    const QString parteEntera = punto < 0 ? mascara : mascara.left(punto);
    const QString parteDecimal = punto < 0 ? QString() : mascara.mid(punto + 1);
    const int minEnteros = static_cast<int>(parteEntera.count(QLatin1Char('0')));
    const int fijos = static_cast<int>(parteDecimal.count(QLatin1Char('0')));
    const int opcionales = static_cast<int>(parteDecimal.count(QLatin1Char('#')));

    Digitos d = Redondear(valor, fijos + opcionales);
    // Optional decimals drop their trailing zeros.
    std::string dec = d.decimal;
    while (static_cast<int>(dec.size()) > fijos && !dec.empty() && dec.back() == '0')
        dec.pop_back();
    std::string ent = d.entero;
    if (static_cast<int>(ent.size()) < minEnteros)
        ent.insert(0, static_cast<size_t>(minEnteros) - ent.size(), '0');

    QString r = d.negativo ? QStringLiteral("-") : QString();
    r += QString::fromStdString(ent);
    if (punto >= 0 && (!dec.empty() || fijos > 0 || opcionales == 0))
        r += separador + QString::fromStdString(dec);
    return r;
}

QString FormatoFecha(const QDate& fecha, const QString& mascara) {
    if (!fecha.isValid())
        return {};
    static const char* const dias[] = {"lunes",   "martes", "miércoles", "jueves",
                                       "viernes", "sábado", "domingo"};
    static const char* const meses[] = {"enero",      "febrero", "marzo",     "abril",
                                        "mayo",       "junio",   "julio",     "agosto",
                                        "septiembre", "octubre", "noviembre", "diciembre"};
    const QString m = mascara.toLower();
    if (m == QStringLiteral("long date")) {
        return QString::fromUtf8(dias[fecha.dayOfWeek() - 1]) + QStringLiteral(", ") +
               QString::number(fecha.day()) + QStringLiteral(" de ") +
               QString::fromUtf8(meses[fecha.month() - 1]) + QStringLiteral(" de ") +
               QString::number(fecha.year());
    }
    // Day, month and year masks as the system writes them ("dd/mm/yyyy", "dd-mm-yy",
    // "yyyyMMdd"): in a date mask "mm" is the month.
    QString r;
    for (int i = 0; i < mascara.size();) {
        const QChar c = mascara.at(i).toLower();
        int n = 1;
        while (i + n < mascara.size() && mascara.at(i + n).toLower() == c)
            ++n;
        if (c == QLatin1Char('d'))
            r += QStringLiteral("%1").arg(fecha.day(), n >= 2 ? 2 : 1, 10, QLatin1Char('0'));
        else if (c == QLatin1Char('m'))
            r += QStringLiteral("%1").arg(fecha.month(), n >= 2 ? 2 : 1, 10, QLatin1Char('0'));
        else if (c == QLatin1Char('y'))
            r += n >= 4 ? QStringLiteral("%1").arg(fecha.year(), 4, 10, QLatin1Char('0'))
                        : QStringLiteral("%1").arg(fecha.year() % 100, 2, 10, QLatin1Char('0'));
        else
            r += QString(n, mascara.at(i));
        i += n;
    }
    return r;
}

QString Formato(const QVariant& valor, const QString& mascara) {
    if (EsMascaraFecha(mascara)) {
        QDate f;
        if (valor.metaType().id() == QMetaType::QDate ||
            valor.metaType().id() == QMetaType::QDateTime)
            f = valor.toDate();
        else {
            const QString t = EsNull(valor).trimmed();
            for (const char* patron :
                 {"yyyy-MM-dd", "dd/MM/yyyy", "d/M/yyyy", "dd-MM-yyyy", "yyyyMMdd"}) {
                f = QDate::fromString(t.left(10), QString::fromLatin1(patron));
                if (f.isValid())
                    break;
            }
        }
        return f.isValid() ? FormatoFecha(f, mascara) : EsNull(valor);
    }
    const int tipo = valor.metaType().id();
    if (tipo == QMetaType::QString || tipo == QMetaType::QByteArray) {
        // Text is what the clerk typed: it follows the system separator.
        double v = 0;
        if (LeerNumeroTecleado(valor.toString(), &v))
            return Formato(v, mascara);
        return EsNull(valor);
    }
    if (EsNumerico(valor))
        return Formato(EsNumero(valor), mascara);
    return EsNull(valor);
}

} // namespace korven
