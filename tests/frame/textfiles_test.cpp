#include "frame/textfiles.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

using fxtest::FailureOf;
using fxtest::Sandbox;

namespace {

// CR LF lines, many holding the text to replace, with one occurrence laid across each 64 KiB
// mark (at a different place each time) and a last line without an end.
QByteArray LargeText()
{
    QByteArray text;
    const QByteArray filler = QByteArray(40, 'x') + "OLDTEXT" + QByteArray(51, 'x') + "\r\n";
    int shift = 1;
    for (qsizetype mark = 64 * 1024; mark <= 4 * 64 * 1024; mark += 64 * 1024, shift += 2) {
        while (text.size() + filler.size() < mark - shift - 50)
            text += filler;
        text += QByteArray(mark - shift - text.size(), 'y') + "OLDTEXT" + "\r\n";
    }
    return text + "last OLDTEXT";
}

} // namespace

TEST(ReplaceInFile, replaces_in_a_file_of_several_blocks_without_splitting_lines)
{
    Sandbox sandbox;
    const QByteArray text = LargeText();
    const QString source = sandbox.WriteFile(QStringLiteral("in.txt"), text);
    const QString target = sandbox.Root() + QStringLiteral("out/result.txt");
    QDir().mkpath(sandbox.Root() + QStringLiteral("out"));

    fx::ReplaceInFile(source, target, QStringLiteral("OLDTEXT"), QStringLiteral("new"));

    QByteArray expected = text;
    expected.replace("OLDTEXT", "new");
    const QByteArray result = Sandbox::ReadFile(target);
    EXPECT_EQ(result.size(), expected.size());
    EXPECT_TRUE(result == expected);
    EXPECT_EQ(Sandbox::ReadFile(source), text);
    EXPECT_TRUE(QDir(sandbox.Temp()).isEmpty()); // no scratch file left behind
}

TEST(ReplaceInFile, works_in_place_and_keeps_the_file_access)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.ini"), "[Settings]\r\nPath=c:\\old\\\r\nOther=old\r\n");
    const QFile::Permissions access = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
    QFile::setPermissions(file, access);

    fx::ReplaceInFile(file, file, QStringLiteral("old"), QStringLiteral("new one"));

    EXPECT_EQ(Sandbox::ReadFile(file), "[Settings]\r\nPath=c:\\new one\\\r\nOther=new one\r\n");
    struct stat status;
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0644u); // not the scratch file's 0600
}

TEST(ReplaceInFile, fails_without_a_source_or_a_folder_for_the_target)
{
    Sandbox sandbox;
    const QString missing = sandbox.Root() + QStringLiteral("missing.txt");
    const auto noSource = FailureOf([&] { fx::ReplaceInFile(missing, missing, QStringLiteral("a"), QStringLiteral("b")); });
    ASSERT_TRUE(noSource);
    EXPECT_EQ(noSource->Source(), QStringLiteral("ReplaceInFile"));
    EXPECT_EQ(noSource->Description(), QStringLiteral("File '%0%' not exists|||") + missing);

    const QString source = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    const QString target = sandbox.Root() + QStringLiteral("no-folder/b.txt");
    const auto noFolder = FailureOf([&] { fx::ReplaceInFile(source, target, QStringLiteral("a"), QStringLiteral("b")); });
    ASSERT_TRUE(noFolder);
    EXPECT_EQ(noFolder->Description(), QStringLiteral("Directory with destination file '%0%' not exists|||") + target);
}

TEST(FindFile, looks_in_the_folder_before_its_sub_folders)
{
    Sandbox sandbox;
    sandbox.WriteFile(QStringLiteral("tree/a/target.txt"), "");
    const QString top = sandbox.WriteFile(QStringLiteral("tree/TARGET.TXT"), "");
    EXPECT_EQ(fx::FindFile(sandbox.Root() + QStringLiteral("tree"), QStringLiteral("target.txt")), top);
}

TEST(FindFile, goes_down_the_first_sub_folder_in_name_order_before_the_next)
{
    Sandbox sandbox;
    QDir().mkpath(sandbox.Root() + QStringLiteral("tree/a/target.txt")); // a folder is no hit
    const QString deep = sandbox.WriteFile(QStringLiteral("tree/a/deep/er/Target.Txt"), "");
    sandbox.WriteFile(QStringLiteral("tree/b/target.txt"), "");
    EXPECT_EQ(fx::FindFile(sandbox.Root() + QStringLiteral("tree/"), QStringLiteral("target.txt")), deep);
    EXPECT_EQ(fx::FindFile(sandbox.Root() + QStringLiteral("tree"), QStringLiteral("other.txt")), QString());
}

TEST(FindFile, fails_on_a_missing_start_folder)
{
    Sandbox sandbox;
    const QString missing = sandbox.Root() + QStringLiteral("missing");
    const auto failure = FailureOf([&] { fx::FindFile(missing, QStringLiteral("a.txt")); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Source(), QStringLiteral("FindFile"));
    EXPECT_EQ(failure->Description(), QStringLiteral("Start path '%0%' not exists|||") + missing);
}
