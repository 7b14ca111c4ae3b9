#pragma once

#include "platform/Conexion.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <functional>
#include <memory>

class QSqlDatabase;

namespace korven {

// Maps each entity of the system (INTERNOS, SYSTABLAS, PERSONAL, NCM, USUARIO, ESTADO,
// CATALOGOS, INSUMOS) to a connection, as configured by DataAccessConfig.ini:
//
//   [DEFAULT]            ; applies to every entity without a section of its own
//   DRIVER=QSQLITE       ; or QPSQL
//   FOLDER=db            ; SQLite: folder of korven.db, relative to the ini's folder
//   [INTERNOS]
//   DRIVER=QPSQL
//   HOST=server  PORT=5432  DATABASE=korven  USER=clerk  PASSWORD=  SERVICE=  SCHEMA=
//   FILE=...             ; SQLite: the file, relative to the ini's folder (in [DEFAULT]: of
//                        ; every entity)
//
// With no file every entity lives in one SQLite file, db/korven.db beside the ini, so that one
// connection and one transaction span every table an action writes. Entities that name the same
// database share one connection; a configuration that splits them over several files or
// databases gives up atomicity across them, and a transaction refuses to span two connections.
class StoreDirectory {
public:
    static const QStringList& Entidades();
    // The store file name of an entity ("internos" for INTERNOS, "estados" for ESTADO, ...).
    static QString NombreArchivo(const QString& entidad);
    // The file of the embedded stores ("korven.db").
    static QString ArchivoUnico();
    // The files of the former layout, one per store (internos.db, ...), found in a folder.
    static QStringList ArchivosFormatoAnterior(const QString& carpeta);

    StoreDirectory();
    ~StoreDirectory();
    StoreDirectory(const StoreDirectory&) = delete;
    StoreDirectory& operator=(const StoreDirectory&) = delete;

    void setParametersPath(const QString& ruta) { ruta_ = ruta; }
    const QString& parametersPath() const { return ruta_; }
    // Reads DataAccessConfig.ini (or takes the defaults when there is none). Connections are
    // opened at their first use.
    void LoadParameters();

    // The connection of the entity; throws KorvenError when it cannot be opened.
    Conexion& getDataConnectionByEntity(const QString& entidad);
    // The decimal separator SQL numbers take for this entity's engine (".").
    QString getDecimalSeparatorbyEntity(const QString& entidad);
    // The date as a ready SQL literal for this entity ('2026-11-22').
    QString getDateFormatbyEntity(const QString& entidad, const QDate& fecha);
    // The engine's rounding expression around "999.999": round(CAST(999.999 AS numeric), d).
    QString getNumberFormatbyEntity(const QString& entidad, const QString& mascara, int decimales);
    // A tag naming the engine of INTERNOS: "SQLITE" or "POSTGRESQL".
    QString getDataConnectionTAG();
    Motor motor(const QString& entidad);
    // True when the entities are configured on one connection (one transaction can span them).
    bool UnaConexion(const QStringList& entidades) const;
    void CloseAllDataConnection();

    // Points a PostgreSQL connection at the server, role and options of an entity's settings
    // and at the database named.
    static void PrepararPostgreSQL(QSqlDatabase& db, const QHash<QString, QString>& parametros,
                                   const QString& baseDatos);
    // Settings of one entity as read from the ini (upper-case keys), for tools and messages.
    QHash<QString, QString> Parametros(const QString& entidad) const;
    // The SQLite file of an entity (empty on PostgreSQL).
    QString ArchivoSQLite(const QString& entidad) const;
    // Where the stores of an entity are, for the clerk: the SQLite file, or the PostgreSQL
    // server and database ("servidor:5432/korven").
    QString Ubicacion(const QString& entidad) const;

private:
    struct Destino;
    QString clave(const QString& entidad) const;
    std::unique_ptr<Conexion> Abrir(const QString& entidad);

    QString ruta_;
    QHash<QString, QHash<QString, QString>> parametros_;
    QHash<QString, std::shared_ptr<Conexion>> porDestino_; // destination key -> connection
    QHash<QString, std::shared_ptr<Conexion>> porEntidad_;
    int serie_;
};

// One user action, one transaction: begins on the connection of the entities named and, at the
// end of the block, commits; when the block is left by an exception it rolls it back. Entities
// configured on different connections cannot share one transaction: the constructor refuses
// them (KorvenError TransaccionDividida) before anything is written.
class Transaccion {
public:
    Transaccion(StoreDirectory& stores, const QStringList& entidades);
    ~Transaccion();
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;

    void Confirmar();
    void Deshacer();

private:
    Conexion* conexion_ = nullptr;
    int excepciones_;
    bool cerrada_ = false;
};

// The store work of one user action, in its transaction, done again when it crosses another
// workstation's writes. cuerpo runs inside a Transaccion on the entities named and the commit
// follows it; when the store refuses a statement or the commit because of another workstation
// (KorvenError::conflicto: busy store, serialization failure, deadlock) the transaction is rolled
// back and, after a short random pause, cuerpo runs again from the start, up to
// IntentosPorConflicto times in all. Then the last error goes to the caller, which tells it as
// any other. Other errors go to the caller at once, rolled back.
//
// cuerpo must do store work only (or put back at its start what a former attempt changed in
// memory): no dialogs, no settings. A caller that cannot undo what an attempt did returns false
// from repetible, and the conflict goes to it without a new attempt. Called inside a
// transaction already open, the conflict goes to the outer action, whose transaction is gone.
void EnTransaccion(StoreDirectory& stores, const QStringList& entidades,
                   const std::function<void(Transaccion&)>& cuerpo,
                   const std::function<bool()>& repetible = {});
constexpr int IntentosPorConflicto = 4;

} // namespace korven
