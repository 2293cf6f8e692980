#pragma once
// A folder on a server, as a project stores it ("d:\pds\proj"), made into a path this computer
// can open: through the server's shares to "\\server\share\rest", then through the mount
// points of Fendrix.ini (section NetworkMounts) to a local folder.

#include <QString>

namespace fx {

/// The usable path of `path` on `server` (leading "\\" optional). A path that is not a drive
/// path stands as it is, but for "\\server\share\..." which goes through the mount points.
/// Fails on a blank server or path, and when the result does not exist.
QString LocalPath2UNC(const QString &server, const QString &path);

} // namespace fx
