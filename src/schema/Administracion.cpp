#include "schema/Administracion.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/DatosReferencia.h"
#include "schema/DialectoEsquema.h"
#include "schema/Esquema.h"
#include "schema/ImportadorCsv.h"
#include "schema/LectorEsquema.h"
#include "schema/Migrador.h"
#include "schema/OperacionesDemo.h"
#include "schema/Respaldo.h"
#include "schema/Unificador.h"

#include <QAtomicInt>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace korven::schema {

namespace {

// A value as the listing shows it.
QString TextoValor(const QVariant& v) {
    if (v.isNull())
        return {};
    switch (v.metaType().id()) {
    case QMetaType::Double: {
        QString t = QString::number(v.toDouble(), 'f', 6);
        while (t.endsWith(QLatin1Char('0')))
            t.chop(1);
        if (t.endsWith(QLatin1Char('.')))
            t.chop(1);
        return t == QLatin1String("-0") ? QStringLiteral("0") : t;
    }
    case QMetaType::QDate:
        return v.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return v.toDateTime().toString(Qt::ISODate);
    default:
        return v.toString();
    }
}

constexpr int AnchoMaximo = 60;

QAtomicInt serieMantenimiento;

// Makes the configured PostgreSQL database of an entity when it is missing: through the server's
// maintenance database "postgres", when the role may create databases. Answers an empty text
// when the database is there (or was made, *creada set), else what the administrator must do.
// When the server cannot be reached, nothing is said here: opening the stores reports it.
QString CrearBaseSiFalta(const QHash<QString, QString>& p, bool* creada) {
    *creada = false;
    const QString base = p.value(QStringLiteral("DATABASE"));
    const QString usuario = p.value(QStringLiteral("USER"));
    if (base.isEmpty())
        return {};
    const QString nombre =
        QStringLiteral("korven_mantenimiento_%1").arg(serieMantenimiento.fetchAndAddOrdered(1));
    QString r;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), nombre);
        StoreDirectory::PrepararPostgreSQL(db, p, QStringLiteral("postgres"));
        if (db.open()) {
            QSqlQuery q(db);
            q.prepare(QStringLiteral("select 1 from pg_database where datname = ?"));
            q.addBindValue(base);
            if (q.exec() && !q.next()) {
                const QString identificador =
                    QLatin1Char('"') +
                    QString(base).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                    QLatin1Char('"');
                if (q.exec(QStringLiteral("CREATE DATABASE ") + identificador)) {
                    *creada = true;
                } else {
                    const QString rol = usuario.isEmpty() ? QStringLiteral("korven") : usuario;
                    r = QStringLiteral("La base de datos %1 no existe y el usuario %2 no puede "
                                       "crearla. Créela en el servidor, como usuario postgres, "
                                       "con: createdb -O %2 %1")
                            .arg(base, rol);
                }
            }
            q = QSqlQuery();
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(nombre);
    return r;
}

} // namespace

