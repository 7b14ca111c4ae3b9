#include "platform/Conexion.h"

#include "platform/KorvenError.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/SqlFunciones.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <unordered_map>

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
                           sql)
            .MarcarConflicto();
    if (motor == Motor::PostgreSQL &&
        (codigo == QLatin1String("40001") || codigo == QLatin1String("40P01")))
        return KorvenError(n,
                           QStringLiteral("Otra estación de trabajo modificó los mismos datos al "
                                          "mismo tiempo; la acción se deshizo. Inténtelo de "
                                          "nuevo."),
                           sql)
            .MarcarConflicto();
    QString texto = e.databaseText().isEmpty() ? e.text() : e.databaseText();
    return KorvenError(n, texto.trimmed(), sql);
}

// Scopes of reused statements alive, and which scope: a connection's statements belong to one.
int reutilizando = 0;
unsigned generacionActual = 0;

// Reads the rows of an executed query into a recordset (empty for a statement that is no
// select).
Recordset Leer(QSqlQuery& q, const QString& sql, Motor motor) {
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
        throw ErrorDeStore(q.lastError(), sql, motor);
    return Recordset(campos, std::move(datos));
}

// The statements a connection keeps for the present scope.
struct Sentencias {
    struct Preparada {
        QString sql; // as adapted to the engine
        QSqlQuery q;
        qsizetype parametros;
    };
    unsigned generacion = 0;
    std::unordered_map<QString, Preparada> porTexto;
};

std::unordered_map<const Conexion*, Sentencias>& Guardadas() {
    // Never destroyed: connections may outlive the statics of this file.
    static auto* g = new std::unordered_map<const Conexion*, Sentencias>;
    return *g;
}

void Olvidar(const Conexion* c) {
    auto& g = Guardadas();
    if (!g.empty())
        g.erase(c);
}

} // namespace

SentenciasPreparadas::SentenciasPreparadas() {
    if (reutilizando++ == 0)
        ++generacionActual;
}

SentenciasPreparadas::~SentenciasPreparadas() {
    if (--reutilizando == 0)
        ++generacionActual;
}

Conexion::Conexion(QString nombreQt, Motor motor) : nombreQt_(std::move(nombreQt)), motor_(motor) {}

Conexion::~Conexion() {
    Cerrar();
}

bool Conexion::abierta() const {
    return QSqlDatabase::contains(nombreQt_) && QSqlDatabase::database(nombreQt_, false).isOpen();
}

void Conexion::Cerrar() {
    Olvidar(this);
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
    // Statements of a finished scope are let go before anything else runs.
    if (reutilizando == 0 && !Guardadas().empty())
        Guardadas().clear();
    if (parametros && reutilizando > 0) {
        Sentencias& sentencias = Guardadas()[this];
        if (sentencias.generacion != generacionActual) {
            sentencias.porTexto.clear();
            sentencias.generacion = generacionActual;
        }
        auto it = sentencias.porTexto.find(texto);
        if (it == sentencias.porTexto.end() || it->second.parametros != parametros->size()) {
            if (it != sentencias.porTexto.end())
                sentencias.porTexto.erase(it);
            Sentencias::Preparada p{motor_ == Motor::SQLite ? AdaptarSqlSQLite(texto) : texto,
                                    QSqlQuery(QSqlDatabase::database(nombreQt_, false)),
                                    parametros->size()};
            p.q.setForwardOnly(true);
            p.q.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
            if (!p.q.prepare(p.sql)) {
                if (nivel_ > 0)
                    fallida_ = true;
                throw ErrorDeStore(p.q.lastError(), p.sql, motor_);
            }
            it = sentencias.porTexto.emplace(texto, std::move(p)).first;
        }
        QSqlQuery& q = it->second.q;
        const QString sql = it->second.sql;
        for (qsizetype i = 0; i < parametros->size(); ++i)
            q.bindValue(static_cast<int>(i), parametros->at(i));
        if (!q.exec()) {
            if (nivel_ > 0)
                fallida_ = true;
            // The statement stays prepared for the next values.
            const KorvenError e = ErrorDeStore(q.lastError(), sql, motor_);
            q.finish();
            throw e;
        }
        if (filas)
            *filas = q.numRowsAffected();
        try {
            Recordset rs = Leer(q, sql, motor_);
            q.finish();
            return rs;
        } catch (...) {
            q.finish();
            throw;
        }
    }
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
    return Leer(q, sql, motor_);
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
