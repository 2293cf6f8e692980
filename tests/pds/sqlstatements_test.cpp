// What the SQL kinds send to Oracle and SQL Server, checked as text: no such server is here.

#include "pds/messages.h"
#include "pds/odbc.h"
#include "pds/odbcschemaconnection.h"
#include "pds/sqlstatements.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(SqlConnectionStrings, each_kind_fills_its_fields_in_place_and_braces_what_would_end_them)
{
    EXPECT_EQ(OracleConnectionString(u"Oracle"_s, u"PDSORA"_s, u"pd_user"_s, u"secret"_s),
              u"Driver={Oracle};Dbq=PDSORA;Uid=pd_user;Pwd=secret;"_s);
    EXPECT_EQ(SQLServerConnectionString(u"ODBC Driver 17 for SQL Server"_s, u"srv\\inst"_s, u"pds"_s, u"sa"_s, u"pw"_s),
              u"Driver={ODBC Driver 17 for SQL Server};Server=srv\\inst;Database=pds;Uid=sa;Pwd=pw"_s);
    EXPECT_EQ(SQLServerConnectionString(u"D"_s, u"srv"_s, u"pds"_s, u" "_s, u"ignored"_s),
              u"Driver={D};Server=srv;Database=pds;Trusted_Connection=Yes"_s);
    EXPECT_EQ(PostgreSQLConnectionString(u"PostgreSQL Unicode"_s, u"db.local:5433"_s, u"pds"_s, u"u"_s, u"p"_s),
              u"Driver={PostgreSQL Unicode};Server=db.local;Port=5433;Database=pds;Uid=u;Pwd=p;"_s);
    EXPECT_EQ(PostgreSQLConnectionString(u"P"_s, u"db.local"_s, u"pds"_s, u"u"_s, u"p"_s),
              u"Driver={P};Server=db.local;Database=pds;Uid=u;Pwd=p;"_s);
    EXPECT_EQ(OracleConnectionString(u"O"_s, u"S"_s, u"u"_s, u"a;b}c"_s), u"Driver={O};Dbq=S;Uid=u;Pwd={a;b}}c};"_s);
}

TEST(SqlConnectionStrings, a_failure_text_loses_the_password_in_every_form)
{
    const QString connection = u"Driver={O};Dbq=S;Uid=u;Pwd={a;b}}c};"_s;
    EXPECT_EQ(BlankPassword(u"bad login Driver={O};Dbq=S;Uid=u;Pwd={a;b}}c}; for u"_s, connection),
              u"bad login Driver={O};Dbq=S;Uid=u;Pwd=; for u"_s);
    EXPECT_EQ(BlankPassword(u"PASSWORD=tiger rejected, tiger said"_s, u"Uid=scott;Password=tiger"_s),
              u"PASSWORD= rejected, ***** said"_s);
    // A short password is only blanked where it is named: "pw" would eat ordinary words.
    EXPECT_EQ(BlankPassword(u"pwd=pw; powder"_s, u"Pwd=pw"_s), u"pwd=; powder"_s);
}

TEST(SqlConnectionStrings, the_driver_names_come_from_the_program_settings_or_their_defaults)
{
    fxtest::Sandbox box;
    EXPECT_EQ(ConfiguredOdbcDriver(configkey::OracleDriver), u"Oracle"_s);
    EXPECT_EQ(ConfiguredOdbcDriver(configkey::SQLServerDriver), u"ODBC Driver 17 for SQL Server"_s);
    EXPECT_EQ(ConfiguredOdbcDriver(configkey::PostgreSQLDriver), u"PostgreSQL Unicode"_s);
    box.WriteFile(u"program/Fendrix.ini"_s, "[ODBC]\nOracleDriver=Oracle 19 ODBC driver\nPostgreSQLDriver=\n");
    EXPECT_EQ(ConfiguredOdbcDriver(configkey::OracleDriver), u"Oracle 19 ODBC driver"_s);
    EXPECT_EQ(ConfiguredOdbcDriver(configkey::PostgreSQLDriver), u"PostgreSQL Unicode"_s);
}