QString Administracion::TextoAyuda() {
    return QStringLiteral(
        "Uso: korven-admin <orden> [opciones]\n"
        "\n"
        "Órdenes:\n"
        "  crear       Crea las tablas de todas las bases (o las actualiza) y carga los datos\n"
        "              de referencia en las tablas vacías.\n"
        "              --demo        carga además las operaciones de demostración\n"
        "              --sin-datos   no carga los datos de referencia\n"
        "  actualizar  Lleva las bases de una versión anterior a la versión actual.\n"
        "  demo        Carga las operaciones de demostración que no estén cargadas.\n"
        "  importar <tabla> <archivo.csv>\n"
        "              Importa las filas de un archivo CSV con encabezado. Si alguna fila se\n"
        "              rechaza no se importa nada, salvo con --parcial.\n"
        "              --parcial     importa las filas válidas aunque haya rechazadas\n"
        "              --reemplazar  vacía la tabla antes de importar\n"
        "  listar <tabla>\n"
        "              Muestra las filas de una tabla, ordenadas por su clave.\n"
        "              --columnas a,b,c   --limite N   --entidad E (tablas fuera del esquema)\n"
        "              --interno X   solo las filas de esa operación\n"
        "              --csv         todas las columnas en CSV, con encabezado y punto decimal\n"
        "  estado      Muestra la versión del esquema de cada base; sale con 1 si alguna no\n"
        "              está al día.\n"
        "  unificar    Une las bases del formato anterior, un archivo SQLite por base\n"
        "              (internos.db, systablas.db, ...), en el archivo único korven.db de la\n"
        "              misma carpeta. Todo o nada: si algo falla, no queda korven.db y los\n"
        "              archivos anteriores no se tocan.\n"
        "  respaldo <archivo>\n"
        "              Copia todas las bases en el archivo, sin detener las estaciones de\n"
        "              trabajo. Si las bases están en varios archivos o servidores, escribe\n"
        "              un archivo por base: <archivo>.internos, <archivo>.ncm, ...\n"
        "  restaurar <archivo>\n"
        "              Reemplaza todas las bases por las del respaldo, cada una todo o nada,\n"
        "              después de revisar todos los archivos. Se niega mientras haya\n"
        "              operaciones abiertas en alguna estación de trabajo.\n"
        "  ayuda       Muestra este texto.\n"
        "\n"
        "Opciones de todas las órdenes:\n"
        "  --config <archivo>  DataAccessConfig.ini a usar (por omisión, el que está junto al\n"
        "                      programa; sin archivo, bases SQLite en la carpeta db)\n"
        "  --datos <carpeta>   carpeta de los datos de referencia (por omisión, data)\n");
}

int Administracion::LeerOpciones(const QStringList& args, Opciones& o) {
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        auto valor = [&](QString& destino) {
            if (i + 1 >= args.size() || args.at(i + 1).startsWith(QLatin1String("--"))) {
                err_ << QStringLiteral("Falta el valor de la opción %1.").arg(a) << Qt::endl;
                return false;
            }
            destino = args.at(++i);
            return true;
        };
        if (a == QLatin1String("--config")) {
            if (!valor(o.config))
                return Uso;
        } else if (a == QLatin1String("--datos")) {
            if (!valor(o.datos))
                return Uso;
        } else if (a == QLatin1String("--entidad")) {
            if (!valor(o.entidad))
                return Uso;
        } else if (a == QLatin1String("--columnas")) {
            if (!valor(o.columnas))
                return Uso;
        } else if (a == QLatin1String("--interno")) {
            if (!valor(o.interno))
                return Uso;
        } else if (a == QLatin1String("--csv")) {
            o.csv = true;
        } else if (a == QLatin1String("--limite")) {
            QString n;
            if (!valor(n))
                return Uso;
            bool ok = false;
            o.limite = n.toInt(&ok);
            if (!ok || o.limite < 0) {
                err_ << QStringLiteral("El límite debe ser un número entero: %1").arg(n)
                     << Qt::endl;
                return Uso;
            }
        } else if (a == QLatin1String("--demo")) {
            o.demo = true;
        } else if (a == QLatin1String("--sin-datos")) {
            o.sinDatos = true;
        } else if (a == QLatin1String("--parcial")) {
            o.parcial = true;
        } else if (a == QLatin1String("--reemplazar")) {
            o.reemplazar = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            err_ << QStringLiteral("Opción desconocida: %1").arg(a) << Qt::endl;
            return Uso;
        } else {
            o.posicionales << a;
        }
    }
    return Correcto;
}

void Administracion::AbrirStores(StoreDirectory& stores, const Opciones& o) {
    QString ruta = o.config;
    if (!ruta.isEmpty()) {
        if (!QFileInfo(ruta).isFile())
            throw KorvenError(53, QStringLiteral("No existe el archivo de configuración: %1")
                                      .arg(QDir::toNativeSeparators(ruta)));
        ruta = QFileInfo(ruta).absoluteFilePath();
    } else {
        ruta = QDir(directorio_).filePath(QStringLiteral("DataAccessConfig.ini"));
    }
    stores.setParametersPath(ruta);
    stores.LoadParameters();
}

QString Administracion::CarpetaDatos(const Opciones& o) const {
    return o.datos.isEmpty() ? schema::CarpetaDatos(directorio_) : o.datos;
}

