#pragma once

#include <QList>
#include <QString>

namespace korven {

class AppContext;

// The transport agents (table transporte) that the packages screen looks up.
class Transportes {
public:
    struct Agente {
        QString cuit;
        QString nombre;
    };

    explicit Transportes(AppContext& ctx) : ctx_(ctx) {}

    // The agents by name.
    QList<Agente> Cargar();
    // The name of a tax number: it must pass the check digit ("Cuit Invalido" otherwise);
    // empty when there is no such agent.
    QString BuscarTrans(const QString& cuit, bool* encontrado = nullptr);
    // Asks "Confirma eliminar el Agente de Tranporte seleccionado" and deletes; true when a row
    // went.
    bool Eliminar(const QString& cuit);
    // Mode 1 adds a new agent (check digit, and "El CUIT ingresado ya existe en el sistema" for
    // one that exists); mode 2 changes the agent known as anterior. True when written.
    bool Guardar(int modo, const QString& anterior, const QString& cuit, const QString& nombre);

private:
    void Error(const class KorvenError& e);

    AppContext& ctx_;
};

} // namespace korven
