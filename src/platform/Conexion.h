#pragma once

#include "platform/Recordset.h"

#include <QString>
#include <QVariantList>

namespace korven {

enum class Motor { SQLite, PostgreSQL };

// A connection to one store, as the store directory hands it out. The system's one way of
// reading and writing: set Sql, then CrearRs (read) or Ejecutar (write). Errors of the store
// raise KorvenError with the store's number and text.
class Conexion {
public:
    Conexion(QString nombreQt, Motor motor);
    ~Conexion();
    Conexion(const Conexion&) = delete;
    Conexion& operator=(const Conexion&) = delete;

    void setSql(const QString& sql) { sql_ = sql; }
    const QString& sql() const { return sql_; }

    // Opens the current Sql into rs; true when it has records.
    bool CrearRs(Recordset& rs);
    // Runs the current Sql; the number of rows affected.
    int Ejecutar();

    // Convenience forms that set Sql first.
    Recordset Abrir(const QString& sql);
    int Ejecutar(const QString& sql);
    // A statement with bound parameters (positional "?").
    int Ejecutar(const QString& sql, const QVariantList& parametros);
    Recordset Abrir(const QString& sql, const QVariantList& parametros);
    // The first column of the first row, or an invalid QVariant.
    QVariant Escalar(const QString& sql);

    Motor motor() const { return motor_; }
    const QString& nombreQt() const { return nombreQt_; }
    bool abierta() const;
    void Cerrar();

    // Transactions: nested calls share the outer transaction.
    void Comenzar();
    void Confirmar();
    void Deshacer();
    bool enTransaccion() const { return nivel_ > 0; }

    // Tables and columns as the engine reports them (lower-case names).
    QStringList Tablas() const;
    QStringList Columnas(const QString& tabla) const;

private:
    Recordset Ejecutar_(const QString& sql, const QVariantList* parametros, int* filas);

    QString nombreQt_;
    Motor motor_;
    QString sql_;
    int nivel_ = 0;
    bool fallida_ = false;
};

} // namespace korven
