// The project tree of a project of 5,000 models (pdssim site, SQLite kind, 100,000 clashes),
// without a window: a discipline opened (its areas read), an area opened (its models read),
// an area, a discipline and the whole project ticked, everything ticked opened down to the
// models, and a stored state saved and restored. Once through the schema, as the check window
// reads it, and once through the opened store with the restriction to what has clashes, as
// the approval filter reads it.

#include "../support/benchsite.h"

#include "check/projecttree.h"
#include "check/treesource.h"
#include "frame/settings.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kModels = 5000;
constexpr int kClashes = 100000;
const QString kProject = QStringLiteral("TREE");

// The site, built once; the store opened on first use.
struct TreeSite : fxbench::BenchSite
{
    TreeSite() : BenchSite(kProject, kClashes, kModels) { fx::SetProjectDefinition(controlFile, kProject); }

    fx::TreeSource Source(bool store)
    {
        if (!store)
            return fx::SchemaTreeSource(kProject);
        if (fx::GetProjectName() != kProject || !fx::ClashStore().ClashConnection)
        {
            // The project as the approval window has it: the store and its view `clashes`.
            fx::InitClashes(controlFile, kProject);
            fx::GetClashes();
        }
        return fx::StoreTreeSource();
    }
};

TreeSite &Site()
{
    static TreeSite site;
    return site;
}

// The first discipline (Piping) and its first area.
QModelIndex Discipline(fx::ProjectTreeModel &tree)
{
    return tree.index(0, 0, tree.RootIndex());
}

QModelIndex FirstArea(fx::ProjectTreeModel &tree)
{
    tree.NodeExpand(Discipline(tree));
    return tree.index(0, 0, Discipline(tree));
}

int ModelCount(fx::ProjectTreeModel &tree, const QModelIndex &parent)
{
    int count = 0;
    for (int row = 0; row < tree.rowCount(parent); ++row) {
        const QModelIndex child = tree.index(row, 0, parent);
        count += tree.NodeInfo(child).kind == fx::TreeLevel::Model ? 1 : ModelCount(tree, child);
    }
    return count;
}

void ExpandDiscipline(benchmark::State &state, bool store)
{
    fx::ProjectTreeModel tree(Site().Source(store));
    int areas = 0;
    for (auto _ : state) {
        state.PauseTiming();
        tree.TreeInit();
        state.ResumeTiming();
        tree.NodeExpand(Discipline(tree));
        areas = tree.rowCount(Discipline(tree));
    }
    state.counters["areas"] = areas;
}

void ExpandArea(benchmark::State &state, bool store)
{
    fx::ProjectTreeModel tree(Site().Source(store));
    int models = 0;
    for (auto _ : state) {
        state.PauseTiming();
        tree.TreeInit();
        const QModelIndex area = FirstArea(tree);
        state.ResumeTiming();
        tree.NodeExpand(area);
        models = tree.rowCount(area);
    }
    state.counters["models"] = models;
}

// Ticks and unticks one node, its level below read (an area's models, a discipline's areas and
// models, the whole project): one NodeCheck a time.
void Tick(benchmark::State &state, bool store, int depth)
{
    fx::ProjectTreeModel tree(Site().Source(store));
    tree.TreeInit();
    QModelIndex node = depth == 0 ? tree.RootIndex() : depth == 1 ? Discipline(tree) : FirstArea(tree);
    tree.NodeCheck(node, true);
    tree.NodeExpandAllSelected(QStringLiteral("model"));
    tree.NodeCheck(node, false);
    node = depth == 0 ? tree.RootIndex() : depth == 1 ? Discipline(tree) : FirstArea(tree);
    bool ticked = true;
    for (auto _ : state) {
        tree.NodeCheck(node, ticked);
        ticked = !ticked;
    }
    state.counters["models"] = ModelCount(tree, node);
}

void ExpandAllSelected(benchmark::State &state, bool store)
{
    fx::ProjectTreeModel tree(Site().Source(store));
    qsizetype models = 0;
    for (auto _ : state) {
        state.PauseTiming();
        tree.TreeInit();
        tree.NodeCheck(tree.RootIndex(), true);
        state.ResumeTiming();
        tree.NodeExpandAllSelected(QStringLiteral("model"));
        models = tree.TickedModels().size();
    }
    state.counters["models"] = double(models);
}

// Every other model of the project ticked: a state of 2,500 keys saved, then restored into a
// new tree (its levels read again).
void SaveLoad(benchmark::State &state, bool store)
{
    fx::ProjectTreeModel tree(Site().Source(store));
    tree.TreeInit();
    tree.NodeCheck(tree.RootIndex(), true);
    tree.NodeExpandAllSelected(QStringLiteral("model"));
    const QList<fx::TreeNodeInfo> models = tree.TickedModels();
    for (qsizetype i = 0; i < models.size(); i += 2)
        tree.NodeCheck(tree.IndexOfKey(models.at(i).key), false);
    const QString file = Site().root + QStringLiteral("tree.ini");
    qsizetype ticked = 0;
    for (auto _ : state) {
        tree.TreeSave2INI(QStringLiteral("Bench"), QString(), file);
        fx::ProjectTreeModel restored(Site().Source(store));
        restored.TreeInit();
        restored.TreeLoad4INI(QStringLiteral("Bench"), QString(), file);
        ticked = restored.TickedModels().size();
    }
    state.counters["ticked"] = double(ticked);
}

void BM_SchemaExpandDiscipline(benchmark::State &state) { ExpandDiscipline(state, false); }
void BM_SchemaExpandArea(benchmark::State &state) { ExpandArea(state, false); }
void BM_SchemaTickArea(benchmark::State &state) { Tick(state, false, 2); }
void BM_SchemaTickDiscipline(benchmark::State &state) { Tick(state, false, 1); }
void BM_SchemaTickProject(benchmark::State &state) { Tick(state, false, 0); }
void BM_SchemaExpandAllSelected(benchmark::State &state) { ExpandAllSelected(state, false); }
void BM_SchemaSaveLoad(benchmark::State &state) { SaveLoad(state, false); }
void BM_StoreExpandDiscipline(benchmark::State &state) { ExpandDiscipline(state, true); }
void BM_StoreExpandArea(benchmark::State &state) { ExpandArea(state, true); }
void BM_StoreTickArea(benchmark::State &state) { Tick(state, true, 2); }
void BM_StoreExpandAllSelected(benchmark::State &state) { ExpandAllSelected(state, true); }

BENCHMARK(BM_SchemaExpandDiscipline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaExpandArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaTickArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaTickDiscipline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaTickProject)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaExpandAllSelected)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SchemaSaveLoad)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_StoreExpandDiscipline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StoreExpandArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StoreTickArea)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StoreExpandAllSelected)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
