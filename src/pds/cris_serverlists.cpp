// The gateway's lists for the options dialog: Oracle net service names, registered SQL Server
// aliases and the databases of a SQL Server.

#include "pds/cris.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/paths.h"
#include "frame/registry.h"
#include "pds/messages.h"
#include "pds/odbc.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace fx {

namespace {

const QString kConnectToKey = QStringLiteral("SOFTWARE\\Microsoft\\MSSQLServer\\Client\\ConnectTo");

// One top-level "names = value" entry of tnsnames.ora; `value` is kept only when it is plain
// text (as IFILE's path), not a parenthesised description.
struct TNSEntry
{
    QStringList names;
    QString value;
};

QList<TNSEntry> ParseTNSEntries(const QString &text)
{
    QList<TNSEntry> entries;
    QString pending;
    int depth = 0;
    bool inValue = false;
    for (QString line : text.split(QLatin1Char('\n'))) {
        const qsizetype hash = line.indexOf(QLatin1Char('#'));
        if (hash >= 0)
            line.truncate(hash);
        for (const QChar ch : line) {
            if (ch == QLatin1Char('(')) {
                ++depth;
            } else if (ch == QLatin1Char(')')) {
                depth = qMax(0, depth - 1);
                if (depth == 0)
                    inValue = false;
            } else if (depth > 0) {
                continue;
            } else if (!inValue && ch == QLatin1Char('=')) {
                TNSEntry entry;
                // "a, b = (...)" gives one description several names.
                for (const QString &name : pending.split(QLatin1Char(','))) {
                    if (!name.trimmed().isEmpty())
                        entry.names << name.trimmed();
                }
                if (!entry.names.isEmpty())
                    entries << entry;
                pending.clear();
                inValue = true;
            } else if (inValue) {
                if (!entries.isEmpty())
                    entries.last().value += ch;
            } else {
                pending += ch;
            }
        }
        // A plain value ends with its line; a description may start on the next one.
        if (inValue && depth == 0 && !entries.isEmpty() && !entries.last().value.trimmed().isEmpty())
            inValue = false;
    }
    return entries;
}

void CollectTNSNames(const QString &file, QSet<QString> &visited, QStringList &names)
{
    const QString canonical = QFileInfo(file).absoluteFilePath();
    if (visited.contains(canonical) || !IsFileExists(file))
        return;
    visited.insert(canonical);
    for (const TNSEntry &entry : ParseTNSEntries(ReadFile2String(file, false))) {
        if (entry.names.size() == 1 && entry.names.first().compare(QLatin1String("IFILE"), Qt::CaseInsensitive) == 0) {
            QString included = entry.value.trimmed();
            if (included.size() > 1 && included.startsWith(QLatin1Char('"')) && included.endsWith(QLatin1Char('"')))
                included = included.mid(1, included.size() - 2);
            if (QFileInfo(included).isRelative())
                included = AddBackslash(GetFolderOfPath(file)) + included;
            CollectTNSNames(included, visited, names);
            continue;
        }
        for (const QString &name : entry.names) {
            if (!names.contains(name, Qt::CaseInsensitive))
                names << name;
        }
    }
}

// The first of TNS_ADMIN and ORACLE_HOME/network/admin that holds a tnsnames.ora.
QString FindTNSNamesFile()
{
    QStringList folders;
    const QString tnsAdmin = qEnvironmentVariable("TNS_ADMIN");
    if (!tnsAdmin.trimmed().isEmpty())
        folders << tnsAdmin;
    const QString oracleHome = qEnvironmentVariable("ORACLE_HOME");
    if (!oracleHome.trimmed().isEmpty())
        folders << AddBackslash(oracleHome) + QDir::toNativeSeparators(QStringLiteral("network/admin"));
    for (const QString &folder : folders) {
        const QString file = AddBackslash(folder) + QStringLiteral("tnsnames.ora");
        if (IsFileExists(file))
            return file;
    }
    return QString();
}

} // namespace

QStringList TNSNamesOfFile(const QString &file)
{
    return Frame("TNSNamesOfFile", [&] {
        QSet<QString> visited;
        QStringList names;
        CollectTNSNames(file, visited, names);
        names.sort(Qt::CaseInsensitive);
        return names;
    });
}

QString SQLServerDatabasesQuery()
{
    return QStringLiteral("SELECT name FROM sys.databases ORDER BY name");
}

QStringList CRIS::GetTNSNames()
{
    return Frame("CRIS::GetTNSNames", [&] {
        const QString file = FindTNSNamesFile();
        return file.isEmpty() ? QStringList() : TNSNamesOfFile(file);
    });
}

QStringList CRIS::GetRegisteredSQLServers()
{
    return Frame("CRIS::GetRegisteredSQLServers", [&] {
        if (!RegKeyExists(RegRoot::LocalMachine, kConnectToKey))
            return QStringList();
        return RegGetValues(RegRoot::LocalMachine, kConnectToKey);
    });
}

QStringList CRIS::GetSQLServerDatabases(const QString &server, const QString &user, const QString &password)
{
    return Frame("CRIS::GetSQLServerDatabases", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::SQLServerNotDefined);
        OdbcConnection connection(SQLServerAdminString(server, user, password));
        const Recordset result = connection.Read(SQLServerDatabasesQuery());
        QStringList databases;
        for (const QVariantList &row : result.Rows())
            databases << row.at(0).toString();
        return databases;
    });
}

} // namespace fx
