#include "cli/cliarguments.h"

#include "cli/messages.h"
#include "frame/failure.h"
#include "frame/translation.h"

namespace fx::cli {

namespace {

struct StepWord
{
    const char *word;
    StepKind kind;
    int operands;
};

constexpr StepWord kSteps[] = {
    {"counts", StepKind::Counts, 0},          {"filter", StepKind::Filter, 1},
    {"approve-real", StepKind::ApproveReal, 1}, {"approve-false", StepKind::ApproveFalse, 1},
    {"unapprove", StepKind::Unapprove, 1},     {"describe", StepKind::Describe, 2},
    {"export-csv", StepKind::ExportCsv, 1},    {"save-file", StepKind::SaveFile, 1},
    {"save-project", StepKind::SaveProject, 0},
};

[[noreturn]] void Refuse(const char *message, const QStringList &args = {})
{
    // The reason is filled in here: arguments in argument form can't nest.
    Raise(msg::CliArgumentsRefused, {TranslateText(ArgForm(message, args)), UsageText()});
}

} // namespace

QString UsageText()
{
    return QString::fromUtf8(msg::CliUsage);
}

Arguments ParseArguments(const QStringList &args)
{
    return Frame("ParseArguments", [&] {
        Arguments parsed;
        qsizetype i = 0;
        const auto value = [&](const QString &option) {
            if (i + 1 >= args.size())
                Refuse(msg::CliOptionWithoutValue, {option});
            return args.at(++i);
        };
        for (; i < args.size(); ++i) {
            const QString &arg = args.at(i);
            if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
                parsed.help = true;
                return parsed;
            }
            if (arg == QLatin1String("--config"))
                parsed.configFile = value(arg);
            else if (arg == QLatin1String("--cmd"))
                parsed.controlFile = value(arg);
            else if (arg == QLatin1String("--project"))
                parsed.project = value(arg);
            else if (arg == QLatin1String("--file"))
                parsed.clashFile = value(arg);
            else if (arg.startsWith(QLatin1String("--")))
                Refuse(msg::CliUnknownOption, {arg});
            else
                break;
        }
        for (; i < args.size(); ++i) {
            const QString &word = args.at(i);
            const StepWord *found = nullptr;
            for (const StepWord &step : kSteps)
                if (word == QLatin1String(step.word))
                    found = &step;
            if (!found)
                Refuse(msg::CliUnknownStep, {word});
            if (i + found->operands >= args.size())
                Refuse(msg::CliStepWithoutOperands, {word, QString::number(found->operands)});
            parsed.steps << Step{found->kind, args.mid(i + 1, found->operands)};
            i += found->operands;
        }
        if (parsed.clashFile.isEmpty() == parsed.controlFile.isEmpty())
            Refuse(msg::CliProjectNotNamed);
        if (!parsed.controlFile.isEmpty() && parsed.project.trimmed().isEmpty())
            Refuse(msg::CliProjectNotNamed);
        return parsed;
    });
}

} // namespace fx::cli
