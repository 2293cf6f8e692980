// Fendrix's gateway over a site's RIS stand-ins, end to end: CRIS finds the tools through the
// registry, runs them through the site's wrapper scripts and reads what they write.

#include "frame/log.h"
#include "frame/messages.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/sqlitedb.h"
#include "pdssim/rissite.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

const QString kWideNote = u"a note that fills its sixty characters up to the last one: Z"_s;

class RisSite : public testing::Test
{
protected:
    void SetUp() override
    {
        // A quote and a blank in the site's path: the wrappers must keep it whole.
        QDir().mkpath(site.RisSchemaDir());
        box.WriteFile(u"site o'k/ris/schemas.txt"_s, "pd_demo\ndd_other\n");
        SqliteDb demo(site.RisSchemaDir() + u"pd_demo.db"_s, SqliteDb::OpenMode::ReadWriteCreate);
        demo.Execute(u"create table pdtable_111 (discipline_indx_no smallint not null, discipline_name char(20), "
                     "remark char(8));"
                     "create unique index u111 on pdtable_111 (discipline_indx_no);"
                     "insert into pdtable_111 values (1, 'Piping', NULL), (2, 'Equipment', 'A1');"
                     "create table pdtable_131 (clash_id int, note char(60), length double, ratio real, "
                     "created timestamp, amount decimal(8,2));"
                     "insert into pdtable_131 values (7, 'it''s  two blanks', 2.5, 0.25, '1994-05-01 12:30:00', 12.5),"
                     "(8, NULL, NULL, NULL, NULL, NULL), (9, "_s
                     + DBQuote(kWideNote) + u", -1e-07, 3, '2001-12-31 23:59:59', -3.25)"_s);
        SqliteDb(site.RisSchemaDir() + u"dd_other.db"_s, SqliteDb::OpenMode::ReadWriteCreate)
            .Execute(u"create table t (a int)"_s);
        pdssim::WriteRisToolWrappers(site, QStringLiteral(PDSSIM_EXECUTABLE));
        box.WriteFile(u"program/Registry.ini"_s,
                      "[Software\\Intergraph\\RIS\\05.04]\nPathName=" + site.RisDir().toUtf8() + "\n");
        cris.SetUseRIS();
    }

    QString Failure(const std::function<void()> &body) const { return fxtest::FailureText(body); }

    fxtest::Sandbox box;
    pdssim::SiteLayout site{box.Root() + u"site o'k"_s};
    CRIS cris;
};

TEST_F(RisSite, reads_writes_lists_and_imports_a_schema_through_the_tools)
{
    EXPECT_EQ(cris.GetRISPath(), site.RisBinDir());
    const Recordset seven = cris.DBRead(u"pd_demo"_s, u"SELECT note, length, amount FROM pdtable_131 WHERE clash_id = 7"_s);
    ASSERT_EQ(seven.RecordCount(), 1);
    EXPECT_EQ(seven.Value(0, u"note"_s).toString(), u"it's  two blanks"_s);
    EXPECT_DOUBLE_EQ(seven.Value(0, u"length"_s).toDouble(), 2.5);
    EXPECT_DOUBLE_EQ(seven.Value(0, u"amount"_s).toDouble(), 12.5);
    const Recordset nulls = cris.DBRead(u"pd_demo"_s, u"SELECT clash_id FROM pdtable_131 WHERE note IS NULL"_s);
    ASSERT_EQ(nulls.RecordCount(), 1);
    EXPECT_EQ(nulls.Value(0, 0).toInt(), 8);
    const Recordset wide = cris.DBRead(u"pd_demo"_s, u"SELECT note, ratio FROM pdtable_131 WHERE clash_id = 9"_s);
    ASSERT_EQ(wide.RecordCount(), 1);
    EXPECT_EQ(wide.Value(0, 0).toString(), kWideNote);
    EXPECT_DOUBLE_EQ(wide.Value(0, 1).toDouble(), 3.0);

    cris.DBWrite(u"pd_demo"_s, u"INSERT INTO pdtable_111 VALUES (3, 'Civil', 'it''s;')"_s, true);
    const Recordset written = cris.DBRead(u"pd_demo"_s, u"SELECT remark FROM pdtable_111 WHERE discipline_indx_no = 3"_s);
    ASSERT_EQ(written.RecordCount(), 1);
    EXPECT_EQ(written.Value(0, 0).toString(), u"it's;"_s);

    EXPECT_EQ(cris.DBGetTables(u"pd_demo"_s), (QStringList{u"pdtable_111"_s, u"pdtable_131"_s}));
    const QList<ColumnDescription> columns = cris.DBGetCols(u"pd_demo"_s, u"pdtable_111"_s);
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns.at(0).name, u"discipline_indx_no"_s);
    EXPECT_EQ(columns.at(0).type, u"smallint not null"_s);
    EXPECT_EQ(columns.at(1).size, 20);
    EXPECT_TRUE(cris.IsTableExists(u"pd_demo"_s, u"PDTABLE_131"_s));
    EXPECT_FALSE(cris.IsTableExists(u"pd_demo"_s, u"pdtable_999"_s));

    EXPECT_EQ(cris.RISGetSchemas(false), (QStringList{u"pd_demo"_s, u"dd_other"_s}));
    EXPECT_EQ(cris.RISGetSchemas(), QStringList{u"pd_demo"_s});
    EXPECT_EQ(cris.RISGetSchemaFilePath(), site.RisSchemaFile());

    const QString store = box.Root() + u"store.db"_s;
    ASSERT_TRUE(CreateMDB(store));
    cris.DBImport2Access(store, u"clashes"_s, u"SELECT * FROM pdtable_131"_s, u"pd_demo"_s);
    const Recordset imported = SqliteDb(store).Read(u"SELECT clash_id, note, created FROM clashes ORDER BY clash_id"_s);
    ASSERT_EQ(imported.RecordCount(), 3);
    EXPECT_TRUE(imported.Value(1, 1).isNull());
    EXPECT_EQ(imported.Value(2, 1).toString(), kWideNote);
    EXPECT_FALSE(imported.Value(0, 2).isNull());
    // Nothing of the route through the tools is left in the gateway's folder.
    EXPECT_EQ(QDir(cris.GetTempDir()).entryList(QDir::Files), QStringList());
}

