// A write-back killed at random points: on the SQL kinds the load is one transaction, so the
// project's clash and review tables are those of before or those of after, never a mixture; a
// marker the killed process left is told to the next person who opens or writes back.

#include "proof/proofrig.h"

#include "frame/failure.h"
#include "frame/translation.h"
#include "store/messages.h"

#include "../pdssim/sitekind.h"

#include <QDir>
#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <random>

using namespace Qt::StringLiterals;
using fxproof::CliResult;

namespace {

// Kills spread over the whole write-back, and more from the moment its log says the load began:
// random delays seldom meet a load of a few milliseconds. A run that ends before its kill
// doesn't count.
constexpr int kSpreadKills = 20;
constexpr int kLoadKills = 10;
const QStringList kTables{u"pdtable_132"_s, u"pdtable_135"_s};

struct Snapshot
{
    QList<QStringList> tables;
    bool operator==(const Snapshot &) const = default;
};

class ProofKill : public testing::TestWithParam<const char *>
{
protected:
    Snapshot Snap()
    {
        Snapshot snapshot;
        for (const QString &table : kTables)
            snapshot.tables << rig.Table(table);
        return snapshot;
    }

    // The tables of the project as found are kept beside them, for every round to start from.
    void Keep()
    {
        for (const QString &table : kTables)
            rig.Write(u"CREATE TABLE proof_keep_%1 AS SELECT * FROM %1"_s.arg(table));
    }

    void Restore()
    {
        for (const QString &table : kTables) {
            rig.Write(u"DELETE FROM "_s + table);
            rig.Write(u"INSERT INTO %1 SELECT * FROM proof_keep_%1"_s.arg(table));
        }
    }

    QStringList WriteBack(const QString &reviewer = u"a"_s) { return rig.OpenFile(file, reviewer) + QStringList{u"save-project"_s}; }

    // Waits until the log of a reviewer's run says that the load began; false when the run
    // ended first. The reviewer's TEMP holds this run's log alone.
    bool WaitForLoad(fxproof::CliProcess &process, const QString &reviewer)
    {
        const QDir logs(rig.Temp(reviewer) + u"Fendrix"_s);
        const QByteArray line = fx::FillMessageArgs(fx::ArgForm(fx::msg::LoadingInTransaction, {rig.Schema()})).toUtf8();
        while (!process.WaitFor(0)) {
            for (const QString &log : logs.entryList(QDir::Files))
                if (fxtest::Sandbox::ReadFile(logs.filePath(log)).contains(line))
                    return true;
            QThread::usleep(100);
        }
        return false;
    }

    fxproof::ProofRig rig;
    QString file;
};

} // namespace

TEST_P(ProofKill, a_write_back_killed_anywhere_leaves_the_project_as_before_or_as_after)
{
    const auto kind = fxtest::SiteKind(GetParam());
    if (!kind)
        GTEST_SKIP() << "no PostgreSQL test server";
    rig.BuildSite(*kind);
    const QStringList open = rig.ClashIds(u"if_approval_status = 1"_s);
    const QStringList approved = rig.ClashIds(u"if_approval_status = 2"_s);
    ASSERT_GE(open.size(), 40);
    ASSERT_GE(approved.size(), 10);
    const auto in = [](const QStringList &ids) { return u"clash_id IN ("_s + ids.join(u", "_s) + u")"_s; };
    file = rig.Root() + u"review.fxdb"_s;
    CliResult run = rig.Run(rig.OpenProject() + QStringList{u"approve-real"_s, in(open.mid(0, 20)), u"approve-false"_s,
                                                            in(open.mid(20, 20)), u"unapprove"_s, in(approved.mid(0, 10)),
                                                            u"describe"_s, u"Moved by 50 mm"_s, in(open.mid(0, 5)),
                                                            u"save-file"_s, file});
    ASSERT_EQ(run.exitCode, 0) << run.Told();
    Keep();
    const Snapshot before = Snap();

    // One undisturbed run tells the span of the write-back: from the end of opening the file to
    // the end of the run.
    QElapsedTimer clock;
    clock.start();
    run = rig.Run(rig.OpenFile(file) + QStringList{u"counts"_s});
    ASSERT_EQ(run.exitCode, 0) << run.Told();
    const qint64 opened = clock.restart();
    run = rig.Run(WriteBack());
    ASSERT_EQ(run.exitCode, 0) << run.Told();
    const qint64 written = clock.elapsed();
    const Snapshot after = Snap();
    ASSERT_NE(after, before);
    Restore();
    ASSERT_EQ(Snap(), before);

    std::mt19937 random(20261121);
    std::uniform_int_distribution<qint64> spread(opened * 9 / 10, written);
    // Into the load, from 0.1 to 30 ms on an even log scale: loads of a few statements or of many
    // round trips to a server are met alike.
    std::uniform_real_distribution<double> inLoad(0.0, 1.0);
    int kills = 0, ended = 0, killedAfter = 0, markersLeft = 0;
    for (int round = 0; kills < kSpreadKills + kLoadKills && round < 100; ++round) {
        const bool spreadKill = kills < kSpreadKills;
        const qint64 delay = spreadKill ? spread(random) : qint64(100 * std::pow(300.0, inLoad(random)));
        const QString reviewer = u"round%1"_s.arg(round);
        const auto process = rig.Start(WriteBack(reviewer), reviewer);
        if (spreadKill)
            process->WaitFor(int(delay));
        else if (WaitForLoad(*process, reviewer))
            QThread::usleep(delay);
        process->Kill();
        run = process->Finish();
        kills += run.killed ? 1 : 0;
        ended += run.killed ? 0 : 1;
        EXPECT_TRUE(run.killed || run.exitCode == 0) << run.Told();

        const Snapshot now = Snap();
        ASSERT_TRUE(now == before || now == after) << "killed " << delay << (spreadKill ? " ms after the start" : " µs into the load")
                                                   << ", the project is neither as before nor as after the write-back";
        killedAfter += run.killed && now == after ? 1 : 0;

        const QString marker = rig.MarkerPromptStart();
        if (!marker.isEmpty()) {
            ++markersLeft;
            EXPECT_TRUE(marker.contains(u"'"_s + fxproof::WriteBackOwner() + u"'"_s)) << marker.toStdString();
            const CliResult reopened = rig.Run(rig.OpenProject() + QStringList{u"counts"_s});
            EXPECT_EQ(reopened.exitCode, 1) << reopened.Told();
            EXPECT_TRUE(reopened.err.contains(marker)) << marker.toStdString() << "\n" << reopened.Told();
            const CliResult rewritten = rig.Run(WriteBack());
            EXPECT_EQ(rewritten.exitCode, 1) << rewritten.Told();
            EXPECT_TRUE(rewritten.err.contains(marker)) << marker.toStdString() << "\n" << rewritten.Told();
            rig.ClearMarkers();
        }
        Restore();
    }
    EXPECT_EQ(kills, kSpreadKills + kLoadKills);
    std::cout << "write-back run of " << written << " ms (opening " << opened << " ms), killed " << kills << " times: "
              << killedAfter << " after the load, " << markersLeft << " leaving markers; " << ended << " ran to the end\n";
}

INSTANTIATE_TEST_SUITE_P(SqlKinds, ProofKill, testing::Values("sqlite", "postgres"));
