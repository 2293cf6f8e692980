#pragma once
// The user's place in the clash grid and the rows selected in it, both by clash id (a band by
// its group's values), since every filter, sort and opened group gives the rows new numbers.

#include <QList>
#include <QVariantList>

#include <vector>

class QTableView;

namespace fx {

class ClashGridModel;

/// Where the user is: the clash or band of the current row, the current column and the scroll positions.
struct GridPlace
{
    qint64 clashId = -1;
    QVariantList band; ///< the group values of a current band
    int column = -1;
    int left = 0;
    int top = 0;
};

/// The place in `table` now; no clash when it has no current row.
GridPlace RememberPlace(const QTableView &table, const ClashGridModel &model);

/// Scrolls back to `place` and makes its clash current again if it is still in view.
void RestorePlace(QTableView &table, const ClashGridModel &model, const GridPlace &place);

/// The selected rows of `table`, in row order, each once; bands left out, as they are no clashes.
std::vector<int> SelectedRows(const QTableView &table, const ClashGridModel &model);

/// Selects exactly the rows of `clashIds` that are in view; the first of them becomes current.
void SelectClashRows(QTableView &table, const ClashGridModel &model, const QList<qint64> &clashIds);

} // namespace fx
