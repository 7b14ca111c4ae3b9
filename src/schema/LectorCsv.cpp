#include "schema/LectorCsv.h"

#include "platform/KorvenError.h"

#include <QFile>
#include <QStringDecoder>

namespace korven::schema {

LectorCsv LectorCsv::DeArchivo(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        throw KorvenError(
            53, QStringLiteral("No se puede leer el archivo %1: %2").arg(ruta, f.errorString()),
            QStringLiteral("LectorCsv"));
    bool latin1 = false;
    const QString texto = Decodificar(f.readAll(), &latin1);
    LectorCsv r = DeTexto(texto, ruta);
    r.latin1_ = latin1;
    return r;
}

QString LectorCsv::Decodificar(const QByteArray& bytes, bool* latin1) {
    // Stateless: a sequence cut short at the end of the file is an error too, not a character
    // silently dropped.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString texto = utf8(bytes);
    const bool noUtf8 = utf8.hasError();
    if (noUtf8)
        texto = QString::fromLatin1(bytes);
    if (texto.startsWith(QChar(0xFEFF)))
        texto.remove(0, 1);
    if (latin1)
        *latin1 = noUtf8;
    return texto;
}

LectorCsv LectorCsv::DeTexto(const QString& texto, const QString& origen) {
    LectorCsv r;
    // The separator is decided by the header line.
    const int finPrimera = texto.indexOf(QLatin1Char('\n'));
    const QString primera = finPrimera < 0 ? texto : texto.left(finPrimera);
    if (primera.contains(QLatin1Char('\t')))
        r.separador_ = QLatin1Char('\t');
    else if (primera.contains(QLatin1Char(';')) && !primera.contains(QLatin1Char(',')))
        r.separador_ = QLatin1Char(';');

    int linea = 1;
    int inicio = 1;
    QStringList campos;
    QString campo;
    bool entreComillas = false;
    bool citado = false; // the field began with a quote
    bool filaVacia = true;
    auto cerrarCampo = [&]() {
        campos << campo;
        campo.clear();
        citado = false;
    };
    auto cerrarFila = [&]() {
        cerrarCampo();
        const bool blanca = filaVacia && campos.size() == 1 && campos.first().trimmed().isEmpty();
        if (!blanca) {
            if (r.encabezado_.isEmpty() && r.filas_.empty()) {
                for (QString& c : campos)
                    c = c.trimmed();
                r.encabezado_ = campos;
                r.lineaEncabezado_ = inicio;
            } else {
                r.filas_.push_back(Fila{inicio, campos});
            }
        }
        campos.clear();
        filaVacia = true;
    };
    const int n = static_cast<int>(texto.size());
    for (int i = 0; i < n; ++i) {
        const QChar ch = texto.at(i);
        if (entreComillas) {
            if (ch == QLatin1Char('"')) {
                if (i + 1 < n && texto.at(i + 1) == QLatin1Char('"')) {
                    campo += QLatin1Char('"');
                    ++i;
                } else {
                    entreComillas = false;
                }
            } else {
                if (ch == QLatin1Char('\n'))
                    ++linea;
                campo += ch;
            }
            continue;
        }
        if (ch == QLatin1Char('"') && campo.isEmpty() && !citado) {
            entreComillas = true;
            citado = true;
            filaVacia = false;
        } else if (ch == r.separador_) {
            cerrarCampo();
            filaVacia = false;
        } else if (ch == QLatin1Char('\r')) {
            continue;
        } else if (ch == QLatin1Char('\n')) {
            cerrarFila();
            ++linea;
            inicio = linea;
        } else {
            campo += ch;
            if (!ch.isSpace())
                filaVacia = false;
        }
    }
    if (entreComillas)
        throw KorvenError(
            3751,
            QStringLiteral("%1: comillas sin cerrar desde la línea %2").arg(origen).arg(inicio),
            QStringLiteral("LectorCsv"));
    // The last row needs no line end, even when all it has is an empty quoted field.
    if (!campo.isEmpty() || !campos.isEmpty() || !filaVacia)
        cerrarFila();
    return r;
}

} // namespace korven::schema
