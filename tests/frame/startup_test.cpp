#include "frame/configkeys.h"
#include "frame/log.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "frame/startup.h"
#include "frame/translation.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace fx;

namespace {
class Startup : public ::testing::Test
{
protected:
    StartOutcome Run(const QString &commandLine) { return Main(ParseSlashCommandLine(commandLine)); }
    QStringList BoxTexts() const
    {
        QStringList texts;
        for (const auto &box : ui.boxes)
            texts << box.text;
        return texts;
    }
    QString LogText() const { return QString::fromUtf8(fxtest::Sandbox::ReadFile(GetLogFile())); }

    fxtest::Sandbox sandbox;
    fxtest::RecordingMessageBox ui;
};
} // namespace

TEST_F(Startup, an_empty_command_line_starts_the_approval_module)
{
    EXPECT_EQ(Run(QString()), StartOutcome::Proceed);
    EXPECT_EQ(Process().ExecutionMode, ExecutionModeKind::Approve);
    EXPECT_FALSE(Process().BatchMode);
    EXPECT_EQ(Process().TempDir, sandbox.Temp());
    EXPECT_EQ(Process().WorkDir, sandbox.Temp());
    EXPECT_TRUE(GetLogFile().startsWith(sandbox.Temp() + QStringLiteral("Fendrix/")));
    const QString log = LogText();
    for (const char *line : {"Checking main Fendrix config file: '", "Checking main user config file: '", "Language: 'English'",
                             "Command line arguments: ''", "Execution mode: 'APPROVE'"})
        EXPECT_TRUE(log.contains(QString::fromUtf8(line))) << line;
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Startup, check_mode_in_batch_stores_its_arguments_without_touching_the_settings)
{
    const QString config = sandbox.WriteFile(QStringLiteral("batch.ini"), "");
    const QString list = sandbox.WriteFile(QStringLiteral("list.txt"), "m1\n");
    EXPECT_EQ(Main(ParseArguments({QStringLiteral("--mode"), QStringLiteral("check"), QStringLiteral("--cmd"), QStringLiteral("/srv/p.cmd"),
                                   QStringLiteral("--project"), QStringLiteral("P1"), QStringLiteral("--config"), config,
                                   QStringLiteral("--listfile"), list, QStringLiteral("--batch")})),
              StartOutcome::Proceed);
    EXPECT_EQ(Process().ExecutionMode, ExecutionModeKind::Check);
    EXPECT_TRUE(Process().BatchMode);
    EXPECT_EQ(Process().CmdControlFile, QStringLiteral("/srv/p.cmd"));
    EXPECT_EQ(Process().CmdProject, QStringLiteral("P1"));
    EXPECT_EQ(Process().CmdConfigFile, config);
    EXPECT_EQ(Process().CmdListFile, list);
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Check), QString());
    EXPECT_TRUE(LogText().contains(QStringLiteral("PDS-Project: 'P1'")));
}

TEST_F(Startup, a_config_file_given_interactively_stays_the_modes_config_file)
{
    const QString config = sandbox.WriteFile(QStringLiteral("mine.ini"), "");
    EXPECT_EQ(Main(ParseArguments({QStringLiteral("--config"), config})), StartOutcome::Proceed);
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), config);
    EXPECT_TRUE(Process().CmdConfigFile.isEmpty());
}

TEST_F(Startup, a_project_without_control_file_takes_the_last_control_file)
{
    SetConfigControlFile(QStringLiteral("/srv/last.cmd"));
    EXPECT_EQ(Run(QStringLiteral("/Project P2")), StartOutcome::Proceed);
    EXPECT_EQ(Process().CmdControlFile, QStringLiteral("/srv/last.cmd"));
    EXPECT_TRUE(LogText().contains(QStringLiteral("Control file: '/srv/last.cmd'")));
}

TEST_F(Startup, a_missing_config_file_fails_before_any_setting_is_written)
{
    EXPECT_EQ(Main(ParseArguments({QStringLiteral("--config"), sandbox.Root() + QStringLiteral("none.ini")})), StartOutcome::Failed);
    EXPECT_EQ(BoxTexts(), (QStringList{QStringLiteral("User config file: '") + sandbox.Root() + QStringLiteral("none.ini' not exists"),
                                       QStringLiteral("Log-file location: '") + GetLogFile() + QStringLiteral("'")}));
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), QString());
}

