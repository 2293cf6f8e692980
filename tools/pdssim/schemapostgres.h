#pragma once
// Copies a generated project schema from its SQLite file onto a PostgreSQL server, so that the
// server kind of a site holds the very rows of the file kinds.

#include <QString>

namespace pdssim {

/// Replaces `schema` on the server of `connectionString` (an ODBC driver connection string) by
/// the tables and rows of `sqliteFile`, with the same unique and plain indexes.
void LoadSchemaIntoPostgreSQL(const QString &sqliteFile, const QString &connectionString, const QString &schema);

} // namespace pdssim
