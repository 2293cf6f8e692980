// The view of clashes: its filters on a small hand-made store, when it is rebuilt, what goes
// back to base_clash_table, and the counts of the status line.

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/settings.h"
#include "pds/localdb.h"
#include "store/advancedfilter.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"
#include "store/messages.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace fx;
using namespace Qt::StringLiterals;

// Readable texts when a comparison of logs fails.
static void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace {

using Values = std::initializer_list<std::pair<const char *, QVariant>>;

class ClashView : public testing::Test, public ILogSink
{
protected:
    void SetUp() override
    {
        SetUserConfigFile(box.AppData() + u"reviewer.ini"_s);
        const QString file = box.Temp() + u"store.fxdb"_s;
        ClashStore().ProjectDefinition.name = u"P"_s;
        ClashStore().WorkDB = file;
        ClashStore().ClashConnection = std::make_unique<SqliteDb>(file, SqliteDb::OpenMode::ReadWriteCreate);
        ResetRememberedClashFilters();
        Db().Execute(u"CREATE TABLE base_clash_table (clash_id INT, type VARCHAR(255), status VARCHAR(255), "
                     "action VARCHAR(255), review_comment VARCHAR(255), recent_review_date DATETIME, site_id_a VARCHAR(255), "
                     "discipline_a VARCHAR(255), area_a VARCHAR(255), model_a VARCHAR(255), model_status_a VARCHAR(255), "
                     "comp_a VARCHAR(255), site_id_b VARCHAR(255), discipline_b VARCHAR(255), area_b VARCHAR(255), "
                     "model_b VARCHAR(255), model_status_b VARCHAR(255), comp_b VARCHAR(255), action_discipline VARCHAR(255), "
                     "action_area_a VARCHAR(255) DEFAULT 'Project', action_area_b VARCHAR(255) DEFAULT 'Project', "
                     "easting DOUBLE, northing DOUBLE, elevation DOUBLE, discipline_structure VARCHAR(255), "
                     "model_structure VARCHAR(255), site_id_structure VARCHAR(255));"_s
                         .replace(u"VARCHAR(255)"_s, QString::fromLatin1(StoreTextType)));
        Row(1, {{"discipline_a", u"Piping"_s}, {"discipline_b", u"Piping"_s}, {"comp_a", u"A-B-C"_s}, {"comp_b", u"D"_s},
                {"type", u"Hard"_s}, {"status", u"Approved"_s}, {"action_area_a", u"Area1"_s}, {"easting", 10.0}});
        Row(2, {{"discipline_a", u"O'Neil"_s}, {"discipline_b", u"Piping"_s}, {"comp_a", u"E-F"_s}, {"type", u"Soft"_s},
                {"status", u"Unapproved"_s}, {"action_area_b", u"AREA2"_s}, {"easting", 50.0}});
        Row(3, {{"discipline_a", u"O'Neil"_s}, {"discipline_b", u"O'Neil"_s}, {"comp_a", u""_s}, {"comp_b", u"G"_s},
                {"status", u"approved"_s}});
        Row(4, {{"discipline_b", u"Piping"_s}, {"comp_a", u"X"_s}, {"comp_b", u"Z"_s}, {"type", u"Hard"_s}, {"easting", 100.0}});
        Row(5, {{"discipline_a", u"X"_s}, {"discipline_b", u"Y"_s}, {"comp_a", u"X"_s}, {"comp_b", u"Y"_s}, {"easting", -5.0}});
        Row(6, {{"comp_a", u"X,Y"_s}, {"comp_b", u"X,Y"_s}, {"easting", 0.0}, {"northing", 0.1234}, {"elevation", -2.5}});
        Db().Execute(u"CREATE TABLE pdtable_134 (primary_descript VARCHAR(255), secondary_descript VARCHAR(255));"
                     "INSERT INTO pdtable_134 VALUES ('A-B', 'C'), ('D', NULL), ('E', 'F'), ('G', ''), ('P-Q-R', 'S');"_s);
        CreateAdvancedFilterTables(Db());
        log.clear();
    }

    void TearDown() override { FreeClashes(); }

    void ShowLogMessage(const QString &text) override { log << text; }

    static SqliteDb &Db() { return ClashConnection(); }

    static void Row(int id, Values values)
    {
        Db().Execute(u"INSERT INTO base_clash_table (clash_id) VALUES (%1);"_s.arg(id));
        for (const auto &[column, value] : values) {
            SqliteStatement update(Db(), u"UPDATE base_clash_table SET [%1] = ?1 WHERE clash_id = %2;"_s.arg(QLatin1String(column)).arg(id));
            update.Bind(1, value);
            update.Step();
        }
    }

    static void Set(const QString &section, const QString &key, const QString &value)
    {
        SetIniValue(GetUserConfigFile(), section, key, value);
    }
    static void Exclude(const QString &dimension, const QStringList &values)
    {
        SetIniValue(GetUserConfigFile(), AdvancedFilterSection(dimension), std::nullopt, std::nullopt);
        if (values.isEmpty())
            return;
        // Appended in one go: thousands of values one key at a time would rewrite the file each time.
        QString section = u"\n["_s + AdvancedFilterSection(dimension) + u"]\n"_s;
        for (qsizetype i = 0; i < values.size(); ++i)
            section += QString::number(i) + u"="_s + values.at(i) + u"\n"_s;
        QFile file(GetUserConfigFile());
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(section.toUtf8());
    }

    static QList<int> Ids(const QString &sql)
    {
        QList<int> ids;
        const Recordset rows = Db().Read(sql);
        for (const QVariantList &row : rows.Rows())
            ids << row.at(0).toInt();
        return ids;
    }
    static QList<int> ViewIds() { return Ids(u"SELECT clash_id FROM clashes ORDER BY clash_id"_s); }
    static QList<int> BaseIds(const QString &filter)
    {
        return Ids(u"SELECT clash_id FROM base_clash_table WHERE "_s + filter + u" ORDER BY clash_id"_s);
    }
    static QVariant One(const QString &sql) { return Db().Read(sql).Value(0, 0); }
    static QStringList Columns(const QString &table)
    {
        QStringList names;
        const Recordset rows = Db().Read(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table));
        for (const QVariantList &row : rows.Rows())
            names << row.at(0).toString();
        return names;
    }
    static QStringList ViewColumns(const QStringList &sideA, const QStringList &sideB, const QStringList &tail = {})
    {
        return QStringList{u"clash_id"_s, u"type"_s, u"status"_s, u"action"_s, u"review_comment"_s, u"recent_review_date"_s,
                           u"discipline_structure"_s, u"model_structure"_s, u"site_id_structure"_s, u"site_id_a"_s,
                           u"discipline_a"_s, u"area_a"_s, u"model_a"_s, u"model_status_a"_s}
               + sideA + QStringList{u"action_area_a"_s, u"site_id_b"_s, u"discipline_b"_s, u"area_b"_s, u"model_b"_s, u"model_status_b"_s}
               + sideB + QStringList{u"action_area_b"_s, u"action_discipline"_s, u"easting"_s, u"northing"_s, u"elevation"_s} + tail;
    }

    fxtest::Sandbox box;
    QStringList log;
    LogSinkRegistration registration{this};
};

