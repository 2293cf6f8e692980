#pragma once
// The approval window's main menu and toolbar, built from the tables of menudefinition.h. Every
// item is a QAction whose object name is its key, so that the rules and the translation find it.

#include "approve/menupermissions.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <functional>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace fx {

/// The built menu and toolbar.
struct MainMenuBar
{
    QHash<QString, QAction *> items;   ///< menu items by key
    QHash<QString, QAction *> buttons; ///< toolbar buttons by lower-cased key
    QMenu *languageMenu = nullptr;
    QToolBar *toolBar = nullptr;

    /// The menu item `key`, or the toolbar button of that key (case aside); null if none.
    QAction *Find(const QString &key) const;
};

/// Builds the main menu and the toolbar of `window`. A click on a menu item calls `onMenu` with
/// its key, a click on a button `onButton` with its index (1 to 10). Commands whose window this
/// program does not have yet stay disabled.
MainMenuBar AddSystemMenuAndBar(QMainWindow *window, std::function<void(const QString &key)> onMenu,
                                std::function<void(int index)> onButton);

/// Changes "Caption", "Shortcut", "Enabled", "Checked" or "Visible" of the item `key`.
void SetMenuProperty(const MainMenuBar &bar, const QString &key, const QString &property, const QVariant &value);

/// Sets the enabled state of each item and button the rules name.
void ApplyEnabledStates(const MainMenuBar &bar, const QList<EnabledState> &states);

} // namespace fx
