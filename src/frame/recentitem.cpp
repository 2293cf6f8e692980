#include "frame/recentitem.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/inifile.h"
#include "frame/messages.h"
#include "frame/settings.h"

#include <QFileInfo>

#include <vector>

namespace fx {

namespace {
QString KeyOf(qint32 index)
{
    return QStringLiteral("item") + QString::number(index);
}
} // namespace

void CRecentItem::Initialize(const QString &file, const QString &section, qint16 maxItems, bool checkExists)
{
    m_file = file;
    m_section = section;
    m_maxItems = maxItems;
    m_checkExists = checkExists;
}

QString CRecentItem::Item(qint32 index) const
{
    return GetIniValue(m_file, m_section, KeyOf(index), QString());
}

void CRecentItem::RequireWritable() const
{
    // Built whole, without an argument list: the path is part of the text.
    if (IsFileReadOnly(m_file))
        Raise(QString::fromUtf8(msg::FileWriteDenied).replace(QStringLiteral("%0%"), m_file));
}

QStringList CRecentItem::GetRecentItems() const
{
    return Frame("CRecentItem::GetRecentItems", [&] {
        QStringList items;
        for (qint32 i = 0; i < m_maxItems; ++i) {
            const QString item = Item(i);
            if (item.isEmpty())
                break;
            if (m_checkExists && !QFileInfo::exists(item))
                continue;
            items.append(item);
        }
        return items;
    });
}

void CRecentItem::PushRecentItem(const QString &text)
{
    Frame("CRecentItem::PushRecentItem", [&] {
        RequireWritable();
        const QString item = text.trimmed();
        if (IsItemExisting(item))
            RemoveRecentItem(item);
        // One write for the whole shift, so no reader sees the list half moved.
        std::vector<IniEdit> edits;
        for (qint32 i = GetItemCount() - 1; i >= 0; --i)
            if (i + 1 != m_maxItems)
                edits.push_back({m_section, KeyOf(i + 1), Item(i)});
        edits.push_back({m_section, KeyOf(0), item});
        IniFile::Write(m_file, edits);
    });
}

void CRecentItem::RemoveRecentItem(const QString &text)
{
    Frame("CRecentItem::RemoveRecentItem", [&] {
        RequireWritable();
        QStringList items;
        for (qint32 i = 0; i < m_maxItems; ++i) {
            const QString item = Item(i);
            if (item.isEmpty())
                break;
            items.append(item);
        }
        const qint32 at = qint32(items.indexOf(text));
        if (at < 0)
            return;
        std::vector<IniEdit> edits;
        for (qint32 i = at; i + 1 < items.size(); ++i)
            edits.push_back({m_section, KeyOf(i), items.at(i + 1)});
        edits.push_back({m_section, KeyOf(qint32(items.size()) - 1), std::nullopt});
        IniFile::Write(m_file, edits);
    });
}

qint32 CRecentItem::GetItemCount() const
{
    return Frame("CRecentItem::GetItemCount", [&] {
        qint32 count = 0;
        while (count < m_maxItems && !Item(count).isEmpty())
            ++count;
        return count;
    });
}

bool CRecentItem::IsItemExisting(const QString &text) const
{
    return Frame("CRecentItem::IsItemExisting", [&] {
        for (qint32 i = 0; i < m_maxItems; ++i) {
            const QString item = Item(i);
            if (item.isEmpty())
                return false;
            if (item == text)
                return true;
        }
        return false;
    });
}

} // namespace fx
