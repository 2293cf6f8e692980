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
        return Sqlite3Seconds(QString(), script);
    }

    // What sqlite3 takes to build again every index the open built, on a copy of the open's
    // working database without them, with the store's own settings for a build.
    double Sqlite3IndexSeconds(const QString &workDB, int &indices) const
    {
        const QString unindexed = root + QStringLiteral("temp/unindexed.db");
        QFile::remove(unindexed);
        if (!QFile::copy(workDB, unindexed))
            return 0;
        QStringList statements;
        {
            fx::SqliteDb db(unindexed);
            const fx::Recordset found = db.Read(QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL;"));
            for (const QVariantList &row : found.Rows()) {
                db.Execute(QStringLiteral("DROP INDEX [%1];").arg(row.at(0).toString()));
                statements << row.at(1).toString();
            }
        }
        indices = int(statements.size());
        const double seconds = Sqlite3Seconds(unindexed, QStringLiteral("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF; "
                                                                         "PRAGMA threads = %1; BEGIN; %2; COMMIT;")
                                                             .arg(fx::SorterThreads())
                                                             .arg(statements.join(QStringLiteral("; "))));
        QFile::remove(unindexed);
        return seconds;
    }

    // What sqlite3 takes to look up the two components of every clash by their ids, on the
    // open's working database as it is (the lookup of the open's joins, without its columns).
    double Sqlite3LookupSeconds(const QString &workDB) const
    {
        return Sqlite3Seconds(workDB, QStringLiteral("SELECT COUNT(a.linkage), COUNT(b.linkage) FROM pdtable_132 "
                                                     "LEFT JOIN pdtable_134 AS a ON comp_a_unique_id = a.unique_comp_id "
                                                     "LEFT JOIN pdtable_134 AS b ON comp_b_unique_id = b.unique_comp_id;"));
    }

    // The best of three runs of sqlite3 with `script`, each on a fresh copy of `database` (or a
    // new file when it is empty); 0 when sqlite3 fails.
    double Sqlite3Seconds(const QString &database, const QString &script) const
    {
        const QString copy = root + QStringLiteral("temp/sqlite3work.db");
        double best = 1e9;
        for (int run = 0; run < 3; ++run) {
            QFile::remove(copy);
            if (!database.isEmpty() && !QFile::copy(database, copy))
                return 0;
            QElapsedTimer timer;
            timer.start();
            QProcess sqlite3;
            sqlite3.start(QStringLiteral("sqlite3"), {copy, script});
            sqlite3.waitForFinished(-1);
            best = std::min(best, timer.nsecsElapsed() / 1e9);
            if (sqlite3.exitStatus() != QProcess::NormalExit || sqlite3.exitCode() != 0)
                return 0;
        }
        QFile::remove(copy);
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

// Open a project: import, cleaning, working tables and their indices, and the view. After the
// timed opens, parts of the same work are timed in sqlite3 itself on copies of the working
// database the last open made, so that the report can say where the open's time goes.
void OpenProject(benchmark::State &state)
{
    Site &site = SiteOf(state.range(0));
    double seconds = 0;
    for (auto _ : state) {
        // The store of the round before closes outside the time; the last one stays for the references.
        state.PauseTiming();
        fx::FreeClashes();
        state.ResumeTiming();
        QElapsedTimer timer;
        timer.start();
        fx::InitClashes(site.controlFile, kProject);
        fx::GetClashes();
        seconds += timer.nsecsElapsed() / 1e9;
    }
    const QString workCopy = site.root + QStringLiteral("temp/opened.db");
    QFile::remove(workCopy);
    QFile::copy(fx::GetWorkDB(), workCopy);
    fx::FreeClashes();
    const double copy = site.Sqlite3CopySeconds();
    int indices = 0;
    const double index = site.Sqlite3IndexSeconds(workCopy, indices);
    const double lookup = site.Sqlite3LookupSeconds(workCopy);
    QFile::remove(workCopy);
    if (copy <= 0 || index <= 0 || lookup <= 0) {
        state.SkipWithError("sqlite3 failed on a reference of the open");
        return;
    }
    state.counters["sqlite3_s"] = copy;
    state.counters["sqlite3_ratio"] = seconds / double(state.iterations()) / copy;
    state.counters["sqlite3_index_s"] = index;
    state.counters["indices"] = indices;
    state.counters["sqlite3_lookup_s"] = lookup;
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
