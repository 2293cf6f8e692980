#include "frame/datetimetext.h"
#include "frame/log.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace fx;

namespace {
QString LogText()
{
    return QString::fromUtf8(fxtest::Sandbox::ReadFile(GetLogFile()));
}
} // namespace

TEST(Banner, centres_texts_in_120_columns_and_cuts_longer_ones)
{
    for (const int n : {0, 1, 6, 118, 119})
        EXPECT_EQ(Banner(QString(n, QLatin1Char('x'))).size(), 120) << n;
    for (const int n : {120, 121, 130})
        EXPECT_EQ(Banner(QString(n, QLatin1Char('x'))), QString(120, QLatin1Char('x'))) << n;
    // 120 - 5 = 115: halves round to even, 58 stars before and 57 after.
    EXPECT_EQ(Banner(QStringLiteral("abcde")), QString(58, QLatin1Char('*')) + QStringLiteral("abcde") + QString(57, QLatin1Char('*')));
    // 120 - 7 = 113: 56 before, 56 after, one star more to fill the line.
    EXPECT_EQ(Banner(QStringLiteral("abcdefg")), QString(56, QLatin1Char('*')) + QStringLiteral("abcdefg") + QString(57, QLatin1Char('*')));
}

TEST(EnvironmentLine, replaces_every_equals_sign_by_the_gap_of_the_name)
{
    EXPECT_EQ(EnvironmentLine(QStringLiteral("A=b=c")), QStringLiteral("A") + QString(23, QLatin1Char(' ')) + QStringLiteral("b") + QString(23, QLatin1Char(' ')) + QStringLiteral("c"));
    const QString name24(24, QLatin1Char('N'));
    EXPECT_EQ(EnvironmentLine(name24 + QStringLiteral("=v")), name24 + QStringLiteral("v"));
    const QString name30(30, QLatin1Char('N'));
    EXPECT_EQ(EnvironmentLine(name30 + QStringLiteral("=v")), name30 + QString(6, QLatin1Char(' ')) + QStringLiteral("v"));
}

TEST(LogHeader, is_120_columns_wide_and_lists_the_environment_between_banners)
{
    fxtest::EnvGuard env;
    env.Set("FX_HEADER_PROBE", QStringLiteral("x=y"));
    const QStringList header = LogHeader(QStringLiteral("Norvane Fendrix 1.0.0"));
    EXPECT_EQ(header[0], QString(120, QLatin1Char('*')));
    for (int i = 1; i <= 6; ++i) {
        EXPECT_EQ(header[i].size(), 120) << qPrintable(header[i]);
        EXPECT_TRUE(header[i].endsWith(QLatin1Char('*')));
    }
    EXPECT_TRUE(header[1].startsWith(QStringLiteral("*  Application:   Fendrix ")));
    EXPECT_TRUE(header[6].startsWith(QStringLiteral("*  Description:   Norvane Fendrix 1.0.0 ")));
    EXPECT_EQ(LogHeader(QStringLiteral("  "))[6], QString(120, QLatin1Char('*'))); // a blank description is left out
    const qsizetype begin = header.indexOf(Banner(QStringLiteral("Begin of environment variables")));
    const qsizetype end = header.indexOf(Banner(QStringLiteral("End of environment variables")));
    ASSERT_GT(begin, 0);
    ASSERT_GT(end, begin);
    const QString gap(24 - 15, QLatin1Char(' '));
    EXPECT_TRUE(header.mid(begin, end - begin).contains(QStringLiteral("FX_HEADER_PROBE") + gap + QStringLiteral("x") + gap + QStringLiteral("y")));
}

TEST(LogStamp, shows_the_hundredths_of_the_second)
{
    const QDateTime when(QDate(2026, 11, 21), QTime(9, 5, 7, 340));
    EXPECT_EQ(LogStamp(when), QStringLiteral("2026-11-21 09:05:07.34"));
}

TEST(InitLog, names_the_start_up_log_after_the_process_and_moves_it_to_the_project_without_a_second_header)
{
    fxtest::Sandbox sandbox;
    InitLog(QStringLiteral("desc"), QString(), QString());
    const QString startupLog = GetLogFile();
    const QString startupName = QStringLiteral("^\\d{4}-\\d\\d-\\d\\d_\\d{6}_") +
                                QRegularExpression::escape(QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName()) +
                                QStringLiteral("_PID") + QString::number(QCoreApplication::applicationPid()) + QStringLiteral("\\.log$");
    EXPECT_EQ(QFileInfo(startupLog).absolutePath(), QDir(sandbox.Temp() + QStringLiteral("Fendrix")).absolutePath());
    EXPECT_TRUE(QRegularExpression(startupName).match(QFileInfo(startupLog).fileName()).hasMatch()) << qPrintable(startupLog);
    WriteLogLine(QStringLiteral("before the move"));

    InitLog(QString(), QStringLiteral("PROJ1"), QString());
    WriteLogLine(QStringLiteral("after the move"));

    EXPECT_FALSE(QFileInfo::exists(startupLog));
    EXPECT_TRUE(GetLogFile().endsWith(QStringLiteral("_PROJ1.log")));
    const QString text = LogText();
    EXPECT_EQ(text.count(QStringLiteral("Begin of environment variables")), 1);
    EXPECT_LT(text.indexOf(QStringLiteral("before the move")), text.indexOf(QStringLiteral("after the move")));

    // A project log is not moved again: the next call starts a new file with its own header.
    const QString projectLog = GetLogFile();
    InitLog(QString(), QStringLiteral("PROJ2"), QString());
    EXPECT_TRUE(QFileInfo::exists(projectLog));
    EXPECT_TRUE(LogText().contains(QStringLiteral("Begin of environment variables")));
}

