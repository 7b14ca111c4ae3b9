#include "platform/IniFile.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>

namespace korven {

namespace {

struct Lineas {
    QStringList lineas;
    QString fin = QStringLiteral("\n");
};

Lineas LeerLineas(const QString& archivo) {
    Lineas r;
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return r;
    const QByteArray datos = f.readAll();
    if (datos.contains("\r\n"))
        r.fin = QStringLiteral("\r\n");
    QString texto = QString::fromUtf8(datos);
    texto.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    r.lineas = texto.split(QLatin1Char('\n'));
    if (!r.lineas.isEmpty() && r.lineas.last().isEmpty())
        r.lineas.removeLast();
    return r;
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
    const QString nueva = clave.toUpper() + QLatin1Char('=') + valor;
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
    f.write((l.lineas.join(l.fin) + l.fin).toUtf8());
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
