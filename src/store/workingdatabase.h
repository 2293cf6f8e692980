#pragma once
// The working database of the clash store: a local copy of the twelve project tables that the
// working tables are derived from, cleaned of what the rest of the store must never see.

#include "pds/sqlitedb.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace fx {

class CRIS;

/// The project tables the store copies, in the order of the copy.
QStringList ProjectTableList();

/// The clash store's wrapper of the gateway's import: logs before and after.
void DBImport2Access(CRIS &cris, const QString &schema, const QString &sql, const QString &database);

/// True when `table` of the local database has a column of that name (case ignored).
bool IsLocalColumnExists(SqliteDb &db, const QString &table, const QString &column);

/// An index on every column of `table`, each dropped first; a failure is logged only.
void IndexAllColumns(SqliteDb &db, const QString &table);

/// The single-column indices of the imported tables, in their fixed order.
void CreateStIndex(SqliteDb &db);

/// Deletes what the store must not see: status 99 clashes, all but the newest occurrence and
/// review of a clash, components without table or row number.
void CleanProjectTables(SqliteDb &db);

/// How the store's connection writes. While a project is built nothing in the store is the
/// only copy of anything, so a crash just means building again: no journal on disk and no
/// waiting for the disk. Once reviews can be made, every change is journaled and synced again.
/// The cache stays SQLite's own: a larger one made the index builds and the grid's sorts of
/// 500,000 rows slower, as SQLite then sorts in memory in bigger runs.
enum class StoreWriteMode { Building, Reviewing };
void SetStoreWriteMode(SqliteDb &db, StoreWriteMode mode);

/// The helper threads SetStoreWriteMode gives SQLite's sorter: one per core beyond the caller's.
int SorterThreads();

/// Runs `work` with a page cache that holds the tables a join looks rows up in at random (the
/// components of every clash). With SQLite's own cache those lookups read from the file again
/// and again, more so the larger the project. The own cache is put back for the sorts after.
void WithJoinCache(SqliteDb &db, const std::function<void()> &work);

/// A fresh working database filled from one project's schema.
class WorkingDatabase
{
public:
    /// Creates `file` anew (an existing one is replaced) and opens it.
    explicit WorkingDatabase(const QString &file);

    /// Copies the twelve tables of project `project` through `cris`; pdtable_119 only when the
    /// schema has it, else created empty so that every join can rely on it.
    void ImportProjectTables(CRIS &cris, const QString &project);

    SqliteDb &Db() { return m_db; }
    const QString &File() const { return m_db.File(); }

private:
    SqliteDb m_db;
};

} // namespace fx
