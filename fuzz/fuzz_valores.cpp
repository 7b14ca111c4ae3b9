// The value rules and the formatter under both decimal separators. The first line of an input
// is a mask, the rest a text as the clerk types it; the first eight bytes are also taken as a
// raw double. A typed number formats and reads back to the same value; a text that is no number
// reads as 0 and goes to SQL as "0"; every text cleaner keeps its promise.

#include "Arnes.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"

#include <QCoreApplication>
#include <cmath>
#include <cstring>

using namespace korven;
using korven::fuzz::Exigir;

namespace {

QString Texto(double v) {
    return QString::number(v, 'g', 17);
}

// The decimals a number mask asks for: its '0' and '#' after the first '.'.
int Decimales(const QString& mascara) {
    const qsizetype p = mascara.indexOf(QLatin1Char('.'));
    if (p < 0)
        return 0;
    const QString d = mascara.mid(p + 1);
    return static_cast<int>(d.count(QLatin1Char('0')) + d.count(QLatin1Char('#')));
}

// A formatted number reads back, under the same separator, as the value rounded to the mask.
void FormatoReleido(double v, const QString& mascara, const QString& sep) {
    const QString f = Formato(v, mascara);
    for (const QChar c : f)
        Exigir(c.isDigit() || c == QLatin1Char('-') || c == sep.at(0),
               QStringLiteral("Formato(%1, '%2') da '%3'").arg(Texto(v), mascara, f));
    const double base = std::isfinite(v) ? v : 0.0;
    const int decimales = Decimales(mascara);
    const double esperado = RedondearDecimal(base, decimales);
    // Apart from how the system rounds: within half a unit of the last decimal, same sign.
    const double margen = 0.5 * std::pow(10.0, -decimales) * (1 + 1e-9) + std::abs(base) * 1e-15;
    Exigir(std::abs(esperado - base) <= margen && (esperado == 0 || (esperado < 0) == (base < 0)),
           QStringLiteral("RedondearDecimal(%1, %2) = %3")
               .arg(Texto(base))
               .arg(decimales)
               .arg(Texto(esperado)));
    double leido = 0;
    // A mask with no mandatory digit writes nothing, or the lone mark, for zero.
    const bool vacio = QString(f).remove(sep).isEmpty();
    Exigir((vacio && esperado == 0) || (LeerNumeroTecleado(f, &leido) && leido == esperado),
           QStringLiteral("Formato(%1, '%2') = '%3' no se relee como %4")
               .arg(Texto(v), mascara, f, Texto(esperado)));
}

void Probar(const QString& mascara, const QString& texto, double crudo, const QString& sep) {
    SeparadorDecimalScope alcance(sep);
    Exigir(SeparadorDecimal() == sep, QStringLiteral("separador ") + SeparadorDecimal());

    double v = 0;
    if (LeerNumeroTecleado(texto, &v)) {
        Exigir(std::isfinite(v), QStringLiteral("'%1' da un número no finito").arg(texto));
        Exigir(NumeroTecleado(texto) == v && EsNumeroTecleado(texto),
               QStringLiteral("'%1': las lecturas no coinciden").arg(texto));
        // The store's text, read with the store's point, is the same number.
        const QString sql = SqlNumero(texto, QStringLiteral("."));
        Exigir(EsNumerico(sql) && EsNumero(sql) == v,
               QStringLiteral("SqlNumero('%1') = '%2'").arg(texto, sql));
        FormatoReleido(v, QStringLiteral("0.00"), sep);
        // The number as the formatter writes a typed text.
        const QString f = Formato(QVariant(texto), QStringLiteral("00.0000"));
        Exigir(f == Formato(v, QStringLiteral("00.0000")),
               QStringLiteral("Formato('%1') = '%2'").arg(texto, f));
    } else {
        Exigir(NumeroTecleado(texto) == 0 && !EsNumeroTecleado(texto),
               QStringLiteral("'%1' no es número y se lee distinto de 0").arg(texto));
        Exigir(SqlNumero(texto, QStringLiteral(".")) == QStringLiteral("0"),
               QStringLiteral("SqlNumero('%1') no es '0'").arg(texto));
    }
    // Any double shows as text that reads back as itself.
    for (const double d : {v, crudo}) {
        if (!std::isfinite(d))
            continue;
        const QString t = EsNull(QVariant(d));
        double r = 0;
        Exigir(LeerNumeroTecleado(t, &r) && r == d,
               QStringLiteral("EsNull(%1) = '%2' no se relee").arg(Texto(d), t));
        FormatoReleido(d, mascara.left(64), sep);
    }
    // A store value is read with the point whatever the separator.
    if (EsNumerico(texto))
        Exigir(std::isfinite(EsNumero(texto)), QStringLiteral("EsNumero('%1')").arg(texto));

    // Dates and any other mask never break the formatter.
    Formato(QVariant(texto), mascara);

    const QString limpio = SinControles(texto);
    Exigir(SinControles(limpio) == limpio, QStringLiteral("SinControles no es estable"));
    for (qsizetype i = 0; i < limpio.size(); ++i) {
        const char16_t u = limpio.at(i).unicode();
        const bool control =
            (u < 0x20 && u != u'\t' && u != u'\r' && u != u'\n') || (u >= 0x7F && u <= 0x9F);
        const bool medio =
            limpio.at(i).isHighSurrogate()
                ? i + 1 == limpio.size() || !limpio.at(i + 1).isLowSurrogate()
                : limpio.at(i).isLowSurrogate() && (i == 0 || !limpio.at(i - 1).isHighSurrogate());
        Exigir(!control && !medio, QStringLiteral("SinControles deja U+%1").arg(u, 4, 16));
    }
    const QString compuesto = ComponerValor(texto);
    Exigir(compuesto.size() <= 20, QStringLiteral("ComponerValor da más de 20"));
    const QString sinGuiones = LimpiarTexto(texto);
    Exigir(!sinGuiones.contains(QStringLiteral("  ")) && !sinGuiones.contains(QLatin1Char('-')),
           QStringLiteral("LimpiarTexto('%1') = '%2'").arg(texto, sinGuiones));
    if (ValidaMail(texto))
        Exigir(texto.count(QLatin1Char('@')) == 1, QStringLiteral("ValidaMail('%1')").arg(texto));
    const QString sqlTexto = SqlTexto(texto);
    Exigir(
        sqlTexto.mid(1, sqlTexto.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'")) ==
            texto,
        QStringLiteral("SqlTexto('%1')").arg(texto));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    korven::fuzz::Arnes arnes(argc, argv, "valores",
                              {"0", "00.00", "##.00", "0.######", "yyyy", "dd/mm/yyyy", "Long Date",
                               "1.500", "1,500", "+", "000000"});
    arnes.LimitarBytes(4 * 1024);
    return arnes.Correr([](const QByteArray& entrada) {
        const QString todo = QString::fromUtf8(entrada);
        const qsizetype fin = todo.indexOf(QLatin1Char('\n'));
        const QString mascara = fin < 0 ? QString() : todo.left(fin);
        const QString texto = fin < 0 ? todo : todo.mid(fin + 1);
        double crudo = 0;
        if (entrada.size() >= 8)
            std::memcpy(&crudo, entrada.constData(), sizeof crudo);
        for (const char* sep : {",", "."})
            Probar(mascara, texto, crudo, QString::fromLatin1(sep));
    });
}
