// The project tree's view offscreen on a project of 5,000 models (pdssim site, SQLite kind,
// 100,000 clashes), each gesture until the view is painted: a discipline opened (its areas
// read), an area opened (its models read), a check box of an area and of a discipline clicked.
// Through the schema (check window) and through the store with the restriction to what has
// clashes (approval filter).

#include "../../support/benchsite.h"

#include "check/projecttree.h"
#include "check/treesource.h"
#include "check/ui/projecttreeview.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"

#include <QApplication>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr int kModels = 5000;
constexpr int kClashes = 100000;
const QString kProject = QStringLiteral("TREE");

struct TreeSite : fxbench::BenchSite
{
    TreeSite() : BenchSite(kProject, kClashes, kModels) { fx::SetProjectDefinition(controlFile, kProject); }
};

TreeSite &Site()
{
    static TreeSite site;
    return site;
}

// A window-sized view over a tree of the site.
struct View
{
    explicit View(bool store)
    {
        Site();
        if (store && !fx::ClashStore().ClashConnection) {
            fx::InitClashes(Site().controlFile, kProject);
            fx::GetClashes();
        }
        tree = std::make_unique<fx::ProjectTreeModel>(store ? fx::StoreTreeSource() : fx::SchemaTreeSource(kProject));
        view = std::make_unique<fx::ProjectTreeView>();
        view->resize(420, 760);
        view->SetTreeModel(tree.get());
        view->show();
    }

    void Paint() { benchmark::DoNotOptimize(view->viewport()->grab()); }
    QModelIndex Discipline() const { return tree->index(0, 0, tree->RootIndex()); }
    QModelIndex FirstArea() const { return tree->index(0, 0, Discipline()); }

    // A click on the check box of a node, as the user makes it.
    void ClickCheckBox(const QModelIndex &index)
    {
        QStyleOptionViewItem option;
        option.initFrom(view.get());
        option.rect = view->visualRect(index);
        option.features |= QStyleOptionViewItem::HasCheckIndicator;
        const QRect box = view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, view.get());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, box.center());
    }

    std::unique_ptr<fx::ProjectTreeModel> tree;
    std::unique_ptr<fx::ProjectTreeView> view;
};

void ExpandDiscipline(benchmark::State &state, bool store)
{
    View v(store);
    for (auto _ : state) {
        state.PauseTiming();
        v.tree->TreeInit();
        v.Paint();
        state.ResumeTiming();
        v.view->expand(v.Discipline());
        v.Paint();
    }
    state.counters["areas"] = v.tree->rowCount(v.Discipline());
}

void ExpandArea(benchmark::State &state, bool store)
{
    View v(store);
    for (auto _ : state) {
        state.PauseTiming();
        v.tree->TreeInit();
        v.view->expand(v.Discipline());
        v.Paint();
        state.ResumeTiming();
        v.view->expand(v.FirstArea());
        v.Paint();
    }
    state.counters["models"] = v.tree->rowCount(v.FirstArea());
}

// Clicks the check box of the first area (its models shown) or of the discipline (all its
// areas' models read), on and off.
void ClickTick(benchmark::State &state, bool store, bool discipline)
{
    View v(store);
    v.tree->TreeInit();
    v.tree->NodeCheck(v.Discipline(), true);
    v.tree->NodeExpandAllSelected(QStringLiteral("model"));
    v.tree->NodeCheck(v.Discipline(), false);
    v.view->expand(v.Discipline());
    v.view->expand(v.FirstArea());
    v.Paint();
    const QModelIndex node = discipline ? v.Discipline() : v.FirstArea();
    // Every click must change the tick, or the benchmark measured a missed click.
    qint64 changes = 0;
    for (auto _ : state) {
        const bool before = v.tree->IsTicked(node);
        v.ClickCheckBox(node);
        v.Paint();
        changes += v.tree->IsTicked(node) != before ? 1 : 0;
    }
    if (changes != qint64(state.iterations()))
        state.SkipWithError("a click missed the check box");
    state.counters["nodes_read"] = double(v.tree->NodeCount());
}

void BM_ViewSchemaExpandDiscipline(benchmark::State &state) { ExpandDiscipline(state, false); }
void BM_ViewSchemaExpandArea(benchmark::State &state) { ExpandArea(state, false); }
void BM_ViewSchemaTickArea(benchmark::State &state) { ClickTick(state, false, false); }
void BM_ViewSchemaTickDiscipline(benchmark::State &state) { ClickTick(state, false, true); }
void BM_ViewStoreExpandDiscipline(benchmark::State &state) { ExpandDiscipline(state, true); }
void BM_ViewStoreExpandArea(benchmark::State &state) { ExpandArea(state, true); }
void BM_ViewStoreTickArea(benchmark::State &state) { ClickTick(state, true, false); }

BENCHMARK(BM_ViewSchemaExpandDiscipline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewSchemaExpandArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewSchemaTickArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewSchemaTickDiscipline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewStoreExpandDiscipline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewStoreExpandArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewStoreTickArea)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
