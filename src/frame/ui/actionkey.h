#pragma once
// The key of a menu item or tool bar button: the name the program knows it by.

#include <QAction>
#include <QMenu>
#include <QString>

namespace fx {

/// The action's object name; a menu's own action not given one carries the menu's name.
inline QString ActionKey(const QAction *action)
{
    if (!action->objectName().isEmpty())
        return action->objectName();
    if (const QMenu *menu = action->menu())
        return menu->objectName();
    return QString();
}

} // namespace fx
