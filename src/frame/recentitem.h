#pragma once
// The recent list: keys "item0", "item1", ... of one settings section, newest first, no gaps.

#include <QString>
#include <QStringList>

namespace fx {

/// A most-recently-used list kept in a settings file.
class CRecentItem
{
public:
    /// Names the file and section of the list, its length and whether entries are files that
    /// must still exist to be listed.
    void Initialize(const QString &file, const QString &section, qint16 maxItems, bool checkExists);

    /// The entries, newest first; empty when there are none.
    QStringList GetRecentItems() const;

    /// Puts the trimmed text on top; an entry already listed moves there, and when the list is
    /// full the oldest entry falls off. Fails when the settings file is read-only.
    void PushRecentItem(const QString &text);

    /// Takes an entry out and closes the gap. Fails when the settings file is read-only.
    void RemoveRecentItem(const QString &text);

    /// Entries from "item0" to the first empty one, at most the list's length.
    qint32 GetItemCount() const;

    /// True if an entry equals the text.
    bool IsItemExisting(const QString &text) const;

private:
    QString Item(qint32 index) const;
    void RequireWritable() const;

    QString m_file;
    QString m_section;
    qint16 m_maxItems = 0;
    bool m_checkExists = false;
};

} // namespace fx
