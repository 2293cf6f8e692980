// The clash grid's model over a store of 500,000 clashes shaped like `clashes`: a new filter,
// a new sort and a new grouping until the first screen (40 rows) is read, a group opened until
// its first screen is read, and jumps to random places one screen each. Counters: rows in
// view, the model's own bytes (rows, groups and cache) and the process's peak resident memory.

#include "spreadvalues.h"

#include "../support/peakmemory.h"
#include "grid/clashgridmodel.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int kRows = 500000;
constexpr int kScreen = 40;

// Text columns of the store as `clashes` has them, filled with values of realistic spread.
const char *const kTextColumns[] = {
    "type", "status", "action", "review_comment", "discipline_structure", "model_structure", "site_id_structure",
    "site_id_a", "discipline_a", "area_a", "model_a", "model_status_a", "comp_a", "action_area_a", "site_id_b",
    "discipline_b", "area_b", "model_b", "model_status_b", "comp_b", "action_area_b", "action_discipline"};

struct Store
{
    Store()
    {
        const QString file = dir.path() + QStringLiteral("/grid.fxdb");
        fx::ClashStore().ProjectDefinition.name = QStringLiteral("BENCH");
        fx::ClashStore().WorkDB = file;
        fx::ClashStore().ClashConnection = std::make_unique<fx::SqliteDb>(file, fx::SqliteDb::OpenMode::ReadWriteCreate);
        fx::ClashRecordset().open = true;
        QStringList definitions{QStringLiteral("clash_id INTEGER PRIMARY KEY"), QStringLiteral("recent_review_date DATETIME")};
        QStringList names{QStringLiteral("clash_id"), QStringLiteral("recent_review_date")};
        QStringList values{QStringLiteral("n * 7 + 3"), QStringLiteral("printf('2024-%02d-%02d 10:00:00', n % 12 + 1, n % 28 + 1)")};
        int i = 0;
        for (const char *column : kTextColumns) {
            definitions << QLatin1String(column) + QLatin1Char(' ') + QLatin1String(fx::StoreTextType);
            names << QLatin1String(column);
            values << fxbench::SpreadValues(i, column);
            ++i;
        }
        for (const char *column : {"easting", "northing", "elevation"}) {
            definitions << QLatin1String(column) + QStringLiteral(" DOUBLE");
            names << QLatin1String(column);
            values << QStringLiteral("(n % 1000) * 1.5");
        }
        fx::SqliteDb &db = fx::ClashConnection();
        db.Execute(QStringLiteral("CREATE TABLE clashes (") + definitions.join(QStringLiteral(", ")) + QStringLiteral(");"));
        db.Execute(QStringLiteral("WITH RECURSIVE seq(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM seq WHERE n < %1) "
                                  "INSERT INTO clashes (%2) SELECT %3 FROM seq;")
                       .arg(kRows - 1)
                       .arg(names.join(QStringLiteral(", ")), values.join(QStringLiteral(", "))));
    }

    QTemporaryDir dir;
    std::unique_ptr<fx::ClashGridModel> model;
};

Store &TheStore()
{
    static Store store;
    return store;
}

// Reads every cell of one screen from `first` on.
void ReadScreen(const fx::ClashGridModel &model, int first)
{
    const int columns = model.columnCount();
    for (int row = first; row < std::min(first + kScreen, model.rowCount()); ++row)
        for (int column = 0; column < columns; ++column)
            benchmark::DoNotOptimize(model.data(model.index(row, column)));
}

void Report(benchmark::State &state, const fx::ClashGridModel &model)
{
    state.counters["rows"] = model.rowCount();
    state.counters["model_MB"] = double(model.MemoryBytes()) / (1024 * 1024);
    state.counters["peak_rss_MB"] = fxbench::PeakResidentMB();
}

// A model as the grid binds it: no filter, no sort, no groups.
fx::ClashGridModel &Fresh()
{
    Store &store = TheStore();
    fx::ClashRecordset().Filter.clear();
    store.model = std::make_unique<fx::ClashGridModel>();
    return *store.model;
}

// A filter text typed into one cell, alternating between two so that every run filters anew.
void BM_NewFilter(benchmark::State &state, const char *column, const char *first, const char *second)
{
    fx::ClashGridModel &model = Fresh();
    const int index = model.ColumnOf(QLatin1String(column));
    bool flip = false;
    for (auto _ : state) {
        model.SetColumnFilter(index, QLatin1String(flip ? second : first));
        ReadScreen(model, 0);
        flip = !flip;
    }
    Report(state, model);
}
BENCHMARK_CAPTURE(BM_NewFilter, few_values, "type", "type-1", "type-3")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_NewFilter, many_values, "model_b", "*12*", "*34*")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_NewFilter, nothing_found, "model_a", "no such model", "nor this")->Unit(benchmark::kMillisecond);

