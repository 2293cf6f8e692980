// The clash grid's model over a store of 500,000 clashes shaped like `clashes`: a new filter
// and a new sort until the first screen (40 rows) is read, and jumps to random places one
// screen each. Counters: rows in view, the model's own bytes (id list and cache) and the
// process's peak resident memory.

#include "spreadvalues.h"

#include "../support/peakmemory.h"
#include "grid/clashgridmodel.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

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
        model = std::make_unique<fx::ClashGridModel>();
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

void ClearAll(fx::ClashGridModel &model)
{
    model.SetGroupColumns({});
    for (int column = 0; column < model.columnCount(); ++column)
        if (!model.ColumnFilter(column).isEmpty())
            model.SetColumnFilter(column, QString());
}

// A filter text typed into one cell, alternating between two so that every run filters anew.
void BM_NewFilter(benchmark::State &state, const char *column, const char *first, const char *second)
{
    fx::ClashGridModel &model = *TheStore().model;
    ClearAll(model);
    const int index = model.ColumnOf(QLatin1String(column));
    bool flip = false;
    for (auto _ : state) {
        model.SetColumnFilter(index, QLatin1String(flip ? second : first));
        ReadScreen(model, 0);
        flip = !flip;
    }
    Report(state, model);
    ClearAll(model);
}
BENCHMARK_CAPTURE(BM_NewFilter, few_values, "type", "type-1", "type-3")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_NewFilter, many_values, "model_b", "*12*", "*34*")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_NewFilter, nothing_found, "model_a", "no such model", "nor this")->Unit(benchmark::kMillisecond);

// A header click on an unindexed column, alternating columns so that every run sorts anew.
void BM_NewSort(benchmark::State &state, bool filtered)
{
    fx::ClashGridModel &model = *TheStore().model;
    ClearAll(model);
    if (filtered)
        model.SetColumnFilter(model.ColumnOf(QStringLiteral("type")), QStringLiteral("type-1"));
    const int columns[] = {model.ColumnOf(QStringLiteral("comp_b")), model.ColumnOf(QStringLiteral("model_b"))};
    int turn = 0;
    for (auto _ : state) {
        model.SetGroupColumns({}); // a fresh click sorts ascending
        model.SortByColumn(columns[turn++ % 2]);
        ReadScreen(model, 0);
    }
    Report(state, model);
    ClearAll(model);
}
BENCHMARK_CAPTURE(BM_NewSort, all_rows, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_NewSort, filtered, true)->Unit(benchmark::kMillisecond);

// A jump of the scroll bar to a random place, one screen read.
void BM_Jump(benchmark::State &state)
{
    fx::ClashGridModel &model = *TheStore().model;
    ClearAll(model);
    model.SortByColumn(model.ColumnOf(QStringLiteral("area_b")));
    QRandomGenerator random(7);
    for (auto _ : state)
        ReadScreen(model, int(random.bounded(model.rowCount() - kScreen)));
    Report(state, model);
    ClearAll(model);
}
BENCHMARK(BM_Jump)->Unit(benchmark::kMillisecond);

} // namespace
