// The grid's model grouped: bands counted by the store, groups opened with their clashes in
// the grid's order, sorting and filtering within the groups, a refresh keeping what was open,
// and every row found again by its clash or its band, under QAbstractItemModelTester.

#include "grid/clashgridmodel.h"
#include "grid/gridfixture.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

struct MadeClash
{
    qint64 id = 0;
    QString type;
    QVariant discipline;
    bool approved = false;
};

class GridGroups : public fxtest::GridStore
{
protected:
    // Disciplines written in two cases and left out, types repeating, some approved in either case.
    void Fill(int count)
    {
        static const QStringList types{u"Soft"_s, u"Hard"_s, u"Clearance"_s};
        static const QVariantList disciplines{u"Piping"_s, u"HVAC"_s, u"piping"_s, QVariant(), u"Structural"_s};
        SqliteTransaction transaction(Db());
        SqliteStatement insert(Db(), u"INSERT INTO clashes (clash_id, type, discipline_a, status, comp_a) VALUES (?1, ?2, ?3, ?4, ?5);"_s);
        for (int i = 0; i < count; ++i) {
            MadeClash clash{qint64((i * 7919) % count) * 3 + 10, types.at(i % 3), disciplines.at((i / 2) % 5), i % 4 == 0 || i % 7 == 0};
            insert.Bind(1, clash.id);
            insert.Bind(2, clash.type);
            insert.Bind(3, clash.discipline);
            insert.Bind(4, clash.approved ? (i % 4 == 0 ? u"Approved"_s : u"approved"_s) : u"Unapproved"_s);
            insert.Bind(5, u"c%1"_s.arg(clash.id));
            insert.Step();
            insert.Reset();
            made.push_back(clash);
        }
        transaction.Commit();
    }

    // The discipline as one group holds it: case left aside, NULL named.
    static QString Key(const QVariant &discipline)
    {
        return discipline.isNull() ? u"NULL"_s : discipline.toString().toLower();
    }

    // The made clashes of a discipline (and a type, unless empty), counted.
    std::pair<int, int> Counted(const QString &discipline, const QString &type = {}) const
    {
        int count = 0;
        int approved = 0;
        for (const MadeClash &clash : made)
            if (Key(clash.discipline) == discipline && (type.isEmpty() || clash.type == type)) {
                ++count;
                approved += clash.approved ? 1 : 0;
            }
        return {count, approved};
    }

    // The ids of a discipline and type in clash order.
    QList<qint64> MadeIds(const QString &discipline, const QString &type) const
    {
        QList<qint64> ids;
        for (const MadeClash &clash : made)
            if (Key(clash.discipline) == discipline && clash.type == type)
                ids << clash.id;
        std::sort(ids.begin(), ids.end());
        return ids;
    }

    static QString Band(const ClashGridModel &model, int row) { return model.data(model.index(row, 0)).toString(); }

    static QStringList Bands(const ClashGridModel &model)
    {
        QStringList bands;
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.IsBand(row))
                bands << Band(model, row);
        return bands;
    }

    // The clash ids beneath the band at `row`, up to the next band.
    static QList<qint64> IdsBeneath(const ClashGridModel &model, int row)
    {
        QList<qint64> ids;
        for (int at = row + 1; at < model.rowCount() && !model.IsBand(at); ++at)
            ids << model.ClashIdOfRow(at);
        return ids;
    }

    static int Row(const ClashGridModel &model, const QVariantList &path)
    {
        const int row = model.RowOfGroupPath(path);
        EXPECT_GE(row, 0);
        return row;
    }

    // Every row back from what names it: a clash by its id, a band by its group's values.
    static void ExpectRoundTrip(const ClashGridModel &model)
    {
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.IsBand(row)) {
                EXPECT_EQ(model.ClashIdOfRow(row), -1);
                ASSERT_EQ(model.RowOfGroupPath(model.GroupPathOfRow(row)), row) << Band(model, row).toStdString();
            } else {
                EXPECT_TRUE(model.GroupPathOfRow(row).isEmpty());
                ASSERT_EQ(model.RowOfClash(model.ClashIdOfRow(row)), row) << row;
            }
        }
    }

    std::vector<MadeClash> made;
};

