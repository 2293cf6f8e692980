#pragma once
// The recent projects of the approval window: entries project + "|||" + control file in
// section RecentProjects of Config.ini, shown as the File menu's items "1 project (file)".

#include "frame/recentitem.h"

#include <QList>
#include <QString>

namespace fx {

/// Splits a recent item's caption "i project (controlFile)": the second word is the project,
/// the rest less " (" and ")" the control file. Raises "False config in ini file." for fewer
/// than two words or an empty first word; a project with a blank comes out cut.
void ParseRecentProject(const QString &caption, QString &project, QString &controlFile);

/// One recent item of the File menu as the window shows it.
struct RecentMenuItem
{
    QString key;     ///< Menu_File_RecentProject1 to 10
    QString caption; ///< "i project (controlFile)"; empty when hidden
    QString tag;     ///< the stored entry
    bool visible = false;
};

/// What the File menu shows of the list.
struct RecentMenuState
{
    bool separatorVisible = false; ///< show Menu_File_MinusRecentProject; false leaves it as it is
    QList<RecentMenuItem> items;   ///< always ten
};

/// The list itself, over the recent-item store of the user's Config.ini.
class RecentProjects
{
public:
    /// The most entries the list keeps.
    static constexpr qint16 MaxEntries = 10;

    /// The list in `configFile`; empty: the user's Config.ini.
    explicit RecentProjects(const QString &configFile = QString());

    /// The stored form of an entry: project + "|||" + control file.
    static QString EntryOf(const QString &project, const QString &controlFile);

    /// The caption of entry `number` (from 1): number + " " + project + " (" + control file + ")".
    static QString CaptionOf(int number, const QString &entry);

    /// Puts the entry on top; an entry already listed moves there.
    void Add(const QString &project, const QString &controlFile);

    /// The stored entries, newest first.
    QStringList Entries() const;

    /// Adds `newEntry` (a stored entry) on top if it is not empty, then gives the menu's state.
    RecentMenuState RefreshRecentProjects(const QString &newEntry = QString());

private:
    CRecentItem m_items;
};

} // namespace fx
