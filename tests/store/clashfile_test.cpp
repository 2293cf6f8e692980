// What a clash file must hold to be opened, read without a project: its project number, the
// project's paths, its tables; and a file that is no clash store refused before anything opens.

#include "frame/log.h"
#include "frame/processstate.h"
#include "pds/messages.h"
#include "pds/sqlitedb.h"
#include "pds/tableimporter.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/loadclashes.h"
#include "store/messages.h"

#include "support/failures.h"
#include "support/loglines.h"
#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// A file made of the given statements, as a clash file of some age might be.
QString MakeFile(const fxtest::Sandbox &box, const QString &name, const QString &statements)
{
    const QString file = box.Root() + name;
    SqliteDb db(file, SqliteDb::OpenMode::ReadWriteCreate);
    db.Execute(statements);
    return file;
}

const QString kStore = u"CREATE TABLE base_clash_table (clash_id INT); CREATE TABLE pdtable_101 (project_no VARCHAR(20));"_s;

} // namespace

TEST(ClashFileRecord, a_file_gives_its_project_and_paths_or_names_the_part_it_lacks)
{
    fxtest::Sandbox box;
    const QString good = MakeFile(box, u"good.fxdb"_s,
                                  kStore + u"INSERT INTO pdtable_101 VALUES ('P1');"
                                           u"CREATE TABLE proj_file_settings (proj_addr VARCHAR(255), proj_file VARCHAR(255));"
                                           u"INSERT INTO proj_file_settings VALUES ('server', 'd:\\pds\\it''s\\');"_s);
    const QByteArray before = fxtest::Sandbox::ReadFile(good);
    EXPECT_TRUE(IsValidMDB(good));
    EXPECT_EQ(GetProjectNumber4MDB(good), u"P1"_s);
    const ProjFile record = GetProjFile4MDB(good);
    EXPECT_EQ(record.PROJ_ADDR, u"server"_s);
    EXPECT_EQ(record.PROJ_FILE, u"d:\\pds\\it's\\"_s);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(good), before) << "reading never writes the file";
    EXPECT_EQ(QDir(box.Root()).entryList({u"good.fxdb?*"_s}), QStringList()) << "nor leaves a journal";

    // Without the table the read's own failure comes through.
    const QString noSettings = MakeFile(box, u"nosettings.fxdb"_s, kStore);
    const QString failure = fxtest::FailureText([&] { GetProjFile4MDB(noSettings); });
    EXPECT_TRUE(failure.startsWith(u"GetProjFile4MDB: "_s + QString::fromLatin1(msg::DatabaseError))) << failure.toStdString();
    EXPECT_TRUE(failure.contains(u"no such table: proj_file_settings"_s)) << failure.toStdString();
    EXPECT_EQ(fxtest::FailureText([&] { GetProjectNumber4MDB(noSettings); }),
              u"GetProjectNumber4MDB: "_s + QString::fromLatin1(msg::ProjectNumberNotDefined));

    const QString create = u"CREATE TABLE proj_file_settings (proj_addr VARCHAR(255), proj_file VARCHAR(255));"_s;
    const QList<std::pair<QString, const char *>> broken = {
        {QString(), msg::ProjFileSettingsNotDefined},
        {u"INSERT INTO proj_file_settings VALUES (' ', 'd:\\pds\\');"_s, msg::ClashFileProjAddrNotDefined},
        {u"INSERT INTO proj_file_settings VALUES ('server', NULL);"_s, msg::ClashFileProjFileNotDefined},
    };
    int n = 0;
    for (const auto &[row, text] : broken) {
        const QString file = MakeFile(box, u"broken%1.fxdb"_s.arg(++n), kStore + create + row);
        EXPECT_EQ(fxtest::FailureText([&] { GetProjFile4MDB(file); }), u"GetProjFile4MDB: "_s + QString::fromLatin1(text));
    }

    const QString missing = box.Root() + u"missing.fxdb"_s;
    const QString notThere = ArgForm(msg::ClashFileNotExists, {missing});
    EXPECT_EQ(fxtest::FailureText([&] { IsValidMDB(missing); }), u"IsValidMDB: "_s + notThere);
    EXPECT_EQ(fxtest::FailureText([&] { GetProjectNumber4MDB(missing); }), u"GetProjectNumber4MDB: "_s + notThere);
    EXPECT_EQ(fxtest::FailureText([&] { GetProjFile4MDB(missing); }), u"GetProjFile4MDB: "_s + notThere);
}

