// The clash grid window on 500,000 clashes shaped like `clashes`, offscreen: a filter typed
// into the filter row, a header click, a jump of the scroll bar, a header dropped on the group
// area, a group opened, each until the first screen is painted; and ShowClashesInGrid over the
// built view with the automatic filter. Counters: rows in view and the process's peak resident
// memory.

#include "frame/settings.h"
#include "../spreadvalues.h"

#include "../../support/peakmemory.h"
#include "grid/clashgridmodel.h"
#include "grid/ui/clashgridview.h"
#include "grid/ui/gridtable.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/statusline.h"

#include <QApplication>
#include <QFile>
#include <QPixmap>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr int kClashes = 500000;

QApplication &App()
{
    static int argc = 1;
    static char name[] = "bench_grid_ui";
    static char *argv[] = {name, nullptr};
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(argc, argv);
    return app;
}

// A store whose base_clash_table has columns of few, of many and of mostly missing values;
// the view builds `clashes` from it as for a real project.
struct Window
{
    Window()
    {
        App();
        qputenv("APPDATA", dir.path().toLocal8Bit());
        fx::SetUserConfigFile(dir.filePath(QStringLiteral("bench.ini")));
        const QString file = dir.filePath(QStringLiteral("store.fxdb"));
        fx::ClashStore().ProjectDefinition.name = QStringLiteral("BENCH");
        fx::ClashStore().WorkDB = file;
        fx::ClashStore().ClashConnection = std::make_unique<fx::SqliteDb>(file, fx::SqliteDb::OpenMode::ReadWriteCreate);
        const char *const text[] = {"type", "action", "review_comment", "site_id_a", "area_a", "model_a", "model_status_a",
                                    "comp_a", "site_id_b", "area_b", "model_b", "model_status_b", "comp_b",
                                    "action_area_a", "action_area_b", "discipline_structure", "model_structure",
                                    "site_id_structure"};
        QStringList definitions{QStringLiteral("clash_id INT"), QStringLiteral("recent_review_date DATETIME"),
                                QStringLiteral("status VARCHAR(255)"), QStringLiteral("discipline_a VARCHAR(255)"),
                                QStringLiteral("discipline_b VARCHAR(255)"), QStringLiteral("action_discipline VARCHAR(255)")};
        QStringList values{QStringLiteral("n * 7 + 3"), QStringLiteral("printf('2024-%02d-%02d 10:00:00', n % 12 + 1, n % 28 + 1)"),
                           QStringLiteral("CASE WHEN n % 5 = 0 THEN 'Approved' ELSE 'Unapproved' END"),
                           QStringLiteral("CASE n % 3 WHEN 0 THEN 'Piping' WHEN 1 THEN 'Equipment' ELSE 'Structural' END"),
                           QStringLiteral("CASE n % 4 WHEN 0 THEN 'Piping' WHEN 1 THEN 'Equipment' WHEN 2 THEN 'HVAC' ELSE 'Structural' END"),
                           QStringLiteral("CASE WHEN n % 9 = 0 THEN 'Piping' END")};
        int i = 0;
        for (const char *column : text) {
            definitions << QLatin1String(column) + QStringLiteral(" VARCHAR(255)");
            values << fxbench::SpreadValues(i, column);
            ++i;
        }
        for (const char *column : {"easting", "northing", "elevation"}) {
            definitions << QLatin1String(column) + QStringLiteral(" DOUBLE");
            values << QStringLiteral("(n % 1000) * 1.5");
        }
        fx::SqliteDb &db = fx::ClashConnection();
        db.Execute(QStringLiteral("CREATE TABLE base_clash_table (") + definitions.join(QStringLiteral(", ")) + QStringLiteral(");"));
        db.Execute(QStringLiteral("WITH RECURSIVE seq(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM seq WHERE n < %1) "
                                  "INSERT INTO base_clash_table SELECT %2 FROM seq;")
                       .arg(kClashes - 1)
                       .arg(values.join(QStringLiteral(", "))));
        db.Execute(QStringLiteral("CREATE UNIQUE INDEX pk_base ON base_clash_table (clash_id);"
                                  "CREATE TABLE pdtable_134 (primary_descript VARCHAR(255), secondary_descript VARCHAR(255));"
                                  "CREATE TABLE pdtable_111 (discipline_name VARCHAR(255));"
                                  "INSERT INTO pdtable_111 VALUES ('Piping'), ('Equipment'), ('Structural');"));
        fx::CreateAdvancedFilterTables(db);
        view = std::make_unique<fx::ClashGridView>();
        view->resize(1600, 900);
        view->show();
        view->ShowClashesInGrid();
    }

    void Paint() { benchmark::DoNotOptimize(view->Table()->viewport()->grab()); }

    void ClearAll()
    {
        view->SetGroupColumns({});
        fx::ClashGridModel &model = *view->Model();
        for (int column = 0; column < model.columnCount(); ++column)
            if (!model.ColumnFilter(column).isEmpty())
                view->SetFilterText(model.ColumnNames().at(column), QString());
    }

    QTemporaryDir dir;
    std::unique_ptr<fx::ClashGridView> view;
};

Window &TheWindow()
{
    static Window window;
    return window;
}

