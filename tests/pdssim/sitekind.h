#pragma once
// The `pdssim site` kind of a test parameter, with this run's PostgreSQL test server.

#include "../pds/pgtestserver.h"

#include <QString>

#include <optional>

namespace fxtest {

/// "sqlite" and "ris" as they stand; "postgres" as "postgres=CONN" for the run's server, or
/// none when the run was started without one.
inline std::optional<QString> SiteKind(const char *name)
{
    const QString kind = QString::fromLatin1(name);
    if (kind != QLatin1String("postgres"))
        return kind;
    const auto server = PgTestServer::FromEnv();
    if (!server)
        return std::nullopt;
    return QStringLiteral("postgres=host=%1;port=%2;dbname=%3;user=%4;password=%5")
        .arg(server->host, server->port, server->database, server->user, server->password);
}

} // namespace fxtest
