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
    bool changes; ///< the last operand is the CONDITION of a change to the clashes
};

constexpr StepWord kSteps[] = {
    {"counts", StepKind::Counts, 0, false},
    {"filter", StepKind::Filter, 1, false},
    {"approve-real", StepKind::ApproveReal, 1, true},
    {"approve-false", StepKind::ApproveFalse, 1, true},
    {"unapprove", StepKind::Unapprove, 1, true},
    {"describe", StepKind::Describe, 2, true},
    {"export-csv", StepKind::ExportCsv, 1, false},
    {"save-file", StepKind::SaveFile, 1, false},
    {"save-project", StepKind::SaveProject, 0, false},
};

[[noreturn]] void Refuse(const char *message, const QStringList &args = {})
{
    // The reason is filled in here: arguments in argument form can't nest.
    Raise(msg::CliArgumentsRefused, {TranslateText(ArgForm(message, args)), UsageText()});
}

// The condition of a change as the store takes it: ALL, in any case, is every clash (the store's
// empty condition). An empty one is refused: a script's unset variable must not change them all.
QString ChangeCondition(const QString &word, const QString &condition)
{
    const QString trimmed = condition.trimmed();
    if (trimmed.isEmpty())
        Refuse(msg::CliConditionEmpty, {word});
    if (trimmed.compare(QLatin1String("ALL"), Qt::CaseInsensitive) == 0)
        return QString();
    return condition;
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
            Step step{found->kind, args.mid(i + 1, found->operands)};
            if (found->changes)
                step.values.last() = ChangeCondition(word, step.values.last());
            parsed.steps << step;
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
