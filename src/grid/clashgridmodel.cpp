#include "grid/clashgridmodel.h"

#include "frame/failure.h"
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

} // namespace

ClashGridModel::ClashGridModel(QObject *parent) : QAbstractTableModel(parent)
{
    Frame("ClashGridModel", [&] {
        // A header click sorts all rows of an unindexed column; SQLite's sorter may share that
        // work out to helper threads, a fifth less time at half a million rows.
        ClashConnection().Execute(QStringLiteral("PRAGMA threads = %1;").arg(std::max(1, QThread::idealThreadCount())));
        ReadColumns();
        ReadIds();
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
}

void ClashGridModel::ReadIds(bool countApproved)
{
    const QString filter = GetGridFilter();
    // The status line's approved count comes with the ids, saving it a scan of its own. NOCASE
    // gives what the store's LCASE test gives for 'approved', at a fraction of its cost.
    const bool approvedColumn = countApproved && ColumnOf(QStringLiteral("status")) >= 0;
    QString sql = QStringLiteral("SELECT clash_id, ")
                  + (approvedColumn ? QStringLiteral("[status] = 'approved' COLLATE NOCASE") : QStringLiteral("0"))
                  + QStringLiteral(" FROM [clashes]");
    if (!filter.isEmpty())
        sql += QStringLiteral(" WHERE (") + filter + QLatin1Char(')');
    QStringList order;
    for (const SortKey &key : std::as_const(m_sortKeys))
        // With a filter, walking the sort column's index over all rows costs more than sorting the few that pass.
        order << (filter.isEmpty() ? QString() : QStringLiteral("+")) + Bracket(key.column)
                     + (key.descending ? QStringLiteral(" DESC") : QString());
    // The clash id last: rows of equal keys, and an unsorted grid, in clash order.
    order << QStringLiteral("clash_id");
    sql += QStringLiteral(" ORDER BY ") + order.join(QStringLiteral(", ")) + QLatin1Char(';');

    std::vector<qint64> ids;
    ids.reserve(m_ids.size());
    qint32 approved = 0;
    SqliteStatement statement(ClashConnection(), sql);
    while (statement.Step()) {
        ids.push_back(statement.Column(0).toLongLong());
        approved += statement.Column(1).toInt() == 1 ? 1 : 0;
    }
    beginResetModel();
    m_ids = std::move(ids);
    if (countApproved)
        m_approvedRows = approved;
    InvalidateCache();
    endResetModel();
}

int ClashGridModel::Refresh(qint64 keepClashId)
{
    return Frame("ClashGridModel::Refresh", [&] {
        beginResetModel();
        ReadColumns();
        endResetModel();
        ReadIds();
        return keepClashId < 0 ? -1 : RowOfClash(keepClashId);
    });
}

int ClashGridModel::RowOfClash(qint64 clashId) const
{
    const auto found = std::find(m_ids.begin(), m_ids.end(), clashId);
    return found == m_ids.end() ? -1 : int(found - m_ids.begin());
}

int ClashGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_ids.size());
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

    const int count = std::min<int>(BlockSize, int(m_ids.size()) - first);
    QStringList ids;
    std::unordered_map<qint64, int> place;
    for (int i = 0; i < count; ++i) {
        const qint64 id = m_ids[size_t(first + i)];
        ids << QString::number(id);
        place.emplace(id, i);
    }
    Block rows(size_t(count), QVariantList(m_columnNames.size()));
    SqliteStatement statement(ClashConnection(),
                              QStringLiteral("SELECT * FROM [clashes] WHERE clash_id IN (") + ids.join(QLatin1Char(',')) + QStringLiteral(");"));
    const int idColumn = int(m_columnNames.indexOf(QStringLiteral("clash_id")));
    while (statement.Step()) {
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
    if (index.isValid() && index.column() == m_actionDisciplineColumn && !IsReadOnly())
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool ClashGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() != m_actionDisciplineColumn || IsReadOnly())
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
            ReadIds();
        } catch (const Failure &) {
            // A refused statement left the ids as they were.
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
    try {
        ReadIds();
    } catch (const Failure &) {
        // The cell that broke the statement is emptied; the grid goes on with the others.
        m_filterTexts[column].clear();
        view.Filter = GridFilterExpression(m_columns, m_filterTexts);
        try {
            ReadIds();
        } catch (const Failure &) {
            view.Filter = before;
            ReadIds();
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

void ClashGridModel::SetGroupColumns(const QStringList &columns)
{
    Frame("ClashGridModel::SetGroupColumns", [&] {
        QStringList names;
        QList<SortKey> keys;
        for (const QString &column : columns) {
            if (ColumnOf(column) < 0)
                continue;
            names << Bracket(column);
            keys.append({column, false});
        }
        ApplySort(names.join(QStringLiteral(", ")), keys);
    });
}

void ClashGridModel::ApplySort(const QString &sort, QList<SortKey> keys)
{
    m_sort = sort;
    m_sortKeys = std::move(keys);
    ReadIds(false);
}

qint64 ClashGridModel::MemoryBytes() const
{
    qint64 bytes = qint64(m_ids.capacity() * sizeof(qint64));
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
