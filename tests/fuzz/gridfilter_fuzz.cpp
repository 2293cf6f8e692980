// Whatever a reviewer types into the grid's filter cells, the grid runs nothing but reads of
// `clashes` and shows exactly the rows the texts mean; a text that can't be a filter fails
// the normal way and leaves the other cells working.
//
// The input is the texts of the filter cells, separated by tabs, for the columns of kCells in
// that order. They run against an in-memory store whose connection may only read.
#include "fuzzsupport.h"

#include "frame/failure.h"
#include "grid/clashgridmodel.h"
#include "grid/gridfilter.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace {

// The filter cells the input fills, in order; the review date refuses any filter.
const char *const kCells[] = {"comp_a", "type", "discipline_a", "status", "model_a", "easting",
                              "recent_review_date", "discipline_structure", "review_comment"};
constexpr int kCellCount = int(std::size(kCells));
const QString kReviewDate = QStringLiteral("recent_review_date");

// Values a project gives, and the ones that trip quoting and LIKE up.
const char *const kTexts[] = {
    "Piping", "PIPING", "Equipment", "O'Neil", "A_B", "AXB", "100%", "a\\b", "PIPE#12", "x = NULL",
    "'quoted'", "\"double\"", "", "Hard", "hard", "Soft", "Clearance", "Approved", "APPROVED", "Unapproved",
    "Piping,Equipment", "*", "%_%", "P-101 [2\"]", "\xc3\x86" "bleskiver", "\xc3\xa9t\xc3\xa9", "\xe4\xb8\xad\xe6\x96\x87",
    "\xf0\x9f\x98\x80 pump", "Line; DROP TABLE clashes; --", "a]b", "#Hard#", "NULL", "null", " padded ",
};

struct Grid
{
    fx::ClashGridModel *model = nullptr;
    std::vector<qint64> ids;                                   // every clash, in id order
    std::vector<std::vector<std::optional<QString>>> values;   // [cell][row], as SQLite's text
    std::vector<std::optional<QString>> statuses;              // [row]
};

std::optional<QString> TextOf(const QVariant &value)
{
    return value.isNull() ? std::nullopt : std::optional<QString>(value.toString());
}

// The store, a table of clashes whose every filter column holds values of kTexts, nulls and
// numbers, and the grid over it; from then on the connection may only read.
Grid &TheGrid()
{
    static Grid *grid = [] {
        auto *g = new Grid;
        fuzz::Folder();
        fx::ClashStore().ProjectDefinition.name = QStringLiteral("P");
        fx::ClashStore().ClashConnection =
            std::make_unique<fx::SqliteDb>(QStringLiteral(":memory:"), fx::SqliteDb::OpenMode::ReadWriteCreate);
        fx::ClashRecordset().open = true;
        fx::SqliteDb &db = fx::ClashConnection();
        db.Execute(QStringLiteral("CREATE TABLE clashes (clash_id INTEGER PRIMARY KEY, type TEXT, status TEXT, action TEXT, "
                                  "review_comment TEXT, recent_review_date DATETIME, site_id_a TEXT, discipline_a TEXT, "
                                  "area_a TEXT, model_a TEXT, comp_a TEXT, discipline_b TEXT, comp_b TEXT, "
                                  "action_discipline TEXT, discipline_structure TEXT, easting DOUBLE);"
                                  "CREATE TABLE pdtable_111 (discipline_name TEXT);"
                                  "INSERT INTO pdtable_111 VALUES ('Piping'), ('Equipment'), ('Structural');")
                       .replace(QStringLiteral(" TEXT"), QLatin1Char(' ') + QString::fromLatin1(fx::StoreTextType)));
        const int count = int(std::size(kTexts));
        for (int row = 0; row < count + 4; ++row) {
            fx::SqliteStatement insert(db, QStringLiteral("INSERT INTO clashes VALUES (?1, ?2, ?3, 'Approve Real Clash', ?4, "
                                                          "'2024-01-02 03:04:05', 'No SiteID', ?5, 'A1', ?6, ?7, ?8, ?9, "
                                                          "'Piping', ?10, ?11);"));
            insert.Bind(1, row + 1);
            // Each column walks through the texts at its own pace; every fifth is null.
            for (int column = 2; column <= 10; ++column) {
                const int pick = (row * (column + 1) + column) % (count + 1);
                insert.Bind(column, pick == count || (row + column) % 5 == 0 ? QVariant() : QVariant(QString::fromUtf8(kTexts[pick])));
            }
            insert.Bind(11, row % 3 == 0 ? QVariant() : QVariant(row * 12.5 - 100));
            insert.Step();
        }
        QStringList columns;
        for (const char *cell : kCells)
            columns << QStringLiteral("CAST([%1] AS TEXT)").arg(QLatin1String(cell));
        const fx::Recordset rows = db.Read(QStringLiteral("SELECT clash_id, status, %1 FROM clashes ORDER BY clash_id;").arg(columns.join(QStringLiteral(", "))));
        g->values.resize(kCellCount);
        for (const QVariantList &row : rows.Rows()) {
            g->ids.push_back(row.at(0).toLongLong());
            g->statuses.push_back(TextOf(row.at(1)));
            for (int cell = 0; cell < kCellCount; ++cell)
                g->values[size_t(cell)].push_back(TextOf(row.at(cell + 2)));
        }
        g->model = new fx::ClashGridModel;
        // The statements the grid and the status line make: reads of the view, of the
        // disciplines and of the view's column names (pragma_table_info, which asks table_info),
        // LIKE, and the functions of the counts, the groups and the drop-down lists.
        fuzz::AllowOnlyReading(db.Handle(),
                               {QStringLiteral("clashes"), QStringLiteral("pdtable_111"), QStringLiteral("pragma_table_info")},
                               {QStringLiteral("like"), QStringLiteral("count"), QStringLiteral("lcase"), QStringLiteral("iif"),
                                QStringLiteral("len"), QStringLiteral("jcat"), QStringLiteral("min"), QStringLiteral("sum"),
                                QStringLiteral("dense_rank")},
                               {QStringLiteral("table_info")});
        return g;
    }();
    return *grid;
}

