#pragma once
// The parts of a ClashGridView and what they share, for the files that make up the view.

#include "grid/clashgridmodel.h"
#include "grid/gridfilter.h"
#include "grid/ui/clashgridview.h"
#include "grid/ui/filterheader.h"
#include "grid/ui/gridplace.h"
#include "grid/ui/gridtable.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QLabel;

namespace fx {

class GroupArea;
class ValuePopup;

struct ClashGridView::Parts
{
    GroupArea *groupArea = nullptr;
    QLabel *caption = nullptr;
    GridTable *table = nullptr;
    FilterHeader *header = nullptr;
    ValuePopup *popup = nullptr;
    std::unique_ptr<ClashGridModel> model;
    FilterDropDown filterDropDown;
    // The editor of action_discipline has a guard of its own, so that a filter list built a
    // moment ago is never offered as the disciplines to write.
    FilterDropDown editorDropDown;
    QStringList groupColumns;
    QString gridText;
    std::function<bool()> askSkip;
    // Approved clashes of the project, which filtering and sorting leave as they are; read
    // again whenever rows may have changed. Counting them costs more than the filter itself.
    std::optional<qint32> totalApproved;
    int popupColumn = -1;
    bool filtering = false;
    quint64 resets = 0; ///< model resets so far: a selection read between events notices one

    GridPlace Remember() const { return model ? RememberPlace(*table, *model) : GridPlace(); }

    void Restore(const GridPlace &place)
    {
        if (!model)
            return;
        RestorePlace(*table, *model, place);
        header->AdjustCells();
    }

    // The model's filter texts may differ from the cells after a refusal: the cells follow.
    void SyncCells()
    {
        for (int column = 0; model && column < model->columnCount(); ++column)
            if (header->CellText(column) != model->ColumnFilter(column))
                header->SetCellText(column, model->ColumnFilter(column));
    }

    QStringList CellTexts() const
    {
        QStringList texts;
        for (int column = 0; model && column < model->columnCount(); ++column)
            texts << header->CellText(column);
        return texts;
    }
};

} // namespace fx
