#pragma once
// The band above the clash grid: what the window is doing while no rows are bound, and once
// they are, the columns the rows are grouped by. Column headers dropped here add a group.

#include <QFrame>
#include <QString>
#include <QStringList>

class QLabel;
class QHBoxLayout;

namespace fx {

/// The mime type of a column header dragged out of the grid: the column's name in UTF-8.
inline constexpr char GridColumnMimeType[] = "application/x-fendrix-grid-column";

/// The group-by area of the clash grid.
class GroupArea : public QFrame
{
    Q_OBJECT

public:
    explicit GroupArea(QWidget *parent = nullptr);

    /// Shows a text in place of the groups, as while no rows are bound.
    void ShowText(const QString &text);
    /// Shows the group columns as chips, or the hint to drag a header here when there are none.
    void ShowColumns(const QStringList &columns);
    /// The text the area shows.
    QString Text() const;
    /// A header dropped here: asks for the column to be grouped by.
    void DropColumn(const QString &column);

Q_SIGNALS:
    /// A column was dropped to be grouped by.
    void ColumnDropped(const QString &column);
    /// The chip of a group column was clicked away.
    void ColumnRemoved(const QString &column);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void ClearChips();

    QLabel *m_text;
    QHBoxLayout *m_layout;
    QList<QWidget *> m_chips;
};

} // namespace fx
