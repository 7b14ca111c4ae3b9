#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace korven::schema {

// A CSV text as read: the header row and the data rows, each with the line of the file where it
// begins. Fields are separated by "," (by a tab when the header has one, as a spreadsheet copies
// its rows; by ";" when the header has ";" and no ","); a field in
// double quotes may hold separators, line ends and doubled quotes. Blank lines are skipped. Text
// is taken as it stands, blanks included (a suffix level is padded with blanks).
class LectorCsv {
public:
    struct Fila {
        int linea = 0;
        QStringList valores;
    };

    // Reads a UTF-8 file (a leading byte-order mark is dropped); a file that is not valid UTF-8
    // is read as Latin-1 instead, and latin1() says so. Throws KorvenError when the file cannot
    // be read or a quoted field is not closed.
    static LectorCsv DeArchivo(const QString& ruta);
    static LectorCsv DeTexto(const QString& texto, const QString& origen = {});
    // The text of a file's bytes: UTF-8 (without its byte-order mark), or Latin-1 when they are
    // not valid UTF-8 (latin1 then says so).
    static QString Decodificar(const QByteArray& bytes, bool* latin1 = nullptr);

    const QStringList& encabezado() const { return encabezado_; }
    const std::vector<Fila>& filas() const { return filas_; }
    QChar separador() const { return separador_; }
    // The line of the text where the header row begins.
    int lineaEncabezado() const { return lineaEncabezado_; }
    bool latin1() const { return latin1_; }

private:
    QStringList encabezado_;
    std::vector<Fila> filas_;
    QChar separador_ = QLatin1Char(',');
    bool latin1_ = false;
    int lineaEncabezado_ = 1;
};

} // namespace korven::schema
