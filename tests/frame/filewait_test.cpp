#include "frame/filewait.h"
#include "support/failures.h"
#include "support/fileholder.h"
#include "support/sandbox.h"

#include <QProcess>
#include <QTimer>

#include <gtest/gtest.h>

using fxtest::FailureOf;
using fxtest::FileHolder;
using fxtest::Sandbox;

namespace {
// Long enough never to run out in a test that expects the file; only a guard against hanging.
constexpr qint64 kGenerous = 60000;
const QString kTimeout = QStringLiteral("Checking if file exists failed (timeout 120000 milliseconds is reached)");
} // namespace

TEST(IsFileExistsA, takes_a_file_still_being_written_as_not_there_and_gives_up_at_the_limit)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("result.txt"), "half");
    FileHolder writer(file, FileHolder::Mode::Write);
    ASSERT_TRUE(writer.IsHolding());

    const auto failure = FailureOf([&] { fx::IsFileExistsA(file, 300); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Number(), 1);
    EXPECT_EQ(failure->Source(), QStringLiteral("IsFileExistsA"));
    EXPECT_EQ(failure->Description(), kTimeout);
}

TEST(IsFileExistsA, returns_once_the_writer_lets_go_with_events_running_meanwhile)
{
    Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("result.txt"), "half");
    FileHolder writer(file, FileHolder::Mode::Write);
    ASSERT_TRUE(writer.IsHolding());
    // Only a timer of ours ends the writer: the wait must let it run.
    QTimer::singleShot(200, [&] { writer.Release(); });
    EXPECT_FALSE(FailureOf([&] { fx::IsFileExistsA(file, kGenerous); }));
}

TEST(IsFileExistsA, returns_once_another_process_has_made_the_file)
{
    Sandbox sandbox;
    const QString file = sandbox.Root() + QStringLiteral("made.txt");
    QProcess maker;
    maker.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("sleep 0.3; echo done > \"$1\""),
                                            QStringLiteral("sh"), file});
    EXPECT_FALSE(FailureOf([&] { fx::IsFileExistsA(file, kGenerous); }));
    EXPECT_EQ(Sandbox::ReadFile(file), "done\n");
    maker.waitForFinished(kGenerous);
}
