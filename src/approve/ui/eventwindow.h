#pragma once
// lstLog: the approval window's event window, the last progress messages of the log.

#include "frame/logmessage.h"

#include <QListWidget>

namespace fx {

class EventWindow : public QListWidget
{
    Q_OBJECT

public:
    explicit EventWindow(QWidget *parent = nullptr);

protected:
    /// Opens the log file with the desktop's viewer.
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void ShowItems();

    EventList m_list;
    LogSinkRegistration m_registration;
};

} // namespace fx