TEST_F(RisSite, unloads_in_both_forms_read_back_alike_and_a_condition_filters_rows)
{
    const QString fixed = cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_111"_s, {}, RISDumpForm::Fixed, true, {}, true);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(fixed),
              "default schema pd_demo\n"
              "create table pdtable_111 (discipline_indx_no smallint not null, discipline_name char(20), remark char(8))\n"
              "insert into pdtable_111 (discipline_indx_no, discipline_name, remark) values (?, ?, ?)\n"
              "discipline_indx_no 1 6 discipline_name 8 27 remark 29 36 \n"
              "1      Piping                        \n"
              "2      Equipment            A1       \n"
              "create unique index u111 on pdtable_111 (discipline_indx_no)\n"
              "grant select, insert, delete, update on pdtable_111 to PUBLIC\n"
              "***RIS*** End of Table ***RIS***\n"
              "***RIS*** End of Schema ***RIS***\n");

    const QString sql = u"SELECT * FROM pdtable_131 ORDER BY clash_id"_s;
    const QString fixed131 = cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_131"_s);
    const QString free131 = cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_131"_s, {}, RISDumpForm::Variable);
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(free131).contains(
        "***variable*** clash_id note length ratio created amount\n"
        "7 'it''s  two blanks' 2.5 0.25 1994-05-01:12:30:00 12.50 \n8           \n"));
    const Recordset fromFixed = cris.RISDumpRead(fixed131, u"pd_demo"_s, sql);
    const Recordset fromFree = cris.RISDumpRead(free131, u"pd_demo"_s, sql);
    ASSERT_EQ(fromFixed.RecordCount(), 3);
    EXPECT_EQ(fromFixed.Rows(), fromFree.Rows());
    EXPECT_EQ(fromFree.Value(0, u"note"_s).toString(), u"it's  two blanks"_s);
    EXPECT_EQ(fromFree.Value(2, u"note"_s).toString(), kWideNote);
    EXPECT_DOUBLE_EQ(fromFree.Value(2, u"length"_s).toDouble(), -1e-07);
    EXPECT_DOUBLE_EQ(fromFree.Value(2, u"amount"_s).toDouble(), -3.25);
    for (int field = 1; field < fromFree.FieldCount(); ++field)
        EXPECT_TRUE(fromFree.Value(1, field).isNull()) << field;

    const QString filtered = cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_131"_s, u"note like '%''s%'"_s);
    const Recordset one = cris.RISDumpRead(filtered, u"pd_demo"_s, sql);
    ASSERT_EQ(one.RecordCount(), 1);
    EXPECT_EQ(one.Value(0, u"clash_id"_s).toInt(), 7);
}

