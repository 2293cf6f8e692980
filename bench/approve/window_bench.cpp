// The approval window on pdssim sites of the SQLite kind, offscreen: opening a project until
// its first rows are painted, then a filter typed into the filter row, a header-click sort and
// jumps to random places, each until the screen is painted; and the process's peak memory.

#include "../support/benchsite.h"
#include "../support/peakmemory.h"

#include "approve/ui/frmfendrix.h"
#include "frame/configkeys.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "grid/clashgridmodel.h"
#include "grid/ui/clashgridview.h"
#include "pds/projectschema.h"
#include "store/clashstore.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTableView>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

const QString kProject = QStringLiteral("BENCH");

// A site in a private world, built once per size, and the window that has it open.
struct OpenWindow : fxbench::BenchSite
{
    explicit OpenWindow(int clashes) : BenchSite(kProject, clashes)
    {
        // No prompt after the load: the automatic filter is set without asking.
        fx::SetIniValue(config, QStringLiteral("AutoFilter"), QStringLiteral("ShowFilterDialog"), QStringLiteral("0"));
        MakeCurrent();
    }

    /// The site's world and its project as the one the window opens at start.
    void MakeCurrent() const
    {
        BenchSite::MakeCurrent();
        fx::SetConfigUserConfigFile(fx::ExecutionModeKind::Approve, config);
        fx::Process().CmdControlFile = controlFile;
        fx::Process().CmdProject = kProject;
    }

    // Opens the window on the site; the time until the first rows are painted.
    double Open()
    {
        window.reset();
        fx::ClearProjectCache();
        QElapsedTimer timer;
        timer.start();
        window = std::make_unique<fx::FrmFendrix>();
        window->resize(1280, 800);
        window->show();
        window->RunStartup();
        Paint();
        return timer.nsecsElapsed() / 1e9;
    }

    fx::ClashGridView &Grid() { return *window->Grid(); }

    // Paints the grid's visible rows as the screen would.
    void Paint() { benchmark::DoNotOptimize(window->Grid()->Table()->viewport()->grab()); }

    std::unique_ptr<fx::FrmFendrix> window;
};

// Kept for the run; emptied before the application object goes.
std::map<int, std::unique_ptr<OpenWindow>> &Windows()
{
    static std::map<int, std::unique_ptr<OpenWindow>> windows;
    return windows;
}

OpenWindow &WindowOf(int clashes)
{
    auto &window = Windows()[clashes];
    if (!window) {
        window = std::make_unique<OpenWindow>(clashes);
        window->Open();
    }
    window->MakeCurrent();
    return *window;
}

void WindowOpen(benchmark::State &state)
{
    OpenWindow &open = WindowOf(int(state.range(0)));
    for (auto _ : state) {
        state.SetIterationTime(open.Open());
    }
    state.counters["rows_shown"] = open.Grid().Model() ? open.Grid().Model()->rowCount() : 0;
    state.counters["peak_rss_MB"] = fxbench::PeakResidentMB();
}
BENCHMARK(WindowOpen)->Arg(10000)->Arg(100000)->Arg(500000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

// A filter typed into the filter row on all rows, then taken away again (not timed).
void WindowFilter(benchmark::State &state)
{
    OpenWindow &open = WindowOf(int(state.range(0)));
    open.Grid().SetFilterText(QStringLiteral("status"), QString());
    const char *texts[] = {"Pip*", "*E*", "NULL"};
    int round = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        open.Grid().SetFilterText(QStringLiteral("discipline_a"), QString::fromLatin1(texts[round++ % 3]));
        open.Paint();
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
        open.Grid().SetFilterText(QStringLiteral("discipline_a"), QString());
    }
    state.counters["peak_rss_MB"] = fxbench::PeakResidentMB();
}
BENCHMARK(WindowFilter)->Arg(500000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// A header click on an unfiltered grid: ascending the first time, descending after.
void WindowSort(benchmark::State &state)
{
    OpenWindow &open = WindowOf(int(state.range(0)));
    open.Grid().SetFilterText(QStringLiteral("status"), QString());
    const char *columns[] = {"comp_a", "model_a", "type"};
    int round = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        open.Grid().ClickHeader(QString::fromLatin1(columns[round++ % 3]));
        open.Paint();
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
    }
}
BENCHMARK(WindowSort)->Arg(500000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// A jump to a random place of all rows, one screen painted.
void WindowScroll(benchmark::State &state)
{
    OpenWindow &open = WindowOf(int(state.range(0)));
    open.Grid().SetFilterText(QStringLiteral("status"), QString());
    QScrollBar *bar = open.Grid().Table()->verticalScrollBar();
    QRandomGenerator random(20261121);
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        bar->setValue(int(random.bounded(quint32(bar->maximum() + 1))));
        open.Paint();
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
    }
    state.counters["peak_rss_MB"] = fxbench::PeakResidentMB();
}
BENCHMARK(WindowScroll)->Arg(500000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    Windows().clear();
    benchmark::Shutdown();
    return 0;
}
