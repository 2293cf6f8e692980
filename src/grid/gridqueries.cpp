#include "grid/gridqueries.h"

#include "frame/failure.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"

#include <algorithm>

namespace fx {

namespace {

// Bound values per statement stay far below SQLite's limit of parameters.
constexpr int kGroupsPerStatement = 500;

QString Bracket(const QString &name)
{
    return QLatin1Char('[') + name + QLatin1Char(']');
}

// 1 for an approved clash, as the status line counts it. NOCASE gives what the store's LCASE
// test gives for 'approved', at a fraction of its cost. A view without status counts none.
QString ApprovedTerm()
{
    const bool hasStatus =
        ClashConnection().Read(QStringLiteral("SELECT COUNT(*) FROM pragma_table_info('clashes') WHERE name = 'status';")).Value(0, 0).toInt() > 0;
    return hasStatus ? QStringLiteral("[status] = 'approved' COLLATE NOCASE") : QStringLiteral("0");
}

QString Where(const QString &filter)
{
    return filter.isEmpty() ? QString() : QStringLiteral(" WHERE (") + filter + QLatin1Char(')');
}

bool Descending(const QString &column, const QList<GridSortKey> &keys)
{
    return std::any_of(keys.begin(), keys.end(), [&](const GridSortKey &key) { return key.column == column && key.descending; });
}

// The sort keys, then the clash id: rows of equal keys, and an unsorted grid, in clash order.
// With a condition, walking a sort column's index over all rows costs more than sorting the
// few that pass, so `+` keeps SQLite off it.
QStringList OrderTerms(const QList<GridSortKey> &keys, bool conditioned)
{
    QStringList order;
    for (const GridSortKey &key : keys)
        order << (conditioned ? QStringLiteral("+") : QString()) + Bracket(key.column)
                     + (key.descending ? QStringLiteral(" DESC") : QString());
    order << QStringLiteral("clash_id");
    return order;
}

} // namespace

ClashIdList ReadClashIds(const QString &filter, const QList<GridSortKey> &keys, bool countApproved)
{
    return Frame("ReadClashIds", [&] {
        const QString sql = QStringLiteral("SELECT clash_id, ") + (countApproved ? ApprovedTerm() : QStringLiteral("0"))
                            + QStringLiteral(" FROM [clashes]") + Where(filter) + QStringLiteral(" ORDER BY ")
                            + OrderTerms(keys, !filter.isEmpty()).join(QStringLiteral(", ")) + QLatin1Char(';');
        ClashIdList list;
        SqliteStatement statement(ClashConnection(), sql);
        while (statement.Step()) {
            list.ids.push_back(statement.Column(0).toLongLong());
            list.approved += statement.Column(1).toInt() == 1 ? 1 : 0;
        }
        return list;
    });
}

std::vector<CountedGroup> ReadClashGroups(const QStringList &columns, const QString &filter, const QList<GridSortKey> &keys)
{
    return Frame("ReadClashGroups", [&] {
        QStringList order;
        for (const QString &column : columns)
            order << Bracket(column) + (Descending(column, keys) ? QStringLiteral(" DESC") : QString());
        // A group of an outer level ends where its value's rank changes: the store's collation
        // decides what is equal, so "Piping" and "piping" stay one group.
        QStringList ranks;
        for (qsizetype level = 0; level + 1 < columns.size(); ++level)
            ranks << QStringLiteral(", DENSE_RANK() OVER (ORDER BY ") + order.mid(0, level + 1).join(QStringLiteral(", "))
                         + QLatin1Char(')');
        QStringList names;
        QStringList shown;
        for (const QString &column : columns) {
            names << Bracket(column);
            // Of the values one group holds ("Piping", "piping"), the same one every time.
            shown << QStringLiteral("MIN(") + Bracket(column) + QStringLiteral(" COLLATE BINARY)");
        }
        const QString sql = QStringLiteral("SELECT ") + shown.join(QStringLiteral(", ")) + QStringLiteral(", COUNT(*), SUM(")
                            + ApprovedTerm() + QLatin1Char(')') + ranks.join(QString()) + QStringLiteral(" FROM [clashes]")
                            + Where(filter) + QStringLiteral(" GROUP BY ") + names.join(QStringLiteral(", "))
                            + QStringLiteral(" ORDER BY ") + order.join(QStringLiteral(", ")) + QLatin1Char(';');
        const int levels = int(columns.size());
        std::vector<CountedGroup> groups;
        std::vector<qint64> previousRanks(size_t(std::max(levels - 1, 0)), -1);
        SqliteStatement statement(ClashConnection(), sql);
        while (statement.Step()) {
            CountedGroup group;
            for (int level = 0; level < levels; ++level)
                group.values << statement.Column(level);
            group.count = statement.Column(levels).toInt();
            group.approved = statement.Column(levels + 1).toInt();
            group.firstNewLevel = levels - 1;
            for (int level = levels - 2; level >= 0; --level) {
                const qint64 rank = statement.Column(levels + 2 + level).toLongLong();
                if (rank != previousRanks[size_t(level)])
                    group.firstNewLevel = level;
                previousRanks[size_t(level)] = rank;
            }
            groups.push_back(std::move(group));
        }
        return groups;
    });
}

std::vector<std::vector<qint64>> ReadGroupClashIds(const QStringList &columns, const QList<QVariantList> &paths,
                                                   const QString &filter, const QList<GridSortKey> &keys)
{
    return Frame("ReadGroupClashIds", [&] {
        std::vector<std::vector<qint64>> lists(size_t(paths.size()));
        for (qsizetype first = 0; first < paths.size(); first += kGroupsPerStatement) {
            const qsizetype count = std::min<qsizetype>(kGroupsPerStatement, paths.size() - first);
            // One pass over the view for all the groups: each row is told its group by a CASE,
            // whose IS compares as the column's collation does, as the GROUP BY did.
            QString which = QStringLiteral("CASE");
            int parameter = 0;
            for (qsizetype i = 0; i < count; ++i) {
                QStringList terms;
                for (const QString &column : columns)
                    terms << Bracket(column) + QStringLiteral(" IS ?") + QString::number(++parameter);
                which += QStringLiteral(" WHEN ") + terms.join(QStringLiteral(" AND ")) + QStringLiteral(" THEN ") + QString::number(i);
            }
            which += QStringLiteral(" END");
            // SQLite lets the WHERE name the CASE by its alias.
            QString condition = QStringLiteral("fx_group IS NOT NULL");
            if (!filter.isEmpty())
                condition = QLatin1Char('(') + filter + QStringLiteral(") AND ") + condition;
            const QString sql = QStringLiteral("SELECT clash_id, ") + which + QStringLiteral(" AS fx_group FROM [clashes] WHERE ")
                                + condition + QStringLiteral(" ORDER BY fx_group, ")
                                + OrderTerms(keys, true).join(QStringLiteral(", ")) + QLatin1Char(';');
            SqliteStatement statement(ClashConnection(), sql);
            parameter = 0;
            for (qsizetype i = 0; i < count; ++i)
                for (qsizetype level = 0; level < columns.size(); ++level)
                    statement.Bind(++parameter, paths.at(first + i).value(level));
            while (statement.Step())
                lists[size_t(first + statement.Column(1).toLongLong())].push_back(statement.Column(0).toLongLong());
        }
        return lists;
    });
}

} // namespace fx