int Administracion::Ejecutar(const QStringList& argumentos) {
    if (argumentos.isEmpty()) {
        err_ << TextoAyuda();
        return Uso;
    }
    const QString orden = argumentos.first().toLower();
    Opciones o;
    if (const int r = LeerOpciones(argumentos.mid(1), o); r != Correcto)
        return r;
    try {
        if (orden == QLatin1String("ayuda") || orden == QLatin1String("--help")) {
            out_ << TextoAyuda();
            return Correcto;
        }
        if (orden == QLatin1String("crear"))
            return Crear(o);
        if (orden == QLatin1String("actualizar"))
            return Actualizar(o);
        if (orden == QLatin1String("demo"))
            return Demo(o);
        if (orden == QLatin1String("importar"))
            return Importar(o);
        if (orden == QLatin1String("listar"))
            return Listar(o);
        if (orden == QLatin1String("estado"))
            return Estado(o);
        if (orden == QLatin1String("unificar"))
            return Unificar(o);
        if (orden == QLatin1String("respaldo") || orden == QLatin1String("restaurar"))
            return RespaldoORestauracion(orden == QLatin1String("respaldo"), o);
        err_ << QStringLiteral("Orden desconocida: %1").arg(argumentos.first()) << Qt::endl
             << QStringLiteral("Use \"korven-admin ayuda\" para ver las órdenes.") << Qt::endl;
        return Uso;
    } catch (const KorvenError& e) {
        err_ << QStringLiteral("Error %1: %2").arg(e.numero()).arg(e.descripcion()) << Qt::endl;
        return Fallo;
    }
}

void Administracion::InformarEsquema(StoreDirectory& stores, bool soloActualizar) {
    Migrador m(stores);
    for (const QString& e : StoreDirectory::Entidades()) {
        const int antes = m.Actualizar(e);
        QString como;
        if (antes == Migrador::VersionActual)
            como = QStringLiteral("al día");
        else if (antes == 0)
            como = soloActualizar ? QStringLiteral("creada (no tenía esquema)")
                                  : QStringLiteral("creada");
        else
            como = QStringLiteral("actualizada desde la versión %1").arg(antes);
        out_ << QStringLiteral("%1: esquema versión %2, %3.")
                    .arg(e)
                    .arg(Migrador::VersionActual)
                    .arg(como)
             << Qt::endl;
    }
}

void Administracion::InformarDemo(StoreDirectory& stores, const Opciones& o) {
    const QStringList cargadas = OperacionesDemo(stores, CarpetaDatos(o)).Cargar();
    if (cargadas.isEmpty())
        out_ << QStringLiteral("Las operaciones de demostración ya estaban cargadas.") << Qt::endl;
    else
        out_ << QStringLiteral("Operaciones de demostración cargadas: %1.")
                    .arg(cargadas.join(QStringLiteral(", ")))
             << Qt::endl;
}

int Administracion::Crear(const Opciones& o) {
    if (!o.posicionales.isEmpty()) {
        err_ << QStringLiteral("crear no lleva argumentos: %1").arg(o.posicionales.join(' '))
             << Qt::endl;
        return Uso;
    }
    StoreDirectory stores;
    AbrirStores(stores, o);
    QSet<QString> vistas;
    for (const QString& e : StoreDirectory::Entidades()) {
        if (stores.motor(e) != Motor::PostgreSQL)
            continue;
        const QHash<QString, QString> p = stores.Parametros(e);
        const QString donde = stores.Ubicacion(e);
        if (vistas.contains(donde))
            continue;
        vistas.insert(donde);
        bool creada = false;
        const QString falta = CrearBaseSiFalta(p, &creada);
        if (!falta.isEmpty()) {
            err_ << falta << Qt::endl;
            return Fallo;
        }
        if (creada)
            out_ << QStringLiteral("Base de datos creada: %1.").arg(donde) << Qt::endl;
    }
    InformarEsquema(stores, false);
    if (!o.sinDatos) {
        const auto cargadas = DatosReferencia(stores, CarpetaDatos(o)).Cargar();
        int filas = 0;
        for (const auto& c : cargadas)
            filas += c.second;
        if (cargadas.isEmpty())
            out_ << QStringLiteral("Datos de referencia: nada que cargar (las tablas ya tenían "
                                   "datos).")
                 << Qt::endl;
        else
            out_ << QStringLiteral("Datos de referencia: %1 tablas cargadas, %2 filas.")
                        .arg(cargadas.size())
                        .arg(filas)
                 << Qt::endl;
    }
    if (o.demo)
        InformarDemo(stores, o);
    return Correcto;
}