TEST_F(GridGroups, each_value_is_one_band_with_its_counts_whatever_its_case_and_filters_count_within_the_groups)
{
    Fill(240);
    ClashGridModel model;
    model.SetGroupColumns({u"discipline_a"_s, u"no_such_column"_s});
    EXPECT_EQ(model.GroupColumns(), QStringList{u"discipline_a"_s});
    ASSERT_EQ(model.rowCount(), 4);
    const auto text = [&](const QString &shown, const QString &key, const QString &type = {}) {
        const auto [count, approved] = Counted(key, type);
        return u"discipline_a: %1 (%2 clashes: %3 approved, %4 unapproved)"_s.arg(shown).arg(count).arg(approved).arg(count - approved);
    };
    EXPECT_EQ(Bands(model), (QStringList{text(u"NULL"_s, u"NULL"_s), text(u"HVAC"_s, u"hvac"_s), text(u"Piping"_s, u"piping"_s),
                                         text(u"Structural"_s, u"structural"_s)}));
    EXPECT_EQ(model.ClashCount(), 240);
    EXPECT_EQ(model.ApprovedRows(), std::count_if(made.begin(), made.end(), [](const MadeClash &c) { return c.approved; }));
    // A band is no clash: nothing to edit, no cells of a clash.
    const QModelIndex action = model.index(2, model.ColumnOf(u"action_discipline"_s));
    EXPECT_FALSE(model.flags(action) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.setData(action, u"Piping"_s));
    EXPECT_FALSE(model.data(model.index(2, 1)).isValid());
    EXPECT_EQ(model.data(model.index(2, 3), ClashGridModel::GroupLevelRole).toInt(), 0);
    EXPECT_FALSE(model.data(model.index(2, 3), ClashGridModel::GroupOpenRole).toBool());

    // A filter applies within the groups: the counts follow, an open group stays open.
    model.SetGroupOpen(Row(model, {u"HVAC"_s}), true);
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"Hard"_s);
    EXPECT_EQ(Band(model, 0), text(u"NULL"_s, u"NULL"_s, u"Hard"_s));
    EXPECT_EQ(model.ClashCount(), Counted(u"NULL"_s, u"Hard"_s).first + Counted(u"hvac"_s, u"Hard"_s).first
                                      + Counted(u"piping"_s, u"Hard"_s).first + Counted(u"structural"_s, u"Hard"_s).first);
    EXPECT_EQ(IdsBeneath(model, Row(model, {u"HVAC"_s})), MadeIds(u"hvac"_s, u"Hard"_s));
    // A filter that leaves a group empty takes its band away.
    model.SetColumnFilter(model.ColumnOf(u"discipline_a"_s), u"Pip*"_s);
    EXPECT_EQ(Bands(model), QStringList{text(u"Piping"_s, u"piping"_s, u"Hard"_s)});
}

