#include "store/backupfiles.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/folders.h"
#include "frame/logmessage.h"
#include "frame/paths.h"
#include "frame/tempdir.h"
#include "store/messages.h"

#include <QDir>

namespace fx {

namespace {

constexpr int kKeptDays = 7;

} // namespace

BackupFiles BackupFiles::Named(const QString &folder, const QString &stamp)
{
    const QString base = AddBackslash(folder) + stamp;
    return {base + QStringLiteral("_clashes_backup.dmp"), base + QStringLiteral("_clashes_backup.fxdb"),
            base + QStringLiteral("_clashes_load.dmp")};
}

QString BackupFolder()
{
    return AddBackslash(GetTempFolder() + QStringLiteral("FendrixBackup"));
}

QString EnsureBackupFolder()
{
    return Frame("EnsureBackupFolder", [&] {
        const QString folder = BackupFolder();
        if (!IsFileExists(folder, true))
            CreateFolderA(folder);
        return folder;
    });
}

QString BackupStamp(const QDateTime &moment, const QString &project)
{
    return moment.toString(QStringLiteral("yyyy-MM-dd_HHmmss_")) + project;
}

BackupFiles UnusedBackupFiles(const QString &folder, const QDateTime &moment, const QString &project)
{
    for (QDateTime stamp = moment;; stamp = stamp.addSecs(1)) {
        const BackupFiles files = BackupFiles::Named(folder, BackupStamp(stamp, project));
        if (!IsFileExists(files.dump) && !IsFileExists(files.clashFile) && !IsFileExists(files.loadDump))
            return files;
    }
}

bool IsOldBackupFile(const QDateTime &created, const QDateTime &now)
{
    // Days are counted as calendar days between the two local dates, not as spans of 24 hours.
    return created.toLocalTime().date().daysTo(now.toLocalTime().date()) > kKeptDays;
}

void DeleteOldBackupFiles(const QString &folder, const QDateTime &now)
{
    Frame("DeleteOldBackupFiles", [&] {
        const QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
        for (const QString &name : files) {
            const QString file = AddBackslash(folder) + name;
            if (!IsOldBackupFile(GetFileDateCreated(file), now))
                continue;
            LogMessage(msg::DeletingOldBackupFile, {file});
            DeleteFileA(file, false);
        }
    });
}

} // namespace fx
