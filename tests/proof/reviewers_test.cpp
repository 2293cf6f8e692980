// Two reviewers on one project, each with a fendrix-cli process of their own: their work meets
// in the project's clash and review tables, one after the other and at the same moment.

#include "proof/proofrig.h"

#include "../pdssim/sitekind.h"

#include <QSet>
#include <QThread>

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;
using fxproof::CliResult;
using fxproof::ProofRig;

namespace {

// Review dates are whole seconds: a later review must lie in a later second.
void SleepPastSecond()
{
    QThread::msleep(1050);
}

QString In(const QStringList &ids)
{
    return u"clash_id IN ("_s + ids.join(u", "_s) + u")"_s;
}

// What a reviewer's last word on a clash leaves: its pdtable_132 status and the action of its
// newest pdtable_135 row.
struct Outcome
{
    int status = 0;
    int action = 0;
};
constexpr Outcome kApprovedReal{2, 2};
constexpr Outcome kApprovedFalse{2, 3};
constexpr Outcome kUnapproved{1, 1};

// Each clash of each group with the outcome of its group.
QMap<QString, Outcome> Outcomes(std::initializer_list<std::pair<QStringList, Outcome>> groups)
{
    QMap<QString, Outcome> outcomes;
    for (const auto &[ids, outcome] : groups)
        for (const QString &id : ids)
            outcomes[id] = outcome;
    return outcomes;
}

struct ReviewRow
{
    qint64 clash = 0;
    QString line; ///< the whole row
    int action = 0;
    int method = 0;
};

// The clash and review tables as a person would list them.
struct ProjectState
{
    QMap<qint64, QString> clashRows; ///< by unique_clash_id
    QMap<qint64, int> status;
    QMap<qint64, ReviewRow> reviews; ///< by system_unique_no
    qsizetype reviewRowCount = 0;

    static ProjectState Read(ProofRig &rig)
    {
        ProjectState state;
        const fx::Recordset clashes =
            rig.Read(u"SELECT unique_clash_id, if_approval_status, recent_review_date, action_discipline FROM pdtable_132"_s);
        for (const QVariantList &row : clashes.Rows()) {
            QStringList values;
            for (const QVariant &value : row)
                values << (value.isNull() ? u"<null>"_s : value.toString());
            state.clashRows.insert(row.at(0).toLongLong(), values.join(u'|'));
            state.status.insert(row.at(0).toLongLong(), row.at(1).toInt());
        }
        const fx::Recordset reviews = rig.Read(u"SELECT system_unique_no, unique_clash_id, review_date, action, review_comment, "
                                               "approval_method FROM pdtable_135"_s);
        for (const QVariantList &row : reviews.Rows()) {
            QStringList values;
            for (const QVariant &value : row)
                values << (value.isNull() ? u"<null>"_s : value.toString().trimmed());
            state.reviews.insert(row.at(0).toLongLong(),
                                 {row.at(1).toLongLong(), values.join(u'|'), row.at(3).toInt(), row.at(5).toInt()});
        }
        state.reviewRowCount = reviews.RecordCount();
        return state;
    }

    // The system_unique_no of each clash's newest review row.
    QMap<qint64, qint64> Newest() const
    {
        QMap<qint64, qint64> newest;
        for (auto it = reviews.cbegin(); it != reviews.cend(); ++it)
            newest[it->clash] = std::max(newest.value(it->clash), it.key());
        return newest;
    }
};

// What holds after any write-backs, whoever won: the clash rows are those of before, review
// rows are only added (numbered past the old ones) or, the newest of a clash reviewed here,
// changed; every clash's status agrees with its newest review.
void ExpectConsistent(const ProjectState &before, const ProjectState &after, const QSet<qint64> &reviewed)
{
    EXPECT_EQ(after.clashRows.keys(), before.clashRows.keys());
    EXPECT_EQ(after.reviewRowCount, after.reviews.size()) << "a system_unique_no given twice";
    const QMap<qint64, qint64> newestBefore = before.Newest();
    const qint64 lastBefore = before.reviews.isEmpty() ? 0 : before.reviews.lastKey();
    for (auto it = before.reviews.cbegin(); it != before.reviews.cend(); ++it) {
        ASSERT_TRUE(after.reviews.contains(it.key())) << "review row " << it.key() << " lost";
        const bool mayChange = reviewed.contains(it->clash) && newestBefore.value(it->clash) == it.key();
        if (!mayChange) {
            EXPECT_EQ(after.reviews.value(it.key()).line, it->line) << "an old review row changed";
        }
    }
    for (auto it = after.reviews.cbegin(); it != after.reviews.cend(); ++it)
        if (!before.reviews.contains(it.key())) {
            EXPECT_GT(it.key(), lastBefore) << "a new review row numbered among the old ones";
            EXPECT_TRUE(reviewed.contains(it->clash)) << "a review row for clash " << it->clash << " nobody reviewed";
        }
    const QMap<qint64, qint64> newest = after.Newest();
    for (auto it = after.status.cbegin(); it != after.status.cend(); ++it) {
        if (it.value() == 99)
            continue;
        const int method = newest.contains(it.key()) ? after.reviews.value(newest.value(it.key())).method : 1;
        EXPECT_EQ(it.value() == 2, method == 2) << "clash " << it.key() << ": status " << it.value()
                                                << ", newest review's approval method " << method;
    }
}

// The later review of each clash is the project's; a clash nobody reviewed keeps its row.
void ExpectOutcomes(const ProjectState &before, const ProjectState &after, const QMap<QString, Outcome> &expected)
{
    QSet<qint64> reviewed;
    for (const QString &id : expected.keys())
        reviewed.insert(id.toLongLong());
    ExpectConsistent(before, after, reviewed);
    const QMap<qint64, qint64> newest = after.Newest();
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        const qint64 clash = it.key().toLongLong();
        EXPECT_EQ(after.status.value(clash), it->status) << "clash " << clash;
        EXPECT_EQ(after.reviews.value(newest.value(clash)).action, it->action) << "clash " << clash;
    }
    for (auto it = before.clashRows.cbegin(); it != before.clashRows.cend(); ++it) {
        if (!reviewed.contains(it.key())) {
            EXPECT_EQ(after.clashRows.value(it.key()), it.value()) << "clash " << it.key() << " changed unreviewed";
        }
    }
}

