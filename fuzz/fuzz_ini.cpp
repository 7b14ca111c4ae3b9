// KORVEN.ini as it may arrive: any bytes. Reading never breaks, values stay within their
// length; a byte-order mark or CR LF line ends read the same as the plain file; writing one
// key makes it read back and leaves every other line of the file as it was, byte for byte.

#include "Arnes.h"
#include "platform/IniFile.h"

#include <QCoreApplication>
#include <QStringDecoder>
#include <QTemporaryDir>

using namespace korven;
using korven::fuzz::Exigir;

namespace {

using Todo = QHash<QString, QHash<QString, QString>>;

QByteArray Leer(const QString& ruta) {
    QFile f(ruta);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void Guardar(const QString& ruta, const QByteArray& datos) {
    QFile f(ruta);
    Exigir(f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(datos) == datos.size(),
           QStringLiteral("no se puede escribir ") + ruta);
}

Todo Contenido(const QString& ruta, const QByteArray& datos) {
    Guardar(ruta, datos);
    return IniFile::LeerTodo(ruta);
}

// The lines of the bytes (after the byte-order mark), each without the CRs that end it.
QList<QByteArray> Lineas(const QByteArray& datos) {
    QList<QByteArray> r = (datos.startsWith("\xef\xbb\xbf") ? datos.mid(3) : datos).split('\n');
    if (!r.isEmpty() && r.last().isEmpty())
        r.removeLast();
    for (QByteArray& l : r)
        while (l.endsWith('\r'))
            l.chop(1);
    return r;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString ruta = dir.filePath(QStringLiteral("KORVEN.ini"));
    korven::fuzz::Arnes arnes(argc, argv, "ini",
                              {"[SMTP]", "[Varios]", "TLS=S", "ESPERA=30", ";", "\"x\"", "ß",
                               "\xc3\x9f", "\xe1\xba\x9e", "\xf1", "\xef\xbb\xbf[SMTP]"});
    arnes.LimitarBytes(8 * 1024);
    return arnes.Correr([&](const QByteArray& entrada) {
        const Todo todo = Contenido(ruta, entrada);
        for (auto s = todo.cbegin(); s != todo.cend(); ++s)
            for (auto k = s->cbegin(); k != s->cend(); ++k)
                Exigir(k->size() <= IniFile::LargoMaximo && k.key() == k.key().toUpper(),
                       QStringLiteral("[%1] %2: valor de %3").arg(s.key(), k.key()).arg(k->size()));
        // The same file with a byte-order mark, and with CR LF line ends.
        Exigir(entrada.startsWith("\xef\xbb\xbf") ||
                   Contenido(ruta, "\xef\xbb\xbf" + entrada) == todo,
               QStringLiteral("la marca de orden de bytes cambia la lectura"));
        QByteArray crlf = entrada;
        crlf.replace("\r\n", "\n").replace('\n', "\r\n");
        if (!QByteArray(entrada).replace("\r\n", "\n").contains('\r'))
            Exigir(Contenido(ruta, crlf) == todo, QStringLiteral("CR LF cambia la lectura"));

        // One key written: a section and key of the file, or new ones, chosen by the input.
        std::mt19937_64 azar(qHash(entrada, 0));
        QStringList secciones{QStringLiteral("SMTP")}, claves{QStringLiteral("ESPERA")};
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                      QStringDecoder::Flag::ConvertInitialBom);
        QString texto = utf8(entrada);
        if (utf8.hasError())
            texto = QString::fromLatin1(entrada);
        for (const QString& l : texto.split(QLatin1Char('\n'))) {
            const QString t = l.trimmed();
            if (t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']')) && t.size() > 2)
                secciones << t.mid(1, t.size() - 2).trimmed();
            else if (t.indexOf(QLatin1Char('=')) > 0 && !t.startsWith(QLatin1Char(';')) &&
                     !t.startsWith(QLatin1Char('[')))
                claves << t.left(t.indexOf(QLatin1Char('='))).trimmed();
        }
        const QString seccion = secciones.at(static_cast<qsizetype>(azar() % secciones.size()));
        const QString clave = claves.at(static_cast<qsizetype>(azar() % claves.size()));
        const QString valor = QStringLiteral("valor %1 año").arg(azar() % 1000);
        if (seccion.contains(QLatin1Char(']')) || seccion.isEmpty() || clave.isEmpty())
            return;
        Guardar(ruta, entrada);
        Exigir(IniFile::Escribir(seccion, clave, valor, ruta), QStringLiteral("no se escribió"));
        Exigir(IniFile::Leer(clave, seccion, ruta) == valor,
               QStringLiteral("[%1] %2 se lee '%3' tras escribir '%4'")
                   .arg(seccion, clave, IniFile::Leer(clave, seccion, ruta), valor));
        // Every line of the file is still there but the one rewritten.
        QHash<QByteArray, int> quedan;
        for (const QByteArray& l : Lineas(Leer(ruta)))
            ++quedan[l];
        int perdidas = 0;
        for (const QByteArray& l : Lineas(entrada))
            if (--quedan[l] < 0)
                Exigir(l.contains('=') && ++perdidas == 1,
                       QStringLiteral("la línea '%1' cambió al escribir [%2] %3")
                           .arg(QString::fromLatin1(l.left(80)), seccion, clave));
    });
}
