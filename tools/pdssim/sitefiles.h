#pragma once
// Every file of a simulated site but its schema: control file, proj_file, the settings that
// point Fendrix at the site, and the project folder's seed files. The model design files
// follow the schema's model list (WriteModelFiles of projectfiles.h).

#include "pdssim/dgnfile.h"
#include "pdssim/sitelayout.h"

#include <QString>

namespace pdssim {

struct SiteFilesOptions
{
    QString project;
    QString kind = QStringLiteral("sqlite"); ///< as SiteConfigOptions::kind
    bool edge = false;
    DgnSettings dgn; ///< of the project's seed files and its models
};

/// Writes the site's files for `options`; the hard cases of an edge site go into the manifest.
void WriteSiteFiles(const SiteLayout &layout, const SiteFilesOptions &options);

} // namespace pdssim
