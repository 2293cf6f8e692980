#pragma once
// Which database holds a project's schema: the section "<project>Database" of the user config file.

#include "pds/cris.h"

#include <QString>

namespace fx {

/// A project's database as the user config file names it. Without the section, RIS.
struct ProjectDatabase
{
    DBConType type = DBConType::RIS;
    QString server;   ///< Oracle's service, SQL Server's server, PostgreSQL's "host[:port]"
    QString database; ///< SQL Server's and PostgreSQL's database
    QString user;
    QString password;
    QString path;     ///< RIS: the tools' folder (blank: found through the registry); SQLite: the schemas' folder
};

/// Reads section "<project>Database" of `configFile`: Type (RIS, Oracle, SQLServer, PostgreSQL,
/// SQLite, or the kind's number), Server, Database, User, Password, Path.
ProjectDatabase GetProjectDatabase(const QString &configFile, const QString &project);

/// Points the gateway at the project's database.
void UseProjectDatabase(CRIS &cris, const ProjectDatabase &database);

} // namespace fx
