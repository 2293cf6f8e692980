#include "frame/tempdir.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

TEST(GetTempEnvDir, takes_temp_then_tmpdir_then_the_system_folder)
{
    fxtest::EnvGuard env;
    env.Set("TEMP", QStringLiteral("/var/one"));
    env.Set("TMPDIR", QStringLiteral("/var/two/"));
    EXPECT_EQ(fx::GetTempEnvDir(), QStringLiteral("/var/one/"));
    env.Set("TEMP", QStringLiteral("  "));
    EXPECT_EQ(fx::GetTempEnvDir(), QStringLiteral("/var/two/"));
    env.Unset("TEMP");
    env.Unset("TMPDIR");
    EXPECT_EQ(fx::GetTempEnvDir(), QStringLiteral("/tmp/"));
}
