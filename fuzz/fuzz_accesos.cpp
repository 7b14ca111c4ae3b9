// DataAccessConfig.ini as it may arrive: any bytes. Every store then either opens on a SQLite
// file that exists, or is refused with the system's message; none lands silently in a store of
// memory. PostgreSQL stores are pointed at a socket folder where no server listens (and libpq's
// service files are hidden), so that nothing leaves the machine: they must be refused with the
// message that names the server. SQLite files outside the run's folder are not opened.

#include "Arnes.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace korven;
using korven::fuzz::Exigir;

int main(int argc, char** argv) {
    qputenv("PGSERVICEFILE", "/nonexistent/pg_service.conf");
    qputenv("PGSYSCONFDIR", "/nonexistent");
    qputenv("PGPASSFILE", "/nonexistent/pgpass");
    QCoreApplication app(argc, argv);
    korven::fuzz::Arnes arnes(argc, argv, "accesos",
                              {"[DEFAULT]", "[INTERNOS]", "[NCM]", "DRIVER=", "QSQLITE", "QPSQL",
                               "qsqlite", "SQLITE", "FILE=", "FOLDER=", "BUSYTIMEOUT=", "PORT=",
                               "SERVICE=", "SCHEMA=", "DATABASE=", "../", "/", "otra/base.db"});
    arnes.LimitarBytes(8 * 1024);
    return arnes.Correr([](const QByteArray& entrada) {
        QTemporaryDir dir;
        const QString carpeta = QFileInfo(dir.path()).canonicalFilePath();
        const QString ini = carpeta + QStringLiteral("/DataAccessConfig.ini");
        QByteArray datos = entrada;
        // Whatever it says, a server is looked for in a folder where none is.
        for (const QString& s :
             QStringList{QStringLiteral("DEFAULT")} + StoreDirectory::Entidades())
            datos += "\n[" + s.toUtf8() + "]\nHOST=" + carpeta.toUtf8() + "/sin-servidor\n";
        QFile f(ini);
        Exigir(f.open(QIODevice::WriteOnly) && f.write(datos) == datos.size(),
               QStringLiteral("no se puede escribir ") + ini);
        f.close();

        StoreDirectory stores;
        stores.setParametersPath(ini);
        stores.LoadParameters();
        for (const QString& e : StoreDirectory::Entidades()) {
            const QString archivo = stores.ArchivoSQLite(e);
            const bool pg = stores.motor(e) == Motor::PostgreSQL;
            Exigir(!stores.Ubicacion(e).isEmpty() || !pg,
                   QStringLiteral("%1 sin ubicación").arg(e));
            // A file outside the run's folder is left alone.
            if (!pg && !archivo.isEmpty() && !archivo.startsWith(carpeta + QLatin1Char('/')))
                continue;
            try {
                Conexion& c = stores.getDataConnectionByEntity(e);
                Exigir(!pg, QStringLiteral("%1 se conectó a un servidor").arg(e));
                c.Abrir(QStringLiteral("select count(*) from sqlite_master"));
                Exigir(!archivo.isEmpty() && QFileInfo(archivo).isFile(),
                       QStringLiteral("%1 abrió una base sin archivo ('%2')").arg(e, archivo));
            } catch (const KorvenError& x) {
                const QString esperado = pg ? QStringLiteral("No se puede conectar con el servidor")
                                            : QStringLiteral("No se puede abrir la base de datos");
                Exigir(x.descripcion().startsWith(esperado) ||
                           x.descripcion().startsWith(QStringLiteral("DataAccessConfig.ini")),
                       QStringLiteral("%1: mensaje '%2'").arg(e, x.descripcion()));
            }
        }
    });
}
