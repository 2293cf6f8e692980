#pragma once
// Long work locks a window's controls, so that nothing starts a second piece of work while the
// event loop runs, and gives them their former state back afterwards.

#include <QList>
#include <QPointer>
#include <QString>

class QAction;
class QWidget;

namespace fx {

/// True when a menu item or toolbar button of this key stays usable during long work: the
/// language and help items and the top-level menus.
bool StaysEnabledWhileLocked(const QString &key);

/// Disables, while it lives, the controls of `form` and of the program's other open windows
/// (the splash window aside): menu items and toolbar buttons by their keys (object names),
/// widgets unless they only show something (labels, frames, status bars, option buttons) or
/// are named like "*help*", "*exit*", "*close*", "*minus*", or lstLog. Destroyed, it gives each
/// the state it had.
class ControlLock
{
public:
    explicit ControlLock(QWidget *form);
    ~ControlLock();
    ControlLock(const ControlLock &) = delete;
    ControlLock &operator=(const ControlLock &) = delete;

private:
    // Index for index: each locked control and whether it was enabled before.
    QList<QPointer<QWidget>> m_widgets;
    QList<bool> m_widgetWasEnabled;
    QList<QPointer<QAction>> m_actions;
    QList<bool> m_actionWasEnabled;
};

} // namespace fx
