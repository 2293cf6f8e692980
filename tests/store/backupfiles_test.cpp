// The backups of a write-back: where they go, how they are named, and the week they are kept,
// counted in calendar days.

#include "frame/failure.h"
#include "frame/log.h"
#include "store/backupfiles.h"
#include "store/messages.h"

#include "support/failures.h"
#include "support/loglines.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(BackupFiles, the_three_files_of_a_write_back_share_one_stamp_in_the_backup_folder_under_temp)
{
    fxtest::Sandbox box;
    const QString folder = EnsureBackupFolder();
    EXPECT_EQ(folder, box.Temp() + u"FendrixBackup/"_s);
    EXPECT_TRUE(QDir(folder).exists());
    EXPECT_EQ(EnsureBackupFolder(), folder) << "an existing folder is taken as it is";

    const QString stamp = BackupStamp(QDateTime(QDate(2024, 3, 5), QTime(7, 8, 9)), u"P1"_s);
    EXPECT_EQ(stamp, u"2024-03-05_070809_P1"_s);
    const BackupFiles files = BackupFiles::Named(folder, stamp);
    EXPECT_EQ(files.dump, folder + u"2024-03-05_070809_P1_clashes_backup.dmp"_s);
    EXPECT_EQ(files.clashFile, folder + u"2024-03-05_070809_P1_clashes_backup.fxdb"_s);
    EXPECT_EQ(files.loadDump, folder + u"2024-03-05_070809_P1_clashes_load.dmp"_s);

    // A second write-back in the same second takes the next free second, whichever file is there.
    const QDateTime moment(QDate(2024, 3, 5), QTime(7, 8, 9));
    EXPECT_EQ(UnusedBackupFiles(folder, moment, u"P1"_s).dump, files.dump);
    box.WriteFile(u"temp/FendrixBackup/2024-03-05_070809_P1_clashes_load.dmp"_s, "load");
    box.WriteFile(u"temp/FendrixBackup/2024-03-05_070810_P1_clashes_backup.dmp"_s, "dump");
    EXPECT_EQ(UnusedBackupFiles(folder, moment, u"P1"_s).clashFile, folder + u"2024-03-05_070811_P1_clashes_backup.fxdb"_s);
    EXPECT_EQ(UnusedBackupFiles(folder, moment, u"P2"_s).dump, folder + u"2024-03-05_070809_P2_clashes_backup.dmp"_s);

    // A file where the folder should be keeps the folder from being made.
    fxtest::Sandbox other;
    QFile blocker(other.Temp() + u"FendrixBackup"_s);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    EXPECT_TRUE(fxtest::FailureText([] { EnsureBackupFolder(); }).startsWith(u"EnsureBackupFolder: "_s));
}

TEST(BackupFiles, a_file_goes_when_its_date_lies_more_than_seven_calendar_days_back)
{
    const QDateTime lateEvening(QDate(2024, 3, 1), QTime(23, 59));
    EXPECT_FALSE(IsOldBackupFile(lateEvening, lateEvening.addDays(7)));
    EXPECT_FALSE(IsOldBackupFile(lateEvening, QDateTime(QDate(2024, 3, 8), QTime(23, 59, 59))));
    EXPECT_TRUE(IsOldBackupFile(lateEvening, QDateTime(QDate(2024, 3, 9), QTime(0, 1))))
        << "seven days and two minutes reach the eighth date";
    const QDateTime midnight(QDate(2024, 3, 2), QTime(0, 0));
    EXPECT_FALSE(IsOldBackupFile(midnight, QDateTime(QDate(2024, 3, 9), QTime(23, 59))))
        << "almost eight days, but only seven dates apart";
    EXPECT_FALSE(IsOldBackupFile(midnight, midnight.addDays(-3))) << "a file from the future is no old file";
}

TEST(BackupFiles, the_sweep_keeps_a_file_made_seven_days_before_and_deletes_it_a_day_later_with_a_log_line)
{
    fxtest::Sandbox box;
    InitLog(QString(), u"backupfiles"_s, QString());
    const QString folder = EnsureBackupFolder();
    const QString dump = box.WriteFile(u"temp/FendrixBackup/2024-03-05_070809_P1_clashes_backup.dmp"_s, "dump");
    const QString clashFile = box.WriteFile(u"temp/FendrixBackup/2024-03-05_070809_P1_clashes_backup.fxdb"_s, "store");
    ASSERT_TRUE(QDir(folder).mkdir(u"kept by someone"_s));
    const QDateTime made = GetFileDateCreated(dump);
    ASSERT_TRUE(made.isValid());

    DeleteOldBackupFiles(folder, made.addDays(7));
    EXPECT_TRUE(QFile::exists(dump));
    EXPECT_TRUE(QFile::exists(clashFile));

    DeleteOldBackupFiles(folder, made.addDays(8));
    EXPECT_FALSE(QFile::exists(dump));
    EXPECT_FALSE(QFile::exists(clashFile));
    EXPECT_TRUE(QDir(folder + u"kept by someone"_s).exists()) << "folders are not the sweep's";
    EXPECT_EQ(fxtest::LogLineCount(ArgForm(msg::DeletingOldBackupFile, {dump})), 1);
    EXPECT_EQ(fxtest::LogLineCount(ArgForm(msg::DeletingOldBackupFile, {clashFile})), 1);
}
