#pragma once
// The system's temporary folder as the environment names it.

#include <QString>

namespace fx {

/// TEMP, else TMPDIR, else /tmp; with a trailing separator. Blank when TEMP is set but blank.
QString GetTempEnvDir();

} // namespace fx
