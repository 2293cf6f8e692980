#pragma once
// The clash grid's column header with the filter row under it: one line edit per column that
// follows its section through resizing, moving and horizontal scrolling, with a drop-down
// button where the column offers one. Headers dragged upwards leave as a group-by drag.

#include <QHeaderView>
#include <QPoint>
#include <QStringList>

#include <functional>
#include <vector>

class QLineEdit;

namespace fx {

/// The horizontal header of the clash grid, with its filter row.
class FilterHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit FilterHeader(QWidget *parent = nullptr);

    /// Makes one filter cell per column, empty; `hasDropDown` tells which get a drop-down
    /// button. No columns switch the filter row off.
    void SetFilterCells(const QStringList &columns, const std::function<bool(const QString &)> &hasDropDown);
    /// The number of filter cells; 0 while the filter row is off.
    int CellCount() const { return int(m_cells.size()); }
    /// The text of a column's filter cell; empty for none.
    QString CellText(int logical) const;
    /// Sets a cell's text without filtering.
    void SetCellText(int logical, const QString &text);
    /// The line edit of a column's filter cell; null for none.
    QLineEdit *Cell(int logical) const;
    /// Places the cells under their sections again.
    void AdjustCells();

    /// The header's own height plus the filter row.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user left a filter cell, by Return or by moving the focus away.
    void FilterLeft(int logical);
    /// The drop-down button of a filter cell was pressed.
    void DropDownRequested(int logical);
    /// The header's menu asked for grouping by the column.
    void GroupRequested(int logical);

protected:
    void updateGeometries() override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    int CellHeight() const;
    void StartGroupDrag(QMouseEvent *event);

    std::vector<QLineEdit *> m_cells;
    int m_pressed = -1;  ///< section pressed away from its edges, a candidate for a group drag
    QPoint m_pressPos;
};

} // namespace fx
