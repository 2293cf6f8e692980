// The filter cells of the grid as a condition on the store, and the drop-down lists.

#include "grid/clashgridmodel.h"
#include "grid/gridfilter.h"
#include "grid/gridfixture.h"
#include "store/clashview.h"

#include "support/failures.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class GridFilter : public fxtest::GridStore
{
protected:
    void SetUp() override
    {
        GridStore::SetUp();
        Row(1, {{"comp_a", u"A_B"_s}, {"discipline_a", u"Piping"_s}, {"discipline_b", u"Equipment"_s}, {"type", u"Hard"_s}});
        Row(2, {{"comp_a", u"AXB"_s}, {"discipline_a", u"Piping"_s}, {"discipline_b", u"Piping"_s}, {"type", u"Soft"_s}});
        Row(3, {{"comp_a", u"O'Neil"_s}, {"discipline_a", u"Structural"_s}, {"type", u"Hard"_s}});
        Row(4, {{"comp_a", u"a\\b"_s}, {"discipline_b", u"Structural"_s}, {"type", u"hard"_s}});
        Row(5, {{"comp_a", u"100%"_s}, {"discipline_structure", u""_s}});
        Row(6, {{"comp_a", u""_s}, {"discipline_structure", u"Piping"_s}, {"type", u"Clearance"_s}});
        Row(7, {{"discipline_structure", u"Piping,Equipment"_s}, {"type", u"Soft"_s}});
    }

    static QList<qint64> Filtered(ClashGridModel &model, const char *column, const QString &text)
    {
        model.SetColumnFilter(model.ColumnOf(QLatin1String(column)), text);
        return Ids(model);
    }
};

TEST_F(GridFilter, wildcards_quotes_underscores_and_backslashes_of_user_text_filter_literally)
{
    ClashGridModel model;
    ASSERT_EQ(model.rowCount(), 7);
    // "_" is a character of its own, not any one character; a text without a wildcard at either
    // end matches the ends of values, case ignored.
    EXPECT_EQ(Filtered(model, "comp_a", u"A_B"_s), (QList<qint64>{1}));
    EXPECT_EQ(Filtered(model, "comp_a", u"b"_s), (QList<qint64>{1, 2, 4}));
    EXPECT_EQ(Filtered(model, "comp_a", u"a*"_s), (QList<qint64>{1, 2, 4}));
    EXPECT_EQ(Filtered(model, "comp_a", u"*x*"_s), (QList<qint64>{2}));
    EXPECT_EQ(Filtered(model, "comp_a", u"O'Neil"_s), (QList<qint64>{3}));
    EXPECT_EQ(Filtered(model, "comp_a", u"a\\b"_s), (QList<qint64>{4}));
    EXPECT_EQ(Filtered(model, "comp_a", u"1%"_s), (QList<qint64>{5}));
    // "NULL" means no value at all, not an empty one.
    EXPECT_EQ(Filtered(model, "comp_a", u"NULL"_s), (QList<qint64>{7}));
    EXPECT_EQ(ClashRecordset().Filter, u"[comp_a] = NULL"_s);
    EXPECT_EQ(GetClashCount(), 1);
    EXPECT_EQ(Filtered(model, "comp_a", QString()), (QList<qint64>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE(ClashRecordset().Filter.isEmpty());
}

TEST_F(GridFilter, hash_signs_and_equals_null_in_user_text_are_looked_for_as_typed)
{
    // "#" and "= NULL" belong to the filter's own syntax outside quotes, never to a value.
    Row(8, {{"comp_a", u"P#1 = NULL"_s}, {"status", u"Approved"_s}});
    ClashGridModel model;
    EXPECT_EQ(Filtered(model, "comp_a", u"P#1*"_s), (QList<qint64>{8}));
    EXPECT_EQ(GetClashCount(), 1);
    EXPECT_EQ(Filtered(model, "comp_a", u"1 = NULL"_s), (QList<qint64>{8}));
    EXPECT_EQ(GetApprovedClashCount(), 1);
}

TEST_F(GridFilter, cells_join_in_column_order_and_the_counts_follow)
{
    ClashGridModel model;
    model.SetColumnFilter(model.ColumnOf(u"discipline_a"_s), u"Piping"_s);
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"Hard"_s);
    EXPECT_EQ(Ids(model), (QList<qint64>{1}));
    EXPECT_EQ(ClashRecordset().Filter, u"[type] LIKE '%Hard' ESCAPE '\\' AND [discipline_a] LIKE '%Piping' ESCAPE '\\'"_s);
    EXPECT_EQ(GetClashCount(), 1);
    EXPECT_EQ(GridFilterTerm({u"comp_a"_s, false}, u"it's_50\\*"_s), u"[comp_a] LIKE 'it''s\\_50\\\\%' ESCAPE '\\'"_s);
    EXPECT_EQ(GridFilterTerm({u"recent_review_date"_s, true}, u"2024-01-02 03:04:05"_s),
              u"[recent_review_date] = '2024-01-02 03:04:05'"_s);
}

TEST_F(GridFilter, the_review_date_is_refused_and_a_broken_filter_leaves_the_grid_usable)
{
    ClashGridModel model;
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"Soft"_s);
    const int date = model.ColumnOf(u"recent_review_date"_s);
    EXPECT_EQ(fxtest::FailureText([&] { model.SetColumnFilter(date, u"2024*"_s); }),
              u"ClashGridModel::SetColumnFilter: Filtering '%0%' is not available|||recent_review_date"_s);
    EXPECT_TRUE(model.ColumnFilter(date).isEmpty());
    EXPECT_EQ(Ids(model), (QList<qint64>{2, 7}));

    // The table changed under the grid: the cell naming the lost column can't be applied.
    Db().Execute(u"ALTER TABLE clashes RENAME COLUMN comp_b TO comp_x;"_s);
    const int compB = model.ColumnOf(u"comp_b"_s);
    EXPECT_FALSE(fxtest::FailureText([&] { model.SetColumnFilter(compB, u"X"_s); }).isEmpty());
    EXPECT_TRUE(model.ColumnFilter(compB).isEmpty());
    EXPECT_EQ(ClashRecordset().Filter, u"[type] LIKE '%Soft' ESCAPE '\\'"_s);
    EXPECT_EQ(Ids(model), (QList<qint64>{2, 7}));
    EXPECT_EQ(model.data(model.index(0, model.ColumnOf(u"comp_a"_s))).toString(), u"AXB"_s);
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"hard"_s);
    EXPECT_EQ(Ids(model), (QList<qint64>{1, 3, 4}));
}