QString Filled(const char *message, const QStringList &args = {})
{
    QString text = QString::fromUtf8(message);
    for (qsizetype i = 0; i < args.size(); ++i)
        text.replace(u"%%1%"_s.arg(i), args.at(i));
    return text;
}

} // namespace

TEST_F(ClashView, without_settings_the_view_copies_the_base_and_is_built_again_only_when_a_setting_changes_or_it_is_gone)
{
    EXPECT_EQ(GetClashes(), 6);
    EXPECT_TRUE(ClashRecordset().open);
    EXPECT_EQ(log, (QStringList{Filled(msg::LoadingClashTable), Filled(msg::ComponentsSeparatorNotDefined),
                                u"Easting center: ; northing center: ; elevation center: "_s, Filled(msg::ActionAreaNotDefined),
                                u"Easting low: ; northing low: ; elevation low: ; easting high: ; northing high: ; elevation high: "_s,
                                Filled(msg::AdvancedFilterNotDefined), Filled(msg::CreatingClashTable),
                                Filled(msg::ClashTableCreated), u"Clash table loaded successfully (6 clashes)"_s}));
    const QStringList columns = Columns(u"clashes"_s);
    EXPECT_EQ(columns, ViewColumns({u"comp_a"_s}, {u"comp_b"_s}));
    for (const QString &column : columns)
        EXPECT_EQ(One(u"SELECT COUNT(*) FROM clashes c JOIN base_clash_table b ON b.clash_id = c.clash_id WHERE c.[%1] IS NOT b.[%1]"_s
                          .arg(column)).toInt(), 0) << column.toStdString();

    // Unchanged settings keep the table as it is: the marker row stays.
    Db().Execute(u"INSERT INTO clashes (clash_id, status) VALUES (99, 'marker');"_s);
    Db().Execute(u"UPDATE clashes SET review_comment = 'seen' WHERE clash_id = 2;"_s);
    log.clear();
    EXPECT_EQ(GetClashes(), 7);
    EXPECT_FALSE(log.contains(Filled(msg::CreatingClashTable)));

    // A changed setting rebuilds it, after the reviewer's change went back to the base.
    Set(u"PVolumeFilter"_s, u"Area"_s, u"Project"_s);
    EXPECT_EQ(GetClashes(), 6);
    EXPECT_EQ(ViewIds(), (QList<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(One(u"SELECT review_comment FROM base_clash_table WHERE clash_id = 2"_s).toString(), u"seen"_s);
    EXPECT_EQ(One(u"SELECT review_comment FROM clashes WHERE clash_id = 2"_s).toString(), u"seen"_s);

    Db().Execute(u"DROP TABLE clashes;"_s);
    EXPECT_EQ(GetClashes(), 6);
}

TEST_F(ClashView, the_advanced_filter_texts_of_both_routes_and_an_unknown_dimension)
{
    Exclude(u"Discipline"_s, {u"O'Neil"_s, u"NOT DEFINED"_s});
    Exclude(u"Model status"_s, {u"NOT DEFINED"_s});
    Exclude(u"Clash type"_s, {u"Hard"_s});
    EXPECT_EQ(GetAdvancedFilter(QString()),
              u"(NOT [discipline_a] IN('O''Neil') OR NOT [discipline_b] IN('O''Neil') AND (NOT [discipline_a] IS NULL OR NOT "
              "[discipline_b] IS NULL)) AND ((NOT [model_status_a] IS NULL OR NOT [model_status_b] IS NULL)) AND (NOT [type] "
              "IN('Hard') OR ([type] IS NULL))"_s);
    FillAdvancedFilterTables(QString());
    EXPECT_EQ(GetAdvancedFilter3(),
              u"(NOT [discipline_a] IN(SELECT Name FROM [AdvancedFilter_Discipline]) OR NOT [discipline_b] IN(SELECT Name FROM "
              "[AdvancedFilter_Discipline]) And (NOT [discipline_a] IS NULL Or NOT [discipline_b] IS NULL)) AND (NOT "
              "[model_status_a] IN(SELECT Name FROM [AdvancedFilter_Model status]) OR NOT [model_status_b] IN(SELECT Name FROM "
              "[AdvancedFilter_Model status]) And (NOT [model_status_a] IS NULL Or NOT [model_status_b] IS NULL)) AND (NOT [type] "
              "IN(SELECT Name FROM [AdvancedFilter_Clash type]) Or ([type] IS NULL))"_s);
    EXPECT_EQ(One(u"SELECT name FROM [AdvancedFilter_Discipline] WHERE name LIKE 'O%'"_s).toString(), u"O'Neil"_s);

    // Another file is read when one is given.
    const QString other = box.WriteFile(u"other.ini"_s, "[AdvancedFilterSiteID]\n0=S1\n");
    EXPECT_EQ(GetAdvancedFilter(other), u"(NOT [site_id_a] IN('S1') OR NOT [site_id_b] IN('S1') OR ([site_id_a] IS NULL OR [site_id_b] IS NULL))"_s);

    EXPECT_EQ(GetFilterDimension(u"Model status"_s).columnB, u"model_status_b"_s);
    EXPECT_EQ(fxtest::FailureText([] { GetFilterDimension(u"Colour"_s); }),
              u"GetFilterDimension: "_s + ArgForm(msg::UnknownFilterColumn, {u"Colour"_s}));
}

TEST_F(ClashView, both_routes_exclude_a_clash_only_when_both_sides_are_excluded_but_split_a_comma_differently)
{
    Exclude(u"Discipline"_s, {u"O'Neil"_s, u"Piping"_s});
    Exclude(u"Component"_s, {u"X,Y"_s});
    // The literal route reads "X,Y" as the values X and Y: clash 5 (X/Y) goes, clash 6 ("X,Y") stays.
    GetClashes();
    EXPECT_EQ(ViewIds(), (QList<int>{4, 6}));
    // The table route keeps "X,Y" whole.
    FillAdvancedFilterTables(QString());
    EXPECT_EQ(BaseIds(GetAdvancedFilter3()), (QList<int>{4, 5}));

    // Values compare without regard to case on both routes.
    Exclude(u"Discipline"_s, {u"o'neil"_s, u"PIPING"_s});
    Exclude(u"Component"_s, {u"x,y"_s});
    GetClashes();
    EXPECT_EQ(ViewIds(), (QList<int>{4, 6}));
    FillAdvancedFilterTables(QString());
    EXPECT_EQ(BaseIds(GetAdvancedFilter3()), (QList<int>{4, 5}));

    // A null taken out of view counts like an excluded value on its side.
    Exclude(u"Discipline"_s, {u"NOT DEFINED"_s, u"Piping"_s});
    Exclude(u"Component"_s, {});
    GetClashes();
    EXPECT_EQ(ViewIds(), (QList<int>{2, 3, 5}));
    FillAdvancedFilterTables(QString());
    EXPECT_EQ(BaseIds(GetAdvancedFilter3()), (QList<int>{2, 3, 5}));
}

TEST_F(ClashView, a_report_file_shows_only_its_clashes_and_an_empty_one_none)
{
    const QString report = box.WriteFile(u"report.txt"_s, "Interference report\n\n  no clash lines\n");
    Set(u"POptions"_s, u"PDSReportFile"_s, report);
    EXPECT_EQ(GetPDSReportFile(QString()), report);
    EXPECT_EQ(GetAdvancedFilter(QString()), u"(clash_id IN(-1))"_s);
    EXPECT_EQ(GetClashes(), 0);

    box.WriteFile(u"report.txt"_s, "Interference report\n         2  pipe\n         5  pipe\n");
    Exclude(u"Clash type"_s, {u"Hard"_s});
    EXPECT_EQ(GetAdvancedFilter(QString()), u"(NOT [type] IN('Hard') OR ([type] IS NULL)) AND (clash_id IN(2, 5))"_s);
    EXPECT_EQ(GetClashes(), 2);
    EXPECT_EQ(ViewIds(), (QList<int>{2, 5}));
}

TEST_F(ClashView, dvcs_centres_alone_rebuild_the_view_with_shifted_columns_which_vanish_when_all_are_zero)
{
    GetClashes();
    Set(u"PDVCS"_s, u"EastingCenter"_s, u"1000,5"_s);
    Set(u"PDVCS"_s, u"NorthingCenter"_s, u"-20"_s);
    log.clear();
    EXPECT_EQ(GetClashes(), 6);
    EXPECT_TRUE(log.contains(u"Easting center: 1000,5; northing center: -20; elevation center: "_s));
    EXPECT_EQ(Columns(u"clashes"_s), ViewColumns({u"comp_a"_s}, {u"comp_b"_s}, {u"easting_dvcs"_s, u"northing_dvcs"_s, u"elevation_dvcs"_s}));
    const Recordset row = Db().Read(u"SELECT easting_dvcs, northing_dvcs, elevation_dvcs FROM clashes WHERE clash_id = 6"_s);
    EXPECT_DOUBLE_EQ(row.Value(0, 0).toDouble(), 1000.5);
    EXPECT_NEAR(row.Value(0, 1).toDouble(), -19.8766, 1e-9);
    EXPECT_DOUBLE_EQ(row.Value(0, 2).toDouble(), -2.5);
    EXPECT_TRUE(One(u"SELECT easting_dvcs FROM clashes WHERE clash_id = 3"_s).isNull());

    for (const QString &key : {u"EastingCenter"_s, u"NorthingCenter"_s, u"ElevationCenter"_s})
        Set(u"PDVCS"_s, key, u"0"_s);
    GetClashes();
    EXPECT_EQ(Columns(u"clashes"_s), ViewColumns({u"comp_a"_s}, {u"comp_b"_s}));
}

TEST_F(ClashView, a_filter_of_60000_characters_goes_through_the_filter_tables_and_a_shorter_one_leaves_them_alone)
{
    Db().Execute(u"INSERT INTO [AdvancedFilter_Area] VALUES ('marker');"_s);
    // Clash type has one column: each character more of a value makes the filter one longer.
    QStringList types;
    for (int i = 0; i < 2500; ++i)
        types << u"type-%1-padding"_s.arg(i, 4, 10, QLatin1Char('0'));
    types << u"Soft"_s << u"x"_s;
    Exclude(u"Discipline"_s, {u"Piping"_s});
    Exclude(u"Clash type"_s, types);
    const qsizetype length = GetAdvancedFilter(QString()).size();
    ASSERT_LT(length, 59999);
    types.last() = QString(59999 - length + 1, QLatin1Char('x'));
    Exclude(u"Clash type"_s, types);
    ASSERT_EQ(GetAdvancedFilter(QString()).size(), 59999);

    GetClashes();
    const QList<int> literal = ViewIds();
    EXPECT_EQ(literal, (QList<int>{3, 4, 5, 6}));
    EXPECT_EQ(One(u"SELECT COUNT(*) FROM [AdvancedFilter_Area]"_s).toInt(), 1) << "the filter tables stay as they were";
    EXPECT_EQ(One(u"SELECT COUNT(*) FROM [AdvancedFilter_Clash type]"_s).toInt(), 0);

    types.last() += u"x"_s;
    Exclude(u"Clash type"_s, types);
    ASSERT_EQ(GetAdvancedFilter(QString()).size(), 60000);
    GetClashes();
    EXPECT_EQ(ViewIds(), literal);
    EXPECT_EQ(One(u"SELECT COUNT(*) FROM [AdvancedFilter_Area]"_s).toInt(), 0);
    EXPECT_EQ(One(u"SELECT COUNT(*) FROM [AdvancedFilter_Clash type]"_s).toInt(), types.size());

    // The view is built from the tables: what they hold decides, not the settings' text.
    Db().Execute(u"DELETE FROM [AdvancedFilter_Discipline]; DROP TABLE clashes;"_s);
    GetClashes();
    EXPECT_EQ(ViewIds(), (QList<int>{1, 3, 4, 5, 6}));
}

TEST_F(ClashView, a_separator_splits_the_components_into_as_many_columns_as_the_longest_project_description_needs)
{
    Set(u"POptions"_s, u"CompSeparator"_s, u"-"_s);
    GetClashes();
    EXPECT_TRUE(log.contains(u"Components separator: '-'"_s));
    // "P-Q-R-S" of pdtable_134 has four pieces though no clash uses it.
    const QStringList a{u"comp_a_0"_s, u"comp_a_1"_s, u"comp_a_2"_s, u"comp_a_3"_s};
    const QStringList b{u"comp_b_0"_s, u"comp_b_1"_s, u"comp_b_2"_s, u"comp_b_3"_s};
    EXPECT_EQ(Columns(u"clashes"_s), ViewColumns(a, b));
    const auto pieces = [&](int id, const QStringList &columns) {
        const Recordset row = Db().Read(u"SELECT %1 FROM clashes WHERE clash_id = %2"_s.arg(columns.join(u", "_s)).arg(id));
        QStringList values;
        for (const QVariant &value : row.Row(0))
            values << (value.isNull() ? u"<null>"_s : value.toString());
        return values;
    };
    EXPECT_EQ(pieces(1, a), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"<null>"_s}));
    EXPECT_EQ(pieces(1, b), (QStringList{u"D"_s, u"<null>"_s, u"<null>"_s, u"<null>"_s}));
    EXPECT_EQ(pieces(2, a), (QStringList{u"E"_s, u"F"_s, u"<null>"_s, u"<null>"_s}));
    EXPECT_EQ(pieces(2, b), (QStringList{u"<null>"_s, u"<null>"_s, u"<null>"_s, u"<null>"_s}));
    EXPECT_EQ(pieces(3, a), (QStringList{u""_s, u"<null>"_s, u"<null>"_s, u"<null>"_s}));

    Set(u"POptions"_s, u"CompSeparator"_s, u","_s);
    GetClashes();
    EXPECT_EQ(Columns(u"clashes"_s), ViewColumns({u"comp_a_0"_s}, {u"comp_b_0"_s}));
    // No description of the project holds a comma: pieces past the one column are dropped.
    EXPECT_EQ(pieces(6, {u"comp_a_0"_s}), QStringList{u"X"_s});
}

