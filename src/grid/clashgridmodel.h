#pragma once
// The clash grid's model over `clashes`: for the current filter and sort it holds only the
// clash ids, from one query, and reads the cells of visible rows in blocks into a small cache,
// so that it stays quick and small at half a million rows. Headless: the ui layer turns
// CellStyle into colours and fonts, since the core links Qt Core only.

#include "grid/cellstyle.h"
#include "grid/gridfilter.h"

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
    /// Rows read at once.
    static constexpr int BlockSize = 256;
    /// Blocks kept in the cache.
    static constexpr int CachedBlocks = 16;

    /// A model over the open store's `clashes`, read at once.
    explicit ClashGridModel(QObject *parent = nullptr);

    /// Rows passing the filter.
    int rowCount(const QModelIndex &parent = {}) const override;
    /// Columns of `clashes`.
    int columnCount(const QModelIndex &parent = {}) const override;
    /// A cell's value (null for none), its alignment, or its CellStyle.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// The column names as headers.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// `action_discipline` is editable unless the project is read-only.
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Writes a picked `action_discipline`, stamps the row's review date, marks the store changed.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    /// Reads the columns and the ids again; gives the row of `keepClashId` afterwards, or -1.
    int Refresh(qint64 keepClashId = -1);
    /// The row showing `clashId`, or -1.
    int RowOfClash(qint64 clashId) const;
    /// The clash id of `row`.
    qint64 ClashIdOfRow(int row) const { return m_ids.at(size_t(row)); }
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

    /// Sorts by `column`: ascending the first time, descending ever after.
    void SortByColumn(int column);
    /// Sorts by the group columns in their order; an empty list leaves the clash id order.
    void SetGroupColumns(const QStringList &columns);
    /// The sort as written for the store, "[name] ASC" or "[a], [b]"; empty when unsorted.
    const QString &Sort() const { return m_sort; }

    /// Rows passing the filter whose status is approved, counted as the store counts them.
    qint32 ApprovedRows() const { return m_approvedRows; }

    /// Bytes held by the id list and the cache, roughly.
    qint64 MemoryBytes() const;
    /// Blocks read from the store since the model was made.
    qint64 BlocksFetched() const { return m_blocksFetched; }

private:
    struct SortKey
    {
        QString column;
        bool descending = false;
    };
    using Block = std::vector<QVariantList>;

    void ReadColumns();
    // `countApproved` false keeps the approved count: a new order leaves the same rows.
    void ReadIds(bool countApproved = true);
    void ApplyFilter(int column);
    void ApplySort(const QString &sort, QList<SortKey> keys);
    const QVariantList *CachedRow(int row) const;
    void InvalidateCache();

    QStringList m_columnNames;
    QList<GridFilterColumn> m_columns;
    QStringList m_filterTexts;
    QString m_sort;
    QList<SortKey> m_sortKeys;
    std::vector<qint64> m_ids;
    qint32 m_approvedRows = 0;
    int m_actionDisciplineColumn = -1;
    int m_reviewDateColumn = -1;

    // Most recently used block first; the map points into the list.
    mutable std::list<std::pair<int, Block>> m_cache;
    mutable std::unordered_map<int, std::list<std::pair<int, Block>>::iterator> m_cacheIndex;
    mutable qint64 m_blocksFetched = 0;
};

} // namespace fx

Q_DECLARE_METATYPE(fx::CellStyle)
