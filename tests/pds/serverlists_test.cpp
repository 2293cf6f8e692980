// The options dialog's lists of servers and databases.

#include "pds/cris.h"
#include "pds/messages.h"
#include "pds/sqlitedb.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(ServerLists, tns_names_are_the_top_level_entries_of_the_file_tns_admin_or_oracle_home_points_to)
{
    fxtest::Sandbox box;
    box.Env().Unset("TNS_ADMIN");
    box.Env().Unset("ORACLE_HOME");
    CRIS cris;
    EXPECT_TRUE(cris.GetTNSNames().isEmpty());

    box.WriteFile(u"orahome/network/admin/tnsnames.ora"_s,
                  "# The project servers\n"
                  "PDSPROD.WORLD =\n"
                  "  (DESCRIPTION =\n"
                  "    (ADDRESS = (PROTOCOL = TCP)(HOST = db1)(PORT = 1521))  # NOT_A_NAME = (x)\n"
                  "    (CONNECT_DATA =\n"
                  "      (SERVICE_NAME = prod)))\n"
                  "devdb=(DESCRIPTION=(ADDRESS=(PROTOCOL=TCP)(HOST=db2)(PORT=1521))(CONNECT_DATA=(SID=dev)))\n"
                  "#OLDDB = (DESCRIPTION = (ADDRESS = (HOST = x)))\n"
                  "alias_b, alias_a =\n"
                  " (DESCRIPTION = (ADDRESS = (HOST = db3))\n"
                  " )\n"
                  "IFILE = extra.ora\n");
    // An include that includes its includer must not run round for ever.
    box.WriteFile(u"orahome/network/admin/extra.ora"_s,
                  "EXTRA = (DESCRIPTION = (ADDRESS = (HOST = db4)))\n"
                  "DEVDB = (DESCRIPTION = (ADDRESS = (HOST = db2)))\n"
                  "IFILE = tnsnames.ora\n");
    box.Env().Set("ORACLE_HOME", box.Root() + u"orahome"_s);
    // TNS_ADMIN naming a folder without the file leaves ORACLE_HOME's in force.
    box.Env().Set("TNS_ADMIN", box.Root() + u"empty"_s);
    EXPECT_EQ(cris.GetTNSNames(),
              QStringList({u"alias_a"_s, u"alias_b"_s, u"devdb"_s, u"EXTRA"_s, u"PDSPROD.WORLD"_s}));

    box.WriteFile(u"tnsadmin/tnsnames.ora"_s, "ONLY_HERE.DOMAIN.COM =\r\n  (DESCRIPTION = (ADDRESS = (HOST = h)))\r\n");
    box.Env().Set("TNS_ADMIN", box.Root() + u"tnsadmin"_s);
    EXPECT_EQ(cris.GetTNSNames(), QStringList({u"ONLY_HERE.DOMAIN.COM"_s}));
}

TEST(ServerLists, registered_sql_servers_are_the_value_names_of_the_client_alias_key)
{
    fxtest::Sandbox box;
    CRIS cris;
    EXPECT_TRUE(cris.GetRegisteredSQLServers().isEmpty());

    box.WriteFile(u"program/Registry.ini"_s, "[SOFTWARE\\Microsoft\\MSSQLServer\\Client\\Other]\n"
                                             "NOTME=DBMSSOCN,x\n"
                                             "[SOFTWARE\\Microsoft\\MSSQLServer\\Client\\ConnectTo]\n"
                                             "PDSSQL=DBMSSOCN,sqlhost,1433\n"
                                             "BACKUP\\INST=DBMSSOCN,bk\n");
    QStringList servers = cris.GetRegisteredSQLServers();
    servers.sort();
    EXPECT_EQ(servers, QStringList({u"BACKUP\\INST"_s, u"PDSSQL"_s}));
}

TEST(ServerLists, the_database_query_lists_names_in_order_and_a_blank_server_is_refused)
{
    // Run on a stand-in catalog, so that a typo in a name or the order fails here.
    SqliteDb db(u":memory:"_s, SqliteDb::OpenMode::ReadWriteCreate);
    db.Execute(u"ATTACH DATABASE ':memory:' AS sys; CREATE TABLE sys.databases (database_id INTEGER, name TEXT);"
               "INSERT INTO sys.databases VALUES (5, 'pds_proj'), (1, 'master'), (6, 'archive')"_s);
    const Recordset result = db.Read(SQLServerDatabasesQuery());
    ASSERT_EQ(result.FieldCount(), 1);
    QStringList names;
    for (const QVariantList &row : result.Rows())
        names << row.at(0).toString();
    EXPECT_EQ(names, QStringList({u"archive"_s, u"master"_s, u"pds_proj"_s}));

    EXPECT_EQ(fxtest::FailureText([] { CRIS().GetSQLServerDatabases(u" "_s, u"sa"_s, u"secret"_s); }),
              u"CRIS::GetSQLServerDatabases: "_s + ArgForm(msg::SQLServerNotDefined));
}
