// The grid's model without groups: sorting, keeping the place, reading in blocks, editing and
// the cell styles.

#include "grid/clashgridmodel.h"
#include "grid/gridfixture.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"

#include <gtest/gtest.h>

#include <QDateTime>

#include <algorithm>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class GridModel : public fxtest::GridStore
{
protected:
    // Ids whose types and disciplines repeat, so that sorts have ties to break.
    void Fill(int count)
    {
        static const QStringList types{u"Soft"_s, u"Hard"_s, u"Clearance"_s};
        static const QStringList disciplines{u"Piping"_s, u"Equipment"_s, u"Structural"_s, u"HVAC"_s};
        SqliteTransaction transaction(Db());
        SqliteStatement insert(Db(), u"INSERT INTO clashes (clash_id, type, discipline_a, comp_a) VALUES (?1, ?2, ?3, ?4);"_s);
        for (int i = 0; i < count; ++i) {
            // Ids not in insertion order, with gaps.
            const qint64 id = qint64((i * 7919) % count) * 3 + 10;
            insert.Bind(1, id);
            insert.Bind(2, types.at(i % 3));
            insert.Bind(3, disciplines.at((i / 5) % 4));
            insert.Bind(4, u"c%1"_s.arg(id));
            insert.Step();
            insert.Reset();
        }
        transaction.Commit();
    }

    static QString Cell(const ClashGridModel &model, int row, const QString &column)
    {
        return model.data(model.index(row, model.ColumnOf(column))).toString();
    }
    // The ids sorted here by one column, ascending or not, case ignored, then by clash id.
    static QList<qint64> Expected(const ClashGridModel &model, const QString &key, bool descending)
    {
        QList<std::pair<QString, qint64>> rows;
        for (int row = 0; row < model.rowCount(); ++row)
            rows.append({Cell(model, row, key).toLower(), model.ClashIdOfRow(row)});
        std::sort(rows.begin(), rows.end(), [&](const auto &a, const auto &b) {
            if (a.first != b.first)
                return descending ? a.first > b.first : a.first < b.first;
            return a.second < b.second;
        });
        QList<qint64> ids;
        for (const auto &row : rows)
            ids << row.second;
        return ids;
    }
};

TEST_F(GridModel, columns_are_the_table_s_and_rows_come_in_clash_id_order_without_a_sort)
{
    Fill(50);
    Db().Execute(u"CREATE INDEX by_type ON clashes (type);"_s);
    ClashGridModel model;
    EXPECT_EQ(model.columnCount(), 12);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), u"clash_id"_s);
    EXPECT_EQ(model.headerData(11, Qt::Horizontal).toString(), u"easting"_s);
    const QList<qint64> ids = Ids(model);
    EXPECT_EQ(ids.size(), 50);
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
    // A filter on an indexed column still leaves clash order.
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"Hard"_s);
    const QList<qint64> hard = Ids(model);
    EXPECT_EQ(hard.size(), 17);
    EXPECT_TRUE(std::is_sorted(hard.begin(), hard.end()));
}

TEST_F(GridModel, a_column_sorts_ascending_then_descending_for_good)
{
    Fill(300);
    Db().Execute(u"CREATE INDEX by_type ON clashes (type);"_s);
    ClashGridModel model;
    const int type = model.ColumnOf(u"type"_s);
    model.SortByColumn(type);
    EXPECT_EQ(model.Sort(), u"[type] ASC"_s);
    EXPECT_EQ(Ids(model), Expected(model, u"type"_s, false));
    EXPECT_EQ(Cell(model, 0, u"type"_s), u"Clearance"_s);
    model.SortByColumn(type);
    EXPECT_EQ(model.Sort(), u"[type] DESC"_s);
    EXPECT_EQ(Ids(model), Expected(model, u"type"_s, true));
    model.SortByColumn(type);
    EXPECT_EQ(model.Sort(), u"[type] DESC"_s);
    EXPECT_EQ(Cell(model, 0, u"type"_s), u"Soft"_s);
    // Another column starts again ascending; with a filter the order is the same.
    model.SetColumnFilter(model.ColumnOf(u"comp_a"_s), u"*1*"_s);
    model.SortByColumn(model.ColumnOf(u"discipline_a"_s));
    EXPECT_EQ(model.Sort(), u"[discipline_a] ASC"_s);
    EXPECT_EQ(Ids(model), Expected(model, u"discipline_a"_s, false));
    EXPECT_EQ(Cell(model, 0, u"discipline_a"_s), u"Equipment"_s);
}

