// fendrix-cli run in process on pdssim sites: the steps a script gives, what they leave in
// the clash file they save, and what the project's state and the user's permissions refuse.

#include "cli/cliarguments.h"
#include "cli/clirun.h"
#include "cli/messages.h"
#include "frame/failure.h"
#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "pds/cris.h"
#include "pds/projectdatabase.h"
#include "pds/projectschema.h"
#include "pds/projfile.h"
#include "pds/scratchfiles.h"
#include "pds/sqlitedb.h"
#include "permissions/accounts.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "permissions/privilegemanager.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "pds/projectlocks.h"
#include "store/clashstore.h"
#include "store/messages.h"

#include "../pdssim/sitekind.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cstdio>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

// A message as a box shows it.
QString Shown(const char *message, const QStringList &args = {})
{
    return TranslateText(ArgForm(message, args), false, true);
}

struct CliRun
{
    int status = -1;
    QStringList lines; ///< what the run printed
    QStringList boxes; ///< what it asked or reported
};

class Cli : public testing::Test
{
protected:
    void SetUp() override
    {
        Process().BatchMode = false;
        ClearProjectCache();
    }

    void TearDown() override
    {
        FreeClashes();
        ClearProjectCache();
    }

    void Build(const QString &kind, bool edge)
    {
        layout.emplace(fxtest::ProgramSite(box.Root() + u"site"_s, project, kind, 30, edge, box.ProgramDir()));
        config = SiteUserConfigFile(*layout, project);
        UseProjectDatabase(cris, GetProjectDatabase(config, project));
    }

    CliRun Run(const QStringList &args, int answer = IdOk)
    {
        fxtest::RecordingMessageBox recorder(answer);
        std::FILE *out = std::tmpfile();
        CliRun run;
        run.status = cli::RunCli(args, out);
        std::rewind(out);
        QByteArray printed;
        char buffer[4096];
        for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, out)) > 0;)
            printed.append(buffer, qsizetype(n));
        std::fclose(out);
        run.lines = QString::fromLocal8Bit(printed).split(u'\n', Qt::SkipEmptyParts);
        for (const fxtest::ShownBox &shown : recorder.boxes)
            run.boxes << shown.text;
        return run;
    }

    QStringList Open() const { return {u"--config"_s, config, u"--cmd"_s, layout->ControlFile(), u"--project"_s, project}; }

    qint64 SchemaCount(const QString &sql) { return cris.DBRead(u"pd_"_s + project, sql).Value(0, 0).toLongLong(); }

    // The clash ids of the schema that a condition picks, in order.
    QStringList SchemaIds(const QString &condition)
    {
        QStringList ids;
        const Recordset rows = cris.DBRead(u"pd_"_s + project, u"SELECT unique_clash_id FROM pdtable_132 WHERE "_s + condition
                                                                   + u" ORDER BY unique_clash_id"_s);
        for (const QVariantList &row : rows.Rows())
            ids << row.at(0).toString();
        return ids;
    }

    // Grants the user of the tests exactly `permissions` in the project's privilege database.
    void GrantOnly(const QList<int> &permissions) { fxtest::GrantOnly(layout->ControlFile(), permissions); }

    static QString Caption(qint64 total, qint64 approved)
    {
        return u"Total: %1 clashes (approved: %2; unapproved: %3)"_s.arg(total).arg(approved).arg(total - approved);
    }

    fxtest::Sandbox box;
    const QString project = u"C"_s + RandomScratchName().toUpper();
    std::optional<SiteLayout> layout;
    QString config;
    CRIS cris;
};

class CliKinds : public Cli, public testing::WithParamInterface<const char *>
{
};

} // namespace

