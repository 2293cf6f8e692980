#pragma once
// The commands of pdssim, each in a file of its own. Each takes the arguments after its name
// and gives the process's exit code; the RIS tools print what the real tools print.

#include <QStringList>

namespace pdssim {

int RunSite(const QStringList &args);      ///< site DIR --project NAME --clashes N [--seed S] [--kind K] [--edge] [--lock-owner-width W] [--models M]
int RunInstall(const QStringList &args);   ///< install SITE_DIR PROGRAM_DIR: the site's settings into a program folder
int RunRisBatch(const QStringList &args);  ///< risbatch --site DIR [-i infile] [-o outfile]
int RunRisUnload(const QStringList &args); ///< risunlod --site DIR -m w -o dump -f log -s schema table ...
int RunRisLoad(const QStringList &args);   ///< rislod --site DIR -m w -i dump -l log -b bad -c n -s schema ...
int RunRisClean(const QStringList &args);  ///< risclnsr --site DIR schema

} // namespace pdssim
