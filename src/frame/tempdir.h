#pragma once
// The temporary folder the environment names.

#include <QString>

namespace fx {

/// TEMP, else TMPDIR, else /tmp; with a trailing separator. A variable set but blank counts as unset.
QString GetTempEnvDir();

} // namespace fx
