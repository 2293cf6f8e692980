#include "pdssim/sitefiles.h"

#include "pdssim/controlfile.h"
#include "pdssim/projectfiles.h"
#include "pdssim/projfile.h"
#include "pdssim/siteconfig.h"

#include "frame/failure.h"

namespace pdssim {

void WriteSiteFiles(const SiteLayout &layout, const SiteFilesOptions &options)
{
    fx::Frame("WriteSiteFiles", [&] {
        WriteControlFile(layout, {options.edge});
        WriteProjFile(layout, {options.project, options.edge});
        WriteSiteConfig(layout, {options.project, options.kind, options.edge});
        WriteProjectFiles(layout, options.project, options.dgn);
    });
}

} // namespace pdssim
