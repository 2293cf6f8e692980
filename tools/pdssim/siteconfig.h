#pragma once
// The settings that point Fendrix at a simulated site, written into SiteLayout::ConfigDir():
// Registry.ini (the machine keys of RIS and the PDS shell, and the server's shares),
// Fendrix.ini entries (mount point, clash type and model status names) and the user config
// file with the project's database section; beside them the PDS shell's "share/pdsperl".

#include "pdssim/sitelayout.h"

#include <QList>
#include <QString>

namespace pdssim {

/// The server of a "postgres=CONN" kind: CONN is key=value pairs separated by ";" or blanks:
/// host (or server), port, dbname (or database), user (or uid), password (or pwd).
struct PostgresSite
{
    QString host, port, database, user, password;
    /// "host" or "host:port", as the gateway takes it.
    QString Server() const;
};
PostgresSite ParsePostgresKind(const QString &kind);

/// The version sub keys of the RIS and PDS shell keys.
QString SiteRisVersion();
QString SitePdShellVersion();

struct SiteConfigOptions
{
    QString project;
    /// "sqlite", "ris" or "postgres=CONN", CONN being key=value pairs separated by ";" or
    /// blanks: host (or server), port, dbname (or database), user (or uid), password (or pwd).
    QString kind = QStringLiteral("sqlite");
    bool edge = false;
};

/// The user config file of the site: ConfigDir() + project + ".ini".
QString SiteUserConfigFile(const SiteLayout &layout, const QString &project);

/// Writes Registry.ini, Fendrix.ini and the user config file into ConfigDir(), and pdsperl.
void WriteSiteConfig(const SiteLayout &layout, const SiteConfigOptions &options);

/// Merges ConfigDir()'s Registry.ini and Fendrix.ini into those of a program folder, so that
/// the program there finds the site; the folder's other entries stay.
void InstallSiteConfig(const SiteLayout &layout, const QString &programDir);

} // namespace pdssim
