#include "frame/fileops.h"
#include "frame/programinfo.h"
#include "frame/savedfailure.h"
#include "support/failures.h"
#include "support/fileholder.h"
#include "support/sandbox.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gmock/gmock.h>
#include <sys/stat.h>

using fxtest::FailureOf;
using fxtest::FileHolder;
using fxtest::Sandbox;

namespace {

// "Error code: %0%" with the system's number and text as its argument.
bool IsErrorCode(const QString &description)
{
    static const QRegularExpression form(QStringLiteral("^Error code: %0%\\|\\|\\|\\d+ \\(.+\\)$"));
    return form.match(description).hasMatch();
}

QString NotExists(const QString &path)
{
    return QStringLiteral("File '%0%' not exists|||") + path;
}

} // namespace

TEST(IsFileExists, tells_files_and_folders_apart_by_the_folder_switch)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    EXPECT_TRUE(fx::IsFileExists(file));
    EXPECT_FALSE(fx::IsFileExists(file, true));
    EXPECT_TRUE(fx::IsFileExists(sandbox.Temp(), true));
    EXPECT_FALSE(fx::IsFileExists(sandbox.Temp()));
    EXPECT_FALSE(fx::IsFileExists(QString()));
}

TEST(IsFileReadOnly, follows_the_owner_write_bit)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    EXPECT_FALSE(fx::IsFileReadOnly(file));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    EXPECT_TRUE(fx::IsFileReadOnly(file));
    EXPECT_FALSE(fx::IsFileReadOnly(sandbox.Root() + QStringLiteral("missing")));
}

TEST(CopyFileA, replaces_an_existing_target_and_copies_into_a_folder)
{
    Sandbox sandbox;
    const QString source = sandbox.WriteFile(QStringLiteral("a.txt"), "new");
    const QString target = sandbox.WriteFile(QStringLiteral("b.txt"), "old and longer");
    fx::CopyFileA(source, target);
    EXPECT_EQ(Sandbox::ReadFile(target), "new");

    fx::CopyFileA(source, sandbox.Temp());
    EXPECT_EQ(Sandbox::ReadFile(sandbox.Temp() + QStringLiteral("a.txt")), "new");
    EXPECT_TRUE(QFileInfo::exists(source));
}

TEST(CopyFileA, fails_on_a_missing_source_and_with_the_system_error_where_nothing_can_be_written)
{
    Sandbox sandbox;
    const QString missing = sandbox.Root() + QStringLiteral("missing.txt");
    const auto noSource = FailureOf([&] { fx::CopyFileA(missing, sandbox.Temp()); });
    ASSERT_TRUE(noSource);
    EXPECT_EQ(noSource->Source(), QStringLiteral("CopyFileA"));
    EXPECT_EQ(noSource->Description(), NotExists(missing));

    const QString source = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    const auto unwritable = FailureOf([&] { fx::CopyFileA(source, QStringLiteral("/proc/fendrix-copy.txt")); });
    ASSERT_TRUE(unwritable);
    EXPECT_EQ(unwritable->Number(), 1);
    EXPECT_TRUE(IsErrorCode(unwritable->Description())) << unwritable->Description().toStdString();
}

TEST(MoveFileA, replaces_its_target_on_the_same_and_on_another_file_system)
{
    Sandbox sandbox;
    const QString source = sandbox.WriteFile(QStringLiteral("a.txt"), "moved");
    const QString near = sandbox.WriteFile(QStringLiteral("b.txt"), "old");
    fx::MoveFileA(source, near);
    EXPECT_EQ(Sandbox::ReadFile(near), "moved");
    EXPECT_FALSE(QFileInfo::exists(source));

    const QString shm = QStringLiteral("/dev/shm/");
    struct stat temp, other;
    if (::stat(QFile::encodeName(sandbox.Temp()).constData(), &temp) != 0
        || ::stat(QFile::encodeName(shm).constData(), &other) != 0 || temp.st_dev == other.st_dev)
        GTEST_SKIP() << "no second file system at " << shm.toStdString();
    const QString far = shm + QStringLiteral("fendrix-move-%1.txt").arg(QCoreApplication::applicationPid());
    ASSERT_TRUE(QFile(far).open(QIODevice::WriteOnly)); // an old target, to be replaced
    fx::MoveFileA(near, far);
    EXPECT_EQ(Sandbox::ReadFile(far), "moved");
    EXPECT_FALSE(QFileInfo::exists(near));
    QFile::remove(far);
}

