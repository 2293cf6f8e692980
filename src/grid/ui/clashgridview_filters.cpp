// The grid's filter row, header clicks, group columns and drop-down lists.

#include "grid/ui/clashgridviewparts.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/messagebox.h"
#include "frame/ui/waitcursor.h"
#include "grid/ui/grouparea.h"
#include "grid/ui/valuepopup.h"

#include <QLineEdit>
#include <QScopedValueRollback>

namespace fx {

void ClashGridView::FilterCellLeft(int column)
{
    Parts &p = *m_parts;
    if (!p.model || p.filtering || column < 0 || column >= p.model->columnCount())
        return;
    const QScopedValueRollback<bool> filtering(p.filtering, true);
    WaitCursor wait;
    const GridPlace place = p.Remember();
    try {
        p.model->SetColumnFilter(column, p.header->CellText(column));
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
    p.SyncCells();
    p.Restore(place);
    ShowCounts(false);
}

void ClashGridView::RunFilters()
{
    Parts &p = *m_parts;
    if (!p.model || p.filtering)
        return;
    const QScopedValueRollback<bool> filtering(p.filtering, true);
    WaitCursor wait;
    const GridPlace place = p.Remember();
    const QStringList texts = p.CellTexts();
    try {
        p.model->SetColumnFilters(texts);
    } catch (const Failure &) {
        // Cell by cell, so that each refused cell is named and emptied and the rest applies.
        for (int column = 0; column < int(texts.size()); ++column) {
            if (texts.at(column) == p.model->ColumnFilter(column))
                continue;
            try {
                p.model->SetColumnFilter(column, texts.at(column));
            } catch (const Failure &failure) {
                ShowMessage(failure, MbIconExclamation);
            }
        }
    }
    p.SyncCells();
    p.Restore(place);
    ShowCounts(false);
}

void ClashGridView::HeaderClicked(int column)
{
    Parts &p = *m_parts;
    if (!p.model || column < 0 || column >= p.model->columnCount())
        return;
    WaitCursor wait;
    const GridPlace place = p.Remember();
    try {
        // The grouping stays: the rows sort within their groups.
        p.model->SortByColumn(column);
        const bool descending = p.model->Sort().endsWith(QLatin1String(" DESC"));
        p.header->setSortIndicator(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
    p.Restore(place);
}

void ClashGridView::AddGroupColumn(const QString &column)
{
    if (column.isEmpty() || m_parts->groupColumns.contains(column))
        return;
    ApplyGroupColumns(m_parts->groupColumns + QStringList{column});
}

void ClashGridView::ApplyGroupColumns(const QStringList &columns)
{
    Parts &p = *m_parts;
    if (!p.model)
        return;
    WaitCursor wait;
    const GridPlace place = p.Remember();
    try {
        QStringList known = columns;
        known.removeIf([&](const QString &column) { return p.model->ColumnOf(column) < 0; });
        p.model->SetGroupColumns(known);
        p.groupColumns = known;
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
    p.groupArea->ShowColumns(p.groupColumns);
    p.Restore(place);
}

QStringList ClashGridView::DropDown(const QString &column, bool dataRow)
{
    WaitCursor wait;
    FilterDropDown &dropDown = dataRow ? m_parts->editorDropDown : m_parts->filterDropDown;
    try {
        return dropDown.List(column, dataRow);
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
        return {};
    }
}

void ClashGridView::OpenFilterDropDown(int column)
{
    Parts &p = *m_parts;
    if (!p.model || column < 0 || column >= p.model->columnCount())
        return;
    const QStringList values = DropDown(p.model->ColumnNames().at(column), false);
    if (values.isEmpty())
        return;
    p.popupColumn = column;
    p.popup->ShowValues(p.model->ColumnNames().at(column), values, p.header->CellText(column), p.header->Cell(column),
                        p.header->sectionSize(column));
}

QString ClashGridView::FilterText(const QString &column) const
{
    return m_parts->model ? m_parts->header->CellText(m_parts->model->ColumnOf(column)) : QString();
}

void ClashGridView::SetFilterText(const QString &column, const QString &text)
{
    if (!m_parts->model)
        return;
    const int index = m_parts->model->ColumnOf(column);
    m_parts->header->SetCellText(index, text);
    FilterCellLeft(index);
}

void ClashGridView::ClickHeader(const QString &column)
{
    if (m_parts->model)
        HeaderClicked(m_parts->model->ColumnOf(column));
}

QStringList ClashGridView::GroupColumns() const
{
    return m_parts->groupColumns;
}

void ClashGridView::SetGroupColumns(const QStringList &columns)
{
    if (!m_parts->groupColumns.isEmpty())
        ApplyGroupColumns({});
    for (const QString &column : columns)
        m_parts->groupArea->DropColumn(column);
}

QStringList ClashGridView::DropDownList(const QString &column, bool dataRow)
{
    return DropDown(column, dataRow);
}

} // namespace fx
