#include "frame/textfiles.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using fxtest::FailureText;
using fxtest::Sandbox;

TEST(ReplaceInFile, replaces_in_place_over_several_blocks_without_splitting_lines_and_keeps_the_access)
{
    // CR LF lines of 100 bytes, all but the end the text to replace, so that a block of 64 KiB ends
    // within one; and a last line without an end.
    const QByteArray text = (QByteArray("OLDTEXT").repeated(14) + "\r\n").repeated(3000) + "last OLDTEXT";
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), text);
    const QFile::Permissions access = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    QFile::setPermissions(file, access); // neither the scratch file's nor a new file's

    fx::ReplaceInFile(file, file, QStringLiteral("OLDTEXT"), QStringLiteral("new"));

    const QByteArray result = Sandbox::ReadFile(file);
    const QByteArray expected = QByteArray(text).replace("OLDTEXT", "new");
    ASSERT_EQ(result.size(), expected.size());
    EXPECT_TRUE(result == expected);
    EXPECT_EQ(QFile::permissions(file) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser), access);
    EXPECT_TRUE(QDir(sandbox.Temp()).isEmpty()); // no scratch file left behind

    const QString missing = sandbox.Root() + QStringLiteral("missing"), target = missing + QStringLiteral("/b.txt");
    const QString a = QStringLiteral("a"), b = QStringLiteral("b");
    EXPECT_EQ(FailureText([&] { fx::ReplaceInFile(missing, file, a, b); }),
              QStringLiteral("ReplaceInFile: File '%0%' not exists|||") + missing);
    EXPECT_EQ(FailureText([&] { fx::ReplaceInFile(file, target, a, b); }),
              QStringLiteral("ReplaceInFile: Directory with destination file '%0%' not exists|||") + target);
}

TEST(FindFile, looks_in_a_folder_before_its_sub_folders_and_goes_down_those_in_name_order)
{
    Sandbox sandbox;
    const QString tree = sandbox.Root() + QStringLiteral("tree/");
    QDir().mkpath(tree + QStringLiteral("a/target.txt")); // a folder is no hit
    const QString deep = sandbox.WriteFile(QStringLiteral("tree/a/deep/er/Target.Txt"), "");
    sandbox.WriteFile(QStringLiteral("tree/b/target.txt"), "");
    EXPECT_EQ(fx::FindFile(tree, QStringLiteral("target.txt")), deep);
    EXPECT_EQ(fx::FindFile(tree, QStringLiteral("other.txt")), QString());
    const QString top = sandbox.WriteFile(QStringLiteral("tree/TARGET.TXT"), "");
    EXPECT_EQ(fx::FindFile(tree, QStringLiteral("target.txt")), top);
    EXPECT_EQ(FailureText([&] { fx::FindFile(tree + QStringLiteral("c"), top); }),
              QStringLiteral("FindFile: Start path '%0%' not exists|||") + tree + QStringLiteral("c"));
}
