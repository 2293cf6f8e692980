#pragma once
// The backups a write-back leaves in "FendrixBackup" under the temporary folder: named by the
// moment and the project, kept for a week.

#include <QDateTime>
#include <QString>

namespace fx {

/// The backup files of one write-back, all named by one stamp.
struct BackupFiles
{
    QString dump;      ///< the project's clash tables as found
    QString clashFile; ///< the store
    QString loadDump;  ///< the merged tables that go into the project

    /// The three files of `stamp` in `folder` (with a trailing separator).
    static BackupFiles Named(const QString &folder, const QString &stamp);
};

/// "FendrixBackup" under the process's temporary folder, with a trailing separator.
QString BackupFolder();

/// The backup folder, made when it is missing; raises when it can't be made.
QString EnsureBackupFolder();

/// The stamp of a write-back's files: "yyyy-mm-dd_hhmmss_" and the project.
QString BackupStamp(const QDateTime &moment, const QString &project);

/// The files of the first stamp from `moment` on whose files are all still free in `folder`: a
/// second write-back within the same second must not overwrite the first one's backups.
BackupFiles UnusedBackupFiles(const QString &folder, const QDateTime &moment, const QString &project);

/// True when a file made at `created` is due for deletion at `now`: its calendar date lies more
/// than 7 days back, whatever the hours.
bool IsOldBackupFile(const QDateTime &created, const QDateTime &now);

/// Deletes every file of `folder` made more than 7 days before `now`, logging each; one that
/// can't be deleted stays for the next time.
void DeleteOldBackupFiles(const QString &folder, const QDateTime &now);

} // namespace fx