int Administracion::Actualizar(const Opciones& o) {
    StoreDirectory stores;
    AbrirStores(stores, o);
    InformarEsquema(stores, true);
    return Correcto;
}

int Administracion::Demo(const Opciones& o) {
    StoreDirectory stores;
    AbrirStores(stores, o);
    for (const QString& e : StoreDirectory::Entidades())
        if (Migrador(stores).Version(e) != Migrador::VersionActual) {
            err_ << QStringLiteral("La base de %1 no está al día: ejecute primero "
                                   "\"korven-admin crear\".")
                        .arg(e)
                 << Qt::endl;
            return Fallo;
        }
    InformarDemo(stores, o);
    return Correcto;
}

int Administracion::Importar(const Opciones& o) {
    if (o.posicionales.size() != 2) {
        err_ << QStringLiteral("Uso: korven-admin importar <tabla> <archivo.csv> [--parcial] "
                               "[--reemplazar]")
             << Qt::endl;
        return Uso;
    }
    StoreDirectory stores;
    AbrirStores(stores, o);
    const DefTabla* t = Catalogo::Tabla(o.posicionales.at(0));
    if (t && Migrador(stores).Version(t->entidad) != Migrador::VersionActual) {
        err_ << QStringLiteral("La base de %1 no está al día: ejecute primero \"korven-admin "
                               "crear\".")
                    .arg(t->entidad)
             << Qt::endl;
        return Fallo;
    }
    ImportadorCsv::Opciones op;
    op.parcial = o.parcial;
    op.reemplazar = o.reemplazar;
    const ImportadorCsv::Resultado r =
        ImportadorCsv(stores).Importar(o.posicionales.at(0), o.posicionales.at(1), op);
    if (r.latin1)
        out_ << QStringLiteral("El archivo %1 no está en UTF-8: se leyó como Latin-1.")
                    .arg(QDir::toNativeSeparators(o.posicionales.at(1)))
             << Qt::endl;
    const int validas = r.leidas - static_cast<int>(r.rechazos.size());
    out_ << QStringLiteral("Tabla %1: %2 filas leídas, %3 válidas, %4 rechazadas.")
                .arg(r.tabla)
                .arg(r.leidas)
                .arg(validas)
                .arg(r.rechazos.size())
         << Qt::endl;
    for (const ImportadorCsv::Rechazo& x : r.rechazos)
        out_ << QStringLiteral("  línea %1: %2").arg(x.linea).arg(x.motivo) << Qt::endl;
    if (!r.rechazos.empty() && !o.parcial) {
        err_ << QStringLiteral("No se importó ninguna fila: corrija el archivo o use --parcial.")
             << Qt::endl;
        return Fallo;
    }
    out_ << QStringLiteral("Filas importadas en %1: %2.").arg(r.tabla).arg(r.importadas)
         << Qt::endl;
    return Correcto;
}