TEST_F(GridFilter, drop_down_lists_offer_the_values_in_view_and_one_empty_entry)
{
    EXPECT_EQ(FilterValueList(u"action_discipline"_s, true), (QStringList{u""_s, u"Equipment"_s, u"Piping"_s, u"Structural"_s}));
    // Case differences of one value are one entry, as the store compares without case.
    EXPECT_EQ(FilterValueList(u"type"_s), (QStringList{u""_s, u"Clearance"_s, u"Hard"_s, u"NULL"_s, u"Soft"_s}));
    EXPECT_EQ(FilterValueList(u"discipline_structure"_s),
              (QStringList{u""_s, u"**"_s, u"*Equipment*"_s, u"*Piping*"_s, u"*Structural*"_s, u"NULL"_s, u"Piping"_s,
                           u"Piping,Equipment"_s}));

    ClashGridModel model;
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"Soft"_s);
    EXPECT_EQ(FilterValueList(u"discipline_structure"_s),
              (QStringList{u""_s, u"**"_s, u"*Piping*"_s, u"NULL"_s, u"Piping,Equipment"_s}));
    EXPECT_EQ(FilterValueList(u"comp_a"_s), (QStringList{u""_s, u"AXB"_s, u"NULL"_s}));
    // A null discipline of the project is the empty entry itself.
    Db().Execute(u"INSERT INTO pdtable_111 VALUES (NULL);"_s);
    EXPECT_EQ(FilterValueList(u"action_discipline"_s, true).count(QString()), 1);
}

TEST_F(GridFilter, a_drop_down_is_built_again_only_after_more_than_a_second)
{
    const QDateTime start = QDateTime::currentDateTime();
    DropDownGuard guard;
    EXPECT_TRUE(guard.Due(start));
    guard.Built(start);
    EXPECT_FALSE(guard.Due(start.addSecs(1)));
    EXPECT_TRUE(guard.Due(start.addSecs(2)));

    FilterDropDown dropDown;
    const QStringList types = dropDown.List(u"type"_s, false, start);
    EXPECT_TRUE(types.contains(u"Hard"_s));
    EXPECT_EQ(dropDown.List(u"comp_a"_s, false, start.addSecs(1)), types);
    EXPECT_TRUE(dropDown.List(u"comp_a"_s, false, start.addSecs(2)).contains(u"O'Neil"_s));
    // A failed build doesn't count as one: the next opening tries again at once.
    EXPECT_FALSE(fxtest::FailureText([&] { dropDown.List(u"no_such_column"_s, false, start.addSecs(4)); }).isEmpty());
    EXPECT_TRUE(dropDown.List(u"type"_s, false, start.addSecs(4)).contains(u"Clearance"_s));
}

} // namespace
