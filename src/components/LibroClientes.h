#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace korven {

class StoreDirectory;

// One client of the book, every column of clientes.
struct Cliente {
    QString cuit;
    QString nombre;
    QString domicilio;
    QString email;
    double regalias = 0;               // royalties paid abroad, percent of the value
    double ajxvinc_4102 = 0;           // value adjustment for a related seller, percent
    QString eximgan;                   // "S": exempt from the income-tax advance
    double eximganvalor = 0;           // percent of the exemption
    double eximganvalortemp = 0;       // the same under temporary sub-regimes ("TG...")
    QString ivaareduccion;             // "S": reduced additional VAT
    double ivaareduccionvalor = 0;     // percent of the reduction
    double ivaareduccionvalortemp = 0; // the same under temporary sub-regimes ("TG...")
    QString cvdi;         // "S": registered with its data validation certificate (CVDI)
    double ingbru = 0;    // gross-income tax rate
    QString ExcepLAPIAEC; // "S": excepted from the LAPI and common external tariff rules
};

// The client book: the clients in store PERSONAL. Every routine throws KorvenError when the
// store refuses; values are bound, so any text is stored as typed.
class LibroClientes {
public:
    explicit LibroClientes(StoreDirectory& stores) : stores_(stores) {}

    // Clients whose tax number begins with cuit and whose name holds nombre (either may be
    // empty), by name.
    QList<Cliente> Listar(const QString& cuit = {}, const QString& nombre = {});
    std::optional<Cliente> Leer(const QString& cuit);
    bool Existe(const QString& cuit);
    void Insertar(const Cliente& c);
    // Changes every column but the tax number, the key.
    void Actualizar(const Cliente& c);
    int Eliminar(const QString& cuit);

    // Eleven digits whose last is the check value of the first ten: weights 2 to 7 from the
    // tenth digit backwards, the sum modulo 11; a remainder of 0 or 1 is the check value
    // itself, any other gives 11 less the remainder.
    static bool CuitValido(const QString& cuit);
    // The first fault of a client, in the words the operator sees; empty when it has none.
    static QString Validar(const Cliente& c);

private:
    StoreDirectory& stores_;
};

} // namespace korven
