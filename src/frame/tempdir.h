#pragma once
// The temporary folder the environment names, and the one the process works in.

#include <QString>

namespace fx {

/// TEMP, else TMPDIR, else /tmp; with a trailing separator. A variable set but blank counts as unset.
QString GetTempEnvDir();

/// The process's temporary folder: the one start-up made when it exists, else GetTempEnvDir();
/// with a trailing separator.
QString GetTempFolder();

/// Makes the main window's private folder inside the process's temporary folder, where the
/// working copies of its projects lie, and gives it with a trailing separator.
QString CreateTempDir();

/// Removes a folder that CreateTempDir made, with all in it; the temporary folder itself is
/// never removed. Never fails.
void RemoveTempDir(const QString &folder);

} // namespace fx
