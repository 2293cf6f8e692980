#pragma once
// The grid's filter cells as one condition on `clashes`, and the value lists of their
// drop-downs.

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace fx {

/// One column of the grid as the filter needs it.
struct GridFilterColumn
{
    QString name;
    bool isDate = false;
};

/// The condition of one filter cell; empty for an empty text. "NULL" gives "= NULL", "*" is
/// the wildcard "%", and the user's quotes, "_" and "\" are made literal.
QString GridFilterTerm(const GridFilterColumn &column, const QString &text);

/// The conditions of all filter cells in column order, joined with " AND ".
QString GridFilterExpression(const QList<GridFilterColumn> &columns, const QStringList &texts);

/// The values offered by the drop-down of `column`: for a data row of `action_discipline`
/// the disciplines of the project, otherwise the values now in view ('NULL' for none). Always
/// holds one empty entry; sorted.
QStringList FilterValueList(const QString &column, bool dataRow = false);

/// Keeps a drop-down from being rebuilt more than once a second.
class DropDownGuard
{
public:
    /// True when the list may be built at `now`: more than one second after the last build.
    bool Due(const QDateTime &now) const;
    /// Notes a build at `now`.
    void Built(const QDateTime &now) { m_lastBuild = now; }

private:
    QDateTime m_lastBuild;
};

/// A drop-down's list, rebuilt only when its guard lets it.
class FilterDropDown
{
public:
    /// The list for `column`; the one last built when asked again within a second.
    const QStringList &List(const QString &column, bool dataRow, const QDateTime &now = QDateTime::currentDateTime());

private:
    DropDownGuard m_guard;
    bool m_building = false;
    QStringList m_list;
};

} // namespace fx