TEST_F(ClashView, action_area_and_volume_bounds_in_dvcs_coordinates_take_clashes_out)
{
    Set(u"PVolumeFilter"_s, u"Area"_s, u"area2"_s);
    EXPECT_EQ(GetClashes(), 1);
    EXPECT_EQ(ViewIds(), QList<int>{2});
    EXPECT_TRUE(log.contains(u"Action area: 'area2'"_s));

    Set(u"PVolumeFilter"_s, u"Area"_s, QString());
    Set(u"PDVCS"_s, u"EastingCenter"_s, u"1000"_s);
    Set(u"PVolumeFilter"_s, u"EastingLow"_s, u"1005"_s);
    Set(u"PVolumeFilter"_s, u"EastingHigh"_s, u"1050,0 m"_s);
    Set(u"PVolumeFilter"_s, u"NorthingLow"_s, u"abc"_s);
    log.clear();
    GetClashes();
    EXPECT_TRUE(log.contains(u"Easting low: 1005; northing low: abc; elevation low: ; easting high: 1050; northing high: ; "
                             "elevation high: "_s));
    // 1005 - 1000 <= easting <= 1050 - 1000; a clash without a centre compares as null and stays.
    EXPECT_EQ(ViewIds(), (QList<int>{1, 2, 3}));

    Set(u"PVolumeFilter"_s, u"EastingHigh"_s, u"2e3"_s);
    Set(u"PVolumeFilter"_s, u"EastingLow"_s, QString());
    GetClashes();
    EXPECT_EQ(ViewIds(), (QList<int>{1, 2, 3, 4, 5, 6}));
}

