#pragma once
// A pdssim site of the SQLite kind in a private world (TEMP, configuration and program
// folders of its own), made the program's, for the benchmarks that open a project.

#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace fxbench {

struct BenchSite
{
    /// `models` 0: as many as the clash count makes (pdssim's own rule).
    BenchSite(const QString &project, int clashes, int models = 0)
    {
        root = dir.path() + QLatin1Char('/');
        for (const char *folder : {"temp", "config", "program"})
            QDir(root).mkpath(QString::fromLatin1(folder));
        QFile ini(root + QStringLiteral("program/Fendrix.ini"));
        (void)ini.open(QIODevice::WriteOnly);
        ini.write("[Settings]\n");
        ini.close();
        MakeCurrent();

        pdssim::SiteOptions options;
        options.root = root + QStringLiteral("site");
        options.project = project;
        options.clashes = clashes;
        options.models = models;
        options.kind = QStringLiteral("sqlite");
        options.pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE);
        pdssim::BuildSite(options);
        const pdssim::SiteLayout layout(options.root);
        pdssim::InstallSiteConfig(layout, root + QStringLiteral("program/"));
        config = pdssim::SiteUserConfigFile(layout, project);
        controlFile = layout.ControlFile();
        MakeCurrent();
    }

    /// Makes this site's world the program's again: a run holds sites of several sizes, and
    /// the settings of the one built last would otherwise point every open at its project.
    void MakeCurrent() const
    {
        qputenv("TEMP", (root + QStringLiteral("temp/")).toLocal8Bit());
        qputenv("APPDATA", (root + QStringLiteral("config/")).toLocal8Bit());
        fx::SetProgramDirOverride(root + QStringLiteral("program/"));
        fx::Process().TempDir = root + QStringLiteral("temp/");
        fx::Process().WorkDir = fx::Process().TempDir;
        if (!config.isEmpty())
            fx::SetUserConfigFile(config);
    }

    QTemporaryDir dir;
    QString root;        ///< with a trailing separator
    QString controlFile;
    QString config;      ///< the site's user config file, now the user's
};

} // namespace fxbench
