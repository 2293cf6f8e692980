#include "store/loadclashes.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/log.h"
#include "frame/loggedframe.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/messages.h"
#include "pds/projectlocks.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/messages.h"
#include "store/options.h"
#include "store/workingdatabase.h"


#include <optional>

namespace fx {

namespace {

// What a lock prompt needs to know of one kind of marker.
struct MarkerPrompt
{
    const char *unlockText;
    const char *continueText;
    const char *lockedText;
    void (*unlock)(CRIS &, const QString &);
};

// Asks the user about a marker held by someone else. Gives false when the load goes on
// without taking markers, true when it may take them; raises when the user refuses.
bool AskAboutLockedMarker(CRIS &cris, const QString &project, const LockHolder &holder, const MarkerPrompt &prompt,
                          bool &readOnly)
{
    const bool allowLocked = GetOptionFlag(option::AllowOpenLockedProject);
    const QStringList args = {holder.owner, LockSinceText(holder.date), QStringLiteral("\n"),
                              allowLocked ? QStringLiteral(" ") : QString::fromLatin1(msg::ReadOnlyModeText)};
    if (IsPermissionGranted(PermissionUnlockMarkersNo)) {
        const int answer =
            ShowMessage(ArgForm(prompt.unlockText, args), MbYesNoCancel | MbIconCritical | MbDefButton3);
        if (answer == IdYes) {
            prompt.unlock(cris, project);
            return true;
        }
        if (answer != IdNo)
            Raise(prompt.lockedText);
    } else {
        const int answer = ShowMessage(ArgForm(prompt.continueText, args), MbYesNo | MbIconCritical);
        if (answer != IdYes)
            Raise(prompt.lockedText);
    }
    readOnly = !allowLocked;
    return false;
}

void LoadFromClashFile(ClashStoreState &state)
{
    LogMessage(msg::LoadingClashesFromFile, {state.ClashFile});
    CheckIfMaxDBSizeIsReached(state.ClashFile, false);
    CopyFileA(state.ClashFile, state.WorkDB);
    state.ClashConnection = std::make_unique<SqliteDb>(state.WorkDB);
    SetStoreWriteMode(*state.ClashConnection, StoreWriteMode::Building);
}

void LoadFromSchema(ClashStoreState &state)
{
    CRIS &cris = TheCRIS();
    const QString project = state.ProjectDefinition.name;
    LogMessage(msg::LoadingClashesFromSchema, {});
    bool lockWanted = true;
    bool readOnly = false;

    LogMessage(msg::CheckingProjectMarker, {});
    LockHolder projectHolder;
    if (IsProjectLocked(cris, project, &projectHolder)) {
        const MarkerPrompt prompt{msg::ProjectMarkerLockedUnlock, msg::ProjectMarkerLockedContinue,
                                  msg::ProjectMarkerLocked, &ProjectUnlockA};
        if (!AskAboutLockedMarker(cris, project, projectHolder, prompt, readOnly))
            lockWanted = false;
    }

    LogMessage(msg::CheckingAreaMarkers, {});
    QList<AreaLockHolder> areaHolders;
    if (IsIntAreaLocked(cris, project, &areaHolders)) {
        const MarkerPrompt prompt{msg::AreaMarkersLockedUnlock, msg::AreaMarkersLockedContinue,
                                  msg::AreaMarkersLocked, &IntAreaUnlock};
        const LockHolder holder = areaHolders.isEmpty() ? LockHolder{} : areaHolders.first().holder;
        if (!AskAboutLockedMarker(cris, project, holder, prompt, readOnly))
            lockWanted = false;
    }
    state.ReadOnly = readOnly;

    WorkingDatabase store = [&] {
        // The markers guard the copy only; whatever way the import ends, they go with it.
        std::optional<ProjectLockGuard> projectLock;
        std::optional<AreaLockGuard> areaLock;
        if (lockWanted) {
            const QString owner = QStringLiteral("FX_") + GetLogonUserName();
            projectLock.emplace(cris, project, owner);
            areaLock.emplace(cris, project, owner);
        }
        WorkingDatabase copy(state.WorkDB);
        copy.ImportProjectTables(cris, project);
        if (projectLock)
            projectLock->Release();
        if (areaLock)
            areaLock->Release();
        return copy;
    }();

    LogMessage(msg::PreparingClashData, {});
    CheckIfMaxDBSizeIsReached(QString(), false);
    state.ClashConnection = std::make_unique<SqliteDb>(std::move(store.Db()));
    SqliteDb &db = *state.ClashConnection;
    SetStoreWriteMode(db, StoreWriteMode::Building);

    CreateStIndex(db);
    if (db.Read(QStringLiteral("SELECT COUNT(*) FROM [pdtable_132];")).Value(0, 0).toLongLong() == 0)
        Raise(msg::NoClashesInProject, {project, QStringLiteral("\n")});
    if (!db.Read(QStringLiteral("SELECT unique_clash_id FROM [pdtable_132] GROUP BY unique_clash_id "
                                "HAVING(((Count(pdtable_132.unique_clash_id))>1));"))
             .IsEmpty())
        Raise(msg::DoubleClashes, {project, QStringLiteral("\n")});
    CleanProjectTables(db);
}

} // namespace

void LoadClashes()
{
    Frame("LoadClashes", [&] {
        ClashStoreState &state = ClashStore();
        try {
            if (!state.ClashFile.isEmpty())
                LoadFromClashFile(state);
            else
                LoadFromSchema(state);
            LogMessage(msg::ClashesLoaded, {});
        } catch (...) {
            FreeClashes();
            throw;
        }
    });
}

void InitClashes(const QString &file, const QString &project)
{
    LoggedFrame("InitClashes", [&] {
        try {
            FreeClashes();
            SetProjectDefinition(file, project);
            InitLog(ApplicationTitle(), GetProjectName(), QString());
            LogMessage(msg::LoadingProject, {GetProjectName(), file});
            try {
                const ProjFile &projFile = GetProjectProjFile();
                PrivilegePermissionsSet(PermissionNames(),
                                        GetPermissionDBFileName(projFile.PROJ_ADDR, projFile.PROJ_FILE, false));
                PrivilegeMyPermissionInit();
            } catch (const std::exception &) {
                // A missing privilege database must not keep the project closed.
            }
            LoadClashes();
            const bool fromClashFile = IsClashFileName(file);
            if (!fromClashFile) {
                // A copy of the store then carries what it needs away from the project.
                SaveProjFileSettings2MDB();
                SaveDGNSettings2MDB();
            }
            InitClashTables(ClashConnection(), GetProjectName(), !fromClashFile);
            SetStoreWriteMode(ClashConnection(), StoreWriteMode::Reviewing);
            CheckIfMaxDBSizeIsReached(QString(), false);
        } catch (...) {
            FreeClashes();
            throw;
        }
    });
}

} // namespace fx
