#include "frame/processend.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace fx;

namespace {
struct HelperRun
{
    bool finished;
    int exitCode;
    QByteArray output;
};

HelperRun RunHelper(const char *mode)
{
    QProcess helper;
    helper.start(QStringLiteral(FRAME_PROCESS_END_HELPER), {QString::fromLatin1(mode)});
    // A guard against hanging the suite, not a measure of speed.
    const bool finished = helper.waitForFinished(60000);
    if (!finished)
        helper.kill();
    helper.waitForFinished();
    return {finished, helper.exitCode(), helper.readAllStandardOutput()};
}
} // namespace

TEST(EndProcess, a_process_with_work_in_hand_is_really_gone_and_one_without_returns_to_its_caller)
{
    const HelperRun busy = RunHelper("busy");
    EXPECT_TRUE(busy.finished);
    EXPECT_EQ(busy.exitCode, 0);
    EXPECT_EQ(busy.output, QByteArray());

    const HelperRun idle = RunHelper("idle");
    EXPECT_TRUE(idle.finished);
    EXPECT_EQ(idle.output, QByteArray("returned\n"));
}

TEST(BusyScope, nests_and_tells_the_listener_only_at_the_outer_edges)
{
    std::vector<bool> told;
    SetBusyListener([&](bool busy) { told.push_back(busy); });
    {
        BusyScope outer;
        BusyScope inner;
        EXPECT_TRUE(IsBusy());
    }
    EXPECT_FALSE(IsBusy());
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
    SetBusyListener(nullptr);
}
