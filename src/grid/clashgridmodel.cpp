#include "grid/clashgridmodel.h"

#include "frame/failure.h"
#include "frame/translation.h"
#include "grid/messages.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashview.h"

#include <QDateTime>
#include <QThread>

#include <algorithm>
#include <optional>

namespace fx {

namespace {

QString Bracket(const QString &name)
{
    return QLatin1Char('[') + name + QLatin1Char(']');
}

// "discipline_a: Piping (12 clashes: 3 approved, 9 unapproved)"; NULL named as the filter names it.
QString GroupBandText(const QString &column, const ClashGroup &group)
{
    const QString value = group.value.isNull() ? QStringLiteral("NULL") : group.value.toString();
    return TranslateText(ArgForm(msg::GridGroupBand, {column, value, QString::number(group.count), QString::number(group.approved),
                                                      QString::number(std::max(0, group.count - group.approved))}));
}

} // namespace

ClashGridModel::ClashGridModel(QObject *parent) : QAbstractTableModel(parent)
{
    Frame("ClashGridModel", [&] {
        // A header click sorts all rows of an unindexed column; SQLite's sorter may share that
        // work out to helper threads, a fifth less time at half a million rows.
        ClashConnection().Execute(QStringLiteral("PRAGMA threads = %1;").arg(std::max(1, QThread::idealThreadCount())));
        ReadColumns();
        ReadRows(true, {});
    });
}

void ClashGridModel::ReadColumns()
{
    const QStringList oldNames = m_columnNames;
    m_columnNames.clear();
    m_columns.clear();
    const Recordset info = ClashConnection().Read(QStringLiteral("SELECT name, type FROM pragma_table_info('clashes');"));
    for (const QVariantList &row : info.Rows()) {
        const QString name = row.at(0).toString();
        const QString type = row.at(1).toString().toUpper();
        m_columnNames << name;
        m_columns.append({name, type.contains(QLatin1String("DATE")) || type.contains(QLatin1String("TIME"))});
    }
    // Filter texts follow their columns by name when the table was made anew.
    QStringList texts;
    for (const QString &name : std::as_const(m_columnNames))
        texts << (oldNames.indexOf(name) >= 0 ? m_filterTexts.value(oldNames.indexOf(name)) : QString());
    m_filterTexts = texts;
    m_actionDisciplineColumn = ColumnOf(QStringLiteral("action_discipline"));
    m_reviewDateColumn = ColumnOf(QStringLiteral("recent_review_date"));
    // A sort or group column that the new table lacks would fail every statement.
    m_groupColumns.removeIf([&](const QString &column) { return ColumnOf(column) < 0; });
    if (std::any_of(m_sortKeys.begin(), m_sortKeys.end(), [&](const GridSortKey &key) { return ColumnOf(key.column) < 0; })) {
        m_sortKeys.clear();
        m_sort.clear();
    }
}

void ClashGridModel::ReadRows(bool countApproved, const QList<QVariantList> &open)
{
    const QString filter = GetGridFilter();
    GroupTree rows;
    if (m_groupColumns.isEmpty()) {
        ClashIdList list = ReadClashIds(filter, m_sortKeys, countApproved);
        rows.SetClashes(std::move(list.ids), countApproved ? list.approved : m_rows.ApprovedCount());
    } else {
        rows.SetGroups(int(m_groupColumns.size()), ReadClashGroups(m_groupColumns, filter, m_sortKeys));
        Reopen(rows, open, filter);
    }
    beginResetModel();
    m_rows = std::move(rows);
    InvalidateCache();
    endResetModel();
}

void ClashGridModel::Reopen(GroupTree &rows, const QList<QVariantList> &paths, const QString &filter) const
{
    std::vector<int> groups;
    QList<QVariantList> innermost;
    std::vector<int> innermostGroups;
    for (const QVariantList &path : paths) {
        const int group = rows.GroupOfPath(path);
        if (group < 0)
            continue;
        if (rows.IsInnermost(group)) {
            innermost << path;
            innermostGroups.push_back(group);
        } else {
            groups.push_back(group);
        }
    }
    if (!innermost.isEmpty()) {
        std::vector<std::vector<qint64>> ids = ReadGroupClashIds(m_groupColumns, innermost, filter, m_sortKeys);
        for (size_t i = 0; i < innermostGroups.size(); ++i) {
            rows.SetGroupClashes(innermostGroups[i], std::move(ids[i]));
            groups.push_back(innermostGroups[i]);
        }
    }
    for (const int group : groups)
        rows.MarkOpen(group, true);
    rows.Layout();
}

int ClashGridModel::Refresh(qint64 keepClashId)
{
    return Frame("ClashGridModel::Refresh", [&] {
        const QList<QVariantList> open = OpenGroupPaths();
        beginResetModel();
        ReadColumns();
        endResetModel();
        ReadRows(true, open);
        return keepClashId < 0 ? -1 : RowOfClash(keepClashId);
    });
}

int ClashGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.RowCount();
}

int ClashGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columnNames.size());
}

const QVariantList *ClashGridModel::CachedRow(int row) const
{
    const int block = row / BlockSize;
    const int first = block * BlockSize;
    auto cached = m_cacheIndex.find(block);
    if (cached != m_cacheIndex.end()) {
        m_cache.splice(m_cache.begin(), m_cache, cached->second);
        return &m_cache.front().second.at(size_t(row - first));
    }

    const int count = std::min<int>(BlockSize, rowCount() - first);
    QStringList ids;
    std::unordered_map<qint64, int> place;
    for (int i = 0; i < count; ++i) {
        const GridRow &row = m_rows.Row(first + i);
        if (row.band)
            continue;
        ids << QString::number(row.clashId);
        place.emplace(row.clashId, i);
    }
    Block rows(size_t(count), QVariantList(m_columnNames.size()));
    SqliteStatement statement(ClashConnection(),
                              QStringLiteral("SELECT * FROM [clashes] WHERE clash_id IN (") + ids.join(QLatin1Char(',')) + QStringLiteral(");"));
    const int idColumn = int(m_columnNames.indexOf(QStringLiteral("clash_id")));
    while (!ids.isEmpty() && statement.Step()) {
        const auto at = place.find(statement.Column(idColumn).toLongLong());
        if (at == place.end())
            continue;
        QVariantList &values = rows[size_t(at->second)];
        for (int c = 0; c < values.size(); ++c)
            values[c] = statement.Column(c);
    }
    ++m_blocksFetched;
    m_cache.emplace_front(block, std::move(rows));
    m_cacheIndex[block] = m_cache.begin();
    if (m_cache.size() > size_t(CachedBlocks)) {
        m_cacheIndex.erase(m_cache.back().first);
        m_cache.pop_back();
    }
    return &m_cache.front().second.at(size_t(row - first));
}

void ClashGridModel::InvalidateCache()
{
    m_cache.clear();
    m_cacheIndex.clear();
}

QVariant ClashGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    if (IsBand(index.row()))
        return BandData(index.row(), index.column(), role);
    const QString &name = m_columnNames.at(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return Frame("ClashGridModel::data", [&] { return CachedRow(index.row())->at(index.column()); });
    case Qt::TextAlignmentRole:
        if (!IsStructureColumn(name) && IsDisciplineColumn(name))
            return QVariant::fromValue(int(Qt::AlignCenter));
        return QVariant::fromValue(int(Qt::AlignLeft | Qt::AlignVCenter));
    case CellStyleRole:
        return QVariant::fromValue(CellStyleOf(name, data(index, Qt::DisplayRole).toString()));
    default:
        return {};
    }
}

