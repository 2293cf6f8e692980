#include "frame/usage.h"

#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/programinfo.h"
#include "frame/translation.h"

#include <QFileInfo>

#include <cstdio>

namespace fx {

namespace {
const QString kEcho = QStringLiteral("@echo ");
const QString kEmpty = QStringLiteral("@echo.");

// One option's block: its prefix and its translated text, whose %0% and %1% break the line.
QString OptionBlock(const char *prefix, const char *text)
{
    const QString lineBreak = QStringLiteral("\r\n@echo") + QString(28, QLatin1Char(' '));
    return QString::fromLatin1(prefix) + TranslateText(ArgForm(text, {lineBreak, lineBreak}));
}
} // namespace

QStringList BuildUsageScript(const QString &title, const QString &commandLine, bool incorrect,
                             const QString &exeName)
{
    const QString rule = kEcho + QString(60, QLatin1Char('-'));
    QStringList lines{QStringLiteral("@echo ON"), rule, QStringLiteral("@echo            ") + title, rule, kEmpty};
    if (incorrect)
        lines << kEmpty << kEcho + FillMessageArgs(ArgForm(msg::UsageIncorrectArguments, {commandLine})) << kEmpty;
    lines << kEmpty << kEcho + TranslateText(ArgForm(msg::UsageHeading, {exeName})) << kEmpty;

    const QString modeIndent = kEcho + QString(27, QLatin1Char(' '));
    const QStringList blocks{
        QStringLiteral("@echo /Mode mode               - ") + TranslateText(QString::fromLatin1(msg::UsageModes)) +
            QStringLiteral("\r\n") + modeIndent + QStringLiteral("APPROVE - ") + QString::fromLatin1(msg::ApprovalModule) +
            QStringLiteral("\r\n") + modeIndent + QStringLiteral("CHECK - ") + QString::fromLatin1(msg::CheckModule),
        OptionBlock("@echo /CMD control_file.cmd    - ", msg::UsageCmd),
        OptionBlock("@echo /Project project_name    - ", msg::UsageProject),
        OptionBlock("@echo /Config config_file.ini  - ", msg::UsageConfig),
        OptionBlock("@echo /Listfile list_file.txt  - ", msg::UsageListFile),
        OptionBlock("@echo /batch                   - ", msg::UsageBatch),
    };
    for (const QString &block : blocks)
        lines << block.split(QStringLiteral("\r\n")) << kEmpty;
    // The "/" form tears a POSIX path apart; the long form carries one value an argument.
    lines << kEcho + TranslateText(QString::fromLatin1(msg::UsageLongForm))
          << kEcho + QStringLiteral("  --mode mode  --cmd control_file.cmd  --project project_name")
          << kEcho + QStringLiteral("  --config config_file.ini  --listfile list_file.txt  --batch  --help") << kEmpty;

    lines << kEcho + TranslateText(QString::fromLatin1(msg::UsageExample)) << kEmpty
          << kEcho + exeName +
                 QStringLiteral(" /Mode CHECK /CMD control_file.cmd /Project project_name /Config config_file.ini /batch")
          << kEcho + exeName +
                 QStringLiteral(" --mode CHECK --cmd /pds/control_file.cmd --project project_name --config /home/me/config_file.ini --batch")
          << kEmpty << kEmpty << QStringLiteral("@pause");
    return lines;
}

QStringList RenderEchoScript(const QStringList &script)
{
    QStringList shown;
    for (const QString &line : script) {
        if (line.compare(QLatin1String("@echo ON"), Qt::CaseInsensitive) == 0 ||
            line.compare(QLatin1String("@pause"), Qt::CaseInsensitive) == 0)
            continue;
        if (line == kEmpty)
            shown << QString();
        else if (line.startsWith(kEcho))
            shown << line.mid(kEcho.size());
    }
    return shown;
}

void ShowUsage(const QString &title, const QString &commandLine, bool incorrect)
{
    // On Windows the program file is "<name>.exe"; elsewhere it has no extension.
    const QString exeName = QFileInfo(ProgramFilePath()).fileName();
    const QStringList lines = RenderEchoScript(BuildUsageScript(title, commandLine, incorrect, exeName));
    for (const QString &line : lines)
        std::fputs((line + QLatin1Char('\n')).toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

} // namespace fx
