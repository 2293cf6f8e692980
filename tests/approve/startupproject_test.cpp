#include "approve/startupproject.h"

#include "frame/configkeys.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "frame/tempdir.h"

#include "support/sandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class StartupProjectTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Process().CmdProject.clear();
        Process().CmdControlFile.clear();
    }

    fxtest::Sandbox box;
};

} // namespace

TEST_F(StartupProjectTest, the_command_line_wins_and_a_stored_project_loads_only_with_auto_load)
{
    SetConfigControlFile(u"/site/stored.cmd"_s);
    SetConfigProject(u"/site/stored.cmd"_s, u"STORED"_s);

    StartupProject chosen = ChooseStartupProject();
    EXPECT_EQ(chosen.project, u"STORED"_s);
    EXPECT_EQ(chosen.controlFile, u"/site/stored.cmd"_s);
    EXPECT_FALSE(chosen.load);
    SetConfigAutoLoad(true);
    EXPECT_TRUE(ChooseStartupProject().load);

    SetConfigAutoLoad(false);
    Process().CmdProject = u" GIVEN "_s;
    Process().CmdControlFile = u"/site/given.cmd"_s;
    chosen = ChooseStartupProject();
    EXPECT_EQ(chosen.project, u"GIVEN"_s);
    EXPECT_EQ(chosen.controlFile, u"/site/given.cmd"_s);
    EXPECT_TRUE(chosen.fromCommandLine);
    EXPECT_TRUE(chosen.load);
}

TEST_F(StartupProjectTest, a_recent_caption_is_taken_apart_and_a_clash_file_needs_no_control_file)
{
    SetConfigAutoLoad(true);
    Process().CmdProject = u"1 PLANT (/site/p.cmd)"_s;
    StartupProject chosen = ChooseStartupProject();
    EXPECT_EQ(chosen.project, u"PLANT"_s);
    EXPECT_EQ(chosen.controlFile, u"/site/p.cmd"_s);

    Process().CmdProject = u"/reviews/plant.fxdb"_s;
    Process().CmdControlFile = u"/site/p.cmd"_s;
    chosen = ChooseStartupProject();
    EXPECT_EQ(chosen.project, u"/reviews/plant.fxdb"_s);
    EXPECT_TRUE(chosen.controlFile.isEmpty());

    // Nothing named, nothing loaded.
    Process().CmdProject.clear();
    EXPECT_FALSE(ChooseStartupProject().load);
}

TEST_F(StartupProjectTest, the_user_config_file_is_settled_and_its_write_problems_are_warned)
{
    const QString folder = box.Root() + u"configs/"_s;
    QDir().mkpath(folder);
    const QString file = folder + u"me.ini"_s;
    box.WriteFile(u"configs/me.ini"_s, "[Options]\n");
    SetConfigUserConfigFile(ExecutionModeKind::Approve, file);
    EXPECT_TRUE(SettleUserConfigFile().isEmpty());
    EXPECT_EQ(GetUserConfigFile(), file);

    QFile::setPermissions(file, QFile::ReadOwner);
    const QStringList warnings = SettleUserConfigFile();
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].startsWith(u"File '%0%': write permission denied.%1%|||"_s + file)) << warnings[0].toStdString();
    EXPECT_TRUE(warnings[0].endsWith(u"Program settings cannot be saved!"_s));

    // A file in a folder that has gone is forgotten, and the default takes its place.
    SetConfigUserConfigFile(ExecutionModeKind::Approve, box.Root() + u"gone/me.ini"_s);
    SettleUserConfigFile();
    EXPECT_TRUE(ConfigUserConfigFile(ExecutionModeKind::Approve).isEmpty());
    EXPECT_EQ(QFileInfo(GetUserConfigFile()).path(), QFileInfo(GetConfigFile()).path());
}

TEST(TempDir, the_window_folder_is_made_inside_temp_and_removed_with_its_files_but_temp_never)
{
    fxtest::Sandbox box;
    Process().TempDir = box.Temp();
    const QString folder = CreateTempDir();
    EXPECT_TRUE(folder.startsWith(box.Temp()));
    EXPECT_TRUE(QFileInfo(folder).isDir());
    EXPECT_NE(CreateTempDir(), folder);
    QFile file(folder + u"work.fxdb"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    RemoveTempDir(folder);
    EXPECT_FALSE(QFileInfo::exists(folder));
    RemoveTempDir(box.Temp());
    EXPECT_TRUE(QFileInfo(box.Temp()).isDir());
    Process().TempDir.clear();
}
