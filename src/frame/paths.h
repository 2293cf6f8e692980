#pragma once
// Path helpers. Both "\" and "/" are taken as separators (paths stored in a project are Windows
// paths); results use the native separator.

#include <QString>

namespace fx {

/// "\" and "/" turned into the native separator.
QString NativePath(const QString &path);

/// Trimmed; blank stays blank; exactly one trailing separator ensured.
QString AddBackslash(const QString &path);

/// The folder of a path with its trailing separator; a folder's result is its parent.
/// "c:\" and "c:" give the drive with a separator; a text without a separator gives "".
QString GetFolderOfPath(const QString &path);

/// What follows the last separator.
QString GetFileNameOfPath(const QString &path);

/// The file name up to its last dot.
QString GetBaseNameOfPath(const QString &path);

/// What follows the last dot of the file name; "" without one.
QString GetExtensionOfPath(const QString &path);

/// The path between double quotes.
QString QuotePath(const QString &path);

/// True if the text holds one of \ / : * ? " < > |.
bool HasSpecialChars(const QString &text);

/// The characters that HasSpecialChars looks for, as shown in its message.
QString SpecialChars();

} // namespace fx
