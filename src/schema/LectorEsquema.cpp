#include "schema/LectorEsquema.h"

#include "platform/ValueRules.h"

namespace korven::schema {

namespace {

bool Pg(const Conexion& c) {
    return c.motor() == Motor::PostgreSQL;
}

QHash<QString, QStringList> IndicesPg(Conexion& c, const QString& tabla, bool primaria) {
    const QString sql = QStringLiteral(
        "select i.relname as indice, a.attname as columna from pg_index x "
        "join pg_class t on t.oid = x.indrelid join pg_class i on i.oid = x.indexrelid "
        "join pg_namespace n on n.oid = t.relnamespace "
        "cross join lateral unnest(x.indkey) with ordinality as k(attnum, orden) "
        "join pg_attribute a on a.attrelid = t.oid and a.attnum = k.attnum "
        "where n.nspname = current_schema() and t.relname = ? and x.indisprimary = ? "
        "order by i.relname, k.orden");
    Recordset rs = c.Abrir(sql, {tabla.toLower(), primaria});
    QHash<QString, QStringList> r;
    for (; !rs.Eof(); rs.MoveNext())
        r[EsNull(rs.Fields(0)).toLower()] << EsNull(rs.Fields(1)).toLower();
    return r;
}

} // namespace

QStringList LectorEsquema::Tablas(Conexion& c) {
    const QString sql =
        Pg(c) ? QStringLiteral("select table_name from information_schema.tables where "
                               "table_schema = current_schema() and table_type = 'BASE TABLE' "
                               "order by table_name")
              : QStringLiteral("select name from sqlite_master where type = 'table' and "
                               "name not like 'sqlite_%' order by name");
    QStringList r;
    for (Recordset rs = c.Abrir(sql); !rs.Eof(); rs.MoveNext())
        r << EsNull(rs.Fields(0)).toLower();
    return r;
}

bool LectorEsquema::ExisteTabla(Conexion& c, const QString& tabla) {
    const QString sql =
        Pg(c) ? QStringLiteral("select count(*) from information_schema.tables where "
                               "table_schema = current_schema() and table_name = ?")
              : QStringLiteral("select count(*) from sqlite_master where type = 'table' and "
                               "lower(name) = ?");
    Recordset rs = c.Abrir(sql, {tabla.toLower()});
    return !rs.Eof() && EsNumero(rs.Fields(0)) > 0;
}

QList<QPair<QString, QString>> LectorEsquema::Columnas(Conexion& c, const QString& tabla) {
    const QString sql =
        Pg(c) ? QStringLiteral("select column_name, data_type from information_schema.columns "
                               "where table_schema = current_schema() and table_name = ? "
                               "order by ordinal_position")
              : QStringLiteral("select name, type from pragma_table_info(?) order by cid");
    QList<QPair<QString, QString>> r;
    for (Recordset rs = c.Abrir(sql, {tabla.toLower()}); !rs.Eof(); rs.MoveNext())
        r << qMakePair(EsNull(rs.Fields(0)).toLower(), EsNull(rs.Fields(1)));
    return r;
}

QStringList LectorEsquema::NombresColumnas(Conexion& c, const QString& tabla) {
    QStringList r;
    for (const auto& p : Columnas(c, tabla))
        r << p.first;
    return r;
}

QHash<QString, QStringList> LectorEsquema::Indices(Conexion& c, const QString& tabla) {
    if (Pg(c))
        return IndicesPg(c, tabla, false);
    QHash<QString, QStringList> r;
    Recordset lista = c.Abrir(
        QStringLiteral("select name from pragma_index_list(?) where origin = 'c' order by name"),
        {tabla.toLower()});
    for (; !lista.Eof(); lista.MoveNext()) {
        const QString nombre = EsNull(lista.Fields(0));
        QStringList columnas;
        Recordset info = c.Abrir(
            QStringLiteral("select name from pragma_index_info(?) order by seqno"), {nombre});
        bool expresion = false;
        for (; !info.Eof(); info.MoveNext()) {
            expresion = expresion || info.Fields(0).isNull();
            columnas << EsNull(info.Fields(0)).toLower();
        }
        // Indexes on expressions are left out, as on PostgreSQL.
        if (!expresion)
            r.insert(nombre.toLower(), columnas);
    }
    return r;
}

QStringList LectorEsquema::ClavePrimaria(Conexion& c, const QString& tabla) {
    if (Pg(c)) {
        const QHash<QString, QStringList> pk = IndicesPg(c, tabla, true);
        return pk.isEmpty() ? QStringList{} : pk.cbegin().value();
    }
    QStringList r;
    Recordset rs =
        c.Abrir(QStringLiteral("select name from pragma_table_info(?) where pk > 0 order by pk"),
                {tabla.toLower()});
    for (; !rs.Eof(); rs.MoveNext())
        r << EsNull(rs.Fields(0)).toLower();
    return r;
}

} // namespace korven::schema