TEST_F(GridGroups, groups_nest_open_with_their_clashes_in_the_sort_and_a_header_sort_keeps_the_grouping)
{
    Fill(300);
    ClashGridModel model;
    model.SetGroupColumns({u"discipline_a"_s, u"type"_s});
    ASSERT_EQ(model.rowCount(), 4);
    model.SetGroupOpen(Row(model, {u"Piping"_s}), true);
    EXPECT_EQ(model.rowCount(), 7);
    const int hard = Row(model, {u"Piping"_s, u"Hard"_s});
    EXPECT_EQ(model.data(model.index(hard, 0), ClashGridModel::GroupLevelRole).toInt(), 1);
    EXPECT_EQ(Band(model, hard), u"type: Hard (%1 clashes: %2 approved, %3 unapproved)"_s.arg(Counted(u"piping"_s, u"Hard"_s).first)
                                     .arg(Counted(u"piping"_s, u"Hard"_s).second)
                                     .arg(Counted(u"piping"_s, u"Hard"_s).first - Counted(u"piping"_s, u"Hard"_s).second));
    model.SetGroupOpen(hard, true);
    const QList<qint64> hardIds = MadeIds(u"piping"_s, u"Hard"_s);
    EXPECT_EQ(IdsBeneath(model, hard), hardIds);
    EXPECT_EQ(model.BandAbove(hard + 3), hard);
    EXPECT_EQ(model.BandAbove(hard), Row(model, {u"Piping"_s}));

    // A header click sorts within the groups; the groups and what was open stay.
    model.SortByColumn(model.ColumnOf(u"comp_a"_s));
    EXPECT_EQ(model.GroupColumns(), (QStringList{u"discipline_a"_s, u"type"_s}));
    QList<qint64> byComp = hardIds;
    std::sort(byComp.begin(), byComp.end(), [](qint64 a, qint64 b) { return u"c%1"_s.arg(a) < u"c%1"_s.arg(b); });
    EXPECT_EQ(IdsBeneath(model, Row(model, {u"Piping"_s, u"Hard"_s})), byComp);
    model.SortByColumn(model.ColumnOf(u"comp_a"_s));
    std::reverse(byComp.begin(), byComp.end());
    EXPECT_EQ(IdsBeneath(model, Row(model, {u"Piping"_s, u"Hard"_s})), byComp);

    // Sorted by a group column, its groups come in that order.
    model.SortByColumn(model.ColumnOf(u"discipline_a"_s));
    model.SortByColumn(model.ColumnOf(u"discipline_a"_s));
    EXPECT_EQ(model.Sort(), u"[discipline_a] DESC"_s);
    EXPECT_TRUE(Band(model, 0).startsWith(u"discipline_a: Structural "_s)) << Band(model, 0).toStdString();
    EXPECT_TRUE(Band(model, model.rowCount() - 1).startsWith(u"discipline_a: NULL "_s));
    EXPECT_EQ(IdsBeneath(model, Row(model, {u"Piping"_s, u"Hard"_s})), hardIds);

    // An action discipline picked in a group's row is that clash's.
    const int row = Row(model, {u"Piping"_s, u"Hard"_s}) + 2;
    ASSERT_TRUE(model.setData(model.index(row, model.ColumnOf(u"action_discipline"_s)), u"Structural"_s));
    EXPECT_EQ(Db().Read(u"SELECT action_discipline FROM clashes WHERE clash_id = %1;"_s.arg(hardIds.at(1))).Value(0, 0).toString(),
              u"Structural"_s);

    // Without groups the clashes come back alone, in the sort that was clicked.
    model.SetGroupColumns({});
    EXPECT_EQ(model.rowCount(), 300);
    EXPECT_EQ(model.data(model.index(0, model.ColumnOf(u"discipline_a"_s))).toString(), u"Structural"_s);
    EXPECT_FALSE(model.IsBand(0));
}

TEST_F(GridGroups, the_model_passes_the_item_model_tester_and_every_row_maps_to_its_clash_or_band_and_back)
{
    Fill(150);
    ClashGridModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    ExpectRoundTrip(model);
    model.SetGroupColumns({u"type"_s, u"discipline_a"_s});
    ExpectRoundTrip(model);
    for (const QString &type : {u"Soft"_s, u"Clearance"_s}) {
        model.SetGroupOpen(Row(model, {type}), true);
        model.SetGroupOpen(Row(model, {type, QVariant()}), true);
        model.SetGroupOpen(Row(model, {type, u"Piping"_s}), true);
    }
    ExpectRoundTrip(model);
    model.SortByColumn(model.ColumnOf(u"comp_a"_s));
    ExpectRoundTrip(model);
    model.SetColumnFilter(model.ColumnOf(u"status"_s), u"Unapproved"_s);
    ExpectRoundTrip(model);
    model.SetGroupOpen(Row(model, {u"Soft"_s}), false);
    ExpectRoundTrip(model);
    model.SetGroupOpen(Row(model, {u"Clearance"_s, u"Piping"_s}), false);
    ExpectRoundTrip(model);
    model.Refresh();
    ExpectRoundTrip(model);
    model.SetGroupColumns({});
    ExpectRoundTrip(model);
}

