#include "frame/folders.h"
#include "frame/messages.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(IsFolderWritable, passes_leaving_no_file_and_fails_naming_a_missing_or_denied_folder)
{
    fxtest::Sandbox box;
    const QString folder = box.Root() + u"w"_s;
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(fx::IsFolderWritable(folder));
    EXPECT_TRUE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
    // The tests may run as root, which no mode bit stops: /proc refuses anyone.
    const std::pair<QString, const char *> denied[] = {
        {box.Root() + u"missing"_s, fx::msg::DirectoryNotExists}, {QString(), fx::msg::DirectoryNotExists},
        {u"/proc/self"_s, fx::msg::DirectoryWriteDenied}};
    for (const auto &[path, message] : denied) {
        EXPECT_EQ(fxtest::FailureText([&path = path] { fx::IsFolderWritable(path); }),
                  u"IsFolderWritable: "_s + fx::ArgForm(message, {path}));
    }
}

} // namespace
