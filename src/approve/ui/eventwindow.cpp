#include "approve/ui/eventwindow.h"

#include "frame/log.h"

#include <QDesktopServices>
#include <QUrl>

namespace fx {

EventWindow::EventWindow(QWidget *parent) : QListWidget(parent), m_registration(&m_list)
{
    setObjectName(QStringLiteral("lstLog"));
    setSelectionMode(QAbstractItemView::NoSelection);
    m_list.SetOnChanged([this] { ShowItems(); });
}

void EventWindow::mouseDoubleClickEvent(QMouseEvent *event)
{
    QListWidget::mouseDoubleClickEvent(event);
    const QString log = GetLogFile();
    if (!log.isEmpty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(log));
}

void EventWindow::ShowItems()
{
    clear();
    for (const QString &item : m_list.Items()) {
        QString line = item;
        line.replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(QLatin1Char('\n'), QLatin1Char(' '));
        addItem(line);
    }
    scrollToBottom();
    // Long work runs on this thread: painted now, the line is seen while the work goes on.
    if (isVisible())
        repaint();
}

} // namespace fx
