#pragma once
// The `pdssim site` kind of a test parameter, with this run's PostgreSQL test server, and a
// site made the program's own for a test that opens its project.

#include "../pds/pgtestserver.h"

#include "frame/processstate.h"
#include "frame/settings.h"
#include "pds/projectschema.h"
#include "pds/projfile.h"
#include "permissions/accounts.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "permissions/privilegemanager.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "store/clashstore.h"
#include "support/sandbox.h"

#include <QString>

#include <gtest/gtest.h>

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

/// Builds a site in `root` and makes it the program's: its settings in `programDir`, its user
/// config file the user's. `models` 0 leaves their number to pdssim.
inline pdssim::SiteLayout ProgramSite(const QString &root, const QString &project, const QString &kind, int clashes,
                                      bool edge, const QString &programDir, int models = 0)
{
    pdssim::SiteOptions options;
    options.root = root;
    options.project = project;
    options.clashes = clashes;
    options.kind = kind;
    options.edge = edge;
    options.models = models;
    options.pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE);
    pdssim::BuildSite(options);
    const pdssim::SiteLayout layout(root);
    pdssim::InstallSiteConfig(layout, programDir);
    fx::SetUserConfigFile(pdssim::SiteUserConfigFile(layout, project));
    return layout;
}

/// Grants the user of the tests exactly `permissions` in the privilege database of the project
/// of `controlFile`; the program reads them at its next opening or PrivilegeMyPermissionInit().
inline void GrantOnly(const QString &controlFile, const QList<int> &permissions)
{
    const fx::ProjFile projFile = fx::GetProjFile(controlFile, false);
    fx::PrivilegePermissionsSet(fx::PermissionNames(),
                                fx::GetPermissionDBFileName(projFile.PROJ_ADDR, projFile.PROJ_FILE, true));
    fx::PrivilegeMgrInit();
    const QString user = QStringLiteral("user");
    fx::PrivilegeAddObject2DB(user, fx::GetMyAccountDomain(), fx::GetMyUserName());
    for (const int no : permissions)
        fx::PrivilegeSet(user, fx::GetMyAccountDomain(), fx::GetMyUserName(), fx::GetPermissionName(no), true);
    fx::PrivilegeDBClose();
}

/// A test on a site of the parameter's kind, skipped when that is PostgreSQL and no server
/// runs: a private world with the work folder in it, no batch mode, and no project row
/// remembered from another test's site of the same name; the project closed at the end.
class SiteKindTest : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        const auto kind = SiteKind(GetParam());
        if (!kind)
            GTEST_SKIP() << "no PostgreSQL test server";
        m_kind = *kind;
        fx::Process().WorkDir = box.Temp();
        fx::Process().BatchMode = false;
        fx::ClearProjectCache();
    }

    void TearDown() override
    {
        fx::FreeClashes();
        fx::ClearProjectCache();
        fx::Process().WorkDir.clear();
    }

    Sandbox box;
    QString m_kind; ///< the kind as pdssim takes it
};

} // namespace fxtest
