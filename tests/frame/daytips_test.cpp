#include "frame/daytips.h"

#include "support/sandbox.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <memory>

using namespace fx;

namespace {

// The platform's settings store is pointed into the sandbox, so that no test reads or writes
// the user's real one (on Linux ~/.config/Norvane/Fendrix.conf).
class DayTipsStore : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, box.Root() + QStringLiteral("settings"));
    }

    static QString Stored(const char *key) { return Options()->value(QString::fromLatin1(key)).toString(); }
    static void Store(const char *key, const QString &value) { Options()->setValue(QString::fromLatin1(key), value); }

    static std::unique_ptr<QSettings> Options()
    {
        auto settings = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                                    QStringLiteral("Norvane"), QStringLiteral("Fendrix"));
        settings->beginGroup(QStringLiteral("Options"));
        return settings;
    }

    fxtest::Sandbox box;
};

} // namespace

TEST_F(DayTipsStore, reads_tips_without_empty_lines_and_breaks_lines_at_three_slashes)
{
    const QString file = box.WriteFile(QStringLiteral("tips.txt"), "First tip\r\n\r\n   \r\nSecond///tip\nThird");
    DayTips tips = DayTips::Read(file);
    ASSERT_EQ(tips.Count(), 3);
    EXPECT_EQ(tips.CurrentTip(), QStringLiteral("First tip"));
    tips.NextTip();
    EXPECT_EQ(tips.CurrentTip(), QStringLiteral("Second\ntip"));
    tips.NextTip();
    tips.NextTip();
    EXPECT_EQ(tips.Index(), 0) << "after the last tip comes the first";

    EXPECT_EQ(DayTips::Read(box.WriteFile(QStringLiteral("empty.txt"), "\r\n\r\n  \n")).Count(), 0);
}

TEST_F(DayTipsStore, each_start_shows_the_next_tip_and_a_number_past_the_end_starts_at_the_first)
{
    const QString file = box.WriteFile(QStringLiteral("tips.txt"), "a\nb\nc\n");
    Store("CurrentTip", QStringLiteral("1"));
    auto tips = DayTips::ForStartup(file);
    ASSERT_TRUE(tips);
    EXPECT_EQ(tips->CurrentTip(), QStringLiteral("b"));
    EXPECT_EQ(Stored("CurrentTip"), QStringLiteral("2")) << "the next start goes on even if the window never closes";

    tips->NextTip();
    tips->StoreCurrentTip();
    EXPECT_EQ(Stored("CurrentTip"), QStringLiteral("3")) << "c was the last one seen";
    EXPECT_EQ(DayTips::ForStartup(file)->CurrentTip(), QStringLiteral("a"));

    Store("CurrentTip", QStringLiteral("7"));
    EXPECT_EQ(DayTips::ForStartup(file)->CurrentTip(), QStringLiteral("a"));
    Store("CurrentTip", QStringLiteral("-2"));
    EXPECT_EQ(DayTips::ForStartup(file)->CurrentTip(), QStringLiteral("a"));
}

TEST_F(DayTipsStore, nothing_is_shown_when_switched_off_without_a_file_or_without_a_tip)
{
    const QString file = box.WriteFile(QStringLiteral("program/tip.txt"), "only tip\n");
    EXPECT_TRUE(DayTips::ShowTipsAtStartup()) << "on until switched off";
    EXPECT_TRUE(DayTips::ForStartup()) << "an empty name is tip.txt in the program's folder";

    DayTips::SetShowTipsAtStartup(false);
    EXPECT_FALSE(DayTips::ShowTipsAtStartup());
    EXPECT_EQ(Stored("ShowTipsAtStartup"), QStringLiteral("0"));
    EXPECT_FALSE(DayTips::ForStartup(file));

    DayTips::SetShowTipsAtStartup(true);
    EXPECT_FALSE(DayTips::ForStartup(box.Root() + QStringLiteral("missing.txt")));
    EXPECT_FALSE(DayTips::ForStartup(box.WriteFile(QStringLiteral("blank.txt"), "\n\n")));
}
