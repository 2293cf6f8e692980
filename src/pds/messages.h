#pragma once
// Every text of project and database access that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// Results and the local store
inline constexpr char FieldNotInResult[] = "Field '%0%' not found in the result";
inline constexpr char RowWidthMismatch[] = "Row of %0% values does not fit %1% fields";
inline constexpr char DatabaseError[] = "Database error %0%: %1%";
inline constexpr char DatabaseFileNotExists[] = "Database file '%0%' not exists";

// The SQL kinds of the project schema (ODBC, embedded SQLite) and their database users
inline constexpr char DatabaseServerNotDefined[] = "Database server name not defined";
inline constexpr char DatabaseUserNotDefined[] = "Database user name not defined";
inline constexpr char OracleServerNotDefined[] = "Oracle Server name not defined";
inline constexpr char SQLServerNotDefined[] = "SQL Server name not defined";
inline constexpr char UserCountMismatch[] = "User count does not match password count";
inline constexpr char SchemaNotDefined[] = "Schema name not defined";
inline constexpr char DirectoryNotExistsColon[] = "Directory: '%0%' not exists";
inline constexpr char NoSchemaConnection[] = "No database connection open";
inline constexpr char InvalidDatabaseName[] = "'%0%' is not a valid database name";
inline constexpr char FileWriteFailed[] = "Writing file '%0%' failed";

} // namespace fx::msg