TEST(SqlSchemaStatements, each_kind_switches_the_schema_its_own_way)
{
    EXPECT_EQ(SchemaStatements(DBConType::Oracle, u"pd_proj"_s, false),
              QStringList({u"ALTER SESSION SET CURRENT_SCHEMA = pd_proj"_s}));
    EXPECT_EQ(SchemaStatements(DBConType::Oracle, u"pd_proj"_s, true),
              QStringList({u"ALTER SESSION SET CURRENT_SCHEMA=pd_proj"_s}));
    EXPECT_TRUE(SchemaStatements(DBConType::Oracle, u" "_s, true).isEmpty());
    EXPECT_EQ(SchemaStatements(DBConType::SQLServer, u"o'brien"_s, false),
              QStringList({u"REVERT"_s, u"EXECUTE AS LOGIN = 'o''brien'"_s}));
    EXPECT_EQ(SchemaStatements(DBConType::SQLServer, QString(), true), QStringList({u"REVERT"_s}));
    EXPECT_EQ(SchemaStatements(DBConType::PostgreSQL, u"pd_proj"_s, false),
              QStringList({u"SET search_path TO pd_proj"_s}));
    EXPECT_EQ(SchemaStatements(DBConType::PostgreSQL, u"PD \"x\"; drop"_s, false),
              QStringList({u"SET search_path TO \"PD \"\"x\"\"; drop\""_s}));
    EXPECT_EQ(fxtest::FailureText([] { SchemaStatements(DBConType::Oracle, u"pd; drop user x"_s, false); }),
              u": "_s + ArgForm(msg::InvalidDatabaseName, {u"pd; drop user x"_s}));
}

TEST(SqlServerStatements, sql_server_gets_the_names_that_ris_syntax_quotes_in_brackets_and_the_other_kinds_keep_them)
{
    const QString ris = u"SELECT \"lock_owner\", \"odd \"\"name\"\"\", 'a \"quoted\" text', x FROM \"pd_x\".\"pdtable_102\" "
                        u"WHERE \"a]b\" = 'it''s \"x\"'"_s;
    EXPECT_EQ(ServerStatement(DBConType::SQLServer, ris),
              u"SELECT [lock_owner], [odd \"name\"], 'a \"quoted\" text', x FROM [pd_x].[pdtable_102] "
              u"WHERE [a]]b] = 'it''s \"x\"'"_s);
    // A quote left open is no name: the text goes as it is, for the server to refuse.
    EXPECT_EQ(ServerStatement(DBConType::SQLServer, u"SELECT \"x FROM t"_s), u"SELECT \"x FROM t"_s);
    EXPECT_EQ(ServerStatement(DBConType::SQLServer, u"UPDATE t SET a = 'it''s' WHERE b = 1"_s),
              u"UPDATE t SET a = 'it''s' WHERE b = 1"_s);
    for (const DBConType kind : {DBConType::Oracle, DBConType::PostgreSQL, DBConType::SQLite})
        EXPECT_EQ(ServerStatement(kind, ris), ris) << int(kind);
}

TEST(SqlUserStatements, oracle_users_are_made_dropped_and_looked_up_with_the_known_texts)
{
    EXPECT_EQ(OracleCreateUserStatements(u"pd_user"_s, u"pw1"_s, u"users"_s, u"temp"_s),
              QStringList({u"create user pd_user identified by pw1"_s,
                           u"grant create database link, create sequence, alter session, create synonym, "
                           "create table, create view to pd_user"_s,
                           u"grant connect to pd_user"_s, u"alter user pd_user default tablespace users"_s,
                           u"alter user pd_user temporary tablespace temp"_s,
                           u"alter user pd_user quota unlimited on users"_s, u"commit"_s}));
    EXPECT_EQ(OracleCreateUserStatements(u"u"_s, u"p@ss word"_s, u"t"_s, u"x"_s).first(),
              u"create user u identified by \"p@ss word\""_s);
    EXPECT_FALSE(fxtest::FailureText([] { OracleCreateUserStatements(u"u"_s, u"a\"b"_s, u"t"_s, u"x"_s); }).isEmpty());
    EXPECT_FALSE(fxtest::FailureText([] { OracleCreateUserStatements(u"u x"_s, u"p"_s, u"t"_s, u"x"_s); }).isEmpty());
    EXPECT_EQ(OracleDropUserStatements(u"pd_user"_s), QStringList({u"drop user pd_user cascade"_s, u"commit"_s}));
    EXPECT_EQ(OracleUserExistsQuery(u"pd_o'user"_s), u"SELECT 1 FROM dba_users WHERE(username = 'PD_O''USER')"_s);
}

TEST(SqlUserStatements, sql_server_logins_carry_every_user_value_quoted)
{
    EXPECT_EQ(SQLServerCreateUserStatements(u"pd]x"_s, u"it's"_s, u"pds"_s),
              QStringList({u"CREATE LOGIN [pd]]x] WITH PASSWORD = N'it''s'"_s, u"USE [pds]"_s,
                           u"CREATE USER [pd]]x] FOR LOGIN [pd]]x]"_s,
                           u"EXEC sp_addrolemember 'db_owner', N'pd]x'"_s}));
    EXPECT_EQ(SQLServerCreateUserStatements(u"u"_s, u"p"_s, QString()).size(), 3);
    EXPECT_EQ(SQLServerDropUserStatements(u"u"_s), QStringList({u"DROP LOGIN [u]"_s}));
    EXPECT_EQ(SQLServerUserExistsQuery(u"o'u"_s), u"SELECT 1 FROM sys.server_principals WHERE(name = N'o''u')"_s);
}
