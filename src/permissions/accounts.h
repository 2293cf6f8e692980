#pragma once
// Who the present user is, which groups the user is in, and the local accounts an
// administrator can pick for the privilege database.

#include <QList>
#include <QString>
#include <QStringList>

namespace fx {

/// An account as the picker gives it: type "user" or "group", its domain and its name.
struct DirectoryObject
{
    QString type;
    QString domain;
    QString name;
    bool operator==(const DirectoryObject &) const = default;
};

/// LOGONSERVER without its leading "\\"; unset (a POSIX logon), the computer's name, as
/// Windows sets it for a local logon.
QString GetLogonServerName();

/// This computer's name.
QString GetMyComputerName();

/// The present (effective) user's name.
QString GetMyUserName();

/// USERDOMAIN when set; otherwise the host's domain name, else the computer's name.
QString GetMyDomainName();

/// The domain the present user's accounts are kept under: the domain when the logon server is
/// another computer, the computer's name when it is this one.
QString GetMyAccountDomain();

/// The names of the groups `user` belongs to, primary group first; raises for an unknown user.
/// POSIX has one account database for local and directory users, so `domain` only names the
/// failure.
QStringList GetAllGroupsOfUser(const QString &domain, const QString &user);

/// The local users, then the local groups, each sorted by name, under the computer's name.
QList<DirectoryObject> GetLocalUsersAndGroups();

} // namespace fx
