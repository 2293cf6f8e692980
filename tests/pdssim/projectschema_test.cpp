// The project's questions and locks asked of sites of every kind, as Fendrix asks them of a
// real site: the project row, the design settings, the clash discipline, the markers.

#include "frame/logmessage.h"
#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/pdstime.h"
#include "pds/projectdatabase.h"
#include "pds/projectlocks.h"
#include "pds/projectschema.h"
#include "pds/scratchfiles.h"
#include "pdssim/dgnfile.h"
#include "pdssim/edgemanifest.h"
#include "pdssim/projectfiles.h"
#include "pdssim/schemagenerator.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"

#include "sitekind.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <algorithm>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

// Keeps every message logged while it lives.
class RecordingLog : public ILogSink
{
public:
    void ShowLogMessage(const QString &text) override { lines << text; }
    QStringList lines;

private:
    LogSinkRegistration m_registration{this};
};

QString Canonical(const QString &path)
{
    return QFileInfo(path).canonicalFilePath();
}

class ProjectSites : public fxtest::SiteKindTest
{
protected:
    // Builds a site of the parameter's kind and points both gateways at it.
    void Build(bool edge = false, int lockOwnerWidth = 40)
    {
        options.root = box.Root() + u"site"_s;
        options.project = project;
        options.clashes = 300;
        options.kind = m_kind;
        options.edge = edge;
        options.lockOwnerWidth = lockOwnerWidth;
        options.pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE);
        BuildSite(options);
        InstallSiteConfig(SiteLayout(options.root), box.ProgramDir());
        const ProjectDatabase database = GetProjectDatabase(SiteUserConfigFile(SiteLayout(options.root), project), project);
        UseProjectDatabase(cris, database);
        UseProjectDatabase(other, database);
    }

    qint64 InterferenceAreaCount()
    {
        return cris.DBRead(schema, u"SELECT COUNT(*) FROM pdtable_112 WHERE interference_mode = 1"_s).Value(0, 0).toLongLong();
    }

    // A name of its own per run, so that runs side by side on one PostgreSQL server never meet.
    const QString project = u"S"_s + RandomScratchName().toUpper();
    const QString schema = u"pd_"_s + project;
    SiteOptions options;
    CRIS cris;
    // A second connection, as another user's program would have.
    CRIS other;
};

} // namespace

TEST_P(ProjectSites, the_project_folder_seed_files_units_and_clash_discipline_come_from_the_schema)
{
    Build();
    const SiteLayout layout(options.root);
    EXPECT_EQ(GetProjectSchema(project), schema);

    const QString folder = GetProjectDirectory(cris, project);
    EXPECT_TRUE(folder.endsWith(u'/'));
    EXPECT_EQ(Canonical(folder), Canonical(layout.ProjectDir(project)));
    const QString seed = GetProjectDGNFile(cris, project);
    EXPECT_EQ(seed, folder + ProjectSeedFileName(project));
    EXPECT_EQ(GetModelSeedFile(folder), folder + ModelSeedFileName());

    const DgnSettings written = ReadDgnSettings(folder + ModelSeedFileName());
    const DGNSettings settings = GetModelDGNSettings(cris, project);
    EXPECT_EQ(settings.masterUnits, written.masterUnits);
    EXPECT_EQ(settings.subUnits, written.subUnits);
    EXPECT_EQ(settings.subPerMaster, written.subPerMaster);
    EXPECT_EQ(settings.uorPerSub, written.uorPerSub);
    EXPECT_EQ(settings.is3D, written.is3d);
    EXPECT_EQ(settings.masterUnits, u"FT"_s);
    EXPECT_EQ(settings.uorPerSub, 2032);

    EXPECT_EQ(GetClashDisciplineNo(cris, project), kClashDiscipline);

    EXPECT_EQ(fxtest::FailureText([&] { GetProjectDirectory(cris, u"  "_s); }),
              u"GetProjectDirectory: Project number not defined"_s);
    EXPECT_EQ(fxtest::FailureText([&] { IsProjectLocked(cris, QString()); }), u"IsProjectLocked: Project number not defined"_s);
    const QString unknown = fxtest::FailureText([&] { GetProjectDGNFile(cris, project + u"X"_s); });
    if (QString::fromLatin1(GetParam()) == u"sqlite"_s)
        EXPECT_TRUE(unknown.contains(schema + u"X.db"_s)) << unknown.toStdString();
    else
        EXPECT_EQ(unknown, u"GetProjectDGNFile: Project schema doesn't exist"_s);
}

