#pragma once
// One run of fendrix-cli: start-up checks, the project opened, the steps run, the project
// closed. The same procedures as the approval window, under the same permissions.

#include <QStringList>

#include <cstdio>

namespace fx::cli {

/// Runs the command line `args` (program name left out); output goes to `out`, failures to
/// standard error and the log. Gives the exit status: 0 when every step succeeded.
int RunCli(const QStringList &args, std::FILE *out = stdout);

} // namespace fx::cli
