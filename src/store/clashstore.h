#pragma once
// The one open project of the process: which project, where its store lies, and the shared
// connection to that store that every part of the clash store works through.

#include "pds/projfile.h"
#include "pds/sqlitedb.h"

#include <QString>

#include <memory>

namespace fx {

/// The opened project: its name and its control file's record.
struct ProjectDefinitionRecord
{
    QString name;
    ProjFile projFile;
};

/// The process-wide state of the clash store.
struct ClashStoreState
{
    ProjectDefinitionRecord ProjectDefinition;
    QString ClashFile;  ///< the clash file the project came from; empty for a control file
    QString WorkDB;     ///< the store's working copy; never the clash file itself
    std::unique_ptr<SqliteDb> ClashConnection;
    bool SchemaAvailable = false;
    bool ReadOnly = false;
    bool ClashesChanged = false;
};

/// The state itself, for the store's own procedures; others use the getters below.
ClashStoreState &ClashStore();

/// The open project's name, or "NO_PROJECT".
QString GetProjectName();
/// The open project's control file record.
const ProjFile &GetProjectProjFile();
/// The clash file the project was opened from; empty when it came from a control file.
QString GetClashFile();
/// The path of the store's working copy; empty with no project.
QString GetWorkDB();
/// True when the project's schema could be reached at opening.
bool IsSchemaAvailable();
/// True when the project was opened although locked: nothing goes back to it.
bool IsReadOnly();
/// True while the store holds unsaved changes.
bool GetClashesChanged();
/// Notes that the store holds unsaved changes, or that it holds none.
void SetClashesChanged(bool changed);

/// A file name in the work folder that no second process can hit: `prefix`, the process id, a
/// random part and `extension` (with its dot).
QString NewWorkFileName(const char *prefix, const char *extension);

/// The shared connection to the open store; raises when no project is open.
SqliteDb &ClashConnection();

/// Fixes which project is meant: a control file and a project, or a clash file (".fxdb"),
/// which names its project itself. Points the gateway at the project's database and tests
/// whether its schema is there.
void SetProjectDefinition(const QString &file, const QString &project);

/// Forgets the project: records, paths and flags emptied.
void ClearProjectDefinition();

/// Closes the project and deletes its working copy; safe with none open, never raises.
void FreeClashes();

/// The store's size limit in bytes: MaxDBSize of [Settings] in Fendrix.ini.
qint64 MaxDBSize();

/// Raises when `database` (empty: the working copy) is beyond the size limit; with `warn`,
/// shows a warning past 80 % of it and goes on.
void CheckIfMaxDBSizeIsReached(const QString &database, bool warn);

/// True when `file` names a clash file: its extension is "fxdb", case ignored.
bool IsClashFileName(const QString &file);

} // namespace fx
