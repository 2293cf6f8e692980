#pragma once
// The rows of the clash grid as the user sees them. Without group columns, one row per clash.
// With them, a band per group value, nested in the order of the group columns, and under an
// open band of the innermost level its clashes. Knows no SQL: the model reads the counts and
// the ids of a group and hands them in, so that a group's clashes are read only when it opens.
//
// Invariants: the rows are the bands of the outermost groups in order, each followed, while it
// is open, by the rows under it (its child bands with theirs, or its clashes). A group's count
// is the sum of its children's; an innermost group is opened only once its ids are in.

#include "grid/gridqueries.h"

#include <QVariant>
#include <QVariantList>

#include <vector>

namespace fx {

/// One group: a value of its level's column under the values of its parents.
struct ClashGroup
{
    QVariant value;              ///< the level's value; null for NULL
    int level = 0;               ///< 0 for the outermost group column
    int parent = -1;             ///< the group of the level above; -1 at level 0
    qint32 count = 0;            ///< clashes in the group
    qint32 approved = 0;         ///< of them approved
    bool open = false;           ///< its rows are shown, or will be when its parents open
    bool idsRead = false;        ///< innermost level: `ids` hold its clashes
    std::vector<int> children;   ///< groups of the next level, in order
    std::vector<qint64> ids;     ///< innermost level: its clashes in the grid's order
};

/// A row of the grid: a clash, or the band of a group.
struct GridRow
{
    qint64 clashId = -1; ///< the clash; -1 on a band
    qint32 group = -1;   ///< the band's group, or the innermost group of the clash; -1 without groups
    bool band = false;
};

/// The grid's rows over the groups and clashes of one reading.
class GroupTree
{
public:
    /// No groups: one row per clash, in this order.
    void SetClashes(std::vector<qint64> ids, qint32 approved);
    /// Groups of `levels` columns from their innermost groups in order, all closed.
    void SetGroups(int levels, const std::vector<CountedGroup> &innermost);

    /// Group columns; 0 without groups.
    int Levels() const { return m_levels; }
    int RowCount() const { return int(m_rows.size()); }
    const GridRow &Row(int row) const { return m_rows[size_t(row)]; }
    int GroupCount() const { return int(m_groups.size()); }
    const ClashGroup &Group(int group) const { return m_groups[size_t(group)]; }
    /// True for a group of the innermost level, whose rows are clashes.
    bool IsInnermost(int group) const { return Group(group).level == m_levels - 1; }

    /// Clashes of the reading, in rows or not, and of them approved.
    qint32 ClashCount() const { return m_clashCount; }
    qint32 ApprovedCount() const { return m_approved; }

    /// The values of a group and its parents, outermost first.
    QVariantList Path(int group) const;
    /// The group of those values; -1 when there is none.
    int GroupOfPath(const QVariantList &path) const;
    /// The groups now open, outer ones before their children.
    std::vector<int> OpenGroups() const;

    /// The row of a clash; -1 when it is not in the rows.
    int RowOfClash(qint64 clashId) const;
    /// The row of a group's band; -1 when it is not in the rows.
    int RowOfGroup(int group) const;
    /// The row of the band above `row` (its parent group's band); -1 at the outermost level.
    int BandAbove(int row) const;

    /// Gives an innermost group its clashes; needed before it opens.
    void SetGroupClashes(int group, std::vector<qint64> ids);
    /// Marks a group open or closed without laying the rows out again (see Layout).
    void MarkOpen(int group, bool open);
    /// The rows the band of `group` shows beneath it while open.
    int RowsBeneath(int group) const;
    /// Opens the band at `row`: its rows follow it, RowsBeneath of them.
    void Open(int row);
    /// Closes the band at `row`: the rows beneath it go.
    void Close(int row);
    /// The rows anew from the groups' open marks.
    void Layout();

    /// Bytes held by the rows and the groups, roughly.
    qint64 MemoryBytes() const;

private:
    void AppendBand(int group, std::vector<GridRow> &rows) const;
    void AppendBeneath(int group, std::vector<GridRow> &rows) const;

    int m_levels = 0;
    std::vector<ClashGroup> m_groups;
    std::vector<int> m_outermost; ///< level-0 groups in order
    std::vector<GridRow> m_rows;
    qint32 m_clashCount = 0;
    qint32 m_approved = 0;
};

} // namespace fx
