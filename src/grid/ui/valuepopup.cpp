#include "grid/ui/valuepopup.h"

#include "grid/cellstyle.h"
#include "grid/ui/clashgriddelegate.h"

#include <QGuiApplication>
#include <QListView>
#include <QScreen>
#include <QStringListModel>
#include <QVBoxLayout>

namespace fx {

/// The values of one column, each with the colour and weight of its cells.
class StyledValueModel : public QStringListModel
{
public:
    using QStringListModel::QStringListModel;

    void SetColumn(const QString &column) { m_column = column; }

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::ForegroundRole || role == Qt::FontRole) {
            const CellStyle style = CellStyleOf(m_column, QStringListModel::data(index, Qt::DisplayRole).toString());
            return CellStyleItemData(style, role, m_font);
        }
        return QStringListModel::data(index, role);
    }

    void SetFont(const QFont &font) { m_font = font; }

private:
    QString m_column;
    QFont m_font;
};

ValuePopup::ValuePopup(QWidget *parent)
    : QFrame(parent, Qt::Popup), m_list(new QListView(this)), m_values(new StyledValueModel(this))
{
    setObjectName(QStringLiteral("filterDropDown"));
    setFrameShape(QFrame::StyledPanel);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    // Columns of many values give lists of many thousand entries; uniform rows keep them quick.
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setModel(m_values);
    connect(m_list, &QListView::clicked, this, [this](const QModelIndex &index) { Choose(index.data().toString()); });
    connect(m_list, &QListView::activated, this, [this](const QModelIndex &index) { Choose(index.data().toString()); });
}

void ValuePopup::ShowValues(const QString &column, const QStringList &values, const QString &current,
                            const QWidget *anchor, int width)
{
    m_values->SetColumn(column);
    m_values->SetFont(m_list->font());
    m_values->setStringList(values);
    const int at = int(values.indexOf(current));
    if (at >= 0)
        m_list->setCurrentIndex(m_values->index(at));
    const int rows = std::clamp(int(values.size()), 1, 15);
    const int height = rows * m_list->sizeHintForRow(0) + 2 * frameWidth() + 4;
    QPoint place = anchor ? anchor->mapToGlobal(QPoint(0, anchor->height())) : QPoint();
    if (const QScreen *screen = anchor ? anchor->screen() : QGuiApplication::primaryScreen()) {
        const QRect room = screen->availableGeometry();
        if (place.y() + height > room.bottom() && anchor)
            place.setY(anchor->mapToGlobal(QPoint(0, 0)).y() - height);
    }
    setGeometry(QRect(place, QSize(std::max(width, 120), height)));
    show();
    m_list->setFocus();
}

QStringList ValuePopup::Values() const
{
    return m_values->stringList();
}

void ValuePopup::Choose(const QString &value)
{
    hide();
    Q_EMIT Chosen(value);
}

} // namespace fx
