#include "frame/inifile.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using fx::IniFile;
using namespace Qt::StringLiterals;

namespace {

// As the Windows program leaves a file: CRLF, a Windows-1252 "ü" (0xFC) and "€" (0x80),
// blanks around names and values, quotes, comments, a blank line and mixed-case names.
const QByteArray kWindowsFile = "; written by hand\r\n[Settings]\r\nAutoLoad = 1\r\nUser=M\xFCller\r\nPrice= 5 \x80 \r\n"
                                "Quoted=\"  spaced out  \"\r\n; keep this comment\r\n\r\n[Language]\r\nLanguage=German\r\n";

TEST(IniFile, reads_by_folded_names_with_values_trimmed_and_unquoted)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(u"a.ini"_s, kWindowsFile);
    EXPECT_EQ(IniFile::Value(path, u"settings"_s, u"AUTOLOAD"_s), u"1"_s);
    EXPECT_EQ(IniFile::Value(path, u" Settings "_s, u"user"_s), u"Müller"_s);
    EXPECT_EQ(IniFile::Value(path, u"Settings"_s, u"Price"_s), u"5 €"_s);
    EXPECT_EQ(IniFile::Value(path, u"Settings"_s, u"Quoted"_s), u"  spaced out  "_s);
    EXPECT_FALSE(IniFile::Value(path, u"Settings"_s, u"; keep this comment"_s));
    EXPECT_EQ(IniFile::KeyNames(path, u"settings"_s), QStringList({u"AutoLoad"_s, u"User"_s, u"Price"_s, u"Quoted"_s}));
    // The first section and the first key of a name win; stray lines are no keys.
    const QString dup = box.WriteFile(u"b.ini"_s, "stray=1\n[A]\njust text\nk=first\nk=second\n[a]\nk=third\nonly=here\n");
    EXPECT_EQ(IniFile::Value(dup, u"A"_s, u"K"_s), u"first"_s);
    EXPECT_FALSE(IniFile::Value(dup, u"A"_s, u"only"_s));
    EXPECT_EQ(IniFile::SectionNames(dup), QStringList{u"A"_s});
    EXPECT_EQ(IniFile::KeyNames(dup, u"a"_s), QStringList{u"k"_s});
    // Behind a byte order mark the first section is found, also in a Windows-1252 file.
    const QString marked = box.WriteFile(u"c.ini"_s, "\xEF\xBB\xBF[A]\r\nw=\xE4\r\n");
    EXPECT_EQ(IniFile::Value(marked, u"a"_s, u"w"_s), u"ä"_s);
}

// One write to a file, and the file after it: `file` with `before` replaced by `after`, or
// with `after` appended when `before` is empty.
struct WriteCase
{
    const char *name;
    QByteArray file;
    QString section;
    std::optional<QString> key;
    std::optional<QString> value;
    QByteArray before;
    QByteArray after;
};

const QString kZurich = u"Zürich €"_s;
const WriteCase kWrites[] = {
    {"key_replaced_in_place", kWindowsFile, u"SETTINGS"_s, u"user"_s, u"Jörg"_s, "User=M\xFCller\r\n", "User=J\xF6rg\r\n"},
    {"new_key_after_the_last_key_line", kWindowsFile, u"settings"_s, u"New"_s, u"x"_s, "\"  spaced out  \"\r\n",
     "\"  spaced out  \"\r\nNew=x\r\n"},
    {"same_value_leaves_the_file_untouched", kWindowsFile, u"Settings"_s, u"autoload"_s, u"1"_s, "", ""},
    {"removed_key_takes_only_its_line", kWindowsFile, u"Settings"_s, u"PRICE"_s, std::nullopt, "Price= 5 \x80 \r\n", ""},
    {"removed_section_takes_its_comments_and_blank_lines", kWindowsFile, u"settings"_s, std::nullopt, std::nullopt,
     "[Settings]\r\nAutoLoad = 1\r\nUser=M\xFCller\r\nPrice= 5 \x80 \r\nQuoted=\"  spaced out  \"\r\n; keep this comment\r\n\r\n", ""},
    {"removed_key_takes_every_line_of_its_name", "[A]\nk=1\nK=2\nother=3\n", u"a"_s, u"k"_s, std::nullopt, "k=1\nK=2\n", ""},
    {"first_key_of_the_first_section_is_written", "[A]\nx\n k = v \nk=2\n[a]\nk=3\n", u"a"_s, u"K"_s, u"w"_s, " k = v \n", "k=w\n"},
    {"new_section_goes_at_the_end_after_a_missing_line_end", "[A]\nk=1", u"B"_s, u"j"_s, u"2"_s, "", "\n[B]\nj=2\n"},
    {"key_behind_a_last_line_without_end_has_none", "[A]\r\nk=1", u"A"_s, u"m"_s, u"2"_s, "", "\r\nm=2"},
    {"utf8_stays_utf8", "[A]\nw=\xC3\xA4\n", u"A"_s, u"v"_s, kZurich, "", "v=Z\xC3\xBCrich \xE2\x82\xAC\n"},
    {"utf8_bom_stays", "\xEF\xBB\xBF[A]\r\n", u"A"_s, u"v"_s, kZurich, "", "v=Z\xC3\xBCrich \xE2\x82\xAC\r\n"},
    {"windows1252_behind_a_bom_keeps_its_first_section", "\xEF\xBB\xBF[A]\r\nw=\xE4\r\n", u"A"_s, u"v"_s, kZurich, "",
     "v=Z\xFCrich \x80\r\n"},
    {"a_second_bom_stays_in_the_first_line", "\xEF\xBB\xBF\xEF\xBB\xBFk=1\n", u"A"_s, u"v"_s, u"2"_s, "", "[A]\nv=2\n"},
    {"windows1252_stays_windows1252", "[A]\r\nw=\xE4\r\n", u"A"_s, u"v"_s, kZurich, "", "v=Z\xFCrich \x80\r\n"},
    {"undefined_windows1252_bytes_survive", "[A]\nw=\x81\x8D\x8F\x90\x9D\n", u"A"_s, u"v"_s, kZurich, "", "v=Z\xFCrich \x80\n"},
    {"empty_file_becomes_utf8_with_lf", "", u"A"_s, u"v"_s, kZurich, "", "[A]\nv=Z\xC3\xBCrich \xE2\x82\xAC\n"},
};

