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

KorvenError ErrorDeStore(const QSqlError& e, const QString& sql) {
    bool ok = false;
    int n = e.nativeErrorCode().toInt(&ok);
    if (!ok || n == 0)
        n = KorvenError::ErrorStore;
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
        throw ErrorDeStore(q.lastError(), sql);
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
        throw ErrorDeStore(q.lastError(), sql);
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
        if (!db.transaction())
            throw ErrorDeStore(db.lastError(), QStringLiteral("BEGIN"));
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
        throw ErrorDeStore(e, QStringLiteral("COMMIT"));
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
