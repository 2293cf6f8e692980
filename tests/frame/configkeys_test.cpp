#include "frame/configkeys.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;

namespace {

TEST(ConfigKeys, defaults_hold_until_written_and_values_land_where_other_readers_look)
{
    fxtest::Sandbox box;
    EXPECT_EQ(ConfigLanguage(), QStringLiteral("English"));
    EXPECT_FALSE(ConfigAutoLoad());
    EXPECT_TRUE(ConfigControlFile().isEmpty());
    SetConfigLanguage(QStringLiteral("German"));
    SetConfigUserConfigFile(ExecutionModeKind::Approve, QStringLiteral("/a.ini"));
    SetConfigUserConfigFile(ExecutionModeKind::Check, QStringLiteral("/c.ini"));
    SetConfigControlFile(QStringLiteral("d:\\pds\\pds.cmd"));
    SetConfigProject(QStringLiteral("d:\\pds\\pds.cmd"), QStringLiteral("PROJ1"));
    EXPECT_EQ(ConfigLanguage(), QStringLiteral("German"));
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), QStringLiteral("/a.ini"));
    EXPECT_EQ(ConfigProject(QStringLiteral("D:\\PDS\\PDS.CMD")), QStringLiteral("PROJ1"));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(GetConfigFile()), QByteArray("[Language]\nLanguage=German\n"
                                                                     "[Approve]\nUserConfigFile=/a.ini\n"
                                                                     "[Check]\nUserConfigFile=/c.ini\n"
                                                                     "[Fendrix]\nControlFile=d:\\pds\\pds.cmd\n"
                                                                     "[d:\\pds\\pds.cmd]\nProject=PROJ1\n"));
}

TEST(ConfigKeys, auto_load_is_on_for_anything_but_zero)
{
    fxtest::Sandbox box;
    for (const char *stored : {"1", "7", "yes"}) {
        SetIniValue(GetConfigFile(), QStringLiteral("Settings"), QStringLiteral("AutoLoad"), QString::fromUtf8(stored));
        EXPECT_TRUE(ConfigAutoLoad()) << stored;
    }
    SetConfigAutoLoad(false);
    EXPECT_FALSE(ConfigAutoLoad());
}

} // namespace
