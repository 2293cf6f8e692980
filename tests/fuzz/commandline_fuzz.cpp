// Arbitrary text as a command line, in both forms: the input is the "/" line itself, and, split
// at line ends, the program's argument list. Its lines are also taken as the values of a well
// formed call, which must arrive as they were given.
#include "fuzzsupport.h"

#include "frame/commandline.h"

#include <cstddef>
#include <cstdint>

namespace {

using fx::CommandLineArgs;

// Values are trimmed; in the "/" form the blanks inside double quotes stay, the quotes go.
void CheckTrimmed(const QList<const QString *> &values, const QString &form)
{
    for (const QString *value : values)
        fuzz::Expect(*value == value->trimmed(), form + QStringLiteral(": a value with blanks around it: '") + *value + QLatin1Char('\''));
}

void CheckSlashLine(const QString &line)
{
    const CommandLineArgs args = fx::ParseSlashCommandLine(line);
    const QString form = QStringLiteral("the \"/\" form");
    CheckTrimmed({&args.mode}, form);
    fuzz::Expect(args.commandLine == line, form + QStringLiteral(": the line is not kept as given"));
    for (const QString *value : {&args.controlFile, &args.project, &args.configFile, &args.listFile})
        fuzz::Expect(!value->contains(QLatin1Char('"')) && !value->contains(QLatin1Char('/')),
                     form + QStringLiteral(": a value holds a quote or a \"/\": ") + *value);
    fuzz::Expect(!args.mode.contains(QLatin1Char('/')) && line.contains(args.mode), form + QStringLiteral(": a mode not from the line"));
    if (line.toLower().contains(QLatin1String("/batch")))
        fuzz::Expect(args.batch, form + QStringLiteral(": \"/batch\" not seen"));
    if (!line.isEmpty() && !line.contains(QLatin1Char('/')))
        fuzz::Expect(args.usageWanted, form + QStringLiteral(": a line without \"/\" is taken"));
    if (line.isEmpty())
        fuzz::Expect(!args.usageWanted && !args.batch && args.mode.isEmpty(), form + QStringLiteral(": an empty line asks for something"));
    const QString trimmed = line.trimmed();
    fuzz::Expect(args.incorrect == (!trimmed.isEmpty() && trimmed != QLatin1String("/?")),
                 form + QStringLiteral(": \"incorrect\" is wrong"));
}

void CheckArgumentList(const QStringList &list)
{
    const CommandLineArgs args = fx::ParseArguments(list);
    if (!list.isEmpty() && list.first().startsWith(QLatin1String("--"))) {
        CheckTrimmed({&args.mode, &args.controlFile, &args.project, &args.configFile, &args.listFile}, QStringLiteral("long options"));
        fuzz::Expect(args.commandLine == fx::JoinArguments(list), QStringLiteral("long options: the line is not the arguments joined"));
    } else {
        fuzz::Expect(args.commandLine == fx::JoinArguments(list) && args.batch == fx::ParseSlashCommandLine(args.commandLine).batch,
                     QStringLiteral("an argument list not read as its \"/\" line"));
    }
}

// A call as a script writes it: every option with a value of the input's lines.
void CheckRoundTrip(const QStringList &lines)
{
    QStringList values = lines;
    values.resize(5);
    const QStringList options{QStringLiteral("--mode"), QStringLiteral("--cmd"), QStringLiteral("--project"),
                              QStringLiteral("--config"), QStringLiteral("--listfile")};
    QStringList argv;
    for (qsizetype i = 0; i < options.size(); ++i)
        argv << options.at(i) << values.at(i);
    argv << QStringLiteral("--batch");
    const CommandLineArgs args = fx::ParseArguments(argv);
    const QString given[] = {args.mode, args.controlFile, args.project, args.configFile, args.listFile};
    for (qsizetype i = 0; i < options.size(); ++i)
        fuzz::Expect(given[i] == values.at(i).trimmed(), QStringLiteral("long options: the value of %1 came out as '%2'").arg(options.at(i), given[i]));
    fuzz::Expect(args.batch && !args.usageWanted, QStringLiteral("long options: a well formed call refused"));

    // The "/" form, for values that it can carry: no "/", no quote.
    QString line;
    const char *keywords[] = {"/Mode ", " /CMD ", " /Project ", " /Config ", " /Listfile "};
    for (qsizetype i = 0; i < options.size(); ++i) {
        values[i] = QString(values.at(i)).remove(QLatin1Char('/')).remove(QLatin1Char('"')).trimmed();
        line += QLatin1String(keywords[i]) + values.at(i);
    }
    const CommandLineArgs slash = fx::ParseSlashCommandLine(line + QStringLiteral(" /batch"));
    const QString read[] = {slash.mode, slash.controlFile, slash.project, slash.configFile, slash.listFile};
    for (qsizetype i = 0; i < options.size(); ++i)
        fuzz::Expect(read[i] == values.at(i), QStringLiteral("the \"/\" form: the value of %1 came out as '%2'").arg(QLatin1String(keywords[i]), read[i]));
    fuzz::Expect(slash.batch && !slash.usageWanted, QStringLiteral("the \"/\" form: a well formed call refused"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    CheckSlashLine(text);
    const QStringList lines = text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    CheckArgumentList(lines);
    CheckRoundTrip(lines);
    return 0;
}
