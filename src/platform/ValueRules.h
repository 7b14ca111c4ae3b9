#pragma once

#include <QString>
#include <QVariant>

namespace korven {

class Recordset;
class StoreDirectory;

// Value rules shared by every screen and routine. Numbers typed by the user follow the system
// decimal separator; numbers that go into SQL always leave through SqlNumero.

// The value as text; NULL gives the empty text.
QString EsNull(const QVariant& valor);
// The value as a number; NULL, empty or a text that is no number gives 0.
double EsNumero(const QVariant& valor);
// True when the value reads as a number (a number, or text in the system's format or with ".").
bool EsNumerico(const QVariant& valor);
// Text for SQL: "0" when not numeric; with a non-blank separator, every "," and then every "."
// of the value's text become that separator; with a blank one, every "," becomes ".".
QString SqlNumero(const QVariant& valor, const QString& separador);
// The store's SQL rounding expression for expr, with as many decimals as the mask has after
// its first ".".
QString RedondeoSql(StoreDirectory& stores, const QString& entidad, const QString& expr,
                    const QString& mascara);
// The value as a double, 0 when not numeric; the variable passed gets the result too.
double DobleSeguro(QVariant& valor);
// True for NULL, for text that trims to empty and for an empty value.
bool EsVacio(const QVariant& valor);
// True unless the recordset is at both EOF and BOF.
bool IsRecord(const Recordset& rs);
// The text cut to the width, or padded with blanks on the left to it.
QString Rellenar(const QString& texto, int ancho);
// "-", "(" and ")" become blanks, double blanks collapse, the text is trimmed.
QString LimpiarTexto(const QString& texto);
// Upper-cased, trimmed, cut to 20 characters, then every character that is not A-Z, Ñ, a digit,
// "/", ".", ",", "#" or "&" becomes a blank.
QString ComponerValor(const QString& texto);
// Appends the platform's directory separator unless the path already ends in one; an empty
// path gives a lone separator.
QString DirectorioNormal(const QString& ruta);
// The computer's name, at most 255 characters; empty when the platform refuses.
QString MaquinaLocal();
// True for a well-formed mail address.
bool ValidaMail(const QString& mail);
// Opens the file with the desktop's "open" action, relative to the program directory.
bool Abrir(const QString& archivo, const QString& directorioPrograma);
// base x tasa / 100, rounded to two decimals as the "00.00" formatter rounds.
double ImportePorcentual(double base, double tasa);
// Every "." and then every "," become the system separator.
QString ReemplazarSeparadorDecimal(const QString& texto);
// The system separator becomes "." (for text that goes to a number parser or to SQL).
QString PonerPuntoDecimal(const QString& texto);
// A text value as an SQL literal: between single quotes, apostrophes doubled. Every text value
// that enters a statement passes here, so that no user text can change a statement.
QString SqlTexto(const QString& valor);

} // namespace korven
