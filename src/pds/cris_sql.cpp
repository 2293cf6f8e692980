// The gateway's SQL kinds: choosing them, testing a login, and the users of Oracle and SQL Server.

#include "pds/cris.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "pds/messages.h"
#include "pds/odbcschemaconnection.h"
#include "pds/sqliteschemaconnection.h"
#include "pds/sqlstatements.h"
#include "pds/textunload.h"

namespace fx {

namespace {

void RunStatements(OdbcConnection &connection, const QStringList &statements)
{
    for (const QString &statement : statements)
        connection.Execute(statement);
}

bool HasRows(OdbcConnection &connection, const QString &query)
{
    return !connection.Read(query).IsEmpty();
}

QString OracleAdminString(const QString &server, const QString &user, const QString &password)
{
    return OracleConnectionString(ConfiguredOdbcDriver(configkey::OracleDriver), server, user, password);
}

// Runs the statements that `build` gives for each user with the password at the same place.
template <typename Build>
void CreateUsers(const QString &adminConnection, const QStringList &users, const QStringList &passwords, Build build)
{
    if (users.size() != passwords.size())
        Raise(msg::UserCountMismatch);
    OdbcConnection admin(adminConnection);
    for (qsizetype i = 0; i < users.size(); ++i) {
        RunStatements(admin, build(users.at(i), passwords.at(i)));
        DoEventsIfInput();
    }
}

} // namespace

// Logins live on the server; the administrator's statements start in its master database.
QString SQLServerAdminString(const QString &server, const QString &user, const QString &password)
{
    return SQLServerConnectionString(ConfiguredOdbcDriver(configkey::SQLServerDriver), server,
                                     QStringLiteral("master"), user, password);
}

SchemaConnection &CRIS::Connection()
{
    if (!m_connection)
        Raise(msg::NoSchemaConnection);
    return *m_connection;
}

void CRIS::CloseConnection()
{
    m_connection.reset();
}

void CRIS::SetUseOra(const QString &server, const QString &user, const QString &password)
{
    Frame("CRIS::SetUseOra", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::DatabaseServerNotDefined);
        if (user.trimmed().isEmpty())
            Raise(msg::DatabaseUserNotDefined);
        CloseConnection();
        m_dbConType = DBConType::Oracle;
        m_connection = std::make_unique<OdbcSchemaConnection>(
            DBConType::Oracle, OracleConnectionString(ConfiguredOdbcDriver(configkey::OracleDriver), server, user,
                                                      password));
        m_dbServerName = server;
        m_dbUserName = user;
    });
}

void CRIS::SetUseSQL(const QString &server, const QString &database, const QString &user, const QString &password)
{
    Frame("CRIS::SetUseSQL", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::DatabaseServerNotDefined);
        CloseConnection();
        m_dbConType = DBConType::SQLServer;
        m_connection = std::make_unique<OdbcSchemaConnection>(
            DBConType::SQLServer, SQLServerConnectionString(ConfiguredOdbcDriver(configkey::SQLServerDriver), server,
                                                            database, user, password));
        m_dbServerName = server;
        m_dbUserName = user;
    });
}

void CRIS::SetUsePostgreSQL(const QString &server, const QString &database, const QString &user,
                            const QString &password)
{
    Frame("CRIS::SetUsePostgreSQL", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::DatabaseServerNotDefined);
        if (user.trimmed().isEmpty())
            Raise(msg::DatabaseUserNotDefined);
        CloseConnection();
        m_dbConType = DBConType::PostgreSQL;
        m_connection = std::make_unique<OdbcSchemaConnection>(
            DBConType::PostgreSQL, PostgreSQLConnectionString(ConfiguredOdbcDriver(configkey::PostgreSQLDriver),
                                                              server, database, user, password));
        m_dbServerName = server;
        m_dbUserName = user;
    });
}

