#pragma once

#include <QString>
#include <QVariant>
#include <optional>

namespace korven {

class AppContext;

// The look-ups of persons of the header: the customs broker, the client and the vendor, with
// their lists, and the generic name look-up of the persons' tables.
class BusquedaPersonas {
public:
    struct Persona {
        QString codigo;
        QString nombre;
    };
    struct Cliente {
        bool encontrado = false;
        QString nombre;
        double regalias = 0;
        double ajxvinc4102 = 0;
    };

    explicit BusquedaPersonas(AppContext& ctx) : ctx_(ctx) {}

    // The broker's name. A tax number that is not of 11 characters gives "Cuit Invalido", one
    // that is not in despadu "No se encontro el CUIT Ingresado"; both answer empty.
    QString BuscarDespachante(const QString& cuit);
    // The client's name and the two numbers the header keeps; "Falta ingresar CUIT como
    // parametro" for an empty tax number.
    Cliente BuscarCliente(const QString& cuit);
    // The vendor's name. An unknown code asks whether to add it and, on Yes, opens
    // FrmNewVendedor with the code: what that screen hands back is the answer. Nothing when no
    // vendor was found or added; an empty code gives "Falta Codigo de Vendedor para realizar
    // la busqueda.".
    std::optional<Persona> BuscarVendedor(const QString& codigo);

    // The lists: each answers the row chosen, nothing when the list was left without one.
    std::optional<Persona> ListaVendedores();
    std::optional<Persona> ListaDespachantes();
    // The clients' book in selection mode: the tax number chosen, empty when none.
    QString SeleccionarCliente(QObject* formulario);

    // The name of a code in "clientes", "despadu" or "vendedor"; empty when there is none.
    QString NombrePersona(const QString& tabla, const QString& codigo);

    // What a list screen handed back: a map with the code (or tax number) and the name, or a
    // list of the two texts.
    static std::optional<Persona> Devuelto(const QVariant& respuesta);

private:
    void Error(const class KorvenError& e, const QString& seccion);

    AppContext& ctx_;
};

} // namespace korven
