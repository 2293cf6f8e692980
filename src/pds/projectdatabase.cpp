#include "pds/projectdatabase.h"

#include "frame/failure.h"
#include "frame/settings.h"
#include "pds/messages.h"

namespace fx {

namespace {

DBConType TypeOfText(const QString &text)
{
    const QString type = text.trimmed().toLower();
    if (type.isEmpty() || type == QLatin1String("ris") || type == QLatin1String("0"))
        return DBConType::RIS;
    if (type == QLatin1String("oracle") || type == QLatin1String("1"))
        return DBConType::Oracle;
    if (type == QLatin1String("sqlserver") || type == QLatin1String("mssql") || type == QLatin1String("2"))
        return DBConType::SQLServer;
    if (type == QLatin1String("postgresql") || type == QLatin1String("postgres") || type == QLatin1String("3"))
        return DBConType::PostgreSQL;
    if (type == QLatin1String("sqlite") || type == QLatin1String("4"))
        return DBConType::SQLite;
    Raise(msg::UnknownDatabaseType, {text});
}

} // namespace

ProjectDatabase GetProjectDatabase(const QString &configFile, const QString &project)
{
    return Frame("GetProjectDatabase", [&] {
        const QString section = project + QStringLiteral("Database");
        auto value = [&](const char *key) { return GetIniValue(configFile, section, QString::fromLatin1(key)); };
        ProjectDatabase database;
        database.type = TypeOfText(value("Type"));
        database.server = value("Server");
        database.database = value("Database");
        database.user = value("User");
        database.password = value("Password");
        database.path = value("Path");
        return database;
    });
}

void UseProjectDatabase(CRIS &cris, const ProjectDatabase &database)
{
    Frame("UseProjectDatabase", [&] {
        switch (database.type) {
        case DBConType::Oracle:
            cris.SetUseOra(database.server, database.user, database.password);
            break;
        case DBConType::SQLServer:
            cris.SetUseSQL(database.server, database.database, database.user, database.password);
            break;
        case DBConType::PostgreSQL:
            cris.SetUsePostgreSQL(database.server, database.database, database.user, database.password);
            break;
        case DBConType::SQLite:
            cris.SetUseSQLite(database.path);
            break;
        case DBConType::RIS:
        case DBConType::Unset:
            cris.SetUseRIS(database.path);
            break;
        }
    });
}

} // namespace fx
