#include "frame/filewait.h"
#include "support/failures.h"
#include "support/fileholder.h"
#include "support/sandbox.h"

#include <QTimer>

#include <gtest/gtest.h>

using fxtest::FailureText;

TEST(IsFileExistsA, waits_while_the_file_is_missing_or_another_process_writes_it_and_fails_at_the_limit)
{
    fxtest::Sandbox sandbox;
    const QString file = sandbox.WriteFile(QStringLiteral("result.txt"), "half");
    fxtest::FileHolder writer(file, true);
    for (const QString &path : {file, sandbox.Root() + QStringLiteral("missing.txt")})
        EXPECT_EQ(FailureText([&] { fx::IsFileExistsA(path, 300); }),
                  QStringLiteral("IsFileExistsA: Checking if file exists failed (timeout 120000 milliseconds is reached)"));

    // Only a timer of ours ends the writer: the wait must let it run. The limit only guards against hanging.
    const QObject context; // its end cancels the timer should the wait not run it
    QTimer::singleShot(200, &context, [&] { writer.Release(); });
    EXPECT_EQ(FailureText([&] { fx::IsFileExistsA(file, 60000); }), QString());
}