TEST_F(RisSite, a_changed_dump_loads_with_clear_and_its_rejected_rows_reach_the_log_and_stay_beside_it)
{
    InitLog(u"test"_s, QString(), box.Temp() + u"fendrix.log"_s);
    const QString dump = cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_111"_s, {}, RISDumpForm::Variable, true, {}, true);
    QByteArray text = fxtest::Sandbox::ReadFile(dump);
    text.replace("'Equipment' ", "'Equipment ''E''' ");
    text.replace("create unique index", "1 'Duplicate'   \n'x' 'Not a number'   \n3 'Too' 'many' 'fields' \n"
                                       "create unique index");
    const QString changed = box.WriteFile(u"changed.dmp"_s, text);
    const QString toolLog = box.Root() + u"rislod.log"_s;

    const QString failure = Failure([&] {
        cris.RISLoad(changed, u"pd_demo"_s, u"pdtable_111"_s, RISLoadMode::Clear, 1, toolLog);
    });
    const QString kept = box.Temp() + u"fendrix_rislod.bad"_s;
    EXPECT_EQ(failure, u"CRIS::RISLoad: "_s + ArgForm(msg::RisLoadRowsRejected, {changed, kept}));
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(kept).contains("'Too' 'many' 'fields'")) << "the named file is still there";
    const QString log = QString::fromUtf8(fxtest::Sandbox::ReadFile(GetLogFile()));
    const qsizetype begin = log.indexOf(QString::fromLatin1(msg::BeginOfBadFile));
    const qsizetype end = log.indexOf(QString::fromLatin1(msg::EndOfBadFile));
    for (const QString &row : {u"1 'Duplicate'"_s, u"'x' 'Not a number'"_s, u"'Too' 'many'"_s}) {
        const qsizetype at = log.indexOf(row);
        EXPECT_TRUE(begin >= 0 && begin < at && at < end) << row.toStdString() << log.toStdString();
    }
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(toolLog).contains("Rows loaded: 2  Error rows: 3"));
    const Recordset rows = cris.DBRead(u"pd_demo"_s, u"SELECT discipline_name FROM pdtable_111 ORDER BY discipline_indx_no"_s);
    ASSERT_EQ(rows.RecordCount(), 2);
    EXPECT_EQ(rows.Value(1, 0).toString(), u"Equipment 'E'"_s);

    // The dump as it was puts the table back, every row accepted.
    cris.RISLoad(dump, u"pd_demo"_s, u"pdtable_111"_s, RISLoadMode::Clear, 100, toolLog);
    EXPECT_EQ(cris.DBRead(u"pd_demo"_s, u"SELECT discipline_name FROM pdtable_111 WHERE discipline_indx_no = 2"_s)
                  .Value(0, 0)
                  .toString(),
              u"Equipment"_s);
    // Into another schema as new tables, the index coming along.
    cris.RISLoad(dump, u"dd_other"_s, u"pdtable_111"_s, RISLoadMode::New, 100, toolLog, true);
    EXPECT_EQ(cris.DBGetTables(u"dd_other"_s), (QStringList{u"pdtable_111"_s, u"t"_s}));
    EXPECT_NE(Failure([&] { cris.DBWrite(u"dd_other"_s, u"INSERT INTO pdtable_111 VALUES (1, 'again', NULL)"_s); })
                  .indexOf(u"RIS_E_DUPLICATE_VALUE"_s),
              -1);
}

TEST_F(RisSite, tool_errors_and_missing_tools_surface_as_failures_of_the_gateway)
{
    const QString unknown = Failure([&] { cris.DBWrite(u"pd_demo"_s, u"DELETE FROM pdtable_999 WHERE a = 1"_s); });
    EXPECT_TRUE(unknown.startsWith(u"CRIS:DBWrite: CRIS::RISWrite: CRIS::RunRISBatch: CRIS::RISGetError: "_s))
        << unknown.toStdString();
    EXPECT_TRUE(unknown.contains(u"RIS Error: RIS_E_UNKNOWN_RELATION (0x8a94a13a)\r\nDELETE FROM pdtable_999 WHERE a = 1\r\n"
                                 "            ^\r\nRelation unknown"_s))
        << unknown.toStdString();
    // An index that exists already is no failure.
    cris.DBWrite(u"pd_demo"_s, u"CREATE UNIQUE INDEX u111 ON pdtable_111 (discipline_indx_no)"_s);
    EXPECT_TRUE(Failure([&] { cris.DBRead(u"pd_nope"_s, u"SELECT * FROM t"_s); }).contains(u"RIS_E_UNKNOWN_SCHEMA"_s));

    cris.RISClean(u"PD_DEMO"_s);
    EXPECT_EQ(Failure([&] { cris.RISClean(u"pd_nope"_s); }), u"CRIS::RISClean: "_s + ArgForm(msg::RisCleanFailed));

    const QString tools = site.RisBinDir();
    box.Env().Set("PDSSIM_MISSING_TOOLS", u"risunlod,rislod , risbatch,risclnsr"_s);
    EXPECT_EQ(Failure([&] { cris.RISUnload(u"pd_demo"_s, box.Temp()); }),
              u"CRIS::RISUnload: "_s + ArgForm(msg::RisunlodNotFound, {tools}));
    const QString dump = box.WriteFile(u"any.dmp"_s, "default schema pd_demo\n***RIS*** End of Schema ***RIS***\n");
    EXPECT_EQ(Failure([&] { cris.RISLoad(dump, u"pd_demo"_s); }),
              u"CRIS::RISLoad: "_s + ArgForm(msg::RislodNotFound, {tools}));
    EXPECT_EQ(Failure([&] { cris.RISGetSchemas(); }),
              u"CRIS::RISGetSchemas: CRIS::RunRISBatch: "_s + ArgForm(msg::RisbatchNotFound, {tools}));
    EXPECT_EQ(Failure([&] { cris.RISClean(u"pd_demo"_s); }),
              u"CRIS::RISClean: "_s + ArgForm(msg::RisclnsrNotFound, {tools}));
}

} // namespace