TEST(IniFile, write_changes_only_the_bytes_it_must_and_reads_back)
{
    fxtest::Sandbox box;
    for (const WriteCase &c : kWrites) {
        SCOPED_TRACE(c.name);
        const QString path = box.WriteFile(QString::fromUtf8(c.name), c.file);
        ASSERT_TRUE(IniFile::Write(path, c.section, c.key, c.value));
        const QByteArray expected = c.before.isEmpty() ? c.file + c.after : QByteArray(c.file).replace(c.before, c.after);
        EXPECT_EQ(fxtest::Sandbox::ReadFile(path), expected);
        if (c.key)
            EXPECT_EQ(IniFile::Value(path, c.section, *c.key), c.value);
        else
            EXPECT_TRUE(IniFile::KeyNames(path, c.section).isEmpty());
    }
}

TEST(IniFile, edit_in_place_by_another_writer_is_seen_at_the_next_read_within_the_same_second)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(u"a.ini"_s, "[A]\nk=0\n");
    // Rewrites in place keep the inode and the size, and all rounds fall within a second or two.
    for (int round = 1; round <= 50; ++round) {
        ASSERT_EQ(IniFile::Value(path, u"A"_s, u"k"_s), QString::number((round - 1) % 10));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write("[A]\nk=" + QByteArray::number(round % 10) + "\n");
    }
}

TEST(IniFile, failed_or_needless_write_leaves_no_trace_and_a_value_creates_a_missing_file)
{
    fxtest::Sandbox box;
    EXPECT_FALSE(IniFile::Write(box.Root() + u"no/such/folder/a.ini"_s, u"A"_s, u"k"_s, u"1"_s));
    EXPECT_TRUE(IniFile::Write(box.Root() + u"none.ini"_s, u"A"_s, u"k"_s, std::nullopt));
    const QString readOnly = box.WriteFile(u"ro.ini"_s, "[A]\nk=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(readOnly).constData(), 0444), 0);
    EXPECT_FALSE(IniFile::Write(readOnly, u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(readOnly), QByteArray("[A]\nk=1\n"));
    EXPECT_EQ(QDir(box.Root()).entryList(QDir::Files | QDir::Hidden), QStringList{u"ro.ini"_s});
    ASSERT_TRUE(IniFile::Write(box.Root() + u"none.ini"_s, u"A"_s, u"k"_s, u"ü"_s));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(box.Root() + u"none.ini"_s), QByteArray("[A]\nk=\xC3\xBC\n"));
}

TEST(IniFile, write_keeps_the_mode_and_the_link_and_a_snapshot_keeps_what_it_read)
{
    fxtest::Sandbox box;
    const QString real = box.WriteFile(u"real.ini"_s, "[A]\nk=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(real).constData(), 0640), 0);
    const QString link = box.Root() + u"link.ini"_s;
    ASSERT_TRUE(QFile::link(real, link));
    const auto before = IniFile::Snapshot(link);
    ASSERT_TRUE(IniFile::Write(link, u"A"_s, u"k"_s, u"2"_s));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(fxtest::Sandbox::ReadFile(real), QByteArray("[A]\nk=2\n"));
    struct stat st{};
    ASSERT_EQ(::stat(QFile::encodeName(real).constData(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
    EXPECT_EQ(before->Value(u"A"_s, u"k"_s), u"1"_s);
}

TEST(IniFile, writes_from_several_processes_are_all_kept)
{
    fxtest::Sandbox box;
    const QString path = box.WriteFile(u"a.ini"_s, "[Start]\n");
    std::vector<pid_t> children;
    for (int p = 0; p < 4; ++p) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            for (int i = 0; i < 25; ++i)
                IniFile::Write(path, u"P%1"_s.arg(p), u"k%1"_s.arg(i), QString::number(i));
            ::_exit(0);
        }
        children.push_back(pid);
    }
    for (const pid_t pid : children)
        ::waitpid(pid, nullptr, 0);
    for (int p = 0; p < 4; ++p)
        EXPECT_EQ(IniFile::KeyNames(path, u"P%1"_s.arg(p)).size(), 25) << p;
}

} // namespace
