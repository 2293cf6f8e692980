#pragma once
// .ini files on disk: a process-wide cache of parsed files, checked against the disk on every
// access, and writes that replace a file whole so that no reader ever sees half of one.

#include "frame/inidocument.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace fx {

/// Reading and writing of .ini files with the Windows private-profile behaviour.
///
/// Every call first compares the file's status (inode, size, modification and change times to
/// the nanosecond) with the cached copy, so an edit by another program is seen by the next
/// call. Reading never fails: a missing or unreadable file reads as empty. Thread-safe.
class IniFile
{
public:
    /// The file as it is now on disk; an empty document when it is missing or unreadable.
    /// The document does not change under the caller; take it once for many lookups that
    /// need not see edits in between.
    static std::shared_ptr<const IniDocument> Snapshot(const QString &path);

    /// One value, trimmed and unquoted; nullopt when the file, section or key is missing.
    /// The fast path for frequent lookups: a stat and two hash lookups.
    static std::optional<QString> Value(const QString &path, const QString &section, const QString &key);

    /// Key names of a section in file order; empty when it is missing.
    static QStringList KeyNames(const QString &path, const QString &section);

    /// Section names in file order.
    static QStringList SectionNames(const QString &path);

    /// Writes key=value; a null value removes the key, a null key the section. False when the
    /// file could not be written (a read-only file, a missing or locked folder).
    static bool Write(const QString &path, const QString &section, const std::optional<QString> &key,
                      const std::optional<QString> &value);

    /// Applies several edits with one write of the file.
    static bool Write(const QString &path, const std::vector<IniEdit> &edits);

    /// Makes sure the section exists, appending it empty if needed.
    static bool AddSection(const QString &path, const QString &section);
};

} // namespace fx
