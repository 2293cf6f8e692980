// The RIS tools as CRIS runs them, against stand-in tools that record their command lines and
// answer with prepared files.

#include "frame/log.h"
#include "frame/messages.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/sqlitedb.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// Each stand-in appends its argument list to calls.txt, copies its input where it has one,
// and writes the answer file named after it (risbatch.answer, ...) to its output.
constexpr char kToolScript[] = R"(#!/bin/sh
dir=$(dirname "$0"); tool=$(basename "$0")
printf '%s\n' "$tool $*" >> "$dir/calls.txt"
out=""; in=""; log=""; bad=""
while [ $# -gt 0 ]; do
  case "$1" in
    -i) in="$2"; shift;;
    -o) out="$2"; shift;;
    -f|-l) log="$2"; shift;;
    -b) bad="$2"; shift;;
  esac
  shift
done
[ -n "$in" ] && [ "$tool" = risbatch ] && cp "$in" "$dir/last_input.txt"
case "$tool" in
  risbatch) [ -f "$dir/risbatch.answer" ] && cp "$dir/risbatch.answer" "$out";;
  risunlod) [ -f "$dir/risunlod.answer" ] && cp "$dir/risunlod.answer" "$out"
            [ -f "$dir/risunlod.log" ] && cp "$dir/risunlod.log" "$log";;
  rislod)   echo "Loaded schema" > "$log"; [ -f "$dir/rislod.bad" ] && cp "$dir/rislod.bad" "$bad";;
  risclnsr) [ -f "$dir/risclnsr.answer" ] && cat "$dir/risclnsr.answer";;
esac
exit 0
)";

constexpr char kErrorBox[] =
    "*******************************************************************************\n"
    "*   RIS Error: RIS_E_UNKNOWN_RELATION (0x8a94a13a)                            *\n"
    "*                                                                             *\n"
    "*   alter schema sch1 include table t1                                        *\n"
    "*                                  ^                                          *\n"
    "*   Relation unknown or no access for operation.                              *\n"
    "*******************************************************************************\n";

constexpr char kIndexBox[] =
    "*******************************************************************************\n"
    "*   RIS Error: RIS_E_CREATE_INDEX (0x8a94a001)                                *\n"
    "*******************************************************************************\n";

