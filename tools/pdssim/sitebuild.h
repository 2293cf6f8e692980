#pragma once
// A whole simulated site, as `pdssim site` builds it.

#include <QString>

namespace pdssim {

/// What `pdssim site` is asked for.
struct SiteOptions
{
    QString root;
    QString project;
    qint64 clashes = 1000;
    quint64 seed = 1;
    QString kind = QStringLiteral("sqlite"); ///< sqlite, ris or postgres=CONN
    bool edge = false;
    /// The pdssim that the site's RIS tool wrappers run; this process's own when empty.
    QString pdssimExecutable;
    int lockOwnerWidth = 40; ///< the declared width of pdtable_102.lock_owner
    int models = 0;          ///< models of the project; 0: as many as the clash count makes
};

/// Builds the site: its schema of the kind asked, the manifest of its hard cases, the control
/// file, proj_file, settings, project and model files, and the RIS tools' wrappers.
void BuildSite(const SiteOptions &options);

} // namespace pdssim
