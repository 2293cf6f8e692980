#include "grid/ui/clashgriddelegate.h"

#include "frame/failure.h"
#include "frame/messagebox.h"
#include "grid/clashgridmodel.h"

#include <QApplication>
#include <QComboBox>
#include <QMouseEvent>
#include <QStyle>
#include <QTimer>

namespace fx {

namespace {

constexpr char kPicked[] = "fxPicked";

// The model reads rows from the store while the view paints; a store that fails then must
// not take the paint with it. True when the row could be read.
bool RowReadable(const QModelIndex &index)
{
    try {
        (void)index.data(Qt::DisplayRole);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace

QColor WindowsRgbColor(quint32 rgb)
{
    return QColor(int(rgb & 0xFF), int((rgb >> 8) & 0xFF), int((rgb >> 16) & 0xFF));
}

QVariant CellStyleItemData(const CellStyle &style, int role, const QFont &font)
{
    if (role == Qt::ForegroundRole && style.coloured)
        return QBrush(WindowsRgbColor(style.rgb));
    if (role == Qt::FontRole && style.bold) {
        QFont bold = font;
        bold.setBold(true);
        return bold;
    }
    return {};
}

QRect ClashGridDelegate::ArrowRect(const QRect &rect)
{
    const int side = rect.height();
    return QRect(rect.right() - side + 1, rect.top(), side, side);
}

ClashGridDelegate::ClashGridDelegate(ValueList editorValues, QObject *parent)
    : QStyledItemDelegate(parent), m_editorValues(std::move(editorValues))
{
}

void ClashGridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QVariant styleValue = index.data(ClashGridModel::CellStyleRole);
    if (!styleValue.canConvert<CellStyle>())
        return;
    const CellStyle style = styleValue.value<CellStyle>();
    if (style.coloured) {
        const QColor colour = WindowsRgbColor(style.rgb);
        option->palette.setColor(QPalette::Text, colour);
        option->palette.setColor(QPalette::HighlightedText, colour);
    }
    if (style.bold)
        option->font.setBold(true);
}

void ClashGridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    // The table draws a band across the whole row itself.
    if (index.data(ClashGridModel::GroupLevelRole).isValid() || !RowReadable(index))
        return;
    QStyledItemDelegate::paint(painter, option, index);
    // An editable cell shows the button of its drop-down list at its right end.
    if (index.flags() & Qt::ItemIsEditable) {
        QStyleOption arrow;
        arrow.initFrom(option.widget);
        arrow.rect = ArrowRect(option.rect).adjusted(3, 3, -3, -3);
        arrow.palette = option.palette;
        QStyle *style = option.widget ? option.widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
    }
}

bool ClashGridDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                                    const QModelIndex &index)
{
    // The arrow is a button: one click opens the list, as the user expects of one. On the
    // release, so that the press does not fall on the list that opens.
    if (event->type() == QEvent::MouseButtonRelease && (index.flags() & Qt::ItemIsEditable)) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton && ArrowRect(option.rect).contains(mouse->position().toPoint())) {
            Q_EMIT ArrowClicked(index);
            return true;
        }
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}

QSize ClashGridDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (!RowReadable(index))
        return QStyledItemDelegate::sizeHint(option, QModelIndex());
    return QStyledItemDelegate::sizeHint(option, index);
}

QWidget *ClashGridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    if (!(index.flags() & Qt::ItemIsEditable))
        return nullptr;
    auto *combo = new QComboBox(parent);
    combo->setObjectName(QStringLiteral("actionDisciplineEditor"));
    const QString column = index.model()->headerData(index.column(), Qt::Horizontal).toString();
    const QStringList values = m_editorValues ? m_editorValues() : QStringList();
    for (const QString &value : values) {
        combo->addItem(value);
        const CellStyle style = CellStyleOf(column, value);
        for (const int role : {int(Qt::ForegroundRole), int(Qt::FontRole)})
            combo->setItemData(combo->count() - 1, CellStyleItemData(style, role, combo->font()), role);
    }
    auto *self = const_cast<ClashGridDelegate *>(this);
    // A pick is a commit: no second gesture to confirm it.
    connect(combo, &QComboBox::activated, self, [self, combo] {
        combo->setProperty(kPicked, true);
        Q_EMIT self->commitData(combo);
        Q_EMIT self->closeEditor(combo, QAbstractItemDelegate::NoHint);
    });
    QTimer::singleShot(0, combo, &QComboBox::showPopup);
    return combo;
}

void ClashGridDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *combo = qobject_cast<QComboBox *>(editor);
    if (!combo)
        return;
    const int at = combo->findText(index.data(Qt::EditRole).toString());
    if (at >= 0)
        combo->setCurrentIndex(at);
}

void ClashGridDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    auto *combo = qobject_cast<QComboBox *>(editor);
    if (!combo)
        return;
    // Only a value the user picked is written; leaving the list unpicked changes nothing.
    if (!combo->property(kPicked).toBool() || combo->currentText() == index.data(Qt::EditRole).toString())
        return;
    try {
        if (model->setData(index, combo->currentText(), Qt::EditRole))
            Q_EMIT const_cast<ClashGridDelegate *>(this)->Edited(index);
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
}

} // namespace fx
