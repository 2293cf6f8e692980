#include "approve/recentprojects.h"

#include "approve/menudefinition.h"
#include "approve/messages.h"
#include "frame/failure.h"
#include "frame/settings.h"

namespace fx {

namespace {
const QString kSeparator = QStringLiteral("|||");
}

void ParseRecentProject(const QString &caption, QString &project, QString &controlFile)
{
    Frame("ParseRecentProject", [&] {
        const QStringList words = caption.split(QLatin1Char(' '));
        if (words.size() < 2 || words.at(0).isEmpty())
            Raise(msg::FalseConfigInIniFile);
        project = words.at(1);
        QString rest = caption.mid(words.at(0).size() + 1 + project.size());
        if (rest.startsWith(QLatin1String(" (")))
            rest.remove(0, 2);
        if (rest.endsWith(QLatin1Char(')')))
            rest.chop(1);
        controlFile = rest;
    });
}

RecentProjects::RecentProjects(const QString &configFile)
{
    m_items.Initialize(configFile.isEmpty() ? GetConfigFile() : configFile, QStringLiteral("RecentProjects"), MaxEntries,
                       false);
}

QString RecentProjects::EntryOf(const QString &project, const QString &controlFile)
{
    return project + kSeparator + controlFile;
}

QString RecentProjects::CaptionOf(int number, const QString &entry)
{
    const qsizetype at = entry.indexOf(kSeparator);
    const QString project = at < 0 ? entry : entry.left(at);
    const QString controlFile = at < 0 ? QString() : entry.mid(at + kSeparator.size());
    return QString::number(number) + QLatin1Char(' ') + project + QStringLiteral(" (") + controlFile + QLatin1Char(')');
}

void RecentProjects::Add(const QString &project, const QString &controlFile)
{
    Frame("RecentProjects::Add", [&] { m_items.PushRecentItem(EntryOf(project, controlFile)); });
}

QStringList RecentProjects::Entries() const
{
    return m_items.GetRecentItems();
}

RecentMenuState RecentProjects::RefreshRecentProjects(const QString &newEntry)
{
    return Frame("RefreshRecentProjects", [&] {
        if (!newEntry.isEmpty())
            m_items.PushRecentItem(newEntry);
        const QStringList entries = Entries();
        RecentMenuState state;
        state.separatorVisible = !entries.isEmpty();
        for (int number = 1; number <= MaxEntries; ++number) {
            RecentMenuItem item{RecentProjectKey(number), {}, {}, false};
            if (number <= entries.size())
                item = {item.key, CaptionOf(number, entries.at(number - 1)), entries.at(number - 1), true};
            state.items.append(item);
        }
        return state;
    });
}

} // namespace fx