QVariant ClashGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Horizontal && section >= 0 && section < columnCount())
        return m_columnNames.at(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags ClashGridModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() == m_actionDisciplineColumn && !IsReadOnly() && !IsBand(index.row()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool ClashGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() != m_actionDisciplineColumn || IsReadOnly()
        || IsBand(index.row()))
        return false;
    return Frame("ClashGridModel::setData", [&] {
        SqliteStatement update(ClashConnection(),
                               QStringLiteral("UPDATE [clashes] SET [action_discipline] = ?1, [recent_review_date] = ?2 WHERE clash_id = ?3;"));
        update.Bind(1, value.toString());
        update.Bind(2, StoreDateText(QDateTime::currentDateTime()));
        update.Bind(3, ClashIdOfRow(index.row()));
        update.Step();
        SetClashesChanged(true);
        // The row is read again when next shown; it keeps its place until the next refresh.
        const int block = index.row() / BlockSize;
        if (const auto cached = m_cacheIndex.find(block); cached != m_cacheIndex.end()) {
            m_cache.erase(cached->second);
            m_cacheIndex.erase(cached);
        }
        const int left = std::min(index.column(), m_reviewDateColumn < 0 ? index.column() : m_reviewDateColumn);
        const int right = std::max(index.column(), m_reviewDateColumn);
        Q_EMIT dataChanged(this->index(index.row(), left), this->index(index.row(), right));
        return true;
    });
}

void ClashGridModel::SetColumnFilter(int column, const QString &text)
{
    Frame("ClashGridModel::SetColumnFilter", [&] {
        if (column < 0 || column >= columnCount())
            return;
        if (column == m_reviewDateColumn && !text.isEmpty()) {
            m_filterTexts[column].clear();
            Raise(msg::GridFilteringNotAvailable, {m_columnNames.at(column)});
        }
        m_filterTexts[column] = text;
        ApplyFilter(column);
    });
}

void ClashGridModel::SetColumnFilters(const QStringList &texts)
{
    Frame("ClashGridModel::SetColumnFilters", [&] {
        QStringList wanted = texts;
        wanted.resize(columnCount());
        if (m_reviewDateColumn >= 0 && !wanted.at(m_reviewDateColumn).isEmpty())
            Raise(msg::GridFilteringNotAvailable, {m_columnNames.at(m_reviewDateColumn)});
        ClashRecordsetState &view = ClashRecordset();
        const QStringList textsBefore = m_filterTexts;
        const QString filterBefore = view.Filter;
        m_filterTexts = wanted;
        view.Filter = GridFilterExpression(m_columns, m_filterTexts);
        if (view.Filter == filterBefore)
            return;
        try {
            ReadRows(true, OpenGroupPaths());
        } catch (const Failure &) {
            // A refused statement left the rows as they were.
            m_filterTexts = textsBefore;
            view.Filter = filterBefore;
            throw;
        }
    });
}

void ClashGridModel::ApplyFilter(int column)
{
    const QString expression = GridFilterExpression(m_columns, m_filterTexts);
    ClashRecordsetState &view = ClashRecordset();
    if (expression == view.Filter)
        return;
    const QString before = view.Filter;
    view.Filter = expression;
    const QList<QVariantList> open = OpenGroupPaths();
    try {
        ReadRows(true, open);
    } catch (const Failure &) {
        // The cell that broke the statement is emptied; the grid goes on with the others.
        m_filterTexts[column].clear();
        view.Filter = GridFilterExpression(m_columns, m_filterTexts);
        try {
            ReadRows(true, open);
        } catch (const Failure &) {
            view.Filter = before;
            ReadRows(true, open);
        }
        throw;
    }
}

void ClashGridModel::SortByColumn(int column)
{
    Frame("ClashGridModel::SortByColumn", [&] {
        if (column < 0 || column >= columnCount())
            return;
        const QString name = Bracket(m_columnNames.at(column));
        const bool descending = m_sort.contains(name + QStringLiteral(" ASC")) || m_sort.contains(name + QStringLiteral(" DESC"));
        ApplySort(name + (descending ? QStringLiteral(" DESC") : QStringLiteral(" ASC")), {{m_columnNames.at(column), descending}});
    });
}

