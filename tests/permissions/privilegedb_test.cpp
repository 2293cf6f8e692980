#include "permissions/privilegedb.h"

#include "frame/computername.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "pds/localdb.h"
#include "pds/tableimporter.h"
#include "permissions/accounts.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegemanager.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace fx;
using fxtest::FailureText;

namespace {

class PrivilegeDatabase : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_file = m_sandbox.Root() + QStringLiteral("project/fendrix.mdb");
        QDir().mkpath(m_sandbox.Root() + QStringLiteral("project"));
        PrivilegePermissionsSet(PermissionNames(), m_file);
    }
    void TearDown() override { PrivilegeDBClose(); }

    // Every permission's state for the present user, as "0110...".
    static QString Granted()
    {
        QString flags;
        for (int no = 0; no < PermissionCount; ++no)
            flags += IsPermissionGranted(no) ? QLatin1Char('1') : QLatin1Char('0');
        return flags;
    }

    fxtest::Sandbox m_sandbox;
    QString m_file;
};

QStringList ColumnNames(SqliteDb &db, const QString &table)
{
    QStringList names;
    const Recordset empty = db.Read(QStringLiteral("SELECT * FROM [") + table + QStringLiteral("] WHERE 1 = 0"));
    for (const RecordsetField &field : empty.Fields())
        names << field.name;
    return names;
}

QStringList Names(const Recordset &rows)
{
    QStringList names;
    for (qsizetype row = 0; row < rows.RecordCount(); ++row)
        names << rows.Value(row, QStringLiteral("object_type")).toString() + QLatin1Char(':')
                     + rows.Value(row, QStringLiteral("domain")).toString() + QLatin1Char('\\')
                     + rows.Value(row, QStringLiteral("name")).toString();
    return names;
}

} // namespace

TEST(PermissionNames, names_and_numbers_map_both_ways)
{
    const QStringList names = PermissionNames();
    ASSERT_EQ(names.size(), PermissionCount);
    EXPECT_EQ(GetPermissionName(0), QStringLiteral("Envelope Builder and Interference Checker"));
    EXPECT_EQ(GetPermissionName(7), QStringLiteral("Administator mode"));
    EXPECT_EQ(GetPermissionName(10), QStringLiteral("Unlock project/area marker file(s)"));
    for (int no = 0; no < PermissionCount; ++no)
        EXPECT_EQ(GetPermissionNoByName(GetPermissionName(no)), no);
    EXPECT_EQ(PermissionColumn(10), QStringLiteral("r10"));

    EXPECT_EQ(FailureText([] { GetPermissionNoByName(QString()); }),
              QStringLiteral("GetPermissionNoByName: Permission name not defined"));
    EXPECT_EQ(FailureText([] { GetPermissionNoByName(QStringLiteral("options")); }),
              QStringLiteral("GetPermissionNoByName: Permission number for permission name '%0%' not exists|||options"));
    EXPECT_EQ(FailureText([] { GetPermissionName(11); }),
              QStringLiteral("GetPermissionName: Permission number %0% is incorrect|||11"));
}

TEST_F(PrivilegeDatabase, a_missing_or_empty_database_allows_everything)
{
    PrivilegeMyPermissionInit();
    EXPECT_EQ(Granted(), QStringLiteral("11111111111"));
    EXPECT_FALSE(QFileInfo::exists(m_file)) << "reading must not create the file";
    EXPECT_EQ(FailureText([] { PrivilegeGetAllObjects4DB(); }),
              QStringLiteral("PrivilegeGetAllObjects4DB: Permissions database is not available"));

    PrivilegeMgrInit();
    ASSERT_TRUE(QFileInfo::exists(m_file));
    PrivilegeDBClose();
    {
        SqliteDb db(m_file);
        for (const char *table : {"user", "group", "upgrade"})
            EXPECT_TRUE(IsLocalTableExists(db, QString::fromUtf8(table))) << table;
        EXPECT_EQ(ColumnNames(db, QStringLiteral("group")).size(), 2 + PermissionCount);
    }
    PrivilegeMyPermissionInit();
    EXPECT_EQ(Granted(), QStringLiteral("11111111111"));

    EXPECT_EQ(FailureText([] { IsPermissionGranted(-1); }),
              QStringLiteral("IsPermissionGranted: Permission number %0% is incorrect|||-1"));
    EXPECT_EQ(FailureText([] { PrivilegePermissionsSet({}, QStringLiteral("x.mdb")); }),
              QStringLiteral("PrivilegePermissionsSet: No permissions defined"));
    EXPECT_EQ(FailureText([] { PrivilegePermissionsSet(PermissionNames(), QString()); }),
              QStringLiteral("PrivilegePermissionsSet: Privileges database not defined"));
}

