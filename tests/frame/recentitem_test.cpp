#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/recentitem.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace fx;

namespace {

class RecentItem : public testing::Test
{
protected:
    void SetUp() override { InitializeRecentProjects(list); }

    void PushAll(std::initializer_list<const char *> items)
    {
        for (const char *item : items)
            list.PushRecentItem(QString::fromUtf8(item));
    }

    QStringList Names(std::initializer_list<const char *> items)
    {
        QStringList names;
        for (const char *item : items)
            names.append(QString::fromUtf8(item));
        return names;
    }

    fxtest::Sandbox box;
    CRecentItem list;
};

TEST_F(RecentItem, pushed_items_come_newest_first_and_trimmed)
{
    EXPECT_TRUE(list.GetRecentItems().isEmpty());
    PushAll({"one", "  two  ", "three"});
    EXPECT_EQ(list.GetRecentItems(), Names({"three", "two", "one"}));
    EXPECT_EQ(list.GetItemCount(), 3);
    EXPECT_EQ(GetIniValue(GetConfigFile(), QStringLiteral("RecentProjects"), QStringLiteral("item2")), QStringLiteral("one"));
}

TEST_F(RecentItem, pushing_a_listed_item_moves_it_to_the_top_without_changing_the_count)
{
    PushAll({"a", "b", "c", "d"});
    list.PushRecentItem(QStringLiteral("b"));
    EXPECT_EQ(list.GetRecentItems(), Names({"b", "d", "c", "a"}));
    list.PushRecentItem(QStringLiteral("b"));
    EXPECT_EQ(list.GetRecentItems(), Names({"b", "d", "c", "a"}));
    list.PushRecentItem(QStringLiteral("a"));
    EXPECT_EQ(list.GetRecentItems(), Names({"a", "b", "d", "c"}));
}

TEST_F(RecentItem, eleventh_item_pushes_the_oldest_out)
{
    PushAll({"i1", "i2", "i3", "i4", "i5", "i6", "i7", "i8", "i9", "i10"});
    ASSERT_EQ(list.GetItemCount(), 10);
    list.PushRecentItem(QStringLiteral("i11"));
    EXPECT_EQ(list.GetRecentItems(), Names({"i11", "i10", "i9", "i8", "i7", "i6", "i5", "i4", "i3", "i2"}));
    QStringList names, values;
    GetIniSection2Array(GetConfigFile(), QStringLiteral("RecentProjects"), names, values, true);
    EXPECT_EQ(names.size(), 10);
}

TEST_F(RecentItem, removing_closes_the_gap_and_drops_the_last_key)
{
    PushAll({"c", "b", "a"});
    list.RemoveRecentItem(QStringLiteral("b"));
    EXPECT_EQ(list.GetRecentItems(), Names({"a", "c"}));
    QStringList names, values;
    GetIniSection2Array(GetConfigFile(), QStringLiteral("RecentProjects"), names, values);
    EXPECT_EQ(names, Names({"item0", "item1"}));
    list.RemoveRecentItem(QStringLiteral("not listed"));
    EXPECT_EQ(list.GetItemCount(), 2);
}

TEST_F(RecentItem, removing_the_only_item_leaves_an_empty_section_and_an_empty_list)
{
    list.PushRecentItem(QStringLiteral("only"));
    list.RemoveRecentItem(QStringLiteral("only"));
    EXPECT_TRUE(list.GetRecentItems().isEmpty());
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_FALSE(list.IsItemExisting(QStringLiteral("only")));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(GetConfigFile()), QByteArray("[RecentProjects]\n"));
}

TEST_F(RecentItem, list_ends_at_the_first_gap)
{
    box.WriteFile(QStringLiteral("r.ini"), "[R]\nitem0=a\nitem1=b\nitem3=d\n");
    list.Initialize(box.Root() + QStringLiteral("r.ini"), QStringLiteral("R"), 10, false);
    EXPECT_EQ(list.GetRecentItems(), Names({"a", "b"}));
    EXPECT_EQ(list.GetItemCount(), 2);
    EXPECT_FALSE(list.IsItemExisting(QStringLiteral("d")));
}

TEST_F(RecentItem, with_check_on_a_missing_file_is_skipped_but_the_list_goes_on)
{
    const QString there = box.WriteFile(QStringLiteral("there.txt"), "x");
    const QString gone = box.Root() + QStringLiteral("gone.txt");
    list.Initialize(box.Root() + QStringLiteral("r.ini"), QStringLiteral("R"), 5, true);
    list.PushRecentItem(there);
    list.PushRecentItem(gone);
    EXPECT_EQ(list.GetRecentItems(), QStringList{there});
    EXPECT_EQ(list.GetItemCount(), 2);
}

TEST_F(RecentItem, read_only_settings_file_refuses_changes_with_the_path_in_the_text)
{
    list.PushRecentItem(QStringLiteral("kept"));
    const QString file = GetConfigFile();
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0444), 0);
    for (const bool push : {true, false}) {
        try {
            push ? list.PushRecentItem(QStringLiteral("new")) : list.RemoveRecentItem(QStringLiteral("kept"));
            ADD_FAILURE() << "no failure";
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.Description(), QStringLiteral("File '") + file + QStringLiteral("': write permission denied"));
            EXPECT_EQ(failure.Source(), push ? QStringLiteral("CRecentItem::PushRecentItem")
                                             : QStringLiteral("CRecentItem::RemoveRecentItem"));
        }
    }
    EXPECT_EQ(list.GetRecentItems(), QStringList{QStringLiteral("kept")});
}

} // namespace
