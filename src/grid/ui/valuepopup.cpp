#include "grid/ui/valuepopup.h"

#include <QGuiApplication>
#include <QListView>
#include <QScreen>
#include <QStringListModel>
#include <QVBoxLayout>

namespace fx {

ValuePopup::ValuePopup(QWidget *parent)
    : QFrame(parent, Qt::Popup), m_list(new QListView(this)), m_values(new QStringListModel(this))
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

void ValuePopup::ShowValues(const QStringList &values, const QString &current, const QWidget *anchor, int width)
{
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
