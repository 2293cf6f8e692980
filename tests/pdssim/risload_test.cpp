// rislod as a tool: what it does with tables it cannot load and dumps it cannot finish.

#include "pds/risdumpwriter.h"
#include "pds/sqlitedb.h"
#include "pdssim/commands.h"
#include "pdssim/rissite.h"

#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(RisLoad, a_table_it_cannot_load_keeps_its_rows_in_the_bad_file_and_its_error_in_the_log)
{
    fxtest::Sandbox box;
    const pdssim::SiteLayout site(box.Root() + u"site"_s);
    pdssim::AddRisSchema(site, u"pd_demo"_s);
    fx::SqliteDb(site.RisSchemaDir() + u"pd_demo.db"_s).Execute(u"create table t (a int)"_s);
    const QByteArray rows = "1 \n2 \n";
    const QString dump = box.WriteFile(u"d.dmp"_s, "default schema pd_src\n"
                                                   "create table t (a int)\ninsert into t (a) values (?)\n"
                                                   "***variable*** a\n" + rows + "***RIS*** End of Table ***RIS***\n"
                                                   "create table u (b char(2))\ninsert into u (b) values (?)\n"
                                                   "***variable*** b\n'x' \n");
    const QString log = box.Root() + u"l.log"_s;
    const QString bad = box.Root() + u"b.bad"_s;
    auto load = [&](const char *mode, const QString &table) {
        return pdssim::RunRisLoad({u"--site"_s, site.Root(), u"-m"_s, u"w"_s, u"-i"_s, dump, u"-l"_s, log, u"-b"_s, bad,
                                   u"-c"_s, u"1"_s, u"-s"_s, u"pd_demo"_s, QString::fromLatin1(mode), u"table"_s,
                                   u"with"_s, u"data"_s, table});
    };

    EXPECT_EQ(load("new", u"t"_s), 1);
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(log).contains("RIS_E_RELATION_EXISTS"));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(bad), rows);
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(log).contains("Rows loaded: 0  Error rows: 2"));

    // A table whose end marker never comes is loaded, and the log says the dump is cut short.
    EXPECT_EQ(load("new", u"u"_s), 1);
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(log).contains("RIS_E_DUMP_INCOMPLETE"));
    EXPECT_EQ(fx::SqliteDb(site.RisSchemaDir() + u"pd_demo.db"_s).Read(u"select b from u"_s).Value(0, 0).toString(), u"x"_s);

    EXPECT_EQ(load("clear", u"t"_s), 0);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(bad), QByteArray());
    EXPECT_EQ(fx::SqliteDb(site.RisSchemaDir() + u"pd_demo.db"_s).Read(u"select a from t"_s).RecordCount(), 2);
}

TEST(RisLoad, every_table_of_a_dump_written_by_fendrix_is_loaded_in_one_run)
{
    fxtest::Sandbox box;
    const pdssim::SiteLayout site(box.Root() + u"site"_s);
    pdssim::AddRisSchema(site, u"pd_demo"_s);
    fx::SqliteDb(site.RisSchemaDir() + u"pd_demo.db"_s).Execute(u"create table t (a int); create table u (b char(2))"_s);
    const QString store = box.Root() + u"store.fxdb"_s;
    fx::SqliteDb(store, fx::SqliteDb::OpenMode::ReadWriteCreate)
        .Execute(u"create table t (a INTEGER); insert into t values (1), (2); create table u (b TEXT(2)); insert into u values ('x');"_s);
    // Index and grant lines follow each table's end, within the same block as the next table.
    const QString dump = fx::risdump::RISDumpCreate(box.Root(), store, u"pd_src"_s, u"t;u"_s);
    const QString log = box.Root() + u"l.log"_s;
    EXPECT_EQ(pdssim::RunRisLoad({u"--site"_s, site.Root(), u"-m"_s, u"w"_s, u"-i"_s, dump, u"-l"_s, log, u"-b"_s,
                                  box.Root() + u"b.bad"_s, u"-c"_s, u"100"_s, u"-s"_s, u"pd_demo"_s, u"clear"_s, u"table"_s,
                                  u"with"_s, u"data"_s, u"t"_s, u"u"_s}),
              0) << fxtest::Sandbox::ReadFile(log).toStdString();
    fx::SqliteDb schema(site.RisSchemaDir() + u"pd_demo.db"_s);
    EXPECT_EQ(schema.Read(u"select count(*) from t"_s).Value(0, 0).toLongLong(), 2);
    EXPECT_EQ(schema.Read(u"select b from u"_s).Value(0, 0).toString(), u"x"_s);
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(log).contains("Rows loaded: 3  Error rows: 0"));
}

} // namespace