TEST_F(Startup, batch_mode_needs_the_check_module)
{
    EXPECT_EQ(Run(QStringLiteral("/batch")), StartOutcome::Failed);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_TRUE(LogText().contains(QStringLiteral("Batch mode not available in execution mode: 'APPROVE'")));
}

TEST_F(Startup, an_unknown_mode_fails_with_the_value_as_given)
{
    EXPECT_EQ(Run(QStringLiteral("/Modeless x")), StartOutcome::Failed);
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("Unknown execution mode 'less x'"));
    EXPECT_EQ(ui.boxes[0].flags & 0xF0, 16u); // the failure: critical
    EXPECT_EQ(ui.boxes[1].flags & 0xF0, 48u); // the log's place: exclamation
}

TEST_F(Startup, a_missing_temp_directory_logs_to_the_root_temporary_folder_and_a_log_not_written_is_told)
{
    // TMPDIR names a missing folder too: the fallback must not follow it (nor land in "/").
    sandbox.Env().Set("TMPDIR", sandbox.Root() + QStringLiteral("also-gone"));
    sandbox.Env().Set("TEMP", sandbox.Root() + QStringLiteral("gone"));
    EXPECT_EQ(Run(QString()), StartOutcome::Failed);
    EXPECT_EQ(GetLogFile(), QStringLiteral("/tmp/Fendrix.log"));
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("TEMP directory: '") + sandbox.Root() + QStringLiteral("gone' not existing. Please first set operating system environment variable TEMP to correct folder"));
    EXPECT_EQ(ui.boxes[1].text, QStringLiteral("Log-file location: '/tmp/Fendrix.log'"));
    EXPECT_TRUE(LogText().contains(QStringLiteral("gone' not existing. Please first set")));

    // A log that could not be written is not named as the place to look.
    const QString blocked = sandbox.Root() + QStringLiteral("blocked.log");
    ASSERT_TRUE(QDir().mkpath(blocked));
    InitLog(QStringLiteral("T"), QString(), blocked);
    EXPECT_EQ(FillMessageArgs(LogLocationText()), QStringLiteral("Log-file '") + blocked + QStringLiteral("' could not be written"));
}

TEST_F(Startup, fails_without_fendrix_ini_beside_the_program)
{
    QFile::remove(sandbox.ProgramDir() + QStringLiteral("Fendrix.ini"));
    EXPECT_EQ(Run(QString()), StartOutcome::Failed);
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("Main Fendrix config file: 'Fendrix.ini' not in '") + sandbox.ProgramDir() + QStringLiteral("' directory found"));
}

TEST_F(Startup, a_read_only_config_ini_is_refused)
{
    const QString config = GetConfigFile();
    SetIniValue(config, QStringLiteral("Settings"), QStringLiteral("AutoLoad"), QStringLiteral("0"));
    QFile::setPermissions(config, QFileDevice::ReadOwner | QFileDevice::ReadGroup);
    EXPECT_EQ(Run(QString()), StartOutcome::Failed);
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("File '") + config + QStringLiteral("': write permission denied"));
}

TEST_F(Startup, usage_ends_silently_after_writing_the_text)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(Run(QStringLiteral("foo")), StartOutcome::Usage);
    const QString out = QString::fromStdString(testing::internal::GetCapturedStdout());
    EXPECT_TRUE(out.contains(QStringLiteral("Incorrect command line arguments: 'foo'")));
    EXPECT_TRUE(ui.boxes.empty());

    testing::internal::CaptureStdout();
    EXPECT_EQ(Run(QStringLiteral("/Config c:/a/b.ini")), StartOutcome::Usage);
    EXPECT_TRUE(QString::fromStdString(testing::internal::GetCapturedStdout()).contains(QStringLiteral("Incorrect command line arguments: '/Config c:/a/b.ini'")));
}
