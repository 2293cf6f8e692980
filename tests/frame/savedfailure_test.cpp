#include "frame/fileops.h"
#include "frame/savedfailure.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using fxtest::FailureText;

TEST(SavedFailure, keeps_what_an_operation_told_not_to_raise_failed_with_until_cleared)
{
    fxtest::Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    const QString missing = sandbox.Root() + QStringLiteral("missing.txt");
    fx::ClearSavedFailure();
    EXPECT_FALSE(fx::CopyFileA(missing, sandbox.Temp(), false));
    EXPECT_TRUE(fx::CopyFileA(file, sandbox.Temp(), false)); // a success leaves it
    EXPECT_EQ(FailureText(fx::RaiseSavedFailure), QStringLiteral("CopyFileA: File '%0%' not exists|||") + missing);

    fx::ClearSavedFailure();
    EXPECT_EQ(FailureText(fx::RaiseSavedFailure), QString());
}
