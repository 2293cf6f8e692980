#pragma once
// Which menu items and toolbar buttons of the approval window are enabled, from the open
// project's state and the present user's permissions.

#include "approve/menudefinition.h"
#include "store/storecommands.h"

#include <QList>
#include <QString>

namespace fx {

/// What the permission rules look at.
struct PermissionContext
{
    StoreCommandContext store;      ///< project name, read-only flag, the user's permissions
    bool checkModuleBuiltIn = true; ///< the check module is part of this program
    bool hasPermissionDB = false;   ///< GetPermissionDBFileName gives a file for the project
};

/// The state of the open project and the present user.
PermissionContext CurrentPermissionContext();

/// One item's enabled state as the rules decide it.
struct EnabledState
{
    QString key;
    bool enabled = false;
};

/// Which window's items are meant.
enum class PermissionForm {
    Main,          ///< the main menu and toolbar
    ClashToolBar,  ///< the clash toolbar's four status buttons
};

/// The enabled state of every ruled item of `form`: first its menu items, then its toolbar
/// buttons (by the keys of the rules, case aside). An item whose window is not built yet is
/// disabled whatever the rule says.
QList<EnabledState> ApplyPermissions(PermissionForm form, const PermissionContext &context);

/// The rule alone for `command`, the windows not yet built left out of it; true for a command
/// no rule covers.
bool IsCommandPermitted(MenuCommand command, const PermissionContext &context);

/// The state of `key` in `states`, case ignored; false when absent.
bool IsEnabledIn(const QList<EnabledState> &states, const QString &key);

} // namespace fx
