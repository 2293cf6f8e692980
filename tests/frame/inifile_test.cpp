#include "frame/inifile.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using fx::IniFile;

namespace {

// As the Windows program leaves a file: CRLF, a Windows-1252 "ü" (0xFC) and "€" (0x80),
// blanks around names and values, quotes, comments, a blank line and mixed-case names.
const QByteArray kWindowsFile = "; written by hand\r\n"
                                "[Settings]\r\n"
                                "AutoLoad = 1\r\n"
                                "User=M\xFCller\r\n"
                                "Price= 5 \x80 \r\n"
                                "Quoted=\"  spaced out  \"\r\n"
                                "; keep this comment\r\n"
                                "\r\n"
                                "[Language]\r\n"
                                "Language=German\r\n";

QString Text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(IniFile, value_written_by_windows_reads_the_same)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), kWindowsFile);
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("settings"), QStringLiteral("AUTOLOAD")), QStringLiteral("1"));
    EXPECT_EQ(IniFile::Value(path, QStringLiteral(" Settings "), QStringLiteral("user")), Text("Müller"));
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("Settings"), QStringLiteral("Price")), Text("5 €"));
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("Settings"), QStringLiteral("Quoted")), QStringLiteral("  spaced out  "));
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("LANGUAGE"), QStringLiteral("language")), QStringLiteral("German"));
    EXPECT_FALSE(IniFile::Value(path, QStringLiteral("Settings"), QStringLiteral("; keep this comment")));
    EXPECT_FALSE(IniFile::Value(path, QStringLiteral("Settings"), QStringLiteral("Missing")));
    EXPECT_EQ(IniFile::KeyNames(path, QStringLiteral("settings")),
              QStringList({QStringLiteral("AutoLoad"), QStringLiteral("User"), QStringLiteral("Price"),
                           QStringLiteral("Quoted")}));
}

struct EditCase
{
    const char *name;
    const char *section;
    std::optional<QString> key;
    std::optional<QString> value;
    QByteArray before; ///< the bytes of the file that the edit changes, and nothing else
    QByteArray after;
};

void PrintTo(const EditCase &c, std::ostream *os)
{
    *os << c.name;
}

class IniFileEdit : public testing::TestWithParam<EditCase>
{
};

TEST_P(IniFileEdit, changes_only_the_lines_it_must)
{
    fxtest::Sandbox box;
    const EditCase &c = GetParam();
    const QString path = box.WriteFile(QStringLiteral("a.ini"), kWindowsFile);
    ASSERT_TRUE(IniFile::Write(path, QString::fromUtf8(c.section), c.key, c.value));
    QByteArray expected = kWindowsFile;
    if (!c.before.isEmpty())
        expected.replace(c.before, c.after);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), expected);
}

INSTANTIATE_TEST_SUITE_P(
    WindowsFile, IniFileEdit,
    testing::Values(EditCase{"existing_key_is_replaced_in_place", "SETTINGS", QStringLiteral("user"), Text("Jörg"),
                             "User=M\xFCller\r\n", "User=J\xF6rg\r\n"},
                    EditCase{"new_key_goes_after_the_last_key_line", "settings", QStringLiteral("New"), QStringLiteral("x"),
                             "\"  spaced out  \"\r\n", "\"  spaced out  \"\r\nNew=x\r\n"},
                    EditCase{"same_value_leaves_the_file_untouched", "Settings", QStringLiteral("autoload"),
                             QStringLiteral("1"), "", ""},
                    EditCase{"removed_key_takes_only_its_line", "Settings", QStringLiteral("PRICE"), std::nullopt,
                             "Price= 5 \x80 \r\n", ""},
                    EditCase{"removed_section_takes_its_comments_and_blank_lines", "settings", std::nullopt, std::nullopt,
                             "[Settings]\r\nAutoLoad = 1\r\nUser=M\xFCller\r\nPrice= 5 \x80 \r\n"
                             "Quoted=\"  spaced out  \"\r\n; keep this comment\r\n\r\n",
                             ""}),
    [](const testing::TestParamInfo<EditCase> &info) { return info.param.name; });

