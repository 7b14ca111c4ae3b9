#include "platform/SqlFunciones.h"

#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>
#include <cstdlib>
#include <cstring>
#include <sqlite3.h>
#include <string>

namespace korven {

namespace {

// A number as the legacy store read it: blanks around, an optional sign, digits with one
// decimal point or comma, an optional exponent.
bool TextoNumerico(const char* t) {
    if (!t)
        return false;
    std::string s(t);
    const auto a = s.find_first_not_of(" \t");
    if (a == std::string::npos)
        return false;
    s = s.substr(a, s.find_last_not_of(" \t") - a + 1);
    size_t i = 0;
    if (s[i] == '+' || s[i] == '-')
        ++i;
    bool digitos = false, punto = false;
    for (; i < s.size(); ++i) {
        const char c = s[i];
        if (c >= '0' && c <= '9')
            digitos = true;
        else if ((c == '.' || c == ',') && !punto)
            punto = true;
        else
            break;
    }
    if (!digitos)
        return false;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            ++j;
        const size_t k = j;
        while (j < s.size() && s[j] >= '0' && s[j] <= '9')
            ++j;
        if (j == k)
            return false;
        i = j;
    }
    return i == s.size();
}

void IsNumeric(sqlite3_context* ctx, int, sqlite3_value** argv) {
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        sqlite3_result_int(ctx, 1);
        return;
    case SQLITE_TEXT:
        sqlite3_result_int(
            ctx, TextoNumerico(reinterpret_cast<const char*>(sqlite3_value_text(argv[0]))) ? 1 : 0);
        return;
    default:
        sqlite3_result_int(ctx, 0);
    }
}

// Counts characters, not bytes: the stores hold UTF-8.
int LargoUtf8(const unsigned char* s) {
    int n = 0;
    for (; *s; ++s)
        if ((*s & 0xC0) != 0x80)
            ++n;
    return n;
}

const unsigned char* AvanzarUtf8(const unsigned char* s, int caracteres) {
    while (*s && caracteres > 0) {
        ++s;
        while ((*s & 0xC0) == 0x80)
            ++s;
        --caracteres;
    }
    return s;
}

void LeftRight(sqlite3_context* ctx, sqlite3_value** argv, bool izquierda) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    const unsigned char* s = sqlite3_value_text(argv[0]);
    int n = sqlite3_value_int(argv[1]);
    const int largo = LargoUtf8(s);
    if (n < 0)
        n = 0;
    if (n > largo)
        n = largo;
    const unsigned char* desde = izquierda ? s : AvanzarUtf8(s, largo - n);
    const unsigned char* hasta =
        izquierda ? AvanzarUtf8(s, n) : s + std::strlen(reinterpret_cast<const char*>(s));
    sqlite3_result_text(ctx, reinterpret_cast<const char*>(desde), static_cast<int>(hasta - desde),
                        SQLITE_TRANSIENT);
}

void Left(sqlite3_context* ctx, int, sqlite3_value** argv) {
    LeftRight(ctx, argv, true);
}
void Right(sqlite3_context* ctx, int, sqlite3_value** argv) {
    LeftRight(ctx, argv, false);
}

} // namespace

void RegistrarFuncionesSQLite(QSqlDatabase& db) {
    const QVariant h = db.driver()->handle();
    if (!h.isValid() || qstrcmp(h.typeName(), "sqlite3*") != 0)
        return;
    sqlite3* s = *static_cast<sqlite3* const*>(h.data());
    if (!s)
        return;
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(s, "isnumeric", 1, flags, nullptr, IsNumeric, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(s, "korven_left", 2, flags, nullptr, Left, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(s, "korven_right", 2, flags, nullptr, Right, nullptr, nullptr,
                               nullptr);
}

QString AdaptarSqlSQLite(const QString& sql) {
    if (!sql.contains(QStringLiteral("left"), Qt::CaseInsensitive) &&
        !sql.contains(QStringLiteral("right"), Qt::CaseInsensitive))
        return sql;
    QString r;
    r.reserve(sql.size() + 16);
    QChar comilla; // inside a literal or quoted name, its quote
    for (int i = 0; i < sql.size(); ++i) {
        const QChar c = sql.at(i);
        if (!comilla.isNull()) {
            r += c;
            if (c == comilla)
                comilla = QChar();
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            comilla = c;
            r += c;
            continue;
        }
        const bool inicio =
            i == 0 || !(sql.at(i - 1).isLetterOrNumber() || sql.at(i - 1) == QLatin1Char('_'));
        int largo = 0; // length of a "left" or "right" that calls a function here
        for (const QString& palabra : {QStringLiteral("left"), QStringLiteral("right")}) {
            if (!inicio || sql.mid(i, palabra.size()).compare(palabra, Qt::CaseInsensitive) != 0)
                continue;
            int j = i + static_cast<int>(palabra.size());
            while (j < sql.size() && sql.at(j).isSpace())
                ++j;
            if (j < sql.size() && sql.at(j) == QLatin1Char('('))
                largo = static_cast<int>(palabra.size());
        }
        if (largo > 0) {
            r += QStringLiteral("korven_") + sql.mid(i, largo);
            i += largo - 1;
        } else {
            r += c;
        }
    }
    return r;
}

void AsegurarFuncionesPostgreSQL(QSqlDatabase& db) {
    // isnumeric answers 1 or 0, as on SQLite, so that "isnumeric(x)=0" and "isnumeric(x)<>0"
    // run as written. A database made by an older program has it answering boolean: it is
    // replaced (the return type cannot change in place).
    QSqlQuery q(db);
    if (q.exec(QStringLiteral("select count(*) from pg_proc p join pg_namespace n on "
                              "n.oid = p.pronamespace where p.proname = 'isnumeric' and "
                              "n.nspname = current_schema() and "
                              "p.prorettype = 'integer'::regtype")) &&
        q.next() && q.value(0).toInt() >= 2)
        return;
    const QStringList sentencias = {
        QStringLiteral("BEGIN"),
        QStringLiteral("DROP FUNCTION IF EXISTS isnumeric(text)"),
        QStringLiteral("DROP FUNCTION IF EXISTS isnumeric(double precision)"),
        QStringLiteral(
            "CREATE FUNCTION isnumeric(text) RETURNS integer LANGUAGE sql IMMUTABLE AS $$ SELECT "
            "CASE WHEN $1 ~ '^\\s*[-+]?([0-9]+([.,][0-9]*)?|[.,][0-9]+)([eE][-+]?[0-9]+)?\\s*$' "
            "THEN 1 ELSE 0 END $$"),
        QStringLiteral("CREATE FUNCTION isnumeric(double precision) RETURNS integer LANGUAGE sql "
                       "IMMUTABLE AS $$ SELECT CASE WHEN $1 IS NULL THEN 0 ELSE 1 END $$"),
        QStringLiteral("COMMIT")};
    for (const QString& sql : sentencias)
        if (!q.exec(sql)) {
            // Another workstation may be replacing it at the same moment; its version is ours.
            q.exec(QStringLiteral("ROLLBACK"));
            return;
        }
}

} // namespace korven