TEST_P(CliKinds, a_script_approves_describes_filters_exports_and_saves_and_the_clash_file_keeps_it)
{
    const auto kind = fxtest::SiteKind(GetParam());
    if (!kind)
        GTEST_SKIP() << "no PostgreSQL test server";
    Build(*kind, false);
    const qint64 total = SchemaCount(u"SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status <> 99"_s);
    const qint64 approved = SchemaCount(u"SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status = 2"_s);
    const QStringList open = SchemaIds(u"if_approval_status NOT IN (2, 99)"_s);
    ASSERT_GE(open.size(), 3);
    ASSERT_LT(approved + 3, total) << "the filtered line must differ from the total";
    const QString picked = open.mid(0, 3).join(u", "_s);
    const QString csv = box.Root() + u"approved.csv"_s;
    const QString saved = box.Root() + u"reviewed.fxdb"_s;

    const CliRun run = Run(Open() + QStringList{u"approve-real"_s, u"clash_id IN ("_s + picked + u")"_s,
                                                u"describe"_s, u"Needs a support, O'Brien says"_s, u"clash_id = "_s + open.at(0),
                                                u"counts"_s, u"filter"_s, u"status = 'Approved'"_s, u"counts"_s,
                                                u"export-csv"_s, csv, u"save-file"_s, saved});
    ASSERT_EQ(run.status, 0) << run.boxes.join(u'\n').toStdString();
    EXPECT_EQ(run.boxes, QStringList()) << "nothing to ask, nothing lost";
    const QString caption = Caption(total, approved + 3);
    EXPECT_EQ(run.lines, (QStringList{caption, caption + u"; Filtered: %1 clashes (approved: %1; unapproved: 0)"_s.arg(approved + 3)}));

    // The export holds the clashes in view, in order, with the text of a field quoted.
    QFile exported(csv);
    ASSERT_TRUE(exported.open(QIODevice::ReadOnly));
    const QStringList rows = QString::fromUtf8(exported.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
    ASSERT_EQ(rows.size(), approved + 4);
    EXPECT_TRUE(rows.at(0).startsWith(u"clash_id,type,status,action,review_comment,recent_review_date,"_s)) << rows.at(0).toStdString();
    const auto row = std::find_if(rows.cbegin(), rows.cend(), [&](const QString &r) { return r.startsWith(open.at(0) + u","_s); });
    ASSERT_NE(row, rows.cend());
    EXPECT_TRUE(row->contains(u",Approved,Approve Real Clash,\"Needs a support, O'Brien says\","_s)) << row->toStdString();

    // The saved file holds the changes in the clash rows themselves, and opens with them.
    {
        SqliteDb file(saved, SqliteDb::OpenMode::ReadOnly);
        const Recordset second = file.Read(u"SELECT status, action, review_comment FROM base_clash_table WHERE clash_id = "_s + open.at(1));
        ASSERT_EQ(second.RecordCount(), 1);
        EXPECT_EQ(second.Row(0), (QVariantList{u"Approved"_s, u"Approve Real Clash"_s, u"Approved by Fendrix: "_s + GetLogonUserName()}));
    }
    const CliRun again = Run({u"--config"_s, config, u"--file"_s, saved, u"counts"_s, u"unapprove"_s, u"clash_id = "_s + open.at(0), u"counts"_s});
    ASSERT_EQ(again.status, 0) << again.boxes.join(u'\n').toStdString();
    EXPECT_EQ(again.lines, (QStringList{caption, Caption(total, approved + 2)}));
    EXPECT_EQ(again.boxes, QStringList{Shown(msg::CliChangesNotSaved, {project})}) << "a change the script did not save is told";
    EXPECT_TRUE(GetWorkDB().isEmpty()) << "the run closes the project";
}

INSTANTIATE_TEST_SUITE_P(Kinds, CliKinds, testing::Values("sqlite", "ris", "postgres"));

TEST_F(Cli, a_command_the_window_would_not_offer_is_refused_and_the_run_stops_there)
{
    Build(u"sqlite"_s, true);
    const QString first = SchemaIds(u"if_approval_status NOT IN (2, 99)"_s).value(0);
    const QString saved = box.Root() + u"described.fxdb"_s;

    // Only descriptions are the user's to give.
    GrantOnly({PermissionSetDescriptionNo});
    // The edge site's project is locked by another reviewer; this user may not unlock it, and
    // going on without unlocking opens it read only.
    CliRun run = Run(Open() + QStringList{u"describe"_s, u"seen"_s, u"clash_id = "_s + first}, IdYes);
    EXPECT_EQ(run.status, 1);
    ASSERT_FALSE(run.boxes.isEmpty());
    EXPECT_TRUE(run.boxes.first().endsWith(u"Continue anyway (read only mode) without unlocking?"_s)) << run.boxes.first().toStdString();
    EXPECT_TRUE(run.boxes.last().endsWith(Shown(msg::ProjectIsReadOnly, {project}))) << run.boxes.last().toStdString();

    // Unlocked by its owner, the project opens writable: a description passes, an approval not,
    // and the save after the refused step never runs.
    ProjectUnlockA(cris, project);
    IntAreaUnlock(cris, project);
    run = Run(Open() + QStringList{u"describe"_s, u"seen"_s, u"clash_id = "_s + first, u"approve-real"_s,
                                   u"clash_id = "_s + first, u"save-file"_s, saved});
    EXPECT_EQ(run.status, 1);
    ASSERT_EQ(run.boxes.size(), 1);
    EXPECT_TRUE(run.boxes.first().endsWith(Shown(msg::PermissionNotGranted, {GetPermissionName(PermissionChangeStatusNo)})))
        << run.boxes.first().toStdString();
    EXPECT_FALSE(QFile::exists(saved));

    run = Run(Open() + QStringList{u"describe"_s, u"seen"_s, u"clash_id = "_s + first, u"save-file"_s, saved});
    EXPECT_EQ(run.status, 0) << run.boxes.join(u'\n').toStdString();
    SqliteDb file(saved, SqliteDb::OpenMode::ReadOnly);
    EXPECT_EQ(file.Read(u"SELECT review_comment FROM base_clash_table WHERE clash_id = "_s + first).Value(0, 0).toString(), u"seen"_s);
}

TEST_F(Cli, save_project_writes_approvals_back_exits_3_when_nothing_is_new_and_needs_its_permission)
{
    Build(u"sqlite"_s, false);
    const QStringList open = SchemaIds(u"if_approval_status NOT IN (2, 99)"_s);
    ASSERT_GE(open.size(), 2);
    const QString picked = open.mid(0, 2).join(u", "_s);
    const QString approved = u"if_approval_status = 2 AND unique_clash_id IN ("_s + picked + u")"_s;
    ASSERT_EQ(SchemaIds(approved), QStringList());

    CliRun run = Run(Open() + QStringList{u"approve-real"_s, u"clash_id IN ("_s + picked + u")"_s, u"save-project"_s});
    EXPECT_EQ(run.status, 0) << run.boxes.join(u'\n').toStdString();
    EXPECT_EQ(run.boxes, QStringList()) << "saved, so nothing is lost at the end";
    EXPECT_EQ(SchemaIds(approved), open.mid(0, 2));

    // Opened again, the project holds nothing this store could add.
    run = Run(Open() + QStringList{u"save-project"_s, u"counts"_s});
    EXPECT_EQ(run.status, 3);
    ASSERT_EQ(run.boxes.size(), 1);
    EXPECT_TRUE(run.boxes.first().endsWith(Shown(msg::NoChangesFound, {u"pd_"_s + project}))) << run.boxes.first().toStdString();
    EXPECT_EQ(run.lines.size(), 1) << "the steps after it still run";

    // A user who may change clashes but not write them to the project.
    GrantOnly({PermissionChangeStatusNo});
    run = Run(Open() + QStringList{u"unapprove"_s, u"clash_id = "_s + open.first(), u"save-project"_s});
    EXPECT_EQ(run.status, 1);
    ASSERT_FALSE(run.boxes.isEmpty());
    EXPECT_TRUE(run.boxes.last().endsWith(Shown(msg::PermissionNotGranted, {GetPermissionName(PermissionSaveChangesNo)})))
        << run.boxes.last().toStdString();
    EXPECT_EQ(SchemaIds(approved), open.mid(0, 2));
}

TEST_F(Cli, a_change_with_an_empty_condition_is_refused_and_ALL_changes_every_clash)
{
    Build(u"sqlite"_s, false);
    const qint64 total = SchemaCount(u"SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status <> 99"_s);
    const qint64 approved = SchemaCount(u"SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status = 2"_s);
    ASSERT_LT(approved, total);

    // An unset shell variable gives an empty or blank operand: the run stops before it opens,
    // and the step after it never writes back.
    const QList<QStringList> empties = {{u"approve-real"_s, QString()},
                                        {u"approve-false"_s, u"  "_s},
                                        {u"unapprove"_s, QString()},
                                        {u"describe"_s, u"seen"_s, u"\t"_s}};
    for (const QStringList &step : empties) {
        const CliRun run = Run(Open() + step + QStringList{u"save-project"_s});
        EXPECT_EQ(run.status, 1) << step.first().toStdString();
        ASSERT_EQ(run.boxes.size(), 1) << step.first().toStdString();
        EXPECT_TRUE(run.boxes.first().contains(Shown(msg::CliConditionEmpty, {step.first()}) + u"\n\nUsage: fendrix-cli"_s))
            << run.boxes.first().toStdString();
    }
    EXPECT_EQ(SchemaCount(u"SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status = 2"_s), approved);
    EXPECT_TRUE(GetWorkDB().isEmpty()) << "refused before anything opens";

    // ALL, in any case, is the one way to change them all.
    const CliRun run = Run(Open() + QStringList{u"approve-false"_s, u"All"_s, u"describe"_s, u"checked"_s, u" all "_s,
                                                u"counts"_s, u"filter"_s, u"review_comment IS NULL OR review_comment <> 'checked'"_s,
                                                u"counts"_s});
    ASSERT_EQ(run.status, 0) << run.boxes.join(u'\n').toStdString();
    const QString caption = Caption(total, total);
    EXPECT_EQ(run.lines, (QStringList{caption, caption + u"; Filtered: 0 clashes (approved: 0; unapproved: 0)"_s}))
        << run.lines.join(u'\n').toStdString();
}

TEST_F(Cli, arguments_that_make_no_run_are_refused_with_the_usage_before_anything_opens)
{
    EXPECT_EQ(Run({u"--help"_s}).lines.first(), cli::UsageText().split(u'\n').first());
    const auto refused = [&](const QStringList &args, const QString &reason) {
        const CliRun run = Run(args);
        EXPECT_EQ(run.status, 1) << reason.toStdString();
        ASSERT_EQ(run.boxes.size(), 1) << reason.toStdString();
        EXPECT_TRUE(run.boxes.first().contains(reason + u"\n\nUsage: fendrix-cli"_s)) << run.boxes.first().toStdString();
    };
    refused({u"--file"_s, u"a.fxdb"_s, u"approve"_s, u"x"_s}, u"Unknown step 'approve'"_s);
    refused({u"--file"_s, u"a.fxdb"_s, u"describe"_s, u"text"_s}, u"Step 'describe' needs 2 value(s)"_s);
    refused({u"--cmd"_s, u"pds.cmd"_s, u"counts"_s}, QString::fromLatin1(msg::CliProjectNotNamed));
    refused({u"--cmd"_s, u"pds.cmd"_s, u"--project"_s, u"P"_s, u"--file"_s, u"a.fxdb"_s}, QString::fromLatin1(msg::CliProjectNotNamed));
    refused({u"--config"_s}, u"Option '--config' needs a value"_s);
    refused({u"--verbose"_s}, u"Unknown option '--verbose'"_s);
    EXPECT_TRUE(GetWorkDB().isEmpty());
}