TEST_F(ClashView, saving_carries_only_the_five_reviewable_columns_back)
{
    SaveClashTable(); // no view yet: nothing to do
    GetClashes();
    Db().Execute(u"UPDATE clashes SET status = 'Approved', action = 'Approve Real Clash', review_comment = 'ok', "
                 "recent_review_date = '2024-05-06 07:08:09', action_discipline = 'Civil', type = 'Changed', comp_a = 'Changed', "
                 "easting = 1, discipline_a = 'Changed' WHERE clash_id = 2;"_s);
    SaveClashTable();
    const Recordset row = Db().Read(u"SELECT status, action, review_comment, CAST(recent_review_date AS TEXT), action_discipline, type, "
                                    "comp_a, easting, discipline_a FROM base_clash_table WHERE clash_id = 2"_s);
    EXPECT_EQ(row.Row(0), (QVariantList{u"Approved"_s, u"Approve Real Clash"_s, u"ok"_s, u"2024-05-06 07:08:09"_s, u"Civil"_s,
                                        u"Soft"_s, u"E-F"_s, 50.0, u"O'Neil"_s}));
}

TEST_F(ClashView, counts_follow_the_grid_filter_and_the_total_is_asked_again_only_for_another_or_reopened_project)
{
    EXPECT_EQ(GetTotalClashCount(), 6);
    Row(7, {{"status", u"Approved"_s}, {"discipline_a", u"Piping"_s}});
    EXPECT_EQ(GetTotalClashCount(), 6) << "remembered for the project";
    ClashStore().ProjectDefinition.name = u"Q"_s;
    EXPECT_EQ(GetTotalClashCount(), 7);
    Db().Execute(u"DELETE FROM base_clash_table WHERE clash_id = 7;"_s);
    ResetRememberedClashFilters();
    EXPECT_EQ(GetTotalClashCount(), 6) << "asked again when the project is opened anew";
    Row(7, {{"status", u"Approved"_s}, {"discipline_a", u"Piping"_s}});
    ResetRememberedClashFilters();

    Exclude(u"Discipline"_s, {u"Piping"_s});
    GetClashes();
    // Clash 7 has a null on one side and stays in view.
    EXPECT_EQ(ViewIds(), (QList<int>{2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(GetGridFilter(), QString());
    EXPECT_EQ(GetClashCount(), 6);
    EXPECT_EQ(GetApprovedClashCount(), 2);
    // Clash 1 counts as saved; clashes 3 and 7 as they stand in the view.
    EXPECT_EQ(GetTotalApprovedClashCount(), 3);
    Db().Execute(u"UPDATE clashes SET status = 'Unapproved' WHERE clash_id = 3;"_s);
    EXPECT_EQ(GetTotalApprovedClashCount(), 2);
    Db().Execute(u"UPDATE clashes SET status = 'APPROVED' WHERE clash_id IN (3, 4);"_s);

    ClashRecordset().Filter = u"[discipline_a] = NULL OR [type] = #Hard#"_s;
    EXPECT_EQ(GetGridFilter(), u"[discipline_a] IS NULL OR [type] = Hard"_s);
    // Quoted texts are values: they keep their "#" and "= NULL".
    ClashRecordset().Filter = u"[comp_a] LIKE '%''#1 = NULL' ESCAPE '\\' AND [type] = #Hard# AND [x] = NULL"_s;
    EXPECT_EQ(GetGridFilter(), u"[comp_a] LIKE '%''#1 = NULL' ESCAPE '\\' AND [type] = Hard AND [x] IS NULL"_s);
    ClashRecordset().Filter = u"[discipline_a] = NULL"_s;
    EXPECT_EQ(GetClashCount(), 2);
    EXPECT_EQ(GetApprovedClashCount(), 1);
    // An OR of the grid's own stays inside the filter: clash 2 is in it but not approved.
    ClashRecordset().Filter = u"[discipline_a] = NULL OR [type] = 'Soft'"_s;
    EXPECT_EQ(GetClashCount(), 3);
    EXPECT_EQ(GetApprovedClashCount(), 1);
    ClashRecordset().open = false;
    EXPECT_EQ(GetGridFilter(), QString());
    EXPECT_EQ(GetClashCount(), 6);
}

TEST_F(ClashView, the_clash_range_gives_the_extent_of_the_centres_as_texts)
{
    const ClashRange range = GetClashRange();
    EXPECT_EQ(range.xMax, u"100"_s);
    EXPECT_EQ(range.xMin, u"-5"_s);
    EXPECT_EQ(range.yMax, u"0.1234"_s);
    EXPECT_EQ(range.yMin, u"0.1234"_s);
    EXPECT_EQ(range.zMin, u"-2.5"_s);
    Db().Execute(u"DELETE FROM base_clash_table;"_s);
    EXPECT_EQ(GetClashRange().xMax, QString());
}

TEST_F(ClashView, a_failed_build_leaves_no_view_and_the_next_call_builds_it_again)
{
    Set(u"POptions"_s, u"PDSReportFile"_s, box.Root() + u"missing.txt"_s);
    EXPECT_TRUE(fxtest::FailureText([] { GetClashes(); }).startsWith(u"GetClashes: GetAdvancedFilter: "_s));
    EXPECT_FALSE(ClashRecordset().open);
    Set(u"POptions"_s, u"PDSReportFile"_s, QString());
    Db().Execute(u"ALTER TABLE base_clash_table RENAME COLUMN comp_b TO component_b;"_s);
    EXPECT_TRUE(fxtest::FailureText([] { GetClashes(); }).startsWith(u"GetClashes: CreateClashTable: "_s));
    EXPECT_FALSE(ClashRecordset().open);
    Db().Execute(u"ALTER TABLE base_clash_table RENAME COLUMN component_b TO comp_b;"_s);
    EXPECT_EQ(GetClashes(), 6);
}