TEST_F(PrivilegeDatabase, an_old_database_gains_columns_and_a_key_and_loses_rows_without_rights)
{
    // The layout of an older version: six permissions, and an id key in the user table.
    ASSERT_TRUE(CreateMDB(m_file));
    {
        SqliteDb db(m_file);
        db.Execute(QStringLiteral(
            "CREATE TABLE [user] (id INTEGER PRIMARY KEY AUTOINCREMENT, [domain] VARCHAR(255), [name] VARCHAR(255), "
            "[r0] BIT, [r1] BIT, [r2] BIT, [r3] BIT, [r4] BIT, [r5] BIT);"
            "INSERT INTO [user] ([domain], [name], r0, r1, r2, r3, r4, r5) VALUES "
            "('HOST', 'alice', 0, 1, 0, 0, 0, 0), ('host', 'ALICE', 0, 0, 0, 1, 0, 0), ('host', 'bob', 0, 0, 0, 0, 0, 0);"
            "CREATE TABLE [group] ([domain] VARCHAR(255), [name] VARCHAR(255), "
            "[r0] BIT, [r1] BIT, [r2] BIT, [r3] BIT, [r4] BIT, [r5] BIT, CONSTRAINT ID PRIMARY KEY([domain], [name]));"
            "INSERT INTO [group] VALUES ('host', 'staff', 0, 0, 1, 0, 0, 1), ('host', 'idle', 0, 0, 0, 0, 0, 0);"));
    }

    PrivilegeMgrInit();
    EXPECT_EQ(Names(PrivilegeGetAllObjects4DB()), (QStringList{QStringLiteral("user:HOST\\alice"), QStringLiteral("group:host\\staff")}));
    EXPECT_EQ(PrivilegeGetPermissionsByObject(QStringLiteral("user"), QStringLiteral("host"), QStringLiteral("Alice")),
              (QStringList{GetPermissionName(1), GetPermissionName(3)}));
    EXPECT_EQ(PrivilegeGetPermissionsByObject(QStringLiteral("group"), QStringLiteral("host"), QStringLiteral("staff")),
              (QStringList{GetPermissionName(2), GetPermissionName(5)}));
    PrivilegeDBClose();

    SqliteDb db(m_file);
    QStringList expected{QStringLiteral("domain"), QStringLiteral("name")};
    for (int no = 0; no < PermissionCount; ++no)
        expected << PermissionColumn(no);
    EXPECT_EQ(ColumnNames(db, QStringLiteral("user")), expected);
    EXPECT_EQ(ColumnNames(db, QStringLiteral("group")).mid(0, 8), expected.mid(0, 8));
    EXPECT_EQ(ColumnNames(db, QStringLiteral("group")).size(), expected.size());
    EXPECT_TRUE(IsLocalTableExists(db, QStringLiteral("upgrade")));
    EXPECT_EQ(db.Read(QStringLiteral("SELECT count(*) FROM [group] WHERE [r10] = FALSE")).Value(0, 0).toInt(), 1);
    // The domain and name are the key now, without regard to case.
    EXPECT_THROW(db.Execute(QStringLiteral("INSERT INTO [user] ([domain], [name]) VALUES ('HOST', 'Alice')")), Failure);
}

TEST_F(PrivilegeDatabase, the_present_user_holds_the_union_of_own_and_group_rights)
{
    const QString domain = GetMyAccountDomain();
    const QString user = GetMyUserName();
    const QStringList groups = GetAllGroupsOfUser(domain, user);
    ASSERT_FALSE(groups.isEmpty());

    PrivilegeMgrInit();
    // Names as an administrator may type them: case does not matter.
    PrivilegeAddObject2DB(QStringLiteral("group"), domain.toUpper(), groups.first().toUpper());
    PrivilegeSet(QStringLiteral("group"), domain, groups.first(), GetPermissionName(4), true);
    PrivilegeAddObject2DB(QStringLiteral("user"), domain, user.toUpper());
    PrivilegeSet(QStringLiteral("user"), domain, user, GetPermissionName(9), true);
    // Held by strangers only: a group the user is not in, the user's name in another domain.
    PrivilegeAddObject2DB(QStringLiteral("group"), domain, QStringLiteral("fx-not-a-member"));
    PrivilegeSet(QStringLiteral("group"), domain, QStringLiteral("fx-not-a-member"), GetPermissionName(6), true);
    PrivilegeAddObject2DB(QStringLiteral("user"), QStringLiteral("other-domain"), user);
    PrivilegeSet(QStringLiteral("user"), QStringLiteral("other-domain"), user, GetPermissionName(0), true);
    PrivilegeDBClose();

    PrivilegeMyPermissionInit();
    EXPECT_EQ(Granted(), QStringLiteral("00001000010"));

    PrivilegeMgrInit();
    PrivilegeSet(QStringLiteral("group"), domain, groups.first(), GetPermissionName(4), false);
    PrivilegeMyPermissionInit();
    EXPECT_EQ(Granted(), QStringLiteral("00000000010"));

    // With the last right gone the rows empty out, and an empty database locks nobody out.
    PrivilegeMgrInit();
    PrivilegeSet(QStringLiteral("user"), domain, user, QStringLiteral("All permissions"), false);
    PrivilegeRemoveObject4DB(QStringLiteral("group"), domain, QStringLiteral("fx-not-a-member"));
    PrivilegeRemoveObject4DB(QStringLiteral("user"), QStringLiteral("other-domain"), user);
    PrivilegeMyPermissionInit();
    EXPECT_EQ(Granted(), QStringLiteral("11111111111"));
}

