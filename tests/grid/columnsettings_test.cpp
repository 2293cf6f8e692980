// What Config.ini and the user config file say about the grid's columns and its automatic
// filter, and all filter cells put at once.

#include "frame/settings.h"
#include "grid/autofilter.h"
#include "grid/clashgridmodel.h"
#include "grid/columnsettings.h"
#include "grid/gridfixture.h"
#include "grid/messages.h"
#include "store/clashview.h"
#include "store/options.h"

#include "support/failures.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class ColumnSettings : public fxtest::GridStore
{
protected:
    static void Put(const char *section, const QString &column, const QString &value)
    {
        SetIniValue(GetConfigFile(), QLatin1String(section), column, value);
    }
};

TEST_F(ColumnSettings, only_whole_places_within_the_columns_and_numeric_widths_are_taken)
{
    const QList<std::pair<QString, std::optional<int>>> orders{
        {u"3"_s, 3}, {u" 2 "_s, 2}, {u"4.0"_s, 4}, {u"0"_s, 0}, {u"9"_s, 9}, {u"10"_s, std::nullopt},
        {u"-1"_s, std::nullopt}, {u"2.5"_s, std::nullopt}, {u"x"_s, std::nullopt}, {QString(), std::nullopt}};
    for (const auto &[text, expected] : orders) {
        Put("ColumnsOrder", u"c"_s, text);
        EXPECT_EQ(SavedColumnOrder(u"c"_s, 10), expected) << text.toStdString();
    }
    EXPECT_EQ(SavedColumnOrder(u"missing"_s, 10), std::nullopt);
    Put("ColumnsWidth", u"c"_s, u"120"_s);
    EXPECT_EQ(SavedColumnWidth(u"c"_s), 120);
    Put("ColumnsWidth", u"c"_s, u"99.6"_s);
    EXPECT_EQ(SavedColumnWidth(u"c"_s), 100);
    Put("ColumnsWidth", u"c"_s, u"wide"_s);
    EXPECT_EQ(SavedColumnWidth(u"c"_s), std::nullopt);
    Put("ColumnsFilter", u"status"_s, u"Approved"_s);
    Put("ColumnsFilter", u"type"_s, u"  Hard* "_s);
    EXPECT_EQ(SavedColumnFilter(u"status"_s), QString());
    EXPECT_EQ(SavedColumnFilter(u"type"_s), u"Hard*"_s);

    // Saving empties the sections first: a column gone from the grid leaves no key behind.
    Put("ColumnsOrder", u"gone"_s, u"1"_s);
    SaveColumnSettings({{u"type"_s, 1, 80, u"Hard"_s}, {u"status"_s, 0, 60, QString()}});
    QStringList names, values;
    GetIniSection2Array(GetConfigFile(), u"ColumnsOrder"_s, names, values);
    EXPECT_EQ(names, (QStringList{u"type"_s, u"status"_s}));
    EXPECT_EQ(values, (QStringList{u"1"_s, u"0"_s}));
    EXPECT_EQ(GetIniValue(GetConfigFile(), u"ColumnsWidth"_s, u"type"_s), u"80"_s);
    EXPECT_EQ(GetIniValue(GetConfigFile(), u"ColumnsFilter"_s, u"type"_s), u"Hard"_s);
}

TEST_F(ColumnSettings, the_automatic_filter_asks_the_message_first_and_then_reads_whether_to_set)
{
    int asked = 0;
    // A filter in place is kept, and nothing is asked.
    EXPECT_EQ(AutoStatusFilter(u"Approved"_s, [&] { return ++asked, false; }), QString());
    EXPECT_EQ(asked, 0);
    // The message may switch the filter off as it closes; that answer counts at once.
    EXPECT_EQ(AutoStatusFilter(QString(), [&] {
                  SetOption(option::SetAutoFilter, u"0"_s);
                  return false;
              }),
              QString());
    SetOption(option::SetAutoFilter, u"1"_s);
    SetOption(option::ShowFilterDialog, u"0"_s);
    EXPECT_EQ(AutoStatusFilter(QString(), [&] { return ++asked, true; }), u"Unapproved"_s);
    EXPECT_EQ(asked, 0);
}

TEST_F(ColumnSettings, all_filter_cells_at_once_filter_one_time_and_a_refusal_changes_nothing)
{
    Row(1, {{"type", u"Hard"_s}, {"comp_a", u"P-1"_s}});
    Row(2, {{"type", u"Hard"_s}, {"comp_a", u"B-2"_s}});
    Row(3, {{"type", u"Soft"_s}, {"comp_a", u"P-3"_s}});
    ClashGridModel model;
    QStringList texts(model.columnCount());
    texts[model.ColumnOf(u"type"_s)] = u"Hard"_s;
    texts[model.ColumnOf(u"comp_a"_s)] = u"P*"_s;
    model.SetColumnFilters(texts);
    EXPECT_EQ(Ids(model), QList<qint64>{1});
    EXPECT_EQ(model.ColumnFilter(model.ColumnOf(u"comp_a"_s)), u"P*"_s);
    const QString filter = ClashRecordset().Filter;

    texts[model.ColumnOf(u"recent_review_date"_s)] = u"2024*"_s;
    EXPECT_EQ(fxtest::FailureText([&] { model.SetColumnFilters(texts); }),
              u"ClashGridModel::SetColumnFilters: "_s + ArgForm(msg::GridFilteringNotAvailable, {u"recent_review_date"_s}));
    texts[model.ColumnOf(u"recent_review_date"_s)].clear();
    texts[model.ColumnOf(u"type"_s)] = u"Soft"_s;
    Db().Execute(u"ALTER TABLE clashes RENAME TO away;"_s);
    EXPECT_THROW(model.SetColumnFilters(texts), Failure);
    Db().Execute(u"ALTER TABLE away RENAME TO clashes;"_s);
    EXPECT_EQ(ClashRecordset().Filter, filter);
    EXPECT_EQ(model.ColumnFilter(model.ColumnOf(u"type"_s)), u"Hard"_s);
    EXPECT_EQ(Ids(model), QList<qint64>{1});
    model.SetColumnFilters(texts);
    EXPECT_EQ(Ids(model), QList<qint64>{3});
}

} // namespace
