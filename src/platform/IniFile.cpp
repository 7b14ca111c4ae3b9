#include "platform/IniFile.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>

namespace korven {

namespace {

struct Lineas {
    QStringList lineas;
    QString fin = QStringLiteral("\n");
    bool latin1 = false; // the file is not UTF-8: written back as Latin-1 when it fits
    bool marca = false;  // the file begins with a byte-order mark, kept when written
};

Lineas LeerLineas(const QString& archivo) {
    Lineas r;
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return r;
    QByteArray datos = f.readAll();
    // A byte-order mark (as some editors save) is not part of the first line.
    r.marca = datos.startsWith("\xef\xbb\xbf");
    if (r.marca)
        datos.remove(0, 3);
    if (datos.contains("\r\n"))
        r.fin = QStringLiteral("\r\n");
    // A file written by an older tool in Latin-1 is read as such, not lost to replacement marks
    // (stateless: a sequence cut short at the end is an error too, not a character dropped; the
    // mark was taken away above, a second one is text).
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString texto = utf8(datos);
    if (utf8.hasError()) {
        texto = QString::fromLatin1(datos);
        r.latin1 = true;
    }
    texto.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    r.lineas = texto.split(QLatin1Char('\n'));
    if (!r.lineas.isEmpty() && r.lineas.last().isEmpty())
        r.lineas.removeLast();
    return r;
}

bool EnLatin1(const QString& texto) {
    return std::all_of(texto.cbegin(), texto.cend(), [](QChar c) { return c.unicode() <= 0xFF; });
}

// The section name of a line "[name]", or a null string.
QString Seccion(const QString& linea) {
    const QString t = linea.trimmed();
    if (t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']')))
        return t.mid(1, t.size() - 2).trimmed();
    return {};
}

bool ClaveValor(const QString& linea, QString* clave, QString* valor) {
    const QString t = linea.trimmed();
    if (t.isEmpty() || t.startsWith(QLatin1Char(';')))
        return false;
    const int igual = t.indexOf(QLatin1Char('='));
    if (igual <= 0)
        return false;
    *clave = t.left(igual).trimmed();
    QString v = t.mid(igual + 1).trimmed();
    // A value between double quotes loses them, as the profile functions do.
    if (v.size() >= 2 && v.startsWith(QLatin1Char('"')) && v.endsWith(QLatin1Char('"')))
        v = v.mid(1, v.size() - 2);
    *valor = v;
    return true;
}

} // namespace

QString IniFile::Leer(const QString& clave, const QString& seccion, const QString& archivo) {
    const QString buscada = clave.toLower();
    bool dentro = false;
    for (const QString& linea : LeerLineas(archivo).lineas) {
        const QString s = Seccion(linea);
        if (!s.isNull()) {
            dentro = s.compare(seccion, Qt::CaseInsensitive) == 0;
            continue;
        }
        QString k, v;
        if (dentro && ClaveValor(linea, &k, &v) && k.compare(buscada, Qt::CaseInsensitive) == 0)
            return v.left(LargoMaximo);
    }
    return {};
}

bool IniFile::Escribir(const QString& seccion, const QString& clave, const QString& valor,
                       const QString& archivo) {
    Lineas l = LeerLineas(archivo);
    // Keys are written upper-case, unless that changes them for a reader ("ß" becomes "SS") or
    // takes them out of a Latin-1 file's letters ("ÿ" becomes "Ÿ").
    const QString mayusculas = clave.toUpper();
    const bool mayusculasValen =
        mayusculas.compare(clave, Qt::CaseInsensitive) == 0 && (!l.latin1 || EnLatin1(mayusculas));
    const QString nueva = (mayusculasValen ? mayusculas : clave) + QLatin1Char('=') + valor;
    int inicio = -1; // line of the section header
    int ultima = -1; // last non-blank line of the section
    for (int i = 0; i < l.lineas.size(); ++i) {
        const QString s = Seccion(l.lineas[i]);
        if (!s.isNull()) {
            if (inicio >= 0)
                break;
            if (s.compare(seccion, Qt::CaseInsensitive) == 0)
                inicio = ultima = i;
            continue;
        }
        if (inicio < 0)
            continue;
        QString k, v;
        if (ClaveValor(l.lineas[i], &k, &v) && k.compare(clave, Qt::CaseInsensitive) == 0) {
            l.lineas[i] = nueva;
            inicio = -2;
            break;
        }
        if (!l.lineas[i].trimmed().isEmpty())
            ultima = i;
    }
    if (inicio == -1) {
        if (!l.lineas.isEmpty() && !l.lineas.last().trimmed().isEmpty())
            l.lineas << QString();
        l.lineas << QLatin1Char('[') + seccion + QLatin1Char(']') << nueva;
    } else if (inicio >= 0) {
        l.lineas.insert(ultima + 1, nueva);
    }
    QSaveFile f(archivo);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    const QString texto = l.lineas.join(l.fin) + l.fin;
    if (l.marca)
        f.write("\xef\xbb\xbf");
    f.write(l.latin1 && EnLatin1(texto) ? texto.toLatin1() : texto.toUtf8());
    return f.commit();
}

QHash<QString, QHash<QString, QString>> IniFile::LeerTodo(const QString& archivo) {
    QHash<QString, QHash<QString, QString>> r;
    QString actual;
    for (const QString& linea : LeerLineas(archivo).lineas) {
        const QString s = Seccion(linea);
        if (!s.isNull()) {
            actual = s.toUpper();
            r[actual];
            continue;
        }
        QString k, v;
        if (!actual.isEmpty() && ClaveValor(linea, &k, &v))
            r[actual].insert(k.toUpper(), v.left(LargoMaximo));
    }
    return r;
}

} // namespace korven