TEST_F(GridGroups, many_open_groups_each_get_their_own_clashes_back)
{
    Fill(1100);
    ClashGridModel model;
    // One group per clash: more groups than one statement reads.
    model.SetGroupColumns({u"comp_a"_s});
    ASSERT_EQ(model.rowCount(), 1100);
    QList<QVariantList> all;
    for (int row = 0; row < model.rowCount(); ++row)
        all << model.GroupPathOfRow(row);
    model.OpenGroups(all);
    ASSERT_EQ(model.rowCount(), 2200);
    for (int row = 0; row < model.rowCount(); row += 2)
        ASSERT_EQ(u"c%1"_s.arg(model.ClashIdOfRow(row + 1)), model.GroupPathOfRow(row).front().toString()) << row;
    ExpectRoundTrip(model);
}

TEST_F(GridGroups, a_refresh_keeps_open_groups_and_the_clash_and_recounts_and_regroups_what_changed)
{
    Fill(200);
    ClashGridModel model;
    model.SetGroupColumns({u"discipline_a"_s, u"type"_s});
    model.SetGroupOpen(Row(model, {u"HVAC"_s}), true);
    model.SetGroupOpen(Row(model, {u"HVAC"_s, u"Soft"_s}), true);
    const QList<qint64> soft = MadeIds(u"hvac"_s, u"Soft"_s);
    ASSERT_GE(soft.size(), 3);
    const qint64 kept = soft.at(2);

    // Another reviewer approved two clashes of the group and gave one a new discipline.
    Db().Execute(u"UPDATE clashes SET status = 'Approved' WHERE clash_id IN (%1, %2);"
                 "UPDATE clashes SET discipline_a = 'Electrical' WHERE clash_id = %3;"_s.arg(soft.at(0)).arg(soft.at(1)).arg(soft.at(3)));
    const int row = model.Refresh(kept);
    EXPECT_EQ(model.ClashIdOfRow(row), kept);
    EXPECT_EQ(model.BandAbove(row), Row(model, {u"HVAC"_s, u"Soft"_s}));
    QList<qint64> left = soft;
    left.removeAt(3);
    EXPECT_EQ(IdsBeneath(model, Row(model, {u"HVAC"_s, u"Soft"_s})), left);
    const auto approvedNow = std::count_if(left.begin(), left.end(), [&](qint64 id) {
        return id == soft.at(0) || id == soft.at(1)
               || std::any_of(made.begin(), made.end(), [&](const MadeClash &c) { return c.id == id && c.approved; });
    });
    EXPECT_TRUE(Band(model, Row(model, {u"HVAC"_s, u"Soft"_s})).contains(u"(%1 clashes: %2 approved"_s.arg(left.size()).arg(approvedNow)));
    EXPECT_TRUE(Band(model, Row(model, {u"Electrical"_s})).startsWith(u"discipline_a: Electrical (1 clashes: "_s));

    // A group that is gone leaves nothing open behind it.
    Db().Execute(u"DELETE FROM clashes WHERE discipline_a = 'HVAC' AND type = 'Soft';"_s);
    model.Refresh();
    EXPECT_EQ(model.RowOfGroupPath({u"HVAC"_s, u"Soft"_s}), -1);
    EXPECT_EQ(model.OpenGroupPaths(), QList<QVariantList>{QVariantList{u"HVAC"_s}});
}

} // namespace
