#pragma once
// The PDS control file of a simulated site: a Perl script of the PDS shell that sets
// PROJ_ADDR and PROJ_FILE, with data after its __END__ marker as real control files have.

#include "pdssim/sitelayout.h"

namespace pdssim {

struct ControlFileOptions
{
    /// Adds a second "__END__" among the data lines, so a probe goes in twice.
    bool edge = false;
};

/// Writes SiteLayout::ControlFile(): PROJ_ADDR is the site's server, PROJ_FILE the server path
/// of the proj_file folder.
void WriteControlFile(const SiteLayout &layout, const ControlFileOptions &options);

} // namespace pdssim