void ClashGridModel::ApplySort(const QString &sort, QList<GridSortKey> keys)
{
    m_sort = sort;
    m_sortKeys = std::move(keys);
    ReadRows(false, OpenGroupPaths());
}

void ClashGridModel::SetGroupColumns(const QStringList &columns)
{
    Frame("ClashGridModel::SetGroupColumns", [&] {
        QStringList known;
        for (const QString &column : columns)
            if (ColumnOf(column) >= 0 && !known.contains(column))
                known << column;
        const QStringList before = m_groupColumns;
        m_groupColumns = known;
        try {
            ReadRows(true, {});
        } catch (const Failure &) {
            m_groupColumns = before;
            throw;
        }
    });
}

void ClashGridModel::SetGroupOpen(int row, bool open)
{
    Frame("ClashGridModel::SetGroupOpen", [&] {
        if (row < 0 || row >= rowCount() || !IsBand(row))
            return;
        const int group = m_rows.Row(row).group;
        if (m_rows.Group(group).open == open)
            return;
        if (open && m_rows.IsInnermost(group) && !m_rows.Group(group).idsRead)
            m_rows.SetGroupClashes(group, std::move(ReadGroupClashIds(m_groupColumns, {m_rows.Path(group)}, GetGridFilter(),
                                                                      m_sortKeys).front()));
        const int beneath = m_rows.RowsBeneath(group);
        if (open) {
            if (beneath > 0)
                beginInsertRows({}, row + 1, row + beneath);
            m_rows.Open(row);
        } else {
            if (beneath > 0)
                beginRemoveRows({}, row + 1, row + beneath);
            m_rows.Close(row);
        }
        // The blocks hold rows by number, and the numbers below moved.
        InvalidateCache();
        if (beneath > 0 && open)
            endInsertRows();
        else if (beneath > 0)
            endRemoveRows();
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1), {GroupOpenRole});
    });
}

QVariantList ClashGridModel::GroupPathOfRow(int row) const
{
    return row >= 0 && row < rowCount() && IsBand(row) ? m_rows.Path(m_rows.Row(row).group) : QVariantList();
}

int ClashGridModel::RowOfGroupPath(const QVariantList &path) const
{
    const int group = path.isEmpty() ? -1 : m_rows.GroupOfPath(path);
    return group < 0 ? -1 : m_rows.RowOfGroup(group);
}

QList<QVariantList> ClashGridModel::OpenGroupPaths() const
{
    QList<QVariantList> paths;
    for (const int group : m_rows.OpenGroups())
        paths << m_rows.Path(group);
    return paths;
}

void ClashGridModel::OpenGroups(const QList<QVariantList> &paths)
{
    Frame("ClashGridModel::OpenGroups", [&] {
        if (m_groupColumns.isEmpty() || paths.isEmpty())
            return;
        GroupTree rows = m_rows;
        Reopen(rows, paths, GetGridFilter());
        beginResetModel();
        m_rows = std::move(rows);
        InvalidateCache();
        endResetModel();
    });
}

QVariant ClashGridModel::BandData(int row, int column, int role) const
{
    const ClashGroup &group = m_rows.Group(m_rows.Row(row).group);
    switch (role) {
    case Qt::DisplayRole:
        return column == 0 ? GroupBandText(m_groupColumns.value(group.level), group) : QVariant();
    case GroupLevelRole:
        return group.level;
    case GroupOpenRole:
        return group.open;
    default:
        return {};
    }
}

qint64 ClashGridModel::MemoryBytes() const
{
    qint64 bytes = m_rows.MemoryBytes();
    for (const auto &[block, rows] : m_cache)
        for (const QVariantList &row : rows) {
            bytes += qint64(sizeof(QVariantList) + row.size() * sizeof(QVariant));
            for (const QVariant &value : row)
                if (value.typeId() == QMetaType::QString)
                    bytes += value.toString().size() * 2;
        }
    return bytes;
}

} // namespace fx
