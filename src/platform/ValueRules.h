#pragma once

#include <QString>
#include <QVariant>

namespace korven {

class Recordset;
class StoreDirectory;

// Value rules shared by every screen and routine. There are two readings of a number:
// - a value of a store (a field, a count, a text column) is read with the store's decimal point,
//   ".", and never with the locale's: EsNumero, EsNumerico;
// - a text typed by the clerk follows the system decimal separator: NumeroTecleado,
//   EsNumeroTecleado. Under "," the text "1.234,56" is 1234.56 ("." groups thousands); under "."
//   "1,234.56" is 1234.56. The other mark is taken only as a grouping of thousands before the
//   decimals ("1.500" under "," is 1500); anywhere else ("1,234.56" or "1.5" under ",") the text
//   is no number, and the field refuses it with its own message rather than guess.

// The value as text; NULL gives the empty text.
QString EsNull(const QVariant& valor);
// A value of a store as a number; NULL, empty or a text that is no number gives 0. Text is read
// with "." as the decimal point and no grouping, whatever the locale.
double EsNumero(const QVariant& valor);
// True when a value of a store reads as a number (a number, or text such as "-1.5").
bool EsNumerico(const QVariant& valor);
// Text typed by the clerk as a number, in the system decimal separator; false when it is no
// number.
bool LeerNumeroTecleado(const QString& texto, double* valor);
// True when the typed text is a number.
bool EsNumeroTecleado(const QString& texto);
// The typed text as a number; 0 when it is no number.
double NumeroTecleado(const QString& texto);
// Text for SQL with the separator the store needs: "0" when not a number. Numbers are written
// as they are; text is read as typed by the clerk (so "1.234,5" under "," gives "1234.5").
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
// The text without control characters (NUL and the rest below a blank, DEL and the C1 range)
// and without half characters (a surrogate out of its pair); tab, carriage return and line feed
// stay. What enters a field of a data form passes here.
QString SinControles(const QString& texto);
// A text value as an SQL literal: between single quotes, apostrophes doubled. Every text value
// that enters a statement passes here, so that no user text can change a statement.
QString SqlTexto(const QString& valor);

} // namespace korven
