#include "frame/failure.h"
#include "frame/log.h"
#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;

namespace {
// Three procedures, each with its frame, as the program's procedures are written.
void C()
{
    Frame("C", [] { Raise("Directory '%0%' not exists", {QStringLiteral("/no/such")}); });
}
void B()
{
    Frame("B", [] { C(); });
}
void A()
{
    Frame("A", [] { B(); });
}

Failure CaughtFrom(void (*procedure)())
{
    try {
        procedure();
    } catch (const Failure &failure) {
        return failure;
    }
    return Failure(0, QString(), QString());
}

QStringList LogLines()
{
    return QString::fromUtf8(fxtest::Sandbox::ReadFile(GetLogFile())).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
} // namespace

TEST(Failure, grows_through_frames_skips_the_application_title_at_the_first_hop_and_takes_in_other_exceptions)
{
    const Failure failure = CaughtFrom(A);
    EXPECT_EQ(failure.Number(), 1);
    EXPECT_EQ(failure.Source(), QStringLiteral("A"));
    EXPECT_EQ(failure.Description(), QStringLiteral("B: C: Directory '%0%' not exists|||/no/such"));

    const Failure passed = Failure(1, QStringLiteral("Fendrix"), QStringLiteral("text")).PassedThrough(QStringLiteral("Proc"));
    EXPECT_EQ(passed.Description(), QStringLiteral("text"));
    EXPECT_EQ(passed.Source(), QStringLiteral("Proc"));

    try {
        Frame("Outer", [] { throw std::runtime_error("disk gone"); });
        FAIL() << "no failure";
    } catch (const Failure &other) {
        EXPECT_EQ(other.Number(), 1);
        EXPECT_EQ(other.Source(), QStringLiteral("Outer"));
        EXPECT_EQ(other.Description(), QStringLiteral("disk gone"));
    }
}

TEST(ShowMessage, shows_a_deep_failure_in_a_box_and_logs_its_chain_and_in_batch_mode_only_logs_it)
{
    fxtest::Sandbox sandbox;
    InitLog(QString(), QString(), sandbox.Temp() + QStringLiteral("run.log"));
    fxtest::RecordingMessageBox ui;

    EXPECT_EQ(ShowMessage(CaughtFrom(A), MbIconExclamation), IdOk);

    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("B: C: Directory '/no/such' not exists"));
    EXPECT_EQ(ui.boxes[0].title, QStringLiteral("Norvane Fendrix"));
    EXPECT_EQ(ui.boxes[0].flags, quint32(MbIconExclamation | MbTaskModal));
    const QStringList lines = LogLines();
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_TRUE(lines.last().endsWith(QStringLiteral("  A:B: C: Directory '/no/such' not exists"))) << qPrintable(lines.last());

    // In batch mode nobody answers: the default button is taken and the failure only logged.
    Process().BatchMode = true;
    EXPECT_EQ(ShowMessage(CaughtFrom(A), MbYesNo | MbDefButton2), IdNo);
    EXPECT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(LogLines().filter(QStringLiteral("  A:B: C: Directory '/no/such' not exists")).size(), 2);

    // A text with line breaks starts on the line after its source.
    ShowMessage(Failure(1, QStringLiteral("Proc"), QStringLiteral("first\r\nsecond")), MbOk);
    const QString log = QString::fromUtf8(fxtest::Sandbox::ReadFile(GetLogFile()));
    EXPECT_TRUE(log.contains(QStringLiteral("  Proc:\r\nfirst\r\nsecond"))) << qPrintable(log);
}

TEST(ShowMessage, blank_text_shows_unknown_error_and_ampersands_are_stripped)
{
    fxtest::RecordingMessageBox ui;
    ShowMessage(QStringLiteral("   "), MbOk);
    ShowMessage(QStringLiteral("Save && close %0%|||A&B"), MbOk);
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("Unknown error."));
    EXPECT_EQ(ui.boxes[1].text, QStringLiteral("Save  close AB"));
}

struct DefaultCase
{
    quint32 flags;
    int answer;
};

[[maybe_unused]] void PrintTo(const DefaultCase &c, std::ostream *out)
{
    *out << "flags " << c.flags << ", answer " << c.answer;
}

class BatchDefaultAnswer : public ::testing::TestWithParam<DefaultCase>
{
};

TEST_P(BatchDefaultAnswer, is_the_button_the_flags_name_as_default)
{
    fxtest::RecordingMessageBox ui(IdCancel);
    EXPECT_EQ(MessageBoxAnswer(QStringLiteral("?"), GetParam().flags, QStringLiteral("t"), false), GetParam().answer);
    EXPECT_TRUE(ui.boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(Table, BatchDefaultAnswer,
                         ::testing::Values(DefaultCase{MbOk | MbDefButton3, IdOk}, DefaultCase{MbOkCancel | MbDefButton2, IdCancel},
                                           DefaultCase{MbOkCancel | MbDefButton3, IdCancel}, DefaultCase{MbAbortRetryIgnore, IdAbort},
                                           DefaultCase{MbAbortRetryIgnore | MbDefButton2, IdRetry}, DefaultCase{MbAbortRetryIgnore | MbDefButton4, IdIgnore},
                                           DefaultCase{MbYesNoCancel | MbDefButton3, IdCancel}, DefaultCase{MbYesNo | MbDefButton2 | MbIconExclamation, IdNo},
                                           DefaultCase{MbYesNo | MbDefButton3, IdNo}, DefaultCase{MbRetryCancel, IdRetry}),
                         [](const testing::TestParamInfo<DefaultCase> &info) { return "flags_" + std::to_string(info.param.flags); });
