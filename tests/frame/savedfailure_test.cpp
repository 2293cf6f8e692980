#include "frame/fileops.h"
#include "frame/savedfailure.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using fxtest::FailureOf;

namespace {
const QString kMissing = QStringLiteral("/nonexistent-folder/missing.txt");
}

TEST(SavedFailure, operation_told_not_to_raise_saves_its_failure_and_a_later_success_keeps_it)
{
    fxtest::Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("a.txt"), "a");
    fx::ClearSavedFailure();
    EXPECT_FALSE(fx::CopyFileA(kMissing, sandbox.Temp(), false));
    EXPECT_TRUE(fx::CopyFileA(file, sandbox.Temp(), false));

    const fx::Failure saved = fx::GetSavedFailure();
    EXPECT_EQ(saved.Number(), 1);
    EXPECT_EQ(saved.Source(), QStringLiteral("CopyFileA"));
    EXPECT_EQ(saved.Description(), QStringLiteral("File '%0%' not exists|||") + kMissing);
}

TEST(SavedFailure, raise_saved_failure_raises_it_as_saved_and_nothing_once_cleared)
{
    fx::ClearSavedFailure();
    fx::DeleteFolderA(QStringLiteral("/nonexistent-folder"), false); // nothing to delete: no failure
    EXPECT_FALSE(FailureOf([] { fx::RaiseSavedFailure(); }));

    fx::MoveFileA(kMissing, QStringLiteral("/tmp/x"), false);
    const auto raised = FailureOf([] { fx::RaiseSavedFailure(); });
    ASSERT_TRUE(raised);
    EXPECT_EQ(raised->Source(), QStringLiteral("MoveFileA"));
    EXPECT_EQ(raised->Description(), QStringLiteral("File '%0%' not exists|||") + kMissing);

    fx::ClearSavedFailure();
    EXPECT_FALSE(FailureOf([] { fx::RaiseSavedFailure(); }));
}