TEST(IniFile, new_section_is_appended_at_the_end_even_without_a_final_line_end)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[A]\nk=1");
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("B"), QStringLiteral("j"), QStringLiteral("2")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("[A]\nk=1\n[B]\nj=2\n"));
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("a"), QStringLiteral("m"), QStringLiteral("3")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("[A]\nk=1\nm=3\n[B]\nj=2\n"));
}

TEST(IniFile, last_line_without_end_stays_without_end_when_a_key_is_added_behind_it)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[A]\r\nk=1");
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("A"), QStringLiteral("m"), QStringLiteral("2")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("[A]\r\nk=1\r\nm=2"));
}

TEST(IniFile, null_value_removes_every_line_of_the_key)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[A]\nk=1\nK=2\nother=3\n");
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("a"), QStringLiteral("k"), std::nullopt));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("[A]\nother=3\n"));
    EXPECT_FALSE(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("k")));
}

TEST(IniFile, null_key_removes_the_section_with_its_comments_and_leaves_the_others)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "; head\n[A]\nk=1\n; about B\n[b]\nj=2\n; tail of b\n\n[C]\nm=3\n");
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("B"), std::nullopt, std::nullopt));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("; head\n[A]\nk=1\n; about B\n[C]\nm=3\n"));
}

TEST(IniFile, first_section_and_first_key_of_a_name_win)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[A]\nk=first\nk=second\n[a]\nk=third\nonly=here\n");
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("K")), QStringLiteral("first"));
    EXPECT_FALSE(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("only")));
    EXPECT_EQ(IniFile::SectionNames(path), QStringList{QStringLiteral("A")});
    EXPECT_EQ(IniFile::KeyNames(path, QStringLiteral("a")), QStringList{QStringLiteral("k")});
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("a"), QStringLiteral("k"), QStringLiteral("new")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("[A]\nk=new\nk=second\n[a]\nk=third\nonly=here\n"));
}

TEST(IniFile, lines_outside_sections_and_without_equals_sign_are_no_keys_but_survive)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "stray=1\n[A]\njust text\n k = v \n");
    EXPECT_EQ(IniFile::SectionNames(path), QStringList{QStringLiteral("A")});
    EXPECT_EQ(IniFile::KeyNames(path, QStringLiteral("A")), QStringList{QStringLiteral("k")});
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("A"), QStringLiteral("K"), QStringLiteral("w")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("stray=1\n[A]\njust text\nk=w\n"));
}

struct EncodingCase
{
    const char *name;
    QByteArray original;
    QByteArray afterWrite; ///< the file after writing "Zürich €" as key v of section A
};

void PrintTo(const EncodingCase &c, std::ostream *os)
{
    *os << c.name;
}

class IniFileEncoding : public testing::TestWithParam<EncodingCase>
{
};

TEST_P(IniFileEncoding, file_is_written_back_in_the_encoding_it_had)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), GetParam().original);
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("A"), QStringLiteral("v"), Text("Zürich €")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), GetParam().afterWrite);
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("v")), Text("Zürich €"));
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, IniFileEncoding,
    testing::Values(EncodingCase{"utf8", "[A]\nw=\xC3\xA4\n", "[A]\nw=\xC3\xA4\nv=Z\xC3\xBCrich \xE2\x82\xAC\n"},
                    EncodingCase{"utf8_with_bom", "\xEF\xBB\xBF[A]\r\n", "\xEF\xBB\xBF[A]\r\nv=Z\xC3\xBCrich \xE2\x82\xAC\r\n"},
                    EncodingCase{"windows1252", "[A]\r\nw=\xE4\r\n", "[A]\r\nw=\xE4\r\nv=Z\xFCrich \x80\r\n"},
                    EncodingCase{"undefined_windows1252_bytes_survive", "[A]\nw=\x81\x8D\x8F\x90\x9D\n",
                                 "[A]\nw=\x81\x8D\x8F\x90\x9D\nv=Z\xFCrich \x80\n"},
                    EncodingCase{"empty_file_becomes_utf8_with_lf", "", "[A]\nv=Z\xC3\xBCrich \xE2\x82\xAC\n"}),
    [](const testing::TestParamInfo<EncodingCase> &info) { return info.param.name; });

TEST(IniFile, edit_in_place_by_another_writer_is_seen_at_the_next_read_within_the_same_second)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[A]\nk=0\n");
    // Rewrites in place keep the inode and the size, and all rounds fall within a second or two.
    for (int round = 1; round <= 50; ++round) {
        ASSERT_EQ(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("k")), QString::number((round - 1) % 10));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write("[A]\nk=" + QByteArray::number(round % 10) + "\n");
        file.close();
    }
}