int Administracion::Listar(const Opciones& o) {
    if (o.posicionales.size() != 1) {
        err_ << QStringLiteral("Uso: korven-admin listar <tabla> [--columnas a,b] [--limite N] "
                               "[--entidad E] [--interno X] [--csv]")
             << Qt::endl;
        return Uso;
    }
    const QString nombre = o.posicionales.first().toLower();
    const DefTabla* t = Catalogo::Tabla(nombre);
    QString entidad = o.entidad.toUpper();
    if (!entidad.isEmpty() && !StoreDirectory::Entidades().contains(entidad)) {
        err_ << QStringLiteral("Entidad desconocida: %1").arg(o.entidad) << Qt::endl;
        return Uso;
    }
    if (entidad.isEmpty()) {
        if (!t) {
            err_ << QStringLiteral("La tabla %1 no existe en el esquema; indique su base con "
                                   "--entidad.")
                        .arg(nombre)
                 << Qt::endl;
            return Fallo;
        }
        entidad = t->entidad;
    }
    StoreDirectory stores;
    AbrirStores(stores, o);
    Conexion& c = stores.getDataConnectionByEntity(entidad);
    if (!LectorEsquema::ExisteTabla(c, nombre)) {
        err_ << QStringLiteral("La base de %1 no tiene la tabla %2.").arg(entidad, nombre)
             << Qt::endl;
        return Fallo;
    }
    const QStringList existentes = LectorEsquema::NombresColumnas(c, nombre);
    QStringList columnas;
    if (o.columnas.isEmpty()) {
        columnas = existentes;
    } else {
        for (QString col : o.columnas.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            col = col.trimmed().toLower();
            if (!existentes.contains(col)) {
                err_ << QStringLiteral("La tabla %1 no tiene la columna %2.").arg(nombre, col)
                     << Qt::endl;
                return Fallo;
            }
            columnas << col;
        }
    }
    QStringList sel, orden;
    for (const QString& col : columnas)
        sel << DialectoEsquema::Identificador(col);
    const QStringList clave =
        t && !t->clave.isEmpty() ? t->clave : QStringList{existentes.value(0)};
    for (const QString& k : clave) {
        // Text keys in byte order on both engines, so that two stores list alike.
        const DefColumna* d = t ? t->Columna(k) : nullptr;
        orden << DialectoEsquema::Identificador(k) +
                     (c.motor() == Motor::PostgreSQL && d && d->tipo == TipoColumna::Texto
                          ? QStringLiteral(" COLLATE \"C\"")
                          : QString());
    }
    QVariantList parametros;
    QString filtro;
    if (!o.interno.isEmpty()) {
        if (!existentes.contains(QStringLiteral("interno"))) {
            err_ << QStringLiteral("La tabla %1 no tiene la columna interno.").arg(nombre)
                 << Qt::endl;
            return Fallo;
        }
        filtro = QStringLiteral(" where interno = ?");
        parametros << o.interno;
    }
    QString sql = QStringLiteral("select ") + sel.join(QStringLiteral(", ")) +
                  QStringLiteral(" from ") + nombre + filtro + QStringLiteral(" order by ") +
                  orden.join(QStringLiteral(", "));
    if (o.limite >= 0)
        sql += QStringLiteral(" LIMIT %1").arg(o.limite);
    Recordset rs = c.Abrir(sql, parametros);
    if (o.csv) {
        auto campo = [](QString v) {
            if (v.contains(QLatin1Char(',')) || v.contains(QLatin1Char('"')) ||
                v.contains(QLatin1Char('\n')) || v.contains(QLatin1Char('\r')))
                v = QLatin1Char('"') + v.replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                    QLatin1Char('"');
            return v;
        };
        out_ << columnas.join(QLatin1Char(',')) << Qt::endl;
        for (int i = 0; i < rs.RecordCount(); ++i) {
            QStringList f;
            for (int j = 0; j < columnas.size(); ++j)
                f << campo(TextoValor(rs.Fila(i).at(static_cast<size_t>(j))));
            out_ << f.join(QLatin1Char(',')) << Qt::endl;
        }
        return Correcto;
    }

    QList<QStringList> filas;
    QList<int> anchos;
    for (const QString& col : columnas)
        anchos << static_cast<int>(col.size());
    for (int i = 0; i < rs.RecordCount(); ++i) {
        QStringList f;
        for (int j = 0; j < columnas.size(); ++j) {
            QString v = TextoValor(rs.Fila(i).at(static_cast<size_t>(j)));
            v.replace(QLatin1Char('\n'), QLatin1Char(' '));
            if (v.size() > AnchoMaximo)
                v = v.left(AnchoMaximo - 3) + QStringLiteral("...");
            anchos[j] = std::max(anchos[j], static_cast<int>(v.size()));
            f << v;
        }
        filas << f;
    }
    auto linea = [&](const QStringList& f) {
        QStringList partes;
        for (int j = 0; j < f.size(); ++j)
            partes << f.at(j).leftJustified(anchos.at(j));
        out_ << partes.join(QStringLiteral(" | ")).trimmed() << Qt::endl;
    };
    linea(columnas);
    QStringList rayas;
    for (int a : anchos)
        rayas << QString(a, QLatin1Char('-'));
    out_ << rayas.join(QStringLiteral("-+-")) << Qt::endl;
    for (const QStringList& f : filas)
        linea(f);
    out_ << QStringLiteral("(%1 filas)").arg(filas.size()) << Qt::endl;
    return Correcto;
}

