#pragma once
// The server a simulated site stands for: its name, the share that holds the site, and the
// Windows paths that the project list and the schema store for the site's folders.

#include "pdssim/sitelayout.h"

#include <QString>

namespace pdssim {

/// The server's name as PROJ_ADDR and the schema's network_address give it.
QString SiteServer();
/// The share that holds the whole site, and the server folder it shares.
QString SiteShareName();
QString SiteShareFolder();
/// "\\server\share": the key of the site's mount point in [NetworkMounts].
QString SiteShareUnc();

/// A folder or file below the site's root as the server names it ("D:\PDS\proj\").
/// A folder keeps its trailing separator as a backslash.
QString ServerPath(const SiteLayout &layout, const QString &localPath);
/// The reverse of ServerPath: a server path below the share as a path below the root.
QString LocalPathOf(const SiteLayout &layout, const QString &serverPath);

} // namespace pdssim
