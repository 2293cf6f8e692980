// Opening a project into the clash store and approving its clashes, on pdssim sites of the
// SQLite kind. The open is held against `sqlite3` copying the same twelve tables into a new
// file in the same run (counter sqlite3_ratio: our time over sqlite3's; the target is 3).

#include "../support/benchsite.h"

#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "pds/projectdatabase.h"
#include "pds/projectschema.h"
#include "pds/sqlitedb.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "store/clashstatus.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"
#include "store/savetoproject.h"
#include "store/workingdatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

const QString kProject = QStringLiteral("BENCH");

// A site of `clashes` clashes in a private world, made once per size and kept for the run.
struct Site : fxbench::BenchSite
{
    explicit Site(qint64 clashes) : BenchSite(kProject, int(clashes))
    {
        schemaFile = QDir(fx::GetProjectDatabase(config, kProject).path).filePath(QStringLiteral("pd_") + kProject + QStringLiteral(".db"));
    }

    // What sqlite3 takes to copy the project tables into a new file, best of three.
    double Sqlite3CopySeconds() const
    {
        fx::SqliteDb schema(schemaFile, fx::SqliteDb::OpenMode::ReadOnly);
        QString script = QStringLiteral("ATTACH '%1' AS s; BEGIN;").arg(schemaFile);
        for (const QString &table : fx::ProjectTableList())
            if (!schema.Read(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '%1'").arg(table)).IsEmpty())
                script += QStringLiteral(" CREATE TABLE %1 AS SELECT * FROM s.%1;").arg(table);
        script += QStringLiteral(" COMMIT;");
        double best = 1e9;
        for (int run = 0; run < 3; ++run) {
            const QString copy = root + QStringLiteral("temp/sqlite3copy.db");
            QFile::remove(copy);
            QElapsedTimer timer;
            timer.start();
            QProcess sqlite3;
            sqlite3.start(QStringLiteral("sqlite3"), {copy, script});
            sqlite3.waitForFinished(-1);
            best = std::min(best, timer.nsecsElapsed() / 1e9);
            if (sqlite3.exitCode() != 0)
                return 0;
        }
        return best;
    }

    QString schemaFile;
};

Site &SiteOf(qint64 clashes)
{
    static std::map<qint64, std::unique_ptr<Site>> sites;
    auto &site = sites[clashes];
    if (!site)
        site = std::make_unique<Site>(clashes);
    site->MakeCurrent();
    fx::ClearProjectCache();
    return *site;
}

// Open a project: import, cleaning, working tables and their indices, and the view.
void OpenProject(benchmark::State &state)
{
    Site &site = SiteOf(state.range(0));
    double seconds = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        fx::InitClashes(site.controlFile, kProject);
        fx::GetClashes();
        seconds += timer.nsecsElapsed() / 1e9;
        state.PauseTiming();
        fx::FreeClashes();
        state.ResumeTiming();
    }
    const double reference = site.Sqlite3CopySeconds();
    state.counters["sqlite3_s"] = reference;
    if (reference > 0)
        state.counters["sqlite3_ratio"] = seconds / double(state.iterations()) / reference;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(OpenProject)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(OpenProject)->Arg(500000)->Unit(benchmark::kMillisecond)->Iterations(1);

// One SetClashStatus that approves every clash of the project as real (target: under 1 s).
void ApproveAll(benchmark::State &state)
{
    Site &site = SiteOf(state.range(0));
    fx::InitClashes(site.controlFile, kProject);
    fx::GetClashes();
    qint64 approved = 0;
    for (auto _ : state) {
        state.PauseTiming();
        fx::ClashConnection().Execute(QStringLiteral("UPDATE [clashes] SET [status] = 'Unapproved', [action] = 'Unapprove Clash';"));
        state.ResumeTiming();
        fx::SetClashStatus(QStringLiteral("clash_id > 0"), fx::ClashActionApproveReal, approved, false, false);
    }
    state.counters["approved"] = double(approved);
    fx::FreeClashes();
    state.SetItemsProcessed(state.iterations() * approved);
}
BENCHMARK(ApproveAll)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

// Writing back 10,000 changed reviews of the project (target: under 10 s). The schema file is
// put back before each round, so that every round writes the same changes.
void WriteBack(benchmark::State &state)
{
    Site &site = SiteOf(state.range(0));
    const QString pristine = site.schemaFile + QStringLiteral(".pristine");
    QFile::remove(pristine);
    QFile::copy(site.schemaFile, pristine);
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(site.schemaFile);
        QFile::copy(pristine, site.schemaFile);
        fx::ClearProjectCache();
        fx::InitClashes(site.controlFile, kProject);
        fx::GetClashes();
        qint64 changed = 0;
        // A new description changes every one of the 10,000, whatever its status was.
        fx::SetClashStatusA(QStringLiteral("clash_id IN (SELECT clash_id FROM [clashes] ORDER BY clash_id LIMIT 10000)"),
                            QStringLiteral("Checked on site"), fx::ClashActionDescription, fx::DescriptionModeOverwrite,
                            changed);
        state.counters["changed"] = double(changed);
        state.ResumeTiming();
        fx::SaveClashes2PDS();
        state.PauseTiming();
        fx::FreeClashes();
        state.ResumeTiming();
    }
    QFile::remove(site.schemaFile);
    QFile::rename(pristine, site.schemaFile);
}
BENCHMARK(WriteBack)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