TEST_F(GridModel, a_refresh_keeps_the_place_by_clash_id_and_shows_new_values)
{
    Fill(600);
    ClashGridModel model;
    model.SortByColumn(model.ColumnOf(u"comp_a"_s));
    const int before = model.RowOfClash(700);
    ASSERT_GE(before, 0);
    EXPECT_EQ(Cell(model, before, u"comp_a"_s), u"c700"_s);
    // New rows sorting ahead of it, and a value changed behind the model's back.
    Db().Execute(u"INSERT INTO clashes (clash_id, comp_a) VALUES (1, 'a1'), (2, 'a2'), (3, 'a3');"
                 "UPDATE clashes SET type = 'Changed' WHERE clash_id = 700;"_s);
    const int after = model.Refresh(700);
    EXPECT_EQ(after, before + 3);
    EXPECT_EQ(model.ClashIdOfRow(after), 700);
    EXPECT_EQ(Cell(model, after, u"type"_s), u"Changed"_s);
    EXPECT_EQ(model.RowOfClash(999999), -1);

    // The view rebuilt with another column in between: filter cells follow their columns by name.
    model.SetColumnFilter(model.ColumnOf(u"type"_s), u"Soft"_s);
    const qsizetype soft = Ids(model).size();
    Db().Execute(u"ALTER TABLE clashes RENAME TO old; CREATE TABLE clashes (clash_id INTEGER PRIMARY KEY, extra TEXT, type TEXT, "
                 "comp_a TEXT); INSERT INTO clashes (clash_id, type, comp_a) SELECT clash_id, type, comp_a FROM old;"_s);
    const int kept = model.Refresh(700);
    EXPECT_EQ(model.ColumnOf(u"type"_s), 2);
    EXPECT_EQ(model.ColumnFilter(2), u"Soft"_s);
    EXPECT_TRUE(model.ColumnFilter(1).isEmpty());
    EXPECT_EQ(Ids(model).size(), soft);
    EXPECT_EQ(kept, -1); // clash 700 became "Changed", out of the filter
    EXPECT_EQ(Cell(model, 0, u"comp_a"_s).left(1), u"c"_s);
}

TEST_F(GridModel, blocks_give_the_right_cells_at_both_ends_and_the_cache_stays_small)
{
    Fill(5000);
    ClashGridModel model;
    model.SortByColumn(model.ColumnOf(u"clash_id"_s));
    model.SortByColumn(model.ColumnOf(u"clash_id"_s));
    ASSERT_EQ(model.rowCount(), 5000);
    for (const int row : {0, 1, 255, 256, 4863, 4864, 4998, 4999}) {
        const qint64 id = model.ClashIdOfRow(row);
        EXPECT_EQ(Cell(model, row, u"comp_a"_s), u"c%1"_s.arg(id)) << row;
        EXPECT_EQ(model.data(model.index(row, 0)).toLongLong(), id) << row;
    }
    EXPECT_EQ(model.ClashIdOfRow(0), 4999 * 3 + 10);
    EXPECT_EQ(model.ClashIdOfRow(4999), 10);
    const qint64 fetched = model.BlocksFetched();
    EXPECT_EQ(fetched, 4); // blocks 0, 1, 18 and 19
    Cell(model, 300, u"comp_a"_s);
    EXPECT_EQ(model.BlocksFetched(), fetched);
    // Walking every block pushes the first out of the cache; it is read again.
    for (int row = 0; row < 5000; row += ClashGridModel::BlockSize)
        Cell(model, row, u"type"_s);
    const qint64 walked = model.BlocksFetched();
    Cell(model, 0, u"type"_s);
    EXPECT_EQ(model.BlocksFetched(), walked + 1);
    EXPECT_LT(model.MemoryBytes(), 5000 * 8 + ClashGridModel::CachedBlocks * ClashGridModel::BlockSize * 12 * 64);
    EXPECT_FALSE(model.data(model.index(5000, 0)).isValid());
}

