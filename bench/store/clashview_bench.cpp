// Building the view of 500,000 clashes: a plain copy, and one with the component descriptions
// split into their pieces.
#include "frame/settings.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int kClashes = 500000;

// A store with a base_clash_table of `kClashes` rows whose descriptions have three pieces.
class Store
{
public:
    Store()
    {
        qputenv("APPDATA", m_dir.path().toLocal8Bit());
        fx::SetUserConfigFile(m_dir.filePath(QStringLiteral("bench.ini")));
        const QString file = m_dir.filePath(QStringLiteral("store.fxdb"));
        fx::ClashStore().ProjectDefinition.name = QStringLiteral("B");
        fx::ClashStore().WorkDB = file;
        fx::ClashStore().ClashConnection = std::make_unique<fx::SqliteDb>(file, fx::SqliteDb::OpenMode::ReadWriteCreate);
        fx::SqliteDb &db = fx::ClashConnection();
        db.Execute(QStringLiteral(
            "CREATE TABLE base_clash_table (clash_id INT, type VARCHAR(255), status VARCHAR(255), action VARCHAR(255), "
            "review_comment VARCHAR(255), recent_review_date DATETIME, site_id_a VARCHAR(255), discipline_a VARCHAR(255), "
            "area_a VARCHAR(255), model_a VARCHAR(255), model_status_a VARCHAR(255), comp_a VARCHAR(255), site_id_b VARCHAR(255), "
            "discipline_b VARCHAR(255), area_b VARCHAR(255), model_b VARCHAR(255), model_status_b VARCHAR(255), "
            "comp_b VARCHAR(255), action_discipline VARCHAR(255), action_area_a VARCHAR(255), action_area_b VARCHAR(255), "
            "easting DOUBLE, northing DOUBLE, elevation DOUBLE, discipline_structure VARCHAR(255), model_structure VARCHAR(255), "
            "site_id_structure VARCHAR(255));"));
        db.Execute(QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
            "INSERT INTO base_clash_table SELECT i, 'Hard', 'Unapproved', 'Unapprove Clash', NULL, NULL, 'No SiteID', 'Piping', "
            "'A' || (i % 20), 'M' || (i % 500), 'Active', 'PIPE-' || (i % 900) || '-A', 'No SiteID', 'Structural', "
            "'A' || (i % 17), 'S' || (i % 300), 'Active', 'BEAM-' || (i % 700) || '-B', 'Piping', 'Project', 'Project', "
            "i * 0.5, i * 0.25, 10.0, 'Structural - Piping', 'S1 - M1', 'No SiteID - No SiteID' FROM n;")
                       .arg(kClashes));
        db.Execute(QStringLiteral("CREATE UNIQUE INDEX pk_base ON base_clash_table (clash_id);"
                                  "CREATE TABLE pdtable_134 (primary_descript VARCHAR(255), secondary_descript VARCHAR(255));"
                                  "INSERT INTO pdtable_134 VALUES ('PIPE-1', 'A'), ('BEAM-2', 'B');"));
        fx::CreateAdvancedFilterTables(db);
    }
    ~Store() { fx::FreeClashes(); }

private:
    QTemporaryDir m_dir;
};

void BuildView(benchmark::State &state, const QString &separator)
{
    Store store;
    fx::SetIniValue(fx::GetUserConfigFile(), QStringLiteral("BOptions"), QStringLiteral("CompSeparator"), separator);
    for (auto _ : state) {
        // A missing table is built anew whatever the settings.
        fx::ClashConnection().Execute(QStringLiteral("DROP TABLE IF EXISTS clashes;"));
        benchmark::DoNotOptimize(fx::GetClashes());
    }
}

void BM_ClashViewCopy(benchmark::State &state) { BuildView(state, QString()); }
void BM_ClashViewSplit(benchmark::State &state) { BuildView(state, QStringLiteral("-")); }
BENCHMARK(BM_ClashViewCopy)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ClashViewSplit)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
