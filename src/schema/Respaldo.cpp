#include "schema/Respaldo.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QStandardPaths>
#include <memory>
#include <sqlite3.h>

namespace korven::schema {

namespace {

constexpr int ErrorRespaldo = 3200;
const QString kInternos = QStringLiteral("INTERNOS");

[[noreturn]] void Fallar(const QString& texto) {
    throw KorvenError(ErrorRespaldo, texto, QStringLiteral("Respaldo"));
}

QString Nativo(const QString& ruta) {
    return QDir::toNativeSeparators(ruta);
}

// The engine's handle under a connection of the store directory.
sqlite3* Manejador(Conexion& cx) {
    const QSqlDatabase db = QSqlDatabase::database(cx.nombreQt(), false);
    const QVariant h = db.driver() ? db.driver()->handle() : QVariant();
    if (!h.isValid() || qstrcmp(h.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3* const*>(h.data());
}

// Copies a whole database onto another in one step: the source is read in one snapshot (in WAL
// mode writers go on meanwhile) and the destination written in one transaction, all or nothing.
// Answers the engine's error, or an empty text.
QString Copiar(sqlite3* origen, sqlite3* destino) {
    sqlite3_backup* b = sqlite3_backup_init(destino, "main", origen, "main");
    if (!b)
        return QString::fromUtf8(sqlite3_errmsg(destino));
    int rc = SQLITE_OK;
    for (int intentos = 0; intentos < 200; ++intentos) {
        rc = sqlite3_backup_step(b, -1);
        if (rc != SQLITE_BUSY && rc != SQLITE_LOCKED)
            break;
        sqlite3_sleep(50);
    }
    const int fin = sqlite3_backup_finish(b);
    if (rc == SQLITE_DONE && fin == SQLITE_OK)
        return {};
    return QString::fromUtf8(sqlite3_errstr(rc == SQLITE_DONE ? fin : rc));
}

// The first row of a statement, or the engine's error prefixed by "!".
QString Primero(sqlite3* db, const char* sql) {
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &s, nullptr) != SQLITE_OK)
        return QStringLiteral("!") + QString::fromUtf8(sqlite3_errmsg(db));
    QString r;
    const int rc = sqlite3_step(s);
    if (rc == SQLITE_ROW)
        r = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 0)));
    else if (rc != SQLITE_DONE)
        r = QStringLiteral("!") + QString::fromUtf8(sqlite3_errmsg(db));
    sqlite3_finalize(s);
    return r;
}

class Archivo {
public:
    Archivo(const QString& ruta, int modo) {
        if (sqlite3_open_v2(QFile::encodeName(ruta).constData(), &db_, modo, nullptr) != SQLITE_OK)
            error_ = db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : QStringLiteral("sin memoria");
    }
    ~Archivo() { sqlite3_close_v2(db_); }
    Archivo(const Archivo&) = delete;
    Archivo& operator=(const Archivo&) = delete;
    sqlite3* db() const { return error_.isEmpty() ? db_ : nullptr; }
    const QString& error() const { return error_; }

private:
    sqlite3* db_ = nullptr;
    QString error_;
};

