#include "frame/fileops.h"
#include "frame/programinfo.h"
#include "support/failures.h"
#include "support/fileholder.h"
#include "support/sandbox.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <functional>

using fxtest::FailureText;
using fxtest::Sandbox;

TEST(FileQueries, tell_files_from_folders_follow_the_owner_write_bit_version_only_the_program_and_read_lines)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "one\r\ntwo\n\nfour\rstill four\r\nfive");
    EXPECT_TRUE(fx::IsFileExists(file));
    EXPECT_FALSE(fx::IsFileExists(file, true));
    EXPECT_TRUE(fx::IsFileExists(sandbox.Temp(), true));
    EXPECT_FALSE(fx::IsFileExists(sandbox.Temp()));
    EXPECT_FALSE(fx::IsFileReadOnly(file));
    EXPECT_FALSE(fx::IsFileReadOnly(sandbox.Root() + QStringLiteral("missing")));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    EXPECT_TRUE(fx::IsFileReadOnly(file)); // also for root, who could still write it
    EXPECT_EQ(fx::GetFileVersion(fx::ProgramFilePath()), fx::ProgramVersion());
    EXPECT_EQ(fx::GetFileVersion(file), QString());
    // CR LF and LF end a line, a lone CR does not; a last line needs no end.
    EXPECT_THAT(fx::ReadFile2Array(file), testing::ElementsAre("one", "two", "", "four\rstill four", "five"));
    EXPECT_TRUE(fx::ReadFile2Array(sandbox.WriteFile(QStringLiteral("empty.txt"), "")).isEmpty());
}

TEST(CopyMoveDelete, replace_the_target_take_a_folder_as_where_to_go_remove_trees_and_cross_file_systems)
{
    Sandbox sandbox;
    const QString source = sandbox.WriteFile(QStringLiteral("a.txt"), "new");
    const QString target = sandbox.WriteFile(QStringLiteral("b.txt"), "old and longer");
    fx::CopyFileA(source, target);
    EXPECT_EQ(Sandbox::ReadFile(target), "new");
    fx::MoveFileA(source, sandbox.Temp());
    EXPECT_EQ(Sandbox::ReadFile(sandbox.Temp() + QStringLiteral("a.txt")), "new");
    EXPECT_FALSE(QFileInfo::exists(source));
    EXPECT_TRUE(fx::DeleteFileA(source)); // what is missing is already gone
    const QString tree = sandbox.Root() + QStringLiteral("tree");
    sandbox.WriteFile(QStringLiteral("tree/c/d.txt"), "d");
    fx::DeleteFolderA(tree);
    EXPECT_FALSE(QFileInfo::exists(tree));
    EXPECT_TRUE(fx::DeleteFolderA(tree));

    QTemporaryDir far(QStringLiteral("/dev/shm/fendrix-XXXXXX"));
    if (!far.isValid() || QStorageInfo(far.path()) == QStorageInfo(sandbox.Root()))
        GTEST_SKIP() << "no second file system at /dev/shm";
    const QString old = far.filePath(QStringLiteral("old.txt"));
    ASSERT_TRUE(QFile(old).open(QIODevice::WriteOnly));
    fx::MoveFileA(target, old);
    EXPECT_EQ(Sandbox::ReadFile(old), "new");
    EXPECT_FALSE(QFileInfo::exists(target));
}

TEST(FileOps, failures_name_the_operation_and_the_cause_and_leave_the_file_alone)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    const QString missing = sandbox.Root() + QStringLiteral("missing.txt");
    const QString notExists = QStringLiteral("File '%0%' not exists|||");
    const QString errorCode = QStringLiteral("Error code: %0%|||errno"); // the system's number and text
    const QString unwritable = QStringLiteral("/proc/fendrix.txt");
    const std::pair<std::function<void()>, QString> cases[] = {
        {[&] { fx::CopyFileA(missing, sandbox.Temp()); }, QStringLiteral("CopyFileA: ") + notExists + missing},
        {[&] { fx::CopyFileA(file, unwritable); }, QStringLiteral("CopyFileA: ") + errorCode},
        {[&] { fx::MoveFileA(file, unwritable); }, QStringLiteral("MoveFileA: ") + errorCode},
        {[&] { fx::DeleteFileA(QStringLiteral("/proc/self/status")); }, QStringLiteral("DeleteFileA: ") + errorCode},
        {[&] { fx::DeleteFolderA(file); }, QStringLiteral("DeleteFolderA: ") + errorCode},
        {[&] { fx::ReadFile2Array(missing); }, QStringLiteral("ReadFile2Array: ") + notExists + missing},
        {[&] { fx::ReadFile2String(sandbox.Temp()); }, QStringLiteral("ReadFile2String: ") + notExists + sandbox.Temp()},
    };
    static const QRegularExpression systemError(QStringLiteral("\\|\\|\\|\\d+ \\(.+\\)$"));
    for (const auto &[act, expected] : cases) {
        EXPECT_EQ(FailureText(act).replace(systemError, QStringLiteral("|||errno")), expected);
        EXPECT_EQ(Sandbox::ReadFile(file), "a");
    }
}

TEST(FileInUse, is_a_file_another_process_writes_and_it_is_kept_but_readers_and_we_do_not_count)
{
    Sandbox sandbox;
    const QString written = sandbox.WriteFile(QStringLiteral("written.log"), "a");
    const QString read = sandbox.WriteFile(QStringLiteral("read.txt"), "a");
    fxtest::FileHolder writer(written, true), reader(read, false);
    QFile own(read);
    ASSERT_TRUE(own.open(QIODevice::ReadWrite));

    EXPECT_EQ(FailureText([&] { fx::IsFileAlreadyInUse(written); }),
              QStringLiteral("IsFileAlreadyInUse: File '%0%' is already in use|||") + written);
    EXPECT_TRUE(fx::IsFileAlreadyInUse(written, false));
    EXPECT_FALSE(fx::IsFileAlreadyInUse(read, false));
    EXPECT_EQ(FailureText([&] { fx::DeleteFileA(written); }),
              QStringLiteral("DeleteFileA: File '%0%' already in use|||") + written);
    EXPECT_TRUE(QFileInfo::exists(written));
    fx::DeleteFileA(read);
    EXPECT_FALSE(QFileInfo::exists(read));
}
