#pragma once
// The PostgreSQL server that scripts/pg-test-cluster.sh starts for a test run, if any.

#include "pds/odbc.h"
#include "pds/scratchfiles.h"
#include "pds/sqlstatements.h"

#include <QString>

#include <gtest/gtest.h>

#include <optional>

namespace fxtest {

struct PgTestServer
{
    QString host, port, user, password, database;

    /// The server of FENDRIX_TEST_PG_*; none when the run was started without one.
    static std::optional<PgTestServer> FromEnv()
    {
        PgTestServer server{qEnvironmentVariable("FENDRIX_TEST_PG_HOST"), qEnvironmentVariable("FENDRIX_TEST_PG_PORT"),
                            qEnvironmentVariable("FENDRIX_TEST_PG_USER"),
                            qEnvironmentVariable("FENDRIX_TEST_PG_PASSWORD"), qEnvironmentVariable("FENDRIX_TEST_PG_DB")};
        if (server.host.isEmpty() || server.port.isEmpty())
            return std::nullopt;
        return server;
    }

    QString ConnectionString(const QString &otherPassword = QString(), const QString &otherUser = QString()) const
    {
        return fx::PostgreSQLConnectionString(QStringLiteral("PostgreSQL Unicode"), host + QLatin1Char(':') + port,
                                              database, otherUser.isEmpty() ? user : otherUser,
                                              otherUser.isEmpty() && otherPassword.isEmpty() ? password : otherPassword);
    }
};

/// A schema of a random name on the server, dropped with its tables when this goes; tests
/// running side by side never meet.
class PgScratchSchema
{
public:
    PgScratchSchema(fx::OdbcConnection &connection, const QString &prefix = QStringLiteral("fx_"))
        : m_connection(connection)
        , m_name(prefix + fx::RandomScratchName())
    {
        m_connection.Execute(QStringLiteral("CREATE SCHEMA ") + m_name);
    }
    ~PgScratchSchema()
    {
        try {
            m_connection.Execute(QStringLiteral("DROP SCHEMA ") + m_name + QStringLiteral(" CASCADE"));
        } catch (...) {
        }
    }
    const QString &Name() const { return m_name; }

private:
    fx::OdbcConnection &m_connection;
    QString m_name;
};

} // namespace fxtest

/// Declares `var`, the test server, or skips the test when the run has none.
#define FX_REQUIRE_PG_SERVER(var)                                                                                  \
    const auto var##Found = fxtest::PgTestServer::FromEnv();                                                     \
    if (!var##Found)                                                                                             \
        GTEST_SKIP() << "no PostgreSQL test server: run scripts/run-tests.sh, or source the env file of "       \
                        "scripts/pg-test-cluster.sh start DIR";                                                  \
    const fxtest::PgTestServer &var = *var##Found
