#pragma once
// The project's side of a write-back: its clash tables fetched with a backup before the merge,
// the merged tables loaded after it, and the counts read back. RIS schemas go through the RIS
// tools; the SQL kinds through the gateway, the load in one transaction.

#include "pds/sqlitedb.h"

#include <QString>

namespace fx {

class CRIS;
struct BackupFiles;

/// The tables a write-back fetches from the project, and those it loads back.
inline constexpr char FetchedClashTables[] = "pdtable_131;pdtable_132;pdtable_135";
inline constexpr char LoadedClashTables[] = "pdtable_132;pdtable_135";

/// Writes the project's clash tables as found into the backup dump `backupDump` and copies
/// them into the private database `database`.
void FetchProjectClashTables(CRIS &cris, const QString &schema, const QString &database, const QString &backupDump);

/// Writes the merged clash tables of the private database `db` (file `database`) to the load
/// dump of `backups` and loads them into the project. A RIS schema takes the dump through
/// rislod, whose log goes to `toolLog` and then into the program's log; the SQL kinds take the
/// changed and new rows in one transaction.
void LoadProjectClashTables(CRIS &cris, const QString &schema, SqliteDb &db, const QString &database,
                            const BackupFiles &backups, const QString &toolLog);

/// The record counts of the project's clash and review tables, read back after a load.
struct SchemaClashCounts
{
    qint64 clashes = 0;
    qint64 reviews = 0;
};

/// Reads and logs the counts of `pdtable_132` and `pdtable_135` of the schema.
SchemaClashCounts ReadSchemaClashCounts(CRIS &cris, const QString &schema);

/// Cleans the RIS schema after a load; other kinds need nothing.
void CleanSchemaAfterLoad(CRIS &cris, const QString &schema);

} // namespace fx
