// The project schema of a site: 100,000 clashes into SQLite, and the copy onto PostgreSQL when
// FENDRIX_TEST_PG_* name a server.

#include "pdssim/schemagenerator.h"
#include "pdssim/schemapostgres.h"

#include "pds/sqlstatements.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void GenerateSqlite(benchmark::State &state)
{
    QTemporaryDir dir;
    pdssim::SchemaOptions options;
    options.clashes = state.range(0);
    for (auto _ : state)
        pdssim::GenerateSchema(options, dir.filePath(QStringLiteral("pd_SIM1.db")));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(GenerateSqlite)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(GenerateSqlite)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

void LoadPostgreSQL(benchmark::State &state)
{
    const QString host = qEnvironmentVariable("FENDRIX_TEST_PG_HOST");
    if (host.isEmpty()) {
        state.SkipWithError("no PostgreSQL server in FENDRIX_TEST_PG_*");
        return;
    }
    const QString connection = fx::PostgreSQLConnectionString(
        QStringLiteral("PostgreSQL Unicode"), host + QLatin1Char(':') + qEnvironmentVariable("FENDRIX_TEST_PG_PORT"),
        qEnvironmentVariable("FENDRIX_TEST_PG_DB"), qEnvironmentVariable("FENDRIX_TEST_PG_USER"),
        qEnvironmentVariable("FENDRIX_TEST_PG_PASSWORD"));
    QTemporaryDir dir;
    pdssim::SchemaOptions options;
    options.clashes = state.range(0);
    const QString file = dir.filePath(QStringLiteral("pd_SIM1.db"));
    pdssim::GenerateSchema(options, file);
    for (auto _ : state)
        pdssim::LoadSchemaIntoPostgreSQL(file, connection, QStringLiteral("pd_benchsim1"));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LoadPostgreSQL)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
