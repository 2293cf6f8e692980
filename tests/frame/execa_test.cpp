#include "frame/execa.h"
#include "frame/processstate.h"
#include "support/sandbox.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>
#include <signal.h>

using fxtest::Sandbox;

namespace {
QStringList Scripts(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral("*.sh")}, QDir::Files);
}
} // namespace

TEST(ExecA, with_wait_appends_output_and_errors_once_done_its_script_in_the_program_temp_folder_if_made)
{
    Sandbox sandbox;
    bool fired = false;
    const QObject context; // its end cancels the timer should no wait run it
    QTimer::singleShot(0, &context, [&] { fired = true; });
    const QString folder = sandbox.Temp() + QStringLiteral("Fendrix/");
    fx::Process().TempDir = folder;
    const QString output = sandbox.WriteFile(QStringLiteral("it's a log.txt"), "before\n");
    // Each tool lists where its script stands while it runs.
    fx::ExecA(QStringLiteral("sh -c 'echo to-out; echo to-err >&2; ls %1'").arg(sandbox.Temp()), output, 0, nullptr, true);
    QDir().mkpath(folder);
    qint64 pid = 0;
    fx::ExecA(QStringLiteral("sleep 0.5; ls ") + folder, output, 0, &pid, true);

    static const QRegularExpression expected(QStringLiteral("^before\nto-out\nto-err\nfx[0-9a-f]{8}\\.sh\nfx[0-9a-f]{8}\\.sh\n$"));
    EXPECT_TRUE(expected.match(QString::fromLocal8Bit(Sandbox::ReadFile(output))).hasMatch()) << Sandbox::ReadFile(output).toStdString();
    EXPECT_FALSE(fx::IsProcessRunning(pid));
    EXPECT_EQ(Scripts(sandbox.Temp()) + Scripts(folder), QStringList());
    EXPECT_TRUE(fired);
}

TEST(ExecA, without_wait_hands_back_the_running_tool_which_runs_in_full_though_its_script_is_gone)
{
    Sandbox sandbox;
    const QString output = sandbox.Root() + QStringLiteral("out.log");
    qint64 sleeper = 0, echo = 0;
    fx::ExecA(QStringLiteral("exec sleep 60"), QString(), 0, &sleeper, false);
    fx::ExecA(QStringLiteral("echo ran"), output, 0, &echo, false);
    EXPECT_TRUE(fx::IsProcessRunning(sleeper));
    EXPECT_EQ(Scripts(sandbox.Temp()), QStringList());
    ASSERT_GT(sleeper, 0);
    ::kill(static_cast<pid_t>(sleeper), SIGKILL);
    // The limit only guards against hanging.
    for (const QDeadlineTimer guard(60000); fx::IsProcessRunning(echo) && !guard.hasExpired();)
        QThread::msleep(20);
    EXPECT_EQ(Sandbox::ReadFile(output), "ran\n");
}