// A header click on an unindexed column, alternating columns so that every run sorts anew.
void BM_NewSort(benchmark::State &state, bool filtered)
{
    fx::ClashGridModel &model = Fresh();
    if (filtered)
        model.SetColumnFilter(model.ColumnOf(QStringLiteral("type")), QStringLiteral("type-1"));
    const int columns[] = {model.ColumnOf(QStringLiteral("comp_b")), model.ColumnOf(QStringLiteral("model_b"))};
    int turn = 0;
    for (auto _ : state) {
        model.SortByColumn(columns[turn++ % 2]);
        ReadScreen(model, 0);
    }
    Report(state, model);
}
BENCHMARK_CAPTURE(BM_NewSort, all_rows, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_NewSort, filtered, true)->Unit(benchmark::kMillisecond);

// A jump of the scroll bar to a random place, one screen read.
void BM_Jump(benchmark::State &state)
{
    fx::ClashGridModel &model = Fresh();
    model.SortByColumn(model.ColumnOf(QStringLiteral("area_b")));
    QRandomGenerator random(7);
    for (auto _ : state)
        ReadScreen(model, int(random.bounded(model.rowCount() - kScreen)));
    Report(state, model);
}
BENCHMARK(BM_Jump)->Unit(benchmark::kMillisecond);

// The best of three runs of the plainest statement that gives the groups and their counts:
// the reference for the model's GROUP BY, which also counts the approved and ranks the levels.
double PlainGroupBySeconds(const QStringList &columns)
{
    QStringList names;
    for (const QString &column : columns)
        names << QLatin1Char('[') + column + QLatin1Char(']');
    const QString sql = QStringLiteral("SELECT ") + names.join(QStringLiteral(", ")) + QStringLiteral(", COUNT(*) FROM [clashes] GROUP BY ")
                        + names.join(QStringLiteral(", ")) + QLatin1Char(';');
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        QElapsedTimer timer;
        timer.start();
        fx::SqliteStatement statement(fx::ClashConnection(), sql);
        while (statement.Step())
            benchmark::DoNotOptimize(statement.Column(0));
        best = std::min(best, double(timer.nsecsElapsed()) / 1e9);
    }
    return best;
}

// Rows grouped by columns anew (one GROUP BY over all clashes), the first screen of bands read.
void BM_GroupBy(benchmark::State &state, QStringList columns)
{
    fx::ClashGridModel &model = Fresh();
    for (auto _ : state) {
        model.SetGroupColumns(columns);
        ReadScreen(model, 0);
    }
    Report(state, model);
    state.counters["groups"] = model.rowCount();
    state.counters["plain_group_s"] = PlainGroupBySeconds(columns);
}
BENCHMARK_CAPTURE(BM_GroupBy, few_values, QStringList{QStringLiteral("type")})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GroupBy, many_values, QStringList{QStringLiteral("model_a")})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GroupBy, distinct_values, QStringList{QStringLiteral("model_b")})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GroupBy, two_columns, QStringList{QStringLiteral("type"), QStringLiteral("model_a")})
    ->Unit(benchmark::kMillisecond);

// The largest group of a column of few values opened, its clashes read in the grid's order and
// its first screen read; grouped anew outside the timing, so that each opening reads its ids.
void BM_OpenGroup(benchmark::State &state, const char *sortColumn)
{
    fx::ClashGridModel &model = Fresh();
    if (sortColumn)
        model.SortByColumn(model.ColumnOf(QLatin1String(sortColumn)));
    const QStringList columns{QStringLiteral("type")};
    model.SetGroupColumns(columns);
    int largest = 0;
    for (int row = 1; row < model.rowCount(); ++row)
        if (model.GroupCountOfRow(row) > model.GroupCountOfRow(largest))
            largest = row;
    for (auto _ : state) {
        state.PauseTiming();
        model.SetGroupColumns(columns);
        state.ResumeTiming();
        model.SetGroupOpen(largest, true);
        ReadScreen(model, largest + 1);
    }
    Report(state, model);
    state.counters["group_rows"] = model.GroupCountOfRow(largest);
}
BENCHMARK_CAPTURE(BM_OpenGroup, clash_order, nullptr)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_OpenGroup, sorted, "comp_b")->Unit(benchmark::kMillisecond);

} // namespace
