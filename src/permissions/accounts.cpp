#include "permissions/accounts.h"

#include "frame/computername.h"
#include "frame/failure.h"
#include "frame/settings.h"
#include "permissions/messages.h"

#include <QSysInfo>

#include <cerrno>
#include <mutex>
#include <vector>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace fx {

namespace {

QString EnvText(const char *name)
{
    return qEnvironmentVariable(name).trimmed();
}

// Runs one of the *_r lookups, growing the buffer while it is too small. True when found.
template <typename Entry, typename Lookup>
bool LookUp(Entry &entry, std::vector<char> &buffer, Lookup &&lookup)
{
    Entry *found = nullptr;
    int rc = 0;
    while ((rc = lookup(&entry, buffer.data(), buffer.size(), &found)) == ERANGE && buffer.size() < (size_t(1) << 24))
        buffer.resize(buffer.size() * 2);
    return rc == 0 && found != nullptr;
}

QString GroupName(gid_t gid, std::vector<char> &buffer)
{
    struct group entry{};
    if (!LookUp(entry, buffer, [&](struct group *e, char *b, size_t n, struct group **r) {
            return ::getgrgid_r(gid, e, b, n, r);
        }) || !entry.gr_name)
        return QString();
    return QString::fromLocal8Bit(entry.gr_name);
}

// getpwent and getgrent walk one cursor per process: one walk at a time.
std::mutex &AccountWalkMutex()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

QString GetLogonServerName()
{
    return Frame("GetLogonServerName", [] {
        QString server = EnvText("LOGONSERVER");
        while (server.startsWith(QLatin1Char('\\')))
            server.remove(0, 1);
        return server.isEmpty() ? GetMyComputerName() : server;
    });
}

QString GetMyComputerName()
{
    return Frame("GetMyComputerName", [] { return GetComputerName(); });
}

QString GetMyUserName()
{
    return Frame("GetMyUserName", [] { return GetLogonUserName(); });
}

QString GetMyDomainName()
{
    return Frame("GetMyDomainName", [] {
        const QString userDomain = EnvText("USERDOMAIN");
        if (!userDomain.isEmpty())
            return userDomain;
        const QString host = QSysInfo::machineHostName();
        const qsizetype dot = host.indexOf(QLatin1Char('.'));
        if (dot > 0 && dot + 1 < host.size())
            return host.mid(dot + 1);
        return GetMyComputerName();
    });
}

QString GetMyAccountDomain()
{
    return Frame("GetMyAccountDomain", [] {
        const QString computer = GetMyComputerName();
        if (GetLogonServerName().compare(computer, Qt::CaseInsensitive) != 0)
            return GetMyDomainName();
        return computer;
    });
}

QStringList GetAllGroupsOfUser(const QString &domain, const QString &user)
{
    return Frame("GetAllGroupsOfUser", [&] {
        const long hint = ::sysconf(_SC_GETPW_R_SIZE_MAX);
        std::vector<char> buffer(size_t(hint > 0 ? hint : 16384));
        const QByteArray userName = user.toLocal8Bit();
        struct passwd account{};
        if (user.isEmpty() || !LookUp(account, buffer, [&](struct passwd *e, char *b, size_t n, struct passwd **r) {
                return ::getpwnam_r(userName.constData(), e, b, n, r);
            }))
            Raise(msg::UserAccountNotFound, {user, domain});
        const gid_t primary = account.pw_gid;

        std::vector<gid_t> gids(32);
        int count = int(gids.size());
        while (::getgrouplist(userName.constData(), primary, gids.data(), &count) == -1) {
            if (count <= int(gids.size()))
                count = int(gids.size()) * 2;
            gids.resize(size_t(count));
        }
        gids.resize(size_t(count));

        QStringList names;
        for (gid_t gid : gids) {
            const QString name = GroupName(gid, buffer);
            // A number without a name cannot be picked, so no right can be held by it.
            if (!name.isEmpty() && !names.contains(name))
                names << name;
        }
        return names;
    });
}

QList<DirectoryObject> GetLocalUsersAndGroups()
{
    return Frame("GetLocalUsersAndGroups", [] {
        const QString computer = GetMyComputerName();
        QStringList users;
        QStringList groups;
        {
            std::lock_guard lock(AccountWalkMutex());
            ::setpwent();
            while (const struct passwd *entry = ::getpwent())
                if (entry->pw_name && *entry->pw_name)
                    users << QString::fromLocal8Bit(entry->pw_name);
            ::endpwent();
            ::setgrent();
            while (const struct group *entry = ::getgrent())
                if (entry->gr_name && *entry->gr_name)
                    groups << QString::fromLocal8Bit(entry->gr_name);
            ::endgrent();
        }
        QList<DirectoryObject> objects;
        // Several name services may list one account: it is offered once.
        for (const auto &[type, names] : {std::pair{QStringLiteral("user"), &users}, std::pair{QStringLiteral("group"), &groups}}) {
            names->sort(Qt::CaseInsensitive);
            names->removeDuplicates();
            for (const QString &name : *names)
                objects.append({type, computer, name});
        }
        return objects;
    });
}

} // namespace fx
