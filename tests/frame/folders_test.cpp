#include "frame/failure.h"
#include "frame/folders.h"
#include "frame/messages.h"
#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace fx;

namespace {

TEST(IsFolderWritable, writable_folder_passes_and_keeps_no_test_file)
{
    fxtest::Sandbox box;
    const QString folder = box.Root() + QStringLiteral("w");
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(IsFolderWritable(folder));
    EXPECT_TRUE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
}

struct DeniedCase
{
    const char *name;
    const char *folder;
    const char *message;
};

void PrintTo(const DeniedCase &c, std::ostream *os)
{
    *os << c.name;
}

class IsFolderWritableFails : public testing::TestWithParam<DeniedCase>
{
};

// The process runs as root in the test machines, which no mode bit stops: /proc refuses anyone.
TEST_P(IsFolderWritableFails, with_the_folder_in_the_message)
{
    fxtest::Sandbox box;
    const QString folder = QString::fromUtf8(GetParam().folder).replace(QStringLiteral("ROOT/"), box.Root());
    try {
        IsFolderWritable(folder);
        FAIL() << "no failure";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.Source(), QStringLiteral("IsFolderWritable"));
        EXPECT_EQ(failure.Description(), ArgForm(GetParam().message, {folder}));
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, IsFolderWritableFails,
                         testing::Values(DeniedCase{"missing", "ROOT/missing", msg::DirectoryNotExists},
                                         DeniedCase{"blank", "", msg::DirectoryNotExists},
                                         DeniedCase{"write_denied", "/proc/self", msg::DirectoryWriteDenied}),
                         [](const testing::TestParamInfo<DeniedCase> &info) { return info.param.name; });

} // namespace