TEST_F(PrivilegeDatabase, the_manager_reads_back_what_it_wrote)
{
    PrivilegeMgrInit();
    const QString user = QStringLiteral("user");
    const QString group = QStringLiteral("group");
    const QString quoted = QStringLiteral("o'brien");
    PrivilegeAddObject2DB(user, QStringLiteral("HOST"), quoted);
    PrivilegeAddObject2DB(user, QStringLiteral("host"), QStringLiteral("O'Brien"));
    PrivilegeAddObject2DB(user, QStringLiteral("CORP"), QStringLiteral("zoe"));
    PrivilegeAddObject2DB(group, QStringLiteral("HOST"), QStringLiteral("admins"));

    EXPECT_EQ(Names(PrivilegeGetAllObjects4DB()),
              (QStringList{QStringLiteral("user:CORP\\zoe"), QStringLiteral("group:HOST\\admins"), QStringLiteral("user:HOST\\o'brien")}));
    EXPECT_EQ(Names(PrivilegeGetAllObjects4DB(user, QStringLiteral("host"))), QStringList{QStringLiteral("user:HOST\\o'brien")});
    EXPECT_EQ(Names(PrivilegeGetAllObjects4DB(group)), QStringList{QStringLiteral("group:HOST\\admins")});

    PrivilegeSet(user, QStringLiteral("host"), QStringLiteral("O'BRIEN"), QStringLiteral("All permissions"), true);
    EXPECT_EQ(PrivilegeGetPermissionsByObject(user, QStringLiteral("HOST"), quoted), QStringList{QStringLiteral("All permissions")});
    PrivilegeSet(user, QStringLiteral("HOST"), quoted, GetPermissionName(7), false);
    QStringList allButAdmin = PermissionNames();
    allButAdmin.removeAt(7);
    EXPECT_EQ(PrivilegeGetPermissionsByObject(user, QStringLiteral("HOST"), quoted), allButAdmin);

    PrivilegeSet(group, QStringLiteral("HOST"), QStringLiteral("admins"), GetPermissionName(7), true);
    EXPECT_EQ(Names(PrivilegeGetObjectsByPermission(GetPermissionName(7))), QStringList{QStringLiteral("group:HOST\\admins")});
    EXPECT_EQ(Names(PrivilegeGetObjectsByPermission(GetPermissionName(2))), QStringList{QStringLiteral("user:HOST\\o'brien")});

    const Recordset permissions = PrivilegeGetAllPermissions4DB();
    ASSERT_EQ(permissions.RecordCount(), PermissionCount);
    EXPECT_EQ(permissions.Value(4, QStringLiteral("permission_name")).toString(), GetPermissionName(4));

    PrivilegeBeginTrans();
    PrivilegeRemoveObject4DB(user, QStringLiteral("host"), QStringLiteral("O'Brien"));
    EXPECT_TRUE(PrivilegeGetPermissionsByObject(user, QStringLiteral("HOST"), quoted).isEmpty());
    PrivilegeRollbackTrans();
    EXPECT_EQ(PrivilegeGetPermissionsByObject(user, QStringLiteral("HOST"), quoted), allButAdmin);

    EXPECT_EQ(FailureText([&] { PrivilegeAddObject2DB(QStringLiteral("printer"), QStringLiteral("HOST"), QStringLiteral("lp")); }),
              QStringLiteral("PrivilegeAddObject2DB: Unknown object type '%0%'|||printer"));
    EXPECT_EQ(FailureText([&] { PrivilegeSet(user, QString(), quoted, GetPermissionName(1), true); }),
              QStringLiteral("PrivilegeSet: Object domain name not defined"));
    EXPECT_EQ(FailureText([&] { PrivilegeRemoveObject4DB(user, QStringLiteral("HOST"), QString()); }),
              QStringLiteral("PrivilegeRemoveObject4DB: Object name not defined"));

    // Opened for reading, the database refuses the manager's writes.
    PrivilegeDBInit(false);
    EXPECT_EQ(FailureText([&] { PrivilegeAddObject2DB(user, QStringLiteral("HOST"), QStringLiteral("eve")); }),
              QStringLiteral("PrivilegeAddObject2DB: Privilege database '%0%' is not writable|||") + m_file);
}

TEST_F(PrivilegeDatabase, the_file_stands_beside_proj_file_or_in_the_configuration_folder)
{
    const QString project = m_sandbox.Root() + QStringLiteral("project");
    const QString name = MainExecutableName() + QStringLiteral(".mdb");
    EXPECT_EQ(GetPermissionDBFileName(GetComputerName(), project, false), GetConfigDir() + name);
    m_sandbox.WriteFile(QStringLiteral("project/") + name, QByteArray());
    EXPECT_EQ(GetPermissionDBFileName(GetComputerName(), project, false), project + QDir::separator() + name);
    EXPECT_EQ(FailureText([] { GetPermissionDBFileName(QStringLiteral("HOST"), QString(), true); }),
              QStringLiteral("GetPermissionDBFileName: proj_file directory not defined"));
}
