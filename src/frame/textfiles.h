#pragma once
// Text replacement in a file, and finding a file below a folder.

#include <QString>

namespace fx {

/// Writes `source` to `target` with every `find` replaced by `replace`, case-sensitive and
/// within lines. Works through a scratch file in TEMP, so large files are never held whole and
/// the target may be the source.
void ReplaceInFile(const QString &source, const QString &target, const QString &find, const QString &replace);

/// The full path of the first file called `name` (case ignored) in `startFolder`, else in its
/// sub folders depth first, all in name order; "" if there is none.
QString FindFile(const QString &startFolder, const QString &name);

} // namespace fx
