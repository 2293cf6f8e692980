#pragma once
// Clash files: a whole clash store saved under a name of the user's choice, carrying what it
// needs to be opened away from the project (project number, the project's paths, the units).

#include "pds/dgnsettings.h"
#include "pds/projfile.h"
#include "pds/sqlitedb.h"

#include <QString>
#include <QStringList>

namespace fx {

/// Saves the open store, compressed, to `file`; the target is written only by the final copy,
/// so a failed save leaves it as it was.
void SaveClashes2File(const QString &file);

/// Writes the project's design units into `dgn_settings` of the open store.
void SaveDGNSettings2MDB();
/// Writes `units` as the one row of `dgn_settings` in `db`.
void SaveDGNSettings2MDB(SqliteDb &db, const DGNSettings &units);

/// Writes the project's server and project folder into `proj_file_settings` of the open store.
void SaveProjFileSettings2MDB();

/// True when `file` is a clash store: it opens and holds `base_clash_table`. Raises only when
/// the file is missing.
bool IsValidMDB(const QString &file);

/// The project number a clash file belongs to (`pdtable_101`).
QString GetProjectNumber4MDB(const QString &file);

/// The control file record a clash file was saved with (`proj_file_settings`).
ProjFile GetProjFile4MDB(const QString &file);

/// The tables of a store, internal ones left out.
QStringList GetDBTables(SqliteDb &db);

/// The design units of the open store's `dgn_settings`, remembered per project.
QString GetMasterUnits();
qint32 GetSubPerMast();
qint32 GetUorPerSub();
/// The same of `db`, a store of `project`; 0 or empty when the table has no row.
QString GetMasterUnits(SqliteDb &db, const QString &project);
qint32 GetSubPerMast(SqliteDb &db, const QString &project);
qint32 GetUorPerSub(SqliteDb &db, const QString &project);

} // namespace fx
