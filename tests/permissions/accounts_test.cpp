#include "permissions/accounts.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QSet>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace fx;
using fxtest::FailureText;

namespace {

QString NameOfGroup(gid_t gid)
{
    const struct group *entry = ::getgrgid(gid);
    return entry ? QString::fromLocal8Bit(entry->gr_name) : QString();
}

} // namespace

TEST(Accounts, the_present_user_and_groups_are_those_of_the_effective_uid)
{
    const struct passwd *me = ::getpwuid(::geteuid());
    ASSERT_NE(me, nullptr);
    const QString user = QString::fromLocal8Bit(me->pw_name);
    EXPECT_EQ(GetMyUserName(), user);

    const QStringList groups = GetAllGroupsOfUser(GetMyAccountDomain(), user);
    ASSERT_FALSE(groups.isEmpty());
    EXPECT_EQ(groups.first(), NameOfGroup(me->pw_gid));
    EXPECT_EQ(groups.size(), QSet<QString>(groups.begin(), groups.end()).size());

    EXPECT_EQ(FailureText([] { GetAllGroupsOfUser(QStringLiteral("CORP"), QStringLiteral("no-such-user-fx")); }),
              QStringLiteral("GetAllGroupsOfUser: User '%0%' not found in domain '%1%'|||no-such-user-fx|||CORP"));
}

TEST(Accounts, the_account_domain_is_the_computer_unless_another_server_logged_the_user_on)
{
    fxtest::EnvGuard env;
    env.Set("COMPUTERNAME", QStringLiteral("WS17"));
    env.Set("USERDOMAIN", QStringLiteral("CORP"));

    env.Unset("LOGONSERVER");
    EXPECT_EQ(GetLogonServerName(), QStringLiteral("WS17"));
    EXPECT_EQ(GetMyAccountDomain(), QStringLiteral("WS17"));

    env.Set("LOGONSERVER", QStringLiteral("\\\\ws17"));
    EXPECT_EQ(GetLogonServerName(), QStringLiteral("ws17"));
    EXPECT_EQ(GetMyAccountDomain(), QStringLiteral("WS17"));

    env.Set("LOGONSERVER", QStringLiteral("\\\\DC01"));
    EXPECT_EQ(GetLogonServerName(), QStringLiteral("DC01"));
    EXPECT_EQ(GetMyAccountDomain(), QStringLiteral("CORP"));
    EXPECT_EQ(GetMyDomainName(), QStringLiteral("CORP"));
}

TEST(Accounts, the_picker_lists_local_users_then_groups_once_each)
{
    const QList<DirectoryObject> objects = GetLocalUsersAndGroups();
    const QString computer = GetMyComputerName();
    const DirectoryObject me{QStringLiteral("user"), computer, GetMyUserName()};
    const DirectoryObject myGroup{QStringLiteral("group"), computer, NameOfGroup(::getegid())};
    EXPECT_TRUE(objects.contains(me));
    EXPECT_TRUE(objects.contains(myGroup));
    EXPECT_LT(objects.indexOf(me), objects.indexOf(myGroup));

    for (qsizetype i = 1; i < objects.size(); ++i) {
        EXPECT_EQ(objects.at(i).domain, computer);
        EXPECT_FALSE(objects.at(i - 1) == objects.at(i));
    }
}
