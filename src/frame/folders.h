#pragma once
// Folder creation and the write test of a folder.

#include <QString>

namespace fx {

/// Makes a folder (and missing parents). Fails on a blank name, an existing folder, or when
/// the folder is not there afterwards.
void CreateFolderA(const QString &folder);

/// True if a file can be written into the folder; fails if the folder does not exist or the
/// test file does not appear.
bool IsFolderWritable(const QString &folder);

} // namespace fx