class RisTools : public testing::Test
{
protected:
    void SetUp() override
    {
        tools = box.Root() + u"ris/BIN/"_s;
        QDir().mkpath(tools);
        for (const char *tool : {"risbatch", "risunlod", "rislod", "risclnsr"}) {
            const QString path = box.WriteFile(u"ris/BIN/"_s + QString::fromLatin1(tool), kToolScript);
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        cris.SetUseRIS(tools);
    }

    void Answer(const QString &name, const QByteArray &content) { box.WriteFile(u"ris/BIN/"_s + name, content); }
    QStringList Calls() const
    {
        return QString::fromUtf8(fxtest::Sandbox::ReadFile(tools + u"calls.txt"_s)).split(u'\n', Qt::SkipEmptyParts);
    }
    QString LastInput() const { return QString::fromUtf8(fxtest::Sandbox::ReadFile(tools + u"last_input.txt"_s)); }
    QString Dump() const
    {
        return box.WriteFile(u"dump.dmp"_s, "default schema pd_demo\n"
                                            "create table pdtable_111 (discipline_indx_no smallint)\n"
                                            "insert into pdtable_111 (discipline_indx_no) values (?)\n"
                                            "discipline_indx_no 1 6 \n1      \n"
                                            "***RIS*** End of Table ***RIS***\n***RIS*** End of Schema ***RIS***\n");
    }

    fxtest::Sandbox box;
    QString tools;
    CRIS cris;
};

TEST(RisGetError, only_a_real_error_block_fails_and_its_message_keeps_the_box_text)
{
    fxtest::Sandbox box;
    const QString boxText = u"RIS Error: RIS_E_UNKNOWN_RELATION (0x8a94a13a)\r\n"
                            "alter schema sch1 include table t1\r\n"
                            "                               ^\r\n"
                            "Relation unknown or no access for operation."_s;
    const std::pair<QByteArray, QString> cases[] = {
        {"No errors encountered recently\n", QString()},
        {"RIS Error: but no star line, so no error box\n", QString()},
        {kIndexBox, QString()},
        {"*******************************************************************************\n"
         "*   RIS Information: RIS_I_SCHEMA_CREATED (0x0000010a)                        *\n"
         "*******************************************************************************\n",
         QString()},
        {QByteArray("Statement 1 done\r\n") + QByteArray(kErrorBox).replace("\n", "\r\n"),
         u"CRIS::RISGetError: "_s + ArgForm(msg::ToolMessage, {boxText})},
        {QByteArray(kIndexBox) + kErrorBox, u"CRIS::RISGetError: "_s + ArgForm(msg::ToolMessage, {boxText})},
    };
    for (const auto &[output, expected] : cases) {
        const QString file = box.WriteFile(u"out.txt"_s, output);
        EXPECT_EQ(fxtest::FailureText([&] { CRIS::RISGetError(file); }), expected) << output.constData();
    }
}

TEST_F(RisTools, statements_go_to_risbatch_in_its_input_file_and_errors_come_back)
{
    Answer(u"risbatch.answer"_s, "1 row updated\n");
    cris.DBWrite(u"pd_demo"_s, u"UPDATE pdtable_102 SET lock_flag = 1"_s, true);
    EXPECT_EQ(LastInput(), u"default schema pd_demo;\r\nUPDATE pdtable_102 SET lock_flag = 1;commit;\r\n\r\nquit;"_s);
    ASSERT_EQ(Calls().size(), 1);
    EXPECT_TRUE(Calls().first().startsWith(u"risbatch -i "_s + cris.GetTempDir()));

    Answer(u"risbatch.answer"_s, kErrorBox);
    EXPECT_TRUE(fxtest::FailureText([&] { cris.DBWrite(u"pd_demo"_s, u"DELETE FROM t;"_s); })
                    .startsWith(u"CRIS:DBWrite: CRIS::RISWrite: CRIS::RunRISBatch: CRIS::RISGetError: "_s));
    EXPECT_EQ(LastInput(), u"default schema pd_demo;\r\nDELETE FROM t;\r\nquit;"_s);

    // Nothing but SELECT may be read, and the refusal comes before any tool runs.
    const qsizetype calls = Calls().size();
    EXPECT_EQ(fxtest::FailureText([&] { cris.DBRead(u"pd_demo"_s, u"update t set a = 1"_s); }),
              u"CRIS::DBRead: "_s + ArgForm(msg::OnlySelectQueries, {u"update t set a = 1"_s}));
    EXPECT_EQ(fxtest::FailureText([&] { cris.DBRead(QString(), u"SELECT 1"_s); }),
              u"CRIS::DBRead: "_s + ArgForm(msg::SchemaNotDefined));
    EXPECT_EQ(Calls().size(), calls);

    // An empty answer means the tool did not run properly.
    Answer(u"risbatch.answer"_s, "");
    EXPECT_EQ(fxtest::FailureText([&] { cris.RISGetSchemas(); }),
              u"CRIS::RISGetSchemas: CRIS::RunRISBatch: "_s + ArgForm(msg::RisbatchNotFound, {tools}));
}

TEST_F(RisTools, schema_names_are_filtered_to_project_schemas_and_the_schema_file_is_found)
{
    Answer(u"risbatch.answer"_s, "Schema name: pd_demo\nSchema name: dd_demo\nSchema name: PD_Plant\n"
                                 "Schema name: pd_k_demo\nSCHEMA FILE NAME: /opt/ris/schemas\n");
    EXPECT_EQ(cris.RISGetSchemas(true), (QStringList{u"pd_demo"_s, u"PD_Plant"_s}));
    EXPECT_EQ(LastInput(), u"show schema names;\r\nquit;"_s);
    EXPECT_TRUE(cris.IsRISSchemaExists(u"PD_DEMO"_s));
    EXPECT_TRUE(cris.IsRISSchemaExists(u"dd_demo"_s));
    EXPECT_FALSE(cris.IsRISSchemaExists(u"pd_other"_s));
    EXPECT_EQ(cris.RISGetSchemaFilePath(), u"/opt/ris/schemas"_s);
    EXPECT_EQ(LastInput(), u"show schema file location;\r\nquit;"_s);
}

TEST_F(RisTools, unload_names_all_tables_when_none_are_given_and_fails_without_a_dump)
{
    Answer(u"risunlod.answer"_s, fxtest::Sandbox::ReadFile(Dump()));
    const QString dump = cris.RISUnload(u"pd_demo"_s, box.Temp());
    EXPECT_TRUE(QFile::exists(dump));
    EXPECT_TRUE(Calls().last().endsWith(u" -s pd_demo table with data all"_s)) << Calls().last().toStdString();
    EXPECT_TRUE(Calls().last().startsWith(u"risunlod -m w -o "_s + dump + u" -f "_s));

    cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_131;pdtable_132"_s, QString(), RISDumpForm::Variable, true, {},
                   true);
    EXPECT_TRUE(Calls().last().endsWith(u" table with variable data pdtable_131 pdtable_132 view all index grant"_s)) << Calls().last().toStdString();
    cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_131"_s, u"clash_id > 5"_s);
    EXPECT_TRUE(Calls().last().endsWith(u" table with data pdtable_131 where clash_id > 5"_s)) << Calls().last().toStdString();