int Administracion::Unificar(const Opciones& o) {
    if (!o.posicionales.isEmpty()) {
        err_ << QStringLiteral("unificar no lleva argumentos: %1").arg(o.posicionales.join(' '))
             << Qt::endl;
        return Uso;
    }
    StoreDirectory stores;
    AbrirStores(stores, o);
    const QString destino = stores.ArchivoSQLite(StoreDirectory::Entidades().first());
    for (const QString& e : StoreDirectory::Entidades())
        if (destino.isEmpty() || stores.ArchivoSQLite(e) != destino) {
            err_ << QStringLiteral("unificar necesita una configuración con todas las bases en "
                                   "un solo archivo SQLite.")
                 << Qt::endl;
            return Fallo;
        }
    const auto unidos = Unificador(QFileInfo(destino).absolutePath(), destino).Unificar();
    int tablas = 0;
    QStringList archivos;
    for (const auto& [archivo, n] : unidos) {
        archivos << archivo;
        tablas += n;
    }
    out_ << QStringLiteral("Bases unificadas en %1: %2 (%3 tablas).")
                .arg(QDir::toNativeSeparators(destino), archivos.join(QStringLiteral(", ")))
                .arg(tablas)
         << Qt::endl
         << QStringLiteral("Los archivos anteriores quedan como estaban; guárdelos como respaldo "
                           "o bórrelos.")
         << Qt::endl;
    return Correcto;
}

int Administracion::RespaldoORestauracion(bool respaldar, const Opciones& o) {
    const char* orden = respaldar ? "respaldo" : "restaurar";
    if (o.posicionales.size() != 1) {
        err_ << QStringLiteral("%1 lleva un argumento, el archivo del respaldo.")
                    .arg(QLatin1String(orden))
             << Qt::endl;
        return Uso;
    }
    const QString archivo = QFileInfo(o.posicionales.first()).absoluteFilePath();
    StoreDirectory stores;
    AbrirStores(stores, o);
    try {
        Respaldo r(stores);
        QStringList archivos = respaldar ? r.Respaldar(archivo) : r.Restaurar(archivo);
        for (QString& a : archivos)
            a = QDir::toNativeSeparators(a);
        out_ << (respaldar ? QStringLiteral("Respaldo escrito: %1.")
                           : QStringLiteral("Bases restauradas desde: %1."))
                    .arg(archivos.join(QStringLiteral(", ")))
             << Qt::endl;
    } catch (const KorvenError& e) {
        err_ << e.descripcion() << Qt::endl;
        return Fallo;
    }
    return Correcto;
}

int Administracion::Estado(const Opciones& o) {
    StoreDirectory stores;
    AbrirStores(stores, o);
    Migrador m(stores);
    int atrasadas = 0;
    for (const QString& e : StoreDirectory::Entidades()) {
        const int v = m.Version(e);
        QString nota;
        if (v == 0)
            nota = QStringLiteral("sin esquema");
        else if (v < Migrador::VersionActual)
            nota = QStringLiteral("debe actualizarse");
        else if (v > Migrador::VersionActual)
            nota = QStringLiteral("más nueva que este programa");
        else
            nota = QStringLiteral("al día");
        if (v != Migrador::VersionActual)
            ++atrasadas;
        const QString archivo = stores.ArchivoSQLite(e);
        out_ << QStringLiteral("%1: versión %2 (%3)%4")
                    .arg(e)
                    .arg(v)
                    .arg(nota)
                    .arg(archivo.isEmpty()
                             ? QStringLiteral(" - PostgreSQL")
                             : QStringLiteral(" - ") + QDir::toNativeSeparators(archivo))
             << Qt::endl;
    }
    return atrasadas == 0 ? Correcto : Fallo;
}

} // namespace korven::schema
