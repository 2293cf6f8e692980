#pragma once
// What the privilege database keeps for the process, and the SQL pieces its reads and
// writes share. Inside the permissions subsystem only.

#include "pds/sqlitedb.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>

namespace fx {

/// The open connection, the permission list and file, and the present user's rights.
///
/// Invariant: `writable` only with an open `db`; no `granted` means every permission is granted.
struct PrivilegeState
{
    std::recursive_mutex mutex;
    QStringList permissions;
    QString file;
    std::optional<SqliteDb> db;
    bool writable = false;
    std::optional<QHash<QString, bool>> granted;
};

/// The process's one privilege state.
PrivilegeState &ThePrivilegeState();

/// The open connection; raises when there is none.
SqliteDb &OpenPrivilegeDB(PrivilegeState &state);

/// The columns of the permissions, each in brackets.
QStringList BracketedPermissionColumns(qsizetype count);

/// "[r0] = TRUE OR [r1] = TRUE ...": a row holding any permission.
QString AnyPermissionCondition(qsizetype count);

/// "WHERE(LCASE([domain]) = 'd' AND LCASE([name]) = 'n');" for one account, the values
/// lower-cased and quoted.
QString ObjectCondition(const QString &domain, const QString &name);

} // namespace fx