void CRIS::SetUseSQLite(const QString &folder)
{
    Frame("CRIS::SetUseSQLite", [&] {
        if (folder.trimmed().isEmpty())
            Raise(msg::DatabaseServerNotDefined);
        CloseConnection();
        m_dbConType = DBConType::SQLite;
        m_connection = std::make_unique<SqliteSchemaConnection>(folder);
        m_dbServerName = folder;
        m_dbUserName.clear();
    });
}

QString CRIS::ADOUnloadAndParse(const QString &sql, const QString &schema)
{
    return Frame("CRIS::ADOUnloadAndParse", [&] {
        SchemaConnection &connection = Connection();
        connection.UseSchema(schema, false);
        return UnloadQueryToTextFile(connection, sql, GetTempDir());
    });
}

bool CRIS::ORAConnTest(const QString &server, const QString &user, const QString &password)
{
    return Frame("CRIS::ORAConnTest", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::OracleServerNotDefined);
        OdbcConnection test(OracleAdminString(server, user, password));
        return true;
    });
}

bool CRIS::SQLConnTest(const QString &server, const QString &database, const QString &user, const QString &password)
{
    return Frame("CRIS::SQLConnTest", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::SQLServerNotDefined);
        OdbcConnection test(SQLServerConnectionString(ConfiguredOdbcDriver(configkey::SQLServerDriver), server,
                                                      database, user, password));
        return true;
    });
}

QStringList CRIS::ORACreateUserStatements(const QString &user, const QString &password, const QString &tablespace,
                                          const QString &tempTablespace) const
{
    return Frame("CRIS::ORACreateUserStatements",
                 [&] { return OracleCreateUserStatements(user, password, tablespace, tempTablespace); });
}

void CRIS::ORACreateUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                         const QStringList &users, const QStringList &passwords, const QString &tablespace,
                         const QString &tempTablespace)
{
    Frame("CRIS::ORACreateUser", [&] {
        CreateUsers(OracleAdminString(server, adminUser, adminPassword), users, passwords,
                    [&](const QString &user, const QString &password) {
                        return OracleCreateUserStatements(user, password, tablespace, tempTablespace);
                    });
    });
}

void CRIS::ORADropUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                       const QString &user)
{
    Frame("CRIS::ORADropUser", [&] {
        OdbcConnection admin(OracleAdminString(server, adminUser, adminPassword));
        RunStatements(admin, OracleDropUserStatements(user));
    });
}

bool CRIS::IsORAUserExists(const QString &server, const QString &adminUser, const QString &adminPassword,
                           const QString &user)
{
    return Frame("CRIS::IsORAUserExists", [&] {
        OdbcConnection admin(OracleAdminString(server, adminUser, adminPassword));
        return HasRows(admin, OracleUserExistsQuery(user));
    });
}

QStringList CRIS::SQLCreateUserStatements(const QString &user, const QString &password, const QString &database) const
{
    return Frame("CRIS::SQLCreateUserStatements",
                 [&] { return SQLServerCreateUserStatements(user, password, database); });
}

void CRIS::SQLCreateUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                         const QStringList &users, const QStringList &passwords, const QString &database)
{
    Frame("CRIS::SQLCreateUser", [&] {
        CreateUsers(SQLServerAdminString(server, adminUser, adminPassword), users, passwords,
                    [&](const QString &user, const QString &password) {
                        return SQLServerCreateUserStatements(user, password, database);
                    });
    });
}

void CRIS::SQLDropUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                       const QString &user)
{
    Frame("CRIS::SQLDropUser", [&] {
        OdbcConnection admin(SQLServerAdminString(server, adminUser, adminPassword));
        RunStatements(admin, SQLServerDropUserStatements(user));
    });
}

bool CRIS::IsSQLUserExists(const QString &server, const QString &adminUser, const QString &adminPassword,
                           const QString &user)
{
    return Frame("CRIS::IsSQLUserExists", [&] {
        OdbcConnection admin(SQLServerAdminString(server, adminUser, adminPassword));
        return HasRows(admin, SQLServerUserExistsQuery(user));
    });
}

} // namespace fx