TEST(MoveFileA, keeps_the_source_when_the_target_cannot_be_written)
{
    Sandbox sandbox;
    const QString source = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    const auto failure = FailureOf([&] { fx::MoveFileA(source, QStringLiteral("/proc/fendrix-move.txt")); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Source(), QStringLiteral("MoveFileA"));
    EXPECT_TRUE(IsErrorCode(failure->Description())) << failure->Description().toStdString();
    EXPECT_TRUE(QFileInfo::exists(source));
}

TEST(DeleteFileA, refuses_a_file_another_process_writes_but_not_one_it_only_reads)
{
    Sandbox sandbox;
    EXPECT_TRUE(fx::DeleteFileA(sandbox.Root() + QStringLiteral("missing.txt"))); // nothing to do
    const QString written = sandbox.WriteFile(QStringLiteral("written.log"), "a");
    FileHolder writer(written, FileHolder::Mode::Write);
    ASSERT_TRUE(writer.IsHolding());
    const auto failure = FailureOf([&] { fx::DeleteFileA(written); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Source(), QStringLiteral("DeleteFileA"));
    EXPECT_EQ(failure->Description(), QStringLiteral("File '%0%' already in use|||") + written);
    EXPECT_TRUE(QFileInfo::exists(written));

    const QString read = sandbox.WriteFile(QStringLiteral("read.txt"), "a");
    FileHolder reader(read, FileHolder::Mode::Read);
    ASSERT_TRUE(reader.IsHolding());
    fx::DeleteFileA(read);
    EXPECT_FALSE(QFileInfo::exists(read));

    const auto protectedFile = FailureOf([] { fx::DeleteFileA(QStringLiteral("/proc/self/status")); });
    ASSERT_TRUE(protectedFile);
    EXPECT_TRUE(IsErrorCode(protectedFile->Description())) << protectedFile->Description().toStdString();
}

TEST(DeleteFolderA, removes_a_whole_tree_but_never_a_file)
{
    Sandbox sandbox;
    sandbox.WriteFile(QStringLiteral("tree/a/b/c.txt"), "c");
    sandbox.WriteFile(QStringLiteral("tree/d.txt"), "d");
    fx::DeleteFolderA(sandbox.Root() + QStringLiteral("tree"));
    EXPECT_FALSE(QFileInfo::exists(sandbox.Root() + QStringLiteral("tree")));

    const QString file = sandbox.WriteFile(QStringLiteral("e.txt"), "e");
    fx::ClearSavedFailure();
    EXPECT_FALSE(fx::DeleteFolderA(file, false));
    EXPECT_TRUE(IsErrorCode(fx::GetSavedFailure().Description()));
    EXPECT_TRUE(QFileInfo::exists(file));
}

TEST(IsFileAlreadyInUse, sees_another_process_writing_the_file)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("job.log"), "a");
    EXPECT_FALSE(fx::IsFileAlreadyInUse(file));
    {
        FileHolder writer(file, FileHolder::Mode::Write);
        ASSERT_TRUE(writer.IsHolding());
        const auto failure = FailureOf([&] { fx::IsFileAlreadyInUse(file); });
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->Source(), QStringLiteral("IsFileAlreadyInUse"));
        EXPECT_EQ(failure->Description(), QStringLiteral("File '%0%' is already in use|||") + file);
        EXPECT_TRUE(fx::IsFileAlreadyInUse(file, false));
    }
    EXPECT_FALSE(fx::IsFileAlreadyInUse(file));
}

TEST(IsFileAlreadyInUse, leaves_out_readers_and_this_process)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("job.log"), "a");
    FileHolder reader(file, FileHolder::Mode::Read);
    ASSERT_TRUE(reader.IsHolding());
    QFile own(file);
    ASSERT_TRUE(own.open(QIODevice::ReadWrite));
    EXPECT_FALSE(fx::IsFileAlreadyInUse(file, false));
}

TEST(ReadFile2Array, ends_lines_at_crlf_and_lf_and_keeps_a_last_line_without_an_end)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "one\r\ntwo\n\nfour\rstill four\r\nfive");
    EXPECT_THAT(fx::ReadFile2Array(file),
                testing::ElementsAre("one", "two", "", "four\rstill four", "five"));
    EXPECT_EQ(fx::ReadFile2String(file), QStringLiteral("one\r\ntwo\n\nfour\rstill four\r\nfive"));
    EXPECT_TRUE(fx::ReadFile2Array(sandbox.WriteFile(QStringLiteral("empty.txt"), "")).isEmpty());
}

TEST(ReadFile2Array, fails_on_a_missing_file_or_gives_an_empty_result_when_not_raising)
{
    Sandbox sandbox;
    const QString missing = sandbox.Root() + QStringLiteral("missing.txt");
    const auto failure = FailureOf([&] { fx::ReadFile2Array(missing); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Source(), QStringLiteral("ReadFile2Array"));
    EXPECT_EQ(failure->Description(), NotExists(missing));
    EXPECT_TRUE(fx::ReadFile2Array(missing, false).isEmpty());
    EXPECT_EQ(fx::GetFileSize(missing, false), -1);
    // A folder is not a file to read.
    EXPECT_TRUE(FailureOf([&] { fx::ReadFile2String(sandbox.Temp()); }));
}

TEST(GetFileVersion, only_the_running_program_has_a_version)
{
    Sandbox sandbox;
    EXPECT_EQ(fx::GetFileVersion(fx::ProgramFilePath()), fx::ProgramVersion());
    EXPECT_EQ(fx::GetFileVersion(sandbox.WriteFile(QStringLiteral("a.exe"), "MZ")), QString());
    EXPECT_EQ(fx::GetFileVersion(sandbox.Root() + QStringLiteral("missing.exe")), QString());
}

