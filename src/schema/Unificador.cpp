#include "schema/Unificador.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"

#include <QAtomicInt>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace korven::schema {

namespace {

QAtomicInt serie;

constexpr int ErrorUnificar = 3051;

KorvenError Error(const QString& texto) {
    return KorvenError(ErrorUnificar, texto, QStringLiteral("Unificador"));
}

QString Nombre(const QString& n) {
    return QLatin1Char('"') + QString(n).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

void Ejecutar(QSqlQuery& q, const QString& sql, const QString& archivo) {
    if (!q.exec(sql))
        throw Error(QStringLiteral("No se pudo copiar %1: %2")
                        .arg(archivo, q.lastError().databaseText().trimmed()));
}

void Borrar(const QString& archivo) {
    for (const char* sufijo : {"", "-wal", "-shm", "-journal"})
        QFile::remove(archivo + QLatin1String(sufijo));
}

} // namespace

QList<QPair<QString, int>> Unificador::Unificar() {
    const QStringList anteriores = StoreDirectory::ArchivosFormatoAnterior(carpeta_);
    if (anteriores.isEmpty())
        throw Error(QStringLiteral("No hay bases del formato anterior en %1.")
                        .arg(QDir::toNativeSeparators(carpeta_)));
    if (QFileInfo::exists(destino_))
        throw Error(QStringLiteral("Ya existe %1: no se unificó nada.")
                        .arg(QDir::toNativeSeparators(destino_)));
    const QString nuevo = destino_ + QStringLiteral(".nuevo");
    Borrar(nuevo);
    QList<QPair<QString, int>> r;
    const QString nombre = QStringLiteral("korven_unificar_%1").arg(serie.fetchAndAddOrdered(1));
    try {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nombre);
        db.setDatabaseName(nuevo);
        if (!db.open())
            throw Error(QStringLiteral("No se puede crear %1: %2")
                            .arg(QDir::toNativeSeparators(nuevo), db.lastError().text()));
        QSqlQuery q(db);
        // Attached before the transaction: SQLite does not attach inside one.
        for (int i = 0; i < anteriores.size(); ++i) {
            q.prepare(QStringLiteral("ATTACH DATABASE ? AS anterior%1").arg(i));
            q.addBindValue(QDir(carpeta_).filePath(anteriores.at(i)));
            if (!q.exec())
                throw Error(QStringLiteral("No se puede abrir %1: %2")
                                .arg(anteriores.at(i), q.lastError().databaseText().trimmed()));
        }
        Ejecutar(q, QStringLiteral("BEGIN IMMEDIATE"), nuevo);
        for (int i = 0; i < anteriores.size(); ++i) {
            const QString esquema = QStringLiteral("anterior%1").arg(i);
            const QString& archivo = anteriores.at(i);
            QList<QPair<QString, QString>> objetos; // type, sql
            QStringList tablas;
            Ejecutar(q,
                     QStringLiteral("select type, name, sql from %1.sqlite_master where sql is not "
                                    "null and name not like 'sqlite\\_%' escape '\\' order by "
                                    "case type when 'table' then 0 else 1 end, rowid")
                         .arg(esquema),
                     archivo);
            while (q.next()) {
                const QString tipo = q.value(0).toString();
                if (tipo == QLatin1String("table"))
                    tablas << q.value(1).toString();
                objetos << qMakePair(tipo + QLatin1Char('\t') + q.value(1).toString(),
                                     q.value(2).toString());
            }
            for (const auto& [clave, sql] : objetos) {
                const QString tipo = clave.section(QLatin1Char('\t'), 0, 0);
                const QString objeto = clave.section(QLatin1Char('\t'), 1);
                q.prepare(QStringLiteral("select count(*) from main.sqlite_master where type = ? "
                                         "and lower(name) = lower(?)"));
                q.addBindValue(tipo);
                q.addBindValue(objeto);
                if (!q.exec() || !q.next())
                    throw Error(QStringLiteral("No se pudo copiar %1: %2")
                                    .arg(archivo, q.lastError().databaseText().trimmed()));
                const bool existe = q.value(0).toInt() > 0;
                if (tipo == QLatin1String("table")) {
                    QStringList columnas;
                    Ejecutar(q,
                             QStringLiteral("select name from %1.pragma_table_info(%2)")
                                 .arg(esquema, QLatin1Char('\'') +
                                                   QString(objeto).replace(QLatin1Char('\''),
                                                                           QStringLiteral("''")) +
                                                   QLatin1Char('\'')),
                             archivo);
                    while (q.next())
                        columnas << Nombre(q.value(0).toString());
                    if (!existe)
                        Ejecutar(q, sql, archivo);
                    const QString lista = columnas.join(QStringLiteral(", "));
                    Ejecutar(q,
                             QStringLiteral("insert into main.%1 (%2) select %2 from %3.%1")
                                 .arg(Nombre(objeto), lista, esquema),
                             archivo + QStringLiteral(", tabla ") + objeto);
                } else if (!existe) {
                    Ejecutar(q, sql, archivo);
                }
            }
            r << qMakePair(archivo, static_cast<int>(tablas.size()));
        }
        Ejecutar(q, QStringLiteral("COMMIT"), nuevo);
        q.finish();
        for (int i = 0; i < anteriores.size(); ++i)
            q.exec(QStringLiteral("DETACH DATABASE anterior%1").arg(i));
        q = QSqlQuery();
        db.close();
    } catch (...) {
        {
            QSqlDatabase db = QSqlDatabase::database(nombre, false);
            if (db.isOpen()) {
                QSqlQuery(db).exec(QStringLiteral("ROLLBACK"));
                db.close();
            }
        }
        QSqlDatabase::removeDatabase(nombre);
        Borrar(nuevo);
        throw;
    }
    QSqlDatabase::removeDatabase(nombre);
    if (!QFile::rename(nuevo, destino_)) {
        Borrar(nuevo);
        throw Error(QStringLiteral("No se pudo dar el nombre %1 a la base unificada.")
                        .arg(QDir::toNativeSeparators(destino_)));
    }
    return r;
}

} // namespace korven::schema
