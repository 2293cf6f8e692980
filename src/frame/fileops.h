#pragma once
// File and folder operations that raise the program's own failures. An operation with a
// trailing `raiseOnError` switch, given false, leaves its failure in the saved failure
// (savedfailure.h) and answers false (or its documented empty result) instead of raising.

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <system_error>

namespace fx {

/// True if a file (or, with `isFolder`, a folder) is at the path.
bool IsFileExists(const QString &path, bool isFolder = false);

/// True if the file exists and its owner may not write it: the owner's write bit stands for
/// the read-only attribute, whoever the caller is.
bool IsFileReadOnly(const QString &path);

/// Copies a file over `target` (a file, or an existing folder to copy into), replacing it.
bool CopyFileA(const QString &source, const QString &target, bool raiseOnError = true);

/// Moves a file to `target` (a file, or an existing folder to move into), replacing it; also
/// across file systems.
bool MoveFileA(const QString &source, const QString &target, bool raiseOnError = true);

/// Deletes a file; a missing file is already deleted. Refuses a file another process writes.
bool DeleteFileA(const QString &path, bool raiseOnError = true);

/// Deletes a folder with everything below it; a missing folder is already deleted.
bool DeleteFolderA(const QString &folder, bool raiseOnError = true);

/// The time of the last change of the content; invalid for a missing file.
QDateTime GetFileLastModifiedDate(const QString &path);

/// The time the file was made where the file system keeps it, else its last status change.
QDateTime GetFileDateCreated(const QString &path);

/// The size in bytes; -1 when the file is missing and the switch says not to raise.
qint64 GetFileSize(const QString &path, bool raiseOnError = true);

/// The version stamped into the file: only the running program carries one; "" for all else.
QString GetFileVersion(const QString &path);

/// The lines of a text file; CR LF and LF both end a line. Empty when not raising on a failure.
QStringList ReadFile2Array(const QString &path, bool raiseOnError = true);

/// The whole text of a file. Empty when not raising on a failure.
QString ReadFile2String(const QString &path, bool raiseOnError = true);

/// The bytes of a file, undecoded, for a reader that tells the encoding itself.
QByteArray ReadFile2Bytes(const QString &path);

/// Raises when another process holds the file open for writing. Not raising, it answers true
/// for a file in use (and saves the failure), false otherwise.
bool IsFileAlreadyInUse(const QString &path, bool raiseOnError = true);

/// Raises "Error code: %0%" with the operating system's number and text of `error`.
[[noreturn]] void RaiseErrorCode(const std::error_code &error);

} // namespace fx
