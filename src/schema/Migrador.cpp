#include "schema/Migrador.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Catalogo.h"
#include "schema/DialectoEsquema.h"
#include "schema/LectorEsquema.h"

namespace korven::schema {

int Migrador::Version(const QString& entidad) {
    Conexion& c = stores_.getDataConnectionByEntity(entidad);
    if (!LectorEsquema::ExisteTabla(c, Catalogo::TablaVersion()))
        return 0;
    Recordset rs = c.Abrir(QStringLiteral("select version from ") + Catalogo::TablaVersion() +
                               QStringLiteral(" where entidad = ?"),
                           {entidad.toUpper()});
    return rs.Eof() ? 0 : static_cast<int>(EsNumero(rs.Fields(0)));
}

int Migrador::Actualizar(const QString& entidad) {
    const QString e = entidad.toUpper();
    const int antes = Version(e);
    if (antes > VersionActual)
        throw KorvenError(KorvenError::ErrorStore,
                          QStringLiteral("La base de %1 tiene la versión %2 del esquema, más "
                                         "nueva que la de este programa (%3).")
                              .arg(e)
                              .arg(antes)
                              .arg(VersionActual),
                          QStringLiteral("Migrador"));
    if (antes == VersionActual)
        return antes;
    Conexion& c = stores_.getDataConnectionByEntity(e);
    if (antes == 0) {
        Transaccion tx(stores_, {e});
        Adoptar(c, e, VersionActual);
        GuardarVersion(c, e, VersionActual);
        tx.Confirmar();
        return antes;
    }
    for (int paso = antes + 1; paso <= VersionActual; ++paso) {
        Transaccion tx(stores_, {e});
        AplicarPaso(c, e, paso);
        GuardarVersion(c, e, paso);
        tx.Confirmar();
    }
    return antes;
}

void Migrador::CrearEnVersion(const QString& entidad, int version) {
    const QString e = entidad.toUpper();
    if (Version(e) != 0)
        throw KorvenError(KorvenError::ErrorStore,
                          QStringLiteral("La base de %1 ya tiene esquema.").arg(e),
                          QStringLiteral("Migrador"));
    Conexion& c = stores_.getDataConnectionByEntity(e);
    Transaccion tx(stores_, {e});
    Adoptar(c, e, version);
    GuardarVersion(c, e, version);
    tx.Confirmar();
}

// Makes what the store lacks of the given version: the missing tables, the missing columns of
// tables already there, the missing indexes. What the store has beyond that stays.
void Migrador::Adoptar(Conexion& c, const QString& entidad, int version) {
    const QStringList existentes = LectorEsquema::Tablas(c);
    for (const DefTabla* t : Catalogo::TablasDe(entidad)) {
        if (t->desde > version)
            continue;
        if (!existentes.contains(t->nombre)) {
            c.Ejecutar(DialectoEsquema::CrearTabla(*t, c.motor(), version));
        } else {
            const QStringList tiene = LectorEsquema::NombresColumnas(c, t->nombre);
            for (const DefColumna& col : t->columnas)
                if (col.desde <= version && !tiene.contains(col.nombre))
                    c.Ejecutar(DialectoEsquema::AgregarColumna(*t, col, c.motor()));
            EstablecerClave(c, *t, version);
        }
        for (const DefIndice& ix : t->indices)
            if (ix.desde <= version)
                c.Ejecutar(DialectoEsquema::CrearIndice(*t, ix));
        if (!t->unicaSinMayusculas.isEmpty() && t->unicaDesde <= version)
            c.Ejecutar(DialectoEsquema::CrearIndiceSinMayusculas(*t));
    }
}

// Gives a table made before its primary key existed that key. PostgreSQL adds it in place;
// SQLite cannot, so the table is made again under the key and its rows (and any column of its
// own beyond the catalogue's) carried over. Two rows with the same number refuse the step.
void Migrador::EstablecerClave(Conexion& c, const DefTabla& t, int version) {
    if (t.clavePrimaria.isEmpty() || version < t.clavePrimariaDesde ||
        !LectorEsquema::ClavePrimaria(c, t.nombre).isEmpty())
        return;
    QStringList clave;
    for (const QString& k : t.clavePrimaria)
        clave << DialectoEsquema::Identificador(k);
    if (c.motor() == Motor::PostgreSQL) {
        for (const QString& k : t.clavePrimaria)
            c.Ejecutar(QStringLiteral("ALTER TABLE ") + t.nombre +
                       QStringLiteral(" ALTER COLUMN ") + DialectoEsquema::Identificador(k) +
                       QStringLiteral(" TYPE ") +
                       DialectoEsquema::TipoDe(t, *t.Columna(k), c.motor(), version));
        c.Ejecutar(QStringLiteral("ALTER TABLE ") + t.nombre +
                   QStringLiteral(" ADD PRIMARY KEY (") + clave.join(QStringLiteral(", ")) +
                   QLatin1Char(')'));
        return;
    }
    const QString nueva = t.nombre + QStringLiteral("_nueva");
    const QList<QPair<QString, QString>> tiene = LectorEsquema::Columnas(c, t.nombre);
    c.Ejecutar(QStringLiteral("DROP TABLE IF EXISTS ") + nueva);
    c.Ejecutar(DialectoEsquema::CrearTabla(t, c.motor(), version, nueva));
    QStringList columnas;
    for (const auto& [nombre, tipo] : tiene) {
        const DefColumna* d = t.Columna(nombre);
        if (!d || d->desde > version)
            c.Ejecutar(QStringLiteral("ALTER TABLE ") + nueva + QStringLiteral(" ADD COLUMN ") +
                       DialectoEsquema::Identificador(nombre) + QLatin1Char(' ') + tipo);
        columnas << DialectoEsquema::Identificador(nombre);
    }
    const QString lista = columnas.join(QStringLiteral(", "));
    c.Ejecutar(QStringLiteral("INSERT INTO ") + nueva + QStringLiteral(" (") + lista +
               QStringLiteral(") SELECT ") + lista + QStringLiteral(" FROM ") + t.nombre);
    c.Ejecutar(QStringLiteral("DROP TABLE ") + t.nombre);
    c.Ejecutar(QStringLiteral("ALTER TABLE ") + nueva + QStringLiteral(" RENAME TO ") + t.nombre);
    // The indexes went with the old table.
    for (const DefIndice& ix : t.indices)
        if (ix.desde <= version)
            c.Ejecutar(DialectoEsquema::CrearIndice(t, ix));
}

// PostgreSQL keeps the types a column had when it was made: a lock's time and the byte order of
// the text keys come to older stores here.
void Migrador::AlinearTiposPg(Conexion& c, const DefTabla& t) {
    for (const DefColumna& col : t.columnas) {
        const bool clave = col.tipo == TipoColumna::Texto && t.clavePrimaria.contains(col.nombre);
        if (col.tipo != TipoColumna::FechaHora && !clave)
            continue;
        c.Ejecutar(QStringLiteral("ALTER TABLE ") + t.nombre + QStringLiteral(" ALTER COLUMN ") +
                   DialectoEsquema::Identificador(col.nombre) + QStringLiteral(" TYPE ") +
                   DialectoEsquema::TipoDe(t, col, c.motor(), Migrador::VersionActual));
    }
}

// One step of the ordered migrations: the tables, columns and indexes that the version brought.
void Migrador::AplicarPaso(Conexion& c, const QString& entidad, int paso) {
    for (const DefTabla* t : Catalogo::TablasDe(entidad)) {
        if (t->desde == paso) {
            c.Ejecutar(DialectoEsquema::CrearTabla(*t, c.motor(), paso));
        } else if (t->desde < paso) {
            QStringList tiene;
            bool leidas = false;
            for (const DefColumna& col : t->columnas) {
                if (col.desde != paso)
                    continue;
                if (!leidas) {
                    tiene = LectorEsquema::NombresColumnas(c, t->nombre);
                    leidas = true;
                }
                if (!tiene.contains(col.nombre))
                    c.Ejecutar(DialectoEsquema::AgregarColumna(*t, col, c.motor()));
            }
        }
        if (t->desde > paso)
            continue;
        if (t->desde < paso && t->clavePrimariaDesde == paso)
            EstablecerClave(c, *t, paso);
        if (paso == 4 && t->desde < paso && c.motor() == Motor::PostgreSQL)
            AlinearTiposPg(c, *t);
        for (const DefIndice& ix : t->indices)
            if (ix.desde == paso || (t->desde == paso && ix.desde < paso))
                c.Ejecutar(DialectoEsquema::CrearIndice(*t, ix));
        if (!t->unicaSinMayusculas.isEmpty() &&
            (t->unicaDesde == paso || (t->desde == paso && t->unicaDesde < paso)))
            c.Ejecutar(DialectoEsquema::CrearIndiceSinMayusculas(*t));
    }
}

void Migrador::GuardarVersion(Conexion& c, const QString& entidad, int version) {
    c.Ejecutar(DialectoEsquema::CrearTablaVersion());
    const QString tabla = Catalogo::TablaVersion();
    if (c.Ejecutar(QStringLiteral("update ") + tabla +
                       QStringLiteral(" set version = ? where "
                                      "entidad = ?"),
                   {version, entidad}) == 0)
        c.Ejecutar(QStringLiteral("insert into ") + tabla +
                       QStringLiteral(" (entidad, version) values (?, ?)"),
                   {entidad, version});
}

} // namespace korven::schema
