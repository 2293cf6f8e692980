#pragma once
// The clash grid's model over `clashes`: for the current filter and sort it holds only the
// clash ids, from one query, and reads the cells of visible rows in blocks into a small cache,
// so that it stays quick and small at half a million rows. Grouped, it holds the groups'
// counts from one GROUP BY and the ids of the open groups only (GroupTree). Headless: the ui
// layer turns CellStyle into colours and fonts and draws the bands, since the core links Qt
// Core only.

#include "grid/cellstyle.h"
#include "grid/gridfilter.h"
#include "grid/gridqueries.h"
#include "grid/grouptree.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>
#include <QVariant>

#include <list>
#include <unordered_map>
#include <vector>

namespace fx {

/// The model of the clash grid.
class ClashGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// The role that gives a cell's CellStyle.
    static constexpr int CellStyleRole = Qt::UserRole + 1;
    /// On a band: the level of its group, 0 for the outermost group column; nothing on a clash.
    static constexpr int GroupLevelRole = Qt::UserRole + 2;
    /// On a band: true while its group is open.
    static constexpr int GroupOpenRole = Qt::UserRole + 3;
    /// Rows read at once.
    static constexpr int BlockSize = 256;
    /// Blocks kept in the cache.
    static constexpr int CachedBlocks = 16;

    /// A model over the open store's `clashes`, read at once.
    explicit ClashGridModel(QObject *parent = nullptr);

    /// Rows shown: clashes, and with groups the bands and the clashes of open groups.
    int rowCount(const QModelIndex &parent = {}) const override;
    /// Columns of `clashes`.
    int columnCount(const QModelIndex &parent = {}) const override;
    /// A cell's value (null for none), its alignment, or its CellStyle; on a band, its text in
    /// the first column, its level and whether it is open.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// The column names as headers.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// `action_discipline` of a clash is editable unless the project is read-only.
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Writes a picked `action_discipline`, stamps the row's review date, marks the store changed.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    /// Reads the columns and the rows again, open groups staying open; gives the row of
    /// `keepClashId` afterwards, or -1.
    int Refresh(qint64 keepClashId = -1);
    /// The row showing `clashId`, or -1 (also while its group is closed).
    int RowOfClash(qint64 clashId) const { return m_rows.RowOfClash(clashId); }
    /// The clash id of `row`; -1 on a band.
    qint64 ClashIdOfRow(int row) const { return m_rows.Row(row).clashId; }
    /// True when `row` is the band of a group.
    bool IsBand(int row) const { return m_rows.Row(row).band; }
    /// The clashes of the band at `row`; 0 on a clash.
    qint32 GroupCountOfRow(int row) const { return IsBand(row) ? m_rows.Group(m_rows.Row(row).group).count : 0; }
    /// The column's index by name, or -1.
    int ColumnOf(const QString &name) const { return int(m_columnNames.indexOf(name)); }
    /// The column names in table order.
    const QStringList &ColumnNames() const { return m_columnNames; }

    /// Puts `text` in the filter cell of `column` and filters the grid anew.
    void SetColumnFilter(int column, const QString &text);
    /// Puts all filter cells at once (by column index) and filters the grid one time. When the
    /// store refuses the condition, nothing changes and the failure goes on; applying the cells
    /// one by one then finds the cell at fault.
    void SetColumnFilters(const QStringList &texts);
    /// The text of a filter cell.
    QString ColumnFilter(int column) const { return m_filterTexts.value(column); }

    /// Sorts by `column`, within the groups: ascending the first time, descending ever after.
    void SortByColumn(int column);
    /// The sort as written for the store, "[name] ASC" or "[name] DESC"; empty when unsorted.
    const QString &Sort() const { return m_sort; }

    /// Groups the rows by these columns, outermost first, every group closed; an empty list
    /// shows the clashes alone again. Unknown columns are left out; the sort stays.
    void SetGroupColumns(const QStringList &columns);
    /// The group columns, outermost first.
    const QStringList &GroupColumns() const { return m_groupColumns; }
    /// Opens or closes the band at `row`; an innermost group's clashes are read, in the grid's
    /// order, when it first opens. Nothing for a clash row.
    void SetGroupOpen(int row, bool open);
    /// The values of the group columns that lead to the band at `row`; empty on a clash.
    QVariantList GroupPathOfRow(int row) const;
    /// The row of the band of `path`; -1 when it is not in the rows.
    int RowOfGroupPath(const QVariantList &path) const;
    /// The row of the band that holds `row`; -1 for none.
    int BandAbove(int row) const { return m_rows.BandAbove(row); }
    /// The paths of the open groups, outer ones first.
    QList<QVariantList> OpenGroupPaths() const;
    /// Opens the groups of these paths that the rows have, reading their clashes in one pass.
    void OpenGroups(const QList<QVariantList> &paths);

    /// Clashes passing the filter, in rows or in closed groups.
    qint32 ClashCount() const { return m_rows.ClashCount(); }
    /// Of them approved, counted as the store counts them.
    qint32 ApprovedRows() const { return m_rows.ApprovedCount(); }

    /// Bytes held by the rows, the groups and the cache, roughly.
    qint64 MemoryBytes() const;
    /// Blocks read from the store since the model was made.
    qint64 BlocksFetched() const { return m_blocksFetched; }

private:
    using Block = std::vector<QVariantList>;

    void ReadColumns();
    // `countApproved` false keeps the approved count: a new order leaves the same rows.
    // The groups of `open` are opened again where the new rows have them.
    void ReadRows(bool countApproved, const QList<QVariantList> &open);
    void Reopen(GroupTree &rows, const QList<QVariantList> &paths, const QString &filter) const;
    QVariant BandData(int row, int column, int role) const;
    void ApplyFilter(int column);
    void ApplySort(const QString &sort, QList<GridSortKey> keys);
    const QVariantList *CachedRow(int row) const;
    void InvalidateCache();

    QStringList m_columnNames;
    QList<GridFilterColumn> m_columns;
    QStringList m_filterTexts;
    QString m_sort;
    QList<GridSortKey> m_sortKeys;
    QStringList m_groupColumns;
    GroupTree m_rows;
    int m_actionDisciplineColumn = -1;
    int m_reviewDateColumn = -1;

    // Most recently used block first; the map points into the list.
    mutable std::list<std::pair<int, Block>> m_cache;
    mutable std::unordered_map<int, std::list<std::pair<int, Block>>::iterator> m_cacheIndex;
    mutable qint64 m_blocksFetched = 0;
};

} // namespace fx

Q_DECLARE_METATYPE(fx::CellStyle)
