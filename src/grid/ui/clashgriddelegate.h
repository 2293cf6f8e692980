#pragma once
// How the clash grid draws and edits its cells: discipline colours and bold text from the
// model's cell style, and action_discipline picked from a list that commits at once.

#include <QColor>
#include <QStyledItemDelegate>

#include <functional>

namespace fx {

struct CellStyle;

/// A Windows RGB number (red in the low byte) as a colour.
QColor WindowsRgbColor(quint32 rgb);

/// What an item of a list shows for `role` to look as its cell does: the colour for
/// Qt::ForegroundRole, `font` made bold for Qt::FontRole; nothing where the style adds nothing.
QVariant CellStyleItemData(const CellStyle &style, int role, const QFont &font);

/// The cell delegate of the clash grid. A click on the arrow of an editable cell opens its list.
class ClashGridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// The values the action_discipline editor offers, asked each time it opens.
    using ValueList = std::function<QStringList()>;

    explicit ClashGridDelegate(ValueList editorValues, QObject *parent = nullptr);

    /// Draws the cell; a cell whose row cannot be read stays blank rather than failing the paint.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// The cell's size; an unreadable row has the size of an empty cell.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// A drop-down list of the editor values for an editable cell.
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Puts the cell's value in the list.
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    /// Writes the picked value; a failure is shown, never thrown into the view.
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

    /// Where an editable cell of `rect` draws its arrow.
    static QRect ArrowRect(const QRect &rect);

Q_SIGNALS:
    /// A picked value was written to the store.
    void Edited(const QModelIndex &index);
    /// The arrow of an editable cell was clicked: its list is wanted at once.
    void ArrowClicked(const QModelIndex &index);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

private:
    ValueList m_editorValues;
};

} // namespace fx
