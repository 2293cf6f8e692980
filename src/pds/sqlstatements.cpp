#include "pds/sqlstatements.h"

#include "frame/failure.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/odbc.h"

#include <QRegularExpression>

namespace fx {

namespace {

QString DriverPart(const QString &driver)
{
    return QStringLiteral("Driver={") + driver + QStringLiteral("};");
}

// Oracle takes a password in double quotes when it is not a plain name; a double quote
// itself cannot be in one at all.
QString OraclePassword(const QString &password)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z][A-Za-z0-9_$#]*$"));
    if (plain.match(password).hasMatch())
        return password;
    if (password.contains(QLatin1Char('"')) || password.isEmpty())
        Raise(msg::InvalidDatabaseName, {QStringLiteral("*****")});
    return QLatin1Char('"') + password + QLatin1Char('"');
}

// SQL Server's own brackets, where a "]" is doubled.
QString SQLServerName(const QString &name)
{
    QString escaped = name;
    escaped.replace(QLatin1Char(']'), QLatin1String("]]"));
    return QLatin1Char('[') + escaped + QLatin1Char(']');
}

// The closing quote of the quoted part that opens at `open`, doubled quotes inside passed
// over; -1 when it never closes.
qsizetype ClosingQuote(const QString &text, qsizetype open)
{
    const QChar quote = text.at(open);
    for (qsizetype i = open + 1; i < text.size(); ++i) {
        if (text.at(i) != quote)
            continue;
        if (i + 1 < text.size() && text.at(i + 1) == quote)
            ++i;
        else
            return i;
    }
    return -1;
}

} // namespace

QString OracleConnectionString(const QString &driver, const QString &server, const QString &user,
                               const QString &password)
{
    return DriverPart(driver) + QStringLiteral("Dbq=") + OdbcConnectionValue(server) + QStringLiteral(";Uid=")
           + OdbcConnectionValue(user) + QStringLiteral(";Pwd=") + OdbcConnectionValue(password) + QLatin1Char(';');
}

QString SQLServerConnectionString(const QString &driver, const QString &server, const QString &database,
                                  const QString &user, const QString &password)
{
    QString text = DriverPart(driver) + QStringLiteral("Server=") + OdbcConnectionValue(server)
                   + QStringLiteral(";Database=") + OdbcConnectionValue(database) + QLatin1Char(';');
    if (user.trimmed().isEmpty())
        return text + QStringLiteral("Trusted_Connection=Yes");
    return text + QStringLiteral("Uid=") + OdbcConnectionValue(user) + QStringLiteral(";Pwd=")
           + OdbcConnectionValue(password);
}

QString PostgreSQLConnectionString(const QString &driver, const QString &server, const QString &database,
                                   const QString &user, const QString &password)
{
    QString host = server.trimmed();
    QString port;
    const qsizetype colon = host.lastIndexOf(QLatin1Char(':'));
    if (colon > 0) {
        port = host.mid(colon + 1);
        host.truncate(colon);
    }
    QString text = DriverPart(driver) + QStringLiteral("Server=") + OdbcConnectionValue(host) + QLatin1Char(';');
    if (!port.isEmpty())
        text += QStringLiteral("Port=") + OdbcConnectionValue(port) + QLatin1Char(';');
    return text + QStringLiteral("Database=") + OdbcConnectionValue(database) + QStringLiteral(";Uid=")
           + OdbcConnectionValue(user) + QStringLiteral(";Pwd=") + OdbcConnectionValue(password) + QLatin1Char(';');
}

QString ServerStatement(DBConType kind, const QString &sql)
{
    // Brackets name a thing on SQL Server whatever its QUOTED_IDENTIFIER setting is; Oracle and
    // PostgreSQL read RIS's double quotes as their own.
    if (kind != DBConType::SQLServer)
        return sql;
    QString server;
    qsizetype copied = 0;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql.at(i);
        if (c != QLatin1Char('\'') && c != QLatin1Char('"'))
            continue;
        // A text value goes as it is, double quotes and all.
        const qsizetype close = ClosingQuote(sql, i);
        if (close < 0)
            break;
        if (c == QLatin1Char('"')) {
            const QString name = sql.mid(i + 1, close - i - 1).replace(QStringLiteral("\"\""), QStringLiteral("\""));
            server += QStringView(sql).mid(copied, i - copied);
            server += SQLServerName(name);
            copied = close + 1;
        }
        i = close;
    }
    return server + sql.mid(copied);
}

