#include "approve/recentprojects.h"

#include "frame/settings.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using fxtest::FailureText;

namespace {
QString Parsed(const QString &caption)
{
    QString project, controlFile;
    ParseRecentProject(caption, project, controlFile);
    return project + QLatin1Char('|') + controlFile;
}
} // namespace

TEST(ParseRecentProject, splits_a_caption_into_project_and_control_file)
{
    EXPECT_EQ(Parsed(QStringLiteral("1 PLANT1 (C:\\pds\\control.txt)")), QStringLiteral("PLANT1|C:\\pds\\control.txt"));
    EXPECT_EQ(Parsed(QStringLiteral("10 PLANT1 (C:\\My Files\\control.txt)")),
              QStringLiteral("PLANT1|C:\\My Files\\control.txt"));
    // A clash file has no control file.
    EXPECT_EQ(Parsed(RecentProjects::CaptionOf(2, QStringLiteral("C:\\x\\p.fxdb|||"))), QStringLiteral("C:\\x\\p.fxdb|"));
    EXPECT_EQ(Parsed(QStringLiteral("3 PLANT1")), QStringLiteral("PLANT1|"));
}

TEST(ParseRecentProject, fewer_than_two_words_or_an_empty_first_word_fail_and_a_blank_cuts_the_project)
{
    const QString failure = QStringLiteral("ParseRecentProject: False config in ini file.");
    QString project, controlFile;
    for (const char *caption : {"", "1", " PLANT1 (c.txt)"})
        EXPECT_EQ(FailureText([&] { ParseRecentProject(QString::fromLatin1(caption), project, controlFile); }), failure)
            << caption;
    // The restriction stays: a name with a blank does not come back whole.
    const QString caption = RecentProjects::CaptionOf(1, RecentProjects::EntryOf(QStringLiteral("MY PLANT"), QStringLiteral("c.txt")));
    EXPECT_EQ(caption, QStringLiteral("1 MY PLANT (c.txt)"));
    ParseRecentProject(caption, project, controlFile);
    EXPECT_EQ(project, QStringLiteral("MY"));
    EXPECT_NE(controlFile, QStringLiteral("c.txt"));
}

TEST(RecentProjects, new_entries_go_on_top_duplicates_move_and_ten_at_most_stay)
{
    fxtest::Sandbox sandbox;
    RecentProjects recent;
    EXPECT_TRUE(recent.Entries().isEmpty());
    for (int i = 1; i <= 12; ++i)
        recent.Add(QStringLiteral("P%1").arg(i), QStringLiteral("c%1.txt").arg(i));
    QStringList entries = recent.Entries();
    ASSERT_EQ(entries.size(), 10);
    EXPECT_EQ(entries.first(), QStringLiteral("P12|||c12.txt"));
    EXPECT_EQ(entries.last(), QStringLiteral("P3|||c3.txt"));

    recent.Add(QStringLiteral("P5"), QStringLiteral("c5.txt"));
    entries = recent.Entries();
    EXPECT_EQ(entries.size(), 10);
    EXPECT_EQ(entries.first(), QStringLiteral("P5|||c5.txt"));
    EXPECT_EQ(entries.count(QStringLiteral("P5|||c5.txt")), 1);
    // The same project from another control file is another entry.
    recent.Add(QStringLiteral("P5"), QStringLiteral("other.txt"));
    EXPECT_EQ(recent.Entries().mid(0, 2), (QStringList{QStringLiteral("P5|||other.txt"), QStringLiteral("P5|||c5.txt")}));
    // Kept in the user's Config.ini.
    EXPECT_EQ(GetIniValue(GetConfigFile(), QStringLiteral("RecentProjects"), QStringLiteral("item0"), QString()),
              QStringLiteral("P5|||other.txt"));
}

TEST(RecentProjects, the_menu_shows_the_entries_numbered_and_hides_the_rest)
{
    fxtest::Sandbox sandbox;
    RecentProjects recent;
    RecentMenuState state = recent.RefreshRecentProjects();
    EXPECT_FALSE(state.separatorVisible);
    ASSERT_EQ(state.items.size(), 10);
    for (const RecentMenuItem &item : state.items)
        EXPECT_FALSE(item.visible);

    recent.Add(QStringLiteral("A"), QStringLiteral("a.txt"));
    state = recent.RefreshRecentProjects(RecentProjects::EntryOf(QStringLiteral("B"), QStringLiteral("b.txt")));
    EXPECT_TRUE(state.separatorVisible);
    EXPECT_EQ(state.items.at(0).key, QStringLiteral("Menu_File_RecentProject1"));
    EXPECT_EQ(state.items.at(0).caption, QStringLiteral("1 B (b.txt)"));
    EXPECT_EQ(state.items.at(0).tag, QStringLiteral("B|||b.txt"));
    EXPECT_EQ(state.items.at(1).caption, QStringLiteral("2 A (a.txt)"));
    EXPECT_TRUE(state.items.at(1).visible);
    EXPECT_FALSE(state.items.at(2).visible);
    EXPECT_TRUE(state.items.at(2).caption.isEmpty());
    EXPECT_EQ(state.items.at(9).key, QStringLiteral("Menu_File_RecentProject10"));

    // A click loads what the caption gives.
    QString project, controlFile;
    ParseRecentProject(state.items.at(1).caption, project, controlFile);
    EXPECT_EQ(project + controlFile, QStringLiteral("Aa.txt"));
}