TEST_F(GridModel, picking_an_action_discipline_stamps_the_review_date_and_marks_the_store_changed)
{
    Row(5, {{"action_discipline", u"Piping"_s}, {"type", u"Hard"_s}});
    Row(6, {{"type", u"Soft"_s}});
    ClashGridModel model;
    const int action = model.ColumnOf(u"action_discipline"_s);
    EXPECT_EQ(Cell(model, 1, u"action_discipline"_s), QString());
    EXPECT_FALSE(model.flags(model.index(1, model.ColumnOf(u"type"_s))) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.setData(model.index(1, model.ColumnOf(u"type"_s)), u"X"_s));
    ASSERT_TRUE(model.flags(model.index(1, action)) & Qt::ItemIsEditable);

    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    EXPECT_TRUE(model.setData(model.index(1, action), u"Structural"_s));
    EXPECT_TRUE(GetClashesChanged());
    EXPECT_EQ(Cell(model, 1, u"action_discipline"_s), u"Structural"_s);
    const Recordset stored = Db().Read(u"SELECT action_discipline, recent_review_date FROM clashes WHERE clash_id = 6;"_s);
    EXPECT_EQ(stored.Value(0, 0).toString(), u"Structural"_s);
    const QDateTime stamp = QDateTime::fromString(stored.Value(0, 1).toString().left(19), u"yyyy-MM-dd HH:mm:ss"_s);
    EXPECT_TRUE(stamp >= before && stamp <= QDateTime::currentDateTime()) << stored.Value(0, 1).toString().toStdString();
    EXPECT_TRUE(Db().Read(u"SELECT recent_review_date FROM clashes WHERE clash_id = 5;"_s).Value(0, 0).isNull());

    // A project opened read-only takes no edits.
    SetClashesChanged(false);
    ClashStore().ReadOnly = true;
    EXPECT_FALSE(model.flags(model.index(0, action)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.setData(model.index(0, action), u"Equipment"_s));
    EXPECT_EQ(Cell(model, 0, u"action_discipline"_s), u"Piping"_s);
    EXPECT_FALSE(GetClashesChanged());
}

TEST_F(GridModel, discipline_values_are_coloured_and_bold_structures_bold_disciplines_centred)
{
    Row(1, {{"discipline_a", u"Piping"_s}, {"discipline_b", u"Equipment"_s}, {"action_discipline", u"Structural"_s},
            {"model_structure", u"m"_s}, {"discipline_structure", u"Piping"_s}, {"comp_a", u"Piping"_s}});
    Row(2, {{"discipline_a", u"piping"_s}, {"discipline_b", u"HVAC"_s}});
    ClashGridModel model;
    const auto style = [&](int row, const char *column) {
        return model.data(model.index(row, model.ColumnOf(QLatin1String(column))), ClashGridModel::CellStyleRole).value<CellStyle>();
    };
    const auto expectStyle = [&](int row, const char *column, bool coloured, quint32 rgb, bool bold) {
        const CellStyle s = style(row, column);
        EXPECT_EQ(s.coloured, coloured) << column;
        if (coloured) {
            EXPECT_EQ(s.rgb, rgb) << column;
        }
        EXPECT_EQ(s.bold, bold) << column;
    };
    expectStyle(0, "discipline_a", true, 49152, true);
    expectStyle(0, "discipline_b", true, 16711680, true);
    expectStyle(0, "action_discipline", true, 255, true);
    expectStyle(0, "discipline_structure", true, 49152, true);
    expectStyle(0, "model_structure", false, 0, true);
    expectStyle(0, "comp_a", false, 0, false);
    // Only the exact names are colours.
    expectStyle(1, "discipline_a", false, 0, false);
    expectStyle(1, "discipline_b", false, 0, false);

    const auto alignment = [&](const char *column) {
        return model.data(model.index(0, model.ColumnOf(QLatin1String(column))), Qt::TextAlignmentRole).toInt();
    };
    EXPECT_EQ(alignment("discipline_a") & Qt::AlignHorizontal_Mask, int(Qt::AlignHCenter));
    EXPECT_EQ(alignment("discipline_structure") & Qt::AlignHorizontal_Mask, int(Qt::AlignLeft));
    EXPECT_EQ(alignment("comp_a") & Qt::AlignHorizontal_Mask, int(Qt::AlignLeft));
}

} // namespace