TEST(ClashFileTables, only_a_database_with_base_clash_table_is_a_store_and_internal_tables_are_not_listed)
{
    fxtest::Sandbox box;
    EXPECT_FALSE(IsValidMDB(MakeFile(box, u"other.fxdb"_s, u"CREATE TABLE pdtable_101 (project_no VARCHAR(20));"_s)));
    EXPECT_FALSE(IsValidMDB(box.WriteFile(u"text.fxdb"_s, QByteArray(4096, 'x'))));
    EXPECT_FALSE(IsValidMDB(box.WriteFile(u"empty.fxdb"_s, QByteArray())));
    EXPECT_TRUE(IsValidMDB(MakeFile(box, u"store.fxdb"_s, u"CREATE TABLE Base_Clash_Table (clash_id INT);"_s)));

    const QString file = MakeFile(box, u"tables.fxdb"_s,
                                  u"CREATE TABLE Zeta (a INT); CREATE TABLE alpha (a INT); CREATE TABLE [a$b] (a INT);"
                                  u"CREATE TABLE MSysObjects (a INT); CREATE TABLE msysACEs (a INT);"
                                  u"CREATE TABLE counter (id INTEGER PRIMARY KEY AUTOINCREMENT);"
                                  u"INSERT INTO counter DEFAULT VALUES; CREATE INDEX ix ON alpha (a); ANALYZE;"_s);
    SqliteDb db(file);
    ASSERT_TRUE(IsLocalTableExists(db, u"sqlite_sequence"_s));
    ASSERT_TRUE(IsLocalTableExists(db, u"sqlite_stat1"_s));
    EXPECT_EQ(GetDBTables(db), (QStringList{u"ab"_s, u"alpha"_s, u"counter"_s, u"Zeta"_s}));
}

TEST(ClashFileOpen, a_file_that_is_no_clash_store_is_refused_logged_once_and_leaves_nothing_open)
{
    fxtest::Sandbox box;
    Process().WorkDir = box.Temp();
    InitLog(QString(), u"clashfile"_s, QString());
    const auto expectRefused = [&](const QString &file, const QString &text) {
        const QString failure = fxtest::FailureText([&] { InitClashes(file, u"P1"_s); });
        EXPECT_EQ(failure, u"InitClashes: SetProjectDefinition: "_s + text);
        EXPECT_EQ(fxtest::LogLineCount(failure), 1) << failure.toStdString();
        EXPECT_EQ(GetProjectName(), QString::fromLatin1(msg::NoProject));
        EXPECT_TRUE(GetWorkDB().isEmpty());
        EXPECT_TRUE(GetClashFile().isEmpty());
        EXPECT_EQ(QDir(box.Temp()).entryList({u"fx*"_s}, QDir::Files), QStringList());
    };

    const QString noStore = MakeFile(box, u"nostore.fxdb"_s, u"CREATE TABLE pdtable_101 (project_no VARCHAR(20));"_s);
    expectRefused(noStore, ArgForm(msg::InvalidClashFile, {noStore}));
    const QString missing = box.Root() + u"missing.fxdb"_s;
    expectRefused(missing, u"IsValidMDB: "_s + ArgForm(msg::ClashFileNotExists, {missing}));
    // The caller's project does not stand in for the one the file lacks.
    expectRefused(MakeFile(box, u"noproject.fxdb"_s, kStore),
                  u"GetProjectNumber4MDB: "_s + QString::fromLatin1(msg::ProjectNumberNotDefined));
    Process().WorkDir.clear();
}