QString OracleName(const QString &name)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z][A-Za-z0-9_$#]*$"));
    if (!plain.match(name).hasMatch())
        Raise(msg::InvalidDatabaseName, {name});
    return name;
}

QString PostgreSQLName(const QString &name)
{
    // Schema names of PDS are compared without regard to case, as RIS does: a plain name goes
    // bare and the server folds it; anything else is quoted and kept as it is.
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_$]*$"));
    if (plain.match(name).hasMatch())
        return name;
    QString escaped = name;
    escaped.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QStringList SchemaStatements(DBConType kind, const QString &schema, bool forWrite)
{
    const bool blank = schema.trimmed().isEmpty();
    switch (kind) {
    case DBConType::Oracle:
        // Writing has never had blanks round the equals sign; both forms stay as they were.
        if (blank)
            return {};
        return {(forWrite ? QStringLiteral("ALTER SESSION SET CURRENT_SCHEMA=")
                          : QStringLiteral("ALTER SESSION SET CURRENT_SCHEMA = "))
                + OracleName(schema)};
    case DBConType::SQLServer:
        if (blank)
            return {QStringLiteral("REVERT")};
        return {QStringLiteral("REVERT"), QStringLiteral("EXECUTE AS LOGIN = ") + DBQuote(schema)};
    case DBConType::PostgreSQL:
        if (blank)
            return {};
        return {QStringLiteral("SET search_path TO ") + PostgreSQLName(schema)};
    default:
        return {};
    }
}

QStringList OracleCreateUserStatements(const QString &user, const QString &password, const QString &tablespace,
                                       const QString &tempTablespace)
{
    const QString name = OracleName(user);
    return {QStringLiteral("create user ") + name + QStringLiteral(" identified by ") + OraclePassword(password),
            QStringLiteral("grant create database link, create sequence, alter session, create synonym, "
                           "create table, create view to ")
                + name,
            QStringLiteral("grant connect to ") + name,
            QStringLiteral("alter user ") + name + QStringLiteral(" default tablespace ") + OracleName(tablespace),
            QStringLiteral("alter user ") + name + QStringLiteral(" temporary tablespace ")
                + OracleName(tempTablespace),
            QStringLiteral("alter user ") + name + QStringLiteral(" quota unlimited on ") + OracleName(tablespace),
            QStringLiteral("commit")};
}

QStringList OracleDropUserStatements(const QString &user)
{
    return {QStringLiteral("drop user ") + OracleName(user) + QStringLiteral(" cascade"), QStringLiteral("commit")};
}

QString OracleUserExistsQuery(const QString &user)
{
    return QStringLiteral("SELECT 1 FROM dba_users WHERE(username = ") + DBQuote(user.toUpper()) + QLatin1Char(')');
}

QStringList SQLServerCreateUserStatements(const QString &user, const QString &password, const QString &database)
{
    const QString login = SQLServerName(user);
    QStringList statements{QStringLiteral("CREATE LOGIN ") + login + QStringLiteral(" WITH PASSWORD = N")
                           + DBQuote(password)};
    if (!database.trimmed().isEmpty())
        statements << QStringLiteral("USE ") + SQLServerName(database);
    statements << QStringLiteral("CREATE USER ") + login + QStringLiteral(" FOR LOGIN ") + login
               << QStringLiteral("EXEC sp_addrolemember 'db_owner', N") + DBQuote(user);
    return statements;
}

QStringList SQLServerDropUserStatements(const QString &user)
{
    return {QStringLiteral("DROP LOGIN ") + SQLServerName(user)};
}

QString SQLServerUserExistsQuery(const QString &user)
{
    return QStringLiteral("SELECT 1 FROM sys.server_principals WHERE(name = N") + DBQuote(user) + QLatin1Char(')');
}

} // namespace fx