class ProofReviewers : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        const auto kind = fxtest::SiteKind(GetParam());
        if (!kind)
            GTEST_SKIP() << "no PostgreSQL test server";
        rig.BuildSite(*kind);
        open = rig.ClashIds(u"if_approval_status = 1"_s);
        approved = rig.ClashIds(u"if_approval_status = 2"_s);
        ASSERT_GE(open.size(), 10);
        ASSERT_GE(approved.size(), 3);
        before = ProjectState::Read(rig);
    }

    // A reviewer opens the project, works, and keeps the work in a clash file for later.
    QString Review(const QString &reviewer, const QStringList &steps)
    {
        const QString file = rig.Root() + reviewer + u".fxdb"_s;
        const CliResult run = rig.Run(rig.OpenProject(reviewer) + steps + QStringList{u"save-file"_s, file}, reviewer);
        EXPECT_EQ(run.exitCode, 0) << run.Told();
        return file;
    }

    ProofRig rig;
    QStringList open, approved;
    ProjectState before;
};

} // namespace

TEST_P(ProofReviewers, the_later_review_of_each_clash_wins_whoever_writes_back_last)
{
    // A approves six clashes; a second later B, from the same project as loaded, approves seven
    // as false clashes (three of A's among them) and unapproves three; later again A approves
    // two of B's own. A writes back first, B last.
    const QString a = Review(u"a"_s, {u"approve-real"_s, In(open.mid(0, 6))});
    SleepPastSecond();
    const QString b = Review(u"b"_s, {u"approve-false"_s, In(open.mid(3, 7)), u"unapprove"_s, In(approved.mid(0, 3))});
    SleepPastSecond();
    CliResult run = rig.Run(rig.OpenFile(a, u"a"_s) + QStringList{u"approve-real"_s, In(open.mid(8, 2)), u"save-project"_s}, u"a"_s);
    ASSERT_EQ(run.exitCode, 0) << run.Told();
    run = rig.Run(rig.OpenFile(b, u"b"_s) + QStringList{u"save-project"_s}, u"b"_s);
    ASSERT_EQ(run.exitCode, 0) << run.Told();

    ExpectOutcomes(before, ProjectState::Read(rig),
                   Outcomes({{open.mid(0, 3) + open.mid(8, 2), kApprovedReal},
                             {open.mid(3, 5), kApprovedFalse},
                             {approved.mid(0, 3), kUnapproved}}));
    EXPECT_EQ(rig.MarkerPromptStart(), QString()) << "both write-backs released the markers";

    // Written back again, neither store has anything left to write.
    EXPECT_EQ(rig.Run(rig.OpenFile(b, u"b"_s) + QStringList{u"save-project"_s}, u"b"_s).exitCode, 3);
}

TEST_P(ProofReviewers, two_write_backs_at_one_moment_are_kept_apart_by_the_markers)
{
    // Both reviewers started from the project as loaded and write back at once: the markers
    // must let one through and turn the other away, which a retry then gets past.
    const QString a = Review(u"a"_s, {u"approve-real"_s, In(open.mid(0, 6))});
    SleepPastSecond();
    const QString b = Review(u"b"_s, {u"approve-false"_s, In(open.mid(3, 7)), u"unapprove"_s, In(approved.mid(0, 3))});

    const QMap<QString, QString> files{{u"a"_s, a}, {u"b"_s, b}};
    std::map<QString, std::unique_ptr<fxproof::CliProcess>> writing;
    for (const QString &reviewer : files.keys())
        writing[reviewer] = rig.Start(rig.OpenFile(files[reviewer], reviewer) + QStringList{u"save-project"_s}, reviewer);

    // Each either wrote, or found the other's markers and stopped before touching anything.
    const QString owner = fxproof::WriteBackOwner();
    QStringList refused;
    for (const auto &[reviewer, process] : writing) {
        const CliResult run = process->Finish();
        if (run.exitCode == 0)
            continue;
        EXPECT_EQ(run.exitCode, 1) << run.Told();
        EXPECT_TRUE(run.err.contains(u"Project marker file is locked by '%1' since"_s.arg(owner))
                    || run.err.contains(u"Some of area marker files are locked by '%1' since"_s.arg(owner)))
            << run.Told();
        refused << reviewer;
    }
    ASSERT_LT(refused.size(), 2) << "one of the two must get through";
    QSet<qint64> reviewed;
    for (const QString &id : open.mid(0, 10) + approved.mid(0, 3))
        reviewed.insert(id.toLongLong());
    ExpectConsistent(before, ProjectState::Read(rig), reviewed);
    EXPECT_EQ(rig.MarkerPromptStart(), QString());

    for (const QString &reviewer : refused) {
        const CliResult retry = rig.Run(rig.OpenFile(files[reviewer], reviewer) + QStringList{u"save-project"_s}, reviewer);
        EXPECT_EQ(retry.exitCode, 0) << retry.Told();
    }
    ExpectOutcomes(before, ProjectState::Read(rig),
                   Outcomes({{open.mid(0, 3), kApprovedReal}, {open.mid(3, 7), kApprovedFalse}, {approved.mid(0, 3), kUnapproved}}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ProofReviewers, testing::Values("sqlite", "ris", "postgres"));
