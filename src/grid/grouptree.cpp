#include "grid/grouptree.h"

#include <algorithm>

namespace fx {

void GroupTree::SetClashes(std::vector<qint64> ids, qint32 approved)
{
    m_levels = 0;
    m_groups.clear();
    m_outermost.clear();
    m_rows.clear();
    m_rows.reserve(ids.size());
    for (const qint64 id : ids)
        m_rows.push_back({id, -1, false});
    m_clashCount = qint32(ids.size());
    m_approved = approved;
}

void GroupTree::SetGroups(int levels, const std::vector<CountedGroup> &innermost)
{
    if (levels <= 0) {
        SetClashes({}, 0);
        return;
    }
    m_levels = levels;
    m_groups.clear();
    m_outermost.clear();
    m_rows.clear();
    m_clashCount = 0;
    m_approved = 0;
    // The group now being filled at each level.
    std::vector<int> current(size_t(levels), -1);
    for (size_t i = 0; i < innermost.size(); ++i) {
        const CountedGroup &counted = innermost[i];
        const int firstNew = i == 0 ? 0 : std::clamp(counted.firstNewLevel, 0, levels - 1);
        for (int level = firstNew; level < levels; ++level) {
            ClashGroup group;
            group.value = counted.values.value(level);
            group.level = level;
            group.parent = level == 0 ? -1 : current[size_t(level - 1)];
            const int index = int(m_groups.size());
            if (level == 0)
                m_outermost.push_back(index);
            else
                m_groups[size_t(group.parent)].children.push_back(index);
            m_groups.push_back(std::move(group));
            current[size_t(level)] = index;
        }
        for (int group = current[size_t(levels - 1)]; group >= 0; group = m_groups[size_t(group)].parent) {
            m_groups[size_t(group)].count += counted.count;
            m_groups[size_t(group)].approved += counted.approved;
        }
        m_clashCount += counted.count;
        m_approved += counted.approved;
    }
    Layout();
}

QVariantList GroupTree::Path(int group) const
{
    QVariantList path;
    for (; group >= 0; group = Group(group).parent)
        path.prepend(Group(group).value);
    return path;
}

int GroupTree::GroupOfPath(const QVariantList &path) const
{
    const std::vector<int> *candidates = &m_outermost;
    int found = -1;
    for (const QVariant &value : path) {
        const auto match = std::find_if(candidates->begin(), candidates->end(), [&](int group) {
            const QVariant &own = Group(group).value;
            return own.isNull() == value.isNull() && (own.isNull() || own == value);
        });
        if (match == candidates->end())
            return -1;
        found = *match;
        candidates = &Group(found).children;
    }
    return found;
}

std::vector<int> GroupTree::OpenGroups() const
{
    std::vector<int> open;
    // Groups are made parents first, so index order puts outer groups before their children.
    for (int group = 0; group < GroupCount(); ++group)
        if (Group(group).open)
            open.push_back(group);
    return open;
}

int GroupTree::RowOfClash(qint64 clashId) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const GridRow &row) { return !row.band && row.clashId == clashId; });
    return found == m_rows.end() ? -1 : int(found - m_rows.begin());
}

int GroupTree::RowOfGroup(int group) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const GridRow &row) { return row.band && row.group == group; });
    return found == m_rows.end() ? -1 : int(found - m_rows.begin());
}

int GroupTree::BandAbove(int row) const
{
    const GridRow &at = Row(row);
    if (at.group < 0)
        return -1;
    const int above = at.band ? Group(at.group).parent : at.group;
    if (above < 0)
        return -1;
    // The band above stands before the row, so the search runs backwards from it.
    for (int candidate = row - 1; candidate >= 0; --candidate)
        if (m_rows[size_t(candidate)].band && m_rows[size_t(candidate)].group == above)
            return candidate;
    return -1;
}

void GroupTree::SetGroupClashes(int group, std::vector<qint64> ids)
{
    ClashGroup &target = m_groups[size_t(group)];
    target.ids = std::move(ids);
    target.idsRead = true;
}

void GroupTree::MarkOpen(int group, bool open)
{
    // An innermost group without its clashes stays closed rather than show none.
    m_groups[size_t(group)].open = open && (!IsInnermost(group) || Group(group).idsRead);
}

int GroupTree::RowsBeneath(int group) const
{
    const ClashGroup &at = Group(group);
    if (IsInnermost(group))
        return int(at.ids.size());
    int rows = 0;
    for (const int child : at.children)
        rows += 1 + (Group(child).open ? RowsBeneath(child) : 0);
    return rows;
}

void GroupTree::Open(int row)
{
    const int group = Row(row).group;
    if (!Row(row).band || Group(group).open)
        return;
    MarkOpen(group, true);
    if (!Group(group).open)
        return;
    std::vector<GridRow> beneath;
    AppendBeneath(group, beneath);
    m_rows.insert(m_rows.begin() + row + 1, beneath.begin(), beneath.end());
}

void GroupTree::Close(int row)
{
    const int group = Row(row).group;
    if (!Row(row).band || !Group(group).open)
        return;
    const int beneath = RowsBeneath(group);
    m_groups[size_t(group)].open = false;
    m_rows.erase(m_rows.begin() + row + 1, m_rows.begin() + row + 1 + beneath);
}

void GroupTree::Layout()
{
    if (m_levels == 0)
        return;
    m_rows.clear();
    for (const int group : m_outermost)
        AppendBand(group, m_rows);
}

qint64 GroupTree::MemoryBytes() const
{
    qint64 bytes = qint64(m_rows.capacity() * sizeof(GridRow) + m_groups.capacity() * sizeof(ClashGroup));
    for (const ClashGroup &group : m_groups)
        bytes += qint64(group.children.capacity() * sizeof(int) + group.ids.capacity() * sizeof(qint64));
    return bytes;
}

void GroupTree::AppendBand(int group, std::vector<GridRow> &rows) const
{
    rows.push_back({-1, group, true});
    if (Group(group).open)
        AppendBeneath(group, rows);
}

void GroupTree::AppendBeneath(int group, std::vector<GridRow> &rows) const
{
    if (IsInnermost(group)) {
        for (const qint64 id : Group(group).ids)
            rows.push_back({id, group, false});
        return;
    }
    for (const int child : Group(group).children)
        AppendBand(child, rows);
}

} // namespace fx
