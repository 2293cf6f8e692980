#include "frame/commandline.h"

namespace fx {

namespace {
QString Unquoted(const QString &value)
{
    QString result = value.trimmed();
    result.remove(QLatin1Char('"'));
    return result;
}

bool StartsWith(const QString &upperElement, const char *keyword)
{
    return upperElement.startsWith(QLatin1String(keyword));
}
} // namespace

CommandLineArgs ParseSlashCommandLine(const QString &commandLine)
{
    CommandLineArgs args;
    args.commandLine = commandLine;
    args.batch = commandLine.toLower().contains(QStringLiteral("/batch"));
    // An empty line has no element at all; a non-empty one without "/" has one.
    const QStringList elements = commandLine.isEmpty() ? QStringList() : commandLine.split(QLatin1Char('/'));
    if (elements.size() == 1)
        args.usageWanted = true;
    for (const QString &element : elements) {
        const QString upper = element.toUpper();
        if (StartsWith(upper, "CMD"))
            args.controlFile = Unquoted(element.mid(3));
        else if (StartsWith(upper, "PROJECT"))
            args.project = Unquoted(element.mid(7));
        else if (StartsWith(upper, "CONFIG"))
            args.configFile = Unquoted(element.mid(6));
        else if (StartsWith(upper, "LISTFILE"))
            args.listFile = Unquoted(element.mid(8));
        else if (StartsWith(upper, "MODE"))
            args.mode = element.mid(4).trimmed();
        else if (StartsWith(upper, "BATCH"))
            args.batch = true;
        else if (!element.isEmpty())
            args.usageWanted = true; // "?*": any other non-empty piece, "/?" among them
    }
    const QString trimmed = commandLine.trimmed();
    args.incorrect = !trimmed.isEmpty() && trimmed != QLatin1String("/?");
    return args;
}

CommandLineArgs ParseLongOptions(const QStringList &argList)
{
    CommandLineArgs args;
    args.commandLine = JoinArguments(argList);
    for (qsizetype i = 0; i < argList.size(); ++i) {
        const QString option = argList.at(i);
        if (option == QLatin1String("--batch")) {
            args.batch = true;
            continue;
        }
        if (option == QLatin1String("--help")) {
            args.usageWanted = true;
            continue;
        }
        QString *target = nullptr;
        if (option == QLatin1String("--mode"))
            target = &args.mode;
        else if (option == QLatin1String("--cmd"))
            target = &args.controlFile;
        else if (option == QLatin1String("--project"))
            target = &args.project;
        else if (option == QLatin1String("--config"))
            target = &args.configFile;
        else if (option == QLatin1String("--listfile"))
            target = &args.listFile;
        if (!target || i + 1 >= argList.size()) {
            args.usageWanted = true;
            args.incorrect = true;
            continue;
        }
        *target = argList.at(++i).trimmed();
    }
    return args;
}

CommandLineArgs ParseArguments(const QStringList &args)
{
    if (!args.isEmpty() && args.first().startsWith(QLatin1String("--")))
        return ParseLongOptions(args);
    return ParseSlashCommandLine(JoinArguments(args));
}

QString JoinArguments(const QStringList &args)
{
    QStringList quoted;
    for (const QString &arg : args)
        quoted << (arg.contains(QLatin1Char(' ')) && !arg.contains(QLatin1Char('"')) ? QLatin1Char('"') + arg + QLatin1Char('"') : arg);
    return quoted.join(QLatin1Char(' '));
}

} // namespace fx
