#pragma once
// The grid's columns as Config.ini keeps them between runs: order, width and filter text under
// the column's name in the sections ColumnsOrder, ColumnsWidth and ColumnsFilter.

#include <QList>
#include <QString>

#include <optional>

namespace fx {

/// One column as it is saved.
struct SavedColumn
{
    QString name;
    int order = 0;
    int width = 0;
    QString filter;
};

/// The saved place of `column` when it is a number from 0 to columnCount - 1; anything else
/// leaves the column where it is.
std::optional<int> SavedColumnOrder(const QString &column, int columnCount);

/// The saved width of `column`; nothing for a blank or non-numeric value.
std::optional<int> SavedColumnWidth(const QString &column);

/// The saved filter text of `column`, trimmed; always empty for `status`, whose filter
/// SetAutoFilter decides.
QString SavedColumnFilter(const QString &column);

/// Empties the three sections and writes every column of `columns`.
void SaveColumnSettings(const QList<SavedColumn> &columns);

} // namespace fx