TEST(IniFile, missing_file_reads_empty_and_is_created_as_utf8_with_lf_by_the_first_value)
{
    fxtest::Sandbox box;
    const QString path = box.Root() + QStringLiteral("none.ini");
    EXPECT_FALSE(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("k")));
    EXPECT_TRUE(IniFile::SectionNames(path).isEmpty());
    EXPECT_TRUE(IniFile::Write(path, QStringLiteral("A"), QStringLiteral("k"), std::nullopt));
    EXPECT_FALSE(QFileInfo::exists(path));
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("A"), QStringLiteral("k"), Text("ü")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(path), QByteArray("[A]\nk=\xC3\xBC\n"));
}

TEST(IniFile, failed_write_returns_false_and_leaves_the_file_as_it_was)
{
    fxtest::Sandbox box;
    EXPECT_FALSE(IniFile::Write(box.Root() + QStringLiteral("no/such/folder/a.ini"), QStringLiteral("A"),
                                QStringLiteral("k"), QStringLiteral("1")));
    const QString readOnly = box.WriteFile(QStringLiteral("ro.ini"), "[A]\nk=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(readOnly).constData(), 0444), 0);
    EXPECT_TRUE(IniFile::IsReadOnly(readOnly));
    EXPECT_FALSE(IniFile::Write(readOnly, QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("2")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(readOnly), QByteArray("[A]\nk=1\n"));
    EXPECT_EQ(QDir(box.Root()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("ro.ini")});
}

TEST(IniFile, write_keeps_the_mode_of_the_file_and_writes_through_a_link)
{
    fxtest::Sandbox box;
    const QString real = box.WriteFile(QStringLiteral("real.ini"), "[A]\nk=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(real).constData(), 0640), 0);
    const QString link = box.Root() + QStringLiteral("link.ini");
    ASSERT_TRUE(QFile::link(real, link));
    ASSERT_TRUE(IniFile::Write(link, QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("2")));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(fxtest::Sandbox::ReadFile(real), QByteArray("[A]\nk=2\n"));
    struct stat st{};
    ASSERT_EQ(::stat(QFile::encodeName(real).constData(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
}

TEST(IniFile, snapshot_taken_before_a_write_keeps_what_it_read)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[A]\nk=1\n");
    const auto before = IniFile::Snapshot(path);
    ASSERT_TRUE(IniFile::Write(path, QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("2")));
    EXPECT_EQ(before->Value(QStringLiteral("A"), QStringLiteral("k")), QStringLiteral("1"));
    EXPECT_EQ(IniFile::Value(path, QStringLiteral("A"), QStringLiteral("k")), QStringLiteral("2"));
}

TEST(IniFile, writes_from_several_threads_are_all_kept)
{
    fxtest::Sandbox box;
    const QString path = box.Root() + QStringLiteral("a.ini");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&path, t] {
            for (int i = 0; i < 25; ++i) {
                IniFile::Write(path, QStringLiteral("T%1").arg(t), QStringLiteral("k%1").arg(i), QString::number(i));
                IniFile::Value(path, QStringLiteral("T0"), QStringLiteral("k0"));
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    for (int t = 0; t < 4; ++t)
        EXPECT_EQ(IniFile::KeyNames(path, QStringLiteral("T%1").arg(t)).size(), 25) << t;
}

TEST(IniFile, writes_from_several_processes_are_all_kept)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(QStringLiteral("a.ini"), "[Start]\n");
    std::vector<pid_t> children;
    for (int p = 0; p < 4; ++p) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            for (int i = 0; i < 25; ++i)
                IniFile::Write(path, QStringLiteral("P%1").arg(p), QStringLiteral("k%1").arg(i), QString::number(i));
            ::_exit(0);
        }
        children.push_back(pid);
    }
    for (const pid_t pid : children) {
        int status = 0;
        ::waitpid(pid, &status, 0);
    }
    for (int p = 0; p < 4; ++p)
        EXPECT_EQ(IniFile::KeyNames(path, QStringLiteral("P%1").arg(p)).size(), 25) << p;
}

} // namespace
