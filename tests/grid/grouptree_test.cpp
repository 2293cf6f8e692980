// The grid's rows over groups, without a store: nesting from the innermost counts, opening and
// closing bands, and finding rows again by clash and by group.

#include "grid/grouptree.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// Two levels, as a GROUP BY discipline, type hands them over: Piping has two types, the
// null discipline one, HVAC one.
std::vector<CountedGroup> DisciplineAndType()
{
    return {
        {{QVariant(), u"Hard"_s}, 2, 1, 0},
        {{u"HVAC"_s, u"Soft"_s}, 3, 0, 0},
        {{u"Piping"_s, u"Hard"_s}, 4, 4, 0},
        {{u"piping"_s, u"Soft"_s}, 5, 2, 1}, // the store's collation made it Piping's
    };
}

// The rows as text: "B<level>:<value>" for a band, the clash id otherwise.
QStringList Shown(const GroupTree &tree)
{
    QStringList rows;
    for (int row = 0; row < tree.RowCount(); ++row) {
        const GridRow &at = tree.Row(row);
        if (at.band) {
            const ClashGroup &group = tree.Group(at.group);
            rows << u"B%1:%2"_s.arg(group.level).arg(group.value.isNull() ? u"NULL"_s : group.value.toString());
        } else {
            rows << QString::number(at.clashId);
        }
    }
    return rows;
}

int GroupOf(const GroupTree &tree, const QVariantList &path)
{
    const int group = tree.GroupOfPath(path);
    EXPECT_GE(group, 0);
    return group;
}

TEST(GroupTree, outer_groups_gather_their_innermost_counts_where_the_store_says_a_new_value_starts)
{
    GroupTree tree;
    tree.SetGroups(2, DisciplineAndType());
    EXPECT_EQ(Shown(tree), (QStringList{u"B0:NULL"_s, u"B0:HVAC"_s, u"B0:Piping"_s}));
    EXPECT_EQ(tree.ClashCount(), 14);
    EXPECT_EQ(tree.ApprovedCount(), 7);
    const ClashGroup &piping = tree.Group(GroupOf(tree, {u"Piping"_s}));
    EXPECT_EQ(piping.count, 9);
    EXPECT_EQ(piping.approved, 6);
    ASSERT_EQ(piping.children.size(), 2u);
    EXPECT_EQ(tree.Group(piping.children[1]).value, QVariant(u"Soft"_s));
    EXPECT_EQ(tree.Path(piping.children[1]), (QVariantList{u"Piping"_s, u"Soft"_s}));
    // A null value is a group of its own, found again by its path.
    EXPECT_EQ(tree.Group(GroupOf(tree, {QVariant(), u"Hard"_s})).count, 2);
    EXPECT_EQ(tree.GroupOfPath({u"Piping"_s, u"Clearance"_s}), -1);
    EXPECT_EQ(tree.GroupOfPath({u""_s}), -1);
}

TEST(GroupTree, bands_open_and_close_with_their_rows_and_an_inner_group_stays_open_under_a_closed_parent)
{
    GroupTree tree;
    tree.SetGroups(2, DisciplineAndType());
    const int soft = GroupOf(tree, {u"Piping"_s, u"Soft"_s});
    // An innermost group without its clashes does not open.
    tree.MarkOpen(soft, true);
    EXPECT_FALSE(tree.Group(soft).open);

    tree.Open(2);
    EXPECT_EQ(Shown(tree), (QStringList{u"B0:NULL"_s, u"B0:HVAC"_s, u"B0:Piping"_s, u"B1:Hard"_s, u"B1:Soft"_s}));
    tree.SetGroupClashes(soft, {50, 40, 70, 60, 30});
    EXPECT_EQ(tree.RowsBeneath(soft), 5);
    tree.Open(4);
    EXPECT_EQ(Shown(tree).mid(4), (QStringList{u"B1:Soft"_s, u"50"_s, u"40"_s, u"70"_s, u"60"_s, u"30"_s}));
    EXPECT_EQ(tree.RowsBeneath(GroupOf(tree, {u"Piping"_s})), 7);
    // A clash row knows its group; a clash row is no band to open.
    EXPECT_EQ(tree.Row(6).group, soft);
    tree.Open(6);
    EXPECT_EQ(tree.RowCount(), 10);

    // Closing the parent takes the open child along, opening it brings it back as it was.
    tree.Close(2);
    EXPECT_EQ(tree.RowCount(), 3);
    EXPECT_TRUE(tree.Group(soft).open);
    EXPECT_EQ(tree.OpenGroups(), std::vector<int>{soft});
    tree.Open(2);
    EXPECT_EQ(tree.RowCount(), 10);
    EXPECT_EQ(tree.OpenGroups(), (std::vector<int>{GroupOf(tree, {u"Piping"_s}), soft}));
    tree.Close(4);
    EXPECT_EQ(Shown(tree).mid(2), (QStringList{u"B0:Piping"_s, u"B1:Hard"_s, u"B1:Soft"_s}));
    // Twice the same gesture changes nothing more.
    tree.Close(4);
    tree.Open(2);
    EXPECT_EQ(tree.RowCount(), 5);
}

TEST(GroupTree, every_row_is_found_again_by_its_clash_or_its_group_and_knows_the_band_above_it)
{
    GroupTree tree;
    tree.SetGroups(2, DisciplineAndType());
    const std::vector<std::pair<QVariantList, std::vector<qint64>>> opened{
        {{QVariant(), u"Hard"_s}, {11, 12}}, {{u"Piping"_s, u"Hard"_s}, {21, 22, 23, 24}}, {{u"Piping"_s, u"Soft"_s}, {31, 32, 33, 34, 35}}};
    for (const auto &[path, ids] : opened) {
        tree.SetGroupClashes(GroupOf(tree, path), ids);
        tree.MarkOpen(GroupOf(tree, path), true);
        tree.MarkOpen(GroupOf(tree, {path.front()}), true);
    }
    tree.Layout();
    ASSERT_EQ(tree.RowCount(), 3 + 3 + 11);
    for (int row = 0; row < tree.RowCount(); ++row) {
        const GridRow &at = tree.Row(row);
        if (at.band) {
            EXPECT_EQ(tree.RowOfGroup(GroupOf(tree, tree.Path(at.group))), row);
        } else {
            EXPECT_EQ(tree.RowOfClash(at.clashId), row);
        }
        const int above = tree.BandAbove(row);
        const int parent = at.band ? tree.Group(at.group).parent : at.group;
        if (parent < 0) {
            EXPECT_EQ(above, -1) << row;
        } else {
            ASSERT_GE(above, 0) << row;
            EXPECT_LT(above, row);
            EXPECT_EQ(tree.Row(above).group, parent);
        }
    }
    EXPECT_EQ(tree.RowOfClash(99), -1);

    // Without groups the rows are the clashes, and no row has a band above it.
    tree.SetClashes({5, 3, 9}, 1);
    EXPECT_EQ(Shown(tree), (QStringList{u"5"_s, u"3"_s, u"9"_s}));
    EXPECT_EQ(tree.ClashCount(), 3);
    EXPECT_EQ(tree.ApprovedCount(), 1);
    EXPECT_EQ(tree.BandAbove(1), -1);
    EXPECT_EQ(tree.RowOfClash(9), 2);
}

} // namespace