TEST(InitLog, copies_an_existing_target_to_bak_before_taking_it)
{
    fxtest::Sandbox sandbox;
    const QString target = sandbox.WriteFile(QStringLiteral("temp/fixed.log"), "older run\n");
    InitLog(QString(), QString(), target);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(target + QStringLiteral(".bak")), QByteArray("older run\n"));
    EXPECT_FALSE(LogText().contains(QStringLiteral("older run")));
}

TEST(InitLog, falls_back_to_temp_itself_when_the_application_folder_cannot_be_made)
{
    fxtest::Sandbox sandbox;
    sandbox.WriteFile(QStringLiteral("temp/Fendrix"), "a file where the folder should be");
    InitLog(QString(), QStringLiteral("P"), QString());
    EXPECT_EQ(QFileInfo(GetLogFile()).absolutePath(), QDir(sandbox.Temp()).absolutePath());
}

TEST(WriteLogLine, writes_nothing_before_the_log_is_started_or_for_blank_text)
{
    fxtest::Sandbox sandbox;
    WriteLogLine(QStringLiteral("lost"));
    InitLog(QString(), QString(), sandbox.Temp() + QStringLiteral("l.log"));
    const QString before = LogText();
    WriteLogLine(QStringLiteral("   "));
    EXPECT_EQ(LogText(), before);
    WriteLogLine(QStringLiteral("kept"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("\\n\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d\\d  kept\\n$")).match(LogText()).hasMatch());
}

TEST(AppendFileToLog, copies_the_file_between_banners)
{
    fxtest::Sandbox sandbox;
    InitLog(QString(), QString(), sandbox.Temp() + QStringLiteral("l.log"));
    const QString file = sandbox.WriteFile(QStringLiteral("tool.out"), "line 1\r\nline 2\r\n");
    AppendFileToLog(file);
    AppendFileToLog(sandbox.Root() + QStringLiteral("missing.out"));
    const QString text = LogText();
    const QString expected = QStringLiteral("\n") + Banner(QStringLiteral("Begin of '") + file + QStringLiteral("' file")) +
                             QStringLiteral("\nline 1\nline 2\n") + Banner(QStringLiteral("End of '") + file + QStringLiteral("' file")) + QStringLiteral("\n\n");
    EXPECT_TRUE(text.endsWith(expected)) << qPrintable(text.right(400));
}

namespace {
struct ThrowingSink : ILogSink
{
    void ShowLogMessage(const QString &) override { throw std::runtime_error("label gone"); }
};
struct RecordingSink : ILogSink
{
    void ShowLogMessage(const QString &text) override { texts << text; }
    QStringList texts;
};
} // namespace

TEST(LogMessage, logs_in_english_with_arguments_and_fans_out_to_every_sink)
{
    fxtest::Sandbox sandbox;
    InitLog(QString(), QString(), sandbox.Temp() + QStringLiteral("l.log"));
    RecordingSink label;
    EventList events;
    LogSinkRegistration r1(&label), r2(&events);

    LogMessage(QStringLiteral("Loading '%0%' & '%1%'\r\ndone|||a|||b"));

    EXPECT_TRUE(LogText().endsWith(QStringLiteral("  Loading 'a' & 'b' done\n")));
    EXPECT_EQ(label.texts, QStringList{QStringLiteral("Loading 'a' & 'b' done")});
    ASSERT_EQ(events.Items().size(), 1);
    EXPECT_TRUE(events.Items()[0].endsWith(QStringLiteral("\tLoading 'a' & 'b' done")));
}

TEST(LogMessage, a_failing_sink_is_shown_and_the_message_still_logged)
{
    fxtest::Sandbox sandbox;
    InitLog(QString(), QString(), sandbox.Temp() + QStringLiteral("l.log"));
    fxtest::RecordingMessageBox ui;
    ThrowingSink sink;
    LogSinkRegistration registration(&sink);
    LogMessage(QStringLiteral("progress"));
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text, QStringLiteral("label gone"));
    EXPECT_EQ(ui.boxes[0].flags & 0xF0, quint32(MbIconExclamation));
    EXPECT_TRUE(LogText().contains(QStringLiteral("  progress\n")));
}

TEST(EventList, keeps_the_last_five_messages)
{
    EventList events;
    int changes = 0;
    events.SetOnChanged([&] { ++changes; });
    for (int i = 1; i <= 6; ++i)
        events.ShowLogMessage(QStringLiteral("m%1").arg(i));
    ASSERT_EQ(events.Items().size(), 5);
    EXPECT_TRUE(events.Items().first().endsWith(QStringLiteral("\tm2")));
    EXPECT_TRUE(events.Items().last().endsWith(QStringLiteral("\tm6")));
    EXPECT_EQ(changes, 6);
}