QChar AsciiLower(QChar c)
{
    return c.unicode() < 128 ? c.toLower() : c;
}

// What a filter text means, said apart from any SQL: "NULL" is no value at all; otherwise "*"
// and "%" are any run of characters and every other character stands for itself, ASCII
// letters without regard to case. A text with no wildcard at either end matches the end of
// a value.
bool Matches(const std::optional<QString> &value, const QString &text)
{
    if (text.isEmpty())
        return true;
    if (text == QLatin1String("NULL"))
        return !value;
    if (!value)
        return false;
    QString pattern = text;
    pattern.replace(QLatin1Char('*'), QLatin1Char('%'));
    if (!pattern.startsWith(QLatin1Char('%')) && !pattern.endsWith(QLatin1Char('%')))
        pattern.prepend(QLatin1Char('%'));
    // Wildcard matching by the classic two-pointer walk with one backtrack point.
    const QString &v = *value;
    qsizetype p = 0, s = 0, star = -1, mark = 0;
    while (s < v.size()) {
        if (p < pattern.size() && pattern.at(p) != QLatin1Char('%') && AsciiLower(pattern.at(p)) == AsciiLower(v.at(s))) {
            ++p;
            ++s;
        } else if (p < pattern.size() && pattern.at(p) == QLatin1Char('%')) {
            star = p++;
            mark = s;
        } else if (star >= 0) {
            p = star + 1;
            s = ++mark;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern.at(p) == QLatin1Char('%'))
        ++p;
    return p == pattern.size();
}

// The rows the grid must show for the texts now in its cells, and how many are approved.
std::vector<qint64> ExpectedIds(const Grid &grid, qint32 *approved)
{
    std::vector<qint64> ids;
    *approved = 0;
    for (size_t row = 0; row < grid.ids.size(); ++row) {
        bool passes = true;
        for (int cell = 0; cell < kCellCount && passes; ++cell)
            passes = Matches(grid.values[size_t(cell)][row], grid.model->ColumnFilter(grid.model->ColumnOf(QLatin1String(kCells[cell]))));
        if (!passes)
            continue;
        ids.push_back(grid.ids[row]);
        if (grid.statuses[row] && grid.statuses[row]->compare(QLatin1String("approved"), Qt::CaseInsensitive) == 0)
            ++*approved;
    }
    return ids;
}

void CheckShown(const Grid &grid, const QString &after)
{
    qint32 approved = 0;
    const std::vector<qint64> expected = ExpectedIds(grid, &approved);
    std::vector<qint64> shown;
    for (int row = 0; row < grid.model->rowCount(); ++row)
        shown.push_back(grid.model->ClashIdOfRow(row));
    fuzz::Expect(shown == expected, QStringLiteral("%1 rows shown, %2 meant, after %3; filter: %4")
                                        .arg(shown.size()).arg(expected.size()).arg(after, fx::ClashRecordset().Filter));
    fuzz::Expect(grid.model->ApprovedRows() == approved, QStringLiteral("the grid's approved count is wrong after ") + after);
    fuzz::Expect(fx::GetClashCount() == qint32(expected.size()), QStringLiteral("the status line's count is wrong after ") + after);
    fuzz::Expect(fx::GetApprovedClashCount() == approved, QStringLiteral("the status line's approved count is wrong after ") + after);
    // The condition every statement of the view embeds stands alone.
    const QString condition = fx::GetGridFilter();
    fuzz::Expect(condition.isEmpty() || fuzz::IsOneCondition(fx::ClashConnection().Handle(), QStringLiteral("clashes"), condition),
                 QStringLiteral("the grid's condition is refused: ") + condition);
    if (grid.model->rowCount() > 0)
        (void)grid.model->data(grid.model->index(grid.model->rowCount() - 1, 0));
}

// Grouped by `column`, the bands count the clashes the filter lets through, and opened they
// show exactly those.
void CheckGroups(const Grid &grid, const QString &column)
{
    fx::ClashGridModel &model = *grid.model;
    qint32 approved = 0;
    const std::vector<qint64> expected = ExpectedIds(grid, &approved);
    model.SetGroupColumns({column});
    fuzz::Expect(model.ClashCount() == qint32(expected.size()) && model.ApprovedRows() == approved,
                 QStringLiteral("grouped by %1, the counts are wrong").arg(column));
    qint32 counted = 0;
    // From the last band up, so that opening one leaves the rows of those above in place.
    for (int row = model.rowCount() - 1; row >= 0; --row)
        if (model.IsBand(row)) {
            counted += model.GroupCountOfRow(row);
            model.SetGroupOpen(row, true);
        }
    std::vector<qint64> shown;
    for (int row = 0; row < model.rowCount(); ++row)
        if (!model.IsBand(row))
            shown.push_back(model.ClashIdOfRow(row));
    std::sort(shown.begin(), shown.end());
    fuzz::Expect(counted == qint32(expected.size()) && shown == expected,
                 QStringLiteral("grouped by %1, the bands count %2 and show %3 of %4 clashes")
                     .arg(column).arg(counted).arg(shown.size()).arg(expected.size()));
    model.SetGroupColumns({});
}

// A text that no filter can be: one for the review date, or one holding a NUL, which no SQL
// literal holds.
bool IsRefused(int cell, const QString &text)
{
    return !text.isEmpty() && (QLatin1String(kCells[cell]) == kReviewDate || text.contains(QChar(0)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Grid &grid = TheGrid();
    fx::ClashGridModel &model = *grid.model;
    const QStringList cells = fuzz::SplitInput(data, size, '\t', kCellCount);
    model.SetColumnFilters(QStringList());
    fuzz::Expect(size_t(model.rowCount()) == grid.ids.size(), QStringLiteral("cleared cells leave rows out"));

    // All cells at once, as the saved filters come back: one refused cell refuses them all.
    QStringList texts(model.columnCount());
    bool refused = false;
    for (int cell = 0; cell < cells.size(); ++cell) {
        texts[model.ColumnOf(QLatin1String(kCells[cell]))] = cells.at(cell);
        refused = refused || IsRefused(cell, cells.at(cell));
    }
    try {
        model.SetColumnFilters(texts);
        fuzz::Expect(!refused, QStringLiteral("a refused text was taken"));
    } catch (const fx::Failure &failure) {
        fuzz::Expect(refused, QStringLiteral("a filter failed: ") + failure.Description());
        for (int column = 0; column < model.columnCount(); ++column)
            fuzz::Expect(model.ColumnFilter(column).isEmpty(), QStringLiteral("a refused filter left a cell filled"));
    }
    CheckShown(grid, QStringLiteral("all cells at once"));

    // Cell by cell, as a reviewer types: a refused cell is emptied and the others stay.
    model.SetColumnFilters(QStringList());
    for (int cell = 0; cell < cells.size(); ++cell) {
        if (cells.at(cell).isEmpty())
            continue;
        const int column = model.ColumnOf(QLatin1String(kCells[cell]));
        try {
            model.SetColumnFilter(column, cells.at(cell));
            fuzz::Expect(!IsRefused(cell, cells.at(cell)), QStringLiteral("a refused text was taken"));
        } catch (const fx::Failure &failure) {
            fuzz::Expect(IsRefused(cell, cells.at(cell)), QStringLiteral("a filter failed: ") + failure.Description());
            fuzz::Expect(model.ColumnFilter(column).isEmpty(), QStringLiteral("a refused cell kept its text"));
        }
        CheckShown(grid, QStringLiteral("cell ") + QLatin1String(kCells[cell]));
    }

    CheckGroups(grid, QLatin1String(kCells[size % kCellCount]));

    // The drop-down of the first cell offers every value in view ("NULL" for none), case aside.
    const QStringList list = fx::FilterValueList(QLatin1String(kCells[0]));
    fuzz::Expect(list.contains(QString()), QStringLiteral("a drop-down without its empty entry"));
    qint32 approved = 0;
    const std::vector<qint64> shown = ExpectedIds(grid, &approved);
    for (size_t row = 0; row < grid.ids.size(); ++row) {
        if (std::find(shown.begin(), shown.end(), grid.ids[row]) == shown.end())
            continue;
        const std::optional<QString> &value = grid.values[0][row];
        const QString entry = !value || value->isEmpty() ? QStringLiteral("NULL") : *value;
        fuzz::Expect(list.contains(entry, Qt::CaseInsensitive), QStringLiteral("the drop-down lacks '") + entry + QLatin1Char('\''));
    }
    return 0;
}
