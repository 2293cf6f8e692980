#pragma once
// The privilege database of a project: which users and groups hold which permissions, and
// the rights of the present user. An absent or empty database allows everything.

#include <QString>
#include <QStringList>

namespace fx {

/// The database beside the project: the program's name + ".mdb" in the folder of proj_file
/// (`projFile` on server `projAddr`); when it is not there, the same name in the configuration
/// folder, which is always made (`createFolder` is kept for the callers).
QString GetPermissionDBFileName(const QString &projAddr, const QString &projFile, bool createFolder);

/// Sets the permission names (column "r" + index each) and the database file.
void PrivilegePermissionsSet(const QStringList &permissions, const QString &file);

/// Creates (with `writable`) or upgrades the database, and opens it. A missing file opened
/// without `writable` stays closed.
void PrivilegeDBInit(bool writable);

/// Opens the database for the privilege manager, writable.
void PrivilegeMgrInit();

/// Computes the present user's rights: the union of the user's and the user's groups'.
void PrivilegeMyPermissionInit();

/// True when the present user holds permission `no`.
bool IsPermissionGranted(int no);

/// Closes the database; the computed rights stay.
void PrivilegeDBClose();

/// A transaction on the open database.
void PrivilegeBeginTrans();
void PrivilegeCommitTrans();
void PrivilegeRollbackTrans();

} // namespace fx
