#pragma once
// The statements that list the grid's rows: the clash ids of the whole view in the grid's
// order, the groups of the view counted by one GROUP BY, and the clash ids of chosen groups.
// Each runs on the open store's `clashes` under the grid filter it is given.

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <vector>

namespace fx {

/// One key of the grid's order: a column, ascending or descending.
struct GridSortKey
{
    QString column;
    bool descending = false;
};

/// The clash ids of the view in order, and how many of them are approved.
struct ClashIdList
{
    std::vector<qint64> ids;
    qint32 approved = 0;
};

/// The clash ids passing `filter` (a WHERE condition, empty for none), ordered by `keys` and
/// then by clash id. `countApproved` false leaves `approved` at 0 and saves the test per row.
ClashIdList ReadClashIds(const QString &filter, const QList<GridSortKey> &keys, bool countApproved);

/// A group of the innermost group column as the store counts it.
struct CountedGroup
{
    QVariantList values;  ///< one per group column, outermost first; null for NULL
    qint32 count = 0;     ///< clashes in the group
    qint32 approved = 0;  ///< of them approved
    int firstNewLevel = 0; ///< the outermost level at which this group starts a new group
};

/// The groups of `columns` among the clashes passing `filter`, one GROUP BY: in the order of
/// the columns' values, a level descending where `keys` sorts its column descending. Values
/// equal under the column's collation are one group, whatever their case.
std::vector<CountedGroup> ReadClashGroups(const QStringList &columns, const QString &filter, const QList<GridSortKey> &keys);

/// The clash ids of each group of `paths` (the values of `columns`, as ReadClashGroups gave
/// them) passing `filter`, each list ordered by `keys` and then by clash id.
std::vector<std::vector<qint64>> ReadGroupClashIds(const QStringList &columns, const QList<QVariantList> &paths,
                                                   const QString &filter, const QList<GridSortKey> &keys);

} // namespace fx