void Report(benchmark::State &state, Window &window)
{
    state.counters["rows"] = window.view->Model()->rowCount();
    state.counters["peak_rss_MB"] = fxbench::PeakResidentMB();
}

// A filter typed into a cell and left, alternating between two texts so that each run filters anew.
void BM_TypedFilter(benchmark::State &state, const char *column, const char *first, const char *second)
{
    Window &window = TheWindow();
    window.ClearAll();
    bool flip = false;
    for (auto _ : state) {
        window.view->SetFilterText(QLatin1String(column), QLatin1String(flip ? second : first));
        window.Paint();
        flip = !flip;
    }
    Report(state, window);
    window.ClearAll();
}
BENCHMARK_CAPTURE(BM_TypedFilter, few_values, "type", "type-1", "type-3")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_TypedFilter, many_values, "model_b", "*12*", "*34*")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_TypedFilter, nothing_found, "model_a", "no such model", "nor this")->Unit(benchmark::kMillisecond);

// A header click on an unindexed column, alternating columns so that each run sorts anew.
void BM_HeaderClick(benchmark::State &state, bool filtered)
{
    Window &window = TheWindow();
    window.ClearAll();
    if (filtered)
        window.view->SetFilterText(QStringLiteral("status"), QStringLiteral("Unapproved"));
    const QString columns[] = {QStringLiteral("comp_b"), QStringLiteral("model_b")};
    int turn = 0;
    for (auto _ : state) {
        window.view->ClickHeader(columns[turn++ % 2]);
        window.Paint();
    }
    Report(state, window);
    window.ClearAll();
}
BENCHMARK_CAPTURE(BM_HeaderClick, all_rows, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_HeaderClick, unapproved, true)->Unit(benchmark::kMillisecond);

// The scroll bar dragged to a random place, one screen painted.
void BM_Jump(benchmark::State &state)
{
    Window &window = TheWindow();
    window.ClearAll();
    window.view->ClickHeader(QStringLiteral("area_b"));
    QScrollBar *bar = window.view->Table()->verticalScrollBar();
    QRandomGenerator random(7);
    for (auto _ : state) {
        bar->setValue(int(random.bounded(bar->maximum() + 1)));
        window.Paint();
    }
    Report(state, window);
    window.ClearAll();
}
BENCHMARK(BM_Jump)->Unit(benchmark::kMillisecond);

// A header dropped on the group area, the grid ungrouped before outside the timing: one
// GROUP BY over the clashes in view, the bands painted.
void BM_GroupByColumn(benchmark::State &state, const char *column, const char *status)
{
    Window &window = TheWindow();
    for (auto _ : state) {
        state.PauseTiming();
        window.ClearAll();
        if (status)
            window.view->SetFilterText(QStringLiteral("status"), QLatin1String(status));
        state.ResumeTiming();
        window.view->SetGroupColumns({QLatin1String(column)});
        window.Paint();
    }
    Report(state, window);
    window.ClearAll();
}
BENCHMARK_CAPTURE(BM_GroupByColumn, few_values, "type", nullptr)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GroupByColumn, discipline_unapproved, "discipline_a", "Unapproved")->Unit(benchmark::kMillisecond);

// A click on the band of the largest group of a column of few values: its clashes read in the
// grid's order, the first screen under it painted. Grouped anew outside the timing, so that
// each click reads the group's clashes.
void BM_OpenGroup(benchmark::State &state)
{
    Window &window = TheWindow();
    window.ClearAll();
    const QStringList columns{QStringLiteral("type")};
    window.view->SetGroupColumns(columns);
    fx::ClashGridModel *model = window.view->Model();
    int largest = 0;
    for (int row = 1; row < model->rowCount(); ++row)
        if (model->GroupCountOfRow(row) > model->GroupCountOfRow(largest))
            largest = row;
    auto &table = static_cast<fx::GridTable &>(*window.view->Table());
    for (auto _ : state) {
        state.PauseTiming();
        window.view->SetGroupColumns(columns);
        state.ResumeTiming();
        table.SetGroupOpen(largest, true);
        window.Paint();
    }
    state.counters["group_rows"] = window.view->Model()->GroupCountOfRow(largest);
    Report(state, window);
    window.ClearAll();
}
BENCHMARK(BM_OpenGroup)->Unit(benchmark::kMillisecond);

// The view bound anew over the built `clashes`: settings, the automatic filter, the first screen.
void BM_ShowClashesInGrid(benchmark::State &state)
{
    Window &window = TheWindow();
    for (auto _ : state) {
        window.view->FreeGrid();
        window.view->ShowClashesInGrid();
        window.Paint();
    }
    Report(state, window);
    window.ClearAll();
}
BENCHMARK(BM_ShowClashesInGrid)->Unit(benchmark::kMillisecond);

} // namespace

namespace {
// The status line alone under a typed filter: the four counts of the caption.
void BM_StatusLine(benchmark::State &state)
{
    Window &window = TheWindow();
    window.ClearAll();
    window.view->SetFilterText(QStringLiteral("model_b"), QStringLiteral("*12*"));
    for (auto _ : state)
        benchmark::DoNotOptimize(fx::ClashCountsCaption());
    Report(state, window);
    window.ClearAll();
}
BENCHMARK(BM_StatusLine)->Unit(benchmark::kMillisecond);
} // namespace