    EXPECT_EQ(fxtest::FailureText([&] { cris.RISUnload(u"pd_demo"_s, box.Root() + u"missing"_s); }),
              u"CRIS::RISUnload: "_s + ArgForm(msg::DirectoryNotExistsColon, {box.Root() + u"missing"_s}));
    QFile::remove(tools + u"risunlod.answer"_s);
    EXPECT_EQ(fxtest::FailureText([&] { cris.RISUnload(u"pd_demo"_s, box.Temp()); }),
              u"CRIS::RISUnload: "_s + ArgForm(msg::RisunlodNotFound, {tools}));

    // An error in the tool's log fails the unload.
    Answer(u"risunlod.answer"_s, fxtest::Sandbox::ReadFile(Dump()));
    Answer(u"risunlod.log"_s, kErrorBox);
    EXPECT_TRUE(fxtest::FailureText([&] { cris.RISUnload(u"pd_demo"_s, box.Temp()); })
                    .contains(u"RIS_E_UNKNOWN_RELATION"_s));
}

// How the rejected rows are shown in the log is held against the real rislod in tests/pdssim.
TEST_F(RisTools, a_load_with_rejected_rows_fails_and_keeps_them_beside_the_log_and_a_clean_load_leaves_no_bad_file)
{
    InitLog(u"test"_s, QString(), box.Temp() + u"fendrix.log"_s);
    const QString dump = Dump();
    cris.RISLoad(dump, QString(), u"all"_s);
    EXPECT_TRUE(Calls().last().endsWith(u" -c 100 -s pd_demo clear table with data all view all index grant"_s)) << Calls().last().toStdString();

    Answer(u"rislod.bad"_s, "2      Equipment\n");
    const QString failure =
        fxtest::FailureText([&] { cris.RISLoad(dump, u"pd_other"_s, u"pdtable_111"_s, RISLoadMode::New, 50, {}, false); });
    EXPECT_TRUE(failure.startsWith(u"CRIS::RISLoad: Loading RIS dump file '"_s)) << failure.toStdString();
    EXPECT_TRUE(Calls().last().endsWith(u" -c 50 -s pd_other new table with data pdtable_111"_s)) << Calls().last().toStdString();
    const QString kept = box.Temp() + u"fendrix_rislod.bad"_s;
    EXPECT_EQ(failure, u"CRIS::RISLoad: "_s + ArgForm(msg::RisLoadRowsRejected, {dump, kept}));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(kept), "2      Equipment\n");

    // The next load that rejects nothing leaves no bad file behind.
    QFile::remove(tools + u"rislod.bad"_s);
    cris.RISLoad(dump, u"pd_other"_s, u"pdtable_111"_s);
    EXPECT_FALSE(QFile::exists(kept));

    EXPECT_EQ(fxtest::FailureText([&] { cris.RISLoad(box.Root() + u"none.dmp"_s, u"pd_demo"_s); }),
              u"CRIS::RISLoad: "_s + ArgForm(msg::RisDumpNotExists, {box.Root() + u"none.dmp"_s}));
}

TEST_F(RisTools, schemas_are_created_and_dropped_by_statements_through_risbatch)
{
    Answer(u"risbatch.answer"_s, "done\n");
    cris.RISCreateSchema({u"pd_a"_s, u"pd_b"_s}, u"mssql"_s, u"pdsdb"_s, u"SRV1"_s, u"10.0.0.5"_s, u"c:\\ris"_s,
                         {u"ua"_s, u"ub"_s}, {u"pa"_s, QString()});
    EXPECT_EQ(LastInput(),
              u"CREATE SCHEMA pd_a ON DATABASE (MSSQL, DBNAME pdsdb, OSUSER ua, DIR c:\\ris, OSTYPE NT, "
              "option (dsquery=SRV1), REMOTE (TCP 10.0.0.5)) USER ua.pa;\r\n"
              "CREATE SCHEMA pd_b ON DATABASE (MSSQL, DBNAME pdsdb, OSUSER ub, DIR c:\\ris, OSTYPE NT, "
              "option (dsquery=SRV1), REMOTE (TCP 10.0.0.5)) USER ub;\r\nquit;"_s);
    EXPECT_EQ(fxtest::FailureText([&] { cris.RISCreateSchema({u"s"_s}, u"DB2"_s, {}, {}, {}, {}, {u"u"_s}, {u"p"_s}); }),
              u"CRIS::RISCreateSchema: "_s + ArgForm(msg::DbTypeIncorrect));
    EXPECT_EQ(fxtest::FailureText([&] { cris.RISCreateSchema({u"s"_s}, u"ORACLE"_s, {}, {}, {}, {}, {}, {u"p"_s}); }),
              u"CRIS::RISCreateSchema: "_s + ArgForm(msg::SchemaCountMismatch));
    cris.RISDropSchema({u"pd_a"_s, u"pd_b"_s});
    EXPECT_EQ(LastInput(), u"DROP SCHEMA pd_a FORCE;\r\nDROP SCHEMA pd_b FORCE;\r\nquit;"_s);
}

