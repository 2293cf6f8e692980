// SaveClashes2PDS: the order of a write-back, from the markers to the tail that always runs.

#include "store/savetoproject.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "frame/paths.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/projectlocks.h"
#include "pds/projectschema.h"
#include "pds/scratchfiles.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "store/backupfiles.h"
#include "store/clashfile.h"
#include "store/clashmerge.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/messages.h"
#include "store/projectload.h"


#include <exception>
#include <optional>

namespace fx {

namespace {

// The texts of one kind of marker held by someone else.
struct MarkerTexts
{
    const char *overwrite;
    const char *refused;
    const char *lockedBy;
};

// A marker held by someone else is taken over only by a user who may unlock markers and says
// so; No is the default, so that a run nobody watches never takes over another's marker.
void AskAboutMarker(const LockHolder &holder, const MarkerTexts &texts)
{
    const QString since = LockSinceText(holder.date);
    if (!IsPermissionGranted(PermissionUnlockMarkersNo))
        Raise(texts.lockedBy, {holder.owner, since});
    const int answer =
        ShowMessage(ArgForm(texts.overwrite, {holder.owner, since, QStringLiteral("\n")}), MbYesNo | MbIconCritical | MbDefButton2);
    if (answer != IdYes)
        Raise(texts.refused);
}

// Gives the date of the project lock the user agreed to take over; null when it was free.
QDateTime CheckMarkers(CRIS &cris, const QString &project)
{
    LogMessage(msg::CheckingProjectMarker, {});
    LockHolder holder;
    QDateTime takeOver;
    if (IsProjectLocked(cris, project, &holder)) {
        AskAboutMarker(holder, {msg::ProjectMarkerOverwrite, msg::ProjectMarkerLocked, msg::ProjectMarkerLockedBy});
        takeOver = holder.date;
    }
    LogMessage(msg::CheckingAreaMarkers, {});
    QList<AreaLockHolder> areas;
    if (IsIntAreaLocked(cris, project, &areas))
        AskAboutMarker(areas.isEmpty() ? LockHolder{} : areas.first().holder,
                       {msg::AreaMarkersOverwrite, msg::AreaMarkersLocked, msg::AreaMarkersLockedBy});
    return takeOver;
}

// Before anything reaches the project: the merge may add review rows, never lose any.
void VerifyMergeCounts(const MergeCounts &counts)
{
    if (counts.merged132 != counts.schema132 || counts.merged132 == 0)
        Raise(msg::IncorrectRecordsCount, {QStringLiteral("pdtable_132"), QString::number(counts.schema132),
                                           QString::number(counts.merged132)});
    if (counts.merged135 < counts.schema135)
        Raise(msg::IncorrectRecordsCount, {QStringLiteral("pdtable_135"), QString::number(counts.schema135),
                                           QString::number(counts.merged135)});
}

// After the load the project must hold what the merge held; if not, a person restores it from
// the backup that the text names.
void VerifyLoadedCounts(const SchemaClashCounts &loaded, const MergeCounts &merged, const QString &backupDump)
{
    const auto check = [&](const char *table, qint64 schema, qint64 store) {
        if (schema != store)
            Raise(msg::LoadRecordsCountCritical, {QLatin1String(table), QString::number(schema), QString::number(store),
                                                  QStringLiteral("\n"), backupDump});
    };
    check("pdtable_132", loaded.clashes, merged.merged132);
    check("pdtable_135", loaded.reviews, merged.merged135);
}

// How far a write-back came, for its tail.
struct WriteBackRun
{
    QString schema;
    QString mergeDatabase;
    QString toolLog;
    BackupFiles backups;
    std::optional<SqliteDb> db; ///< the private connection to the merge database
    bool noChanges = false;     ///< the merge ran to its end and found nothing to write
};

void MergeAndLoad(CRIS &cris, const QString &project, WriteBackRun &run)
{
    SaveClashTable();
    CreateMDB(run.mergeDatabase, true);
    const qint64 clashes = CopyStoreTables(GetWorkDB(), run.mergeDatabase);
    LogMessage(msg::ClashesInStoreFound, {QString::number(clashes)});

    const QString folder = EnsureBackupFolder();
    const QDateTime now = QDateTime::currentDateTime();
    DeleteOldBackupFiles(folder, now);
    run.backups = UnusedBackupFiles(folder, now, project);
    FetchProjectClashTables(cris, run.schema, run.mergeDatabase, run.backups.dump);

    run.db.emplace(run.mergeDatabase);
    // A scratch file that goes at the end: no journal on disk, no waiting for the disk.
    run.db->Execute(QStringLiteral("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF;"));
    ClashMerge merge(*run.db, run.schema);
    merge.Prepare();
    const bool changesFound = merge.Merge(cris.GetDBConType() != DBConType::RIS);
    VerifyMergeCounts(merge.Counts());
    if (!changesFound) {
        run.noChanges = true;
        Raise(msg::NoChangesFound, {run.schema}, NoChangesFoundNumber);
    }

    SaveClashes2File(run.backups.clashFile);
    LoadProjectClashTables(cris, run.schema, *run.db, run.mergeDatabase, run.backups, run.toolLog);
    VerifyLoadedCounts(ReadSchemaClashCounts(cris, run.schema), merge.Counts(), run.backups.dump);
    CleanSchemaAfterLoad(cris, run.schema);
}

// The end of every write-back, with errors ignored: the private database and the tool's log
// go; the backups go only when there was nothing to write, for then they back up nothing.
void CloseRun(WriteBackRun &run)
{
    try {
        if (run.db)
            CloseConnection(*run.db);
    } catch (const std::exception &) {
    }
    run.db.reset();
    if (run.noChanges) {
        LogMessage(msg::NoChangesFound, {run.schema});
        for (const QString &file : {run.backups.dump, run.backups.clashFile, run.backups.loadDump}) {
            if (file.isEmpty() || !IsFileExists(file))
                continue;
            LogMessage(msg::DeletingBackupFile, {file});
            DeleteFileA(file, false);
        }
    }
    DeleteFileA(run.mergeDatabase, false);
    DeleteFileA(run.toolLog, false);
}

void WriteBack()
{
    CRIS &cris = TheCRIS();
    const QString project = GetProjectName();
    LogMessage(msg::WritingChangesToSchema, {GetLogonUserName()});
    if (!IsSchemaAvailable())
        Raise(msg::WriteBackSchemaNotExists);
    const QDateTime takeOver = CheckMarkers(cris, project);

    // From here to the end the project and all its areas stay marked. The project's marker is
    // claimed, not just set: a second write-back that checked at the same moment loses here.
    const QString owner = QStringLiteral("FX_") + GetLogonUserName();
    std::optional<ProjectLockGuard> projectLock(std::in_place, cris, project, owner, ProjectLockGuard::Claim{takeOver});
    std::optional<AreaLockGuard> areaLock(std::in_place, cris, project, owner);

    WriteBackRun run;
    run.schema = GetProjectSchema(project);
    run.mergeDatabase = NewWorkFileName("fxmerge", ".fxdb");
    run.toolLog = NewWorkFileName("fxload", ".log");
    // Whatever way the run ends, these go too, with the journals that SQLite may leave.
    const ScratchFile mergeFile(run.mergeDatabase), mergeJournal(run.mergeDatabase + QStringLiteral("-journal")),
        toolLog(run.toolLog);
    std::exception_ptr pending;
    try {
        MergeAndLoad(cris, project, run);
    } catch (...) {
        pending = std::current_exception();
    }
    CloseRun(run);
    // A failure to release is logged by the guard, never raised over the outcome.
    projectLock.reset();
    areaLock.reset();
    if (pending)
        std::rethrow_exception(pending);
    LogMessage(msg::ChangesWritten, {});
}

} // namespace

void SaveClashes2PDS()
{
    try {
        Frame("SaveClashes2PDS", [] { WriteBack(); });
    } catch (const Failure &failure) {
        // Nothing to write is told by the tail's own line; every other failure is logged here once.
        if (failure.Number() != NoChangesFoundNumber)
            LogMessage(failure.Source() + QStringLiteral(": ") + failure.Description());
        throw;
    }
}

} // namespace fx
