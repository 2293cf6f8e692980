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
#include <unistd.h>

using fxtest::Sandbox;

namespace {

QStringList Scripts(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral("*.sh")}, QDir::Files);
}

// For a tool we did not wait for; the limit only guards against hanging.
bool WaitUntilGone(qint64 pid)
{
    const QDeadlineTimer guard(60000);
    while (fx::IsProcessRunning(pid)) {
        if (guard.hasExpired())
            return false;
        QThread::msleep(20);
    }
    return true;
}

QString ProgramTemp(const Sandbox &sandbox)
{
    const QString folder = sandbox.Temp() + QStringLiteral("Fendrix/");
    QDir().mkpath(folder);
    fx::Process().TempDir = folder;
    return folder;
}

} // namespace

TEST(ExecA, appends_to_an_existing_output_file_with_errors_among_the_output)
{
    Sandbox sandbox;
    const QString output = sandbox.WriteFile(QStringLiteral("it's a log.txt"), "before\n");
    fx::ExecA(QStringLiteral("sh -c 'echo to-out; echo to-err >&2'"), output, 0, nullptr, true);
    EXPECT_EQ(Sandbox::ReadFile(output), "before\nto-out\nto-err\n");
}

TEST(ExecA, with_wait_returns_once_the_tool_is_done_and_lets_events_run_meanwhile)
{
    Sandbox sandbox;
    bool fired = false;
    QTimer::singleShot(0, [&] { fired = true; });
    const QString folder = ProgramTemp(sandbox);
    const QString output = sandbox.Root() + QStringLiteral("wait.log");
    qint64 pid = 0;
    // The tool lists the folder while it runs: its own script stands there until the end.
    fx::ExecA(QStringLiteral("sleep 0.5; ls ") + folder, output, 0, &pid, true);

    static const QRegularExpression script(QStringLiteral("^fx[0-9a-f]{8}\\.sh$"), QRegularExpression::MultilineOption);
    EXPECT_TRUE(script.match(QString::fromLocal8Bit(Sandbox::ReadFile(output))).hasMatch());
    EXPECT_FALSE(fx::IsProcessRunning(pid));
    EXPECT_TRUE(Scripts(folder).isEmpty());
    EXPECT_TRUE(fired);
}

TEST(ExecA, without_wait_hands_back_a_running_process_and_leaves_no_script)
{
    Sandbox sandbox;
    const QString folder = ProgramTemp(sandbox);
    qint64 pid = 0;
    fx::ExecA(QStringLiteral("sleep 60"), sandbox.Root() + QStringLiteral("out.log"), 0, &pid, false);
    ASSERT_GT(pid, 0);
    EXPECT_TRUE(fx::IsProcessRunning(pid));
    EXPECT_TRUE(Scripts(folder).isEmpty());

    // The whole group: the shell and the tool it started.
    const pid_t group = ::getpgid(static_cast<pid_t>(pid));
    ASSERT_GT(group, 1);
    ASSERT_NE(group, ::getpgrp());
    ::kill(-group, SIGKILL);
    EXPECT_TRUE(WaitUntilGone(pid));
}

TEST(ExecA, without_wait_the_tool_still_runs_in_full)
{
    Sandbox sandbox;
    const QString output = sandbox.Root() + QStringLiteral("out.log");
    qint64 pid = 0;
    fx::ExecA(QStringLiteral("echo ran"), output, 0, &pid, false);
    ASSERT_TRUE(WaitUntilGone(pid));
    EXPECT_EQ(Sandbox::ReadFile(output), "ran\n");
    EXPECT_TRUE(Scripts(sandbox.Temp()).isEmpty());
}

TEST(ExecA, puts_its_script_in_temp_while_the_program_folder_is_missing)
{
    Sandbox sandbox;
    fx::Process().TempDir = sandbox.Root() + QStringLiteral("not-made-yet/");
    const QString output = sandbox.Root() + QStringLiteral("out.log");
    fx::ExecA(QStringLiteral("ls ") + sandbox.Temp(), output, 0, nullptr, true);
    EXPECT_TRUE(Sandbox::ReadFile(output).contains(".sh\n"));
    EXPECT_TRUE(Scripts(sandbox.Temp()).isEmpty());
}
