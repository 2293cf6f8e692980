#include "grid/ui/gridtable.h"

#include "frame/failure.h"
#include "frame/messagebox.h"
#include "frame/ui/waitcursor.h"
#include "grid/clashgridmodel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace fx {

GridTable::GridTable(QWidget *parent) : QTableView(parent)
{
}

ClashGridModel *GridTable::GridModel() const
{
    return qobject_cast<ClashGridModel *>(model());
}

void GridTable::SetGroupOpen(int row, bool open)
{
    ClashGridModel *grid = GridModel();
    if (!grid)
        return;
    WaitCursor wait;
    try {
        grid->SetGroupOpen(row, open);
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
}

void GridTable::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    const ClashGridModel *grid = GridModel();
    if (!grid || grid->GroupColumns().isEmpty() || grid->rowCount() == 0)
        return;
    // Over the cells the table drew: a band is one piece across the row, grid lines included.
    const QRect area = event->rect();
    const int first = rowAt(area.top());
    // Below the last row there is no band to draw.
    if (first < 0)
        return;
    int last = rowAt(area.bottom());
    if (last < 0)
        last = grid->rowCount() - 1;
    QPainter painter(viewport());
    for (int row = first; row <= last; ++row)
        if (grid->IsBand(row))
            PaintBand(painter, row);
}

void GridTable::PaintBand(QPainter &painter, int row) const
{
    const QModelIndex index = model()->index(row, 0);
    const QRect rect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
    const bool selected = selectionModel() && selectionModel()->isRowSelected(row, QModelIndex());
    const QPalette &colours = palette();
    painter.fillRect(rect, selected ? colours.highlight() : colours.window());
    painter.setPen(colours.color(QPalette::Mid));
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());

    // The band stays at the left edge while the columns scroll, indented by its level.
    const int side = rect.height();
    const int indent = 4 + index.data(ClashGridModel::GroupLevelRole).toInt() * side;
    QStyleOption arrow;
    arrow.initFrom(this);
    arrow.rect = QRect(indent, rect.top(), side, side).adjusted(4, 4, -4, -4);
    const QColor ink = colours.color(selected ? QPalette::HighlightedText : QPalette::WindowText);
    arrow.palette.setColor(QPalette::ButtonText, ink);
    arrow.palette.setColor(QPalette::WindowText, ink);
    const bool open = index.data(ClashGridModel::GroupOpenRole).toBool();
    style()->drawPrimitive(open ? QStyle::PE_IndicatorArrowDown : QStyle::PE_IndicatorArrowRight, &arrow, &painter, this);

    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(ink);
    const QRect textRect = rect.adjusted(indent + side + 2, 0, -4, 0);
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(bold).elidedText(index.data().toString(), Qt::ElideRight, textRect.width()));
    if (hasFocus() && currentIndex().row() == row) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect.adjusted(1, 1, -1, -1);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void GridTable::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool plain = event->button() == Qt::LeftButton && !(event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier));
    m_pressedBand = plain && index.isValid() && GridModel() && GridModel()->IsBand(index.row()) ? index.row() : -1;
    QTableView::mousePressEvent(event);
}

void GridTable::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const int band = m_pressedBand;
    m_pressedBand = -1;
    // A press that selected rows by dragging from a band opens nothing.
    const QModelIndex index = indexAt(event->position().toPoint());
    if (band < 0 || event->button() != Qt::LeftButton || !index.isValid() || index.row() != band)
        return;
    SetGroupOpen(band, !index.data(ClashGridModel::GroupOpenRole).toBool());
}

void GridTable::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (plain && GroupKey(event->key())) {
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

bool GridTable::GroupKey(int key)
{
    ClashGridModel *grid = GridModel();
    const QModelIndex current = currentIndex();
    if (!grid || grid->GroupColumns().isEmpty() || !current.isValid())
        return false;
    const int row = current.row();
    const bool band = grid->IsBand(row);
    const bool open = band && current.data(ClashGridModel::GroupOpenRole).toBool();
    switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Plus:
        // On a clash, Right moves to the next cell as ever.
        if (!band)
            return key == Qt::Key_Plus;
        if (!open)
            SetGroupOpen(row, true);
        else if (key == Qt::Key_Right && row + 1 < grid->rowCount())
            MakeCurrent(row + 1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Minus:
        if (band && open) {
            SetGroupOpen(row, false);
            return true;
        }
        if (!band && key == Qt::Key_Left)
            return false;
        // A closed band goes up to its parent's; "-" on a clash closes the clash's own group.
        if (const int above = grid->BandAbove(row); above >= 0) {
            MakeCurrent(above);
            if (!band)
                SetGroupOpen(above, false);
        }
        return true;
    default:
        return false;
    }
}

void GridTable::MakeCurrent(int row)
{
    const QModelIndex index = model()->index(row, std::max(currentIndex().column(), 0));
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

} // namespace fx
