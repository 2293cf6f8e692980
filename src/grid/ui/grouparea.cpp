#include "grid/ui/grouparea.h"

#include "frame/failure.h"
#include "frame/translation.h"
#include "frame/ui/translateform.h"
#include "grid/messages.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QStyle>
#include <QToolButton>

namespace fx {

GroupArea::GroupArea(QWidget *parent) : QFrame(parent), m_text(new QLabel(this)), m_layout(new QHBoxLayout(this))
{
    setObjectName(QStringLiteral("groupArea"));
    setFrameShape(QFrame::StyledPanel);
    setAcceptDrops(true);
    setMinimumHeight(fontMetrics().height() * 2);
    m_text->setObjectName(QStringLiteral("groupAreaText"));
    // Shown translated already; column names are no texts to translate.
    m_text->setProperty(NoTranslateProperty, true);
    m_layout->setContentsMargins(6, 3, 6, 3);
    m_layout->addWidget(m_text);
    m_layout->addStretch(1);
}

void GroupArea::ShowText(const QString &text)
{
    ClearChips();
    m_text->setText(text);
    m_text->show();
}

void GroupArea::ShowColumns(const QStringList &columns)
{
    ClearChips();
    m_text->setText(TranslateText(QString::fromLatin1(msg::GridDragHeaderHint)));
    m_text->setVisible(columns.isEmpty());
    for (const QString &column : columns) {
        auto *chip = new QToolButton(this);
        chip->setObjectName(QStringLiteral("group_") + column);
        chip->setProperty(NoTranslateProperty, true);
        chip->setText(column);
        chip->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
        chip->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        chip->setToolTip(TranslateText(ArgForm(msg::GridRemoveGroupColumn, {column})));
        connect(chip, &QToolButton::clicked, this, [this, column] { Q_EMIT ColumnRemoved(column); });
        // Chips stand before the stretch, in group order.
        m_layout->insertWidget(m_layout->count() - 1, chip);
        m_chips << chip;
    }
}

QString GroupArea::Text() const
{
    return m_text->text();
}

void GroupArea::DropColumn(const QString &column)
{
    if (!column.isEmpty())
        Q_EMIT ColumnDropped(column);
}

void GroupArea::ClearChips()
{
    // Later, not now: the chip whose click removes it is still in its signal.
    for (QWidget *chip : std::as_const(m_chips)) {
        chip->hide();
        m_layout->removeWidget(chip);
        chip->deleteLater();
    }
    m_chips.clear();
}

void GroupArea::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasFormat(QLatin1String(GridColumnMimeType)))
        event->acceptProposedAction();
}

void GroupArea::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasFormat(QLatin1String(GridColumnMimeType)))
        event->acceptProposedAction();
}

void GroupArea::dropEvent(QDropEvent *event)
{
    if (!event->mimeData()->hasFormat(QLatin1String(GridColumnMimeType)))
        return;
    event->acceptProposedAction();
    DropColumn(QString::fromUtf8(event->mimeData()->data(QLatin1String(GridColumnMimeType))));
}

} // namespace fx
