#pragma once
// The temporary folder the environment names, and the one the process works in.

#include <QString>

namespace fx {

/// TEMP, else TMPDIR, else /tmp; with a trailing separator. A variable set but blank counts as unset.
QString GetTempEnvDir();

/// The process's temporary folder: the one start-up made when it exists, else GetTempEnvDir();
/// with a trailing separator.
QString GetTempFolder();

} // namespace fx
