#include "frame/configkeys.h"
#include "frame/recentitem.h"
#include "frame/settings.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

QStringList Split(const char *items)
{
    return QString::fromUtf8(items).split(u'|', Qt::SkipEmptyParts);
}

TEST(RecentItem, steps_give_the_list_newest_first_stored_as_item_keys_without_gaps)
{
    fxtest::Sandbox box;
    const char *cases[][2] = { // steps: an item is pushed, "-item" removed; the list after them
        {"one|two|  two  |three", "three|two|one"},
        {"a|b|c|d|b|b|a", "a|b|d|c"},
        {"1|2|3|4|5|6|7|8|9|10|11", "11|10|9|8|7|6|5|4|3|2"},
        {"1|2|3|4|5|6|7|8|9|10|1", "1|10|9|8|7|6|5|4|3|2"},
        {"c|b|a|-b|-not listed", "a|c"},
        {"only|-only", ""},
    };
    int row = 0;
    for (const auto &c : cases) {
        SCOPED_TRACE(c[0]);
        const QString section = u"R%1"_s.arg(row++);
        CRecentItem list;
        list.Initialize(GetConfigFile(), section, 10, false);
        for (const QString &step : Split(c[0]))
            step.startsWith(u'-') ? list.RemoveRecentItem(step.mid(1)) : list.PushRecentItem(step);
        const QStringList expected = Split(c[1]);
        EXPECT_EQ(list.GetRecentItems(), expected);
        EXPECT_EQ(list.GetItemCount(), expected.size());
        EXPECT_EQ(GetIniValue(GetConfigFile(), section, u"item%1"_s.arg(expected.size())), QString()); // no key left behind
    }
}

TEST(RecentItem, list_ends_at_the_first_gap_and_skips_missing_files_when_checking)
{
    fxtest::Sandbox box;
    CRecentItem list;
    list.Initialize(box.WriteFile(u"r.ini"_s, "[R]\nitem0=a\nitem1=b\nitem3=d\n"), u"R"_s, 10, false);
    EXPECT_EQ(list.GetRecentItems(), Split("a|b"));
    EXPECT_FALSE(list.IsItemExisting(u"d"_s));
    const QString there = box.WriteFile(u"there.txt"_s, "x");
    list.Initialize(box.Root() + u"f.ini"_s, u"R"_s, 5, true);
    list.PushRecentItem(there);
    list.PushRecentItem(box.Root() + u"gone.txt"_s);
    EXPECT_EQ(list.GetRecentItems(), QStringList{there});
    EXPECT_EQ(list.GetItemCount(), 2);
}

TEST(RecentItem, projects_list_refuses_changes_to_a_read_only_config_file_naming_the_file)
{
    fxtest::Sandbox box;
    CRecentItem list;
    InitializeRecentProjects(list);
    list.PushRecentItem(u"kept"_s);
    const QString file = GetConfigFile();
    EXPECT_EQ(GetIniValue(file, u"RecentProjects"_s, u"item0"_s), u"kept"_s);
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0444), 0);
    for (const bool push : {true, false}) {
        EXPECT_EQ(fxtest::FailureText([&] { push ? list.PushRecentItem(u"new"_s) : list.RemoveRecentItem(u"kept"_s); }),
                  (push ? u"CRecentItem::PushRecentItem: "_s : u"CRecentItem::RemoveRecentItem: "_s) + u"File '"_s + file +
                      u"': write permission denied"_s);
    }
    EXPECT_EQ(list.GetRecentItems(), QStringList{u"kept"_s});
}

} // namespace
