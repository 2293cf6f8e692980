#pragma once
// Whether another process holds a file open for writing.

#include <QString>

namespace fx {

/// True if a process other than this one has the file open for writing (write-only or
/// read-write). A missing file is not in use. Only Linux can tell (through /proc); elsewhere false.
bool IsFileOpenForWritingElsewhere(const QString &path);

} // namespace fx
