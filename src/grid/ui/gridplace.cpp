#include "grid/ui/gridplace.h"

#include "grid/clashgridmodel.h"

#include <QItemSelection>
#include <QSet>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

namespace fx {

GridPlace RememberPlace(const QTableView &table, const ClashGridModel &model)
{
    GridPlace place;
    const QModelIndex current = table.currentIndex();
    if (current.isValid() && current.row() < model.rowCount()) {
        place.clashId = model.ClashIdOfRow(current.row());
        place.band = model.GroupPathOfRow(current.row());
        place.column = current.column();
    }
    place.left = table.horizontalScrollBar()->value();
    place.top = table.verticalScrollBar()->value();
    return place;
}

void RestorePlace(QTableView &table, const ClashGridModel &model, const GridPlace &place)
{
    // The scroll ranges follow a reset only at the next layout; settle them first.
    table.doItemsLayout();
    table.horizontalScrollBar()->setValue(place.left);
    table.verticalScrollBar()->setValue(place.top);
    const int row = place.clashId >= 0 ? model.RowOfClash(place.clashId) : model.RowOfGroupPath(place.band);
    // Made current as a click would: the row alone selected, scrolled into view if it left it.
    if (row >= 0)
        table.selectionModel()->setCurrentIndex(model.index(row, std::max(place.column, 0)),
                                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

std::vector<int> SelectedRows(const QTableView &table, const ClashGridModel &model)
{
    // From the ranges: the selection model's own row list tests every row against every range.
    std::vector<int> rows;
    if (!table.selectionModel())
        return rows;
    for (const QItemSelectionRange &range : table.selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            if (!model.IsBand(row))
                rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void SelectClashRows(QTableView &table, const ClashGridModel &model, const QList<qint64> &clashIds)
{
    // One pass over the rows: a lookup of each id would walk them once an id.
    const QSet<qint64> wanted(clashIds.cbegin(), clashIds.cend());
    std::vector<int> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        if (!model.IsBand(row) && wanted.contains(model.ClashIdOfRow(row)))
            rows.push_back(row);
    if (rows.empty()) {
        table.selectionModel()->clearSelection();
        return;
    }
    // The first id given is the current clash, as a single selection makes it.
    const int current = model.RowOfClash(clashIds.front());
    table.selectionModel()->setCurrentIndex(model.index(current >= 0 ? current : rows.front(), 0),
                                            QItemSelectionModel::NoUpdate);
    // Runs of neighbouring rows as one range each: a selection of many rows stays small.
    QItemSelection selection;
    const int lastColumn = model.columnCount() - 1;
    for (size_t first = 0; first < rows.size();) {
        size_t last = first;
        while (last + 1 < rows.size() && rows[last + 1] <= rows[last] + 1)
            ++last;
        selection.select(model.index(rows[first], 0), model.index(rows[last], lastColumn));
        first = last + 1;
    }
    table.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace fx
