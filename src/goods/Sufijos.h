#pragma once

#include <QString>

namespace korven {

class AppContext;

// The suffixes of a position of the nomenclator: building and checking the suffix string of a
// goods line. Work code: it reads the NCM store and talks to the clerk only through the dialogs
// service; the list of a listed code is the screen "FrmCargaSufijos" (args "opciones": the rows,
// "seleccion": the present value; answer: the chosen row, or "###CANCELADO###").
class Sufijos {
public:
    explicit Sufijos(AppContext& ctx) : ctx_(ctx) {}

    // Builds or re-checks the suffix string of a 14-character position. modo 1 asks every code
    // again; any other value keeps the present string when the nomenclator agrees with it.
    // articulo answers the codes "AB" and "AI", descripcion the code "AA". Returns the string,
    // "SIN SUFIJOS", "##ERRORNCM##", or the empty text when the clerk gave up.
    QString VerificarSufijos(const QString& posicion, const QString& sufijos, int modo,
                             const QString& articulo, const QString& descripcion);

    // Rebuilds the suffix string of an article for a position, with no dialogue. Sets the
    // context's SufijosDeArticulo when a value was carried over by search.
    QString ActuSufijos(const QString& posicion, const QString& sufijosViejos);

    // The string with the value of the free code changed; empty when the code is not there.
    static QString Reemplazarsufijos(const QString& sufijos, const QString& codigo,
                                     const QString& valor);

    // The customer rule for engine positions (only called when CORDANO is set).
    static bool ValidaSufijoCordano(const QString& posicion, const QString& sufijos,
                                    const QString& articulo);

    // The clean-up of a typed value before it enters a suffix string.
    static QString LimpiarValor(const QString& texto);

private:
    AppContext& ctx_;
};

} // namespace korven