TEST_P(ProjectSites, a_second_question_for_the_project_reads_no_database)
{
    Build();
    const QString folder = GetProjectDirectory(cris, project);
    const QString seed = GetProjectDGNFile(cris, project);

    // The schema now says otherwise, and a gateway of no kind could not read it at all.
    cris.DBWrite(schema, u"UPDATE pdtable_102 SET rdb_file_spec = 'moved.dgn' WHERE type_of_rdb_data = 99"_s, true);
    CRIS nowhere;
    EXPECT_EQ(GetProjectDirectory(nowhere, project), folder);
    EXPECT_EQ(GetProjectDGNFile(nowhere, project), seed);
    EXPECT_EQ(GetProjectDGNFile(cris, project), seed);

    ClearProjectCache();
    EXPECT_EQ(fxtest::FailureText([&] { GetProjectDGNFile(cris, project); }),
              u"GetProjectDGNFile: Project seed file '%0%' doesn't exist|||"_s + folder + u"moved.dgn"_s);
    EXPECT_FALSE(fxtest::FailureText([&] { GetProjectDirectory(nowhere, u"NEVER"_s); }).isEmpty());
}

TEST_P(ProjectSites, the_locks_are_set_seen_by_a_second_connection_and_cleared)
{
    Build();
    EXPECT_FALSE(IsProjectLocked(other, project));
    EXPECT_FALSE(IsIntAreaLocked(other, project));

    const QString owner = u"FX_rev's pc"_s;
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    ProjectLockA(cris, project, owner);
    IntAreaLock(cris, project, owner);
    const qint64 after = QDateTime::currentSecsSinceEpoch();

    LockHolder holder;
    ASSERT_TRUE(IsProjectLocked(other, project, &holder));
    EXPECT_EQ(holder.owner, owner);
    EXPECT_GE(GetDate2TimeStamp(holder.date), before);
    EXPECT_LE(GetDate2TimeStamp(holder.date), after);
    QList<AreaLockHolder> locks;
    ASSERT_TRUE(IsIntAreaLocked(other, project, &locks));
    ASSERT_EQ(locks.size(), InterferenceAreaCount());
    ASSERT_GE(locks.size(), 2);
    for (const AreaLockHolder &lock : locks) {
        EXPECT_EQ(lock.holder.owner, owner);
        EXPECT_GE(GetDate2TimeStamp(lock.holder.date), before);
        EXPECT_LE(GetDate2TimeStamp(lock.holder.date), after);
    }

    // The schema's own arithmetic gives the reader's local seconds, whatever kind holds it.
    const Recordset local = other.DBRead(schema, u"SELECT lock_date, lock_date"_s + GetTimeStamp2DateSqlForm()
                                                     + u" AS local_date FROM pdtable_102 WHERE type_of_rdb_data = 99"_s);
    const qint64 stamp = local.Value(0, 0).toLongLong();
    EXPECT_EQ(local.Value(0, 1).toLongLong(), stamp + GetTimeZoneBias() * 60);
    EXPECT_EQ(local.Value(0, 1).toLongLong(),
              QDateTime(holder.date.date(), holder.date.time(), Qt::UTC).toSecsSinceEpoch());

    AreaUnlockA(cris, project, locks.front().area);
    QList<AreaLockHolder> left;
    ASSERT_TRUE(IsIntAreaLocked(other, project, &left));
    EXPECT_EQ(left.size(), locks.size() - 1);
    EXPECT_EQ(left.front().area, locks.at(1).area);

    ProjectUnlockA(cris, project);
    IntAreaUnlock(cris, project);
    EXPECT_FALSE(IsProjectLocked(other, project));
    EXPECT_FALSE(IsIntAreaLocked(other, project, &left));
    EXPECT_TRUE(left.isEmpty());
    const Recordset row =
        other.DBRead(schema, u"SELECT lock_owner, lock_date, lock_status FROM pdtable_102 WHERE type_of_rdb_data = 99"_s);
    EXPECT_TRUE(row.Value(0, 0).isNull() || row.Value(0, 0).toString().trimmed().isEmpty());
    EXPECT_EQ(row.Value(0, 1).toLongLong(), 0);
    EXPECT_EQ(row.Value(0, 2).toInt(), 0);

    // Without an owner the lock is the logged-on user's.
    ProjectLockA(cris, project);
    ASSERT_TRUE(IsProjectLocked(other, project, &holder));
    EXPECT_EQ(holder.owner, GetLogonUserName());
}

