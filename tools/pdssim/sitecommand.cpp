#include "pdssim/commands.h"

#include <cstdio>

namespace pdssim {

int RunSite(const QStringList &args)
{
    (void)args;
    // UNFINISHED: the pieces of a site are being built; this command puts them together.
    std::fprintf(stderr, "pdssim site: not assembled yet\n");
    return 1;
}

} // namespace pdssim