TEST_F(RisTools, the_tools_are_found_through_the_registry_and_a_given_folder_must_hold_them)
{
    box.WriteFile(u"program/Registry.ini"_s,
                  ("[Software\\Intergraph\\RIS\\04.00]\nPathName=" + box.Root().toUtf8()
                   + "nothing\n[Software\\Intergraph\\RIS\\05.04]\nPathName=" + box.Root().toUtf8() + "ris\n"));
    EXPECT_EQ(CRIS::FindRISPath(), tools);
    CRIS other;
    other.SetUseRIS();
    EXPECT_EQ(other.GetRISPath(), tools);
    EXPECT_EQ(fxtest::FailureText([&] { other.SetRISPath(box.Temp()); }),
              u"CRIS::SetRISPath: "_s + ArgForm(msg::RisbatchClientNotFound, {box.Temp()}));
    box.WriteFile(u"program/Registry.ini"_s, "");
    EXPECT_EQ(fxtest::FailureText([&] { CRIS().GetRISPath(); }),
              u"CRIS::GetRISPath: CRIS::SetRISPath: "_s + ArgForm(msg::RisClientNotInstalled));
}

} // namespace

TEST_F(RisTools, names_and_conditions_from_users_never_reach_the_shell_or_end_a_statement)
{
    Answer(u"risunlod.answer"_s, fxtest::Sandbox::ReadFile(Dump()));
    const QString marker = box.Root() + u"marker"_s;
    const QString condition = u"note = '$(touch "_s + marker + u")' and a = \"`x`\\"_s;
    cris.RISUnload(u"pd_demo"_s, box.Temp(), u"pdtable_131"_s, condition);
    EXPECT_TRUE(Calls().last().endsWith(u" table with data pdtable_131 where "_s + condition)) << Calls().last().toStdString();
    EXPECT_FALSE(QFile::exists(marker));

    const qsizetype calls = Calls().size();
    const QString badSchema = u"pd_demo;touch "_s + marker;
    EXPECT_EQ(fxtest::FailureText([&] { cris.RISUnload(badSchema, box.Temp()); }),
              u"CRIS::RISUnload: "_s + ArgForm(msg::InvalidDatabaseName, {badSchema}));
    EXPECT_EQ(fxtest::FailureText([&] { cris.RISUnload(u"pd_demo"_s, box.Temp(), u"t1;t2 $(x)"_s); }),
              u"CRIS::RISUnload: "_s + ArgForm(msg::InvalidDatabaseName, {u"t2 $(x)"_s}));
    EXPECT_FALSE(fxtest::FailureText([&] { cris.RISClean(u"pd x"_s); }).isEmpty());
    EXPECT_EQ(Calls().size(), calls);
    EXPECT_FALSE(QFile::exists(marker));

    // risbatch reads statements up to ";": a name may not smuggle in another one.
    EXPECT_EQ(fxtest::FailureText([&] { cris.DBWrite(u"pd_a;drop schema pd_b"_s, u"delete from t"_s); }),
              u"CRIS:DBWrite: CRIS::RISWrite: "_s + ArgForm(msg::InvalidDatabaseName, {u"pd_a;drop schema pd_b"_s}));
    const QString secret = fxtest::FailureText([&] {
        cris.RISCreateSchema({u"pd_a"_s}, u"ORACLE"_s, {}, u"SRV"_s, u"h"_s, u"c:\\ris"_s, {u"u"_s}, {u"pw;quit"_s});
    });
    EXPECT_EQ(secret, u"CRIS::RISCreateSchema: "_s + ArgForm(msg::InvalidDatabaseName, {u"*****"_s}));
}