void RespaldarSQLite(Conexion& cx, const QString& archivo) {
    const QString parcial = archivo + QStringLiteral(".parcial");
    QFile::remove(parcial);
    QString error;
    {
        Archivo destino(parcial, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        error = destino.error();
        if (error.isEmpty())
            error = Copiar(Manejador(cx), destino.db());
        // The copy is one file on its own, without the journal of the live stores.
        if (error.isEmpty())
            error = Primero(destino.db(), "PRAGMA journal_mode=DELETE").startsWith(u'!')
                        ? QString::fromUtf8(sqlite3_errmsg(destino.db()))
                        : QString();
    }
    if (error.isEmpty() && QFile::exists(archivo) && !QFile::remove(archivo))
        error = QStringLiteral("no se puede reemplazar el archivo existente");
    if (error.isEmpty() && !QFile::rename(parcial, archivo))
        error = QStringLiteral("no se puede escribir el archivo");
    if (!error.isEmpty()) {
        QFile::remove(parcial);
        Fallar(
            QStringLiteral("No se pudo escribir el respaldo %1: %2").arg(Nativo(archivo), error));
    }
}

// The copy opened for reading, once the engine finds it whole and it holds the stores' schema.
std::unique_ptr<Archivo> CopiaSQLite(const QString& archivo) {
    auto origen = std::make_unique<Archivo>(archivo, SQLITE_OPEN_READONLY);
    QString problema = origen->error();
    if (problema.isEmpty()) {
        const QString revision = Primero(origen->db(), "PRAGMA quick_check");
        if (revision != QLatin1String("ok"))
            problema = revision.startsWith(u'!') ? revision.mid(1) : revision;
        else if (Primero(origen->db(), "select count(*) from sqlite_master where type = 'table' "
                                       "and name = 'korven_version'") != QLatin1String("1"))
            problema = QStringLiteral("no tiene las tablas de Korven");
    }
    if (!problema.isEmpty())
        Fallar(QStringLiteral("El archivo %1 no es un respaldo válido: %2")
                   .arg(Nativo(archivo), problema));
    return origen;
}

// A libpq connection string with the settings of an entity; the password goes through the
// environment, never on the command line.
QString Conexion_(const QHash<QString, QString>& p) {
    QStringList partes;
    const auto agregar = [&](const char* clave, const QString& valor) {
        if (valor.isEmpty())
            return;
        QString v = valor;
        v.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
            .replace(QLatin1Char('\''), QStringLiteral("\\'"));
        partes << QLatin1String(clave) + QStringLiteral("='") + v + QLatin1Char('\'');
    };
    agregar("host", p.value(QStringLiteral("HOST")));
    agregar("port", p.value(QStringLiteral("PORT")));
    agregar("dbname", p.value(QStringLiteral("DATABASE")));
    agregar("user", p.value(QStringLiteral("USER")));
    agregar("service", p.value(QStringLiteral("SERVICE")));
    return partes.join(QLatin1Char(' '));
}

// Runs a client program of PostgreSQL; fails with its own message.
void Herramienta(const QString& nombre, const QStringList& args, const QHash<QString, QString>& p,
                 const QString& que) {
    const QString programa = QStandardPaths::findExecutable(nombre);
    if (programa.isEmpty())
        Fallar(QStringLiteral("No se encontró el programa %1: instale las herramientas cliente de "
                              "PostgreSQL o agregue su carpeta al PATH.")
                   .arg(nombre));
    QProcess proc;
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    if (!p.value(QStringLiteral("PASSWORD")).isEmpty())
        entorno.insert(QStringLiteral("PGPASSWORD"), p.value(QStringLiteral("PASSWORD")));
    proc.setProcessEnvironment(entorno);
    proc.start(programa, args);
    if (!proc.waitForFinished(-1) || proc.exitStatus() != QProcess::NormalExit ||
        proc.exitCode() != 0) {
        const QString salida = QString::fromLocal8Bit(proc.readAllStandardError()).trimmed();
        Fallar(QStringLiteral("%1 falló: %2")
                   .arg(que, salida.isEmpty() ? proc.errorString() : salida));
    }
}

} // namespace

QList<Respaldo::Destino> Respaldo::Destinos(const QString& archivo) {
    QList<Destino> r;
    QSet<QString> vistas;
    for (const QString& e : StoreDirectory::Entidades()) {
        const QString donde =
            stores_.Ubicacion(e) + QLatin1Char('|') + stores_.Parametros(e).value("SCHEMA");
        if (vistas.contains(donde))
            continue;
        vistas.insert(donde);
        r.append({e, archivo});
    }
    if (r.size() > 1)
        for (Destino& d : r)
            d.archivo = archivo + QLatin1Char('.') + StoreDirectory::NombreArchivo(d.entidad);
    return r;
}