TEST_P(ProjectSites, a_claim_fits_a_lock_owner_column_declared_narrower_than_40_characters)
{
    Build(false, 20);
    const QList<ColumnDescription> columns = cris.DBGetCols(schema, u"pdtable_102"_s);
    const auto lockOwner = std::find_if(columns.cbegin(), columns.cend(),
                                        [](const ColumnDescription &c) { return c.name.toLower() == u"lock_owner"_s; });
    ASSERT_NE(lockOwner, columns.cend());
    ASSERT_EQ(lockOwner->size, 20) << "the site declares the column narrower";

    // The schema refuses what does not fit; the claim and its owner must fit.
    const QString owner = u"FX_a.reviewer.with.a.long.logon"_s;
    EXPECT_TRUE(ProjectClaimA(cris, project, owner));
    LockHolder holder;
    ASSERT_TRUE(IsProjectLocked(other, project, &holder));
    EXPECT_EQ(holder.owner, owner.left(20));
    EXPECT_FALSE(ProjectClaimA(other, project, owner)) << "a second claim still loses";
    ProjectUnlockA(cris, project);
    EXPECT_TRUE(ProjectClaimA(other, project, owner));
}

TEST_P(ProjectSites, a_failing_operation_releases_its_locks_on_the_way_out)
{
    Build();
    const QString failure = fxtest::FailureText([&] {
        Frame("LoadProject", [&] {
            ProjectLockGuard projectLock(cris, project, u"FX_me"_s);
            AreaLockGuard areaLocks(cris, project, u"FX_me"_s);
            EXPECT_TRUE(IsProjectLocked(other, project));
            EXPECT_TRUE(IsIntAreaLocked(other, project));
            cris.DBRead(schema, u"SELECT no_such_column FROM pdtable_132"_s);
        });
    });
    // The operation's own failure travels on, and the markers are gone.
    EXPECT_TRUE(failure.startsWith(u"LoadProject: "_s)) << failure.toStdString();
    EXPECT_TRUE(failure.contains(u"CRIS::DBRead"_s)) << failure.toStdString();
    EXPECT_FALSE(IsProjectLocked(other, project));
    EXPECT_FALSE(IsIntAreaLocked(other, project));

    // A guard released early leaves alone a lock that another user took after it.
    {
        ProjectLockGuard projectLock(cris, project, u"FX_me"_s);
        projectLock.Release();
        EXPECT_FALSE(IsProjectLocked(other, project));
        ProjectLockA(other, project, u"FX_other"_s);
    }
    LockHolder holder;
    ASSERT_TRUE(IsProjectLocked(cris, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_other"_s);
}

TEST_P(ProjectSites, a_lock_held_by_another_user_is_reported_with_its_owner_and_date)
{
    Build(true);
    const QList<EdgeCase> cases = ReadManifest(SiteLayout(options.root).ManifestFile());
    const EdgeCase *projectLocked = FindEdgeCase(cases, u"project_locked"_s);
    const EdgeCase *areaLocked = FindEdgeCase(cases, u"area_locked_without_owner"_s);
    ASSERT_TRUE(projectLocked && areaLocked);

    LockHolder holder;
    ASSERT_TRUE(IsProjectLocked(cris, project, &holder));
    EXPECT_EQ(holder.owner, projectLocked->Key(u"lock_owner"_s));
    const qint64 since = projectLocked->Key(u"lock_date"_s).toLongLong();
    EXPECT_EQ(holder.date, GetTimeStamp2Date(since));
    EXPECT_EQ(GetDate2TimeStamp(holder.date), since);

    QList<AreaLockHolder> locks;
    ASSERT_TRUE(IsIntAreaLocked(cris, project, &locks));
    ASSERT_EQ(locks.size(), 1);
    EXPECT_EQ(locks.front().area, areaLocked->Key(u"area_index_no"_s).toLongLong());
    EXPECT_EQ(locks.front().holder.owner, u"UNKNOWN"_s);
    EXPECT_TRUE(locks.front().holder.date.isNull());

    // A claim takes no marker that someone holds, unless it is the one the user agreed to take over.
    EXPECT_FALSE(ProjectClaimA(cris, project, u"FX_me"_s));
    EXPECT_FALSE(ProjectClaimA(cris, project, u"FX_me"_s, GetTimeStamp2Date(since + 1)));
    ASSERT_TRUE(IsProjectLocked(other, project, &holder));
    EXPECT_EQ(holder.owner, projectLocked->Key(u"lock_owner"_s));
    EXPECT_TRUE(ProjectClaimA(cris, project, u"FX_me"_s, GetTimeStamp2Date(since)));
    ASSERT_TRUE(IsProjectLocked(other, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_me"_s) << "the claim's own mark is gone once it won";
    EXPECT_FALSE(ProjectClaimA(other, project, u"FX_me"_s)) << "a second claim of the same user loses too";
    ProjectUnlockA(cris, project);
    EXPECT_TRUE(ProjectClaimA(other, project, u"FX_me"_s));

    // Taking the project over replaces the other user's marker.
    ProjectLockA(cris, project, u"FX_you"_s);
    ASSERT_TRUE(IsProjectLocked(other, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_you"_s);
}

INSTANTIATE_TEST_SUITE_P(, ProjectSites, testing::Values("sqlite", "ris", "postgres"),
                         [](const testing::TestParamInfo<const char *> &info) { return std::string(info.param); });

TEST(ProjectLockGuard, a_marker_that_cannot_be_released_is_logged_and_the_operations_failure_stays)
{
    fxtest::Sandbox box;
    const QString project = u"GUARD"_s;
    SiteOptions options{box.Root() + u"site"_s, project, 100, 1, u"sqlite"_s, false, QStringLiteral(PDSSIM_EXECUTABLE)};
    BuildSite(options);
    InstallSiteConfig(SiteLayout(options.root), box.ProgramDir());
    CRIS cris;
    UseProjectDatabase(cris, GetProjectDatabase(SiteUserConfigFile(SiteLayout(options.root), project), project));

    RecordingLog log;
    const QString failure = fxtest::FailureText([&] {
        Frame("SaveClashes2PDS", [&] {
            AreaLockGuard areaLocks(cris, project, u"FX_me"_s);
            cris.DBWrite(u"pd_GUARD"_s, u"DROP TABLE pdtable_112"_s, true);
            Raise("Saving failed");
        });
    });
    EXPECT_EQ(failure, u"SaveClashes2PDS: Saving failed"_s);
    const QStringList released = log.lines.filter(u"Releasing"_s);
    ASSERT_EQ(released.size(), 1) << log.lines.join(u'\n').toStdString();
    EXPECT_TRUE(released.front().startsWith(u"Releasing area marker files failed: IntAreaUnlock: "_s))
        << released.front().toStdString();
}
