#pragma once

#include <QSqlDatabase>
#include <QString>

namespace korven {

// isnumeric(x), left(text, n) and right(text, n) on an SQLite connection, as the statements of
// the system use them; isnumeric gives 1 or 0.
void RegistrarFuncionesSQLite(QSqlDatabase& db);
// SQLite reads LEFT and RIGHT as join words only: calls "left(" and "right(" outside string
// literals become calls of the functions registered under korven_left / korven_right.
QString AdaptarSqlSQLite(const QString& sql);
// The same functions on PostgreSQL (left and right exist there already): isnumeric gives a
// boolean. Created when missing; a failure is left to the first statement that needs them.
void AsegurarFuncionesPostgreSQL(QSqlDatabase& db);

} // namespace korven