QStringList Respaldo::Respaldar(const QString& archivo) {
    QStringList escritos;
    for (const Destino& d : Destinos(archivo)) {
        Conexion& cx = stores_.getDataConnectionByEntity(d.entidad);
        if (cx.motor() == Motor::SQLite) {
            RespaldarSQLite(cx, d.archivo);
        } else {
            const auto p = stores_.Parametros(d.entidad);
            // Written aside and put in place when whole: a failed run leaves no half file.
            const QString parcial = d.archivo + QStringLiteral(".parcial");
            QStringList args{QStringLiteral("-Fc"), QStringLiteral("--no-owner"),
                             QStringLiteral("-f"), parcial};
            if (!p.value(QStringLiteral("SCHEMA")).isEmpty())
                args << QStringLiteral("-n") << p.value(QStringLiteral("SCHEMA"));
            args << QStringLiteral("-d") << Conexion_(p);
            try {
                Herramienta(QStringLiteral("pg_dump"), args, p,
                            QStringLiteral("El respaldo de %1").arg(stores_.Ubicacion(d.entidad)));
            } catch (const KorvenError&) {
                QFile::remove(parcial);
                throw;
            }
            if ((QFile::exists(d.archivo) && !QFile::remove(d.archivo)) ||
                !QFile::rename(parcial, d.archivo))
                Fallar(QStringLiteral("No se pudo escribir el respaldo %1: no se puede reemplazar "
                                      "el archivo existente")
                           .arg(Nativo(d.archivo)));
        }
        escritos << d.archivo;
    }
    return escritos;
}

QStringList Respaldo::Restaurar(const QString& archivo) {
    const QList<Destino> destinos = Destinos(archivo);
    for (const Destino& d : destinos)
        if (!QFileInfo(d.archivo).isFile())
            Fallar(QStringLiteral("No existe el archivo de respaldo: %1").arg(Nativo(d.archivo)));
    const int abiertas = stores_.getDataConnectionByEntity(kInternos)
                             .Escalar(QStringLiteral("select count(*) from interno"))
                             .toInt();
    if (abiertas > 0)
        Fallar(QStringLiteral("No se puede restaurar mientras haya operaciones abiertas: %1 %2 en "
                              "alguna estación de trabajo. Ciérrelas y vuelva a intentarlo.")
                   .arg(abiertas)
                   .arg(abiertas == 1 ? QStringLiteral("operación abierta")
                                      : QStringLiteral("operaciones abiertas")));
    // Every copy is checked before any store is replaced.
    QList<std::shared_ptr<Archivo>> copias;
    for (const Destino& d : destinos) {
        if (stores_.getDataConnectionByEntity(d.entidad).motor() == Motor::SQLite)
            copias << CopiaSQLite(d.archivo);
        else
            Herramienta(QStringLiteral("pg_restore"), {QStringLiteral("-l"), d.archivo},
                        stores_.Parametros(d.entidad),
                        QStringLiteral("La lectura del respaldo %1").arg(Nativo(d.archivo)));
    }
    QStringList leidos;
    for (const Destino& d : destinos) {
        Conexion& cx = stores_.getDataConnectionByEntity(d.entidad);
        if (cx.motor() == Motor::SQLite) {
            const QString error = Copiar(copias.takeFirst()->db(), Manejador(cx));
            if (!error.isEmpty())
                Fallar(QStringLiteral("No se pudo restaurar %1: %2. La base queda como estaba.")
                           .arg(Nativo(d.archivo), error));
        } else {
            Herramienta(QStringLiteral("pg_restore"),
                        {QStringLiteral("--clean"), QStringLiteral("--if-exists"),
                         QStringLiteral("--single-transaction"), QStringLiteral("--no-owner"),
                         QStringLiteral("-d"), Conexion_(stores_.Parametros(d.entidad)), d.archivo},
                        stores_.Parametros(d.entidad),
                        QStringLiteral("La restauración de %1").arg(Nativo(d.archivo)));
        }
        leidos << d.archivo;
    }
    return leidos;
}

} // namespace korven::schema
