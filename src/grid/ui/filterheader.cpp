#include "grid/ui/filterheader.h"

#include "frame/translation.h"
#include "grid/messages.h"
#include "grid/ui/grouparea.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace fx {

namespace {

QIcon DropDownIcon(const QStyle *style, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QStyleOption option;
    option.rect = QRect(0, 0, size, size);
    option.state = QStyle::State_Enabled;
    style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &option, &painter);
    return QIcon(pixmap);
}

} // namespace

FilterHeader::FilterHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent)
{
    setObjectName(QStringLiteral("clashGridHeader"));
    setSectionsMovable(true);
    setSectionsClickable(true);
    setHighlightSections(false);
    setSortIndicatorShown(true);
    setSortIndicator(-1, Qt::AscendingOrder);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(this, &QHeaderView::sectionResized, this, &FilterHeader::AdjustCells);
    connect(this, &QHeaderView::sectionMoved, this, &FilterHeader::AdjustCells);
}

void FilterHeader::SetFilterCells(const QStringList &columns, const std::function<bool(const QString &)> &hasDropDown)
{
    // The old cells go quietly: one losing the focus as it goes must not filter the new rows.
    for (QLineEdit *cell : m_cells) {
        disconnect(cell, nullptr, this, nullptr);
        cell->hide();
        cell->deleteLater();
    }
    m_cells.clear();
    const QIcon arrow = DropDownIcon(style(), fontMetrics().height() * 2 / 3);
    for (int logical = 0; logical < columns.size(); ++logical) {
        auto *cell = new QLineEdit(this);
        cell->setObjectName(QStringLiteral("filter_") + columns.at(logical));
        connect(cell, &QLineEdit::editingFinished, this, [this, logical] { Q_EMIT FilterLeft(logical); });
        if (hasDropDown && hasDropDown(columns.at(logical))) {
            QAction *dropDown = cell->addAction(arrow, QLineEdit::TrailingPosition);
            dropDown->setObjectName(QStringLiteral("dropDown_") + columns.at(logical));
            connect(dropDown, &QAction::triggered, this, [this, logical] { Q_EMIT DropDownRequested(logical); });
        }
        cell->show();
        m_cells.push_back(cell);
    }
    updateGeometries();
}

QString FilterHeader::CellText(int logical) const
{
    const QLineEdit *cell = Cell(logical);
    return cell ? cell->text() : QString();
}

void FilterHeader::SetCellText(int logical, const QString &text)
{
    if (QLineEdit *cell = Cell(logical))
        cell->setText(text);
}

QLineEdit *FilterHeader::Cell(int logical) const
{
    return logical >= 0 && logical < int(m_cells.size()) ? m_cells[size_t(logical)] : nullptr;
}

int FilterHeader::CellHeight() const
{
    return m_cells.empty() ? 0 : m_cells.front()->sizeHint().height();
}

QSize FilterHeader::sizeHint() const
{
    QSize size = QHeaderView::sizeHint();
    size.setHeight(size.height() + CellHeight());
    return size;
}

void FilterHeader::updateGeometries()
{
    // The sections keep the upper part; the filter row lies in the margin below them.
    setViewportMargins(0, 0, 0, CellHeight());
    QHeaderView::updateGeometries();
    AdjustCells();
}

void FilterHeader::AdjustCells()
{
    const int top = viewport()->geometry().bottom() + 1;
    const int height = CellHeight();
    for (int logical = 0; logical < int(m_cells.size()); ++logical) {
        QLineEdit *cell = m_cells[size_t(logical)];
        if (logical >= count() || isSectionHidden(logical)) {
            cell->hide();
            continue;
        }
        cell->setGeometry(sectionViewportPosition(logical), top, sectionSize(logical), height);
        cell->show();
    }
}

void FilterHeader::mousePressEvent(QMouseEvent *event)
{
    m_pressed = -1;
    if (event->button() == Qt::LeftButton) {
        const QPoint pos = event->position().toPoint();
        const int logical = logicalIndexAt(pos);
        const int grip = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this) + 1;
        const int left = sectionViewportPosition(logical);
        // Near an edge the press resizes a section; that never becomes a group drag.
        if (logical >= 0 && pos.x() > left + grip && pos.x() < left + sectionSize(logical) - grip) {
            m_pressed = logical;
            m_pressPos = pos;
        }
    }
    QHeaderView::mousePressEvent(event);
}

void FilterHeader::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressed >= 0 && (event->buttons() & Qt::LeftButton)
        && event->position().y() < -QApplication::startDragDistance()) {
        StartGroupDrag(event);
        return;
    }
    QHeaderView::mouseMoveEvent(event);
}

void FilterHeader::mouseReleaseEvent(QMouseEvent *event)
{
    m_pressed = -1;
    QHeaderView::mouseReleaseEvent(event);
}

void FilterHeader::StartGroupDrag(QMouseEvent *event)
{
    const int logical = m_pressed;
    m_pressed = -1;
    // End the header's own section move where it began, outside the section, so that it
    // neither moves nor counts as a click that sorts.
    const QPointF back(m_pressPos.x(), -height());
    QMouseEvent move(QEvent::MouseMove, back, event->globalPosition(), Qt::NoButton, Qt::LeftButton, event->modifiers());
    QHeaderView::mouseMoveEvent(&move);
    QMouseEvent release(QEvent::MouseButtonRelease, back, event->globalPosition(), Qt::LeftButton, Qt::NoButton,
                        event->modifiers());
    QHeaderView::mouseReleaseEvent(&release);

    const QString column = model() ? model()->headerData(logical, orientation()).toString() : QString();
    if (column.isEmpty())
        return;
    auto *mime = new QMimeData;
    mime->setData(QLatin1String(GridColumnMimeType), column.toUtf8());
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(viewport()->grab(QRect(sectionViewportPosition(logical), 0, sectionSize(logical), viewport()->height())));
    drag->exec(Qt::CopyAction);
}

void FilterHeader::contextMenuEvent(QContextMenuEvent *event)
{
    const int logical = logicalIndexAt(event->pos());
    if (logical < 0 || event->pos().y() > viewport()->geometry().bottom())
        return;
    QMenu menu(this);
    QAction *group = menu.addAction(TranslateText(QString::fromLatin1(msg::GridGroupByThisColumn)));
    if (menu.exec(event->globalPos()) == group)
        Q_EMIT GroupRequested(logical);
}

} // namespace fx
