#include "platform/Conexion.h"

#include "platform/KorvenError.h"
#include "platform/SqlFunciones.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

namespace korven {

namespace {

// SQLite's codes of a store another connection holds (busy, locked), in their primary form.
constexpr int SqliteOcupada = 5;
constexpr int SqliteBloqueada = 6;

// A store error with the store's number and text; a busy store, a serialization failure or a
// deadlock are told in the system's own words (the engine's number stays).
KorvenError ErrorDeStore(const QSqlError& e, const QString& sql, Motor motor) {
    const QString codigo = e.nativeErrorCode().trimmed();
    bool ok = false;
    int n = codigo.toInt(&ok);
    if (!ok || n == 0)
        n = KorvenError::ErrorStore;
    if (motor == Motor::SQLite && ok &&
        ((n & 0xff) == SqliteOcupada || (n & 0xff) == SqliteBloqueada))
        return KorvenError(n,
                           QStringLiteral("La base de datos está ocupada por otra estación de "
                                          "trabajo y no se liberó a tiempo; la acción no se hizo. "
                                          "Inténtelo de nuevo en unos momentos."),
                           sql);
    if (motor == Motor::PostgreSQL &&
        (codigo == QLatin1String("40001") || codigo == QLatin1String("40P01")))
        return KorvenError(n,
                           QStringLiteral("Otra estación de trabajo modificó los mismos datos al "
                                          "mismo tiempo; la acción se deshizo. Inténtelo de "
                                          "nuevo."),
                           sql);
    QString texto = e.databaseText().isEmpty() ? e.text() : e.databaseText();
    return KorvenError(n, texto.trimmed(), sql);
}

} // namespace

Conexion::Conexion(QString nombreQt, Motor motor) : nombreQt_(std::move(nombreQt)), motor_(motor) {}

Conexion::~Conexion() {
    Cerrar();
}

bool Conexion::abierta() const {
    return QSqlDatabase::contains(nombreQt_) && QSqlDatabase::database(nombreQt_, false).isOpen();
}

void Conexion::Cerrar() {
    if (!QSqlDatabase::contains(nombreQt_))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(nombreQt_, false);
        if (db.isOpen()) {
            if (nivel_ > 0)
                db.rollback();
            db.close();
        }
    }
    nivel_ = 0;
    QSqlDatabase::removeDatabase(nombreQt_);
}

Recordset Conexion::Ejecutar_(const QString& texto, const QVariantList* parametros, int* filas) {
    const QString sql = motor_ == Motor::SQLite ? AdaptarSqlSQLite(texto) : texto;
    QSqlDatabase db = QSqlDatabase::database(nombreQt_, false);
    QSqlQuery q(db);
    q.setForwardOnly(true);
    q.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    bool ok;
    if (parametros) {
        ok = q.prepare(sql);
        if (ok) {
            for (const QVariant& p : *parametros)
                q.addBindValue(p);
            ok = q.exec();
        }
    } else {
        ok = q.exec(sql);
    }
    if (!ok) {
        if (nivel_ > 0)
            fallida_ = true;
        throw ErrorDeStore(q.lastError(), sql, motor_);
    }
    if (filas)
        *filas = q.numRowsAffected();
    if (!q.isSelect())
        return {};
    const QSqlRecord reg = q.record();
    QStringList campos;
    for (int i = 0; i < reg.count(); ++i)
        campos << reg.fieldName(i);
    std::vector<std::vector<QVariant>> datos;
    while (q.next()) {
        std::vector<QVariant> fila;
        fila.reserve(static_cast<size_t>(reg.count()));
        for (int i = 0; i < reg.count(); ++i)
            fila.push_back(q.value(i));
        datos.push_back(std::move(fila));
    }
    if (q.lastError().isValid())
        throw ErrorDeStore(q.lastError(), sql, motor_);
    return Recordset(campos, std::move(datos));
}

bool Conexion::CrearRs(Recordset& rs) {
    rs = Ejecutar_(sql_, nullptr, nullptr);
    return rs.RecordCount() > 0;
}

int Conexion::Ejecutar() {
    int n = 0;
    Ejecutar_(sql_, nullptr, &n);
    return n;
}

Recordset Conexion::Abrir(const QString& sql) {
    sql_ = sql;
    return Ejecutar_(sql, nullptr, nullptr);
}

int Conexion::Ejecutar(const QString& sql) {
    sql_ = sql;
    return Ejecutar();
}

int Conexion::Ejecutar(const QString& sql, const QVariantList& parametros) {
    sql_ = sql;
    int n = 0;
    Ejecutar_(sql, &parametros, &n);
    return n;
}

Recordset Conexion::Abrir(const QString& sql, const QVariantList& parametros) {
    sql_ = sql;
    return Ejecutar_(sql, &parametros, nullptr);
}

QVariant Conexion::Escalar(const QString& sql) {
    Recordset rs = Abrir(sql);
    if (rs.RecordCount() == 0 || rs.Campos().isEmpty())
        return {};
    return rs.Fields(0);
}

void Conexion::Comenzar() {
    if (nivel_ == 0) {
        QSqlDatabase db = QSqlDatabase::database(nombreQt_, false);
        if (motor_ == Motor::SQLite) {
            // Takes the write lock now: a second writer waits here, on the busy time-out,
            // instead of failing later when its reads turn into a write.
            QSqlQuery q(db);
            if (!q.exec(QStringLiteral("BEGIN IMMEDIATE")))
                throw ErrorDeStore(q.lastError(), QStringLiteral("BEGIN IMMEDIATE"), motor_);
        } else if (!db.transaction()) {
            throw ErrorDeStore(db.lastError(), QStringLiteral("BEGIN"), motor_);
        }
        fallida_ = false;
    }
    ++nivel_;
}

void Conexion::Confirmar() {
    if (nivel_ == 0)
        return;
    if (--nivel_ > 0)
        return;
    QSqlDatabase db = QSqlDatabase::database(nombreQt_, false);
    if (!db.commit()) {
        const QSqlError e = db.lastError();
        db.rollback();
        throw ErrorDeStore(e, QStringLiteral("COMMIT"), motor_);
    }
}

void Conexion::Deshacer() {
    if (nivel_ == 0)
        return;
    nivel_ = 0;
    QSqlDatabase db = QSqlDatabase::database(nombreQt_, false);
    db.rollback();
}

QStringList Conexion::Tablas() const {
    QStringList r;
    for (const QString& t : QSqlDatabase::database(nombreQt_, false).tables())
        r << t.toLower();
    r.sort();
    return r;
}

QStringList Conexion::Columnas(const QString& tabla) const {
    QStringList r;
    const QSqlRecord reg = QSqlDatabase::database(nombreQt_, false).record(tabla);
    for (int i = 0; i < reg.count(); ++i)
        r << reg.fieldName(i).toLower();
    return r;
}

} // namespace korven
