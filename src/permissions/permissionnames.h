#pragma once
// The permissions a user or group may hold, by number, and the database column of each.

#include <QString>
#include <QStringList>

namespace fx {

/// Numbers of the permissions where the program tests them.
enum PermissionNo : int {
    PermissionCheckNo = 0,
    PermissionLoadSettingsNo = 1,
    PermissionOptionsNo = 2,
    PermissionSaveChangesNo = 3,
    PermissionChangeStatusNo = 4,
    PermissionCleanHistoryNo = 5,
    PermissionDeleteAllClashesNo = 6,
    PermissionAdministratorNo = 7,
    PermissionApprovalFilterNo = 8,
    PermissionSetDescriptionNo = 9,
    PermissionUnlockMarkersNo = 10,
    PermissionCount = 11
};

/// The English names of all permissions, index = number.
QStringList PermissionNames();

/// The name of permission `no`, translated with `translate`; raises for a number out of range.
QString GetPermissionName(int no, bool translate = false);

/// The number of the permission `name` in `names` (English or translated); raises for an
/// empty or unknown name.
int GetPermissionNoByName(const QString &name, const QStringList &names = PermissionNames());

/// The database column of permission `no`: "r" followed by the number.
QString PermissionColumn(int no);

} // namespace fx
