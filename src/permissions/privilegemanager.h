#pragma once
// The privilege manager's reads and writes on the open privilege database. An account is
// an object of type "user" or "group" with a domain and a name, compared without case.

#include "pds/recordset.h"

#include <QString>
#include <QStringList>

namespace fx {

/// The names of the permissions the account holds, or the one name "All permissions" when it
/// holds every one; empty for an account not in the database.
QStringList PrivilegeGetPermissionsByObject(const QString &type, const QString &domain, const QString &name);

/// The holders of one permission: fields object_type, domain, name.
Recordset PrivilegeGetObjectsByPermission(const QString &permissionName);

/// The accounts of one type (both for an empty `typeFilter`), of one domain unless
/// `domainFilter` is empty, ordered by domain and name: fields object_type, domain, name.
Recordset PrivilegeGetAllObjects4DB(const QString &typeFilter = QString(), const QString &domainFilter = QString());

/// The permission list as rows of the one field permission_name.
Recordset PrivilegeGetAllPermissions4DB();

/// Adds the account, holding nothing, unless it is there.
void PrivilegeAddObject2DB(const QString &type, const QString &domain, const QString &name);

/// Removes the account.
void PrivilegeRemoveObject4DB(const QString &type, const QString &domain, const QString &name);

/// Grants (`value` true) or revokes a permission of the account; "All permissions" sets every one.
void PrivilegeSet(const QString &type, const QString &domain, const QString &name, const QString &permissionName,
                  bool value);

} // namespace fx
