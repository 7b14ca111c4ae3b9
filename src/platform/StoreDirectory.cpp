#include "platform/StoreDirectory.h"

#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/SqlFunciones.h"

#include <QAtomicInt>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <algorithm>
#include <exception>

namespace korven {

namespace {

QAtomicInt serieGlobal; // distinct Qt connection names for every directory in the process

const QHash<QString, QString>& Archivos() {
    static const QHash<QString, QString> a = {
        {QStringLiteral("INTERNOS"), QStringLiteral("internos")},
        {QStringLiteral("SYSTABLAS"), QStringLiteral("systablas")},
        {QStringLiteral("PERSONAL"), QStringLiteral("personal")},
        {QStringLiteral("NCM"), QStringLiteral("ncm")},
        {QStringLiteral("USUARIO"), QStringLiteral("usuario")},
        {QStringLiteral("ESTADO"), QStringLiteral("estados")},
        {QStringLiteral("CATALOGOS"), QStringLiteral("catalogos")},
        {QStringLiteral("INSUMOS"), QStringLiteral("insumos")},
    };
    return a;
}

} // namespace

const QStringList& StoreDirectory::Entidades() {
    static const QStringList e = {QStringLiteral("INTERNOS"),  QStringLiteral("SYSTABLAS"),
                                  QStringLiteral("PERSONAL"),  QStringLiteral("NCM"),
                                  QStringLiteral("USUARIO"),   QStringLiteral("ESTADO"),
                                  QStringLiteral("CATALOGOS"), QStringLiteral("INSUMOS")};
    return e;
}

QString StoreDirectory::NombreArchivo(const QString& entidad) {
    return Archivos().value(entidad.toUpper());
}

QString StoreDirectory::ArchivoUnico() {
    return QStringLiteral("korven.db");
}

QStringList StoreDirectory::ArchivosFormatoAnterior(const QString& carpeta) {
    QStringList r;
    for (const QString& e : Entidades()) {
        const QString archivo = NombreArchivo(e) + QStringLiteral(".db");
        if (QFileInfo(QDir(carpeta).filePath(archivo)).isFile())
            r << archivo;
    }
    return r;
}

StoreDirectory::StoreDirectory() : serie_(serieGlobal.fetchAndAddOrdered(1)) {}

StoreDirectory::~StoreDirectory() {
    CloseAllDataConnection();
}

void StoreDirectory::LoadParameters() {
    CloseAllDataConnection();
    parametros_ =
        ruta_.isEmpty() ? QHash<QString, QHash<QString, QString>>{} : IniFile::LeerTodo(ruta_);
}

QHash<QString, QString> StoreDirectory::Parametros(const QString& entidad) const {
    QHash<QString, QString> p = parametros_.value(QStringLiteral("DEFAULT"));
    const QHash<QString, QString> propios = parametros_.value(entidad.toUpper());
    for (auto i = propios.cbegin(); i != propios.cend(); ++i)
        p.insert(i.key(), i.value());
    if (p.value(QStringLiteral("DRIVER")).isEmpty())
        p.insert(QStringLiteral("DRIVER"), QStringLiteral("QSQLITE"));
    return p;
}

Motor StoreDirectory::motor(const QString& entidad) {
    return Parametros(entidad).value(QStringLiteral("DRIVER")).toUpper() == QStringLiteral("QPSQL")
               ? Motor::PostgreSQL
               : Motor::SQLite;
}

QString StoreDirectory::ArchivoSQLite(const QString& entidad) const {
    const QHash<QString, QString> p = Parametros(entidad);
    if (p.value(QStringLiteral("DRIVER")).toUpper() != QStringLiteral("QSQLITE"))
        return {};
    const QString base = ruta_.isEmpty() ? QDir::currentPath() : QFileInfo(ruta_).absolutePath();
    const QString archivo = p.value(QStringLiteral("FILE"));
    if (!archivo.isEmpty())
        return QDir::cleanPath(QDir(base).absoluteFilePath(archivo));
    QString carpeta = p.value(QStringLiteral("FOLDER"), QStringLiteral("db"));
    carpeta = QDir(base).absoluteFilePath(carpeta);
    return QDir::cleanPath(QDir(carpeta).filePath(ArchivoUnico()));
}

QString StoreDirectory::Ubicacion(const QString& entidad) const {
    const QHash<QString, QString> p = Parametros(entidad);
    if (p.value(QStringLiteral("DRIVER")).toUpper() != QStringLiteral("QPSQL"))
        return QDir::toNativeSeparators(ArchivoSQLite(entidad));
    QString servidor = p.value(QStringLiteral("HOST"));
    if (servidor.isEmpty() && !p.value(QStringLiteral("SERVICE")).isEmpty())
        return QStringLiteral("PostgreSQL, servicio %1").arg(p.value(QStringLiteral("SERVICE")));
    if (servidor.isEmpty())
        servidor = QStringLiteral("localhost");
    const QString puerto = p.value(QStringLiteral("PORT"), QStringLiteral("5432"));
    const QString donde = servidor.startsWith(QLatin1Char('/'))
                              ? QStringLiteral("socket %1 (puerto %2)").arg(servidor, puerto)
                              : QStringLiteral("%1:%2").arg(servidor, puerto);
    return QStringLiteral("PostgreSQL %1, base %2").arg(donde, p.value(QStringLiteral("DATABASE")));
}

QString StoreDirectory::clave(const QString& entidad) const {
    const QHash<QString, QString> p = Parametros(entidad);
    if (p.value(QStringLiteral("DRIVER")).toUpper() == QStringLiteral("QPSQL")) {
        QStringList partes{QStringLiteral("PG")};
        for (const char* k : {"HOST", "PORT", "DATABASE", "USER", "SERVICE", "SCHEMA"})
            partes << p.value(QString::fromLatin1(k));
        return partes.join(QLatin1Char('|'));
    }
    return QStringLiteral("SQLITE|") + ArchivoSQLite(entidad);
}

void StoreDirectory::PrepararPostgreSQL(QSqlDatabase& db, const QHash<QString, QString>& p,
                                        const QString& baseDatos) {
    db.setHostName(p.value(QStringLiteral("HOST")));
    if (!p.value(QStringLiteral("PORT")).isEmpty())
        db.setPort(p.value(QStringLiteral("PORT")).toInt());
    db.setDatabaseName(baseDatos);
    db.setUserName(p.value(QStringLiteral("USER")));
    db.setPassword(p.value(QStringLiteral("PASSWORD")));
    QStringList opciones;
    if (!p.value(QStringLiteral("SERVICE")).isEmpty())
        opciones << QStringLiteral("service=") + p.value(QStringLiteral("SERVICE"));
    opciones << QStringLiteral("connect_timeout=10");
    db.setConnectOptions(opciones.join(QLatin1Char(';')));
}

std::unique_ptr<Conexion> StoreDirectory::Abrir(const QString& entidad) {
    const QHash<QString, QString> p = Parametros(entidad);
    const QString driver = p.value(QStringLiteral("DRIVER")).toUpper();
    const bool pg = driver == QStringLiteral("QPSQL");
    // An engine the system does not know is refused: opened as SQLite without a file it would
    // be a store in memory, lost at the end of the session.
    if (!pg && driver != QStringLiteral("QSQLITE"))
        throw KorvenError(3044,
                          QStringLiteral("DataAccessConfig.ini indica para %1 el motor %2, que no "
                                         "se conoce: use QSQLITE o QPSQL.")
                              .arg(entidad, p.value(QStringLiteral("DRIVER"))),
                          QStringLiteral("StoreDirectory"));
    const QString nombre =
        QStringLiteral("korven_%1_%2_%3").arg(serie_).arg(entidad).arg(porDestino_.size());
    auto cx = std::make_unique<Conexion>(nombre, pg ? Motor::PostgreSQL : Motor::SQLite);
    QSqlDatabase db =
        QSqlDatabase::addDatabase(pg ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE"), nombre);
    if (pg) {
        PrepararPostgreSQL(db, p, p.value(QStringLiteral("DATABASE")));
    } else {
        const QString archivo = ArchivoSQLite(entidad);
        // A control character would cut the name short on its way to SQLite (a NUL ends it):
        // the store would be another file than the one the clerk is shown.
        if (std::any_of(archivo.cbegin(), archivo.cend(),
                        [](QChar c) { return c.unicode() < 0x20; }))
            throw KorvenError(
                3044,
                QStringLiteral("DataAccessConfig.ini indica para %1 un archivo con "
                               "caracteres de control: %2")
                    .arg(entidad, QString(archivo).replace(QChar(0), QLatin1Char('?'))),
                QStringLiteral("StoreDirectory"));
        const QString carpeta = QFileInfo(archivo).absolutePath();
        if (!QFileInfo::exists(archivo) && QFileInfo(archivo).fileName() == ArchivoUnico()) {
            const QStringList anteriores = ArchivosFormatoAnterior(carpeta);
            if (!anteriores.isEmpty())
                throw KorvenError(
                    KorvenError::FormatoAnterior,
                    QStringLiteral("La carpeta %1 tiene las bases en el formato anterior, un "
                                   "archivo por base (%2), y no tiene %3. Únalas en un solo "
                                   "archivo con: korven-admin unificar")
                        .arg(QDir::toNativeSeparators(carpeta),
                             anteriores.join(QStringLiteral(", ")), ArchivoUnico()),
                    QStringLiteral("StoreDirectory"));
        }
        QDir().mkpath(carpeta);
        db.setDatabaseName(archivo);
        // A busy store is waited for a few seconds (BUSYTIMEOUT, in milliseconds) before the
        // action is refused.
        bool ok = false;
        int espera = p.value(QStringLiteral("BUSYTIMEOUT")).toInt(&ok);
        if (!ok || espera < 0)
            espera = 5000;
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(espera));
    }
    const auto rechazar = [&](const QSqlError& e) {
        db.close();
        db = QSqlDatabase();
        cx.reset();
        const int numero = e.nativeErrorCode().toInt() ? e.nativeErrorCode().toInt() : 3044;
        const QString detalle =
            (e.databaseText().isEmpty() ? e.text() : e.databaseText()).simplified();
        if (pg)
            return KorvenError(
                numero,
                QStringLiteral("No se puede conectar con el servidor de la base de "
                               "datos de %1 (%2, usuario %3). Verifique que el "
                               "servidor esté en marcha y que DataAccessConfig.ini "
                               "lo indique bien. Detalle: %4")
                    .arg(entidad, Ubicacion(entidad), p.value(QStringLiteral("USER")), detalle),
                QStringLiteral("StoreDirectory"));
        return KorvenError(numero,
                           QStringLiteral("No se puede abrir la base de datos de %1 (%2): %3")
                               .arg(entidad, Ubicacion(entidad), detalle),
                           QStringLiteral("StoreDirectory"));
    };
    if (!db.open())
        throw rechazar(db.lastError());
    QSqlQuery q(db);
    if (pg) {
        const QString esquema = p.value(QStringLiteral("SCHEMA"));
        if (!esquema.isEmpty())
            q.exec(QStringLiteral("SET search_path TO \"%1\"")
                       .arg(QString(esquema).replace(QLatin1Char('"'), QString())));
        q.exec(QStringLiteral("SET client_min_messages TO warning"));
        AsegurarFuncionesPostgreSQL(db);
    } else {
        // SQLite opens any file: one that is no database is refused here, not at the first
        // statement of some action.
        if (!q.exec(QStringLiteral("select count(*) from sqlite_master"))) {
            const QSqlError e = q.lastError();
            q = QSqlQuery();
            throw rechazar(e);
        }
        q.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
        q.exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
        RegistrarFuncionesSQLite(db);
    }
    return cx;
}

bool StoreDirectory::UnaConexion(const QStringList& entidades) const {
    for (const QString& e : entidades)
        if (clave(e.toUpper()) != clave(entidades.first().toUpper()))
            return false;
    return true;
}

Conexion& StoreDirectory::getDataConnectionByEntity(const QString& entidad) {
    const QString e = entidad.toUpper();
    if (!Archivos().contains(e))
        throw KorvenError(3265, QStringLiteral("Entidad desconocida: %1").arg(entidad),
                          QStringLiteral("StoreDirectory"));
    if (auto c = porEntidad_.value(e))
        return *c;
    const QString k = clave(e);
    std::shared_ptr<Conexion> c = porDestino_.value(k);
    if (!c) {
        c = std::shared_ptr<Conexion>(Abrir(e));
        porDestino_.insert(k, c);
    }
    porEntidad_.insert(e, c);
    return *c;
}

QString StoreDirectory::getDecimalSeparatorbyEntity(const QString&) {
    return QStringLiteral(".");
}

QString StoreDirectory::getDateFormatbyEntity(const QString&, const QDate& fecha) {
    return QLatin1Char('\'') + fecha.toString(QStringLiteral("yyyy-MM-dd")) + QLatin1Char('\'');
}

QString StoreDirectory::getNumberFormatbyEntity(const QString&, const QString&, int decimales) {
    return QStringLiteral("round(CAST(999.999 AS numeric), %1)").arg(decimales);
}

QString StoreDirectory::getDataConnectionTAG() {
    return motor(QStringLiteral("INTERNOS")) == Motor::PostgreSQL ? QStringLiteral("POSTGRESQL")
                                                                  : QStringLiteral("SQLITE");
}

void StoreDirectory::CloseAllDataConnection() {
    porEntidad_.clear();
    porDestino_.clear(); // the last owner closes each connection
}

Transaccion::Transaccion(StoreDirectory& stores, const QStringList& entidades)
    : excepciones_(std::uncaught_exceptions()) {
    QString primera;
    for (const QString& e : entidades) {
        Conexion* c = &stores.getDataConnectionByEntity(e);
        if (!conexion_) {
            conexion_ = c;
            primera = e.toUpper();
        } else if (c != conexion_) {
            cerrada_ = true;
            throw KorvenError(
                KorvenError::TransaccionDividida,
                QStringLiteral("Esta acción escribe en %1 y en %2, que DataAccessConfig.ini "
                               "ubica en bases de datos distintas; no puede hacerse en una sola "
                               "transacción. Ubique todas las bases en un mismo archivo o en "
                               "una misma base de datos.")
                    .arg(primera, e.toUpper()),
                QStringLiteral("Transaccion"));
        }
    }
    if (conexion_)
        conexion_->Comenzar();
    else
        cerrada_ = true;
}

Transaccion::~Transaccion() {
    if (cerrada_)
        return;
    if (std::uncaught_exceptions() > excepciones_) {
        Deshacer();
        return;
    }
    try {
        Confirmar();
    } catch (const std::exception& e) {
        qWarning("No se pudo confirmar la transacción: %s", e.what());
    }
}

void Transaccion::Confirmar() {
    if (cerrada_)
        return;
    cerrada_ = true;
    conexion_->Confirmar();
}

void Transaccion::Deshacer() {
    if (cerrada_)
        return;
    cerrada_ = true;
    conexion_->Deshacer();
}

void EnTransaccion(StoreDirectory& stores, const QStringList& entidades,
                   const std::function<void(Transaccion&)>& cuerpo,
                   const std::function<bool()>& repetible) {
    const bool anidada =
        !entidades.isEmpty() && stores.getDataConnectionByEntity(entidades.first()).enTransaccion();
    for (int intento = 1;; ++intento) {
        try {
            Transaccion t(stores, entidades);
            cuerpo(t);
            t.Confirmar();
            return;
        } catch (const KorvenError& e) {
            if (!e.conflicto() || anidada || intento >= IntentosPorConflicto ||
                (repetible && !repetible()))
                throw;
        }
        // The other workstation ends its action meanwhile; the random part keeps two that
        // crossed from crossing again.
        const int base = 25 << (intento - 1);
        QThread::msleep(
            static_cast<unsigned long>(base + QRandomGenerator::global()->bounded(base * 2)));
    }
}

} // namespace korven
