#pragma once
// The texts the SQL kinds send: connection strings, schema switches, database users.

#include "pds/cris.h"

#include <QString>
#include <QStringList>

namespace fx {

/// "Driver={<driver>};Dbq=<server>;Uid=<user>;Pwd=<password>;"
QString OracleConnectionString(const QString &driver, const QString &server, const QString &user,
                               const QString &password);

/// "Driver={<driver>};Server=<server>;Database=<database>;" and "Trusted_Connection=Yes"
/// without a user, else "Uid=<user>;Pwd=<password>".
QString SQLServerConnectionString(const QString &driver, const QString &server, const QString &database,
                                  const QString &user, const QString &password);

/// "Driver={<driver>};Server=<host>;Port=<port>;Database=...;Uid=...;Pwd=...;" where `server`
/// is "host" or "host:port" (no Port then).
QString PostgreSQLConnectionString(const QString &driver, const QString &server, const QString &database,
                                   const QString &user, const QString &password);

/// The statements that make `schema` the default of a connection of `kind` (1 to 3), for
/// reading or for writing; none for a blank schema, except SQL Server's "REVERT".
QStringList SchemaStatements(DBConType kind, const QString &schema, bool forWrite);

/// A statement written in RIS syntax as the server of `kind` takes it: SQL Server gets each name
/// that RIS puts in double quotes in brackets instead; the other kinds take the quotes as RIS does.
QString ServerStatement(DBConType kind, const QString &sql);

/// `name` as it goes into an Oracle statement unquoted; raises unless it is a plain name
/// (a letter, then letters, digits, "_", "$", "#").
QString OracleName(const QString &name);

/// A PostgreSQL identifier: a plain lower-case name as it is, anything else in double quotes.
QString PostgreSQLName(const QString &name);

/// What creates an Oracle user with its rights and tablespaces, then "commit".
QStringList OracleCreateUserStatements(const QString &user, const QString &password, const QString &tablespace,
                                       const QString &tempTablespace);
QStringList OracleDropUserStatements(const QString &user);
/// A query that gives a row when the Oracle user exists.
QString OracleUserExistsQuery(const QString &user);

/// What creates a SQL Server login, its user in `database` and its db_owner membership.
QStringList SQLServerCreateUserStatements(const QString &user, const QString &password, const QString &database);
QStringList SQLServerDropUserStatements(const QString &user);
/// A query that gives a row when the SQL Server login exists.
QString SQLServerUserExistsQuery(const QString &user);

} // namespace fx
