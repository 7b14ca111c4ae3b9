#pragma once

#include "platform/Conexion.h"

#include <QObject>
#include <memory>

namespace korven {

class StoreDirectory;

// QueryDesk.Main: a connection opened from a connection string and kept for the life of the
// process. The string is an entity name of the store directory ("INSUMOS"), or
// "Provider=...;Data Source=<path>" naming a store file whose base name is an entity's
// ("...\insumos.mdb" reaches INSUMOS).
class QueryDesk : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString CadenaConexion READ CadenaConexion WRITE setCadenaConexion)
    Q_PROPERTY(bool EstadoConexion READ EstadoConexion)
public:
    explicit QueryDesk(StoreDirectory& stores, QObject* parent = nullptr);

    QString CadenaConexion() const { return cadena_; }
    void setCadenaConexion(const QString& c) { cadena_ = c; }
    bool EstadoConexion() const { return !entidad_.isEmpty(); }
    // Throws KorvenError when the string names no store.
    Q_INVOKABLE void Conectar();

    void setSql(const QString& sql);
    bool CrearRs(Recordset& rs);
    int Ejecutar();
    Conexion& conexion();

    // The entity a connection string names, or empty.
    static QString EntidadDeCadena(const QString& cadena);

private:
    StoreDirectory& stores_;
    QString cadena_;
    // The entity reached; its connection is asked of the store directory at each use, so that
    // closing every connection (as the hub does on leaving) leaves nothing dangling.
    QString entidad_;
};

} // namespace korven
